// SPDX-License-Identifier: MIT
#include "tests/support/helddrag.h"
#include "tests/support/tavitest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

/// A drag that is held.
class TestHeldDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void eventsHaveTheSource()
    {
        QWidget window;
        window.setGeometry(100, 100, 200, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QMimeData data;
        const QDropEvent event(QPointF(), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        int calls = 0;
        QVERIFY(holdDrag(&window, "text/x-ink", "cyan", [&] {
            ++calls;
            QCOMPARE(event.source(), &window);
        }));
        QCOMPARE(calls, 1);
        QCOMPARE(event.source(), nullptr);
    }

    void theSourceMayGo()
    {
        auto *window = new QWidget;
        window->setGeometry(100, 100, 200, 200);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        QVERIFY(holdDrag(window, "text/x-ink", "cyan", [&] { delete window; }));
    }
};

TAVI_GUI_TEST_MAIN(TestHeldDrag)
#include "tst_helddrag.moc"
