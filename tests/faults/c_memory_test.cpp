// Lets every allocation inside every C function fail: the status is that of a failure, the message says so, the job is as it
// was, and nothing leaks.
#include <gjf/c_api/quor_g16_gjf.h>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "../support/failing_calls.hpp"
#include "../support/files.hpp"

namespace quor::test {
namespace {

constexpr const char* job_text = R"(%mem=a long amount of memory
#p b3lyp/6-31g(d) geom=connectivity opt=(modredundant,maxcycles=100)

a title that is longer than any short text

0 1
C-CT--0.5(Fragment=1,ResName=ALANINE_WITH_A_LONG_NAME) -1 0.123456789012345 0.0 0.0 Hlayer_of_a_long_name
H-HC(Fragment=2) 0 1.0 0.0 0.0 L

1 2 1.0
2

1 2 F

)";

// Small, since a document reads, writes and reads again.
constexpr const char* document_text = "%mem=a long amount of memory\n# hf\n\nt\n\n0 1\nH 0 0 0.123456789012345\n\n";

// The files of these tests, with names that are too long for short strings.
struct Files {
    const TemporaryFolder folder;
    const std::string document = folder / "document_file_of_a_long_name.gjf";
    const std::string input = folder / "input_file_of_a_long_name.gjf";
    const std::string output = folder / "output_file_of_a_long_name.gjf";
};

const Files& files() {
    static const Files all;
    return all;
}

std::string text_of(quor_gjf_editor* job) {
    std::vector<char> buffer(1 << 14);
    EXPECT_EQ(gjf_editor_to_string(job, buffer.data(), static_cast<int>(buffer.size())), 0);
    return buffer.data();
}

std::string text_of(quor_gjf_multi_editor* jobs) {
    std::vector<char> buffer(1 << 15);
    EXPECT_EQ(gjf_multi_editor_to_string(jobs, buffer.data(), static_cast<int>(buffer.size())), 0);
    return buffer.data();
}

/// One handle of each kind, another job, and files to read and to write.
struct Handles {
    Handles() {
        const std::string two_jobs = std::string(job_text) + "--Link1--\n" + job_text;
        job = gjf_editor_create_from_string(job_text);
        jobs = gjf_multi_editor_create_from_string(two_jobs.c_str());
        document = gjf_document_create_from_string(document_text);
        std::ofstream(files().document) << document_text;
        file_document = gjf_document_open(files().document.c_str());
        for (quor_gjf_document* changed : {document, file_document}) {
            gjf_editor_set_freeze_all(gjf_document_job(changed, 0), 7);
        }
    }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
    ~Handles() {
        gjf_editor_destroy(job);
        gjf_multi_editor_destroy(jobs);
        gjf_editor_destroy(made);
        gjf_multi_editor_destroy(made_jobs);
        gjf_document_destroy(document);
        gjf_document_destroy(made_document);
        gjf_document_destroy(file_document);
        std::filesystem::remove(files().document);
    }

    quor_gjf_editor* job;
    quor_gjf_multi_editor* jobs;
    quor_gjf_editor* made = nullptr;
    quor_gjf_multi_editor* made_jobs = nullptr;
    quor_gjf_document* document;
    quor_gjf_document* made_document = nullptr;
    quor_gjf_document* file_document;
    std::array<char, 1 << 14> buffer{};
};

struct Function {
    const char* name;
    bool (*succeeds)(Handles& handles);
};

// Setters tell of failure by their message alone.
template <typename Call>
bool leaves_no_message(Handles& handles, Call call) {
    call();
    return gjf_editor_last_error(handles.job)[0] == '\0';
}

constexpr int partners[] = {0, 1};
constexpr double orders[] = {1.0, 1.5};
constexpr const char* long_word = "a_word_that_is_longer_than_short_texts";

const Function functions[] = {
    {"gjf_editor_create_from_string",
     [](Handles& h) { return (h.made = gjf_editor_create_from_string(job_text)) != nullptr; }},
    {"gjf_editor_create_from_file",
     [](Handles& h) { return (h.made = gjf_editor_create_from_file(files().input.c_str())) != nullptr; }},
    {"gjf_editor_get_atom_count", [](Handles& h) { return gjf_editor_get_atom_count(h.job) == 2; }},
    {"gjf_editor_get_charge", [](Handles& h) { return gjf_editor_get_charge(h.job) == 0; }},
    {"gjf_editor_get_spin", [](Handles& h) { return gjf_editor_get_spin(h.job) == 1; }},
    {"gjf_editor_get_atom_element",
     [](Handles& h) { return gjf_editor_get_atom_element(h.job, 1, h.buffer.data(), 100) == 0; }},
    {"gjf_editor_get_atom_coords",
     [](Handles& h) {
         double x = 0;
         double y = 0;
         double z = 0;
         return gjf_editor_get_atom_coords(h.job, 1, &x, &y, &z) == 0;
     }},
    {"gjf_editor_get_atom_freeze", [](Handles& h) { return gjf_editor_get_atom_freeze(h.job, 0) == -1; }},
    {"gjf_editor_get_atom_oniom_layer",
     [](Handles& h) { return gjf_editor_get_atom_oniom_layer(h.job, 0, h.buffer.data(), 100) == 0; }},
    {"gjf_editor_select",
     [](Handles& h) {
         int first = -1;
         return gjf_editor_select(h.job, "all and not (within 0.1 of 2)", &first, 1) > 0 && first == 0;
     }},
    {"gjf_editor_set_freeze_all",
     [](Handles& h) { return leaves_no_message(h, [&] { gjf_editor_set_freeze_all(h.job, 3); }); }},
    {"gjf_editor_set_freeze_by_element",
     [](Handles& h) { return leaves_no_message(h, [&] { gjf_editor_set_freeze_by_element(h.job, long_word, 3); }); }},
    {"gjf_editor_set_oniom_layer_all",
     [](Handles& h) { return leaves_no_message(h, [&] { gjf_editor_set_oniom_layer_all(h.job, long_word); }); }},
    {"gjf_editor_set_oniom_layer_by_element",
     [](Handles& h) { return leaves_no_message(h, [&] { gjf_editor_set_oniom_layer_by_element(h.job, "H", long_word); }); }},
    {"gjf_editor_set_charge_and_spin",
     [](Handles& h) { return leaves_no_message(h, [&] { gjf_editor_set_charge_and_spin(h.job, 1, 2); }); }},
    {"gjf_editor_to_string",
     [](Handles& h) { return gjf_editor_to_string(h.job, h.buffer.data(), static_cast<int>(h.buffer.size())) == 0; }},
    {"gjf_editor_save_to_file", [](Handles& h) { return gjf_editor_save_to_file(h.job, files().output.c_str()) == 0; }},
    {"gjf_editor_set_atom_oniom_layer",
     [](Handles& h) { return gjf_editor_set_atom_oniom_layer(h.job, 1, long_word) == 0; }},
    {"gjf_editor_add_atom",
     [](Handles& h) { return gjf_editor_add_atom(h.job, long_word, 1, 2, 3, partners, orders, 2) == 2; }},
    {"gjf_editor_set_model_chemistry_method",
     [](Handles& h) { return gjf_editor_set_model_chemistry_method(h.job, long_word) == 0; }},
    {"gjf_editor_set_model_chemistry_basis",
     [](Handles& h) { return gjf_editor_set_model_chemistry_basis(h.job, long_word) == 0; }},
    {"gjf_multi_editor_create_from_string",
     [](Handles& h) { return (h.made_jobs = gjf_multi_editor_create_from_string(job_text)) != nullptr; }},
    {"gjf_multi_editor_create_from_file",
     [](Handles& h) { return (h.made_jobs = gjf_multi_editor_create_from_file(files().input.c_str())) != nullptr; }},
    {"gjf_multi_editor_job_count", [](Handles& h) { return gjf_multi_editor_job_count(h.jobs) == 2; }},
    {"gjf_multi_editor_add_job_from_string",
     [](Handles& h) { return gjf_multi_editor_add_job_from_string(h.jobs, job_text) == 0; }},
    {"gjf_multi_editor_remove_job", [](Handles& h) { return gjf_multi_editor_remove_job(h.jobs, 0) == 0; }},
    {"gjf_multi_editor_to_string",
     [](Handles& h) { return gjf_multi_editor_to_string(h.jobs, h.buffer.data(), static_cast<int>(h.buffer.size())) == 0; }},
    {"gjf_multi_editor_save_to_file",
     [](Handles& h) { return gjf_multi_editor_save_to_file(h.jobs, files().output.c_str()) == 0; }},
    {"gjf_multi_editor_clone_job", [](Handles& h) { return (h.made = gjf_multi_editor_clone_job(h.jobs, 1)) != nullptr; }},
    {"gjf_multi_editor_get_job", [](Handles& h) { return (h.made = gjf_multi_editor_get_job(h.jobs, 0)) != nullptr; }},
    {"gjf_multi_editor_set_job", [](Handles& h) { return gjf_multi_editor_set_job(h.jobs, 1, h.job) == 0; }},
    {"gjf_document_create_from_string",
     [](Handles& h) { return (h.made_document = gjf_document_create_from_string(document_text)) != nullptr; }},
    {"gjf_document_open",
     [](Handles& h) { return (h.made_document = gjf_document_open(files().input.c_str())) != nullptr; }},
    {"gjf_document_job_count", [](Handles& h) { return gjf_document_job_count(h.document) == 1; }},
    {"gjf_document_job", [](Handles& h) { return gjf_document_job(h.document, 0) != nullptr; }},
    {"gjf_document_readable", [](Handles& h) { return gjf_document_readable(h.document, 0) == 1; }},
    {"gjf_document_fault",
     [](Handles& h) { return gjf_document_fault(h.document, 0, h.buffer.data(), static_cast<int>(h.buffer.size())) == 0; }},
    {"gjf_document_text_size", [](Handles& h) { return gjf_document_text_size(h.document, 0) > 0; }},
    {"gjf_document_to_string",
     [](Handles& h) {
         return gjf_document_to_string(h.document, 0, h.buffer.data(), static_cast<int>(h.buffer.size())) == 0;
     }},
    {"gjf_document_save", [](Handles& h) { return gjf_document_save(h.file_document, 0) == 1; }},
    {"gjf_document_save_as", [](Handles& h) { return gjf_document_save_as(h.document, files().output.c_str(), 0) == 0; }},
    // These give or free what is there: no allocation can fail in them.
    {"gjf_document_destroy",
     [](Handles& h) {
         gjf_document_destroy(h.made_document);
         return h.made_document == nullptr;
     }},
    {"gjf_document_last_error", [](Handles& h) { return gjf_document_last_error(h.document)[0] == '\0'; }},
    {"gjf_editor_destroy",
     [](Handles& h) {
         gjf_editor_destroy(h.job);
         h.job = gjf_editor_create_from_string(job_text);
         return h.job != nullptr;
     }},
    {"gjf_multi_editor_destroy",
     [](Handles& h) {
         gjf_multi_editor_destroy(h.made_jobs);
         return h.made_jobs == nullptr;
     }},
    {"gjf_editor_last_error", [](Handles& h) { return gjf_editor_last_error(h.job)[0] == '\0'; }},
    {"gjf_multi_editor_last_error", [](Handles& h) { return gjf_multi_editor_last_error(h.jobs)[0] == '\0'; }},
    {"gjf_editor_get_last_error", [](Handles&) { return gjf_editor_get_last_error()[0] == '\0'; }},
    {"gjf_get_last_error", [](Handles&) { return gjf_get_last_error()[0] == '\0'; }},
    {"gjf_result_text", [](Handles&) { return gjf_result_text(nullptr)[0] == '\0'; }},
    {"gjf_result_size", [](Handles&) { return gjf_result_size(nullptr) == 0; }},
    {"gjf_result_destroy",
     [](Handles&) {
         gjf_result_destroy(nullptr);
         return true;
     }},
    {"quor_gjf_version", [](Handles&) { return quor_gjf_version()[0] != '\0'; }},
};

class CMemory : public ::testing::Test {
   protected:
    CMemory() {
        std::ofstream(files().input) << job_text;
        std::ofstream(files().output) << "old";
        gjf_editor_create_from_string("a first line that leaves the thread a long message, whose memory it keeps");
        const Handles first_use;
        gjf_editor_set_model_chemistry_method(first_use.job, "hf");
    }
    ~CMemory() override {
        std::filesystem::remove(files().input);
        std::filesystem::remove(files().output);
    }
};

void expect_failure_was_told(const Function& function, const std::string& message) {
    const bool saves = std::strstr(function.name, "save") != nullptr;
    const std::string unwritten = "GJF Parse Error: Cannot write file: ";
    if (!saves || (message != unwritten + files().output && message != unwritten + files().document)) {
        EXPECT_EQ(message, "std::bad_alloc");
    }
}

std::size_t fail_in(const Function& function) {
    return fail_each_allocation(function.name, [&](const Armed& armed) {
        std::ofstream(files().output) << "old";
        Handles handles;
        ASSERT_NE(handles.job, nullptr);
        const std::string job_before = text_of(handles.job);
        const std::string jobs_before = text_of(handles.jobs);
        bool succeeded = false;
        std::string message;
        const bool failed = armed([&] { succeeded = function.succeeds(handles); });
        message = gjf_get_last_error();
        EXPECT_EQ(succeeded, !failed);
        if (!failed) {
            EXPECT_EQ(message, "");
            return;
        }
        expect_failure_was_told(function, message);
        if (handles.job != nullptr) {
            EXPECT_EQ(text_of(handles.job), job_before);
        }
        EXPECT_EQ(text_of(handles.jobs), jobs_before);
        EXPECT_EQ(bytes_of(files().document), document_text);
        EXPECT_EQ(std::filesystem::file_size(files().output), 3u) << "the old file stays";
    });
}

TEST_F(CMemory, FailsCleanlyWhereverItRunsOut) {
    std::size_t failures = 0;
    for (const Function& function : functions) {
        failures += fail_in(function);
    }
    EXPECT_GT(failures, 1000u);
    std::cout << failures << " failed allocations in " << std::size(functions) << " C functions\n";
}

TEST_F(CMemory, IsTriedForEveryExportedFunction) {
    std::set<std::string> tried;
    for (const Function& function : functions) {
        tried.insert(function.name);
    }
    std::set<std::string> exported;
    std::ifstream list(QUOR_GJF_SOURCE_DIR "/tests/c_api/exported_c_functions.txt");
    for (std::string name; list >> name;) {
        exported.insert(name);
    }
    // The JSON library takes memory to free what it holds, and ends the process when there is none.
    exported.erase("gjf_request");
    for (const char* name : {"create", "message", "has_work", "work", "destroy"}) {
        exported.erase(std::string("gjf_server_") + name);
    }
    EXPECT_EQ(tried, exported);
}

}  // namespace
}  // namespace quor::test
