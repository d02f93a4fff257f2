// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "taviapp/densitylut_cc.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavilog.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <QFile>

#include <dlfcn.h>
#include <memory>

namespace {

int keepText(void *context, char const *text)
{
    static_cast<QStringList *>(context)->append(QString::fromUtf8(text));
    return 0;
}

int noLab(void *, double, double, double)
{
    return 0;
}

} // namespace

/// Loading, opening, closing, and what a loaded plug-in answers.
class TestOrloInstrument : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        OrloInstrument instrument;
        QVERIFY(!instrument.enabled());
        QVERIFY(!instrument.hasLab());
        QVERIFY(!instrument.hasDensity());
        QVERIFY(!instrument.hasLinearisation());
        QVERIFY(!instrument.hasLinChartGenerator());
        QVERIFY(!instrument.isStripReader());
        QVERIFY(!instrument.isPrinter());
        QVERIFY(instrument.dllFilename().empty());
        QVERIFY(instrument.getChartName(SERVER_COLOURSPACE_CMYK).empty());
        double value = 0;
        const DENSITYLUT_CC lut;
        QCOMPARE(instrument.getLinearisationChart(lut.lut(), &value, 1), 0);
        QCOMPARE(instrument.getComboColourChart(nullptr, 1), 0);
        instrument.abort();
        instrument.close();
        QCOMPARE(instrument.readSpotLab(noLab, nullptr), -1);
    }

    void loadLeavesTheDeviceClosed()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), 0);
        QVERIFY(!instrument.enabled());
        QCOMPARE(plugin->opens.load(), 0);
        QCOMPARE(instrument.dllFilename(), std::string("one.so"));
        QVERIFY(instrument.hasLab());
        QCOMPARE(instrument.readSpotLab(noLab, nullptr), -1);
        instrument.close();
        QCOMPARE(plugin->closes.load(), 0);
        QVERIFY(instrument.dllFilename().empty());
    }

    void openOpensTheDeviceAndCloseClosesIt()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("one.so", false), 0);
        QVERIFY(instrument.enabled());
        QCOMPARE(plugin->opens.load(), 1);
        instrument.close();
        QVERIFY(!instrument.enabled());
        QCOMPARE(plugin->closes.load(), 1);
        instrument.close();
        QCOMPARE(plugin->closes.load(), 1);
    }

    void theDestructorClosesTheDevice()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        {
            OrloInstrument instrument;
            QCOMPARE(instrument.open("Scripted", true), 0);
        }
        QCOMPARE(plugin->closes.load(), 1);
    }

    void openAndLoadPassThroughTeardown()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        QCOMPARE(instrument.open("Scripted", true), 0);
        QCOMPARE(plugin->closes.load(), 1);
        QCOMPARE(instrument.load("Scripted", true), 0);
        QCOMPARE(plugin->closes.load(), 2);
        QVERIFY(!instrument.enabled());
    }

    void aNullRecordLeavesTheDriverAsItIs()
    {
        ReadersFolder readers;
        readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        QCOMPARE(instrument.open(nullptr), -1);
        QCOMPARE(instrument.load(static_cast<const SPECTROPHOTOMETERINFO *>(nullptr)), -1);
        QCOMPARE(instrument.open("no such instrument", true), -1);
        QVERIFY(instrument.enabled());
    }

    void aRecordOfTheCallersIsCopied()
    {
        ReadersFolder readers;
        readers.add("scripted", "one.so");
        OrloInstrument instrument;
        {
            char name[] = "Mine";
            char file[] = "one.so";
            SPECTROPHOTOMETERINFO info = {};
            info.name = name;
            info.dll_filename = file;
            info.flags = SPECTRO_FLAG_LAB | SPECTRO_FLAG_STRIPREADER | SPECTRO_FLAG_LINCHARTGENERATOR;
            QCOMPARE(instrument.open(&info), 0);
        }
        QCOMPARE(instrument.dllFilename(), std::string("one.so"));
        QVERIFY(instrument.isStripReader());
        QVERIFY(!instrument.isPrinter());
        // Only what the record's flags promise is looked up.
        QVERIFY(!instrument.hasLab());
        QVERIFY(!instrument.hasDensity());
        QVERIFY(instrument.hasLinearisation());
        QVERIFY(instrument.hasLinChartGenerator());
    }

    void aMissingMandatoryEntryRefusesThePlugin_data()
    {
        QTest::addColumn<QString>("entry");
        for (const char *entry :
             {"Open", "Close", "ReadLinearisation", "ReadSpotDensities", "ReadSpotLab", "ReadComboColourChart",
              "GetComboColourChart", "GetLinChart", "GetLinChartNames", "PrintNReadComboColourChart"})
            QTest::newRow(entry) << entry;
    }

    void aMissingMandatoryEntryRefusesThePlugin()
    {
        QFETCH(QString, entry);
        ReadersFolder readers;
        readers.add("scripted_without_" + entry, "lacking.so");
        expectLog("orloinstrument: OrloInstrument::init: Cannot get dll address for Spectrophotometer" + entry);
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), -1);
        QVERIFY(instrument.dllFilename().empty());
        QVERIFY(!instrument.hasLinearisation());
        QCOMPARE(recorder().count("Cannot get dll address"), 1); // the first missing one ends the load
    }

    void anEntryWithoutItsFlagIsNotNeeded()
    {
        ReadersFolder readers;
        readers.add("scripted_without_ReadSpotLab", "lacking.so")->flags = 0x0402;
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        QVERIFY(!instrument.hasLab());
        QCOMPARE(instrument.readSpotLab(noLab, nullptr), -1);
    }

    void aPluginThatIsGoneFailsToLoad()
    {
        ReadersFolder readers;
        QVERIFY(QFile::copy(TEST_PLUGIN_FOLDER "/scripted.so", readers.path() + "/one.so"));
        QVERIFY(OrloInstrument::getInstrumentList());
        QVERIFY(QFile::remove(readers.path() + "/one.so"));
        expectLog("orloinstrument: OrloInstrument::init: Failed to load plugin readers/one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), -1);
        QVERIFY(!instrument.enabled());
    }

    void aFailedLoadLeavesTheDriverEmpty()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        readers.add("scripted_without_Close", "two.so")->name = "Broken";
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        expectLog("Cannot get dll address for SpectrophotometerClose");
        QCOMPARE(instrument.load("Broken", true), -1);
        QVERIFY(!instrument.enabled());
        QVERIFY(instrument.dllFilename().empty());
        QCOMPARE(plugin->closes.load(), 1);
    }

    void aPathThatDoesNotFitIsRefused()
    {
        const ReadersFolder readers;
        QByteArray file = QByteArray(600, 'x') + ".so";
        char name[] = "Long";
        SPECTROPHOTOMETERINFO info = {};
        info.name = name;
        info.dll_filename = file.data();
        info.flags = SPECTRO_FLAG_LAB;
        expectLog("Failed to load plugin readers/xxxx");
        OrloInstrument instrument;
        QCOMPARE(instrument.load(&info), -1);
    }

    void anUnknownInternalPluginIsRefused()
    {
        const ReadersFolder readers;
        char name[] = "Crystal ball";
        char file[] = "crystalball.orloinstrument";
        SPECTROPHOTOMETERINFO info = {};
        info.name = name;
        info.dll_filename = file;
        expectLog("orloinstrument: OrloInstrument::init: Unknown internal plugin Crystal ball");
        OrloInstrument instrument;
        QCOMPARE(instrument.load(&info), -1);
        QVERIFY(instrument.dllFilename().empty());
    }

    void theInternalInstrumentsHaveTheirEntries_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("lab");
        QTest::addColumn<bool>("density");
        QTest::addColumn<bool>("linearisation");
        QTest::addColumn<bool>("generator");
        QTest::newRow("cmyk") << QByteArray("tabdelimitedcmyk.orloinstrument") << true << true << true << true;
        QTest::newRow("kcmy") << QByteArray("tabdelimitedkcmy.orloinstrument") << true << true << true << true;
        // More than its flags announce.
        QTest::newRow("lab") << QByteArray("tabdelimitedlab.orloinstrument") << true << true << true << false;
        QTest::newRow("cgats") << QByteArray("cgatslab.orloinstrument") << true << false << false << false;
    }

    void theInternalInstrumentsHaveTheirEntries()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, lab);
        QFETCH(bool, density);
        QFETCH(bool, linearisation);
        QFETCH(bool, generator);
        const ReadersFolder readers;
        OrloInstrument instrument;
        QCOMPARE(instrument.load(file.constData(), false), 0);
        QCOMPARE(instrument.hasLab(), lab);
        QCOMPARE(instrument.hasDensity(), density);
        QCOMPARE(instrument.hasLinearisation(), linearisation);
        QCOMPARE(instrument.hasLinChartGenerator(), generator);
        QVERIFY(!instrument.isPrinter());
        QVERIFY(!instrument.isStripReader());
        QVERIFY(instrument.getChartName(SERVER_COLOURSPACE_CMYK).empty());
    }

    void aDeviceThatDoesNotOpenIsLogged()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_open = [](InstrumentMessageCallback, void *) -> void * {
            return nullptr;
        };
        expectLog("orloinstrument: OrloInstrument::init: Spectrophotometer failed to initialise");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), -1);
        QVERIFY(!instrument.enabled());
        QVERIFY(instrument.dllFilename().empty());
        QCOMPARE(plugin->closes.load(), 0);
    }

    void textsOfOpenAndCloseArriveAtOnce()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_open = [plugin](InstrumentMessageCallback message, void *context) -> void * {
            message(context, 0, "unit", nullptr, "Found Gretag Spectrolino on %s", "port 1");
            message(context, 1, "unit", "SpectrophotometerOpen", "Cannot open file %s", "x");
            return plugin;
        };
        plugin->on_close = [](InstrumentMessageCallback message, void *context) {
            message(context, 0, "unit", "Close", "Reset done");
        };
        QStringList texts;
        OrloInstrument instrument;
        instrument.setMessageCallback(keepText, &texts);
        expectLog("orloinstrument: OrloInstrument: SpectrophotometerOpen Cannot open file x");
        QCOMPARE(instrument.open("Scripted", true), 0);
        QCOMPARE(texts, QStringList{"Found Gretag Spectrolino on port 1"});
        QCOMPARE(recorder().kinds(), QVector<int>{TAVILOG_PLUGIN});
        instrument.close();
        QCOMPARE(texts.last(), QString("Reset done"));
    }

    void withoutAReceiverTextsOfOpenGoToTheLog()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_open = [plugin](InstrumentMessageCallback message, void *context) -> void * {
            message(context, 0, "unit", nullptr, "Reset done");
            return plugin;
        };
        expectLog("orloinstrument: OrloInstrument:  Reset done");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        QCOMPARE(recorder().kinds(), QVector<int>{TAVILOG_PLUGIN});
    }

    void theChartNameIsAskedForWithAClearedBuffer()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted_names", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), 0);
        QVERIFY(!instrument.hasLinChartGenerator());
        QCOMPARE(instrument.getChartName(SERVER_COLOURSPACE_RGB), std::string()); // wrote nothing
        plugin->on_get_lin_chart_names = [](SERVER_COLOURSPACE space, char *buffer) {
            qstrcpy(buffer, space == SERVER_COLOURSPACE_CMYK ? "Strip CMYK" : "other");
        };
        QCOMPARE(instrument.getChartName(SERVER_COLOURSPACE_CMYK), std::string("Strip CMYK"));
        plugin->on_get_lin_chart_names = [](SERVER_COLOURSPACE, char *buffer) {
            memset(buffer, 'x', 8192);
        };
        QCOMPARE(instrument.getChartName(SERVER_COLOURSPACE_CMYK).size(), size_t(8191)); // unterminated
        // The other way to a linearisation chart is not there.
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        double values[3];
        QCOMPARE(instrument.getLinearisationChart(lut.lut(), values, 3), 0);
    }

    void theLinearisationChartNeedsAllItsArguments()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_get_lin_chart = [](const DENSITYLUT *, double *values, unsigned long count) {
            values[0] = 42.0;
            return static_cast<int>(count);
        };
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), 0);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        double values[3] = {};
        QCOMPARE(instrument.getLinearisationChart(nullptr, values, 3), 0);
        QCOMPARE(instrument.getLinearisationChart(lut.lut(), nullptr, 3), 0);
        QCOMPARE(instrument.getLinearisationChart(lut.lut(), values, 0), 0);
        QCOMPARE(values[0], 0.0);
        QCOMPARE(instrument.getLinearisationChart(lut.lut(), values, 3), 3);
        QCOMPARE(values[0], 42.0);
        QCOMPARE(instrument.getChartName(SERVER_COLOURSPACE_CMYK), std::string());
    }

    void theChartAnswerNeedsAChart()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_get_chart = [](const TAVICOMBOCOLOUR *, unsigned long parameter) {
            return static_cast<int>(parameter) * 2;
        };
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), 0);
        const TAVICOMBOCOLOUR patch = {};
        QCOMPARE(instrument.getComboColourChart(nullptr, 4), 0);
        QCOMPARE(instrument.getComboColourChart(&patch, 4), 8);
    }

    void onlyItsOwnEventIsAnswered()
    {
        OrloInstrument instrument;
        QEvent own(static_cast<QEvent::Type>(1000));
        QVERIFY(instrument.event(&own));
        for (const QEvent::Type type : {QEvent::Timer, QEvent::MetaCall, QEvent::DeferredDelete,
                                        static_cast<QEvent::Type>(1001), QEvent::None}) {
            QEvent other(type);
            QVERIFY2(!instrument.event(&other), QByteArray::number(type).constData());
        }
        QVERIFY(!instrument.event(nullptr));
    }

    void deleteLaterHasNoEffect()
    {
        OrloInstrument instrument; // were it deleted, the stack would be
        instrument.deleteLater();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!instrument.enabled());
    }

    void anOpenThatIsClosedFromInsideItFails()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        plugin->on_open = [&](InstrumentMessageCallback, void *) -> void * {
            instrument.close(); // as a dialog's event loop may do
            return plugin;
        };
        QCOMPARE(instrument.open("Scripted", true), -1);
        QVERIFY(!instrument.enabled());
        QVERIFY(instrument.dllFilename().empty());
        QCOMPARE(plugin->closes.load(), 1); // the handle that came too late was not kept
    }

    void anOpenThatIsOvertakenByAnotherLeavesTheOther()
    {
        ReadersFolder readers;
        ScriptedPlugin *first = readers.add("scripted", "one.so");
        ScriptedPlugin *second = readers.add("scripted", "two.so");
        second->name = "Second";
        OrloInstrument instrument;
        first->on_open = [&](InstrumentMessageCallback, void *) -> void * {
            [&] {
                QCOMPARE(instrument.open("Second", true), 0);
            }();
            return first;
        };
        QCOMPARE(instrument.open("Scripted", true), -1);
        QVERIFY(instrument.enabled());
        QCOMPARE(instrument.dllFilename(), std::string("two.so"));
        QCOMPARE(first->closes.load(), 1);
        QCOMPARE(second->closes.load(), 0);
    }

    void aDriverMayBeDestroyedWhileItOpens()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        auto instrument = std::make_unique<OrloInstrument>();
        plugin->on_open = [&](InstrumentMessageCallback message, void *context) -> void * {
            instrument.reset();
            message(context, 0, "unit", "Open", "Reset done"); // nobody is there any more
            return plugin;
        };
        expectLog("orloinstrument: OrloInstrument: Open Reset done");
        OrloInstrument *raw = instrument.get();
        QCOMPARE(raw->open("Scripted", true), -1);
        QVERIFY(!instrument);
        QCOMPARE(plugin->closes.load(), 1);
    }

    void aDriverMayBeDestroyedByATextOfItsClose()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        auto *instrument = new OrloInstrument;
        QCOMPARE(instrument->open("Scripted", true), 0);
        plugin->on_close = [&](InstrumentMessageCallback, void *) {
            delete instrument;
        };
        QCOMPARE(instrument->open("Scripted", true), -1);
        QCOMPARE(plugin->opens.load(), 1);
    }

    void anOpenFromInsideTheClosingIsRefused()
    {
        ReadersFolder readers;
        ScriptedPlugin *first = readers.add("scripted", "one.so");
        ScriptedPlugin *second = readers.add("scripted", "two.so");
        second->name = "Second";
        int inner = 0;
        {
            OrloInstrument instrument;
            QCOMPARE(instrument.open("Scripted", true), 0);
            first->on_close = [&](InstrumentMessageCallback, void *) {
                inner = instrument.open("Second", true);
            };
            QCOMPARE(instrument.load("Scripted", true), 0);
            QCOMPARE(inner, -1);
            QCOMPARE(instrument.dllFilename(), std::string("one.so"));
            QCOMPARE(instrument.open("Scripted", true), 0);
            inner = 0;
        } // in the destructor too
        QCOMPARE(inner, -1);
        QCOMPARE(second->opens.load(), 0);
        QCOMPARE(first->closes.load(), first->opens.load());
    }

    void aDriverDestroyedInOpenLeavesThePluginLoadedUntilItReturns()
    {
        // A file that nobody else holds in memory: what Open returns into must still be there.
        ReadersFolder readers;
        QVERIFY(QFile::copy(TEST_PLUGIN_FOLDER "/scripted.so", readers.path() + "/free.so"));
        auto instrument = std::make_unique<OrloInstrument>();
        QCOMPARE(instrument->load("free.so", false), 0);
        void *library = dlopen("readers/free.so", RTLD_NOW);
        QVERIFY(library);
        auto *plugin = reinterpret_cast<ScriptedPlugin *(*)()>(dlsym(library, "scripted_plugin"))();
        bool still_loaded = false;
        plugin->on_open = [&](InstrumentMessageCallback, void *) -> void * {
            dlclose(library);
            instrument.reset();
            void *again = dlopen("readers/free.so", RTLD_NOW | RTLD_NOLOAD);
            still_loaded = again != nullptr;
            if (again)
                dlclose(again);
            return nullptr;
        };
        OrloInstrument *raw = instrument.get();
        QCOMPARE(raw->open("free.so", false), -1);
        QVERIFY(still_loaded);
    }

    void severalDriversShareAPlugin()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument first;
        OrloInstrument second;
        QCOMPARE(first.open("Scripted", true), 0);
        QCOMPARE(second.open("Scripted", true), 0);
        first.close();
        QVERIFY(second.enabled());
        QCOMPARE(plugin->opens.load(), 2);
        QCOMPARE(plugin->closes.load(), 1);
    }
};

TAVI_TEST_MAIN(TestOrloInstrument)
#include "tst_orloinstrument.moc"
