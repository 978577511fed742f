// Keeps parts of a job aside. What may fail is done before a part counts as touched.
#include <gjf/core/editor/edit_record.hpp>

namespace quor::input::gaussian {

EditRecord::EditRecord(std::uint64_t identity, std::size_t atom_count) : identity_(identity), atom_count_(atom_count) {}
EditRecord::EditRecord(const EditRecord&) = default;
EditRecord::EditRecord(EditRecord&&) noexcept = default;
EditRecord& EditRecord::operator=(const EditRecord&) = default;
EditRecord& EditRecord::operator=(EditRecord&&) noexcept = default;
EditRecord::~EditRecord() = default;

const AtomCoord* EditRecord::atom_before(std::size_t origin) const noexcept {
    const std::uint32_t slot = origin < slots_.size() ? slots_[origin] : 0;
    return slot == 0 ? nullptr : &atoms_[slot - 1];
}

void EditRecord::keep(JobPart part, const GJFData& job) {
    if (touched(part)) {
        return;
    }
    if (part == JobPart::Link0 || part == JobPart::Route) {
        if (!touched(JobPart::Link0) && !touched(JobPart::Route)) {
            before_.control = job.control;
        }
    } else if (part == JobPart::Overlays) {
        before_.extra_overlays = job.extra_overlays;
    } else if (part == JobPart::Title) {
        before_.title = job.title;
    } else if (part == JobPart::ChargeAndMultiplicity) {
        before_.geom.additional_pairs = job.geom.additional_pairs;
        before_.geom.charge = job.geom.charge;
        before_.geom.multiplicity = job.geom.multiplicity;
    } else if (part == JobPart::Variables) {
        before_.geom.variables = job.geom.variables;
        before_.geom.constants = job.geom.constants;
        before_.geom.cartesian_variables = job.geom.cartesian_variables;
    } else if (part == JobPart::ExtraInput) {
        before_.extra_inputs = job.extra_inputs;
    }
    parts_ |= bit(part);
}

void EditRecord::keep_atom(std::size_t origin, const AtomCoord& atom) {
    if (origin >= atom_count_ || atom_before(origin) != nullptr) {
        return;
    }
    slots_.resize(atom_count_);
    atoms_.push_back(atom);
    slots_[origin] = static_cast<std::uint32_t>(atoms_.size());
    parts_ |= bit(JobPart::Atom);
}

}  // namespace quor::input::gaussian
