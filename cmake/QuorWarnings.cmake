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

# Programs that test under sanitizers: what is tested is watched as a whole; of the test's own code what could show a fault in a result,
# memory and values that their types do not have. That and no optimisation make its compiling three times as fast.
add_library(quor_test_flags INTERFACE)
target_link_libraries(quor_test_flags INTERFACE quor_build_flags)
if(QUOR_GJF_SANITIZERS MATCHES "undefined")
    target_compile_options(quor_test_flags INTERFACE -O0 -fno-sanitize=undefined -fsanitize=bool,enum -fno-sanitize-recover=all)
endif()
