// The checker measured on jobs: faults that people make, of which most must be found where they are, and valid jobs, which
// must raise nothing. Both are edits of few jobs, in tables.
//
// The tables were written by what goes wrong and by what Gaussian takes, not by what the checker knows; so some faults are
// not found. They are listed when the test runs alone with QUOR_GJF_LIST_FAULTS set.
#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "../../support/files.hpp"

using namespace quor::input::gaussian;

namespace {

const std::string folder = std::string(QUOR_GJF_SOURCE_DIR) + "/tests/unit/check/jobs/";

// What of the faults must be found, in percent: a warning or an error at the line, and an error where Gaussian stops.
constexpr std::size_t least_found = 95;
constexpr std::size_t least_stopped = 87;

// Jobs by name, each behind a line "=== NAME".
std::map<std::string, std::string> jobs_in(const std::string& file) {
    std::map<std::string, std::string> jobs;
    std::istringstream text(quor::test::bytes_of(folder + file));
    std::string name;
    for (std::string line; std::getline(text, line);) {
        if (line.rfind("=== ", 0) == 0) {
            name = line.substr(4);
        } else {
            jobs[name] += line + "\n";
        }
    }
    return jobs;
}

std::string unescaped(std::string text) {
    for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos; ++at) {
        text.replace(at, 2, "\n");
    }
    return text;
}

// A row of a table: the fields, and the job that comes out.
struct Edit {
    std::vector<std::string> fields;
    std::string job;
    std::size_t line = 0;  // where the edit begins
};

std::size_t line_of(const std::string& text, std::size_t at) {
    return static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n')) + 1;
}

std::vector<Edit> edits_in(const std::string& file, std::size_t columns) {
    std::map<std::string, std::string> bases = jobs_in("bases.txt");
    bases.merge(jobs_in("further_bases.txt"));
    std::istringstream text(quor::test::bytes_of(folder + file));
    std::vector<Edit> edits;
    std::string row;
    std::getline(text, row);  // the names of the columns
    while (std::getline(text, row)) {
        Edit edit;
        for (std::size_t begin = 0; begin <= row.size();) {
            const std::size_t end = std::min(row.find('\t', begin), row.size());
            edit.fields.push_back(row.substr(begin, end - begin));
            begin = end + 1;
        }
        edit.fields.resize(columns);
        const auto base = bases.find(edit.fields[0]);
        const std::string old = unescaped(edit.fields[1]);
        const std::size_t at = base == bases.end() ? std::string::npos : base->second.find(old);
        if (at == std::string::npos) {
            ADD_FAILURE() << "nothing to replace: " << row;
            continue;
        }
        edit.line = line_of(base->second, at);
        edit.job = base->second;
        edit.job.replace(at, old.size(), unescaped(edit.fields[2]));
        edits.push_back(std::move(edit));
    }
    return edits;
}

bool is_found(const std::vector<Finding>& findings, std::size_t first, std::size_t last, Severity least) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
        return finding.severity >= least && finding.line >= first && finding.line <= last;
    });
}

void expect_quiet(const std::string& name, const std::string& job) {
    for (const Finding& finding : check_text(job)) {
        EXPECT_EQ(finding.severity, Severity::Note)
            << name << ": " << finding.line << ": " << finding.message << " [" << finding.code << "]\n"
            << job;
    }
}

TEST(JobTables, ValidJobsRaiseNothing) {
    std::size_t count = 0;
    for (const char* file : {"bases.txt", "further_bases.txt", "valid.txt"}) {
        for (const auto& [name, job] : jobs_in(file)) {
            expect_quiet(name, job);
            ++count;
        }
    }
    for (const Edit& edit : edits_in("valid.tsv", 3)) {
        expect_quiet(edit.fields[1], edit.job);
        ++count;
    }
    EXPECT_GE(count, 200U);
}

TEST(JobTables, FaultsAreFoundAtTheirLine) {
    const std::vector<Edit> faults = edits_in("faults.tsv", 6);
    ASSERT_GE(faults.size(), 300U);
    const bool is_listed = std::getenv("QUOR_GJF_LIST_FAULTS") != nullptr;
    std::size_t found = 0;
    std::size_t stops = 0;
    std::size_t stopped = 0;
    for (const Edit& fault : faults) {
        // "end" is the last line that is not blank, or one behind it; numbers count from where the edit begins.
        const bool at_end = fault.fields[3] == "end";
        const std::size_t last_text = line_of(fault.job, fault.job.find_last_not_of(" \n"));
        const std::size_t first = at_end ? last_text : fault.line + static_cast<std::size_t>(std::stoi(fault.fields[3]));
        const std::size_t last = at_end ? last_text + 3 : first;
        const bool is_stop = fault.fields[4] == "stops";
        const std::vector<Finding> findings = check_text(fault.job);
        const bool is_this = is_found(findings, first, last, Severity::Warning);
        const bool is_error = is_found(findings, first, last, Severity::Error);
        found += is_this;
        stops += is_stop;
        stopped += is_stop && is_error;
        if (is_listed && (!is_this || (is_stop && !is_error))) {
            std::cout << (is_this ? "no error" : "not found") << " at " << first << ": " << fault.fields[0] << ": "
                      << fault.fields[1] << " -> " << fault.fields[2] << " (" << fault.fields[5] << ")\n";
        }
    }
    std::cout << found << " of " << faults.size() << " found, " << stopped << " of " << stops << " that stop are errors\n";
    EXPECT_GE(100 * found, least_found * faults.size());
    EXPECT_GE(100 * stopped, least_stopped * stops);
}

}  // namespace
