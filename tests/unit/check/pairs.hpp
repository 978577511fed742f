// Pairs of near texts, one of which raises a code of the checker, and the jobs that they are made from.
#pragma once

#include <gjf/core/check/checker.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace quor::test::pairs {

struct Pair {
    const char* code;
    std::string raises;
    std::string near;
};

// A job with a route line, and a molecule behind the title.
inline std::string job(const std::string& route,
                       const std::string& molecule = "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n",
                       const std::string& rest = "") {
    return route + "\n\ntitle\n\n" + molecule + "\n" + (rest.empty() ? "" : rest + "\n");
}

inline const std::string hydrogen = "0 1\nH 0.0 0.0 0.0\nH 0.0 0.0 0.74\n";
inline const std::string methanol =
    "0 1\nC 0.0 0.0 0.0\nO 0.0 0.0 1.42\nH 0.0 0.95 1.70\nH 0.51 0.90 -0.36\nH -1.03 0.0 -0.36\nH 0.51 -0.90 -0.36\n";
inline const std::string ethane_layers =
    "C 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\nC 1.53 0.0 0.0 L H 1\nH 1.92 -1.02 "
    "0.0 L\n"
    "H 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n";

// Without the number of the atom that the link atom is bonded to.
inline const std::string hostless_layers =
    "C 0.0 0.0 0.0 H\nH -0.39 1.02 0.0 H\nH -0.39 -0.51 -0.89 H\nH -0.39 -0.51 0.89 H\nC 1.53 0.0 0.0 L H\nH 1.92 -1.02 "
    "0.0 L\nH 1.92 0.51 0.89 L\nH 1.92 0.51 -0.89 L\n";

inline const std::string dimer = "H(Fragment=1) 0.0 0.0 0.0\nH(Fragment=1) 0.0 0.0 0.74\nHe(Fragment=2) 0.0 0.0 4.0\n";
inline const std::string gen = "O 0\n6-31G(d)\n****\nH 0\n6-31G\n****\n";

inline std::string oniom(const std::string& pairs, const std::string& atoms = ethane_layers) {
    return job("# oniom(hf/sto-3g:pm6)", pairs + "\n" + atoms);
}

inline std::string periodic(const std::string& vectors) {
    return job("# pbepbe/sto-3g", "0 1\nHe 0.0 0.0 0.0\nHe 0.0 0.0 3.0\n" + vectors);
}

inline std::string qst(const std::string& second) { return job("# opt=qst2 hf/sto-3g", hydrogen, "second\n\n" + second); }

inline std::string with_basis(const std::string& section) {
    return job("# hf/gen", "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n", section);
}

inline std::string with_potential(const std::string& potential) {
    return job("# hf/genecp", "0 1\nH 0.0 0.0 0.0\nNa 0.0 0.0 1.89\n",
               "H 0\n6-31G\n****\nNa 0\nLANL2DZ\n****\n\nNa 0\n" + potential);
}

inline std::string bonds(const std::string& rows) {
    return job("# hf/sto-3g geom=connectivity", "0 1\nO 0.0 0.0 0.0\nH 0.0 0.76 0.59\nH 0.0 -0.76 0.59\n", rows);
}

inline std::string changes(const std::string& rows) { return job("# hf/sto-3g opt=modredundant", methanol, rows); }

inline std::string gics(const std::string& rows) { return job("# hf/sto-3g opt=addgic", methanol, rows + "\n"); }

inline const std::string plain = job("# hf/sto-3g");

inline std::set<std::string> codes_of(const std::string& text) {
    std::set<std::string> codes;
    for (const auto& finding : input::gaussian::check_text(text)) {
        codes.insert(finding.code);
    }
    return codes;
}

/// Expects the code of each pair in its first text, and not in its near one.
inline void expect_pairs(const std::vector<Pair>& pairs) {
    for (const Pair& pair : pairs) {
        EXPECT_EQ(codes_of(pair.raises).count(pair.code), 1U) << pair.code << " in\n" << pair.raises;
        EXPECT_EQ(codes_of(pair.near).count(pair.code), 0U) << pair.code << " in\n" << pair.near;
    }
}

}  // namespace quor::test::pairs
