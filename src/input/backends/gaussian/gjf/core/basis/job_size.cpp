// Counts a job's basis functions and electrons.
//
// First the route tells where functions and potentials come from: from a set that it names, from sections, or from what
// cannot be looked into. Then they are counted element by element.
#include <gjf/core/basis/job_size.hpp>

#include <gjf/core/basis/atom_population.hpp>
#include <gjf/core/chemistry/elements.hpp>
#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/facts.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <numeric>
#include <string_view>

namespace quor::input::gaussian {
namespace {

class SizeCount {
   public:
    SizeCount(const GJFData& job, const ParsedKeywords& route)
        : job_(job), route_(route), schema_(default_route_schema()), atoms_(job.geom) {
        basis_ = schema_.normalize_basis(route.basis_set);
        const ParametersElements* composite = parameters_elements("composite", route.method);
        if (composite != nullptr) {
            basis_ = composite->first_basis;
        } else if (basis_.empty()) {
            basis_ = "sto-3g";
        }
        is_read_ = basis_ == "gen" || basis_ == "genecp";
    }

    JobSize count() {
        JobSize size;
        size.no_electrons = size.no_functions = common_problem();
        if (size.no_functions.empty()) {
            size.no_functions = count_functions();
        }
        if (size.no_electrons.empty()) {
            size.no_electrons = count_electrons(size);
        }
        if (size.no_functions.empty()) {
            const bool six_d = has("6d") || (!has("5d") && !is_read_ && has_six_d_functions(basis_));
            size.functions = shells_.functions(six_d, has("10f"));
            size.doubtful = !shells_.certain;
        }
        return size;
    }

   private:
    bool has(const char* keyword) const { return route_.has_keyword(keyword); }

    // Returns what keeps both functions and electrons from being counted.
    std::string common_problem() const {
        if (!route_.oniom_expression.empty()) {
            return "the layers have functions and electrons of their own";
        }
        if (method_has_trait(route_.method, "is a force field")) {
            return "a force field has none";
        }
        if (method_has_trait(route_.method, "needs no basis set") &&
            parameters_elements("composite", route_.method) == nullptr) {
            return "a semi-empirical method has valence electrons and a basis set of its own";
        }
        for (const char* keyword : {"massage", "external"}) {
            if (has(keyword)) {
                return std::string(keyword) + " may change them";
            }
        }
        for (const KeywordInfo& keyword : route_.get_keywords_by_name("iop")) {
            for (const auto& [option, value] : keyword.options) {
                if (has_trait("iop=" + option, "changes the basis set")) {
                    return "IOp(" + option + ") may change them";
                }
            }
        }
        return atoms_.problem();
    }

    // Returns the first section of a kind from the n-th on, as it reads; empty texts for none.
    const ExtraInputSection* section(ExtraInputSectionKind kind, std::size_t n) const {
        for (const ExtraInputSection& section : job_.extra_inputs) {
            if (section.kind == kind && n-- == 0) {
                return &section;
            }
        }
        return nullptr;
    }

    std::string count_functions() {
        if (basis_.empty()) {
            return "the basis set that the method begins with is not known";
        }
        if (!is_read_) {
            std::string problem = add_set(basis_, atoms_.all());
            if (!problem.empty()) {
                return problem;
            }
        }
        const std::size_t sections = (is_read_ ? 1U : 0U) + (has("extrabasis") ? 1U : 0U);
        for (std::size_t i = 0; i < sections; ++i) {
            const ExtraInputSection* found = section(ExtraInputSectionKind::BasisSet, i);
            std::string problem = found == nullptr ? "a section of basis functions is not there" : add_blocks(found->text());
            if (!problem.empty()) {
                return problem;
            }
            if (i == 0 && is_read_ && !atoms_.all_covered()) {
                return "an atom has no basis set";
            }
        }
        return {};
    }

    // Adds the functions of a named set on some atoms.
    std::string add_set(std::string_view name, const ElementCounts& counts) {
        for (std::size_t element = 1; element < counts.size(); ++element) {
            if (counts[element] == 0) {
                continue;
            }
            const std::optional<ShellCounts> shells = basis_shells(name, static_cast<int>(element));
            if (!shells) {
                return "the functions of " + std::string(element_symbol(static_cast<int>(element))) + " in " +
                       std::string(name) + " are not known";
            }
            shells_.add(*shells, counts[element]);
        }
        return {};
    }

    std::string add_blocks(const std::string& text) {
        const SectionReading section = read_section(ExtraInputSectionKind::BasisSet, text);
        ElementCounts counts{};
        for (const SectionLine& line : section.lines) {
            if (line.form == LineForm::Include) {
                return "a part of the basis set stands in another file";
            }
            if (line.form == LineForm::Centers && !atoms_.count(section, line, true, counts)) {
                return "a line of centers is not understood";
            }
            if (line.form == LineForm::Shell && !add_shell(section, line, counts)) {
                return "a shell is not understood";
            }
            if (line.form == LineForm::Name) {
                const std::string name(trim_view(without_comment(section[line.span])));
                if (std::string problem = add_set(schema_.normalize_basis(name), counts); !problem.empty()) {
                    return problem;
                }
            }
        }
        return {};
    }

    // Adds the shells of a line such as "SP 3 1.00" or "STO 2P 3 1.6" on some atoms.
    bool add_shell(const SectionReading& section, const SectionLine& line, const ElementCounts& counts) {
        const auto tokens = section.tokens_of(line);
        std::string type = to_lower_copy(section[tokens[0].span]);
        if (type == "sto" && tokens.size() > 1) {
            type = to_lower_copy(section[tokens[1].span].substr(1));
        }
        ShellCounts shells;
        const std::int64_t atoms = std::accumulate(counts.begin(), counts.end(), std::int64_t{0});
        const bool known =
            std::all_of(type.begin(), type.end(), [&](char letter) { return shells.add(std::string("1") + letter); });
        shells_.add(shells, atoms);
        return known;
    }

    std::string count_electrons(JobSize& size) {
        const std::vector<ChargeSpinPair> pairs = job_.geom.charge_spin_pairs();
        if (pairs.empty()) {
            return "the job has no charge of its own";
        }
        std::int64_t cores = 0;
        if (std::string problem = add_cores(cores); !problem.empty()) {
            return problem;
        }
        std::int64_t electrons = -cores - pairs.front().charge;
        for (std::size_t element = 1; element < atoms_.nuclei().size(); ++element) {
            electrons += static_cast<std::int64_t>(element) * atoms_.nuclei()[element];
        }
        if (electrons < 0) {
            return "the charge leaves fewer than none";
        }
        size.electrons = electrons;
        size.core_electrons = cores;
        return {};
    }

    std::string add_cores(std::int64_t& cores) {
        if (has("pseudo") && !route_.get_keyword_variable("pseudo", "read")) {
            return "the potentials that pseudo asks for are not known";
        }
        if (!is_read_ && !basis_.empty()) {
            if (std::string problem = add_cores_of(basis_, atoms_.nuclei(), cores); !problem.empty()) {
                return problem;
            }
        }
        if (basis_ != "genecp" && !has("pseudo")) {
            return {};
        }
        const ExtraInputSection* potentials = section(ExtraInputSectionKind::ECP, 0);
        if (potentials == nullptr || cores != 0) {
            return potentials == nullptr ? "the section of core potentials is not there"
                                         : "potentials are read beside those of the basis set";
        }
        return add_potentials(potentials->text(), cores);
    }

    static std::string add_cores_of(std::string_view name, const ElementCounts& counts, std::int64_t& cores) {
        for (std::size_t element = 1; element < counts.size(); ++element) {
            if (counts[element] != 0) {
                const std::optional<int> core = core_electrons(name, static_cast<int>(element));
                if (!core) {
                    return "the core potentials of " + std::string(name) + " are not known";
                }
                cores += *core * counts[element];
            }
        }
        return {};
    }

    std::string add_potentials(const std::string& text, std::int64_t& cores) {
        const SectionReading section = read_section(ExtraInputSectionKind::ECP, text);
        ElementCounts counts{};
        bool begins = false;  // whether the next line names the potential
        for (const SectionLine& line : section.lines) {
            if (line.form == LineForm::Include || !section.unclear.empty()) {
                return "the section of core potentials cannot be followed";
            }
            if (line.form == LineForm::Centers) {
                begins = true;
                if (!atoms_.count(section, line, false, counts)) {
                    return "a line of centers is not understood";
                }
            } else if (begins && line.count > 0) {
                begins = false;
                if (std::string problem = add_potential(section, line, counts, cores); !problem.empty()) {
                    return problem;
                }
            }
        }
        return {};
    }

    // Adds a potential by its name, or by its own count of core electrons, as in "FE-ECP 2 10".
    std::string add_potential(const SectionReading& section, const SectionLine& line, const ElementCounts& counts,
                              std::int64_t& cores) const {
        const auto tokens = section.tokens_of(line);
        if (tokens.size() == 1) {
            return add_cores_of(schema_.normalize_basis(std::string(section[tokens[0].span])), counts, cores);
        }
        const std::optional<std::int64_t> core =
            tokens.size() == 3 ? to_int64(section[tokens[2].span]) : std::optional<std::int64_t>();
        if (!core || *core < 0 || *core > std::ssize(counts)) {
            return "a core potential is not understood";
        }
        cores += *core * std::accumulate(counts.begin(), counts.end(), std::int64_t{0});
        return {};
    }

    const GJFData& job_;
    const ParsedKeywords& route_;
    const SimpleYAMLParser& schema_;
    AtomPopulation atoms_;
    std::string basis_;
    bool is_read_ = false;  // whether the basis set stands in the job
    ShellCounts shells_;
};

}  // namespace

JobSize job_size(const GJFData& job) {
    if (!job.control.parsed_keywords) {
        JobSize size;
        size.no_electrons = size.no_functions = "the route is not interpreted";
        return size;
    }
    return SizeCount(job, *job.control.parsed_keywords).count();
}

}  // namespace quor::input::gaussian
