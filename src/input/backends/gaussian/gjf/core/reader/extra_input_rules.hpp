// What a route asks for after the molecule specification: the conditions on route and molecule, and the table of kinds.
#pragma once

#include <gjf/core/reader/reading.hpp>
#include <gjf/core/route/parsed_keywords.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <vector>

namespace quor::input::gaussian {

using Names = std::initializer_list<const char*>;

/// An interpreted route, with the questions that the rules ask of it. Names are compared through the vocabulary.
class RouteQuestions {
   public:
    RouteQuestions(const ParsedKeywords& route, const SimpleYAMLParser& schema, const MoleculeTraits& molecule);

    /// Tells whether the route has one of these keywords.
    bool keyword(Names names) const;
    /// Tells whether a keyword has one of these options, as an option's name or as its value.
    bool option(const char* keyword, Names options) const;
    /// Tells whether any keyword at all has one of these options.
    bool any_option(Names options) const;
    /// Tells whether the route sets an internal option, as in IOp(6/50=1).
    bool iop(const char* name, const char* value) const;
    /// Tells whether the method is one of these; `by_canonical_spelling` compares its canonical spelling too.
    bool method(Names names, bool by_canonical_spelling) const;
    /// Tells whether the basis set, or that of a basis keyword, is one of these.
    bool basis(Names names) const;
    /// Tells whether one of these words stands in the method's options or in the ONIOM expression.
    bool word_in_method_options(Names words) const;
    bool word_in_oniom(Names words) const;
    /// Tells whether a keyword has an option whose name or value is exactly this, case folded.
    bool option_text(const char* keyword, const char* text) const;
    /// Tells whether the method, or a keyword that is a method, is spin-unrestricted by its name.
    bool unrestricted() const;
    /// Tells whether a charge/multiplicity pair of the molecule is no singlet.
    bool open_shell() const noexcept { return molecule_.open_shell; }
    /// Tells whether an atom label carries residue information.
    bool has_residues() const noexcept { return molecule_.has_residues; }

   private:
    /// A keyword of the route, looked up: itself, and the names and values of its options.
    struct Keyword {
        std::string name;
        KeywordIdentity identity;
        std::vector<OptionIdentity> options;
    };

    KeywordIdentity look_up(const char* wanted) const;
    bool has_option(const Keyword& keyword, Names options) const;

    const ParsedKeywords& route_;
    std::vector<Keyword> keywords_;  // of the route, in its order
    bool has_options_ = false;       // any of them
    const SimpleYAMLParser& schema_;
    MoleculeTraits molecule_;
};

}  // namespace quor::input::gaussian
