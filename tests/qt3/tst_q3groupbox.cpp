// SPDX-License-Identifier: MIT
#include "qt3/q3groupbox.h"
#include "tests/support/tavitest.h"

#include <QGridLayout>
#include <QLabel>

class TestQ3GroupBox : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        Q3GroupBox box(QStringLiteral("title"), nullptr, "name");
        QCOMPARE(box.title(), QStringLiteral("title"));
        QCOMPARE(box.objectName(), QStringLiteral("name"));
        QCOMPARE(box.columns(), 0);
        QCOMPARE(box.orientation(), Qt::Vertical);
        QCOMPARE(box.insideMargin(), 11);
        QCOMPARE(box.insideSpacing(), 5);
        QCOMPARE(box.layout(), nullptr);
    }

    void childrenFillTheStrips_data()
    {
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::newRow("columns") << Qt::Horizontal;
        QTest::newRow("rows") << Qt::Vertical;
    }
    void childrenFillTheStrips()
    {
        QFETCH(Qt::Orientation, orientation);
        Q3GroupBox box(2, orientation, QStringLiteral("title"));
        auto *a = new QLabel(QStringLiteral("a"), &box);
        auto *b = new QLabel(QStringLiteral("b"), &box);
        box.addSpace(30);
        auto *c = new QLabel(QStringLiteral("c"), &box);
        box.resize(200, 200);
        box.show();
        const bool across = orientation == Qt::Horizontal;
        QCOMPARE(across ? a->y() : a->x(), across ? b->y() : b->x());
        QVERIFY(across ? b->x() > a->x() : b->y() > a->y());
        QVERIFY(across ? c->y() > b->y() : c->x() > b->x());
        QCOMPARE(across ? c->x() : c->y(), across ? b->x() : b->y()); // the space is in the first strip
        box.setColumns(3);
        QCOMPARE(box.columns(), 3);
        box.layout()->activate();
        QCOMPARE(across ? c->y() : c->x(), across ? a->y() : a->x());
    }

    void windowsAreNotLaidOut()
    {
        Q3GroupBox box(1, Qt::Horizontal);
        new QWidget(&box, Qt::Window);
        QCOMPARE(box.layout()->count(), 0);
        new QWidget(&box);
        QCOMPARE(box.layout()->count(), 1);
    }

    void fewerThanNoStripsAreNone()
    {
        Q3GroupBox box(-3, Qt::Horizontal);
        QCOMPARE(box.columns(), 0);
        QCOMPARE(box.layout(), nullptr);
    }

    void spaceGoesAlongTheStrips()
    {
        for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
            Q3GroupBox box(2, orientation);
            box.addSpace(30);
            QCOMPARE(box.layout()->itemAt(0)->sizeHint(),
                     orientation == Qt::Horizontal ? QSize(30, 0) : QSize(0, 30));
        }
    }

    void aLayoutOfOnesOwn()
    {
        Q3GroupBox box(2, Qt::Horizontal);
        box.setColumnLayout(0, Qt::Horizontal);
        QCOMPARE(box.layout(), nullptr);
        auto *own = new QGridLayout(&box);
        new QLabel(&box);
        QCOMPARE(own->count(), 0);
    }

    void marginsAndSpacing()
    {
        Q3GroupBox box(1, Qt::Horizontal);
        box.setInsideMargin(3);
        box.setInsideSpacing(7);
        QCOMPARE(box.layout()->contentsMargins(), QMargins(3, 3, 3, 3));
        QCOMPARE(box.layout()->spacing(), 7);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3GroupBox)

#include "tst_q3groupbox.moc"
