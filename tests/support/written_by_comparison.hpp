// Writes a document by comparing all parts of its jobs, for tests and fuzzers that ask whether the record of edits tells the
// same.
#pragma once

#include <gjf/core/document/gjf_document.hpp>

#include <cstddef>
#include <string>

namespace quor::input::gaussian::test {

/// Writes the jobs of a document without the record of what was done to them, so that all their parts are compared.
inline std::string written_by_comparison(const std::string& text, const GJFDocument& edited) {
    GJFDocument document(text);
    for (std::size_t i = 0; i < edited.job_count(); ++i) {
        if (!edited.readable(i)) {
            continue;
        }
        const GJFEditor& job = edited.job(i);
        document.job(i) = job;
        document.job(i).set_data(job.get_data(), job.atom_origins(), job.section_numberings());
    }
    return document.to_text();
}

}  // namespace quor::input::gaussian::test
