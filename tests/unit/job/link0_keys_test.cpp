// Link 0 keys: their spellings, their values in the job model, and edits of them.
#include <gjf/core/job/link0_keys.hpp>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>
#include <vector>

using namespace quor::input::gaussian;

namespace {

TEST(Link0Keys, HaveSpellingsOfTheirOwn) {
    std::set<std::string_view> seen;
    for (const Link0Key& key : link0_keys()) {
        for (const std::string_view spelling : std::set<std::string_view>{key.name, key.layout_name}) {
            EXPECT_TRUE(seen.insert(spelling).second) << spelling;
            EXPECT_EQ(find_link0_key(spelling), &key) << spelling;
        }
        EXPECT_TRUE(key.text == nullptr || key.in_model) << key.name;
    }
    EXPECT_EQ(find_link0_key("NProcShared"), find_link0_key("nproc"));
    EXPECT_EQ(find_link0_key("nprocs"), find_link0_key("nproc"));
    EXPECT_EQ(find_link0_key("nprocl"), find_link0_key("nproclinda"));
    EXPECT_FALSE(find_link0_key("nprocs")->is_spelt_out("nprocs"));
    for (const char* wrong : {"", "%chk", "chk ", "chkk", "save1", "memory", "proc", "npro", "oldc", "lind"}) {
        EXPECT_EQ(find_link0_key(wrong), nullptr) << wrong;
    }
}

TEST(Link0Keys, HaveTheValueOfTheirLineHoweverItIsSpelt) {
    using Lines = std::vector<std::string>;
    const std::tuple<const char*, Lines, std::optional<std::string>> cases[] = {
        {"nproc", {"%nprocs=8"}, "8"},
        {"nproc", {"% NProcS = 12 ! note", "%save"}, "12"},
        {"nproc", {"%nprocs=8", "%nprocsh=16x"}, "16"},
        {"nproc", {"%nprocs=8", "%nprocs=x"}, "8"},
        {"nproc", {"%nprocl=4", "%npro=4", "nprocs=4", "%nprocs", "%nprocs="}, std::nullopt},
        {"oldchk", {"%oldch=a b.chk"}, "a b.chk"},
        {"oldchk", {"%oldc=a"}, std::nullopt},
        {"scr", {"%scr=a", "%SCR=b"}, "b"},
        {"mem", {"%memory=1GB"}, std::nullopt},
        {"save", {"%save"}, std::nullopt},
    };
    for (const auto& [name, lines, value] : cases) {
        ControlSection control;
        control.other_link0_lines = lines;
        const Link0Key& key = *find_link0_key(name);
        EXPECT_EQ(find_link0_value(control, key), value) << name << lines[0];
        store_link0(control, key, "7");
        EXPECT_EQ(find_link0_value(control, key), key.in_model ? "7" : value) << name << lines[0];
    }
}

TEST(Link0Lines, AreTakenApart) {
    constexpr struct {
        const char* line;
        const char* key;
        const char* value;
        bool is_assigned;
    } rows[] = {
        {"%chk=a.chk", "chk", "a.chk", true},
        {" %Mem = 4 GB ! much", "Mem", "4 GB", true},
        {"% chk=a=b", "chk", "a=b", true},
        {"%save", "save", "", false},
        {"%nproc 4", "nproc", "4", false},
        {"%chk a=b", "chk", "a=b", false},
        {"%chk=", "chk", "", true},
        {"%=a", "", "a", true},
        {"%", "", "", false},
        {"", "", "", false},
        {"! %chk=a", "", "", false},
        {"#chk=a", "", "", false},
        {"chk=a %mem=1", "", "", false},
    };
    for (const auto& row : rows) {
        const Link0Words words = link0_words(row.line);
        EXPECT_EQ(words.key, row.key) << row.line;
        EXPECT_EQ(words.value, row.value) << row.line;
        EXPECT_EQ(words.is_assigned, row.is_assigned) << row.line;
    }
}

TEST(Link0Keys, AreSetAndTakenOut) {
    // Key, lines before, value, lines behind the edit, the value that the model then holds.
    using Lines = std::vector<std::string>;
    const std::tuple<const char*, Lines, const char*, Lines, std::optional<std::string>> cases[] = {
        {"chk", {"%save"}, "a b.chk", {"%save"}, "a b.chk"},
        {"nproc", {"%NProcs=4", "%save"}, "8", {"%save"}, "8"},
        {"nprocs", {}, "16x", {}, "16"},
        {"nproc", {}, "x", {}, std::nullopt},
        {"cpu", {}, "0-3", {}, "0-3"},
        {"scr", {"%SCR = a", "%save"}, "b", {"%scr=b", "%save"}, std::nullopt},
        {"scr", {"%scr=a", "%scr=c ! note"}, "b", {"%scr=a", "%scr=b"}, std::nullopt},
        {"save", {}, "", {"%save"}, std::nullopt},
        {"save", {"%Save"}, "", {"%save"}, std::nullopt},
        {"lindaworkers", {"%lindawork=x", "%lind=y"}, "n1,n2", {"%lindaworkers=n1,n2", "%lind=y"}, std::nullopt},
    };
    for (const auto& [name, before, value, after, held] : cases) {
        ControlSection control;
        control.other_link0_lines = before;
        const Link0Key* key = find_link0_key(name);
        ASSERT_NE(key, nullptr) << name;
        set_link0(control, *key, value);
        EXPECT_EQ(control.other_link0_lines, after) << name << value;
        EXPECT_EQ(link0_value(control, *key), held) << name << value;
        unset_link0(control, *key);
        EXPECT_EQ(link0_value(control, *key), std::nullopt) << name;
        for (const std::string& line : control.other_link0_lines) {
            EXPECT_EQ(line.find("%" + std::string(key->name) + "="), std::string::npos) << line;
        }
    }
}

TEST(Link0Keys, OfTheModelAreWrittenInOneOrder) {
    std::vector<std::string_view> names;
    for (const Link0Key& key : link0_keys()) {
        if (key.in_model) {
            names.push_back(key.layout_name);
        }
    }
    EXPECT_EQ(names, (std::vector<std::string_view>{"oldchk", "chk", "rwf", "mem", "nproc", "cpu"}));
}

TEST(Link0Keys, StoredByTheReaderLeaveLinesAlone) {
    ControlSection control;
    control.other_link0_lines = {"%nprocs=4"};
    store_link0(control, *find_link0_key("nproc"), "8");
    store_link0(control, *find_link0_key("save"), "x");
    EXPECT_EQ(control.other_link0_lines, (std::vector<std::string>{"%nprocs=4"}));
    EXPECT_EQ(control.nproc, 8);
}

}  // namespace
