// The closed set of extra input kinds: what may follow the molecule specification, in the order it follows.
#pragma once

#include <cstdint>

namespace quor::input::gaussian {

/// What an extra input section is. The values are fixed: sections of a job are ordered by them, and C callers pass them as
/// integers.
enum class ExtraInputSectionKind : std::int32_t {
    Unknown = 0,
    Connectivity = 1,
    FrozenAtomAlterations = 2,
    CoordinateModifications = 3,
    SecondTitleAndMolecule = 4,
    SecondConnectivity = 5,
    SecondFrozenAtomAlterations = 6,
    SecondCoordinateModifications = 7,
    ThirdTitleAndTSStructure = 8,
    ThirdConnectivity = 9,
    ThirdFrozenAtomAlterations = 10,
    ThirdCoordinateModifications = 11,
    PDBSecondaryStructure = 12,
    AtomicMasses = 13,
    External = 14,
    LinkSpecificInput = 15,
    MMParameters = 16,
    FrequencyOfInterest = 17,
    BackgroundCharge = 18,
    BOMDInput = 19,
    PCMInput = 20,
    IRCCoordinates = 21,
    HarmonicConstraints = 22,
    SemiEmpiricalGaussian = 23,
    SemiEmpiricalMOPAC = 24,
    BasisSet = 25,
    BasisSetAlterations = 26,
    FiniteField = 27,
    ECP = 28,
    DensityFittingBasis = 29,
    PCMSolvation = 30,
    DFTBParameters = 31,
    GuessSource = 32,
    SymmetryCombine = 33,
    OrbitalSpecifications = 34,
    OrbitalAlterations = 35,
    OrbitalReordering = 36,
    GVBPairs = 37,
    CASWeights = 38,
    SpinOrbitStates = 39,
    OrbitalFreezing = 40,
    EPTOrbitals = 41,
    SpinSpinAtoms = 42,
    AtomicRadii = 43,
    AntechamberOutput = 44,
    ElectrostaticData = 45,
    NBOInput = 46,
    HarmonicModeSelection = 47,
    HinderedRotor = 48,
    AnharmonicModeSelection = 49,
    AnharmonicInput = 50,
    FCHTInput = 51,
    PickettAtoms = 52,
    ACIDOutput = 53,
    PROAIMSOutput = 54,
    MatrixElementFile = 55,
};

}  // namespace quor::input::gaussian
