# Looks for what the project builds with. A missing dependency stops the configuring with the name of its package.

# Finds a package's CMake configuration, or says which Debian package brings it.
macro(quor_find_package name debian_package used_for)
    find_package(${name} QUIET)
    if(NOT ${name}_FOUND)
        message(FATAL_ERROR "${name} was not found; it is needed ${used_for}.\n"
            "Debian and Ubuntu: apt-get install ${debian_package}. Other systems: see README.md.")
    endif()
endmacro()

find_package(Threads REQUIRED)
quor_find_package(yaml-cpp libyaml-cpp-dev "to read the route vocabulary")
quor_find_package(nlohmann_json nlohmann-json3-dev "to tell jobs and findings as JSON")
quor_find_package(tomlplusplus libtomlplusplus-dev "to read configuration files")
if(QUOR_GJF_BUILD_CLI)
    quor_find_package(CLI11 libcli11-dev "by the command-line tool")
endif()
if(QUOR_GJF_BUILD_TESTS)
    quor_find_package(GTest libgtest-dev "by the tests")
endif()
if(QUOR_GJF_BUILD_BENCHMARKS)
    quor_find_package(benchmark libbenchmark-dev "by the benchmarks")
endif()
