// Tells what stands at a place.
#include <gjf/core/language/hover.hpp>

#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/molecule_texts.hpp>
#include <gjf/core/language/names.hpp>
#include <gjf/core/language/route_tokens.hpp>
#include <gjf/core/language/stretches.hpp>
#include <gjf/core/reader/section_name.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

// Text of our own, in which nothing means anything to Markdown.
std::string plain_markdown(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        plain += std::string_view("\\`*_<[#").find(c) == std::string_view::npos ? "" : "\\";
        plain += c;
    }
    return plain;
}

class HoverWriter {
   public:
    HoverWriter(const JobFile& file, const JobToken& token)
        : file_(file), token_(token), reading_(file.jobs()[token.job]), written_(token.place.in(file.text())) {}

    std::string text() const {
        switch (token_.role) {
            case TokenRole::Keyword:
                return keyword_text(written_);
            case TokenRole::Method:
                return method_text(schema().normalize_keyword(written_));
            case TokenRole::BasisSet:
                return basis_text();
            case TokenRole::Option:
            case TokenRole::OptionValue:
                return option_text();
            case TokenRole::Link0Key:
            case TokenRole::Link0Value:
                return link0_text();
            case TokenRole::Charge:
            case TokenRole::Multiplicity:
                return electrons_text();
            case TokenRole::AtomLabel:
                return atom_text(reading_.job, positions(reading_.job), token_.number);
            case TokenRole::AtomNumber:
                return atom_number_text();
            case TokenRole::Variable:
                return variable_text();
            case TokenRole::SectionWord:
            case TokenRole::Element:
                return section_text();
            default:
                return {};
        }
    }

   private:
    static const SimpleYAMLParser& schema() { return default_route_schema(); }

    static std::string word_text(const char* role, const std::string& name) { return "**" + code_span(name) + "** " + role; }

    // What a word means, as far as a source tells.
    static std::string meaning_of(const char* role, std::string_view keyword, std::string_view word) {
        const WordDescription* known = find_description(role, keyword, word);
        if (known == nullptr) {
            return {};
        }
        const std::string doubt = known->is_certain ? "." : " (not certain).";
        const std::string_view value = known->default_value;
        return "\n\n" + plain_markdown(known->meaning) + doubt +
               (value.empty() ? "" : " Default: " + plain_markdown(value) + ".");
    }

    static std::string method_text(const std::string& name) {
        return word_text("method", name) + meaning_of("method", {}, name);
    }

    // What sections a route word asks for by itself, as the kinds name it: "opt" or "opt=modredundant".
    static std::string asked_sections(const std::string& word) {
        std::string names;
        for (int kind = 1; kind <= 55; ++kind) {
            const auto each = static_cast<ExtraInputSectionKind>(kind);
            if (word == extra_input_request(each)) {
                names += (names.empty() ? "" : ", ") + std::string(extra_input_kind_name(each));
            }
        }
        return names.empty() ? names : "\n\nAsks for a section: " + names;
    }

    std::string keyword_text(const std::string& word) const {
        const std::string name = schema().normalize_keyword(word);
        const std::size_t options = schema().options_of(name).size();
        return word_text("keyword", name) + ", " + schema().classify(name) +
               (options == 0 ? "" : ", " + std::to_string(options) + " options") + meaning_of("keyword", {}, name) +
               asked_sections(name);
    }

    // The keyword whose option holds the token, and that option.
    std::string option_text() const {
        for (const RouteTree::Segment& segment : reading_.layout.route.segments) {
            for (const RouteTree::Keyword& keyword : segment.keywords) {
                for (const RouteTree::Option& option : keyword.options) {
                    if (stands_in(token_.role == TokenRole::Option ? option.name : option.value)) {
                        const bool known = option.match != RouteMatch::Unknown && option.match != RouteMatch::Ambiguous;
                        return word_text(known ? "option of " : "no known option of ", option.canonical) +
                               code_span(keyword.name) + meaning_of("option", keyword.name, option.canonical) +
                               asked_sections(keyword.name + "=" + option.canonical);
                    }
                }
            }
        }
        return {};
    }

    bool stands_in(Span of_route_text) const {
        const std::vector<Span> places = route_spans(reading_, of_route_text);
        return std::find(places.begin(), places.end(), token_.place) != places.end();
    }

    std::string basis_text() const {
        const std::string name = schema().normalize_basis(written_);
        return word_text("basis set", name) + meaning_of("basis", {}, name) + asked_sections(name) + size_text();
    }

    // How many functions and electrons the job has, as far as they are known.
    std::string size_text() const {
        const JobSize& size = file_.size(token_.job);
        std::string text;
        if (size.functions) {
            text += "\n\n" + std::to_string(*size.functions) + " basis functions" + (size.doubtful ? ", not certain" : "");
        }
        return text;
    }

    std::string link0_text() const {
        const auto line =
            std::find_if(reading_.places.link0.begin(), reading_.places.link0.end(),
                         [&](const Link0Place& each) { return each.key == token_.place || each.value == token_.place; });
        if (line == reading_.places.link0.end()) {
            return {};
        }
        const Link0Key* key = find_link0_key(line->key.in(file_.text()));
        if (key == nullptr) {
            return {};
        }
        const char* const forms[] = {"takes a text", "takes a whole number", "takes a list of cores",
                                     "takes an amount of memory", "takes no value"};
        return "**" + code_span("%" + std::string(key->layout_name)) + "** " + forms[static_cast<std::size_t>(key->form)] +
               meaning_of("link0", {}, key->name);
    }

    std::string electrons_text() const {
        const JobSize& size = file_.size(token_.job);
        if (!size.electrons) {
            return size.no_electrons.empty() ? std::string() : "electrons not known: " + code_span(size.no_electrons);
        }
        return std::to_string(*size.electrons) + " electrons" +
               (size.core_electrons == 0 ? "" : ", besides " + std::to_string(size.core_electrons) + " in core potentials");
    }

    // The atom, and the coordinate that the line names.
    std::string atom_number_text() const {
        const std::vector<AtomPosition> atoms = positions(reading_.job);
        const std::vector<std::size_t> numbers = coordinate_atoms(file_, token_);
        std::string text = token_.number == 0 ? std::string() : atom_text(reading_.job, atoms, token_.number);
        const std::string coordinate = coordinate_text(atoms, numbers);
        return coordinate.empty() ? text : text + (text.empty() ? "" : "\n\n") + coordinate;
    }

    std::string variable_text() const {
        const std::optional<ZMatrixVariable> variable = find_variable(reading_.job, written_);
        if (!variable) {
            return code_span(written_) + " has no value";
        }
        const std::size_t uses = occurrences_at(file_, token_.place.begin).uses.size();
        return code_span(variable->name) + " = " + code_span(variable->value) + ", used " + std::to_string(uses) +
               (uses == 1 ? " time" : " times");
    }

    std::string section_text() const {
        for (const SectionPlace& section : reading_.places.sections) {
            if (holds(section.lines, token_.place)) {
                const std::string request = extra_input_request(section.kind);
                return std::string("section: ") + extra_input_kind_name(section.kind) +
                       (request.empty() ? "" : ", asked for by " + code_span(request));
            }
        }
        return {};
    }

    const JobFile& file_;
    const JobToken& token_;
    const JobReading& reading_;
    std::string written_;
};

}  // namespace

std::string code_span(std::string_view text) {
    std::size_t longest = 0;  // run of backticks
    std::size_t run = 0;
    std::string content;
    for (const char c : text) {
        run = c == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
        content += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    const std::string fence(longest + 1, '`');
    const bool pads = content.empty() || content.front() == '`' || content.back() == '`' || content.front() == ' ';
    return fence + (pads ? " " : "") + content + (pads ? " " : "") + fence;
}

std::optional<Hover> hover_at(const JobFile& file, std::size_t offset) {
    const std::optional<JobToken> token = token_at(file, offset);
    if (!token) {
        return std::nullopt;
    }
    std::string text = HoverWriter(file, *token).text();
    return text.empty() ? std::nullopt : std::optional(Hover{token->place, std::move(text)});
}

}  // namespace quor::input::gaussian
