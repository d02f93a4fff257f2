// SPDX-License-Identifier: MIT
#include "instruments/spectrostringkit.h"
#include "tests/instruments/messagetranslator.h"
#include "tests/support/tavitest.h"

#include <QCryptographicHash>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <atomic>
#include <thread>
#include <vector>

namespace {

/// The messages of a catalogue, by context.
QMap<QString, QStringList> readCatalogue(const QString &path)
{
    QMap<QString, QStringList> messages;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return messages;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name"))
            context = xml.readElementText();
        else if (xml.name() == QLatin1String("source"))
            messages[context].append(xml.readElementText());
    }
    return messages;
}

} // namespace

class TestSpectroStringKit : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void tableHas402RowsAndAClosingOne()
    {
        constexpr auto &table = SpectroStringKit::pluggedstrings;
        QCOMPARE(std::size(table), size_t(403));
        QCOMPARE(std::size(table[0]), size_t(2));
        for (int row = 0; row < 402; ++row) {
            QVERIFY2(!table[row][0].isEmpty(), qPrintable(QString::number(row)));
            QVERIFY2(!table[row][1].isEmpty(), qPrintable(QString::number(row)));
        }
        QVERIFY(table[402][0].isNull());
        QVERIFY(table[402][1].isNull());
    }

    void keysAreTheLowerCaseTextsInAscendingOrder()
    {
        for (int row = 0; row < 402; ++row) {
            const QString &key = SpectroStringKit::pluggedstrings[row][0];
            QCOMPARE(key, SpectroStringKit::pluggedstrings[row][1].toLower());
            if (row > 0)
                QVERIFY2(SpectroStringKit::pluggedstrings[row - 1][0] < key, qPrintable(key));
        }
    }

    void rowsStandAtTheirPlace_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("text");
        QTest::newRow("first") << 0 << "%s";
        QTest::newRow("trailing blank") << 9 << "A TDL ";
        QTest::newRow("capitals") << 39 << "Bad Command";
        QTest::newRow("longest kept in one piece")
            << 5 << "A command has been sent which is valid only when the SpectroScan T is in reflectance mode";
        QTest::newRow("last")
            << 401 << "You have attempted to load firmware that is incompatible with the current boot version";
    }
    void rowsStandAtTheirPlace()
    {
        QFETCH(int, row);
        QFETCH(QString, text);
        QCOMPARE(SpectroStringKit::pluggedstrings[row][1], text);
        QCOMPARE(SpectroStringKit::pluggedstrings[row][0], text.toLower());
    }

    void eachTextIsSpeltAsPluginsSendIt_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QByteArray>("digest");
        // Made from the agreed list, not from the table. A text that is spelt otherwise is never found.
        QTest::newRow("%") << 2 << QByteArray("09fd8a38c05f5cb8");
        QTest::newRow("A") << 32 << QByteArray("4230f99cde576590");
        QTest::newRow("B") << 35 << QByteArray("49413d56d865e6f9");
        QTest::newRow("C") << 66 << QByteArray("31f9512eefb1f0ea");
        QTest::newRow("D") << 18 << QByteArray("6a567df110807502");
        QTest::newRow("E") << 43 << QByteArray("c276b81f48f4f7ca");
        QTest::newRow("F") << 33 << QByteArray("96d6f3294e92160c");
        QTest::newRow("G") << 10 << QByteArray("12722e246a455043");
        QTest::newRow("H") << 1 << QByteArray("42cfac990ba1f6a1");
        QTest::newRow("I") << 31 << QByteArray("c74b6b528a57b9ff");
        QTest::newRow("K") << 1 << QByteArray("9d7c8017f6f70973");
        QTest::newRow("L") << 10 << QByteArray("bbbbfe16c12cd4d0");
        QTest::newRow("M") << 17 << QByteArray("726a129a2b31e979");
        QTest::newRow("N") << 20 << QByteArray("bf20ab170d67d487");
        QTest::newRow("O") << 6 << QByteArray("55ad4c2897970b7f");
        QTest::newRow("P") << 16 << QByteArray("b3275d5d42b2d62a");
        QTest::newRow("R") << 11 << QByteArray("a0b4219d8461ef96");
        QTest::newRow("S") << 15 << QByteArray("f042078cbe7e29ef");
        QTest::newRow("T") << 18 << QByteArray("d08270bffb2f0e1e");
        QTest::newRow("U") << 8 << QByteArray("f91cb3bb8807b1d0");
        QTest::newRow("W") << 4 << QByteArray("b5b28c9a30ec21a7");
        QTest::newRow("X") << 4 << QByteArray("331ba8ffc80fb28e");
        QTest::newRow("Y") << 1 << QByteArray("6d98b40b86ff914f");
    }

    /// By the initial letter: the SHA-256 of the texts, with a line feed between them.
    void eachTextIsSpeltAsPluginsSendIt()
    {
        QFETCH(int, count);
        QFETCH(QByteArray, digest);
        QByteArrayList texts;
        for (const auto &row : SpectroStringKit::pluggedstrings) {
            if (row[1].startsWith(QLatin1String(QTest::currentDataTag()), Qt::CaseInsensitive))
                texts.append(row[1].toUtf8());
        }
        QCOMPARE(texts.size(), count);
        QCOMPARE(QCryptographicHash::hash(texts.join('\n'), QCryptographicHash::Sha256).toHex().left(16), digest);
    }

    /// No text escapes the digests.
    void theInitialLettersAreAllKnown()
    {
        QString initials;
        for (int row = 0; row < 402; ++row) {
            const QChar initial = SpectroStringKit::pluggedstrings[row][1].front().toUpper();
            if (!initials.endsWith(initial))
                initials.append(initial);
        }
        QCOMPARE(initials, QString("%ABCDEFGHIKLMNOPRSTUWXY"));
    }

    void aTextWithoutTranslationComesBackAsItIs()
    {
        QCOMPARE(SpectroStringKit::getSpectroQString("Bad Command"), QString("Bad Command"));
        QCOMPARE(SpectroStringKit::getSpectroQString("Nobody knows %s of me"), QString("Nobody knows %s of me"));
        QCOMPARE(SpectroStringKit::getSpectroQString(""), QString(""));
        QVERIFY(SpectroStringKit::getSpectroQString(nullptr).isNull());
    }

    void textsAreUtf8()
    {
        QCOMPARE(SpectroStringKit::getSpectroQString("\xc3\x84rger %s"), QString::fromUtf8("\xc3\x84rger %s"));
    }

    void textsAreLookedUpInTheClassContext()
    {
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Bad patch", "Falsches Feld");
        translator.set("QObject", "Bad step", "Falsche Stufe");
        translator.set("SpectroStringKit", "Cannot open file %s", QString::fromUtf8("%s l\xc3\xa4sst sich nicht"));
        translator.set("SpectroStringKit", "not in the table", "nicht in der Tabelle");
        QCOMPARE(SpectroStringKit::getSpectroQString("Bad patch"), QString("Falsches Feld"));
        QCOMPARE(SpectroStringKit::getSpectroQString("Bad step"), QString("Bad step"));
        QCOMPARE(SpectroStringKit::getSpectroQString("bad patch"), QString("bad patch"));
        QCOMPARE(SpectroStringKit::getSpectroQString("Cannot open file %s"),
                 QString::fromUtf8("%s l\xc3\xa4sst sich nicht"));
        QCOMPARE(SpectroStringKit::getSpectroQString("not in the table"), QString("nicht in der Tabelle"));
    }

    void workerThreadsLookUpToo()
    {
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Bad patch", "Falsches Feld");
        std::atomic<int> found = 0;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 3; ++thread) {
            threads.emplace_back([&found] {
                for (int i = 0; i < 200; ++i)
                    found += SpectroStringKit::getSpectroQString("Bad patch") == QLatin1String("Falsches Feld");
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(found.load(), 600);
    }

    /// What the extraction tool finds in the sources must serve the array and the look-up.
    void anExtractedCatalogueHasAllTextsInBothContexts()
    {
        QTemporaryDir directory;
        const QString catalogue = directory.filePath("texts.ts");
        const QString sources = qEnvironmentVariable("TAVI_SOURCE_DIR") + "/instruments/";
        QProcess tool;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SELECT", "qt5");
        tool.setProcessEnvironment(environment);
        tool.start(qEnvironmentVariable("TAVI_LUPDATE"),
                   {"-silent", "-locations", "none", sources + "spectrostringkit_table.cpp",
                    sources + "spectrostringkit.cpp", "-ts", catalogue});
        QVERIFY(tool.waitForFinished(60000));
        QCOMPARE(tool.exitCode(), 0);
        QCOMPARE(tool.readAllStandardError(), QByteArray());

        const QMap<QString, QStringList> messages = readCatalogue(catalogue);
        QCOMPARE(messages.keys(), QStringList({"QObject", "SpectroStringKit"}));
        QStringList texts;
        for (int row = 0; row < 402; ++row)
            texts.append(SpectroStringKit::pluggedstrings[row][1]);
        texts.sort();
        for (const QString &context : messages.keys()) {
            QStringList found = messages[context];
            found.sort();
            QCOMPARE(found.size(), 402);
            QCOMPARE(found, texts);
        }
    }
};

TAVI_TEST_MAIN(TestSpectroStringKit)
#include "tst_spectrostringkit.moc"
