// SPDX-License-Identifier: MIT

/// A long random walk over model, proxy and view, with Qt's own model tester over both models. After each step the
/// rows in sight, the order and the kept indexes are those that a plain look at the items gives.
///
/// The steps leave out what the model does by contract and the tester rejects:
/// - an item that the parent already lists is appended or inserted again: a row is announced, none comes;
/// - insertItems() with null entries: the announced rows count them;
/// - takeAllItems() with a parent: its rows are announced as removed and stay;
/// - removeItem() or takeItem() of an item that stands elsewhere: rows of the wrong parent are announced;
/// - a first text in a further column, of the header or of a parent: the number of columns grows without a word.
/// Removing all rows where there are none passes: the tester takes the announced rows 0 to -1 for what they are.

#include "tests/support/tavitest.h"
#include "tests/treeviews/filteredview.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>

#include <memory>

namespace {

const QStringList words{QStringLiteral("cyan"),  QStringLiteral("Magenta"), QStringLiteral("yellow"),
                        QStringLiteral("BLACK"), QStringLiteral("grün"),    QStringLiteral("x.y")};
const QStringList keywords{QString(),
                           QString(),
                           QStringLiteral("c"),
                           QStringLiteral("cy"),
                           QStringLiteral("CYAN"),
                           QStringLiteral("a"),
                           QStringLiteral("GRÜ"),
                           QStringLiteral("."),
                           QStringLiteral("nowhere")};

/// Answers for itself, with a text that changes with its number of children.
class CountingItem : public TaviTreeItem
{
public:
    explicit CountingItem(const QList<QVariant> &texts) : TaviTreeItem(texts, nullptr) {}
    QVariant data(int column, int role) const override
    {
        if (column == 1 && role == Qt::DisplayRole)
            return QStringLiteral("cy%1").arg(childCount());
        return TaviTreeItem::data(column, role);
    }
};

class Walk
{
public:
    Walk(quint32 seed, bool with_own_classes)
        : random(seed), own_classes(with_own_classes),
          model({QStringLiteral("Name"), QStringLiteral("Note")}, nullptr), view(&model),
          model_tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal),
          proxy_tester(view.proxy, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        view.resize(300, 200);
    }

    /// One step; its name.
    QString step()
    {
        TaviTreeItem *parent = anyItem(true);
        const int rows = parent ? parent->childCount() : model.rowCount();
        TaviTreeItem *item = rows > 0 ? child(parent, random.bounded(rows)) : nullptr;
        switch (random.bounded(count() > 120 ? 26 : 21)) {
        case 0:
            model.appendItem(newItem(), parent);
            return QStringLiteral("append");
        case 1:
            model.appendItems({newItem(), nullptr, newItem(), newItem()}, parent);
            return QStringLiteral("append many");
        case 2:
            model.insertItem(random.bounded(rows + 2) - 1, newItem(), parent);
            return QStringLiteral("insert");
        case 3:
            model.insertItems(random.bounded(rows + 1), {newItem(), newItem()}, parent);
            return QStringLiteral("insert many");
        case 4: {
            TaviTreeItem *branch = newItem();
            branch->appendChild(newItem());
            branch->appendChild(newItem());
            branch->child(0)->appendChild(newItem());
            model.appendItem(branch, parent);
            return QStringLiteral("append branch");
        }
        case 5:
            if (item)
                model.removeItem(item, parent);
            return QStringLiteral("remove");
        case 6:
            if (item)
                model.insertItem(random.bounded(rows), model.takeItem(item, parent), parent);
            return QStringLiteral("move among siblings");
        case 7:
            if (item) {
                TaviTreeItem *moved = model.takeItem(item, parent);
                model.appendItem(moved, anyItem(true));
            }
            return QStringLiteral("move anywhere");
        case 8:
            if (item) {
                const QList<TaviTreeItem *> taken = model.takeItems({item, anyItem(false), item}, parent);
                for (TaviTreeItem *one : taken) {
                    if (one)
                        model.appendItem(one);
                }
            }
            return QStringLiteral("take many");
        case 9:
        case 10:
            if (item)
                model.setData(model.indexFromItem(item).siblingAtColumn(random.bounded(2)), word(), Qt::EditRole);
            return QStringLiteral("write");
        case 11:
            if (item) {
                for (int i = random.bounded(100); i >= 0; --i)
                    anyItem(false)->setData(0, word(), Qt::DisplayRole);
                item->emitDataChanged();
            }
            return QStringLiteral("write silently");
        case 12:
        case 13:
            if (item) {
                item->setCheckable(0, true, random.bounded(2));
                item->setCheckState(0, random.bounded(2) ? Qt::Checked : Qt::Unchecked);
            }
            return QStringLiteral("check");
        case 14:
            view.proxy->sort(random.bounded(3) - 1, random.bounded(2) ? Qt::AscendingOrder : Qt::DescendingOrder);
            return QStringLiteral("sort");
        case 15:
        case 16:
            view.proxy->filter(keywords.at(random.bounded(keywords.size())));
            return QStringLiteral("filter '%1'").arg(view.proxy->filterString());
        case 17:
            view.proxy->setInverted(random.bounded(2));
            return QStringLiteral("invert");
        case 18:
            if (item) {
                const QModelIndex index = view.indexOf(item);
                view.setExpanded(index, random.bounded(2));
                view.selectionModel()->select(index, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
                keep(item);
            }
            return QStringLiteral("expand and select");
        case 19:
            view.header()->setSectionHidden(1, random.bounded(2));
            view.proxy->filter();
            return QStringLiteral("hide column");
        case 20:
            QCoreApplication::processEvents();
            view.doItemsLayout();
            return QStringLiteral("layout");
        case 21:
            model.removeItems({item, anyItem(false), anyItem(false)}, parent);
            return QStringLiteral("remove many");
        case 22:
            model.removeAllItems(parent);
            return QStringLiteral("remove all of a parent");
        case 23:
            model.flattenHierarchy();
            model.resetModel();
            return QStringLiteral("flatten");
        case 24:
            if (random.bounded(3) == 0)
                model.clear();
            return QStringLiteral("clear");
        default:
            startAgain();
            return QStringLiteral("another source and back");
        }
    }

    /// What is wrong now; empty if nothing is.
    QString fault()
    {
        for (const auto &[item_id, index] : kept) {
            const bool there = model.indexFromId(item_id).isValid();
            if (index.isValid() && (!there || index.data(32).toInt() != item_id))
                return QStringLiteral("a kept index names another item");
        }
        const int visible = view.proxy->visibleTopLevelRows();
        if (visible != shownRows())
            return QStringLiteral("%1 rows counted, %2 in sight").arg(visible).arg(shownRows());
        return faultBelow(QModelIndex(), nullptr);
    }

private:
    TaviTreeItem *child(TaviTreeItem *parent, int row) { return parent ? parent->child(row) : model.itemAt(row); }

    QString word()
    {
        return words.at(random.bounded(words.size()))
               + (random.bounded(2) ? QString() : QString::number(random.bounded(4)));
    }

    TaviTreeItem *newItem()
    {
        const QList<QVariant> texts{word(), word()};
        return own_classes && random.bounded(20) == 0 ? new CountingItem(texts) : new TaviTreeItem(texts, nullptr);
    }

    /// Any item of the tree; null for the top level, or when there is none.
    TaviTreeItem *anyItem(bool or_none)
    {
        TaviTreeItem *item = nullptr;
        for (int depth = or_none ? random.bounded(4) : 1 + random.bounded(3); depth > 0; --depth) {
            const int rows = item ? item->childCount() : model.rowCount();
            if (rows == 0)
                break;
            item = child(item, random.bounded(rows));
        }
        return item;
    }

    int count(TaviTreeItem *parent = nullptr)
    {
        const int rows = parent ? parent->childCount() : model.rowCount();
        int all = rows;
        for (int row = 0; row < rows; ++row)
            all += count(child(parent, row));
        return all;
    }

    void keep(const TaviTreeItem *item)
    {
        if (kept.size() > 20)
            kept.clear();
        kept.append({item->id(), QPersistentModelIndex(view.indexOf(item))});
    }

    void startAgain()
    {
        kept.clear();
        TaviTreeModel other({QStringLiteral("One")}, nullptr);
        other.appendItem(::newItem("cyan"));
        view.proxy->setSourceModel(&other);
        view.proxy->sort(-1);
        view.proxy->setSourceModel(&model);
    }

    int shownRows() const
    {
        int shown = 0;
        for (int row = 0; row < view.proxy->rowCount(); ++row)
            shown += view.isRowHidden(row, QModelIndex()) ? 0 : 1;
        return shown;
    }

    bool matches(const TaviTreeItem *item) const
    {
        const QString keyword = view.proxy->filterString().toLower();
        if (keyword.isEmpty())
            return true;
        bool hit = false;
        for (int column = 0; column < 2; ++column) {
            if (!view.header()->isSectionHidden(column))
                hit = hit || item->data(column, Qt::DisplayRole).toString().toLower().contains(keyword);
        }
        return hit != view.proxy->isInverted();
    }

    bool staysInSight(TaviTreeItem *item) const
    {
        if (matches(item))
            return true;
        const QList<TaviTreeItem *> below = item->children();
        return std::any_of(below.begin(), below.end(), [this](TaviTreeItem *one) { return staysInSight(one); });
    }

    QString faultBelow(const QModelIndex &parent, TaviTreeItem *parent_item)
    {
        const TaviTreeProxyModel &proxy = *view.proxy;
        QList<TaviTreeItem *> left = parent_item ? parent_item->children() : model.allItems();
        if (proxy.rowCount(parent) != left.size())
            return QStringLiteral("%1 rows for %2 items").arg(proxy.rowCount(parent)).arg(left.size());
        for (int row = 0; row < proxy.rowCount(parent); ++row) {
            const QModelIndex index = proxy.index(row, 0, parent);
            TaviTreeItem *item = TaviTreeModel::itemFromIndex(index);
            if (!left.removeOne(item))
                return QStringLiteral("a row without an item of its own");
            const QModelIndex source = proxy.mapToSource(index);
            if (source != model.indexFromItem(item) || proxy.mapFromSource(source) != index)
                return QStringLiteral("'%1' is mapped wrongly").arg(textOf(item));
            if (proxy.parent(index) != parent || index.siblingAtColumn(1).data() != item->data(1, Qt::DisplayRole))
                return QStringLiteral("'%1' has a wrong family").arg(textOf(item));
            if (proxy.sortColumn() < 0 && item->row() != row)
                return QStringLiteral("'%1' is in another row").arg(textOf(item));
            // Texts that were written silently are not in order before the next sort, as with any sorting proxy.
            if (view.isRowHidden(row, parent) == staysInSight(item)) {
                return QStringLiteral("'%1' is %2")
                    .arg(textOf(item), staysInSight(item) ? QStringLiteral("hidden") : QStringLiteral("in sight"));
            }
            const QString fault = faultBelow(index, item);
            if (!fault.isEmpty())
                return fault;
        }
        return {};
    }

    QRandomGenerator random;
    bool own_classes;
    TaviTreeModel model;
    FilteredView view;
    QAbstractItemModelTester model_tester;
    QAbstractItemModelTester proxy_tester;
    QList<QPair<int, QPersistentModelIndex>> kept;
};

} // namespace

class TestTreeStackWalk : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void walks_data();
    void walks();
};

void TestTreeStackWalk::walks_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("own_classes");
    for (const bool own_classes : {false, true}) {
        for (int i = 0; i < 4; ++i) {
            const quint32 seed = qEnvironmentVariableIsSet("TAVI_WALK_SEED")
                                     ? qEnvironmentVariable("TAVI_WALK_SEED").toUInt() + quint32(i)
                                     : QRandomGenerator::global()->generate();
            QTest::addRow("%s, seed %u", own_classes ? "own classes" : "plain", seed) << seed << own_classes;
        }
    }
}

void TestTreeStackWalk::walks()
{
    QFETCH(quint32, seed);
    QFETCH(bool, own_classes);
    qInfo("walking with seed %u", seed); // the tester aborts: then this line is what is left
    const int steps =
        qEnvironmentVariableIsSet("TAVI_WALK_STEPS") ? qEnvironmentVariableIntValue("TAVI_WALK_STEPS") : 400;
    Walk walk(seed, own_classes);
    QStringList taken;
    for (int step = 0; step < steps; ++step) {
        taken.append(walk.step());
        const QString fault = walk.fault();
        QVERIFY2(fault.isEmpty(),
                 qPrintable(QStringLiteral("seed %1, step %2: %3; last steps: %4")
                                .arg(seed)
                                .arg(step)
                                .arg(fault, taken.mid(std::max(0, taken.size() - 8)).join(QStringLiteral(", ")))));
    }
}

TAVI_GUI_TEST_MAIN(TestTreeStackWalk)
#include "tst_treestack_walk.moc"
