// Where every token of a job stands: what stands at a place is what was read from it.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/reader/job_layout.hpp>
#include <gjf/core/text/text.hpp>

#include "../../support/files.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {
namespace {

using Texts = std::vector<std::string>;
using Tokens = std::map<std::string, Texts>;

// What stands at every place of a job, by its part.
class PlacedTokens {
   public:
    PlacedTokens(std::string_view text, const JobPlaces& places) : text_(text) {
        for (const Link0Place& line : places.link0) {
            add("link 0", line.key);
            add("link 0", line.value);
        }
        add("route", places.route_words);
        add("overlays", line_places(text, places.overlays));
        add("title", line_places(text, places.title));
        add("charges", charge_places(text, places.charge_line));
        add("molecule", line_places(text, places.molecule));
        for (const std::uint32_t line : places.atoms) {
            add_atom(atom_line_fields(text, line));
        }
        for (const std::uint32_t line : places.zmatrix_rows) {
            add_row(row_fields(text, line));
        }
        add_variables("variables", places.variables, zmatrix_variable_fields);
        add_variables("constants", places.constants, zmatrix_variable_fields);
        add_variables("variables", places.cartesian_variables, cartesian_variable_fields);
        for (const SectionPlace& section : places.sections) {
            add("sections", section.lines);
        }
    }

    Tokens tokens;

   private:
    void add(const std::string& part, Span place) { tokens[part].emplace_back(place.in(text_)); }
    void add(const std::string& part, const std::vector<Span>& list) {
        for (const Span place : list) {
            add(part, place);
        }
    }
    void add_atom(const AtomLineFields& atom) {
        for (const Span place :
             {atom.label, atom.freeze, atom.position[0], atom.position[1], atom.position[2], atom.layer}) {
            add("atoms", place);
        }
        add("links", atom.rest);
    }
    void add_row(const RowFields& row) {
        add("rows", row.label);
        for (const RowFields::Reference& reference : row.references) {
            add("rows", reference.atom);
            add("rows", reference.value);
        }
        add("rows", row.code);
    }
    void add_variables(const std::string& part, const std::vector<std::uint32_t>& lines,
                       VariableFields (*fields)(std::string_view, std::uint32_t)) {
        for (const std::uint32_t line : lines) {
            add(part, fields(text_, line).name);
            add(part, fields(text_, line).value);
        }
    }

    std::string_view text_;
};

std::vector<std::string_view> views_of_texts(const Texts& texts) { return {texts.begin(), texts.end()}; }

struct PlacesCase {
    std::string text;
    std::string part;
    Texts expected;
};

void expect_tokens(const std::vector<PlacesCase>& cases) {
    for (const PlacesCase& c : cases) {
        const std::vector<JobReading> readings = read_jobs_with_layout(c.text);
        ASSERT_FALSE(readings.empty()) << c.text;
        EXPECT_EQ(PlacedTokens(c.text, readings.back().places).tokens[c.part], c.expected) << c.text;
    }
}

const std::string places_head = "# hf/sto-3g\n\nt\n\n";

TEST(JobPlaces, TellWhereTheControlSectionStands) {
    expect_tokens({
        {"%chk=a.chk\n% Mem = 1GB ! much\n" + places_head, "link 0", {"chk", "a.chk", "Mem", "1GB"}},
        {"%save\n%kjob l301\n%chk=\n%=x\n" + places_head, "link 0", {"save", "", "kjob l301", "", "chk", "", "", "x"}},
        {"\xEF\xBB\xBF%nproc=4\r\n#p hf\r\n", "link 0", {"nproc", "4"}},
        {"%chk=a\n\n%mem=1GB\n\n" + places_head, "link 0", {"chk", "a", "mem", "1GB"}},
        {"chk=a\n%mem=1GB\n" + places_head, "link 0", {"mem", "1GB"}},
        {"#p b3lyp/6-31g(d)\n  opt=(ts, calcfc) ! all\n\tfreq\n\nt\n",
         "route",
         {"#p", "b3lyp/6-31g(d)", "opt=(ts, calcfc)", "freq"}},
        {"%a\n!c\n#hf,opt\n", "route", {"#hf", "opt"}},
        {places_head + "0 1\nH 0 0 0\n\n--Link1--\r\n#  mp2 \r\n", "route", {"#", "mp2"}},
        {"#p hf extraoverlays\n\n1/2=3/1;\n2//1;\n\nt\n\n0 1\nH 0 0 0\n", "overlays", {"1/2=3/1;", "2//1;"}},
        {"#p hf extraoverlays\n\n1/2=3/1;\n2//1;\n\nt\n\n0 1\nH 0 0 0\n", "title", {"t"}},
    });
}

TEST(JobPlaces, TellWhereTitleAndChargesStand) {
    expect_tokens({
        {"# hf\n\n one ! \n\ttwo\n\n0 1\nH 0 0 0\n", "title", {" one ! ", "\ttwo"}},
        {"# hf\r\n\r\none\r\ntwo \r\n\r\n0 1\r\nH 0 0 0", "title", {"one", "two "}},
        {"# hf\n\n\n0 1\nH 0 0 0\n", "title", {}},
        {places_head + "0 1\nH 0 0 0\n", "charges", {"0", "1"}},
        {places_head + "! c\n\t-1,2  0 1 ! 3 4\nH 0 0 0\n", "charges", {"-1", "2", "0", "1"}},
        {places_head + "0 x\nH 0 0 0\n", "charges", {"0", "x"}},
        {"# hf geom=check\n\nt\n\n+1 2", "charges", {"+1", "2"}},
        {"# hf geom=allcheck\n", "charges", {}},
    });
}

TEST(JobPlaces, TellWhereTheFieldsOfAtomsStand) {
    expect_tokens({
        {places_head + "0 1\nO 0.0 0.0 0.1\nH,0.5,.5,-1 !x",
         "atoms",
         {"O", "", "0.0", "0.0", "0.1", "", "H", "", "0.5", ".5", "-1", ""}},
        {places_head + "0 1\n\tC-CT--0.1(PDBName=CA, ResNum=1) -1 1 2 3 H\r\n",
         "atoms",
         {"C-CT--0.1(PDBName=CA, ResNum=1)", "-1", "1", "2", "3", "H"}},
        {places_head + "0 1\nC 0 1.0 2.0 3.0 L H-H1-0.1 12 0.7\n", "links", {"H-H1-0.1", "12", "0.7"}},
        {places_head + "0 1\n! c\n\xC3\x85 0 0 r1 M\n", "atoms", {"\xC3\x85", "0", "0", "r1", "M", ""}},
        {places_head + "0 1\nO5' 0 0 -r\n", "atoms", {"O5'", "", "0", "0", "-r", ""}},
        {places_head + "0 1\nH 0 0 1.5D0\nH 0 0 1\n", "atoms", {"H", "", "0", "0", "1.5D0", "", "H", "", "0", "0", "1", ""}},
        {places_head + "0 1\nH 0 0 1\nH 0 0\nC 0 0 2\n", "atoms", {"H", "", "0", "0", "1", "", "C", "", "0", "0", "2", ""}},
    });
}

TEST(JobPlaces, TellWhereRowsAndVariablesStand) {
    const std::string water = "0 1\nO\nH 1 r\nH 1, r, 2 a !x\n";
    expect_tokens({
        {places_head + water, "rows", {"O", "",  "",  "",  "",  "", "", "",  //
                                       "H", "1", "r", "",  "",  "", "", "",  //
                                       "H", "1", "r", "2", "a", "", "", ""}},
        {places_head + "0 1\nC\nC 1 1.5\nC 1 1.5 2 90\nC 1 1.5 2 90 3 d -1\n\nd=5\n", "variables", {"d", "5"}},
        {places_head + water + "Variables:\n r = 0.96 \n a 104.5 2.0\n", "variables", {"r", "0.96", "a", "104.5"}},
        {places_head + water + "\nr=0.96 !c\n\na=104.5, 3", "constants", {"a", "104.5, 3"}},
        {places_head + "0 1\nH 0 0 r\nH 0 0 -r\nr=,0.5, 2 ,\n", "variables", {"r", ",0.5, 2 ,"}},
        {places_head + "0 1\nH 0 0 r\n\nr=0.5\n", "variables", {"r", "0.5"}},
        {places_head + water + "\nr=0.96\n", "molecule", {"O", "H 1 r", "H 1, r, 2 a !x", "", "r=0.96"}},
    });
}

TEST(JobPlaces, TellWhereSectionsStand) {
    const std::string modified = "# hf/sto-3g opt=modredundant\n\nt\n\n0 1\nH 0 0 0\n\n";
    expect_tokens({
        {modified + "\nB 1 2 F\nA 1 2 1 F\n\nleft\n", "sections", {"B 1 2 F\nA 1 2 1 F", "left"}},
        {modified + "B 1 2 F\r\nA 1 2 1 F\r\n", "sections", {"B 1 2 F\r\nA 1 2 1 F"}},
        {modified, "sections", {}},
        {"# hf opt=qst2\n\nt\n\n0 1\nH 0 0 0\n\nsecond\n\n0 1\nH 0 0 1\n\n", "sections", {"second\n\n0 1\nH 0 0 1"}},
        {"# hf opt=qst2\n\nt\n\n0 1\nH 0 0 0\n\nsecond\n\n", "sections", {"second"}},
    });
}

TEST(JobPlaces, KeepTheWholeOfEveryJob) {
    const std::string text = "\xEF\xBB\xBF# hf\r\n\r\nt\r\n \r\n--link1--\r\n\n# mp2\n\n  --Link1-- \n#x";
    Texts jobs;
    for (const JobReading& reading : read_jobs_with_layout(text)) {
        jobs.emplace_back(reading.places.lines.in(text));
    }
    EXPECT_EQ(jobs, (Texts{"# hf\r\n\r\nt\r\n ", "\n# mp2\n", "#x"}));
}

TEST(JobPlaces, AreNotMadeForTextsThatTheyCannotCount) {
    const char byte = '#';
    if constexpr (sizeof(std::size_t) > 4) {
        EXPECT_THROW(read_jobs_with_layout({&byte, static_cast<std::size_t>(largest_text) + 1}), GJFParseException);
    }
}

// What stands at every place of a job is what the job holds.
void expect_places_of_what_was_read(std::string_view text, const JobReading& reading) {
    const GJFData& job = reading.job;
    Tokens tokens = PlacedTokens(text, reading.places).tokens;
    EXPECT_EQ(tokens["route"], job.control.route_keywords);
    EXPECT_EQ(join_lines(views_of_texts(tokens["title"]).data(), tokens["title"].size()), job.title);
    EXPECT_EQ(tokens["molecule"], job.geom.molecule_lines);
    Texts charges;
    for (const ChargeSpinPair& pair : job.geom.charge_spin_pairs()) {
        charges.insert(charges.end(), {std::to_string(pair.charge), std::to_string(pair.multiplicity)});
    }
    EXPECT_EQ(tokens["charges"], charges);
    Texts atoms;
    for (std::size_t i = 0; i < job.geom.atoms.size(); ++i) {
        const AtomCoord& atom = job.geom.atoms[i];
        EXPECT_EQ(GJFParser::parse_atom_info(tokens["atoms"][6 * i]).element, atom.info.element);
        atoms.insert(atoms.end(), {tokens["atoms"][6 * i], atom.freeze ? std::to_string(*atom.freeze) : "", atom.x_ref.text,
                                   atom.y_ref.text, atom.z_ref.text, atom.layer.value_or("")});
    }
    EXPECT_EQ(tokens["atoms"], atoms);
    Texts rows;
    for (std::size_t i = 0; i < job.geom.zmatrix_entries.size(); ++i) {
        const ZMatrixEntry& row = job.geom.zmatrix_entries[i];
        EXPECT_EQ(GJFParser::parse_atom_info(tokens["rows"][8 * i]).element, row.info.element);
        rows.push_back(tokens["rows"][8 * i]);
        for (const auto* reference : {&row.bond, &row.angle, &row.dihedral}) {
            rows.push_back(*reference ? std::to_string((*reference)->atom) : "");
            rows.push_back(*reference ? (*reference)->value : "");
        }
        rows.push_back(tokens["rows"][8 * i + 7]);
    }
    EXPECT_EQ(tokens["rows"], rows);
    Texts variables;
    for (const auto* list : {&job.geom.variables, &job.geom.cartesian_variables}) {
        for (const ZMatrixVariable& variable : *list) {
            variables.insert(variables.end(), {variable.name, variable.value});
        }
    }
    EXPECT_EQ(tokens["variables"], variables);
    ASSERT_EQ(tokens["sections"].size(), job.extra_inputs.size());
    for (std::size_t i = 0; i < job.extra_inputs.size(); ++i) {
        const std::vector<std::string_view> lines = split_lines(tokens["sections"][i]);
        if (job.extra_inputs[i].connectivity() == nullptr) {
            EXPECT_EQ(join_lines(lines.data(), lines.size()), job.extra_inputs[i].text());
        }
    }
}

TEST(JobPlaces, OfTheExamplesTellWhatWasRead) {
    std::size_t jobs = 0;
    for (const auto& file :
         std::filesystem::directory_iterator(std::filesystem::path(QUOR_GJF_SOURCE_DIR) / "examples/jobs")) {
        if (file.path().extension() == ".md") {
            continue;
        }
        SCOPED_TRACE(file.path());
        const std::string text = test::bytes_of(file.path());
        for (const JobReading& reading : read_jobs_with_layout(text)) {
            EXPECT_EQ(reading.error, "");
            expect_places_of_what_was_read(text, reading);
            ++jobs;
        }
    }
    EXPECT_GE(jobs, 25u);
}

}  // namespace
}  // namespace quor::input::gaussian
