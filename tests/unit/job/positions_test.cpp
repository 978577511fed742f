// Positions of atoms: symbolic coordinates, Z-matrix rows, units, and the reasons why an atom has none.
#include <gjf/core/job/positions.hpp>

#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

void PrintTo(PositionFault fault, std::ostream* out) { *out << static_cast<int>(fault); }

namespace {

using Fault = PositionFault;

std::vector<std::string> fields_of(std::string_view line) {
    std::vector<std::string_view> views;
    split_fields(line, FieldSeparators::WhiteSpace, true, views);
    return {views.begin(), views.end()};
}

ZMatrixEntry row_of(const std::string& line) {
    const std::vector<std::string> fields = fields_of(line);
    ZMatrixEntry entry;
    entry.info.element = fields[0];
    std::optional<ZMatrixReference>* references[] = {&entry.bond, &entry.angle, &entry.dihedral};
    for (std::size_t i = 0; i < 3 && 2 * i + 2 < fields.size(); ++i) {
        *references[i] = ZMatrixReference{std::stoi(fields[2 * i + 1]), fields[2 * i + 2]};
    }
    return entry;
}

// Makes a job of Z-matrix rows and lines such as r=0.96.
GJFData zmatrix(const std::vector<std::string>& rows, const std::vector<std::string>& variables = {}) {
    GJFData job;
    job.geom.format = GeometryFormat::ZMatrix;
    for (const std::string& row : rows) {
        job.geom.molecule_lines.push_back(row);
        job.geom.zmatrix_entries.push_back(row_of(row));
    }
    for (const std::string& line : variables) {
        const std::size_t equals = line.find('=');
        job.geom.variables.push_back({line.substr(0, equals), line.substr(equals + 1)});
    }
    return job;
}

AtomCoord atom_at(const char* label, const std::string& x, const std::string& y, const std::string& z) {
    AtomCoord atom;
    atom.info.element = label;
    const std::string* texts[] = {&x, &y, &z};
    double* numbers[] = {&atom.x, &atom.y, &atom.z};
    CoordinateValue* written[] = {&atom.x_ref, &atom.y_ref, &atom.z_ref};
    for (std::size_t i = 0; i < 3; ++i) {
        written[i]->text = *texts[i];
        if (texts[i]->find_first_not_of("+-.0123456789") == std::string::npos) {
            written[i]->value = to_number(*texts[i]);
            *numbers[i] = *written[i]->value;
        }
    }
    return atom;
}

void set_units(GJFData& job, const std::vector<std::string>& options) {
    KeywordInfo units;
    units.name = "units";
    for (const std::string& option : options) {
        units.options[option] = "TRUE";
    }
    job.control.parsed_keywords.emplace().keywords.push_back(units);
}

// Holds the last atom of a job to a place.
void expect_last(const GJFData& job, const Position& wanted, const std::string& what) {
    const std::vector<AtomPosition> found = positions(job);
    ASSERT_FALSE(found.empty()) << what;
    ASSERT_TRUE(found.back().position) << what << ": " << position_fault_text(found.back(), found.size());
    EXPECT_EQ(found.back().fault, Fault::None) << what;
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR((*found.back().position)[i], wanted[i], 1e-6) << what << ", coordinate " << i;
    }
}

// Each list of rows places its last atom.
TEST(Positions, FollowTheRowsOfAZMatrix) {
    const struct {
        std::vector<std::string> rows;
        Position wanted;
    } cases[] = {
        {{"O"}, {0, 0, 0}},
        {{"O", "H 1 0.96"}, {0, 0, 0.96}},
        {{"O", "H 1 0.96", "H 1 0.96 2 104.5"}, {0.9294217, 0, -0.2403649}},
        {{"H", "O 1 0.9", "O 2 1.4 1 105"}, {1.3522961, 0, 1.2623467}},
        {{"H", "O 1 0.9", "O 2 1.4 1 105", "H 3 0.9 2 105 1 120"}, {1.4647958, 0.7528653, 1.7424914}},
        {{"H", "O 1 0.9", "O 2 1.4 1 105", "H 3 0.9 2 105 1 -120"}, {1.4647958, -0.7528653, 1.7424914}},
        {{"H", "O 1 1.0", "O 2 1.0 1 90", "H 3 1.0 2 90 1 0"}, {1, 0, 0}},
        {{"H", "O 1 1.0", "O 2 1.0 1 90", "H 3 1.0 2 90 1 180"}, {1, 0, 2}},
        {{"H", "O 1 1.0", "O 2 1.0 1 90", "H 3 1.0 2 90 1 90"}, {1, 1, 1}},
        {{"H", "O 1 1.0", "O 2 1.0 1 90", "H 3 1.0 2 90 1 90 0"}, {1, 1, 1}},
        // Linear molecules, as the third atom and as a later one.
        {{"O", "C 1 1.16", "O 2 1.16 1 180"}, {0, 0, 2.32}},
        {{"H", "C 1 1.06", "C 2 1.2 1 180", "H 3 1.06 2 180 1 0"}, {0, 0, 3.32}},
        {{"X", "C 1 1.0", "O 2 1.16 1 90", "O 2 1.16 1 90 3 180"}, {-1.16, 0, 1}},
        // A second angle in place of a dihedral: the corner of a cube, on either side.
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90 3 90 1"}, {0, 1, 0}},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90 3 90 -1"}, {0, -1, 0}},
        {{"N", "H 1 1.0", "H 1 1.0 2 109.4712206", "H 1 1.0 2 109.4712206 3 109.4712206 1"},
         {-0.4714045, 0.8164966, -0.3333333}},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 2.0 2 45 3 45 1"}, {1.4142136, 0, 1.4142136}},
        // Cartesian coordinates among rows.
        {{"H 0 0.5 1 2.5"}, {0.5, 1, 2.5}},
    };
    for (const auto& [rows, wanted] : cases) {
        expect_last(zmatrix(rows), wanted, rows.back() + ", row " + std::to_string(rows.size()));
    }
}

TEST(Positions, PutValuesInPlaceOfNames) {
    const struct {
        std::string second;
        std::vector<std::string> variables;
        double wanted;
    } cases[] = {
        {"H 1 r", {"r=0.96"}, 0.96},         {"H 1 R", {"r=0.96"}, 0.96},         {"H 1 +r", {"r=0.96"}, 0.96},
        {"H 1 -r", {"r=-0.96"}, 0.96},       {"H 1 r", {"r=0.96 10 0.05"}, 0.96}, {"H 1 r", {"r=0.96 0.05"}, 0.96},
        {"H 1 r", {"r=0.96,10,0.05"}, 0.96}, {"H 1 r", {"r=0.96 F"}, 0.96},       {"H 1 r", {"s=0.5", "r=s"}, 0.5},
        {"H 1 -r", {"s=-0.5", "r=s"}, 0.5},  {"H 1 r", {"r=0.5", "r=0.7"}, 0.7},  {"H 1 1e-1", {}, 0.1},
    };
    for (const auto& [second, variables, wanted] : cases) {
        expect_last(zmatrix({"O", second}, variables), {0, 0, wanted}, second);
    }
    GJFData job = zmatrix({"O", "H 1 r", "H 1 r 2 a"}, {"r=1.0"});
    job.geom.constants.push_back({"A", "90.0"});
    expect_last(job, {1, 0, 0}, "a constant");
}

TEST(Positions, PutValuesIntoCartesianCoordinates) {
    GJFData job;
    job.geom.atoms = {atom_at("H", "r", "-r", "0"), atom_at("H", "+R", "2.5", "q")};
    job.geom.cartesian_variables = {{"r", "0.96 0.05"}, {"q", "-1."}};
    const std::vector<AtomPosition> found = positions(job);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].position, (Position{0.96, -0.96, 0}));
    EXPECT_EQ(found[1].position, (Position{0.96, 2.5, -1}));
}

TEST(Positions, AreInAngstromWhateverTheUnits) {
    const struct {
        std::vector<std::string> options;
        std::vector<std::string> rows;
        double length;
        Position wanted;
    } cases[] = {
        {{"au"}, {"H", "H 1 2.0"}, bohr, {0, 0, 2 * bohr}},
        {{"bohr"}, {"H", "H 1 2.0", "H 1 2.0 2 90"}, bohr, {2 * bohr, 0, 0}},
        {{"rad"}, {"H", "H 1 2.0", "H 1 2.0 2 1.5707963268"}, 1, {2, 0, 0}},
        {{"au", "radians"}, {"H", "H 1 2.0", "H 1 2.0 2 1.5707963268"}, bohr, {2 * bohr, 0, 0}},
        {{"ang", "deg"}, {"H", "H 1 2.0", "H 1 2.0 2 90"}, 1, {2, 0, 0}},
        {{}, {"H", "H 1 2.0"}, 1, {0, 0, 2}},
    };
    for (const auto& [options, rows, length, wanted] : cases) {
        GJFData job = zmatrix(rows);
        set_units(job, options);
        expect_last(job, wanted, options.empty() ? "no option" : options[0]);
        EXPECT_EQ(length_unit(job), length);
    }
    GJFData job;
    job.geom.atoms = {atom_at("H", "1.0", "r", "0")};
    job.geom.cartesian_variables = {{"r", "2.0"}};
    set_units(job, {"au"});
    EXPECT_EQ(positions(job)[0].position, (Position{bohr, 2 * bohr, 0}));
    job.control.parsed_keywords->keywords[0].name = "geom";
    EXPECT_EQ(length_unit(job), 1.0);
}

TEST(Positions, TellWhyThereIsNone) {
    const struct {
        std::vector<std::string> rows;
        std::vector<std::string> variables;
        Fault fault;
        std::string cause;
    } cases[] = {
        {{"O", "H 1 r"}, {}, Fault::NoValue, "r"},
        {{"O", "H 1 -r"}, {"s=1.0"}, Fault::NoValue, "r"},
        {{"O", "H 1 r"}, {"r="}, Fault::NoValue, ""},
        {{"O", "H 1 r"}, {"r=q"}, Fault::NoValue, "q"},
        {{"O", "H 1 r"}, {"r=1.0x"}, Fault::NoValue, "1.0x"},
        {{"O", "H 1 r"}, {"r=r"}, Fault::SelfReference, "r"},
        {{"O", "H 1 r"}, {"r=-s", "s=r"}, Fault::SelfReference, "r"},
        {{"O", "H 1 inf"}, {}, Fault::NotFinite, "inf"},
        {{"O", "H 1 r"}, {"r=nan"}, Fault::NotFinite, "nan"},
        {{"O", "H 1 1e9"}, {}, Fault::NotFinite, ""},
        {{"O", "H 1 r"}, {"r=1e400"}, Fault::NotFinite, "1e400"},
        {{"O", "H"}, {}, Fault::MissingField, ""},
        {{"O", "H 1 1.0", "H 1 1.0"}, {}, Fault::MissingField, ""},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90"}, {}, Fault::MissingField, ""},
        {{"O", "H 2 1.0"}, {}, Fault::LaterRow, "2"},
        {{"O", "H 3 1.0"}, {}, Fault::LaterRow, "3"},
        {{"O", "H 0 1.0"}, {}, Fault::LaterRow, "0"},
        {{"O", "H -1 1.0"}, {}, Fault::LaterRow, "-1"},
        {{"O", "H -2147483648 1.0"}, {}, Fault::LaterRow, "-2147483648"},
        {{"O", "H 1 1.0", "H 1 1.0 1 90"}, {}, Fault::RepeatedRow, "1"},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90 1 0"}, {}, Fault::RepeatedRow, "1"},
        {{"O", "H 1 r", "H 2 1.0 1 90"}, {}, Fault::LostReference, "2"},
        {{"O", "H 1 1.0", "H 1 1.0 2 180.1"}, {}, Fault::AngleRange, "180.1"},
        {{"O", "H 1 1.0", "H 1 1.0 2 -a"}, {"a=104.5"}, Fault::AngleRange, "-a"},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90 3 200 1"}, {}, Fault::AngleRange, "200"},
        {{"O", "C 1 1.0", "O 2 1.0 1 180", "H 3 1.0 2 90 1 0"}, {}, Fault::Collinear, ""},
        {{"O", "C 1 0.0", "O 2 1.0 1 90"}, {}, Fault::Collinear, ""},
        {{"O", "C 1 1.0", "O 1 1.0 2 180", "H 1 1.0 2 90 3 90 1"}, {}, Fault::Collinear, ""},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 30 3 30 1"}, {}, Fault::ImpossibleAngles, ""},
        {{"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 170 3 170 -1"}, {}, Fault::ImpossibleAngles, ""},
    };
    for (const auto& [rows, variables, fault, cause] : cases) {
        const std::vector<AtomPosition> found = positions(zmatrix(rows, variables));
        const std::string what = rows.back() + (variables.empty() ? "" : ", " + variables[0]);
        ASSERT_EQ(found.size(), rows.size()) << what;
        EXPECT_FALSE(found.back().position) << what;
        EXPECT_EQ(found.back().fault, fault) << what;
        EXPECT_EQ(found.back().cause, cause) << what;
        EXPECT_TRUE(found.front().position) << what;
    }
}

TEST(Positions, SayWhyThereIsNone) {
    const struct {
        AtomPosition atom;
        std::string wanted;
    } cases[] = {
        {{{}, Position{}, Fault::None, ""}, ""},
        {{{}, {}, Fault::NoValue, "r"}, "r has no value"},
        {{{}, {}, Fault::NoValue, ""}, "atom 7 has no value"},
        {{{}, {}, Fault::SelfReference, "r"}, "r refers to itself"},
        {{{}, {}, Fault::NotFinite, "inf"}, "inf is no number that a molecule has"},
        {{{}, {}, Fault::MissingField, ""}, "atom 7 lacks a length, an angle or a dihedral"},
        {{{}, {}, Fault::LaterRow, "9"}, "atom 7 refers to a row that is not above it"},
        {{{}, {}, Fault::RepeatedRow, "1"}, "atom 7 refers to a row twice"},
        {{{}, {}, Fault::AngleRange, "190"}, "atom 7 has an angle outside 0 to 180 degrees"},
        {{{}, {}, Fault::LostReference, "2"}, "atom 7 refers to an atom without position"},
        {{{}, {}, Fault::Collinear, ""}, "atom 7 has a dihedral with atoms in one line"},
        {{{}, {}, Fault::ImpossibleAngles, ""}, "atom 7 has two angles that no direction makes"},
    };
    for (const auto& [atom, wanted] : cases) {
        EXPECT_EQ(position_fault_text(atom, 7), wanted);
    }
}

TEST(Positions, OfCartesianAtomsTellWhyThereIsNone) {
    GJFData job;
    job.geom.atoms = {atom_at("H", "r", "0", "0"), atom_at("H", "0", "0", "1.0"), atom_at("H", "0", "20000000.0", "0")};
    job.geom.atoms.push_back(atom_at("H", "0", "0", "0"));
    job.geom.atoms[3].x = std::numeric_limits<double>::quiet_NaN();
    const std::vector<AtomPosition> found = positions(job);
    EXPECT_EQ(found[0].fault, Fault::NoValue);
    EXPECT_EQ(found[0].cause, "r");
    EXPECT_EQ(found[1].position, (Position{0, 0, 1}));
    EXPECT_EQ(found[2].fault, Fault::NotFinite);
    EXPECT_EQ(found[3].fault, Fault::NotFinite);
    EXPECT_TRUE(positions(GJFData()).empty());
}

TEST(Positions, TellAtomsFromGhostsDummiesAndVectors) {
    const std::vector<AtomPosition> found = positions(
        zmatrix({"X", "C 1 1.0", "Bq 2 1.0 1 90", "HC 2 1.0 1 90 3 180", "Tv 1 5.0 2 90 3 90", "Q 1 1.0 2 90 3 0"}));
    const SpeciesKind wanted[] = {
        SpeciesKind::Dummy,  SpeciesKind::Atom, SpeciesKind::Ghost, SpeciesKind::Atom, SpeciesKind::TranslationVector,
        SpeciesKind::Unknown};
    ASSERT_EQ(found.size(), std::size(wanted));
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i].species.kind, wanted[i]) << i;
        EXPECT_TRUE(found[i].position) << i;
    }
    EXPECT_EQ(found[3].species, (Species{SpeciesKind::Atom, 1, false}));
}

// The lines of rows are followed past comments and blank ones; a line that says something else than its row is no guide.
TEST(Positions, FindTheCodeOfARowInItsLine) {
    GJFData job = zmatrix({"O", "H 1 1.0", "H 1 1.0 2 90", "H 1 1.0 2 90 3 90"});
    job.geom.molecule_lines = {"! water and more", "O", "  ", "H 1 1.0 ! 1", "H 1 1.0 2 90", "H,1,1.0,2,90,3,90,1 ! a code"};
    expect_last(job, {0, 1, 0}, "a second angle");
    job.geom.molecule_lines[5] = "H 1 1.0 2 90 3 91 1";
    expect_last(job, {0, -1, 0}, "a dihedral of 90 degrees");
    job.geom.molecule_lines.clear();
    expect_last(job, {0, -1, 0}, "no lines");
}

TEST(Labels, TellTheSpeciesOfAnAtom) {
    const struct {
        const char* element;
        const char* type;
        double charge;
        const char* parameter;
        Species wanted;
    } cases[] = {
        {"C", "CT", 0, nullptr, {SpeciesKind::Atom, 6, true}},
        {"H", "HC", 0.1, "Fragment", {SpeciesKind::Atom, 1, true}},
        {"HC", nullptr, 0, nullptr, {SpeciesKind::Atom, 1, false}},
        {"O", "Bq", 0, nullptr, {SpeciesKind::Ghost, 8, true}},
        {"O", "BQ", 0, "ZNuc", {SpeciesKind::Ghost, 8, true}},
        {"", "Bq", 0, nullptr, {SpeciesKind::Ghost, 0, true}},
        {"Bq", nullptr, 0, nullptr, {SpeciesKind::Ghost, 0, true}},
        {"C", nullptr, 0, "ZNUC", {SpeciesKind::Atom, 6, false}},
        {"C", nullptr, 0, "Iso", {SpeciesKind::Atom, 6, true}},
        {"", nullptr, 1, nullptr, {SpeciesKind::Dummy, 0, true}},
        {"", nullptr, 2, nullptr, {SpeciesKind::TranslationVector, 0, true}},
        {"", nullptr, 3, nullptr, {}},
        {"", nullptr, 0, nullptr, {}},
        {" C ", nullptr, 0, nullptr, {SpeciesKind::Atom, 6, true}},
    };
    for (const auto& [element, type, charge, parameter, wanted] : cases) {
        AtomInfo info;
        info.element = element;
        info.mm_type = type == nullptr ? std::nullopt : std::optional<std::string>(type);
        info.mm_charge = charge == 0 ? std::nullopt : std::optional<double>(charge);
        if (parameter != nullptr) {
            info.params[parameter] = "2";
        }
        EXPECT_EQ(species_of(info), wanted) << element << ' ' << (type == nullptr ? "" : type);
        EXPECT_EQ(find_parameter(info, "znuc") != nullptr, parameter != nullptr && std::string(parameter)[0] == 'Z');
    }
}

}  // namespace
}  // namespace quor::input::gaussian
