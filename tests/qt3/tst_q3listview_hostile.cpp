// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "tests/qt3/listfixture.h"
#include "tests/qt3/listsignals.h"
#include "tests/support/tavitest.h"

#include <QLineEdit>
#include <QMimeData>

#include <climits>
#include <functional>

namespace {

/// An item that remembers in which order its kind goes, and sees its children when it goes itself.
class Mortal : public Q3ListViewItem
{
public:
    Mortal(Q3ListViewItem *parent, const QString &name) : Q3ListViewItem(parent, name) {}
    Mortal(Q3ListView *parent, const QString &name) : Q3ListViewItem(parent, name) {}
    ~Mortal() override
    {
        gone.append(QStringLiteral("%1:%2").arg(text(0)).arg(childCount()));
        delete takes_along;
    }
    Q3ListViewItem *takes_along = nullptr;
    static QStringList gone;
};
QStringList Mortal::gone;

/// A view whose items are dragged while things happen to them.
class DragSource : public ListFixture
{
public:
    using ListFixture::ListFixture;
    std::function<void()> happens;

protected:
    Q3DragObject *dragObject() override
    {
        happens();
        return nullptr;
    }
};

} // namespace

/// What no program should do, and some do; the sanitizer watches.
class TestQ3ListViewHostile : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theViewGoesInAnySlot_data()
    {
        QTest::addColumn<QByteArray>("signal");
        for (const char *name : signals_of_list_items)
            QTest::newRow(name) << QByteArray(name);
        for (const char *name : {"onViewport()", "dropped(QDropEvent*)"})
            QTest::newRow(name) << QByteArray(name);
    }
    void theViewGoesInAnySlot()
    {
        QFETCH(QByteArray, signal);
        const auto from = QByteArray(QByteArray::number(QSIGNAL_CODE) + signal);
        bool happened = false;
        for (const Use &use : uses()) {
            if (!view_)
                makeView(from);
            use(*view_);
            happened = happened || !view_;
        }
        delete view_;
        QVERIFY(happened);
    }
    void destroyView()
    {
        if (view_ && sender() == view_)
            delete view_;
    }

    void nullIsNoItem()
    {
        ListFixture list(3);
        const Q3ListViewItem *none = nullptr;
        list.setCurrentItem(list.at(1));
        list.setSelected(list.at(1), true);
        list.setSelected(nullptr, true);
        list.setSelectionAnchor(nullptr);
        list.ensureItemVisible(nullptr);
        list.repaintItem(nullptr);
        list.insertItem(nullptr);
        list.takeItem(nullptr);
        list.removeItem(nullptr);
        list.setOpen(nullptr, true);
        QVERIFY(!list.isOpen(none));
        QVERIFY(!list.isSelected(none));
        QVERIFY(!list.itemRect(none).isValid());
        QCOMPARE(list.itemPos(none), 0);
        list.at(0)->insertItem(nullptr);
        list.at(0)->takeItem(nullptr);
        list.at(0)->moveItem(nullptr);
        QCOMPARE(list.selection(), QStringLiteral("1"));
        QCOMPARE(list.currentItem(), list.at(1));
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 row 2"));
        list.setCurrentItem(nullptr);
        QVERIFY(!list.currentItem());
        const Q3ListViewItemIterator iterator(static_cast<Q3ListView *>(nullptr));
        QVERIFY(!iterator.current());
    }

    void anItemCannotBeInsideItself()
    {
        ListFixture list(3);
        auto *child = new Q3ListViewItem(list.at(0), QStringLiteral("child"));
        list.at(0)->insertItem(list.at(0));
        list.takeItem(list.at(0));
        child->insertItem(list.at(0));
        QVERIFY(!list.at(0)->parent());
        QCOMPARE(list.childCount(), 2);
        list.insertItem(list.at(0));
        list.insertItem(list.at(0)); // it is there already
        QCOMPARE(list.childCount(), 3);
        list.at(1)->takeItem(list.at(2)); // of another parent
        list.takeItem(child);
        QCOMPARE(list.childCount(), 3);
        QCOMPARE(child->parent(), list.at(0));
    }

    void columnsThatAreNotThere_data()
    {
        QTest::addColumn<int>("column");
        QTest::newRow("below") << -1;
        QTest::newRow("far below") << INT_MIN;
        QTest::newRow("behind") << 2;
        QTest::newRow("far behind") << INT_MAX;
    }
    void columnsThatAreNotThere()
    {
        QFETCH(int, column);
        ListFixture list(3);
        QVERIFY(list.showAndWait());
        list.setColumnText(column, QStringLiteral("no"));
        list.setColumnText(column, QIcon(), QStringLiteral("no"));
        list.setColumnWidth(column, 50);
        list.setColumnWidthMode(column, Q3ListView::Maximum);
        list.setColumnAlignment(column, Qt::AlignRight);
        list.hideColumn(column);
        list.adjustColumn(column);
        list.removeColumn(column);
        QCOMPARE(list.columns(), 2);
        QCOMPARE(list.columnWidth(0), 120);
        QCOMPARE(list.columnWidth(1), 80);
        QVERIFY(list.columnText(column).isEmpty());
        QCOMPARE(list.columnWidth(column), 0);
        QCOMPARE(list.columnWidthMode(column), Q3ListView::Manual);
        QCOMPARE(list.columnAlignment(column), static_cast<int>(Qt::AlignLeft));
        list.setSorting(column);
        list.sort();
        QCOMPARE(list.rows(), QStringLiteral("row 0 row 1 row 2"));
        QVERIFY(!list.findItem(QStringLiteral("row 1"), column));
        Q3Header *header = list.header();
        header->setLabel(column, QStringLiteral("no"));
        header->removeLabel(column);
        header->resizeSection(column, 10);
        header->moveSection(column, 0);
        header->moveCell(column, 0);
        header->setSortIndicator(column);
        QCOMPARE(header->mapToIndex(column), -1);
        QCOMPARE(header->mapToSection(column), -1);
        QCOMPARE(header->sectionPos(column), 0);
        QVERIFY(header->sectionRect(column).isEmpty());
        QVERIFY(!header->iconSet(column));
        QCOMPARE(header->headerWidth(), 200);

        Q3ListViewItem *item = list.at(0);
        QPixmap image(8, 8);
        image.fill(Qt::red);
        if (column < 0 || column == INT_MAX) {
            item->setText(column, QStringLiteral("no"));
            item->setPixmap(column, image);
            item->setRenameEnabled(column, true);
        }
        item->startRename(column);
        item->widthChanged(column);
        QVERIFY(item->text(column).isEmpty());
        QVERIFY(!item->pixmap(column));
        QVERIFY(!item->renameEnabled(column));
        QVERIFY(!list.isRenaming());
        item->sortChildItems(column, true);
        list.grab();
    }

    void sizesBeyondReason()
    {
        ListFixture list(3);
        list.setItemMargin(-5);
        QCOMPARE(list.itemMargin(), 0);
        list.setTreeStepSize(-5);
        QCOMPARE(list.treeStepSize(), 0);
        list.setColumnWidth(0, -1);
        QCOMPARE(list.columnWidth(0), 120);
        list.header()->resizeSection(0, -1);
        QCOMPARE(list.columnWidth(0), 0);
        list.header()->resizeSection(0, 120);
        list.header()->moveSection(0, INT_MAX);
        QCOMPARE(list.header()->mapToIndex(0), 1);
        list.header()->moveSection(0, INT_MIN);
        QCOMPARE(list.header()->mapToIndex(0), 0);
        list.setContentsPos(INT_MAX, INT_MAX);
        list.setContentsPos(INT_MIN, INT_MIN);
        QVERIFY(list.showAndWait());
        QVERIFY(!list.itemAt(QPoint(INT_MIN / 2, INT_MIN / 2)));
        QVERIFY(!list.itemAt(QPoint(10, INT_MAX / 2)));
        new Q3ListViewItem(list.at(0), QStringLiteral("child"));
        list.at(0)->setOpen(true);
        list.setTreeStepSize(0);
        list.setRootIsDecorated(true);
        list.grab();
        list.setTreeStepSize(100000);
        list.grab();
        list.setItemMargin(500);
        list.grab();
    }

    void aTreeOfAnyDepthGoes()
    {
        constexpr int depth = 50000;
        constexpr int piece = 500;
        ListFixture list(0);
        // In pieces, from the inside outwards: a new item looks for its view, which takes a step for each level.
        Q3ListViewItem *top = nullptr;
        for (int level = 0; level < depth; level += piece) {
            auto *first = new Q3ListViewItem(static_cast<Q3ListViewItem *>(nullptr));
            Q3ListViewItem *last = first;
            for (int below = 1; below < piece; ++below)
                last = new Q3ListViewItem(last);
            last->insertItem(std::exchange(top, first));
        }
        int count = 0;
        for (Q3ListViewItemIterator it(top); it.current(); ++it)
            ++count;
        QCOMPARE(count, depth);
        list.insertItem(top);
        QVERIFY(!list.findItem(QStringLiteral("no"), 0));
        delete top;
        QCOMPARE(list.childCount(), 0);
    }

    void itemsGoFromTheOutsideInwards()
    {
        ListFixture list(0);
        Mortal::gone.clear();
        auto *a = new Mortal(&list, QStringLiteral("a"));
        auto *b = new Mortal(a, QStringLiteral("b"));
        auto *d = new Mortal(a, QStringLiteral("d"));
        new Mortal(b, QStringLiteral("c"));
        new Mortal(d, QStringLiteral("e"));
        delete a;
        QCOMPARE(Mortal::gone.join(QLatin1Char(' ')), QStringLiteral("a:2 d:1 e:0 b:1 c:0"));
    }

    void anItemTakesOthersAlong()
    {
        ListFixture list(3);
        Mortal::gone.clear();
        auto *a = new Mortal(&list, QStringLiteral("a"));
        auto *c = new Mortal(a, QStringLiteral("c"));
        auto *b = new Mortal(a, QStringLiteral("b"));
        auto *below = new Mortal(c, QStringLiteral("below"));
        auto *elsewhere = new Mortal(list.at(1), QStringLiteral("elsewhere"));
        new Mortal(elsewhere, QStringLiteral("inside"));
        b->takes_along = c;         // its sibling
        c->takes_along = elsewhere; // of another parent, with a child of its own
        below->takes_along = list.at(2);
        delete a;
        QCOMPARE(Mortal::gone.join(QLatin1Char(' ')), QStringLiteral("a:2 b:0 c:1 elsewhere:1 inside:0 below:0"));
        QCOMPARE(list.childCount(), 2);
        QCOMPARE(list.at(1)->childCount(), 0);
    }

    void anItemTakesOthersAlongWhenAllGo()
    {
        ListFixture list(1);
        Mortal::gone.clear();
        auto *c = new Mortal(&list, QStringLiteral("c"));
        auto *b = new Mortal(&list, QStringLiteral("b"));
        auto *a = new Mortal(&list, QStringLiteral("a"));
        a->takes_along = b;
        b->takes_along = list.at(0);
        new Mortal(c, QStringLiteral("inside"));
        list.clear();
        QCOMPARE(Mortal::gone.join(QLatin1Char(' ')), QStringLiteral("a:0 b:0 c:1 inside:0"));
        QCOMPARE(list.childCount(), 0);
        new Q3ListViewItem(&list, QStringLiteral("new"));
        QCOMPARE(list.rows(), QStringLiteral("new"));
    }

    void aDraggedItemGoes()
    {
        for (const bool all : {false, true}) {
            DragSource list(5, Q3ListView::Extended);
            list.at(2)->setDragEnabled(true);
            QVERIFY(list.showAndWait());
            list.happens = [&] {
                if (all)
                    list.clear();
                else
                    delete list.at(2);
            };
            const QPoint from = list.middleOf(list.at(2));
            const QPoint to = list.middleOf(list.at(4));
            list.dragTo(from, to);
            list.move(to + QPoint(3, 3));
            list.release(to);
            QCOMPARE(list.childCount(), all ? 0 : 4);
        }
    }

    void theViewGoesWhileItIsDraggedFrom()
    {
        auto *list = new DragSource(5);
        QPointer<DragSource> alive(list);
        list->at(2)->setDragEnabled(true);
        QVERIFY(list->showAndWait());
        list->happens = [list] {
            list->deleteLater();
        };
        list->dragTo(list->middleOf(list->at(2)), list->middleOf(list->at(4)));
        QCoreApplication::sendPostedEvents(list, QEvent::DeferredDelete);
        QVERIFY(!alive);
    }

private:
    using Use = std::function<void(ListFixture &)>;

    void makeView(const QByteArray &signal)
    {
        view_ = new ListFixture(12);
        view_->setRootIsDecorated(true);
        view_->setAcceptDrops(true);
        for (Q3ListViewItem *item : view_->items) {
            new Q3ListViewItem(item, QStringLiteral("child"));
            item->setRenameEnabled(0, true);
        }
        view_->at(3)->setOpen(true);
        view_->show();
        QCoreApplication::processEvents();
        view_->setCurrentItem(view_->at(1));
        connect(view_, signal.constData(), SLOT(destroyView()));
    }

    /// All that a user can do, one by one.
    static std::vector<Use> uses()
    {
        const auto key = [](int code) -> Use {
            return [code](ListFixture &list) {
                QTest::keyPress(&list, static_cast<Qt::Key>(code));
            };
        };
        const auto toViewport = [](ListFixture &list, QEvent *event) {
            list.sendToViewport(event);
        };
        return {
            [](ListFixture &list) {
                QTest::mousePress(list.viewport(), Qt::LeftButton, {}, list.middleOf(list.at(2)));
            },
            [](ListFixture &list) {
                QTest::mousePress(list.viewport(), Qt::RightButton, {}, list.middleOf(list.at(2)));
            },
            [](ListFixture &list) {
                const QPoint at = list.middleOf(list.at(2));
                const QPointer<QWidget> viewport(list.viewport());
                QTest::mousePress(list.viewport(), Qt::LeftButton, {}, at);
                if (viewport)
                    QTest::mouseRelease(viewport, Qt::LeftButton, {}, at);
            },
            [](ListFixture &list) {
                const QPoint at = list.middleOf(list.at(2));
                const QPointer<QWidget> viewport(list.viewport());
                QTest::mousePress(list.viewport(), Qt::RightButton, {}, at);
                if (viewport)
                    QTest::mouseRelease(viewport, Qt::RightButton, {}, at);
            },
            [](ListFixture &list) {
                QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, list.middleOf(list.at(2)));
            },
            [](ListFixture &list) {
                const QPoint expander(10, list.itemRect(list.at(2)).center().y());
                QTest::mousePress(list.viewport(), Qt::LeftButton, {}, expander);
            },
            [](ListFixture &list) {
                const QPoint from = list.middleOf(list.at(1));
                const QPoint to = list.middleOf(list.at(3));
                const QPointer<ListFixture> self(&list);
                QTest::mousePress(list.viewport(), Qt::LeftButton, {}, from);
                for (int step = 1; self && step < 5; ++step)
                    list.move(from + (to - from) * step / 4);
            },
            [toViewport](ListFixture &list) {
                QContextMenuEvent menu(QContextMenuEvent::Mouse, list.middleOf(list.at(2)), QPoint());
                toViewport(list, &menu);
            },
            [toViewport](ListFixture &list) {
                const QPointer<ListFixture> self(&list);
                QMouseEvent over(QEvent::MouseMove, list.middleOf(list.at(2)), Qt::NoButton, Qt::NoButton, {});
                toViewport(list, &over);
                QEvent leave(QEvent::Leave);
                if (self)
                    toViewport(list, &leave);
            },
            [toViewport](ListFixture &list) {
                QMimeData data;
                QDropEvent drop(QPoint(250, 60), Qt::CopyAction, &data, Qt::LeftButton, {});
                toViewport(list, &drop);
            },
            [](ListFixture &list) {
                list.at(1)->startRename(0);
                auto *editor = list.findChild<QLineEdit *>(QStringLiteral("list view editor"));
                editor->setText(QStringLiteral("renamed"));
                QTest::keyPress(editor, Qt::Key_Return);
            },
            [](ListFixture &list) { list.setSelected(list.at(4), true); },
            [](ListFixture &list) { list.setCurrentItem(list.at(4)); },
            [](ListFixture &list) { list.setOpen(list.at(3), false); },
            key(Qt::Key_Down),
            key(Qt::Key_Return),
            key(Qt::Key_Space),
            key(Qt::Key_Right),
            key(Qt::Key_End),
            key(Qt::Key_R),
            [](ListFixture &list) { delete list.at(1); },
            [](ListFixture &list) { list.clear(); },
        };
    }

    QPointer<ListFixture> view_;
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewHostile)

#include "tst_q3listview_hostile.moc"
