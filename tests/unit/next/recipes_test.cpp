// The tables of recipes: what is read, and what is refused with its line.
#include <gjf/core/next/edit_names.hpp>
#include <gjf/core/next/recipes.hpp>

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

namespace {

using namespace quor::input::gaussian;

const std::string heading = "id\tkind\tfor\tattempt\twhen\tunless\tneeds\tgeometry\tedits\tsays\tcertainty\tsource\n";

std::string refusal_of(const std::string& row) {
    try {
        read_recipes(heading + row, "own.tsv");
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(Recipes, ReadsARow) {
    const std::vector<Recipe> rows =
        read_recipes(heading + "# a comment\n" +
                         "a_b\tcure\topt_steps\t2\topt=ts\tfreq\tjob, modes\tdisplaced:2:-0.25\t--option "
                         "opt=(ts,maxcycles={2*opt.maxcycles}) "
                         "--add-keyword nosymm --chk-from-name\tsays it\ttext\tme\r\n",
                     "own.tsv");
    ASSERT_EQ(rows.size(), 1U);
    const Recipe& row = rows[0];
    EXPECT_EQ(row.id, "a_b");
    EXPECT_EQ(row.kind, RecipeKind::Cure);
    EXPECT_EQ(row.attempt, 2);
    EXPECT_TRUE(row.when.has_value() && row.unless.has_value());
    EXPECT_TRUE(row.needs_job && row.needs_modes && !row.needs_output && !row.needs_checkpoint);
    EXPECT_EQ(row.geometry, RecipeGeometry::Displaced);
    EXPECT_EQ(row.displacement.mode, 2);
    EXPECT_DOUBLE_EQ(row.displacement.amplitude, -0.25);
    ASSERT_EQ(row.edits.size(), 3U);
    EXPECT_EQ(row.edits[0].value, "opt=(ts,maxcycles={2*opt.maxcycles})");
    EXPECT_EQ(row.edits[2].option, "--chk-from-name");
    EXPECT_TRUE(row.is_hint());
    EXPECT_EQ(row.place, "own.tsv, line 3");
}

TEST(Recipes, RefusesWhatNobodyKnowsWithItsLine) {
    const struct {
        const char* row;
        const char* message;
    } rows[] = {
        {"A\tcure\toom\t1\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: 'A' is no id: small letters, digits, - and _"},
        {"a\tmend\toom\t1\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: 'mend' is neither cure nor next"},
        {"a\tcure\tooom\t1\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: 'ooom' is no cause of failures"},
        {"a\tnext\toom\t1\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: 'oom' is no kind of next job"},
        {"a\tcure\toom\t0\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: '0' is no number of an attempt"},
        {"a\tcure\toom\t1x\t\t\t\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: '1x' is no number of an attempt"},
        {"a\tcure\toom\t1\t\t\ttime\tsame\t\ts\tlog\tx\n", "own.tsv, line 2: 'time' is nothing that a recipe needs"},
        {"a\tcure\toom\t1\t\t\t\tfirst\t\ts\tlog\tx\n", "own.tsv, line 2: 'first' is no geometry"},
        {"a\tcure\toom\t1\t\t\t\tdisplaced:x\t\ts\tlog\tx\n", "own.tsv, line 2: 'displaced:x' is no geometry"},
        {"a\tcure\toom\t1\t\t\t\tdisplaced:0\t\ts\tlog\tx\n", "own.tsv, line 2: 'displaced:0' is no geometry"},
        {"a\tcure\toom\t1\t\t\t\tlast:2\t\ts\tlog\tx\n", "own.tsv, line 2: 'last:2' is no geometry"},
        {"a\tcure\toom\t1\t\t\t\tsame\t--opt ts\ts\tlog\tx\n", "own.tsv, line 2: '--opt' is no operation of edit"},
        {"a\tcure\toom\t1\t\t\t\tsame\t--option\ts\tlog\tx\n", "own.tsv, line 2: '--option' wants a value"},
        {"a\tcure\toom\t1\t\t\t\tsame\t--set mem={2*men}\ts\tlog\tx\n", "own.tsv, line 2: 'men' is no name of a value"},
        {"a\tcure\toom\t1\t\t\t\tsame\t--set mem={x*mem}\ts\tlog\tx\n", "own.tsv, line 2: 'x*mem' begins with no factor"},
        {"a\tcure\toom\t1\t\t\t\tsame\t\ts\tguess\tx\n", "own.tsv, line 2: 'guess' is none of log, tool and text"},
        {"a\tcure\toom\t1\t\t\t\tsame\t\t\tlog\tx\n", "own.tsv, line 2: what it says, or its source, is missing"},
        {"a\tcure\toom\t1\n", "own.tsv, line 2: 4 cells below 12 headings"},
    };
    for (const auto& [row, message] : rows) {
        EXPECT_EQ(refusal_of(row), message) << row;
    }
    EXPECT_NE(refusal_of("a\tcure\toom\t1\tchrage = 1\t\t\tsame\t\ts\tlog\tx\n").find("own.tsv, line 2: "),
              std::string::npos);
    EXPECT_NE(refusal_of("a\tcure\toom\t1\t\t\t\tsame\t--option opt=calcfcc\ts\tlog\tx\n"), "");
}

TEST(Recipes, RefusesWrongHeadings) {
    EXPECT_THROW(read_recipes("id\tkind\n", "own.tsv"), std::runtime_error);
    EXPECT_THROW(read_recipes("what\t" + heading, "own.tsv"), std::runtime_error);
    EXPECT_TRUE(read_recipes("", "own.tsv").empty());
}

TEST(Recipes, OfTheLibraryHaveAttemptsInOrder) {
    std::set<std::string> causes;
    const Recipe* before = nullptr;
    for (const Recipe& recipe : default_recipes()) {
        causes.insert(recipe.wanted_for);
        if (before != nullptr && before->wanted_for == recipe.wanted_for && before->kind == recipe.kind) {
            EXPECT_GE(recipe.attempt, before->attempt) << recipe.place;
        }
        before = &recipe;
    }
    EXPECT_GE(causes.size(), 50U);
}

TEST(Recipes, NeverTouchMethodBasisChargeOrDispersion) {
    for (const Recipe& recipe : default_recipes()) {
        for (const RecipeEdit& edit : recipe.edits) {
            EXPECT_FALSE(edit.option == "--method" || edit.option == "--basis" || edit.option == "--charge" ||
                         edit.option == "--multiplicity" || edit.option == "--route" ||
                         edit.value.find("dispersion") != std::string::npos)
                << recipe.place;
        }
    }
}

TEST(EditNames, TakeTheValuesOfTheJobThenOfTheOutput) {
    Diagnosis diagnosis;
    diagnosis.told_mem = "11MW";
    const std::string job = "%mem=2GB\n# hf/sto-3g opt=(ts,maxcycle=7) scf=(maxcycle=33)\n\nt\n\n0 1\nH 0 0 0\n\n";
    const struct {
        const char* text;
        const char* wanted;
    } rows[] = {{"opt=maxcycles={2*opt.maxcycles}", "opt=maxcycles=14"},
                {"{scf.maxcycle}", "33"},
                {"{1.5*told_mem}", "132MB"},
                {"{0.9*mem}", "1844MB"},
                {"{irc.maxpoints}", "10"},
                {"plain", "plain"}};
    for (const auto& [text, wanted] : rows) {
        EXPECT_EQ(with_edit_names(text, job, diagnosis), wanted) << text;
    }
    const std::string bare = "# hf/sto-3g opt\n\nt\n\n0 1\nH 0 0 0\n\n";
    EXPECT_THROW(with_edit_names("{opt.maxcycles}", bare, {}), std::runtime_error);
    EXPECT_THROW(with_edit_names("{told_mem}", bare, {}), std::runtime_error);
    EXPECT_THROW(check_edit_names("{2*mem"), std::runtime_error);
    diagnosis.summary.optimization.emplace();
    diagnosis.summary.optimization->max_steps = 20;
    EXPECT_EQ(with_edit_names("{2.5*opt.maxcycles}", bare, diagnosis), "50");
    EXPECT_EQ(with_edit_names("{2*mem}", bare, diagnosis), "1600MB");
}

TEST(Cures, OfAnOutputAreThoseThatFitTheRoute) {
    Diagnosis diagnosis;
    diagnosis.cause = "formbx";
    diagnosis.summary.route = "# hf/sto-3g opt";
    ASSERT_EQ(cures_of(diagnosis, "").size(), 2U);
    EXPECT_EQ(cures_of(diagnosis, "")[1].edits, (std::vector<std::string>{"--option", "opt=cartesian"}));
    diagnosis.summary.route = "# hf/sto-3g opt=modredundant";
    ASSERT_EQ(cures_of(diagnosis, "").size(), 1U);
    EXPECT_EQ(cures_of(diagnosis, "")[0].geometry, "last");
    EXPECT_TRUE(cures_of(diagnosis, "")[0].applied_by_tool);
    diagnosis.cause = "words";
    EXPECT_FALSE(cures_of(diagnosis, "").at(0).applied_by_tool);
    diagnosis.cause = "mult";
    EXPECT_TRUE(cures_of(diagnosis, "").empty());
}

}  // namespace
