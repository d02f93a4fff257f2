// SPDX-License-Identifier: MIT
#ifndef BENCH_VIEWBENCH_H
#define BENCH_VIEWBENCH_H

/// What benchmarks of views have in common: a view is done when it is painted, and what counts is the processor.

#include <QAbstractScrollArea>
#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <ctime>
#include <malloc.h>

namespace treestacks {

/// Shown, laid out and painted to the last pixel.
inline void paint(QAbstractScrollArea *view)
{
    QCoreApplication::processEvents();
    view->viewport()->repaint();
}

/// The time that one run of an operation takes: of the processor, since nothing waits and whatever else the machine
/// does is left out. For benchmarks with UseManualTime().
template <typename Operation>
void measure(benchmark::State &state, Operation &&operation)
{
    const std::clock_t start = std::clock();
    operation();
    state.SetIterationTime(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
}

/// The same, until its effect is painted.
template <typename Operation>
void measure(benchmark::State &state, QAbstractScrollArea *view, Operation &&operation)
{
    measure(state, [&] {
        operation();
        paint(view);
    });
}

/// The bytes in use on the heap.
inline double heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

} // namespace treestacks

#endif
