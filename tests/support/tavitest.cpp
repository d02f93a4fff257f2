// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"

QString TaviTest::dataFile(const QString &name)
{
    return qEnvironmentVariable("TAVI_TEST_DATA") + QLatin1Char('/') + name;
}

void TaviTest::init()
{
    recorder_ = std::make_unique<LogRecorder>();
    // Qt asks for the frame of a window that the window manager is just taking away: a race between these two.
    recorder_->allow(QStringLiteral("QXcbConnection: XCB error: 3 (BadWindow)"));
}

void TaviTest::cleanup()
{
    if (!recorder_)
        return;
    const QStringList problems = recorder_->takeProblems();
    recorder_.reset();
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1String("; "))));
}
