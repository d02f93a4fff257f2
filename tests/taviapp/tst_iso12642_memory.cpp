// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <cstdlib>
#include <new>

namespace {

/// Allocations that still succeed on this thread; negative: all of them.
thread_local long allocations_left = -1;

void *allocate(size_t size)
{
    if (allocations_left == 0)
        throw std::bad_alloc();
    if (allocations_left > 0)
        --allocations_left;
    void *memory = std::malloc(size > 0 ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

} // namespace

// The standard library's containers inside the library under test allocate by these.
void *operator new(size_t size)
{
    return allocate(size);
}

void *operator new[](size_t size)
{
    return allocate(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, size_t) noexcept
{
    std::free(memory);
}

/// The importer where memory runs out at each of its allocations in turn: nothing is thrown, nothing leaks.
class TestIso12642Memory : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsThrown_data();
    void nothingIsThrown();
    void theLoggingFormThrowsNothingEither();
};

void TestIso12642Memory::nothingIsThrown_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"k_first", "no_values", "quotes_missing", "tabs_empty_cell", "bom_utf16_le", "prose",
                             "inks_of_6", "two_tables", "bare_numbers_and_lab"})
        QTest::newRow(file) << QString("cgats/%1.txt").arg(file);
}

void TestIso12642Memory::nothingIsThrown()
{
    QFETCH(QString, file);
    const std::string path = dataFile(file).toStdString();
    CgatsReport whole_report;
    const QStringList whole = patchTexts(TAVICOMBOCOLOUR_CC(ISO12642Importer::import(path, 0, whole_report)));
    for (long count = 0;; ++count) {
        CgatsReport report;
        allocations_left = count;
        TAVICOMBOCOLOUR *list = ISO12642Importer::import(path, 0, report);
        const bool ran_out = allocations_left == 0;
        allocations_left = -1;
        const TAVICOMBOCOLOUR_CC patches(list);
        if (!ran_out) {
            QCOMPARE(patchTexts(patches), whole);
            QCOMPARE(report.refusalText(), whole_report.refusalText());
            QVERIFY(count > 10);
            return;
        }
        // The last allocation may be the one that was just enough.
        if (report.refusal_reason == "out of memory")
            QCOMPARE(patches.count(), size_t(0));
        else
            QCOMPARE(patchTexts(patches), whole);
    }
}

void TestIso12642Memory::theLoggingFormThrowsNothingEither()
{
    const std::string path = dataFile("cgats/prose.txt").toStdString();
    allowLog("iso12642: import: ");
    for (long count = 0; count < 200; ++count) {
        allocations_left = count;
        TAVICOMBOCOLOUR *list = ISO12642Importer::import(path, 0);
        allocations_left = -1;
        QCOMPARE(list, nullptr);
        QCOMPARE(recorder().lines().size(), int(count) + 1);
    }
    QCOMPARE(recorder().count("prose.txt:2: there is no BEGIN_DATA") > 0, true);
    QCOMPARE(recorder().count("out of memory") > 0, true);
}

TAVI_TEST_MAIN(TestIso12642Memory)
#include "tst_iso12642_memory.moc"
