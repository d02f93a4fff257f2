# SPDX-License-Identifier: MIT

# tavi_add_layout_test(<name> <file> LANGUAGE C|CXX [FLAGS <flag>...])
#
# Compiles the file and looks at nothing else; and compiles it once more with every assertion off by one, which must
# fail in each of them: the count of failures is compared with that of assertions.
function(tavi_add_layout_test name file)
    cmake_parse_arguments(arg "" "LANGUAGE" "FLAGS" ${ARGN})
    if(arg_LANGUAGE STREQUAL "C")
        set(compile ${CMAKE_C_COMPILER} -std=c11)
    else()
        set(compile ${CMAKE_CXX_COMPILER} -std=c++20 -x c++)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        list(APPEND compile -ferror-limit=0)
    else()
        list(APPEND compile -fmax-errors=0)
    endif()
    list(APPEND compile ${arg_FLAGS} -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR}/${file})
    add_test(NAME ${TAVI_TEST_PREFIX}${name} COMMAND ${compile})
    file(STRINGS ${file} assertions REGEX "^(SIZE|OFFSET|WIDTH|VALUE|ORDER)\\(")
    list(LENGTH assertions count)
    add_test(NAME ${TAVI_TEST_PREFIX}${name}_fails
        COMMAND ${CMAKE_COMMAND} -DCOUNT=${count} -P ${CMAKE_CURRENT_SOURCE_DIR}/expect_failures.cmake --
                ${compile} -DTAVI_LAYOUT_OFF_BY=1)
    set_tests_properties(${TAVI_TEST_PREFIX}${name} ${TAVI_TEST_PREFIX}${name}_fails PROPERTIES LABELS tavilib)
endfunction()
