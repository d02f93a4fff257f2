// SPDX-License-Identifier: MIT
#include "proofcheck/measuredfile.h"
#include "proofcheck/patchmodel.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tests/support/tavitest.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <cmath>
#include <unistd.h>

/// The list of patches and its file.
class TestProofcheckPatches : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theModelKeepsItsContract()
    {
        PatchModel model;
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.append(MeasuredPatch{"one", 1, 2, 3});
        TAVICOMBOCOLOUR_CC list;
        for (int i = 0; i < 5; ++i)
            list.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(i, 0, 0));
        model.append(list.head());
        QCOMPARE(model.rowCount(), 6);
        model.replace(2, {"other", 9, 9, 9});
        model.replace(6, {"nowhere", 9, 9, 9});
        model.replace(-1, {"nowhere", 9, 9, 9});
        QCOMPARE(model.patches()[2].name, QString("other"));
        QCOMPARE(model.rowCount(), 6);
        model.clear();
        QCOMPARE(model.rowCount(), 0);
    }

    void aListIsOneInsertion()
    {
        PatchModel model;
        QSignalSpy inserted(&model, &PatchModel::rowsInserted);
        TAVICOMBOCOLOUR_CC list;
        for (int i = 0; i < 100000; ++i)
            list.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(i % 100, 0, 0));
        model.append(list.head());
        QCOMPARE(model.rowCount(), 100000);
        QCOMPARE(inserted.count(), 1);
        model.append(static_cast<const TAVICOMBOCOLOUR *>(nullptr));
        QCOMPARE(inserted.count(), 1);
    }

    void patchesWithoutAColourAreLeftOutAndNamelessOnesNamed()
    {
        TAVICOMBOCOLOUR nameless = {};
        nameless.flags = COMBOCOLOUR_FLAG_LAB;
        nameless.L = 50;
        TAVICOMBOCOLOUR colourless = {};
        colourless.header.next = &nameless;
        PatchModel model;
        model.append(&colourless);
        QCOMPARE(model.rowCount(), 1);
        QCOMPARE(model.patches()[0].name, QString("Untitled"));
    }

    void cellsShowTwoDecimals()
    {
        PatchModel model;
        model.append(MeasuredPatch{"name", 50.126, -0.004, 100});
        const auto text = [&](int column) {
            return model.index(0, column).data().toString();
        };
        QCOMPARE(text(PatchModel::L), QString("50.13"));
        QCOMPARE(text(PatchModel::A), QString("-0.00"));
        QCOMPARE(text(PatchModel::B), QString("100.00"));
        QCOMPARE(text(PatchModel::Name), QString("name"));
        QCOMPARE(text(PatchModel::Swatch), QString());
    }

    void theSwatchShowsTheColour()
    {
        PatchModel model;
        model.append(MeasuredPatch{"white", 100, 0, 0});
        model.append(MeasuredPatch{"red", 54, 81, 70});
        model.append(MeasuredPatch{"broken", std::nan(""), 0, 0});
        const auto colour = [&](int row) {
            return model.index(row, PatchModel::Swatch).data(Qt::DecorationRole).value<QColor>();
        };
        QVERIFY(colour(0).red() >= 254 && colour(0).green() >= 254 && colour(0).blue() >= 254);
        QVERIFY(colour(1).red() > 240 && colour(1).green() < 40 && colour(1).blue() < 40);
        QCOMPARE(colour(2), QColor(Qt::black));
    }

    void valuesAreInTheShortestFormThatReadsBack_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("whole") << 95.0 << QByteArray("95");
        QTest::newRow("tenth") << 0.1 << QByteArray("0.1");
        QTest::newRow("sum") << 0.1 + 0.2 << QByteArray("0.30000000000000004");
        QTest::newRow("negative zero") << -0.0 << QByteArray("-0");
        QTest::newRow("third") << 1.0 / 3.0 << QByteArray("0.3333333333333333");
        QTest::newRow("tiny") << 5e-324 << QByteArray("5e-324");
        QTest::newRow("huge") << 1.7976931348623157e308 << QByteArray("1.7976931348623157e+308");
    }

    void valuesAreInTheShortestFormThatReadsBack()
    {
        QFETCH(double, value);
        QFETCH(QByteArray, text);
        const QByteArray written = measuredText({{"n", value, 0, 0}});
        QCOMPARE(written, "name\tL\ta\tb\nn\t" + text + "\t0\t0\n");
        QCOMPARE(text.toDouble(), value);
    }

    void tabsAndLineBreaksInANameBecomeBlanks()
    {
        QCOMPARE(measuredText({{"a\tb\nc\rd", 1, 2, 3}}), QByteArray("name\tL\ta\tb\na b c d\t1\t2\t3\n"));
        QCOMPARE(measuredText({}), QByteArray("name\tL\ta\tb\n"));
    }

    void aFileIsWrittenWholeOrNotAtAll()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("list.tsv");
        QCOMPARE(writeMeasuredFile(path, {{"n", 1, 2, 3}}), QString());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("name\tL\ta\tb\nn\t1\t2\t3\n"));

        // What stood there before is replaced, not written into.
        const QString before = folder.filePath("before.tsv");
        QCOMPARE(::link(path.toLocal8Bit().constData(), before.toLocal8Bit().constData()), 0);
        QCOMPARE(writeMeasuredFile(path, {{"other", 4, 5, 6}}), QString());
        QFile old_file(before);
        QVERIFY(old_file.open(QIODevice::ReadOnly));
        QCOMPARE(old_file.readAll(), QByteArray("name\tL\ta\tb\nn\t1\t2\t3\n"));

        const QString nowhere = folder.filePath("missing/list.tsv");
        const QString error = writeMeasuredFile(nowhere, {});
        QVERIFY2(error.startsWith(nowhere + ": "), qPrintable(error));
        QVERIFY(!QFile::exists(nowhere));
        QCOMPARE(writeMeasuredFile(folder.path(), {}).isEmpty(), false);
    }
};

TAVI_TEST_MAIN(TestProofcheckPatches)
#include "tst_proofcheck_patches.moc"
