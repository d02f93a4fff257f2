// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_RENAMEMETHOD_P_H
#define TREEVIEWS_RENAMEMETHOD_P_H

#include "foundation/taviwidgets_export.h"

#include <QString>

#include <optional>

/// @file
/// What the rename dialogs do to a text; without a dialog and without rows.

/// The ways to rename. The numbers are those of the dialog's choices and of its settings.
enum class RenameMethod { Replace = 0, Prefix = 1, Append = 2 };

/// How many ways there are.
constexpr int rename_method_count = 3;

/// A way to rename with what it needs.
struct TAVIWIDGETS_EXPORT RenameRule {
    RenameMethod method = RenameMethod::Replace;
    QString op;   ///< What is looked for, or put before or behind a text. Empty renames nothing.
    QString with; ///< What takes the place of what is found.
    Qt::CaseSensitivity case_sensitivity = Qt::CaseSensitive; ///< Of looking.

    /// Whether @a text has #op in it; an empty one is in every text.
    bool isIn(const QString &text) const;
    /// What becomes of @a text; nothing where it is left alone.
    std::optional<QString> renamed(const QString &text) const;
};

#endif
