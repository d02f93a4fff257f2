// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_RENAMESETTINGS_P_H
#define TREEVIEWS_RENAMESETTINGS_P_H

#include "foundation/taviwidgets_export.h"

#include <QPoint>
#include <QString>

#include <string>

class TaviRegistry;

/// @file
/// What the rename dialogs keep in the settings; without a dialog.

/// The settings of a rename dialog, as they are where nothing is stored.
struct TAVIWIDGETS_EXPORT RenameSettings {
    QString value;           ///< What is looked for, or put before or behind a text.
    QString replacement;     ///< What takes the place of what is found.
    int method = 0;          ///< A RenameMethod.
    bool ignore_case = true; ///< Of looking.
    bool wrap = false;       ///< Whether looking goes on at the other end.
    QPoint place;            ///< Of the window, with its frame.
    int width = 0;           ///< Of the window, without its frame.

    /// Takes up what @a section has. A text that is empty there, a method that does not exist and numbers from the
    /// first word on that is none change nothing.
    void read(TaviRegistry &registry, std::string &section);
    /// Writes all into @a section.
    void write(TaviRegistry &registry, std::string &section) const;
};

#endif
