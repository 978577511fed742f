# What an installation holds: libraries, public headers, vocabulary, CMake package and pkg-config file; the tool with its manual page and
# completions.
include(CMakePackageConfigHelpers)

set(include_folder ${CMAKE_INSTALL_INCLUDEDIR}/quor)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/quor_g16_gjf)

install(TARGETS quor_g16_gjf quor_core_fs quor_core_resource EXPORT quor_g16_gjf_targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(QUOR_GJF_BUILD_CLI)
    install(TARGETS quor-gjf RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    set(surroundings ${CMAKE_CURRENT_BINARY_DIR}/cli)
    install(FILES ${surroundings}/quor-gjf.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    # Where the shells look for completions of programs installed beside them.
    install(FILES ${surroundings}/quor-gjf.bash RENAME quor-gjf DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${surroundings}/quor-gjf.zsh RENAME _quor-gjf DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${surroundings}/quor-gjf.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endif()

foreach(header ${quor_public_headers})
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${gjf_include_root}/${header} DESTINATION ${include_folder}/${folder})
endforeach()
install(FILES src/core/export.hpp DESTINATION ${include_folder}/core)
install(FILES src/core/fs/write_text_file.hpp DESTINATION ${include_folder}/core/fs)
install(FILES src/core/resource/resource.hpp DESTINATION ${include_folder}/core/resource)
install(FILES resources/schemas/input/gaussian_route.yaml ${vocabulary_image} DESTINATION ${CMAKE_INSTALL_DATADIR}/quorlib/schemas/input)
install(DIRECTORY resources/knowledge resources/recipes DESTINATION ${CMAKE_INSTALL_DATADIR}/quorlib)

install(EXPORT quor_g16_gjf_targets NAMESPACE quor:: DESTINATION ${package_folder})
configure_package_config_file(cmake/quor_g16_gjfConfig.cmake.in quor_g16_gjfConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(quor_g16_gjfConfigVersion.cmake COMPATIBILITY SameMajorVersion)
file(RELATIVE_PATH quor_pc_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/quor_g16_gjf.pc.in quor_g16_gjf.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quor_g16_gjfConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/quor_g16_gjfConfigVersion.cmake
    DESTINATION ${package_folder})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/quor_g16_gjf.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
