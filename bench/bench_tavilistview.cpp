// SPDX-License-Identifier: MIT

/// The classic list view against Qt's tree widget with the same rows of four columns, in windows of one size and with
/// columns of one width, until the effect is painted. Argument: rows; of paintFrame also the place.

#include "bench/benchmain.h"
#include "bench/treewidgetpeer.h"
#include "bench/viewbench.h"
#include "listviews/tavilistview.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using namespace treestacks;

constexpr int column_width = 240; // all columns together are as wide as the window, about
constexpr int pages = 200;

class Tavi
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

    Tavi()
    {
        for (const QString &one : header())
            shown.addColumn(one, column_width);
        shown.setSorting(-1);
        shown.filterBuddy()->addFilterLineEdit(&line_edit);
        shown.resize(1000, 800);
        shown.show();
        paint(&shown);
    }

    void append(int rows)
    {
        items.reserve(static_cast<size_t>(rows));
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < rows; ++row)
            items.push_back(last = new Item(&shown, last, row));
    }
    /// It has no other way.
    void appendAtOnce(int rows) { append(rows); }
    /// Each behind the very first.
    void insertAfter(int rows)
    {
        auto *first = new Item(&shown, nullptr, 0);
        for (int row = 1; row < rows; ++row)
            new Item(&shown, first, row);
    }
    /// Into a sorted list, of which the first row is asked after each.
    void insertSorted(int rows)
    {
        shown.setSorting(2);
        for (int row = 0; row < rows; ++row) {
            new Item(&shown, nullptr, row);
            benchmark::DoNotOptimize(shown.firstChild());
        }
    }
    void removeEverySecond()
    {
        for (size_t row = 0; row < items.size(); row += 2)
            delete items[row];
    }
    /// As a user does.
    void filter(const QString &keyword) { line_edit.setText(keyword); }
    void sortByNumber()
    {
        shown.setSorting(2);
        shown.sort();
    }
    const void *find(const QString &name) { return shown.findItem(name, 3); }
    int walk()
    {
        int count = 0;
        for (const Q3ListViewItem *item = shown.firstChild(); item; item = item->itemBelow())
            ++count;
        return count;
    }
    int visibleRows()
    {
        int count = 0;
        for (const Q3ListViewItem *item = shown.firstChild(); item; item = item->nextSibling())
            count += item->isVisible() ? 1 : 0;
        return count;
    }
    QString numbers()
    {
        QString all;
        for (const Q3ListViewItem *item = shown.firstChild(); item; item = item->itemBelow())
            all += item->text(2) + QLatin1Char(' ');
        return all;
    }

    int rowHeight() { return shown.firstChild()->height(); }

    TaviListView shown{true};
    QLineEdit line_edit;
    std::vector<Q3ListViewItem *> items;
};

/// The peer as a list.
class Widget : public treestacks::Widget
{
public:
    Widget()
    {
        shown.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        shown.header()->setStretchLastSection(false);
        for (int column = 0; column < columns; ++column)
            shown.header()->resizeSection(column, column_width);
        shown.resize(1000, 800);
        paint(&shown);
    }

    using treestacks::Widget::append;
    void append(int rows)
    {
        for (int row = 0; row < rows; ++row)
            append(makeItem(row));
    }
    void appendAtOnce(int rows)
    {
        QList<QTreeWidgetItem *> items;
        items.reserve(rows);
        for (int row = 0; row < rows; ++row)
            items.append(makeItem(row));
        append(items);
    }
    void insertAfter(int rows)
    {
        append(makeItem(0));
        for (int row = 1; row < rows; ++row)
            shown.insertTopLevelItem(1, makeItem(row));
    }
    void insertSorted(int rows)
    {
        Item::by_number = true;
        shown.setSortingEnabled(true);
        shown.sortByColumn(2, Qt::AscendingOrder);
        for (int row = 0; row < rows; ++row) {
            append(makeItem(row));
            benchmark::DoNotOptimize(shown.topLevelItem(0));
        }
    }
    const void *find(const QString &name)
    {
        return shown.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive, 3).value(0);
    }
    int walk()
    {
        int count = 0;
        for (const QTreeWidgetItem *item = shown.topLevelItem(0); item; item = shown.itemBelow(item))
            ++count;
        return count;
    }
    int visibleRows()
    {
        int count = 0;
        for (int row = 0; row < shown.topLevelItemCount(); ++row)
            count += shown.isRowHidden(row, QModelIndex()) ? 0 : 1;
        return count;
    }
    QString numbers()
    {
        QString all;
        for (int row = 0; row < shown.topLevelItemCount(); ++row)
            all += shown.topLevelItem(row)->text(2) + QLatin1Char(' ');
        return all;
    }
    int rowHeight() { return shown.visualItemRect(shown.itemAt(0, 0)).height(); }
};

int rowsOf(const benchmark::State &state)
{
    return static_cast<int>(state.range(0));
}

template <typename List>
std::unique_ptr<List> loaded(const benchmark::State &state)
{
    auto list = std::make_unique<List>();
    list->append(rowsOf(state));
    paint(&list->shown);
    return list;
}

void check(benchmark::State &state, bool right)
{
    if (!right)
        state.SkipWithError("wrong rows");
}

/// How many rows hold @a keyword in any column.
int hits(const benchmark::State &state, const QString &keyword)
{
    int count = 0;
    for (int row = 0; row < rowsOf(state); ++row) {
        bool hit = false;
        for (int column = 0; column < columns && !hit; ++column)
            hit = text(row, column).contains(keyword, Qt::CaseInsensitive);
        count += hit ? 1 : 0;
    }
    return count;
}

/// Measures what an operation does to a new list.
template <typename List, typename Operation>
void fill(benchmark::State &state, Operation operation)
{
    for (auto _ : state) {
        List list;
        measure(state, &list.shown, [&] { operation(list); });
        check(state, list.visibleRows() == rowsOf(state));
    }
}

template <typename List>
void insertAtEnd(benchmark::State &state)
{
    fill<List>(state, [&](List &list) { list.append(rowsOf(state)); });
}

template <typename List>
void insertAtOnce(benchmark::State &state)
{
    fill<List>(state, [&](List &list) { list.appendAtOnce(rowsOf(state)); });
}

template <typename List>
void insertAfter(benchmark::State &state)
{
    fill<List>(state, [&](List &list) { list.insertAfter(rowsOf(state)); });
}

template <typename List>
void insertSorted(benchmark::State &state)
{
    fill<List>(state, [&](List &list) { list.insertSorted(rowsOf(state)); });
}

template <typename List>
void clear(benchmark::State &state)
{
    for (auto _ : state) {
        const auto list = loaded<List>(state);
        measure(state, &list->shown, [&] { list->shown.clear(); });
        check(state, list->visibleRows() == 0);
    }
}

template <typename List>
void deleteEverySecond(benchmark::State &state)
{
    for (auto _ : state) {
        const auto list = loaded<List>(state);
        measure(state, &list->shown, [&] { list->removeEverySecond(); });
        check(state, list->numbers().startsWith(text(1, 2) + QLatin1Char(' ') + text(3, 2)));
    }
}

template <typename List>
void sortByNumber(benchmark::State &state)
{
    for (auto _ : state) {
        const auto list = loaded<List>(state);
        measure(state, &list->shown, [&] { list->sortByNumber(); });
        const QStringList numbers = list->numbers().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const auto less = [](const QString &a, const QString &b) {
            return a.toInt() < b.toInt();
        };
        check(state, std::is_sorted(numbers.begin(), numbers.end(), less));
    }
}

/// One step of typing into the search line: from one keyword to the next.
template <typename List>
void keystroke(benchmark::State &state, const QString &before, const QString &keyword)
{
    const int expected = hits(state, keyword);
    for (auto _ : state) {
        const auto list = loaded<List>(state);
        if (!before.isEmpty())
            list->filter(before);
        paint(&list->shown);
        measure(state, &list->shown, [&] { list->filter(keyword); });
        check(state, list->visibleRows() == expected);
    }
}

template <typename List>
void filterFirstKey(benchmark::State &state)
{
    keystroke<List>(state, QString(), QStringLiteral("q"));
}

template <typename List>
void filterRefiningKey(benchmark::State &state)
{
    keystroke<List>(state, QStringLiteral("q"), QStringLiteral("qu"));
}

template <typename List>
void filterFewLeft(benchmark::State &state)
{
    keystroke<List>(state, QStringLiteral("q"), QStringLiteral("qua5"));
}

template <typename List>
void filterCleared(benchmark::State &state)
{
    keystroke<List>(state, QStringLiteral("q"), QString());
}

/// Measures something that changes nothing, over and over in one list.
template <typename List, typename Operation>
void repeat(benchmark::State &state, Operation operation)
{
    const auto list = loaded<List>(state);
    for (auto _ : state)
        measure(state, [&] { operation(*list); });
}

template <typename List>
void findLast(benchmark::State &state)
{
    const QString name = text(rowsOf(state) - 1, 3);
    repeat<List>(state, [&](List &list) { check(state, list.find(name)); });
}

template <typename List>
void walkBelow(benchmark::State &state)
{
    repeat<List>(state, [&](List &list) { check(state, list.walk() == rowsOf(state)); });
}

/// A frame at the beginning (0), in the middle (1) and at the end (2).
template <typename List>
void paintFrame(benchmark::State &state)
{
    const auto list = loaded<List>(state);
    QScrollBar *const bar = list->shown.verticalScrollBar();
    bar->setValue(static_cast<int>(bar->maximum() * state.range(1) / 2));
    paint(&list->shown);
    for (auto _ : state)
        measure(state, [&] { list->shown.viewport()->repaint(); });
    state.counters["rows_in_sight"] = static_cast<double>(list->shown.viewport()->height()) / list->rowHeight();
}

template <typename List>
void scrollPages(benchmark::State &state)
{
    repeat<List>(state, [](List &list) {
        QScrollBar *const bar = list.shown.verticalScrollBar();
        bar->setValue(0);
        for (int page = 0; page < pages; ++page) {
            bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
            QCoreApplication::processEvents();
        }
    });
}

template <typename List>
void memoryPerItem(benchmark::State &state)
{
    for (auto _ : state) {
        List list;
        const double before = heapInUse();
        list.append(rowsOf(state));
        paint(&list.shown);
        state.counters["bytes_an_item"] = (heapInUse() - before) / rowsOf(state);
    }
}

void sizes(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000, 100000})
        bench->Arg(rows);
    bench->UseManualTime()->Unit(benchmark::kMillisecond);
}

void fewIterations(benchmark::internal::Benchmark *bench)
{
    sizes(bench);
    bench->Iterations(3);
}

void thousand(benchmark::internal::Benchmark *bench)
{
    bench->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
}

void places(benchmark::internal::Benchmark *bench)
{
    for (const int rows : {1000, 10000, 100000}) {
        for (const int place : {0, 1, 2})
            bench->Args({rows, place});
    }
    bench->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(insertAtEnd<Tavi>)->Apply(fewIterations);
BENCHMARK(insertAtEnd<Widget>)->Apply(fewIterations);
BENCHMARK(insertAtOnce<Tavi>)->Apply(fewIterations);
BENCHMARK(insertAtOnce<Widget>)->Apply(fewIterations);
BENCHMARK(insertAfter<Tavi>)->Apply(fewIterations);
BENCHMARK(insertAfter<Widget>)->Apply(fewIterations);
BENCHMARK(insertSorted<Tavi>)->Apply(fewIterations);
BENCHMARK(insertSorted<Widget>)->Apply(thousand); // it sorts all each time: 10,000 take a minute
BENCHMARK(clear<Tavi>)->Apply(fewIterations);
BENCHMARK(clear<Widget>)->Apply(fewIterations);
BENCHMARK(deleteEverySecond<Tavi>)->Apply(fewIterations);
BENCHMARK(deleteEverySecond<Widget>)->Apply(fewIterations);
BENCHMARK(sortByNumber<Tavi>)->Apply(fewIterations);
BENCHMARK(sortByNumber<Widget>)->Apply(fewIterations);
BENCHMARK(filterFirstKey<Tavi>)->Apply(fewIterations);
BENCHMARK(filterFirstKey<Widget>)->Apply(fewIterations);
BENCHMARK(filterRefiningKey<Tavi>)->Apply(fewIterations);
BENCHMARK(filterRefiningKey<Widget>)->Apply(fewIterations);
BENCHMARK(filterFewLeft<Tavi>)->Apply(fewIterations);
BENCHMARK(filterFewLeft<Widget>)->Apply(fewIterations);
BENCHMARK(filterCleared<Tavi>)->Apply(fewIterations);
BENCHMARK(filterCleared<Widget>)->Apply(fewIterations);
BENCHMARK(findLast<Tavi>)->Apply(sizes);
BENCHMARK(findLast<Widget>)->Apply(sizes);
BENCHMARK(walkBelow<Tavi>)->Apply(fewIterations);
BENCHMARK(walkBelow<Widget>)->Apply(fewIterations);
BENCHMARK(paintFrame<Tavi>)->Apply(places);
BENCHMARK(paintFrame<Widget>)->Apply(places);
BENCHMARK(scrollPages<Tavi>)->Apply(fewIterations);
BENCHMARK(scrollPages<Widget>)->Apply(fewIterations);
BENCHMARK(memoryPerItem<Tavi>)->Arg(100000)->Iterations(1);
BENCHMARK(memoryPerItem<Widget>)->Arg(100000)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks<QApplication>(argc, argv);
}
