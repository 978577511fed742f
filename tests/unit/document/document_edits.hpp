// Texts after an edit of their first job, and the messages of edits that are refused.
#pragma once

#include <gjf/core/document/gjf_document.hpp>
#include <gjf/core/job/gjf_parse_exception.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quor::input::gaussian::test {

using Edit = std::function<void(GJFEditor&)>;
using Change = std::function<void(GJFData&)>;

/// Four atoms with bonds, and with coordinates that name them.
inline const std::string bonded =
    "# hf/sto-3g geom=connectivity opt=modredundant\n\nt\n\n0 1\nC  0.0 0.0 0.0\nO  0.0 0.0 1.4\nH  0.0 0.9 1.7\nH  0.5 0.9 "
    "-0.4\n\n"
    " 1 2 1.0 4 1.0\n 2 3 1.0\n 3\n 4\n\nB 1 2 F\nD 3 2 1 4 F\n* 2 B\n\n";

/// A change of a job by an edit, and the text that is wanted.
struct EditCase {
    const char* name;
    std::string text;
    Edit edit;
    std::string wanted;
};

/// Returns an edit that gives the editor the whole job with a change in it.
inline Edit giving(const Change& change) {
    return [change](GJFEditor& editor) {
        GJFData data = editor.get_data();
        change(data);
        editor.set_data(std::move(data));
    };
}

inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

/// Returns the text after an edit of its first job.
inline std::string edited(const std::string& text, const Edit& edit, const GJFWriteOptions& options = {}) {
    GJFDocument document(text);
    edit(document.job(0));
    return document.to_text(options);
}

/// Returns why an edit of the first job is refused, without the prefix that all messages have.
inline std::string refusal(const std::string& text, const Edit& edit, const GJFWriteOptions& options = {}) {
    try {
        return "no refusal:\n" + edited(text, edit, options);
    } catch (const GJFParseException& error) {
        return std::string(error.what()).substr(std::string("GJF Parse Error: ").size());
    }
}

inline void check_edits(const std::vector<EditCase>& cases) {
    for (const EditCase& c : cases) {
        try {
            EXPECT_EQ(edited(c.text, c.edit), c.wanted) << c.name;
        } catch (const GJFParseException& error) {
            ADD_FAILURE() << c.name << ": " << error.what();
        }
    }
}

}  // namespace quor::input::gaussian::test
