// Where outputs come from: plain or compressed, whole, cut off or damaged, and what is no file; lines of any length.
#include <gjf/core/output/output_lines.hpp>
#include <gjf/core/output/output_source.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;

const std::string content = " %chk=a\n %chk=a\n %chk=a\n";

// `content` as gzip and xz write it, in hexadecimal digits.
const std::string in_gzip = "1f8b08000000000002ff53504dcec8b64de45240a3017aeaf3da18000000";
const std::string in_xz =
    "fd377a585a000004e6d6b4460200210116000000742fe5a3e00017000e5d00100948e769e624f9551a134e60000000005d5625e813ff4e2f00012a1"
    "855e1815c1fb6f37d010000000004595a";

std::string bytes(const std::string& digits) {
    std::string text;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        text += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return text;
}

std::string all_of(OutputSource& source, std::size_t piece) {
    std::string text;
    std::vector<char> buffer(piece);
    for (std::size_t count = 0; (count = source.read(buffer.data(), piece)) > 0;) {
        text.append(buffer.data(), count);
    }
    return text;
}

std::string unpacked(const std::string& packed, std::size_t piece = 1000) {
    return all_of(*decompressed(text_source(packed)), piece);
}

std::string problem_of(const std::string& packed) {
    try {
        return "none: " + unpacked(packed);
    } catch (const OutputError& error) {
        return error.what();
    }
}

TEST(OutputSource, GivesPlainAndCompressedBytesAlike) {
    const struct {
        std::string packed;
        std::string text;
    } cases[] = {
        {content, content},
        {"", ""},
        {"x", "x"},
        {"\x1f", "\x1f"},
        {std::string("a\0b", 3), std::string("a\0b", 3)},
        {"\xfd"
         "7zX is no xz",
         "\xfd"
         "7zX is no xz"},
        {bytes(in_gzip), content},
        {bytes(in_gzip) + bytes(in_gzip), content + content},
        {bytes(in_gzip) + std::string(600, '\0'), content},
        {bytes(in_xz), content},
        {bytes(in_xz) + bytes(in_xz), content + content},
    };
    for (const auto& each : cases) {
        for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{1000}}) {
            EXPECT_EQ(unpacked(each.packed, piece), each.text);
        }
    }
}

TEST(OutputSource, RefusesWhatIsCutOffOrDamaged) {
    for (const std::string& whole : {bytes(in_gzip), bytes(in_xz)}) {
        for (std::size_t size = 6; size < whole.size(); ++size) {
            EXPECT_NE(problem_of(whole.substr(0, size)).find("the file ends before its content does"), std::string::npos)
                << size;
        }
        std::string damaged = whole;
        damaged[whole.size() / 2] ^= 0x55;
        EXPECT_NE(problem_of(damaged).find("the file is damaged"), std::string::npos);
    }
}

TEST(OutputSource, OpensFiles) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / "quor_gjf_output_source_test.log";
    for (const std::string& packed : {content, bytes(in_gzip), bytes(in_xz)}) {
        std::ofstream(path, std::ios::binary) << packed;
        EXPECT_EQ(all_of(*open_output(path.string()), 10), content);
    }
    std::filesystem::remove(path);
    const std::pair<std::string, const char*> wrong[] = {{path.string(), "Cannot open file: No such file or directory"},
                                                         {"", "Cannot open file: No such file or directory"},
                                                         {"/", "Cannot open file: Is a directory"}};
    for (const auto& [name, message] : wrong) {
        try {
            open_output(name);
            ADD_FAILURE() << name;
        } catch (const OutputError& error) {
            EXPECT_STREQ(error.what(), message);
        }
    }
}

TEST(OutputLines, CutsAtLineFeedsAlone) {
    const std::string longest(300000, 'x');
    const struct {
        std::string text;
        std::vector<std::string> lines;
        std::size_t last;
    } cases[] = {
        {"", {}, 0},
        {"a", {"a"}, 1},
        {"a\n", {"a"}, 1},
        {"\n\n", {"", ""}, 2},
        {"a\r\nb\rc\n", {"a", "b\rc"}, 2},
        {std::string("a\0\n", 3), {std::string("a\0", 2)}, 1},
        // A line that is longer than the buffer comes in pieces, which count as one.
        {longest + "\nb\n", {longest.substr(0, 131072), longest.substr(0, 131072), longest.substr(0, 37856), "b"}, 2},
    };
    for (const auto& each : cases) {
        const auto source = text_source(each.text);
        OutputLines lines(*source);
        std::vector<std::string> found;
        while (lines.next()) {
            found.emplace_back(lines.line());
        }
        EXPECT_EQ(found, each.lines) << each.text.substr(0, 20);
        EXPECT_EQ(lines.number(), each.last);
    }
}

}  // namespace
