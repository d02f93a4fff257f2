// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Runs statements on a database by another hand than the store's.
void runSql(const QString &path, const char *sql)
{
    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    char *error = nullptr;
    const int code = sqlite3_exec(database, sql, nullptr, nullptr, &error);
    const QByteArray text(error ? error : "");
    sqlite3_free(error);
    sqlite3_close(database);
    QVERIFY2(code == SQLITE_OK, text.constData());
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

/// Gives up the rights of a superuser while it lives, so that permissions count.
class AsNobody
{
public:
    AsNobody() : user_(geteuid())
    {
        if (user_ == 0 && seteuid(65534) != 0)
            qFatal("the rights of a superuser cannot be given up");
    }
    ~AsNobody()
    {
        if (seteuid(user_) != 0)
            qFatal("the rights of a superuser cannot be taken again");
    }
    AsNobody(const AsNobody &) = delete;
    AsNobody &operator=(const AsNobody &) = delete;

private:
    uid_t user_;
};

} // namespace

Q_DECLARE_METATYPE(std::string)

/// What is particular to the form that keeps a file: several stores on one file, and files that cannot be used.
class TestTaviRegistryFile : public TaviTest
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    QString path_;

    QString path(const char *suffix = "") const { return path_ + QLatin1String(suffix); }
    std::string file() const { return path_.toStdString(); }
    QStringList filesInDirectory() const
    {
        return QDir(directory_->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// A store with one value, closed again.
    void makeStore()
    {
        TaviRegistry registry(file());
        registry.putstring("window", "name", "kept");
    }
    /// Opens the store and expects that what stood at its path was moved aside.
    void openDamaged(const char *reason)
    {
        expectLog(path() + " cannot be used and is now " + path(".damaged-1") + ": " + reason);
        TaviRegistry registry(file());
        QCOMPARE(registry.size("window"), size_t(0));
        registry.putlong("window", "width", 5);
        TaviRegistry again(file());
        QCOMPARE(again.getlong("window", "width"), 5L);
    }

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        directory_ = std::make_unique<QTemporaryDir>();
        QVERIFY(directory_->isValid());
        path_ = directory_->filePath("settings.db");
    }
    void cleanup()
    {
        directory_.reset();
        TaviTest::cleanup();
    }

    void aClosedStoreIsOneFile()
    {
        makeStore();
        QCOMPARE(filesInDirectory(), QStringList{"settings.db"});
    }

    void anEmptyFileIsANewStore()
    {
        writeFile(path(), {});
        makeStore();
        TaviRegistry registry(file());
        QCOMPARE(registry.getstring("window", "name"), std::string("kept"));
    }

    void eachPutIsInTheFileAtOnce()
    {
        TaviRegistry first(file());
        first.putstring("window", "name", "kept");
        first.putlong("window", "gone", 1);
        first.clearkey("window", "gone");
        first.putlong("other", "gone", 1);
        first.clearsection("other");
        TaviRegistry second(file());
        QCOMPARE(second.getstring("window", "name"), std::string("kept"));
        QCOMPARE(second.size("window"), size_t(1));
        QCOMPARE(second.size("other"), size_t(0));
    }

    void sizeAndFirstItemShowWhatAnotherStoreWrote()
    {
        TaviRegistry first(file());
        TaviRegistry second(file());
        first.putlong("window", "width", 1);
        QVERIFY(!second.exists("window", "width"));
        QCOMPARE(second.size("window"), size_t(1));
        QCOMPARE(second.getlong("window", "width"), 1L);

        first.putlong("window", "width", 2);
        QCOMPARE(second.getlong("window", "width"), 1L);
        QCOMPARE(second.value(second.firstItem("window")), std::string("2"));
        QCOMPARE(second.getlong("window", "width"), 2L);

        first.clearkey("window", "width");
        QCOMPARE(second.size("unknown"), size_t(0));
        QVERIFY(!second.exists("window", "width"));
    }

    void aFileThatCannotBeReadAnewIsToldOnceInARow()
    {
        TaviRegistry first(file());
        TaviRegistry second(file());
        first.putlong("window", "width", 1);
        QCOMPARE(second.size("window"), size_t(1));
        expectLog("cannot be read, values stay in memory: out of memory", 2);
        for (int streak = 1; streak <= 2; ++streak) {
            first.putstring("window", "name", std::string(1000000, 'x').c_str());
            first.putlong("window", "width", streak + 1);
            const sqlite3_int64 former = sqlite3_hard_heap_limit64(sqlite3_memory_used() + 100000);
            for (int i = 0; i < 3; ++i)
                QCOMPARE(second.size("other"), size_t(0));
            sqlite3_hard_heap_limit64(former);
            QCOMPARE(second.getlong("window", "width"), long(streak));
            QCOMPARE(second.size("window"), size_t(2));
            QCOMPARE(second.getlong("window", "width"), long(streak + 1));
        }
    }

    void storesThatWriteBySectionsLoseNothing()
    {
        TaviRegistry first(file());
        TaviRegistry second(file());
        for (int i = 0; i < 200; ++i) {
            const std::string key = std::to_string(i);
            first.putlong("first", key.c_str(), i);
            second.putlong("second", key.c_str(), i);
        }
        for (TaviRegistry *registry : {&first, &second}) {
            QCOMPARE(registry->size("first"), size_t(200));
            QCOMPARE(registry->size("second"), size_t(200));
        }
    }

    void clearsectionRemovesWhatAnotherStorePutThereUnseen()
    {
        TaviRegistry first(file());
        TaviRegistry second(file());
        second.putlong("window", "width", 1);
        first.clearsection("window");
        first.putlong("window", "height", 2);
        QCOMPARE(second.size("window"), size_t(1));
        QVERIFY(second.exists("window", "height"));
    }

    void aCursorOutlivesAReloadAndItsStore()
    {
        TaviRegistry::Cursor cursor;
        {
            TaviRegistry first(file());
            TaviRegistry second(file());
            first.putstring("window", "name", "old");
            cursor = second.firstItem("window");
            first.putstring("window", "name", "new");
            QCOMPARE(second.size("window"), size_t(1));
            QCOMPARE(second.getstring("window", "name"), std::string("new"));
            QCOMPARE(second.value(cursor), std::string("old"));
        }
        TaviRegistry other;
        QCOMPARE(other.key(cursor), std::string("name"));
        QCOMPARE(other.value(cursor), std::string("old"));
    }

    void theFileIsFoundAgainAfterAChangeOfDirectory()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory_->path()));
        {
            TaviRegistry registry("settings.db");
            registry.putlong("window", "width", 1);
            QVERIFY(QDir::setCurrent(before));
            registry.putlong("window", "height", 2);
        }
        TaviRegistry registry(file());
        QCOMPARE(registry.size("window"), size_t(2));
    }

    void namesThatTheDatabaseWouldTakeForSomethingElseAreFiles()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(directory_->path()));
        const QStringList names = {":memory:", "file:settings.db?mode=memory", " "};
        for (const QString &name : names) {
            TaviRegistry registry(name.toStdString());
            registry.putlong("window", "width", 1);
        }
        QVERIFY(QDir::setCurrent(before));
        for (const QString &name : names)
            QVERIFY2(filesInDirectory().contains(name), qPrintable(name));
    }

    void aLinkLeadsToItsFile()
    {
        QVERIFY(QDir(directory_->path()).mkdir("real"));
        const QString real = directory_->filePath("real/store.db");
        writeFile(real, "no database, but more than a header's worth of text: " + QByteArray(600, 'x'));
        QVERIFY(QFile::link(real, path()));
        expectLog(real + " cannot be used and is now " + real + ".damaged-1");
        makeStore();
        QVERIFY(QFileInfo(path()).isSymLink());
        TaviRegistry registry(real.toStdString());
        QCOMPARE(registry.getstring("window", "name"), std::string("kept"));
    }

    void aTextFileIsMovedAside()
    {
        writeFile(path(), "[window]\nwidth=5\n");
        openDamaged("file is not a database");
        QCOMPARE(readFile(path(".damaged-1")), QByteArray("[window]\nwidth=5\n"));
    }

    void anotherProgramsDatabaseIsMovedAsideUntouched_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::newRow("rollback journal") << QByteArray("CREATE TABLE t(a); INSERT INTO t VALUES(1)");
        QTest::newRow("WAL mode") << QByteArray(
            "PRAGMA journal_mode=WAL; CREATE TABLE t(a); INSERT INTO t VALUES(1)");
        QTest::newRow("its own mark") << QByteArray("PRAGMA application_id=77; CREATE TABLE t(a)");
        QTest::newRow("a table of our name") << QByteArray("CREATE TABLE setting(section, key, value, checksum)");
        QTest::newRow("our mark on its table")
            << QByteArray("PRAGMA application_id=0x54415649; PRAGMA user_version=1; CREATE TABLE setting(a)");
        QTest::newRow("UTF-16") << QByteArray("PRAGMA encoding='UTF-16'; CREATE TABLE t(a)");
    }
    void anotherProgramsDatabaseIsMovedAsideUntouched()
    {
        QFETCH(QByteArray, sql);
        runSql(path(), sql.constData());
        const QByteArray before = readFile(path());
        openDamaged("it is not a settings file");
        QVERIFY(readFile(path(".damaged-1")) == before);
    }

    void aStoreOfAnUnknownLayoutIsMovedAside()
    {
        makeStore();
        runSql(path(), "PRAGMA user_version=2");
        openDamaged("its layout is not known: version 2");
    }

    void aTableBesideOursIsMovedAside()
    {
        makeStore();
        runSql(path(), "CREATE INDEX i ON setting(value)");
        openDamaged("it is not a settings file");
    }

    void aRowThatDoesNotFitItsChecksumIsDamage_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::newRow("value") << QByteArray("UPDATE setting SET value='keqt'");
        QTest::newRow("key") << QByteArray("UPDATE setting SET key='namf'");
        QTest::newRow("section") << QByteArray("UPDATE setting SET section='windnw'");
        QTest::newRow("checksum") << QByteArray("UPDATE setting SET checksum=checksum+1");
        QTest::newRow("boundary") << QByteArray("UPDATE setting SET key='namek', value='ept'");
        QTest::newRow("type") << QByteArray("UPDATE setting SET checksum='x'");
    }
    void aRowThatDoesNotFitItsChecksumIsDamage()
    {
        QFETCH(QByteArray, sql);
        makeStore();
        runSql(path(), sql.constData());
        openDamaged("the checksum of key");
    }

    void anOlderFileThatWasMovedAsideStays()
    {
        writeFile(path(".damaged-1"), "first");
        writeFile(path(".damaged-2-wal"), "second");
        QVERIFY(QDir(directory_->path()).mkdir("settings.db.damaged-3"));
        QVERIFY(QFile::link("nowhere", path(".damaged-4")));
        writeFile(path(), "no database");
        writeFile(path("-wal"), "its log");
        expectLog(path(".damaged-5"));
        makeStore();
        QCOMPARE(readFile(path(".damaged-1")), QByteArray("first"));
        QCOMPARE(readFile(path(".damaged-2-wal")), QByteArray("second"));
        QCOMPARE(readFile(path(".damaged-5")), QByteArray("no database"));
        QCOMPARE(readFile(path(".damaged-5-wal")), QByteArray("its log"));
    }

    void aLogWithoutItsFileIsMovedAside_data()
    {
        QTest::addColumn<bool>("empty");
        QTest::newRow("missing") << false;
        QTest::newRow("empty") << true;
    }
    void aLogWithoutItsFileIsMovedAside()
    {
        QFETCH(bool, empty);
        if (empty)
            writeFile(path(), {});
        writeFile(path("-wal"), "what is left of a log");
        openDamaged("the file is gone or empty, its write-ahead log is not");
        QCOMPARE(readFile(path(".damaged-1-wal")), QByteArray("what is left of a log"));
    }

    void withoutADirectoryValuesStayInMemory()
    {
        expectLog("cannot be opened, values stay in memory: ");
        TaviRegistry registry(directory_->filePath("missing/settings.db").toStdString());
        registry.putlong("window", "width", 5);
        registry.putlong("window", "height", 6);
        QCOMPARE(registry.getlong("window", "width"), 5L);
        QCOMPARE(registry.size("window"), size_t(2));
    }

    void whatStayedInMemoryIsWrittenOnceTheDirectoryIsThere()
    {
        const QString late = directory_->filePath("late/settings.db");
        expectLog("cannot be opened");
        {
            TaviRegistry registry(late.toStdString());
            registry.putlong("window", "width", 5);
            registry.putlong("window", "gone", 5);
            registry.clearkey("window", "gone");
            QVERIFY(QDir(directory_->path()).mkdir("late"));
            registry.putlong("window", "height", 6);
            TaviRegistry other(late.toStdString());
            QCOMPARE(other.size("window"), size_t(2));
            QCOMPARE(other.getlong("window", "width"), 5L);
        }
    }

    void aPathThatIsNoPathStaysInMemory_data()
    {
        QTest::addColumn<std::string>("path");
        QTest::newRow("empty") << std::string();
        QTest::newRow("zero byte") << std::string("settings\0.db", 12);
    }
    void aPathThatIsNoPathStaysInMemory()
    {
        QFETCH(std::string, path);
        expectLog("its name is empty or holds a zero byte");
        TaviRegistry registry(path);
        registry.putlong("window", "width", 5);
        QCOMPARE(registry.size("window"), size_t(1));
    }

    void whatIsNoRegularFileIsLeftAlone_data()
    {
        QTest::addColumn<bool>("pipe");
        QTest::newRow("directory") << false;
        QTest::newRow("pipe") << true;
    }
    void whatIsNoRegularFileIsLeftAlone()
    {
        QFETCH(bool, pipe);
        if (pipe)
            QCOMPARE(mkfifo(path().toUtf8().constData(), 0600), 0);
        else
            QVERIFY(QDir(directory_->path()).mkdir("settings.db"));
        expectLog("cannot be opened, values stay in memory: it is not a regular file");
        {
            TaviRegistry registry(file());
            registry.putlong("window", "width", 5);
            QCOMPARE(registry.getlong("window", "width"), 5L);
        }
        QCOMPARE(filesInDirectory(), pipe ? QStringList() : QStringList{"settings.db"});
        struct stat status = {};
        QCOMPARE(stat(path().toUtf8().constData(), &status), 0);
        QVERIFY(pipe ? S_ISFIFO(status.st_mode) : S_ISDIR(status.st_mode));
    }

    void withoutPermissionValuesStayInMemory_data()
    {
        QTest::addColumn<mode_t>("directory_mode");
        QTest::addColumn<mode_t>("file_mode");
        QTest::newRow("file that cannot be read") << mode_t(0777) << mode_t(0);
        QTest::newRow("directory that cannot be entered") << mode_t(0) << mode_t(0666);
        QTest::newRow("directory that cannot be written") << mode_t(0555) << mode_t(0666);
    }
    void withoutPermissionValuesStayInMemory()
    {
        QFETCH(mode_t, directory_mode);
        QFETCH(mode_t, file_mode);
        makeStore();
        const QByteArray before = readFile(path());
        QCOMPARE(chmod(path().toUtf8().constData(), file_mode), 0);
        QCOMPARE(chmod(directory_->path().toUtf8().constData(), directory_mode), 0);
        expectLog("values stay in memory: ");
        {
            const AsNobody nobody;
            TaviRegistry registry(file());
            registry.putlong("window", "width", 5);
            registry.putlong("window", "height", 5);
            QCOMPARE(registry.getlong("window", "width"), 5L);
        }
        QCOMPARE(chmod(directory_->path().toUtf8().constData(), 0700), 0);
        QCOMPARE(chmod(path().toUtf8().constData(), 0600), 0);
        QVERIFY(readFile(path()) == before);
        QCOMPARE(filesInDirectory().filter("damaged"), QStringList());
    }

    void aFileThatCannotBeWrittenIsStillRead()
    {
        makeStore();
        QCOMPARE(chmod(path().toUtf8().constData(), 0444), 0);
        QCOMPARE(chmod(directory_->path().toUtf8().constData(), 0777), 0);
        expectLog("cannot be written, values stay in memory: ");
        {
            const AsNobody nobody;
            TaviRegistry registry(file());
            QCOMPARE(registry.getstring("window", "name"), std::string("kept"));
            registry.putlong("window", "width", 5);
            registry.putlong("window", "height", 5);
            QCOMPARE(registry.size("window"), size_t(3));
        }
        QCOMPARE(filesInDirectory().filter("damaged"), QStringList());
    }

    void aFileThatIsLockedIsWrittenLater()
    {
        TaviRegistry registry(file());
        registry.putlong("window", "width", 1);
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(path().toUtf8().constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
        expectLog("cannot be written, values stay in memory: database is locked");
        registry.putlong("window", "width", 2);
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 10; ++i)
            registry.putlong("window", "height", i);
        QVERIFY2(timer.elapsed() < 3000, "a locked file holds up each change");
        QCOMPARE(registry.getlong("window", "width"), 2L);
        QCOMPARE(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(other);
        // What another store writes meanwhile does not hide what is still to be written.
        TaviRegistry second(file());
        second.putlong("other", "key", 1);
        QCOMPARE(registry.size("other"), size_t(1));
        QCOMPARE(registry.getlong("window", "width"), 2L);
        QCOMPARE(second.getlong("window", "width"), 1L);
        registry.putlong("window", "depth", 3);
        QCOMPARE(second.size("window"), size_t(3));
        QCOMPARE(second.getlong("window", "width"), 2L);
        QCOMPARE(second.getlong("window", "height"), 9L);
    }

    void theDestructorWritesWhatCouldNotBeWritten()
    {
        sqlite3 *other = nullptr;
        {
            TaviRegistry registry(file());
            QCOMPARE(sqlite3_open(path().toUtf8().constData(), &other), SQLITE_OK);
            QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
            expectLog("cannot be written");
            registry.putlong("window", "width", 2);
            sqlite3_close(other);
        }
        TaviRegistry registry(file());
        QCOMPARE(registry.getlong("window", "width"), 2L);
    }

    void eachStreakOfFailuresIsToldOnce()
    {
        TaviRegistry registry(file());
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(path().toUtf8().constData(), &other), SQLITE_OK);
        sqlite3_busy_timeout(other, 1000);
        expectLog("cannot be written", 2);
        for (int streak = 0; streak < 2; ++streak) {
            QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
            registry.putlong("window", "width", streak);
            registry.clearkey("window", "height");
            registry.clearsection("other");
            QCOMPARE(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
            registry.putlong("window", "depth", streak);
        }
        sqlite3_close(other);
    }

    void changesThatWaitAreWrittenInTheirOrder()
    {
        const QString late = directory_->filePath("late/settings.db");
        expectLog("cannot be opened");
        TaviRegistry registry(late.toStdString());
        registry.putlong("a", "1", 1);
        registry.clearsection("a");
        registry.putlong("a", "2", 2);
        registry.putlong("b", "1", 1);
        registry.clearkey("b", "1");
        registry.putlong("b", "2", 1);
        registry.clearkey("b", "2");
        registry.putlong("b", "2", 2);
        registry.putlong("c", "1", 1);
        QVERIFY(QDir(directory_->path()).mkdir("late"));
        {
            // By now another store has keys there, some of which are cleared.
            TaviRegistry other(late.toStdString());
            for (const char *section : {"a", "b", "c"}) {
                other.putlong(section, "1", 7);
                other.putlong(section, "9", 7);
            }
        }
        registry.clearsection("d");
        TaviRegistry other(late.toStdString());
        for (TaviRegistry *store : {&registry, &other}) {
            QCOMPARE(store->size("a"), size_t(1));
            QCOMPARE(store->getlong("a", "2"), 2L);
            QCOMPARE(store->size("b"), size_t(2));
            QCOMPARE(store->getlong("b", "2"), 2L);
            QCOMPARE(store->getlong("b", "9"), 7L);
            QCOMPARE(store->size("c"), size_t(2));
            QCOMPARE(store->getlong("c", "1"), 1L);
        }
    }

    void aFileDeletedUnderALivingStoreIsMadeAnew()
    {
        TaviRegistry registry(file());
        registry.putlong("window", "width", 1);
        for (const char *suffix : {"", "-wal", "-shm"})
            QVERIFY(QFile::remove(path(suffix)));
        registry.putlong("window", "height", 2);
        TaviRegistry other(file());
        QCOMPARE(other.getlong("window", "width"), 1L);
        QCOMPARE(other.getlong("window", "height"), 2L);
    }

    void aFileReplacedUnderALivingStoreKeepsItsOwnValues()
    {
        TaviRegistry registry(file());
        registry.putlong("window", "width", 1);
        registry.putlong("window", "height", 1);
        for (const char *suffix : {"", "-wal", "-shm"})
            QVERIFY(QFile::rename(path(suffix), path(".moved") + QLatin1String(suffix)));
        TaviRegistry other(file());
        other.putlong("window", "width", 2);
        QCOMPARE(registry.size("window"), size_t(2));
        QCOMPARE(registry.getlong("window", "width"), 2L);
        QCOMPARE(other.size("window"), size_t(2));
        QCOMPARE(other.getlong("window", "height"), 1L);
    }

    void closingAStoreLeavesTheFileThatTookItsPlaceAlone()
    {
        auto registry = std::make_unique<TaviRegistry>(file());
        registry->putlong("window", "width", 1);
        for (const char *suffix : {"", "-wal", "-shm"})
            QVERIFY(QFile::rename(path(suffix), path(".moved") + QLatin1String(suffix)));
        TaviRegistry other(file());
        other.putlong("window", "width", 2);
        const QByteArray log = readFile(path("-wal"));
        QVERIFY(!log.isEmpty());
        registry.reset();
        QVERIFY(readFile(path("-wal")) == log);
    }

    void damageInALivingStoreLosesNothingThatItKnows()
    {
        TaviRegistry registry(file());
        for (int i = 0; i < 500; ++i)
            registry.putstring("window", std::to_string(i).c_str(), std::string(100, 'x').c_str());
        TaviRegistry other(file());
        // Garbage over all pages of the file but the first.
        runSql(path(), "PRAGMA wal_checkpoint(TRUNCATE)");
        QFile raw(path());
        QVERIFY(raw.open(QIODevice::ReadWrite) && raw.size() > 8192 && raw.seek(4096));
        QVERIFY(raw.write(QByteArray(int(raw.size()) - 4096, '\x55')) > 0);
        raw.close();
        const QByteArray damaged = readFile(path());

        expectLog(path() + " cannot be used and is now " + path(".damaged-1"));
        // The log was folded in by another connection, so that the stores must read their pages again.
        other.putlong("window", "new", 1);
        registry.putlong("window", "late", 2);
        QCOMPARE(registry.size("window"), size_t(502));
        QCOMPARE(other.size("window"), size_t(502));
        TaviRegistry third(file());
        QCOMPARE(third.size("window"), size_t(502));
        QCOMPARE(third.getstring("window", "499"), std::string(100, 'x'));
        QVERIFY(readFile(path(".damaged-1")) == damaged);
    }
};

TAVI_TEST_MAIN(TestTaviRegistryFile)
#include "tst_taviregistry_file.moc"
