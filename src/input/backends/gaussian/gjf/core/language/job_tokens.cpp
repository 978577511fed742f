// Walks the places of a reading and tells what each token is.
#include <gjf/core/language/job_tokens.hpp>

#include <gjf/core/language/route_tokens.hpp>
#include <gjf/core/language/stretches.hpp>
#include <gjf/core/reader/job_text.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace quor::input::gaussian {
namespace {

// Collects the tokens of one job that overlap a stretch.
class JobWalk {
   public:
    JobWalk(const JobFile& file, std::size_t job, Span stretch, std::vector<JobToken>& tokens)
        : text_(file.text()),
          reading_(file.jobs()[job]),
          places_(reading_.places),
          stretch_(stretch),
          job_(job),
          tokens_(tokens) {}

    void walk() {
        const std::size_t first = tokens_.size();
        add_control();
        add_molecule();
        add_sections();
        add_comments();
        std::sort(tokens_.begin() + static_cast<std::ptrdiff_t>(first), tokens_.end(),
                  [](const JobToken& a, const JobToken& b) { return a.place.begin < b.place.begin; });
    }

   private:
    void add(Span place, TokenRole role, std::size_t number = 0) {
        if (!place.empty() && touch(place, stretch_)) {
            tokens_.push_back({place, role, static_cast<std::uint32_t>(job_), static_cast<std::uint32_t>(number)});
        }
    }

    void add_control() {
        for (const Link0Place& line : places_.link0) {
            add(line.key, TokenRole::Link0Key);
            add(line.value, TokenRole::Link0Value);
        }
        if (!places_.route_words.empty() && touch(route_stretch(), stretch_)) {
            for (const RouteToken& token : route_tokens(reading_.layout.route)) {
                for (const Span part : route_spans(reading_, token.place)) {
                    add(part, token.role);
                }
            }
        }
        for (const Span line : line_places(text_, places_.title)) {
            add(line, TokenRole::Title);
        }
        if (touch(places_.charge_line, stretch_)) {
            TokenRole role = TokenRole::Charge;
            for (const Span field : charge_places(text_, places_.charge_line)) {
                add(field, role);
                role = role == TokenRole::Charge ? TokenRole::Multiplicity : TokenRole::Charge;
            }
        }
    }

    Span route_stretch() const noexcept {
        return span_between(places_.route_words.front().begin, places_.route_words.back().end());
    }

    // Calls `each` with the index and the offset of every line of a list that overlaps the stretch.
    template <typename Each>
    void for_lines(const std::vector<std::uint32_t>& lines, Each each) const {
        auto line = std::upper_bound(lines.begin(), lines.end(), stretch_.begin);
        line -= line == lines.begin() ? 0 : 1;
        for (; line != lines.end() && *line <= stretch_.end(); ++line) {
            each(static_cast<std::size_t>(line - lines.begin()), *line);
        }
    }

    void add_molecule() {
        for_lines(places_.atoms, [&](std::size_t atom, std::uint32_t line) { add_atom(atom, line); });
        for_lines(places_.zmatrix_rows, [&](std::size_t row, std::uint32_t line) { add_row(row, line); });
        const auto add_variable = [&](VariableFields fields) {
            add(fields.name, TokenRole::Variable);
            add_value(fields.value);
        };
        for (const auto* lines : {&places_.variables, &places_.constants}) {
            for_lines(*lines, [&](std::size_t, std::uint32_t line) { add_variable(zmatrix_variable_fields(text_, line)); });
        }
        for_lines(places_.cartesian_variables,
                  [&](std::size_t, std::uint32_t line) { add_variable(cartesian_variable_fields(text_, line)); });
    }

    // A number, or the name of a variable with a sign; of several words, as a scan has them, each by itself.
    void add_value(Span value) {
        std::string_view rest = value.in(text_);
        while (!(rest = trim_view(rest)).empty()) {
            const std::string_view word = rest.substr(0, std::min(rest.find_first_of(" \t,"), rest.size()));
            rest.remove_prefix(std::max<std::size_t>(word.size(), 1));
            const bool is_number = to_fortran_number(word).has_value();
            const bool is_signed = !is_number && (word.substr(0, 1) == "-" || word.substr(0, 1) == "+");
            add(span_of(text_, word.substr(is_signed ? 1 : 0)), is_number ? TokenRole::Number : TokenRole::Variable);
        }
    }

    void add_atom(std::size_t atom, std::uint32_t line) {
        const AtomLineFields fields = atom_line_fields(text_, line);
        add(fields.label, TokenRole::AtomLabel, atom + 1);
        add(fields.freeze, TokenRole::FreezeCode);
        for (const Span coordinate : fields.position) {
            add_value(coordinate);
        }
        add(fields.layer, TokenRole::Layer);
        add_link_atom(fields.rest);
    }

    // Behind a layer: the link atom, the number of the atom that it is bonded to, and scale factors.
    void add_link_atom(const std::vector<Span>& fields) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const std::optional<std::int32_t> number = to_int32(fields[i].in(text_));
            if (i == 0) {
                add(fields[i], TokenRole::Element);
            } else if (i == 1 && number && *number > 0) {
                add(fields[i], TokenRole::AtomNumber, static_cast<std::size_t>(*number));
            } else {
                add(fields[i], TokenRole::Number);
            }
        }
    }

    void add_row(std::size_t row, std::uint32_t line) {
        const RowFields fields = row_fields(text_, line);
        const ZMatrixEntry& entry = reading_.job.geom.zmatrix_entries[row];
        const std::optional<ZMatrixReference>* references[] = {&entry.bond, &entry.angle, &entry.dihedral};
        add(fields.label, TokenRole::AtomLabel, row + 1);
        for (std::size_t i = 0; i < 3; ++i) {
            const std::optional<ZMatrixReference>& reference = *references[i];
            if (reference && reference->atom > 0) {
                add(fields.references[i].atom, TokenRole::AtomNumber, static_cast<std::size_t>(reference->atom));
            }
            add_value(fields.references[i].value);
        }
        add(fields.code, TokenRole::Number);
        for (const Span field : fields.rest) {
            add(field, is_number_text(field.in(text_)) ? TokenRole::Number : TokenRole::Layer);
        }
    }

    void add_sections() {
        for (const SectionPlace& section : places_.sections) {
            if (!touch(section.lines, stretch_)) {
                continue;
            }
            const SectionReading read = read_section(section.kind, section.lines.in(text_));
            for (const SectionToken& token : read.tokens) {
                const Span place{section.lines.begin + token.span.begin, token.span.length};
                const bool names_atom = token.kind == TokenKind::Atom || token.kind == TokenKind::Atoms;
                add(place, role_of(token.kind), names_atom ? first_number(place) : 0);
            }
        }
    }

    static TokenRole role_of(TokenKind kind) noexcept {
        switch (kind) {
            case TokenKind::Atom:
            case TokenKind::Atoms:
                return TokenRole::AtomNumber;
            case TokenKind::Element:
                return TokenRole::Element;
            case TokenKind::Number:
            case TokenKind::End:
                return TokenRole::Number;
            case TokenKind::Word:
            case TokenKind::AnyAtom:
                break;
        }
        return TokenRole::SectionWord;
    }

    std::size_t first_number(Span place) const noexcept {
        const std::optional<std::int32_t> number = leading_int32(place.in(text_));
        return number && *number > 0 ? static_cast<std::size_t>(*number) : 0;
    }

    // All lines may end in one but those of the title.
    void add_comments() {
        const std::uint32_t end = std::min(stretch_.end(), places_.lines.end());
        std::size_t begin = std::max(stretch_.begin, places_.lines.begin);
        begin = begin == 0 ? 0 : text_.rfind('\n', begin - 1) + 1;
        std::string_view rest = begin <= end ? text_.substr(begin, places_.lines.end() - begin) : std::string_view();
        while (!rest.empty() && rest.data() <= text_.data() + end) {
            const std::string_view line = take_line(rest);
            const std::size_t length = without_comment(line).size();
            const Span comment = span_of(text_, line.substr(length));
            if (length < line.size() && (places_.title.empty() || !touch(places_.title, comment))) {
                add(comment, TokenRole::Comment);
            }
        }
    }

    std::string_view text_;
    const JobReading& reading_;
    const JobPlaces& places_;
    Span stretch_;
    std::size_t job_;
    std::vector<JobToken>& tokens_;
};

// Adds the --Link1-- lines between the end of one job and the beginning of the next that overlap a stretch.
void add_separators(std::string_view text, Span between, Span stretch, std::size_t job, std::vector<JobToken>& tokens) {
    for (const Span line : line_places(text, between)) {
        const Span word = span_of(text, trim_view(line.in(text)));
        if (!word.empty() && word.in(text).front() == '-' && touch(word, stretch)) {
            tokens.push_back({word, TokenRole::Separator, static_cast<std::uint32_t>(job), 0});
        }
    }
}

}  // namespace

std::vector<JobToken> tokens_in(const JobFile& file, Span stretch) {
    std::vector<JobToken> tokens;
    const std::vector<JobReading>& jobs = file.jobs();
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Span lines = jobs[i].places.lines;
        const Span between =
            span_between(lines.end(), i + 1 < jobs.size() ? jobs[i + 1].places.lines.begin : file.text().size());
        if (touch(lines, stretch)) {
            JobWalk(file, i, stretch, tokens).walk();
        }
        if (touch(between, stretch)) {
            add_separators(file.text(), between, stretch, i, tokens);
        }
    }
    return tokens;
}

std::optional<JobToken> token_at(const JobFile& file, std::size_t offset) {
    const std::vector<JobToken> tokens = tokens_in(file, span_between(offset, offset));
    const auto holds = [&](const JobToken& token) { return token.place.begin <= offset && offset < token.place.end(); };
    const auto inside = std::find_if(tokens.begin(), tokens.end(), holds);
    if (inside != tokens.end()) {
        return *inside;
    }
    const auto ends = [&](const JobToken& token) { return token.place.end() == offset; };
    const auto before = std::find_if(tokens.begin(), tokens.end(), ends);
    return before == tokens.end() ? std::nullopt : std::optional<JobToken>(*before);
}

std::optional<std::size_t> job_at(const JobFile& file, std::size_t offset) {
    const auto behind = std::upper_bound(file.jobs().begin(), file.jobs().end(), offset,
                                         [](std::size_t at, const JobReading& job) { return at < job.places.lines.begin; });
    return behind == file.jobs().begin() ? std::nullopt
                                         : std::optional(static_cast<std::size_t>(behind - file.jobs().begin()) - 1);
}

}  // namespace quor::input::gaussian
