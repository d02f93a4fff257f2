// SPDX-License-Identifier: MIT
#include "qt3/q3widgetstack.h"
#include "tests/listviews/listviewfixture.h"
#include "tests/support/standardoutput.h"
#include "tests/support/tavitest.h"
#include "tests/support/virtualplace.h"

#include <QGridLayout>
#include <QScopeGuard>
#include <QStackedWidget>

namespace {

/// The default locale, for as long as this lives.
class DefaultLocale
{
public:
    explicit DefaultLocale(const QLocale &locale) { QLocale::setDefault(locale); }
    ~DefaultLocale() { QLocale::setDefault(before_); }
    DefaultLocale(const DefaultLocale &) = delete;
    DefaultLocale &operator=(const DefaultLocale &) = delete;

private:
    const QLocale before_;
};

class PaintProbe : public ListProbe
{
public:
    void preDrawContents() override { ++prepared; }
    void headersRebuilt() override {}
    void filterFloaterClosed() override {}
    int prepared = 0;
};

/// A window with a list above its status line.
struct ListWithStatusLine : QWidget {
    ListWithStatusLine() : list(new ListProbe(true, this))
    {
        list->setWantStatusBar(true);
        list->getListWidget();
    }
    ListProbe *const list;
};

/// A tree: a(a1 a2) b c(c1(c11)), none of it open.
struct Branches {
    Branches()
    {
        list.addColumn("Name", 200);
        Q3ListViewItem *c1 = nullptr;
        a = new Q3ListViewItem(&list, nullptr, "a");
        b = new Q3ListViewItem(&list, a, "b");
        c = new Q3ListViewItem(&list, b, "c");
        a1 = new Q3ListViewItem(a, nullptr, "a1");
        a2 = new Q3ListViewItem(a, a1, "a2");
        c1 = new Q3ListViewItem(c, nullptr, "c1");
        c11 = new Q3ListViewItem(c1, nullptr, "c11");
    }
    ListProbe list;
    Q3ListViewItem *a, *b, *c, *a1, *a2, *c11;
};

} // namespace

/// The list itself: container and status line, rows and selection, taking over another list.
class TestTaviListView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QWidget parent;
        TaviListView list(true, &parent, "swatches", Qt::WindowFlags());
        QCOMPARE(list.objectName(), QString("swatches"));
        QCOMPARE(list.parentWidget(), &parent);
        QVERIFY(list.headerMenuEnabled());
        QVERIFY(!TaviListView(false).headerMenuEnabled());
        QVERIFY(!list.wantStatusBar());
        QVERIFY(!list.getStatusBar());
        QVERIFY(!list.isFilteringItems());
        QVERIFY(list.columnItems().isEmpty());
        QVERIFY(!TaviListView::filterFloater());
        QVERIFY(!list.accessibleName().isEmpty());
    }

    // Another order breaks subclasses that are not built anew.
    void virtualOperationsStandInTheirOrder()
    {
        const std::ptrdiff_t places[] = {
            virtualPlace(&TaviListView::setWantStatusBar),
            virtualPlace(&TaviListView::wantStatusBar),
            virtualPlace(&TaviListView::getStatusString),
            virtualPlace(&TaviListView::saveOpenStates),
            virtualPlace(&TaviListView::restoreOpenStates),
            virtualPlace(&PaintProbe::preDrawContents),
            virtualPlace(&PaintProbe::headersRebuilt),
            virtualPlace(&TaviListView::showFilterFloater),
            virtualPlace(&TaviListView::closeFilterFloater),
            virtualPlace(QOverload<QString, bool>::of(&TaviListView::filterItems)),
            virtualPlace(QOverload<>::of(&TaviListView::filterItems)),
            virtualPlace(QOverload<int>::of(&TaviListView::updateStatusBar)),
            virtualPlace(&PaintProbe::filterFloaterClosed),
        };
        for (size_t at = 1; at < std::size(places); ++at)
            QCOMPARE(places[at] - places[at - 1], std::ptrdiff_t(sizeof(void *)));
    }

    void aConfigOrderItemShowsAndHasNoNameAndNoPicture()
    {
        TaviConfigOrderItem item;
        QVERIFY(item.isItemVisible());
        item.setItemVisible(false);
        QVERIFY(!item.isItemVisible());
        QVERIFY(item.itemText().isNull());
        QVERIFY(item.itemPixmap().isNull());
    }

    void aColumnItemTellsTitleAndIcon()
    {
        ColumnItem item;
        QVERIFY(item.isItemVisible());
        QCOMPARE(item.itemText(), QString());
        QVERIFY(item.itemPixmap().isNull());
        QCOMPARE(item.alignment, int(Qt::AlignLeft));
        item.title = "Ink";
        QCOMPARE(item.itemText(), QString("Ink"));
        QPixmap red(64, 64);
        red.fill(Qt::red);
        item.icon.addPixmap(red, QIcon::Normal, QIcon::Off);
        QPixmap blue(64, 64);
        blue.fill(Qt::blue);
        item.icon.addPixmap(blue, QIcon::Normal, QIcon::On);
        QCOMPARE(item.itemPixmap().size(), QSize(16, 16));
        QCOMPARE(item.itemPixmap().toImage().pixelColor(8, 8), QColor(Qt::red));
        item.icon = QIcon(red.copy(0, 0, 64, 32)); // 16 pixels on the longer side
        QCOMPARE(item.itemPixmap().size(), QSize(16, 8));
    }

    void selectedRowsAreLightBlueWithBlackText()
    {
        ListProbe list;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(list.palette().color(group, QPalette::Highlight), QColor(191, 216, 250));
        QCOMPARE(list.palette().color(QPalette::Active, QPalette::HighlightedText), QColor(Qt::black));
        QCOMPARE(list.palette().color(QPalette::Inactive, QPalette::HighlightedText), QColor(Qt::black));
        QCOMPARE(list.palette().color(QPalette::Disabled, QPalette::Text), QColor(Qt::gray));
        QCOMPARE(list.palette().color(QPalette::Disabled, QPalette::HighlightedText), QColor(Qt::gray));
    }

    void aDarkPaletteIsFollowed()
    {
        const QPalette before = QApplication::palette();
        ListProbe list;
        QPalette dark;
        dark.setColor(QPalette::All, QPalette::Text, Qt::white);
        dark.setColor(QPalette::All, QPalette::Base, QColor(30, 30, 30));
        QApplication::setPalette(dark);
        QCoreApplication::processEvents();
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        const QPalette &now = list.palette();
        QCOMPARE(now.color(QPalette::Active, QPalette::Base), QColor(30, 30, 30));
        QCOMPARE(now.color(QPalette::Active, QPalette::Text), QColor(Qt::white));
        QCOMPARE(now.color(QPalette::Active, QPalette::Highlight), QColor(191, 216, 250));
        QCOMPARE(now.color(QPalette::Disabled, QPalette::Text), QColor(Qt::gray));
    }

    void itIsPreparedBeforeEachPainting()
    {
        PaintProbe list;
        list.fill(1, 3);
        QVERIFY(list.showAndWait());
        list.prepared = 0;
        list.viewport()->repaint();
        QVERIFY(list.prepared > 0);
    }

    void withoutAStatusLineTheListStandsAlone()
    {
        QWidget parent;
        auto *list = new ListProbe(true, &parent);
        QCOMPARE(list->getListWidget(), list);
        QVERIFY(!list->getStatusBar());
    }

    void theContainerHasTheListAboveItsStatusLine()
    {
        QWidget parent;
        auto *list = new ListProbe(true, &parent);
        list->setWantStatusBar(true);
        QVERIFY(list->wantStatusBar());
        QVERIFY(!list->getStatusBar());
        QWidget *container = list->getListWidget();
        QCOMPARE(container->objectName(), QString("tavilistview_container"));
        QCOMPARE(container->parentWidget(), &parent);
        QCOMPARE(list->parentWidget(), container);
        QCOMPARE(list->getListWidget(), container);
        auto *grid = qobject_cast<QGridLayout *>(container->layout());
        QVERIFY(grid);
        QCOMPARE(grid->contentsMargins(), QMargins());
        QCOMPARE(grid->itemAtPosition(0, 0)->widget(), list);
        QCOMPARE(grid->itemAtPosition(1, 0)->widget(), list->getStatusBar());
        QCOMPARE(grid->rowStretch(0), 1);
        QCOMPARE(grid->rowStretch(1), 0);
        QVERIFY(!list->getStatusBar()->isSizeGripEnabled());
        QVERIFY(!list->getStatusBar()->accessibleName().isEmpty());
        list->setWantStatusBar(false);
        QVERIFY(!list->getStatusBar());
        QCOMPARE(list->getListWidget(), list);
    }

    void theStatusLineCountsRowsAndSelection()
    {
        ListProbe list;
        list.fill(1, 5);
        list.setSelectionMode(Q3ListView::Multi);
        QCOMPARE(list.getStatusString(), QString("5 items"));
        list.setSelected(list.at(1), true);
        QCOMPARE(list.getStatusString(), QString("1 of 5 items"));
        list.at(4)->setVisible(false);
        QCOMPARE(list.getStatusString(), QString("1 of 4 items"));
        list.at(0)->setVisible(false); // not counted though the walk begins with it
        QCOMPARE(list.getStatusString(), QString("1 of 3 items"));
        list.setSelected(list.at(0), true);
        QCOMPARE(list.getStatusString(), QString("1 of 3 items"));
        list.clear();
        QCOMPARE(list.getStatusString(), QString("0 items"));
    }

    void theStatusLineCountsOpenBranches()
    {
        Branches tree;
        QCOMPARE(tree.list.getStatusString(), QString("3 items"));
        tree.a->setOpen(true);
        QCOMPARE(tree.list.getStatusString(), QString("5 items"));
    }

    void largeNumbersAreWrittenAsTheLocaleDoes()
    {
        const DefaultLocale german(QLocale(QLocale::German, QLocale::Germany));
        ListProbe list;
        list.fill(1, 1500);
        list.setSelectionMode(Q3ListView::Multi);
        QCOMPARE(list.getStatusString(), QString("1.500 items"));
        list.selectAll(true);
        QCOMPARE(list.getStatusString(), QString("1.500 of 1.500 items"));
    }

    void theStatusLineFollowsSelectionFilterAndClearing()
    {
        const ListWithStatusLine window;
        ListProbe &list = *window.list;
        list.fill(1, 3);
        list.updateStatusBar();
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("3 items"));
        list.setSelected(list.at(0), true);
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("1 of 3 items"));
        list.filterItems("a0", false);
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("1 of 1 items"));
        list.filterItems("", false);
        list.clearSelection();
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("3 items"));
        list.clear();
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("0 items"));
    }

    void theStatusLineFollowsTheCurrentItem()
    {
        const ListWithStatusLine window;
        ListProbe &list = *window.list;
        list.fill(1, 3);
        list.setCurrentItem(list.at(2));
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("3 items"));
    }

    void theStatusLineFollowsTheClearingOfAListWithoutACurrentItem()
    {
        const ListWithStatusLine window;
        ListProbe &list = *window.list;
        list.fill(1, 3);
        list.updateStatusBar();
        QVERIFY(!list.currentItem());
        list.clear();
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("0 items"));
        QVERIFY(list.getStatusBar()->findChildren<QTimer *>().isEmpty()); // it stays
    }

    void aMessageMayGoAfterAWhile()
    {
        const ListWithStatusLine window;
        ListProbe &list = *window.list;
        list.updateStatusBar(1);
        QCOMPARE(list.getStatusBar()->currentMessage(), QString("0 items"));
        QTRY_COMPARE(list.getStatusBar()->currentMessage(), QString());
    }

    void clearingIsTold()
    {
        ListProbe list;
        list.fill(1, 3);
        QSignalSpy cleared(&list, SIGNAL(cleared()));
        list.clear();
        QCOMPARE(list.childCount(), 0);
        QCOMPARE(cleared.count(), 1);
        list.clear();
        QCOMPARE(cleared.count(), 2);
    }

    void selectedRowsAreCountedInOrder()
    {
        Branches tree;
        tree.list.setSelectionMode(Q3ListView::Multi);
        Q3ListViewItem *first = tree.b;
        QCOMPARE(tree.list.selectedChildCount(&first), 0);
        QVERIFY(!first);
        QVERIFY(!tree.list.firstSelectedChild());
        for (Q3ListViewItem *item : {tree.c, tree.a2, tree.b})
            tree.list.setSelected(item, true);
        QCOMPARE(tree.list.selectedChildCount(&first), 2); // a2 is in no row
        QCOMPARE(first, tree.b);
        QCOMPARE(tree.list.firstSelectedChild(), tree.b);
        tree.a->setOpen(true);
        QCOMPARE(tree.list.selectedChildCount(), 3);
        QCOMPARE(tree.list.firstSelectedChild(), tree.a2);
    }

    void visibleRowsAreCounted()
    {
        Branches tree;
        tree.list.setSelectionMode(Q3ListView::Multi);
        Q3ListViewItem *first = tree.b;
        QCOMPARE(tree.list.visibleChildCount(&first), 3);
        QVERIFY(!first);
        tree.list.setSelected(tree.b, true);
        tree.list.setSelected(tree.c, true);
        tree.a->setVisible(false);
        QCOMPARE(tree.list.visibleChildCount(&first), 2);
        QCOMPARE(first, tree.b);
        QCOMPARE(tree.list.visibleChildCount(), 2);
    }

    void selectedChildrenOfOneItemAreCounted()
    {
        Branches tree;
        tree.list.setSelectionMode(Q3ListView::Multi);
        Q3ListViewItem *first = tree.b;
        QCOMPARE(tree.list.selectedItemChildCount(nullptr, &first), 0);
        QVERIFY(!first);
        QCOMPARE(tree.list.selectedItemChildCount(tree.a), 0);
        tree.list.setSelected(tree.a2, true);
        tree.list.setSelected(tree.c11, true);
        QCOMPARE(tree.list.selectedItemChildCount(tree.a, &first), 1);
        QCOMPARE(first, tree.a2);
        QCOMPARE(tree.list.selectedItemChildCount(tree.c), 0); // direct children alone
    }

    void theLastVisibleRowIsFound()
    {
        ListProbe empty;
        QVERIFY(!empty.lastVisibleItem());
        Branches tree;
        const auto last = [&] {
            return tree.list.lastVisibleItem()->text(0);
        };
        QCOMPARE(last(), QString("c"));
        tree.c->setOpen(true);
        QCOMPARE(last(), QString("c1"));
        tree.c->firstChild()->setOpen(true);
        QCOMPARE(last(), QString("c11"));
        tree.c11->setVisible(false);
        QCOMPARE(last(), QString("c1"));
        tree.c11->setVisible(true);
        tree.c->setOpen(false);
        QCOMPARE(last(), QString("c"));
        tree.c->setVisible(false);
        QCOMPARE(last(), QString("b"));
        tree.c->setOpen(true); // and with it all that is below
        QCOMPARE(last(), QString("b"));
        tree.b->setVisible(false);
        tree.a->setOpen(true);
        QCOMPARE(last(), QString("a2"));
        tree.a->setVisible(false);
        QVERIFY(!tree.list.lastVisibleItem());
    }

    void theFirstSelectedBecomesCurrent()
    {
        ListProbe list;
        list.setSelectionMode(Q3ListView::Multi);
        list.fill(1, 100);
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(3));
        list.setFirstSelectedAsCurrent(true);
        QCOMPARE(list.currentItem(), list.at(3));
        list.setSelected(list.at(90), true);
        list.setFirstSelectedAsCurrent(false);
        QCOMPARE(list.currentItem(), list.at(90));
        QCOMPARE(list.contentsY(), 0);
        list.setFirstSelectedAsCurrent(true);
        QVERIFY(list.itemRect(list.at(90)).isValid());
    }

    void selectedTopLevelItemsAreOpenedAndClosed()
    {
        Branches tree;
        tree.list.setSelectionMode(Q3ListView::Multi);
        tree.list.setSelected(tree.a, true);
        tree.list.setSelected(tree.b, true);
        tree.list.setSelected(tree.c->firstChild(), true);
        tree.list.setSelectedOpen(true);
        QVERIFY(tree.a->isOpen());
        QVERIFY(!tree.c->isOpen());
        QVERIFY(!tree.c->firstChild()->isOpen());
        tree.list.setSelectedOpen(false);
        QVERIFY(!tree.a->isOpen());
    }

    void anItemThatGetsItsChildrenWhenItIsOpenedIsOpened()
    {
        ListProbe list;
        list.addColumn("Name", 200);
        auto *lazy = new LazyItem(&list);
        list.setSelected(lazy, true);
        list.setSelectedOpen(true);
        QCOMPARE(list.rows(), QString("lazy late"));
        list.setSelectedOpen(false);
        QCOMPARE(list.rows(), QString("lazy"));
    }

    void aSlotMayDeleteWhatIsOpened()
    {
        Branches tree;
        tree.list.setSelectionMode(Q3ListView::Multi);
        for (Q3ListViewItem *item : {tree.a, tree.b, tree.c})
            tree.list.setSelected(item, true);
        QObject::connect(&tree.list, &Q3ListView::expanded, &tree.list, [&](Q3ListViewItem *item) {
            if (item == tree.a) {
                delete tree.b;
                delete tree.a;
            }
        });
        tree.list.setSelectedOpen(true);
        QVERIFY(tree.c->isOpen());
        QCOMPARE(tree.list.rows(), QString("c c1"));
        QObject::connect(&tree.list, &Q3ListView::collapsed, &tree.list, [&] { tree.list.clear(); });
        tree.list.setSelectedOpen(false);
        QCOMPARE(tree.list.childCount(), 0);
    }

    void renamedItemsAreTold()
    {
        ListProbe list;
        QSignalSpy renamed(&list, SIGNAL(itemsRenamed(int)));
        list.fireItemsRenamed(7);
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), 7);
        list.dismissRenameDialog(); // there is none
    }

    void columnsArePrinted()
    {
        ListProbe list;
        list.addColumn("Ink", 60);
        list.addColumnItem(QString::fromUtf8("Gr\xC3\xBC"
                                             "n"),
                           60, false);
        StandardOutput output;
        list.debugColumnItems();
        QCOMPARE(output.text(), QString::fromUtf8("TaviListView::debugColumnItems()---columns:1---items:2\n"
                                                  "index:0 mid:0 visible >Ink\n"
                                                  "index:1 mid:1 hidden >Gr\xC3\xBCn\n"));
    }

    void itTakesThePlaceOfAFormsList()
    {
        QStackedWidget stack;
        stack.addWidget(new QWidget);
        const QPointer<Q3ListView> old = new Q3ListView(&stack);
        stack.addWidget(old);
        old->addColumn("Ink", 50);
        old->addColumn("Density", 70);
        old->setWhatsThis("What it is");
        old->setResizeMode(Q3ListView::LastColumn);
        old->setShowToolTips(false);
        old->setSelectionMode(Q3ListView::Extended);
        old->setAllColumnsShowFocus(true);
        old->setDefaultRenameAction(Q3ListView::Accept);
        auto *list = new ListProbe;
        list->addColumn("Before", 60);
        list->hotSwap(old, &stack, true);
        QVERIFY(!old);
        QCOMPARE(list->headings(), QString("Ink Density"));
        QCOMPARE(list->columnWidthMode(0), Q3ListView::Maximum);
        QCOMPARE(list->columnTexts(), QString("(Before) Ink* Density*"));
        QCOMPARE(list->whatsThis(), QString("What it is"));
        QCOMPARE(list->resizeMode(), Q3ListView::LastColumn);
        QVERIFY(!list->showToolTips());
        QCOMPARE(list->selectionMode(), Q3ListView::Extended);
        QVERIFY(list->allColumnsShowFocus());
        QCOMPARE(list->defaultRenameAction(), Q3ListView::Accept);
        QCOMPARE(stack.currentWidget(), list);
        QCOMPARE(stack.count(), 2);
    }

    void itsOwnColumnsMayStay()
    {
        QStackedWidget stack;
        auto *old = new Q3ListView(&stack);
        old->addColumn("Ink", 50);
        auto *list = new ListProbe;
        list->addColumn("Mine", 60);
        list->hotSwap(old, &stack, false);
        QCOMPARE(list->headings(), QString("Mine"));
    }

    void itBringsItsStatusLineAlong()
    {
        QStackedWidget stack;
        auto *old = new Q3ListView(&stack);
        stack.addWidget(old);
        auto *list = new ListProbe;
        list->setWantStatusBar(true);
        list->hotSwap(old, &stack, true);
        QWidget *container = stack.currentWidget();
        QCOMPARE(container->objectName(), QString("tavilistview_listwidget"));
        QCOMPARE(container->parentWidget(), &stack);
        QCOMPARE(list->parentWidget(), container);
        QCOMPARE(list->getListWidget(), container);
        QVERIFY(list->getStatusBar());
    }

    void aStackOfTheOlderKindWillDo()
    {
        Q3WidgetStack stack;
        const QPointer<Q3ListView> old = new Q3ListView(&stack);
        stack.addWidget(old);
        stack.raiseWidget(old);
        old->addColumn("Ink", 50);
        auto *list = new ListProbe;
        list->setWantStatusBar(true);
        list->hotSwap(old, &stack, true);
        QVERIFY(!old);
        QCOMPARE(list->headings(), QString("Ink"));
        QVERIFY(stack.visibleWidget());
        QCOMPARE(stack.visibleWidget(), list->getListWidget());
        QCOMPARE(stack.visibleWidget()->objectName(), QString("tavilistview_listwidget"));
        list->hotSwap(nullptr, &stack, true);
        list->hotSwap(new Q3ListView(&stack), static_cast<Q3WidgetStack *>(nullptr), true);
        QVERIFY(stack.visibleWidget());
    }

    void itDoesNotTakeItsOwnPlace()
    {
        QStackedWidget stack;
        const QPointer<ListProbe> list = new ListProbe;
        list->fill(2, 1);
        stack.addWidget(list);
        list->hotSwap(list, &stack, true);
        QVERIFY(list);
        QCOMPARE(list->headings(), QString("A B"));
        QCOMPARE(stack.count(), 1);
    }

    void withoutAnOldListNothingIsSwapped()
    {
        QStackedWidget stack;
        ListProbe list;
        list.hotSwap(nullptr, &stack, true);
        QCOMPARE(stack.count(), 0);
        auto *old = new Q3ListView;
        list.hotSwap(old, static_cast<QStackedWidget *>(nullptr), true);
        QVERIFY(old->columns() == 0); // and alive
        delete old;
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListView)
#include "tst_tavilistview.moc"
