// Works on the lines of a job, by the places of its reading.
#include <gjf/core/next/job_texts.hpp>

#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

namespace quor::input::gaussian {
namespace {

constexpr std::string_view note_begin = "! quor-gjf ";

enum class ReadContent { Nothing, Molecule, Orbitals, ForceConstants, Restart, Other };

// What a keyword, or an option of it, reads.
ReadContent content_of(std::string_view keyword, std::string_view option) {
    for (const CheckpointRead& row : checkpoint_reads()) {
        if (row.keyword != keyword || row.option != option) {
            continue;
        }
        if (row.content == "molecule") {
            return option == "modify" ? ReadContent::Other : ReadContent::Molecule;
        }
        if (row.content.find("force constants") != std::string_view::npos) {
            return ReadContent::ForceConstants;
        }
        if (option == "restart" && keyword != "scf") {
            return ReadContent::Restart;
        }
        if (row.content == "orbitals" && keyword == "guess") {
            return ReadContent::Orbitals;
        }
        return row.fails_without ? ReadContent::Other : ReadContent::Nothing;
    }
    return ReadContent::Nothing;
}

template <class Visit>
void visit_keywords(const RouteTree& route, const Visit& visit) {
    for (const RouteTree::Segment& segment : route.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            visit(keyword);
        }
    }
}

// Where the lines of a text begin.
std::vector<std::size_t> line_begins(std::string_view text) {
    std::vector<std::size_t> begins = {0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            begins.push_back(i + 1);
        }
    }
    return begins;
}

// The stretches of a text in which a stretch of its route stands.
std::vector<Span> text_places(const std::string& text, const JobLayout& layout, Span of_route) {
    const std::vector<std::size_t> begins = line_begins(text);
    const std::size_t mark = text.size() - skip_byte_order_mark(text).size();
    std::vector<Span> spans;
    for (const TextPlace& place : route_places(layout, of_route)) {
        const std::size_t begin = begins[place.line - 1] + place.column - 1 + (place.line == 1 ? mark : 0);
        spans.push_back(span_between(begin, begin + place.length));
    }
    return spans;
}

// What a keyword becomes; absent where it stays.
std::optional<std::string> keyword_without(const RouteTree& route, const RouteTree::Keyword& keyword, bool keeps_others) {
    std::vector<std::string> kept;
    bool changed = false;
    bool calculates = false;
    const auto is_calculated = [&](const RouteTree::Option& option) {
        return option.canonical == "calcfc" || option.canonical == "calcall";
    };
    const bool has_calculated = std::any_of(keyword.options.begin(), keyword.options.end(), is_calculated);
    for (const RouteTree::Option& option : keyword.options) {
        const ReadContent content = content_of(keyword.name, option.canonical);
        const bool is_force = content == ReadContent::ForceConstants;
        const bool goes = content == ReadContent::Molecule || content == ReadContent::Restart ||
                          (!keeps_others && (is_force || content == ReadContent::Orbitals));
        if (goes && is_force && keyword.name != "freq" && !has_calculated && !calculates) {
            kept.emplace_back("calcfc");
            calculates = true;
        } else if (!goes) {
            kept.emplace_back(option.place.in(route.text));
        }
        changed = changed || goes;
    }
    if (!changed) {
        return std::nullopt;
    }
    const bool needs_options = keyword.name == "geom" || keyword.name == "guess";
    std::string text(kept.empty() && needs_options ? std::string_view() : keyword.head.in(route.text));
    for (std::size_t i = 0; i < kept.size(); ++i) {
        text += (i > 0 ? "," : kept.size() > 1 ? "=(" : "=") + kept[i];
    }
    return text + (kept.size() > 1 ? ")" : "");
}

// The end of a line, its "\r" counted to it.
std::size_t line_end(std::string_view text, std::size_t from) {
    const std::size_t end = text.find('\n', from);
    const std::size_t stop = end == std::string_view::npos ? text.size() : end;
    return stop > from && text[stop - 1] == '\r' ? stop - 1 : stop;
}

std::string line_break(std::string_view text) {
    const std::size_t end = text.find('\n');
    return end != std::string_view::npos && end > 0 && text[end - 1] == '\r' ? "\r\n" : "\n";
}

std::string with_breaks(std::string_view lines, const std::string& separator) {
    std::string result;
    for (const std::string_view line : split_lines(lines)) {
        const std::string_view bare = line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
        result += (result.empty() ? "" : separator) + std::string(bare);
    }
    return result;
}

}  // namespace

CheckpointUse checkpoint_use(const JobReading& job) {
    CheckpointUse use;
    const RouteTree& route = job.layout.route;
    const auto note = [&](ReadContent content, Span place) {
        use.molecule = use.molecule || content == ReadContent::Molecule;
        use.other = use.other || content == ReadContent::Orbitals || content == ReadContent::ForceConstants;
        if (content == ReadContent::Other) {
            use.refused.emplace_back(place.in(route.text));
        }
    };
    for (const RouteTree::Segment& segment : route.segments) {
        note(content_of(segment.basis, ""), segment.place);
    }
    visit_keywords(route, [&](const RouteTree::Keyword& keyword) {
        note(content_of(keyword.name, ""), keyword.head);
        for (const RouteTree::Option& option : keyword.options) {
            note(content_of(keyword.name, option.canonical), keyword.place);
        }
    });
    return use;
}

std::string without_checkpoint_words(const std::string& text, bool keeps_others) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    const JobLayout& layout = jobs.at(0).layout;
    std::vector<TextEdit> edits;
    visit_keywords(layout.route, [&](const RouteTree::Keyword& keyword) {
        const std::optional<std::string> wanted = keyword_without(layout.route, keyword, keeps_others);
        const std::vector<Span> places = wanted ? text_places(text, layout, keyword.place) : std::vector<Span>();
        for (std::size_t i = 0; i < places.size(); ++i) {
            std::size_t begin = places[i].begin;
            const bool goes = wanted->empty() || i > 0;
            while (goes && begin > 0 && text[begin - 1] == ' ') {
                --begin;
            }
            edits.push_back({begin, places[i].end(), i == 0 ? *wanted : std::string()});
        }
    });
    std::sort(edits.begin(), edits.end(), [](const TextEdit& a, const TextEdit& b) { return a.begin < b.begin; });
    return with_edits(text, edits);
}

MoleculeText molecule_text(const std::string& text, const JobReading& job) {
    const auto at = [&](Span place) { return std::string(place.in(text)); };
    std::string atoms = at(job.places.molecule);
    atoms.erase(std::find_if_not(atoms.rbegin(), atoms.rend(), is_white_space).base(), atoms.end());
    return {at(job.places.title), at(job.places.charge_line), atoms};
}

std::string with_molecule(const std::string& text, const MoleculeText& molecule) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    const JobReading& job = jobs.at(0);
    const std::string separator = line_break(text);
    const std::string atoms = separator + with_breaks(molecule.atoms, separator);
    if (!job.places.charge_line.empty()) {
        const std::size_t end = line_end(text, job.places.charge_line.begin);
        return with_edits(text, {{end, end, atoms}});
    }
    const Span last = job.places.overlays.empty() ? job.places.route_words.back() : job.places.overlays;
    const std::size_t end = line_end(text, last.end());
    const std::string title = molecule.title.empty() ? "title" : with_breaks(molecule.title, separator);
    return with_edits(text, {{end, end, separator + separator + title + separator + separator + molecule.charge + atoms}});
}

std::optional<AttemptNote> attempt_note(const std::string& text) {
    const std::size_t begin = text.find(std::string(note_begin) + "retry: ");
    if (begin == std::string::npos || (begin > 0 && text[begin - 1] != '\n')) {
        return std::nullopt;
    }
    std::string_view line(text.data() + begin + note_begin.size() + 7,
                          line_end(text, begin) - begin - note_begin.size() - 7);
    constexpr std::string_view middle = " attempt ";
    const std::size_t at = line.find(middle);
    if (at == std::string_view::npos) {
        return std::nullopt;
    }
    AttemptNote note{std::string(line.substr(0, at)), 0};
    line.remove_prefix(at + middle.size());
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), note.attempt);
    return error == std::errc() && note.attempt > 0 ? std::optional<AttemptNote>(note) : std::nullopt;
}

std::string with_note(const std::string& text, const std::string& note) {
    const std::vector<JobReading> jobs = read_jobs_with_layout(text);
    const Span route = jobs.at(0).places.route_words.front();
    const std::size_t begin = text.rfind('\n', route.begin) + 1;
    std::vector<TextEdit> edits;
    for (const std::size_t line : line_begins(std::string_view(text).substr(0, begin))) {
        const bool is_note = line < begin && std::string_view(text).substr(line).starts_with(note_begin);
        if (is_note) {
            edits.push_back({line, std::min(text.find('\n', line) + 1, begin), {}});
        }
    }
    edits.push_back({begin, begin, std::string(note_begin) + note + line_break(text)});
    return with_edits(text, edits);
}

std::string jobs_from(const std::string& text, const std::vector<JobReading>& jobs, std::size_t first, bool alone) {
    const std::size_t begin = jobs[first].places.lines.begin;
    if (!alone || first + 1 == jobs.size()) {
        return first == 0 ? text : text.substr(begin);
    }
    // Up to the line that parts it from the next.
    const std::size_t end = std::min<std::size_t>(jobs[first].places.lines.end(), text.size());
    const std::size_t stop = text.find('\n', end);
    return text.substr(begin, (stop == std::string::npos ? text.size() : stop + 1) - begin);
}

}  // namespace quor::input::gaussian
