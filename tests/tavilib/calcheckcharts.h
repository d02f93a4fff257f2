// SPDX-License-Identifier: MIT
#ifndef TESTS_TAVILIB_CALCHECKCHARTS_H
#define TESTS_TAVILIB_CALCHECKCHARTS_H

#include "tavilib/calcheck.h"
#include "tavilib/calcheckcriteria.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavipacketchain.h"

#include <memory>

/// Charts, measurements and results that free themselves, for tests of the colour check.

template <typename Record, int type>
struct FreeListOf {
    void operator()(Record *head) const { TaviPacketFreeList(&head, type); }
};
using Chart = std::unique_ptr<CALCHECKCHART, FreeListOf<CALCHECKCHART, TAVIPACKET_CALCHECKCHART>>;
using Result = std::unique_ptr<CALCHECKRESULT, FreeListOf<CALCHECKRESULT, TAVIPACKET_CALCHECKRESULT>>;
using Criteria = std::unique_ptr<CALCHECKCRITERIA, FreeListOf<CALCHECKCRITERIA, TAVIPACKET_CALCHECKCRITERIA>>;
using Patches = std::unique_ptr<TAVICOMBOCOLOUR, FreeListOf<TAVICOMBOCOLOUR, TAVIPACKET_COMBOCOLOUR>>;

inline TAVICOMBOCOLOUR *newPatch(double L, double a, double b, uint32_t mark = 0)
{
    auto *patch = TaviAllocRecord<TAVICOMBOCOLOUR>();
    patch->L = L;
    patch->a = a;
    patch->b = b;
    patch->flags = COMBOCOLOUR_FLAG_LAB | mark;
    return patch;
}

/// A check that is put together pair by pair.
struct CheckBuilder {
    Chart chart{CALCHECKCHART_CC::newChart()};
    Patches measured;

    explicit CheckBuilder(DELTAE_TYPE type = DELTAE_CIE76, uint32_t mask = 0)
    {
        chart->delta_e_type = type;
        chart->check_mask = mask;
    }
    TAVICOMBOCOLOUR *add(TAVICOMBOCOLOUR *reference, TAVICOMBOCOLOUR *other)
    {
        AddList(&chart->reference, reference);
        TAVICOMBOCOLOUR *head = measured.release();
        AddList(&head, other);
        measured.reset(head);
        return reference;
    }
    /// A reference and a measurement that is lighter by @a difference.
    TAVICOMBOCOLOUR *add(double difference, uint32_t mark = 0)
    {
        return add(newPatch(50, 0, 0, mark), newPatch(50 + difference, 0, 0));
    }
    Result results() const { return Result(calcheckResults(chart.get(), measured.get())); }
};

/// A set with no limits yet, for the plain difference.
inline Criteria newCriteria(const char *name = "test", DELTAE_TYPE type = DELTAE_CIE76)
{
    std::string error;
    Criteria criteria(
        calcheckParseCriteria(std::string("name = ") + name + "\nformula = CIE76\ndelta_e.max = 1\n", "text", error));
    criteria->delta_e.limited = 0;
    criteria->delta_e_type = type;
    return criteria;
}

#endif
