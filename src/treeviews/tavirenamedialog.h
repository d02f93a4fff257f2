// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVIRENAMEDIALOG_H
#define TREEVIEWS_TAVIRENAMEDIALOG_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/ui_tavilistviewrename_ui.h"

#include <QDialog>
#include <QPoint>

#include <functional>
#include <string>

class QPushButton;
class TaviRegistry;
struct RenameRule;

/// The small window that finds a text in one column of a view and renames rows there in bulk: all that does not
/// depend on the kind of the view. Its subclasses add the walks over the rows.
///
/// There are three methods. "Find" looks for a text, and replaces it in every place of a row where it stands; "Prefix
/// With" and "Append" put a text before or behind that of a row. What only serves the first is hidden for the others.
///
/// **Settings.** If it was given a store and a section that is not empty, the window takes both texts, the method,
/// the ticks, its place and its width from there, and writes them when it is closed. Its height is not kept: it is
/// the one that the content needs. A place beyond the screens there are is brought back to where the window can be
/// reached, and a title bar never stands higher than 20 pixels below the upper edge.
///
/// **Keyboard.** Return finds the next row, Escape closes.
///
/// **Re-entry.** A slot of what a rename causes may remove rows, close or destroy the dialog, and destroy the view.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviRenameDialog : public QDialog, public Ui::TaviListViewRename_UI
{
    Q_OBJECT

public:
    /// @name Keys of the settings
    /// @{

    /// The text that is looked for or added, UTF-8.
    static const char KEY_RENAME_VALUE[];
    /// The text that replaces what is found, UTF-8.
    static const char KEY_RENAME_REPLACE[];
    /// "method ignore-case wrap", the last two as 0 or 1.
    static const char KEY_RENAME_SETTINGS[];
    /// "x y width".
    static const char KEY_RENAME_GEOMETRY[];
    /// @}

    ~TaviRenameDialog() override;

    /// Shows what belongs to the method with number @a index and hides the rest; 0 and below is the first, "Find".
    /// Nothing happens if that is to be shown and is shown already. With @a resize the window becomes as high as its
    /// content needs; its width stays.
    void adjustDialog(int index, bool resize);

public Q_SLOTS:
    /// Closes the window as its title bar does, so that it keeps its settings.
    void reject() override;

Q_SIGNALS:
    /// The window was closed. Whoever opened it deletes it, later.
    void closed();

protected:
    /// Which rows are renamed.
    enum class Rows {
        All,      ///< Every row.
        Selected, ///< Those that are selected.
        Current,  ///< The first that is selected and can be renamed.
    };
    /// Tells how many rows were changed.
    using Report = std::function<void(int changed)>;

    /// A window that stays on top.
    /// @param column_title what the column is called; empty for nothing
    /// @param registry may be null
    /// @param place where the window stands if nothing is stored, in screen coordinates
    TaviRenameDialog(QWidget *parent, const QString &column_title, TaviRegistry *registry, const std::string &section,
                     const QPoint &place);

    /// Keeps the settings, and emits closed().
    void closeEvent(QCloseEvent *event) override;

private Q_SLOTS:
    void methodChanged(int index);
    int applyToAll();
    int applyToSelected();
    int applyToCurrent();
    void findNext();
    void findPrev();

private:
    /// Renames rows, calls @a report with the number of those that were changed, and then tells the view so.
    /// @return that number; 0, and no report, without a view. This dialog may be gone by then.
    virtual int renameRows(const RenameRule &rule, Rows which, const Report &report) = 0;
    /// Selects the next row that has the text of @a rule, or the one before.
    /// @return whether there is one. This dialog may be gone by then.
    virtual bool findRow(const RenameRule &rule, bool forward) = 0;

    int apply(QPushButton *button);
    void findItem(bool forward);
    RenameRule rule() const;
    bool keepsSettings() const;
    void readSettings(const QPoint &default_place);
    void writeSettings();

    TaviRegistry *registry;
    std::string section;
    bool find_mode = true;
};

#endif
