// Comparing two jobs: which part differs, where, and what does not count when asked so.
#include <gjf/core/job/job_comparison.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

// Shown when two differences are not the same.
void PrintTo(const JobDifference& difference, std::ostream* out) {
    *out << job_part_name(difference.part) << " (" << static_cast<int>(difference.part) << ") at " << difference.index;
}

static bool operator==(const JobDifference& a, const JobDifference& b) { return a.part == b.part && a.index == b.index; }

namespace {

using Kind = ExtraInputSectionKind;
using Coordinates = JobComparison::Coordinates;
using UnknownSections = JobComparison::UnknownSections;
using Change = std::function<void(GJFData&)>;

AtomCoord atom(const char* element, double x, const char* text) {
    AtomCoord made;
    made.info.element = element;
    made.x = x;
    made.x_ref = {text, text[0] == '\0' ? std::nullopt : std::optional<double>(x)};
    return made;
}

ZMatrixEntry row(const char* element, std::int32_t bonded_to, const char* length) {
    ZMatrixEntry made;
    made.info.element = element;
    made.bond = ZMatrixReference{bonded_to, length};
    return made;
}

GJFData cartesian_job() {
    GJFData job;
    job.control.chk = "a.chk";
    job.control.other_link0_lines = {"%subst l502", "%nosave"};
    job.control.route_keywords = {"#p", "hf/sto-3g", "opt"};
    job.title = "water";
    job.geom.set_charge_spin_pairs({{0, 1}, {1, 2}});
    job.geom.atoms = {atom("O", 0.0, "0.0"), atom("H", 0.96, "0.96"), atom("H", -0.24, "-0.24")};
    job.geom.atoms[1].info.mm_charge = 0.25;
    job.geom.cartesian_variables = {{"r", "0.96"}};
    ConnectivitySection bonds;
    bonds.bonds = {{0, 1, 1.0}, {0, 2, 1.5}};
    job.extra_inputs = {ExtraInputSection::from_connectivity(bonds),
                        ExtraInputSection(Kind::BasisSet, "O H 0\n6-31G\n****")};
    return job;
}

GJFData zmatrix_job() {
    GJFData job;
    job.control.route_keywords = {"#", "hf"};
    job.geom.set_charge_spin_pairs({{0, 1}});
    job.geom.format = GeometryFormat::ZMatrix;
    job.geom.zmatrix_entries = {row("O", 0, "0"), row("H", 1, "r"), row("H", 1, "r")};
    job.geom.variables = {{"r", "0.96"}};
    job.geom.constants = {{"a", "104.5"}};
    return job;
}

GJFData changed(GJFData job, const Change& change) {
    change(job);
    return job;
}

struct Case {
    const char* what;
    Change change;
    std::optional<JobDifference> expected;
};

constexpr std::optional<JobDifference> same = std::nullopt;

std::optional<JobDifference> in(JobPart part, std::size_t index = 0) { return JobDifference{part, index}; }

// Changes one job, and compares it with the other one both ways.
void expect_both_ways(const GJFData& job, const std::vector<Case>& cases, const JobComparison& comparison = {}) {
    for (const Case& c : cases) {
        const GJFData other = changed(job, c.change);
        EXPECT_EQ(find_difference(job, other, comparison), c.expected) << c.what;
        EXPECT_EQ(find_difference(other, job, comparison), c.expected) << c.what << ", the other way round";
    }
}

ConnectivitySection& bonds_of(GJFData& job) { return *job.extra_inputs[0].mutable_connectivity(); }

TEST(JobComparison, NamesThePartThatDiffersAndWhere) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    expect_both_ways(
        cartesian_job(),
        {
            {"nothing", [](GJFData&) {}, same},
            {"checkpoint", [](GJFData& j) { j.control.chk = "b.chk"; }, in(JobPart::Link0)},
            {"no checkpoint", [](GJFData& j) { j.control.chk.reset(); }, in(JobPart::Link0)},
            {"empty value", [](GJFData& j) { j.control.rwf = ""; }, in(JobPart::Link0)},
            {"memory", [](GJFData& j) { j.control.mem = "1GB"; }, in(JobPart::Link0)},
            {"processors", [](GJFData& j) { j.control.nproc = 0; }, in(JobPart::Link0)},
            {"order of lines", [](GJFData& j) { std::swap(j.control.other_link0_lines[0], j.control.other_link0_lines[1]); },
             in(JobPart::Link0)},
            {"route word", [](GJFData& j) { j.control.route_keywords[2] = "Opt"; }, in(JobPart::Route)},
            {"fewer words", [](GJFData& j) { j.control.route_keywords.pop_back(); }, in(JobPart::Route)},
            {"empty overlays", [](GJFData& j) { j.extra_overlays = ""; }, in(JobPart::Overlays)},
            {"overlays", [](GJFData& j) { j.extra_overlays = "1//1;"; }, in(JobPart::Overlays)},
            {"title", [](GJFData& j) { j.title = "Water"; }, in(JobPart::Title)},
            {"blank in title", [](GJFData& j) { j.title += ' '; }, in(JobPart::Title)},
            {"charge", [](GJFData& j) { j.geom.charge = 1; }, in(JobPart::ChargeAndMultiplicity)},
            {"multiplicity", [](GJFData& j) { j.geom.multiplicity = 3; }, in(JobPart::ChargeAndMultiplicity)},
            {"second pair", [](GJFData& j) { j.geom.additional_pairs[0].multiplicity = 4; },
             in(JobPart::ChargeAndMultiplicity)},
            {"no second pair", [](GJFData& j) { j.geom.additional_pairs.clear(); }, in(JobPart::ChargeAndMultiplicity)},
            {"format", [](GJFData& j) { j.geom.format = GeometryFormat::ZMatrix; }, in(JobPart::Format)},
            {"no last atom", [](GJFData& j) { j.geom.atoms.pop_back(); }, in(JobPart::AtomCount)},
            {"element", [](GJFData& j) { j.geom.atoms[2].info.element = "D"; }, in(JobPart::Atom, 2)},
            {"type", [](GJFData& j) { j.geom.atoms[0].info.mm_type = "OW"; }, in(JobPart::Atom, 0)},
            {"charge of an atom", [](GJFData& j) { j.geom.atoms[1].info.mm_charge = 0.25000001; }, in(JobPart::Atom, 1)},
            {"no charge of an atom", [](GJFData& j) { j.geom.atoms[1].info.mm_charge.reset(); }, in(JobPart::Atom, 1)},
            {"charge that is no number", [=](GJFData& j) { j.geom.atoms[1].info.mm_charge = nan; }, in(JobPart::Atom, 1)},
            {"parameter", [](GJFData& j) { j.geom.atoms[1].info.params["Iso"] = "2"; }, in(JobPart::Atom, 1)},
            {"freeze code", [](GJFData& j) { j.geom.atoms[1].freeze = 0; }, in(JobPart::Atom, 1)},
            {"layer", [](GJFData& j) { j.geom.atoms[1].layer = ""; }, in(JobPart::Atom, 1)},
            {"number", [](GJFData& j) { j.geom.atoms[2].x = -0.25; }, in(JobPart::Atom, 2)},
            {"digits", [](GJFData& j) { j.geom.atoms[2].x_ref.text = "-0.240"; }, in(JobPart::Atom, 2)},
            {"y", [](GJFData& j) { j.geom.atoms[2].y_ref.text = "0"; }, in(JobPart::Atom, 2)},
            {"z", [](GJFData& j) { j.geom.atoms[2].z = 1e-9; }, in(JobPart::Atom, 2)},
            {"variable", [](GJFData& j) { j.geom.cartesian_variables[0].value = "0.960"; }, in(JobPart::Variables)},
            {"more variables",
             [](GJFData& j) {
                 j.geom.variables = {{"s", "1"}};
             },
             in(JobPart::Variables)},
            {"bond", [](GJFData& j) { bonds_of(j).bonds[1].atom2 = 1; }, in(JobPart::ExtraInput, 0)},
            {"bond order", [](GJFData& j) { bonds_of(j).bonds[0].order = 2.0; }, in(JobPart::ExtraInput, 0)},
            {"bond order that is no number", [=](GJFData& j) { bonds_of(j).bonds[0].order = nan; },
             in(JobPart::ExtraInput, 0)},
            {"bond twice",
             [](GJFData& j) {
                 bonds_of(j).bonds.push_back({0, 1, 1.0});
             },
             in(JobPart::ExtraInput, 0)},
            {"order of bonds", [](GJFData& j) { std::swap(bonds_of(j).bonds[0], bonds_of(j).bonds[1]); }, same},
            {"section kind", [](GJFData& j) { j.extra_inputs[1].kind = Kind::ECP; }, in(JobPart::ExtraInput, 1)},
            {"section of no kind", [](GJFData& j) { j.extra_inputs[1].kind = Kind::Unknown; }, in(JobPart::ExtraInput, 1)},
            {"section text", [](GJFData& j) { j.extra_inputs[1].content = "O H 0"; }, in(JobPart::ExtraInput, 1)},
            {"section more", [](GJFData& j) { j.extra_inputs.emplace_back(Kind::ECP, ""); }, in(JobPart::ExtraInput, 2)},
            {"no section", [](GJFData& j) { j.extra_inputs.clear(); }, in(JobPart::ExtraInput, 0)},
            {"lines as read", [](GJFData& j) { j.control.raw_lines = {"#p hf"}; }, same},
            {"molecule lines as read", [](GJFData& j) { j.geom.molecule_lines = {"O 0 0 0"}; }, same},
            {"interpretation", [](GJFData& j) { j.control.parsed_keywords = ParsedKeywords(); }, same},
        });
}

TEST(JobComparison, LooksAtRowsOfZMatrices) {
    expect_both_ways(
        zmatrix_job(),
        {
            {"nothing", [](GJFData&) {}, same},
            {"element", [](GJFData& j) { j.geom.zmatrix_entries[2].info.element = "D"; }, in(JobPart::ZMatrix, 2)},
            {"reference", [](GJFData& j) { j.geom.zmatrix_entries[2].bond->atom = 2; }, in(JobPart::ZMatrix, 2)},
            {"value", [](GJFData& j) { j.geom.zmatrix_entries[1].bond->value = "-r"; }, in(JobPart::ZMatrix, 1)},
            {"angle",
             [](GJFData& j) {
                 j.geom.zmatrix_entries[2].angle = ZMatrixReference{2, "a"};
             },
             in(JobPart::ZMatrix, 2)},
            {"dihedral", [](GJFData& j) { j.geom.zmatrix_entries[0].dihedral = ZMatrixReference{}; },
             in(JobPart::ZMatrix, 0)},
            {"row less", [](GJFData& j) { j.geom.zmatrix_entries.pop_back(); }, in(JobPart::ZMatrix, 2)},
            {"variable name", [](GJFData& j) { j.geom.variables[0].name = "R"; }, in(JobPart::Variables)},
            {"constant", [](GJFData& j) { j.geom.constants[0].value = "105"; }, in(JobPart::Variables)},
            {"no constant", [](GJFData& j) { j.geom.constants.clear(); }, in(JobPart::Variables)},
        });
}

TEST(JobComparison, GivesTheFirstOfSeveralDifferences) {
    const GJFData job = cartesian_job();
    GJFData other = cartesian_job();
    const std::vector<Case> from_the_end = {
        {"sections", [](GJFData& j) { j.extra_inputs.pop_back(); }, in(JobPart::ExtraInput, 1)},
        {"variables", [](GJFData& j) { j.geom.cartesian_variables.clear(); }, in(JobPart::Variables)},
        {"third atom", [](GJFData& j) { j.geom.atoms[2].x = 7; }, in(JobPart::Atom, 2)},
        {"second atom", [](GJFData& j) { j.geom.atoms[1].x = 7; }, in(JobPart::Atom, 1)},
        {"atoms", [](GJFData& j) { j.geom.atoms.pop_back(); }, in(JobPart::AtomCount)},
        {"charge", [](GJFData& j) { j.geom.charge = 2; }, in(JobPart::ChargeAndMultiplicity)},
        {"title", [](GJFData& j) { j.title = "t"; }, in(JobPart::Title)},
        {"overlays", [](GJFData& j) { j.extra_overlays = "o"; }, in(JobPart::Overlays)},
        {"route", [](GJFData& j) { j.control.route_keywords = {"#"}; }, in(JobPart::Route)},
        {"Link 0", [](GJFData& j) { j.control.cpu = "0"; }, in(JobPart::Link0)},
    };
    for (const Case& c : from_the_end) {
        c.change(other);
        EXPECT_EQ(find_difference(job, other), c.expected) << c.what;
    }
}

TEST(JobComparison, TakesRouteWordsAsTheyWouldBeReadFromOneLine) {
    const struct {
        std::vector<std::string> words;
        std::vector<std::string> other;
        bool same;
    } cases[] = {
        {{"#", "opt=(calcfc,", "tight)"}, {"#", "opt=(calcfc, tight)"}, true},
        {{"# hf freq"}, {"#", "hf", "freq"}, true},
        {{"#", "hf,freq"}, {"#", "hf", "freq"}, true},
        {{"#", "hf", "freq"}, {"#", "freq", "hf"}, false},
        {{"#", "opt=(calcfc,tight)"}, {"#", "opt=(calcfc, tight)"}, false},
        {{"#", "hf", "!", "freq"}, {"#", "hf"}, false},
        {{"#", "hf", "! freq"}, {"#", "hf", "!", "freq"}, true},
        {{"#", "hf", "!", "freq"}, {"#", "hf", "!,freq"}, false},
        {{"#", "hf\nfreq"}, {"#", "hf", "freq"}, false},
        {{"#", "hf"}, {}, false},
        {{"#hf"}, {"#", "hf"}, false},
    };
    for (const auto& c : cases) {
        GJFData a;
        GJFData b;
        a.control.route_keywords = c.words;
        b.control.route_keywords = c.other;
        EXPECT_EQ(!find_difference(a, b), c.same) << c.words.back();
        EXPECT_EQ(!find_difference(b, a), c.same) << c.words.back();
    }
}

TEST(JobComparison, LeavesRoutesWhoseWordsDifferToTheCaller) {
    GJFData a;
    GJFData b;
    a.control.route_keywords = {"#", "opt", "freq"};
    b.control.route_keywords = {"#", "freq", "opt"};
    GJFData grouped;
    grouped.control.route_keywords = {"# opt freq"};
    int asked = 0;
    JobComparison comparison;
    comparison.same_route = [&](const std::vector<std::string>& x, const std::vector<std::string>& y) {
        ++asked;
        return x.size() == y.size();
    };
    EXPECT_EQ(find_difference(a, a, comparison), same);
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(find_difference(a, b, comparison), same);
    EXPECT_EQ(find_difference(a, grouped, comparison), in(JobPart::Route));
    EXPECT_EQ(asked, 2);
}

TEST(JobComparison, LetsTheOrderOfLink0LinesPassWhenAsked) {
    JobComparison comparison;
    comparison.order_of_link0_lines = false;
    expect_both_ways(
        cartesian_job(),
        {{"order", [](GJFData& j) { std::swap(j.control.other_link0_lines[0], j.control.other_link0_lines[1]); }, same},
         {"repeat", [](GJFData& j) { j.control.other_link0_lines[0] = "%nosave"; }, in(JobPart::Link0)},
         {"fewer", [](GJFData& j) { j.control.other_link0_lines.pop_back(); }, in(JobPart::Link0)},
         {"value", [](GJFData& j) { j.control.chk = ""; }, in(JobPart::Link0)}},
        comparison);
}

TEST(JobComparison, LetsWhatSaysNothingPassWhenAsked) {
    JobComparison comparison;
    comparison.empty_values = false;
    expect_both_ways(cartesian_job(),
                     {{"blanks of the title", [](GJFData& j) { j.title += " \t\r\n"; }, same},
                      {"blank before the title", [](GJFData& j) { j.title = " water"; }, in(JobPart::Title)},
                      {"line in the title", [](GJFData& j) { j.title = "wa\nter"; }, in(JobPart::Title)},
                      {"empty overlays", [](GJFData& j) { j.extra_overlays = " \n"; }, same},
                      {"overlays", [](GJFData& j) { j.extra_overlays = " 1"; }, in(JobPart::Overlays)},
                      {"blanks of a section", [](GJFData& j) { j.extra_inputs[1].content = "O H 0\n6-31G\n**** \n"; }, same},
                      {"blanks in a section", [](GJFData& j) { j.extra_inputs[1].content = "O H 0 \n6-31G\n****"; },
                       in(JobPart::ExtraInput, 1)},
                      {"empty layer", [](GJFData& j) { j.geom.atoms[0].layer = ""; }, same},
                      {"blank layer", [](GJFData& j) { j.geom.atoms[0].layer = " "; }, in(JobPart::Atom, 0)},
                      {"empty type", [](GJFData& j) { j.geom.atoms[0].info.mm_type = ""; }, in(JobPart::Atom, 0)},
                      {"empty memory", [](GJFData& j) { j.control.mem = ""; }, in(JobPart::Link0)},
                      {"pair without multiplicity beside others", [](GJFData& j) { j.geom.multiplicity = 0; },
                       in(JobPart::ChargeAndMultiplicity)}},
                     comparison);
    GJFData none;
    GJFData charge_alone;
    charge_alone.geom.charge = 3;
    EXPECT_EQ(find_difference(none, charge_alone, comparison), same);
    EXPECT_EQ(find_difference(none, charge_alone), in(JobPart::ChargeAndMultiplicity));
}

TEST(JobComparison, ComparesCoordinatesByTextByNumberOrAsWritten) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* what;
        CoordinateValue text;
        double number;
        CoordinateValue other_text;
        double other_number;
        bool as_text;
        bool as_number;
        bool as_written;
    } cases[] = {
        {"the same", {"1.5", 1.5}, 1.5, {"1.5", 1.5}, 1.5, true, true, true},
        {"other digits", {"1.5", 1.5}, 1.5, {"1.50", 1.5}, 1.5, false, true, false},
        {"another number", {"1.5", 1.5}, 1.5, {"1.6", 1.6}, 1.6, false, false, false},
        {"a text that was left out", {"1.5", 1.5}, 1.5, {}, 1.5, false, true, false},
        {"a number that was written", {}, 1.5, {"1.500000", 1.5}, 1.5, false, true, true},
        {"a number that was rounded", {}, 1.00000049, {"1.000000", 1.0}, 1.0, false, false, true},
        {"just rounded", {}, 2.0000005, {"2.000000", 2.0}, 2.0, false, false, true},
        {"more than rounding", {}, 1.0000006, {"1.000000", 1.0}, 1.0, false, false, false},
        {"rounding of a large number", {}, 1234567890123.0, {}, 1234567890123.000244140625, false, false, true},
        {"more than rounding of a large number", {}, 1234567890123.0, {}, 1234567890123.01, false, false, false},
        {"variables", {"r", {}}, 0.0, {"r", {}}, 0.0, true, true, true},
        {"other variables", {"r", {}}, 0.0, {"s", {}}, 0.0, false, false, false},
        {"a variable for a number", {}, 0.0, {"r", {}}, 0.0, false, false, false},
        {"a number for a variable", {"r", {}}, 0.0, {"0.0", 0.0}, 0.0, false, false, false},
        {"no number", {}, nan, {}, nan, false, false, false},
        {"no number, with a text", {"nan", nan}, nan, {"nan", nan}, nan, false, false, true},
    };
    for (const auto& c : cases) {
        GJFData a = cartesian_job();
        GJFData b = cartesian_job();
        a.geom.atoms[1].y = c.number;
        a.geom.atoms[1].y_ref = c.text;
        b.geom.atoms[1].y = c.other_number;
        b.geom.atoms[1].y_ref = c.other_text;
        const auto result = [&](Coordinates mode) {
            JobComparison comparison;
            comparison.coordinates = mode;
            return find_difference(a, b, comparison);
        };
        EXPECT_EQ(result(Coordinates::AsText), c.as_text ? same : in(JobPart::Atom, 1)) << c.what;
        EXPECT_EQ(result(Coordinates::AsNumber), c.as_number ? same : in(JobPart::Atom, 1)) << c.what;
        EXPECT_EQ(result(Coordinates::AsWritten), c.as_written ? same : in(JobPart::Atom, 1)) << c.what;
    }
}

TEST(JobComparison, LetsChargesDifferByATolerance) {
    JobComparison comparison;
    comparison.mm_charge_tolerance = 1e-6;
    const auto with = [](double charge) { return [=](GJFData& j) { j.geom.atoms[1].info.mm_charge = charge; }; };
    expect_both_ways(cartesian_job(),
                     {{"within", with(0.2500009), same},
                      {"beyond", with(0.2500011), in(JobPart::Atom, 1)},
                      {"sign", with(-0.25), in(JobPart::Atom, 1)},
                      {"no number", with(std::numeric_limits<double>::quiet_NaN()), in(JobPart::Atom, 1)},
                      {"infinite", with(std::numeric_limits<double>::infinity()), in(JobPart::Atom, 1)},
                      {"none", [](GJFData& j) { j.geom.atoms[1].info.mm_charge.reset(); }, in(JobPart::Atom, 1)}},
                     comparison);
}

TEST(JobComparison, TellsWhichSectionsOfNoKindMayMatch) {
    const struct {
        Kind first;
        Kind second;
        bool none;
        bool of_first;
        bool of_both;
    } cases[] = {
        {Kind::ECP, Kind::ECP, true, true, true},         {Kind::Unknown, Kind::Unknown, true, true, true},
        {Kind::Unknown, Kind::ECP, false, true, true},    {Kind::ECP, Kind::Unknown, false, false, true},
        {Kind::ECP, Kind::NBOInput, false, false, false}, {Kind::BasisSet, Kind::ECP, false, false, false},
    };
    for (const auto& c : cases) {
        GJFData a;
        GJFData b;
        a.extra_inputs = {ExtraInputSection(c.first, "text")};
        b.extra_inputs = {ExtraInputSection(c.second, "text")};
        JobComparison comparison;
        const auto is_same = [&](UnknownSections unknown) {
            comparison.unknown_sections = unknown;
            return !find_difference(a, b, comparison);
        };
        EXPECT_EQ(is_same(UnknownSections::None), c.none) << static_cast<int>(c.first);
        EXPECT_EQ(is_same(UnknownSections::OfFirst), c.of_first) << static_cast<int>(c.first);
        EXPECT_EQ(is_same(UnknownSections::OfBoth), c.of_both) << static_cast<int>(c.first);
        b.extra_inputs[0].content = "other text";
        EXPECT_FALSE(is_same(UnknownSections::OfBoth)) << static_cast<int>(c.first);
    }
}

TEST(JobComparison, ReadsATextThatStandsForBonds) {
    JobComparison comparison;
    comparison.unknown_sections = UnknownSections::OfBoth;
    const struct {
        const char* text;
        bool same;
    } cases[] = {
        {"1 2 1.0 3 1.5\n2\n3", true},
        {"1 3 1.5 ! long\n1 2 1.0", true},
        {"3 1 1.5\n2 1 1.0", true},
        {"1 2 1.0", false},
        {"1 2 1.0 3 2.0", false},
        {"1 2 1.0 3 1.5 4 1.0", false},
        {"1 2 1.0 3", false},
        {"a basis set", false},
        {"", false},
    };
    for (const auto& c : cases) {
        expect_both_ways(
            cartesian_job(),
            {{c.text, [&](GJFData& j) { j.extra_inputs[0].content = c.text; }, c.same ? same : in(JobPart::ExtraInput, 0)},
             {c.text,
              [&](GJFData& j) {
                  j.extra_inputs[0].content = c.text;
                  j.extra_inputs[0].kind = Kind::Unknown;
              },
              c.same ? same : in(JobPart::ExtraInput, 0)}},
            comparison);
    }
}

TEST(JobComparison, NamesEveryPart) {
    const struct {
        JobPart part;
        const char* name;
    } cases[] = {
        {JobPart::Link0, "Link 0 lines"},
        {JobPart::Route, "route"},
        {JobPart::Overlays, "overlay input"},
        {JobPart::Title, "title"},
        {JobPart::ChargeAndMultiplicity, "charge and multiplicity"},
        {JobPart::Format, "Z-matrix"},
        {JobPart::ZMatrix, "Z-matrix"},
        {JobPart::AtomCount, "atoms"},
        {JobPart::Atom, "atoms"},
        {JobPart::Variables, "variables"},
        {JobPart::ExtraInput, "extra input sections"},
        {static_cast<JobPart>(11), "job"},
        {static_cast<JobPart>(-1), "job"},
    };
    for (const auto& c : cases) {
        EXPECT_STREQ(job_part_name(c.part), c.name);
    }
}

}  // namespace
}  // namespace quor::input::gaussian
