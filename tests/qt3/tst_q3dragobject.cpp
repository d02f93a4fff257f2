// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>

namespace {

/// Offers a second format, for which it has no data.
class HalfEmptyDrag : public Q3StoredDrag
{
public:
    explicit HalfEmptyDrag(QWidget *source) : Q3StoredDrag("text/x-ink", source) {}
    const char *format(int i) const override { return i == 1 ? "text/x-paper" : Q3StoredDrag::format(i); }
};

/// Drags "cyan" as soon as the mouse is moved on it, and takes drops.
class Place : public QWidget
{
public:
    explicit Place(QWidget *parent) : QWidget(parent) { setAcceptDrops(true); }
    bool moved = false;
    bool done = false;
    QPointer<Q3DragObject> drag;
    bool user_chooses = false; ///< Drags in default mode.
    bool copies = false;       ///< Makes every drop a copy.
    QByteArray taken;
    QStringList offered;
    std::function<void()> during_enter;

protected:
    void mouseMoveEvent(QMouseEvent *) override
    {
        if (done || drag)
            return;
        auto *stored = new HalfEmptyDrag(this);
        stored->setEncodedData(QByteArrayLiteral("cyan"));
        drag = stored;
        const QPointer<Place> self(this);
        const bool was_moved = user_chooses ? stored->drag() : stored->dragMove();
        if (!self)
            return;
        moved = was_moved;
        done = true;
    }
    void dragEnterEvent(QDragEnterEvent *e) override
    {
        take(e);
        if (during_enter)
            std::exchange(during_enter, nullptr)();
    }
    void dragMoveEvent(QDragMoveEvent *e) override { take(e); }
    void dropEvent(QDropEvent *e) override
    {
        taken = e->mimeData()->data(QStringLiteral("text/x-ink"));
        offered = e->mimeData()->formats();
        take(e);
    }

private:
    void take(QDropEvent *e) const
    {
        e->setDropAction(copies ? Qt::CopyAction : e->proposedAction());
        e->accept();
    }
};

/// A window with two places side by side.
struct TwoPlaces {
    QWidget window;
    Place from{&window};
    Place to{&window};

    bool show()
    {
        from.setGeometry(0, 0, 150, 150);
        to.setGeometry(150, 0, 150, 150);
        window.resize(300, 150);
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    /// Drags from one place to the other. True if the drag was over in time.
    bool drag()
    {
        from.done = false;
        return RealPointer::drag(&from, QPoint(75, 75), &to, QPoint(75, 75))
               && QTest::qWaitFor([this] { return from.done && !from.drag; });
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

    void anEmptyTypeIsNoFormat()
    {
        const Q3StoredDrag drag("");
        QCOMPARE(drag.format(0), nullptr);
        QVERIFY(!drag.provides(""));
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
        TwoPlaces places;
        QVERIFY(places.show());
        QVERIFY(places.drag()); // it deletes itself
        QCOMPARE(places.to.taken, QByteArrayLiteral("cyan"));
        QVERIFY(places.from.moved);
        QCOMPARE(Q3DragObject::target(), &places.to);
    }

    void aCopyIsNoMove()
    {
        TwoPlaces places;
        places.from.user_chooses = true;
        places.to.copies = true;
        QVERIFY(places.show());
        QVERIFY(places.drag());
        QCOMPARE(places.to.taken, QByteArrayLiteral("cyan"));
        QVERIFY(!places.from.moved);
        QCOMPARE(Q3DragObject::target(), &places.to);
    }

    void aFormatWithoutDataIsNotOffered()
    {
        TwoPlaces places;
        QVERIFY(places.show());
        QVERIFY(places.drag());
        QCOMPARE(places.to.offered, QStringList(QStringLiteral("text/x-ink")));
    }

    void theNextDragHasNoTargetYet()
    {
        TwoPlaces places;
        QVERIFY(places.show());
        QVERIFY(places.drag());
        QCOMPARE(Q3DragObject::target(), &places.to);
        QWidget *meanwhile = &places.window;
        places.to.during_enter = [&meanwhile] {
            meanwhile = Q3DragObject::target();
        };
        QVERIFY(places.drag());
        QCOMPARE(meanwhile, nullptr);
        QCOMPARE(Q3DragObject::target(), &places.to);
    }

    void theSourceMayGoDuringTheDrag()
    {
        QWidget window;
        auto *from = new Place(&window);
        Place to(&window);
        from->setGeometry(0, 0, 150, 150);
        to.setGeometry(150, 0, 150, 150);
        to.during_enter = [&from] {
            // The loop of the drag ends without the user.
            QTimer::singleShot(0, [&from] { delete std::exchange(from, nullptr); });
        };
        window.resize(300, 150);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(RealPointer::drag(from, QPoint(75, 75), &to, QPoint(75, 75)));
        QTRY_VERIFY(!from);
        QCOMPARE(to.taken, QByteArray());
        QCOMPARE(Q3DragObject::target(), nullptr);
    }

    void aTargetThatGoesIsNone()
    {
        QWidget window;
        Place from(&window);
        auto *to = new Place(&window);
        from.setGeometry(0, 0, 150, 150);
        to->setGeometry(150, 0, 150, 150);
        to->during_enter = [&to] {
            QTimer::singleShot(0, [&to] { delete std::exchange(to, nullptr); });
        };
        window.resize(300, 150);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(RealPointer::drag(&from, QPoint(75, 75), to, QPoint(75, 75)));
        QTRY_VERIFY(from.done);
        QVERIFY(!from.moved);
        QCOMPARE(Q3DragObject::target(), nullptr);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3DragObject)

#include "tst_q3dragobject.moc"
