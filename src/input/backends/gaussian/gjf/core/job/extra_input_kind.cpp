// The table of extra input kinds: value, display name and class of each.
#include <gjf/core/job/extra_input_kind.hpp>

#include <cstddef>
#include <iterator>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

struct KindRow {
    Kind kind;
    const char* name;
    ExtraInputClass input_class;
};

// Row i is kind i. The file name of an ACID plot is a block while that of PROAIMS is a single line: both are as Gaussian
// reads them.
constexpr KindRow kind_rows[] = {
    {Kind::Unknown, "Unknown", ExtraInputClass::Block},
    {Kind::Connectivity, "Connectivity specifications", ExtraInputClass::Block},
    {Kind::FrozenAtomAlterations, "Alterations to frozen atoms", ExtraInputClass::Block},
    {Kind::CoordinateModifications, "Modifications to coordinates", ExtraInputClass::Block},
    {Kind::SecondTitleAndMolecule, "2nd title and molecule specification", ExtraInputClass::TitleAndMolecule},
    {Kind::SecondConnectivity, "Connectivity specs. for 2nd set of coordinates", ExtraInputClass::Block},
    {Kind::SecondFrozenAtomAlterations, "2nd alterations to frozen atoms", ExtraInputClass::Block},
    {Kind::SecondCoordinateModifications, "Modifications to 2nd set of coordinates", ExtraInputClass::Block},
    {Kind::ThirdTitleAndTSStructure, "3rd title and initial TS structure", ExtraInputClass::TitleAndMolecule},
    {Kind::ThirdConnectivity, "Connectivity specs. for 3rd set of coordinates", ExtraInputClass::Block},
    {Kind::ThirdFrozenAtomAlterations, "3rd alterations to frozen atoms", ExtraInputClass::Block},
    {Kind::ThirdCoordinateModifications, "Modifications to 3rd set of coordinates", ExtraInputClass::Block},
    {Kind::PDBSecondaryStructure, "PDB secondary structure information", ExtraInputClass::Block},
    {Kind::AtomicMasses, "Atomic masses", ExtraInputClass::Block},
    {Kind::External, "External", ExtraInputClass::Block},
    {Kind::LinkSpecificInput, "Link-specific input", ExtraInputClass::Block},
    {Kind::MMParameters, "Molecular Mechanics parameters", ExtraInputClass::Block},
    {Kind::FrequencyOfInterest, "Frequency of interest", ExtraInputClass::Block},
    {Kind::BackgroundCharge, "Background charge distribution", ExtraInputClass::Block},
    {Kind::BOMDInput, "BOMD/ADMP input", ExtraInputClass::Block},
    {Kind::PCMInput, "PCM input", ExtraInputClass::Block},
    {Kind::IRCCoordinates, "Coordinates for IRC table", ExtraInputClass::Block},
    {Kind::HarmonicConstraints, "Harmonic constraints", ExtraInputClass::Block},
    {Kind::SemiEmpiricalGaussian, "Semi-empirical parameters (Gaussian format)", ExtraInputClass::Block},
    {Kind::SemiEmpiricalMOPAC, "Semi-empirical parameters (MOPAC format)", ExtraInputClass::Block},
    {Kind::BasisSet, "Basis set specification", ExtraInputClass::Block},
    {Kind::BasisSetAlterations, "Basis set alterations", ExtraInputClass::Block},
    {Kind::FiniteField, "Finite field coefficients", ExtraInputClass::Block},
    {Kind::ECP, "ECP specification", ExtraInputClass::Block},
    {Kind::DensityFittingBasis, "Density fitting basis set specification", ExtraInputClass::Block},
    {Kind::PCMSolvation, "PCM solvation model input", ExtraInputClass::Block},
    {Kind::DFTBParameters, "DFTB parameters", ExtraInputClass::Block},
    {Kind::GuessSource, "Source for initial guess", ExtraInputClass::Block},
    {Kind::SymmetryCombine, "Symmetry types to combine", ExtraInputClass::SingleLine},
    {Kind::OrbitalSpecifications, "Orbital specifications (separate α & β)", ExtraInputClass::Block},
    {Kind::OrbitalAlterations, "Orbital alterations (separate α & β)", ExtraInputClass::Block},
    {Kind::OrbitalReordering, "Orbital reordering (separate α & β)", ExtraInputClass::Block},
    {Kind::GVBPairs, "# Orbitals/GVB pair", ExtraInputClass::SingleLine},
    {Kind::CASWeights, "Weights for CAS state averaging", ExtraInputClass::Block},
    {Kind::SpinOrbitStates, "States of interest for spin orbit coupling", ExtraInputClass::SingleLine},
    {Kind::OrbitalFreezing, "Orbital freezing information", ExtraInputClass::Block},
    {Kind::EPTOrbitals, "EPT orbitals to refine", ExtraInputClass::Block},
    {Kind::SpinSpinAtoms, "Atoms list for spin-spin coupling constants", ExtraInputClass::Block},
    {Kind::AtomicRadii, "Alternate atomic radii", ExtraInputClass::Block},
    {Kind::AntechamberOutput, "Antechamber output file", ExtraInputClass::Block},
    {Kind::ElectrostaticData, "Data for electrostatic properties", ExtraInputClass::Block},
    {Kind::NBOInput, "NBO input", ExtraInputClass::UpToEnd},
    {Kind::HarmonicModeSelection, "Harmonic Normal Mode selection", ExtraInputClass::Block},
    {Kind::HinderedRotor, "Hindered Rotor input", ExtraInputClass::Block},
    {Kind::AnharmonicModeSelection, "Anharmonic Normal Mode selection", ExtraInputClass::Block},
    {Kind::AnharmonicInput, "Input for Anharmonic", ExtraInputClass::Block},
    {Kind::FCHTInput, "Input for FCHT", ExtraInputClass::Block},
    {Kind::PickettAtoms, "Atom list for Pickett file generation", ExtraInputClass::AtomList},
    {Kind::ACIDOutput, "ACID output filename", ExtraInputClass::Block},
    {Kind::PROAIMSOutput, "PROAIMS output filename", ExtraInputClass::SingleLine},
    {Kind::MatrixElementFile, "Matrix element filename", ExtraInputClass::Block},
};

constexpr bool rows_are_in_order() {
    for (std::size_t i = 0; i < std::size(kind_rows); ++i) {
        if (static_cast<std::size_t>(kind_rows[i].kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(std::size(kind_rows) == 56 && rows_are_in_order());

const KindRow& row_of(Kind kind) noexcept {
    const auto value = static_cast<std::uint32_t>(kind);
    return kind_rows[value < std::size(kind_rows) ? value : 0];
}

}  // namespace

const char* extra_input_kind_name(ExtraInputSectionKind kind) noexcept { return row_of(kind).name; }

ExtraInputClass extra_input_class(ExtraInputSectionKind kind) noexcept { return row_of(kind).input_class; }

bool extra_input_requires_blank_line(ExtraInputSectionKind kind) noexcept {
    const ExtraInputClass input_class = row_of(kind).input_class;
    return input_class == ExtraInputClass::Block || input_class == ExtraInputClass::TitleAndMolecule;
}

}  // namespace quor::input::gaussian
