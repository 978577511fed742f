// Reading files below a folder: what is read, and what is not since it lies elsewhere.
#include <core/fs/read_regular_file.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>

#include "../../support/files.hpp"

namespace quor::core::fs {
namespace {

struct PathBelow {
    std::string path;
    ReadOutcome outcome;
    const char* text = "";
};

const PathBelow paths[] = {
    {"file", ReadOutcome::Read, "in"},
    {"./sub//inner", ReadOutcome::Read, "deep"},
    {"sub/../file", ReadOutcome::Read, "in"},
    {"sub/up", ReadOutcome::Read, "in"},
    {"way/inner", ReadOutcome::Read, "deep"},
    {"way/../file", ReadOutcome::Read, "in"},
    {"", ReadOutcome::Missing},
    {"nothing", ReadOutcome::Missing},
    {"file/", ReadOutcome::Missing},
    {"file/x", ReadOutcome::Missing},
    {"dangling", ReadOutcome::Missing},
    {std::string("file\0x", 6), ReadOutcome::Missing},
    {std::string(5000, 'x'), ReadOutcome::Missing},
    {".", ReadOutcome::NotRegular},
    {"sub", ReadOutcome::NotRegular},
    {"sub/", ReadOutcome::NotRegular},
    {"sub/..", ReadOutcome::NotRegular},
    {"pipe", ReadOutcome::NotRegular},
    {"large", ReadOutcome::TooLarge},
    {"circle", ReadOutcome::Unreadable},
    {"..", ReadOutcome::Outside},
    {"../outside", ReadOutcome::Outside},
    {"../root/file", ReadOutcome::Outside},
    {"sub/../../outside", ReadOutcome::Outside},
    {"/etc/passwd", ReadOutcome::Outside},
    {"out", ReadOutcome::Outside},
    {"absolute", ReadOutcome::Outside},
    {"absolute_inside", ReadOutcome::Outside},
    {"out_and_in", ReadOutcome::Outside},
    {"folder_out/outside", ReadOutcome::Outside},
    {"sub/deep_out", ReadOutcome::Outside},
};

TEST(ReadRegularFileBelow, ReadsNothingElsewhere) {
    namespace fs = std::filesystem;
    const quor::test::TemporaryFolder folder;
    folder.write("outside", "secret");
    const std::string root = (folder / "root").string();
    folder.write("root/file", "in");
    folder.write("root/large", "1234567890");
    folder.write("root/sub/inner", "deep");
    ASSERT_EQ(::mkfifo((root + "/pipe").c_str(), 0600), 0);
    const std::pair<const char*, std::string> links[] = {{"sub/up", "../file"},
                                                         {"way", "sub"},
                                                         {"dangling", "gone"},
                                                         {"circle", "circle"},
                                                         {"out", "../outside"},
                                                         {"absolute", "/etc/passwd"},
                                                         {"absolute_inside", root + "/file"},
                                                         {"out_and_in", "../root/file"},
                                                         {"folder_out", ".."},
                                                         {"sub/deep_out", "../../outside"}};
    for (const auto& [name, target] : links) {
        fs::create_symlink(target, fs::path(root) / name);
    }
    for (const PathSteps steps : {PathSteps::KernelsFirst, PathSteps::Ours}) {
        for (const PathBelow& each : paths) {
            const ReadFile file = read_regular_file_below(root, each.path, 9, steps);
            EXPECT_EQ(file.outcome, each.outcome) << each.path << (steps == PathSteps::Ours ? " in our steps" : "");
            EXPECT_EQ(file.text, each.text) << each.path;
        }
        EXPECT_EQ(read_regular_file_below(root + "/nowhere", "file", 9, steps).outcome, ReadOutcome::Missing);
        EXPECT_EQ(read_regular_file_below(root + "/file", "file", 9, steps).outcome, ReadOutcome::Missing);
    }
}

}  // namespace
}  // namespace quor::core::fs
