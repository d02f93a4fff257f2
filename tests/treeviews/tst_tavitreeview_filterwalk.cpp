// SPDX-License-Identifier: MIT
//
// Selection and expansion are the same after filtering as before, whatever came, went or was sorted meanwhile.
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <QRandomGenerator>

#include <algorithm>

namespace {

constexpr int walks = 30;
constexpr int steps = 20;

const QStringList words = {"cyan", "magenta", "yellow", "black", "light", "pale", "c", "a", "nowhere"};

/// A view on a random tree, and what is done to it between the two ends of filtering.
class Walk
{
public:
    explicit Walk(quint32 seed) : random(seed)
    {
        model.setHeaderData({"name", "inks", "kind"});
        QList<TaviTreeItem *> top;
        for (int i = 0; i < 20; ++i)
            top.append(makeBranch(3));
        model.appendItems(top);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setSortingEnabled(true);
        view.setModel(&model);
        view.resize(300, 400);
        if (random.bounded(2))
            sort();
        for (TaviTreeItem *item : all()) {
            if (random.bounded(2))
                view.setItemExpanded(item, true);
        }
        QList<TaviTreeItem *> chosen;
        for (TaviTreeItem *item : all()) {
            if (random.bounded(6) == 0)
                chosen.append(item);
        }
        view.selectItems(chosen);
    }

    void step()
    {
        QList<TaviTreeItem *> items = all();
        switch (random.bounded(9)) {
        case 0:
            line_edit().setText(word());
            break;
        case 1:
            line_edit().setText(line_edit().text() + "a");
            break;
        case 2:
            line_edit().clear();
            break;
        case 3:
            sort();
            break;
        case 4:
            model.appendItem(makeBranch(2));
            break;
        case 5:
            model.insertItem(0, makeItem(word()), items.isEmpty() ? nullptr : any(items));
            break;
        case 6:
            if (!items.isEmpty()) {
                TaviTreeItem *item = any(items);
                model.removeItem(item, item->parentTreeItem());
            }
            break;
        case 7:
            if (!items.isEmpty()) {
                TaviTreeItem *item = any(items);
                item->setData(0, word(), Qt::DisplayRole);
                item->emitDataChanged();
            }
            break;
        case 8:
            if (random.bounded(4) == 0)
                model.resetModel();
            else if (!items.isEmpty())
                view.setItemExpanded(any(items), random.bounded(2));
            break;
        }
        if (random.bounded(2))
            view.grab(); // which lays out
    }

    /// Whether just the rows are in sight that a plain look at the items finds.
    bool showsWhatMatches() const { return showsWhatMatches(model.allItems()); }

    /// Number and state of each branch.
    QMap<int, bool> branches() const
    {
        QMap<int, bool> open;
        for (TaviTreeItem *item : all()) {
            if (item->childCount() > 0)
                open.insert(item->id(), view.isItemExpanded(item));
        }
        return open;
    }
    QSet<int> selected() const
    {
        QSet<int> ids;
        for (const TaviTreeItem *item : view.selectedItems(0))
            ids.insert(item->id());
        return ids;
    }
    QSet<int> alive() const
    {
        QSet<int> ids;
        for (const TaviTreeItem *item : all())
            ids.insert(item->id());
        return ids;
    }

    TaviTreeModel model;
    TreeProbe view;

private:
    static bool matches(TaviTreeItem *item, const QString &keyword)
    {
        for (int column = 0; column < 3; ++column) {
            if (item->data(column, Qt::DisplayRole).toString().contains(keyword, Qt::CaseInsensitive))
                return true;
        }
        const QList<TaviTreeItem *> children = item->children();
        return std::any_of(children.begin(), children.end(),
                           [&](TaviTreeItem *child) { return matches(child, keyword); });
    }
    bool showsWhatMatches(const QList<TaviTreeItem *> &items) const
    {
        const QString keyword = line_edit().text();
        return std::all_of(items.begin(), items.end(), [&](TaviTreeItem *item) {
            const QModelIndex index = view.indexOf(item);
            return view.isRowHidden(index.row(), index.parent()) != matches(item, keyword)
                   && showsWhatMatches(item->children());
        });
    }
    static QLineEdit &line_edit() { return *TaviTreeView::filterFloater()->lineEdit(); }
    QString word() { return words[random.bounded(words.size())]; }
    TaviTreeItem *makeBranch(int levels)
    {
        TaviTreeItem *item = makeItem(word() + " " + word(), word());
        const int children = levels > 0 ? random.bounded(4) : 0;
        for (int i = 0; i < children; ++i)
            item->appendChild(makeBranch(levels - 1));
        return item;
    }
    void sort()
    {
        view.sortByColumn(random.bounded(2), random.bounded(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    TaviTreeItem *any(const QList<TaviTreeItem *> &items) { return items[random.bounded(items.size())]; }
    QList<TaviTreeItem *> all() const
    {
        QList<TaviTreeItem *> items = model.allItems();
        for (int i = 0; i < items.size(); ++i)
            items += items[i]->children();
        return items;
    }

    QRandomGenerator random;
};

} // namespace

class TestTaviTreeViewFilterWalk : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete TaviTreeView::filterFloater();
        TaviTest::cleanup();
    }

    void selectionAndExpansionAreTheSameAfterwards_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= walks; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }
    void selectionAndExpansionAreTheSameAfterwards()
    {
        QFETCH(quint32, seed);
        Walk walk(seed);
        const QMap<int, bool> open = walk.branches();
        QSet<int> selected = walk.selected();
        walk.view.showFilterFloater();
        for (int i = 0; i < steps; ++i) {
            walk.step();
            QVERIFY(walk.showsWhatMatches());
        }
        walk.view.closeFilterFloater();

        const QMap<int, bool> open_now = walk.branches();
        for (auto branch = open.cbegin(); branch != open.cend(); ++branch) {
            if (open_now.contains(branch.key()))
                QCOMPARE(open_now[branch.key()], branch.value());
        }
        selected.intersect(walk.alive());
        QCOMPARE(walk.selected(), selected);
        QCOMPARE(walk.view.allRows(0).size(), walk.alive().size()); // nothing is hidden
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewFilterWalk)
#include "tst_tavitreeview_filterwalk.moc"
