# Warnings, as errors, and sanitizers for our own targets; projects that build us as a part of theirs get neither.

option(QUOR_GJF_WARNINGS_AS_ERRORS "Stop at warnings; for those who change the library, with the compilers it was tried with" ON)

add_library(quor_build_flags INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
    target_compile_options(quor_build_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
    # Where the sources of a target are compiled as one, a name in one file would be told to shadow that of another.
    if(NOT CMAKE_UNITY_BUILD)
        target_compile_options(quor_build_flags INTERFACE -Wshadow)
    endif()
    if(QUOR_GJF_WARNINGS_AS_ERRORS)
        target_compile_options(quor_build_flags INTERFACE -Werror)
    endif()
    # g++ 12 warns of overlapping copies inside std::string where there are none.
    target_compile_options(quor_build_flags INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
endif()
if(QUOR_GJF_SANITIZERS)
    target_compile_options(quor_build_flags INTERFACE
        -fsanitize=${QUOR_GJF_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(quor_build_flags INTERFACE -fsanitize=${QUOR_GJF_SANITIZERS})
endif()
