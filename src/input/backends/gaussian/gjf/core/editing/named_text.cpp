// Reads names in braces, and puts in what they stand for.
#include <gjf/core/editing/named_text.hpp>

#include <filesystem>
#include <stdexcept>

namespace quor::input::gaussian {

NamedText::NamedText(const std::string& text) : pieces_(1) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '{' || text.compare(i, 2, "{{") == 0) {
            pieces_.back().text += text[i];
            i += text[i] == '{' ? 1 : 0;
            continue;
        }
        const std::size_t end = text.find('}', i);
        if (end == std::string::npos) {
            throw std::runtime_error("a '{' is not closed; '{{' stands for the brace");
        }
        const std::string name = text.substr(i + 1, end - i - 1);
        if (name != "stem" && name != "parent" && name != "job") {
            throw std::runtime_error("'{" + name + "}' is none of {stem}, {parent} and {job}; '{{' stands for the brace");
        }
        pieces_.back().name = name;
        pieces_.emplace_back();
        i = end;
    }
}

std::string NamedText::text_for(const EditContext& context) const {
    std::string text;
    for (const Piece& piece : pieces_) {
        text += piece.text;
        if (piece.name == "job") {
            text += std::to_string(context.job);
        } else if (!piece.name.empty() && context.path == "-") {
            throw std::runtime_error("standard input has no name");
        } else if (!piece.name.empty()) {
            const std::filesystem::path path = std::filesystem::absolute(context.path).lexically_normal();
            text += (piece.name == "stem" ? path.stem() : path.parent_path().filename()).string();
        }
    }
    return text;
}

}  // namespace quor::input::gaussian
