// SPDX-License-Identifier: MIT
#include "tests/plugins/simspectroplugin.h"
#include "tests/support/tavitest.h"

#include <QDirIterator>

#include <sys/stat.h>

/// What the plug-in takes for a file and for settings, and what it says of the rest.
class TestSimspectroInput : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void goodFilesOpen_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray plain = cgatsTable("SAMPLE_ID LAB_L LAB_A LAB_B", "1 50 10 -20\n2 60 0 0\n");
        QTest::newRow("plain") << plain;
        QTest::newRow("CRLF") << QByteArray(plain).replace("\n", "\r\n");
        QTest::newRow("CR") << QByteArray(plain).replace("\n", "\r");
        QTest::newRow("tabs") << QByteArray(plain).replace(" ", "\t");
        QTest::newRow("byte order mark") << "\xef\xbb\xbf" + plain;
        QTest::newRow("comments") << "# written by hand\n" + QByteArray(plain).replace("60 0 0", "60 0 0 # white");
        QTest::newRow("lower case columns") << cgatsTable("sample_id lab_l lab_a lab_b", "1 50 10 -20\n2 60 0 0\n");
        QTest::newRow("lower case keywords") << plain.toLower();
        QTest::newRow("format over several lines")
            << cgatsTable("SAMPLE_ID\nLAB_L LAB_A\nLAB_B", "1 50 10 -20\n2 60 0 0\n");
        QTest::newRow("quoted name") << cgatsTable("SAMPLE_NAME LAB_L LAB_A LAB_B",
                                                   "\"A 1\" 50 10 -20\n\"\" 60 0 0\n");
        QTest::newRow("signs and exponents")
            << cgatsTable("SAMPLE_ID LAB_L LAB_A LAB_B", "1 +5.0e1 +10 -2E+1\n2 60. 0 -.0\n");
        QTest::newRow("number of sets") << "NUMBER_OF_SETS 2\n" + plain;
        QTest::newRow("wrong number of fields") << "NUMBER_OF_FIELDS 9\n" + plain;
        QTest::newRow("second table") << plain + cgatsTable("A B", "1 2 3\n");
        QTest::newRow("no last line end") << plain.trimmed();
    }
    void goodFilesOpen()
    {
        QFETCH(QByteArray, content);
        const SimspectroFile file(content);
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        QCOMPARE(device.recorder.events(), QStringList());
        QVERIFY(device.handle());
        device.abortAfter(2);
        device.readSpotLab();
        const std::vector<RecordedLab> expected = {{50, 10, -20}, {60, 0, 0}};
        QCOMPARE(device.recorder.colours(), expected);
    }

    void badFilesAreRefusedWithPlaceAndReason_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("reason");
        QTest::newRow("empty") << QByteArray() << "line 0: no BEGIN_DATA_FORMAT: this is no CGATS file";
        QTest::newRow("words") << QByteArray("Dear Sir,\nmany thanks\n") << "line 2: no BEGIN_DATA_FORMAT";
        QTest::newRow("bytes") << QByteArray("\x7f"
                                             "ELF\0\1\2\xff\xfe\n\0",
                                             11)
                               << "no BEGIN_DATA_FORMAT";
        QTest::newRow("no columns") << QByteArray("BEGIN_DATA\n1 2 3\nEND_DATA\n")
                                    << "line 1: BEGIN_DATA without a BEGIN_DATA_FORMAT block before it";
        QTest::newRow("no data") << QByteArray("BEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n")
                                 << "line 3: no BEGIN_DATA";
        QTest::newRow("unfinished format") << QByteArray("BEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\n")
                                           << "line 2: the file ends without END_DATA_FORMAT";
        QTest::newRow("cut off") << QByteArray(
            "BEGIN_DATA_FORMAT LAB_L LAB_A LAB_B END_DATA_FORMAT\nBEGIN_DATA\n1 2 3\n")
                                 << "line 3: the file ends without END_DATA";
        QTest::newRow("empty table") << cgatsTable("LAB_L LAB_A LAB_B", "") << "line 7: the data block is empty";
        QTest::newRow("too few cells") << cgatsTable("LAB_L LAB_A LAB_B", "1 2 3\n1 2\n")
                                       << "line 8: 2 cells for 3 columns";
        QTest::newRow("too many cells") << cgatsTable("LAB_L LAB_A LAB_B", "1 2 3 4\n")
                                        << "line 7: 4 cells for 3 columns";
        QTest::newRow("open quote") << cgatsTable("SAMPLE_NAME LAB_L LAB_A LAB_B", "\"A 1 2 3\n")
                                    << "line 7: a quote has no end";
        QTest::newRow("a column twice") << cgatsTable("LAB_L LAB_A LAB_B lab_a", "1 2 3 4\n")
                                        << "line 4: the column LAB_A stands twice";
        QTest::newRow("wrong number of sets") << "NUMBER_OF_SETS 3\n" + cgatsTable("LAB_L LAB_A LAB_B", "1 2 3\n")
                                              << "line 9: 1 sets where NUMBER_OF_SETS says 3";
        QTest::newRow("no colour") << cgatsTable("SAMPLE_ID CMYK_C", "1 2\n") << "neither LAB nor XYZ columns";
        QTest::newRow("half a colour") << cgatsTable("LAB_L LAB_A XYZ_X XYZ_Y", "1 2 3 4\n")
                                       << "neither LAB nor XYZ columns";
        for (const char *word : {"abc", "1,5", "1.5x", "nan", "inf", "1e999", "0x10", "--1", "+-1", "\"\""})
            QTest::addRow("cell %s", word)
                << cgatsTable("LAB_L LAB_A LAB_B", QByteArray("1 2 3\n4 ") + word + " 6\n")
                << QStringLiteral("line 8: LAB_A is '%1', no number").arg(QString(word).remove('"'));
        QTest::newRow("device cell") << cgatsTable("LAB_L LAB_A LAB_B GRAY", "1 2 3 x\n")
                                     << "line 7: GRAY is 'x', no number";
        QTest::newRow("density cell") << cgatsTable("LAB_L LAB_A LAB_B D_RED D_GREEN D_BLUE D_VIS", "1 2 3 4 5 6 x\n")
                                      << "line 7: D_VIS is 'x', no number";
    }
    void badFilesAreRefusedWithPlaceAndReason()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const SimspectroFile file(content);
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        const SimspectroDevice device(plugin);
        QVERIFY(!device.handle());
        QCOMPARE(device.recorder.events().size(), 1);
        const QString text = device.recorder.texts("fault").value(0);
        QVERIFY2(text.startsWith("Cannot open file " + file.path()), qPrintable(text));
        QVERIFY2(text.contains(reason), qPrintable(text));
    }

    void unreadableFilesAreRefused_data()
    {
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QString>("text");
        QTest::newRow("missing") << QByteArray("/nonexistent/file.ti3")
                                 << "Cannot open file /nonexistent/file.ti3: No such file or directory";
        QTest::newRow("directory") << QByteArray("/usr") << "Cannot open file /usr: Is a directory";
        QTest::newRow("device") << QByteArray("/dev/zero") << "Cannot open file /dev/zero: it is no regular file";
        QTest::newRow("not set") << QByteArray() << "Error SIMSPECTRO_FILE is not set; it names the file to measure";
    }
    void unreadableFilesAreRefused()
    {
        QFETCH(QByteArray, path);
        QFETCH(QString, text);
        const SimspectroEnvironment environment(path);
        const SimspectroPlugin plugin;
        const SimspectroDevice device(plugin);
        QVERIFY(!device.handle());
        QCOMPARE(device.recorder.events(), QStringList("fault: " + text));
    }

    /// Opening a pipe for reading waits for a writer, which may never come.
    void aPipeIsRefusedAtOnce()
    {
        const QTemporaryDir directory;
        const QByteArray path = directory.filePath("pipe").toUtf8();
        QCOMPARE(mkfifo(path.constData(), 0600), 0);
        const SimspectroEnvironment environment(path);
        const SimspectroPlugin plugin;
        const SimspectroDevice device(plugin);
        QVERIFY(!device.handle());
        QCOMPARE(device.recorder.events(),
                 QStringList("fault: Cannot open file " + path + ": it is no regular file"));
    }

    void settingsOutOfRangeAreRefused_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        for (const char *value : {"abc", "-0.1", "100.5", "nan", "0,5", "1 "})
            QTest::addRow("noise %s", value) << QByteArray("SIMSPECTRO_NOISE") << QByteArray(value);
        for (const char *value : {"x", "-1", "1.5", "18446744073709551616"})
            QTest::addRow("seed %s", value) << QByteArray("SIMSPECTRO_SEED") << QByteArray(value);
        for (const char *value : {"x", "-1", "1.5", "600001", "10ms"})
            QTest::addRow("delay %s", value) << QByteArray("SIMSPECTRO_DELAY_MS") << QByteArray(value);
    }
    void settingsOutOfRangeAreRefused()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, value);
        const SimspectroFile file(cgatsTable("LAB_L LAB_A LAB_B", "1 2 3\n"));
        SimspectroEnvironment environment(file.path());
        environment.set(name.constData(), value);
        const SimspectroPlugin plugin;
        const SimspectroDevice device(plugin);
        QVERIFY(!device.handle());
        QCOMPARE(device.recorder.events().size(), 1);
        const QString text = device.recorder.texts("fault").value(0);
        QVERIFY2(text.startsWith("Error " + name + " is '" + value + "', not a number from 0"), qPrintable(text));
    }

    void emptySettingsAreTheDefaults()
    {
        const SimspectroFile file(cgatsTable("LAB_L LAB_A LAB_B", "1 2 3\n"));
        SimspectroEnvironment environment(file.path());
        for (const char *name : {"SIMSPECTRO_NOISE", "SIMSPECTRO_SEED", "SIMSPECTRO_DELAY_MS", "SIMSPECTRO_PRINTER"})
            environment.set(name, "");
        const SimspectroPlugin plugin;
        const SimspectroDevice device(plugin);
        QVERIFY(device.handle());
    }

    void publishedCharacterisationSetsOpen()
    {
        int opened = 0;
        QDirIterator files("/usr/share/color/icc", {"*.ti3"}, QDir::Files, QDirIterator::Subdirectories);
        const SimspectroPlugin plugin;
        while (files.hasNext()) {
            const SimspectroEnvironment environment(files.next().toUtf8());
            const SimspectroDevice device(plugin);
            QVERIFY2(device.handle(), qPrintable(device.recorder.events().join('\n')));
            ++opened;
        }
        QVERIFY2(opened >= 9, "package icc-profiles-free is missing");
    }
};

TAVI_TEST_MAIN(TestSimspectroInput)
#include "tst_simspectro_input.moc"
