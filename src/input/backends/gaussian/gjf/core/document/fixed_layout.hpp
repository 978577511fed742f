// What the fixed layout of a written job cannot carry.
#pragma once

#include <core/export.hpp>
#include <gjf/core/editor/gjf_editor.hpp>
#include <gjf/core/job/job_comparison.hpp>

#include <optional>
#include <string>

namespace quor::input::gaussian {

/// A loss in writing a job: the part, and for people the reason, as in "the fixed layout cannot carry its Z-matrix".
struct LayoutLoss {
    JobPart part = JobPart::Link0;
    std::string reason;
};

/// Finds the first thing of a job that `to_gjf_string` would lose; absent when its text reads back to the same job.
///
/// Link atoms are looked for in the lines that were read, since the job holds no more of them. Blanks at the end of texts,
/// and decimals of molecular-mechanics charges behind the tenth are no loss. Takes a writing and a
/// reading of the job.
QUOR_GJF_API std::optional<LayoutLoss> find_layout_loss(const GJFEditor& editor);

}  // namespace quor::input::gaussian
