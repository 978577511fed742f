// Where the vocabulary is looked for, step by step.
#include "vocabulary.hpp"

#include <gjf/core/route_schema_paths.hpp>

#include <string_view>

namespace quor::input::gaussian {

// Defined beside resolve_route_schema_path, which passes the path of its own source file.
std::string resolve_route_schema_path_of_build(const std::string& base, std::string_view source_file);

namespace {

constexpr const char* path_variable = "QUOR_G16_ROUTE_SCHEMA_YAML";
constexpr const char* relative_path = "resources/schemas/input/gaussian_route.yaml";

class RouteSchemaPath : public testing::Test {
   protected:
    void SetUp() override {
        keep(path_variable, old_variable_);
        keep("HOME", old_home_);
        unsetenv(path_variable);
        unsetenv("HOME");
    }
    void TearDown() override {
        restore(path_variable, old_variable_);
        restore("HOME", old_home_);
    }
    TemporaryFolder folder;
    TemporaryFolder empty;
    std::string nowhere() const { return empty.path().string(); }

   private:
    static void keep(const char* name, std::pair<bool, std::string>& value) {
        const char* text = std::getenv(name);
        value = {text != nullptr, text == nullptr ? "" : text};
    }
    static void restore(const char* name, const std::pair<bool, std::string>& value) {
        value.first ? setenv(name, value.second.c_str(), 1) : unsetenv(name);
    }
    std::pair<bool, std::string> old_variable_;
    std::pair<bool, std::string> old_home_;
};

TEST_F(RouteSchemaPath, IsTheRelativePathWhenThereIsNothing) {
    for (const char* source : {"", "/somewhere/else.cpp", "route_schema_paths.cpp"}) {
        EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), source), relative_path) << source;
    }
}

TEST_F(RouteSchemaPath, LiesUnderHomeWhetherOrNotItExists) {
    setenv("HOME", "/no/such/home", 1);
    EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), ""),
              "/no/such/home/.quor/lib/resources/schemas/input/gaussian_route.yaml");
    setenv("HOME", "", 1);
    EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), ""), relative_path);
}

TEST_F(RouteSchemaPath, IsTheFileTheVariableNames) {
    const std::string named = folder.write("mine.yaml", "states: {}\n");
    folder.write(std::string("base/") + relative_path, "states: {}\n");
    setenv(path_variable, named.c_str(), 1);
    EXPECT_EQ(resolve_route_schema_path((folder.path() / "base").string()), named);
    EXPECT_EQ(resolve_route_schema_path(""), named);
    setenv(path_variable, "/no/such/file", 1);
    EXPECT_EQ(resolve_route_schema_path((folder.path() / "base").string()),
              (folder.path() / "base" / relative_path).string());
}

TEST_F(RouteSchemaPath, LiesBelowTheBaseOrOneOfSixParents) {
    const std::string installed = folder.write("share/quorlib/schemas/input/gaussian_route.yaml", "states: {}\n");
    EXPECT_EQ(resolve_route_schema_path(folder.path().string()), installed);
    EXPECT_EQ(resolve_route_schema_path((folder.path() / "1/2/3/4/5/6").string()), installed);
    EXPECT_EQ(resolve_route_schema_path_of_build((folder.path() / "1/2/3/4/5/6/7").string(), ""), relative_path);
    const std::string in_tree = folder.write(relative_path, "states: {}\n");
    EXPECT_EQ(resolve_route_schema_path(folder.path().string()), in_tree);
}

TEST_F(RouteSchemaPath, LiesInTheSourceTreeOfTheBuild) {
    const std::string root = folder.path().string();
    const std::string in_tree = folder.write(relative_path, "states: {}\n");
    for (const char* suffix :
         {"/src/input/backends/gaussian/gjf/core/route_schema_paths.cpp", "/g16/gjf/src/core/route_schema_paths.cpp"}) {
        EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), root + suffix), in_tree) << suffix;
        EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), nowhere() + suffix + root + suffix), relative_path)
            << suffix;
        EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), root + suffix + ".o"), in_tree) << suffix;
        EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), nowhere() + suffix), relative_path) << suffix;
    }
    EXPECT_EQ(resolve_route_schema_path_of_build(nowhere(), root + "/src/route_schema_paths.cpp"), relative_path);
    setenv("HOME", "/home/user", 1);
    EXPECT_EQ(
        resolve_route_schema_path_of_build(nowhere(), root + "/src/input/backends/gaussian/gjf/core/route_schema_paths.cpp"),
        in_tree);
}

TEST_F(RouteSchemaPath, IsNeverEmpty) {
    EXPECT_FALSE(resolve_route_schema_path(nowhere()).empty());
    EXPECT_FALSE(resolve_route_schema_path("/no/such/folder").empty());
    EXPECT_FALSE(resolve_route_schema_path("").empty());
}

}  // namespace
}  // namespace quor::input::gaussian
