# SPDX-License-Identifier: MIT
# Finds the base libraries of an installed suite, libTavilib and libtaviapp, with their headers.
#
# Targets Tavi::Lib and Tavi::App. Where they are not in a usual place, CMAKE_PREFIX_PATH names the suite's prefix.

find_path(TaviBase_INCLUDE_DIR tavilib/tavirecords.h PATH_SUFFIXES taviwidgets)
find_library(TaviBase_LIB_LIBRARY Tavilib)
find_library(TaviBase_APP_LIBRARY taviapp)
mark_as_advanced(TaviBase_INCLUDE_DIR TaviBase_LIB_LIBRARY TaviBase_APP_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TaviBase
    REQUIRED_VARS TaviBase_LIB_LIBRARY TaviBase_APP_LIBRARY TaviBase_INCLUDE_DIR
    REASON_FAILURE_MESSAGE "The suite's libTavilib and libtaviapp are not installed where CMake looks. Name the suite's\
 prefix in CMAKE_PREFIX_PATH, or build the bundled libraries with TAVI_BASE_LIBRARIES=bundled.")

if(TaviBase_FOUND AND NOT TARGET Tavi::Lib)
    add_library(Tavi::Lib SHARED IMPORTED)
    set_target_properties(Tavi::Lib PROPERTIES
        IMPORTED_LOCATION ${TaviBase_LIB_LIBRARY}
        INTERFACE_COMPILE_FEATURES cxx_std_20
        INTERFACE_INCLUDE_DIRECTORIES ${TaviBase_INCLUDE_DIR})
    add_library(Tavi::App SHARED IMPORTED)
    set_target_properties(Tavi::App PROPERTIES
        IMPORTED_LOCATION ${TaviBase_APP_LIBRARY}
        INTERFACE_LINK_LIBRARIES Tavi::Lib)
endif()
