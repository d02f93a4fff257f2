// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVIGRIDVIEW_H
#define TREEVIEWS_TAVIGRIDVIEW_H

#include "foundation/taviwidgets_export.h"

#include <QAbstractItemDelegate>
#include <QAbstractTableModel>
#include <QItemSelectionModel>
#include <QSize>
#include <QTableView>

/// Paints the cells of a TaviGridView and fixes their size. A subclass implements paint().
///
/// All cells have one size, unless a subclass overrides sizeHint() to tell one for each: a row is then as high as the
/// highest of its cells, and a column as wide as the widest. How many columns fit is told by the size of no cell in
/// particular, for which a view asks with an invalid index.
class TAVIWIDGETS_EXPORT TaviGridDelegate : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    /// A delegate for cells of 25 by 25 pixels.
    explicit TaviGridDelegate(QObject *parent = nullptr);

    /// cellSize(), whatever the item.
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// @name Size of a cell
    /// In pixels, without grid line. A view takes up a new size when it is painted next, and the number of columns
    /// that fit with TaviGridView::recalculateGrid() or when it is resized.
    /// @{

    /// Sets both sides of a cell.
    void setCellSize(int width, int height);
    /// Sets the width; the height stays.
    void setCellWidth(int width);
    /// Sets the height; the width stays.
    void setCellHeight(int height);
    /// The size, 25 by 25 at first.
    QSize cellSize() const;
    /// The width of cellSize().
    int cellWidth() const;
    /// The height of cellSize().
    int cellHeight() const;
    /// @}

private:
    QSize cell_size = QSize(25, 25);
};

/// A flat collection as a table: cells follow one another row by row, in as many columns as the view sets.
///
/// A subclass tells itemCount() and data(), where the place in the collection is
/// `index.row() * columnCount() + index.column()`. The last row may have room for more cells than there are; data()
/// and flags() are asked for these too.
///
/// @code
/// class SwatchModel : public TaviGridModel
/// {
/// public:
///     int itemCount() const override { return swatches.size(); }
///     QVariant data(const QModelIndex &index, int role) const override
///     {
///         const int place = index.row() * columnCount() + index.column();
///         return place < itemCount() && role == Qt::DisplayRole ? swatches.at(place).name : QVariant();
///     }
///     ...
/// };
/// @endcode
///
/// A subclass that gains or loses items brackets that with beginResetModel() and endResetModel(), as almost every
/// cell moves then.
class TAVIWIDGETS_EXPORT TaviGridModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// A model with no columns: until a view sets some there are no rows either.
    explicit TaviGridModel(QObject *parent = nullptr);

    /// The number of cells.
    virtual int itemCount() const = 0;

    /// As many rows as itemCount() fills, the last one perhaps in part; 0 without columns. @a parent is not looked
    /// at.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /// The number of columns, never below 0. @a parent is not looked at.
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Adds @a count columns. Every cell moves: a reset follows, which ends selections and persistent indexes.
    ///
    /// @a column is only told to listeners, in a bracket that is one column longer than what is added. Always true.
    bool insertColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;
    /// Takes @a count columns away, in the same way. Always true.
    bool removeColumns(int column, int count, const QModelIndex &parent = QModelIndex()) override;

    /// Sets a value as QAbstractTableModel does, which keeps none: false. A subclass that keeps values overrides it.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// A size of 1 by 1 for Qt::SizeHintRole, so that hidden headers take no room; nothing for other roles.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    int columns = 0;
};

/// A selection model that can be switched off: then neither clicks nor calls change selection or current index.
///
/// While it is off, a reset of the model isn't followed either. The selection then holds only what is not valid any
/// more.
class TAVIWIDGETS_EXPORT TaviGridSelectionModel : public QItemSelectionModel
{
    Q_OBJECT

public:
    /// A selection model for @a model that is switched on.
    explicit TaviGridSelectionModel(QAbstractItemModel *model = nullptr);
    /// The same, owned by @a parent.
    TaviGridSelectionModel(QAbstractItemModel *model, QObject *parent);

    /// Switches on or off. What is selected stays as it is.
    void setEnabled(bool on);
    /// Whether it is switched on.
    bool isEnabled() const;

public Q_SLOTS:
    /// Ends selection and current index, unless switched off.
    void clear() override;
    /// Ends the selection, unless switched off.
    void clearSelection();
    /// The same as clear() without a signal, unless switched off.
    void reset() override;
    /// Selects as @a command says, unless switched off.
    void select(const QModelIndex &index, QItemSelectionModel::SelectionFlags command) override;
    /// Selects as @a command says, unless switched off.
    void select(const QItemSelection &selection, QItemSelectionModel::SelectionFlags command) override;
    /// Moves the current index and selects as @a command says, unless switched off.
    void setCurrentIndex(const QModelIndex &index, QItemSelectionModel::SelectionFlags command) override;

private:
    bool enabled = true;
};

/// A table of cells of one size, with as many columns as fit its width. The number of columns follows the window.
///
/// @image html tavigridview.png
///
/// @code
/// auto *view = new TaviGridView(panel);
/// view->setItemDelegate(new SwatchDelegate(view));
/// view->setModel(new SwatchModel(view));
/// @endcode
///
/// **Models.** The number of columns is changed through QAbstractItemModel::insertColumns() and removeColumns(), as
/// TaviGridModel offers them. Model and delegate are not owned.
///
/// **Keyboard.** As in every table: arrows, Page Up and Down, Home and End move; with Shift they extend, Space and
/// Ctrl+A select.
///
/// **Complexity.** A repaint costs what is in sight, and a look at each row and column. A change of width costs the
/// model's reset besides, where another number of columns fits. With a delegate that is no TaviGridDelegate or
/// overrides its sizeHint(), with widgets in cells, or with delegates for single rows or columns, each cell is asked
/// for its size at each repaint.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviGridView : public QTableView
{
    Q_OBJECT

public:
    /// A view without grid lines and headers, and without a horizontal scroll bar.
    explicit TaviGridView(QWidget *parent = nullptr);

    /// Sets the delegate and gives all cells its size. It hides QAbstractItemView::setItemDelegate().
    void setItemDelegate(QAbstractItemDelegate *delegate);

    /// Makes the model have as many columns as fit the viewport: its width divided by that of a cell, which includes
    /// the grid line while there is one. Nothing happens without a model or delegate, or if a cell has no width. A
    /// viewport narrower than a cell has no columns.
    void recalculateGrid();

protected:
    /// Does what item views do. A resize recalculates the grid; that, a paint and a show size the cells. Always
    /// false, also for what was handled: so every event reaches the viewport as well and, where that ignores it, the
    /// widgets around this view.
    bool viewportEvent(QEvent *event) override;

private:
    int lineWidth() const;
    bool cellsAreAlike() const;
    void fitCells();
};

#endif
