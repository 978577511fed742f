// Editors of the C interface that close themselves, and their texts.
#pragma once

#include <gjf/c_api/quor_g16_gjf.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace quor::test {

inline const char* const job_text =
    "%chk=a\n# oniom(hf/sto-3g:uff) geom=connectivity\n\nt\n\n1 2 0 1\nCl-CL 0 1.5 -2.0 0.25 H\nH 0 0 1.0 \n\n1 2 1.0\n2\n";

struct Destroy {
    void operator()(quor_gjf_editor* editor) const { gjf_editor_destroy(editor); }
    void operator()(quor_gjf_multi_editor* editor) const { gjf_multi_editor_destroy(editor); }
};
using Editor = std::unique_ptr<quor_gjf_editor, Destroy>;
using MultiEditor = std::unique_ptr<quor_gjf_multi_editor, Destroy>;

inline Editor make_editor(const char* text = job_text) { return Editor(gjf_editor_create_from_string(text)); }

inline MultiEditor make_multi() {
    return MultiEditor(gjf_multi_editor_create_from_string(
        "# hf/sto-3g\n\na\n\n0 1\nH 0 0 0\n\n--Link1--\n# mp2/sto-3g\n\nb\n\n0 2\nHe 0 0 0\n"));
}

inline std::string to_text(quor_gjf_editor* editor) {
    std::string buffer(10'000, '?');
    EXPECT_EQ(gjf_editor_to_string(editor, buffer.data(), static_cast<int>(buffer.size())), 0);
    return buffer.c_str();
}

inline std::string to_text(quor_gjf_multi_editor* editor) {
    std::string buffer(10'000, '?');
    EXPECT_EQ(gjf_multi_editor_to_string(editor, buffer.data(), static_cast<int>(buffer.size())), 0);
    return buffer.c_str();
}

}  // namespace quor::test
