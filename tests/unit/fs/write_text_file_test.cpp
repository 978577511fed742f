// Writing whole files: what is written, what is kept, and that a failure leaves nothing behind.
#include <core/fs/write_text_file.hpp>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "../../support/files.hpp"

namespace quor::core::fs {
namespace {

namespace stdfs = std::filesystem;
using quor::test::bytes_of;
using quor::test::entries_in;

class WriteTextFile : public ::testing::Test {
   protected:
    const quor::test::TemporaryFolder temporary;
    const stdfs::path folder = temporary.path();
};

TEST_F(WriteTextFile, WritesBytesAsGiven) {
    const std::string texts[] = {"", "a", "a\r\nb\n", std::string("\0x\xff\0", 4), std::string(3'000'000, 'x')};
    for (const std::string& text : texts) {
        ASSERT_TRUE(write_text_file(folder / "f", text));
        EXPECT_EQ(bytes_of(folder / "f"), text);
        EXPECT_EQ(entries_in(folder), 1u);
    }
}

TEST_F(WriteTextFile, KeepsThePermissionsOfTheTarget) {
    const stdfs::path path = folder / "f";
    ASSERT_TRUE(write_text_file(path, "old"));
    for (const mode_t mode : {0600u, 0640u, 0755u, 0444u}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        ASSERT_TRUE(write_text_file(path, "new"));
        struct stat status {};
        ASSERT_EQ(::stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}

TEST_F(WriteTextFile, MakesNewFilesUnderTheProcessMask) {
    const mode_t mask = ::umask(027);
    ASSERT_TRUE(write_text_file(folder / "f", "x"));
    ::umask(mask);
    struct stat status {};
    ASSERT_EQ(::stat((folder / "f").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(WriteTextFile, WritesThroughLinksToTheFileTheyPointTo) {
    stdfs::create_directory(folder / "sub");
    ASSERT_TRUE(write_text_file(folder / "sub/target", "old"));
    stdfs::create_symlink("sub/target", folder / "relative");
    stdfs::create_symlink(folder / "relative", folder / "absolute");
    ASSERT_TRUE(write_text_file(folder / "absolute", "new"));
    EXPECT_EQ(bytes_of(folder / "sub/target"), "new");
    EXPECT_TRUE(stdfs::is_symlink(folder / "relative"));
    EXPECT_TRUE(stdfs::is_symlink(folder / "absolute"));
}

TEST_F(WriteTextFile, MakesTheFileThatADanglingLinkPointsTo) {
    stdfs::create_symlink("later", folder / "link");
    ASSERT_TRUE(write_text_file(folder / "link", "x"));
    EXPECT_EQ(bytes_of(folder / "later"), "x");
    EXPECT_TRUE(stdfs::is_symlink(folder / "link"));
}

TEST_F(WriteTextFile, WritesPipesDirectly) {
    const stdfs::path pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = bytes_of(pipe); });
    EXPECT_TRUE(write_text_file(pipe, "through"));
    reader.join();
    EXPECT_EQ(received, "through");
    EXPECT_TRUE(stdfs::is_fifo(pipe));
    EXPECT_EQ(entries_in(folder), 1u);
}

TEST_F(WriteTextFile, FailsWithoutATraceWhereNothingCanBeWritten) {
    ASSERT_TRUE(write_text_file(folder / "file", "old"));
    stdfs::create_directory(folder / "sub");
    stdfs::create_symlink("loop", folder / "loop");
    const stdfs::path bad[] = {
        "",         folder / "missing/f", folder / "file/f", folder / "sub", folder / "loop", folder / std::string(300, 'n'),
        "/dev/full"};
    for (const stdfs::path& path : bad) {
        EXPECT_FALSE(write_text_file(path, "new")) << path;
    }
    EXPECT_EQ(bytes_of(folder / "file"), "old");
    EXPECT_EQ(entries_in(folder), 3u);
    EXPECT_TRUE(stdfs::is_empty(folder / "sub"));
}

TEST_F(WriteTextFile, GivesOneOfTwoTextsToThreadsThatRace) {
    const stdfs::path path = folder / "f";
    const std::string a(100'000, 'a');
    const std::string b(200'000, 'b');
    const auto write = [&](const std::string& text) {
        for (int i = 0; i < 50; ++i) {
            EXPECT_TRUE(write_text_file(path, text));
        }
    };
    std::thread first(write, a);
    std::thread second(write, b);
    first.join();
    second.join();
    const std::string last = bytes_of(path);
    EXPECT_TRUE(last == a || last == b);
    EXPECT_EQ(entries_in(folder), 1u);
}

}  // namespace
}  // namespace quor::core::fs
