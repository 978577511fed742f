// Configuration files: what is taken, what is refused and where, which of them have a say, and what of it holds for a file.
#include <gjf/core/configuration/check_rules.hpp>
#include <gjf/core/configuration/configuration.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "../../support/files.hpp"

namespace quor::input::gaussian {
namespace {

// Returns what is said of a text, without the name of its file; empty for nothing.
std::string problem_of(const std::string& text) {
    try {
        Configuration configuration;
        configuration.add(read_configuration(text, "f"));
        check_rules(configuration, "job.gjf");
    } catch (const ConfigurationError& error) {
        const std::string message = error.what();
        EXPECT_EQ(message.substr(0, 2), "f:") << message;
        return message.substr(2);
    }
    return {};
}

TEST(ConfigurationFiles, AreRefusedWithTheLineOfTheMistake) {
    struct Case {
        const char* text;
        const char* beginning;  // of what is said
    };
    const std::vector<Case> cases = {
        {"ignore = [\"GJF-S002\"", "1: "},
        {"ignore = [\n  \"GJF-S002\"\n", "2: "},
        {"fail-on = warning\n", "1: "},
        {"# x\n\nfail-on warning\n", "3: "},
        {"[check\nfail-on = \"warning\"\n", "1: "},
        {"[check]\n[check]\n", "2: "},
        {"ignore = []\nignore = []\n", "2: "},
        {"ignore = [\"GJF-S002\"]\n[check]\nignore = [\"GJF-S001\"]\n", "3: check.ignore is given twice"},
        {"ignore = [1, 2]\n", "1: the items of ignore are texts"},
        {"ignore = [\"GJF-S002\", 2]\n", "1: "},
        {"ignore = [[\"GJF-S002\"]]\n", "1: "},
        {"ignore = [\"GJF-X999\"]\n", "1: check.ignore: there is no check GJF-X999"},
        {"\nselect = [\"GJF-M002\", \"M002\"]\n", "2: check.select: there is no check M002"},
        {"ignore = [\"\"]\n", "1: check.ignore: there is no check ;"},
        {"fail-on = \"never\"\n", "1: check.fail-on is "},
        {"fail-on = \"off\"\n", "1: check.fail-on is "},
        {"fail-on = 1979-05-27\n", "1: fail-on is a text, a whole number"},
        {"threads = 1.5\n", "1: threads is a text, a whole number"},
        {"[check.severity]\n\"GJF-T001\" = \"fatal\"\n", "2: check.severity.GJF-T001 is \"error\""},
        {"[check.severity]\n\"GJF-T001\" = true\n", "2: check.severity.GJF-T001 is \"error\""},
        {"[check.severity]\n\"GJF-T999\" = \"note\"\n", "2: check.severity.GJF-T999: there is no check"},
        {"[check.severity]\n\"\" = \"note\"\n", "2: "},
        {"[check]\nseverity = \"note\"\n", "2: no such option: check.severity"},
        {"[check.severity.\"GJF-T001\"]\nlevel = \"note\"\n", "2: no such option"},
        {"[check.per-file-ignores]\n\"old/**\" = \"GJF-M\"\n", "2: check.per-file-ignores.old/** is a list of codes"},
        {"[check.per-file-ignores]\n\"old/**\" = [\"GJF-Z\"]\n", "2: "},
        {"[files]\nexlude = [\"scratch\"]\n", "2: no such option: files.exlude"},
        {"[files]\nexclude = \"scratch\"\n", "2: files.exclude is a list of patterns"},
        {"[limits]\nmemory = 64\n", "2: limits.memory is an amount of memory"},
        {"[limits]\nmemory = \"64 GB\"\n", "2: limits.memory is"},
        {"[limits]\nmemory = \"much\"\n", "2: limits.memory is"},
        {"[limits]\nmemory = \"0GB\"\n", "2: limits.memory is"},
        {"[limits]\nmemory = \"-1GB\"\n", "2: limits.memory is"},
        {"[limits]\ncores = \"32\"\n", "2: limits.cores is a number of cores"},
        {"[limits]\ncores = 0\n", "2: limits.cores is"},
        {"[limits]\ncores = -4\n", "2: limits.cores is"},
        {"[limits]\ncores = 99999999999999\n", "2: limits.cores is"},
        {"[limits]\nforbid = \"scf=qc\"\n", "2: limits.forbid is a list of words"},
        {"[limits]\nnodes = 4\n", "2: no such option: limits.nodes"},
        {"[[limits]]\ncores = 4\n", "1: "},
        {"[rules.ts]\nmessage = \"m\"\n", "2: rules.ts has no when"},
        {"[rules.ts]\nwhen = \"opt=ts\"\n", "2: rules.ts has no message"},
        {"[rules.ts]\nseverity = \"note\"\n", "2: rules.ts has no when"},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"\"\n", "3: rules.ts.when is a condition on a job"},
        {"[rules.ts]\nmessage = \" \"\nwhen = \"opt\"\n", "2: rules.ts.message is what is told"},
        {"[rules.ts]\nmessage = 1\nwhen = \"opt\"\n", "2: rules.ts.message is what is told"},
        {"[rules.ts]\nmessage = \"m\"\nwhen = [\"opt\"]\n", "3: rules.ts.when is a condition on a job"},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"opt and\"\n", "3: rules.ts.when: column "},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"atoms > many\"\n", "3: rules.ts.when: column "},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"opt\"\nseverity = \"error\"\n", "4: rules.ts.severity is \"warning\" or"},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"opt\"\nseverity = \"off\"\n", "4: rules.ts.severity is"},
        {"[rules.ts]\nmessage = \"m\"\nwhen = \"opt\"\nhint = \"h\"\n", "4: no such option: rules.ts.hint"},
        {"[rules.ts.more]\nwhen = \"opt\"\n", "2: no such option: rules.ts.more.when"},
        {"[rules]\nwhen = \"opt\"\n", "2: no such option: rules.when"},
        {"[rules.\"a b\"]\nmessage = \"m\"\nwhen = \"opt\"\n", "3: the name of a rule is made of"},
        {"[rules.\"\"]\nmessage = \"m\"\nwhen = \"opt\"\n", "3: the name of a rule is made of"},
        {"[[rules]]\nwhen = \"opt\"\n", "1: "},
        {"[check.severity]\n\"site:ts\" = \"error\"\n", "2: what a rule of a site tells is a warning or a note"},
        {"\"\\x\" = 1\n", "1: "},
        {"a = \"\xff\"\n", "1: "},
    };
    for (const Case& each : cases) {
        const std::string found = problem_of(each.text);
        std::string wanted = each.beginning;
        wanted.resize(std::min(wanted.size(), wanted.find(';')));
        EXPECT_EQ(found.substr(0, wanted.size()), wanted) << each.text << found;
    }
}

TEST(ConfigurationFiles, AreTakenInAllFormsOfToml) {
    for (const char* text : {"", "# nothing\n", "\xef\xbb\xbfignore = []\n", "ignore = ['GJF-S002']\r\n[check]\r\n",
                             "ignore = [\n \"GJF-S\", # all of them\n \"gjf-m002\",\n]\n", "check.fail-on = \"note\"\n",
                             "[limits]\nmemory = \"64GB\"\ncores = 3_2\n", "check = { severity = { GJF-T001 = \"off\" } }\n",
                             "ignore = \"GJF-S002, GJF-M\"\n", "[report]\nthreads = 1\n"}) {
        EXPECT_EQ(problem_of(text), "") << text;
    }
}

CheckRules rules_of(const std::string& text, const std::string& path = "job.gjf") {
    Configuration configuration;
    configuration.add(read_configuration(text, "f"));
    return check_rules(configuration, path);
}

TEST(CheckRulesOfAFile, GoByTheLongestBeginning) {
    struct Case {
        const char* text;
        const char* code;
        const char* wanted;  // severity of an error of this code
    };
    const std::vector<Case> cases = {
        {"", "GJF-M002", "error"},
        {"ignore = [\"GJF-M\"]", "GJF-M002", ""},
        {"ignore = [\"GJF-M\"]\nselect = [\"GJF-M002\"]", "GJF-M002", "error"},
        {"ignore = [\"GJF-M002\"]\nselect = [\"GJF-M\"]", "GJF-M002", ""},
        {"select = [\"GJF-S\"]", "GJF-M002", ""},
        {"ignore = [\"GJF-M002\"]\nselect = [\"GJF-M002\"]", "GJF-M002", ""},
        {"[check.severity]\nGJF = \"note\"", "GJF-M002", "note"},
        {"[check.severity]\nGJF = \"note\"\nGJF-M002 = \"warning\"", "GJF-M002", "warning"},
        {"[check.severity]\nGJF = \"off\"", "GJF-M002", ""},
        {"[check.severity]\nGJF = \"off\"\ngjf-m = \"note\"", "GJF-M002", "note"},
        {"[check.severity]\nGJF = \"note\"\nGJF-M = \"off\"", "GJF-M002", ""},
        {"[check.per-file-ignores]\n\"*.gjf\" = [\"GJF-M\"]", "GJF-M002", ""},
        {"[check.per-file-ignores]\n\"*.gjf\" = [\"GJF-M\"]", "GJF-S002", "error"},
        {"[check.per-file-ignores]\n\"*.com\" = [\"GJF-M\"]", "GJF-M002", "error"},
        {"select = [\"GJF-M002\"]\n[check.per-file-ignores]\n\"job*\" = [\"GJF\"]", "GJF-M002", ""},
    };
    for (const Case& each : cases) {
        std::vector<Finding> findings(1);
        findings[0].code = each.code;
        findings[0].severity = Severity::Error;
        rules_of(each.text).apply(findings);
        EXPECT_EQ(findings.empty() ? "" : severity_name(findings[0].severity), std::string(each.wanted)) << each.text;
    }
    EXPECT_EQ(rules_of("fail-on = \"note\"").fail_on, Severity::Note);
}

TEST(CheckRulesOfAFile, HaveTheLimits) {
    const CheckLimits limits =
        rules_of("[limits]\nmemory = \"64gb\"\ncores = 32\nforbid = [\"scf=qc\"]\nrequire = [\"%chk\"]\n").limits;
    EXPECT_EQ(limits.memory, std::int64_t{64} << 30);
    EXPECT_EQ(limits.cores, 32);
    EXPECT_EQ(limits.forbidden, std::vector<std::string>{"scf=qc"});
    EXPECT_EQ(limits.wanted, std::vector<std::string>{"%chk"});
}

// What the rules of a configuration say of two jobs, as "line severity code".
std::string told_by_rules(const std::string& text) {
    const std::string jobs =
        "%chk=a\n# b3lyp/6-31g(d) opt=ts\n\nt\n\n0 1\nHe 0 0 0\n\n--Link1--\n# hf/3-21g freq\n\nt\n\n"
        "0 1\nHe 0 0 0\n\n";
    const CheckRules rules = rules_of(text);
    std::vector<Finding> findings;
    rules.judge("job.gjf", jobs, findings);
    std::string told;
    for (const Finding& finding : findings) {
        told += std::to_string(finding.line) + ' ' + severity_name(finding.severity) + ' ' + finding.code + ";";
    }
    return told;
}

TEST(RulesOfASite, TellOfTheJobsThatTheirConditionHoldsFor) {
    const std::string ts = "[rules.ts-alone]\nwhen = \"opt=ts and not freq\"\nmessage = \"m\"\n";
    const std::string hf = "[rules.hf]\nwhen = \"method = hf\"\nmessage = \"m\"\nseverity = \"note\"\n";
    struct Case {
        std::string text;
        const char* told;
    };
    const std::vector<Case> cases = {
        {ts, "2 warning site:ts-alone;"},
        {hf, "10 note site:hf;"},
        {hf + ts, "2 warning site:ts-alone;10 note site:hf;"},
        {"ignore = [\"site:hf\"]\n" + hf + ts, "2 warning site:ts-alone;"},
        {"ignore = [\"site:\"]\n" + hf + ts, ""},
        {"select = [\"site:\"]\n" + hf, "10 note site:hf;"},
        {"[check.severity]\n\"site:ts\" = \"note\"\n" + ts, "2 note site:ts-alone;"},
        {"[check.severity]\n\"site:ts-alone\" = \"off\"\n" + ts, ""},
        {"[check.per-file-ignores]\n\"job*\" = [\"site:ts-alone\"]\n" + ts, ""},
        {"[rules.never]\nwhen = \"atoms > 5\"\nmessage = \"m\"\n", ""},
        {"", ""},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(told_by_rules(each.text), each.told) << each.text;
    }
}

TEST(PathPatterns, FitNamesAndFolders) {
    struct Case {
        const char* pattern;
        const char* path;
        bool fits;
    };
    const std::vector<Case> cases = {
        {"old/**", "old/a.gjf", true},
        {"old/**", "old/b/a.gjf", true},
        {"old/**", "new/old/a.gjf", false},
        {"old/**", "older/a.gjf", false},
        {"old", "old/a.gjf", true},
        {"old", "x/old/a.gjf", true},
        {"old", "x/older/a.gjf", false},
        {"old", "xold/a.gjf", false},
        {"old/", "old/a.gjf", true},
        {"*.gjf", "x/y/a.gjf", true},
        {"*.gjf", "a.gjf.bak", false},
        {"*_tmp.gjf", "a_tmp.gjf", true},
        {"x/*.gjf", "x/a.gjf", true},
        {"x/*.gjf", "x/y/a.gjf", false},
        {"x/*", "x/y/a.gjf", true},
        {"x/**/a.gjf", "x/a.gjf", true},
        {"x/**/a.gjf", "x/y/z/a.gjf", true},
        {"x/**/a.gjf", "x/ya.gjf", false},
        {"**/a.gjf", "a.gjf", true},
        {"**/a.gjf", "x/a.gjf", true},
        {"**/a.gjf", "xa.gjf", false},
        {"?.gjf", "a.gjf", true},
        {"?.gjf", "ab.gjf", false},
        {"x?a.gjf", "x/a.gjf", false},
        {"./x/*", "x/a.gjf", true},
        {"", "a.gjf", false},
        {"**", "x/a.gjf", true},
        {"[a].gjf", "a.gjf", false},
        {"[a].gjf", "[a].gjf", true},
        {"A.gjf", "a.gjf", false},
        {"*", "a.gjf", true},
        {"/", "a.gjf", false},
        {"x/", "y/a.gjf", false},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(path_matches(each.pattern, each.path), each.fits) << each.pattern << ' ' << each.path;
    }
    const std::string many(2000, '*');
    EXPECT_FALSE(path_matches(many + 'b', std::string(2000, 'a')));
}

class FoundConfigurations : public testing::Test {
   protected:
    void SetUp() override {
        setenv("HOME", (folder / "home").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", ((folder / "system").string() + ":relative").c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
        folder.write("system/quor-gjf/config.toml", "fail-on = \"note\"\nthreads = 1\nquiet = true\n");
        folder.write("home/.config/quor-gjf/config.toml", "fail-on = \"warning\"\nthreads = 2\n");
        folder.write("home/project/.quor-gjf", "fail-on = \"error\"\n");
    }

    // Returns a setting of a folder as its value.
    std::string value(const std::string& where, const char* key, ConfigurationSources sources = {}) {
        Configurations found(std::move(sources));
        const auto configuration = found.for_folder(folder / where);
        const Setting* setting = configuration->find({"check", key});
        return setting == nullptr ? "" : setting->values.front();
    }

    test::TemporaryFolder folder;
};

TEST_F(FoundConfigurations, ArePutOverEachOtherKeyByKey) {
    EXPECT_EQ(value("home/project", "fail-on"), "error");
    EXPECT_EQ(value("home/project", "threads"), "2");
    EXPECT_EQ(value("home/project", "quiet"), "true");
    EXPECT_EQ(value("home/project/deep/er", "fail-on"), "error");
    EXPECT_EQ(value("home/other", "fail-on"), "warning");
}

TEST_F(FoundConfigurations, AreTheNearestOfAProjectAlone) {
    folder.write("home/project/own/.quor-gjf", "threads = 3\n");
    EXPECT_EQ(value("home/project/own", "threads"), "3");
    EXPECT_EQ(value("home/project/own", "fail-on"), "warning");
}

TEST_F(FoundConfigurations, EndAtARepositoryAndAtHome) {
    folder.write("home/project/inner/.git/HEAD", "");
    EXPECT_EQ(value("home/project/inner/jobs", "fail-on"), "warning");
    folder.write(".quor-gjf", "threads = 9\n");
    EXPECT_EQ(value("home/other", "threads"), "2");
    folder.write("home/.quor-gjf", "threads = 4\n");
    EXPECT_EQ(value("home/other", "threads"), "4");
}

TEST_F(FoundConfigurations, GiveWayToTheOneThatIsNamed) {
    const std::string named = folder.write("named.toml", "threads = 7\n");
    EXPECT_EQ(value("home/project", "threads", {named, false, {}}), "7");
    EXPECT_EQ(value("home/project", "fail-on", {named, false, {}}), "");
    EXPECT_EQ(value("home/project", "threads", {"", true, {}}), "");
    EXPECT_THROW(value("home", "threads", {(folder / "missing").string(), false, {}}), ConfigurationError);
    EXPECT_THROW(value("home", "threads", {(folder / "home").string(), false, {}}), ConfigurationError);
}

TEST_F(FoundConfigurations, AreRefusedEachTime) {
    folder.write("home/project/.quor-gjf", "\nfail-on = \n");
    Configurations found;
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW(found.for_folder(folder / "home/project"), ConfigurationError);
    }
    EXPECT_NO_THROW(found.for_folder(folder / "home"));
    const auto judge = [](const Setting& setting) { return setting.path.back() == "threads" ? std::string("no") : ""; };
    EXPECT_THROW(value("home", "threads", {"", false, judge}), ConfigurationError);
}

}  // namespace
}  // namespace quor::input::gaussian
