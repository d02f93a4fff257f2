// SPDX-License-Identifier: MIT
#include "tests/plugins/misbehavingfixture.h"

#include <QDir>
#include <QFile>

#include <elf.h>
#include <link.h>
#include <sys/stat.h>

#include <functional>

/// Puts something into the plug-in folder.
using Prepare = std::function<void(MisbehavingFixture &)>;
Q_DECLARE_METATYPE(Prepare)

namespace {

const QStringList usual_instruments = {"CGATS / ISO 12642 file", "Lab text file (Lab sample order)", "Scripted"};

QByteArray builtPlugin()
{
    QFile file(TEST_PLUGIN_FOLDER "/scripted.so");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int loadedLibraries()
{
    int count = 0;
    dl_iterate_phdr(
        [](dl_phdr_info *, size_t, void *context) {
            ++*static_cast<int *>(context);
            return 0;
        },
        &count);
    return count;
}

} // namespace

/// A plug-in folder that holds what is no plug-in, or none that can be used, or very many.
class TestMisbehavingFiles : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsNoInstrumentIsNotOffered_data()
    {
        QTest::addColumn<Prepare>("prepare");
        QTest::addColumn<QString>("log"); // empty: nothing
        const auto row = [](const char *name, const Prepare &prepare, const char *log = "") {
            QTest::newRow(name) << prepare << QString(log);
        };
        const auto file = [](const QByteArray &content) {
            return [content](MisbehavingFixture &f) {
                f.readers.addFile("bad.so", content);
            };
        };
        const auto link = [](const char *target) {
            return [target](MisbehavingFixture &f) {
                QVERIFY(QFile::link(target, f.readers.path() + "/bad.so"));
            };
        };
        row("null info", [](MisbehavingFixture &f) { f.addBad()->null_info = true; });
        row(
            "no entry for the info", [](MisbehavingFixture &f) { f.addBad("scripted_without_GetInfo"); },
            "orloinstrument: buildInstrumentList: Could no get SpectrophotometerInfo for bad.so");
        row(
            "null name", [](MisbehavingFixture &f) { f.addBad()->null_name = true; },
            "orloinstrument: buildInstrumentList: No name in SpectrophotometerInfo for bad.so");
        row(
            "empty name", [](MisbehavingFixture &f) { f.addBad()->name.clear(); },
            "orloinstrument: buildInstrumentList: No name in SpectrophotometerInfo for bad.so");
        row("no flags", [](MisbehavingFixture &f) { f.addBad()->flags = 0; });
        row("reads without a kind", [](MisbehavingFixture &f) { f.addBad()->flags = 0x0230; });
        row("text", file("this is no shared object\n"));
        row("zeros", file(QByteArray(100000, '\0')));
        row("nothing but the magic number", file(builtPlugin().left(4)));
        row("empty file", file(""));
        QByteArray foreign = builtPlugin();
        foreign[18] = EM_S390; // the machine, low byte first
        row("for another machine", file(foreign));
        row("directory", [](MisbehavingFixture &f) { QVERIFY(QDir(f.readers.path()).mkdir("bad.so")); });
        row("dangling link", link("nowhere.so"));
        row("link to itself", link("bad.so"));
        row("link to a directory", link("."));
        row("link to a device", link("/dev/zero"));
        // To open one would be to wait for somebody who writes.
        row("pipe", [](MisbehavingFixture &f) {
            QCOMPARE(mkfifo((f.readers.path() + "/bad.so").toUtf8().constData(), 0600), 0);
        });
    }

    void whatIsNoInstrumentIsNotOffered()
    {
        QFETCH(Prepare, prepare);
        QFETCH(QString, log);
        MisbehavingFixture f;
        prepare(f);
        if (!log.isEmpty())
            expectLog(log);
        f.findInstrumentsAnew();
        QCOMPARE(f.listedInstruments(), usual_instruments);
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    /// As it stands there while it is being copied, or after a disk was full.
    void aPluginThatIsCutShortIsNotLoaded()
    {
        const QByteArray whole = builtPlugin();
        MisbehavingFixture f;
        int loaded = 0;
        constexpr int parts = 64;
        for (int i = 0; i < parts; ++i) {
            QFile::remove(f.readers.path() + "/bad.so"); // once whole it is in use: the next is another file
            f.readers.addFile("bad.so", whole.left(static_cast<int>(whole.size() / parts * i)));
            f.findInstrumentsAnew();
            // What a debugger reads stands at the end, and is not missed.
            const bool is_there = f.listedInstruments().size() > usual_instruments.size();
            loaded += is_there;
            QVERIFY2(is_there == (loaded > 0), QByteArray::number(i).constData());
        }
        QVERIFY2(loaded > 0 && loaded < parts - 4, QByteArray::number(loaded).constData());
        QVERIFY(QFile::remove(f.readers.path() + "/bad.so"));
        f.findInstrumentsAnew();
        QVERIFY(f.allIsAsBefore());
    }

    void twoHundredPluginsAreAllThere()
    {
        constexpr int count = 200;
        MisbehavingFixture f;
        QStringList expected = usual_instruments;
        std::vector<ScriptedPlugin *> plugins;
        for (int i = 0; i < count; ++i) {
            ScriptedPlugin *plugin = f.readers.add("scripted", QStringLiteral("%1.so").arg((i * 77) % count));
            plugin->name = "Instrument " + std::to_string(1000 + i);
            plugin->flags = f.plugin->flags;
            plugin->on_spot_lab = [i](const ScriptedPlugin::Read &read) {
                read.sendLab(i, 0, 0);
                return 0;
            };
            plugins.push_back(plugin);
            expected.insert(1 + i, QString::fromStdString(plugin->name));
        }
        const int libraries = loadedLibraries();
        f.findInstrumentsAnew();
        QCOMPARE(f.listedInstruments(), expected);
        for (int i = 0; i < count; i += 40) {
            f.choose(QString::fromStdString(plugins[static_cast<size_t>(i)]->name));
            f.press();
            QVERIFY(f.looksOn());
            QTRY_COMPARE(f.lightnessOfNewSpots().size(), size_t(i / 40 + 1));
            QCOMPARE(f.lightnessOfNewSpots().back(), double(i));
            f.press();
            QVERIFY(f.looksOff());
        }
        QCOMPARE(loadedLibraries(), libraries); // those the folder holds
        QVERIFY(f.allIsAsBefore());
    }

    void manyPluginsOfOneNameAreAllListed()
    {
        MisbehavingFixture f;
        for (int i = 0; i < 20; ++i)
            f.readers.add("scripted", QStringLiteral("twin%1.so").arg(i))->flags = f.plugin->flags;
        f.findInstrumentsAnew();
        QCOMPARE(f.listedInstruments().count("Scripted"), 21);
        QVERIFY(f.looksOff());
    }
};

TAVI_GUI_TEST_MAIN(TestMisbehavingFiles)
#include "tst_misbehaving_files.moc"
