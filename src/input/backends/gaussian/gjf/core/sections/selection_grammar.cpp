// Selections of atoms, as in "noatoms atoms=1-4,C notatoms=7": keys, and lists of numbers, ranges and elements behind them.
#include <gjf/core/sections/section_tokens.hpp>

#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::string_view separators = " \t\r\v\f,()=";

// Other keys, such as block and layer, count something else than atoms.
bool lists_atoms(const SelectionList& list) noexcept { return list.selects() || equals_folded(list.key, "notatoms"); }

bool is_numeric(std::string_view word) noexcept {
    return is_digit(word[0]) || word.find_first_not_of("+-0123456789") == std::string_view::npos;
}

// Cuts a line into lists; each ends where the next key begins.
class SelectionLine {
   public:
    SelectionLine(SectionScanner& scan, SectionReading& section)
        : scan_(scan), section_(section), text_(without_comment(scan.line())), first_list_(section.lists.size()) {}

    void read() {
        for (std::size_t i = text_.find_first_not_of(separators); i < text_.size();) {
            const std::size_t end = std::min(text_.find_first_of(separators, i), text_.size());
            const std::size_t equals = std::min(text_.find_first_not_of(" \t", end), text_.size());
            const bool is_key = equals < text_.size() && text_[equals] == '=';
            const std::string_view word = text_.substr(i, end - i);
            if (is_key || equals_folded(word, "noatoms")) {
                open(text_.substr(i, (is_key ? equals + 1 : end) - i), word);
            } else {
                add(word, std::min(text_.find_first_not_of(')', end), text_.size()));
            }
            i = text_.find_first_not_of(separators, end);
        }
    }

   private:
    void open(std::string_view all, std::string_view key) {
        section_.lists.push_back({span_of(section_.text, all), static_cast<std::uint32_t>(scan_.index()), key,
                                  static_cast<std::uint32_t>(section_.tokens.size()), 0});
    }
    void add(std::string_view word, std::size_t closed) {
        if (section_.lists.size() == first_list_ || section_.lists.back().is_noatoms()) {
            open(word, {});
        }
        SelectionList& list = section_.lists.back();
        const std::uint32_t end = span_of(section_.text, text_).begin + static_cast<std::uint32_t>(closed);
        list.span.length = end - list.span.begin;
        ++list.count;
        scan_.add(word, lists_atoms(list) && is_numeric(word) ? TokenKind::Atoms : TokenKind::Word);
    }

    SectionScanner& scan_;
    SectionReading& section_;
    std::string_view text_;
    std::size_t first_list_;
};

}  // namespace

void read_atom_selections(SectionReading& section) {
    section.includes_name_atoms = true;
    for (SectionScanner scan(section); scan.next();) {
        scan.begin(LineForm::Selection);
        SelectionLine(scan, section).read();
    }
}

}  // namespace quor::input::gaussian
