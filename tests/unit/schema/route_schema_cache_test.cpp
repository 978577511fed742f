// What the process keeps: one vocabulary a path, and the default one. Tests of the default one each run in a process of
// their own.
#include "vocabulary.hpp"

#include <gjf/core/schema/route_schema_cache.hpp>

#include <thread>

namespace quor::input::gaussian {
namespace {

TEST(RouteSchemaCache, GivesNothingForAnEmptyPath) {
    const SchemaCacheEntry entry = load_route_schema_cached("");
    EXPECT_FALSE(entry.loaded);
    EXPECT_FALSE(entry.parser.knows_keyword("opt"));
}

TEST(RouteSchemaCache, ReadsAFileOnceForEveryPathText) {
    const TemporaryFolder folder;
    const std::string path = folder.write("v.yaml", with_opt);
    EXPECT_TRUE(load_route_schema_cached(path).loaded);
    folder.write("v.yaml", with_irc);
    EXPECT_TRUE(load_route_schema_cached(path).parser.knows_keyword_exact("opt"));
    EXPECT_FALSE(load_route_schema_cached(path).parser.knows_keyword_exact("irc"));
    const std::string other_text = (folder.path() / "." / "v.yaml").string();
    EXPECT_TRUE(load_route_schema_cached(other_text).parser.knows_keyword_exact("irc"));
}

TEST(RouteSchemaCache, RemembersFailures) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "late.yaml").string();
    EXPECT_FALSE(load_route_schema_cached(path).loaded);
    folder.write("late.yaml", with_opt);
    EXPECT_FALSE(load_route_schema_cached(path).loaded);
    EXPECT_FALSE(load_route_schema_cached(path).parser.knows_keyword("opt"));
}

TEST(RouteSchemaCache, KeepsItsVocabularyWhenACallerReloads) {
    const TemporaryFolder folder;
    const std::string path = folder.write("v.yaml", with_opt);
    SchemaCacheEntry entry = load_route_schema_cached(path);
    EXPECT_TRUE(entry.parser.load_from_file(folder.write("w.yaml", with_irc)));
    EXPECT_TRUE(load_route_schema_cached(path).parser.knows_keyword_exact("opt"));
}

TEST(RouteSchemaCache, ServesSeveralThreads) {
    const TemporaryFolder folder;
    std::vector<std::string> paths;
    for (int file = 0; file < 4; ++file) {
        paths.push_back(folder.write("v" + std::to_string(file) + ".yaml", with_opt));
    }
    std::vector<int> known(6, 0);
    std::vector<std::thread> threads;
    for (int& count : known) {
        threads.emplace_back([&paths, &count] {
            for (int round = 0; round < 100; ++round) {
                count +=
                    load_route_schema_cached(paths[static_cast<std::size_t>(round) % 4]).parser.knows_keyword_exact("opt");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(known, std::vector<int>(6, 100));
}

constexpr const char* variable = "QUOR_G16_ROUTE_SCHEMA_YAML";

class DefaultRouteSchema : public testing::Test {
   protected:
    void SetUp() override { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    /// Ends the process, whose folder would stay otherwise.
    [[noreturn]] void exit_with(int code) const {
        folder.remove();
        std::_Exit(code);
    }
    /// Ends the process with 0 when the default vocabulary knows `keyword` and no other of the words used here.
    [[noreturn]] void exit_with_knowledge_of(const std::string& keyword) const {
        bool as_expected = true;
        for (const std::string word : {"opt", "irc", "freq"}) {
            as_expected = as_expected && default_route_schema().knows_keyword_exact(word) == (word == keyword);
        }
        exit_with(as_expected ? 0 : 1);
    }

    TemporaryFolder folder;
};

TEST_F(DefaultRouteSchema, IsTheOneTheVariableNamesAtTheFirstCall) {
    const std::string path = folder.write("v.yaml", with_opt);
    EXPECT_EXIT(
        {
            setenv(variable, path.c_str(), 1);
            exit_with_knowledge_of("opt");
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DefaultRouteSchema, DoesNotFollowLaterChanges) {
    const std::string path = folder.write("v.yaml", with_opt);
    const std::string other = folder.write("w.yaml", with_irc);
    EXPECT_EXIT(
        {
            setenv(variable, path.c_str(), 1);
            const SimpleYAMLParser& first = default_route_schema();
            setenv(variable, other.c_str(), 1);
            std::filesystem::remove(path);
            if (&first != &default_route_schema()) {
                exit_with(2);
            }
            exit_with_knowledge_of("opt");
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DefaultRouteSchema, IsLookedForWhenTheVariableNamesNoVocabulary) {
    folder.write("resources/schemas/input/gaussian_route.yaml", "states: {GCL: {entries: [{forms: [freq]}]}}\n");
    for (const std::string& useless : {std::string(), (folder.path() / "absent").string(), folder.path().string()}) {
        EXPECT_EXIT(
            {
                std::filesystem::current_path(folder.path());
                setenv(variable, useless.c_str(), 1);
                exit_with_knowledge_of("freq");
            },
            testing::ExitedWithCode(0), "")
            << useless;
    }
}

TEST_F(DefaultRouteSchema, IsTheOneBesideTheLibraryWhenTheOneFoundDoesNotLoad) {
    folder.write("resources/schemas/input/gaussian_route.yaml", "states: [\n");
    EXPECT_EXIT(
        {
            std::filesystem::current_path(folder.path());
            unsetenv(variable);
            const std::string warning = default_route_schema_warning();
            const bool told = warning.find(folder.path().string()) != std::string::npos &&
                              warning.find("gaussian_route.yaml:2: ") != std::string::npos &&
                              warning.find(default_route_schema_path() + " serves in its place") != std::string::npos;
            const bool serves = default_route_schema().knows_method("b3lyp") && default_route_schema_problem().empty();
            exit_with(told && serves ? 0 : 2);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DefaultRouteSchema, IsEmptyWhenTheNamedFileIsNoVocabulary) {
    // The search takes the named file as well, so the broken one is what it finds.
    const std::string broken = folder.write("broken.yaml", "states: [\n");
    EXPECT_EXIT(
        {
            setenv(variable, broken.c_str(), 1);
            exit_with_knowledge_of("nothing");
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(DefaultRouteSchema, IsMadeOnceThoughManyThreadsAskFirst) {
    const std::string path = folder.write("v.yaml", with_opt);
    EXPECT_EXIT(
        {
            setenv(variable, path.c_str(), 1);
            std::vector<const SimpleYAMLParser*> seen(8, nullptr);
            std::vector<std::thread> threads;
            for (const SimpleYAMLParser*& place : seen) {
                threads.emplace_back([&place] { place = &default_route_schema(); });
            }
            for (std::thread& thread : threads) {
                thread.join();
            }
            for (const SimpleYAMLParser* place : seen) {
                if (place != seen.front()) {
                    exit_with(2);
                }
            }
            exit_with_knowledge_of("opt");
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quor::input::gaussian
