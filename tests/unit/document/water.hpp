// A job of water, and what becomes of it.
#pragma once

#include <string>

#include "document_edits.hpp"

namespace quor::input::gaussian::test {

/// A job whose lines are written as people write them.
inline const std::string water_head =
    "%Chk=water.chk ! keep\n%Mem = 1GB\n%NProcShared=4\n#P  B3LYP/6-31G(d)  Opt=(TS,CalcFC)\n   Freq ! route\n\nWater  "
    "title\n\n 0  1\n";
inline const std::string water_atoms =
    "O    0    0.0000000   0.0000000    0.1173000 ! oxygen\n  H    0    0.0000000   0.7572000   -0.4692000\n  H   -1    "
    "0.0000000  -0.7572000   -0.4692000\n";
inline const std::string water = water_head + water_atoms + "\n";

/// Returns why a document cannot be written.
inline std::string message_of(const GJFDocument& document) {
    try {
        return "no refusal:\n" + document.to_text();
    } catch (const GJFParseException& error) {
        return error.what();
    }
}

/// Water with one stretch of its text replaced.
inline std::string water_with(const std::string& from, const std::string& to) { return replaced(water, from, to); }

}  // namespace quor::input::gaussian::test
