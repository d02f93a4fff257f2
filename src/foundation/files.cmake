# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    foundation/taviscreens.h
    foundation/workereventqueue.h)
list(APPEND TAVIWIDGETS_SOURCES
    foundation/splitterwidths.cpp
    foundation/splitterwidths_p.h
    foundation/taviscreens.cpp
    foundation/windowgeometry.cpp
    foundation/windowgeometry_p.h
    ${PROJECT_SOURCE_DIR}/resources/tavi.qrc)
