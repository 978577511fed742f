// Finds the names that a misspelt word may have meant. Private to the library.
#pragma once

#include <gjf/core/schema/simple_yaml_parser.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace quor::input::gaussian {

/// Tells whether a word that nobody knows is surely one of its near names misspelt, and none that only this list lacks: it
/// differs in dashes alone, or one letter inside a name, or inside an abbreviation of it, of six letters or more is wrong,
/// missing, doubled, or swapped with its neighbour. A letter added in front or behind may make another word.
bool is_misspelt(std::string_view word, const std::vector<std::string>& near);

/// Tells the same of a word that must be a method, a basis set or a solvent, since it stands where only such a name does:
/// the word is as long as the name was meant to be, four letters or more, and digits may be doubled or swapped.
bool is_misspelt_model(std::string_view word, const std::vector<std::string>& near);

/// Tells whether a word that nobody knows is one of its near names with one letter or digit added in front or behind, as
/// papers and programs make new names of old ones: such a word may be one that only this list lacks. A last letter that is
/// doubled is a slip instead.
bool has_added_letter(std::string_view word, const std::vector<std::string>& near);

/// Tells whether a word is surely none of Gaussian's: a name that other programs have, or one with a sign that stands in no
/// word and parts none.
bool is_foreign(std::string_view word);

/// Tells whether Gaussian surely does not take a word that nobody knows: the vocabulary has all that its public lists, its
/// own test jobs and outputs hold. What is left may be a name made of another by one letter more. `has_looked` tells whether
/// the near names were looked for.
bool is_surely_none(std::string_view word, const std::vector<std::string>& near, bool has_looked);

/// Tells whether two words are equal but for dashes and letter case.
bool differ_in_dashes_alone(std::string_view a, std::string_view b);

/// Returns at most three of `names` that are nearest to a word: equal but for dashes, or a few letters away.
///
/// A letter left out, put in, changed, or two neighbours exchanged count as one step; more steps are allowed for longer
/// words.
std::vector<std::string> near_names(std::string_view word, const std::vector<std::string>& names);

/// Returns every keyword and method of a vocabulary in each of its spellings, and every basis set.
std::vector<std::string> all_route_words(const SimpleYAMLParser& schema);

/// Returns every basis set of a vocabulary, in their preferred spellings.
std::vector<std::string> all_basis_sets(const SimpleYAMLParser& schema);

/// Returns every option of a keyword, in each of its spellings.
std::vector<std::string> all_options(const SimpleYAMLParser& schema, const std::string& keyword);

/// Writes "did you mean a, b or c?"; empty for no names.
std::string did_you_mean(const std::vector<std::string>& names);

}  // namespace quor::input::gaussian
