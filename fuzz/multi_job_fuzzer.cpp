// Reads a text of several jobs, adds, inserts and removes jobs as the first bytes say, and writes and reads the file again.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

std::optional<GJFMultiEditor> open(const std::string& text) {
    try {
        return GJFMultiEditor(GJFParser::parse_string_multi(text));
    } catch (const GJFParseException&) {
        return std::nullopt;
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

void change(GJFMultiEditor& editor, std::uint8_t choice) {
    const std::size_t index = choice / 4 % 5;
    const std::size_t count = editor.job_count();
    const std::string before = editor.to_gjf_string();
    const auto some_job = [&] { return editor.job(index).get_data(); };
    try {
        if (choice % 4 == 0) {
            editor.add_job(some_job());
            hold(editor.job_count() == count + 1, "adding a job adds one");
        } else if (choice % 4 == 1) {
            editor.insert_job(index + 1, some_job());
            hold(editor.job_count() == count + 1, "inserting a job adds one");
        } else {
            editor.remove_job(index);
            hold(editor.job_count() == count - 1, "removing a job removes one");
        }
    } catch (const GJFParseException&) {
        hold(editor.to_gjf_string() == before, "a refused change leaves the file as it was");
        hold(index >= count, "only a job that is not there is refused");
    }
}

// Every piece between --Link1-- lines is a job of its own when each job's text survives alone.
void hold_file_round_trip(const GJFMultiEditor& editor) {
    for (std::size_t i = 0; i < editor.job_count(); ++i) {
        if (!writer_carries(editor.job(i))) {
            return;
        }
    }
    if (editor.job_count() == 0) {
        hold(editor.to_gjf_string().empty(), "no jobs are written as no text");
        return;
    }
    const std::string once = editor.to_gjf_string();
    const GJFMultiData again = GJFParser::parse_string_multi(once);
    hold(again.jobs.size() == editor.job_count(), "as many jobs read back as were written");
    for (std::size_t i = 0; i < again.jobs.size(); ++i) {
        hold(all_of_job(again.jobs[i]) == all_of_job(editor.job(i).get_data()), "each job reads back as it was");
    }
    hold(GJFMultiEditor(again).to_gjf_string() == once, "a file is written, read and written alike");
}

}  // namespace

int multi_job(const std::uint8_t* data, std::size_t size) {
    const std::size_t head = std::min<std::size_t>(size, 3);
    const std::string text(reinterpret_cast<const char*>(data) + head, size - head);
    std::size_t pieces = 0;
    for (const std::string& piece : GJFParser::split_by_link1(text)) {
        pieces += GJFParser::trim(piece).empty() ? 0 : 1;
    }
    std::optional<GJFMultiEditor> editor = open(text);
    if (!editor) {
        return 0;
    }
    const GJFMultiData jobs = editor->get_multi_data();
    // A byte order mark alone is no job, and no blank piece either.
    hold(jobs.jobs.size() <= pieces, "no more jobs than pieces");
    if (!std::all_of(jobs.jobs.begin(), jobs.jobs.end(), is_small)) {
        return 0;
    }
    hold_file_round_trip(*editor);
    for (std::size_t i = 0; i < head; ++i) {
        change(*editor, data[i]);
    }
    hold_file_round_trip(*editor);
    return 0;
}

}  // namespace quor::fuzz
