// Next jobs of real outputs, where QUOR_GJF_REAL_OUTPUTS names a folder of them: with the job files beside them in its
// folder "jobs", and without. Method, basis set, charge and geometry are those that Gaussian printed, and nothing is lost
// unsaid.
#include <gjf/core/check/checker.hpp>
#include <gjf/core/job/positions.hpp>
#include <gjf/core/next/next_job.hpp>
#include <gjf/core/next/output_facts.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/text.hpp>

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace quor::input::gaussian;
namespace fs = std::filesystem;

std::string first_field(const JobFile& file, const char* name) {
    const FieldValue value = field_value(file, 0, *find_job_field(name));
    return value.known && !value.texts.empty() ? to_lower_copy(value.texts[0]) : std::string();
}

bool is_at(const JobFile& file, const OutputGeometry& geometry) {
    std::vector<OutputAtom> atoms;
    std::copy_if(geometry.atoms.begin(), geometry.atoms.end(), std::back_inserter(atoms),
                 [](const OutputAtom& atom) { return atom.number >= 0; });
    std::vector<Position> places;
    for (const AtomPosition& atom : positions(file.jobs()[0].job)) {
        if (atom.position && atom.species.kind != SpeciesKind::Dummy) {
            places.push_back(*atom.position);
        }
    }
    bool same = places.size() == atoms.size();
    // Distances, since a Z-matrix stands in a frame of its own.
    for (std::size_t i = 1; same && i < places.size(); ++i) {
        const std::size_t j = i > 3 ? i % 3 : i - 1;
        double here = 0;
        double there = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            here += std::pow(places[i][axis] - places[j][axis], 2);
            there += std::pow(atoms[i].position[axis] - atoms[j].position[axis], 2);
        }
        same = std::abs(std::sqrt(here) - std::sqrt(there)) < 1e-5;
    }
    return same;
}

// What each new job must be, whatever it is for.
void expect_sound(const OldCalculation& old, const OutputFacts& facts, const NewJob& made, const std::string& what) {
    const std::string about = old.output_path + ' ' + what + '\n' + made.text.substr(0, 1500);
    for (const Finding& finding : check_text(made.text)) {
        EXPECT_NE(finding.severity, Severity::Error) << finding.message << '\n' << about;
    }
    const JobFile file("-", made.text);
    ASSERT_FALSE(file.jobs().empty()) << about;
    const std::string printed = old.diagnosis.summary.route + "\n\nt\n\n0 1\nH 0 0 0\n\n";
    const JobFile route("-", printed);
    EXPECT_EQ(first_field(file, "method"), first_field(route, "method")) << about;
    EXPECT_EQ(first_field(file, "basis"), first_field(route, "basis")) << about;
    if (const OutputCharge* const charge = old.diagnosis.summary.total_charge()) {
        EXPECT_EQ(first_field(file, "charge"), std::to_string(charge->charge)) << about;
        EXPECT_EQ(first_field(file, "multiplicity"), std::to_string(charge->multiplicity)) << about;
    }
    if (what == "displace" || what == "scan-ts" || !facts.first) {
        return;
    }
    const OutputSummary& summary = old.diagnosis.summary;
    EXPECT_TRUE(is_at(file, *facts.first) || (summary.last && is_at(file, summary.last->geometry)) ||
                (summary.best && is_at(file, summary.best->geometry)))
        << about;
}

// Each line behind the molecule of the old job is in the new one, or its section is named as gone.
void expect_nothing_lost(const OldCalculation& old, const NewJob& made, const std::string& what) {
    const JobFile file("-", old.job_text);
    for (const JobReading& job : file.jobs()) {
        for (const SectionPlace& section : job.places.sections) {
            const std::string text(section.lines.in(old.job_text));
            const bool is_named = std::any_of(made.remarks.begin(), made.remarks.end(), [](const std::string& remark) {
                return remark.find("section") != std::string::npos && remark.find(" go") != std::string::npos;
            });
            EXPECT_TRUE(made.text.find(text) != std::string::npos || is_named) << old.output_path << ' ' << what << '\n'
                                                                               << text;
        }
        const std::string title(job.places.title.in(old.job_text));
        EXPECT_NE(made.text.find(title), std::string::npos) << old.output_path << ' ' << what;
    }
}

std::size_t try_all(const std::string& path, bool is_echo) {
    std::size_t made = 0;
    const OldCalculation old = read_old_calculation(path);
    const OutputFacts facts = read_output_facts(path);
    EXPECT_EQ(old.job_text.empty(), is_echo) << path;
    const auto look_at = [&](const std::string& what, const std::function<std::vector<NewJob>()>& make) {
        try {
            for (const NewJob& job : make()) {
                expect_sound(old, facts, job, what);
                if (!is_echo) {
                    expect_nothing_lost(old, job, what);
                }
                ++made;
            }
        } catch (const NextJobRefused& refused) {
            EXPECT_STRNE(refused.what(), "") << path << ' ' << what;
        }
    };
    for (const char* const to : {"freq", "ts", "irc", "sp", "scan-ts", "displace", "restart"}) {
        NextWish wish;
        wish.to = to;
        look_at(to, [&] { return next_jobs(old, wish); });
    }
    look_at("retry", [&] { return retry_jobs(old, {}); });
    return made;
}

TEST(RealFiles, NextJobsOfOutputsLoseNothingAndStayAtTheirLevel) {
    const char* const folder = std::getenv("QUOR_GJF_REAL_OUTPUTS");
    if (folder == nullptr) {
        GTEST_SKIP() << "QUOR_GJF_REAL_OUTPUTS names no folder";
    }
    const fs::path work = fs::temp_directory_path() / ("real_jobs_test_" + std::to_string(getpid()));
    fs::create_directories(work / "echo");
    std::size_t with_job = 0;
    std::size_t echoed = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".gz")) {
            continue;
        }
        const std::string stem = entry.path().stem().stem().string();
        fs::create_symlink(entry.path(), work / "echo" / name);
        echoed += try_all((work / "echo" / name).string(), true);
        for (const char* const extension : {".gjf", ".com", ".in"}) {
            const fs::path job = fs::path(folder) / "jobs" / (stem + extension);
            if (fs::exists(job)) {
                fs::create_symlink(entry.path(), work / name);
                fs::copy_file(job, work / (stem + (extension == std::string(".in") ? ".inp" : extension)));
                with_job += try_all((work / name).string(), false);
            }
        }
    }
    fs::remove_all(work);
    EXPECT_GE(with_job, 20U);
    EXPECT_GE(echoed, 120U);
}

}  // namespace
