// SPDX-License-Identifier: MIT
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWidget>

namespace {

/// Writes down what happens to it.
class Listener : public QWidget
{
public:
    explicit Listener(QWidget *parent) : QWidget(parent)
    {
        setAcceptDrops(true);
        setFocusPolicy(Qt::StrongFocus);
    }

    QStringList heard;
    bool drags = false;

protected:
    void mousePressEvent(QMouseEvent *event) override { note("press", event->pos()); }
    void mouseReleaseEvent(QMouseEvent *event) override { note("release", event->pos()); }
    void mouseDoubleClickEvent(QMouseEvent *event) override { note("double", event->pos()); }
    void mouseMoveEvent(QMouseEvent *) override
    {
        if (!drags)
            return;
        drags = false;
        auto *drag = new QDrag(this);
        auto *swatch = new QMimeData;
        swatch->setText("swatch");
        drag->setMimeData(swatch);
        heard << (drag->exec(Qt::MoveAction) == Qt::MoveAction ? "moved" : "not moved");
    }
    void dragEnterEvent(QDragEnterEvent *event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent *event) override
    {
        event->acceptProposedAction();
        note("drop " + event->mimeData()->text(), event->pos());
    }
    void keyPressEvent(QKeyEvent *event) override { heard << QKeySequence(event->key()).toString(); }

private:
    void note(const QString &what, const QPoint &at)
    {
        heard << QString("%1 %2,%3").arg(what).arg(at.x()).arg(at.y());
    }
};

} // namespace

/// The pointer of the display.
class TestRealPointer : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        window = std::make_unique<QWidget>();
        window->resize(400, 200);
        window->move(100, 100);
        left = new Listener(window.get());
        left->setGeometry(0, 0, 200, 200);
        right = new Listener(window.get());
        right->setGeometry(200, 0, 200, 200);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void cleanup()
    {
        window.reset();
        TaviTest::cleanup();
    }

    void clicksComeAtTheirPlace()
    {
        QVERIFY(RealPointer::click(left, QPoint(30, 40)));
        QTRY_COMPARE(left->heard, (QStringList{"press 30,40", "release 30,40"}));
        QCOMPARE(right->heard, QStringList());
    }

    void twoClicksMakeADoubleClick()
    {
        QVERIFY(RealPointer::doubleClick(right, QPoint(50, 60)));
        QTRY_COMPARE(right->heard, (QStringList{"press 50,60", "release 50,60", "double 50,60", "release 50,60"}));
    }

    void aDragEndsInADrop()
    {
        left->drags = true;
        QVERIFY(RealPointer::drag(left, QPoint(20, 20), right, QPoint(120, 150)));
        QTRY_COMPARE(left->heard, (QStringList{"press 20,20", "moved"}));
        QCOMPARE(right->heard, QStringList{"drop swatch 120,150"});
    }

    void keysGoToTheFocus()
    {
        right->setFocus();
        QVERIFY(RealPointer::key("space"));
        QTRY_COMPARE(right->heard, QStringList{"Space"});
    }

    void aPlaceOutsideIsRefused()
    {
        QVERIFY(!RealPointer::click(left, QPoint(230, 40)));
        QVERIFY(!RealPointer::drag(left, QPoint(20, 20), right, QPoint(-1, 5)));
        QCOMPARE(left->heard, QStringList());
    }

private:
    std::unique_ptr<QWidget> window;
    Listener *left = nullptr;
    Listener *right = nullptr;
};

TAVI_GUI_TEST_MAIN(TestRealPointer)
#include "tst_realpointer.moc"
