# The installed tree. The library finds its data by its own path: <prefix>/lib/libtessarel.so reads
# <prefix>/share/tessarel/. So the library goes to plain lib, whatever the system's habit, and the tree can be moved.
include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_LIBDIR lib)
set(tessarel_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/tessarel)

# Hidden visibility leaves instances of standard templates exported; the list closes that door too.
set(tessarel_exports ${CMAKE_CURRENT_LIST_DIR}/exports.map)
target_link_options(tessarel PRIVATE LINKER:--version-script=${tessarel_exports})
set_property(TARGET tessarel APPEND PROPERTY LINK_DEPENDS ${tessarel_exports})

install(TARGETS tessarel EXPORT tessarel-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/tessarel DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h PATTERN *.hpp
        PATTERN *.f90)
install(FILES ${TESSAREL_FLUID_FILES} ${TESSAREL_FLUID_DATABASE} DESTINATION share/tessarel/fluids)
install(FILES ${TESSAREL_BIPS_FILE} DESTINATION share/tessarel)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN *.md PATTERN *.svg)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN *.c PATTERN *.cpp PATTERN *.f90
        PATTERN *.py PATTERN installed/CMakeLists.txt)

install(EXPORT tessarel-targets NAMESPACE tessarel:: DESTINATION ${tessarel_package_dir})
configure_package_config_file(cmake/tessarel-config.cmake.in ${PROJECT_BINARY_DIR}/tessarel-config.cmake
                              INSTALL_DESTINATION ${tessarel_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tessarel-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tessarel-config.cmake ${PROJECT_BINARY_DIR}/tessarel-config-version.cmake
        DESTINATION ${tessarel_package_dir})

configure_file(cmake/tessarel.pc.in ${PROJECT_BINARY_DIR}/tessarel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tessarel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
