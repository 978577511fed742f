// Requests of the C interface: each command's answer is what the tool prints, and what is no request is said.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using namespace quor::input::gaussian;

const std::string job = "%mem=1GB\n# hf/sto-3g opt=clacfc\n\nt\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n\n";

struct DestroyResult {
    void operator()(gjf_result* result) const { gjf_result_destroy(result); }
};
using Result = std::unique_ptr<gjf_result, DestroyResult>;

std::string answer(const char* command, const std::string& text, const char* options) {
    const Result result(gjf_request(command, text.data(), text.size(), options));
    if (result == nullptr) {
        return "null";
    }
    const std::string found(gjf_result_text(result.get()), gjf_result_size(result.get()));
    EXPECT_EQ(found, gjf_result_text(result.get()));
    return found;
}

std::string error(const std::string& message) { return "{\"version\":1,\"error\":\"" + message + "\"}\n"; }

TEST(CRequest, AnswersAsTheToolDoes) {
    const std::vector<JobReading> readings = read_jobs_with_layout(job);
    EXPECT_EQ(answer("check", job, nullptr), check_json("-", check_text(job)));
    EXPECT_EQ(answer("check", job, "{\"stdin-filename\":\"a.gjf\"}"), check_json("a.gjf", check_text(job)));
    EXPECT_EQ(answer("check", job, "{\"ignore\":[\"GJF-R001\"]}"),
              check_json("-", check_text(job, {{"GJF-R001"}, nullptr})));
    EXPECT_EQ(answer("check", job, "{\"where\":\"charge = 1\"}"), check_json("-", {}));
    EXPECT_EQ(answer("check", job, "{\"where\":\"opt\"}"), check_json("-", check_text(job)));
    EXPECT_EQ(answer("report", job, ""), readings_json("-", readings));
    EXPECT_EQ(answer("outline", job, "{}"), outline_json("-", readings));
    EXPECT_EQ(answer("report", job, "{\"fields\":[\"charge\",\"formula\"]}"),
              "{\"version\":1,\"file\":\"-\",\"jobs\":[{\"charge\":0,\"formula\":\"H2O\"}]}\n");
    EXPECT_EQ(answer("select", job, "{\"select\":\"H\"}"),
              "{\"version\":1,\"file\":\"-\",\"jobs\":[{\"job\":1,\"atoms\":[2,3],\"lines\":[8,9]}]}\n");
    EXPECT_EQ(answer("find", job, "{\"where\":\"atoms = 3\"}"),
              "{\"version\":1,\"file\":\"-\",\"jobs\":[{\"job\":1,\"line\":2,\"route\":\"# hf/sto-3g "
              "opt=clacfc\",\"title\":\"t\"}]}\n");
    EXPECT_EQ(answer("find", job, "{\"where\":\"freq\"}"), "{\"version\":1,\"file\":\"-\",\"jobs\":[]}\n");
    EXPECT_NE(answer("route", "hf/gen opt", nullptr).find("\"text\":\"# hf/gen opt\""), std::string::npos);
    EXPECT_NE(answer("complete", "hf opt=calcf", nullptr).find("calcfc"), std::string::npos);
}

TEST(CRequest, MendsAndCompares) {
    const std::string fixed = answer("fix", job, "{\"unsafe-fixes\":true}");
    EXPECT_NE(fixed.find("opt=calcfc"), std::string::npos) << fixed;
    EXPECT_NE(fixed.find("\"applied\":[{\"code\":\"GJF-R001\""), std::string::npos) << fixed;
    EXPECT_EQ(answer("fix", job, "{\"unsafe-fixes\":true,\"where\":\"freq\"}").find("opt=calcfc"), std::string::npos);
    const std::string kept = answer("fix", job, "{}");
    EXPECT_EQ(answer("fix", job, "{\"unsafe-fixes\":true,\"unfixable\":[\"GJF-R\"]}"), kept);
    EXPECT_EQ(answer("fix", job, "{\"unsafe-fixes\":true,\"fixable\":[\"GJF-T\"]}"), kept);
    EXPECT_EQ(answer("fix", job, "{\"unsafe-fixes\":true,\"fixable\":[\"GJF-R001\"],\"unfixable\":[\"gjf-r\"]}"), fixed);
    EXPECT_EQ(answer("check", job, "{\"select\":[\"GJF-T\"]}"), check_json("-", {}));
    EXPECT_EQ(answer("check", job, "{\"select\":[\"GJF\"],\"ignore\":[\"GJF-R\"]}"), check_json("-", {}));
    EXPECT_EQ(answer("check", job, "{\"select\":[\"GJF-R001\"],\"ignore\":[\"GJF-R\"]}"), check_json("-", check_text(job)));
    EXPECT_EQ(answer("diff", "# hf\n\nt\n\n0 1\nHe 0 0 0\n\n", "{\"other\":\"# hf\\n\\nt\\n\\n1 2\\nHe 0 0 0\\n\\n\"}"),
              "{\"version\":1,\"file\":\"-\",\"other\":\"other\",\"same\":false,\"jobs\":[{\"job\":1,\"changes\":[{\"part\":"
              "\"charge\","
              "\"before\":\"0 1\",\"after\":\"1 2\"}]}]}\n");
}

TEST(CRequest, Edits) {
    const std::string one = "# ub3lyp/6-31g(d)\n\nt\n\n0 1\nHe 0 0 0\n\n";
    const std::string counts = ",\"errors\":0,\"warnings\":0,\"notes\":0,\"findings\":[]}\n";
    EXPECT_EQ(
        answer("edit", one, "{\"method\":\"m062x\",\"set\":[\"mem=1GB\",\"nproc=4\"],\"remove-keyword\":\"opt\"}"),
        "{\"version\":1,\"file\":\"-\",\"text\":\"%mem=1GB\\n%nprocshared=4\\n# um062x/6-31g(d)\\n\\nt\\n\\n0 1\\nHe 0 0 "
        "0\\n\\n\",\"changed\":true,\"refused\":false,\"remarks\":[\"--method m062x: set as um062x, with the prefix of "
        "ub3lyp\",\"--remove-keyword opt: found nothing to change\"],\"unreadable\":[]" +
            counts);
    const std::string strict = answer("edit", one, "{\"charge\":\"1\",\"strict\":true}");
    EXPECT_NE(strict.find("\"changed\":false,\"refused\":true,"), std::string::npos) << strict;
    EXPECT_NE(strict.find("\"errors\":1"), std::string::npos) << strict;
    const std::string unchecked = answer("edit", one, "{\"charge\":\"1\",\"no-check\":true,\"stdin-filename\":\"a/b.gjf\"}");
    EXPECT_NE(unchecked.find("\\n1 1\\n"), std::string::npos) << unchecked;
    EXPECT_NE(unchecked.find("\"errors\":0"), std::string::npos) << unchecked;
    EXPECT_NE(answer("edit", one, "{\"chk-from-name\":true,\"stdin-filename\":\"a/b.gjf\"}").find("%chk=b.chk"),
              std::string::npos);
    EXPECT_NE(answer("edit", one, "{\"charge\":\"1\",\"where\":\"charge = 2\"}").find("\"changed\":false"),
              std::string::npos);
    EXPECT_NE(answer("edit", one + "--Link1--\n" + one, "{\"title\":\"u\",\"job\":2}").find("\\n\\nt\\n\\n"),
              std::string::npos);
}

TEST(CRequest, RefusesEdits) {
    const struct {
        const char* options;
        const char* message;
    } rows[] = {
        {"{}", "no operation is given"},
        {"{\"chk-from-name\":false}", "no operation is given"},
        {"{\"set\":[]}", "no operation is given"},
        {"{\"charge\":1}", "option '--charge' takes a text or a list of texts"},
        {"{\"set\":[\"mem=1GB\",2]}", "option '--set' takes a text or a list of texts"},
        {"{\"chk-from-name\":\"yes\"}", "option '--chk-from-name' takes true or false"},
        {"{\"charge\":\"x\"}", "--charge: 'x' is no charge"},
        {"{\"option\":\"opt=clacfc\"}",
         "--option: 'clacfc' is no option of opt; did you mean calcfc? (--allow-unknown takes it)"},
        {"{\"section\":\"basis=@a.gbs\"}", "--section: '@a.gbs' would be read from a file, and none is opened here"},
        {"{\"charge\":\"1\",\"job\":0}", "option 'job' takes a number from 1 on"},
        {"{\"charge\":\"1\",\"job\":\"1\"}", "option 'job' takes a number from 1 on"},
        {"{\"charge\":\"1\",\"job\":-1}", "option 'job' takes a number from 1 on"},
        {"{\"charge\":\"1\",\"job\":2}", "there is no job 2: the file has 1"},
        {"{\"charge\":\"1\",\"strict\":true,\"no-check\":true}", "'strict' excludes 'no-check'"},
        {"{\"title\":\"{stem}\"}", "--title: standard input has no name"},
        {"{\"--charge\":\"1\"}",
         "'edit' has no option '--charge'; it has the operations of quor-gjf edit, and allow-unknown, force, job, no-check, "
         "stdin-filename, strict, where"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(answer("edit", job, row.options), error(row.message));
    }
    EXPECT_EQ(answer("check", job, "{\"charge\":\"1\"}"),
              error("'check' has no option 'charge'; it has config, ignore, select, stdin-filename, where"));
}

TEST(CRequest, ChecksAsAConfigurationSays) {
    const std::string rule = R"([rules.slow]\nwhen = \"opt\"\nmessage = \"no opt here\"\n)";
    const auto with = [](const std::string& config, const std::string& more = "") {
        return "{\"config\":\"" + config + "\"" + more + "}";
    };
    const std::string told = answer("check", job, with(rule).c_str());
    EXPECT_NE(told.find("\"code\":\"site:slow\",\"severity\":\"warning\",\"message\":\"no opt here\",\"job\":1,\"line\":2"),
              std::string::npos)
        << told;
    EXPECT_NE(answer("fix", job, with(rule, ",\"unsafe-fixes\":true").c_str()).find("site:slow"), std::string::npos);
    EXPECT_NE(answer("check", job, with(R"([limits]\nmemory = \"1MB\"\n)").c_str()).find("GJF-X001"), std::string::npos);
    const std::string none = check_json("-", {});
    const struct {
        std::string options;
        std::string answer;
    } rows[] = {
        {with(""), answer("check", job, nullptr)},
        {with(rule, ",\"select\":[\"GJF-T\"]"), none},
        {with(rule, ",\"ignore\":[\"site:\",\"GJF\"]"), none},
        {with(R"(ignore = [\"GJF\"])"), none},
        {with(R"(ignore = [\"GJF-T\"])", ",\"select\":[\"GJF-T\"]"), none},
        {with(R"([check.severity]\n\"GJF\" = \"off\"\n)"), none},
        {with(R"([check.per-file-ignores]\n\"*.gjf\" = [\"GJF\"]\n)"), answer("check", job, nullptr)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(answer("check", job, row.options.c_str()), row.answer) << row.options;
    }
    for (const auto& [options, part] : {
             std::pair(with("ignore"), "\"error\":\"config:1: "),
             std::pair(with(R"([rules.a]\nwhen = \"opt\"\n)"), "\"error\":\"config:2: rules.a has no message\""),
             std::pair(with(R"([rules.a]\nmessage = \"opt\"\n)"), "\"error\":\"config:2: rules.a has no when\""),
             std::pair(with(R"([rules.a]\nwhen = \"nofield > 2\"\nmessage = \"m\"\n)"),
                       "\"error\":\"config:2: rules.a.when: "),
             std::pair(with(R"([rules.a]\nwhen = \"opt\"\nmessage = \"m\"\nseverity = \"error\"\n)"),
                       "\"error\":\"config:4: "),
             std::pair(with(R"([limits]\ncores = \"many\"\n)"), "\"error\":\"config:2: limits.cores is a number of cores\""),
             std::pair(with(R"(ignore = [\"GJF-Q\"])"), "\"error\":\"config:1: check.ignore: there is no check GJF-Q"),
             std::pair(std::string("{\"config\":[\"a\"]}"), "\"error\":\"option 'config' takes a text\""),
             std::pair(std::string("{\"config\":true}"), "\"error\":\"option 'config' takes a text\""),
         }) {
        const std::string said = answer("check", job, options.c_str());
        EXPECT_NE(said.find(part), std::string::npos) << options << said;
    }
    EXPECT_NE(answer("report", job, with(rule).c_str()).find("'report' has no option 'config'"), std::string::npos);
}

TEST(CRequest, DiagnosesOutputs) {
    const std::string output =
        " Entering Link 1 = /g16/l1.exe PID= 1.\n -----\n # hf/sto-3g\n -----\n"
        " Convergence failure -- run terminated.\n Error termination via Lnk1e in /g16/l502.exe at\n";
    EXPECT_EQ(answer("diagnose", output, "{\"stdin-filename\":\"a.log\"}"),
              diagnosis_json("a.log", diagnose_output(*text_source(output))));
    EXPECT_EQ(answer("diagnose", output, nullptr).find("\"steps\""), std::string::npos);
    EXPECT_NE(answer("diagnose", output, "{\"steps\":true}").find("\"steps\":[]"), std::string::npos);
    EXPECT_EQ(answer("diagnose", job, nullptr), error("no output of Gaussian"));
    EXPECT_EQ(answer("diagnose", "", nullptr), error("no output of Gaussian"));
    EXPECT_EQ(answer("diagnose", output, "{\"steps\":1}"), error("option 'steps' takes true or false"));
    EXPECT_EQ(answer("diagnose", output, "{\"details\":true}"),
              error("'diagnose' has no option 'details'; it has stdin-filename, steps"));
}

TEST(CRequest, TakesNulInTexts) {
    const std::string text("# hf/sto-3g\0\n\nt\n\n0 1\nHe 0 0 0\n\n", 31);
    EXPECT_EQ(answer("check", text, nullptr), check_json("-", check_text(text)));
    EXPECT_EQ(answer("check", "", nullptr), check_json("-", check_text("")));
}

TEST(CRequest, SaysWhatIsWrong) {
    const std::string commands = "check, fix, report, route, complete, outline, select, diff, edit, find, diagnose";
    EXPECT_EQ(answer("chek", job, nullptr), error("no command 'chek'; there are " + commands));
    EXPECT_EQ(answer("next", job, nullptr), error("no command 'next'; there are " + commands));
    EXPECT_EQ(answer("check", job, "[]"), error("the options are no JSON object"));
    EXPECT_EQ(answer("check", job, "{"), error("the options are no JSON object"));
    EXPECT_EQ(answer("check", job, "{\"wher\":\"opt\"}"),
              error("'check' has no option 'wher'; it has config, ignore, select, stdin-filename, where"));
    EXPECT_EQ(answer("route", "hf", "{\"where\":\"opt\"}"), error("'route' has no option 'where'; it has none"));
    EXPECT_EQ(answer("route", " ", nullptr), error("the text holds no route"));
    EXPECT_EQ(answer("check", job, "{\"ignore\":\"GJF-R001\"}"), error("option 'ignore' takes a list of texts"));
    EXPECT_EQ(answer("check", job, "{\"select\":[\"GJF-R0010\"]}"), error("there is no check GJF-R0010"));
    EXPECT_EQ(answer("fix", job, "{\"unfixable\":[\"\"]}"), error("there is no check "));
    EXPECT_EQ(answer("fix", job, "{\"fixable\":\"GJF\"}"), error("option 'fixable' takes a list of texts"));
    EXPECT_EQ(answer("check", job, "{\"where\":1}"), error("option 'where' takes a text"));
    EXPECT_EQ(answer("fix", job, "{\"unsafe-fixes\":\"yes\"}"), error("option 'unsafe-fixes' takes true or false"));
    EXPECT_EQ(answer("report", job, "{\"fields\":[\"chrge\"]}"), error("'chrge' is no field"));
    EXPECT_EQ(answer("find", job, "{\"where\":\"opt and\"}"), error("column 8: a condition is missing at the end"));
    EXPECT_EQ(answer("select", job, "{}"), error("column 1: the selection is empty"));
    EXPECT_EQ(answer("diff", job, "{\"other\":\"# hf\\n\\nt\\n\\n0 1\\nHe 0 0 0\\n\\n\",\"other-filename\":2}"),
              error("option 'other-filename' takes a text"));
}

TEST(CRequest, RefusesNull) {
    EXPECT_EQ(gjf_request(nullptr, "", 0, nullptr), nullptr);
    EXPECT_STREQ(gjf_get_last_error(), "command is null");
    EXPECT_EQ(gjf_request("check", nullptr, 1, nullptr), nullptr);
    EXPECT_STREQ(gjf_get_last_error(), "text is null");
    EXPECT_STREQ(gjf_result_text(nullptr), "");
    EXPECT_EQ(gjf_result_size(nullptr), 0U);
    gjf_result_destroy(nullptr);
}

}  // namespace
