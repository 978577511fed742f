// The list of the kinds of extra input sections that --section takes, as in --section basis=@file.
#pragma once

#include <string>

namespace quor_gjf {

/// Lists all kinds, one a line: number, short name, display name, and what in a route asks for it.
std::string section_kind_list();

}  // namespace quor_gjf
