// One atom: its label, and its line in a Cartesian molecule specification.
#pragma once

#include <core/export.hpp>
#include <gjf/core/chemistry/species.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace quor::input::gaussian {

/// The atom label, as in C-CT--0.12(PDBName=CA,ResName=ALA).
struct QUOR_GJF_API AtomInfo {
    AtomInfo();
    AtomInfo(const AtomInfo& other);
    AtomInfo(AtomInfo&& other) noexcept;
    AtomInfo& operator=(const AtomInfo& other);
    AtomInfo& operator=(AtomInfo&& other) noexcept;
    ~AtomInfo();

    std::string element;                        ///< element symbol or atom name, case as written
    std::optional<std::string> mm_type;         ///< molecular-mechanics atom type
    std::optional<double> mm_charge;            ///< molecular-mechanics partial charge, in elementary charges
    std::map<std::string, std::string> params;  ///< parenthesised parameters, case as written, the last value of each key
};

/// Tells what a label stands for.
///
/// An atom of type Bq is a ghost; the labels -1 and -2, which read as charges, are a dummy atom and a translation vector.
/// The parameter ZNuc gives an atom another nuclear charge, so that its species is not certain.
QUOR_GJF_API Species species_of(const AtomInfo& info);

/// Returns the value of a label's parameter, whatever the letter case of its name (`lower` is in lower case), or null.
QUOR_GJF_API const std::string* find_parameter(const AtomInfo& info, std::string_view lower);

/// A coordinate as written: a number, or the name of a variable with an optional sign.
struct CoordinateValue {
    std::string text;
    std::optional<double> value;  ///< present when `text` is a number
};

/// One atom line of a Cartesian molecule specification.
struct QUOR_GJF_API AtomCoord {
    AtomCoord();
    AtomCoord(const AtomCoord& other);
    AtomCoord(AtomCoord&& other) noexcept;
    AtomCoord& operator=(const AtomCoord& other);
    AtomCoord& operator=(AtomCoord&& other) noexcept;
    ~AtomCoord();

    AtomInfo info;
    std::optional<std::int32_t> freeze;  ///< freeze code, as written (0 free, -1 frozen)
    double x = 0;                        ///< in the file's own units; 0 for a coordinate that is a variable
    double y = 0;
    double z = 0;
    CoordinateValue x_ref;  ///< as written
    CoordinateValue y_ref;
    CoordinateValue z_ref;
    std::optional<std::string> layer;  ///< ONIOM layer field, as written
};

}  // namespace quor::input::gaussian
