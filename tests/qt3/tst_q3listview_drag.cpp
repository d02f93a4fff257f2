// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <QMimeData>

namespace {

class List : public ListFixture
{
public:
    using ListFixture::ListFixture;
    int asked = 0;

protected:
    Q3DragObject *dragObject() override
    {
        ++asked;
        return nullptr;
    }
};

class Target : public Q3ListViewItem
{
public:
    using Q3ListViewItem::Q3ListViewItem;
    bool acceptDrop(const QMimeSource *mime) const override
    {
        return mime->provides("text/x-ink") && mime->encodedData("text/x-ink") == "cyan"
               && !mime->provides("text/html");
    }
    QStringList calls;

protected:
    void dragEntered() override { calls.append(QStringLiteral("entered")); }
    void dragLeft() override { calls.append(QStringLiteral("left")); }
    void dropped(QDropEvent *) override { calls.append(QStringLiteral("dropped")); }
};

} // namespace

class TestQ3ListViewDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void movingAnItemAsksForADrag()
    {
        List list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(1));
        list.click(list.at(3), Qt::ShiftModifier);
        list.at(2)->setDragEnabled(true);
        list.dragTo(list.middleOf(list.at(2)), list.middleOf(list.at(6)));
        QCOMPARE(list.asked, 1);
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
        list.release(list.middleOf(list.at(6)));
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
        list.dragTo(list.middleOf(list.at(5)), list.middleOf(list.at(6)));
        QCOMPARE(list.asked, 1);
        list.release(list.middleOf(list.at(6)));
    }

    void dropsOnItems()
    {
        ListFixture list(2);
        auto *target = new Target(&list, list.at(0), QStringLiteral("target"));
        list.setAcceptDrops(true);
        list.viewport()->setAcceptDrops(true);
        QVERIFY(list.showAndWait());
        int beside = 0;
        connect(&list, &Q3ListView::dropped, &list, [&beside] { ++beside; });
        QMimeData data;
        data.setData(QStringLiteral("text/x-ink"), QByteArrayLiteral("cyan"));
        const auto drag = [&](const QPoint &at) {
            QDragMoveEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            list.sendToViewport(&event);
            return event.isAccepted();
        };
        const auto drop = [&](const QPoint &at) {
            QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            list.sendToViewport(&event);
            return event.isAccepted();
        };
        QVERIFY(!drag(list.middleOf(target)));
        QCOMPARE(target->calls, QStringList{QStringLiteral("entered")});
        target->setDropEnabled(true);
        QVERIFY(drag(list.middleOf(target)));
        QVERIFY(!drag(list.middleOf(list.at(0))));
        QCOMPARE(target->calls.last(), QStringLiteral("left"));
        QVERIFY(drag(QPoint(250, 100)));
        QVERIFY(drop(list.middleOf(target)));
        QCOMPARE(target->calls.last(), QStringLiteral("dropped"));
        QVERIFY(!drop(list.middleOf(list.at(0))));
        QCOMPARE(beside, 0);
        QVERIFY(drop(QPoint(250, 100)));
        QCOMPARE(beside, 1);
        data.setHtml(QStringLiteral("x"));
        QVERIFY(!drag(list.middleOf(target)));
    }

    void anItemGoesUnderADrag()
    {
        ListFixture list(2);
        auto *target = new Target(&list, list.at(0), QStringLiteral("target"));
        list.setAcceptDrops(true);
        QVERIFY(list.showAndWait());
        QMimeData data;
        QDragMoveEvent event(list.middleOf(target), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        list.sendToViewport(&event);
        delete target;
        QDragLeaveEvent leave;
        list.sendToViewport(&leave);
        QCOMPARE(list.childCount(), 2);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewDrag)

#include "tst_q3listview_drag.moc"
