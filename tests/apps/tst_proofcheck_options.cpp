// SPDX-License-Identifier: MIT
#include "proofcheck/options.h"
#include "tests/support/tavitest.h"

#include <QDir>

class TestProofcheckOptions : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void nothingOpensTheWindow()
    {
        const Options options = parseOptions({});
        QCOMPARE(options.error, QString());
        QVERIFY(!options.batch);
    }

    void aWholeBatch()
    {
        const Options options = parseOptions({"--batch", "--instrument", "Some name", "--measure", "/a/b.txt",
                                              "--out", "c.tsv", "--screenshot", "d.png", "--timeout", "5"});
        QCOMPARE(options.error, QString());
        QVERIFY(options.batch);
        QCOMPARE(options.instrument, QString("Some name"));
        QCOMPARE(options.measure, QString("/a/b.txt"));
        QCOMPARE(options.out, QDir::currentPath() + "/c.tsv");
        QCOMPARE(options.screenshot, QDir::currentPath() + "/d.png");
        QCOMPARE(options.timeout_s, 5);
    }

    void helpAndVersionNeedNothingElse()
    {
        QVERIFY(parseOptions({"--help", "--batch"}).show_help);
        QVERIFY(parseOptions({"--version"}).show_version);
        QVERIFY(helpText().contains("--instrument"));
    }

    void unusableArgumentsSayWhichAndWhy_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::newRow("unknown") << QStringList{"--fast"} << "Unknown option 'fast'.";
        QTest::newRow("no instrument") << QStringList{"--batch"} << "--batch needs --instrument";
        QTest::newRow("no file") << QStringList{"--batch", "--instrument", "a"} << "--batch needs --measure";
        QTest::newRow("no output") << QStringList{"--batch", "--instrument", "a", "--measure", "b"}
                                   << "--batch needs --out";
        QTest::newRow("no batch") << QStringList{"--measure", "b"} << "--measure goes with --batch";
        QTest::newRow("stray") << QStringList{"file.txt"} << "unexpected argument 'file.txt'";
        QTest::newRow("timeout") << QStringList{"--batch", "--instrument", "a",   "--measure", "b", "--out",
                                                "c",       "--timeout",    "soon"}
                                 << "--timeout is 'soon'; it takes whole seconds from 1 to 86400";
        QTest::newRow("timeout 0") << QStringList{"--batch", "--instrument", "a", "--measure", "b", "--out",
                                                  "c",       "--timeout",    "0"}
                                   << "--timeout is '0'; it takes whole seconds from 1 to 86400";
        QTest::newRow("value missing") << QStringList{"--batch", "--out"} << "Missing value after '--out'.";
    }

    void unusableArgumentsSayWhichAndWhy()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        QCOMPARE(parseOptions(arguments).error, error);
    }
};

TAVI_TEST_MAIN(TestProofcheckOptions)
#include "tst_proofcheck_options.moc"
