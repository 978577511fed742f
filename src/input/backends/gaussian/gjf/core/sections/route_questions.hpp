// The questions that the conditions for extra input ask of a route and its molecule. Private to the library.
#pragma once

#include <gjf/core/job/geometry.hpp>
#include <gjf/core/route/parsed_keywords.hpp>
#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <bitset>
#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// The keywords that the rules ask for, each once.
inline constexpr std::string_view asked_keywords[] = {"admp",
                                                      "basis",
                                                      "bomd",
                                                      "both",
                                                      "cas",
                                                      "casscf",
                                                      "charge",
                                                      "cphf",
                                                      "dftb",
                                                      "ept",
                                                      "external",
                                                      "extrabasis",
                                                      "extradensitybasis",
                                                      "extralinks",
                                                      "field",
                                                      "freq",
                                                      "gen",
                                                      "genecp",
                                                      "geom",
                                                      "guess",
                                                      "gvb",
                                                      "hardfirst",
                                                      "input",
                                                      "iop",
                                                      "irc",
                                                      "lst",
                                                      "massage",
                                                      "modconnect",
                                                      "modify",
                                                      "mopacexternal",
                                                      "nmr",
                                                      "opt",
                                                      "output",
                                                      "pop",
                                                      "prop",
                                                      "pseudo",
                                                      "readatradii",
                                                      "readisotopes",
                                                      "readmwvelocity",
                                                      "readvelocity",
                                                      "readwindow",
                                                      "scrf",
                                                      "softfirst",
                                                      "softonly"};

/// One of these keywords. Its place in the list is found when the library is compiled: no rule can ask for another word, and
/// none is looked up while a job is read.
class AskedKeyword {
   public:
    consteval AskedKeyword(const char* word) : index_(index_of(word)) {}
    constexpr std::size_t index() const noexcept { return index_; }

   private:
    static consteval std::size_t index_of(std::string_view word) {
        std::size_t index = 0;
        while (asked_keywords[index] != word) {  // runs out of the list, which does not compile, for any other word
            ++index;
        }
        return index;
    }

    std::size_t index_;
};

using Keywords = std::initializer_list<AskedKeyword>;
using Words = std::initializer_list<std::string_view>;

/// What the rules for sections ask of a molecule; of none, nothing holds.
struct MoleculeTraits {
    bool open_shell = false;    ///< a charge/multiplicity pair is no singlet
    bool has_residues = false;  ///< an atom label carries residue information
};

bool has_residue(const AtomInfo& info);
bool is_open_shell(const GeomSection& geom);

/// An interpreted route, with the questions that the rules ask of it. Names are compared through the default vocabulary;
/// which of the keywords asked for are there is found out once.
class RouteQuestions {
   public:
    /// `route` must outlive the questions.
    explicit RouteQuestions(const ParsedKeywords& route);

    /// Sets the molecule that is asked about; before that, nothing holds of it.
    void set_molecule(const MoleculeTraits& molecule) noexcept { molecule_ = molecule; }

    /// Tells whether the route has one of these keywords.
    bool keyword(Keywords names) const noexcept;
    /// Tells whether a keyword has one of these options, as an option's name or as its value.
    bool option(AskedKeyword keyword, Words options) const;
    /// Tells whether any keyword at all has one of these options.
    bool any_option(Words options) const;
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
    /// Tells whether a keyword has an option whose name or value is exactly this, case folded.
    bool option_text(AskedKeyword keyword, const char* text) const;
    /// Tells whether the method, or a keyword that is a method, is spin-unrestricted by its name.
    bool unrestricted() const;
    /// Tells whether a charge/multiplicity pair of the molecule is no singlet.
    bool open_shell() const noexcept { return molecule_.open_shell; }
    /// Tells whether an atom label carries residue information.
    bool has_residues() const noexcept { return molecule_.has_residues; }

   private:
    using KeywordSet = std::bitset<std::size(asked_keywords)>;

    /// A keyword of the route: which of the keywords asked for it is, and the names and values of its options.
    struct Keyword {
        const KeywordInfo* info;
        KeywordSet is;
        std::vector<OptionIdentity> options;
    };

    bool has_option(const Keyword& keyword, Words options) const;

    const ParsedKeywords& route_;
    const SimpleYAMLParser& schema_;
    std::vector<Keyword> keywords_;  // of the route, in its order
    KeywordSet present_;             // what any of them is
    MoleculeTraits molecule_;
};

}  // namespace quor::input::gaussian
