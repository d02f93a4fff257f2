// SPDX-License-Identifier: MIT
#ifndef TESTS_LISTVIEWS_LISTVIEWFIXTURE_H
#define TESTS_LISTVIEWS_LISTVIEWFIXTURE_H

#include "listviews/tavilistview.h"
#include "qt3/q3header.h"
#include "tests/support/activewindow.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStatusBar>
#include <QtTest>

Q_DECLARE_METATYPE(Q3ListViewItem *)

/// A list whose protected side can be called, and that tells what it shows in texts.
class ListProbe : public TaviListView
{
    Q_OBJECT

public:
    explicit ListProbe(bool header_menu = true, QWidget *parent = nullptr) : TaviListView(header_menu, parent)
    {
        qRegisterMetaType<Q3ListViewItem *>();
        setSorting(-1);
        resize(300, 200);
    }

    using TaviListView::contentsWheelEvent;
    using TaviListView::contextMenuEvent;
    using TaviListView::keyPressEvent;

    /// Columns "A", "B" ... of 60 pixels, and rows "a0 b0 ..." as many as wanted.
    void fill(int column_count, int rows)
    {
        for (int column = 0; column < column_count; ++column)
            addColumn(QString(QChar('A' + column)), 60);
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < rows; ++row) {
            last = new Q3ListViewItem(this, last);
            for (int column = 0; column < column_count; ++column)
                last->setText(column, QString(QChar('a' + column)) + QString::number(row));
        }
    }

    Q3ListViewItem *at(int row) const
    {
        Q3ListViewItem *item = firstChild();
        for (; item && row > 0; --row)
            item = item->nextSibling();
        return item;
    }

    /// The headings as they are shown.
    QString headings() const
    {
        QStringList texts;
        for (int place = 0; place < header()->count(); ++place)
            texts << header()->label(header()->mapToSection(place));
        return texts.join(' ');
    }
    /// All columns in order, hidden ones in brackets, automatic ones with a star.
    QString columnTexts() const
    {
        QStringList texts;
        for (const ColumnItem *item : columnItems()) {
            const QString text = item->title + (item->width < 0 ? "*" : "");
            texts << (item->isItemVisible() ? text : "(" + text + ")");
        }
        return texts.join(' ');
    }
    /// The texts of the rows in sight.
    QString rows() const
    {
        QStringList texts;
        for (const Q3ListViewItem *item = firstChild(); item; item = item->itemBelow()) {
            if (item->isVisible())
                texts << item->text(0);
        }
        return texts.join(' ');
    }
    QString selection()
    {
        QStringList texts;
        for (Q3ListViewItemIterator it(this, Q3ListViewItemIterator::Selected); it.current(); ++it)
            texts << it.current()->text(0);
        return texts.join(' ');
    }

    bool showAndWait() { return showActive(this); }
    /// A drag of the heading at one place to the middle of another, and on by @a beyond pixels.
    void dragHeading(int from, int to, int beyond = 0)
    {
        Q3Header *const bar = header();
        const auto middle = [bar](int place) {
            return bar->sectionRect(bar->mapToSection(place)).center();
        };
        const QPoint start = middle(from);
        const QPoint end = middle(to) + QPoint(beyond, 0);
        QTest::mousePress(bar, Qt::LeftButton, Qt::NoModifier, start);
        for (int step = 1; step <= 8; ++step) {
            const QPoint at = start + (end - start) * step / 8;
            QMouseEvent move(QEvent::MouseMove, at, bar->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                             Qt::NoModifier);
            QCoreApplication::sendEvent(bar, &move);
        }
        QTest::mouseRelease(bar, Qt::LeftButton, Qt::NoModifier, end);
    }
};

/// An item that shows itself as if it had children, and makes one, "late", when it is opened without any.
class LazyItem : public Q3ListViewItem
{
public:
    explicit LazyItem(Q3ListView *list) : Q3ListViewItem(list, "lazy") { setExpandable(true); }
    void setOpen(bool open) override
    {
        if (open && childCount() == 0)
            new Q3ListViewItem(this, "late");
        Q3ListViewItem::setOpen(open);
    }
};

#endif
