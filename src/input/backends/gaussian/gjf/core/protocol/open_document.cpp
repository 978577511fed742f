// Keeps a text as its client has it.
#include <gjf/core/protocol/open_document.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <utility>

namespace quor::input::gaussian {
namespace {

int digit_of(char c) noexcept {
    const char lower = to_lower_ascii(c);
    return is_digit(c) ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

std::string path_of(std::string_view uri) {
    constexpr std::string_view scheme = "file://";
    if (uri.substr(0, scheme.size()) != scheme) {
        return {};
    }
    uri.remove_prefix(std::min(uri.find('/', scheme.size()), uri.size()));
    std::string path;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const int high = uri[i] == '%' && i + 2 < uri.size() ? digit_of(uri[i + 1]) : -1;
        const int low = high < 0 ? -1 : digit_of(uri[i + 2]);
        path += low < 0 ? uri[i] : static_cast<char>(high * 16 + low);
        i += low < 0 ? 0 : 2;
    }
    return path;
}

OpenDocument::OpenDocument(std::string uri, std::int64_t version, std::string text, ColumnUnit unit)
    : uri_(std::move(uri)), path_(path_of(uri_)), version_(version), text_(std::move(text)), unit_(unit) {}

void OpenDocument::change(const Message& changes, std::int64_t version) {
    if (!changes.is_array()) {
        throw RequestFault(MessageError::InvalidParams, "contentChanges must be a list");
    }
    version_ = version;
    for (const Message& each : changes) {
        std::string text = text_member(each, "text");
        if (member(each, "range").is_null()) {
            text_ = std::move(text);
            positions_.reset();
        } else {
            const Span place = stretch(each["range"]);
            text_.replace(place.begin, place.length, text);
            positions_->follow(text_, place, text.size());
        }
        file_.reset();
        findings.reset();
    }
}

const TextPositions& OpenDocument::positions() const {
    if (!positions_) {
        positions_.emplace(text_, unit_);
    }
    return *positions_;
}

const JobFile& OpenDocument::file() const {
    if (file_ == nullptr) {
        file_ = std::make_unique<JobFile>(path_, text_);
    }
    return *file_;
}

Message OpenDocument::position_json(std::size_t offset) const {
    const LinePosition place = positions().position(offset);
    return {{"line", place.line}, {"character", place.character}};
}

Message OpenDocument::range_json(Span place) const {
    return {{"start", position_json(place.begin)}, {"end", position_json(place.end())}};
}

std::size_t OpenDocument::offset(const Message& position) const {
    return positions().offset({count_member(position, "line"), count_member(position, "character")});
}

Span OpenDocument::stretch(const Message& range) const {
    const std::size_t begin = offset(member(range, "start"));
    const std::size_t end = offset(member(range, "end"));
    return span_between(std::min(begin, end), std::max(begin, end));
}

std::vector<Message> OpenDocument::edits_json(const std::vector<TextEdit>& edits) const {
    std::vector<Message> list;
    list.reserve(edits.size());
    // No place of the protocol lies between a carriage return and its line feed: what begins or ends there takes in the
    // other.
    const auto is_within_end = [this](std::size_t offset) {
        return offset > 0 && text_.compare(offset - 1, 2, "\r\n") == 0;
    };
    for (const TextEdit& edit : edits) {
        const std::size_t before = is_within_end(edit.begin) ? 1 : 0;
        const std::size_t behind = is_within_end(edit.end) ? 1 : 0;
        list.push_back({{"range", range_json(span_between(edit.begin - before, edit.end + behind))},
                        {"newText", std::string(before, '\r') + edit.text + std::string(behind, '\n')}});
    }
    return list;
}

Message OpenDocument::workspace_edit(const std::vector<TextEdit>& edits) const {
    return {{"documentChanges",
             Message::array({{{"textDocument", {{"uri", uri_}, {"version", version_}}}, {"edits", edits_json(edits)}}})}};
}

}  // namespace quor::input::gaussian
