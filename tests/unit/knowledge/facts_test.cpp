// The tables of facts: that each is read, that its words are the vocabulary's own, and what is answered from them.
#include <gjf/core/knowledge/facts.hpp>

#include <gjf/core/knowledge/basis_facts.hpp>
#include <gjf/core/knowledge/fact_table.hpp>
#include <gjf/core/knowledge/knowledge.hpp>
#include <gjf/core/knowledge/route_facts.hpp>
#include <gjf/core/schema/route_schema_cache.hpp>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <sstream>
#include <string>

using namespace quor::input::gaussian;

namespace {

const SimpleYAMLParser& vocabulary() { return default_route_schema(); }

bool is_own_word(std::string_view text) {
    const std::string word(text);
    return (vocabulary().knows_keyword_exact(word) && vocabulary().normalize_keyword(word) == word) ||
           (vocabulary().knows_method_exact(word) && vocabulary().normalize_keyword(word) == word) ||
           (vocabulary().knows_basis_exact(word) && vocabulary().normalize_basis(word) == word);
}

bool is_own_option(std::string_view keyword, std::string_view text) {
    const std::string option(text);
    return vocabulary().knows_option_exact(std::string(keyword), option) &&
           vocabulary().normalize_option(std::string(keyword), option) == option;
}

// A word of a route as keyword=option, keyword or method.
bool is_route_word(std::string_view text) {
    const std::size_t sign = text.find('=');
    return sign == std::string_view::npos
               ? is_own_word(text)
               : is_own_word(text.substr(0, sign)) && is_own_option(text.substr(0, sign), text.substr(sign + 1));
}

// An option of an overlay, as iop=3/33, which the vocabulary does not list.
bool is_internal_option(std::string_view text) {
    const std::string_view item = text.substr(0, 4) == "iop=" ? text.substr(4) : std::string_view();
    const std::size_t slash = item.find('/');
    return slash > 0 && slash + 1 < item.size() && item.find_first_not_of("0123456789/") == std::string_view::npos &&
           item.find('/', slash + 1) == std::string_view::npos;
}

TEST(Facts, AreAllThere) { EXPECT_EQ(missing_knowledge(), ""); }

TEST(Facts, SpeakTheWordsOfTheVocabulary) {
    const FactTable words("words", {"word"});
    ASSERT_GT(words.size(), 60U);
    for (std::size_t i = 0; i < words.size(); ++i) {
        EXPECT_TRUE(is_route_word(words.row(i)[0]) || is_internal_option(words.row(i)[0])) << words.row(i)[0];
    }
    for (const CheckpointRead& reads : checkpoint_reads()) {
        EXPECT_TRUE(reads.option.empty() ? is_own_word(reads.keyword) : is_own_option(reads.keyword, reads.option))
            << reads.keyword << "=" << reads.option;
    }
    for (const Need& need : needs()) {
        EXPECT_TRUE(is_own_word(need.keyword)) << need.keyword;
        EXPECT_TRUE(need.option.empty() || is_own_option(need.keyword, need.option)) << need.option;
        EXPECT_FALSE(need.any_of.empty());
        for (const std::string_view option : need.any_of) {
            EXPECT_TRUE(is_own_option(need.keyword, option) || is_route_word(option)) << need.keyword << "=" << option;
        }
    }
}

TEST(Facts, ExcludeWordsOfTheVocabularyOnly) {
    const FactTable table("excludes", {"what", "keyword", "first", "second", "severity"});
    ASSERT_GE(table.size(), 116U);
    std::size_t found = 0;
    std::set<std::pair<std::string_view, std::string_view>> kinds;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        const bool is_options = row[0] == "options";
        for (const std::string_view word : {row[2], row[3]}) {
            EXPECT_TRUE(is_options ? is_own_option(row[1], word) : row[1].empty() && is_route_word(word))
                << row[1] << " " << word;
        }
        EXPECT_TRUE(is_options || row[0] == "keywords" || row[0] == "jobs" || row[0] == "words") << row[0];
        EXPECT_TRUE(row[4] == "error" || row[4] == "warning" || row[4] == "note") << row[4];
        EXPECT_NE(row[2], row[3]);
        found += kinds.emplace(row[0], row[1]).second ? exclusions(row[0], row[1]).size() : 0;
    }
    EXPECT_EQ(found, table.size()) << "the rows of one keyword stand together";
}

TEST(Facts, TellOfMethodsOfTheVocabulary) {
    const auto each_word = [](std::string_view list, const auto& check) {
        std::istringstream words{std::string(list)};
        for (std::string word; words >> word;) {
            EXPECT_TRUE(check(word)) << word;
        }
    };
    std::set<std::string_view> properties;
    const FactTable lacks("method_lacks", {"property", "methods"});
    for (std::size_t i = 0; i < lacks.size(); ++i) {
        properties.insert(lacks.row(i)[0]);
        each_word(lacks.row(i)[1], [](const std::string& word) { return word == "ro*" || is_own_word(word); });
    }
    EXPECT_GE(method_requests().size(), 30U);
    for (const MethodRequest& request : method_requests()) {
        each_word(request.request, is_route_word);
        each_word(request.unless, is_route_word);
        EXPECT_EQ(properties.count(request.needs), 1U) << request.needs;
        EXPECT_TRUE(request.kind == "lacks" || request.kind == "numerical") << request.kind;
        EXPECT_NE(request.severity, "error") << request.request;
    }
    const FactTable dispersion("dispersion", {"functional", "correction", "severity", "certainty"});
    ASSERT_GT(dispersion.size(), 50U);
    for (std::size_t i = 0; i < dispersion.size(); ++i) {
        const std::string_view* row = dispersion.row(i);
        EXPECT_TRUE(is_own_word(row[0]) && is_own_option("empiricaldispersion", row[1])) << row[0] << " " << row[1];
        EXPECT_EQ(row[2], row[3] == "certain" ? "warning" : "note") << row[0] << " " << row[1];
    }
}

TEST(Facts, GiveValuesToOptionsOfTheVocabulary) {
    const FactTable table("option_values", {"keyword", "options", "takes_value", "kind", "severity", "certainty"});
    ASSERT_GT(table.size(), 150U);
    const std::set<std::string_view> kinds = {"integer", "real", "name", "iop", "size", "text", "multipole"};
    std::size_t found = 0;
    std::set<std::string_view> keywords;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        EXPECT_TRUE(is_own_word(row[0])) << row[0];
        std::istringstream options{std::string(row[1])};
        for (std::string option; options >> option;) {
            EXPECT_TRUE(is_own_option(row[0], option)) << row[0] << "=" << option;
        }
        EXPECT_TRUE(row[2] == "required" || row[2] == "optional" || (row[2] == "no" && !row[1].empty())) << row[2];
        EXPECT_EQ(kinds.count(row[3]), row[2] == "no" ? 0U : 1U) << row[0] << " " << row[3];
        EXPECT_TRUE(row[4] == "note" || row[5] == "certain") << row[0] << " " << row[1];
        found += keywords.insert(row[0]).second ? option_values(row[0]).size() : 0;
    }
    EXPECT_EQ(found, table.size()) << "the rows are sorted by keyword";
}

TEST(Facts, TellHowTheCostOfMethodsGrows) {
    const FactTable costs("method_costs", {"cost", "memory", "in_core", "disk", "certainty", "methods"});
    ASSERT_GE(costs.size(), 20U);
    std::set<std::string> methods;
    for (std::size_t i = 0; i < costs.size(); ++i) {
        const std::string_view* row = costs.row(i);
        for (std::size_t formula = 0; formula < 4; ++formula) {
            EXPECT_EQ(row[formula].find_first_not_of("0123456789.^+ NOV"), std::string_view::npos) << row[formula];
        }
        EXPECT_FALSE(row[0].empty());
        EXPECT_EQ(row[4], "doubtful");
        std::istringstream words{std::string(row[5])};
        for (std::string word; words >> word;) {
            EXPECT_TRUE(is_own_word(word)) << word;
            EXPECT_TRUE(methods.insert(word).second) << word << " stands in two rows";
            ASSERT_NE(method_cost("u" + word), nullptr) << word;
            EXPECT_EQ(method_cost(word)->cost, row[0]) << word;
        }
    }
    for (const char* unknown : {"", "u", "hfx", "mp", "casscf", "ccsd(", "lyp", "b3lyp/6-31g"}) {
        EXPECT_EQ(method_cost(unknown), nullptr) << unknown;
    }
}

TEST(Facts, TellTheirSourceAndHowSureTheyAre) {
    std::size_t tables = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUOR_GJF_SOURCE_DIR "/resources/knowledge")) {
        if (entry.path().extension() != ".tsv") {
            continue;
        }
        ++tables;
        const FactTable table(entry.path().stem().string(), {"source", "certainty"});
        EXPECT_EQ(table.problem(), "");
        EXPECT_GT(table.size(), 0U) << entry.path();
        for (std::size_t i = 0; i < table.size(); ++i) {
            const std::string_view* row = table.row(i);
            EXPECT_FALSE(row[0].empty()) << entry.path() << ":" << i + 2;
            EXPECT_TRUE(row[1] == "certain" || row[1] == "doubtful") << entry.path() << ":" << i + 2;
            EXPECT_TRUE(row[0] != "unverified" || row[1] == "doubtful") << entry.path() << ":" << i + 2;
        }
    }
    EXPECT_GE(tables, 6U);
}

TEST(Facts, AnswerByTraitAndPrefix) {
    EXPECT_TRUE(has_trait("pm6", "needs no basis set"));
    EXPECT_TRUE(method_has_trait("upm6", "needs no basis set"));
    EXPECT_TRUE(method_has_trait("rocbs-qb3", "needs no basis set"));
    EXPECT_TRUE(has_trait("uff", "is a force field"));
    EXPECT_FALSE(has_trait("upm6", "needs no basis set"));
    EXPECT_FALSE(method_has_trait("hf", "needs no basis set"));
    EXPECT_FALSE(has_trait("pm6", "is a force field"));
    EXPECT_FALSE(has_trait("pm6", ""));
    EXPECT_FALSE(has_trait("", "needs no basis set"));
}

TEST(Facts, ListWordsByTrait) {
    EXPECT_EQ(words_with("is a force field"), "amber dreiding uff");
    EXPECT_NE(words_with("goes on with a job").find("opt=restart"), std::string_view::npos);
    for (const char* trait : {"", "is a force", "IS A FORCE FIELD", "opt=restart"}) {
        EXPECT_EQ(words_with(trait), "") << trait;
    }
}

TEST(Facts, KnowTheWordsOfTheSolventInput) {
    const std::vector<std::string>& words = solvent_input_words();
    EXPECT_EQ(words.size(), 72U);
    EXPECT_EQ(std::set<std::string>(words.begin(), words.end()).size(), words.size());
    for (const char* word : {"eps", "EPSINF", "tsare"}) {
        EXPECT_TRUE(takes_number(word)) << word;
    }
    for (const char* word : {"", "ep", "epsi", "radii", "noneq=read", "number"}) {
        EXPECT_FALSE(takes_number(word)) << word;
    }
}

TEST(Facts, KnowTheNamesOfTheSolventInput) {
    EXPECT_EQ(names_taken("SURFACE"), "vdw ses sas dens");
    for (const char* word : {"", "eps", "radi", "radiii"}) {
        EXPECT_EQ(names_taken(word), "") << word;
    }
}

TEST(Facts, KnowTheWordsOfCoordinates) {
    std::set<std::pair<std::string_view, std::string_view>> words;
    for (const CoordinateWord& known : coordinate_words()) {
        EXPECT_TRUE(words.emplace(known.kind, known.word).second) << known.word;
        EXPECT_TRUE(known.kind == "function" || known.kind == "option") << known.kind;
        const bool is_function = known.takes.empty() || known.takes.ends_with(" atoms");
        EXPECT_TRUE(is_function || (known.kind == "option" && known.takes.ends_with("number"))) << known.takes;
    }
    EXPECT_EQ(words.count({"function", "dihedral"}), 1U);
    EXPECT_EQ(words.count({"option", "dihedral"}), 0U);
}

TEST(Facts, AreNotesWhereNobodyVerifiedThem) {
    std::size_t tables = 0;
    for (const auto& entry : std::filesystem::directory_iterator(QUOR_GJF_SOURCE_DIR "/resources/knowledge")) {
        const std::string name = entry.path().stem().string();
        const FactTable table(entry.path().extension() == ".tsv" ? name : "", {"severity", "source"});
        tables += table.problem().empty() ? 1 : 0;  // the others name no severity
        for (std::size_t i = 0; i < table.size(); ++i) {
            EXPECT_TRUE(table.row(i)[1] != "unverified" || table.row(i)[0] == "note") << name << ":" << i + 2;
        }
    }
    EXPECT_GE(tables, 7U);
    // Of the traits of words these raise findings; the others keep some from being raised. A name of a functional, and of a
    // coordinate's word, raises one too.
    const FactTable traits("words", {"word", "trait", "source"});
    for (std::size_t i = 0; i < traits.size(); ++i) {
        const std::string_view trait = traits.row(i)[1];
        EXPECT_TRUE(traits.row(i)[2] != "unverified" || (trait != "needs no basis set" && trait != "must not be repeated"))
            << traits.row(i)[0];
    }
    const FactTable names("other_names", {"kind", "name", "source"});
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_TRUE(names.row(i)[2] != "unverified" || names.row(i)[0] == "option") << names.row(i)[1];
    }
    const FactTable solvents("solvents", {"kind", "name", "source"});
    for (std::size_t i = 0; i < solvents.size(); ++i) {
        EXPECT_TRUE(solvents.row(i)[2] != "unverified" || solvents.row(i)[0] != "name") << solvents.row(i)[1];
    }
    const FactTable coordinates("coordinate_words", {"word", "source"});
    for (std::size_t i = 0; i < coordinates.size(); ++i) {
        EXPECT_NE(coordinates.row(i)[1], "unverified") << coordinates.row(i)[0];
    }
}

TEST(Facts, KnowSolventsByNameFormulaAndBeginning) {
    for (const char* name : {"water", "WATER", "h2o", "Generic", "1", "1,4-dioxane", "n", "dmso"}) {
        EXPECT_TRUE(is_solvent(name)) << name;
    }
    for (const char* name : {"waters", "h2", "dcm", "dioxane", "gen", "genericx"}) {
        EXPECT_FALSE(is_solvent(name)) << name;
    }
    EXPECT_EQ(abbreviated_solvent("DCM"), "dichloromethane");
    EXPECT_EQ(abbreviated_solvent("h2o"), std::nullopt);
    EXPECT_EQ(solvent_names().size(), 184U);
    for (const std::string& name : solvent_names()) {
        EXPECT_EQ(abbreviated_solvent(name), std::nullopt) << name;
    }
}

TEST(Facts, KnowOtherNames) {
    EXPECT_EQ(other_name("functional", "PBE0"), "pbe1pbe");
    EXPECT_EQ(other_name("functional", "r2scan"), "");
    EXPECT_EQ(other_name("functional", "smd"), std::nullopt);
    EXPECT_EQ(other_name("option", "smd"), "scrf=(smd,solvent=...)");
    EXPECT_EQ(other_name("option", ""), std::nullopt);
}

TEST(Facts, KnowTheElementsOfBasisSets) {
    const FactTable table("basis_elements", {"basis", "severity", "certainty", "source"});
    ASSERT_GT(table.size(), 70U);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        EXPECT_TRUE(vocabulary().knows_basis_exact(std::string(row[0]))) << row[0];
        EXPECT_EQ(row[2], row[1] == "note" ? "doubtful" : "certain") << row[0];
        EXPECT_TRUE(row[1] != "error" || row[3].starts_with("outputs")) << row[0];
        ASSERT_NE(basis_elements(row[0]), nullptr) << row[0];
        EXPECT_TRUE(basis_elements(row[0])->covers(1)) << row[0];
        EXPECT_FALSE(basis_elements(row[0])->covers(0)) << row[0];
        EXPECT_FALSE(basis_elements(row[0])->covers(119)) << row[0];
    }
    struct Case {
        const char* basis;
        int last;
        int beyond;
    };
    for (const auto& [basis, last, beyond] :
         {Case{"sto-3g", 54, 55}, Case{"6-31g(2df,p)", 36, 37}, Case{"6-311++g**", 36, 37}, Case{"cc-pvtz", 36, 19},
          Case{"4-31g", 17, 11}, Case{"def2svp", 57, 58}, Case{"lanl2dz", 94, 84}, Case{"cep-31g*", 86, 87},
          Case{"epr-iii", 9, 2}}) {
        ASSERT_NE(basis_elements(basis), nullptr) << basis;
        EXPECT_TRUE(basis_elements(basis)->covers(last)) << basis;
        EXPECT_FALSE(basis_elements(basis)->covers(beyond)) << basis;
    }
    for (const char* unknown : {"", "sd", "gen", "ugbs1", "sto-", "6-31", "(d)"}) {
        EXPECT_EQ(basis_elements(unknown), nullptr) << unknown;
    }
}

TEST(Facts, KnowTheFunctionsOfBasisSets) {
    const FactTable table("basis_functions", {"basis", "shells", "d"});
    ASSERT_GE(table.size(), 120U);
    for (std::size_t i = 0; i < table.size(); ++i) {
        const std::string_view* row = table.row(i);
        EXPECT_TRUE(vocabulary().knows_basis(std::string(row[0]))) << row[0];
        EXPECT_NE(basis_elements(row[0]), nullptr) << row[0];
        EXPECT_TRUE(row[2] == "5" || row[2] == "6") << row[0];
        const int first = std::stoi(std::string(row[1]));
        const auto shells = basis_shells(row[0], first);
        ASSERT_TRUE(shells) << row[0];
        EXPECT_GT(shells->functions(false, false), 0) << row[0];
    }
    EXPECT_EQ(basis_shells("6-31g", 37), std::nullopt);
    EXPECT_EQ(basis_shells("6-31g(", 6), std::nullopt);
    EXPECT_EQ(basis_shells("6-31g()", 6), std::nullopt);
    EXPECT_EQ(basis_shells("6-31g(d,p,d,p)", 6), std::nullopt);
    EXPECT_EQ(basis_shells("3-21g(d,p)", 6), std::nullopt);
    EXPECT_EQ(basis_shells("", 6), std::nullopt);
    EXPECT_TRUE(has_six_d_functions("6-31+g(d')"));
    EXPECT_FALSE(has_six_d_functions("6-311g*"));
    EXPECT_FALSE(has_six_d_functions("gen"));
}

TEST(Facts, KnowCorePotentials) {
    struct Case {
        const char* name;
        int element;
        std::optional<int> core;
    };
    for (const auto& [name, element, core] :
         {Case{"lanl2dz", 26, 10}, Case{"lanl2dz", 6, 0}, Case{"def2svp", 26, 0}, Case{"def2svp", 53, 28},
          Case{"cep-31g*", 6, 2}, Case{"MWB28", 44, 28}, Case{"mdf10", 26, 10}, Case{"6-31g(d)", 26, 0},
          Case{"mwb", 44, std::nullopt}, Case{"xwb28", 44, std::nullopt}, Case{"mwb2x", 44, std::nullopt},
          Case{"lanl1dz", 26, std::nullopt}, Case{"gen", 1, std::nullopt}, Case{"", 1, std::nullopt}}) {
        EXPECT_EQ(core_electrons(name, element), core) << name << " " << element;
    }
}

TEST(Facts, KnowTheElementsOfMethods) {
    ASSERT_NE(parameters_elements("composite", "cbs-qb3"), nullptr);
    EXPECT_EQ(parameters_elements("composite", "cbs-qb3")->first_basis, "cbsb7");
    EXPECT_FALSE(parameters_elements("composite", "cbs-qb3")->elements.covers(53));
    EXPECT_TRUE(parameters_elements("dispersion", "gd3")->elements.covers(94));
    EXPECT_FALSE(parameters_elements("dispersion", "gd3")->elements.covers(95));
    EXPECT_EQ(parameters_elements("dispersion", "cbs-qb3"), nullptr);
    EXPECT_EQ(parameters_elements("composite", "hf"), nullptr);
}

TEST(FactTable, TellsWhatItCannotRead) {
    EXPECT_NE(FactTable("no_such_table", {"word"}).problem().find("no_such_table.tsv cannot be read"), std::string::npos);
    const FactTable lacking("words", {"word", "weight"});
    EXPECT_NE(lacking.problem().find("words.tsv has no column 'weight'"), std::string::npos);
    EXPECT_EQ(lacking.size(), 0U);
    const FactTable turned("words", {"trait", "word"});
    ASSERT_GT(turned.size(), 0U);
    EXPECT_EQ(turned.row(0)[1], "admp=restart");
}

}  // namespace
