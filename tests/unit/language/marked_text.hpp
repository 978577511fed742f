// A text with a mark where the cursor stands.
#pragma once

#include <gjf/core/predicate/job_file.hpp>

#include <cstddef>
#include <string>

/// A job file and an offset in it: both from a text in which "|" marks the place.
struct MarkedFile {
    explicit MarkedFile(const std::string& marked)
        : offset(marked.find('|')),
          file("t.gjf", marked.substr(0, offset) + marked.substr(offset == std::string::npos ? marked.size() : offset + 1)) {
    }

    std::size_t offset;
    quor::input::gaussian::JobFile file;
};
