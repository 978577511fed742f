// Saves where the disk fails or files change meanwhile: the old file or the new one, whole, and a message.
#include <gjf/c_api/quor_g16_gjf.h>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "../support/files.hpp"

namespace quor::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* old_text = "the old text";
constexpr uid_t nobody = 65534;

/// A job whose text has some 90 bytes for each atom.
class Job {
   public:
    explicit Job(std::size_t atoms) {
        std::string text = "# hf/sto-3g\n\nsome title\n\n0 1\n";
        for (std::size_t i = 0; i < atoms; ++i) {
            text += "H 0.0 0.0 0.0\n";
        }
        handle_.reset(gjf_editor_create_from_string(text.c_str()));
        std::string buffer(200 * (atoms + 1), '\0');
        gjf_editor_to_string(handle_.get(), buffer.data(), static_cast<int>(buffer.size()));
        written = buffer.c_str();
    }

    int save(const fs::path& path) const { return gjf_editor_save_to_file(handle_.get(), path.c_str()); }
    std::string message() const { return gjf_editor_last_error(handle_.get()); }

    std::string written;

   private:
    std::unique_ptr<quor_gjf_editor, void (*)(quor_gjf_editor*)> handle_{nullptr, gjf_editor_destroy};
};

void expect_refused(const Job& job, const fs::path& path) {
    EXPECT_EQ(job.save(path), -1) << path;
    EXPECT_EQ(job.message(), "GJF Parse Error: Cannot write file: " + path.string());
}

class Disk : public ::testing::Test {
   protected:
    Disk() { temporary.write("f", old_text); }

    const TemporaryFolder temporary;
    const fs::path folder = temporary.path();
};

// Runs a check in a process of its own; tells whether it held.
bool holds_in_child(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(Disk, ThatIsFullKeepsTheOldFile) {
    const fs::path mounted = folder / "small";
    fs::create_directory(mounted);
    if (::mount("none", mounted.c_str(), "tmpfs", 0, "size=64k") != 0) {
        GTEST_SKIP() << "no small disk can be mounted here; the limit of file sizes stands in for it";
    }
    const Job small(3);
    const Job large(2000);
    EXPECT_EQ(small.save(mounted / "f"), 0) << small.message();
    expect_refused(large, mounted / "f");
    EXPECT_EQ(bytes_of(mounted / "f"), small.written);
    EXPECT_EQ(entries_in(mounted), 1u) << "no temporary file stays";
    EXPECT_EQ(small.save(mounted / "g"), 0) << "the room of the failed file is free again";
    EXPECT_EQ(::umount(mounted.c_str()), 0);
}

TEST_F(Disk, WhoseFilesMayNotGrowKeepsTheOldFile) {
    const Job large(2000);
    const bool held = holds_in_child([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{50'000, 50'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return large.save(folder / "f") == -1 && large.message().find("Cannot write file: ") != std::string::npos;
    });
    EXPECT_TRUE(held);
    EXPECT_EQ(bytes_of(folder / "f"), old_text);
    EXPECT_EQ(entries_in(folder), 1u);
}

TEST_F(Disk, ThatIsReadOnlyRefusesWithAMessage) {
    const Job job(3);
    const fs::path target = folder / "f";
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
    const bool held = holds_in_child([&] {
        const bool unprivileged = ::geteuid() != 0 || ::setresuid(nobody, nobody, nobody) == 0;
        const std::string expected = "GJF Parse Error: Cannot write file: ";
        return unprivileged && job.save(target) == -1 && job.message() == expected + target.string() &&
               job.save(folder / "new") == -1;
    });
    fs::permissions(folder, fs::perms::owner_all);
    EXPECT_TRUE(held);
    EXPECT_EQ(bytes_of(target), old_text);
    EXPECT_EQ(entries_in(folder), 1u);
}

TEST_F(Disk, FromWhichTheFileWasRemovedGetsItAgain) {
    const std::unique_ptr<quor_gjf_editor, void (*)(quor_gjf_editor*)> job(
        gjf_editor_create_from_string("# hf\n\nt\n\n0 1\nHe 0.0 0.0 0.0\n"), gjf_editor_destroy);
    ASSERT_EQ(gjf_editor_save_to_file(job.get(), (folder / "f").c_str()), 0);
    const std::string written = bytes_of(folder / "f");
    fs::remove(folder / "f");
    ASSERT_EQ(gjf_editor_save_to_file(job.get(), (folder / "f").c_str()), 0);
    EXPECT_EQ(bytes_of(folder / "f"), written);
    fs::create_directory(folder / "gone");
    fs::remove(folder / "gone");
    EXPECT_EQ(gjf_editor_save_to_file(job.get(), (folder / "gone/f").c_str()), -1);
    EXPECT_EQ(gjf_editor_create_from_file((folder / "gone/f").c_str()), nullptr);
    EXPECT_EQ(std::string(gjf_get_last_error()), "GJF Parse Error: Cannot open file: " + (folder / "gone/f").string());
}

TEST_F(Disk, OnWhichAnotherRemovesTheFileAllTheTimeHoldsItWholeOrNotAtAll) {
    const Job job(50);
    std::atomic<bool> done{false};
    std::size_t seen = 0;
    std::thread remover([&] {
        while (!done) {
            std::error_code ignored;
            const std::string text = bytes_of(folder / "f");
            if (!text.empty() && text != old_text) {
                EXPECT_EQ(text, job.written);
                ++seen;
            }
            fs::remove(folder / "f", ignored);
        }
    });
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(job.save(folder / "f"), 0) << job.message();
    }
    done = true;
    remover.join();
    EXPECT_GT(seen, 0u);
}

TEST_F(Disk, TargetsThatAreNoPlainFiles) {
    const Job job(3);
    fs::create_directory(folder / "folder");
    fs::create_symlink("f", folder / "link");
    fs::create_symlink("later", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(job.save(folder / "link"), 0);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(bytes_of(folder / "f"), job.written);
    EXPECT_EQ(job.save(folder / "dangling"), 0);
    EXPECT_EQ(bytes_of(folder / "later"), job.written);
    for (const char* name : {"folder", "loop", "f/below", ""}) {
        expect_refused(job, *name == '\0' ? fs::path() : folder / name);
    }
    expect_refused(job, "/dev/full");
    EXPECT_EQ(job.save("/dev/null"), 0);
}

TEST_F(Disk, PipesTakeTheTextWhole) {
    const Job job(2000);
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = bytes_of(pipe); });
    EXPECT_EQ(job.save(pipe), 0);
    reader.join();
    EXPECT_EQ(received, job.written);
}

TEST_F(Disk, PipesWhoseReaderGoesAwayRefuseWithoutEndingTheProcess) {
    const Job job(20'000);  // more than a pipe holds
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const bool held = holds_in_child([&] {
        std::signal(SIGPIPE, SIG_DFL);
        std::thread reader([&] {
            const int descriptor = ::open(pipe.c_str(), O_RDONLY);
            char byte = 0;
            [[maybe_unused]] const ssize_t read = ::read(descriptor, &byte, 1);
            ::close(descriptor);
        });
        const int status = job.save(pipe);
        reader.join();
        sigset_t pending;
        sigset_t mask;
        ::sigpending(&pending);
        ::pthread_sigmask(SIG_SETMASK, nullptr, &mask);
        return status == -1 && ::sigismember(&pending, SIGPIPE) == 0 && ::sigismember(&mask, SIGPIPE) == 0;
    });
    EXPECT_TRUE(held);
}

TEST_F(Disk, HoldsTemporaryFilesOfKilledProcesses) {
    const Job job(3);
    // A process that has the number of a killed one meets its leftovers.
    for (int i = 0; i < 600; ++i) {
        std::ofstream(folder / ("f.tmp-" + std::to_string(::getpid()) + "-" + std::to_string(i))) << "half a te";
    }
    EXPECT_EQ(job.save(folder / "f"), 0) << job.message();
    EXPECT_EQ(bytes_of(folder / "f"), job.written);
    EXPECT_EQ(entries_in(folder), 601u) << "what others left is not touched";
}

TEST_F(Disk, TakesTheLongestFileNames) {
    const Job job(3);
    for (const std::size_t length : {240u, 250u, 255u}) {
        const fs::path path = folder / std::string(length, 'n');
        EXPECT_EQ(job.save(path), 0) << length;
        EXPECT_EQ(bytes_of(path), job.written);
    }
    expect_refused(job, folder / std::string(256, 'n'));
    EXPECT_EQ(entries_in(folder), 4u);
}

TEST(Reading, RefusesWhatIsNoFile) {
    for (const char* path : {"/", "/no/such/file", ""}) {
        EXPECT_EQ(gjf_editor_create_from_file(path), nullptr);
        EXPECT_EQ(std::string(gjf_get_last_error()), std::string("GJF Parse Error: Cannot open file: ") + path);
    }
    EXPECT_EQ(gjf_editor_create_from_file("/dev/null"), nullptr);
    EXPECT_EQ(std::string(gjf_get_last_error()), "GJF Parse Error: Empty file or invalid format");
}

}  // namespace
}  // namespace quor::test
