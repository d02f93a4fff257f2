// SPDX-License-Identifier: MIT

/// The classic list view against Qt's tree widget with the same rows of four columns, each shown and painted.
/// Argument: rows.

#include "bench/treetexts.h"
#include "qt3/q3listview.h"

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTreeWidget>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using treestacks::text;

class Classic
{
public:
    /// Orders by the number in column 2.
    class Item : public Q3ListViewItem
    {
    public:
        Item(Q3ListView *list, Q3ListViewItem *after, int row)
            : Q3ListViewItem(list, after, treestacks::text(row, 0), treestacks::text(row, 1),
                             treestacks::text(row, 2), treestacks::text(row, 3))
        {}
        int compare(Q3ListViewItem *i, int col, bool) const override
        {
            const int a = text(col).toInt();
            const int b = i->text(col).toInt();
            return a < b ? -1 : a > b ? 1 : 0;
        }
        using Q3ListViewItem::text;
    };

    Classic()
    {
        for (const QString &one : treestacks::header())
            view.addColumn(one, 100);
        view.setSorting(-1);
        view.resize(1000, 800);
        view.show();
        paint();
    }
    void append(int rows)
    {
        for (int row = 0; row < rows; ++row)
            items.push_back(last = new Item(&view, last, row));
    }
    /// Each behind the very first.
    void insertAfter(int rows)
    {
        Q3ListViewItem *first = new Item(&view, static_cast<Q3ListViewItem *>(nullptr), 0);
        for (int row = 1; row < rows; ++row)
            new Item(&view, first, row);
    }
    void clear() { view.clear(); }
    void removeEverySecond()
    {
        for (size_t row = 0; row < items.size(); row += 2)
            delete items[row];
    }
    void paint()
    {
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    }
    void scrollTo(double part)
    {
        view.setContentsPos(0, static_cast<int>(part * (view.contentsHeight() - view.visibleHeight())));
    }
    void page() { view.scrollBy(0, view.visibleHeight()); }
    void sort()
    {
        view.setSorting(2);
        view.sort();
    }
    bool find(const QString &name) { return view.findItem(name, 3) != nullptr; }
    int walk()
    {
        int count = 0;
        for (Q3ListViewItem *item = view.firstChild(); item; item = item->itemBelow())
            ++count;
        return count;
    }
    void filter(const QString &keyword)
    {
        for (Q3ListViewItem *item = view.firstChild(); item; item = item->nextSibling()) {
            bool hit = false;
            for (int column = 0; column < treestacks::columns && !hit; ++column)
                hit = item->text(column).contains(keyword, Qt::CaseInsensitive);
            item->setVisible(hit);
        }
    }

    Q3ListView view;
    Q3ListViewItem *last = nullptr;
    std::vector<Q3ListViewItem *> items;
};

class Widget
{
public:
    class Item : public QTreeWidgetItem
    {
    public:
        explicit Item(int row)
            : QTreeWidgetItem(QStringList{treestacks::text(row, 0), treestacks::text(row, 1),
                                          treestacks::text(row, 2), treestacks::text(row, 3)})
        {}
        bool operator<(const QTreeWidgetItem &other) const override
        {
            return text(2).toInt() < other.text(2).toInt();
        }
        using QTreeWidgetItem::text;
    };

    Widget()
    {
        view.setHeaderLabels(treestacks::header());
        view.setUniformRowHeights(true);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.resize(1000, 800);
        view.show();
        paint();
    }
    void append(int rows)
    {
        for (int row = 0; row < rows; ++row) {
            items.push_back(new Item(row));
            view.addTopLevelItem(items.back());
        }
    }
    void insertAfter(int rows)
    {
        view.addTopLevelItem(new Item(0));
        for (int row = 1; row < rows; ++row)
            view.insertTopLevelItem(1, new Item(row));
    }
    void clear() { view.clear(); }
    void removeEverySecond()
    {
        // From the end, which is the way that suits it.
        for (int row = (view.topLevelItemCount() - 1) / 2 * 2; row >= 0; row -= 2)
            delete view.takeTopLevelItem(row);
    }
    void paint()
    {
        QCoreApplication::processEvents();
        view.viewport()->repaint();
    }
    void scrollTo(double part)
    {
        view.verticalScrollBar()->setValue(static_cast<int>(part * view.verticalScrollBar()->maximum()));
    }
    void page() { view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() + view.viewport()->height()); }
    void sort() { view.sortItems(2, Qt::AscendingOrder); }
    bool find(const QString &name)
    {
        return !view.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive, 3).isEmpty();
    }
    int walk()
    {
        int count = 0;
        for (QTreeWidgetItem *item = view.topLevelItem(0); item; item = view.itemBelow(item))
            ++count;
        return count;
    }
    void filter(const QString &keyword)
    {
        for (int row = 0; row < view.topLevelItemCount(); ++row) {
            QTreeWidgetItem *item = view.topLevelItem(row);
            bool hit = false;
            for (int column = 0; column < treestacks::columns && !hit; ++column)
                hit = item->text(column).contains(keyword, Qt::CaseInsensitive);
            item->setHidden(!hit);
        }
    }

    QTreeWidget view;
    std::vector<QTreeWidgetItem *> items;
};

int rowsOf(const benchmark::State &state)
{
    return static_cast<int>(state.range(0));
}

/// Prepares a list, does one thing and paints it, and measures the latter two.
template <typename List, typename Prepare, typename Act>
void measure(benchmark::State &state, Prepare prepare, Act act)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto list = std::make_unique<List>();
        prepare(*list);
        list->paint();
        state.ResumeTiming();
        act(*list);
        list->paint();
        state.PauseTiming();
        list.reset();
        state.ResumeTiming();
    }
}

template <typename List>
void insertAtEnd(benchmark::State &state)
{
    measure<List>(
        state, [](List &) {}, [&](List &list) { list.append(rowsOf(state)); });
}

template <typename List>
void insertAfter(benchmark::State &state)
{
    measure<List>(
        state, [](List &) {}, [&](List &list) { list.insertAfter(rowsOf(state)); });
}

template <typename List>
void clear(benchmark::State &state)
{
    measure<List>(
        state, [&](List &list) { list.append(rowsOf(state)); }, [](List &list) { list.clear(); });
}

template <typename List>
void deleteEverySecond(benchmark::State &state)
{
    measure<List>(
        state, [&](List &list) { list.append(rowsOf(state)); }, [](List &list) { list.removeEverySecond(); });
}

template <typename List>
void sortByNumber(benchmark::State &state)
{
    measure<List>(
        state, [&](List &list) { list.append(rowsOf(state)); }, [](List &list) { list.sort(); });
}

template <typename List>
void filterFirstKey(benchmark::State &state)
{
    measure<List>(
        state, [&](List &list) { list.append(rowsOf(state)); }, [](List &list) { list.filter(QStringLiteral("q")); });
}

template <typename List>
void clearFilter(benchmark::State &state)
{
    measure<List>(
        state,
        [&](List &list) {
            list.append(rowsOf(state));
            list.filter(QStringLiteral("q"));
        },
        [](List &list) { list.filter(QString()); });
}

/// Measures something that changes nothing, over and over in one list.
template <typename List, typename Act>
void repeat(benchmark::State &state, Act act)
{
    List list;
    list.append(rowsOf(state));
    list.paint();
    for (auto _ : state)
        act(list);
}

template <typename List>
void findLast(benchmark::State &state)
{
    const QString name = text(rowsOf(state) - 1, 3);
    repeat<List>(state, [&](List &list) { benchmark::DoNotOptimize(list.find(name)); });
}

template <typename List>
void walkBelow(benchmark::State &state)
{
    repeat<List>(state, [](List &list) { benchmark::DoNotOptimize(list.walk()); });
}

/// A frame at the beginning (0), in the middle (1) and at the end (2).
template <typename List>
void paintFrame(benchmark::State &state)
{
    List list;
    list.append(rowsOf(state));
    list.paint();
    list.scrollTo(static_cast<double>(state.range(1)) / 2.0);
    list.paint();
    for (auto _ : state)
        list.view.viewport()->repaint();
}

template <typename List>
void scrollPages(benchmark::State &state)
{
    repeat<List>(state, [](List &list) {
        list.scrollTo(0);
        for (int i = 0; i < 200; ++i) {
            list.page();
            QCoreApplication::processEvents();
        }
    });
}

template <typename List>
void memoryPerItem(benchmark::State &state)
{
    for (auto _ : state) {
        List list;
        list.items.reserve(static_cast<size_t>(rowsOf(state)));
        const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        list.append(rowsOf(state));
        list.paint();
        const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        state.counters["bytes"] = static_cast<double>(after - before) / rowsOf(state);
    }
}

void sizes(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000, 100000})
        bench->Arg(rows);
    bench->Unit(benchmark::kMillisecond);
}

void fewIterations(benchmark::internal::Benchmark *bench)
{
    sizes(bench);
    bench->Iterations(3);
}

void places(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000, 100000}) {
        for (const int place : {0, 1, 2})
            bench->Args({rows, place});
    }
    bench->Unit(benchmark::kMillisecond);
}

BENCHMARK(insertAtEnd<Classic>)->Apply(fewIterations);
BENCHMARK(insertAtEnd<Widget>)->Apply(fewIterations);
BENCHMARK(insertAfter<Classic>)->Apply(fewIterations);
BENCHMARK(insertAfter<Widget>)->Apply(fewIterations);
BENCHMARK(clear<Classic>)->Apply(fewIterations);
BENCHMARK(clear<Widget>)->Apply(fewIterations);
BENCHMARK(deleteEverySecond<Classic>)->Apply(fewIterations);
BENCHMARK(deleteEverySecond<Widget>)->Apply(fewIterations);
BENCHMARK(sortByNumber<Classic>)->Apply(fewIterations);
BENCHMARK(sortByNumber<Widget>)->Apply(fewIterations);
BENCHMARK(filterFirstKey<Classic>)->Apply(fewIterations);
BENCHMARK(filterFirstKey<Widget>)->Apply(fewIterations);
BENCHMARK(clearFilter<Classic>)->Apply(fewIterations);
BENCHMARK(clearFilter<Widget>)->Apply(fewIterations);
BENCHMARK(findLast<Classic>)->Apply(sizes);
BENCHMARK(findLast<Widget>)->Apply(sizes);
BENCHMARK(walkBelow<Classic>)->Apply(sizes);
BENCHMARK(walkBelow<Widget>)->Apply(sizes);
BENCHMARK(paintFrame<Classic>)->Apply(places);
BENCHMARK(paintFrame<Widget>)->Apply(places);
BENCHMARK(scrollPages<Classic>)->Apply(fewIterations);
BENCHMARK(scrollPages<Widget>)->Apply(fewIterations);
BENCHMARK(memoryPerItem<Classic>)->Arg(100000)->Iterations(1);
BENCHMARK(memoryPerItem<Widget>)->Arg(100000)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
