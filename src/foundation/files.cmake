# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    foundation/colorscheme.h
    foundation/frequencyedit.h
    foundation/tavidatetime.h
    foundation/tavigfx.h
    foundation/taviscreens.h
    foundation/taviwidgetutil.h
    foundation/workereventqueue.h
    foundation/workereventqueuebase.h)
list(APPEND TAVIWIDGETS_FORMS
    foundation/frequencyedit_ui.ui)
list(APPEND TAVIWIDGETS_SOURCES
    foundation/colorscheme.cpp
    foundation/colorschememath.cpp
    foundation/colorschememath_p.h
    foundation/frequencyedit.cpp
    foundation/frequencyrule.cpp
    foundation/frequencyrule_p.h
    foundation/splitterwidths.cpp
    foundation/splitterwidths_p.h
    foundation/tavidatetime.cpp
    foundation/tavigfx.cpp
    foundation/tavigfx_fonts.cpp
    foundation/tavigfx_printing.cpp
    foundation/taviscreens.cpp
    foundation/taviwidgetutil.cpp
    foundation/taviwidgetutil_geometry.cpp
    foundation/windowgeometry.cpp
    foundation/windowgeometry_p.h
    foundation/workereventqueuebase.cpp
    ${PROJECT_SOURCE_DIR}/resources/tavi.qrc)
