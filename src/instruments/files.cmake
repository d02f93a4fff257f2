# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    instruments/spectro_fromfile.h
    instruments/spectrostringkit.h)
list(APPEND TAVIWIDGETS_SOURCES
    instruments/instrumentmessage.cpp
    instruments/instrumentmessage_p.h
    instruments/spectro_fromfile.cpp
    instruments/spectro_fromfile_cgats.cpp
    instruments/spectro_fromfile_text.cpp
    instruments/spectrostringkit.cpp
    instruments/spectrostringkit_table.cpp)
