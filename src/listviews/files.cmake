# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    listviews/tavilistview.h
    listviews/tavilistviewbuddies.h
    listviews/tavilistviewrenamedlg.h)
list(APPEND TAVIWIDGETS_SOURCES
    listviews/filterfloater.cpp
    listviews/listheaderstate.cpp
    listviews/listheaderstate_p.h
    listviews/listviewwalk_p.h
    listviews/tavilistview.cpp
    listviews/tavilistview_columns.cpp
    listviews/tavilistview_filter.cpp
    listviews/tavilistview_header.cpp
    listviews/tavilistview_input.cpp
    listviews/tavilistview_rename.cpp
    listviews/tavilistview_selection.cpp
    listviews/tavilistview_state.cpp
    listviews/tavilistview_swap.cpp
    listviews/tavilistviewfilterbuddy.cpp
    listviews/tavilistviewrenamedlg.cpp
    listviews/tavilistviewsignalbuddy.cpp)
