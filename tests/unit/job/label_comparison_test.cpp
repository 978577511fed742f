// Comparing labels of atoms, and variables: every field counts.
#include <gjf/core/job/job_comparison.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace quor::input::gaussian {
namespace {

TEST(Labels, DifferInAnyField) {
    AtomInfo label;
    label.element = "C";
    label.mm_type = "CT";
    label.mm_charge = 0.1;
    label.params = {{"Iso", "13"}};
    const std::vector<std::function<void(AtomInfo&)>> changes = {
        [](AtomInfo& l) { l.element = "c"; },     [](AtomInfo& l) { l.mm_type.reset(); },
        [](AtomInfo& l) { l.mm_type = "ct"; },    [](AtomInfo& l) { l.mm_charge = 0.1 + 1e-12; },
        [](AtomInfo& l) { l.mm_charge.reset(); }, [](AtomInfo& l) { l.params["Iso"] = "14"; },
        [](AtomInfo& l) { l.params.clear(); },
    };
    EXPECT_TRUE(same_label(label, label));
    for (std::size_t i = 0; i < changes.size(); ++i) {
        AtomInfo other = label;
        changes[i](other);
        EXPECT_FALSE(same_label(label, other)) << i;
        EXPECT_FALSE(same_label(other, label)) << i;
    }
}

TEST(Variables, AreComparedAsWritten) {
    EXPECT_TRUE(same_variable({"r", "0.96"}, {"r", "0.96"}));
    EXPECT_FALSE(same_variable({"r", "0.96"}, {"R", "0.96"}));
    EXPECT_FALSE(same_variable({"r", "0.96"}, {"r", "0.960"}));
    EXPECT_FALSE(same_variable({"r", ""}, {"", "r"}));
}

}  // namespace
}  // namespace quor::input::gaussian
