// SPDX-License-Identifier: MIT
#ifndef QT3_Q3GROUPBOX_H
#define QT3_Q3GROUPBOX_H

#include "qt3/taviqt3_export.h"

#include <QGroupBox>

class QGridLayout;

/// A group box that lays out its children by itself: those made with it as parent go, one after the other, into a
/// given number of columns or rows.
///
/// With a layout of one's own, make it with 0 strips, as the forms without strips do.
class TAVIQT3_EXPORT Q3GroupBox : public QGroupBox
{
    Q_OBJECT
    /// The number of columns or, in a vertical box, of rows.
    Q_PROPERTY(int columns READ columns WRITE setColumns DESIGNABLE false)
    /// Which way the children follow each other.
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation DESIGNABLE false)

public:
    /// A box without title and layout.
    explicit Q3GroupBox(QWidget *parent = nullptr, const char *name = nullptr);
    /// A box with a title and without layout.
    explicit Q3GroupBox(const QString &title, QWidget *parent = nullptr, const char *name = nullptr);
    /// A box that lays out its children in @a strips columns (Horizontal) or rows (Vertical).
    Q3GroupBox(int strips, Qt::Orientation orientation, QWidget *parent = nullptr, const char *name = nullptr);
    /// The same with a title.
    Q3GroupBox(int strips, Qt::Orientation orientation, const QString &title, QWidget *parent = nullptr,
               const char *name = nullptr);
    ~Q3GroupBox() override;

    /// Lays the children out in @a strips columns (Horizontal) or rows (Vertical) from now on; with 0 or less, not at
    /// all: a layout of one's own may be set then.
    virtual void setColumnLayout(int strips, Qt::Orientation direction);
    /// The number of columns or rows; 0 without a layout by itself.
    int columns() const { return strips_; }
    /// Sets the number of columns or rows.
    void setColumns(int strips);
    /// Which way the children follow each other. Vertical at first.
    Qt::Orientation orientation() const { return orientation_; }
    /// Sets which way they follow each other.
    void setOrientation(Qt::Orientation orientation);
    /// The pixels between frame and children.
    int insideMargin() const { return margin_; }
    /// Sets the margin; 11 at first.
    void setInsideMargin(int m);
    /// The pixels between children.
    int insideSpacing() const { return spacing_; }
    /// Sets the spacing; 5 at first.
    void setInsideSpacing(int s);
    /// Leaves the next cell empty, at least @a size pixels large in the direction of the children.
    void addSpace(int size);

protected:
    /// Gives a new child its cell.
    void childEvent(QChildEvent *c) override;

private:
    void place(QWidget *child);
    void nextCell(int &row, int &column);

    QGridLayout *grid_ = nullptr;
    Qt::Orientation orientation_ = Qt::Vertical;
    int strips_ = 0;
    int used_ = 0; ///< Cells.
    int margin_ = 11;
    int spacing_ = 5;
};

#endif
