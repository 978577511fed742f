# Precompiled headers: one for each group of targets that are compiled with the same flags. They halve the time of compiling.
#
# Only what is not ours goes in, so that a changed header of ours recompiles its users alone. A source still includes all that it
# uses: builds without the option (release, tidy, coverage, consumers) find what is missing. <iostream> stays out: each source that
# has it runs code when the library is loaded.
option(QUOR_GJF_PRECOMPILE "Compile the headers of the standard library and of others once" OFF)

set(quor_standard_headers <algorithm> <array> <charconv> <cmath> <cstdint> <cstdio> <cstring> <filesystem> <fstream> <functional>
    <istream> <iterator> <limits> <map> <memory> <optional> <ostream> <set> <sstream> <stdexcept> <string> <string_view> <tuple>
    <unordered_map> <utility> <variant> <vector>)

# Compiles the standard headers, and those named beside them, with the first target of a group, and lets the others use them. Those
# have the first one's flags and definitions, at least.
function(quor_precompile group target)
    if(NOT QUOR_GJF_PRECOMPILE)
        return()
    endif()
    get_property(owner GLOBAL PROPERTY quor_precompiled_${group})
    if(owner)
        target_precompile_headers(${target} REUSE_FROM ${owner})
    else()
        set_property(GLOBAL PROPERTY quor_precompiled_${group} ${target})
        target_precompile_headers(${target} PRIVATE ${quor_standard_headers} ${ARGN})
    endif()
endfunction()

# The same for a target that is a group by itself: of no use where its sources are compiled as one.
function(quor_precompile_alone target)
    if(NOT CMAKE_UNITY_BUILD)
        quor_precompile(${target} ${target} ${ARGN})
    endif()
endfunction()
