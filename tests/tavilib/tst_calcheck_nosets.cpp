// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

/// Where the files of the criteria sets are missing. Runs with TAVI_CRITERIA_PATH set to a folder without any.
class TestCalcheckNoSets : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutFilesNothingPassesAndTheLogSaysWhy()
    {
        expectLog("calcheckcriteria: calcheckCriteriaFor: there is no criteria set 'iso12647-7-2007' in /");
        expectLog("calcheckcriteria: calcheckCriteriaFor: there is no criteria set 'iso12647-7-2016' in /");
        for (const DELTAE_TYPE type : {DELTAE_CIE76, DELTAE_CIE2000, DELTAE_CIE76}) {
            QVERIFY(!calcheckCriteriaFor(type));
            CheckBuilder check(type, 3);
            check.add(0);
            const Result result = check.results();
            QVERIFY(result);
            QVERIFY(!result->criteria);
            QVERIFY(result->flags & CALCHECKRESULT_NOT_JUDGED);
            QVERIFY(!calcheckPasses(result.get()));
        }
    }

    void tolerancesOfPatchesNeedNoFiles()
    {
        CheckBuilder check;
        ENCODE_DELTA_E_TOLERANCE(check.add(1), 2);
        QVERIFY(calcheckPasses(check.results().get()));
    }

    void nothingIsThere()
    {
        QVERIFY(calcheckCriteriaNames().empty());
        std::string error;
        QVERIFY(!calcheckFindCriteria("mine", error));
        QVERIFY(error.ends_with("; there are none at all"));
    }
};

TAVI_TEST_MAIN(TestCalcheckNoSets)
#include "tst_calcheck_nosets.moc"
