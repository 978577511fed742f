// Writes changed Link 0 lines, overlays, title and charge line.
#include <gjf/core/document/job_rewriting.hpp>

#include <gjf/core/document/field_line.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <iterator>
#include <optional>

namespace quor::input::gaussian {
namespace {

// The value of a Link 0 line "%key=value", as a view into it; empty when the line has another form or key.
std::string_view value_in(std::string_view line, const Link0Key& wanted) {
    const Link0Words words = link0_words(line);
    return words.is_assigned && wanted.is_spelt_out(to_lower_copy(words.key)) ? words.value : std::string_view();
}

void insert_link0(JobRewriting& job, const std::string& text) {
    const JobLayout& layout = job.before.layout;
    if (!layout.link0_lines.empty()) {
        job.edits.insert_after(layout.link0_lines.back(), text);
    } else if (!layout.route_words.empty()) {
        job.edits.insert_before(layout.route_words.front().line, text);
    } else {
        job.edits.insert_before(layout.lines.first, text);
    }
}

void rewrite_link0_value(JobRewriting& job, const Link0Key& entry) {
    const std::optional<std::string> now = link0_value(job.after.control, entry);
    if (link0_value(job.before.job.control, entry) == now) {
        return;
    }
    std::vector<std::size_t> lines;
    for (const std::size_t number : job.before.layout.link0_lines) {
        if (!value_in(job.lines.line(number), entry).empty()) {
            lines.push_back(number);
        }
    }
    if (!now) {
        std::for_each(lines.begin(), lines.end(), [&](std::size_t number) { job.edits.remove(number); });
    } else if (lines.empty()) {
        insert_link0(job, "%" + std::string(entry.name) + "=" + *now);
    } else {
        // The last line of a kind is the one that holds.
        const std::string_view line = job.lines.line(lines.back());
        const std::string_view value = value_in(line, entry);
        const auto begin = static_cast<std::size_t>(value.data() - line.data());
        job.edits.replace(lines.back(), std::string(line).replace(begin, value.size(), *now));
    }
}

void rewrite_other_lines(JobRewriting& job) {
    std::vector<std::string> added = job.after.control.other_link0_lines;
    for (const std::string& old : job.before.job.control.other_link0_lines) {
        const auto kept = std::find(added.begin(), added.end(), old);
        if (kept != added.end()) {
            added.erase(kept);
            continue;
        }
        for (const std::size_t number : job.before.layout.link0_lines) {
            if (!job.edits.is_removed(number) && trim_view(without_comment(job.lines.line(number))) == old) {
                job.edits.remove(number);
                break;
            }
        }
    }
    for (const std::string& line : added) {
        insert_link0(job, line);
    }
}

}  // namespace

void replace_lines(JobRewriting& job, const LineRange& range, const std::string& text) {
    std::vector<std::string_view> wanted = split_lines(text);
    std::size_t first = range.first;
    std::size_t last = range.last;
    std::size_t begin = 0;
    std::size_t end = wanted.size();
    while (begin < end && first <= last && job.lines.line(first) == wanted[begin]) {
        ++first;
        ++begin;
    }
    while (begin < end && first <= last && job.lines.line(last) == wanted[end - 1]) {
        --last;
        --end;
    }
    for (; begin < end && first <= last; ++begin, ++first) {
        job.edits.replace(first, std::string(wanted[begin]));
    }
    for (; first <= last; ++first) {
        job.edits.remove(first);
    }
    for (; begin < end; ++begin) {
        first > range.first ? job.edits.insert_after(first - 1, std::string(wanted[begin]))
                            : job.edits.insert_before(first, std::string(wanted[begin]));
    }
}

void rewrite_link0(JobRewriting& job) {
    for (const Link0Key& key : link0_keys()) {
        if (key.in_model) {
            rewrite_link0_value(job, key);
        }
    }
    rewrite_other_lines(job);
}

void rewrite_overlays(JobRewriting& job) {
    if (job.before.job.extra_overlays == job.after.extra_overlays) {
        return;
    }
    if (job.before.layout.overlays.empty() || !job.after.extra_overlays) {
        throw GJFParseException("The overlay section can be changed, but neither added nor removed, in a document");
    }
    replace_lines(job, job.before.layout.overlays, *job.after.extra_overlays);
}

void rewrite_title(JobRewriting& job) {
    const JobLayout& layout = job.before.layout;
    if (job.before.job.title == job.after.title) {
        return;
    }
    if (layout.charge_line == 0) {
        throw GJFParseException("The title of this job comes from its checkpoint and cannot be changed");
    }
    if (!layout.title.empty()) {
        replace_lines(job, layout.title, job.after.title);
    } else {
        // An empty title is two blank lines; the new one stands between them.
        for (const std::string_view line : split_lines(job.after.title)) {
            job.edits.insert_before(layout.charge_line - 1, std::string(line));
        }
    }
}

void rewrite_charge_line(JobRewriting& job) {
    std::vector<ChargeSpinPair> after = {{job.after.geom.charge, job.after.geom.multiplicity}};
    after.insert(after.end(), job.after.geom.additional_pairs.begin(), job.after.geom.additional_pairs.end());
    std::vector<ChargeSpinPair> old = {{job.before.job.geom.charge, job.before.job.geom.multiplicity}};
    old.insert(old.end(), job.before.job.geom.additional_pairs.begin(), job.before.job.geom.additional_pairs.end());
    const auto same = [](const ChargeSpinPair& a, const ChargeSpinPair& b) {
        return a.charge == b.charge && a.multiplicity == b.multiplicity;
    };
    if (std::equal(old.begin(), old.end(), after.begin(), after.end(), same)) {
        return;
    }
    const std::size_t number = job.before.layout.charge_line;
    if (number == 0) {
        throw GJFParseException("Charge and multiplicity of this job come from its checkpoint and cannot be changed");
    }
    FieldLine line(job.lines.line(number));
    line.truncate(2 * after.size());
    for (std::size_t i = 0; i < 2 * after.size(); ++i) {
        const std::int32_t value = i % 2 == 0 ? after[i / 2].charge : after[i / 2].multiplicity;
        const std::int32_t was = i / 2 >= old.size() ? 0 : i % 2 == 0 ? old[i / 2].charge : old[i / 2].multiplicity;
        if (i >= line.size()) {
            line.insert_after(i - 1, std::to_string(value));
        } else if (value != was) {
            line.set_text(i, std::to_string(value));
        }
    }
    job.edits.replace(number, line.text());
}

}  // namespace quor::input::gaussian
