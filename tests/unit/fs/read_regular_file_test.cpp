// Reading files that somebody else named: what is read, and what is neither read nor waited for.
#include <core/fs/read_regular_file.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include "../../support/files.hpp"

namespace quor::core::fs {
namespace {

TEST(ReadRegularFile, ReadsBytesAsTheyAre) {
    const quor::test::TemporaryFolder folder;
    for (const std::string& text :
         {std::string(), std::string("a\r\nb"), std::string("\0\xff", 2), std::string(50'000, 'x')}) {
        const std::string path = folder.write("f", text);
        for (const std::size_t room : {std::size_t{0}, std::size_t{1}}) {
            const ReadFile file = read_regular_file(path, text.size() + room);
            EXPECT_EQ(file.outcome, ReadOutcome::Read);
            EXPECT_EQ(file.text, text);
        }
    }
}

TEST(ReadRegularFile, TellsWhatIsNotRead) {
    const quor::test::TemporaryFolder folder;
    folder.write("file", "1234567890");
    std::filesystem::create_symlink(folder / "file", folder / "link");
    std::filesystem::create_symlink(folder / "circle", folder / "circle");
    std::filesystem::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const struct {
        const char* name;
        ReadOutcome outcome;
    } files[] = {
        {"file", ReadOutcome::TooLarge},        {"link", ReadOutcome::Unreadable},    {"circle", ReadOutcome::Unreadable},
        {"folder", ReadOutcome::NotRegular},    {"pipe", ReadOutcome::NotRegular},    {"nothing", ReadOutcome::Missing},
        {"nowhere/file", ReadOutcome::Missing}, {"file/below", ReadOutcome::Missing},
    };
    for (const auto& each : files) {
        const ReadFile file = read_regular_file((folder / each.name).string(), 9);
        EXPECT_EQ(file.outcome, each.outcome) << each.name;
        EXPECT_EQ(file.text, "") << each.name;
    }
    EXPECT_EQ(read_regular_file("", 9).outcome, ReadOutcome::Missing);
    EXPECT_EQ(read_regular_file("/dev/zero", 9).outcome, ReadOutcome::NotRegular);
    EXPECT_EQ(read_regular_file(std::string(5000, 'x'), 9).outcome, ReadOutcome::Missing);
}

TEST(ReadRegularFile, DoesNotReadWhatItMayNot) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser may read everything";
    }
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("f", "x");
    ASSERT_EQ(::chmod(path.c_str(), 0), 0);
    EXPECT_EQ(read_regular_file(path, 9).outcome, ReadOutcome::Unreadable);
}

}  // namespace
}  // namespace quor::core::fs
