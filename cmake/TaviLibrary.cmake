# SPDX-License-Identifier: MIT

# tavi_form_header(<variable> <folder>/<name>.ui): the header that uic makes of a Designer form, in the build's include
# folder.
function(tavi_form_header variable form)
    get_filename_component(folder ${form} DIRECTORY)
    get_filename_component(name ${form} NAME_WE)
    set(header ${PROJECT_BINARY_DIR}/include/${folder}/ui_${name}.h)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include/${folder})
    add_custom_command(OUTPUT ${header}
        COMMAND Qt5::uic -o ${header} ${CMAKE_CURRENT_SOURCE_DIR}/${form}
        DEPENDS ${form}
        COMMENT "Making ui_${name}.h"
        VERBATIM)
    set_source_files_properties(${header} PROPERTIES SKIP_AUTOGEN ON)
    set(${variable} ${header} PARENT_SCOPE)
endfunction()

# tavi_add_library(<target>
#     EXPORT_NAME <Name>        alias and package target Tavi::<Name>
#     OUTPUT_NAME <name>        file name without "lib" and suffix
#     MACRO <NAME>              prefix of the export macro, <NAME>_EXPORT
#     EXPORT_HEADER <path>      generated header, below the include root
#     SOURCES <file>...  HEADERS <file>...   HEADERS are installed, others are not
#     FORMS <folder>/<name>.ui...   Designer forms of exported classes: the header that is made of one is installed,
#                                   and included as "<folder>/ui_<name>.h"
#     PUBLIC_LINK <lib>...  PRIVATE_LINK <lib>...)
#
# A shared library as this project makes them: hidden visibility, SONAME, installed headers kept under their
# subsystem folder, one package for all.
function(tavi_add_library target)
    cmake_parse_arguments(arg "" "EXPORT_NAME;OUTPUT_NAME;MACRO;EXPORT_HEADER"
                          "SOURCES;HEADERS;FORMS;PUBLIC_LINK;PRIVATE_LINK" ${ARGN})
    if(arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tavi_add_library: unknown arguments ${arg_UNPARSED_ARGUMENTS}")
    endif()
    add_library(${target} SHARED ${arg_SOURCES})
    add_library(Tavi::${arg_EXPORT_NAME} ALIAS ${target})
    set(export_header ${PROJECT_BINARY_DIR}/include/${arg_EXPORT_HEADER})
    generate_export_header(${target} BASE_NAME ${arg_MACRO} EXPORT_FILE_NAME ${export_header})
    foreach(form ${arg_FORMS})
        tavi_form_header(form_header ${form})
        list(APPEND form_headers ${form_header})
    endforeach()
    # What these include is there already: nothing is left for AUTOUIC to find.
    set_source_files_properties(${arg_HEADERS} ${form_headers} PROPERTIES SKIP_AUTOUIC ON)
    # What reads the headers for moc, or for a check without a build, wants these too.
    set_property(TARGET ${target} APPEND PROPERTY AUTOGEN_TARGET_DEPENDS ${form_headers})
    target_sources(${target} PRIVATE ${form_headers} PUBLIC FILE_SET HEADERS
        BASE_DIRS ${PROJECT_SOURCE_DIR}/src ${PROJECT_BINARY_DIR}/include
        FILES ${arg_HEADERS} ${export_header} ${form_headers})
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC_LINK} PRIVATE ${arg_PRIVATE_LINK} $<BUILD_INTERFACE:tavi_compiler>)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_ASCII)
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${arg_OUTPUT_NAME}
        EXPORT_NAME ${arg_EXPORT_NAME}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT TaviWidgetsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/taviwidgets)
endfunction()
