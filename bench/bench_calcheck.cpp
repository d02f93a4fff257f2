// SPDX-License-Identifier: MIT
// The colour check of a characterisation set (1617 patches) and of many patches beside the bare cost of its
// difference calls, and display colours one by one and as a list.
#include "tavilib/calcheck.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavicms.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavipacketchain.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

/// A chart of @a count patches with their marks and a measurement that is a little off.
struct Check {
    explicit Check(size_t count, DELTAE_TYPE type, uint32_t mask) : chart(CALCHECKCHART_CC::newChart())
    {
        std::mt19937 random(42);
        std::uniform_real_distribution<double> lightness(10, 95);
        std::uniform_real_distribution<double> ab(-70, 70);
        std::normal_distribution<double> error(0, 1);
        TaviPacketChain<TAVICOMBOCOLOUR> references;
        TaviPacketChain<TAVICOMBOCOLOUR> measurements;
        for (size_t i = 0; i < count; ++i) {
            auto *reference = TaviAllocRecord<TAVICOMBOCOLOUR>();
            auto *measurement = TaviAllocRecord<TAVICOMBOCOLOUR>();
            reference->flags = measurement->flags = COMBOCOLOUR_FLAG_LAB;
            if (i % 50 == 0)
                reference->flags |= COMBOCOLOUR_FLAG_GREY;
            else if (i % 300 == 1)
                reference->flags |= COMBOCOLOUR_FLAG_PAPER;
            reference->L = lightness(random);
            reference->a = ab(random);
            reference->b = ab(random);
            measurement->L = reference->L + error(random);
            measurement->a = reference->a + error(random);
            measurement->b = reference->b + error(random);
            references.append(reference);
            measurements.append(measurement);
        }
        chart->delta_e_type = type;
        chart->check_mask = mask;
        chart->reference = references.takeAll();
        measured = measurements.takeAll();
    }
    ~Check()
    {
        TaviPacketFreeItem(chart, TAVIPACKET_CALCHECKCHART);
        TaviPacketFreeList(&measured, TAVIPACKET_COMBOCOLOUR);
    }
    Check(const Check &) = delete;
    Check &operator=(const Check &) = delete;

    CALCHECKCHART *chart;
    TAVICOMBOCOLOUR *measured = nullptr;
};

Check checkOf(const benchmark::State &state)
{
    return Check(static_cast<size_t>(state.range(0)), static_cast<DELTAE_TYPE>(state.range(1)),
                 static_cast<uint32_t>(state.range(2)));
}

/// What calcheckResults() cannot do without: the differences that the chart asks for, each called once a patch.
void differenceCalls(benchmark::State &state)
{
    const Check check = checkOf(state);
    const auto difference = state.range(1) == DELTAE_CIE76   ? TAVICMS_ColourDiff_DeltaE
                            : state.range(1) == DELTAE_CIE94 ? TAVICMS_ColourDiff_CIE94
                                                             : TAVICMS_ColourDiff_CIE2000;
    for (auto _ : state) {
        const TAVICOMBOCOLOUR *measured = check.measured;
        for (const TAVICOMBOCOLOUR *reference = check.chart->reference; reference;
             reference = NextInList(reference), measured = NextInList(measured)) {
            const double p[3] = {reference->L, reference->a, reference->b};
            const double q[3] = {measured->L, measured->a, measured->b};
            benchmark::DoNotOptimize(difference(p, q));
            if (check.chart->check_mask & CALCHECK_MASK_DELTA_H)
                benchmark::DoNotOptimize(TAVICMS_ColourDiff_dH(p, q));
            if (check.chart->check_mask & CALCHECK_MASK_DELTA_C)
                benchmark::DoNotOptimize(TAVICMS_ColourDiff_dC(p, q));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void results(benchmark::State &state)
{
    const Check check = checkOf(state);
    for (auto _ : state) {
        CALCHECKRESULT *result = calcheckResults(check.chart, check.measured);
        benchmark::DoNotOptimize(result->score);
        TaviPacketFreeItem(result, TAVIPACKET_CALCHECKRESULT);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

std::vector<double> labs(size_t count)
{
    std::vector<double> values(count * 3);
    std::mt19937 random(43);
    std::uniform_real_distribution<double> ab(-60, 60);
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = ab(random) + (i % 3 == 0 ? 60 : 0);
    return values;
}

void displayColoursOneByOne(benchmark::State &state)
{
    const std::vector<double> lab = labs(static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        for (size_t i = 0; i < lab.size(); i += 3)
            benchmark::DoNotOptimize(TAVICMSLabToDisplay(lab[i], lab[i + 1], lab[i + 2]));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void displayColoursAsAList(benchmark::State &state)
{
    const auto count = static_cast<size_t>(state.range(0));
    const std::vector<double> lab = labs(count);
    std::vector<uint32_t> argb(count);
    for (auto _ : state) {
        TAVICMSLabListToDisplay(lab.data(), argb.data(), count);
        benchmark::DoNotOptimize(argb.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void allChecks(benchmark::internal::Benchmark *bench)
{
    for (const int type : {DELTAE_CIE76, DELTAE_CIE94, DELTAE_CIE2000}) {
        for (const int mask : {0, 3})
            bench->Args({1617, type, mask});
    }
    bench->Args({100000, DELTAE_CIE2000, 3});
}

BENCHMARK(differenceCalls)->Apply(allChecks);
BENCHMARK(results)->Apply(allChecks);
BENCHMARK(displayColoursOneByOne)->Arg(1617);
BENCHMARK(displayColoursAsAList)->Arg(1617);

} // namespace

BENCHMARK_MAIN();
