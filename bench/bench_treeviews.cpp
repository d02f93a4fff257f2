// SPDX-License-Identifier: MIT

/// The tree stack against Qt's two ways of showing the same table, each with a view in front, until it is painted.
/// Arguments: rows of the top level, and children of each.

#include "bench/benchmain.h"
#include "bench/treestacks.h"

#include <QApplication>

namespace {

using namespace treestacks;

template <typename Stack>
auto makeItems(int rows, int children)
{
    QList<decltype(Stack::makeItem(0))> items;
    items.reserve(rows);
    for (int row = 0; row < rows; ++row) {
        auto *item = Stack::makeItem(row);
        for (int child = 0; child < children; ++child)
            Stack::addChild(item, Stack::makeItem(row * children + child));
        items.append(item);
    }
    return items;
}

template <typename Stack>
std::unique_ptr<Stack> loaded(const benchmark::State &state)
{
    auto stack = std::make_unique<Stack>();
    stack->append(makeItems<Stack>(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))));
    paint(stack->view());
    return stack;
}

template <typename Stack>
void bulkLoad(benchmark::State &state)
{
    for (auto _ : state) {
        Stack stack;
        measure(state, stack.view(), [&] {
            stack.append(makeItems<Stack>(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))));
        });
    }
}

template <typename Stack>
void rowByRow(benchmark::State &state)
{
    for (auto _ : state) {
        Stack stack;
        measure(state, stack.view(), [&] {
            for (int row = 0; row < state.range(0); ++row)
                stack.append(Stack::makeItem(row));
        });
    }
}

/// Whether just the rows of the top level that hold @a keyword are in sight; for trees without children.
template <typename Stack>
void checkRows(benchmark::State &state, Stack &stack, const QString &keyword)
{
    const QTreeView *const view = stack.view();
    int expected = 0;
    for (int row = 0; row < state.range(0); ++row) {
        bool hit = false;
        for (int column = 0; column < columns && !hit; ++column)
            hit = text(row, column).contains(keyword, Qt::CaseInsensitive);
        expected += hit ? 1 : 0;
    }
    int visible = 0;
    for (int row = 0; row < view->model()->rowCount(); ++row)
        visible += view->isRowHidden(row, QModelIndex()) ? 0 : 1;
    if (state.range(1) == 0 && visible != expected)
        state.SkipWithError("wrong rows");
}

template <typename Stack>
void firstKey(benchmark::State &state)
{
    const auto stack = loaded<Stack>(state);
    for (auto _ : state) {
        measure(state, stack->view(), [&] { stack->filter(QStringLiteral("q")); });
        checkRows(state, *stack, QStringLiteral("q"));
        stack->filter(QString());
        stack->view()->collapseAll();
        paint(stack->view());
    }
}

template <typename Stack>
void firstKeyExpanded(benchmark::State &state)
{
    const auto stack = loaded<Stack>(state);
    stack->view()->expandAll();
    paint(stack->view());
    for (auto _ : state) {
        measure(state, stack->view(), [&] { stack->filter(QStringLiteral("q")); });
        stack->filter(QString());
        paint(stack->view());
    }
}

template <typename Stack>
void refiningKey(benchmark::State &state)
{
    const auto stack = loaded<Stack>(state);
    for (auto _ : state) {
        stack->filter(QStringLiteral("q"));
        paint(stack->view());
        measure(state, stack->view(), [&] { stack->filter(QStringLiteral("qua5")); });
        checkRows(state, *stack, QStringLiteral("qua5"));
        stack->filter(QString());
        paint(stack->view());
    }
}

template <typename Stack>
void clearing(benchmark::State &state)
{
    const auto stack = loaded<Stack>(state);
    for (auto _ : state) {
        stack->filter(QStringLiteral("q"));
        paint(stack->view());
        measure(state, stack->view(), [&] { stack->filter(QString()); });
        checkRows(state, *stack, QString());
    }
}

template <typename Stack>
void changeUnderKeyword(benchmark::State &state)
{
    const auto stack = loaded<Stack>(state);
    stack->filter(QStringLiteral("q"));
    paint(stack->view());
    for (auto _ : state) {
        measure(state, [&] { stack->change(static_cast<int>(state.range(0)) / 2); });
        stack->model.setData(stack->model.index(static_cast<int>(state.range(0)) / 2, 0), QStringLiteral("x"));
    }
}

template <typename Stack>
void removeEverySecond(benchmark::State &state)
{
    for (auto _ : state) {
        const auto stack = loaded<Stack>(state);
        measure(state, stack->view(), [&] { stack->removeEverySecond(); });
    }
}

template <typename Stack>
void takeEverySecond(benchmark::State &state)
{
    for (auto _ : state) {
        const auto stack = loaded<Stack>(state);
        measure(state, stack->view(), [&] { stack->takeEverySecond(); });
    }
}

template <typename Stack>
void sortByColumn(benchmark::State &state)
{
    for (auto _ : state) {
        const auto stack = loaded<Stack>(state);
        measure(state, stack->view(), [&] { stack->sort(0); });
    }
}

template <typename Stack>
void sortByComparer(benchmark::State &state)
{
    for (auto _ : state) {
        const auto stack = loaded<Stack>(state);
        measure(state, stack->view(), [&] { stack->sortByNumber(); });
    }
}

template <typename Stack>
void checkParent(benchmark::State &state)
{
    Stack stack;
    auto *parent = makeItems<Stack>(1, static_cast<int>(state.range(0))).first();
    Stack::makeCheckable(parent);
    for (int row = 0; row < parent->childCount(); ++row)
        Stack::makeCheckable(parent->child(row));
    stack.append(parent);
    stack.view()->expandAll();
    paint(stack.view());
    bool on = true;
    for (auto _ : state) {
        measure(state, stack.view(), [&] { Stack::check(parent, on); });
        on = !on;
    }
}

template <typename Stack>
void memoryPerRow(benchmark::State &state)
{
    for (auto _ : state) {
        Stack stack;
        const double before = heapInUse();
        stack.append(makeItems<Stack>(static_cast<int>(state.range(0)), 0));
        state.counters["bytes_a_row"] = (heapInUse() - before) / static_cast<double>(state.range(0));
    }
}

/// Some items, far apart, of a tree of any size.
QList<TaviTreeItem *> someItems(Tavi &stack, int count)
{
    QList<TaviTreeItem *> items;
    for (int i = 0; i < count; ++i)
        items.append(stack.model.itemAt(i * (stack.model.rowCount() / count)));
    return items;
}

void selectItemsEach(benchmark::State &state)
{
    const auto stack = loaded<Tavi>(state);
    stack->shown.setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QList<TaviTreeItem *> items = someItems(*stack, 100);
    for (auto _ : state) {
        measure(state, stack->view(), [&] {
            for (TaviTreeItem *item : items)
                stack->shown.selectItem(item);
        });
        stack->shown.clearSelection();
    }
}

void selectItemsInAList(benchmark::State &state)
{
    const auto stack = loaded<Tavi>(state);
    stack->shown.setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QList<TaviTreeItem *> items = someItems(*stack, 100);
    for (auto _ : state) {
        measure(state, stack->view(), [&] { stack->shown.selectItems(items); });
        stack->shown.clearSelection();
    }
}

void restoreSelections(benchmark::State &state)
{
    const auto stack = loaded<Tavi>(state);
    stack->shown.setSelectionMode(QAbstractItemView::ExtendedSelection);
    QList<QVariant> ids;
    for (const TaviTreeItem *item : someItems(*stack, 1000))
        ids.append(item->id());
    for (auto _ : state)
        measure(state, stack->view(), [&] { stack->shown.restoreSelections(0, TaviTreeItem::IdRole, ids); });
}

/// A click under a keyword or without: the selection moves on, and the status line tells so.
void selectionMoves(benchmark::State &state, bool filtered)
{
    const auto stack = loaded<Tavi>(state);
    const std::unique_ptr<QWidget> container(stack->shown.widget());
    container->show();
    stack->filter(filtered ? QStringLiteral("q") : QString());
    paint(stack->view());
    int row = 4; // which holds the letter, and so does every seventh
    for (auto _ : state) {
        row = (row + 7) % 700;
        measure(state, stack->view(), [&] {
            stack->shown.selectionModel()->setCurrentIndex(
                stack->shown.model()->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        });
    }
    stack->shown.setParent(nullptr);
}

/// Row by row under a live view with a status line, which tells their number after each of them.
void rowByRowWithStatus(benchmark::State &state)
{
    for (auto _ : state) {
        Tavi stack;
        const std::unique_ptr<QWidget> container(stack.shown.widget());
        measure(state, stack.view(), [&] {
            for (int row = 0; row < state.range(0); ++row)
                stack.append(Tavi::makeItem(row));
        });
        stack.shown.setParent(nullptr);
    }
}

void indexFromId(benchmark::State &state)
{
    const auto stack = loaded<Tavi>(state);
    int row = 0;
    const int rows = stack->model.rowCount();
    for (auto _ : state) {
        row = (row + 7919) % rows;
        benchmark::DoNotOptimize(stack->model.indexFromId(stack->model.itemAt(row)->id()));
    }
}

void itemChanged(benchmark::State &state)
{
    const auto stack = loaded<Tavi>(state);
    int row = 0;
    const int rows = stack->model.rowCount();
    for (auto _ : state) {
        row = (row + 1) % rows;
        stack->model.itemAt(row)->emitDataChanged();
    }
}

void sizes(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000, 100000})
        bench->Args({rows, 0});
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
}

void sizesWithChildren(benchmark::internal::Benchmark *bench)
{
    sizes(bench);
    bench->Args({10000, 10});
}

// The standard model needs most of a minute for some of these at full size; what it needs at a tenth shows it.
void sizesOfTheSlow(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000})
        bench->Args({rows, 0});
    bench->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);
}

BENCHMARK(bulkLoad<Tavi>)->Apply(sizesWithChildren);
BENCHMARK(bulkLoad<Standard>)->Apply(sizesWithChildren);
BENCHMARK(bulkLoad<Widget>)->Apply(sizesWithChildren);
BENCHMARK(rowByRow<Tavi>)->Apply(sizes);
BENCHMARK(rowByRow<Standard>)->Apply(sizesOfTheSlow);
BENCHMARK(rowByRow<Widget>)->Apply(sizes);
BENCHMARK(firstKey<Tavi>)->Apply(sizesWithChildren);
BENCHMARK(firstKey<Standard>)->Apply(sizes);
BENCHMARK(firstKey<Widget>)->Apply(sizesWithChildren);
BENCHMARK(firstKeyExpanded<Tavi>)->Apply(sizesWithChildren);
BENCHMARK(firstKeyExpanded<Widget>)->Apply(sizesWithChildren);
BENCHMARK(refiningKey<Tavi>)->Apply(sizesWithChildren);
BENCHMARK(refiningKey<Standard>)->Apply(sizes);
BENCHMARK(refiningKey<Widget>)->Apply(sizesWithChildren);
BENCHMARK(clearing<Tavi>)->Apply(sizesWithChildren);
BENCHMARK(clearing<Standard>)->Apply(sizes);
BENCHMARK(clearing<Widget>)->Apply(sizesWithChildren);
BENCHMARK(changeUnderKeyword<Tavi>)->Apply(sizes);
BENCHMARK(removeEverySecond<Tavi>)->Apply(sizes);
BENCHMARK(removeEverySecond<Standard>)->Apply(sizesOfTheSlow);
BENCHMARK(removeEverySecond<Widget>)->Apply(sizes);
BENCHMARK(takeEverySecond<Tavi>)->Apply(sizes);
BENCHMARK(takeEverySecond<Standard>)->Apply(sizesOfTheSlow);
BENCHMARK(takeEverySecond<Widget>)->Apply(sizes);
BENCHMARK(sortByColumn<Tavi>)->Apply(sizes);
BENCHMARK(sortByColumn<Standard>)->Apply(sizes);
BENCHMARK(sortByColumn<Widget>)->Apply(sizes);
BENCHMARK(sortByComparer<Tavi>)->Apply(sizes);
BENCHMARK(sortByComparer<Standard>)->Apply(sizes);
BENCHMARK(sortByComparer<Widget>)->Apply(sizes);
BENCHMARK(checkParent<Tavi>)->Apply(sizes);
BENCHMARK(checkParent<Widget>)->Apply(sizes);
BENCHMARK(memoryPerRow<Tavi>)->Args({100000, 0})->Iterations(1);
BENCHMARK(memoryPerRow<Standard>)->Args({100000, 0})->Iterations(1);
BENCHMARK(memoryPerRow<Widget>)->Args({100000, 0})->Iterations(1);
BENCHMARK(selectItemsEach)->Apply(sizes);
BENCHMARK(selectItemsInAList)->Apply(sizes);
BENCHMARK(restoreSelections)->Apply(sizes);
BENCHMARK_CAPTURE(selectionMoves, shown, false)->Apply(sizes);
BENCHMARK_CAPTURE(selectionMoves, filtered, true)->Apply(sizes);
BENCHMARK(rowByRowWithStatus)->Apply(sizes);
BENCHMARK(indexFromId)->Args({1000, 0})->Args({100000, 0});
BENCHMARK(itemChanged)->Args({1000, 0})->Args({100000, 0});

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks<QApplication>(argc, argv);
}
