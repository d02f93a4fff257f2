# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    listviews/dndlistview.h
    listviews/taviconfigorderlistview.h
    listviews/tavilistview.h
    listviews/tavilistviewbuddies.h
    listviews/tavilistviewrenamedlg.h)
list(APPEND TAVIWIDGETS_SOURCES
    listviews/dndindicator.cpp
    listviews/dndlistview.cpp
    listviews/dndlistview_drop.cpp
    listviews/dndlistview_mouse.cpp
    listviews/filterfloater.cpp
    listviews/listheaderstate.cpp
    listviews/listheaderstate_p.h
    listviews/listviewwalk_p.h
    listviews/taviconfigorder_list.cpp
    listviews/taviconfigorderlistview.cpp
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
