// SPDX-License-Identifier: MIT
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"

#include <cstdlib>

// That nothing is leaked or freed twice is seen by the address sanitizer.

namespace {

TAVICOMBOCOLOUR *newColour(const char *name, double L)
{
    auto *colour = TaviAllocRecord<TAVICOMBOCOLOUR>();
    colour->name = AllocateAndCopyStringConst(name);
    colour->L = L;
    return colour;
}

SPECTROPHOTOMETERINFO *newInfo(const char *name, const char *dll_filename, const char *rev)
{
    auto *info = TaviAllocRecord<SPECTROPHOTOMETERINFO>();
    info->name = AllocateAndCopyStringConst(name);
    info->dll_filename = AllocateAndCopyStringConst(dll_filename);
    info->rev = AllocateAndCopyStringConst(rev);
    return info;
}

CALCHECKCRITERIA *newCriteria()
{
    auto *criteria = TaviAllocRecord<CALCHECKCRITERIA>();
    criteria->name = AllocateAndCopyStringConst("set");
    criteria->standard = AllocateAndCopyStringConst("standard");
    criteria->edition = AllocateAndCopyStringConst("edition");
    criteria->delta_c.gray = 3.5;
    return criteria;
}

CALCHECKCHART *newChart()
{
    auto *chart = TaviAllocRecord<CALCHECKCHART>();
    chart->name = AllocateAndCopyStringConst("wedge");
    chart->delta_e_type = DELTAE_CIE94;
    chart->check_mask = 2;
    AddList(&chart->reference, newColour("paper", 95));
    AddList(&chart->reference, newColour("cyan", 55));
    chart->criteria = newCriteria();
    return chart;
}

CALCHECKRESULT *newResult(bool whole)
{
    auto *result = TaviAllocRecord<CALCHECKRESULT>();
    result->flags = 8;
    result->score = 12.5;
    result->patch_count = 7;
    result->delta_e = TaviAllocRecord<CALCHECKSTATISTICS>();
    result->delta_e->gray = 1;
    if (whole) {
        result->delta_h = TaviAllocRecord<CALCHECKSTATISTICS>();
        result->delta_h->gray = 2;
        result->delta_c = TaviAllocRecord<CALCHECKSTATISTICS>();
        result->delta_c->gray = 3;
        result->criteria = newCriteria();
    }
    return result;
}

} // namespace

class TestTaviPacket : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aColourIsCopiedWithItsName()
    {
        TAVICOMBOCOLOUR *colour = newColour("paper", 95);
        colour->header.reserved0 = 1;
        colour->header.reserved5 = 5;
        colour->flags = COMBOCOLOUR_FLAG_LAB | COMBOCOLOUR_FLAG_PAPER;
        colour->tolerances = 77;
        colour->rgb = 0xff102030;
        colour->a = -1.5;
        colour->b = 2.5;
        colour->device[3] = 0.5F;
        colour->percent = 100;
        colour->device_model = COMBOCOLOUR_DEVICE_CMYK;
        colour->device_count = 4;
        colour->device_extra[3] = 8;
        colour->tolerances_more = 78;
        colour->reserved = 9;
        colour->header.next = newColour("next", 1);

        TAVICOMBOCOLOUR *copy = DuplicatePacketItem(TAVIPACKET_COMBOCOLOUR, colour);
        TaviPacketFreeList(&colour, TAVIPACKET_COMBOCOLOUR);
        QVERIFY(!colour);
        QVERIFY(copy);
        QVERIFY(!copy->header.next);
        QCOMPARE(copy->header.reserved0, 1U);
        QCOMPARE(copy->header.reserved5, 5U);
        QCOMPARE(copy->name, "paper");
        QCOMPARE(copy->flags, uint32_t(COMBOCOLOUR_FLAG_LAB | COMBOCOLOUR_FLAG_PAPER));
        QCOMPARE(copy->tolerances, 77U);
        QCOMPARE(copy->rgb, 0xff102030U);
        QCOMPARE(copy->L, 95.0);
        QCOMPARE(copy->a, -1.5);
        QCOMPARE(copy->b, 2.5);
        QCOMPARE(copy->device[3], 0.5F);
        QCOMPARE(copy->percent, 100);
        QCOMPARE(copy->device_model, uint32_t(COMBOCOLOUR_DEVICE_CMYK));
        QCOMPARE(copy->device_count, 4U);
        QCOMPARE(copy->device_extra[3], 8.0F);
        QCOMPARE(copy->tolerances_more, 78U);
        QCOMPARE(copy->reserved, 9U);
        TaviPacketFreeItem(copy, TAVIPACKET_COMBOCOLOUR);
    }

    void anInstrumentIsCopiedWithItsThreeStrings()
    {
        SPECTROPHOTOMETERINFO *info = newInfo("name", "file", "rev");
        info->flags = 0x2412;
        SPECTROPHOTOMETERINFO *copy = DuplicatePacketItem(TAVIPACKET_SPECTROPHOTOMETERINFO, info);
        QVERIFY(copy->name != info->name && copy->dll_filename != info->dll_filename && copy->rev != info->rev);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
        QCOMPARE(copy->name, "name");
        QCOMPARE(copy->dll_filename, "file");
        QCOMPARE(copy->rev, "rev");
        QCOMPARE(copy->flags, 0x2412U);
        TaviPacketFreeItem(copy, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    void aDensityIsCopied()
    {
        PATCHDENSITY reading = {};
        reading.sep_type = SPECTROSEP_GREEN;
        reading.sep_index = 2;
        reading.patch_index = -1;
        reading.density = 0.5;
        reading.density_k = 1;
        reading.density_c = 2;
        reading.density_m = 3;
        reading.density_y = 4;
        PATCHDENSITY *copy = DuplicatePacketItem(TAVIPACKET_PATCHDENSITY, &reading);
        QVERIFY(copy);
        QCOMPARE(copy->sep_type, SPECTROSEP_GREEN);
        QCOMPARE(copy->sep_index, 2U);
        QCOMPARE(copy->patch_index, -1);
        QCOMPARE(copy->density, 0.5);
        QCOMPARE(copy->density_k, 1.0);
        QCOMPARE(copy->density_c, 2.0);
        QCOMPARE(copy->density_m, 3.0);
        QCOMPARE(copy->density_y, 4.0);
        TaviPacketFreeItem(copy, TAVIPACKET_PATCHDENSITY);
    }

    void aChartIsCopiedWithItsPatchesAndItsSet()
    {
        CALCHECKCHART *chart = newChart();
        CALCHECKCHART *copy = DuplicatePacketItem(TAVIPACKET_CALCHECKCHART, chart);
        QVERIFY(copy->name != chart->name && copy->reference != chart->reference
                && copy->criteria != chart->criteria);
        QVERIFY(copy->criteria->name != chart->criteria->name);
        TaviPacketFreeItem(chart, TAVIPACKET_CALCHECKCHART);
        QCOMPARE(copy->name, "wedge");
        QCOMPARE(copy->delta_e_type, DELTAE_CIE94);
        QCOMPARE(copy->check_mask, 2U);
        QCOMPARE(ListLength(copy->reference), 2);
        QCOMPARE(NextInList(copy->reference)->name, "cyan");
        QCOMPARE(copy->criteria->name, "set");
        QCOMPARE(copy->criteria->standard, "standard");
        QCOMPARE(copy->criteria->edition, "edition");
        QCOMPARE(copy->criteria->delta_c.gray, 3.5);
        TaviPacketFreeItem(copy, TAVIPACKET_CALCHECKCHART);
    }

    void resultsAreCopiedWithWhatTheyHave()
    {
        for (const bool whole : {true, false}) {
            CALCHECKRESULT *result = newResult(whole);
            CALCHECKRESULT *copy = DuplicatePacketItem(TAVIPACKET_CALCHECKRESULT, result);
            QVERIFY(copy->delta_e != result->delta_e);
            TaviPacketFreeItem(result, TAVIPACKET_CALCHECKRESULT);
            QCOMPARE(copy->score, 12.5);
            QCOMPARE(copy->flags, 8U);
            QCOMPARE(copy->patch_count, 7U);
            QCOMPARE(copy->delta_e->gray, 1.0);
            QCOMPARE(copy->delta_h != nullptr, whole);
            QCOMPARE(copy->delta_c != nullptr, whole);
            QCOMPARE(copy->criteria != nullptr, whole);
            if (whole) {
                QCOMPARE(copy->delta_h->gray, 2.0);
                QCOMPARE(copy->delta_c->gray, 3.0);
                QCOMPARE(copy->criteria->name, "set");
            }
            TaviPacketFreeItem(copy, TAVIPACKET_CALCHECKRESULT);
        }
    }

    void withoutMemoryNoPartOfARecordWithPartsIsLeft()
    {
        CALCHECKCHART *chart = newChart();
        CALCHECKRESULT *result = newResult(true);
        // The chart with its name, two patches with theirs, the set with three texts.
        for (int number = 1; number <= 10; ++number) {
            AllocFailure failure(number);
            QVERIFY(!DuplicatePacketItem(TAVIPACKET_CALCHECKCHART, chart));
            QCOMPARE(failure.count(), number);
        }
        // The results, three statistics, the set with three texts.
        for (int number = 1; number <= 8; ++number) {
            AllocFailure failure(number);
            QVERIFY(!DuplicatePacketItem(TAVIPACKET_CALCHECKRESULT, result));
            QCOMPARE(failure.count(), number);
        }
        QCOMPARE(chart->criteria->edition, "edition");
        TaviPacketFreeItem(chart, TAVIPACKET_CALCHECKCHART);
        TaviPacketFreeItem(result, TAVIPACKET_CALCHECKRESULT);
    }

    void missingStringsStayMissing()
    {
        SPECTROPHOTOMETERINFO *info = newInfo("name", nullptr, nullptr);
        SPECTROPHOTOMETERINFO *copy = DuplicatePacketItem(TAVIPACKET_SPECTROPHOTOMETERINFO, info);
        QCOMPARE(copy->name, "name");
        QVERIFY(!copy->dll_filename);
        QVERIFY(!copy->rev);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
        TaviPacketFreeItem(copy, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    void freeingAnItemLeavesItsFormerListAlone()
    {
        TAVICOMBOCOLOUR *head = nullptr;
        for (const char *name : {"a", "b", "c"})
            AddList(&head, newColour(name, 0));
        auto *middle = NextInList(head);
        RemoveItemFromList(&head, middle);
        TaviPacketFreeItem(middle, TAVIPACKET_COMBOCOLOUR);
        QCOMPARE(ListLength(head), 2);
        QCOMPARE(NextInList(head)->name, "c");
        TaviPacketFreeList(&head, TAVIPACKET_COMBOCOLOUR);
        QVERIFY(!head);
    }

    void nullIsIgnored()
    {
        TAVICOMBOCOLOUR *none = nullptr;
        TAVICOMBOCOLOUR **nowhere = nullptr;
        TaviPacketFreeItem(none, TAVIPACKET_COMBOCOLOUR);
        TaviPacketFreeList(&none, TAVIPACKET_COMBOCOLOUR);
        TaviPacketFreeList(nowhere, TAVIPACKET_COMBOCOLOUR);
        QVERIFY(!DuplicatePacketItem(TAVIPACKET_COMBOCOLOUR, none));
        QVERIFY(!DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, none));
    }

    void aListIsCopiedInOrder()
    {
        TAVICOMBOCOLOUR *head = nullptr;
        for (int i = 0; i < 100; ++i)
            AddList(&head, newColour(QByteArray::number(i).constData(), i));
        TAVICOMBOCOLOUR *copy = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, head);
        QCOMPARE(ListLength(copy), 100);
        int i = 0;
        for (const TAVICOMBOCOLOUR *a = head, *b = copy; a; a = NextInList(a), b = NextInList(b)) {
            QVERIFY(a != b && a->name != b->name);
            QCOMPARE(b->name, a->name);
            QCOMPARE(b->L, double(i++));
        }
        TaviPacketFreeList(&head, TAVIPACKET_COMBOCOLOUR);
        TaviPacketFreeList(&copy, TAVIPACKET_COMBOCOLOUR);
    }

    void anUnknownTypeIsLoggedAndNothingElse()
    {
        expectLog("tavipacket: TaviPacketFreeItem: Unknown packet type 99");
        expectLog("tavipacket: TaviPacketFreeList: Unknown packet type -1");
        expectLog("tavipacket: DuplicatePacketItem: Unknown packet type 0");
        expectLog("tavipacket: DuplicatePacketList: Unknown packet type 99");
        TAVICOMBOCOLOUR *head = newColour("kept", 1);
        TaviPacketFreeItem(head, 99);
        TAVICOMBOCOLOUR *before = head;
        TaviPacketFreeList(&head, -1);
        QCOMPARE(head, before);
        QVERIFY(!DuplicatePacketItem(0, head));
        QVERIFY(!DuplicatePacketList(99, head));
        QCOMPARE(head->name, "kept");
        TaviPacketFreeList(&head, TAVIPACKET_COMBOCOLOUR);
    }

    void withoutMemoryNoPartOfACopyIsLeft()
    {
        SPECTROPHOTOMETERINFO *head = nullptr;
        for (const char *name : {"a", "b", "c"})
            AddList(&head, newInfo(name, "file", "rev"));
        // Four allocations for each of three records.
        for (int number = 1; number <= 12; ++number) {
            AllocFailure failure(number);
            QVERIFY(!DuplicatePacketList(TAVIPACKET_SPECTROPHOTOMETERINFO, head));
            QCOMPARE(failure.count(), number);
        }
        for (int number = 1; number <= 4; ++number) {
            AllocFailure failure(number);
            QVERIFY(!DuplicatePacketItem(TAVIPACKET_SPECTROPHOTOMETERINFO, head));
            QCOMPARE(failure.count(), number);
        }
        AllocFailure failure(13);
        SPECTROPHOTOMETERINFO *copy = DuplicatePacketList(TAVIPACKET_SPECTROPHOTOMETERINFO, head);
        QCOMPARE(ListLength(copy), 3);
        QVERIFY(!failure.happened());
        TaviPacketFreeList(&copy, TAVIPACKET_SPECTROPHOTOMETERINFO);
        TaviPacketFreeList(&head, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }
};

TAVI_TEST_MAIN(TestTaviPacket)
#include "tst_tavipacket.moc"
