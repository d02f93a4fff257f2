// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <memory>

class TestQ3ListViewItemIterator : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        // 0, 1 with a and b (with c), 2
        list = std::make_unique<ListFixture>(3);
        b = new Q3ListViewItem(list->at(1), QStringLiteral("b"));
        a = new Q3ListViewItem(list->at(1), QStringLiteral("a"));
        c = new Q3ListViewItem(b, QStringLiteral("c"));
    }
    void cleanup()
    {
        list.reset();
        TaviTest::cleanup();
    }

    void everyItem()
    {
        QCOMPARE(walk(Q3ListViewItemIterator(list.get())), QStringLiteral("row 0, row 1, a, b, c, row 2"));
        QCOMPARE(walk(Q3ListViewItemIterator(b)), QStringLiteral("b, c, row 2"));
        QCOMPARE(walk(Q3ListViewItemIterator()), QString());
        QCOMPARE(walk(Q3ListViewItemIterator(static_cast<Q3ListView *>(nullptr))), QString());
    }

    void backwards()
    {
        Q3ListViewItemIterator it(list->at(2));
        QString names;
        for (; it.current(); --it)
            names += it.current()->text(0) + QLatin1Char(' ');
        QCOMPARE(names, QStringLiteral("row 2 c b a row 1 row 0 "));
        --it;
        QCOMPARE(it.current(), nullptr);
    }

    void operators()
    {
        Q3ListViewItemIterator it(list.get());
        QCOMPARE((it++).current(), list->at(0));
        QCOMPARE(*it, list->at(1));
        it += 2;
        QCOMPARE(it.current(), b);
        QCOMPARE((it--).current(), b);
        it -= 1;
        QCOMPARE(it.current(), list->at(1));
        Q3ListViewItemIterator copy(it);
        ++copy;
        QCOMPARE(it.current(), list->at(1));
        copy = it;
        QCOMPARE(copy.current(), list->at(1));
        it += 100;
        QCOMPARE(it.current(), nullptr);
        ++it;
        QCOMPARE(it.current(), nullptr);
    }

    void flags_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("items");
        using I = Q3ListViewItemIterator;
        QTest::newRow("visible") << int(I::Visible) << "row 0, row 1, b, c, row 2";
        QTest::newRow("invisible") << int(I::Invisible) << "a";
        QTest::newRow("selected") << int(I::Selected) << "row 0, c";
        QTest::newRow("unselected") << int(I::Unselected) << "row 1, a, b, row 2";
        QTest::newRow("both") << int(I::Selected | I::Unselected) << "row 0, row 1, a, b, c, row 2";
        QTest::newRow("two kinds") << int(I::Visible | I::Unselected) << "row 1, b, row 2";
        QTest::newRow("selectable") << int(I::Selectable) << "row 0, row 1, a, c, row 2";
        QTest::newRow("not selectable") << int(I::NotSelectable) << "b";
        QTest::newRow("drag") << int(I::DragEnabled) << "a";
        QTest::newRow("no drag") << int(I::DragDisabled) << "row 0, row 1, b, c, row 2";
        QTest::newRow("drop") << int(I::DropEnabled) << "b";
        QTest::newRow("no drop") << int(I::DropDisabled) << "row 0, row 1, a, c, row 2";
        QTest::newRow("expandable") << int(I::Expandable) << "c";
        QTest::newRow("not expandable") << int(I::NotExpandable) << "row 0, row 1, a, b, row 2";
        QTest::newRow("ticked") << int(I::Checked) << "";
        QTest::newRow("not ticked") << int(I::NotChecked) << "row 0, row 1, a, b, c, row 2";
    }
    void flags()
    {
        a->setVisible(false);
        list->at(0)->setSelected(true);
        c->setSelected(true);
        b->setSelectable(false);
        a->setDragEnabled(true);
        b->setDropEnabled(true);
        c->setExpandable(true);
        QFETCH(int, flags);
        QTEST(walk(Q3ListViewItemIterator(list.get(), flags)), "items");
    }

    void flagsChooseTheStart()
    {
        c->setSelected(true);
        Q3ListViewItemIterator it(list->at(1), Q3ListViewItemIterator::Selected);
        QCOMPARE(it.current(), c);
    }

    void anItemThatGoesHandsOn()
    {
        Q3ListViewItemIterator at_b(b);
        Q3ListViewItemIterator at_c(c);
        Q3ListViewItemIterator at_last(list->at(2));
        delete list->at(2);
        QCOMPARE(at_last.current(), c); // nothing is behind it
        delete b;                       // with c below it
        QCOMPARE(at_b.current(), a);
        QCOMPARE(at_c.current(), a);
        QCOMPARE(at_last.current(), a);
        list->takeItem(list->at(1));
        QCOMPARE(at_b.current(), list->at(0));
        delete list->at(1);
        list->clear();
        QCOMPARE(at_b.current(), nullptr);
    }

    void deletingInALoop()
    {
        Q3ListViewItemIterator it(list.get());
        int deleted = 0;
        while (it.current()) {
            delete it.current();
            ++deleted;
        }
        QCOMPARE(deleted, 3); // the children went with row 1
        QCOMPARE(list->childCount(), 0);
    }

    void anIteratorOutlivesItsView()
    {
        Q3ListViewItemIterator it(list.get());
        list.reset();
        QCOMPARE(it.current(), nullptr);
    }

private:
    static QString walk(Q3ListViewItemIterator it)
    {
        QStringList names;
        for (; it.current(); ++it)
            names.append(it.current()->text(0));
        return names.join(QStringLiteral(", "));
    }

    std::unique_ptr<ListFixture> list;
    Q3ListViewItem *a = nullptr;
    Q3ListViewItem *b = nullptr;
    Q3ListViewItem *c = nullptr;
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewItemIterator)

#include "tst_q3listviewitemiterator.moc"
