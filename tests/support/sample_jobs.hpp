// Small jobs that tests of editing begin with.
#pragma once

#include <gjf/core/job/gjf_parse_exception.hpp>
#include <gjf/core/reader/gjf_parser.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

namespace quor::input::gaussian::test {

/// Reads a job of `atoms` hydrogen atoms at x = 0, 1, 2…, with the route and the text behind the molecule given.
inline GJFData make_job(std::size_t atoms, const std::string& route = "#p hf/sto-3g", const std::string& rest = "") {
    std::string text = route + "\n\ntitle\n\n0 1\n";
    for (std::size_t i = 0; i < std::max<std::size_t>(atoms, 1); ++i) {
        text += "H " + std::to_string(i) + ".0 0.0 0.0\n";
    }
    GJFData data = GJFParser::parse_string(text + "\n" + rest);
    data.geom.atoms.resize(atoms);
    return data;
}

/// Expects an action to throw `GJFParseException` with a message.
inline void expect_refused(const std::string& message, const std::function<void()>& action) {
    try {
        action();
        ADD_FAILURE() << "not refused; expected: " << message;
    } catch (const GJFParseException& error) {
        EXPECT_EQ(std::string(error.what()), "GJF Parse Error: " + message);
    }
}

}  // namespace quor::input::gaussian::test
