# SPDX-License-Identifier: MIT
# Language level, warnings, sanitizers, output folders, ccache: the same for every target of the project.

set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

# One place holds what every target is compiled and linked with.
add_library(tavi_compiler INTERFACE)
target_compile_options(tavi_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
    $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
    $<$<BOOL:${TAVI_WERROR}>:-Werror>)
target_compile_definitions(tavi_compiler INTERFACE QT_DEPRECATED_WARNINGS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(TAVI_SANITIZE STREQUAL "address")
    set(tavi_sanitize_flags -fsanitize=address,undefined -fno-sanitize-recover=all)
elseif(TAVI_SANITIZE STREQUAL "thread")
    set(tavi_sanitize_flags -fsanitize=thread)
elseif(TAVI_SANITIZE STREQUAL "fuzzer")
    set(tavi_sanitize_flags -fsanitize=address,undefined,fuzzer-no-link -fno-sanitize-recover=all)
elseif(TAVI_SANITIZE)
    message(FATAL_ERROR "TAVI_SANITIZE is '${TAVI_SANITIZE}'; it may be empty, address, thread or fuzzer")
endif()
if(tavi_sanitize_flags)
    target_compile_options(tavi_compiler INTERFACE ${tavi_sanitize_flags} -fno-omit-frame-pointer -O1)
    target_link_options(tavi_compiler INTERFACE ${tavi_sanitize_flags})
else()
    target_link_options(tavi_compiler INTERFACE LINKER:--no-undefined)
endif()

if(TAVI_CCACHE)
    find_program(TAVI_CCACHE_PROGRAM ccache)
    if(TAVI_CCACHE_PROGRAM)
        # A precompiled header is only looked at by ccache with these liberties and the preprocessor's mark.
        set(tavi_launcher ${CMAKE_COMMAND} -E env
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${TAVI_CCACHE_PROGRAM})
        set(CMAKE_C_COMPILER_LAUNCHER ${tavi_launcher})
        set(CMAKE_CXX_COMPILER_LAUNCHER ${tavi_launcher})
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(tavi_compiler INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
        endif()
    endif()
endif()
