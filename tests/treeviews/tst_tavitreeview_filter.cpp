// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <QHBoxLayout>
#include <QLabel>

namespace {

/// A view that counts what a subclass is told.
class CountingView : public TreeProbe
{
public:
    void startFiltering() override
    {
        ++starts;
        TreeProbe::startFiltering();
    }
    void stopFiltering() override
    {
        ++stops;
        TreeProbe::stopFiltering();
    }
    void updateStatusBar(int ms = 0) override
    {
        ++updates;
        TreeProbe::updateStatusBar(ms);
    }
    QString statusString() override { return "<" + TreeProbe::statusString() + ">"; }

    int starts = 0;
    int stops = 0;
    int updates = 0;
};

/// Counts the events of one type that an object gets.
class EventCounter : public QObject
{
public:
    EventCounter(QObject *watched, QEvent::Type type) : type_(type) { watched->installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == type_ ? 1 : 0;
        return false;
    }
    int count = 0;

private:
    const QEvent::Type type_;
};

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

} // namespace

/// Filtering, the search window, and the status line.
class TestTaviTreeViewFilter : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete TaviTreeView::filterFloater();
        TaviTest::cleanup();
    }

    void aKeywordOpensBranchesAndAnEmptyOneRestoresThem()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.saveExpandStates();
        tree.view.filter("light");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "black", "grey", "light grey"}));
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        tree.view.filter("");
        QCOMPARE(tree.view.shownTexts().size(), 8);
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(!tree.view.isItemExpanded(tree.black));
        QVERIFY(!tree.view.isItemExpanded(tree.grey));
    }

    void branchesAreOpenedWithoutASignal()
    {
        Tree tree;
        QSignalSpy expanded(&tree.view, SIGNAL(expanded(QModelIndex)));
        tree.view.filter("light cyan"); // one branch
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        tree.view.filter("light"); // and more
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        QCOMPARE(expanded.count(), 0);
        QVERIFY(!tree.view.signalsBlocked());
        tree.view.collapseAll();
        tree.view.saveExpandStates();
        QSignalSpy collapsed(&tree.view, SIGNAL(collapsed(QModelIndex)));
        tree.view.filter("grey");
        tree.view.filter("");
        QCOMPARE(collapsed.count(), 2); // black, grey
    }

    void hitsInBranchesThatWereClosedAreOnDisplay()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.filter("light grey");
        const QModelIndex hit = tree.view.indexOf(tree.light_grey);
        QVERIFY(tree.view.visualRect(hit).isValid());
        QCOMPARE(tree.view.indexAt(tree.view.centreOf(hit)), hit);
        QCOMPARE(tree.view.indexAbove(hit).data().toString(), QString("grey"));
    }

    void branchesOfHiddenRowsStayClosed()
    {
        Tree tree;
        tree.view.filter("light cyan");
        tree.view.filter("");
        QVERIFY(tree.view.isItemExpanded(tree.cyan)); // nothing had been remembered
        QVERIFY(!tree.view.isItemExpanded(tree.black));
    }

    void aBranchThatGrowsUnderAKeywordIsOpen()
    {
        Tree tree;
        tree.view.filter("m");
        TaviTreeItem *child = makeItem("medium magenta");
        tree.model.appendItem(child, tree.magenta);
        QVERIFY(tree.view.isItemExpanded(tree.magenta));
        TaviTreeItem *no_hit = makeItem("pink");
        tree.model.appendItem(no_hit, tree.magenta);
        QVERIFY(!tree.view.shownTexts().contains("pink"));
        QVERIFY(tree.view.shownTexts().contains("medium magenta"));
    }

    void aBranchOpensByItselfOnlyUnderAKeywordAndOnlyWhenItBecomesOne()
    {
        Tree tree;
        tree.model.appendItem(makeItem("medium magenta"), tree.magenta);
        QVERIFY(!tree.view.isItemExpanded(tree.magenta));
        tree.view.filter("m");
        QVERIFY(tree.view.isItemExpanded(tree.magenta));
        tree.view.setItemExpanded(tree.magenta, false); // by the user
        tree.model.appendItem(makeItem("more magenta"), tree.magenta);
        QVERIFY(!tree.view.isItemExpanded(tree.magenta));
    }

    void theEndOfFilteringShowsAllAndBringsBackTheBeginning()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.selectItem(tree.paper);
        tree.view.startFiltering();
        tree.view.filter("grey");
        tree.view.stopFiltering();
        QCOMPARE(tree.view.shownTexts().size(), 8);
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(!tree.view.isItemExpanded(tree.black));
        // Also if nothing was typed.
        tree.view.startFiltering();
        tree.view.setItemExpanded(tree.cyan, false);
        tree.view.setItemExpanded(tree.black, true);
        tree.view.stopFiltering();
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(!tree.view.isItemExpanded(tree.black));
    }

    void aSortOverwritesTheBeginningOnlyAfterTheEnd()
    {
        Tree tree;
        tree.view.setSortingEnabled(true);
        tree.view.startFiltering();
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.sortByColumn(1, Qt::AscendingOrder);
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        tree.view.stopFiltering();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        tree.view.setItemExpanded(tree.black, true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        tree.view.collapseAll();
        tree.view.restoreExpandStates();
        QVERIFY(tree.view.isItemExpanded(tree.black)); // as at the sort
    }

    void lineEditsFilterWithoutBeginningAndEnd()
    {
        CountingView view;
        Tree tree;
        view.setModel(&tree.model);
        QLineEdit line_edit;
        view.addFilterLineEdit(nullptr);
        view.addFilterLineEdit(&line_edit);
        QVERIFY(view.proxyModel()->hasLineEdit(&line_edit));
        line_edit.setText("paper");
        QCOMPARE(view.shownTexts(), QStringList({"paper"}));
        line_edit.clear();
        QCOMPARE(view.shownTexts().size(), 8);
        QCOMPARE(view.starts, 0);
        QCOMPARE(view.stops, 0);
    }

    void oneRowIsFilteredAnew()
    {
        Tree tree;
        tree.view.widget();
        tree.view.filter("cyan");
        tree.paper->setData(0, "cyan paper", Qt::DisplayRole); // without a signal
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("1 item"));
        tree.view.filterIndex(tree.view.indexOf(tree.paper));
        QVERIFY(tree.view.shownTexts().contains("cyan paper"));
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("2 items"));
        tree.view.filterIndex(QModelIndex()); // no row at all
        QCOMPARE(tree.view.shownTexts().size(), 4);
    }

    void theFloaterIsBuiltAsDocumented()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        const auto *floater = tree.view.findChild<TaviTreeViewFilterFloater *>("filter_floater");
        QVERIFY(floater);
        QCOMPARE(floater, TaviTreeView::filterFloater());
        QCOMPARE(floater->parent(), &tree.view);
        QCOMPARE(floater->windowType(), Qt::Tool);
        QCOMPARE(int(Qt::Tool), 11);
        QCOMPARE(floater->windowTitle(), QString("Search"));
        const auto *layout = qobject_cast<QHBoxLayout *>(floater->layout());
        QVERIFY(layout);
        const auto *icon = qobject_cast<QLabel *>(layout->itemAt(0)->widget());
        QVERIFY(icon && icon->pixmap(Qt::ReturnByValue).toImage() == QPixmap(":tavi/search.png").toImage());
        QCOMPARE(layout->itemAt(1)->widget(), floater->lineEdit());
        QCOMPARE(layout->stretch(0), 0);
        QCOMPARE(layout->stretch(1), 1);
        QVERIFY(tree.view.proxyModel()->hasLineEdit(floater->lineEdit()));
    }

    void theFloaterStandsCentredAndTakesTheFocus()
    {
        Tree tree;
        QVERIFY(tree.show({500, 400}));
        tree.view.showFilterFloater();
        const TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        QVERIFY(QTest::qWaitForWindowActive(const_cast<TaviTreeViewFilterFloater *>(floater)));
        QTRY_VERIFY(floater->lineEdit()->hasFocus());
        const QWidget *viewport = tree.view.viewport();
        const QPoint corner = viewport->mapToGlobal(viewport->pos());
        const QSize hint = floater->sizeHint();
        const QPoint wanted(corner.x() + (viewport->width() - hint.width()) / 2,
                            corner.y() + (viewport->height() - hint.height()) / 2);
        // The window manager may put the frame there, or what is in it.
        QTRY_VERIFY(floater->pos() == wanted || floater->geometry().topLeft() == wanted);
    }

    void whatIsTypedInTheFloaterFilters()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        QLineEdit *line_edit = TaviTreeView::filterFloater()->lineEdit();
        QTest::keyClicks(line_edit, "pale");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "pale cyan"}));
        QSignalSpy closing(TaviTreeView::filterFloater(), SIGNAL(closing()));
        QTest::keyClick(line_edit, Qt::Key_Escape);
        QCOMPARE(closing.count(), 1);
        QVERIFY(TaviTreeView::filterFloater()->isHidden());
        QCOMPARE(line_edit->text(), QString());
        QCOMPARE(tree.view.shownTexts().size(), 8);
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
    }

    void escapeWithShiftDoesNotClose()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        QTest::keyClick(floater->lineEdit(), Qt::Key_Escape, Qt::ShiftModifier);
        QVERIFY(floater->isVisible());
        QKeyEvent other_key(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier);
        QCoreApplication::sendEvent(floater, &other_key);
        QVERIFY(!other_key.isAccepted()); // goes on to whoever is behind
        QVERIFY(floater->isVisible());
        tree.view.closeFilterFloater();
        QVERIFY(!floater->isVisible());
        tree.view.closeFilterFloater(); // nothing left to do
    }

    void openingTwiceDoesNothing()
    {
        Tree tree;
        CountingView view;
        view.setModel(&tree.model);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.showFilterFloater();
        const TaviTreeViewFilterFloater *floater = TaviTreeView::filterFloater();
        QCOMPARE(view.starts, 1);
        view.showFilterFloater();
        QCOMPARE(view.starts, 1);
        QCOMPARE(TaviTreeView::filterFloater(), floater);
        view.closeFilterFloater();
        QCOMPARE(view.stops, 1);
        // Closed, it is used again, and comes to the front.
        EventCounter raised(TaviTreeView::filterFloater(), QEvent::ZOrderChange);
        TaviTreeView::filterFloater()->show();
        const int by_showing = std::exchange(raised.count, 0);
        TaviTreeView::filterFloater()->hide();
        view.showFilterFloater();
        QCOMPARE(raised.count, by_showing + 1);
        QCOMPARE(floater->focusWidget(), floater->lineEdit());
        QCOMPARE(view.starts, 2);
        QCOMPARE(TaviTreeView::filterFloater(), floater);
        QVERIFY(floater->isVisible());
    }

    void aSecondViewTakesTheFloaterOver()
    {
        Tree first;
        Tree second;
        QVERIFY(first.show() && second.show());
        first.view.showFilterFloater();
        const QPointer<TaviTreeViewFilterFloater> old = TaviTreeView::filterFloater();
        old->lineEdit()->setText("paper");
        QCOMPARE(first.view.shownTexts(), QStringList({"paper"}));
        second.view.showFilterFloater();
        QVERIFY(!old); // at once
        QCOMPARE(first.view.shownTexts().size(), 8);
        QCOMPARE(TaviTreeView::filterFloater()->parent(), &second.view);
        QCOMPARE(TaviTreeView::filterFloater()->lineEdit()->text(), QString());
        // Whichever view it belongs to.
        first.view.closeFilterFloater();
        QVERIFY(TaviTreeView::filterFloater()->isHidden());
    }

    void aFloaterThatWasClosedLeavesItsViewAlone()
    {
        Tree first;
        Tree second;
        QVERIFY(first.show() && second.show());
        first.view.showFilterFloater();
        first.view.closeFilterFloater();
        first.view.setItemExpanded(first.cyan, true);
        second.view.showFilterFloater();
        QVERIFY(first.view.isItemExpanded(first.cyan));
    }

    void filteringKeepsASelectionMadeMeanwhile()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectItem(tree.paper);
        tree.view.showFilterFloater();
        TaviTreeView::filterFloater()->lineEdit()->setText("cyan");
        tree.view.clearSelectItem(tree.cyan);
        tree.view.closeFilterFloater();
        QCOMPARE(tree.view.selectedItem(), tree.cyan);
    }

    void aSelectionThatWasLostReturns()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectItems({tree.paper, tree.light_grey});
        tree.view.showFilterFloater();
        TaviTreeView::filterFloater()->lineEdit()->setText("cyan");
        tree.view.clearSelection();
        tree.view.closeFilterFloater();
        QCOMPARE(tree.view.selectedTexts(), QStringList({"light grey", "paper"}));
        // What is in a closed branch does not open it.
        QVERIFY(!tree.view.isItemExpanded(tree.black));
    }

    void selectionAndExpansionSurviveWhatHappensMeanwhile_data()
    {
        QTest::addColumn<bool>("came");
        QTest::addColumn<bool>("went");
        QTest::addColumn<bool>("sorted");
        QTest::addColumn<bool>("reset");
        for (int i = 0; i < 16; ++i)
            QTest::addRow("%s%s%s%s", i & 1 ? "came " : "", i & 2 ? "went " : "", i & 4 ? "sorted " : "",
                          i & 8 ? "reset" : "")
                << bool(i & 1) << bool(i & 2) << bool(i & 4) << bool(i & 8);
    }
    void selectionAndExpansionSurviveWhatHappensMeanwhile()
    {
        QFETCH(bool, came);
        QFETCH(bool, went);
        QFETCH(bool, sorted);
        QFETCH(bool, reset);
        Tree tree;
        QVERIFY(tree.show());
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        tree.view.setItemExpanded(tree.black, true);
        tree.view.selectItems({tree.magenta, tree.light_cyan});
        tree.view.showFilterFloater();
        QLineEdit *line_edit = TaviTreeView::filterFloater()->lineEdit();
        line_edit->setText("light");
        if (came) {
            tree.model.insertItem(0, makeItem("light ivory"));
            tree.model.insertItem(0, makeItem("light blue"), tree.cyan);
        }
        if (went)
            tree.model.removeItem(tree.paper);
        if (sorted) {
            tree.view.sortByColumn(0, Qt::DescendingOrder);
            tree.view.sortByColumn(1, Qt::AscendingOrder);
        }
        if (reset)
            tree.model.resetModel();
        QCOMPARE(tree.view.shownTexts().count("magenta"), 0);
        line_edit->setText("li");
        tree.view.closeFilterFloater();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(!tree.view.isItemExpanded(tree.grey));
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        QVERIFY(tree.view.selectedItems(0).contains(tree.magenta));
        QVERIFY(tree.view.selectedItems(0).contains(tree.light_cyan));
        QCOMPARE(tree.view.shownTexts().size(), 8 + (came ? 2 : 0) - (went ? 1 : 0));
    }

    void theKeywordHoldsAfterAReset()
    {
        Tree tree;
        tree.view.filter("cyan");
        tree.model.resetModel();
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
        tree.view.reset();
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
    }

    void statusTexts_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("selected");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << 0 << 0 << "0 item";
        QTest::newRow("one") << 1 << 0 << "1 item";
        QTest::newRow("one of one") << 1 << 1 << "1 of 1 item";
        QTest::newRow("two of five") << 5 << 2 << "2 of 5 items";
        QTest::newRow("groups") << 1234 << 0 << "1,234 items";
        QTest::newRow("groups of both") << 1234 << 1001 << "1,001 of 1,234 items";
    }
    void statusTexts()
    {
        QFETCH(int, rows);
        QFETCH(int, selected);
        QFETCH(QString, text);
        const DefaultLocale english(QLocale(QLocale::English, QLocale::UnitedStates));
        TaviTreeModel model({"name"});
        QList<TaviTreeItem *> items;
        for (int i = 0; i < rows; ++i)
            items.append(makeItem(QString::number(i)));
        model.appendItems(items);
        TreeProbe view;
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setModel(&model);
        view.selectItems(items.mid(0, selected));
        QCOMPARE(view.statusString(), text);
    }

    void theStatusCountsVisibleRowsOfTheTopLevelAndSelectedRowsOfAll()
    {
        Tree tree;
        tree.view.filter("light");
        tree.view.selectItems({tree.light_cyan, tree.light_grey, tree.cyan});
        QCOMPARE(tree.view.statusString(), QString("3 of 2 items"));
    }

    void rowsHiddenThroughThePlainViewAreCounted()
    {
        Tree tree;
        QTreeView *plain = &tree.view;
        QVERIFY(tree.show());
        const QStatusBar *bar = tree.view.statusBar();
        QTRY_COMPARE(bar->currentMessage(), QString("4 items"));
        plain->setRowHidden(0, QModelIndex(), true);
        QCOMPARE(tree.view.visibleRowCount(), 3);
        QCOMPARE(tree.view.statusString(), QString("3 items"));
        QTRY_COMPARE(bar->currentMessage(), QString("3 items")); // as soon as the row is gone from the display
        plain->setRowHidden(1, QModelIndex(), true);
        tree.view.updateStatusBar();
        QCOMPARE(bar->currentMessage(), QString("2 items"));
        QTRY_VERIFY(tree.view.indexAt({5, 5}) == tree.view.indexOf(tree.black));
        // The next run decides about these rows, too.
        tree.paper->emitDataChanged();
        QCOMPARE(tree.view.visibleRowCount(), 4);
        QCOMPARE(bar->currentMessage(), QString("4 items"));
    }

    void aRowHiddenThroughThePlainViewIsDecidedAboutUnderAKeyword()
    {
        Tree tree;
        QTreeView *plain = &tree.view;
        QVERIFY(tree.show());
        tree.view.filter("a");
        QTRY_COMPARE(tree.view.statusBar()->currentMessage(), QString("4 items"));
        QCoreApplication::processEvents();
        plain->setRowHidden(0, QModelIndex(), true);
        QTRY_COMPARE(tree.view.statusBar()->currentMessage(), QString("3 items"));
        tree.paper->emitDataChanged();
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("4 items"));
        QVERIFY(!tree.view.isRowHidden(0, QModelIndex()));
    }

    void rowsHiddenOrShownThroughThePlainViewDoNotSurviveAKeyword()
    {
        Tree tree;
        QTreeView *plain = &tree.view;
        QVERIFY(tree.show());
        tree.view.filter("cyan");
        tree.view.grab(); // laid out
        plain->setRowHidden(3, QModelIndex(), false);
        plain->setRowHidden(0, QModelIndex(), true);
        tree.view.filter("cya");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("1 item"));
        tree.view.grab();
        plain->setRowHidden(3, QModelIndex(), false);
        tree.view.grab();
        tree.view.filter("cyan");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
        tree.view.grab();
        tree.view.setRowHidden(3, QModelIndex(), false);
        tree.view.filter("cya");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
    }

    void aRowShownBesideAKeywordBeforeTheLayoutIsHiddenByTheNext()
    {
        Tree tree;
        QTreeView *plain = &tree.view;
        QVERIFY(tree.show());
        tree.view.grab();
        tree.view.filter("cyan");
        plain->setRowHidden(3, QModelIndex(), false);
        tree.view.filter("cya");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
    }

    void aRowThatACountMissesIsDecidedAboutByTheNextChange()
    {
        Tree tree;
        QTreeView *plain = &tree.view;
        QVERIFY(tree.show());
        tree.view.filter("a");
        plain->setRowHidden(0, QModelIndex(), true);
        QCOMPARE(tree.view.visibleRowCount(), 3);
        tree.paper->emitDataChanged();
        QCOMPARE(tree.view.visibleRowCount(), 4);
    }

    void rowsThatChangeBetweenKeywordsAreDecidedAboutAnew()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.filter("cyan");
        tree.view.grab();
        tree.paper->setData(0, "cyan paper", Qt::DisplayRole);
        tree.paper->emitDataChanged(); // which shows it
        tree.view.grab();
        QVERIFY(tree.view.shownTexts().contains("cyan paper"));
        tree.view.filter("cyan c");
        QVERIFY(tree.view.shownTexts().isEmpty());
        tree.view.grab();
        // And one that is filtered by itself.
        tree.view.filter("cyan");
        tree.view.grab();
        tree.magenta->setData(0, "cyan magenta", Qt::DisplayRole);
        tree.view.filterIndex(tree.view.indexOf(tree.magenta));
        QVERIFY(tree.view.shownTexts().contains("cyan magenta"));
        tree.view.grab();
        tree.magenta->setData(0, "magenta", Qt::DisplayRole);
        tree.view.filter("cyan ");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan paper"}));
        // And one that was shown again by the end of a keyword.
        tree.view.filter("");
        tree.view.grab();
        tree.view.setRowHidden(0, QModelIndex(), true);
        tree.view.grab();
        tree.paper->emitDataChanged();
        QCOMPARE(tree.view.visibleRowCount(), 4);
    }

    void theStatusLineFollows()
    {
        Tree tree;
        tree.view.widget();
        QStatusBar *bar = tree.view.statusBar();
        tree.view.updateStatusBar();
        QCOMPARE(bar->currentMessage(), QString("4 items"));
        tree.view.selectItem(tree.paper);
        QCOMPARE(bar->currentMessage(), QString("1 of 4 items"));
        TaviTreeItem *item = makeItem("new");
        tree.model.appendItem(item);
        QCOMPARE(bar->currentMessage(), QString("1 of 5 items"));
        tree.model.removeItem(item);
        QCOMPARE(bar->currentMessage(), QString("1 of 4 items"));
        tree.view.clearSelection();
        QCOMPARE(bar->currentMessage(), QString("4 items"));
        tree.view.filter("light");
        QCOMPARE(bar->currentMessage(), QString("2 items"));
        tree.model.insertItem(0, makeItem("hidden"));
        QCOMPARE(bar->currentMessage(), QString("2 items"));
        tree.model.insertItem(0, makeItem("light red"));
        QCOMPARE(bar->currentMessage(), QString("3 items"));
        tree.view.filter("");
        QCOMPARE(bar->currentMessage(), QString("6 items"));
        tree.model.removeItems({tree.cyan, tree.black});
        QCOMPARE(bar->currentMessage(), QString("4 items"));
        tree.view.setRowHidden(0, QModelIndex(), true);
        tree.view.updateStatusBar();
        QCOMPARE(bar->currentMessage(), QString("3 items"));
        tree.model.clear();
        QCOMPARE(bar->currentMessage(), QString("0 item"));
    }

    void theStatusLineMayFade()
    {
        Tree tree;
        tree.view.widget();
        tree.view.updateStatusBar(1);
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("4 items"));
        QTRY_COMPARE(tree.view.statusBar()->currentMessage(), QString());
    }

    void subclassesAreAskedForEveryStatus()
    {
        Tree tree;
        CountingView view;
        view.setModel(&tree.model);
        QWidget *container = view.widget();
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.updates = 0;
        view.selectItem(tree.paper);
        QCOMPARE(view.updates, 1);
        QCOMPARE(view.statusBar()->currentMessage(), QString("<1 of 4 items>"));
        view.selectionModel()->setCurrentIndex(view.indexOf(tree.cyan), QItemSelectionModel::NoUpdate);
        QCOMPARE(view.updates, 2);
        // Rows that come or go, and a reset, are told of, and then the filter has looked at them.
        view.updates = 0;
        TaviTreeItem *item = makeItem("new");
        tree.model.appendItem(item);
        QCOMPARE(view.updates, 2);
        view.updates = 0;
        tree.model.removeItem(item);
        QCOMPARE(view.updates, 2);
        view.updates = 0;
        view.filter("cyan");
        QCOMPARE(view.updates, 1);
        view.updates = 0;
        tree.model.resetModel();
        QCOMPARE(view.updates, 2);
        view.setParent(nullptr);
        delete container;
    }

    void invertingShowsWhatIsMissed()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        QLineEdit *line_edit = TaviTreeView::filterFloater()->lineEdit();
        QTest::keyClicks(line_edit, "cyan");
        QTest::keyClick(line_edit, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey", "paper"}));
        QCOMPARE(line_edit->text(), QString("cyan"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewFilter)
#include "tst_tavitreeview_filter.moc"
