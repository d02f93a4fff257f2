// SPDX-License-Identifier: MIT
#include "tests/instruments/measurementfile.h"
#include "tests/support/filedialoganswer.h"
#include "tests/support/tavitest.h"

/// The real dialog by which the readers ask for their file.
class TestSpectroFromFileDialog : public TaviTest
{
    Q_OBJECT

private:
    QTemporaryDir directory_;

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QFile file(directory_.filePath("lab.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("50 1 2\n");
    }

    void theTextReaderOpensWhatIsTyped()
    {
        const FileDialogAnswer answer(directory_.filePath("lab.txt"));
        InstrumentRecorder recorder;
        void *handle = spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder);
        QCOMPARE(answer.problem(), QString());
        QVERIFY(handle);
        QCOMPARE(answer.title(), QString("Choose a file containing measurements"));
        QCOMPARE(answer.nameFilters(), QStringList({"All(*)", "Text files (*.txt)"}));
        QCOMPARE(answer.directory(), QDir::currentPath());
        QVERIFY(!answer.parentOfDialog());

        int abort_flag = 0;
        spectro_fromfile_SpectrophotometerReadSpotLab(handle, &abort_flag, InstrumentRecorder::lab, &recorder,
                                                      InstrumentRecorder::message, &recorder);
        QCOMPARE(recorder.colours().front(), (RecordedLab{50, 1, 2}));
        spectro_fromfile_SpectrophotometerClose(handle, InstrumentRecorder::message, &recorder);
    }

    void theCgatsReaderKeepsThePathThatIsTyped()
    {
        const FileDialogAnswer answer(directory_.filePath("lab.txt"));
        InstrumentRecorder recorder;
        void *handle = spectro_fromCGATS_SpectrophotometerOpen(InstrumentRecorder::message, &recorder);
        QCOMPARE(answer.problem(), QString());
        QVERIFY(handle);
        QCOMPARE(QString::fromUtf8(static_cast<const char *>(handle)), directory_.filePath("lab.txt"));
        QCOMPARE(answer.title(), QString("Choose a file containing measurements"));
        QCOMPARE(answer.nameFilters(), QStringList({"All(*)", "Text files (*.txt)"}));
        spectro_fromCGATS_SpectrophotometerClose(handle, InstrumentRecorder::message, &recorder);
    }

    void aCancelledDialogOpensNothing()
    {
        const FileDialogAnswer answer{QString()};
        InstrumentRecorder recorder;
        QVERIFY(!spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
        QVERIFY(answer.answered());
        QCOMPARE(recorder.events(), QStringList());
    }

    void anEmptyChooserBringsTheDialogBack()
    {
        const SpectroFileChooser dialog =
            setSpectroFileChooser([](const QString &, const QString &) { return QString(); });
        setSpectroFileChooser(nullptr);
        InstrumentRecorder recorder;
        for (int i = 0; i < 2; ++i) {
            const FileDialogAnswer answer{QString()};
            QVERIFY(!spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
            QVERIFY(answer.answered());
            setSpectroFileChooser(dialog); // the second round asks the one that was in place at first
        }
    }
};

TAVI_GUI_TEST_MAIN(TestSpectroFromFileDialog)
#include "tst_spectro_fromfile_dialog.moc"
