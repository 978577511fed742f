// The floor: what reading a large job with all its fields costs in the plainest way.
//
// A loop walks the text once, line by line and field by field, converts the numbers and stores every field that the job
// model keeps of a Cartesian job, in plain arrays: no model, no vocabulary, no error handling, and nothing but the one form
// of file. Its memory comes in the pages that the system gives by itself.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quor::benchmarks {

/// The fields of one job. `Text` is std::string, so that each text is owned, or std::string_view into a copy of the whole.
template <typename Text>
struct PlainArrays {
    std::string copy;                   ///< of the whole text, where `Text` is a view
    std::vector<Text> head;             ///< lines of Link 0, route and title
    std::vector<std::int32_t> charges;  ///< charges and multiplicities in turn
    std::vector<Text> lines;            ///< of the molecule, as kept
    std::vector<Text> elements;
    std::vector<Text> types;         ///< molecular-mechanics types
    std::vector<double> mm_charges;  ///< molecular-mechanics charges
    std::vector<std::int32_t> freeze_codes;
    std::vector<Text> x_texts, y_texts, z_texts;
    std::vector<double> x, y, z;
    std::vector<Text> layers;
    std::vector<std::uint64_t> bond_atoms1, bond_atoms2;  ///< counted from 0
    std::vector<double> bond_orders;
};

/// Stands for an atom without a freeze code.
inline constexpr std::int32_t no_freeze_code = -999;

/// Walks a job whose atom lines are "ELEMENT X Y Z" or "ELEMENT CODE X Y Z".
template <typename Text>
PlainArrays<Text> walk_cartesian(std::string_view text);

/// Walks a job whose atom lines are "ELEMENT-TYPE-CHARGE CODE X Y Z LAYER ...", with its bonds.
template <typename Text>
PlainArrays<Text> walk_oniom(std::string_view text);

}  // namespace quor::benchmarks
