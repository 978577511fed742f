// What the opaque handles of the C interface hold. Private to the room.
#pragma once

#include <gjf/c_api/quor_g16_gjf.h>
#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/editor/gjf_multi_editor.hpp>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

struct quor_gjf_document;

struct quor_gjf_editor {
    /// Makes a handle with a job of its own.
    explicit quor_gjf_editor(quor::input::gaussian::GJFData data)
        : own(std::make_unique<quor::input::gaussian::GJFEditor>(std::move(data))), editor(*own) {}
    /// Makes a handle for a job of a document, which keeps the handle too.
    quor_gjf_editor(quor::input::gaussian::GJFEditor& job, quor_gjf_document& holder) noexcept
        : editor(job), document(&holder) {}

    inline void forget_text() noexcept;

    static constexpr const char* null_message = "editor handle is null";

    std::unique_ptr<quor::input::gaussian::GJFEditor> own;  // null in a handle that a document keeps
    quor::input::gaussian::GJFEditor& editor;
    quor_gjf_document* document = nullptr;  // that keeps the handle
    std::string last_error;
};

struct quor_gjf_multi_editor {
    explicit quor_gjf_multi_editor(quor::input::gaussian::GJFMultiData data) : editor(std::move(data)) {}

    static constexpr const char* null_message = "multi editor handle is null";

    void forget_text() noexcept {}

    quor::input::gaussian::GJFMultiEditor editor;
    std::string last_error;
};

struct quor_gjf_document {
    explicit quor_gjf_document(quor::input::gaussian::GJFDocument opened) : editor(std::move(opened)) {}

    static constexpr const char* null_message = "document handle is null";

    void forget_text() noexcept { text.reset(); }

    quor::input::gaussian::GJFDocument editor;
    std::optional<std::string> text;  // as told by its size and not yet copied; any other use of a handle drops it
    bool text_is_forced = false;
    std::vector<std::unique_ptr<quor_gjf_editor>> jobs;  // the handles given out; null for jobs not asked for
    std::string last_error;
};

void quor_gjf_editor::forget_text() noexcept {
    if (document != nullptr) {
        document->forget_text();
    }
}
