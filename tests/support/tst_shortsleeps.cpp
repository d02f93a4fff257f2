// SPDX-License-Identifier: MIT
#include "tests/support/shortsleeps.h"
#include "tests/support/tavitest.h"

#include <QElapsedTimer>

#include <thread>
#include <unistd.h>

namespace {

qint64 millisecondsOfASleep()
{
    QElapsedTimer timer;
    timer.start();
    sleep(1);
    return timer.elapsed();
}

} // namespace

class TestShortSleeps : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aSleepEndsEarly()
    {
        const ShortSleeps short_sleeps;
        for (int i = 0; i < 10; ++i) {
            const qint64 elapsed = millisecondsOfASleep();
            QVERIFY2(elapsed < 500, QByteArray::number(elapsed).constData());
        }
    }

    void thoseOfOtherThreadsDoNot()
    {
        const ShortSleeps short_sleeps;
        qint64 elapsed = 0;
        std::thread other([&elapsed] { elapsed = millisecondsOfASleep(); });
        other.join();
        QVERIFY2(elapsed >= 990, QByteArray::number(elapsed).constData());
    }

    void afterwardsSleepsAreWhole()
    {
        {
            const ShortSleeps short_sleeps;
        }
        const qint64 elapsed = millisecondsOfASleep();
        QVERIFY2(elapsed >= 990, QByteArray::number(elapsed).constData());
    }
};

TAVI_TEST_MAIN(TestShortSleeps)
#include "tst_shortsleeps.moc"
