// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "instruments/spectrobuddy.h"
#include "proofcheck/mainwindow.h"
#include "proofcheck/patchlistview.h"
#include "tests/support/filedialoganswer.h"
#include "tests/support/tavitest.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

const QString lab_reader = "Lab text file (Lab sample order)";
const QString simulated = "Simulated spectrophotometer";
const QString characterisation = "/usr/share/color/icc/FOGRA39L.ti3";
const QString wedge = "/usr/share/color/argyll/ref/FograStrip3.ti1";

/// Accepts the next message box and keeps its text.
class MessageBoxAnswer
{
public:
    MessageBoxAnswer()
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                text = box->text();
                box->accept();
            }
        });
        timer_.start(20);
    }
    QString text;

private:
    QTimer timer_;
};

} // namespace

/// The window, used as a user uses it.
class TestProofcheckWindow : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QVERIFY(QDir::setCurrent(SIMSPECTRO_FOLDER "/../.."));
        qputenv("SIMSPECTRO_FILE", characterisation.toLocal8Bit());
    }

    void init()
    {
        TaviTest::init();
        qunsetenv("SIMSPECTRO_DELAY_MS");
        registry = std::make_unique<TaviRegistry>();
        folder = std::make_unique<QTemporaryDir>();
        open();
    }

    void cleanup()
    {
        window.reset();
        registry.reset();
        folder.reset();
        TaviTest::cleanup();
    }

    void anEmptyWindowHasNothingToSave()
    {
        QVERIFY(!action("save_as")->isEnabled());
        QVERIFY(!action("clear_list")->isEnabled());
        QCOMPARE(label("count_label"), QString("0 patches"));
        QCOMPARE(label("rate_label"), QString());
    }

    void aTextFileIsMeasuredThroughTheDialog()
    {
        choose(lab_reader);
        FileDialogAnswer answer(write("L a\n50 1 2\n60 3 4\n"));
        press();
        QVERIFY2(answer.answered(), qPrintable(answer.problem()));
        QCOMPARE(answer.title(), QString("Choose a file containing measurements"));
        QTRY_COMPARE(window->model().rowCount(), 2);
        QCOMPARE(window->model().patches()[1].name, QString("60.00, 3.00, 4.00"));
        QCOMPARE(label("count_label"), QString("2 patches"));
        QVERIFY(label("rate_label").endsWith(" patches/s"));
        QCOMPARE(label("note_label"), QString("1 of 3 lines skipped"));
        // A file has nothing more to say.
        QTRY_COMPARE(window->instrumentBox()->title(), QString("Spectrophotometer (offline)"));
        QVERIFY(action("save_as")->isEnabled());
    }

    void aSecondFileIsAddedToTheList()
    {
        choose(lab_reader);
        for (int round = 1; round <= 2; ++round) {
            FileDialogAnswer answer(write("50 1 2\n"));
            press();
            QVERIFY2(answer.answered(), qPrintable(answer.problem()));
            QTRY_COMPARE(window->model().rowCount(), round);
            QTRY_COMPARE(window->instrumentBox()->title(), QString("Spectrophotometer (offline)"));
        }
    }

    void aCancelledDialogLeavesTheInstrumentOff()
    {
        choose(lab_reader);
        expectLog("Spectrophotometer failed to initialise");
        FileDialogAnswer answer{QString()};
        press();
        QVERIFY2(answer.answered(), qPrintable(answer.problem()));
        QCOMPARE(window->instrumentBox()->title(), QString("Spectrophotometer (offline)"));
        QCOMPARE(window->model().rowCount(), 0);
    }

    void anUnusableFileIsToldInWords()
    {
        choose(lab_reader);
        const QString path = write("nothing here\n");
        expectLog("Spectrophotometer failed to initialise");
        const FileDialogAnswer answer(path);
        const MessageBoxAnswer box;
        press();
        QCOMPARE(box.text, path + ":1: no measurement: no line has three numbers (1 lines)");
        QCOMPARE(window->instrumentBox()->title(), QString("Spectrophotometer (offline)"));
    }

    void theListIsSavedThroughTheDialog()
    {
        choose(lab_reader);
        {
            FileDialogAnswer answer(write("50 1 2\n"));
            press();
            QTRY_COMPARE(window->model().rowCount(), 1);
        }
        const QString path = folder->filePath("saved.tsv");
        FileDialogAnswer answer(path);
        action("save_as")->trigger();
        QVERIFY2(answer.answered(), qPrintable(answer.problem()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("name\tL\ta\tb\n50.00, 1.00, 2.00\t50\t1\t2\n"));
        QVERIFY(label("note_label").contains(path));
        action("clear_list")->trigger();
        QCOMPARE(window->model().rowCount(), 0);
        QVERIFY(!action("save_as")->isEnabled());
    }

    void aChartIsMeasuredWithItsNames()
    {
        choose(simulated);
        {
            FileDialogAnswer answer(wedge);
            action("open_chart")->trigger();
            QVERIFY2(answer.answered(), qPrintable(answer.problem()));
        }
        QCOMPARE(window->chart().count(), size_t(72));
        QCOMPARE(label("note_label"), QString("Chart FograStrip3.ti1: 72 patches"));
        QVERIFY(window->windowTitle().contains("FograStrip3.ti1"));
        choose(simulated);
        press();
        QTRY_COMPARE(window->model().rowCount(), 72);
        QCOMPARE(window->model().patches()[0].name, QString("1"));
        QCOMPARE(window->model().patches()[71].name, QString("72"));
        QCOMPARE(window->model().patches()[0].L, 55.0);
        press(); // off
        action("close_chart")->trigger();
        QCOMPARE(window->chart().count(), size_t(0));
        QCOMPARE(window->buddy().getMode(), SpectroBuddy::SPOT_MODE);
    }

    void aFileThatIsNoChartIsToldInWords()
    {
        const QString path = write("nothing here\n");
        const FileDialogAnswer answer(path);
        const MessageBoxAnswer box;
        action("open_chart")->trigger();
        QVERIFY2(box.text.startsWith(path + ":"), qPrintable(box.text));
        QCOMPARE(window->chart().count(), size_t(0));
    }

    void withoutAddModeASpotAltersTheSelectedPatch()
    {
        choose(simulated);
        qputenv("SIMSPECTRO_DELAY_MS", "1000");
        press();
        window->buddy().fireSpotLab(1, 1, 1);
        window->buddy().fireSpotLab(2, 2, 2);
        QCOMPARE(window->model().rowCount(), 2);
        auto *list = window->findChild<PatchListView *>("patch_list");
        list->setCurrentIndex(window->model().index(0, 0));
        window->instrumentBox()->findChild<QCheckBox *>("add_box")->setChecked(false);
        window->buddy().fireSpotLab(3, 3, 3);
        QCOMPARE(window->model().rowCount(), 2);
        QCOMPARE(window->model().patches()[0].L, 3.0);
        QCOMPARE(window->model().patches()[1].L, 2.0);
    }

    void theChoiceOfInstrumentIsKept()
    {
        const std::string path = folder->filePath("settings.db").toStdString();
        window.reset();
        registry = std::make_unique<TaviRegistry>(path);
        open();
        choose(simulated);
        window->close();
        window.reset();
        registry = std::make_unique<TaviRegistry>(path);
        open();
        QCOMPARE(combo()->currentText(), simulated);
    }

    void theWindowMayBeClosedInTheMiddleOfARead()
    {
        choose(simulated);
        qputenv("SIMSPECTRO_DELAY_MS", "5");
        press();
        QTRY_VERIFY(window->model().rowCount() > 3);
        window->close();
        const int rows = window->model().rowCount();
        QTest::qWait(300); // as long as sixty patches take
        QCOMPARE(window->model().rowCount(), rows);
        window.reset();
    }

    void theListFollowsItsEnd()
    {
        choose(simulated);
        press();
        QTRY_COMPARE(window->model().rowCount(), 1617);
        auto *list = window->findChild<PatchListView *>("patch_list");
        const QModelIndex last = window->model().index(1616, 0);
        QTRY_VERIFY(list->viewport()->rect().intersects(list->visualRect(last)));
        // Not when the user has gone back.
        list->scrollToTop();
        window->buddy().fireSpotLab(1, 1, 1);
        QTest::qWait(100); // longer than the list takes to follow
        QCOMPARE(list->indexAt({5, 5}).row(), 0);
    }

private:
    void open()
    {
        window = std::make_unique<MainWindow>(*registry);
        window->restoreInstrument();
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    QAction *action(const char *name) const { return window->findChild<QAction *>(name); }
    QString label(const char *name) const { return window->findChild<QLabel *>(name)->text(); }
    QComboBox *combo() const { return window->instrumentBox()->findChild<QComboBox *>("instrument_combo"); }
    void choose(const QString &name)
    {
        QVERIFY(combo()->findText(name) >= 0);
        combo()->setCurrentText(name);
        Q_EMIT combo()->textActivated(name);
    }
    void press()
    {
        QTest::mouseClick(window->instrumentBox()->findChild<QPushButton *>("activate_button"), Qt::LeftButton);
    }
    QString write(const QByteArray &content)
    {
        const QString path = folder->filePath(QString("input%1.txt").arg(++inputs));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    std::unique_ptr<TaviRegistry> registry;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<MainWindow> window;
    int inputs = 0;
};

TAVI_GUI_TEST_MAIN(TestProofcheckWindow)
#include "tst_proofcheck_window.moc"
