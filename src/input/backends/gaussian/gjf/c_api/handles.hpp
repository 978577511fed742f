// What the opaque handles of the C interface hold.
#pragma once

#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/editor/gjf_multi_editor.hpp>

#include <string>
#include <utility>

struct quor_gjf_editor {
    explicit quor_gjf_editor(quor::input::gaussian::GJFData data) : editor(std::move(data)) {}

    static constexpr const char* null_message = "editor handle is null";

    quor::input::gaussian::GJFEditor editor;
    std::string last_error;
};

struct quor_gjf_multi_editor {
    explicit quor_gjf_multi_editor(quor::input::gaussian::GJFMultiData data) : editor(std::move(data)) {}

    static constexpr const char* null_message = "multi editor handle is null";

    quor::input::gaussian::GJFMultiEditor editor;
    std::string last_error;
};
