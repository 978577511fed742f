// The table of kinds and conditions, and the order in which sections are expected.
#include <gjf/core/reader/extra_input_rules.hpp>

#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/reading.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;
using Route = const RouteQuestions&;

bool connect(Route r) { return r.option("geom", {"connect", "connectivity"}) || r.keyword({"modconnect"}); }

bool frozen(Route r) {
    return r.option("geom", {"readopt", "readoptimize", "rdoptimize"}) ||
           r.option("opt", {"readopt", "readoptimize", "rdoptimize"});
}

bool modify(Route r) { return r.option("opt", {"modredundant", "modredun", "modr", "addgic"}); }

bool qst2_or_3(Route r) { return r.option("opt", {"qst2", "qst3"}); }

bool qst3(Route r) { return r.option("opt", {"qst3"}); }

bool mm_parameters(Route r) {
    const Words words = {"hardfirst", "softfirst", "softonly", "modify"};
    return r.any_option(words) || r.keyword({"hardfirst", "softfirst", "softonly", "modify"}) ||
           r.word_in_method_options(words) || r.word_in_oniom(words);
}

bool pcm_early(Route r) { return r.option("scrf", {"read"}) && r.option("scrf", {"externaliteration", "oniompcm"}); }

bool pcm_late(Route r) { return r.option("scrf", {"read"}) && !pcm_early(r); }

// IRC=(Report=Read) is stored as an option "report" with the value "read".
bool irc_report(Route r) {
    return r.option("irc", {"report=read", "read"}) || (r.option("irc", {"report"}) && r.any_option({"read"}));
}

bool general_basis(Route r) { return r.basis({"gen", "genecp"}) || r.keyword({"gen", "genecp", "extrabasis"}); }

bool ecp(Route r) { return r.basis({"genecp"}) || r.keyword({"genecp"}) || r.option("pseudo", {"cards"}); }

// A multi-configuration option is given to the keyword, or stands among the options of the method.
bool multiconfiguration_option(Route r, const char* name) {
    return r.option("casscf", {name}) || r.option("cas", {name}) ||
           (r.method({"casscf", "cas"}, true) && r.word_in_method_options({name}));
}

std::size_t trajectory_blocks(Route r) {
    return std::size_t{r.keyword({"bomd", "admp"})} +
           std::size_t{r.keyword({"readvelocity"}) || r.any_option({"readvelocity"})} +
           std::size_t{r.keyword({"readmwvelocity"}) || r.any_option({"readmwvelocity"})};
}

// Orbital input is given for each spin of an unrestricted method.
std::size_t once_or_twice(Route r, const char* guess_option, bool open_shell_too) {
    if (!r.option("guess", {guess_option})) {
        return 0;
    }
    return r.unrestricted() || (open_shell_too && r.open_shell()) ? 2 : 1;
}

struct Rule {
    Kind kind;
    const char* request;  // how a route usually asks for it
    std::size_t (*count)(Route r);
};

// One row a kind from 1 on, in the order in which the sections stand in a job.
constexpr Rule rules[] = {
    {Kind::Connectivity, "geom=connectivity", [](Route r) -> std::size_t { return connect(r); }},
    {Kind::FrozenAtomAlterations, "opt=readopt", [](Route r) -> std::size_t { return frozen(r); }},
    {Kind::CoordinateModifications, "opt=modredundant", [](Route r) -> std::size_t { return modify(r); }},
    {Kind::SecondTitleAndMolecule, "opt=qst2", [](Route r) -> std::size_t { return qst2_or_3(r); }},
    {Kind::SecondConnectivity, "geom=connectivity", [](Route r) -> std::size_t { return qst2_or_3(r) && connect(r); }},
    {Kind::SecondFrozenAtomAlterations, "opt=readopt", [](Route r) -> std::size_t { return qst2_or_3(r) && frozen(r); }},
    {Kind::SecondCoordinateModifications, "opt=modredundant",
     [](Route r) -> std::size_t { return qst2_or_3(r) && modify(r); }},
    {Kind::ThirdTitleAndTSStructure, "opt=qst3", [](Route r) -> std::size_t { return qst3(r); }},
    {Kind::ThirdConnectivity, "geom=connectivity", [](Route r) -> std::size_t { return qst3(r) && connect(r); }},
    {Kind::ThirdFrozenAtomAlterations, "opt=readopt", [](Route r) -> std::size_t { return qst3(r) && frozen(r); }},
    {Kind::ThirdCoordinateModifications, "opt=modredundant", [](Route r) -> std::size_t { return qst3(r) && modify(r); }},
    {Kind::PDBSecondaryStructure, "residues in atom labels", [](Route r) -> std::size_t { return r.has_residues(); }},
    {Kind::AtomicMasses, "readisotopes",
     [](Route r) -> std::size_t { return r.keyword({"readisotopes"}) || r.any_option({"readisotopes"}); }},
    {Kind::External, "external=readinput", [](Route r) -> std::size_t { return r.option("external", {"readinput"}); }},
    {Kind::LinkSpecificInput, "extralinks=l608", [](Route r) -> std::size_t { return r.option_text("extralinks", "l608"); }},
    {Kind::MMParameters, "hardfirst, softfirst, softonly or modify",
     [](Route r) -> std::size_t { return mm_parameters(r); }},
    {Kind::FrequencyOfInterest, "cphf=rdfreq or freq=roa",
     [](Route r) -> std::size_t { return r.option("cphf", {"rdfreq"}) || r.option("freq", {"roa"}); }},
    {Kind::BackgroundCharge, "charge", [](Route r) -> std::size_t { return r.keyword({"charge"}); }},
    {Kind::BOMDInput, "bomd, admp or readvelocity", trajectory_blocks},
    {Kind::PCMInput, "scrf=(read,externaliteration)", [](Route r) -> std::size_t { return pcm_early(r); }},
    {Kind::IRCCoordinates, "irc=(report=read)", [](Route r) -> std::size_t { return irc_report(r); }},
    {Kind::HarmonicConstraints, "geom=readharmonic",
     [](Route r) -> std::size_t { return r.option("geom", {"readharmonic"}); }},
    {Kind::SemiEmpiricalGaussian, "input or both",
     [](Route r) -> std::size_t {
         return r.keyword({"input", "both"});
     }},
    {Kind::SemiEmpiricalMOPAC, "mopacexternal or both",
     [](Route r) -> std::size_t {
         return r.keyword({"mopacexternal", "both"});
     }},
    {Kind::BasisSet, "gen", [](Route r) -> std::size_t { return general_basis(r); }},
    {Kind::BasisSetAlterations, "massage", [](Route r) -> std::size_t { return r.keyword({"massage"}); }},
    {Kind::FiniteField, "field=read", [](Route r) -> std::size_t { return r.option("field", {"read"}); }},
    {Kind::ECP, "genecp or pseudo=read", [](Route r) -> std::size_t { return ecp(r); }},
    {Kind::DensityFittingBasis, "extradensitybasis",
     [](Route r) -> std::size_t { return r.keyword({"extradensitybasis"}); }},
    {Kind::PCMSolvation, "scrf=read", [](Route r) -> std::size_t { return pcm_late(r); }},
    {Kind::DFTBParameters, "dftb", [](Route r) -> std::size_t { return r.method({"dftb"}, false) || r.keyword({"dftb"}); }},
    {Kind::GuessSource, "guess=input", [](Route r) -> std::size_t { return r.option("guess", {"input"}); }},
    {Kind::SymmetryCombine, "guess=lowsymm", [](Route r) -> std::size_t { return r.option("guess", {"lowsymm"}); }},
    {Kind::OrbitalSpecifications, "guess=cards", [](Route r) { return once_or_twice(r, "cards", false); }},
    {Kind::OrbitalAlterations, "guess=alter", [](Route r) { return once_or_twice(r, "alter", false); }},
    // Reordering is asked for twice for an open-shell molecule too, even with a restricted method.
    {Kind::OrbitalReordering, "guess=permute", [](Route r) { return once_or_twice(r, "permute", true); }},
    {Kind::GVBPairs, "gvb", [](Route r) -> std::size_t { return r.keyword({"gvb"}); }},
    {Kind::CASWeights, "casscf=stateaverage",
     [](Route r) -> std::size_t { return multiconfiguration_option(r, "stateaverage"); }},
    {Kind::SpinOrbitStates, "casscf=spinorbit",
     [](Route r) -> std::size_t { return multiconfiguration_option(r, "spinorbit"); }},
    {Kind::OrbitalFreezing, "readwindow",
     [](Route r) -> std::size_t { return r.keyword({"readwindow"}) || r.any_option({"readwindow"}); }},
    {Kind::EPTOrbitals, "ept=readorbitals", [](Route r) -> std::size_t { return r.option("ept", {"readorbitals"}); }},
    {Kind::SpinSpinAtoms, "nmr=readatoms", [](Route r) -> std::size_t { return r.option("nmr", {"readatoms"}); }},
    {Kind::AtomicRadii, "pop=readradii",
     [](Route r) -> std::size_t {
         return r.option("pop", {"readradii", "readatradii"}) || r.keyword({"readatradii"});
     }},
    {Kind::AntechamberOutput, "pop=mk iop(6/50=1)",
     [](Route r) -> std::size_t { return r.option("pop", {"mk"}) && r.iop("6/50", "1"); }},
    {Kind::ElectrostaticData, "prop=read or prop=opt",
     [](Route r) { return std::size_t{r.option("prop", {"read"})} + std::size_t{r.option("prop", {"opt"})}; }},
    {Kind::NBOInput, "pop=nboread",
     [](Route r) -> std::size_t {
         return r.option("pop", {"nboread", "nbo6read"});
     }},
    {Kind::HarmonicModeSelection, "freq=selectnormalmodes",
     [](Route r) -> std::size_t { return r.option("freq", {"selectnormalmodes"}); }},
    {Kind::HinderedRotor, "freq=readhindered", [](Route r) -> std::size_t { return r.option("freq", {"readhindered"}); }},
    {Kind::AnharmonicModeSelection, "freq=selectanharmonicmodes",
     [](Route r) -> std::size_t { return r.option("freq", {"selectanharmonicmodes"}); }},
    {Kind::AnharmonicInput, "freq=readanharmonic",
     [](Route r) -> std::size_t { return r.option("freq", {"readanharmonic"}); }},
    {Kind::FCHTInput, "freq=readfcht", [](Route r) -> std::size_t { return r.option("freq", {"readfcht"}); }},
    {Kind::PickettAtoms, "output=pickett", [](Route r) -> std::size_t { return r.option("output", {"pickett"}); }},
    {Kind::ACIDOutput, "nmr=csgt iop(10/93=1)",
     [](Route r) -> std::size_t { return r.option("nmr", {"cgst"}) && r.iop("10/93", "1"); }},
    {Kind::PROAIMSOutput, "output=wfn",
     [](Route r) -> std::size_t {
         return r.option("output", {"wfn", "psi"});
     }},
    {Kind::MatrixElementFile, "output=matrixelement",
     [](Route r) -> std::
                     size_t {
                         return r.option("output", {"matrixelement", "raw"});
                     }},
};

ParsedKeywords interpret(const ControlSection& control) {
    return control.route_keywords.empty() ? ParsedKeywords() : GJFParser::parse_keywords(control.route_keywords, {});
}

}  // namespace

std::vector<Kind> expected_kinds(Route questions) {
    std::vector<Kind> kinds;
    for (const Rule& rule : rules) {
        kinds.insert(kinds.end(), rule.count(questions), rule.kind);
    }
    return kinds;
}

const char* extra_input_request(Kind kind) noexcept {
    const auto row = static_cast<std::uint32_t>(kind) - 1;
    return row < std::size(rules) ? rules[row].request : "";
}

std::vector<Kind> GJFParser::expected_extra_input_order(const ControlSection& control) {
    const ParsedKeywords route = interpret(control);
    return expected_kinds(RouteQuestions(route));
}

std::vector<Kind> GJFParser::expected_extra_input_order(const GJFData& data) {
    const auto residues = [](const auto& atom) { return has_residue(atom.info); };
    const GeomSection& geom = data.geom;
    const ParsedKeywords route = interpret(data.control);
    RouteQuestions questions(route);
    questions.set_molecule(
        {is_open_shell(geom), std::any_of(geom.atoms.begin(), geom.atoms.end(), residues) ||
                                  std::any_of(geom.zmatrix_entries.begin(), geom.zmatrix_entries.end(), residues)});
    return expected_kinds(questions);
}

}  // namespace quor::input::gaussian
