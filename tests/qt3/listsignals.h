// SPDX-License-Identifier: MIT
#ifndef TESTS_QT3_LISTSIGNALS_H
#define TESTS_QT3_LISTSIGNALS_H

/// The signals of Q3ListView that tell of an item or the selection, as QMetaObject spells them.
inline constexpr const char *signals_of_list_items[] = {
    "selectionChanged()",
    "selectionChanged(Q3ListViewItem*)",
    "currentChanged(Q3ListViewItem*)",
    "pressed(Q3ListViewItem*)",
    "pressed(Q3ListViewItem*,QPoint,int)",
    "mouseButtonPressed(int,Q3ListViewItem*,QPoint,int)",
    "rightButtonPressed(Q3ListViewItem*,QPoint,int)",
    "clicked(Q3ListViewItem*)",
    "clicked(Q3ListViewItem*,QPoint,int)",
    "mouseButtonClicked(int,Q3ListViewItem*,QPoint,int)",
    "rightButtonClicked(Q3ListViewItem*,QPoint,int)",
    "doubleClicked(Q3ListViewItem*)",
    "doubleClicked(Q3ListViewItem*,QPoint,int)",
    "contextMenuRequested(Q3ListViewItem*,QPoint,int)",
    "expanded(Q3ListViewItem*)",
    "collapsed(Q3ListViewItem*)",
    "returnPressed(Q3ListViewItem*)",
    "spacePressed(Q3ListViewItem*)",
    "onItem(Q3ListViewItem*)",
    "itemRenamed(Q3ListViewItem*,int)",
    "itemRenamed(Q3ListViewItem*,int,QString)",
};

#endif
