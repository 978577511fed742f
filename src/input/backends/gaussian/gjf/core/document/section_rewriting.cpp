// Writes changed, added and removed sections, with the blank lines that belong to them.
#include <gjf/core/document/section_rewriting.hpp>

#include <gjf/core/document/job_rewriting.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/reading.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <variant>

namespace quor::input::gaussian {
namespace {

bool same_bonds(const ConnectivitySection& a, const ConnectivitySection& b) {
    return a.bonds.size() == b.bonds.size() &&
           std::equal(a.bonds.begin(), a.bonds.end(), b.bonds.begin(),
                      [](const Bond& x, const Bond& y) { return x == y && x.order == y.order; });
}

// Puts sections into an order in which only those of the same kind and content stand in one place.
struct OrderByContent {
    bool operator()(const ExtraInputSection* a, const ExtraInputSection* b) const {
        if (a->kind != b->kind || a->content.index() != b->content.index()) {
            return std::pair(a->kind, a->content.index()) < std::pair(b->kind, b->content.index());
        }
        if (a->connectivity() == nullptr) {
            return std::get<std::string>(a->content) < std::get<std::string>(b->content);
        }
        const std::vector<Bond>& x = a->connectivity()->bonds;
        const std::vector<Bond>& y = b->connectivity()->bonds;
        return std::lexicographical_compare(x.begin(), x.end(), y.begin(), y.end(), [](const Bond& p, const Bond& q) {
            return std::tie(p.atom1, p.atom2, p.order) < std::tie(q.atom1, q.atom2, q.order);
        });
    }
};

// The places of sections that are alike, in order. Since matches never cross, each is passed once.
struct Places {
    std::vector<std::size_t> places;
    std::size_t next = 0;

    // Returns the first place from `begin` on; the `begin` of later questions is no smaller.
    std::size_t first_from(std::size_t begin) {
        while (next < places.size() && places[next] < begin) {
            ++next;
        }
        return next < places.size() ? places[next] : no_section;
    }
};

// Matches equal sections, each with the first that is left behind the last match.
void match_equal(const std::vector<ExtraInputSection>& before, const std::vector<ExtraInputSection>& after,
                 std::vector<std::size_t>& match) {
    std::map<const ExtraInputSection*, Places, OrderByContent> equal;
    for (std::size_t i = 0; i < before.size(); ++i) {
        equal[&before[i]].places.push_back(i);
    }
    std::size_t begin = 0;
    for (std::size_t j = 0; j < after.size(); ++j) {
        const auto found = equal.find(&after[j]);
        const std::size_t place = found == equal.end() ? no_section : found->second.first_from(begin);
        if (place != no_section) {
            match[j] = place;
            begin = place + 1;
        }
    }
}

// Matches what is left with the first of its kind between the matches around it.
void match_kinds(const std::vector<ExtraInputSection>& before, const std::vector<ExtraInputSection>& after,
                 std::vector<std::size_t>& match) {
    std::map<ExtraInputSectionKind, Places> kinds;
    for (std::size_t i = 0; i < before.size(); ++i) {
        kinds[before[i].kind].places.push_back(i);
    }
    std::vector<std::size_t> end(after.size());
    for (std::size_t j = after.size(), bound = before.size(); j-- > 0;) {
        bound = match[j] != no_section ? match[j] : bound;
        end[j] = bound;
    }
    std::size_t begin = 0;
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (match[j] == no_section) {
            const std::size_t place = kinds[after[j].kind].first_from(begin);
            match[j] = place < end[j] ? place : no_section;
        }
        begin = match[j] != no_section ? match[j] + 1 : begin;
    }
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

std::vector<std::size_t> match_sections(const std::vector<ExtraInputSection>& before,
                                        const std::vector<ExtraInputSection>& after) {
    std::vector<std::size_t> match(after.size(), no_section);
    match_equal(before, after, match);
    match_kinds(before, after, match);
    return match;
}

void rewrite_sections(JobRewriting& job) {
    const std::vector<ExtraInputSection>& before = job.before.job.extra_inputs;
    const std::vector<ExtraInputSection>& after = job.sections;
    const std::vector<std::size_t> match = match_sections(before, after);
    std::vector<bool> stays(before.size());
    for (const std::size_t i : match) {
        if (i != no_section) {
            stays[i] = true;
        }
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!stays[i]) {
            remove_section(job, job.before.layout.sections[i].lines);
        }
    }
    std::size_t line = line_before_sections(job);
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (match[j] != no_section) {
            rewrite_section(job, match[j], after[j]);
            line = job.before.layout.sections[match[j]].lines.last;
        } else {
            insert_section(job, line, after[j].text(job.after.geom.atom_count()));
        }
    }
}

}  // namespace quor::input::gaussian
