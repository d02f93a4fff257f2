// SPDX-License-Identifier: MIT
#include "tavilib/tavilog.h"
#include "tests/support/logrecorder.h"

#include <QtTest>

#include <thread>

/// The recorder behind TaviTest; tested without that base class, which uses it.
class TestLogRecorder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anUnexpectedLineIsAProblem()
    {
        LogRecorder recorder;
        LogError("unit", "function", "broke");
        QCOMPARE(recorder.lines(), QStringList{"unit: function: broke"});
        QCOMPARE(recorder.takeProblems(), QStringList{"unexpected log line \"unit: function: broke\""});
        QCOMPARE(recorder.takeProblems(), QStringList());
    }

    void theKindOfEachLineIsKept()
    {
        LogRecorder recorder;
        LogError("unit", "function", "broke");
        TaviLogMessage("unit", "function", TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "%s", "said");
        qWarning("odd");
        const QVector<int> expected = {TAVILOG_ERROR, TAVILOG_PLUGIN, TAVILOG_ERROR};
        QCOMPARE(recorder.kinds(), expected);
        QCOMPARE(recorder.takeProblems().size(), 3);
        QVERIFY(recorder.kinds().isEmpty());
    }

    void anExpectedLineIsNone()
    {
        LogRecorder recorder;
        recorder.expect("broke");
        LogError("unit", "function", "broke");
        QCOMPARE(recorder.takeProblems(), QStringList());
    }

    void anExpectedLineThatStaysAwayIsAProblem()
    {
        LogRecorder recorder;
        recorder.expect("broke", 2);
        LogError("unit", "function", "broke");
        QCOMPARE(recorder.takeProblems(), QStringList{"1 expected log line(s) with \"broke\" did not come"});
    }

    void allowedLinesMayComeOrNot()
    {
        LogRecorder recorder;
        recorder.allow("perhaps");
        QCOMPARE(recorder.takeProblems(), QStringList());
        recorder.allow("perhaps");
        LogError("unit", "function", "perhaps");
        QCOMPARE(recorder.takeProblems(), QStringList());
    }

    void warningsOfQtAreRecorded()
    {
        LogRecorder recorder;
        qWarning("odd");
        QCOMPARE(recorder.count("odd"), 1);
        QCOMPARE(recorder.takeProblems(), QStringList{"unexpected log line \"qt: default: odd\""});
    }

    void linesOfOtherThreadsAreRecorded()
    {
        LogRecorder recorder;
        std::thread first([] {
            for (int i = 0; i < 100; ++i)
                LogError("a", "b", "c");
        });
        std::thread second([] {
            for (int i = 0; i < 100; ++i)
                TaviLogMessage("a", "b", TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "%d", 7);
        });
        first.join();
        second.join();
        QCOMPARE(recorder.count("a: b: c"), 100);
        QCOMPARE(recorder.count("a: b: 7"), 100);
        QCOMPARE(recorder.takeProblems().size(), 200);
    }
};

QTEST_GUILESS_MAIN(TestLogRecorder)
#include "tst_logrecorder.moc"
