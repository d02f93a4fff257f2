// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavipacket.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <QDir>
#include <QFile>

#include <dlfcn.h>

namespace {

QStringList names()
{
    QStringList list;
    for (const SPECTROPHOTOMETERINFO *info = OrloInstrument::getInstrumentList(); info; info = NextInList(info))
        list.append(QString::fromUtf8(info->name));
    return list;
}

const QStringList internal_names = {"CGATS / ISO 12642 file", "CMYK text file (CMYK sample order)",
                                    "CMYK text file (KCMY sample order)", "Lab text file (Lab sample order)"};

const SPECTROPHOTOMETERINFO *find(const char *name)
{
    for (const SPECTROPHOTOMETERINFO *info = OrloInstrument::getInstrumentList(); info; info = NextInList(info)) {
        if (qstrcmp(info->name, name) == 0)
            return info;
    }
    return nullptr;
}

} // namespace

class TestInstrumentDiscovery : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingDirectoryGivesTheInternalInstrumentsSortedByName()
    {
        const ReadersFolder readers{QString()};
        QCOMPARE(names(), internal_names);
    }

    void anEmptyDirectoryGivesTheInternalInstrumentsToo()
    {
        const ReadersFolder readers;
        QCOMPARE(names(), internal_names);
    }

    void theInternalInstrumentsHaveTheirCards_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("rev");
        QTest::addColumn<uint>("flags");
        QTest::newRow("cmyk") << QByteArray("CMYK text file (CMYK sample order)")
                              << QByteArray("tabdelimitedcmyk.orloinstrument") << QByteArray("1.03") << 0x2412U;
        QTest::newRow("kcmy") << QByteArray("CMYK text file (KCMY sample order)")
                              << QByteArray("tabdelimitedkcmy.orloinstrument") << QByteArray("1.01") << 0x2412U;
        QTest::newRow("lab") << QByteArray("Lab text file (Lab sample order)")
                             << QByteArray("tabdelimitedlab.orloinstrument") << QByteArray("1.03") << 0x2221U;
        QTest::newRow("cgats") << QByteArray("CGATS / ISO 12642 file") << QByteArray("cgatslab.orloinstrument")
                               << QByteArray("1.01") << 0x2221U;
    }

    void theInternalInstrumentsHaveTheirCards()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, rev);
        QFETCH(uint, flags);
        const ReadersFolder readers;
        const SPECTROPHOTOMETERINFO *info = find(name.constData());
        QVERIFY(info);
        QCOMPARE(QByteArray(info->dll_filename), file);
        QCOMPARE(QByteArray(info->rev), rev);
        QCOMPARE(info->flags, flags);
    }

    void theDirectoryIsTheFirstThatExists_data()
    {
        QTest::addColumn<QStringList>("existing");
        QTest::addColumn<QString>("found");
        QTest::newRow("readers") << QStringList{"readers", "../readers", "lib/readers", "../lib/readers"}
                                 << "readers";
        QTest::newRow("../readers") << QStringList{"../readers", "lib/readers", "../lib/readers"} << "../readers";
        QTest::newRow("lib/readers") << QStringList{"lib/readers", "../lib/readers"} << "lib/readers";
        QTest::newRow("../lib/readers") << QStringList{"../lib/readers"} << "../lib/readers";
        QTest::newRow("none") << QStringList{} << "readers";
        QTest::newRow("nothing else") << QStringList{"../../readers", "plugins/readers"} << "readers";
    }

    void theDirectoryIsTheFirstThatExists()
    {
        QFETCH(QStringList, existing);
        QFETCH(QString, found);
        const ReadersFolder readers{QString()};
        for (const QString &path : existing)
            QVERIFY(QDir().mkpath(path));
        QCOMPARE(QString::fromStdString(OrloInstrument::instrumentDirectory()), found);
        QDir().rmdir("../../readers");
    }

    void pluginsAreFoundInTheDirectory()
    {
        ReadersFolder readers("../lib/readers");
        readers.add("scripted", "one.so");
        QCOMPARE(names(), internal_names + QStringList{"Scripted"});
        OrloInstrument instrument;
        QCOMPARE(instrument.load("Scripted", true), 0);
    }

    void aDirectoryThatCannotBeListedLeavesTheListEmptyForALaterTry()
    {
        ReadersFolder readers{QString()};
        QFile file("readers");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        expectLog("orloinstrument: buildInstrumentList: Cannot retrieve directory for readers", 2);
        QVERIFY(!OrloInstrument::getInstrumentList());
        QVERIFY(!OrloInstrument::getInstrumentList());
        QVERIFY(file.remove());
        QCOMPARE(names(), internal_names);
    }

    void theListIsMadeOnceAndKept()
    {
        ReadersFolder readers;
        SPECTROPHOTOMETERINFO *list = OrloInstrument::getInstrumentList();
        readers.add("scripted", "late.so");
        OrloInstrument::buildInstrumentList();
        QCOMPARE(OrloInstrument::getInstrumentList(), list);
        QCOMPARE(names(), internal_names);
    }

    void onlyTheTwoMeasuringFlagsKeepAPlugin_data()
    {
        QTest::addColumn<uint>("flags");
        QTest::addColumn<bool>("kept");
        QTest::newRow("Lab") << 0x0001U << true;
        QTest::newRow("density") << 0x0002U << true;
        QTest::newRow("unknown bit") << 0x0004U << false;
        QTest::newRow("none") << 0U << false;
        QTest::newRow("monitor") << 0x0040U << false;
        QTest::newRow("Lab and monitor") << 0x0041U << true;
        QTest::newRow("reads without a kind") << 0x0230U << false;
    }

    void onlyTheTwoMeasuringFlagsKeepAPlugin()
    {
        QFETCH(uint, flags);
        QFETCH(bool, kept);
        ReadersFolder readers;
        readers.add("scripted", "one.so")->flags = flags;
        QCOMPARE(names().contains("Scripted"), kept); // a record that is dropped and not freed shows as a leak
    }

    void discoveryFillsInTheFileName()
    {
        ReadersFolder readers;
        readers.add("scripted", "some-name.so");
        QCOMPARE(QByteArray(find("Scripted")->dll_filename), QByteArray("some-name.so"));
    }

    void theListIsSortedByDisplayName()
    {
        ReadersFolder readers;
        readers.add("scripted", "a.so")->name = "Zebra";
        readers.add("scripted", "b.so")->name = "Antelope";
        readers.add("scripted", "c.so")->name = "D reader";
        const QStringList expected = {
            "Antelope", internal_names[0], internal_names[1], internal_names[2], "D reader", internal_names[3],
            "Zebra"};
        QCOMPARE(names(), expected);
    }

    void aPluginWithoutAnIdentityCardIsLogged()
    {
        ReadersFolder readers;
        readers.add("scripted_without_GetInfo", "silent.so");
        expectLog("orloinstrument: buildInstrumentList: Could no get SpectrophotometerInfo for silent.so");
        QCOMPARE(names(), internal_names);
    }

    void aNullIdentityCardIsPassedOver()
    {
        ReadersFolder readers;
        readers.add("scripted", "null.so")->null_info = true;
        QCOMPARE(names(), internal_names);
    }

    void whatIsNoPluginIsPassedOverSilently()
    {
        ReadersFolder readers;
        readers.addFile("text.so", "this is no shared object\n");
        readers.addFile("empty.so", "");
        readers.addFile("notes.txt", "readers go here\n");
        readers.addFile("._fork.so", "resource fork");
        QVERIFY(QDir(readers.path()).mkdir("folder.so"));
        QVERIFY(QFile::link("nowhere.so", readers.path() + "/dangling.so"));
        readers.add("scripted", "scripted.SO"); // the extension is exact
        QCOMPARE(names(), internal_names);
    }

    void aLinkToAPluginIsAPlugin()
    {
        ReadersFolder readers;
        readers.add("scripted", "real.bin");
        QVERIFY(QFile::link("real.bin", readers.path() + "/linked.so"));
        QCOMPARE(QByteArray(find("Scripted")->dll_filename), QByteArray("linked.so"));
    }

    void discoveryLeavesNothingLoaded()
    {
        ReadersFolder readers;
        const QString path = readers.path() + "/once.so";
        QVERIFY(QFile::copy(TEST_PLUGIN_FOLDER "/scripted.so", path));
        QVERIFY(find("Scripted"));
        void *still_there = dlopen("readers/once.so", RTLD_NOW | RTLD_NOLOAD);
        QVERIFY(!still_there);
    }

    void anInstrumentIsChosenByTheBeginningOfItsName_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("by_name");
        QTest::addColumn<QByteArray>("file"); // empty: nothing is chosen
        QTest::newRow("whole name") << QByteArray("Lab text file (Lab sample order)") << true
                                    << QByteArray("tabdelimitedlab.orloinstrument");
        QTest::newRow("beginning") << QByteArray("Lab") << true << QByteArray("tabdelimitedlab.orloinstrument");
        QTest::newRow("first match") << QByteArray("CMYK text file") << true
                                     << QByteArray("tabdelimitedcmyk.orloinstrument");
        QTest::newRow("revision") << QByteArray("CGATS / ISO 12642 file Rev 9.99") << true
                                  << QByteArray("cgatslab.orloinstrument");
        QTest::newRow("revision in the middle")
            << QByteArray("Lab Rev 1 Rev 2") << true << QByteArray("tabdelimitedlab.orloinstrument");
        QTest::newRow("empty") << QByteArray("") << true << QByteArray("cgatslab.orloinstrument");
        QTest::newRow("only a revision") << QByteArray(" Rev 1") << true << QByteArray("cgatslab.orloinstrument");
        QTest::newRow("too long") << QByteArray("CGATS / ISO 12642 file!") << true << QByteArray();
        QTest::newRow("other case") << QByteArray("lab text") << true << QByteArray();
        QTest::newRow("file name") << QByteArray("tabdelimitedkcmy.orloinstrument") << false
                                   << QByteArray("tabdelimitedkcmy.orloinstrument");
        QTest::newRow("part of a file name") << QByteArray("tabdelimited") << false << QByteArray();
        QTest::newRow("name as file name") << QByteArray("CGATS / ISO 12642 file") << false << QByteArray();
        QTest::newRow("no file name") << QByteArray("") << false << QByteArray();
    }

    void anInstrumentIsChosenByTheBeginningOfItsName()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, by_name);
        QFETCH(QByteArray, file);
        const ReadersFolder readers;
        OrloInstrument instrument;
        QCOMPARE(instrument.load(text.constData(), by_name), file.isEmpty() ? -1 : 0);
        QCOMPARE(QByteArray::fromStdString(instrument.dllFilename()), file);
    }

    void aNullTextChoosesNothing()
    {
        const ReadersFolder readers;
        OrloInstrument instrument;
        QCOMPARE(instrument.load(nullptr, true), -1);
        QCOMPARE(instrument.open(nullptr, false), -1);
    }

    void freeingAListTakesTheAddressOfItsHead()
    {
        const ReadersFolder readers;
        OrloInstrument::freeInstrumentList(nullptr);
        SPECTROPHOTOMETERINFO *none = nullptr;
        OrloInstrument::freeInstrumentList(&none);
        QVERIFY(!none);

        SPECTROPHOTOMETERINFO *copy =
            DuplicatePacketList(TAVIPACKET_SPECTROPHOTOMETERINFO, OrloInstrument::getInstrumentList());
        OrloInstrument::freeInstrumentList(&copy);
        QVERIFY(!copy);
        QCOMPARE(names(), internal_names);

        SPECTROPHOTOMETERINFO *own = OrloInstrument::getInstrumentList();
        OrloInstrument::freeInstrumentList(&own);
        QVERIFY(!own);
        QCOMPARE(names(), internal_names); // made anew
    }
};

TAVI_TEST_MAIN(TestInstrumentDiscovery)
#include "tst_instrumentdiscovery.moc"
