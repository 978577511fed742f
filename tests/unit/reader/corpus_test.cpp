// Real job files, where a collection of them is named: each reads with the atoms and jobs that its table expected.tsv tells.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "../../support/real_files.hpp"

namespace quor::input::gaussian {
namespace {

std::size_t atoms_of(const GeomSection& geom) {
    if (geom.format == GeometryFormat::ZMatrix) {
        return geom.zmatrix_entries.size();
    }
    return static_cast<std::size_t>(std::count_if(geom.atoms.begin(), geom.atoms.end(), [](const AtomCoord& atom) {
        return atom.info.element != "Tv" && atom.info.element != "TV";  // translation vectors are no atoms
    }));
}

TEST(RealFiles, ReadWithTheirAtomsAndJobs) {
    const std::filesystem::path folder = quor::test::real_files_folder();
    if (folder.empty()) {
        GTEST_SKIP() << quor::test::no_real_files;
    }
    std::ifstream table(folder / "expected.tsv");
    std::string line;
    std::getline(table, line);  // heading
    std::size_t files = 0;
    while (std::getline(table, line)) {
        const std::size_t first = line.find('\t');
        const std::size_t second = line.find('\t', first + 1);
        const std::string name = line.substr(0, first);
        const std::string atoms = line.substr(first + 1, second - first - 1);
        try {
            const GJFMultiData file = GJFParser::parse_file_multi(folder / name);
            EXPECT_EQ(std::to_string(file.jobs.size()), line.substr(second + 1)) << name;
            EXPECT_EQ(std::to_string(atoms_of(file.jobs.front().geom)), atoms.empty() ? "0" : atoms) << name;
        } catch (const std::exception& error) {
            ADD_FAILURE() << name << ": " << error.what();
        }
        ++files;
    }
    EXPECT_GE(files, 100u);
}

}  // namespace
}  // namespace quor::input::gaussian
