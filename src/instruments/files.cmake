# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    instruments/spectrostringkit.h)
list(APPEND TAVIWIDGETS_SOURCES
    instruments/instrumentmessage.cpp
    instruments/instrumentmessage_p.h
    instruments/spectrostringkit.cpp
    instruments/spectrostringkit_table.cpp)
