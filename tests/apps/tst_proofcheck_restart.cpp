// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/apps/desktopwindow.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QProcess>
#include <QTemporaryDir>

#include <map>

/// The program itself, started again: what it kept of the last time.
class TestProofcheckRestart : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        folder = std::make_unique<QTemporaryDir>();
        settings = folder->filePath("settings.db");
    }

    void theFirstTimeTheWindowIsCentred()
    {
        QCOMPARE(runAndClose().size(), QSize(720, 640));
        // How large the frame is, is not known before there is one: the centre is the client's.
        QCOMPARE(frame.topLeft(), QPoint((1600 - 720) / 2, (1200 - 640) / 2));
    }

    void theWindowComesBackWhereItWasClosed_data()
    {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<bool>("second");
        QTest::newRow("on the first screen") << QRect(123, 234, 801, 567) << false;
        QTest::newRow("on the second screen") << QRect(1723, 134, 801, 567) << true;
    }

    void theWindowComesBackWhereItWasClosed()
    {
        QFETCH(QRect, place);
        QFETCH(bool, second);
        if (second)
            TAVI_NEED_TWO_SCREENS();
        QCOMPARE(runAndClose(place), place);
        QCOMPARE(runAndClose(), place);
        // A third time: it does not wander by its frame.
        QCOMPARE(runAndClose(), place);
    }

    void theWindowComesBackWithoutItsScreen()
    {
        TAVI_NEED_TWO_SCREENS();
        const QRect place(1723, 134, 801, 567);
        QCOMPARE(runAndClose(place), place);
        {
            UnpluggedScreen unplugged;
            QVERIFY(unplugged.isUnplugged());
            QCOMPARE(runAndClose(), place.translated(-1600, 0));
            QVERIFY(unplugged.plugIn());
        }
        // It was closed on the first screen since.
        QCOMPARE(runAndClose(), place.translated(-1600, 0));
    }

    void aBatchLeavesThePlaceAlone()
    {
        const QRect place(123, 234, 801, 567);
        QCOMPARE(runAndClose(place), place);
        const auto before = kept();
        for (const auto &[key, value] :
             {std::pair("WinX", "123"), std::pair("WinY", "234"), std::pair("WinWidth", "801"),
              std::pair("WinHeight", "567"), std::pair("WinScreen", "0")}) {
            QVERIFY2(before.count(key) == 1, key);
            QCOMPARE(before.at(key), std::string(value));
        }

        QFile input(folder->filePath("input.txt"));
        QVERIFY(input.open(QIODevice::WriteOnly) && input.write("50 1 2\n") > 0);
        input.close();
        QProcess batch;
        batch.start(PROOFCHECK_PROGRAM, {"--batch", "--settings", settings, "--instrument",
                                         "Lab text file (Lab sample order)", "--measure", input.fileName(), "--out",
                                         folder->filePath("out.tsv"), "--screenshot", folder->filePath("shot.png")});
        QVERIFY(batch.waitForFinished());
        QCOMPARE(batch.exitCode(), 0);
        QVERIFY(QFile::exists(folder->filePath("shot.png")));
        QCOMPARE(kept(), before);
    }

private:
    /// Runs the program, moves its window if a place is given, and closes it with the button of its frame. Where the
    /// client area was just before; null if anything went wrong, which is told in a log line.
    QRect runAndClose(const QRect &place = {})
    {
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(PROOFCHECK_PROGRAM, {"--settings", settings});
        if (!program.waitForStarted()) {
            qWarning("the program does not start");
            return {};
        }
        const DesktopWindow window(program.processId(), "proofcheck");
        if (!window.problem().isEmpty()) {
            qWarning("%s", qPrintable(window.problem()));
            return {};
        }
        if (!place.isNull() && !window.place(place)) {
            qWarning("the window does not move; it is at %d,%d", window.client().x(), window.client().y());
            return {};
        }
        const QRect client = window.client();
        frame = window.frame();
        if (!window.clickClose() || !program.waitForFinished() || program.exitStatus() != QProcess::NormalExit
            || program.exitCode() != 0) {
            qWarning("the program did not end well: status %d", program.exitCode());
            return {};
        }
        return client;
    }

    /// What the settings file holds of the program.
    std::map<std::string, std::string> kept() const
    {
        TaviRegistry registry(settings.toStdString());
        std::map<std::string, std::string> values;
        for (auto at = registry.firstItem("proofcheck"); !registry.isEndItem(at); at = registry.nextItem())
            values[registry.key(at)] = registry.value(at);
        return values;
    }

    std::unique_ptr<QTemporaryDir> folder;
    QString settings;
    QRect frame; ///< Of the window that was closed last.
};

TAVI_GUI_TEST_MAIN(TestProofcheckRestart)
#include "tst_proofcheck_restart.moc"
