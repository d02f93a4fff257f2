// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "instruments/spectro_fromfile.h"
#include "tests/plugins/simspectroplugin.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <QDir>

#include <link.h>

/// Of the address sanitizer; absent in other builds.
extern "C" size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace {

constexpr int warm_up_count = 20;
constexpr int cycle_count = 1000;
constexpr int discovery_count = 200;

/// What a program may lose bit by bit.
struct Holdings {
    int libraries = 0;
    int open_files = 0;
    size_t bytes = 0;

    static Holdings now()
    {
        Holdings found;
        dl_iterate_phdr(
            [](dl_phdr_info *, size_t, void *context) {
                ++*static_cast<int *>(context);
                return 0;
            },
            &found.libraries);
        found.open_files = QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
        found.bytes = __sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes() : 0;
        return found;
    }
    /// What is more than @a before; empty if nothing is.
    QString moreThan(const Holdings &before) const
    {
        if (libraries <= before.libraries && open_files <= before.open_files && bytes <= before.bytes)
            return {};
        return QStringLiteral("%1 libraries, %2 open files, %3 bytes")
            .arg(libraries - before.libraries)
            .arg(open_files - before.open_files)
            .arg(double(bytes) - double(before.bytes));
    }
};

/// How many files of this folder are loaded.
int loadedFrom(const QString &folder)
{
    struct Search {
        QByteArray prefix;
        int found;
    } search = {folder.toUtf8() + '/', 0};
    dl_iterate_phdr(
        [](dl_phdr_info *info, size_t, void *context) {
            auto *wanted = static_cast<Search *>(context);
            wanted->found += QByteArray(info->dlpi_name).contains(wanted->prefix);
            return 0;
        },
        &search);
    return search.found;
}

struct Plugin {
    QByteArray file;
    uint32_t flags;
    QString missing; ///< The entry that it lacks, if that makes it unusable.
};

} // namespace

/// Loading, opening and closing every plug-in there is, again and again. The leak sanitizer looks at the end; what is
/// still held, but more and more of it, is seen here.
class TestPluginCycles : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aThousandCyclesLeaveNothingBehind()
    {
        const SimspectroFile measured(cgatsTable("SAMPLE_ID LAB_L LAB_A LAB_B", "1 50 0 0\n"));
        const SimspectroEnvironment environment(measured.path());
        setSpectroFileChooser([&](const QString &, const QString &) { return QString::fromUtf8(measured.path()); });
        ReadersFolder readers;
        const std::vector<Plugin> plugins = allPlugins(readers);
        QVERIFY(plugins.size() >= 18);

        OrloInstrument instrument;
        Holdings before;
        int opened = 0;
        for (int cycle = -warm_up_count; cycle < cycle_count; ++cycle) {
            if (cycle == 0)
                before = Holdings::now();
            for (const Plugin &plugin : plugins) {
                QByteArray name = "Any name";
                QByteArray file = plugin.file;
                SPECTROPHOTOMETERINFO info = {};
                info.name = name.data();
                info.dll_filename = file.data();
                info.flags = plugin.flags;
                const bool usable = plugin.missing.isEmpty();
                if (!usable)
                    expectLog("Cannot get dll address for Spectrophotometer" + plugin.missing, 2);
                QCOMPARE(instrument.load(&info), usable ? 0 : -1);
                QCOMPARE(instrument.open(&info), usable ? 0 : -1);
                QCOMPARE(instrument.enabled(), usable);
                opened += usable;
                QCOMPARE(loadedFrom("readers"), int(usable && plugin.file.endsWith(".so")));
                instrument.close();
                QCOMPARE(loadedFrom("readers"), 0);
            }
            // Nor shall what the test keeps grow.
            QCOMPARE(recorder().takeProblems(), QStringList());
        }
        QCOMPARE(Holdings::now().moreThan(before), QString());
        QVERIFY(opened >= 8 * cycle_count);
        setSpectroFileChooser(nullptr);
    }

    /// The same for the list of what is installed.
    void discoveriesLeaveNothingBehind()
    {
        ReadersFolder readers;
        allPlugins(readers);
        Holdings before;
        for (int cycle = -warm_up_count; cycle < discovery_count; ++cycle) {
            if (cycle == 0)
                before = Holdings::now();
            expectLog("Could no get SpectrophotometerInfo for scripted_without_GetInfo.so");
            SPECTROPHOTOMETERINFO *list = OrloInstrument::getInstrumentList();
            QVERIFY(list);
            OrloInstrument::freeInstrumentList(&list);
            QCOMPARE(loadedFrom("readers"), 0);
            QCOMPARE(recorder().takeProblems(), QStringList());
        }
        QCOMPARE(Holdings::now().moreThan(before), QString());
    }

private:
    /// Puts every built plug-in into the folder; the internal instruments are among those that come back.
    static std::vector<Plugin> allPlugins(ReadersFolder &readers)
    {
        std::vector<Plugin> plugins;
        const QString without = "scripted_without_";
        const QDir built(TEST_PLUGIN_FOLDER);
        for (const QString &file : built.entryList({"*.so"})) {
            readers.addUnloaded(built.filePath(file), file);
            const QString entry = file.startsWith(without) ? file.mid(without.size()).chopped(3) : QString();
            const bool names = file.startsWith("scripted_names") || entry == "GetLinChartNames";
            plugins.push_back({file.toUtf8(), names ? 0x1333U : 0x1733U, entry == "GetInfo" ? QString() : entry});
        }
        readers.addUnloaded(SimspectroPlugin::path(), "simspectro.so");
        plugins.push_back({"simspectro.so", 0x0633, {}});
        for (const char *file : {"tabdelimitedcmyk", "tabdelimitedkcmy", "tabdelimitedlab", "cgatslab"})
            plugins.push_back({QByteArray(file) + ".orloinstrument", 0x0633, {}});
        return plugins;
    }
};

TAVI_TEST_MAIN(TestPluginCycles)
#include "tst_plugin_cycles.moc"
