# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    foundation/workereventqueue.h)
