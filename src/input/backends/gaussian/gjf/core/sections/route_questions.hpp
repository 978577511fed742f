// The questions that the conditions for extra input ask of a route and its molecule. Private to the library.
#pragma once

#include <gjf/core/job/geometry.hpp>
#include <gjf/core/route/parsed_keywords.hpp>
#include <gjf/core/route/route_words.hpp>

#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace quor::input::gaussian {

using Words = std::initializer_list<std::string_view>;

/// What the rules for sections ask of a molecule; of none, nothing holds.
struct MoleculeTraits {
    bool open_shell = false;    ///< a charge/multiplicity pair is no singlet
    bool has_residues = false;  ///< an atom label carries residue information
};

bool has_residue(const AtomInfo& info);
bool is_open_shell(const GeomSection& geom);

/// An interpreted route, with the questions that the rules ask of it. Keywords and options are asked for by their preferred
/// spelling in the default vocabulary; which ones are there is looked up once, and asked of `RouteWords`.
class RouteQuestions {
   public:
    /// `route` must outlive the questions.
    explicit RouteQuestions(const ParsedKeywords& route);
    RouteQuestions(const RouteQuestions&) = delete;
    RouteQuestions& operator=(const RouteQuestions&) = delete;

    /// Sets the molecule that is asked about; before that, nothing holds of it.
    void set_molecule(const MoleculeTraits& molecule) noexcept { molecule_ = molecule; }

    /// Tells whether the route has one of these keywords.
    bool keyword(Words names) const noexcept;
    /// Tells whether a keyword has one of these options, as an option's name or as its value.
    bool option(std::string_view keyword, Words options) const noexcept;
    /// Tells whether any keyword at all has one of these options.
    bool any_option(Words options) const noexcept;
    /// Tells whether any keyword that the vocabulary gives this option has it.
    bool any_known_option(std::string_view name) const noexcept { return words_.any_has_option(name, true); }
    /// Tells whether the route sets an internal option, as in IOp(6/50=1).
    bool iop(const char* name, const char* value) const;
    /// Tells whether the method is one of these; `by_canonical_spelling` compares its canonical spelling too.
    bool method(Words names, bool by_canonical_spelling) const;
    /// Tells whether the basis set, or that of a basis keyword, is one of these.
    bool basis(Words names) const;
    /// Tells whether one of these words stands in the method's options or in the ONIOM expression.
    bool word_in_method_options(Words words) const;
    bool word_in_oniom(Words words) const;
    /// Counts how often a word stands in the ONIOM expression.
    std::size_t count_in_oniom(std::string_view word) const;
    /// Tells whether the method, or a keyword that is a method, is spin-unrestricted by its name.
    bool unrestricted() const;
    /// Tells whether a charge/multiplicity pair of the molecule is no singlet.
    bool open_shell() const noexcept { return molecule_.open_shell; }
    /// Tells whether an atom label carries residue information.
    bool has_residues() const noexcept { return molecule_.has_residues; }

   private:
    const ParsedKeywords& route_;
    RouteTree tree_;  // without places: the values of options are options too
    RouteWords words_;
    MoleculeTraits molecule_;
};

}  // namespace quor::input::gaussian
