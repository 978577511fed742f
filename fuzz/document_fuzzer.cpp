// Opens a text as a document, edits it as its last bytes say, and writes it. Without an edit every byte stays; what is
// written is written again alike, is what comparing whole jobs would write, and has the atoms that were meant; all that may
// be thrown is a refusal.
#include "fuzzers.hpp"
#include "properties.hpp"

#include <gjf/gjf.hpp>

#include <algorithm>
#include <string>

#include "../tests/support/written_by_comparison.hpp"

namespace quor::fuzz {
namespace {

using namespace input::gaussian;

std::size_t any_atom(const GJFEditor& editor, Choices& choices) {
    return choices.below(editor.get_data().geom.atoms.size() + 1);
}

AtomCoord made_atom(Choices& choices) {
    AtomCoord atom;
    atom.info.element = "Ne";
    atom.x = choices.integer();
    return atom;
}

using Operation = void (*)(GJFEditor& editor, Choices& choices);

constexpr Operation operations[] = {
    [](GJFEditor& e, Choices& c) { e.set_mem(std::to_string(c.byte()) + "GB"); },
    [](GJFEditor& e, Choices&) { e.remove_mem(); },
    [](GJFEditor& e, Choices& c) { e.set_nproc(c.byte()); },
    [](GJFEditor& e, Choices& c) { e.set_title(c.text(6)); },
    [](GJFEditor& e, Choices& c) { e.set_charge_and_spin(c.integer(), c.integer()); },
    [](GJFEditor& e, Choices& c) { e.add_atom(made_atom(c)); },
    [](GJFEditor& e, Choices& c) { e.remove_atom(any_atom(e, c)); },
    [](GJFEditor& e, Choices& c) { e.move_atom(any_atom(e, c), any_atom(e, c)); },
    [](GJFEditor& e, Choices& c) { e.replace_atom(any_atom(e, c), made_atom(c)); },
    [](GJFEditor& e, Choices& c) { e.translate_atoms({any_atom(e, c)}, 0.25, c.integer(), -1e4); },
    [](GJFEditor& e, Choices& c) { e.set_freeze_by_index({any_atom(e, c)}, c.integer()); },
    [](GJFEditor& e, Choices& c) {
        e.set_bond_order(any_atom(e, c), any_atom(e, c), 0.5 * static_cast<double>(c.below(4)));
    },
    [](GJFEditor& e, Choices& c) { e.set_fragment_by_index({any_atom(e, c)}, "2"); },
    [](GJFEditor& e, Choices& c) { e.set_method(c.below(2) == 0 ? "mp2" : c.text(6)); },
    [](GJFEditor& e, Choices& c) { e.set_basis_set(c.below(2) == 0 ? "sto-3g" : c.text(6)); },
    [](GJFEditor& e, Choices& c) { e.add_route_keyword(c.text(6)); },
    [](GJFEditor& e, Choices& c) {
        e.ensure_keyword_option("opt", {c.text(4), {}});
    },
    [](GJFEditor& e, Choices&) { e.remove_keyword_by_name("opt"); },
    [](GJFEditor& e, Choices& c) { e.remove_extra_input(c.below(4)); },
    [](GJFEditor& e, Choices& c) { e.add_extra_input(c.text(8)); },
};

void edit(GJFDocument& document, Choices& choices) {
    while (!choices.empty()) {
        try {
            operations[choices.below(std::size(operations))](document.job(choices.below(document.job_count())), choices);
        } catch (const GJFParseException&) {
            continue;
        }
    }
}

bool all_small(const GJFDocument& document) {
    for (std::size_t i = 0; i < document.job_count(); ++i) {
        if (document.readable(i) && !is_small(document.job(i).get_data())) {
            return false;
        }
    }
    return true;
}

}  // namespace

int document(const std::uint8_t* data, std::size_t size) {
    const std::size_t tail = std::min<std::size_t>(size / 4, 24);
    const std::string text(reinterpret_cast<const char*>(data), size - tail);
    Choices choices(data + size - tail, tail);
    try {
        GJFDocument opened(text);
        hold(opened.to_text() == text, "without an edit every byte stays");
        edit(opened, choices);
        if (!all_small(opened)) {
            return 0;
        }
        const std::string written = opened.to_text();
        hold(quor::input::gaussian::test::written_by_comparison(text, opened) == written,
             "the record of edits tells what comparing would find");
        const GJFDocument again(written);
        hold(again.to_text() == written, "what is written is written again alike");
        hold(again.job_count() == opened.job_count(), "no job is lost");
        for (std::size_t i = 0; i < again.job_count(); ++i) {
            hold(again.readable(i) == opened.readable(i), "what cannot be read stays as it is");
            if (!again.readable(i)) {
                continue;
            }
            hold(again.job(i).get_data().geom.atom_count() == opened.job(i).get_data().geom.atom_count(),
                 "the atoms are those meant");
        }
    } catch (const GJFParseException&) {
        return 0;
    }
    return 0;
}

}  // namespace quor::fuzz
