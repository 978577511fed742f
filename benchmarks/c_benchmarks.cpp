// The C interface: each call on a small job; those of single atoms over all atoms of a large one.
#include "inputs.hpp"
#include "measuring.hpp"

#include <gjf/c_api/quor_g16_gjf.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quor::benchmarks {
namespace {

using Editor = std::unique_ptr<quor_gjf_editor, decltype(&gjf_editor_destroy)>;
using MultiEditor = std::unique_ptr<quor_gjf_multi_editor, decltype(&gjf_multi_editor_destroy)>;
using Document = std::unique_ptr<quor_gjf_document, decltype(&gjf_document_destroy)>;

// What the calls work on; the buffer holds any text that they give.
struct Desk {
    std::string text;
    Editor editor;
    MultiEditor jobs;
    Document document;
    std::vector<char> buffer;

    explicit Desk(const std::string& input)
        : text(input_text(input)),
          editor(gjf_editor_create_from_string(text.c_str()), gjf_editor_destroy),
          jobs(gjf_multi_editor_create_from_string(text.c_str()), gjf_multi_editor_destroy),
          document(gjf_document_create_from_string(text.c_str()), gjf_document_destroy),
          buffer(2 * text.size() + 4096) {
        // The document has one change to write.
        gjf_editor_set_charge_and_spin(gjf_document_job(document.get(), 0), 2, 1);
    }
    int size() const { return static_cast<int>(buffer.size()); }
};

void require(bool held) {
    if (!held) {
        throw std::runtime_error(gjf_get_last_error());
    }
}

struct Call {
    const char* name;
    void (*run)(Desk& desk);
};

const Call calls[] = {
    {"editor_create_from_string",
     [](Desk& d) { require(Editor(gjf_editor_create_from_string(d.text.c_str()), gjf_editor_destroy) != nullptr); }},
    {"editor_get_atom_count", [](Desk& d) { require(gjf_editor_get_atom_count(d.editor.get()) > 0); }},
    {"editor_get_charge", [](Desk& d) { ::benchmark::DoNotOptimize(gjf_editor_get_charge(d.editor.get())); }},
    {"editor_get_spin", [](Desk& d) { ::benchmark::DoNotOptimize(gjf_editor_get_spin(d.editor.get())); }},
    {"editor_set_charge_and_spin", [](Desk& d) { gjf_editor_set_charge_and_spin(d.editor.get(), 1, 2); }},
    {"editor_set_freeze_all", [](Desk& d) { gjf_editor_set_freeze_all(d.editor.get(), -1); }},
    {"editor_set_freeze_by_element", [](Desk& d) { gjf_editor_set_freeze_by_element(d.editor.get(), "C", 0); }},
    {"editor_set_oniom_layer_all", [](Desk& d) { gjf_editor_set_oniom_layer_all(d.editor.get(), "L"); }},
    {"editor_set_oniom_layer_by_element", [](Desk& d) { gjf_editor_set_oniom_layer_by_element(d.editor.get(), "C", "H"); }},
    {"editor_set_atom_oniom_layer", [](Desk& d) { require(gjf_editor_set_atom_oniom_layer(d.editor.get(), 3, "M") == 0); }},
    {"editor_set_model_chemistry_method",
     [](Desk& d) { require(gjf_editor_set_model_chemistry_method(d.editor.get(), "pbepbe") == 0); }},
    {"editor_set_model_chemistry_basis",
     [](Desk& d) { require(gjf_editor_set_model_chemistry_basis(d.editor.get(), "def2svp") == 0); }},
    {"editor_to_string", [](Desk& d) { require(gjf_editor_to_string(d.editor.get(), d.buffer.data(), d.size()) == 0); }},
    {"editor_save_to_file",
     [](Desk& d) { require(gjf_editor_save_to_file(d.editor.get(), input_path("saved.gjf").c_str()) == 0); }},
    {"multi_editor_create_from_string",
     [](Desk& d) {
         require(MultiEditor(gjf_multi_editor_create_from_string(d.text.c_str()), gjf_multi_editor_destroy) != nullptr);
     }},
    {"multi_editor_job_count", [](Desk& d) { require(gjf_multi_editor_job_count(d.jobs.get()) > 0); }},
    {"multi_editor_add_and_remove_job",
     [](Desk& d) {
         require(gjf_multi_editor_add_job_from_string(d.jobs.get(), d.text.c_str()) == 0);
         require(gjf_multi_editor_remove_job(d.jobs.get(), 1) == 0);
     }},
    {"multi_editor_clone_job",
     [](Desk& d) { require(Editor(gjf_multi_editor_clone_job(d.jobs.get(), 0), gjf_editor_destroy) != nullptr); }},
    {"multi_editor_set_job", [](Desk& d) { require(gjf_multi_editor_set_job(d.jobs.get(), 0, d.editor.get()) == 0); }},
    {"multi_editor_to_string",
     [](Desk& d) { require(gjf_multi_editor_to_string(d.jobs.get(), d.buffer.data(), d.size()) == 0); }},
    {"document_create_from_string",
     [](Desk& d) { require(Document(gjf_document_create_from_string(d.text.c_str()), gjf_document_destroy) != nullptr); }},
    {"document_job", [](Desk& d) { require(gjf_document_job(d.document.get(), 0) != nullptr); }},
    {"document_text_size", [](Desk& d) { require(gjf_document_text_size(d.document.get(), 0) > 0); }},
    {"document_to_string",
     [](Desk& d) { require(gjf_document_to_string(d.document.get(), 0, d.buffer.data(), d.size()) == 0); }},
};

// One turn asks once for each atom.
struct AtomCall {
    const char* name;
    int (*run)(Desk& desk, int index);
};

const AtomCall atom_calls[] = {
    {"editor_get_atom_element",
     [](Desk& d, int i) { return gjf_editor_get_atom_element(d.editor.get(), i, d.buffer.data(), d.size()); }},
    {"editor_get_atom_coords",
     [](Desk& d, int i) {
         double place[3];
         const int status = gjf_editor_get_atom_coords(d.editor.get(), i, place, place + 1, place + 2);
         ::benchmark::DoNotOptimize(place);
         return status;
     }},
    {"editor_get_atom_freeze",
     [](Desk& d, int i) { return gjf_editor_get_atom_freeze(d.editor.get(), i) == -999 ? -1 : 0; }},
    {"editor_get_atom_oniom_layer",
     [](Desk& d, int i) { return gjf_editor_get_atom_oniom_layer(d.editor.get(), i, d.buffer.data(), d.size()); }},
};

void add_atoms(::benchmark::State& state) {
    const std::string text = input_text("small.gjf");
    const int partner = 0;
    const double order = 1;
    measure(state, {0, 1'000}, [&] {
        const Editor editor(gjf_editor_create_from_string(text.c_str()), gjf_editor_destroy);
        for (int i = 0; i < 1'000; ++i) {
            require(gjf_editor_add_atom(editor.get(), "C", i, 2.0 * i, 3.0 * i, &partner, &order, 1) >= 0);
        }
    });
}
BENCHMARK(add_atoms)->Name("c/editor_add_atom/1000_to_small")->Unit(::benchmark::kMicrosecond);

void run_for_atoms(::benchmark::State& state, const AtomCall& call) {
    Desk desk("oniom_large.gjf");
    const int count = gjf_editor_get_atom_count(desk.editor.get());
    measure(state, {0, static_cast<std::size_t>(count)}, [&] {
        for (int i = 0; i < count; ++i) {
            require(call.run(desk, i) == 0);
        }
    });
}

const bool registered = [] {
    for (const Call& call : calls) {
        ::benchmark::RegisterBenchmark((std::string("c/") + call.name + "/small").c_str(),
                                       [&call](::benchmark::State& state) {
                                           Desk desk("small.gjf");
                                           measure(state, {}, [&] { call.run(desk); });
                                       });
    }
    for (const AtomCall& call : atom_calls) {
        ::benchmark::RegisterBenchmark((std::string("c/") + call.name + "/oniom_large").c_str(),
                                       [&call](::benchmark::State& state) { run_for_atoms(state, call); })
            ->Unit(::benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace quor::benchmarks
