// SPDX-License-Identifier: MIT
#ifndef BENCH_BENCHMAIN_H
#define BENCH_BENCHMAIN_H

#include <QByteArray>

#include <benchmark/benchmark.h>

/// The main program of a benchmark that wants an application of a kind: QCoreApplication, QApplication. Windows need
/// no display unless one is asked for.
template <typename Application>
int runBenchmarks(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#endif
