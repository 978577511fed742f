// Finds what may be written at a place.
#include <gjf/core/language/offers.hpp>

#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/molecule_texts.hpp>
#include <gjf/core/reader/route_lines.hpp>
#include <gjf/core/route/joined_route.hpp>
#include <gjf/core/route/route_completion.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t most_atoms = 500;  // offered by their numbers

bool is_word_character(char c) noexcept {
    return is_letter(c) || is_digit(c) || c == '_' || c == '-' || c == '+' || c == '*';
}

class OfferFinder {
   public:
    OfferFinder(const JobFile& file, std::size_t job, std::size_t offset)
        : text_(file.text()), file_(file), reading_(file.jobs()[job]), offset_(offset) {}

    Offers find() {
        const std::size_t line_begin = offset_ == 0 ? 0 : text_.rfind('\n', offset_ - 1) + 1;
        const std::string_view before = text_.substr(line_begin, offset_ - line_begin);
        if (without_comment(before).size() < before.size()) {
            return {};
        }
        if (is_in_route()) {
            add_route_words();
        } else if (const std::string_view line = trim_view(before);
                   !line.empty() && line.front() == '%' && is_before_route()) {
            add_link0(line);
        } else if (const SectionPlace* section = section_here()) {
            add_of_section(*section);
        }
        return std::move(offers_);
    }

   private:
    bool is_before_route() const noexcept {
        const std::vector<Span>& words = reading_.places.route_words;
        return words.empty() ? reading_.places.title.empty() : offset_ <= words.front().begin;
    }

    // Behind the last word the route goes on up to the end of the next line.
    bool is_in_route() const noexcept {
        const std::vector<Span>& words = reading_.places.route_words;
        if (words.empty() || offset_ < words.front().begin) {
            return false;
        }
        if (offset_ <= words.back().end()) {
            return true;
        }
        const std::string_view behind = text_.substr(words.back().end(), offset_ - words.back().end());
        return trim_view(behind).empty() && std::count(behind.begin(), behind.end(), '\n') <= 1;
    }

    // The word at the offset: `prefix` bytes of it stand before.
    void replace_word(std::size_t prefix) {
        std::size_t end = offset_;
        while (end < text_.size() && is_word_character(text_[end])) {
            ++end;
        }
        offers_.replaced = span_between(offset_ - std::min(prefix, offset_), end);
    }

    void add_route_words() {
        const std::size_t begin = reading_.places.route_words.front().begin;
        const std::string written(text_.substr(begin, offset_ - begin));
        std::string route = join_route_words(route_words_of(written)).text;
        RouteContext context = context_at_end(route);
        // What is joined has no blank at its end, which begins a new word, or an option where a list is open.
        if (!written.empty() && is_trim_character(written.back()) &&
            !(context.end == RouteEnd::Option && context.prefix.empty())) {
            route += std::count(route.begin(), route.end(), '(') > std::count(route.begin(), route.end(), ')') ? ',' : ' ';
            context = context_at_end(route);
        }
        const bool prefix_stands = text_.substr(0, offset_).ends_with(context.prefix);
        replace_word(prefix_stands ? context.prefix.size() : 0);
        std::vector<Completion> completions = completions_of(context);
        // A route has one method; and of words that begin alike the shorter ones are more common.
        const bool wants_keyword = context.end == RouteEnd::Word && has_method(span_between(begin, offers_.replaced.begin));
        const auto order = [&](const Completion& each) {
            const bool is_keyword = each.roles.size() == 1 && each.roles.front() == "keyword";
            return std::pair(wants_keyword && !is_keyword, each.text.size());
        };
        std::stable_sort(completions.begin(), completions.end(),
                         [&](const Completion& a, const Completion& b) { return order(a) < order(b); });
        for (const Completion& completion : completions) {
            add_route_word(completion);
        }
    }

    bool has_method(Span written) const {
        const std::vector<JobToken> tokens = tokens_in(file_, written);
        return std::any_of(tokens.begin(), tokens.end(), [&](const JobToken& token) {
            return token.role == TokenRole::Method && token.place.end() <= written.end();
        });
    }

    void add_route_word(const Completion& completion) {
        Offer offer;
        offer.text = completion.text;
        for (const std::string& role : completion.roles) {
            offer.detail += (offer.detail.empty() ? "" : ", ") + role;
        }
        const std::string& role = completion.roles.front();
        offer.kind = role == "keyword"     ? OfferKind::Keyword
                     : role == "method"    ? OfferKind::Method
                     : role == "basis set" ? OfferKind::BasisSet
                     : role == "option"    ? OfferKind::Option
                                           : OfferKind::Value;
        if (offer.kind == OfferKind::BasisSet) {
            if (const std::string lacking = lacking_elements(offer.text); !lacking.empty()) {
                offer.detail += ", lacks " + lacking;
                offer.rank = 1;
            }
        }
        offers_.offers.push_back(std::move(offer));
    }

    // The elements of the molecule.
    const std::set<int>& elements() {
        if (elements_.empty()) {
            const auto add = [&](const AtomInfo& info) {
                const Species species = species_of(info);
                if (species.kind == SpeciesKind::Atom) {
                    elements_.insert(species.element);
                }
            };
            for (const AtomCoord& atom : reading_.job.geom.atoms) {
                add(atom.info);
            }
            for (const ZMatrixEntry& row : reading_.job.geom.zmatrix_entries) {
                add(row.info);
            }
        }
        return elements_;
    }

    std::string lacking_elements(const std::string& basis) {
        const BasisElements* known = basis_elements(basis);
        std::string symbols;
        for (const int element : elements()) {
            if (known != nullptr && !known->covers(element)) {
                symbols += (symbols.empty() ? "" : " ") + std::string(element_symbol(element));
            }
        }
        return symbols;
    }

    void add_link0(std::string_view line) {
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos) {
            replace_word(line.size() - 1);
            for (const Link0Key& key : link0_keys()) {
                const bool takes_value = key.form != Link0Form::Flag;
                offers_.offers.push_back({std::string(key.layout_name) + (takes_value ? "=" : ""), OfferKind::Link0, "", 0});
            }
            return;
        }
        const Link0Key* key = find_link0_key(trim_view(line.substr(1, sign - 1)));
        if (key != nullptr && key->form != Link0Form::Flag) {
            add_link0_values(*key, trim_view(line.substr(sign + 1)));
        }
    }

    static bool names_checkpoint(const Link0Key& key) noexcept { return key.name == "chk" || key.name == "oldchk"; }

    // Those that stand elsewhere in the file, and amounts of memory of the number that is written.
    void add_link0_values(const Link0Key& wanted, std::string_view written) {
        replace_word(written.size());
        if (wanted.form == Link0Form::Memory && !written.empty() && std::all_of(written.begin(), written.end(), is_digit)) {
            for (const char* unit : {"GB", "MB", "KB", "TB", "GW", "MW", "KW", "TW"}) {
                offers_.offers.push_back({std::string(written) + unit, OfferKind::Value, "amount of memory", 0});
            }
        }
        std::set<std::string> values;
        for (const JobReading& reading : file_.jobs()) {
            for (const Link0Place& line : reading.places.link0) {
                const Link0Key* key = find_link0_key(line.key.in(text_));
                const bool is_here = line.value.begin <= offset_ && offset_ <= line.value.end();
                if (key == nullptr || is_here || line.value.empty()) {
                    continue;
                }
                if (names_checkpoint(wanted) && names_checkpoint(*key)) {
                    values.insert(checkpoint_path(line.value.in(text_)));
                } else if (key == &wanted) {
                    values.emplace(line.value.in(text_));
                }
            }
        }
        for (const std::string& value : values) {
            offers_.offers.push_back({value, names_checkpoint(wanted) ? OfferKind::File : OfferKind::Value,
                                      names_checkpoint(wanted) ? "checkpoint of this file" : "value in this file", 0});
        }
    }

    // The section whose lines hold the offset, or end on the line before it.
    const SectionPlace* section_here() const noexcept {
        const std::vector<SectionPlace>& sections = reading_.places.sections;
        const auto found = std::find_if(sections.begin(), sections.end(), [&](const SectionPlace& section) {
            const std::string_view behind =
                offset_ > section.lines.end() ? text_.substr(section.lines.end(), offset_ - section.lines.end()) : "";
            return section.lines.begin <= offset_ && trim_view(behind).empty() &&
                   std::count(behind.begin(), behind.end(), '\n') <= 1;
        });
        return found == sections.end() ? nullptr : &*found;
    }

    void add_of_section(const SectionPlace& section) {
        const SectionReading read = read_section(section.kind, section.lines.in(text_));
        const auto has = [&](std::initializer_list<LineForm> forms) {
            return std::any_of(read.lines.begin(), read.lines.end(), [&](const SectionLine& line) {
                return std::find(forms.begin(), forms.end(), line.form) != forms.end();
            });
        };
        std::size_t begin = offset_;
        while (begin > 0 && is_word_character(text_[begin - 1])) {
            --begin;
        }
        replace_word(offset_ - begin);
        if (has({LineForm::Centers, LineForm::First, LineForm::Selection})) {
            for (const int element : elements()) {
                offers_.offers.push_back({element_symbol(element), OfferKind::Element, "element of the molecule", 0});
            }
        }
        if (has({LineForm::Coordinate, LineForm::Bonds, LineForm::Atoms, LineForm::First, LineForm::Centers,
                 LineForm::Selection})) {
            for (std::size_t atom = 1; atom <= std::min(reading_.job.geom.atom_count(), most_atoms); ++atom) {
                offers_.offers.push_back(
                    {std::to_string(atom), OfferKind::Atom, std::string(label_of(reading_.job, atom)), 1});
            }
        }
    }

    std::string_view text_;
    const JobFile& file_;
    const JobReading& reading_;
    std::size_t offset_;
    std::set<int> elements_;
    Offers offers_;
};

}  // namespace

Offers offers_at(const JobFile& file, std::size_t offset) {
    const std::optional<std::size_t> job = job_at(file, offset);
    return job && offset <= file.text().size() ? OfferFinder(file, *job, offset).find() : Offers();
}

}  // namespace quor::input::gaussian
