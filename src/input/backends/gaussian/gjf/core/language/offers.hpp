// What may be written at a place of a job file.
#pragma once

#include <core/export.hpp>
#include <gjf/core/predicate/job_file.hpp>
#include <gjf/core/text/span.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace quor::input::gaussian {

/// What an offer is.
enum class OfferKind { Keyword, Method, BasisSet, Option, Value, Link0, Element, Atom, File };

/// One text that may be written.
struct Offer {
    std::string text;
    OfferKind kind = OfferKind::Keyword;
    std::string detail;  ///< a few words beside it; may be empty
    int rank = 0;        ///< lower ones come first; equal ones in the order of the list
};

/// What may stand in the place of a stretch: the word at the offset, the part behind the offset included.
struct Offers {
    Span replaced;
    std::vector<Offer> offers;
};

/// Returns what may be written at an offset: words, options and values of the route, Link 0 keys and their values, elements
/// and atom numbers in sections. Nothing in titles, comments and coordinates. Basis sets that lack an element of the
/// molecule come last.
QUOR_GJF_API Offers offers_at(const JobFile& file, std::size_t offset);

}  // namespace quor::input::gaussian
