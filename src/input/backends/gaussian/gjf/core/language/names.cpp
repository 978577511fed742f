// Finds the places of a name, and changes it in all of them.
#include <gjf/core/language/names.hpp>

#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/language/route_tokens.hpp>
#include <gjf/core/language/stretches.hpp>
#include <gjf/core/route/route_words.hpp>
#include <gjf/core/sections/section_kinds.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <array>
#include <span>

namespace quor::input::gaussian {
namespace {

const SectionPlace* section_of(const JobReading& reading, Span place) {
    for (const SectionPlace& section : reading.places.sections) {
        if (holds(section.lines, place)) {
            return &section;
        }
    }
    return nullptr;
}

std::vector<Span> variable_definitions(const JobFile& file, const JobReading& reading) {
    std::vector<Span> names;
    for (const auto* lines : {&reading.places.variables, &reading.places.constants}) {
        for (const std::uint32_t line : *lines) {
            names.push_back(zmatrix_variable_fields(file.text(), line).name);
        }
    }
    for (const std::uint32_t line : reading.places.cartesian_variables) {
        names.push_back(cartesian_variable_fields(file.text(), line).name);
    }
    return names;
}

// Takes the places of the tokens of a job that are the same name.
template <typename Same>
void add_places(const JobFile& file, std::size_t job, Same same, Occurrences& found) {
    for (const JobToken& token : tokens_in(file, file.jobs()[job].places.lines)) {
        if (same(token)) {
            found.uses.push_back(token.place);
        }
    }
}

Occurrences variable_occurrences(const JobFile& file, const JobToken& token) {
    Occurrences found{NameKind::Variable, token.place, {}, {}};
    const std::string name = to_lower_copy(token.place.in(file.text()));
    add_places(
        file, token.job,
        [&](const JobToken& each) {
            return each.role == TokenRole::Variable && equals_folded(each.place.in(file.text()), name);
        },
        found);
    const std::vector<Span> definitions = variable_definitions(file, file.jobs()[token.job]);
    const auto is_definition = [&](Span place) {
        return std::find(definitions.begin(), definitions.end(), place) != definitions.end();
    };
    std::copy_if(found.uses.begin(), found.uses.end(), std::back_inserter(found.definitions), is_definition);
    std::erase_if(found.uses, is_definition);
    return found;
}

// Tells whether an atom number, or a range of them, holds a number.
bool names_atom(std::string_view text, std::size_t number) {
    const std::size_t dash = text.find('-', 1);
    const std::optional<std::int64_t> first = to_int64(text.substr(0, dash));
    const std::optional<std::int64_t> last = dash == std::string_view::npos ? first : to_int64(text.substr(dash + 1));
    const auto wanted = static_cast<std::int64_t>(number);
    return first && last && *first <= wanted && wanted <= *last;
}

Occurrences atom_occurrences(const JobFile& file, const JobToken& token) {
    Occurrences found{NameKind::Atom, token.place, {}, {}};
    add_places(
        file, token.job,
        [&](const JobToken& each) {
            if (each.role == TokenRole::AtomLabel && each.number == token.number) {
                found.definitions.push_back(each.place);
            }
            return each.role == TokenRole::AtomNumber &&
                   (each.number == token.number || names_atom(each.place.in(file.text()), token.number));
        },
        found);
    return found;
}

struct CheckpointName {
    Span value;
    std::string path;
    bool is_written = false;  // by %chk
};

// Every %chk and %oldchk of a file.
std::vector<CheckpointName> checkpoint_names(const JobFile& file) {
    std::vector<CheckpointName> names;
    for (const JobReading& reading : file.jobs()) {
        for (const Link0Place& line : reading.places.link0) {
            const Link0Key* key = find_link0_key(line.key.in(file.text()));
            if (key != nullptr && !line.value.empty() && (key->name == "chk" || key->name == "oldchk")) {
                names.push_back({line.value, checkpoint_path(line.value.in(file.text())), key->name == "chk"});
            }
        }
    }
    return names;
}

Occurrences checkpoint_occurrences(const JobFile& file, const JobToken& token) {
    Occurrences found;
    const std::vector<CheckpointName> names = checkpoint_names(file);
    const auto asked =
        std::find_if(names.begin(), names.end(), [&](const CheckpointName& each) { return each.value == token.place; });
    if (asked == names.end()) {
        return found;
    }
    found.kind = NameKind::Checkpoint;
    found.place = token.place;
    for (const CheckpointName& each : names) {
        if (each.path == asked->path) {
            const bool defines = each.is_written && found.definitions.empty();
            (defines ? found.definitions : found.uses).push_back(each.value);
        }
    }
    return found;
}

// Where a route has one of the words that ask for a section: an option, a keyword, or a basis set as gen.
std::vector<Span> places_of_word(const JobReading& reading, std::string_view word) {
    const RouteTree& route = reading.layout.route;
    if (const std::optional<Span> place = RouteWords(route).find_word(word)) {
        return route_spans(reading, *place);
    }
    for (const RouteToken& token : route_tokens(route)) {
        if (token.role == TokenRole::BasisSet && equals_folded(token.place.in(route.text), word)) {
            return route_spans(reading, token.place);
        }
    }
    return {};
}

// The words of a route that ask for a section, of those that the kind names: "genecp or pseudo=read".
std::vector<Span> requests_of(const JobReading& reading, ExtraInputSectionKind kind) {
    std::vector<Span> places;
    std::string_view rest = extra_input_request(kind);
    while (!rest.empty()) {
        const std::string_view word = rest.substr(0, std::min(rest.find_first_of(" ,"), rest.size()));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        const std::vector<Span> found = word.empty() ? std::vector<Span>() : places_of_word(reading, word);
        places.insert(places.end(), found.begin(), found.end());
    }
    return places;
}

// From a section to the word that asks for it, or back.
Occurrences section_occurrences(const JobFile& file, const JobToken& token) {
    const JobReading& reading = file.jobs()[token.job];
    if (const SectionPlace* section = section_of(reading, token.place)) {
        return {NameKind::Section, token.place, requests_of(reading, section->kind), {section->lines}};
    }
    Occurrences found;
    for (const SectionPlace& section : reading.places.sections) {
        const std::vector<Span> words = requests_of(reading, section.kind);
        if (std::any_of(words.begin(), words.end(), [&](Span word) { return holds(word, token.place); })) {
            found.kind = NameKind::Section;
            found.place = token.place;
            found.definitions.push_back(section.lines);
            found.uses = words;
        }
    }
    return found;
}

// Of a row: its own atom, and those that it refers to up to the one at a place.
std::vector<std::size_t> row_atoms(const JobFile& file, const JobToken& token) {
    const JobReading& reading = file.jobs()[token.job];
    const std::vector<std::uint32_t>& rows = reading.places.zmatrix_rows;
    const auto behind = std::upper_bound(rows.begin(), rows.end(), token.place.begin);
    if (behind == rows.begin()) {
        return {};
    }
    const auto row = static_cast<std::size_t>(behind - rows.begin()) - 1;
    const RowFields fields = row_fields(file.text(), rows[row]);
    const ZMatrixEntry& entry = reading.job.geom.zmatrix_entries[row];
    const std::array<const std::optional<ZMatrixReference>*, 3> references = {&entry.bond, &entry.angle, &entry.dihedral};
    std::vector<std::size_t> atoms = {row + 1};
    for (std::size_t i = 0; i < references.size() && *references[i] && (*references[i])->atom > 0; ++i) {
        atoms.push_back(static_cast<std::size_t>((*references[i])->atom));
        if (fields.references[i].atom == token.place) {
            return atoms;
        }
    }
    return {};
}

std::vector<std::size_t> atoms_of_line(const JobFile& file, const SectionPlace& section, const JobToken& token) {
    const SectionReading read = read_section(section.kind, section.lines.in(file.text()));
    const Span in_section{token.place.begin - section.lines.begin, token.place.length};
    std::vector<std::size_t> atoms;
    for (const SectionLine& line : read.lines) {
        if (!holds(line.span, in_section) || (line.form != LineForm::Coordinate && line.form != LineForm::Bonds)) {
            continue;
        }
        for (const SectionToken& each : read.tokens_of(line)) {
            // Of bonds: the first atom and the one that is asked for.
            const bool counts = line.form == LineForm::Coordinate || atoms.empty() || each.span == in_section;
            const std::optional<std::int32_t> number = to_int32(read[each.span]);
            if (counts && each.kind == TokenKind::Atom && number && *number > 0) {
                atoms.push_back(static_cast<std::size_t>(*number));
            }
        }
    }
    return atoms;
}

bool is_name(std::string_view name) {
    return !name.empty() && is_letter(name.front()) &&
           std::all_of(name.begin(), name.end(), [](char c) { return is_letter(c) || is_digit(c) || c == '_'; });
}

void require_new_variable(const JobFile& file, const JobToken& token, const std::string& name) {
    if (!is_name(name)) {
        throw RenameError("'" + name + "' is no name of a variable: a letter, then letters, digits and underscores");
    }
    const bool same = equals_folded(token.place.in(file.text()), to_lower_copy(name));
    if (!same && find_variable(file.jobs()[token.job].job, name)) {
        throw RenameError("'" + name + "' is the name of another variable");
    }
}

void require_new_checkpoint(const JobFile& file, const JobToken& token, const std::string& name) {
    if (trim_view(name).empty() || name.find_first_of("\r\n!") != std::string::npos) {
        throw RenameError("a checkpoint needs a name in one line, without '!'");
    }
    const std::string old_path = checkpoint_path(token.place.in(file.text()));
    const std::string path = checkpoint_path(name);
    for (const CheckpointName& each : checkpoint_names(file)) {
        if (path != old_path && each.path == path) {
            throw RenameError("'" + name + "' is the name of another checkpoint of this file");
        }
    }
}

// A checkpoint's new name, with an extension or none as the old one was written.
std::string as_written(std::string_view old, const std::string& name) {
    const auto has_extension = [](std::string_view path) {
        return path.size() > 4 && equals_folded(path.substr(path.size() - 4), ".chk");
    };
    if (has_extension(old) == has_extension(name)) {
        return name;
    }
    return has_extension(old) ? name + ".chk" : name.substr(0, name.size() - 4);
}

}  // namespace

RenameError::~RenameError() = default;

Occurrences occurrences_at(const JobFile& file, std::size_t offset) {
    const std::optional<JobToken> token = token_at(file, offset);
    if (!token) {
        return {};
    }
    switch (token->role) {
        case TokenRole::Variable:
            return variable_occurrences(file, *token);
        case TokenRole::AtomLabel:
        case TokenRole::AtomNumber:
            return token->number == 0 ? Occurrences() : atom_occurrences(file, *token);
        case TokenRole::Link0Value:
            return checkpoint_occurrences(file, *token);
        case TokenRole::Keyword:
        case TokenRole::Option:
        case TokenRole::BasisSet:
        case TokenRole::SectionWord:
        case TokenRole::Element:
            return section_occurrences(file, *token);
        default:
            return {};
    }
}

std::optional<Span> renamable_at(const JobFile& file, std::size_t offset) {
    const Occurrences found = occurrences_at(file, offset);
    const bool has_name = found.kind == NameKind::Variable || found.kind == NameKind::Checkpoint;
    return has_name ? std::optional(found.place) : std::nullopt;
}

std::vector<TextEdit> rename_edits(const JobFile& file, std::size_t offset, const std::string& name) {
    const std::optional<JobToken> token = token_at(file, offset);
    const Occurrences found = occurrences_at(file, offset);
    if (found.kind == NameKind::Variable) {
        require_new_variable(file, *token, name);
    } else if (found.kind == NameKind::Checkpoint) {
        require_new_checkpoint(file, *token, name);
    } else {
        throw RenameError("nothing here has a name to change");
    }
    std::vector<TextEdit> edits;
    for (const auto* places : {&found.definitions, &found.uses}) {
        for (const Span place : *places) {
            const std::string_view old = place.in(file.text());
            edits.push_back({place.begin, place.end(), found.kind == NameKind::Checkpoint ? as_written(old, name) : name});
        }
    }
    std::sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
    return edits;
}

std::optional<ZMatrixVariable> find_variable(const GJFData& job, std::string_view name) {
    const std::string lower = to_lower_copy(name);
    for (const auto* list : {&job.geom.variables, &job.geom.constants, &job.geom.cartesian_variables}) {
        const auto found = std::find_if(list->begin(), list->end(), [&](const ZMatrixVariable& variable) {
            return equals_folded(variable.name, lower);
        });
        if (found != list->end()) {
            return *found;
        }
    }
    return std::nullopt;
}

std::vector<std::size_t> coordinate_atoms(const JobFile& file, const JobToken& token) {
    const SectionPlace* section = section_of(file.jobs()[token.job], token.place);
    return section == nullptr ? row_atoms(file, token) : atoms_of_line(file, *section, token);
}

}  // namespace quor::input::gaussian
