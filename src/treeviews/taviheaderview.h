// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVIHEADERVIEW_H
#define TREEVIEWS_TAVIHEADERVIEW_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/taviconfigorder.h"

#include <QByteArray>
#include <QHeaderView>

#include <string>

class TaviRegistry;

/// @file
/// The header of the library's tree views, and what stands for its columns in the order dialog.

/// A column in the order dialog; its number is the logical section.
class TAVIWIDGETS_EXPORT ColumnOrderItem : public ConfigOrderItem
{
    Q_OBJECT

public:
    /// An entry without a parent.
    ColumnOrderItem();
    /// As ConfigOrderItem copies.
    ColumnOrderItem(const ColumnOrderItem &other);
    ~ColumnOrderItem() override;
    using ConfigOrderItem::operator=;
    /// As ConfigOrderItem assigns.
    ColumnOrderItem &operator=(const ColumnOrderItem &other);
};

/// The header of a TaviTreeView: a menu that shows and hides columns, the dialog that orders them, and a state that
/// also remembers how wide hidden columns are.
///
/// @image html taviheaderview.png
///
/// @code
/// auto *header = new TaviHeaderView(Qt::Horizontal, view);
/// view->setHeader(header);
/// ...
/// const QByteArray state = header->saveState();
/// ...
/// header->restoreState(state); // sorts, too
/// @endcode
///
/// **State.** For each of the model's columns, in logical order: size in pixels (32 bits, signed), visual index (32
/// bits, signed), hidden (one byte); then sort order and sort section (32 bits each, signed). All are big-endian. The
/// number of columns isn't in it, so the model must have its columns before a state is restored. It is another format
/// than that of QHeaderView, whose operations of the same names are hidden.
///
/// **Keyboard.** Tab reaches the header, which then marks a section. Left and Right choose a section, Home and End
/// the first and the last; Space, Enter and Return click it, and so sort by it; with Ctrl, Left and Right move it;
/// with Shift they make it narrower and wider; the Menu key opens the menu. Moving and clicking are only there where
/// the mouse may, too.
///
/// **Right to left.** Visual index 0 stands at the right, and the "rightmost" column is the one that is last in
/// visual order.
///
/// **Ownership.** The view owns its header.
///
/// **Re-entry.** A slot may destroy the header while its menu or its dialog is open.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviHeaderView : public QHeaderView
{
    Q_OBJECT

public:
    /// A header with movable, clickable sections of interactive size, a sort indicator, a stretched last section and
    /// its menu.
    explicit TaviHeaderView(Qt::Orientation orientation, QWidget *parent = nullptr);
    ~TaviHeaderView() override;

    /// The state in the format told above. Sections that are hidden tell the size that they have when they are shown.
    /// Nothing changes, and no signal comes. O(columns²).
    virtual QByteArray saveState();
    /// Applies a state of saveState(), and clicks its sort section so that the view sorts. Always true.
    ///
    /// The order comes back whole. Sizes are those of the state, also below what the style takes for the least, and
    /// minimumSectionSize() is then lowered to the smallest of them (one that the application has set is not). A size
    /// below 6 becomes the default size, and one that no header can have is passed over. A state that is too short is
    /// applied as far as it goes: the columns after that stay as they are, in the places that are left, and the sort
    /// section and order are 0. Places that are out of range or taken already are passed over in the same way. Any
    /// order but 1 is ascending. A section that isn't there sorts by nothing. O(columns²).
    virtual bool restoreState(const QByteArray &state);

    /// Whether a right click opens the menu; true at first.
    void setMenuEnabled(bool on);
    /// Whether a right click opens the menu.
    bool isMenuEnabled() const;

    /// Turns the oldest settings into a state, and removes them from the store.
    ///
    /// In @a section, a key "column_" and a number below count() holds "position shown width" for one column; they
    /// count in the order of a walk, whatever their numbers are. The key "sorting" holds "column order", where the
    /// column is a position. A value that does not begin with that many whole numbers tells nothing. All these keys
    /// are gone afterwards.
    /// @return a state for restoreState(), which is not applied yet; empty unless there is one usable key for each
    ///         section
    QByteArray autoUpdateHeaderState(TaviRegistry &registry, std::string &section);

    /// How many of the model's columns are not hidden. O(columns).
    int visibleSectionCount() const;
    /// The logical index of a section by its place among those that are not hidden; -1 if there are not that many,
    /// or for a negative place. O(columns log columns).
    int logicalIndexFromVisible(int visible_index) const;

    /// Shows a hidden section. If the last section is stretched and this one is now the last one, it takes its room
    /// from its left neighbour, which keeps at least the default size:
    ///
    /// - Where the newcomer, stretched, is wider than the neighbour, both get half of the neighbour's width.
    /// - Otherwise the neighbour gives the newcomer's width away. If that leaves it less than the default size D, it
    ///   gets D and the newcomer what the neighbour had above D; where that was nothing, its size is left alone.
    ///
    /// The header then gives the newcomer what room is left. Nothing happens to a section that is shown already.
    void showSectionLastStretchSafe(int section);

Q_SIGNALS:
    /// Is never emitted. It stands for "no signal" where the name of one must be given.
    void nothingHappened();

protected Q_SLOTS:
    /// Opens the menu at the mouse pointer: the entry for configureHeaders(), and one to tick for each section.
    /// Does nothing if the menu is not enabled. @a pos is not looked at.
    void headerMenu(QPoint pos);
    /// Runs the order dialog on the columns, "Configure List Headers", and applies what the user accepts: which
    /// columns show (by showSectionLastStretchSafe()), and their order. The hidden ones come after those. Columns
    /// that came or went meanwhile stay as they are.
    void configureHeaders();

protected:
    /// Operates the header by keys, as the class tells.
    void keyPressEvent(QKeyEvent *event) override;
    /// Marks the section that keys act on.
    void focusInEvent(QFocusEvent *event) override;
    /// Takes the mark away.
    void focusOutEvent(QFocusEvent *event) override;
    /// Paints a section, with the mark if it is the one that keys act on.
    void paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const override;

private:
    int modelColumnCount() const;
    QVector<int> hiddenSectionSizes();
    int keyboardSection() const;
    void chooseKeyboardSection(int visible_index);
    void clickSection(int section);
    void moveSectionBy(int section, int places);
    void resizeSectionBy(int section, int pixels);
    void bringIntoSight(int section);

    bool menu_enabled = true;
    int lowered_minimum = -1;  ///< minimumSectionSize() where that was lowered for narrow sections; -1 otherwise.
    int keyboard_section = -1; ///< The section that keys act on; keyboardSection() tells if it is still there.
};

#endif
