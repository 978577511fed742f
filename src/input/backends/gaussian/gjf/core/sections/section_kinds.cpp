// The kinds of extra input: one row each, in the order in which the sections stand in a job.
#include <gjf/core/sections/section_kinds.hpp>

#include <gjf/core/sections/section_row.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>

namespace quor::input::gaussian {

// The grammars, which stand in sources of their own. Each finds `text` set, and `lines` cut.
void read_left_over(SectionReading& section);        // of unknown kind: each whole number may be an atom
void read_atomless(SectionReading& section);         // names no atoms by number
void read_unknown_form(SectionReading& section);     // may name atoms wherever a digit stands
void read_coordinates(SectionReading& section);      // ModRedundant and its like
void read_bonds(SectionReading& section);            // connectivity
void read_atom_lists(SectionReading& section);       // numbers and ranges
void read_first_fields(SectionReading& section);     // an atom or element at the begin of each line
void read_atom_selections(SectionReading& section);  // readopt and its like
void read_basis_blocks(SectionReading& section);
void read_potentials(SectionReading& section);
void read_isotopes(SectionReading& section);
void read_structure(SectionReading& section);
void read_solvation(SectionReading& section);
void read_trajectory(SectionReading& section);

namespace {

using Kind = ExtraInputSectionKind;
using Class = ExtraInputClass;
using Route = const RouteQuestions&;

std::size_t connect(Route r) { return r.option("geom", {"connectivity", "connect"}) || r.keyword({"modconnect"}); }

std::size_t frozen(Route r) {
    return r.option("geom", {"readopt", "readoptimize", "rdoptimize"}) ||
           r.option("opt", {"readopt", "readoptimize", "rdoptimize"});
}

std::size_t modify(Route r) { return r.option("opt", {"modredundant", "modredun", "modr", "addgic"}); }

std::size_t qst2_or_3(Route r) { return r.option("opt", {"qst2", "qst3"}); }

std::size_t qst3(Route r) { return r.option("opt", {"qst3"}); }

std::size_t mm_parameters(Route r) {
    const Words words = {"hardfirst", "softfirst", "softonly", "modify"};
    return r.any_option(words) || r.keyword({"hardfirst", "softfirst", "softonly", "modify"}) ||
           r.word_in_method_options(words) || r.word_in_oniom(words);
}

std::size_t pcm_early(Route r) { return r.option("scrf", {"read"}) && r.option("scrf", {"externaliteration", "oniompcm"}); }

std::size_t pcm_late(Route r) { return r.option("scrf", {"read"}) && !pcm_early(r); }

// IRC=(Report=Read) is stored as an option "report" with the value "read".
std::size_t irc_report(Route r) {
    return r.option("irc", {"report=read", "read"}) || (r.option("irc", {"report"}) && r.any_option({"read"}));
}

std::size_t general_basis(Route r) { return r.basis({"gen", "genecp"}) || r.keyword({"gen", "genecp", "extrabasis"}); }

std::size_t ecp(Route r) { return r.basis({"genecp"}) || r.keyword({"genecp"}) || r.option("pseudo", {"read", "cards"}); }

// A multi-configuration option is given to the keyword, or stands among the options of the method.
bool multiconfiguration_option(Route r, const char* name) {
    return r.option("casscf", {name}) || (r.method({"casscf", "cas"}, true) && r.word_in_method_options({name}));
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

std::size_t never(Route) { return 0; }
std::size_t second_connect(Route r) { return qst2_or_3(r) && connect(r); }
std::size_t second_frozen(Route r) { return qst2_or_3(r) && frozen(r); }
std::size_t second_modify(Route r) { return qst2_or_3(r) && modify(r); }
std::size_t third_connect(Route r) { return qst3(r) && connect(r); }
std::size_t third_frozen(Route r) { return qst3(r) && frozen(r); }
std::size_t third_modify(Route r) { return qst3(r) && modify(r); }
std::size_t residues(Route r) { return r.has_residues(); }
std::size_t isotopes(Route r) { return r.keyword({"readisotopes"}) || r.any_option({"readisotopes"}); }
std::size_t external_input(Route r) { return r.option("external", {"readinput"}); }
std::size_t link_input(Route r) { return r.option("extralinks", {"l608"}); }
std::size_t frequency(Route r) { return r.option("cphf", {"rdfreq"}) || r.option("freq", {"roa"}); }
std::size_t charges(Route r) { return r.keyword({"charge"}); }
std::size_t constraints(Route r) { return r.option("geom", {"readharmonic"}); }
std::size_t gaussian_parameters(Route r) { return r.keyword({"input", "both"}); }
std::size_t mopac_parameters(Route r) { return r.keyword({"mopacexternal", "both"}); }
std::size_t massage(Route r) { return r.keyword({"massage"}); }
std::size_t field(Route r) { return r.option("field", {"read"}); }
std::size_t fitting_set(Route r) { return r.keyword({"extradensitybasis"}); }
std::size_t dftb(Route r) { return r.method({"dftb"}, false) || r.keyword({"dftb"}); }
std::size_t guess_source(Route r) { return r.option("guess", {"input"}); }
std::size_t symmetries(Route r) { return r.option("guess", {"lowsymm"}); }
std::size_t orbitals(Route r) { return once_or_twice(r, "cards", false); }
std::size_t altered_orbitals(Route r) { return once_or_twice(r, "alter", false); }
std::size_t reordered_orbitals(Route r) { return once_or_twice(r, "permute", true); }
std::size_t gvb(Route r) { return r.keyword({"gvb"}); }
std::size_t state_average(Route r) { return multiconfiguration_option(r, "stateaverage"); }
std::size_t spin_orbit(Route r) { return r.option("casscf", {"spin"}) || multiconfiguration_option(r, "spinorbit"); }
std::size_t window(Route r) { return r.keyword({"readwindow"}) || r.any_option({"readwindow"}) || r.any_known_option("rw"); }
std::size_t ept(Route r) { return r.option("ept", {"readorbitals"}); }
std::size_t spin_spin(Route r) { return r.option("nmr", {"readatoms"}); }
std::size_t radii(Route r) { return r.option("pop", {"readradii", "readatradii"}) || r.keyword({"readatradii"}); }
std::size_t antechamber(Route r) { return r.option("pop", {"mk"}) && r.iop("6/50", "1"); }
std::size_t properties(Route r) { return std::size_t{r.option("prop", {"read"})} + std::size_t{r.option("prop", {"opt"})}; }
std::size_t nbo(Route r) { return r.option("pop", {"nboread", "nbo6read"}); }
std::size_t modes(Route r) { return r.option("freq", {"selectnormalmodes"}); }
std::size_t rotors(Route r) { return r.option("freq", {"readhinderedrotor", "readhindered"}); }
std::size_t anharmonic_modes(Route r) { return r.option("freq", {"selectanharmonicmodes"}); }
std::size_t anharmonic(Route r) { return r.option("freq", {"readanharm", "readanharmonic"}); }
std::size_t fcht(Route r) { return r.option("freq", {"readfcht"}); }
std::size_t pickett(Route r) { return r.option("output", {"pickett"}); }
std::size_t acid(Route r) { return r.option("nmr", {"csgt", "cgst"}) && r.iop("10/93", "1"); }
std::size_t wave_function_file(Route r) { return r.option("output", {"wfn", "psi"}); }
std::size_t matrix_elements(Route r) { return r.option("output", {"matrixelement", "raw"}); }

// Row i is kind i. The file name of an ACID plot is a block while that of PROAIMS is a single line: both are as Gaussian
// reads them.
constexpr SectionRow rows[] = {
    {Kind::Unknown, "Unknown", "unknown", Class::Block, "", never, read_left_over},
    {Kind::Connectivity, "Connectivity specifications", "connectivity", Class::Block, "geom=connectivity", connect,
     read_bonds},
    {Kind::FrozenAtomAlterations, "Alterations to frozen atoms", "frozen", Class::Block, "opt=readopt", frozen,
     read_atom_selections},
    {Kind::CoordinateModifications, "Modifications to coordinates", "modredundant", Class::Block, "opt=modredundant", modify,
     read_coordinates},
    {Kind::SecondTitleAndMolecule, "2nd title and molecule specification", "molecule2", Class::TitleAndMolecule, "opt=qst2",
     qst2_or_3, read_structure},
    {Kind::SecondConnectivity, "Connectivity specs. for 2nd set of coordinates", "connectivity2", Class::Block,
     "geom=connectivity", second_connect, read_bonds},
    {Kind::SecondFrozenAtomAlterations, "2nd alterations to frozen atoms", "frozen2", Class::Block, "opt=readopt",
     second_frozen, read_atom_selections},
    {Kind::SecondCoordinateModifications, "Modifications to 2nd set of coordinates", "modredundant2", Class::Block,
     "opt=modredundant", second_modify, read_coordinates},
    {Kind::ThirdTitleAndTSStructure, "3rd title and initial TS structure", "molecule3", Class::TitleAndMolecule, "opt=qst3",
     qst3, read_structure},
    {Kind::ThirdConnectivity, "Connectivity specs. for 3rd set of coordinates", "connectivity3", Class::Block,
     "geom=connectivity", third_connect, read_bonds},
    {Kind::ThirdFrozenAtomAlterations, "3rd alterations to frozen atoms", "frozen3", Class::Block, "opt=readopt",
     third_frozen, read_atom_selections},
    {Kind::ThirdCoordinateModifications, "Modifications to 3rd set of coordinates", "modredundant3", Class::Block,
     "opt=modredundant", third_modify, read_coordinates},
    {Kind::PDBSecondaryStructure, "PDB secondary structure information", "pdb", Class::Block, "residues in atom labels",
     residues, read_atomless},
    {Kind::AtomicMasses, "Atomic masses", "masses", Class::Block, "readisotopes", isotopes, read_isotopes},
    {Kind::External, "External", "external", Class::Block, "external=readinput", external_input, read_unknown_form},
    {Kind::LinkSpecificInput, "Link-specific input", "link", Class::Block, "extralinks=l608", link_input, read_unknown_form},
    {Kind::MMParameters, "Molecular Mechanics parameters", "mm", Class::Block, "hardfirst, softfirst, softonly or modify",
     mm_parameters, read_atomless},
    {Kind::FrequencyOfInterest, "Frequency of interest", "frequency", Class::Block, "cphf=rdfreq or freq=roa", frequency,
     read_atomless},
    {Kind::BackgroundCharge, "Background charge distribution", "charges", Class::Block, "charge", charges, read_atomless},
    {Kind::BOMDInput, "BOMD/ADMP input", "bomd", Class::Block, "bomd, admp or readvelocity", trajectory_blocks,
     read_trajectory},
    {Kind::PCMInput, "PCM input", "pcm-external", Class::Block, "scrf=(read,externaliteration)", pcm_early, read_solvation},
    {Kind::IRCCoordinates, "Coordinates for IRC table", "irc", Class::Block, "irc=(report=read)", irc_report,
     read_coordinates},
    {Kind::HarmonicConstraints, "Harmonic constraints", "constraints", Class::Block, "geom=readharmonic", constraints,
     read_unknown_form},
    {Kind::SemiEmpiricalGaussian, "Semi-empirical parameters (Gaussian format)", "semiempirical", Class::Block,
     "input or both", gaussian_parameters, read_atomless},
    {Kind::SemiEmpiricalMOPAC, "Semi-empirical parameters (MOPAC format)", "mopac", Class::Block, "mopacexternal or both",
     mopac_parameters, read_atomless},
    {Kind::BasisSet, "Basis set specification", "basis", Class::Block, "gen", general_basis, read_basis_blocks},
    {Kind::BasisSetAlterations, "Basis set alterations", "massage", Class::Block, "massage", massage, read_first_fields},
    {Kind::FiniteField, "Finite field coefficients", "field", Class::Block, "field=read", field, read_atomless},
    {Kind::ECP, "ECP specification", "ecp", Class::Block, "genecp or pseudo=read", ecp, read_potentials},
    {Kind::DensityFittingBasis, "Density fitting basis set specification", "fitting", Class::Block, "extradensitybasis",
     fitting_set, read_basis_blocks},
    {Kind::PCMSolvation, "PCM solvation model input", "pcm", Class::Block, "scrf=read", pcm_late, read_solvation},
    {Kind::DFTBParameters, "DFTB parameters", "dftb", Class::Block, "dftb", dftb, read_atomless},
    {Kind::GuessSource, "Source for initial guess", "guess", Class::Block, "guess=input", guess_source, read_unknown_form},
    {Kind::SymmetryCombine, "Symmetry types to combine", "symmetry", Class::SingleLine, "guess=lowsymm", symmetries,
     read_atomless},
    {Kind::OrbitalSpecifications, "Orbital specifications (separate α & β)", "orbitals", Class::Block, "guess=cards",
     orbitals, read_atomless},
    {Kind::OrbitalAlterations, "Orbital alterations (separate α & β)", "alter", Class::Block, "guess=alter",
     altered_orbitals, read_atomless},
    {Kind::OrbitalReordering, "Orbital reordering (separate α & β)", "permute", Class::Block, "guess=permute",
     reordered_orbitals, read_atomless},
    {Kind::GVBPairs, "# Orbitals/GVB pair", "gvb", Class::SingleLine, "gvb", gvb, read_atomless},
    {Kind::CASWeights, "Weights for CAS state averaging", "cas-weights", Class::Block, "casscf=stateaverage", state_average,
     read_atomless},
    {Kind::SpinOrbitStates, "States of interest for spin orbit coupling", "spin-orbit", Class::SingleLine,
     "casscf=spinorbit", spin_orbit, read_atomless},
    {Kind::OrbitalFreezing, "Orbital freezing information", "window", Class::Block, "readwindow", window, read_atomless},
    {Kind::EPTOrbitals, "EPT orbitals to refine", "ept", Class::Block, "ept=readorbitals", ept, read_atomless},
    {Kind::SpinSpinAtoms, "Atoms list for spin-spin coupling constants", "spinspin", Class::Block, "nmr=readatoms",
     spin_spin, read_atom_lists},
    {Kind::AtomicRadii, "Alternate atomic radii", "radii", Class::Block, "pop=readradii", radii, read_first_fields},
    {Kind::AntechamberOutput, "Antechamber output file", "antechamber", Class::Block, "pop=mk iop(6/50=1)", antechamber,
     read_atomless},
    {Kind::ElectrostaticData, "Data for electrostatic properties", "prop", Class::Block, "prop=read or prop=opt", properties,
     read_unknown_form},
    {Kind::NBOInput, "NBO input", "nbo", Class::UpToEnd, "pop=nboread", nbo, read_unknown_form},
    {Kind::HarmonicModeSelection, "Harmonic Normal Mode selection", "modes", Class::Block, "freq=selectnormalmodes", modes,
     read_atom_selections},
    {Kind::HinderedRotor, "Hindered Rotor input", "rotor", Class::Block, "freq=readhindered", rotors, read_unknown_form},
    {Kind::AnharmonicModeSelection, "Anharmonic Normal Mode selection", "anharmonic-modes", Class::Block,
     "freq=selectanharmonicmodes", anharmonic_modes, read_atom_selections},
    {Kind::AnharmonicInput, "Input for Anharmonic", "anharmonic", Class::Block, "freq=readanharmonic", anharmonic,
     read_unknown_form},
    {Kind::FCHTInput, "Input for FCHT", "fcht", Class::Block, "freq=readfcht", fcht, read_unknown_form},
    {Kind::PickettAtoms, "Atom list for Pickett file generation", "pickett", Class::AtomList, "output=pickett", pickett,
     read_atom_lists},
    {Kind::ACIDOutput, "ACID output filename", "acid", Class::Block, "nmr=csgt iop(10/93=1)", acid, read_atomless},
    {Kind::PROAIMSOutput, "PROAIMS output filename", "wfn", Class::SingleLine, "output=wfn", wave_function_file,
     read_atomless},
    {Kind::MatrixElementFile, "Matrix element filename", "matrix", Class::Block, "output=matrixelement", matrix_elements,
     read_atomless},
};

constexpr bool rows_are_in_order() {
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        if (static_cast<std::size_t>(rows[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(std::size(rows) == 56 && rows_are_in_order());

}  // namespace

const SectionRow& section_row(Kind kind) noexcept {
    const auto value = static_cast<std::uint32_t>(kind);
    return rows[value < std::size(rows) ? value : 0];
}

std::vector<Kind> expected_kinds(Route questions) {
    std::vector<Kind> kinds;
    for (const SectionRow& row : rows) {
        kinds.insert(kinds.end(), row.asked(questions), row.kind);
    }
    return kinds;
}

const char* extra_input_kind_name(Kind kind) noexcept { return section_row(kind).name; }

const char* extra_input_short_name(Kind kind) noexcept { return section_row(kind).short_name; }

const char* extra_input_request(Kind kind) noexcept { return section_row(kind).request; }

ExtraInputClass extra_input_class(Kind kind) noexcept { return section_row(kind).input_class; }

bool extra_input_requires_blank_line(Kind kind) noexcept {
    const Class input_class = extra_input_class(kind);
    return input_class == Class::Block || input_class == Class::TitleAndMolecule;
}

std::optional<Kind> find_extra_input_kind(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size()) {
        return number < std::size(rows) ? std::optional(rows[number].kind) : std::nullopt;
    }
    const std::string name = to_lower_copy(text);
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const SectionRow& candidate) {
        return name == candidate.short_name || name == to_lower_copy(candidate.name);
    });
    return row == std::end(rows) ? std::nullopt : std::optional(row->kind);
}

}  // namespace quor::input::gaussian
