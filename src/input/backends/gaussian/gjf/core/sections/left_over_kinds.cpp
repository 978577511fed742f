// The second table of kinds: what Gaussian reads beyond the conditions of the first, asked only for blocks left over.
#include <gjf/core/sections/section_row.hpp>

#include <cstddef>
#include <vector>

namespace quor::input::gaussian {
namespace left_over {
namespace {

using Kind = ExtraInputSectionKind;
using Route = const RouteQuestions&;

bool word_of_method(Route r, Words words) { return r.word_in_method_options(words) || r.word_in_oniom(words); }

std::size_t modconnect(Route r) { return r.option("geom", {"modconnectivity", "modconnect"}); }

// geom=modredundant, popt and fopt=modredundant, freq=modredundant.
std::size_t modredundant(Route r) { return r.any_option({"modredundant", "modredun", "modred", "addredundant"}); }

std::size_t second_structure(Route r) { return r.keyword({"lst"}); }

std::size_t gaussian_parameters(Route r) { return word_of_method(r, {"input", "both"}); }
std::size_t mopac_parameters(Route r) { return word_of_method(r, {"mopacexternal", "both"}); }

// Each level of an ONIOM model may have a basis set, and potentials, of its own.
std::size_t basis_of_level(Route r) { return r.count_in_oniom("gen") + r.count_in_oniom("genecp"); }
std::size_t potential_of_level(Route r) { return r.count_in_oniom("genecp"); }

std::size_t solvent(Route r) { return r.option("scrf", {"generic"}) && !r.option("scrf", {"read"}); }

std::size_t window(Route r) { return r.any_option({"rw", "readwindow"}) || word_of_method(r, {"rw", "readwindow"}); }

// Behind the first list of NBO keys others may follow, such as $del or $choose.
constexpr std::size_t most_key_lists = 8;
std::size_t nbo(Route r) {
    return r.option("pop", {"nboread", "nbo6read", "nbo7read", "nbodel", "nbo6del", "nbo7del"}) ? most_key_lists : 0;
}

std::size_t wave_function_file(Route r) { return r.option("output", {"wfx", "wfnx"}); }

struct LeftOverRow {
    Kind kind;
    std::size_t (*asked)(Route);  // how many such sections there may be at most
};

constexpr LeftOverRow rows[] = {
    {Kind::Connectivity, modconnect},
    {Kind::CoordinateModifications, modredundant},
    {Kind::SecondTitleAndMolecule, second_structure},
    {Kind::SemiEmpiricalGaussian, gaussian_parameters},
    {Kind::SemiEmpiricalMOPAC, mopac_parameters},
    {Kind::BasisSet, basis_of_level},
    {Kind::ECP, potential_of_level},
    {Kind::PCMSolvation, solvent},
    {Kind::OrbitalFreezing, window},
    {Kind::NBOInput, nbo},
    {Kind::PROAIMSOutput, wave_function_file},
};

}  // namespace
}  // namespace left_over

std::vector<ExtraInputSectionKind> kinds_for_blocks_left_over(const RouteQuestions& questions) {
    std::vector<ExtraInputSectionKind> kinds;
    for (const left_over::LeftOverRow& row : left_over::rows) {
        if (row.kind == ExtraInputSectionKind::NBOInput || section_row(row.kind).asked(questions) == 0) {
            kinds.insert(kinds.end(), row.asked(questions), row.kind);
        }
    }
    return kinds;
}

}  // namespace quor::input::gaussian
