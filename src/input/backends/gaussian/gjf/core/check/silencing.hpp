// Comments that silence codes: "! quor-gjf: ignore CODE CODE". Private to the room.
#pragma once

#include <gjf/core/check/checked_job.hpp>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The codes that comments of one job silence there.
class SilencedCodes {
   public:
    explicit SilencedCodes(const CheckedJob& job);

    /// Tells whether a code is silenced.
    bool has(std::string_view code) const noexcept;
    /// Drops the findings from number `begin` on that are silenced, and tells of comments that silence nothing, of codes
    /// that are on and could have been found.
    void apply(const CheckedJob& job, std::vector<Finding>& list, std::size_t begin,
               const std::function<bool(const std::string&)>& is_on, Findings& findings) const;

   private:
    struct Silenced {
        std::string code;  // in capitals
        TextPlace place;
    };
    std::vector<Silenced> codes_;
};

}  // namespace quor::input::gaussian
