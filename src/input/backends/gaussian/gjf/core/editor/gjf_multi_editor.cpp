// A list of editors, one for each job of a file.
#include <gjf/core/editor/gjf_multi_editor.hpp>

#include <core/fs/write_text_file.hpp>
#include <gjf/core/editor/job_writer.hpp>
#include <gjf/core/reader/job_text.hpp>

#include <utility>

namespace quor::input::gaussian {

GJFMultiEditor::GJFMultiEditor(GJFMultiData data) {
    editors_.reserve(data.jobs.size());
    for (GJFData& job : data.jobs) {
        editors_.emplace_back(std::move(job));
    }
}
GJFMultiEditor::GJFMultiEditor(const GJFMultiEditor&) = default;
GJFMultiEditor::GJFMultiEditor(GJFMultiEditor&&) noexcept = default;
GJFMultiEditor& GJFMultiEditor::operator=(const GJFMultiEditor&) = default;
GJFMultiEditor& GJFMultiEditor::operator=(GJFMultiEditor&&) noexcept = default;
GJFMultiEditor::~GJFMultiEditor() = default;

std::size_t GJFMultiEditor::job_count() const noexcept { return editors_.size(); }

GJFEditor& GJFMultiEditor::job(std::size_t index) {
    validate_job_index(index);
    return editors_[index];
}

const GJFEditor& GJFMultiEditor::job(std::size_t index) const {
    validate_job_index(index);
    return editors_[index];
}

void GJFMultiEditor::validate_job_index(std::size_t index) const {
    if (index >= editors_.size()) {
        throw GJFParseException("Invalid job index: " + std::to_string(index) +
                                " (total jobs: " + std::to_string(editors_.size()) + ")");
    }
}

void GJFMultiEditor::add_job(const GJFData& data) { add_job(GJFData(data)); }

void GJFMultiEditor::add_job(GJFData&& data) { editors_.emplace_back(std::move(data)); }

void GJFMultiEditor::insert_job(std::size_t index, const GJFData& data) {
    if (index > editors_.size()) {
        throw GJFParseException("Invalid job index for insert: " + std::to_string(index));
    }
    editors_.insert(editors_.begin() + static_cast<std::ptrdiff_t>(index), GJFEditor(data));
}

void GJFMultiEditor::remove_job(std::size_t index) {
    validate_job_index(index);
    editors_.erase(editors_.begin() + static_cast<std::ptrdiff_t>(index));
}

GJFMultiData GJFMultiEditor::get_multi_data() const {
    GJFMultiData data;
    data.jobs.reserve(editors_.size());
    for (const GJFEditor& editor : editors_) {
        data.jobs.push_back(editor.get_data());
    }
    return data;
}

std::string GJFMultiEditor::to_gjf_string() const {
    std::string text;
    for (const GJFEditor& editor : editors_) {
        if (&editor != &editors_.front()) {
            text.append("\n\n").append(job_separator) += '\n';
        }
        text += without_trailing_breaks(editor.to_gjf_string());
    }
    end_job_text(text);
    return text;
}

void GJFMultiEditor::save_to_file(const std::string& path) const {
    if (!quor::core::fs::write_text_file(path, to_gjf_string())) {
        throw GJFParseException("Cannot write file: " + path);
    }
}

}  // namespace quor::input::gaussian
