// The files that make_inputs.py wrote, as texts.
#pragma once

#include <string>
#include <vector>

namespace quor::benchmarks {

/// Returns the path of an input, as in "large.gjf".
std::string input_path(const std::string& name);

/// Returns the text of an input, read on the first call and kept. Ends the program with a message when it cannot be read.
const std::string& input_text(const std::string& name);

/// Returns the 200 routes; the last has 25 words.
const std::vector<std::string>& input_routes();

/// Returns the path of the vocabulary document in the source tree.
std::string vocabulary_path();

/// Makes that document the default vocabulary, unless the environment names one.
void use_vocabulary_of_the_tree();

}  // namespace quor::benchmarks
