// Folders are flushed once for all files that were replaced in them, and at the end at the latest.
#include <core/fs/write_text_file.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "../../support/files.hpp"

namespace {

std::atomic<int> folder_flushes{0};
std::atomic<int> file_flushes{0};

}  // namespace

// Stands before the C library's: counts, and flushes as that does.
extern "C" __attribute__((visibility("default"))) int fsync(int descriptor) {
    struct stat status {};
    ++(::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode) ? folder_flushes : file_flushes);
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

namespace quor::core::fs {
namespace {

class FolderFlushing : public ::testing::Test {
   protected:
    FolderFlushing() { folder_flushes = file_flushes = 0; }

    std::string path(const std::string& name) const { return (temporary / name).string(); }

    const quor::test::TemporaryFolder temporary;
};

TEST_F(FolderFlushing, ComesWithEveryFileUnlessItIsLeftForLater) {
    ASSERT_TRUE(write_text_file(path("a"), "x"));
    ASSERT_TRUE(write_text_file(path("b"), "x"));
    EXPECT_EQ(file_flushes, 2);
    EXPECT_EQ(folder_flushes, 2);
    FolderFlushes folders;
    ASSERT_TRUE(write_text_file(path("a"), "y", folders));
    ASSERT_TRUE(write_text_file(path("c"), "y", folders));
    EXPECT_EQ(file_flushes, 4);
    EXPECT_EQ(folder_flushes, 2);
    EXPECT_EQ(quor::test::bytes_of(path("a")), "y");
    folders.flush();
    EXPECT_EQ(folder_flushes, 3);
    folders.flush();
    EXPECT_EQ(folder_flushes, 3);
}

TEST_F(FolderFlushing, ComesOnceForEachFolderAtTheEnd) {
    for (const char* name : {"one", "two", "three"}) {
        std::filesystem::create_directory(temporary / name);
    }
    {
        FolderFlushes folders;
        std::vector<std::thread> threads;
        for (const char* name : {"one", "two", "three", "two"}) {
            threads.emplace_back([&folders, this, name] {
                for (int file = 0; file < 10; ++file) {
                    write_text_file(path(name) + "/f" + std::to_string(file), "x", folders);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(folder_flushes, 0);
    }
    EXPECT_EQ(file_flushes, 40);
    EXPECT_EQ(folder_flushes, 3);
}

TEST_F(FolderFlushing, IsNotWantedWhereNothingWasReplaced) {
    FolderFlushes folders;
    EXPECT_FALSE(write_text_file(path("no/folder"), "x", folders));
    EXPECT_FALSE(write_text_file("", "x", folders));
    EXPECT_FALSE(write_text_file(temporary.path().string(), "x", folders));
    EXPECT_TRUE(write_text_file("/dev/null", "x", folders));
    folders.flush();
    EXPECT_EQ(folder_flushes, 0);
}

}  // namespace
}  // namespace quor::core::fs
