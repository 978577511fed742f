// The C interface to the editor of a job: each function's results, each message, NULL for each pointer, and buffers of every
// size.
#include "editors.hpp"

#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "../support/files.hpp"

namespace quor::test {
namespace {

// Expects a message for the thread and, with a handle, for the handle.
void expect_message(const quor_gjf_editor* editor, const std::string& message) {
    EXPECT_EQ(gjf_get_last_error(), message);
    EXPECT_EQ(gjf_editor_get_last_error(), message);
    EXPECT_EQ(gjf_editor_last_error(editor), message);
    EXPECT_EQ(gjf_editor_last_error(nullptr), message);
}

TEST(CEditor, GivesWhatTheJobHolds) {
    const Editor editor = make_editor();
    ASSERT_NE(editor, nullptr);
    expect_message(editor.get(), "");
    EXPECT_EQ(gjf_editor_get_atom_count(editor.get()), 2);
    EXPECT_EQ(gjf_editor_get_charge(editor.get()), 1);
    EXPECT_EQ(gjf_editor_get_spin(editor.get()), 2);
    double x = 9;
    double y = 9;
    double z = 9;
    EXPECT_EQ(gjf_editor_get_atom_coords(editor.get(), 0, &x, &y, &z), 0);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2.0);
    EXPECT_EQ(z, 0.25);
    EXPECT_EQ(gjf_editor_get_atom_freeze(editor.get(), 0), 0);
    EXPECT_EQ(gjf_editor_get_atom_freeze(editor.get(), 1), -999);
    expect_message(editor.get(), "");
    EXPECT_STREQ(quor_gjf_version(), "0.2.0");
}

TEST(CEditor, SelectsAtomsByAText) {
    const Editor editor = make_editor();
    int indices[2] = {9, 9};
    EXPECT_EQ(gjf_editor_select(editor.get(), "not Cl", indices, 2), 1);
    EXPECT_EQ(indices[0], 1);
    EXPECT_EQ(indices[1], 9);
    EXPECT_EQ(gjf_editor_select(editor.get(), "1-2", indices, 1), 2);
    EXPECT_EQ(indices[0], 0);
    EXPECT_EQ(indices[1], 9);
    EXPECT_EQ(gjf_editor_select(editor.get(), "all", nullptr, 0), 2);
    EXPECT_EQ(gjf_editor_select(editor.get(), "Xe", nullptr, 0), 0);
    expect_message(editor.get(), "");
    const struct {
        const char* selection;
        int capacity;
        const char* message;
    } refused[] = {
        {nullptr, 2, "selection is null"},
        {"H", -1, "capacity must not be negative"},
        {"H or Fee", 2, "column 6: 'Fee' is neither an element nor a word of selections"},
        {"", 2, "column 1: the selection is empty"},
        {"3", 2, "there is no atom 3: the job has 2"},
    };
    for (const auto& row : refused) {
        EXPECT_EQ(gjf_editor_select(editor.get(), row.selection, indices, row.capacity), -1) << row.message;
        expect_message(editor.get(), row.message);
    }
    EXPECT_EQ(gjf_editor_select(editor.get(), "H", nullptr, 1), -1);
    expect_message(editor.get(), "index output array is null");
    EXPECT_EQ(gjf_editor_select(nullptr, "H", indices, 2), -1);
    EXPECT_STREQ(gjf_get_last_error(), "editor handle is null");
}

TEST(CEditor, CopiesTextThatFitsAndNeverCutsIt) {
    const Editor editor = make_editor();
    const std::string text = to_text(editor.get());
    struct Case {
        std::function<int(char*, int)> call;
        std::string value;
        std::string word;
    };
    quor_gjf_editor* handle = editor.get();
    const Case cases[] = {
        {[&](char* b, int n) { return gjf_editor_get_atom_element(handle, 0, b, n); }, "Cl", "element"},
        {[&](char* b, int n) { return gjf_editor_get_atom_oniom_layer(handle, 0, b, n); }, "H", "ONIOM layer"},
        {[&](char* b, int n) { return gjf_editor_to_string(handle, b, n); }, text, "GJF"},
    };
    for (const Case& c : cases) {
        const int needed = static_cast<int>(c.value.size()) + 1;
        std::string buffer(c.value.size() + 1, '?');
        EXPECT_EQ(c.call(buffer.data(), needed), 0);
        EXPECT_EQ(buffer.c_str(), c.value);
        expect_message(handle, "");
        for (const int size : {needed - 1, 1}) {
            buffer.assign(buffer.size(), '?');
            EXPECT_EQ(c.call(buffer.data(), size), -1);
            EXPECT_EQ(buffer[0], '\0');
            expect_message(handle, c.word + " output buffer is too small");
        }
        buffer.assign(buffer.size(), '?');
        for (const int size : {0, -1, -2147483647 - 1}) {
            EXPECT_EQ(c.call(buffer.data(), size), -1);
            EXPECT_EQ(buffer[0], '?');
            expect_message(handle, c.word + " output buffer is invalid");
        }
        EXPECT_EQ(c.call(nullptr, 100), -1);
        expect_message(handle, c.word + " output buffer is invalid");
    }
}

TEST(CEditor, TellsAnAbsentLayerFromAnEmptyOne) {
    const Editor editor = make_editor();
    char buffer[4] = "???";
    EXPECT_EQ(gjf_editor_get_atom_oniom_layer(editor.get(), 1, buffer, 4), 1);
    EXPECT_STREQ(buffer, "");
    expect_message(editor.get(), "");
    gjf_editor_set_oniom_layer_all(editor.get(), "");
    std::strcpy(buffer, "???");
    EXPECT_EQ(gjf_editor_get_atom_oniom_layer(editor.get(), 1, buffer, 1), 0);
    EXPECT_STREQ(buffer, "");
}

TEST(CEditor, WritesWholeCoordinatesWithALayerSoThatTheyReadBack) {
    const Editor editor = make_editor("# oniom(hf/sto-3g:uff)\n\nt\n\n0 1\nO 0 0 2\nH 1 0 0\n\n");
    gjf_editor_set_oniom_layer_all(editor.get(), "H");
    const std::string text = to_text(editor.get());
    const Editor again = make_editor(text.c_str());
    ASSERT_NE(again, nullptr) << text;
    EXPECT_EQ(gjf_editor_get_atom_count(again.get()), 2) << text;
    for (int i = 0; i < 2; ++i) {
        double x = -1;
        double y = -1;
        double z = -1;
        EXPECT_EQ(gjf_editor_get_atom_coords(again.get(), i, &x, &y, &z), 0) << text;
        EXPECT_EQ(x, i == 0 ? 0 : 1) << text;
        EXPECT_EQ(y, 0) << text;
        EXPECT_EQ(z, i == 0 ? 2 : 0) << text;
        char layer[4] = "?";
        EXPECT_EQ(gjf_editor_get_atom_oniom_layer(again.get(), i, layer, 4), 0) << text;
        EXPECT_STREQ(layer, "H") << text;
    }
}

TEST(CEditor, RefusesWithItsFixedMessagesAndKeepsTheJob) {
    const Editor owner = make_editor();
    quor_gjf_editor* e = owner.get();
    char b[8] = "?";
    double d = 0;
    const int partners[] = {0, 7};
    const int negative[] = {-1};
    const double orders[] = {1.0, 1.0};
    const std::string text = to_text(e);
    struct Case {
        const char* message;
        std::function<int()> call;
        int failure;
    };
    const Case cases[] = {
        {"atom index must not be negative", [&] { return gjf_editor_get_atom_element(e, -1, b, 8); }, -1},
        {"atom index is out of range", [&] { return gjf_editor_get_atom_element(e, 2, b, 8); }, -1},
        {"element output buffer is invalid", [&] { return gjf_editor_get_atom_element(e, -1, nullptr, 8); }, -1},
        {"atom index or coordinate output pointer is invalid", [&] { return gjf_editor_get_atom_coords(e, -1, &d, &d, &d); },
         -1},
        {"atom index or coordinate output pointer is invalid",
         [&] { return gjf_editor_get_atom_coords(e, 9, nullptr, &d, &d); }, -1},
        {"atom index or coordinate output pointer is invalid",
         [&] { return gjf_editor_get_atom_coords(e, 0, &d, nullptr, &d); }, -1},
        {"atom index or coordinate output pointer is invalid",
         [&] { return gjf_editor_get_atom_coords(e, 0, &d, &d, nullptr); }, -1},
        {"atom index is out of range", [&] { return gjf_editor_get_atom_coords(e, 2, &d, &d, &d); }, -1},
        {"atom index must not be negative", [&] { return gjf_editor_get_atom_freeze(e, -1); }, -999},
        {"atom index is out of range", [&] { return gjf_editor_get_atom_freeze(e, 2); }, -999},
        {"atom index must not be negative", [&] { return gjf_editor_get_atom_oniom_layer(e, -5, b, 8); }, -1},
        {"atom index is out of range", [&] { return gjf_editor_get_atom_oniom_layer(e, 5, b, 8); }, -1},
        {"filename is null", [&] { return gjf_editor_save_to_file(e, nullptr); }, -1},
        {"GJF Parse Error: Cannot write file: /no/such/f", [&] { return gjf_editor_save_to_file(e, "/no/such/f"); }, -1},
        {"element is null", [&] { return gjf_editor_set_freeze_by_element(e, nullptr, 1), 0; }, 0},
        {"ONIOM layer is null", [&] { return gjf_editor_set_oniom_layer_all(e, nullptr), 0; }, 0},
        {"element or ONIOM layer is null", [&] { return gjf_editor_set_oniom_layer_by_element(e, nullptr, "H"), 0; }, 0},
        {"element or ONIOM layer is null", [&] { return gjf_editor_set_oniom_layer_by_element(e, "H", nullptr), 0; }, 0},
        {"ONIOM layer is null", [&] { return gjf_editor_set_atom_oniom_layer(e, -1, nullptr); }, -1},
        {"atom index must not be negative", [&] { return gjf_editor_set_atom_oniom_layer(e, -1, "H"); }, -1},
        {"atom index is out of range", [&] { return gjf_editor_set_atom_oniom_layer(e, 2, "H"); }, -1},
        {"element is null", [&] { return gjf_editor_add_atom(e, nullptr, 0, 0, 0, nullptr, nullptr, 0); }, -1},
        {"bond count must not be negative", [&] { return gjf_editor_add_atom(e, "H", 0, 0, 0, partners, orders, -1); }, -1},
        {"bond partner or order array is null", [&] { return gjf_editor_add_atom(e, "H", 0, 0, 0, nullptr, orders, 1); },
         -1},
        {"bond partner or order array is null", [&] { return gjf_editor_add_atom(e, "H", 0, 0, 0, partners, nullptr, 1); },
         -1},
        {"atom index must not be negative", [&] { return gjf_editor_add_atom(e, "H", 0, 0, 0, negative, orders, 1); }, -1},
        {"GJF Parse Error: New atom bond references an atom outside the existing geometry",
         [&] { return gjf_editor_add_atom(e, "H", 0, 0, 0, partners, orders, 2); }, -1},
        {"method is null", [&] { return gjf_editor_set_model_chemistry_method(e, nullptr); }, -1},
        {"GJF Parse Error: Route model-chemistry method cannot be empty",
         [&] { return gjf_editor_set_model_chemistry_method(e, " "); }, -1},
        {"basis is null", [&] { return gjf_editor_set_model_chemistry_basis(e, nullptr); }, -1},
        {"GJF Parse Error: Cannot replace the basis slot of ONIOM, dual-layer, or density-basis model chemistry",
         [&] { return gjf_editor_set_model_chemistry_basis(e, "cc-pvdz"); }, -1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.call(), c.failure) << c.message;
        expect_message(e, c.message);
        EXPECT_EQ(to_text(e), text) << c.message;
        expect_message(e, "");
    }
}

TEST(CEditor, EmptiesAValidBufferForABadIndex) {
    const Editor editor = make_editor();
    for (const int index : {-1, 2}) {
        char element[8] = "?";
        char layer[8] = "?";
        EXPECT_EQ(gjf_editor_get_atom_element(editor.get(), index, element, 8), -1);
        EXPECT_EQ(gjf_editor_get_atom_oniom_layer(editor.get(), index, layer, 8), -1);
        EXPECT_EQ(element[0], '\0');
        EXPECT_EQ(layer[0], '\0');
    }
}

TEST(CEditor, RecordsANullHandleForTheThread) {
    char b[8] = "?";
    double d = 0;
    const std::vector<std::pair<int, std::function<int()>>> cases = {
        {-1, [&] { return gjf_editor_get_atom_count(nullptr); }},
        {0, [&] { return gjf_editor_get_charge(nullptr); }},
        {0, [&] { return gjf_editor_get_spin(nullptr); }},
        {-1, [&] { return gjf_editor_get_atom_element(nullptr, 0, b, 8); }},
        {-1, [&] { return gjf_editor_get_atom_coords(nullptr, 0, &d, &d, &d); }},
        {-999, [&] { return gjf_editor_get_atom_freeze(nullptr, 0); }},
        {-1, [&] { return gjf_editor_get_atom_oniom_layer(nullptr, 0, b, 8); }},
        {0, [&] { return gjf_editor_set_freeze_all(nullptr, 1), 0; }},
        {0, [&] { return gjf_editor_set_freeze_by_element(nullptr, nullptr, 1), 0; }},
        {0, [&] { return gjf_editor_set_oniom_layer_all(nullptr, "H"), 0; }},
        {0, [&] { return gjf_editor_set_oniom_layer_by_element(nullptr, "C", "H"), 0; }},
        {0, [&] { return gjf_editor_set_charge_and_spin(nullptr, 0, 1), 0; }},
        {-1, [&] { return gjf_editor_to_string(nullptr, b, 8); }},
        {-1, [&] { return gjf_editor_save_to_file(nullptr, "f"); }},
        {-1, [&] { return gjf_editor_set_atom_oniom_layer(nullptr, 0, "H"); }},
        {-1, [&] { return gjf_editor_add_atom(nullptr, "H", 0, 0, 0, nullptr, nullptr, 0); }},
        {-1, [&] { return gjf_editor_set_model_chemistry_method(nullptr, "hf"); }},
        {-1, [&] { return gjf_editor_set_model_chemistry_basis(nullptr, "sto-3g"); }},
    };
    for (const auto& [failure, call] : cases) {
        const Editor clears = make_editor();
        EXPECT_EQ(call(), failure);
        EXPECT_STREQ(gjf_get_last_error(), "editor handle is null");
        EXPECT_STREQ(gjf_editor_last_error(clears.get()), "");
    }
    EXPECT_EQ(b[0], '?');
    gjf_editor_destroy(nullptr);
    gjf_multi_editor_destroy(nullptr);
}

TEST(CEditor, SaysWhyNothingWasCreated) {
    const std::vector<std::pair<std::string, std::function<void*()>>> cases = {
        {"content is null", [] { return gjf_editor_create_from_string(nullptr); }},
        {"filename is null", [] { return gjf_editor_create_from_file(nullptr); }},
        {"GJF Parse Error: Invalid control line: Hello", [] { return gjf_editor_create_from_string("Hello"); }},
        {"GJF Parse Error: Cannot open file: /no/such/f", [] { return gjf_editor_create_from_file("/no/such/f"); }},
        {"GJF Parse Error: Connectivity contains a self bond",
         [] { return gjf_editor_create_from_string("# hf geom=connectivity\n\nt\n\n0 1\nH 0 0 0\n\n1 1 1.0\n"); }},
        {"content is null", [] { return gjf_multi_editor_create_from_string(nullptr); }},
        {"filename is null", [] { return gjf_multi_editor_create_from_file(nullptr); }},
        {"GJF Parse Error: No valid jobs found in input", [] { return gjf_multi_editor_create_from_string(""); }},
        {"GJF Parse Error: Job 2: GJF Parse Error: Missing title section",
         [] { return gjf_multi_editor_create_from_string("# hf geom=allcheck\n--Link1--\n# hf"); }},
    };
    for (const auto& [message, create] : cases) {
        EXPECT_EQ(create(), nullptr);
        EXPECT_EQ(gjf_get_last_error(), message);
    }
}

TEST(CEditor, Edits) {
    const Editor owner = make_editor("# hf/sto-3g\n\nt\n\n0 1\nC 0 0 0\nH 0 0 1\n");
    quor_gjf_editor* e = owner.get();
    gjf_editor_set_freeze_by_element(e, "C", -1);
    EXPECT_EQ(gjf_editor_get_atom_freeze(e, 0), -1);
    EXPECT_EQ(gjf_editor_get_atom_freeze(e, 1), -999);
    gjf_editor_set_freeze_all(e, 2);
    EXPECT_EQ(gjf_editor_get_atom_freeze(e, 1), 2);
    char layer[2];
    gjf_editor_set_oniom_layer_by_element(e, "H", "H");
    EXPECT_EQ(gjf_editor_get_atom_oniom_layer(e, 0, layer, 2), 0);
    EXPECT_STREQ(layer, "L");
    EXPECT_EQ(gjf_editor_set_atom_oniom_layer(e, 0, "M"), 0);
    EXPECT_EQ(gjf_editor_get_atom_oniom_layer(e, 0, layer, 2), 0);
    EXPECT_STREQ(layer, "M");
    gjf_editor_set_charge_and_spin(e, -1, 2);
    EXPECT_EQ(gjf_editor_get_charge(e), -1);
    EXPECT_EQ(gjf_editor_get_spin(e), 2);
    const int partners[] = {0, 1};
    const double orders[] = {1.0, 0.0};
    EXPECT_EQ(gjf_editor_add_atom(e, "O", 1, 2, 3, partners, orders, 2), 2);
    EXPECT_EQ(gjf_editor_add_atom(e, "X", 0, 0, 0, nullptr, nullptr, 0), 3);
    EXPECT_EQ(gjf_editor_get_atom_count(e), 4);
    EXPECT_EQ(gjf_editor_set_model_chemistry_method(e, "MP2"), 0);
    EXPECT_EQ(gjf_editor_set_model_chemistry_basis(e, "cc-pVTZ"), 0);
    const std::string text = to_text(e);
    EXPECT_EQ(text.rfind("# mp2/cc-pvtz \n\nt\n\n-1 2\n", 0), 0u) << text;
    EXPECT_NE(text.find("\n\n1 3 1.0\n2\n3\n4\n\n\n"), std::string::npos) << text;
}

TEST(CEditor, SavesToAFile) {
    const Editor editor = make_editor();
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "job.gjf";
    EXPECT_EQ(gjf_editor_save_to_file(editor.get(), path.c_str()), 0);
    EXPECT_EQ(bytes_of(path), to_text(editor.get()));
    const Editor again(gjf_editor_create_from_file(path.c_str()));
    EXPECT_EQ(gjf_editor_get_atom_count(again.get()), 2);
}

TEST(CEditor, CutsNoTextShortAtANullCharacter) {
    const TemporaryFolder folder;
    const std::string path = folder.write("job.gjf", std::string("# hf/3-21g\n\nti\0tle\n\n0 1\nO 0.0 0.0 0.0\n\n", 40));
    const Editor editor(gjf_editor_create_from_file(path.c_str()));
    ASSERT_NE(editor, nullptr) << gjf_get_last_error();
    char buffer[500] = "";
    EXPECT_EQ(gjf_editor_to_string(editor.get(), buffer, sizeof buffer), -1);
    EXPECT_STREQ(buffer, "");
    EXPECT_NE(std::string(gjf_editor_last_error(editor.get())).find("text holds a null character"), std::string::npos);
    EXPECT_EQ(gjf_editor_get_atom_element(editor.get(), 0, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "O");
}

TEST(CMessages, BelongToTheirThreadAndTheirHandle) {
    const Editor first = make_editor();
    const Editor second = make_editor();
    EXPECT_EQ(gjf_editor_get_atom_freeze(first.get(), -1), -999);
    std::thread other([&] {
        EXPECT_STREQ(gjf_get_last_error(), "");
        EXPECT_EQ(gjf_editor_get_atom_freeze(second.get(), 99), -999);
        EXPECT_STREQ(gjf_get_last_error(), "atom index is out of range");
    });
    other.join();
    EXPECT_STREQ(gjf_get_last_error(), "atom index must not be negative");
    EXPECT_STREQ(gjf_editor_last_error(first.get()), "atom index must not be negative");
    EXPECT_STREQ(gjf_editor_last_error(second.get()), "atom index is out of range");
    EXPECT_EQ(gjf_editor_get_atom_count(first.get()), 2);
    EXPECT_STREQ(gjf_editor_last_error(second.get()), "atom index is out of range");
}

}  // namespace
}  // namespace quor::test
