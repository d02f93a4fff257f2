// SPDX-License-Identifier: MIT
#include "tavilib/tavifile.h"
#include "tavilib/tavilist.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {

using File = std::unique_ptr<FILE, void (*)(FILE *)>;

/// A file of the C library that reads @a content.
File reading(QByteArray &content)
{
    FILE *file =
        content.isEmpty() ? std::fopen("/dev/null", "rb") : fmemopen(content.data(), size_t(content.size()), "rb");
    return {file, Tavi_fclose};
}

/// All lines that the reader gives with a buffer of @a size bytes; the bytes behind the buffer must stay.
QList<QByteArray> linesOf(FILE *file, int size)
{
    QList<QByteArray> lines;
    std::vector<char> buffer(size_t(size) + 1, '~');
    while (GetLineEOFOKLevel2(file, buffer.data(), size) == 0) {
        lines.append(QByteArray(buffer.data()));
        if (buffer.back() != '~' || lines.size() > 100000)
            return {"(written behind the buffer, or without end)"};
    }
    return lines;
}

/// What should come, by another road: split at line ends, then cut in pieces.
QList<QByteArray> expectedLines(const QByteArray &content, int size)
{
    QList<QByteArray> lines = content.split('\n');
    const bool ended = lines.last().isEmpty();
    if (ended)
        lines.removeLast();
    QList<QByteArray> pieces;
    for (int i = 0; i < lines.size(); ++i) {
        QByteArray line = lines.at(i);
        if (line.endsWith('\r') && (ended || i + 1 < lines.size()))
            line.chop(1);
        do {
            pieces.append(line.left(size - 1));
            line = line.mid(size - 1);
        } while (!line.isEmpty());
    }
    return pieces;
}

QStringList namesOf(const TAVIDIRENTRY *list)
{
    QStringList names;
    for (; list; list = NextInList(list))
        names.append(QString::fromUtf8(list->name));
    return names;
}

} // namespace

class TestTaviFile : public TaviTest
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QByteArray path(const char *name) const { return (directory_->path() + "/" + QString::fromUtf8(name)).toUtf8(); }
    void makeFile(const char *name, const QByteArray &content = {})
    {
        QFile file(QString::fromUtf8(path(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        directory_ = std::make_unique<QTemporaryDir>();
        QVERIFY(directory_->isValid());
    }
    void cleanup()
    {
        directory_.reset();
        TaviTest::cleanup();
    }

    void aFileIsOpenedReadAndRewound()
    {
        makeFile("a.txt", "one\n");
        FILE *file = Tavi_fopen(path("a.txt").constData(), "rb");
        QVERIFY(file);
        char buffer[16];
        QCOMPARE(GetLineEOFOKLevel2(file, buffer, sizeof buffer), 0);
        QVERIFY(GetLineEOFOKLevel2(file, buffer, sizeof buffer) != 0);
        QVERIFY(feof(file));
        Tavi_rewind(file);
        QVERIFY(!feof(file));
        QCOMPARE(GetLineEOFOKLevel2(file, buffer, sizeof buffer), 0);
        QCOMPARE(buffer, "one");
        Tavi_fclose(file);
        Tavi_fclose(nullptr);
    }

    void modesAreThoseOfTheCLibrary()
    {
        FILE *file = Tavi_fopen(path("new.txt").constData(), "wb");
        QVERIFY(file);
        QVERIFY(std::fputs("text", file) >= 0);
        Tavi_fclose(file);
        file = Tavi_fopen(path("new.txt").constData(), "rb");
        QVERIFY(file);
        char buffer[16];
        QCOMPARE(GetLineEOFOKLevel2(file, buffer, sizeof buffer), 0);
        QCOMPARE(buffer, "text");
        Tavi_fclose(file);
    }

    void whatCannotBeReadIsNotOpened()
    {
        QVERIFY(!Tavi_fopen(path("missing").constData(), "rb"));
        QVERIFY(!Tavi_fopen("", "rb"));
        QVERIFY(!Tavi_fopen(nullptr, "rb"));
        QVERIFY(!Tavi_fopen(path("missing").constData(), nullptr));
        errno = 0;
        QVERIFY(!Tavi_fopen(directory_->path().toUtf8().constData(), "rb"));
        QCOMPARE(errno, EISDIR);
    }

    void linesComeWithoutTheirEnds_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QList<QByteArray>>("lines");
        using L = QList<QByteArray>;
        QTest::newRow("empty") << QByteArray() << L();
        QTest::newRow("one") << QByteArray("one\n") << L{"one"};
        QTest::newRow("no final break") << QByteArray("one\ntwo") << L{"one", "two"};
        QTest::newRow("CR LF") << QByteArray("one\r\ntwo\r\n") << L{"one", "two"};
        QTest::newRow("mixed") << QByteArray("one\ntwo\r\nthree") << L{"one", "two", "three"};
        QTest::newRow("empty lines") << QByteArray("\n\r\n\n") << L{"", "", ""};
        QTest::newRow("lone CR is text") << QByteArray("a\rb\n\rc\n") << L{"a\rb", "\rc"};
        QTest::newRow("CR CR LF") << QByteArray("a\r\r\nb") << L{"a\r", "b"};
        QTest::newRow("CR at the end") << QByteArray("a\r") << L{"a\r"};
        QTest::newRow("only CR") << QByteArray("\r") << L{"\r"};
        QTest::newRow("LF CR") << QByteArray("a\n\rb") << L{"a", "\rb"};
        QTest::newRow("bytes above 127") << QByteArray("\xff\xfe\n\x80") << L{"\xff\xfe", "\x80"};
    }
    void linesComeWithoutTheirEnds()
    {
        QFETCH(QByteArray, content);
        QFETCH(QList<QByteArray>, lines);
        QCOMPARE(linesOf(reading(content).get(), 1024), lines);
    }

    void aLineOfTheBuffersSizeIsOnePiece_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {2, 3, 16, 1024})
            QTest::addRow("%d", size) << size;
    }
    void aLineOfTheBuffersSizeIsOnePiece()
    {
        QFETCH(int, size);
        for (const char *end : {"\n", "\r\n", ""}) {
            for (const int length : {size - 2, size - 1, size, size + 1, 2 * (size - 1), 2 * size - 1, 5 * size}) {
                const QByteArray line(length, 'x');
                QByteArray content = line + end + (*end ? "next" + QByteArray(end) : QByteArray());
                QCOMPARE(linesOf(reading(content).get(), size), expectedLines(content, size));
                content = line + end;
                QCOMPARE(linesOf(reading(content).get(), size), expectedLines(content, size));
            }
        }
    }

    void aLoneCrAtTheBuffersEdgeIsText()
    {
        // The edge lies before, in and behind the two characters; no byte may be lost or doubled.
        for (int before = 0; before < 8; ++before) {
            for (const char *middle : {"\r", "\rx", "\r\r", "\r\r\n", "\r\rx", "\r\n\r", "\r\n\r\n"}) {
                QByteArray content = QByteArray(before, 'a') + middle + "tail\nend";
                for (int size = 2; size < 12; ++size) {
                    const QList<QByteArray> pieces = linesOf(reading(content).get(), size);
                    QByteArray together = pieces.join();
                    QByteArray text = content;
                    text.replace("\r\n", "").replace("\n", "");
                    QCOMPARE(together, text);
                }
            }
        }
    }

    void linesFollowTheRuleWhateverTheyHold()
    {
        std::mt19937 random(31);
        for (int round = 0; round < 3000; ++round) {
            QByteArray content;
            for (auto i = 1 + random() % 60; i > 0; --i)
                content.append("aaab\n\n\r"[random() % 7]);
            const int size = 2 + int(random() % 12);
            // A buffer of the C library's own as small as can be, so that characters are pushed back across its edge.
            const File file = reading(content);
            char small[2];
            if (round % 2 == 0)
                setvbuf(file.get(), small, _IOFBF, sizeof small);
            const QList<QByteArray> found = linesOf(file.get(), size);
            QByteArray shown;
            for (const QByteArray &line : found)
                shown += "[" + line + "]";
            QVERIFY2(found.join() == expectedLines(content, size).join(), (content + " -> " + shown).constData());
            QVERIFY2(found == expectedLines(content, size), (content + " -> " + shown).constData());
        }
    }

    void aZeroByteIsKeptInTheBuffer()
    {
        QByteArray content("a\0b\nc\n", 6);
        const File file = reading(content);
        char buffer[16];
        QCOMPARE(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer), 0);
        QCOMPARE(QByteArray(buffer, 4), QByteArray("a\0b\0", 4));
        QCOMPARE(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer), 0);
        QCOMPARE(buffer, "c");
    }

    void aLineThatBeginsWithAZeroByteIsALine()
    {
        QByteArray content("\0\n\0", 3);
        const File file = reading(content);
        char buffer[16];
        QCOMPARE(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer), 0);
        QCOMPARE(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer), 0);
        QVERIFY(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer) != 0);
    }

    void aPipeIsRead()
    {
        int ends[2];
        QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
        // More than a pipe holds, in pieces that end anywhere.
        QByteArray content;
        for (int i = 0; i < 20000; ++i)
            content += QByteArray::number(i) + (i % 3 == 0 ? "\r\n" : "\n");
        std::thread writer([content, to = ends[1]] {
            for (int at = 0; at < content.size();) {
                const ssize_t written =
                    ::write(to, content.constData() + at, size_t(std::min(777, content.size() - at)));
                if (written <= 0)
                    break;
                at += int(written);
            }
            ::close(to);
        });
        FILE *file = fdopen(ends[0], "rb");
        const QList<QByteArray> lines = linesOf(file, 1024);
        writer.join();
        Tavi_fclose(file);
        QCOMPARE(lines, expectedLines(content, 1024));
    }

    void aReadErrorEndsTheLoop()
    {
        const File file(fdopen(::open(path("written").constData(), O_WRONLY | O_CREAT, 0600), "wb"), Tavi_fclose);
        char buffer[16];
        QVERIFY(GetLineEOFOKLevel2(file.get(), buffer, sizeof buffer) != 0);
        QCOMPARE(buffer, "");
    }

    void badArgumentsEndTheLoop()
    {
        QByteArray content("text\n");
        const File file = reading(content);
        char buffer[2] = {'x', 'x'};
        QVERIFY(GetLineEOFOKLevel2(nullptr, buffer, 2) != 0);
        QVERIFY(GetLineEOFOKLevel2(file.get(), nullptr, 2) != 0);
        for (const int size : {1, 0, -1})
            QVERIFY(GetLineEOFOKLevel2(file.get(), buffer, size) != 0);
        QCOMPARE(QByteArray(buffer, 2), QByteArray("xx"));
        QCOMPARE(GetLineEOFOKLevel2(file.get(), buffer, 2), 0);
        QCOMPARE(buffer, "t");
    }

    void extensionsAreComparedExactly_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("so");
        QTest::newRow("plug-in") << QByteArray("simspectro.so") << true;
        QTest::newRow("with a path") << QByteArray("readers/a.so") << true;
        QTest::newRow("hidden") << QByteArray(".so") << true;
        QTest::newRow("two dots") << QByteArray("a.b.so") << true;
        QTest::newRow("capitals") << QByteArray("a.SO") << false;
        QTest::newRow("behind it") << QByteArray("a.so.1") << false;
        QTest::newRow("without dot") << QByteArray("aso") << false;
        QTest::newRow("shorter") << QByteArray("so") << false;
        QTest::newRow("empty") << QByteArray() << false;
    }
    void extensionsAreComparedExactly()
    {
        QFETCH(QByteArray, name);
        QFETCH(bool, so);
        QCOMPARE(TaviCheckExtension(name.constData(), ".so"), so);
    }

    void anExtensionOfNothing()
    {
        QVERIFY(!TaviCheckExtension(nullptr, ".so"));
        QVERIFY(!TaviCheckExtension("a.so", nullptr));
        QVERIFY(TaviCheckExtension("a.so", ""));
        QVERIFY(TaviCheckExtension("x.orloinstrument", ".orloinstrument"));
    }

    void aDirectoryIsListedInOrder()
    {
        for (const char *name : {"b.so", "a", "B", ".hidden",
                                 "gr\xc3\xbc\xc3\x9f"
                                 "e"})
            makeFile(name);
        TAVIDIRENTRY *list = nullptr;
        QCOMPARE(TaviGetDirListIgnoringMacResources(&list, directory_->path().toUtf8().constData(), 0), 0);
        QCOMPARE(namesOf(list), (QStringList{".hidden", "B", "a", "b.so",
                                             QString::fromUtf8("gr\xc3\xbc\xc3\x9f"
                                                               "e")}));
        TaviFreeDirList(&list);
        QVERIFY(!list);
    }

    void resourceForksAreLeftOut()
    {
        for (const char *name : {"._a.so", "._", ".DS_Store", "a.so", "_a", "..x", "x.DS_Store"})
            makeFile(name);
        QVERIFY(QDir(directory_->path()).mkdir(".AppleDouble"));
        QVERIFY(QDir(directory_->path()).mkdir("__MACOSX"));
        TAVIDIRENTRY *list = nullptr;
        QCOMPARE(TaviGetDirListIgnoringMacResources(&list, directory_->path().toUtf8().constData(), 0), 0);
        QCOMPARE(namesOf(list), (QStringList{"..x", "_a", "a.so", "x.DS_Store"}));
        TaviFreeDirList(&list);
    }

    void modesTellWhatAnEntryIs()
    {
        makeFile("file");
        QVERIFY(QDir(directory_->path()).mkdir("directory.so"));
        QVERIFY(QFile::link("file", directory_->filePath("link to file")));
        QVERIFY(QFile::link("directory.so", directory_->filePath("link to directory")));
        QVERIFY(QFile::link("nowhere", directory_->filePath("dangling")));
        QCOMPARE(mkfifo(path("pipe").constData(), 0600), 0);
        TAVIDIRENTRY *list = nullptr;
        QCOMPARE(TaviGetDirListIgnoringMacResources(&list, directory_->path().toUtf8().constData(), 0), 0);
        QMap<QString, uint32_t> modes;
        for (const TAVIDIRENTRY *entry = list; entry; entry = NextInList(entry))
            modes[QString::fromUtf8(entry->name)] = entry->mode & 0xf000U;
        TaviFreeDirList(&list);
        const QMap<QString, uint32_t> expected = {{"dangling", 0xa000U},     {"directory.so", 0x4000U},
                                                  {"file", 0x8000U},         {"link to directory", 0x4000U},
                                                  {"link to file", 0x8000U}, {"pipe", 0x1000U}};
        QCOMPARE(modes, expected);
    }

    void whatIsNotThereListsAsEmpty()
    {
        makeFile("file");
        QVERIFY(QFile::link("nowhere", directory_->filePath("dangling")));
        for (const char *name : {"missing", "missing/deeper", "file/below", "dangling"}) {
            TAVIDIRENTRY *list = reinterpret_cast<TAVIDIRENTRY *>(8); // must be set
            QVERIFY2(TaviGetDirListIgnoringMacResources(&list, path(name).constData(), 0) == 0, name);
            QVERIFY(!list);
        }
        TAVIDIRENTRY *list = nullptr;
        QCOMPARE(TaviGetDirListIgnoringMacResources(&list, "", 0), 0);
        QVERIFY(!list);
    }

    void whatCannotBeListedIsAFailure()
    {
        makeFile("file");
        TAVIDIRENTRY *list = reinterpret_cast<TAVIDIRENTRY *>(8);
        QVERIFY(TaviGetDirListIgnoringMacResources(&list, path("file").constData(), 0) < 0);
        QVERIFY(!list);
        QVERIFY(TaviGetDirListIgnoringMacResources(&list, nullptr, 0) < 0);
        QVERIFY(TaviGetDirListIgnoringMacResources(nullptr, path("file").constData(), 0) < 0);
    }

    void withoutPermissionListingFails()
    {
        QVERIFY(QDir(directory_->path()).mkdir("closed"));
        QCOMPARE(chmod(path("closed").constData(), 0), 0);
        QCOMPARE(chmod(directory_->path().toUtf8().constData(), 0755), 0);
        // A superuser may read everything.
        const uid_t user = geteuid();
        if (user == 0)
            QCOMPARE(seteuid(65534), 0);
        TAVIDIRENTRY *list = nullptr;
        const int status = TaviGetDirListIgnoringMacResources(&list, path("closed").constData(), 0);
        if (user == 0)
            QCOMPARE(seteuid(user), 0);
        QCOMPARE(chmod(path("closed").constData(), 0700), 0);
        QVERIFY(status < 0);
        QVERIFY(!list);
    }

    void withoutMemoryListingFails()
    {
        for (const char *name : {"a", "b", "c"})
            makeFile(name);
        for (int number = 1; number <= 6; ++number) {
            AllocFailure failure(number);
            TAVIDIRENTRY *list = nullptr;
            QVERIFY(TaviGetDirListIgnoringMacResources(&list, directory_->path().toUtf8().constData(), 0) < 0);
            QVERIFY(!list);
            QVERIFY(failure.happened());
        }
    }

    void freeingNothing()
    {
        TaviFreeDirList(nullptr);
        TAVIDIRENTRY *list = nullptr;
        TaviFreeDirList(&list);
        QVERIFY(!list);
    }
};

TAVI_TEST_MAIN(TestTaviFile)
#include "tst_tavifile.moc"
