// SPDX-License-Identifier: MIT
// A grid of cells of one size: a repaint and a change of width. The peer is the plain way to the same picture: a
// table that fits its columns and rows to their contents at each repaint.
#include "bench/benchmain.h"
#include "treeviews/tavigridview.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QPixmap>

namespace {

constexpr int cell = 25;

class Cells : public TaviGridModel
{
public:
    explicit Cells(int count) : count_(count) {}
    int itemCount() const override { return count_; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const int place = index.row() * columnCount() + index.column();
        return role == Qt::DecorationRole && place < count_ ? QVariant(QRgb(place * 7919)) : QVariant();
    }

private:
    const int count_;
};

class Painter : public TaviGridDelegate
{
public:
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->fillRect(option.rect, QColor(index.data(Qt::DecorationRole).toUInt()));
    }
};

/// Both ways in the same clothes.
template <typename View>
struct Grid {
    explicit Grid(int count) : model(count)
    {
        view.setFrameShape(QFrame::NoFrame);
        view.setShowGrid(false);
        view.horizontalHeader()->hide();
        view.verticalHeader()->hide();
        view.horizontalHeader()->setMinimumSectionSize(1);
        view.verticalHeader()->setMinimumSectionSize(1);
        view.setItemDelegate(&delegate);
        view.resize(1000, 600);
        model.insertColumns(0, 1000 / cell - 1);
        view.setModel(&model);
        view.setAttribute(Qt::WA_DontShowOnScreen);
        view.show();
        QApplication::processEvents();
    }

    Cells model;
    Painter delegate;
    View view;
    QPixmap picture = QPixmap(1000, 600);
};

void gridRepaint(benchmark::State &state)
{
    Grid<TaviGridView> grid(int(state.range(0)));
    for (auto _ : state)
        grid.view.viewport()->render(&grid.picture);
}

void tableFittedAndRepainted(benchmark::State &state)
{
    Grid<QTableView> grid(int(state.range(0)));
    for (auto _ : state) {
        grid.view.resizeColumnsToContents();
        grid.view.resizeRowsToContents();
        grid.view.viewport()->render(&grid.picture);
    }
}

void gridChangeOfWidth(benchmark::State &state)
{
    Grid<TaviGridView> grid(int(state.range(0)));
    int width = 1000;
    for (auto _ : state) {
        width = width == 1000 ? 900 : 1000;
        grid.view.resize(width, 600);
        QApplication::processEvents();
        grid.view.viewport()->render(&grid.picture);
    }
}

} // namespace

BENCHMARK(tableFittedAndRepainted)->Arg(1617)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(gridRepaint)->Arg(1617)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(gridChangeOfWidth)->Arg(1617)->Arg(100000)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return runBenchmarks<QApplication>(argc, argv);
}
