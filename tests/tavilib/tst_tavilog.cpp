// SPDX-License-Identifier: MIT
#include "tavilib/tavilog.h"
#include "tests/tavilib/standarderror.h"

#include <QtTest>

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

// An empty format is what the form for failed allocations takes.
#pragma GCC diagnostic ignored "-Wformat-zero-length"

namespace {

struct Recorded {
    int kind;
    std::string unit;
    std::string function;
    std::string text;
};

/// A sink that keeps its lines, without a lock: calls come one at a time.
void record(void *context, const TaviLogLine &line)
{
    static_cast<std::vector<Recorded> *>(context)->push_back({line.kind, line.unit, line.function, line.text});
}

} // namespace

/// Not derived from TaviTest, which takes the sink for itself.
class TestTaviLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { TaviLogSetSink(nullptr, nullptr); }

    void aMessageIsOneLine()
    {
        StandardError captured;
        TaviLogMessage("orloinstrument", "buildInstrumentList", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                       "%s has %d of %.1f", "list", 3, 4.5);
        TaviLogMessage("spectrobuddy", "message", TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "no arguments");
        QCOMPARE(
            captured.text(),
            std::string(
                "orloinstrument: buildInstrumentList: list has 3 of 4.5\nspectrobuddy: message: no arguments\n"));
    }

    void emptyAndNullNamesAreLeftOut()
    {
        const char *null = nullptr;
        StandardError captured;
        TaviLogMessage("", "", 0, 1, 1, "%d", 1);
        TaviLogMessage(null, null, 0, 1, 1, "%d", 2);
        TaviLogMessage("unit", "", 0, 1, 1, "%d", 3);
        TaviLogMessage("", "function", 0, 1, 1, "%d", 4);
        LogError(null, null, null);
        TaviLogMessage("unit", "function", 0, 1, 1, null, 0); // without the argument compilers warn
        QCOMPARE(captured.text(), std::string("1\n2\nunit: 3\nfunction: 4\n\nunit: function: \n"));
    }

    void anAllocationFailureNamesItsBytes()
    {
        StandardError captured;
        TaviLogMessage("unit", "function", 0, TAVILOG_FORM_ALLOCATION, 1, "", 40);
        TaviLogAllocationFailure("unit", "function", 50);
        TaviLogAllocationFailure(nullptr, nullptr, SIZE_MAX);
        QCOMPARE(captured.text(),
                 std::string("unit: function: Cannot allocate 40 bytes\nunit: function: Cannot allocate 50 bytes\n"
                             "Cannot allocate 2147483647 bytes\n"));
    }

    void logErrorDoesNotFormat()
    {
        StandardError captured;
        LogError("unit", "function", "100 %s %n %");
        QCOMPARE(captured.text(), std::string("unit: function: 100 %s %n %\n"));
    }

    void controlCharactersAreEscaped()
    {
        StandardError captured;
        LogError("un\nit", "func\x1btion",
                 "a\nb\r\nc\td\x01\x1b[31m\x7f gr\xc3\xbc\xc3\x9f"
                 "e");
        QCOMPARE(captured.text(),
                 std::string("un\\nit: func\\x1btion: a\\nb\\r\\nc\td\\x01\\x1b[31m\\x7f gr\xc3\xbc\xc3\x9f"
                             "e\n"));
    }

    void aTextOfAnyLengthIsWhole_data()
    {
        QTest::addColumn<int>("length");
        for (const int length : {0, 1, 1000, 1022, 1023, 1024, 1025, 4000, 4094, 4095, 4096, 4097, 8192, 1000000})
            QTest::addRow("%d", length) << length;
    }
    void aTextOfAnyLengthIsWhole()
    {
        QFETCH(int, length);
        std::string text;
        for (int i = 0; i < length; ++i)
            text += char('a' + i % 26);
        StandardError captured;
        TaviLogMessage("", "", 0, 1, 1, "%s", text.c_str());
        LogError("", "", text.c_str());
        QVERIFY(captured.text() == text + "\n" + text + "\n");
    }

    void linesOfManyThreadsStayWhole()
    {
        constexpr int threads = 4;
        constexpr int lines = 300;
        StandardError captured;
        std::vector<std::thread> running;
        running.reserve(4);
        for (int thread = 0; thread < threads; ++thread) {
            running.emplace_back([thread] {
                // Each line of one letter and of its own length, some longer than a pipe takes at once.
                for (int i = 0; i < lines; ++i) {
                    const std::string text(size_t(1 + i * 37), char('a' + thread));
                    TaviLogMessage("", "", 0, 1, 1, "%s", text.c_str());
                }
            });
        }
        for (std::thread &thread : running)
            thread.join();
        std::vector<int> next(threads, 0);
        const std::string &text = captured.text();
        for (size_t from = 0; from < text.size();) {
            const size_t end = text.find('\n', from);
            QVERIFY(end != std::string::npos);
            const std::string line = text.substr(from, end - from);
            const int thread = line.empty() ? -1 : line[0] - 'a';
            QVERIFY2(thread >= 0 && thread < threads, line.c_str());
            QVERIFY(line == std::string(size_t(1 + next[size_t(thread)]++ * 37), char('a' + thread)));
            from = end + 1;
        }
        QVERIFY(next == std::vector<int>(threads, lines));
    }

    void aSinkTakesTheLinesAsTheyAre()
    {
        std::vector<Recorded> lines;
        StandardError captured;
        TaviLogSetSink(record, &lines);
        const char *null = nullptr;
        TaviLogMessage("unit", "function", TAVILOG_PLUGIN, 1, 1, "one\n%s", "two");
        TaviLogMessage(null, null, TAVILOG_ERROR, TAVILOG_FORM_ALLOCATION, 1, "", 7);
        LogError(null, null, null);
        TaviLogSetSink(nullptr, nullptr);
        LogError("", "", "afterwards");
        QCOMPARE(captured.text(), std::string("afterwards\n"));
        QCOMPARE(lines.size(), size_t(3));
        QCOMPARE(lines[0].kind, TAVILOG_PLUGIN);
        QCOMPARE(lines[0].unit, std::string("unit"));
        QCOMPARE(lines[0].function, std::string("function"));
        QCOMPARE(lines[0].text, std::string("one\ntwo"));
        QCOMPARE(lines[1].kind, TAVILOG_ERROR);
        QCOMPARE(lines[1].unit, std::string());
        QCOMPARE(lines[1].text, std::string("Cannot allocate 7 bytes"));
        QCOMPARE(lines[2].text, std::string());
    }

    void aSinkIsCalledOneLineAtATime()
    {
        std::vector<Recorded> lines;
        TaviLogSetSink(record, &lines);
        std::vector<std::thread> running;
        running.reserve(4);
        for (int thread = 0; thread < 4; ++thread) {
            running.emplace_back([] {
                for (int i = 0; i < 500; ++i)
                    TaviLogMessage("unit", "function", 0, 1, 1, "%d", i);
            });
        }
        for (std::thread &thread : running)
            thread.join();
        TaviLogSetSink(nullptr, nullptr);
        QCOMPARE(lines.size(), size_t(2000));
    }

    void aSinkMayLog()
    {
        StandardError captured;
        TaviLogSetSink([](void *, const TaviLogLine &line) { LogError("sink", "", line.text); }, nullptr);
        LogError("unit", "function", "text");
        LogError("unit", "function", "again");
        TaviLogSetSink(nullptr, nullptr);
        QCOMPARE(captured.text(), std::string("sink: text\nsink: again\n"));
    }

    void afterASinkIsReplacedItIsNotCalledAnyMore()
    {
        struct Slow {
            std::atomic<bool> entered{false};
            std::atomic<bool> left{false};
        } slow;
        TaviLogSetSink(
            [](void *context, const TaviLogLine &) {
                auto *self = static_cast<Slow *>(context);
                self->entered = true;
                for (int i = 0; i < 100; ++i)
                    std::this_thread::yield();
                self->left = true;
            },
            &slow);
        std::thread logger([] { LogError("", "", "text"); });
        while (!slow.entered)
            std::this_thread::yield();
        TaviLogSetSink(nullptr, nullptr);
        QVERIFY(slow.left);
        logger.join();
    }

    void aBrokenStandardErrorIsNoFailure()
    {
        const int former = dup(STDERR_FILENO);
        // A pipe that nobody reads any more, with the signal that ends programs by default.
        int ends[2];
        QCOMPARE(pipe2(ends, O_CLOEXEC), 0);
        ::close(ends[0]);
        auto former_handler = std::signal(SIGPIPE, SIG_DFL);
        dup2(ends[1], STDERR_FILENO);
        LogError("unit", "function", "nobody listens");
        sigset_t pending;
        sigpending(&pending);
        const bool signal_left = sigismember(&pending, SIGPIPE) != 0;
        // Not open for writing at all.
        const int null = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        dup2(null, STDERR_FILENO);
        LogError("unit", "function", "nobody listens");
        dup2(former, STDERR_FILENO);
        std::signal(SIGPIPE, former_handler);
        for (const int file : {former, ends[1], null})
            ::close(file);
        QVERIFY(!signal_left);
    }

    void aStandardErrorThatDoesNotBlockGetsWholeLines()
    {
        StandardError captured;
        const int flags = fcntl(STDERR_FILENO, F_GETFL);
        QCOMPARE(fcntl(STDERR_FILENO, F_SETFL, flags | O_NONBLOCK), 0);
        const std::string text(1000000, 'x'); // more than a pipe holds
        LogError("", "", text.c_str());
        QVERIFY(captured.text() == text + "\n");
    }
};

QTEST_GUILESS_MAIN(TestTaviLog)
#include "tst_tavilog.moc"
