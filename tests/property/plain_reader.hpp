// Reads a job the plain way: one obvious function a rule of the class interface, no places, no recovery, nothing that makes
// it fast. What the library reads is compared with it.
#pragma once

#include <gjf/core/job/gjf_data.hpp>

#include <string>
#include <vector>

namespace quor::test {

/// A job as texts. Kinds of section are left aside: `rest` holds the lines behind the molecule.
struct PlainJob {
    std::string error;
    std::vector<std::string> link0;  ///< "key=value" of the model's keys, then the other lines
    std::vector<std::string> words;
    std::string title;
    std::vector<std::string> charges;
    std::vector<std::string> atoms;  ///< "label|freeze|x|y|z|layer"
    std::vector<std::string> rows;   ///< "label|atom value|atom value|atom value"
    std::vector<std::string> variables;
    std::vector<std::string> rest;
};

PlainJob read_plainly(const std::string& text);

/// Returns a job that the library read in the same form.
PlainJob plain_form_of(const input::gaussian::GJFData& job);

/// Names the first part in which two jobs differ, with both texts; empty for none.
std::string plain_difference(const PlainJob& a, const PlainJob& b);

}  // namespace quor::test
