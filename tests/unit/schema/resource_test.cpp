// Where resource files are looked for, and in what order.
#include "vocabulary.hpp"

#include <core/resource/resource.hpp>

#include <dlfcn.h>
#include <sys/stat.h>

namespace quor::core::resource {
namespace {

using quor::input::gaussian::TemporaryFolder;

constexpr const char* file_variable = "QUOR_TEST_RESOURCE_FILE";
constexpr const char* folder_variable = "QUOR_TEST_RESOURCE_FOLDER";

class ResourceSearch : public testing::Test {
   protected:
    void SetUp() override {
        unsetenv(file_variable);
        unsetenv(folder_variable);
    }
    void TearDown() override {
        SetUp();
        std::filesystem::current_path(start_);
    }
    TemporaryFolder folder;

   private:
    const std::filesystem::path start_ = std::filesystem::current_path();
};

TEST_F(ResourceSearch, TellsRegularFilesFromAllElse) {
    const std::string file = folder.write("a/file.txt", "x");
    std::filesystem::create_symlink(file, folder.path() / "link");
    std::filesystem::create_symlink(folder.path() / "nowhere", folder.path() / "broken");
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_TRUE(is_regular_file_path(file));
    EXPECT_TRUE(is_regular_file_path((folder.path() / "link").string()));
    for (const std::string& path :
         {std::string(), folder.path().string(), (folder.path() / "broken").string(), (folder.path() / "pipe").string(),
          (folder.path() / "absent").string(), std::string("/dev/null"), file + "/", file + std::string("\0x", 2)}) {
        EXPECT_FALSE(is_regular_file_path(path)) << path;
    }
}

TEST_F(ResourceSearch, ReadsVariables) {
    EXPECT_EQ(getenv_string(file_variable), "");
    setenv(file_variable, "some value ", 1);
    EXPECT_EQ(getenv_string(file_variable), "some value ");
    setenv(file_variable, "", 1);
    EXPECT_EQ(getenv_string(file_variable), "");
    EXPECT_EQ(getenv_string(""), "");
    EXPECT_EQ(getenv_string("A=B"), "");
}

TEST_F(ResourceSearch, TakesTheFileAVariableNamesFirst) {
    const std::string named = folder.write("named.txt", "x");
    const std::string candidate = folder.write("base/c.txt", "x");
    const std::string base = (folder.path() / "base").string();
    const auto search = [&] { return search_file({"QUOR_TEST_UNSET", file_variable}, {}, {"c.txt"}, base, {}, 0); };
    EXPECT_EQ(search(), candidate);
    setenv(file_variable, named.c_str(), 1);
    EXPECT_EQ(search(), named);
    for (const std::string& useless : {folder.path().string(), (folder.path() / "absent").string(), std::string()}) {
        setenv(file_variable, useless.c_str(), 1);
        EXPECT_EQ(search(), candidate) << useless;
    }
}

TEST_F(ResourceSearch, LooksBelowTheFolderAVariableNames) {
    const std::string file = folder.write("site/b.txt", "x");
    setenv(folder_variable, (folder.path() / "site").c_str(), 1);
    EXPECT_EQ(search_file({}, {folder_variable}, {"a.txt", "b.txt"}, "/", {}, 0), file);
    EXPECT_EQ(search_file({}, {folder_variable}, {"a.txt"}, "/", {}, 0), "");
    setenv(folder_variable, "", 1);
    EXPECT_EQ(search_file({}, {folder_variable}, {"b.txt"}, "/", {}, 0), "");
}

TEST_F(ResourceSearch, ClimbsAsManyParentsAsToldAndNoMore) {
    const std::string top = folder.write("res/c.txt", "x");
    std::filesystem::create_directories(folder.path() / "1/2/3");
    const std::string base = (folder.path() / "1/2/3").string();
    for (int depth = -1; depth <= 2; ++depth) {
        EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base, {}, depth), "") << depth;
    }
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base, {}, 3), top);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base, {}, 1000), top);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base + "/", {}, 3), top);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base + "/../../absent/./x", {}, 3), top);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, base + "/job.gjf", {}, 4), top);
}

TEST_F(ResourceSearch, TakesTheNearestFolderThenTheFirstCandidate) {
    const std::string far_first = folder.write("a.txt", "x");
    const std::string near_second = folder.write("near/b.txt", "x");
    const std::string base = (folder.path() / "near").string();
    EXPECT_EQ(search_file({}, {}, {"a.txt", "b.txt"}, base, {}, 1), near_second);
    const std::string near_first = folder.write("near/a.txt", "x");
    EXPECT_EQ(search_file({}, {}, {"a.txt", "b.txt"}, base, {}, 1), near_first);
    EXPECT_EQ(search_file({}, {}, {"", "c.txt", "b.txt"}, base, {}, 1), near_second);
}

TEST_F(ResourceSearch, PassesOverCandidatesThatAreNoFiles) {
    std::filesystem::create_directories(folder.path() / "near/c.txt");
    const std::string file = folder.write("c.txt", "x");
    EXPECT_EQ(search_file({}, {}, {"c.txt"}, (folder.path() / "near").string(), {}, 1), file);
    EXPECT_EQ(search_file({}, {}, {"c.txt"}, (folder.path() / "near").string(), {}, 0), "");
}

TEST_F(ResourceSearch, StartsAtTheCurrentFolderForAnEmptyOrRelativeBase) {
    const std::string file = folder.write("res/c.txt", "x");
    std::filesystem::create_directories(folder.path() / "work/deep");
    std::filesystem::current_path(folder.path() / "work/deep");
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, "", {}, 2), file);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, "", {}, 1), "");
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, ".", {}, 2), file);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, "..", {}, 1), file);
    EXPECT_EQ(search_file({}, {}, {"res/c.txt"}, "job", {}, 3), file);
}

TEST_F(ResourceSearch, SurvivesAVanishedCurrentFolder) {
    std::filesystem::create_directories(folder.path() / "gone");
    std::filesystem::current_path(folder.path() / "gone");
    std::filesystem::remove(folder.path() / "gone");
    EXPECT_EQ(search_file({}, {}, {"res/no-such-file"}, "", {}, 6), "");
    EXPECT_EQ(search_file({}, {}, {"res/no-such-file"}, "x", {}, 6), "");
}

TEST_F(ResourceSearch, FallsBackOnPathsAsTheyStand) {
    const std::string file = folder.write("c.txt", "x");
    EXPECT_EQ(search_file({}, {}, {}, "/", {"/absent", folder.path().string(), file}, 0), file);
    EXPECT_EQ(search_file({}, {}, {}, "/", {"/absent"}, 0), "");
    EXPECT_EQ(search_file({}, {}, {}, "", {}, 6), "");
}

/// A copy of the library in a folder of its own, loaded from there.
class LibraryCopy {
   public:
    explicit LibraryCopy(const std::filesystem::path& library_folder) {
        Dl_info original{};
        void* const function = dlsym(RTLD_DEFAULT, mangled_search_file);
        if (function == nullptr || dladdr(function, &original) == 0) {
            return;
        }
        std::filesystem::create_directories(library_folder);
        const std::filesystem::path copy = library_folder / "libcopied_resource.so";
        std::filesystem::copy_file(original.dli_fname, copy, std::filesystem::copy_options::skip_existing);
        handle_ = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    ~LibraryCopy() {
        if (handle_ != nullptr) {
            dlclose(handle_);
        }
    }
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    std::string search(const std::vector<std::string>& candidates) const {
        const auto function =
            reinterpret_cast<decltype(&search_file)>(handle_ == nullptr ? nullptr : dlsym(handle_, mangled_search_file));
        return function == nullptr ? "no library" : function({}, {}, candidates, "", {}, 6);
    }

   private:
    static constexpr const char* mangled_search_file =
        "_ZN4quor4core8resource11search_fileERKSt6vectorINSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEESaIS8_EESC_SC_"
        "RKS8_SC_i";
    void* handle_ = nullptr;
};

TEST_F(ResourceSearch, FindsWhatIsInstalledBesideTheLibraryWhereverThatLies) {
    const std::vector<std::string> candidates = {"resources/v.yaml", "share/quorlib/v.yaml"};
    const TemporaryFolder elsewhere;
    std::filesystem::current_path(elsewhere.path());
    for (const char* library_folder : {"lib", "lib64", "lib/x86_64-linux-gnu", "opt/very/deep/lib"}) {
        const std::filesystem::path prefix = folder.path() / std::filesystem::path(library_folder).filename();
        const std::string file = folder.write(prefix / "share/quorlib/v.yaml", "x");
        const LibraryCopy library(prefix / library_folder);
        EXPECT_EQ(library.search(candidates), file) << library_folder;
    }
    // The current folder comes first.
    const std::string current = elsewhere.write("resources/v.yaml", "x");
    const LibraryCopy library(folder.path() / "lib/lib");
    EXPECT_EQ(library.search(candidates), current);
    EXPECT_EQ(library.search({"share/none.yaml"}), "");
}

TEST_F(ResourceSearch, FollowsALinkToTheLibrarysFolder) {
    const TemporaryFolder elsewhere;
    std::filesystem::current_path(elsewhere.path());
    const std::string file = folder.write("real/share/v.yaml", "x");
    std::filesystem::create_directories(folder.path() / "real/lib");
    std::filesystem::create_directories(folder.path() / "linked");
    std::filesystem::create_directory_symlink(folder.path() / "real/lib", folder.path() / "linked/lib");
    const LibraryCopy library(folder.path() / "linked/lib");
    EXPECT_EQ(library.search({"share/v.yaml"}), file);
}

}  // namespace
}  // namespace quor::core::resource
