// Uses the library as another project does: reads a job, asks the vocabulary, edits, through both interfaces.
#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/gjf.hpp>

#include <cstring>
#include <iostream>

namespace gjf = quor::input::gaussian;

int main() {
    const char* text = "#p B3LYP/6-31G(d) Optimize\n\nwater\n\n0 1\nO 0 0 0\nH 0 0 1\nH 0 1 0\n";
    gjf::GJFEditor editor(gjf::GJFParser::parse_string(text));
    editor.set_freeze_by_element("O", -1);
    std::cout << editor.get_method() << ' ' << editor.has_keyword("opt") << ' ' << editor.get_frozen_atoms() << '\n';
    std::cout << gjf::resolve_route_schema_path("") << '\n';
    quor_gjf_editor* handle = gjf_editor_create_from_string(text);
    const bool same = handle != nullptr && gjf_editor_get_atom_count(handle) == 3 && std::strlen(quor_gjf_version()) > 0;
    gjf_editor_destroy(handle);
    return same ? 0 : 1;
}
