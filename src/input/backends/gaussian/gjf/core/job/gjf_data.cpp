// Queries on one job.
#include <gjf/core/job/gjf_data.hpp>

namespace quor::input::gaussian {

std::int32_t GJFData::find_extra_input_index(ExtraInputSectionKind kind) const {
    for (std::size_t i = 0; i < extra_inputs.size(); ++i) {
        if (extra_inputs[i].kind == kind) {
            return static_cast<std::int32_t>(i);
        }
    }
    return -1;
}

std::vector<std::int32_t> GJFData::find_extra_input_indices(ExtraInputSectionKind kind) const {
    std::vector<std::int32_t> indices;
    for (std::size_t i = 0; i < extra_inputs.size(); ++i) {
        if (extra_inputs[i].kind == kind) {
            indices.push_back(static_cast<std::int32_t>(i));
        }
    }
    return indices;
}

const ConnectivitySection* GJFData::connectivity() const noexcept {
    const std::int32_t index = find_extra_input_index(ExtraInputSectionKind::Connectivity);
    return index < 0 ? nullptr : extra_inputs[static_cast<std::size_t>(index)].connectivity();
}

std::string GJFData::extra_input_text(std::size_t index) const { return extra_inputs.at(index).text(geom.atom_count()); }

}  // namespace quor::input::gaussian
