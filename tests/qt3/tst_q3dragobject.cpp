// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QWidget>

#include <memory>

namespace {

/// Drags "cyan" as soon as the mouse is moved on it, and takes drops.
class Place : public QWidget
{
public:
    explicit Place(QWidget *parent) : QWidget(parent) { setAcceptDrops(true); }
    bool moved = false;
    bool done = false;
    QPointer<Q3DragObject> drag;
    QByteArray taken;

protected:
    void mouseMoveEvent(QMouseEvent *) override
    {
        if (done || drag)
            return;
        auto *stored = new Q3StoredDrag("text/x-ink", this);
        stored->setEncodedData(QByteArrayLiteral("cyan"));
        drag = stored;
        moved = stored->dragMove();
        done = true;
    }
    void dragEnterEvent(QDragEnterEvent *e) override { e->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent *e) override { e->acceptProposedAction(); }
    void dropEvent(QDropEvent *e) override
    {
        taken = e->mimeData()->data(QStringLiteral("text/x-ink"));
        e->acceptProposedAction();
    }
};

} // namespace

class TestQ3DragObject : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void storedData()
    {
        Q3StoredDrag drag("text/x-ink", nullptr, "name");
        QCOMPARE(drag.objectName(), QStringLiteral("name"));
        QCOMPARE(drag.format(0), "text/x-ink");
        QCOMPARE(drag.format(1), nullptr);
        QCOMPARE(drag.format(-1), nullptr);
        QVERIFY(drag.encodedData("text/x-ink").isNull());
        drag.setEncodedData(QByteArrayLiteral("cyan"));
        QCOMPARE(drag.encodedData("TEXT/x-ink"), QByteArrayLiteral("cyan"));
        QVERIFY(drag.encodedData("text/plain").isNull());
        QVERIFY(drag.provides("text/X-INK") && !drag.provides("text/plain"));
    }

    void theSourceIsTheParent()
    {
        auto widget = std::make_unique<QWidget>();
        const QPointer<Q3DragObject> drag = new Q3StoredDrag("text/plain", widget.get());
        QCOMPARE(drag->source(), widget.get());
        widget.reset();
        QVERIFY(!drag);
        QCOMPARE(Q3StoredDrag("text/plain").source(), nullptr);
    }

    void pixmaps()
    {
        Q3StoredDrag drag("text/plain");
        QVERIFY(drag.pixmap().isNull());
        const QPixmap pixmap(40, 20);
        drag.setPixmap(pixmap, QPoint(3, 4));
        QCOMPARE(drag.pixmapHotSpot(), QPoint(3, 4));
        drag.setPixmap(pixmap);
        QCOMPARE(drag.pixmapHotSpot(), QPoint(20, -10));
        QCOMPARE(drag.pixmap().size(), QSize(40, 20));
    }

    void aRealDragMoves()
    {
        QWidget window;
        Place from(&window);
        Place to(&window);
        from.setGeometry(0, 0, 150, 150);
        to.setGeometry(150, 0, 150, 150);
        window.resize(300, 150);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(RealPointer::drag(&from, QPoint(75, 75), &to, QPoint(75, 75)));
        QTRY_VERIFY(from.done);
        QCOMPARE(to.taken, QByteArrayLiteral("cyan"));
        QVERIFY(from.moved);
        QCOMPARE(Q3DragObject::target(), &to);
        QTRY_VERIFY(!from.drag); // it deletes itself
    }
};

TAVI_GUI_TEST_MAIN(TestQ3DragObject)

#include "tst_q3dragobject.moc"
