// Writes changed, added and removed sections, with the blank lines that belong to them.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>

namespace quor::input::gaussian {
namespace {

constexpr std::size_t none = static_cast<std::size_t>(-1);

bool same_bonds(const ConnectivitySection& a, const ConnectivitySection& b) {
    return a.bonds.size() == b.bonds.size() &&
           std::equal(a.bonds.begin(), a.bonds.end(), b.bonds.begin(),
                      [](const Bond& x, const Bond& y) { return x == y && x.order == y.order; });
}

bool same_content(const ExtraInputSection& a, const ExtraInputSection& b) {
    const ConnectivitySection* bonds_a = a.connectivity();
    const ConnectivitySection* bonds_b = b.connectivity();
    if ((bonds_a == nullptr) != (bonds_b == nullptr)) {
        return false;
    }
    return bonds_a != nullptr ? same_bonds(*bonds_a, *bonds_b) : a.text() == b.text();
}

// Finds for each section that should be there the one that it was: equal ones first, then those of its kind, never crossing.
std::vector<std::size_t> match_sections(const std::vector<ExtraInputSection>& before,
                                        const std::vector<ExtraInputSection>& after) {
    std::vector<std::size_t> match(after.size(), none);
    const auto fits = [&](std::size_t j, std::size_t i) {
        for (std::size_t k = 0; k < match.size(); ++k) {
            if (match[k] != none && ((k < j && match[k] >= i) || (k > j && match[k] <= i))) {
                return false;
            }
        }
        return true;
    };
    for (const bool equal : {true, false}) {
        for (std::size_t j = 0; j < after.size(); ++j) {
            for (std::size_t i = 0; i < before.size() && match[j] == none; ++i) {
                const bool alike = before[i].kind == after[j].kind && (!equal || same_content(before[i], after[j]));
                if (alike && fits(j, i)) {
                    match[j] = i;
                }
            }
        }
    }
    return match;
}

// Removes a section with the blank lines behind it, or before it when it is the last.
void remove_section(JobRewriting& job, const LineRange& range) {
    for (std::size_t line = range.first; line <= range.last; ++line) {
        job.edits.remove(line);
    }
    const std::size_t job_end = job.before.layout.lines.last;
    std::size_t behind = range.last + 1;
    while (behind <= job_end && is_blank_line(job.lines.line(behind))) {
        ++behind;
    }
    if (behind <= job_end) {
        for (std::size_t line = range.last + 1; line < behind; ++line) {
            job.edits.remove(line);
        }
        return;
    }
    // At the end of the job, the blank lines behind it close what stands before it.
    if (range.last < job_end) {
        for (std::size_t line = range.first - 1; line > job.before.layout.lines.first && is_blank_line(job.lines.line(line));
             --line) {
            job.edits.remove(line);
        }
    }
}

// Returns the last line of what stands before the sections.
std::size_t line_before_sections(const JobRewriting& job) {
    const JobLayout& layout = job.before.layout;
    for (const std::size_t line : {layout.molecule.last, layout.charge_line, layout.title.last, layout.overlays.last}) {
        if (line != 0) {
            return line;
        }
    }
    return layout.route_words.empty() ? layout.lines.first : layout.route_words.back().line;
}

// Puts a section behind a line, with a blank line before it; the blank line behind is there or is put there.
void insert_section(JobRewriting& job, std::size_t line, const std::string& text) {
    job.edits.insert_after(line, "");
    for (const std::string_view part : split_lines(text)) {
        job.edits.insert_after(line, std::string(part));
    }
    if (line >= job.before.layout.lines.last) {
        job.edits.insert_after(line, "");
    }
}

void rewrite_section(JobRewriting& job, std::size_t old, const ExtraInputSection& wanted) {
    const SectionLayout& layout = job.before.layout.sections[old];
    const ExtraInputSection& before = job.before.job.extra_inputs[old];
    const ConnectivitySection* bonds = wanted.connectivity();
    if (bonds != nullptr && before.connectivity() != nullptr) {
        if (job.places.renumbered || job.places.added || !same_bonds(*bonds, *before.connectivity())) {
            rewrite_connectivity(job, layout.lines, *bonds);
        }
        return;
    }
    const std::string text = wanted.text(job.after.geom.atom_count());
    if (text != before.text()) {
        replace_lines(job, layout.lines, text);
    }
}

}  // namespace

void rewrite_sections(JobRewriting& job) {
    const std::vector<ExtraInputSection>& before = job.before.job.extra_inputs;
    const std::vector<ExtraInputSection>& after = job.after.extra_inputs;
    const std::vector<std::size_t> match = match_sections(before, after);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (std::find(match.begin(), match.end(), i) == match.end()) {
            remove_section(job, job.before.layout.sections[i].lines);
        }
    }
    std::size_t line = line_before_sections(job);
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (match[j] != none) {
            rewrite_section(job, match[j], after[j]);
            line = job.before.layout.sections[match[j]].lines.last;
        } else {
            insert_section(job, line, after[j].text(job.after.geom.atom_count()));
        }
    }
}

}  // namespace quor::input::gaussian
