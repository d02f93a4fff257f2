// SPDX-License-Identifier: MIT
#include "instruments/instrumentmessage_p.h"
#include "tavilib/tavialloc_p.h"
#include "tests/instruments/messagetranslator.h"
#include "tests/support/tavitest.h"

#include <atomic>
#include <cstdlib>
#include <cwchar>
#include <thread>
#include <vector>

namespace {

/// The text; "<null>" for a null one.
QByteArray message(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    char *text = formatInstrumentMessage(format, arguments);
    va_end(arguments);
    const QByteArray copy = text ? QByteArray(text) : QByteArray("<null>");
    std::free(text);
    return copy;
}

/// Lets allocations through until the n-th of this thread's, counting from 0, and notes all sizes asked for.
class FailingAllocations
{
public:
    explicit FailingAllocations(int fail_at) : fail_at_(fail_at) { TaviAllocSetHook(hook, this); }
    ~FailingAllocations() { TaviAllocSetHook(nullptr, nullptr); }

    std::vector<size_t> sizes;

private:
    static bool hook(size_t size, void *context)
    {
        auto *self = static_cast<FailingAllocations *>(context);
        self->sizes.push_back(size);
        return static_cast<int>(self->sizes.size()) - 1 != self->fail_at_;
    }
    int fail_at_;
};

} // namespace

class TestInstrumentMessage : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void placeholdersAreComparedInNumberKindAndOrder_data()
    {
        QTest::addColumn<QByteArray>("a");
        QTest::addColumn<QByteArray>("b");
        QTest::addColumn<bool>("alike");
        const auto row = [](const char *a, const char *b, bool alike) {
            QTest::addRow("%s | %s", a, b) << QByteArray(a) << QByteArray(b) << alike;
        };
        row("", "", true);
        row("no placeholder", "kein Platzhalter", true);
        row("%s", "%s", true);
        row("Error %s", "%s ist falsch", true);
        row("%s", "", false);
        row("", "%s", false);
        row("%s", "%d", false);
        row("%s %d", "%d %s", false);
        row("%s %s", "%s", false);
        row("%s", "%s %s", false);
        row("%d", "%ld", false);
        row("%lu", "%lu", true);
        row("%lu", "%llu", false);
        row("%lu", "%zu", false);
        row("%hhd", "%hd", false);
        row("%Lf", "%f", false);
        row("%x", "%X", false);
        row("%c%lu", "%lu%c", false);
        row("100%%", "100 %%", true);
        row("100%%", "hundert", true);
        row("%%s", "", true);
        row("%%%s", "%s", true);
        row("%5d", "%d", true);
        row("%-05.3f", "%f", true);
        row("%.2f", "%'+ #08.12f", true);
        row("%*d", "%d", false);
        row("%*d", "%*d", true);
        row("%.*d", "%*d", true);
        row("%*.*f", "%*f", false);
        row("%*.*f", "%*.*f", true);
        row("%*s", "%s%s", false);
        row("%n", "", false);
        row("%s", "%1$s", false);
        row("%s %s", "%2$s %1$s", false);
        row("100%", "100%", true);
        row("100%", "hundert%", true);
        row("100%", "100", false);
        row("100% ", "100 %", false);
        row("%k", "%k", true);
        row("%k", "%y", false);
        row("%l", "%l", true);
        row("%l", "%l x", false);
    }
    void placeholdersAreComparedInNumberKindAndOrder()
    {
        QFETCH(QByteArray, a);
        QFETCH(QByteArray, b);
        QFETCH(bool, alike);
        QCOMPARE(formatsTakeSameArguments(a.constData(), b.constData()), alike);
        QCOMPARE(formatsTakeSameArguments(b.constData(), a.constData()), alike);
        QVERIFY(formatsTakeSameArguments(a.constData(), a.constData()));
    }

    void nullFormatsTakeNoArguments()
    {
        QVERIFY(formatsTakeSameArguments(nullptr, nullptr));
        QVERIFY(formatsTakeSameArguments(nullptr, ""));
        QVERIFY(!formatsTakeSameArguments("%s", nullptr));
    }

    void argumentsAreFilledIn()
    {
        QCOMPARE(message("Measure %c%lu", 'C', 12UL), QByteArray("Measure C12"));
        QCOMPARE(message("Not enough data for strip %d patch %d: %s", 1, -2, "why"),
                 QByteArray("Not enough data for strip 1 patch -2: why"));
        QCOMPARE(message("100%% of %*d", 4, 7), QByteArray("100% of    7"));
    }

    void aNullFormatIsAnEmptyText()
    {
        QCOMPARE(message(nullptr), QByteArray(""));
        QCOMPARE(message(""), QByteArray(""));
    }

    void anUnknownTextIsFormattedToo() { QCOMPARE(message("nobody knows %s", "it"), QByteArray("nobody knows it")); }

    void theTranslationIsFormatted()
    {
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Cannot open file %s",
                       QString::fromUtf8("%s \xc3\xb6"
                                         "ffnet sich nicht"));
        QCOMPARE(message("Cannot open file %s", "a.txt"), QByteArray("a.txt \xc3\xb6"
                                                                     "ffnet sich nicht"));
    }

    void aTranslationWithOtherPlaceholdersIsPassedOver_data()
    {
        QTest::addColumn<QString>("translation");
        QTest::newRow("more") << "Messe %c%lu %s";
        QTest::newRow("fewer") << "Messe %c";
        QTest::newRow("none") << "Messe";
        QTest::newRow("swapped") << "Messe %lu%c";
        QTest::newRow("other modifier") << "Messe %c%u";
        QTest::newRow("other kind") << "Messe %s%lu";
        QTest::newRow("star width") << "Messe %c%*lu";
        QTest::newRow("positions") << "Messe %1$c%2$lu";
        QTest::newRow("writes") << "Messe %c%n";
        QTest::newRow("broken") << "Messe %c%lu %";
    }
    void aTranslationWithOtherPlaceholdersIsPassedOver()
    {
        QFETCH(QString, translation);
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Measure %c%lu", translation);
        QCOMPARE(message("Measure %c%lu", 'A', 1UL), QByteArray("Measure A1"));
    }

    void aTranslationMayFormatOtherwise()
    {
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Measure %c%lu", "%c/%03lu messen, zu 100%%");
        QCOMPARE(message("Measure %c%lu", 'A', 1UL), QByteArray("A/001 messen, zu 100%"));
    }

    void anyLengthComesThroughWhole_data()
    {
        QTest::addColumn<int>("length");
        for (int length : {0, 1, 126, 127, 128, 129, 255, 256, 257, 5000, 100000})
            QTest::addRow("%d", length) << length;
    }
    void anyLengthComesThroughWhole()
    {
        QFETCH(int, length);
        const QByteArray text(length, 'x');
        QCOMPARE(message("%s", text.constData()), text);
        QCOMPARE(message(text.constData()), text);
    }

    void theBufferBeginsAt128BytesAndDoubles()
    {
        const QByteArray text(300, 'x');
        FailingAllocations allocations(-1);
        QCOMPARE(message("%s", text.constData()), text);
        QCOMPARE(allocations.sizes, std::vector<size_t>({128, 256, 512}));
    }

    void aFailedAllocationGivesNullAndFreesAll()
    {
        const QByteArray text(300, 'x');
        for (int fail_at = 0; fail_at < 3; ++fail_at) {
            FailingAllocations allocations(fail_at);
            QCOMPARE(message("%s", text.constData()), QByteArray("<null>"));
            QCOMPARE(int(allocations.sizes.size()), fail_at + 1);
        }
    }

    void aFormatThatCannotBeFormattedIsTheText()
    {
        QCOMPARE(message("only 100%"), QByteArray("only 100%"));
        QCOMPARE(message("half a surrogate pair: %lc", static_cast<wint_t>(0xdc00)),
                 QByteArray("half a surrogate pair: %lc"));
        const QByteArray text = QByteArray(500, 'x') + '%';
        QCOMPARE(message(text.constData()), text);
    }

    void aFailedAllocationForAnUnformattableTextGivesNull()
    {
        const QByteArray text = QByteArray(500, 'x') + '%';
        FailingAllocations allocations(1);
        QCOMPARE(message(text.constData()), QByteArray("<null>"));
    }

    void theCallersArgumentsServeEachAttempt()
    {
        const QByteArray text(200, 'x');
        QCOMPARE(message("%d %s %lu %.1f", 1, text.constData(), 2UL, 0.5), "1 " + text + " 2 0.5");
    }

    void workerThreadsFormatToo()
    {
        MessageTranslator translator;
        translator.set("SpectroStringKit", "Ready for strip %lu", "Streifen %lu");
        std::atomic<int> right = 0;
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 3; ++thread) {
            threads.emplace_back([&right, thread] {
                for (int i = 0; i < 200; ++i) {
                    const auto number = static_cast<unsigned long>(thread) * 1000UL + static_cast<unsigned long>(i);
                    right += message("Ready for strip %lu", number)
                             == "Streifen " + QByteArray::number(qulonglong(number));
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(right.load(), 600);
    }
};

TAVI_TEST_MAIN(TestInstrumentMessage)
#include "tst_instrumentmessage.moc"
