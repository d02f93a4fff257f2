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
        target->setEnabled(false);
        QVERIFY(!drag(list.middleOf(target)));
        QVERIFY(!drop(list.middleOf(target)));
        target->setEnabled(true);
        QVERIFY(drag(list.middleOf(target)));
        data.setHtml(QStringLiteral("x"));
        QVERIFY(!drag(list.middleOf(target)));
    }

    void aDragThatStaysOpensAnItem_data()
    {
        QTest::addColumn<bool>("decorated");
        QTest::addColumn<bool>("children");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<bool>("opens");
        QTest::newRow("it stays") << true << true << true << true << true;
        QTest::newRow("it goes on") << true << true << true << false << false;
        QTest::newRow("nothing to open") << true << false << true << true << false;
        QTest::newRow("not for the user to open") << false << true << true << true << false;
        QTest::newRow("disabled") << true << true << false << true << false;
    }
    void aDragThatStaysOpensAnItem()
    {
        QFETCH(bool, decorated);
        QFETCH(bool, children);
        QFETCH(bool, enabled);
        QFETCH(bool, stays);
        QFETCH(bool, opens);
        ListFixture list(3);
        list.setRootIsDecorated(decorated);
        if (children)
            new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        list.at(1)->setEnabled(enabled);
        list.setAcceptDrops(true);
        QVERIFY(list.showAndWait());
        QSignalSpy expanded(&list, &Q3ListView::expanded);
        QMimeData data;
        drag(list, list.middleOf(list.at(1)), data);
        drag(list, list.middleOf(list.at(1)) + QPoint(1, 0), data);
        QVERIFY(!list.at(1)->isOpen());
        if (!stays)
            drag(list, list.middleOf(list.at(0)), data);
        if (opens)
            QTRY_COMPARE(expanded.count(), 1);
        else
            QVERIFY(!expanded.wait(1000)); // the time is the rule here
        QCOMPARE(list.at(1)->isOpen(), opens);
    }

    void nothingOpensAfterADrag()
    {
        ListFixture left(2);
        ListFixture dropped(2);
        ListFixture deleted(2);
        int opened = 0;
        QMimeData data;
        for (ListFixture *list : {&left, &dropped, &deleted}) {
            list->setRootIsDecorated(true);
            new Q3ListViewItem(list->at(0), QStringLiteral("below"));
            list->setAcceptDrops(true);
            QVERIFY(list->showAndWait());
            connect(list, &Q3ListView::expanded, list, [&opened] { ++opened; });
            drag(*list, list->middleOf(list->at(0)), data);
        }
        QDragLeaveEvent leave;
        left.sendToViewport(&leave);
        QDropEvent drop(dropped.middleOf(dropped.at(0)), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        dropped.sendToViewport(&drop);
        delete deleted.at(0);
        QSignalSpy expanded(&left, &Q3ListView::expanded);
        QVERIFY(!expanded.wait(1000)); // the time is the rule here
        QCOMPARE(opened, 0);
    }

    void anItemThatGoesWhenADragOpensIt()
    {
        ListFixture list(3);
        list.setRootIsDecorated(true);
        new Q3ListViewItem(list.at(1), QStringLiteral("below"));
        list.setAcceptDrops(true);
        QVERIFY(list.showAndWait());
        connect(&list, &Q3ListView::expanded, &list, [](Q3ListViewItem *item) { delete item; });
        QMimeData data;
        drag(list, list.middleOf(list.at(1)), data);
        QTRY_COMPARE(list.childCount(), 2);
        QDragLeaveEvent leave;
        list.sendToViewport(&leave);
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

private:
    /// Has a drag move to a point.
    static void drag(ListFixture &list, const QPoint &at, const QMimeData &data)
    {
        QDragMoveEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        list.sendToViewport(&event);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewDrag)

#include "tst_q3listview_drag.moc"
