// The head of a job: Link 0 lines and route.
#pragma once

#include <core/export.hpp>
#include <gjf/core/route/parsed_keywords.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Link 0 values and route of one job. An absent value and an empty one are different.
struct QUOR_GJF_API ControlSection {
    ControlSection();
    ControlSection(const ControlSection& other);
    ControlSection(ControlSection&& other) noexcept;
    ControlSection& operator=(const ControlSection& other);
    ControlSection& operator=(ControlSection&& other) noexcept;
    ~ControlSection();

    std::optional<std::string> chk;
    std::optional<std::string> oldchk;
    std::optional<std::string> rwf;
    std::optional<std::string> mem;  ///< as written, unit included
    std::optional<std::int32_t> nproc;
    std::optional<std::string> cpu;                 ///< as written
    std::vector<std::string> other_link0_lines;     ///< every other "%" line, trimmed
    std::vector<std::string> route_keywords;        ///< route words, the "#" head included, across all route lines
    std::vector<std::string> raw_lines;             ///< Link 0 and route lines as read
    std::optional<ParsedKeywords> parsed_keywords;  ///< present whenever `route_keywords` is not empty
};

}  // namespace quor::input::gaussian
