// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QScreen>

#include <csignal>

class TestUnpluggedScreen : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void itIsGoneAndComesBackWhereItWas()
    {
        TAVI_NEED_TWO_SCREENS();
        for (int round = 0; round < 2; ++round) {
            UnpluggedScreen unplugged;
            QVERIFY(unplugged.isUnplugged());
            QCOMPARE(QGuiApplication::screens().constFirst()->geometry(), QRect(0, 0, 1600, 1200));
            QVERIFY(unplugged.plugIn());
            QVERIFY(!unplugged.isUnplugged());
            QCOMPARE(QGuiApplication::screens().at(1)->geometry(), QRect(1600, 0, 1280, 1024));
            QVERIFY(unplugged.plugIn()); // once is enough
        }
    }

    void itComesBackWithTheEndOfItsScope()
    {
        TAVI_NEED_TWO_SCREENS();
        {
            const UnpluggedScreen unplugged;
            QVERIFY(unplugged.isUnplugged());
        }
        QCOMPARE(QGuiApplication::screens().size(), 2);
    }

    void itComesBackWhenTheProgramIsKilled()
    {
        TAVI_NEED_TWO_SCREENS();
        qRegisterMetaType<QScreen *>();
        QSignalSpy removed(qGuiApp, &QGuiApplication::screenRemoved);
        QSignalSpy added(qGuiApp, &QGuiApplication::screenAdded);
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(), {"--unplug-and-die"});
        QTRY_COMPARE(removed.count(), 1);
        QTRY_COMPARE(added.count(), 1);
        QTRY_COMPARE(program.state(), QProcess::NotRunning);
        QCOMPARE(program.exitStatus(), QProcess::CrashExit);
        QCOMPARE(QGuiApplication::screens().at(1)->geometry(), QRect(1600, 0, 1280, 1024));
    }

    void whereOneScreenIsPromisedItDoesNothing()
    {
        const QByteArray promised = qgetenv("TAVI_DISPLAY_SCREENS");
        const auto before = QGuiApplication::screens().size();
        qputenv("TAVI_DISPLAY_SCREENS", "1");
        UnpluggedScreen unplugged;
        qputenv("TAVI_DISPLAY_SCREENS", promised);
        QVERIFY(unplugged.plugIn());
        QCOMPARE(QGuiApplication::screens().size(), before);
    }
};

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--unplug-and-die") == 0) {
        const QApplication application(argc, argv);
        const UnpluggedScreen unplugged;
        std::raise(SIGKILL);
    }
    return taviTestMain<TestUnpluggedScreen>(argc, argv, true);
}
#include "tst_unpluggedscreen.moc"
