// The C interface to documents: each function's results, each message, and texts that are never older than their edits.
#include <gjf/c_api/quor_g16_gjf.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../support/files.hpp"

namespace {

struct DestroyDocument {
    void operator()(quor_gjf_document* document) const { gjf_document_destroy(document); }
};
using Document = std::unique_ptr<quor_gjf_document, DestroyDocument>;

const char* const document_text =
    "%Mem = 1GB ! keep\n#P  HF/STO-3G\n\nt\n\n0 1\nH   0.0 0.0 0.00\nH   0.0 0.0 0.74\n\n--Link1--\n# hf/sto-3g\n\nb\n\n0 "
    "1\nHe 0 0 0\n\n";

std::string text_of(quor_gjf_document* document) {
    const int size = gjf_document_text_size(document, 0);
    EXPECT_GT(size, 0);
    std::string buffer(static_cast<std::size_t>(std::max(size, 1)), '?');
    EXPECT_EQ(gjf_document_to_string(document, 0, buffer.data(), size), 0);
    EXPECT_EQ(buffer.back(), '\0');
    return buffer.c_str();
}

// The text that is told by its size is kept for the copy, and never for longer than it is true.
TEST(CDocument, TellsTheTextAsItIsWhenItIsCopied) {
    const Document document(gjf_document_create_from_string(document_text));
    quor_gjf_editor* job = gjf_document_job(document.get(), 0);
    ASSERT_NE(job, nullptr);
    std::string buffer(4096, '?');
    const int size = static_cast<int>(buffer.size());
    const auto copied = [&](int force) {
        EXPECT_EQ(gjf_document_to_string(document.get(), force, buffer.data(), size), 0);
        return std::string(buffer.c_str());
    };
    const int unedited = gjf_document_text_size(document.get(), 0);
    gjf_editor_set_charge_and_spin(job, -1, 2);
    EXPECT_NE(copied(0).find("-1 2"), std::string::npos);
    EXPECT_EQ(gjf_document_text_size(document.get(), 0), unedited + 1);
    EXPECT_EQ(copied(1), copied(0));
    EXPECT_EQ(gjf_document_text_size(document.get(), 1), unedited + 1);
    gjf_editor_set_charge_and_spin(job, 0, 1);
    EXPECT_EQ(gjf_document_to_string(document.get(), 1, buffer.data(), 3), -1) << "too small, and asked for again";
    EXPECT_EQ(copied(1), document_text);
    EXPECT_EQ(gjf_document_text_size(document.get(), 0), unedited);
}

TEST(CDocument, ChangesNothingButWhatWasEdited) {
    const Document document(gjf_document_create_from_string(document_text));
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(gjf_document_job_count(document.get()), 2);
    EXPECT_EQ(text_of(document.get()), document_text);
    quor_gjf_editor* job = gjf_document_job(document.get(), 0);
    ASSERT_NE(job, nullptr);
    EXPECT_EQ(gjf_document_job(document.get(), 0), job);
    EXPECT_NE(gjf_document_job(document.get(), 1), job);
    gjf_editor_set_freeze_by_element(job, "H", -1);
    gjf_editor_destroy(job);  // the document keeps it
    std::string wanted = document_text;
    for (const char* atom : {"H   0.0 0.0 0.00", "H   0.0 0.0 0.74"}) {
        wanted.replace(wanted.find(atom), 5, "H -1 0");
    }
    EXPECT_EQ(text_of(document.get()), wanted);
    EXPECT_EQ(gjf_editor_get_atom_freeze(job, 0), -1);
}

TEST(CDocument, SavesOnlyChanges) {
    const quor::test::TemporaryFolder folder;
    const std::string path = folder.write("document.gjf", document_text);
    const Document document(gjf_document_open(path.c_str()));
    ASSERT_NE(document, nullptr) << gjf_get_last_error();
    EXPECT_EQ(gjf_document_save(document.get(), 0), 0);
    gjf_editor_set_charge_and_spin(gjf_document_job(document.get(), 1), 2, 1);
    EXPECT_EQ(gjf_document_save(document.get(), 0), 1);
    EXPECT_EQ(gjf_document_save(document.get(), 0), 0);
    std::ofstream(path, std::ios::app) << "\n";
    gjf_editor_set_charge_and_spin(gjf_document_job(document.get(), 1), 0, 1);
    EXPECT_EQ(gjf_document_save(document.get(), 0), -1);
    EXPECT_EQ(std::string(gjf_document_last_error(document.get())),
              "GJF Parse Error: File has changed since it was opened: " + path);
    EXPECT_EQ(gjf_document_save(document.get(), 1), 1);
    EXPECT_EQ(quor::test::bytes_of(path), document_text);
}

TEST(CDocument, KeepsTheTextOfAJobThatCannotBeRead) {
    const std::string broken = "# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0x\n\n--Link1--\n";
    const std::string good = "# hf/sto-3g\n\nt\n\n0 1\nHe 0 0 0\n\n";
    const Document document(gjf_document_create_from_string((broken + good).c_str()));
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(gjf_document_job_count(document.get()), 2);
    EXPECT_EQ(gjf_document_job(document.get(), 0), nullptr);
    EXPECT_EQ(std::string(gjf_document_last_error(document.get())),
              "GJF Parse Error: Job 1: GJF Parse Error: Invalid coordinate value: 0x");
    char reason[64] = "x";
    EXPECT_EQ(gjf_document_readable(document.get(), 0), 0);
    EXPECT_EQ(gjf_document_fault(document.get(), 0, reason, sizeof reason), 6);
    EXPECT_STREQ(reason, "Invalid coordinate value: 0x");
    EXPECT_EQ(gjf_document_readable(document.get(), 1), 1);
    EXPECT_EQ(gjf_document_fault(document.get(), 1, reason, sizeof reason), 0);
    EXPECT_STREQ(reason, "");
    EXPECT_EQ(gjf_document_fault(document.get(), 0, reason, 8), -1);
    EXPECT_STREQ(gjf_document_last_error(document.get()), "fault output buffer is too small");
    gjf_editor_set_charge_and_spin(gjf_document_job(document.get(), 1), 2, 3);
    EXPECT_EQ(text_of(document.get()), broken + "# hf/sto-3g\n\nt\n\n2 3\nHe 0 0 0\n\n");
}

TEST(CDocument, ReportsEveryFailure) {
    const Document document(gjf_document_create_from_string(document_text));
    char buffer[8];
    struct Case {
        std::function<bool()> fails;
        std::string message;
    };
    quor_gjf_document* const none = nullptr;
    const Case cases[] = {
        {[] { return gjf_document_create_from_string(nullptr) == nullptr; }, "content is null"},
        {[] { return gjf_document_create_from_string("no job") == nullptr; },
         "GJF Parse Error: Job 1: GJF Parse Error: Invalid control line: no job"},
        {[] { return gjf_document_create_from_string("") == nullptr; }, "GJF Parse Error: No valid jobs found in input"},
        {[] { return gjf_document_open(nullptr) == nullptr; }, "filename is null"},
        {[] { return gjf_document_open("/nowhere/job.gjf") == nullptr; },
         "GJF Parse Error: Cannot open file: /nowhere/job.gjf"},
        {[&] { return gjf_document_job_count(none) == -1; }, "document handle is null"},
        {[&] { return gjf_document_job(none, 0) == nullptr; }, "document handle is null"},
        {[&] { return gjf_document_text_size(none, 0) == -1; }, "document handle is null"},
        {[&] { return gjf_document_to_string(none, 0, buffer, 8) == -1; }, "document handle is null"},
        {[&] { return gjf_document_save(none, 0) == -1; }, "document handle is null"},
        {[&] { return gjf_document_save_as(none, "x", 0) == -1; }, "document handle is null"},
        {[&] { return gjf_document_job(document.get(), -1) == nullptr; }, "job index must not be negative"},
        {[&] { return gjf_document_readable(none, 0) == -1; }, "document handle is null"},
        {[&] { return gjf_document_fault(none, 0, buffer, 8) == -1; }, "document handle is null"},
        {[&] { return gjf_document_fault(document.get(), -1, buffer, 8) == -1; }, "job index must not be negative"},
        {[&] { return gjf_document_fault(document.get(), 0, nullptr, 8) == -1; }, "fault output buffer is invalid"},
        {[&] { return gjf_document_readable(document.get(), 2) == -1; },
         "GJF Parse Error: Invalid job index: 2 (total jobs: 2)"},
        {[&] { return gjf_document_job(document.get(), 2) == nullptr; },
         "GJF Parse Error: Invalid job index: 2 (total jobs: 2)"},
        {[&] { return gjf_document_to_string(document.get(), 0, nullptr, 8) == -1; }, "GJF output buffer is invalid"},
        {[&] { return gjf_document_to_string(document.get(), 0, buffer, 0) == -1; }, "GJF output buffer is invalid"},
        {[&] { return gjf_document_to_string(document.get(), 0, buffer, 8) == -1; }, "GJF output buffer is too small"},
        {[&] { return gjf_document_save(document.get(), 0) == -1; },
         "GJF Parse Error: This document was not opened from a file"},
        {[&] { return gjf_document_save_as(document.get(), nullptr, 0) == -1; }, "filename is null"},
        {[&] { return gjf_document_save_as(document.get(), "/nowhere/x.gjf", 0) == -1; },
         "GJF Parse Error: Cannot write file: /nowhere/x.gjf"},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(c.fails()) << c.message;
        EXPECT_EQ(gjf_get_last_error(), c.message);
    }
    EXPECT_EQ(gjf_document_job_count(document.get()), 2);
    EXPECT_STREQ(gjf_document_last_error(document.get()), "");
    gjf_document_destroy(nullptr);
}

}  // namespace
