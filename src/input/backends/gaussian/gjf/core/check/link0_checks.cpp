// Checks of Link 0 lines: their commands, and the memory and cores that a job asks for.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/limit_checks.hpp>
#include <gjf/core/check/link0_lines.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/number_range.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace quor::input::gaussian {
namespace {

// Reports a command that names nothing: of amounts and numbers that are empty more is said elsewhere.
void check_value_of(const CheckedJob& job, const Link0Key& key, const Link0Line& line, Findings& findings) {
    const bool is_name = key.form == Link0Form::Text;
    if (!key.in_model || (line.is_assigned && (!is_name || !line.value.empty()))) {
        return;
    }
    const TextPlace place = job.place_in(line.line, line.key);
    Finding& finding = findings.add(
        "GJF-L013", Severity::Warning,
        "%" + std::string(line.key) + (line.value.empty() ? " is given no value" : " is given its value without ="), place,
        "write %" + std::string(line.key) + "=" + (is_name ? "NAME" : "VALUE"));
    if (const TextPlace value = job.place_in(line.line, line.value); !line.is_assigned && !line.value.empty()) {
        const std::size_t behind = place.column + place.length;
        offer(finding, "put = before the value", FixSafety::Unsafe,
              {job.replacing({line.line, behind, value.column - behind}, "=")});
    }
}

void check_command(const CheckedJob& job, const Link0Line& line, Findings& findings) {
    if (const Link0Key* known = find_link0_key(line.key)) {
        check_value_of(job, *known, line, findings);
        // %nprocs stands in many jobs that ran.
        if (!known->is_spelt_out(to_lower_copy(line.key)) && !equals_folded(line.key, "nprocs")) {
            const TextPlace place = job.place_in(line.line, line.key);
            Finding& finding =
                findings.add("GJF-L001", Severity::Note,
                             "'%" + std::string(line.key) + "' is short for %" + std::string(known->name), place);
            offer_words(job, place, line.key, {std::string(known->name)}, FixSafety::Safe, finding);
        }
        return;
    }
    std::vector<std::string> names;
    for (const Link0Key& key : link0_keys()) {
        names.emplace_back(key.name);
    }
    const std::vector<std::string> near = near_names(to_lower_copy(line.key), names);
    const TextPlace place = job.place_in(line.line, line.key);
    Finding& finding = findings.add(
        "GJF-L001", is_misspelt(line.key, near) || !has_added_letter(line.key, near) ? Severity::Error : Severity::Warning,
        "unknown Link 0 command '%" + std::string(line.key) + "'", place, did_you_mean(near));
    offer_near(job, place, line.key, near, finding);
}

// Offers an amount without blanks, with the letter that its unit lacks, or as a whole number of the next smaller unit.
void offer_memory(const CheckedJob& job, const TextPlace& place, std::string_view value, Finding& finding) {
    const auto reads = [](const std::string& text) {
        const std::optional<MemoryAmount> memory = read_memory_amount(text);
        return memory && memory->unit != 0 && memory->amount != 0 && memory->has_unit;
    };
    std::string text(value);
    text.erase(std::remove_if(text.begin(), text.end(), is_trim_character), text.end());
    const std::size_t digits = text.find_first_not_of("0123456789");
    const bool has_unit = digits != std::string::npos;
    constexpr std::string_view units = "kmgt";
    const std::size_t unit = has_unit ? units.find(to_lower_ascii(text.back())) : std::string::npos;
    if (reads(text)) {
        offer_words(job, place, value, {text}, FixSafety::Safe, finding);
    } else if (unit != std::string::npos && reads(text + "B")) {
        offer_words(job, place, value, {text + "B"}, FixSafety::Unsafe, finding);
    } else if (const std::size_t point = text.find('.'); has_unit && point == digits && text.size() > point + 3) {
        const std::size_t letter = units.find(to_lower_ascii(text[text.size() - 2]));
        const std::optional<double> amount = to_number(text.substr(0, text.size() - 2));
        if (amount && letter != std::string::npos && letter > 0 && to_lower_ascii(text.back()) == 'b' && *amount < 1e6) {
            const auto smaller = static_cast<std::int64_t>(*amount * 1024);
            offer_words(job, place, value, {std::to_string(smaller) + "KMGT"[letter - 1] + "B"}, FixSafety::Unsafe, finding);
        }
    }
}

// Counts the cores of a list such as 0-3,8,12-14; nothing for a malformed one.
std::optional<std::int64_t> count_cores(std::string_view list) {
    std::int64_t count = 0;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        const std::string_view item = trim_view(list.substr(0, comma));
        list.remove_prefix(std::min(comma + 1, list.size()));
        const std::optional<NumberRange> cores = to_number_range(item, 0, std::numeric_limits<std::int32_t>::max());
        const bool begins_with_digit = !item.empty() && is_digit(item.front());
        if (!begins_with_digit || !cores) {
            return std::nullopt;
        }
        count += cores->last - cores->first + 1;
    }
    return count;
}

// Reads %nprocshared; 0 when there is none, or none that can be read.
std::int64_t cores_asked(const CheckedJob& job, const Link0Line* nproc, Findings& findings) {
    if (nproc == nullptr) {
        return 0;
    }
    const std::optional<std::int64_t> count = to_int64(nproc->value);
    if (!count || *count < 1) {
        findings.add("GJF-L006", count ? Severity::Warning : Severity::Error,
                     "'" + std::string(nproc->value) + "' is no number of cores", job.place_in(nproc->line, nproc->value));
        return 0;
    }
    return *count;
}

// Counts the cores of %cpu; 0 when there is no list, or none that can be read.
std::int64_t cores_listed(const CheckedJob& job, const Link0Line* cpu, Findings& findings) {
    if (cpu == nullptr) {
        return 0;
    }
    const std::int64_t count = count_cores(cpu->value).value_or(0);
    if (count < 1) {
        const bool has_letter = std::any_of(cpu->value.begin(), cpu->value.end(), is_letter);
        findings.add("GJF-L006", has_letter || cpu->value.empty() ? Severity::Error : Severity::Warning,
                     "'" + std::string(cpu->value) + "' is no list of cores", job.place_in(cpu->line, cpu->value),
                     "list core numbers and ranges, as in %cpu=0-7,12");
        return 0;
    }
    return count;
}

// Checks %nprocshared and %cpu; returns how many cores the job asks for, 0 when it does not say.
std::int64_t check_cores(const CheckedJob& job, const std::vector<Link0Line>& lines, Findings& findings) {
    const Link0Line* nproc = find_line(lines, {"nproc", "nprocshared", "nprocs"});
    const Link0Line* cpu = find_line(lines, {"cpu"});
    const std::int64_t asked = cores_asked(job, nproc, findings);
    const std::int64_t listed = cores_listed(job, cpu, findings);
    if (nproc != nullptr && cpu != nullptr) {
        const bool conflict = asked != 0 && listed != 0 && asked != listed;
        Finding& finding = findings.add(
            "GJF-L005", conflict ? Severity::Warning : Severity::Note,
            conflict ? "%nprocshared asks for " + std::to_string(asked) + " cores, %cpu lists " + std::to_string(listed)
                     : std::string("both %nprocshared and %cpu are given"),
            std::max(nproc->line, cpu->line), "keep one of the two");
        relate_line(job, std::min(nproc->line, cpu->line), "the other one", finding);
        for (const Link0Line* line : {nproc, cpu}) {
            offer(finding, "remove %" + std::string(line->key), FixSafety::Choice,
                  {job.without_lines({line->line, line->line})});
        }
    }
    return listed != 0 ? listed : asked;
}

// Tells whether an amount that nobody can read may still be one to Gaussian: a number with a point or a blank in it, or a
// unit cut short.
bool may_be_memory(std::string_view value) {
    const std::size_t behind = std::min(value.find_first_not_of("0123456789., \t"), value.size());
    const std::string unit = to_lower_copy(value.substr(behind));
    constexpr std::string_view units[] = {"kb", "mb", "gb", "tb", "kw", "mw", "gw", "tw", "bytes", "words"};
    return behind > 0 &&
           std::any_of(std::begin(units), std::end(units), [&](std::string_view known) { return known.starts_with(unit); });
}

void check_memory(const CheckedJob& job, const std::vector<Link0Line>& lines, std::int64_t cores, Findings& findings) {
    // Below this share a core cannot even hold the arrays that every job allocates.
    constexpr std::int64_t least_per_core = 64LL << 20;
    const Link0Line* line = find_line(lines, {"mem"});
    if (line == nullptr) {
        return;
    }
    const TextPlace place = job.place_in(line->line, line->value);
    const std::optional<MemoryAmount> memory = read_memory_amount(line->value);
    if (!memory || memory->unit == 0 || memory->amount == 0) {
        Finding& finding = findings.add("GJF-L002", may_be_memory(line->value) ? Severity::Warning : Severity::Error,
                                        "'" + std::string(line->value) + "' is no amount of memory", place,
                                        "write a whole number and a unit without a blank, as in %mem=8GB");
        offer_memory(job, place, line->value, finding);
        return;
    }
    if (!memory->has_unit) {
        Finding& finding = findings.add("GJF-L003", Severity::Warning, "%mem has no unit: it counts words of 8 bytes", place,
                                        "write the unit, as in %mem=8GB");
        const std::string value(line->value);
        offer_words(job, place, line->value, {value + "W", value + "MB", value + "GB"}, FixSafety::Choice, finding);
    }
    const std::int64_t share = least_per_core / memory->unit * std::max<std::int64_t>(cores, 1);
    const bool unit_is_large = memory->unit > least_per_core;
    if (!unit_is_large && memory->amount < share) {
        findings.add("GJF-L004", Severity::Warning,
                     "less than 64 MB a core: %mem is " + std::string(line->value) + " for " +
                         std::to_string(std::max<std::int64_t>(cores, 1)) + (cores > 1 ? " cores" : " core"),
                     place, "give each core 1 GB or more");
    }
}

void check_link0(const CheckedMolecule& molecule, Findings& findings) {
    const CheckedJob& job = molecule.job;
    const std::vector<Link0Line> lines = link0_lines_of(job);
    for (const Link0Line& line : lines) {
        check_command(job, line, findings);
    }
    check_memory(job, lines, check_cores(job, lines, findings), findings);
}

}  // namespace

const Family link0_family = {Known::Control,
                             check_link0,
                             {"GJF-L001", "GJF-L002", "GJF-L003", "GJF-L004", "GJF-L005", "GJF-L006", "GJF-L007", "GJF-L008",
                              "GJF-L009", "GJF-L010", "GJF-L011", "GJF-L012", "GJF-L013", "GJF-L015", "GJF-M020"},
                             {"GJF-L010", "GJF-L015"}};

std::vector<Link0Line> link0_lines_of(const CheckedJob& job) {
    std::vector<Link0Line> lines;
    for (const std::size_t number : job.layout.link0_lines) {
        const Link0Words words = link0_words(job.line(number));
        lines.push_back({number, words.key, words.value, words.is_assigned});
    }
    return lines;
}

const Link0Line* find_line(const std::vector<Link0Line>& lines, std::initializer_list<std::string_view> keys) {
    // The last line of a kind is the one that holds.
    const auto found = std::find_if(lines.rbegin(), lines.rend(), [&](const Link0Line& line) {
        return std::any_of(keys.begin(), keys.end(), [&](std::string_view key) { return equals_folded(line.key, key); });
    });
    return found == lines.rend() ? nullptr : &*found;
}

std::optional<AskedAmount> asked_memory(const CheckedJob& job) {
    const std::vector<Link0Line> lines = link0_lines_of(job);
    const Link0Line* line = find_line(lines, {"mem"});
    const std::optional<MemoryAmount> memory = line == nullptr ? std::nullopt : read_memory_amount(line->value);
    if (!memory || memory->unit == 0 || memory->amount > std::numeric_limits<std::int64_t>::max() / memory->unit) {
        return std::nullopt;
    }
    return AskedAmount{memory->amount * memory->unit, job.place_in(line->line, line->value)};
}

std::optional<AskedAmount> asked_cores(const CheckedJob& job) {
    const std::vector<Link0Line> lines = link0_lines_of(job);
    if (const Link0Line* cpu = find_line(lines, {"cpu"})) {
        const std::optional<std::int64_t> count = count_cores(cpu->value);
        return count ? std::optional(AskedAmount{*count, job.place_in(cpu->line, cpu->value)}) : std::nullopt;
    }
    const Link0Line* nproc = find_line(lines, {"nproc", "nprocshared", "nprocs"});
    const std::optional<std::int64_t> count = nproc == nullptr ? std::nullopt : to_int64(nproc->value);
    return count ? std::optional(AskedAmount{*count, job.place_in(nproc->line, nproc->value)}) : std::nullopt;
}

}  // namespace quor::input::gaussian
