// Puts values in the place of names in braces.
#include <gjf/core/next/edit_names.hpp>

#include <gjf/core/job/link0_keys.hpp>
#include <gjf/core/job/memory_amount.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <stdexcept>

namespace quor::input::gaussian {
namespace {

constexpr double bytes_in_megabyte = 1024.0 * 1024.0;
constexpr double default_memory = 800;  // of Gaussian 16: 100 megawords

// What a name stands for: an option of the route with what Gaussian takes without it, or something else that is known.
struct EditName {
    std::string_view name;
    std::string_view keyword;  // empty for what is no option
    std::string_view option;
    double otherwise = 0;  // 0 where there is no such number
};

constexpr EditName edit_names[] = {
    {"opt.maxcycles", "opt", "maxcyc", 0},
    {"scf.maxcycle", "scf", "maxcyc", 128},
    {"irc.maxpoints", "irc", "maxpoints", 10},
    {"irc.maxcycle", "irc", "maxcyc", 20},
    {"mem", {}, {}, 0},
    {"told_mem", {}, {}, 0},
};

struct NamedNumber {
    double factor = 1;
    const EditName* name = nullptr;
};

[[noreturn]] void refuse(std::string_view text, const char* why) {
    throw std::runtime_error("'" + std::string(text) + "' " + why);
}

// Reads "2*opt.maxcycles".
NamedNumber number_named(std::string_view text) {
    NamedNumber number;
    const std::size_t star = text.find('*');
    if (star != std::string_view::npos) {
        const auto [end, error] = read_number(text.substr(0, star), number.factor, std::chars_format::general);
        if (error != std::errc() || end != text.data() + star || !(number.factor > 0 && number.factor < 1000)) {
            refuse(text, "begins with no factor");
        }
    }
    const std::string_view name = star == std::string_view::npos ? text : text.substr(star + 1);
    for (const EditName& each : edit_names) {
        number.name = each.name == name ? &each : number.name;
    }
    if (number.name == nullptr) {
        refuse(name, "is no name of a value");
    }
    return number;
}

// Calls `take` for each text between braces and appends what it returns.
template <class Take>
std::string replaced(std::string_view text, const Take& take) {
    std::string result;
    for (;;) {
        const std::size_t open = text.find('{');
        result += text.substr(0, open);
        if (open == std::string_view::npos) {
            return result;
        }
        const std::size_t close = text.find('}', open);
        if (close == std::string_view::npos) {
            refuse(text, "has a brace that is not closed");
        }
        result += take(text.substr(open + 1, close - open - 1));
        text.remove_prefix(close + 1);
    }
}

std::optional<double> number_in(std::string_view text) {
    double number = 0;
    const auto [end, error] = read_number(text, number, std::chars_format::general);
    return error == std::errc() && end == text.data() + text.size() && number > 0 ? std::optional<double>(number)
                                                                                  : std::nullopt;
}

std::optional<double> option_value(const JobReading& job, const EditName& name) {
    const RouteTree& route = job.layout.route;
    for (const RouteTree::Segment& segment : route.segments) {
        for (const RouteTree::Keyword& keyword : segment.keywords) {
            for (const RouteTree::Option& option : keyword.options) {
                if (keyword.name == name.keyword && option.canonical == name.option && !option.value.empty()) {
                    return number_in(option.value.in(route.text));
                }
            }
        }
    }
    return std::nullopt;
}

// In megabytes.
std::optional<double> memory_in(std::string_view text) {
    const std::optional<MemoryAmount> memory = read_memory_amount(text);
    if (!memory || memory->amount <= 0 || (memory->has_unit && memory->unit == 0)) {
        return std::nullopt;
    }
    const auto unit = static_cast<double>(memory->has_unit ? memory->unit : 8);
    return static_cast<double>(memory->amount) * unit / bytes_in_megabyte;
}

std::optional<double> value_of(const EditName& name, const std::vector<JobReading>& jobs, const Diagnosis& diagnosis) {
    if (name.name == "told_mem") {
        return memory_in(diagnosis.told_mem);
    }
    if (name.name == "mem") {
        const Link0Key* const key = find_link0_key("mem");
        const std::optional<std::string> value =
            jobs.empty() ? link0_value(diagnosis.summary, "%mem") : find_link0_value(jobs.front().job.control, *key);
        return value && !value->empty() ? memory_in(*value) : default_memory;
    }
    if (const std::optional<double> given = jobs.empty() ? std::nullopt : option_value(jobs.front(), name)) {
        return given;
    }
    const std::optional<OptimizationSummary>& optimization = diagnosis.summary.optimization;
    if (name.name == "opt.maxcycles" && optimization && optimization->max_steps > 0) {
        return optimization->max_steps;
    }
    return name.otherwise > 0 ? std::optional<double>(name.otherwise) : std::nullopt;
}

}  // namespace

void check_edit_names(std::string_view text) {
    replaced(text, [](std::string_view name) {
        number_named(name);
        return std::string();
    });
}

std::string with_edit_names(std::string_view text, const std::string& job_text, const Diagnosis& diagnosis) {
    if (text.find('{') == std::string_view::npos) {
        return std::string(text);
    }
    const std::vector<JobReading> jobs = read_jobs_with_layout(job_text);
    return replaced(text, [&](std::string_view inner) {
        const NamedNumber named = number_named(inner);
        const std::optional<double> value = value_of(*named.name, jobs, diagnosis);
        if (!value || *value * named.factor > 1e12) {
            refuse(named.name->name, "is not known");
        }
        const bool is_memory = named.name->name.ends_with("mem");
        const auto whole = static_cast<std::int64_t>(std::ceil(*value * named.factor - 1e-9));
        return std::to_string(whole < 1 ? 1 : whole) + (is_memory ? "MB" : "");
    });
}

}  // namespace quor::input::gaussian
