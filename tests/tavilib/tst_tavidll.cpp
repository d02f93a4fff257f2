// SPDX-License-Identifier: MIT
#include "tavilib/tavidll.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstring>
#include <dlfcn.h>
#include <link.h>

class TestTaviDll : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aSymbolIsFoundAndCalled()
    {
        void *handle = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY2(handle, TaviDllError());
        auto *const twice = reinterpret_cast<int (*)(int)>(TaviDllGetProcAddress(handle, "sampleTwice"));
        QVERIFY(twice);
        QCOMPARE(twice(21), 42);
        auto *const word = static_cast<int *>(TaviDllGetProcAddress(handle, "sampleWord"));
        QVERIFY(word);
        QCOMPARE(*word, 7);
        QCOMPARE(TaviDllError(), "");
        TaviDllClose(handle);
    }

    void aMissingSymbolIsNull()
    {
        void *handle = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY(handle);
        QVERIFY(!TaviDllGetProcAddress(handle, "sampleThrice"));
        QVERIFY2(QByteArray(TaviDllError()).contains("sampleThrice"), "the error names the symbol");
        QCOMPARE(TaviDllError(), "");
        QVERIFY(!TaviDllGetProcAddress(handle, "sampleHidden"));
        QVERIFY(!TaviDllGetProcAddress(handle, ""));
        QVERIFY(!TaviDllGetProcAddress(handle, nullptr));
        QVERIFY(!TaviDllGetProcAddress(nullptr, "sampleTwice"));
        TaviDllClose(handle);
        TaviDllError();
    }

    void symbolsAreNotSharedWithOthers()
    {
        void *handle = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY(handle);
        QVERIFY(!dlsym(RTLD_DEFAULT, "sampleTwice"));
        TaviDllClose(handle);
        TaviDllError();
    }

    void closingUnloads()
    {
        void *handle = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY(handle);
        int unloaded = 0;
        reinterpret_cast<void (*)(int *)>(TaviDllGetProcAddress(handle, "sampleTellUnload"))(&unloaded);
        TaviDllClose(handle);
        QCOMPARE(unloaded, 1);
        TaviDllClose(nullptr);
    }

    void eachOpenWantsItsClose()
    {
        void *first = TaviDllOpen(TAVI_DLL_SAMPLE);
        void *second = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY(first && second);
        int unloaded = 0;
        reinterpret_cast<void (*)(int *)>(TaviDllGetProcAddress(first, "sampleTellUnload"))(&unloaded);
        TaviDllClose(first);
        QCOMPARE(unloaded, 0);
        TaviDllClose(second);
        QCOMPARE(unloaded, 1);
    }

    void whatCannotBeLoadedIsNullWithAReason()
    {
        QTemporaryDir directory;
        const auto refused = [](const QString &path) {
            TaviDllError();
            void *handle = TaviDllOpen(path.toUtf8().constData());
            const bool told = *TaviDllError() != '\0';
            TaviDllClose(handle);
            return !handle && told;
        };
        QVERIFY(refused(directory.filePath("missing.so")));
        QVERIFY(refused(directory.path()));
        for (const QByteArray &content : {QByteArray(), QByteArray("no shared object"), QByteArray("\177ELF")}) {
            QFile file(directory.filePath("file.so"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
            file.close();
            QVERIFY2(refused(file.fileName()), content.constData());
        }
    }

    /// To touch what is missing would end the program.
    void anObjectThatIsCutShortIsRefused()
    {
        const QByteArray whole = sample();
        const int segments_end = endOfLastSegment(whole);
        QVERIFY(segments_end > 0 && segments_end < whole.size());
        QTemporaryDir directory;
        for (int length = int(sizeof(ElfW(Ehdr))); length < segments_end; length += 97) {
            QCOMPARE(TaviDllOpen(written(directory, whole.left(length)).constData()), nullptr);
            QCOMPARE(TaviDllError(), "the file is cut short");
            QCOMPARE(TaviDllError(), "");
        }
        QCOMPARE(TaviDllOpen(written(directory, whole.left(segments_end - 1)).constData()), nullptr);
        QCOMPARE(TaviDllError(), "the file is cut short");
        // What follows is for debuggers.
        void *handle = TaviDllOpen(written(directory, whole.left(segments_end)).constData());
        QVERIFY2(handle, TaviDllError());
        QVERIFY(TaviDllGetProcAddress(handle, "sampleTwice"));
        TaviDllClose(handle);
    }

    /// An object of another kind is laid out differently, and the loader says what it is.
    void anObjectOfAnotherKindIsRefusedByTheLoader_data()
    {
        QTest::addColumn<int>("byte");
        QTest::newRow("word size") << int(EI_CLASS);
        QTest::newRow("byte order") << int(EI_DATA);
    }

    void anObjectOfAnotherKindIsRefusedByTheLoader()
    {
        QFETCH(int, byte);
        QByteArray foreign = sample();
        foreign[byte] = char(3 - foreign[byte]); // each has the values 1 and 2
        QTemporaryDir directory;
        QCOMPARE(TaviDllOpen(written(directory, foreign.left(500)).constData()), nullptr);
        const QByteArray error = TaviDllError();
        QVERIFY2(error.contains(directory.path().toUtf8()), error.constData());
    }

    /// A word about a cut file is not taken for one about what happened since.
    void theErrorIsThatOfTheLastFailure()
    {
        QTemporaryDir directory;
        const QByteArray cut = written(directory, sample().left(500));
        QVERIFY(!TaviDllOpen(cut.constData()));
        QVERIFY(!TaviDllOpen(TAVI_DLL_UNRESOLVED));
        QVERIFY(QByteArray(TaviDllError()).contains("sampleNowhere"));
        void *handle = TaviDllOpen(TAVI_DLL_SAMPLE);
        QVERIFY(handle);
        QVERIFY(!TaviDllOpen(cut.constData()));
        QVERIFY(!TaviDllGetProcAddress(handle, "sampleThrice"));
        QVERIFY(QByteArray(TaviDllError()).contains("sampleThrice"));
        TaviDllClose(handle);
    }

    void anObjectWithUnresolvedSymbolsIsRefused()
    {
        QVERIFY(!TaviDllOpen(TAVI_DLL_UNRESOLVED));
        QVERIFY(QByteArray(TaviDllError()).contains("sampleNowhere"));
    }

    void anEmptyPathIsNotTheProgramItself()
    {
        QVERIFY(!TaviDllOpen(""));
        QVERIFY(!TaviDllOpen(nullptr));
    }

private:
    static QByteArray sample()
    {
        QFile file(TAVI_DLL_SAMPLE);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Each under a name of its own: the loader knows again what it has seen.
    QByteArray written(const QTemporaryDir &directory, const QByteArray &content)
    {
        QFile file(directory.filePath(QStringLiteral("object%1.so").arg(++written_)));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName().toUtf8();
    }
    static int endOfLastSegment(const QByteArray &object)
    {
        ElfW(Ehdr) header;
        std::memcpy(&header, object.constData(), sizeof header);
        ElfW(Off) end = 0;
        for (int i = 0; i < header.e_phnum; ++i) {
            ElfW(Phdr) segment;
            std::memcpy(&segment, object.constData() + header.e_phoff + i * sizeof segment, sizeof segment);
            if (segment.p_type == PT_LOAD)
                end = std::max(end, segment.p_offset + segment.p_filesz);
        }
        return int(end);
    }

    int written_ = 0;
};

TAVI_TEST_MAIN(TestTaviDll)
#include "tst_tavidll.moc"
