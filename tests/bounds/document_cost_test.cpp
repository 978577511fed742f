// Bounds what a document of many atoms costs, told in its own text: in bytes of heap a byte, in copies and in readings.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "cost.hpp"

namespace quor::test {
namespace {

using namespace input::gaussian;

constexpr double heap_limit = 13;     // bytes a byte of text, right after opening
constexpr double places_limit = 0.5;  // bytes a byte of text, of atoms
constexpr double oniom_places_limit = 1.5;
constexpr double check_limit = 3;          // readings, the one that a check makes counted
constexpr double copies_limit = 3;         // for writing what was not changed
constexpr double readings_limit = 1.6;     // for writing one moved atom: the new text is read once
constexpr double other_peak_limit = 1.01;  // texts, at the peak of writing what was not changed

// Returns a job whose atom lines are as short as usual ones are.
std::string job_of_many_atoms() {
    std::string text = "# hf/sto-3g\n\nt\n\n0 1\n";
    for (int i = 0; i < 100'000; ++i) {
        char line[64];
        std::snprintf(line, sizeof line, " C    %12.6f %12.6f %12.6f\n", i % 997 * 0.37, i % 991 * 0.11, i % 1999 * -0.05);
        text += line;
    }
    return text + "\n";
}

double seconds_of(const std::function<void()>& run) {
    const double start = thread_seconds();
    run();
    return thread_seconds() - start;
}

// Divides the shortest times of two runs. They take turns, so that what else the machine does concerns both.
double ratio_of(int turns, const std::function<void()>& run, const std::function<void()>& unit) {
    double shortest = 1e9;
    double shortest_unit = 1e9;
    for (int turn = 0; turn < turns; ++turn) {
        shortest_unit = std::min(shortest_unit, seconds_of(unit));
        shortest = std::min(shortest, seconds_of(run));
    }
    return shortest / shortest_unit;
}

TEST(DocumentCost, IsOneJobInMemory) {
    const std::string text = job_of_many_atoms();
    GJFParser::parse_string("# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n");  // the vocabulary stays for the life of the process
    const std::size_t before = live_bytes();
    const GJFDocument document(text);
    const double heap = static_cast<double>(live_bytes() - before) / static_cast<double>(text.size());
    std::cout << "heap: " << heap << " bytes a byte of text\n";
    EXPECT_LT(heap, heap_limit);
}

// What a reading with places holds beside the job.
double places_of(const std::string& text) {
    GJFParser::parse_string(text);
    const std::size_t before = live_bytes();
    const GJFData job = GJFParser::parse_string(text);
    const std::size_t of_job = live_bytes() - before;
    const std::vector<JobReading> readings = read_jobs_with_layout(text);
    return static_cast<double>(live_bytes() - before - 2 * of_job) / static_cast<double>(text.size());
}

TEST(DocumentCost, OfPlacesIsAFractionOfTheText) {
    const double cartesian = places_of(job_of_many_atoms());
    std::string layers = "# oniom(hf/sto-3g:uff) geom=connectivity\n\nt\n\n0 1 0 1 0 1\n";
    std::string bonds = "\n";
    for (int i = 0; i < 20'000; ++i) {
        layers += i % 2 == 0 ? "C-CT-0.115100 0 1.000000 2.000000 3.000000 H\n" : "H-HC 0 1.5 2.5 3.5 L H-HC 1 \n";
        bonds += " " + std::to_string(i + 1) + (i % 2 == 0 ? " " + std::to_string(i + 2) + " 1.0\n" : "\n");
    }
    const double oniom = places_of(layers + bonds + "\n");
    std::cout << "places: " << cartesian << " bytes a byte of text, ONIOM " << oniom << '\n';
    EXPECT_LT(cartesian, places_limit);
    EXPECT_LT(oniom, oniom_places_limit);
}

TEST(DocumentCost, OfTheTextInCIsPaidOnce) {
    const std::string text = job_of_many_atoms();
    quor_gjf_document* document = gjf_document_create_from_string(text.c_str());
    gjf_editor_set_charge_and_spin(gjf_document_job(document, 0), 1, 2);
    std::string buffer(text.size() + 100, '?');
    const auto copy = [&] { gjf_document_to_string(document, 0, buffer.data(), static_cast<int>(buffer.size())); };
    const double times = ratio_of(
        5,
        [&] {
            gjf_document_text_size(document, 0);
            copy();
        },
        copy);
    gjf_document_destroy(document);
    std::cout << "size and text: " << times << " texts\n";
    EXPECT_LT(times, 1.3);
}

// Atoms as far apart as those of a solvent are, so that no check stops at the first ten faults.
TEST(DocumentCost, OfACheckIsAFewReadings) {
    std::string text = "# hf/sto-3g\n\nt\n\n0 1\n";
    for (int i = 0; i < 27'000; ++i) {
        char line[64];
        std::snprintf(line, sizeof line, " %c    %12.6f %12.6f %12.6f\n", "CHON"[i % 4], i % 30 * 1.6, i / 30 % 30 * 1.6,
                      i / 900 * 1.6);
        text += line;
    }
    text += "\n";
    const double readings = ratio_of(
        5, [&] { check_text(text); }, [&] { read_jobs_with_layout(text); });
    std::cout << "check: " << readings << " readings\n";
    EXPECT_LT(readings, check_limit);
}

TEST(DocumentCost, IsACopyWithoutAnEdit) {
    const std::string text = job_of_many_atoms();
    const GJFDocument document(text);
    restart_peak();
    const std::size_t before = live_bytes();
    EXPECT_EQ(document.to_text(), text);
    EXPECT_LT(static_cast<double>(peak_bytes() - before), other_peak_limit * static_cast<double>(text.size()));
    std::size_t size = 0;
    const double copies = ratio_of(
        20, [&] { size += document.to_text().size(); }, [&] { size += std::string(text).size(); });
    std::cout << "unchanged: " << copies << " copies\n";
    EXPECT_LT(copies, copies_limit);
    EXPECT_EQ(size, 40 * text.size());
}

TEST(DocumentCost, IsLittleMoreThanAReadingWithOneAtomMoved) {
    const std::string text = job_of_many_atoms();
    GJFDocument document(text);
    document.job(0).translate_atoms({500}, 1, 2, 3);
    EXPECT_NE(document.to_text(), text);
    const double readings = ratio_of(
        5, [&] { document.to_text(); }, [&] { read_jobs_with_layout(text); });
    std::cout << "one atom moved: " << readings << " readings\n";
    EXPECT_LT(readings, readings_limit);
}

}  // namespace
}  // namespace quor::test
