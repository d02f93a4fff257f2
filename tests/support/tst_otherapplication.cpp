// SPDX-License-Identifier: MIT
#include "tests/support/otherapplication.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QDrag>
#include <QMimeData>
#include <QWidget>

namespace {

/// Drags "cyan" as soon as the mouse is moved on it, as a copy or a move.
class Source : public QWidget
{
public:
    QVector<Qt::DropAction> done;
    QVector<const QObject *> targets;

protected:
    void mouseMoveEvent(QMouseEvent *) override
    {
        auto *drag = new QDrag(this);
        auto *ink = new QMimeData;
        ink->setData("text/x-ink", "cyan");
        drag->setMimeData(ink);
        done << drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
        targets << drag->target();
    }
};

} // namespace

/// Drags out of the application.
class TestOtherApplication : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void itTakesADrop_data()
    {
        QTest::addColumn<bool>("moves");
        QTest::newRow("as a move") << true;
        QTest::newRow("as a copy") << false;
    }
    void itTakesADrop()
    {
        QFETCH(bool, moves);
        Source source;
        source.setGeometry(50, 50, 200, 200);
        source.show();
        source.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&source));
        OtherApplication other("text/x-ink", moves, QPoint(400, 100));
        QVERIFY(other.isReady());
        QVERIFY(RealPointer::dragOut(&source, QPoint(100, 100), other.middle()));
        QCOMPARE(other.takeDrop(), QByteArray("cyan"));
        QTRY_COMPARE(source.done.size(), 1);
        QCOMPARE(source.done.first(), moves ? Qt::MoveAction : Qt::CopyAction);
        QVERIFY(source.targets.first() == nullptr);
    }
};

TAVI_GUI_TEST_MAIN(TestOtherApplication)
#include "tst_otherapplication.moc"
