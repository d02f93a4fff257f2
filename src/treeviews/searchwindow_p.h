// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_SEARCHWINDOW_P_H
#define TREEVIEWS_SEARCHWINDOW_P_H

class QLineEdit;
class QString;
class QWidget;

/// @file
/// What the search windows of all views have in common.

/// Furnishes an empty search window: a magnifying glass and a line edit, which is returned.
///
/// @param title of the window
/// @param line_edit_name for people who do not see the magnifying glass
QLineEdit *furnishSearchWindow(QWidget *window, const QString &title, const QString &line_edit_name);

/// Shows a search window in the middle of a view, with the keyboard in @a line_edit.
void showSearchWindow(QWidget *window, QLineEdit *line_edit, const QWidget *viewport);

#endif
