// What quor-gjf edit says once over all files: with a count and the first places.
#pragma once

#include <gjf/gjf.hpp>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace quor_gjf {

/// Something worth saying, and where.
struct EditRemark {
    std::string text;            ///< one line or several, without a line end
    std::string place;           ///< a file, or a place in it
    bool is_of_finding = false;  ///< else of the edit itself
};

/// Says of a finding that the old text did not have where it is.
EditRemark remark_of(const std::string& path, const quor::input::gaussian::Finding& finding);

/// Collects remarks; keeps each text once, with the first of its places.
class EditRemarks {
   public:
    void add(const EditRemark& remark);
    /// Returns all, in the order in which they came first.
    std::string text() const;

   private:
    struct Entry {
        bool is_of_finding = false;
        std::size_t count = 0;
        std::vector<std::string> places;
    };

    std::vector<std::string> order_;
    std::map<std::string, Entry> entries_;
    std::size_t left_out_ = 0;
};

}  // namespace quor_gjf
