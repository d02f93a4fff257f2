// SPDX-License-Identifier: MIT
#include "tavilib/tavilog.h"
#include "tests/tavilib/standarderror.h"

#include <QtTest>

#include <cstdlib>
#include <new>

// An empty format is what the form for failed allocations takes.
#pragma GCC diagnostic ignored "-Wformat-zero-length"

namespace {
thread_local bool memory_is_out = false;
} // namespace

// The only allocations that the log can make are those of the C++ library.
void *operator new(size_t size)
{
    void *memory = memory_is_out ? nullptr : std::malloc(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void *memory) noexcept
{
    std::free(memory);
}
void operator delete(void *memory, size_t) noexcept
{
    std::free(memory);
}

/// The log where no memory is left; a program of its own, because it replaces the allocation functions.
class TestTaviLogMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutMemoryALineIsStillWritten()
    {
        const std::string text(5000, 'x');
        StandardError captured;
        memory_is_out = true;
        LogError("unit", "function", "error");
        LogError("unit", "function", text.c_str());
        TaviLogMessage("unit", "function", 0, 1, 1, "%s", "short");
        TaviLogMessage("unit", "function", 0, 2, 1, "", 40);
        TaviLogMessage("unit", "function", 0, 1, 1, "%s", text.c_str()); // cut
        memory_is_out = false;
        const QStringList lines = QString::fromStdString(captured.text()).split('\n');
        QCOMPARE(lines.size(), 6);
        QCOMPARE(lines[0], QString("unit: function: error"));
        QCOMPARE(lines[1], "unit: function: " + QString(5000, 'x'));
        QCOMPARE(lines[2], QString("unit: function: short"));
        QCOMPARE(lines[3], QString("unit: function: Cannot allocate 40 bytes"));
        QVERIFY(lines[4].startsWith("unit: function: xxxx"));
    }
};

QTEST_GUILESS_MAIN(TestTaviLogMemory)
#include "tst_tavilog_memory.moc"
