# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    treeviews/tavigridview.h
    treeviews/taviheaderview.h
    treeviews/tavitreeitem.h
    treeviews/tavitreeitemdelegate.h
    treeviews/tavitreemodel.h
    treeviews/tavitreeproxymodel.h)
list(APPEND TAVIWIDGETS_SOURCES
    treeviews/headerstate.cpp
    treeviews/headerstate_oldest.cpp
    treeviews/headerstate_p.h
    treeviews/tavigriddelegate.cpp
    treeviews/tavigridmodel.cpp
    treeviews/tavigridselectionmodel.cpp
    treeviews/tavigridview.cpp
    treeviews/taviheaderview.cpp
    treeviews/taviheaderview_keyboard.cpp
    treeviews/taviheaderview_menu.cpp
    treeviews/taviheaderview_state.cpp
    treeviews/tavioverride_p.h
    treeviews/tavitreeitem.cpp
    treeviews/tavitreeitem_checkstate.cpp
    treeviews/tavitreeitem_p.h
    treeviews/tavitreeitem_structure.cpp
    treeviews/tavitreeitemdelegate.cpp
    treeviews/tavitreeitemregistry.cpp
    treeviews/tavitreeitemregistry_p.h
    treeviews/tavitreemodel.cpp
    treeviews/tavitreemodel_p.h
    treeviews/tavitreemodel_rows.cpp
    treeviews/tavitreeproxymodel.cpp)
