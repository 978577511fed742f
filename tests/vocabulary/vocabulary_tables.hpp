// The vocabulary under test, and the tables in data/ that tell by hand what it must answer.
#pragma once

#include <gjf/core/schema/route_schema_cache.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quor::input::gaussian {

inline std::string vocabulary_path() { return QUOR_GJF_SOURCE_DIR "/resources/schemas/input/gaussian_route.yaml"; }

/// Returns the vocabulary of this tree.
inline const SimpleYAMLParser& vocabulary() {
    static const SchemaCacheEntry entry = load_route_schema_cached(vocabulary_path());
    EXPECT_TRUE(entry.loaded) << vocabulary_path();
    return entry.parser;
}

using TableRow = std::vector<std::string>;

/// Reads the rows of data/`name`.tsv, fields separated by tabs, without its comments. A row with another number of fields
/// fails the test.
inline std::vector<TableRow> read_table(const std::string& name, std::size_t fields) {
    std::vector<TableRow> rows;
    std::ifstream file(QUOR_GJF_SOURCE_DIR "/tests/vocabulary/data/" + name + ".tsv");
    EXPECT_TRUE(file.is_open()) << name;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        TableRow row;
        std::istringstream stream(line);
        for (std::string field; std::getline(stream, field, '\t');) {
            row.push_back(field);
        }
        EXPECT_EQ(row.size(), fields) << name << ": " << line;
        if (row.size() == fields) {
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

}  // namespace quor::input::gaussian
