// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/registryscript.h"

#include <QTemporaryDir>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <numeric>
#include <random>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using registryscript::Change;
using registryscript::Model;

namespace {

/// A run of registrywriter with pipes to its standard input and output. Its standard error goes to a file.
class Writer
{
public:
    Writer(const QString &errors, const QStringList &arguments)
    {
        if (pipe2(in_, O_CLOEXEC) != 0 || pipe2(out_, O_CLOEXEC) != 0)
            qFatal("no pipe");
        std::vector<std::string> texts = {TAVI_REGISTRYWRITER};
        for (const QString &argument : arguments)
            texts.push_back(argument.toStdString());
        std::vector<char *> argv;
        argv.reserve(texts.size() + 1);
        for (std::string &text : texts)
            argv.push_back(text.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, in_[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, out_[1], STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.toUtf8().constData(),
                                         O_WRONLY | O_CREAT | O_APPEND, 0600);
        if (posix_spawn(&process_, argv[0], &actions, nullptr, argv.data(), environ) != 0)
            qFatal("cannot start %s", argv[0]);
        posix_spawn_file_actions_destroy(&actions);
        ::close(in_[0]);
        ::close(out_[1]);
    }
    ~Writer()
    {
        kill();
        ::close(in_[1]);
        ::close(out_[0]);
    }
    Writer(const Writer &) = delete;
    Writer &operator=(const Writer &) = delete;

    void go()
    {
        if (::write(in_[1], "g", 1) != 1)
            qFatal("the writer does not listen");
    }
    /// Waits for up to @a count reports in all; returns how many there were.
    int waitFor(int count)
    {
        char bytes[256];
        while (reports_ < count) {
            const ssize_t got = ::read(out_[0], bytes, std::min<size_t>(sizeof bytes, size_t(count - reports_)));
            if (got <= 0)
                break;
            reports_ += int(got);
        }
        return reports_;
    }
    void kill()
    {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            wait();
        }
    }
    /// The exit status as waitpid() gives it.
    int wait()
    {
        int status = -1;
        if (process_ > 0)
            waitpid(process_, &status, 0);
        process_ = 0;
        return status;
    }

private:
    pid_t process_ = 0;
    int in_[2] = {-1, -1};
    int out_[2] = {-1, -1};
    int reports_ = 0;
};

/// While it lives, no file of this process grows beyond @a bytes: a full disk, as the writer of a file sees it.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes)
    {
        former_handler_ = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit = {rlim_t(bytes), former_.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            qFatal("no file size limit");
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, former_handler_);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit former_ = {};
    void (*former_handler_)(int) = nullptr;
};

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

} // namespace

/// Settings outlive what happens to programs, disks and files.
class TestRegistryReliability : public TaviTest
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    QString path_;
    QString errors_;

    QString path(const char *suffix = "") const { return path_ + QLatin1String(suffix); }
    std::string file() const { return path_.toStdString(); }
    void removeAll()
    {
        QDir directory(directory_->path());
        for (const QString &name : directory.entryList(QDir::Files))
            QVERIFY(directory.remove(name));
    }
    QStringList damagedFiles() const
    {
        return QDir(directory_->path()).entryList({QStringLiteral("*.damaged-*")}, QDir::Files, QDir::Name);
    }

    /// How an attempt to open a damaged file ended.
    enum Outcome { Sound, MovedAside, Wrong };
    /// Puts @a damaged in the file's place and opens the store. Whatever is found must be what was kept, or the bytes
    /// must stand aside unchanged, told in one line, and the store must work.
    Outcome openDamaged(const QByteArray &damaged, const Model &kept)
    {
        removeAll();
        writeFile(path(), damaged);
        const int lines_before = recorder().lines().size();
        Model found;
        {
            TaviRegistry registry(file());
            found = registryscript::contentOf(registry);
            registry.putlong("check", "works", 1);
        }
        const QStringList lines = recorder().lines().mid(lines_before);
        const QStringList aside = damagedFiles();
        bool works = false;
        {
            TaviRegistry registry(file());
            works = registry.getlong("check", "works") == 1;
        }
        if (aside.isEmpty())
            return works && lines.isEmpty() && found == kept ? Sound : Wrong;
        const bool told = lines.size() == 1 && lines.first().contains(path())
                          && lines.first().contains(path(".damaged-1"))
                          && recorder().lines().size() == lines_before + 1;
        const bool whole = readFile(path(".damaged-1")) == damaged;
        return works && told && whole && found.empty() ? MovedAside : Wrong;
    }
    /// A store of some pages, closed again: its bytes and what it holds.
    QByteArray makeSample(Model &model)
    {
        model.clear();
        {
            TaviRegistry registry(file());
            for (uint64_t i = 0; i < 300; ++i) {
                Change change = registryscript::changeAt(5, i);
                change.value.resize(std::min<size_t>(change.value.size(), 120));
                registryscript::make(registry, change);
                registryscript::make(model, change);
            }
        }
        return readFile(path());
    }

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        // In memory where there is such a directory: thousands of small databases are made here.
        const QString memory = QStringLiteral("/dev/shm");
        directory_ = QFileInfo(memory).isWritable() ? std::make_unique<QTemporaryDir>(memory + "/tavi-XXXXXX")
                                                    : std::make_unique<QTemporaryDir>();
        QVERIFY(directory_->isValid());
        path_ = directory_->filePath("settings.db");
        errors_ = directory_->filePath("errors.txt");
    }
    void cleanup()
    {
        const QByteArray errors = readFile(errors_);
        directory_.reset();
        TaviTest::cleanup();
        QCOMPARE(errors, QByteArray());
    }

    void everyPutThatReturnedSurvivesAKill()
    {
        constexpr int kills = 200;
        constexpr uint64_t seed = 20240611;
        std::mt19937 random(seed);
        Model model;
        {
            TaviRegistry registry(file());
            registry.putstring("bystander", "first", "untouched");
            registry.putstring("bystander", "last", std::string(20000, 'z').c_str());
        }
        uint64_t made = 0;
        int while_opening = 0;
        int one_more = 0;
        for (int i = 0; i < kills; ++i) {
            // Every fourth dies early, perhaps while it opens the store.
            const int reports = i % 4 == 0 ? 0 : 1 + int(random() % 300);
            const auto pause = useconds_t(random() % (i % 4 == 0 ? 25000 : 1000));
            int returned = 0;
            {
                Writer writer(errors_, {"script", path(), QString::number(seed), QString::number(made)});
                writer.waitFor(reports);
                usleep(pause); // the moment of the kill is what is tried here
                writer.kill();
                returned = writer.waitFor(INT_MAX) - 1; // the first report is that the store is open
            }
            while_opening += returned < 0;
            for (int change = 0; change < returned; ++change)
                registryscript::make(model, registryscript::changeAt(seed, made++));

            TaviRegistry registry(file());
            const Model found = registryscript::contentOf(registry);
            if (found != model) {
                // The change under way at the kill may have been made.
                registryscript::make(model, registryscript::changeAt(seed, made++));
                ++one_more;
            }
            QVERIFY2(found == model, qPrintable(QStringLiteral("kill %1 after %2 changes").arg(i).arg(made)));
            QCOMPARE(registry.getstring("bystander", "first"), std::string("untouched"));
            QCOMPARE(registry.getstring("bystander", "last"), std::string(20000, 'z'));
            QCOMPARE(registry.size("bystander"), size_t(2));
        }
        qInfo("%d kills, %d while the store was being opened, %d within a change, %llu changes", kills, while_opening,
              one_more, static_cast<unsigned long long>(made));
        QVERIFY(made > 5000);
        QCOMPARE(damagedFiles(), QStringList());
    }

    void processesThatWriteTheirOwnSectionsLoseNothing()
    {
        constexpr int count = 500;
        std::vector<std::unique_ptr<Writer>> writers;
        for (const char *section : {"a", "b", "c"}) {
            writers.push_back(std::make_unique<Writer>(
                errors_, QStringList{"keys", path(), QLatin1String(section), QString::number(count)}));
        }
        for (const auto &writer : writers)
            QCOMPARE(writer->waitFor(1), 1);
        for (const auto &writer : writers)
            writer->go();
        TaviRegistry registry(file());
        for (int i = 0; i < count; ++i)
            registry.putlong("own", std::to_string(i).c_str(), i);
        for (const auto &writer : writers)
            QCOMPARE(writer->wait(), 0);
        TaviRegistry fresh(file());
        for (TaviRegistry *store : {&registry, &fresh}) {
            for (const char *section : {"a", "b", "c", "own"}) {
                QCOMPARE(store->size(section), size_t(count));
                for (int i = 0; i < count; ++i)
                    QCOMPARE(store->getlong(section, std::to_string(i).c_str()), long(i));
            }
        }
    }

    void whatOneProcessWroteAnotherSeesAtTheNextLook()
    {
        TaviRegistry registry(file());
        QCOMPARE(registry.size("a"), size_t(0));
        {
            Writer writer(errors_, {"keys", path(), "a", "3"});
            writer.go();
            QCOMPARE(writer.waitFor(4), 4); // ready, open, and two of three puts
            QVERIFY(registry.size("a") >= 2);
            QCOMPARE(registry.getlong("a", "1"), 1L);
            QCOMPARE(writer.wait(), 0);
        }
        QVERIFY(!registry.isEndItem(registry.firstItem("a")));
        QCOMPARE(registry.getlong("a", "2"), 2L);
    }

    void processesThatMeetADamagedFileMoveItAsideOnce()
    {
        const QByteArray damaged = "no database at all";
        for (int round = 0; round < 10; ++round) {
            removeAll();
            writeFile(path(), damaged);
            std::vector<std::unique_ptr<Writer>> writers;
            for (const char *section : {"a", "b", "c", "d"}) {
                writers.push_back(
                    std::make_unique<Writer>(errors_, QStringList{"keys", path(), QLatin1String(section), "20"}));
            }
            for (const auto &writer : writers)
                QCOMPARE(writer->waitFor(1), 1);
            for (const auto &writer : writers)
                writer->go();
            for (const auto &writer : writers)
                QCOMPARE(writer->wait(), 0);
            QCOMPARE(damagedFiles(), QStringList{"settings.db.damaged-1"});
            QCOMPARE(readFile(path(".damaged-1")), damaged);
            TaviRegistry registry(file());
            for (const char *section : {"a", "b", "c", "d"})
                QCOMPARE(registry.size(section), size_t(20));
            const QByteArray told = readFile(errors_);
            QVERIFY2(told.count('\n') == 1 && told.contains("cannot be used and is now"), told.constData());
            QVERIFY(QFile::remove(errors_));
        }
    }

    void aFullDiskLosesNothing_data()
    {
        QTest::addColumn<int>("room");
        // In the log's first pages, at the end of a frame, and far into it.
        for (const int room : {1, 100, 4096, 4120, 10000, 60000})
            QTest::addRow("%d bytes left", room) << room;
    }
    void aFullDiskLosesNothing()
    {
        QFETCH(int, room);
        {
            TaviRegistry registry(file());
            Model model;
            uint64_t made = 0;
            for (; made < 100; ++made) {
                registryscript::make(registry, registryscript::changeAt(9, made));
                registryscript::make(model, registryscript::changeAt(9, made));
            }
            const Model stored = model;
            allowLog("cannot be written, values stay in memory: ");
            {
                const FileSizeLimit limit(QFileInfo(path("-wal")).size() + room);
                for (; made < 200; ++made) {
                    registryscript::make(registry, registryscript::changeAt(9, made));
                    registryscript::make(model, registryscript::changeAt(9, made));
                }
                QVERIFY(registryscript::contentOf(registry) == model);
            }
            // A section that is cleared makes room for a while, so there may be more than one streak of failures.
            const int told = recorder().count("cannot be written");
            QVERIFY2(told >= 1 && told <= 5, qPrintable(QString::number(told)));
            {
                TaviRegistry other(file());
                const Model found = registryscript::contentOf(other);
                QVERIFY(found != model);
                // What other programs see is a state that there was.
                Model state = stored;
                uint64_t at = 100;
                while (state != found && at < made)
                    registryscript::make(state, registryscript::changeAt(9, at++));
                QVERIFY(found == state);
            }
            registry.putlong("last", "key", 1);
            TaviRegistry other(file());
            QVERIFY(registryscript::contentOf(other) == model);
            QCOMPARE(other.getlong("last", "key"), 1L);
        }
        QCOMPARE(damagedFiles(), QStringList());
    }

    void aStoreClosedOnAFullDiskKeepsWhatItHad()
    {
        Model model;
        {
            TaviRegistry registry(file());
            for (uint64_t i = 0; i < 100; ++i) {
                registryscript::make(registry, registryscript::changeAt(9, i));
                registryscript::make(model, registryscript::changeAt(9, i));
            }
        }
        auto registry = std::make_unique<TaviRegistry>(file());
        expectLog("cannot be written, values stay in memory: ");
        {
            const FileSizeLimit limit(40000);
            for (int i = 0; i < 50; ++i)
                registry->putstring("more", std::to_string(i).c_str(), std::string(2000, 'x').c_str());
            registry.reset();
        }
        TaviRegistry again(file());
        QVERIFY(registryscript::contentOf(again) == model);
        QCOMPARE(damagedFiles(), QStringList());
    }

    void aStoreMadeOnAFullDiskIsWrittenLater()
    {
        expectLog("values stay in memory: ");
        TaviRegistry registry = [this] {
            const FileSizeLimit limit(0);
            return TaviRegistry(file());
        }();
        {
            const FileSizeLimit limit(0);
            registry.putlong("window", "width", 5);
            registry.putlong("window", "height", 6);
            QCOMPARE(registry.size("window"), size_t(2));
        }
        registry.putlong("window", "depth", 7);
        TaviRegistry other(file());
        QCOMPARE(other.size("window"), size_t(3));
        QCOMPARE(other.getlong("window", "width"), 5L);
    }

    void aFileCutAnywhereIsMovedAside()
    {
        Model model;
        const QByteArray whole = makeSample(model);
        QVERIFY(whole.size() >= 3 * 4096);
        allowLog("cannot be used and is now");
        QCOMPARE(openDamaged(whole, model), Sound);
        QCOMPARE(openDamaged({}, {}), Sound); // an empty file is a new store
        for (int size = 64; size < whole.size(); size += 64)
            QVERIFY2(openDamaged(whole.left(size), model) == MovedAside, qPrintable(QString::number(size)));
        qInfo("%d cuts", whole.size() / 64 - 1);
    }

    void aFlippedBitIsHarmlessOrNoticed()
    {
        Model model;
        const QByteArray whole = makeSample(model);
        allowLog("cannot be used and is now");
        std::mt19937 random(77);
        std::vector<int> bits(8 * 108); // the headers of the file and of its first page
        std::iota(bits.begin(), bits.end(), 0);
        for (int i = 0; i < 1200; ++i)
            bits.push_back(int(random() % unsigned(8 * whole.size())));
        int noticed = 0;
        for (const int bit : bits) {
            QByteArray damaged = whole;
            damaged[bit / 8] = char(damaged.at(bit / 8) ^ (1 << (bit % 8)));
            const Outcome outcome = openDamaged(damaged, model);
            QVERIFY2(outcome != Wrong, qPrintable(QStringLiteral("bit %1 of byte %2").arg(bit % 8).arg(bit / 8)));
            noticed += outcome == MovedAside;
        }
        qInfo("%d bits flipped, %d noticed, %d without effect", int(bits.size()), noticed,
              int(bits.size()) - noticed);
        QVERIFY(noticed > 300);
    }

    void aDamagedFileWithoutALogIsMovedAsideUnchanged()
    {
        {
            TaviRegistry registry(file());
            registry.putstring("section 0", "name", "some text");
        }
        QByteArray bytes = readFile(path());
        bytes[18] = bytes[19] = '\1'; // a file in the older of the two modes
        const Model model = {{"section 0", {{"name", "some text"}}}};
        QCOMPARE(openDamaged(bytes, model), Sound);

        bytes.replace("some text", "some test");
        expectLog("cannot be used and is now");
        QCOMPARE(openDamaged(bytes, model), MovedAside);
    }

    void aFileWithRowsOutOfOrderIsMovedAside()
    {
        {
            TaviRegistry registry(file());
            registry.putstring("section 0", "name", "main");
            registry.putstring("section 0", "title", "text");
        }
        QByteArray bytes = readFile(path());
        const Model model = {{"section 0", {{"name", "main"}, {"title", "text"}}}};
        QCOMPARE(openDamaged(bytes, model), Sound);

        // In such a file a row is looked for where it is not, and stored a second time.
        const int places = bytes.size() / 2 + 8;
        std::swap_ranges(bytes.begin() + places, bytes.begin() + places + 2, bytes.begin() + places + 2);
        expectLog("cannot be used and is now");
        QCOMPARE(openDamaged(bytes, model), MovedAside);
    }

    void aFileThatClaimsMoreThanMemoryHoldsIsMovedAside_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : {"huge_length.db", "huge_text.db"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void aFileThatClaimsMoreThanMemoryHoldsIsMovedAside()
    {
        QFETCH(QString, name);
        const QByteArray damaged = readFile(dataFile(QStringLiteral("taviapp/") + name));
        QCOMPARE(damaged.size(), 1024);
        expectLog("cannot be used and is now");
        QCOMPARE(openDamaged(damaged, {}), MovedAside);
    }

    void aDamagedLogOfAKilledStoreIsReadUpToTheDamage()
    {
        // What a killed program leaves: a file and a log of some dozens of changes.
        constexpr int changes = 25;
        std::vector<Model> states(1);
        {
            Writer writer(errors_, {"script", path(), "3", "0"});
            QVERIFY(writer.waitFor(1 + changes) == 1 + changes);
            writer.kill();
            const int made = writer.waitFor(INT_MAX) - 1;
            for (int i = 0; i < made + 1; ++i) {
                Model next = states.back();
                registryscript::make(next, registryscript::changeAt(3, uint64_t(i)));
                if (next != states.back()) // clearing what is not there writes nothing
                    states.push_back(next);
            }
        }
        const QByteArray whole = readFile(path());
        const QByteArray log = readFile(path("-wal"));
        QVERIFY(log.size() > changes * 2048);
        allowLog("its last changes are lost; a copy is ");

        /// How many changes of the sound log are lost with this one; below zero where what is found is no state at
        /// all.
        size_t sound = states.size() - 1;
        const auto lostWith = [&](const QByteArray &damaged) -> int {
            removeAll();
            writeFile(path(), whole);
            writeFile(path("-wal"), damaged);
            const int lines_before = recorder().lines().size();
            Model found;
            {
                TaviRegistry registry(file());
                found = registryscript::contentOf(registry);
            }
            const bool told = recorder().lines().size() == lines_before + 1;
            const QStringList aside = damagedFiles();
            if (told != !aside.isEmpty() || (told && readFile(path(".damaged-1-wal")) != damaged))
                return -1;
            {
                TaviRegistry registry(file());
                if (registryscript::contentOf(registry) != found || damagedFiles() != aside)
                    return -2;
            }
            for (size_t state = sound + 1; state-- > 0;) {
                if (states[state] != found)
                    continue;
                // Without a word only the last change may go: it cannot be told from one that was not finished.
                const int lost = int(sound - state);
                return lost > 1 && !told && damaged.size() == log.size() ? -3 : lost;
            }
            return -4;
        };
        if (lostWith(log) != 0)
            --sound; // the kill came within the last change
        QCOMPARE(lostWith(log), 0);

        int lost_before = int(sound);
        for (int size = 0; size <= log.size(); size += 64 * 16) {
            const int lost = lostWith(log.left(size));
            QVERIFY2(lost >= 0 && lost <= lost_before, qPrintable(QStringLiteral("%1: %2").arg(size).arg(lost)));
            lost_before = lost;
        }
        std::mt19937 random(79);
        int noticed = 0;
        for (int i = 0; i < 500; ++i) {
            // Headers first, then anywhere.
            const int at = i < 56 ? i : int(random() % unsigned(log.size()));
            QByteArray damaged = log;
            damaged[at] = char(damaged.at(at) ^ (1 << (random() % 8)));
            const int lost = lostWith(damaged);
            QVERIFY2(lost >= 0, qPrintable(QStringLiteral("byte %1: %2").arg(at).arg(lost)));
            noticed += lost > 0;
        }
        QVERIFY(noticed > 400);
    }

    void garbageIsHarmlessOrNoticed()
    {
        Model model;
        const QByteArray whole = makeSample(model);
        allowLog("cannot be used and is now");
        std::mt19937 random(78);
        int noticed = 0;
        for (int i = 0; i < 300; ++i) {
            QByteArray damaged = whole;
            const int length = 1 << (random() % 12);
            const int from = int(random() % unsigned(whole.size()));
            for (int at = from; at < std::min(from + length, whole.size()); ++at)
                damaged[at] = i % 2 == 0 ? char(random()) : '\0';
            const Outcome outcome = openDamaged(damaged, model);
            QVERIFY2(outcome != Wrong, qPrintable(QStringLiteral("%1 bytes at %2").arg(length).arg(from)));
            noticed += outcome == MovedAside;
        }
        QVERIFY(noticed > 150);
    }
};

TAVI_TEST_MAIN(TestRegistryReliability)
#include "tst_registry_reliability.moc"
