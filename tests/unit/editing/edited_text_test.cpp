// Operations on a text: what becomes of it, what is said of it, and what is refused.
#include <gjf/core/editing/edited_text.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using namespace quor::input::gaussian;

namespace {

const std::string helium = "%mem=1GB\n# ub3lyp/6-31g(d)  Opt\n\nt\n\n0 1\nHe 0 0 0\n\n";
const std::string from_checkpoint = "%chk=a\n# hf/sto-3g geom=allcheck guess=read\n\n";
const std::string broken = "# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0x\n\n";
const std::string between = "--Link1--\n";

using Given = std::vector<std::pair<std::string, std::string>>;

EditPlan plan_of(const Given& given, bool unknown_words = false) {
    EditPlan plan;
    for (const auto& [name, value] : given) {
        const EditOption* option = find_edit_option(name);
        if (option == nullptr) {
            throw std::out_of_range(name);
        }
        plan.operations.push_back(read_operation(*option, value, {unknown_words, {}}));
    }
    return plan;
}

template <typename Function>
std::string error_of(Function function) {
    try {
        function();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none";
}

std::string said_of(const Given& given, const std::string& text = helium) {
    return error_of([&] { edit_text(text, plan_of(given)); });
}

std::string without(std::string text, const std::string& part) { return text.erase(text.find(part), part.size()); }

}  // namespace

TEST(EditedText, HasTheOperationsInTheirOrder) {
    const EditedText edited = edit_text(helium, plan_of({{"--charge", "1"}, {"--charge", "2"}, {"--set", "mem=2GB"}}));
    EXPECT_EQ(edited.text, "%mem=2GB\n# ub3lyp/6-31g(d)  Opt\n\nt\n\n2 1\nHe 0 0 0\n\n");
    EXPECT_TRUE(edited.remarks.empty());
    EXPECT_FALSE(edited.refused);
}

TEST(EditedText, SaysWhatOperationsDid) {
    const EditedText edited =
        edit_text(helium, plan_of({{"--method", "m062x"}, {"--remove-keyword", "freq"}, {"--unset", "chk"}}));
    EXPECT_EQ(edited.remarks, (std::vector<std::string>{"--method m062x: set as um062x, with the prefix of ub3lyp",
                                                        "--remove-keyword freq: found nothing to change",
                                                        "--unset chk: found nothing to change"}));
    EXPECT_NE(edited.text.find("# um062x/6-31g(d)  Opt"), std::string::npos) << edited.text;
}

TEST(EditedText, TellsWhatIsFoundAnew) {
    EditPlan plan = plan_of({{"--multiplicity", "2"}});
    const EditedText told = edit_text(helium, plan);
    ASSERT_EQ(told.findings.size(), 1U);
    EXPECT_EQ(told.findings[0].code, "GJF-M002");
    EXPECT_EQ(told.findings[0].line, 6U);
    EXPECT_FALSE(told.refused);
    plan.strict = true;
    const EditedText refused = edit_text(helium, plan);
    EXPECT_TRUE(refused.refused);
    EXPECT_EQ(refused.text, helium);
    EXPECT_EQ(refused.findings.size(), 1U);
    plan.checks = false;
    const EditedText unchecked = edit_text(helium, plan);
    EXPECT_FALSE(unchecked.refused);
    EXPECT_TRUE(unchecked.findings.empty());
    EXPECT_EQ(unchecked.text, told.text);
    EXPECT_TRUE(edit_text(unchecked.text, plan_of({{"--title", "u"}})).findings.empty());
}

TEST(EditedText, ChangesTheJobsThatAreMeant) {
    const std::string two = helium + between + helium;
    const std::string edited = "%mem=1GB\n# ub3lyp/6-31g(d)  Opt\n\nu\n\n0 1\nHe 0 0 0\n\n";
    EditPlan plan = plan_of({{"--title", "u"}});
    EXPECT_EQ(edit_text(two, plan).text, edited + between + edited);
    plan.job = 2;
    EXPECT_EQ(edit_text(two, plan).text, helium + between + edited);
    plan.where = JobPredicate("charge = 1");
    EXPECT_EQ(edit_text(two, plan).text, two);
    plan.job = 0;
    EXPECT_EQ(edit_text(two, plan).text, two);
    plan.where = JobPredicate("job = 1");
    EXPECT_EQ(edit_text(two, plan).text, edited + between + helium);
    plan.job = 3;
    EXPECT_EQ(error_of([&] { edit_text(two, plan); }), "there is no job 3: the file has 2");
}

TEST(EditedText, LeavesJobsThatCannotBeReadAsTheyAre) {
    EditPlan plan = plan_of({{"--set", "mem=2GB"}});
    const EditedText edited = edit_text(helium + between + broken, plan);
    EXPECT_EQ(edited.text, "%mem=2GB\n" + without(helium, "%mem=1GB\n") + between + broken);
    ASSERT_EQ(edited.unreadable.size(), 1U);
    EXPECT_EQ(edited.unreadable[0].job, 2U);
    EXPECT_EQ(edited.unreadable[0].line, 15U);
    EXPECT_NE(edited.unreadable[0].message, "");
    plan.job = 2;
    EXPECT_EQ(error_of([&] { edit_text(helium + between + broken, plan); }).find("job 2 cannot be read: "), 0U);
}

TEST(EditedText, PassesOverJobsWithoutWhatIsChanged) {
    EXPECT_EQ(edit_text(helium + between + from_checkpoint, plan_of({{"--title", "u"}})).text,
              "%mem=1GB\n# ub3lyp/6-31g(d)  Opt\n\nu\n\n0 1\nHe 0 0 0\n\n" + between + from_checkpoint);
    EXPECT_EQ(said_of({{"--title", "u"}}, from_checkpoint),
              "--title: there is no title and no charge: they come from a checkpoint");
    EXPECT_EQ(said_of({{"--freeze", "He=-1"}}, from_checkpoint),
              "--freeze: there are no atoms: the molecule comes from a checkpoint or another file");
}

TEST(EditedText, RefusesWhatDoesNotFitAJob) {
    const struct {
        Given given;
        const char* error;
    } rows[] = {
        {{{"--remove-atoms", "all"}}, "--remove-atoms: no atom would be left"},
        {{{"--reorder", "2,1"}}, "--reorder: the order names 2 atoms up to 2, the job has 1"},
        {{{"--reorder", "1,2-3"}}, "--reorder: the order names 3 atoms up to 3, the job has 1"},
        {{{"--title", "{stem}"}}, "--title: standard input has no name"},
        {{{"--chk-from-name", ""}}, "--chk-from-name: standard input has no name"},
        {{{"--set", "nproc={job}0"}}, "none"},
        {{{"--charge", "1"}, {"--remove-atoms", "all"}}, "--remove-atoms: no atom would be left"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(said_of(row.given), row.error) << row.given[0].first;
    }
    EXPECT_EQ(said_of({{"--remove-atoms", "all"}}, helium + between + helium),
              "job 1: --remove-atoms: no atom would be left");
    EXPECT_EQ(said_of({{"--freeze", "1=-1"}}, "# hf/sto-3g\n\nt\n\n0 1\nO\nH 1 0.9\nH 1 0.9 2 104\n\n"),
              "--freeze: the molecule is a Z-matrix, and its rows cannot be changed this way");
}

TEST(EditedText, RefusesTextsWithoutAJobThatCanBeRead) {
    EXPECT_NE(said_of({{"--charge", "1"}}, ""), "none");
    EXPECT_NE(said_of({{"--charge", "1"}}, broken), "none");
}

TEST(EditOperations, AreReadBeforeAnyText) {
    const struct {
        const char* name;
        const char* value;
        const char* error;
    } rows[] = {
        {"--charge", "", "'' is no charge"},
        {"--charge", "one", "'one' is no charge"},
        {"--charge", "1.0", "'1.0' is no charge"},
        {"--multiplicity", "0", "'0' is no multiplicity"},
        {"--set", "mem", "KEY=VALUE is wanted, not 'mem'"},
        {"--set", "save=1", "'save' takes no value"},
        {"--set", "mem=", "a value is missing; --unset takes out the line"},
        {"--set", "nproc=many", "'many' is no number of processors"},
        {"--set", "colour=red", "'colour' is no Link 0 key"},
        {"--title", "{stem", "a '{' is not closed; '{{' stands for the brace"},
        {"--title", "{name}", "'{name}' is none of {stem}, {parent} and {job}; '{{' stands for the brace"},
        {"--method", "b3lpy",
         "'b3lpy' is no route keyword, method or basis set; did you mean b3lyp? (--allow-unknown takes it)"},
        {"--option", "opt=clacfc", "'clacfc' is no option of opt; did you mean calcfc? (--allow-unknown takes it)"},
        {"--option", "opt", "KEYWORD=OPTION is wanted, not 'opt'"},
        {"--print-level", "q", "'q' is none of the print levels n, p, t and #"},
        {"--freeze", "H", "SELECTION=CODE is wanted, not 'H'"},
        {"--layer", "H=X", "'X' is not one of the layers H, M and L"},
        {"--translate", "1,2", "'1,2' is no shift DX,DY,DZ"},
        {"--translate", "1,2,inf", "'1,2,inf' is no shift DX,DY,DZ"},
        {"--units", "feet", "'feet' is none of the units bohr and angstrom"},
        {"--add-atom", "H 0 0", "'H 0 0' is no atom: SYMBOL X Y Z is wanted"},
        {"--replace-element", "1=Xx", "'Xx' is no element"},
        {"--reorder", "1,1", "atom 1 is named twice"},
        {"--section", "basis", "KIND=TEXT or KIND=@FILE is wanted, not 'basis'"},
        {"--section", "basis=\\n", "the section is empty; --remove-section takes one out"},
        {"--section", "basis=@/etc/hostname", "'@/etc/hostname' would be read from a file, and none is opened here"},
        {"--remove-section", "bases", "'bases' is no kind of section; quor-gjf edit --list-kinds names all"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(error_of([&] { plan_of({{row.name, row.value}}); }), row.error) << row.name << ' ' << row.value;
    }
    EXPECT_EQ(error_of([&] { plan_of({{"--option", "opt=clacfc"}}, true); }), "none");
    EXPECT_EQ(find_edit_option("method"), nullptr);
    EXPECT_EQ(find_edit_option(""), nullptr);
}

TEST(EditOperations, TakeSectionsFromAFileThatIsGiven) {
    EditReading reading;
    reading.files = [](const std::string& path) { return "He 0\n" + path + "\n****\n\n"; };
    EditPlan plan;
    plan.operations = {read_operation(*find_edit_option("--section"), "basis=@sto-3g", reading)};
    plan.checks = false;
    EXPECT_EQ(edit_text("# hf/gen\n\nt\n\n0 1\nHe 0 0 0\n\n", plan).text,
              "# hf/gen\n\nt\n\n0 1\nHe 0 0 0\n\nHe 0\nsto-3g\n****\n\n");
}
