// SPDX-License-Identifier: MIT
#include "tests/listviews/listrenamefixture.h"
#include "tests/support/tavitest.h"

#include <QElapsedTimer>

#include <vector>

namespace {
constexpr int hundred_thousand = 100000;
}

/// The list's rename dialog while items and slots change what it works on.
class TestTaviListViewRenameDlgLifetime : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void itemsThatComeMeanwhileAreLeftAlone()
    {
        RenameList list({"a", "b"});
        list.on_text = [&list](Q3ListViewItem *item) {
            auto *come = new RenameItem(&list, &list.view, item, "new"); // behind it, where the walk goes
            come->setRenameEnabled(0, true);
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), QString("xa|new|xb|new"));
    }

    void theSelectionCountsAsItIsWhenAnItemsTurnComes()
    {
        RenameList list({"a", "b", "c", "d"});
        list.selectRows({0, 1});
        list.on_text = [&list](Q3ListViewItem *) {
            list.selectRows({0, 3});
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        QCOMPARE(list.texts(), QString("xa|b|c|xd"));
    }

    void anItemMayGoWhenItIsRenamed_data()
    {
        QTest::addColumn<QString>("gone"); // texts after the renaming
        QTest::addColumn<QString>("texts");
        QTest::newRow("the first") << "xa"
                                   << "xb|xc";
        QTest::newRow("one between") << "xb"
                                     << "xa|xc";
        QTest::newRow("the last") << "xc"
                                  << "xa|xb";
        QTest::newRow("two") << "xa xb"
                             << "xc";
        QTest::newRow("the last two") << "xb xc"
                                      << "xa";
        QTest::newRow("all") << "xa xb xc"
                             << "";
    }
    void anItemMayGoWhenItIsRenamed()
    {
        QFETCH(const QString, gone);
        QFETCH(const QString, texts);
        RenameList list({"a", "b", "c"});
        const QStringList goes = gone.split(' ');
        list.on_text = [&goes](Q3ListViewItem *item) {
            if (goes.contains(item->text(0)))
                delete item;
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(list.texts(), texts);
    }

    // With the one that is renamed, or without.
    void itemsBehindMayGo_data()
    {
        QTest::addColumn<bool>("itself");
        QTest::addColumn<QString>("texts");
        QTest::newRow("those behind") << false << "xa|xd";
        QTest::newRow("and itself") << true << "xd";
    }
    void itemsBehindMayGo()
    {
        QFETCH(const bool, itself);
        QFETCH(const QString, texts);
        RenameList list({"a", "b", "c", "d"});
        list.on_text = [itself](Q3ListViewItem *item) {
            if (item->text(0) != "xa")
                return;
            delete item->nextSibling();
            delete item->nextSibling();
            if (itself)
                delete item;
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), texts);
    }

    // The place that is left is below an item that had its turn.
    void theLastItemMayGoBehindABranch()
    {
        RenameList list({"a", "b"});
        auto *child = new RenameItem(&list, list.view.at(0), "child");
        list.on_text = [](Q3ListViewItem *item) {
            if (item->text(0) == "xb")
                delete item;
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), QString("xa"));
        QCOMPARE(child->text(0), QString("child"));
    }

    void theListMayBeCleared()
    {
        RenameList list;
        list.on_text = [&list](Q3ListViewItem *) {
            list.view.clear();
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        QCOMPARE(list.view.childCount(), 0);
    }

    // Which takes all items out and puts them in again.
    void theColumnsMayBeMadeAnew()
    {
        RenameList list;
        list.on_text = [&list](Q3ListViewItem *) {
            list.view.rebuildHeaders();
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 4);
        QCOMPARE(list.texts(), QString("xcyan 40|xmagenta 40|xyellow 70|xblack 40"));
    }

    void anItemThatIsTakenOutOrMadeAChildIsLeftAlone()
    {
        RenameList list({"a", "b", "c", "d"});
        Q3ListViewItem *const b = list.view.at(1);
        Q3ListViewItem *const c = list.view.at(2);
        list.on_text = [&](Q3ListViewItem *item) {
            if (item->text(0) != "xa")
                return;
            list.view.takeItem(b);
            list.view.takeItem(c);
            item->insertItem(c);
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), QString("xa|xd"));
        QCOMPARE(b->text(0), QString("b"));
        QCOMPARE(c->text(0), QString("c"));
        delete b;
    }

    // The place that is left is the child.
    void aChildThatWasBehindIsLeftAlone()
    {
        RenameList list({"a", "b", "c"});
        list.on_text = [&list](Q3ListViewItem *item) {
            if (item->text(0) != "xb")
                return;
            Q3ListViewItem *const c = item->nextSibling();
            list.view.takeItem(c);
            list.view.at(0)->insertItem(c);
            delete item;
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), QString("xa"));
        QCOMPARE(list.view.at(0)->firstChild()->text(0), QString("c"));
    }

    void anItemMayMoveItself()
    {
        RenameList list({"a", "b", "c", "d"});
        list.on_text = [&list](Q3ListViewItem *item) {
            if (item->text(0) == "xa")
                item->moveItem(list.view.at(3));
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 4);
        QCOMPARE(list.texts(), QString("xb|xc|xd|xa"));
    }

    void aSlotMayRenameAgain()
    {
        RenameList list({"a", "b"});
        ListRenameDialog dialog(list);
        dialog.choose(1, "x");
        list.on_text = [&](Q3ListViewItem *) {
            list.on_text = nullptr;
            dialog.apply("applyToAll");
        };
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(list.texts(), QString("xxa|xxb"));
    }

    void theDialogMayGoInTheMiddleOfARename()
    {
        RenameList list({"a", "b", "c"});
        auto dialog = std::make_unique<ListRenameDialog>(list);
        dialog->choose(0, "a", "x");
        QSignalSpy renamed(&list.view, SIGNAL(itemsRenamed(int)));
        list.on_text = [&dialog](Q3ListViewItem *) {
            dialog.reset();
        };
        dialog->window.apply_all_button->click();
        QVERIFY(!dialog);
        // What was asked for is done, and told.
        QCOMPARE(list.texts(), QString("x|b|c"));
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), 1);
    }

    void theViewMayGoInTheMiddleOfARename_data()
    {
        QTest::addColumn<bool>("before_the_end");
        QTest::newRow("while items are renamed") << true;
        QTest::newRow("when it is told") << false;
    }
    void theViewMayGoInTheMiddleOfARename()
    {
        QFETCH(const bool, before_the_end);
        auto list = std::make_unique<RenameList>(QStringList{"a", "a", "a"});
        int texts_set = 0;
        list->renameItems(0);
        const QPointer<TaviRenameDialog> dialog = renameDialogs().value(0);
        dialog->op_edit->setText("a");
        dialog->replace_edit->setText("b");
        if (before_the_end) {
            list->on_text = [&](Q3ListViewItem *) {
                ++texts_set;
                list.reset();
            };
        } else {
            list->whenRenamed([&] {
                texts_set = list->texts_set;
                list.reset();
            });
        }
        dialog->apply_all_button->click();
        QVERIFY(!list);
        QVERIFY(!dialog);
        QCOMPARE(texts_set, before_the_end ? 1 : 3);
    }

    void aSlotMayRemoveItemsWhenItIsTold()
    {
        RenameList list;
        ListRenameDialog dialog(list);
        dialog.choose(0, "40", "50");
        list.whenRenamed([&list] { list.view.clear(); });
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(list.view.childCount(), 0);
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(dialog.result(), QString("Not Found"));
    }

    void aHundredThousandItemsWhileSomeGo_data()
    {
        QTest::addColumn<bool>("sorted");
        QTest::addColumn<bool>("selected");
        QTest::addColumn<QString>("goes");
        QTest::addColumn<int>("changes");
        constexpr bool sorted = true, selected = true;
        QTest::newRow("all stay") << !sorted << !selected << "none" << hundred_thousand;
        QTest::newRow("all stay, sorted by what changes") << sorted << !selected << "none" << hundred_thousand;
        QTest::newRow("every second one, by selection") << !sorted << selected << "none" << hundred_thousand / 2;
        QTest::newRow("one of a thousand removes the last") << !sorted << !selected << "last" << 99901;
        QTest::newRow("the same, sorted by what changes") << sorted << !selected << "last" << 99901;
        QTest::newRow("every second one removes itself") << !sorted << !selected << "itself" << hundred_thousand;
        QTest::newRow("every second one removes itself, sorted")
            << sorted << !selected << "itself" << hundred_thousand;
        QTest::newRow("each removes the next") << !sorted << !selected << "next" << hundred_thousand / 2;
    }
    void aHundredThousandItemsWhileSomeGo()
    {
        QFETCH(const bool, sorted);
        QFETCH(const bool, selected);
        QFETCH(const QString, goes);
        QFETCH(const int, changes);
        RenameList list(numberedInks(hundred_thousand));
        if (sorted)
            list.view.setSorting(0);
        std::vector<Q3ListViewItem *> items;
        for (Q3ListViewItem *item = list.view.firstChild(); item; item = item->nextSibling()) {
            item->setSelected(selected && items.size() % 2 == 0);
            items.push_back(item);
        }
        QVERIFY(isVisibleWindow(&list.view));
        QTRY_VERIFY(list.view.itemAt(QPoint(5, 5))); // all have their places
        int told = 0;
        list.on_text = [&](Q3ListViewItem *item) {
            ++told;
            if (goes == "last" && told % 1000 == 0) {
                delete items.back(); // lastItem() would sort each time
                items.pop_back();
            } else if (goes == "itself" && told % 2 == 0)
                delete item;
            else if (goes == "next")
                delete item->nextSibling();
        };
        ListRenameDialog dialog(list);
        dialog.choose(1, "z"); // which sorts each item behind all that have not had their turn
        QElapsedTimer clock;
        clock.start();
        const int changed = dialog.apply(selected ? "applyToSelected" : "applyToAll");
        const qint64 taken = clock.elapsed();
        QCOMPARE(changed, told);
        int renamed = 0;
        int left = 0;
        for (const Q3ListViewItem *item = list.view.firstChild(); item; item = item->nextSibling()) {
            const QString text = item->text(0);
            QVERIFY(!text.startsWith("zz"));
            renamed += text.startsWith('z') ? 1 : 0;
            ++left;
        }
        QCOMPARE(renamed, selected ? changes : left); // what is still there has had its turn
        QCOMPARE(changed, changes);
        QVERIFY2(taken < 20000, QByteArray::number(taken));
    }

    void aSlotRemovesItemsOfAHundredThousand()
    {
        RenameList list(numberedInks(hundred_thousand));
        list.whenRenamed([&list] {
            for (Q3ListViewItem *item = list.view.firstChild(); item;) {
                Q3ListViewItem *const next = item->nextSibling();
                if (item->text(0).endsWith('7'))
                    delete item;
                item = next;
            }
        });
        ListRenameDialog dialog(list);
        dialog.choose(0, "ink", "tone");
        QCOMPARE(dialog.apply("applyToAll"), hundred_thousand);
        QCOMPARE(dialog.result(), QString("Found 100000 items"));
        QCOMPARE(list.view.childCount(), 90000);
        list.whenRenamed([&list] { list.view.clear(); });
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(list.view.childCount(), 0);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewRenameDlgLifetime)
#include "tst_tavilistviewrenamedlg_lifetime.moc"
