// SPDX-License-Identifier: MIT
#include "proofcheck/inputcheck.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

class TestProofcheckInputcheck : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aGoodTextFileHasNothingToSay()
    {
        const InputCheck check = checkLabTextFile(write("50 1 2\n60\t3\t4\textra\n"));
        QCOMPARE(check.error, QString());
        QCOMPARE(check.measurements, 2);
        QCOMPARE(check.skippedText(), QString());
        QVERIFY(check.warnings.isEmpty());
    }

    void skippedLinesAreCounted()
    {
        const InputCheck check = checkLabTextFile(write("\n50 1 2\n60 3\n\n70 1 1"));
        QCOMPARE(check.measurements, 2);
        QCOMPARE(check.skippedText(), QString("3 of 5 lines skipped"));
    }

    void wordsThatAreReadAsZeroAreWarnedOf()
    {
        const QString path = write("50 1 2\nL a b\n60 1,5 2\nnan 0 0\n");
        const InputCheck check = checkLabTextFile(path);
        QCOMPARE(check.measurements, 4);
        QCOMPARE(check.warnings.size(), 1);
        QVERIFY2(check.warnings.first().startsWith(path + ":2: something that is no plain number stands where"),
                 qPrintable(check.warnings.first()));
        QVERIFY(check.warnings.first().contains("(3 such lines)"));
    }

    void anEndMarkerInTheFileIsWarnedOf()
    {
        const QString path = write("50 1 2\n-1 0 0\n60 1 2\n");
        const InputCheck check = checkLabTextFile(path);
        QCOMPARE(check.measurements, 2);
        QVERIFY(check.warnings.value(0).startsWith(path + ":2: L is negative"));
    }

    void linesThatAreReadOtherwiseAreWarnedOf()
    {
        const QString path = write("50 1 2\r60 1 2\r\n70 1 2 " + QByteArray(2000, 'x') + "\n");
        const InputCheck check = checkLabTextFile(path);
        QVERIFY(check.warnings.contains(path + ":1: a carriage return inside a line does not end it (1 such lines)"));
        QVERIFY(
            check.warnings.contains(path + ":2: a line of more than 1023 bytes is read as several (1 such lines)"));
    }

    void aFileWithoutAMeasurementIsUnusable_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");
        QTest::newRow("empty") << QByteArray() << ":1: no measurement: no line has three numbers (0 lines)";
        QTest::newRow("blank lines") << QByteArray("\n\n\n")
                                     << ":3: no measurement: no line has three numbers (3 lines)";
        QTest::newRow("all negative") << QByteArray("-1 0 0\n-2 0 0\n")
                                      << ":2: no measurement: every L is negative (2 lines)";
        QTest::newRow("two columns") << QByteArray("1 2\n")
                                     << ":1: no measurement: no line has three numbers (1 lines)";
    }

    void aFileWithoutAMeasurementIsUnusable()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, error);
        const QString path = write(content);
        QCOMPARE(checkLabTextFile(path).error, path + error);
    }

    void aFileThatCannotBeReadIsUnusable()
    {
        const QString missing = folder.filePath("missing.txt");
        QCOMPARE(checkLabTextFile(missing).error, missing + ": No such file or directory");
        QCOMPARE(checkLabTextFile(folder.path()).error, folder.path() + ": Is a directory");
        QVERIFY(checkCgatsFile(missing).error.startsWith(missing + ":"));
    }

    void aCgatsFileIsCountedByItsRows()
    {
        const QString path = write("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                                   "BEGIN_DATA\n1 90 0 0\n2 nan 0 0\n3 50 1 2\nEND_DATA\n");
        const InputCheck check = checkCgatsFile(path);
        QCOMPARE(check.error, QString());
        QCOMPARE(check.measurements, 2);
        QCOMPARE(check.skippedText(), QString("1 of 3 lines skipped"));
        QVERIFY(!check.warnings.isEmpty());
    }

    void aRefusedCgatsFileSaysWhereAndWhy()
    {
        const QString path = write("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\n");
        const InputCheck check = checkCgatsFile(path);
        QVERIFY2(check.error.startsWith(path + ":"), qPrintable(check.error));
        QVERIFY(check.error.size() > path.size() + 10);
        QVERIFY(!check.error.contains('\n'));
    }

    void aCgatsFileWithoutColoursIsUnusable()
    {
        const QString path = write("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K\n"
                                   "END_DATA_FORMAT\nBEGIN_DATA\n1 0 0 0 0\nEND_DATA\n");
        QCOMPARE(checkCgatsFile(path).error, path + ": no measurement: none of its 1 rows has a Lab or XYZ value");
        InputCheck check;
        QCOMPARE(readChart(path, check).count(), size_t(1)); // good as a chart all the same
        QCOMPARE(check.error, QString());
    }

    void theCheckFitsTheReader()
    {
        const QString path = write("50 1 2\n");
        QCOMPARE(checkInputFor("tabdelimitedlab.orloinstrument", path).measurements, 1);
        QCOMPARE(checkInputFor("simspectro.so", path).measurements, 0);
        QCOMPARE(checkInputFor("simspectro.so", path).error, QString());
        const QString cgats = "/usr/share/color/icc/FOGRA39L.ti3";
        QCOMPARE(checkInputFor("cgatslab.orloinstrument", cgats).measurements, 1617);
        const InputCheck as_text = checkInputFor("tabdelimitedlab.orloinstrument", cgats);
        QCOMPARE(as_text.lines, 1636);
        QVERIFY(!as_text.warnings.isEmpty());
    }

private:
    QString write(const QByteArray &content)
    {
        const QString path = folder.filePath(QString("file%1.txt").arg(++files));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    QTemporaryDir folder;
    int files = 0;
};

TAVI_TEST_MAIN(TestProofcheckInputcheck)
#include "tst_proofcheck_inputcheck.moc"
