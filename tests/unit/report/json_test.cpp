// The JSON that all doors give: whole objects, keys left out, and bytes that JSON cannot hold.
#include <gjf/core/reader/gjf_parser.hpp>
#include <gjf/core/report/json.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

GJFData job_of(const char* route, const char* rest) {
    GJFData job = GJFParser::parse_string(std::string(route) + "\n\nt\n\n0 1\n" + rest);
    job.control.parsed_keywords = ParsedKeywords{};
    return job;
}

// The text of a job as far as the estimate of its needs.
std::string before_estimate(const std::string& text) { return text.substr(0, text.find(",\"estimate\":")); }

TEST(ReportJson, TellsAJobWithoutWhatItDoesNotHave) {
    const struct {
        const char* rest;
        const char* molecule;
    } rows[] = {
        {"He 0 0 1.5\n\n",
         R"("format":"cartesian","atoms":[{"element":"He","x":0.0,"y":0.0,"z":1.5}]},"sections":[],"functions":1,"electrons":2)"},
        {"He-HE -1 0 0 r H\n\nr=2\n\n",
         R"("format":"cartesian","atoms":[{"element":"He","mm_type":"HE","freeze":-1,"x":0.0,"y":0.0,"z":"r","layer":"H"}],)"
         R"("cartesian_variables":[{"name":"r","value":"2"}]},"sections":[],"functions":1,"electrons":2)"},
        {"H\nH 1 r\n\nr=0.7\n\n",
         R"("format":"zmatrix","rows":[{"element":"H"},{"element":"H","bond":{"atom":1,"value":"r"}}],)"
         R"("variables":[{"name":"r","value":"0.7"}]},"sections":[],"functions":2,"electrons":2)"},
        {"H(Iso=2) 0 0 0\n\nleft\n\n",
         R"("format":"cartesian","atoms":[{"element":"H","parameters":{"Iso":"2"},"x":0.0,"y":0.0,"z":0.0}]},)"
         R"("sections":[{"kind":0,"name":"Unknown","text":"left"}],"functions":1,"electrons":1)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(before_estimate(job_json(job_of("# hf", row.rest))),
                  std::string(R"({"link0":{},"route_words":["#","hf"],"route":{"keywords":[],"warnings":[]},"title":"t",)"
                              R"("molecule":{"charges":[{"charge":0,"multiplicity":1}],)") +
                      row.molecule)
            << row.rest;
    }
}

TEST(ReportJson, TellsSizesOrWhyTheyAreNotKnown) {
    const struct {
        const char* route;
        const char* atom;
        const char* end;
    } rows[] = {
        {"# hf/lanl2dz", "Fe 0 0 0\n\n", R"("functions":22,"electrons":16,"core_electrons":10)"},
        {"# hf/sdd", "Zn 0 0 0\n\n", R"("functions":36,"functions_doubtful":true,"electrons":20,"core_electrons":10)"},
        {"# hf/6-31g", "I 0 0 0\n\n",
         R"("electrons":53,"unknown":{"functions":"the functions of I in 6-31g are not known"})"},
        {"# uff", "I 0 0 0\n\n", R"("unknown":{"functions":"a force field has none","electrons":"a force field has none"})"},
    };
    for (const auto& row : rows) {
        const std::string text = job_json(GJFParser::parse_string(std::string(row.route) + "\n\nt\n\n0 1\n" + row.atom));
        EXPECT_TRUE(before_estimate(text).ends_with(row.end)) << text;
    }
}

TEST(ReportJson, TellsWhatAJobNeedsOrWhyThatIsNotKnown) {
    const struct {
        const char* route;
        const char* estimate;
    } rows[] = {
        {"# ccsd(t)/sto-3g",
         R"({"mem_bytes":33554832,"by":{"mem_bytes":"4194304 + 2 N^2 words","disk_bytes":"O^2 V^2 words"},)"
         R"("disk_bytes":72,"cost":"O^3 V^4"}})"},
        {"# b3lyp/sto-3g", R"({"mem_bytes":33554832,"by":{"mem_bytes":"4194304 + 2 N^2 words"},)"
                           R"("unknown":{"disk_bytes":"no formula is known for b3lyp"},"cost":"N^4"}})"},
        {"# mp2/gen", R"({"unknown":{"mem_bytes":"a section of basis functions is not there",)"
                      R"("disk_bytes":"no formula is known for mp2"},"cost":"O N^4"}})"},
        {"# uff", R"({"unknown":{"mem_bytes":"no formula is known for uff","disk_bytes":"no formula is known for uff",)"
                  R"("cost":"no formula is known for uff"}}})"},
    };
    for (const auto& row : rows) {
        const std::string text = job_json(GJFParser::parse_string(std::string(row.route) + "\n\nt\n\n0 1\nBe 0 0 0\n\n"));
        EXPECT_EQ(text.substr(std::min(text.find("\"estimate\":"), text.size())),
                  std::string("\"estimate\":") + row.estimate);
    }
}

TEST(ReportJson, TellsBondsByNumbersFromOne) {
    const std::string text = job_json(job_of("# hf geom=connectivity", "H 0 0 0\nH 0 0 1\n\n1 2 1.5\n2\n\n"));
    EXPECT_NE(text.find(R"("request":"geom=connectivity","bonds":[[1,2,1.5]]})"), std::string::npos) << text;
}

TEST(ReportJson, WritesOneLineAFile) {
    EXPECT_EQ(report_json("a.gjf", {}), "{\"version\":1,\"file\":\"a.gjf\",\"jobs\":[]}\n");
    EXPECT_EQ(error_json("a\"\n", "no\xFF"), "{\"version\":1,\"file\":\"a\\\"\\n\",\"error\":\"no\xEF\xBF\xBD\"}\n");
    EXPECT_EQ(check_code_json({"GJF-X", "a title"}), "{\"version\":1,\"code\":\"GJF-X\",\"title\":\"a title\"}\n");
}

TEST(ReportJson, CountsFindingsBySeverity) {
    EXPECT_EQ(check_json("-", {}),
              "{\"version\":1,\"file\":\"-\",\"errors\":0,\"warnings\":0,\"notes\":0,\"findings\":[]}\n");
    Finding finding;
    finding.code = "GJF-X";
    finding.severity = Severity::Note;
    finding.message = "m";
    finding.job = 2;
    finding.line = 3;
    finding.begin = 10;
    finding.end = 15;
    EXPECT_EQ(check_json("-", {finding}),
              R"({"version":1,"file":"-","errors":0,"warnings":0,"notes":1,"findings":[{"code":"GJF-X","severity":"note",)"
              R"("message":"m","job":2,"line":3,"column":1,"length":5,"begin":10,"end":15,"hint":""}]})"
              "\n");
    finding.column = 4;
    finding.length = 2;
    finding.begin = 13;
    finding.related = {{"first here", 1, 2, 3}};
    finding.fixes = {{"write a", FixSafety::Choice, {{13, 15, "a"}, {16, 16, "\n"}}}};
    const std::string text = check_json("-", {finding});
    EXPECT_NE(text.find(R"("line":3,"column":4,"length":2,"begin":13,"end":15,"hint":"",)"
                        R"("related":[{"message":"first here","line":1,"column":2,"length":3}],)"
                        R"("fixes":[{"title":"write a","safety":"choice",)"
                        R"("edits":[{"begin":13,"end":15,"text":"a"},{"begin":16,"end":16,"text":"\n"}]}]}]})"),
              std::string::npos)
        << text;
}

TEST(ReportJson, TellsWhereReadingEnds) {
    const std::string text = outline_json("-", read_jobs_with_layout("# hf\n\nt\n\n0 one\nH 0 0 0\n\n"));
    EXPECT_NE(text.find(R"("route":[{"line":1,"column":1,"length":1,"text":"#"},)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"("error":{"line":5,"message":)"), std::string::npos) << text;
    EXPECT_EQ(outline_json("-", {}), "{\"version\":1,\"file\":\"-\",\"jobs\":[]}\n");
}

TEST(ReportJson, TellsWhatCompletesARoute) {
    const struct {
        RouteContext context;
        const char* head;
    } rows[] = {
        {{RouteEnd::Word, {}, "fre"}, R"("context":"word","prefix":"fre")"},
        {{RouteEnd::Method, {}, "b3"}, R"("context":"method","prefix":"b3")"},
        {{RouteEnd::Basis, {}, "6"}, R"("context":"basis set","prefix":"6")"},
        {{RouteEnd::Option, "opt", ""}, R"("context":"option","keyword":"opt","prefix":"")"},
        {{RouteEnd::Value, "scrf", "wa", "solvent"},
         R"("context":"value","keyword":"scrf","option":"solvent","prefix":"wa")"},
        {{RouteEnd::Other, {}, {}}, R"("context":"other","prefix":"")"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(completion_json(row.context, {{"a", {"keyword", "method"}}}),
                  "{\"version\":1," + std::string(row.head) +
                      ",\"completions\":[{\"text\":\"a\",\"roles\":[\"keyword\",\"method\"]}]}\n");
    }
}

}  // namespace
