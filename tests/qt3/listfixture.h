// SPDX-License-Identifier: MIT
#ifndef TESTS_QT3_LISTFIXTURE_H
#define TESTS_QT3_LISTFIXTURE_H

#include "qt3/q3header.h"
#include "qt3/q3listview.h"
#include "tests/support/activewindow.h"

#include <QSignalSpy>
#include <QtTest>

#include <vector>

Q_DECLARE_METATYPE(Q3ListViewItem *)

/// A shown list of a few rows, and what a user does to it.
class ListFixture : public Q3ListView
{
public:
    explicit ListFixture(int rows = 10, SelectionMode mode = Single)
    {
        qRegisterMetaType<Q3ListViewItem *>();
        addColumn(QStringLiteral("Name"), 120);
        addColumn(QStringLiteral("Number"), 80);
        setSorting(-1);
        setSelectionMode(mode);
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < rows; ++row) {
            last = new Q3ListViewItem(this, last, QStringLiteral("row %1").arg(row), QString::number(row));
            items.push_back(last);
        }
        resize(300, 200);
    }

    bool showAndWait() { return showActive(this); }

    Q3ListViewItem *at(int row) const { return items[static_cast<size_t>(row)]; }
    QPoint middleOf(Q3ListViewItem *item, int column = 0) const
    {
        const QRect section = header()->sectionRect(column);
        return QPoint(section.center().x(), itemRect(item).center().y());
    }
    void click(Q3ListViewItem *item, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int column = 0,
               Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(viewport(), button, modifiers, middleOf(item, column));
    }
    void doubleClick(Q3ListViewItem *item)
    {
        const QPoint at = middleOf(item);
        QTest::mouseClick(viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QTest::mouseDClick(viewport(), Qt::LeftButton, Qt::NoModifier, at);
    }
    /// A press at one point and moves to another, without letting go.
    void dragTo(const QPoint &from, const QPoint &to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(viewport(), Qt::LeftButton, modifiers, from);
        for (int step = 1; step <= 4; ++step)
            move(from + (to - from) * step / 4, modifiers);
    }
    void move(const QPoint &to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(QEvent::MouseMove, to, viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                          modifiers);
        QCoreApplication::sendEvent(viewport(), &event);
    }
    void release(const QPoint &at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseRelease(viewport(), Qt::LeftButton, modifiers, at);
    }

    /// Sends an event of a drag past the application, which would want a real drag to go on.
    bool sendToViewport(QEvent *event) { return viewportEvent(event); }

    /// The selected rows, by the numbers in their second column.
    QString selection()
    {
        QStringList rows;
        for (Q3ListViewItemIterator it(this, Q3ListViewItemIterator::Selected); it.current(); ++it)
            rows.append(it.current()->text(1));
        return rows.join(QLatin1Char(' '));
    }
    /// The texts of the rows as they follow each other.
    QString rows(int column = 0)
    {
        QStringList texts;
        for (Q3ListViewItem *item = firstChild(); item; item = item->itemBelow())
            texts.append(item->text(column));
        return texts.join(QLatin1Char(' '));
    }

    std::vector<Q3ListViewItem *> items;
};

#endif
