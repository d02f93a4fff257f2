# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    foundation/workereventqueue.h)
list(APPEND TAVIWIDGETS_SOURCES
    ${PROJECT_SOURCE_DIR}/resources/tavi.qrc)
