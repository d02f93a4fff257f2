// SPDX-License-Identifier: MIT
#include "taviapp/tavifileinfo.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <set>
#include <sys/stat.h>

Q_DECLARE_METATYPE(std::string)

class TestTaviFileInfo : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void itTellsWhetherThePathExists()
    {
        QTemporaryDir directory;
        const auto path = [&](const char *name) {
            return directory.filePath(name).toStdString();
        };
        QFile file(directory.filePath("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(QFile::link("file", directory.filePath("link")));
        QVERIFY(QFile::link("nowhere", directory.filePath("dangling")));

        QVERIFY(TaviFileInfo(path("file")).exists());
        QVERIFY(TaviFileInfo(path("link")).exists());
        QVERIFY(TaviFileInfo(directory.path().toStdString()).exists());
        QVERIFY(TaviFileInfo(directory.path().toStdString() + "/").exists());
        QVERIFY(TaviFileInfo("/").exists());
        QVERIFY(!TaviFileInfo(path("missing")).exists());
        QVERIFY(!TaviFileInfo(path("dangling")).exists());
        QVERIFY(!TaviFileInfo(path("file") + "/below").exists());
        QVERIFY(!TaviFileInfo("").exists());
        QVERIFY(!TaviFileInfo(path("file") + std::string("\0rest", 5)).exists());
    }

    void setFileDescribesAnotherPath()
    {
        QTemporaryDir directory;
        TaviFileInfo info("missing");
        QCOMPARE(info.path(), std::string("missing"));
        QVERIFY(!info.exists());
        info.setFile(directory.path().toStdString());
        QCOMPARE(info.path(), directory.path().toStdString());
        QVERIFY(info.exists());
        info.setFile("missing");
        QVERIFY(!info.exists());
    }

    void aPathIsRelativeToTheWorkingDirectory()
    {
        QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkpath("lib/readers"));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory.path()));
        TaviFileInfo info("readers");
        const bool here = info.exists();
        info.setFile("lib/readers");
        const bool below = info.exists();
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(!here);
        QVERIFY(below);
    }

    void itDescribesThePathAsItWasFound()
    {
        QTemporaryDir directory;
        const std::string path = directory.filePath("later").toStdString();
        TaviFileInfo info(path);
        QVERIFY(QDir(directory.path()).mkdir("later"));
        QVERIFY(!info.exists());
        info.setFile(path);
        QVERIFY(info.exists());
    }

    void theDirectoryPart_data()
    {
        QTest::addColumn<std::string>("path");
        QTest::addColumn<std::string>("directory");
        const auto row = [](const char *path, const char *directory) {
            QTest::newRow(*path ? path : "empty") << std::string(path) << std::string(directory);
        };
        row("", "");
        row("name", "");
        row("a/b", "a");
        row("a/b/c", "a/b");
        row("/a", "/");
        row("/a/b", "/a");
        row("/", "/");
        row("//", "/");
        row("//a", "/");
        row("a//b", "a");
        row("a/", "a");
        row("/a/", "/a");
        row("./a", ".");
        row("../a", "..");
        row("a.b/c.d", "a.b");
    }
    void theDirectoryPart()
    {
        QFETCH(std::string, path);
        QFETCH(std::string, directory);
        QCOMPARE(TaviFileInfo::dirnameFromPath(path), directory);
    }

    void scratchFilesAreUniqueEmptyAndOnesOwn()
    {
        QTemporaryDir directory;
        qputenv("TMPDIR", directory.path().toUtf8());
        std::set<std::string> paths;
        for (int i = 0; i < 50; ++i) {
            const std::string path = TaviFileInfo::scratchfile();
            QCOMPARE(TaviFileInfo::dirnameFromPath(path), directory.path().toStdString());
            struct stat status = {};
            QCOMPARE(stat(path.c_str(), &status), 0);
            QCOMPARE(status.st_mode & 0xf1ffU, 0x8000U | 0600U);
            QCOMPARE(status.st_size, off_t(0));
            paths.insert(path);
        }
        QCOMPARE(paths.size(), size_t(50));
    }

    void aScratchFileWithoutADirectoryOfOnesOwn_data()
    {
        QTest::addColumn<bool>("set");
        QTest::newRow("not set") << false;
        QTest::newRow("empty") << true;
    }
    void aScratchFileWithoutADirectoryOfOnesOwn()
    {
        QFETCH(bool, set);
        if (set)
            qputenv("TMPDIR", "");
        else
            qunsetenv("TMPDIR");
        const std::string path = TaviFileInfo::scratchfile();
        QCOMPARE(TaviFileInfo::dirnameFromPath(path), std::string("/tmp"));
        QVERIFY(QFile::remove(QString::fromStdString(path)));
    }

    void withoutADirectoryThereIsNoScratchFile()
    {
        qputenv("TMPDIR", "/nowhere/at/all");
        QCOMPARE(TaviFileInfo::scratchfile(), std::string());
        qunsetenv("TMPDIR");
    }
};

TAVI_TEST_MAIN(TestTaviFileInfo)
#include "tst_tavifileinfo.moc"
