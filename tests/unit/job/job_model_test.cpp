// The job model: pairs, sections, kinds and queries.
#include <gjf/core/job/gjf_data.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Kind = ExtraInputSectionKind;

TEST(JobModel, BeginsEmpty) {
    const GJFData data;
    EXPECT_EQ(data.title, "");
    EXPECT_FALSE(data.extra_overlays.has_value());
    EXPECT_FALSE(data.control.chk || data.control.nproc || data.control.parsed_keywords);
    EXPECT_EQ(data.geom.format, GeometryFormat::Cartesian);
    EXPECT_EQ(data.geom.charge, 0);
    EXPECT_EQ(data.geom.multiplicity, 0);
    EXPECT_TRUE(data.geom.charge_spin_pairs().empty());
    EXPECT_EQ(data.find_extra_input_index(Kind::Unknown), -1);
    EXPECT_TRUE(data.find_extra_input_indices(Kind::Unknown).empty());
    EXPECT_EQ(data.connectivity(), nullptr);
    EXPECT_EQ(static_cast<int>(GeometryFormat::ZMatrix), 1);
    static_assert(std::is_nothrow_move_constructible_v<GJFData> && std::is_copy_assignable_v<GJFMultiData>);
}

TEST(Pairs, KeepThePrimaryOneApart) {
    GeomSection geom;
    geom.set_charge_spin_pairs({{1, 2}, {0, 1}, {-1, 3}});
    EXPECT_EQ(geom.charge, 1);
    EXPECT_EQ(geom.multiplicity, 2);
    EXPECT_EQ(geom.additional_pairs.size(), 2u);
    ASSERT_EQ(geom.charge_spin_pairs().size(), 3u);
    EXPECT_EQ(geom.charge_spin_pairs()[2].charge, -1);
    geom.multiplicity = 0;
    EXPECT_EQ(geom.charge_spin_pairs().size(), 3u);
    geom.set_charge_spin_pairs({});
    EXPECT_EQ(geom.charge, 0);
    EXPECT_EQ(geom.multiplicity, 0);
    EXPECT_TRUE(geom.charge_spin_pairs().empty());
    geom.charge = 5;
    EXPECT_TRUE(geom.charge_spin_pairs().empty());
    geom.multiplicity = -1;
    EXPECT_TRUE(geom.charge_spin_pairs().empty());
}

TEST(Sections, AreFoundByKind) {
    GJFData data;
    data.extra_inputs = {ExtraInputSection(Kind::BOMDInput, "a"), ExtraInputSection(Kind::ECP, "b"),
                         ExtraInputSection(Kind::BOMDInput, "c")};
    EXPECT_EQ(data.find_extra_input_index(Kind::BOMDInput), 0);
    EXPECT_EQ(data.find_extra_input_indices(Kind::BOMDInput), (std::vector<std::int32_t>{0, 2}));
    EXPECT_EQ(data.extra_input_text(1), "b");
    EXPECT_THROW(data.extra_input_text(3), std::out_of_range);
}

TEST(Sections, HoldTextOrBonds) {
    ExtraInputSection section;
    EXPECT_EQ(section.kind, Kind::Unknown);
    EXPECT_EQ(section.text(), "");
    EXPECT_FALSE(section.is_connectivity());
    EXPECT_EQ(section.connectivity(), nullptr);
    section.assign_text(Kind::Connectivity, "1 2 1.5\r\n2\r\n");
    ASSERT_NE(section.connectivity(), nullptr);
    EXPECT_TRUE(section.is_connectivity());
    EXPECT_EQ(section.text(), "1 2 1.5\n2");
    EXPECT_EQ(section.text(4), "1 2 1.5\n2\n3\n4");
    section.mutable_connectivity()->set_bond_order(0, 1, 2.0);
    EXPECT_EQ(section.text(), "1 2 2.0\n2");
    EXPECT_THROW(section.assign_text(Kind::Connectivity, "1 2"), GJFParseException);
    EXPECT_EQ(section.text(), "1 2 2.0\n2");
    section.assign_text(Kind::ECP, "x\r\ny\n");
    EXPECT_EQ(section.text(7), "x\r\ny\n");
    EXPECT_EQ(section.connectivity(), nullptr);
    EXPECT_THROW(std::get<ConnectivitySection>(section.content), std::bad_variant_access);
    section.assign_connectivity({});
    EXPECT_EQ(section.kind, Kind::Connectivity);
    EXPECT_EQ(section.text(), "");
    EXPECT_EQ(ExtraInputSection::from_connectivity({}).text(2), "1\n2");
}

TEST(Sections, OfKindConnectivityMayHoldText) {
    ExtraInputSection text_section;
    text_section.kind = Kind::Connectivity;
    text_section.content = std::string("raw");
    EXPECT_TRUE(text_section.is_connectivity());
    EXPECT_EQ(text_section.connectivity(), nullptr);
    GJFData data;
    data.extra_inputs = {text_section, ExtraInputSection(Kind::Connectivity, "1 2 1.0")};
    EXPECT_EQ(data.connectivity(), nullptr);
}

TEST(Exceptions, CarryTheirPrefix) {
    EXPECT_STREQ(GJFParseException("Missing title section").what(), "GJF Parse Error: Missing title section");
    EXPECT_THROW(throw GJFParseException(""), std::runtime_error);
}

}  // namespace
}  // namespace quor::input::gaussian
