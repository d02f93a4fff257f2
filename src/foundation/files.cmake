# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    foundation/colorscheme.h
    foundation/workereventqueue.h)
list(APPEND TAVIWIDGETS_SOURCES
    foundation/colorscheme.cpp
    foundation/colorschememath.cpp
    foundation/colorschememath_p.h)
