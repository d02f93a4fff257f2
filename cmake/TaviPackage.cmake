# SPDX-License-Identifier: MIT
# What makes the installed tree usable: the CMake package TaviWidgets and the pkg-config file taviwidgets.

set(tavi_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/TaviWidgets)

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/TaviWidgetsConfig.cmake.in ${PROJECT_BINARY_DIR}/TaviWidgetsConfig.cmake
    INSTALL_DESTINATION ${tavi_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TaviWidgetsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/TaviWidgetsConfig.cmake
    ${PROJECT_BINARY_DIR}/TaviWidgetsConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/FindTaviBase.cmake
    DESTINATION ${tavi_package_dir})
install(EXPORT TaviWidgetsTargets NAMESPACE Tavi:: DESTINATION ${tavi_package_dir})

# The prefix is told from the file's own place, so that the tree can be moved.
file(RELATIVE_PATH tavi_pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" tavi_pc_prefix "${tavi_pc_prefix}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/taviwidgets.pc.in ${PROJECT_BINARY_DIR}/taviwidgets.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/taviwidgets.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
