// Lists the parts of a job file and the hints beside its lines.
#include <gjf/core/language/structure.hpp>

#include <gjf/core/language/job_tokens.hpp>
#include <gjf/core/language/molecule_texts.hpp>
#include <gjf/core/language/stretches.hpp>
#include <gjf/core/reader/included_files.hpp>
#include <gjf/core/reader/section_name.hpp>
#include <gjf/core/sections/section_tokens.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <string_view>

namespace quor::input::gaussian {
namespace {

// A stretch grown to whole lines, without the last line end.
Span whole_lines(std::string_view text, Span part) {
    const std::size_t before = part.begin == 0 ? std::string_view::npos : text.rfind('\n', part.begin - 1);
    std::size_t end = std::min(text.find('\n', part.end()), text.size());
    end -= end > part.end() && text[end - 1] == '\r' ? 1 : 0;
    return span_between(before + 1, end);
}

Span from_to(Span first, Span last) noexcept { return span_between(first.begin, last.end()); }

std::string first_line(std::string_view text) {
    return text.empty() ? std::string() : std::string(trim_view(take_line(text)));
}

class PartsOfJob {
   public:
    PartsOfJob(std::string_view text, const JobReading& reading) : text_(text), reading_(reading), places_(reading.places) {}

    FilePart parts() {
        job_.kind = PartKind::Job;
        job_.name = "job " + std::to_string(reading_.layout.number);
        job_.detail = first_line(reading_.job.title);
        job_.lines = places_.lines;
        if (!places_.link0.empty()) {
            add(PartKind::Link0, "Link 0", from_to(places_.link0.front().key, places_.link0.back().key));
        }
        if (!places_.route_words.empty()) {
            add(PartKind::Route, "route", from_to(places_.route_words.front(), places_.route_words.back()),
                reading_.layout.route.text);
        }
        add(PartKind::Title, "title", places_.title, job_.detail);
        add_molecule();
        for (const SectionPlace& section : places_.sections) {
            add(PartKind::Section, section_name(section.kind, reading_.job.control), section.lines);
        }
        std::stable_sort(job_.parts.begin(), job_.parts.end(),
                         [](const FilePart& a, const FilePart& b) { return a.lines.begin < b.lines.begin; });
        return std::move(job_);
    }

   private:
    void add(PartKind kind, std::string name, Span place, std::string detail = {}) {
        if (!place.empty()) {
            job_.parts.push_back({kind, std::move(name), std::move(detail), whole_lines(text_, place), {}});
        }
    }

    void add_molecule() {
        const Span all = places_.charge_line.empty() ? places_.molecule
                         : places_.molecule.empty()  ? places_.charge_line
                                                     : from_to(places_.charge_line, places_.molecule);
        const std::size_t atoms = reading_.job.geom.atom_count();
        add(PartKind::Molecule, "molecule", all, std::to_string(atoms) + (atoms == 1 ? " atom" : " atoms"));
        for (const auto* lines : {&places_.variables, &places_.constants, &places_.cartesian_variables}) {
            if (!lines->empty() && !all.empty()) {
                FilePart& molecule = job_.parts.back();
                const char* name = lines == &places_.constants ? "constants" : "variables";
                molecule.parts.push_back({PartKind::Variables,
                                          name,
                                          std::to_string(lines->size()),
                                          whole_lines(text_, span_between(lines->front(), lines->back())),
                                          {}});
            }
        }
    }

    std::string_view text_;
    const JobReading& reading_;
    const JobPlaces& places_;
    FilePart job_;
};

// The values of the coordinates that the lines of a section name.
void add_coordinates(const JobFile& file, const JobReading& reading, const SectionPlace& section, Span stretch,
                     std::vector<InlayHint>& hints) {
    const SectionReading read = read_section(section.kind, section.lines.in(file.text()));
    std::vector<AtomPosition> atoms;
    for (const SectionLine& line : read.lines) {
        const Span place{section.lines.begin + line.span.begin, line.span.length};
        if (line.form != LineForm::Coordinate || !touch(place, stretch)) {
            continue;
        }
        std::vector<std::size_t> numbers;
        std::uint32_t end = 0;
        for (const SectionToken& token : read.tokens_of(line)) {
            if (token.kind == TokenKind::Atom) {
                numbers.push_back(static_cast<std::size_t>(std::max(to_int32(read[token.span]).value_or(0), 0)));
                end = token.span.end();
            }
        }
        if (atoms.empty()) {
            atoms = positions(reading.job);
        }
        const std::string value = coordinate_text(atoms, numbers);
        if (!value.empty()) {
            hints.push_back({section.lines.begin + end, value.substr(value.find(": ") + 2)});
        }
    }
}

}  // namespace

std::vector<FilePart> file_parts(const JobFile& file) {
    std::vector<FilePart> parts;
    for (const JobReading& reading : file.jobs()) {
        parts.push_back(PartsOfJob(file.text(), reading).parts());
    }
    return parts;
}

std::vector<InlayHint> inlay_hints(const JobFile& file, Span stretch) {
    std::vector<InlayHint> hints;
    for (const JobToken& token : tokens_in(file, stretch)) {
        if (token.role == TokenRole::AtomLabel) {
            hints.push_back({token.place.begin, std::to_string(token.number)});
        }
    }
    for (const JobReading& reading : file.jobs()) {
        for (const SectionPlace& section : reading.places.sections) {
            if (touch(section.lines, stretch)) {
                add_coordinates(file, reading, section, stretch, hints);
            }
        }
    }
    std::stable_sort(hints.begin(), hints.end(), [](const InlayHint& a, const InlayHint& b) { return a.offset < b.offset; });
    return hints;
}

std::vector<FileLink> file_links(const JobFile& file) {
    std::vector<FileLink> links;
    for (const Span line : line_places(file.text(), span_between(0, file.text().size()))) {
        if (is_include_line(line.in(file.text()))) {
            const std::string_view name = included_name(line.in(file.text()));
            links.push_back({span_of(file.text(), name), std::string(name)});
        }
    }
    return links;
}

}  // namespace quor::input::gaussian
