// SPDX-License-Identifier: MIT

/// A long random walk over one model, two proxies and their views, with Qt's own model tester over all three models.
/// After each step the rows in sight, the order, the check states and the kept indexes are those that a plain look at
/// the items gives.
///
/// The walks are the same each time, so that a change is judged by what it changes. TAVI_WALK_SEED is the seed of the
/// first walk of either kind (the next ones count up from it); "random" takes seeds of chance. TAVI_WALK_STEPS is the
/// number of steps of each of the eight walks in place of 600; QTEST_FUNCTION_TIMEOUT, in ms, has to grow with it. A
/// failure names its seed.
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
#include "treeviews/tavitreeview.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>

#include <memory>
#include <utility>

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

/// Has a number of its own, which changes. A leaf: the model looks parents up by the number of the item itself.
class RenumberedItem : public TaviTreeItem
{
public:
    explicit RenumberedItem(const QList<QVariant> &texts) : TaviTreeItem(texts, nullptr) { renumber(); }
    QVariant data(int column, int role) const override
    {
        return role == IdRole ? QVariant(number) : TaviTreeItem::data(column, role);
    }
    void renumber() { number = --last; }
    int number = 0;

private:
    static int last;
};
int RenumberedItem::last = 0;

/// Orders by the length of the texts, and leaves the rest open.
class LengthComparer : public TaviModelIndexComparer
{
public:
    LengthComparer() : TaviModelIndexComparer(nullptr) {}
    int compare(const QModelIndex &left, const QModelIndex &right) override
    {
        const int a = left.data().toString().size();
        const int b = right.data().toString().size();
        return a < b ? -1 : a > b ? 1 : 0;
    }
};

/// Check states by the book: each item in its turn, nothing saved, nobody told.
class PlainCheckStates
{
public:
    explicit PlainCheckStates(const QList<TaviTreeItem *> &items)
    {
        for (const TaviTreeItem *item : items)
            states[item] = item->checkState(0);
    }
    void set(TaviTreeItem *item, Qt::CheckState state)
    {
        if (!item->isCheckable(0))
            return;
        if (state != Qt::PartiallyChecked)
            states[item] = state;
        setBelow(item, state);
        for (TaviTreeItem *above = item->parentTreeItem(); above && follow(above);)
            above = above->parentTreeItem();
    }
    Qt::CheckState of(const TaviTreeItem *item) const { return states.value(item); }

private:
    void setBelow(TaviTreeItem *item, Qt::CheckState state)
    {
        const QList<TaviTreeItem *> children = item->children();
        for (TaviTreeItem *child : children) {
            if (!child->isCheckable(0))
                continue;
            if (state != Qt::PartiallyChecked)
                states[child] = state;
            setBelow(child, state);
        }
    }
    bool follow(TaviTreeItem *item)
    {
        int count[3] = {};
        const QList<TaviTreeItem *> children = item->children();
        for (TaviTreeItem *child : children) {
            if (child->isCheckable(0))
                ++count[of(child)];
        }
        const int checkable = count[0] + count[1] + count[2];
        Qt::CheckState now = of(item);
        if (count[Qt::Checked] > 0 && count[Qt::Checked] < checkable)
            now = Qt::PartiallyChecked;
        else if (count[Qt::Checked] == checkable)
            now = Qt::Checked;
        else if (count[Qt::Unchecked] == checkable)
            now = Qt::Unchecked;
        return std::exchange(states[item], now) != now;
    }

    QHash<const TaviTreeItem *, Qt::CheckState> states;
};

class Walk : public QObject
{
    Q_OBJECT

public:
    Walk(quint32 seed, bool with_own_classes)
        : random(seed), own_classes(with_own_classes),
          model({QStringLiteral("Name"), QStringLiteral("Note")}, nullptr), view(&model),
          model_tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal),
          proxy_tester(view.proxy, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        view.resize(300, 200);
        second.setModel(&model);
        second_tester = std::make_unique<QAbstractItemModelTester>(
            second.proxyModel(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        TaviTreeItem::subscribeDataChanged(this, SLOT(removeTheDoomed()));
        connect(&second, &TaviTreeView::itemsRenamed, this, &Walk::removeTheDoomed);
    }

    /// One step; its name.
    QString step()
    {
        TaviTreeItem *parent = anyItem(true);
        const int rows = parent ? parent->childCount() : model.rowCount();
        TaviTreeItem *item = rows > 0 ? child(parent, random.bounded(rows)) : nullptr;
        const bool was_in_order = std::exchange(in_order, false);
        switch (random.bounded(count() > 120 ? 34 : 29)) {
        case 0:
            model.appendItem(newItem(), parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("append");
        case 1:
            model.appendItems({newItem(), nullptr, newItem(), newItem()}, parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("append many");
        case 2:
            model.insertItem(random.bounded(rows + 2) - 1, newItem(), parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("insert");
        case 3:
            model.insertItems(random.bounded(rows + 1), {newItem(), newItem()}, parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("insert many");
        case 4: {
            TaviTreeItem *branch = newItem();
            branch->appendChild(newItem());
            branch->appendChild(newItem());
            branch->child(0)->appendChild(newItem());
            model.appendItem(branch, parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("append branch");
        }
        case 5:
            if (item)
                model.removeItem(item, parent);
            in_order = was_in_order && !own_classes;
            return QStringLiteral("remove");
        case 6:
            if (item)
                model.insertItem(random.bounded(rows), model.takeItem(item, parent), parent);
            in_order = was_in_order && !own_classes;
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
            in_order = was_in_order && !own_classes;
            return QStringLiteral("write");
        case 11:
            if (item && !dynamic_cast<RenumberedItem *>(item)) { // its number is unknown to the model: nobody is told
                for (int i = random.bounded(100); i >= 0; --i)
                    anyItem(false)->setData(0, word(), Qt::DisplayRole);
                item->emitDataChanged();
            }
            return QStringLiteral("write silently");
        case 12:
        case 13:
            if (item)
                check(item);
            in_order = was_in_order;
            return QStringLiteral("check");
        case 14: {
            const int column = random.bounded(3) - 1;
            const Qt::SortOrder order = random.bounded(2) ? Qt::AscendingOrder : Qt::DescendingOrder;
            // The base class sorts the same way again only if it is asked for another in between.
            in_order = was_in_order || column != view.proxy->sortColumn() || order != view.proxy->sortOrder();
            view.proxy->sort(column, order);
            return QStringLiteral("sort");
        }
        case 15:
        case 16:
            view.proxy->filter(keywords.at(random.bounded(keywords.size())));
            in_order = was_in_order && !own_classes;
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
            in_order = was_in_order && !own_classes;
            return QStringLiteral("expand and select");
        case 19:
            view.header()->setSectionHidden(1, random.bounded(2));
            view.proxy->filter();
            return QStringLiteral("hide column");
        case 20:
            QCoreApplication::processEvents();
            view.doItemsLayout();
            in_order = was_in_order && !own_classes;
            return QStringLiteral("layout");
        case 21:
            view.proxy->setComparer(view_comparer = random.bounded(2) ? &comparer : nullptr);
            view.proxy->sort(-1);
            view.proxy->sort(0);
            in_order = true;
            return QStringLiteral("comparer");
        case 22:
            model.resetModel();
            return QStringLiteral("reset");
        case 23:
            goByAnExpression();
            return QStringLiteral("expression");
        case 24:
            second.proxyModel()->filter(keywords.at(random.bounded(keywords.size())));
            second.proxyModel()->setInverted(random.bounded(3) == 0);
            return QStringLiteral("filter the second view");
        case 25:
            second.sortByColumn(random.bounded(3) - 1, Qt::DescendingOrder);
            return QStringLiteral("sort the second view");
        case 26:
            if (item) {
                doomed = anyItem(false);
                second.selectItem(item);
                second.fireItemsRenamed(1);
            }
            return QStringLiteral("rename and remove");
        case 27:
            if (item) {
                item->setCheckable(0, true);
                doomed = anyItem(false);
                item->setCheckState(0, item->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
                doomed = nullptr;
            }
            return QStringLiteral("check and remove");
        case 28:
            if (auto *const numbered = dynamic_cast<RenumberedItem *>(item)) {
                numbered->renumber();
                numbered->emitDataChanged();
            } else if (own_classes) {
                model.insertItem(random.bounded(rows + 1), new RenumberedItem({word(), word()}), parent);
            } else if (random.bounded(3) == 0) {
                startAgain();
            }
            return QStringLiteral("renumber");
        case 29:
            model.removeItems({item, anyItem(false), anyItem(false)}, parent);
            return QStringLiteral("remove many");
        case 30:
            model.removeAllItems(parent);
            return QStringLiteral("remove all of a parent");
        case 31:
            model.flattenHierarchy();
            model.resetModel();
            return QStringLiteral("flatten");
        case 32:
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
            if (index.isValid() && (!there || TaviTreeModel::itemFromIndex(index)->id() != item_id))
                return QStringLiteral("a kept index names another item");
        }
        const int visible = view.proxy->visibleTopLevelRows();
        if (visible != shownRows())
            return QStringLiteral("%1 rows counted, %2 in sight").arg(visible).arg(shownRows());
        QString found = std::exchange(state_fault, QString());
        if (found.isEmpty())
            found = faultBelow(view, *view.proxy, QModelIndex(), nullptr);
        if (found.isEmpty())
            found = faultBelow(second, *second.proxyModel(), QModelIndex(), nullptr);
        return found;
    }

private Q_SLOTS:
    /// When an item tells of a change, or the view of new names, a row may go.
    void removeTheDoomed()
    {
        if (TaviTreeItem *const item = std::exchange(doomed, nullptr))
            model.removeItem(item, parentOf(item));
    }

private:
    TaviTreeItem *parentOf(TaviTreeItem *item)
    {
        TaviTreeItem *const parent = item->parentTreeItem();
        return parent && parent->parentTreeItem() ? parent : nullptr;
    }

    void addAll(TaviTreeItem *item, QList<TaviTreeItem *> &items)
    {
        items.append(item);
        const QList<TaviTreeItem *> children = item->children();
        for (TaviTreeItem *child : children)
            addAll(child, items);
    }

    void check(TaviTreeItem *item)
    {
        item->setCheckable(0, random.bounded(5) > 0, random.bounded(2));
        QList<TaviTreeItem *> all;
        addAll(item->topLevelParent(), all);
        PlainCheckStates expected(all);
        const auto state = static_cast<Qt::CheckState>(random.bounded(3));
        expected.set(item, state);
        item->setCheckState(0, state);
        for (const TaviTreeItem *one : qAsConst(all)) {
            if (one->checkState(0) != expected.of(one)) {
                state_fault = QStringLiteral("'%1' is checked %2 and should be %3")
                                  .arg(textOf(one))
                                  .arg(one->checkState(0))
                                  .arg(expected.of(one));
            }
        }
    }

    bool passes(const TaviTreeItem *item, const QRegExp &expression) const
    {
        bool hit = false;
        for (int column = 0; column < 2; ++column)
            hit = hit
                  || (!view.header()->isSectionHidden(column)
                      && item->data(column, Qt::DisplayRole).toString().contains(expression));
        if (hit != view.proxy->isInverted())
            return true;
        const QList<TaviTreeItem *> below = item->children();
        return std::any_of(below.begin(), below.end(),
                           [&](const TaviTreeItem *one) { return passes(one, expression); });
    }

    void goByAnExpression()
    {
        const QRegExp expression(words.at(random.bounded(words.size())), Qt::CaseInsensitive);
        QSortFilterProxyModel *const base = view.proxy;
        switch (random.bounded(3)) {
        case 0:
            view.proxy->setFilterRegExp(expression);
            break;
        case 1:
            base->setFilterRegExp(expression);
            break;
        default:
            base->setFilterRegExp(expression);
            model.appendItem(newItem());
            QCoreApplication::processEvents();
            break;
        }
        int expected = 0;
        for (int row = 0; row < model.rowCount(); ++row)
            expected += passes(model.itemAt(row), expression) ? 1 : 0;
        if (view.proxy->rowCount() != expected)
            state_fault = QStringLiteral("%1 rows pass, not %2").arg(view.proxy->rowCount()).arg(expected);
        if (TaviTreeItem *const parent = anyItem(true))
            model.appendItem(newItem(), parent);
        base->setFilterRegExp(QRegExp(QString(), Qt::CaseInsensitive));
    }

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
            TaviTreeItem *const below = child(item, random.bounded(rows));
            if (or_none && dynamic_cast<RenumberedItem *>(below))
                break;
            item = below;
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
        if (dynamic_cast<const RenumberedItem *>(item))
            return;
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

    static bool matches(const QTreeView &shown, const TaviTreeProxyModel &proxy, const TaviTreeItem *item)
    {
        const QString keyword = proxy.filterString().toLower();
        if (keyword.isEmpty())
            return true;
        bool hit = false;
        for (int column = 0; column < 2; ++column) {
            if (!shown.header()->isSectionHidden(column))
                hit = hit || item->data(column, Qt::DisplayRole).toString().toLower().contains(keyword);
        }
        return hit != proxy.isInverted();
    }

    static bool staysInSight(const QTreeView &shown, const TaviTreeProxyModel &proxy, TaviTreeItem *item)
    {
        if (matches(shown, proxy, item))
            return true;
        const QList<TaviTreeItem *> below = item->children();
        return std::any_of(below.begin(), below.end(),
                           [&](TaviTreeItem *one) { return staysInSight(shown, proxy, one); });
    }

    /// Whether the order in which the view is sorted wants the first before the second.
    bool isBefore(const TaviTreeItem *item, const TaviTreeItem *other) const
    {
        const int column = view.proxy->sortColumn();
        if (column < 0)
            return false;
        const QString a = item->data(column, Qt::DisplayRole).toString();
        const QString b = other->data(column, Qt::DisplayRole).toString();
        int order = view_comparer ? a.size() - b.size() : 0;
        if (order == 0)
            order = a.compare(b, Qt::CaseInsensitive);
        return view.proxy->sortOrder() == Qt::AscendingOrder ? order < 0 : order > 0;
    }

    QString faultBelow(const QTreeView &shown, const TaviTreeProxyModel &proxy, const QModelIndex &parent,
                       TaviTreeItem *parent_item)
    {
        QList<TaviTreeItem *> left = parent_item ? parent_item->children() : model.allItems();
        if (proxy.rowCount(parent) != left.size())
            return QStringLiteral("%1 rows for %2 items").arg(proxy.rowCount(parent)).arg(left.size());
        const TaviTreeItem *above = nullptr;
        for (int row = 0; row < proxy.rowCount(parent); ++row) {
            const QModelIndex index = proxy.index(row, 0, parent);
            TaviTreeItem *item = TaviTreeModel::itemFromIndex(index);
            if (!left.removeOne(item))
                return QStringLiteral("a row without an item of its own");
            const QModelIndex source = proxy.mapToSource(index);
            const auto *const numbered = dynamic_cast<const RenumberedItem *>(item);
            if (source != (numbered ? model.indexFromId(numbered->number) : model.indexFromItem(item))
                || proxy.mapFromSource(source) != index)
                return QStringLiteral("'%1' is mapped wrongly").arg(textOf(item));
            if (proxy.parent(index) != parent || index.siblingAtColumn(1).data() != item->data(1, Qt::DisplayRole))
                return QStringLiteral("'%1' has a wrong family").arg(textOf(item));
            if (proxy.sortColumn() < 0 && item->row() != row)
                return QStringLiteral("'%1' is in another row").arg(textOf(item));
            // Texts that were written silently are not in order before the next sort, as with any sorting proxy.
            if (&proxy == view.proxy && in_order && row > 0 && isBefore(item, above))
                return QStringLiteral("'%1' is not in order").arg(textOf(item));
            above = item;
            const bool stays = staysInSight(shown, proxy, item);
            if (shown.isRowHidden(row, parent) == stays) {
                return QStringLiteral("'%1' is %2")
                    .arg(textOf(item), stays ? QStringLiteral("hidden") : QStringLiteral("in sight"));
            }
            const QString fault = faultBelow(shown, proxy, index, item);
            if (!fault.isEmpty())
                return fault;
        }
        return {};
    }

    QRandomGenerator random;
    bool own_classes;
    TaviTreeModel model;
    LengthComparer comparer;
    LengthComparer *view_comparer = nullptr;
    bool in_order = false; // the rows of the view stand as the last sort wants them
    TaviTreeItem *doomed = nullptr;
    QString state_fault;
    FilteredView view;
    TaviTreeView second;
    QAbstractItemModelTester model_tester;
    QAbstractItemModelTester proxy_tester;
    std::unique_ptr<QAbstractItemModelTester> second_tester;
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
    const QString wanted = qEnvironmentVariable("TAVI_WALK_SEED", QStringLiteral("2908515108"));
    const bool by_chance = wanted == QLatin1String("random");
    for (const bool own_classes : {false, true}) {
        for (int i = 0; i < 4; ++i) {
            const quint32 seed = by_chance ? QRandomGenerator::global()->generate() : wanted.toUInt() + quint32(i);
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
        qEnvironmentVariableIsSet("TAVI_WALK_STEPS") ? qEnvironmentVariableIntValue("TAVI_WALK_STEPS") : 600;
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
