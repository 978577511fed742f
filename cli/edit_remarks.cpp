// Collects what is to be said of the changes to many files.
#include "edit_remarks.hpp"

#include "plain_text.hpp"
#include "terminal.hpp"

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

// So that memory is flat however many files there are.
constexpr std::size_t most_places = 5;
constexpr std::size_t most_texts = 200;

}  // namespace

EditRemark remark_of(const std::string& path, const Finding& finding) {
    EditRemark remark;
    remark.is_of_finding = true;
    remark.text =
        std::string(severity_name(finding.severity)) + ": " + printable(finding.message) + " [" + finding.code + ']';
    remark.text += finding.hint.empty() ? std::string() : "\n  hint: " + printable(finding.hint);
    remark.place = shown_place(path, finding.line, finding.column);
    return remark;
}

void EditRemarks::add(const EditRemark& remark) {
    auto found = entries_.find(remark.text);
    if (found == entries_.end()) {
        if (entries_.size() == most_texts) {
            ++left_out_;
            return;
        }
        found = entries_.emplace(remark.text, Entry()).first;
        order_.push_back(remark.text);
    }
    Entry& entry = found->second;
    entry.is_of_finding = remark.is_of_finding;
    ++entry.count;
    if (entry.places.size() < most_places) {
        entry.places.push_back(remark.place);
    }
}

std::string EditRemarks::text() const {
    std::string all;
    for (const std::string& text : order_) {
        const Entry& entry = entries_.at(text);
        all += text + "\n  " +
               (entry.is_of_finding ? "new at " + counted(entry.count, "place") : "in " + counted(entry.count, "file"));
        for (std::size_t i = 0; i < entry.places.size(); ++i) {
            all += (i == 0 ? ": " : ", ") + entry.places[i];
        }
        all += entry.count > entry.places.size() ? ", ...\n" : "\n";
    }
    return left_out_ == 0 ? all : all + "and " + counted(left_out_, "remark") + " more\n";
}

}  // namespace quor_gjf
