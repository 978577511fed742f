// Puts a job's size into the formulas that are known of its method.
#include <gjf/core/basis/job_estimate.hpp>

#include <gjf/core/basis/atom_population.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

constexpr double bytes_of_word = 8;
constexpr double most_bytes = 9e18;  // what 64 bits hold

// Returns the method with what its options make of it: ccsd(t) for ccsd=(t,maxcyc=50). Empty for one that is not known.
std::string method_of(const ParsedKeywords& route) {
    if (route.method.empty()) {
        return route.warnings.empty() ? "hf" : "";
    }
    std::string_view rest = route.method_options;
    rest.remove_prefix(std::min(rest.find_first_of("=("), rest.size()));
    while (!rest.empty()) {
        rest.remove_prefix(std::min(rest.find_first_not_of("=(,) "), rest.size()));
        const std::string_view option = rest.substr(0, rest.find_first_of(",) "));
        rest.remove_prefix(option.size());
        std::string name = route.method + "(" + to_lower_copy(option) + ")";
        if (method_cost(name) != nullptr) {
            return name;
        }
    }
    return route.method;
}

// Returns how many orbitals of an atom a method leaves uncorrelated at the most, unless its route says so.
std::int64_t core_orbitals(std::size_t element) {
    constexpr struct {
        std::size_t last;
        std::int64_t orbitals;
    } cores[] = {{2, 0}, {10, 1}, {18, 5}, {30, 9}, {36, 14}, {48, 18}, {54, 23}, {70, 27}, {80, 34}, {86, 39}};
    for (const auto& core : cores) {
        if (element <= core.last) {
            return core.orbitals;
        }
    }
    return 50;
}

// The numbers that formulas are about.
struct Numbers {
    double functions = 0;
    double occupied = 0;  // correlated ones, at the least
    double empty = 0;
};

Numbers numbers_of(const GJFData& job, const JobSize& size) {
    const AtomPopulation atoms(job.geom);
    std::int64_t frozen = -size.core_electrons / 2;
    for (std::size_t element = 1; element < atoms.nuclei().size(); ++element) {
        frozen += atoms.nuclei()[element] * core_orbitals(element);
    }
    const std::int64_t unpaired = std::abs(static_cast<std::int64_t>(job.geom.multiplicity)) - 1;
    const std::int64_t paired = (size.electrons.value_or(0) - unpaired) / 2;
    Numbers numbers;
    numbers.functions = static_cast<double>(size.functions.value_or(0));
    numbers.occupied = static_cast<double>(std::max<std::int64_t>(paired - std::max<std::int64_t>(frozen, 0), 0));
    numbers.empty = std::max(numbers.functions - static_cast<double>(paired + unpaired), 0.0);
    return numbers;
}

// Puts numbers into a formula such as "4194304 + 2 N^2".
double value_of(std::string_view formula, const Numbers& numbers) {
    double sum = 0;
    double product = 1;
    std::vector<std::string_view> factors;
    split_fields(formula, FieldSeparators::WhiteSpaceAndComma, true, factors);
    for (const std::string_view factor : factors) {
        if (factor == "+") {
            sum += product;
            product = 1;
            continue;
        }
        const double base = factor[0] == 'N'   ? numbers.functions
                            : factor[0] == 'O' ? numbers.occupied
                            : factor[0] == 'V' ? numbers.empty
                                               : to_number(std::string(factor)).value_or(0);
        product *= factor.size() == 3 && factor[1] == '^' ? std::pow(base, factor[2] - '0') : base;
    }
    return sum + product;
}

LeastBytes least_bytes(std::string_view formula, const std::string& problem, const Numbers& numbers) {
    LeastBytes least;
    least.formula = formula;
    least.unknown = problem;
    if (problem.empty()) {
        least.bytes = static_cast<std::int64_t>(std::min(bytes_of_word * value_of(formula, numbers), most_bytes));
    }
    return least;
}

}  // namespace

JobEstimate estimate_job(const GJFData& job, const JobSize& size) {
    JobEstimate estimate;
    estimate.memory.unknown = estimate.disk.unknown = estimate.unknown_cost = "the route is not interpreted";
    if (!job.control.parsed_keywords) {
        return estimate;
    }
    const ParsedKeywords& route = *job.control.parsed_keywords;
    const std::string method = method_of(route);
    const bool has_layers = !route.oniom_expression.empty();
    const MethodCost* known = has_layers ? nullptr : method_cost(method);
    const std::string no_formula = has_layers       ? "the layers have needs of their own"
                                   : method.empty() ? "the method is not known"
                                                    : "no formula is known for " + method;
    if (known == nullptr) {
        estimate.memory.unknown = estimate.disk.unknown = estimate.unknown_cost = no_formula;
        return estimate;
    }
    const Numbers numbers = numbers_of(job, size);
    const bool in_core = !known->in_core.empty() && route.get_keyword_variable("scf", "incore");
    estimate.cost = known->cost;
    estimate.unknown_cost.clear();
    estimate.memory = least_bytes(in_core ? known->in_core : known->memory, size.no_functions, numbers);
    estimate.disk = least_bytes(known->disk,
                                known->disk.empty()         ? no_formula
                                : size.no_functions.empty() ? size.no_electrons
                                                            : size.no_functions,
                                numbers);
    return estimate;
}

}  // namespace quor::input::gaussian
