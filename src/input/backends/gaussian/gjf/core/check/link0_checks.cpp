// Checks of Link 0 lines, and of the checkpoint files that lead from job to job.
#include <gjf/core/check/rule.hpp>

#include <gjf/core/check/checkpoint_chain.hpp>
#include <gjf/core/check/fixes.hpp>
#include <gjf/core/check/near_names.hpp>
#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/knowledge/facts.hpp>
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

// One Link 0 line taken apart.
struct Link0Line {
    std::size_t line = 0;
    std::string_view key;
    std::string_view value;
};

std::vector<Link0Line> link0_lines_of(const CheckedJob& job) {
    std::vector<Link0Line> lines;
    for (const std::size_t number : job.layout.link0_lines) {
        const Link0Words words = link0_words(job.line(number));
        lines.push_back({number, words.key, words.value});
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

void check_command(const CheckedJob& job, const Link0Line& line, Findings& findings) {
    if (const Link0Key* known = find_link0_key(line.key)) {
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
    Finding& finding = findings.add("GJF-L001", is_misspelt(line.key, near) ? Severity::Error : Severity::Warning,
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
        for (const Link0Line* line : {nproc, cpu}) {
            offer(finding, "remove %" + std::string(line->key), FixSafety::Choice,
                  {job.without_lines({line->line, line->line})});
        }
    }
    return listed != 0 ? listed : asked;
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
        const bool begins_as_number = !line->value.empty() && is_digit(line->value.front());
        Finding& finding = findings.add("GJF-L002", begins_as_number ? Severity::Warning : Severity::Error,
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

// Returns what asks for a checkpoint, in words; empty for nothing. `fails` tells whether the job cannot do without.
std::string reading_request(const CheckedJob& job, bool& fails) {
    for (const CheckpointRead& reads : checkpoint_reads()) {
        const bool asked = reads.option.empty() ? job.has_keyword(reads.keyword) || job.names_basis(reads.keyword)
                                                : job.has_option(reads.keyword, reads.option);
        if (asked) {
            fails = reads.fails_without;
            return std::string(reads.keyword) + (reads.option.empty() ? "" : "=") + std::string(reads.option);
        }
    }
    return {};
}

std::string checkpoint_path(std::string_view value) {
    std::string path(value);
    if (path.size() >= 2 && (path.front() == '"' || path.front() == '\'') && path.back() == path.front()) {
        path = path.substr(1, path.size() - 2);
    }
    if (path.size() < 4 || !equals_folded(std::string_view(path).substr(path.size() - 4), ".chk")) {
        path += ".chk";
    }
    return path;
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
                              "GJF-L009", "GJF-L010"}};

std::vector<MoleculeAtom> CheckpointChain::molecule_for(const CheckedJob& job) const {
    const std::vector<Link0Line> lines = link0_lines_of(job);
    const Link0Line* source = find_line(lines, {"oldchk"});
    source = source == nullptr ? find_line(lines, {"chk"}) : source;
    if (source == nullptr || job.tree.segments.empty() || !job.molecule_from_checkpoint()) {
        return {};
    }
    const auto known = written_.find(checkpoint_path(source->value));
    std::vector<MoleculeAtom> atoms = known == written_.end() ? std::vector<MoleculeAtom>() : known->second.atoms;
    for (MoleculeAtom& atom : atoms) {
        atom.line = job.route_place(job.tree.segments.front().place).line;
    }
    return atoms;
}

std::optional<BegunCheckpoint> CheckpointChain::add(const CheckedJob& job, std::vector<MoleculeAtom> atoms,
                                                    Findings& findings) {
    const std::vector<Link0Line> lines = link0_lines_of(job);
    const Link0Line* chk = find_line(lines, {"chk"});
    const Link0Line* source = find_line(lines, {"oldchk"});
    source = source == nullptr ? chk : source;
    bool fails = false;
    const std::string request = reading_request(job, fails);
    const bool is_first = jobs_++ == 0;
    if (request == "restart" && find_line(lines, {"rwf", "oldrwf"}) != nullptr) {
        return std::nullopt;  // the read-write file has all
    }
    if (!request.empty() && source == nullptr) {
        const std::size_t line =
            job.tree.segments.empty() ? job.layout.lines.first : job.route_place(job.tree.segments.front().place).line;
        findings.add("GJF-L008", is_first && fails ? Severity::Error : Severity::Warning,
                     request + " reads a checkpoint, but neither %chk nor %oldchk names one", line,
                     "name it with %oldchk or %chk");
    } else if (!request.empty() && !note_read(checkpoint_path(source->value)) && !is_first) {
        findings.add(
            "GJF-L009", Severity::Warning,
            "no job before this one writes the checkpoint '" + std::string(source->value) + "' that " + request + " reads",
            job.place_in(source->line, source->value), "it must be there when the file is run");
    }
    if (chk == nullptr) {
        return std::nullopt;
    }
    const std::string path = checkpoint_path(chk->value);
    const TextPlace place = job.place_in(chk->line, chk->value);
    const bool is_read = (!request.empty() || source != chk) && checkpoint_path(source->value) == path;
    const bool is_begun = written_.count(path) == 0 && !is_read;
    note_written(path, job, place, findings);
    for (MoleculeAtom& atom : atoms) {
        atom.info = nullptr;
    }
    written_[path].atoms = std::move(atoms);
    return is_begun ? std::optional(BegunCheckpoint{path, job.layout.number, place.line, place.column, place.length})
                    : std::nullopt;
}

bool CheckpointChain::note_read(const std::string& path) {
    const auto known = written_.find(path);
    if (known == written_.end()) {
        return false;
    }
    known->second.read_since = true;
    return true;
}

void CheckpointChain::note_written(const std::string& path, const CheckedJob& job, const TextPlace& place,
                                   Findings& findings) {
    const auto [known, is_new] = written_.try_emplace(path, Checkpoint{job.layout.number, false, {}});
    if (is_new) {
        return;
    }
    if (!known->second.read_since) {
        findings.add(
            "GJF-L007", Severity::Warning,
            "this job writes over the checkpoint of job " + std::to_string(known->second.job) + ", which no job has read",
            place, "give each job a checkpoint of its own, or read the first one");
    }
    known->second = {job.layout.number, false, {}};
}

}  // namespace quor::input::gaussian
