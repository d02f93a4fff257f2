// SPDX-License-Identifier: MIT
#include "taviapp/tavijob.h"

#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

#include <memory>

namespace {

using Job = std::unique_ptr<TAVIJOB, FreeListOf<TAVIJOB, TAVIPACKET_JOB>>;
using Record = std::unique_ptr<CALCHECKRECORD, FreeListOf<CALCHECKRECORD, TAVIPACKET_CALCHECKRECORD>>;

/// A check of two patches, kept.
CALCHECKRECORD *newRecord(int64_t date)
{
    CheckBuilder check;
    check.add(1, COMBOCOLOUR_FLAG_PAPER);
    check.add(2);
    return TAVIJOB_CC::newCalibration(date, check.chart.get(), check.measured.get(), check.results().get());
}

} // namespace

/// Jobs and media with the colour checks that they carry. What leaks is seen by the address sanitizer.
class TestTaviJob : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aNewJobHasItsNameAndNoPages()
    {
        const Job job(TAVIJOB_CC::newJob("flyer"));
        QCOMPARE(job->name, "flyer");
        QVERIFY(!job->pages);
        QVERIFY(!Job(TAVIJOB_CC::newJob(nullptr))->name);
    }

    void theFirstPageOfAKindIsFound()
    {
        const Job job(TAVIJOB_CC::newJob("flyer"));
        QVERIFY(!TAVIJOB_CC::outputpageOfType(job.get(), TAVIPAGE_CALIBRATION));
        TAVIOUTPUTPAGE *cover = TAVIJOB_CC::addOutputpage(job.get(), 1, nullptr);
        TAVIOUTPUTPAGE *check = TAVIJOB_CC::addOutputpage(job.get(), 11, newRecord(5));
        TAVIJOB_CC::addOutputpage(job.get(), 11, newRecord(6));
        QCOMPARE(ListLength(job->pages), 3);
        QCOMPARE(TAVIJOB_CC::outputpageOfType(job.get(), 11), check);
        QCOMPARE(TAVIJOB_CC::outputpageOfType(job.get(), 1), cover);
        QVERIFY(!TAVIJOB_CC::outputpageOfType(job.get(), 0));
        const TAVIJOB *constant = job.get();
        QCOMPARE(TAVIJOB_CC::outputpageOfType(constant, TAVIPAGE_CALIBRATION), check);
        QCOMPARE(check->calibration->date, int64_t(5));
        QVERIFY(!cover->calibration);
    }

    void nullHasNoPages()
    {
        QVERIFY(!TAVIJOB_CC::outputpageOfType(static_cast<TAVIJOB *>(nullptr), 11));
        QVERIFY(!TAVIJOB_CC::outputpageOfType(static_cast<const TAVIJOB *>(nullptr), 11));
        QVERIFY(!TAVIJOB_CC::addOutputpage(nullptr, 11, newRecord(1)));
    }

    void aRecordKeepsCopies()
    {
        CheckBuilder check;
        check.add(1, COMBOCOLOUR_FLAG_PAPER);
        const Result result = check.results();
        const Record record(
            TAVIJOB_CC::newCalibration(1234567890123, check.chart.get(), check.measured.get(), result.get()));
        QCOMPARE(record->date, int64_t(1234567890123));
        QVERIFY(record->chart != check.chart.get());
        QVERIFY(record->measured != check.measured.get());
        QVERIFY(record->results != result.get());
        QCOMPARE(record->chart->reference->L, 50.0);
        QCOMPARE(record->measured->L, 51.0);
        QCOMPARE(record->results->score, result->score);
        const Record empty(TAVIJOB_CC::newCalibration(0, nullptr, nullptr, nullptr));
        QVERIFY(empty && !empty->chart && !empty->measured && !empty->results);
    }

    void aJobIsCopiedWithAllItCarries()
    {
        Job job(TAVIJOB_CC::newJob("flyer"));
        TAVIJOB_CC::addOutputpage(job.get(), 3, nullptr);
        TAVIJOB_CC::addOutputpage(job.get(), 11, newRecord(7));
        const Job copy(DuplicatePacketItem(TAVIPACKET_JOB, job.get()));
        job.reset();
        QCOMPARE(copy->name, "flyer");
        QCOMPARE(ListLength(copy->pages), 2);
        const TAVIOUTPUTPAGE *page = TAVIJOB_CC::outputpageOfType(copy.get(), 11);
        QCOMPARE(page->calibration->date, int64_t(7));
        QCOMPARE(ListLength(page->calibration->chart->reference), 2);
        QCOMPARE(ListLength(page->calibration->measured), 2);
        QCOMPARE(page->calibration->results->patch_count, 2U);
        QCOMPARE(page->calibration->results->delta_e->paper, 1.0);
    }

    void withoutMemoryNothingIsLeft()
    {
        const Record record(newRecord(1));
        CheckBuilder check;
        check.add(1);
        const Result result = check.results();
        const auto makes = [&](int number, auto make) {
            AllocFailure failure(number);
            const auto made = make();
            return made && !failure.happened();
        };
        const auto calibration = [&] {
            return Record(TAVIJOB_CC::newCalibration(0, check.chart.get(), check.measured.get(), result.get()));
        };
        // The record; the chart with its patch; the measurement; the results with statistics, set and three texts.
        for (int number = 1; number <= 10; ++number)
            QVERIFY(!makes(number, calibration));
        QVERIFY(makes(11, calibration));
        for (int number = 1; number <= 2; ++number)
            QVERIFY(!makes(number, [] { return Job(TAVIJOB_CC::newJob("name")); }));
        QVERIFY(makes(3, [] { return Job(TAVIJOB_CC::newJob("name")); }));

        const Job job(TAVIJOB_CC::newJob("name"));
        CALCHECKRECORD *taken = DuplicatePacketItem(TAVIPACKET_CALCHECKRECORD, record.get());
        AllocFailure failure(1);
        QVERIFY(!TAVIJOB_CC::addOutputpage(job.get(), 11, taken));
        QVERIFY(!job->pages);
    }

    void thereIsNoMediaAtFirst()
    {
        const MEDIASETUP_CC media;
        QVERIFY(!media.isSet());
        QVERIFY(media.name().empty());
        QVERIFY(!media.calibration());
    }

    void aMediaHasItsNameAndItsCheck()
    {
        MEDIASETUP_CC media("Satin 250");
        QVERIFY(media.isSet());
        QCOMPARE(media.name(), std::string("Satin 250"));
        QVERIFY(!media.calibration());
        CALCHECKRECORD *first = newRecord(1);
        media.setCalibration(first);
        QCOMPARE(media.calibration(), first);
        media.setCalibration(first); // the same again is kept
        QCOMPARE(media.calibration()->date, int64_t(1));
        media.setCalibration(newRecord(2));
        QCOMPARE(media.calibration()->date, int64_t(2));
        media.setCalibration(nullptr);
        QVERIFY(!media.calibration());
        media.setCalibration(newRecord(3));
        media.clear();
        QVERIFY(!media.isSet() && media.name().empty() && !media.calibration());
    }

    void aMediaWithoutANameIsStillOne() { QVERIFY(MEDIASETUP_CC(std::string()).isSet()); }

    void copiesOfAMediaAreDeep()
    {
        MEDIASETUP_CC media("Satin");
        media.setCalibration(newRecord(4));
        MEDIASETUP_CC copy(media);
        QVERIFY(copy.calibration() != media.calibration());
        media.clear();
        QVERIFY(copy.isSet());
        QCOMPARE(copy.name(), std::string("Satin"));
        QCOMPARE(copy.calibration()->date, int64_t(4));
        media = copy;
        QVERIFY(copy.calibration() != media.calibration());
        QCOMPARE(media.calibration()->date, int64_t(4));
        MEDIASETUP_CC &same = media;
        media = same;
        QCOMPARE(media.calibration()->date, int64_t(4));
        media = MEDIASETUP_CC();
        QVERIFY(!media.isSet() && !media.calibration());
        QCOMPARE(copy.name(), std::string("Satin"));
    }

    void aMovedMediaIsGone()
    {
        MEDIASETUP_CC media("Satin");
        CALCHECKRECORD *record = newRecord(4);
        media.setCalibration(record);
        MEDIASETUP_CC other(std::move(media));
        QVERIFY(!media.isSet() && media.name().empty() && !media.calibration()); // NOLINT(bugprone-use-after-move)
        QCOMPARE(other.calibration(), record);
        MEDIASETUP_CC third("Gloss");
        third.setCalibration(newRecord(9));
        third = std::move(other);
        QVERIFY(!other.isSet()); // NOLINT(bugprone-use-after-move)
        QCOMPARE(third.name(), std::string("Satin"));
        QCOMPARE(third.calibration(), record);
        MEDIASETUP_CC &same = third;
        third = std::move(same);
        QCOMPARE(third.calibration(), record);
        QVERIFY(third.isSet());
    }
};

TAVI_TEST_MAIN(TestTaviJob)
#include "tst_tavijob.moc"
