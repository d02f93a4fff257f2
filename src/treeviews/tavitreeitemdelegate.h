// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEITEMDELEGATE_H
#define TREEVIEWS_TAVITREEITEMDELEGATE_H

#include "foundation/taviwidgets_export.h"
#include "tavilib/tavirecords.h"

#include <QItemDelegate>

/// Paints the cells of a TaviTreeView, with a margin around their content and an item's own colour on selected rows.
///
/// @image html taviheaderview.png
///
/// By itself it paints what every item delegate does. A subclass that shows colours or progress overrides paint() for
/// the columns in question and draws there with drawSwatch(), drawProgressBar() and drawText():
///
/// @code
/// class PatchDelegate : public TaviTreeItemDelegate
/// {
/// public:
///     using TaviTreeItemDelegate::TaviTreeItemDelegate;
///     void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
///     {
///         if (index.column() == SWATCH_COLUMN)
///             drawSwatch(painter, option, patch(index));
///         else
///             TaviTreeItemDelegate::paint(painter, option, index);
///     }
/// };
/// @endcode
///
/// **Right to left.** Texts and the progress bar start at the side where reading starts.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviTreeItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// A delegate with no margin.
    explicit TaviTreeItemDelegate(QObject *parent = nullptr);

    /// Pixels around the content of a cell; initially 0. A view asks again for sizes when it is laid out anew, and
    /// is not told.
    int margin() const;
    /// Sets margin(). Values below 0 shrink cells in sizeHint() and count as 0 in all drawing.
    void setMargin(int margin);

    /// Paints a cell with antialiasing. An invalid index paints nothing.
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// The usual size with margin() on each side.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Draws a progress bar that fills the cell, framed and filled in @a colour, with a shadow of one pixel at the
    /// lower right and @a text over it, drawn by drawText() between left and right margin.
    ///
    /// Nothing at all is drawn for a null painter, an invalid index, or @a percent outside of 0 to 100.
    virtual void drawProgressBar(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                                 int percent, const QColor &colour, const QString &text) const;
    /// Draws @a text in one line into @a rect, in the palette's text colour, shortened by the option's elide mode
    /// where it is too long. Nothing for a null painter or an empty text.
    virtual void drawText(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                          const QString &text) const;
    /// Fills the cell, less margin() on all four sides, with the display colour of @a colour. Nothing for a null
    /// painter or record. The record stays the caller's.
    virtual void drawSwatch(QPainter *painter, const QStyleOptionViewItem &option,
                            const TAVICOMBOCOLOUR *colour) const;

    /// The option that paint() uses: font, alignment and colour of the item in it, and the item's own foreground, if
    /// it has one, as the colour of highlighted text in all groups. So a red item stays red while it is selected.
    QStyleOptionViewItem initStyleOption(const QModelIndex &index, const QStyleOptionViewItem &option) const;

protected:
    /// Draws the text of a cell between left and right margin.
    void drawDisplay(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                     const QString &text) const override;
    /// For subclasses to change; draws as QItemDelegate does.
    void drawDecoration(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                        const QPixmap &pixmap) const override;
    /// For subclasses to change; draws as QItemDelegate does.
    void drawFocus(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect) const override;
    /// For subclasses to change; draws as QItemDelegate does.
    void drawCheck(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                   Qt::CheckState state) const override;

private:
    QRect withoutSideMargins(const QRect &rect) const;

    int margin_ = 0;
};

#endif
