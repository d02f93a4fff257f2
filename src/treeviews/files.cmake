# SPDX-License-Identifier: MIT
list(APPEND TAVIWIDGETS_HEADERS
    treeviews/tavitreeitem.h
    treeviews/tavitreemodel.h
    treeviews/tavitreeproxymodel.h)
list(APPEND TAVIWIDGETS_SOURCES
    treeviews/keywordmatcher.cpp
    treeviews/keywordmatcher_p.h
    treeviews/tavioverride_p.h
    treeviews/tavitreeitem.cpp
    treeviews/tavitreeitem_checkstate.cpp
    treeviews/tavitreeitem_p.h
    treeviews/tavitreeitem_structure.cpp
    treeviews/tavitreeitemregistry.cpp
    treeviews/tavitreeitemregistry_p.h
    treeviews/tavitreemodel.cpp
    treeviews/tavitreemodel_p.h
    treeviews/tavitreemodel_rows.cpp
    treeviews/tavitreeproxymodel.cpp
    treeviews/tavitreeproxymodel_filter.cpp
    treeviews/tavitreeproxymodel_straight.cpp)
