// SPDX-License-Identifier: MIT
#include "tavilib/tavidll.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

#include <dlfcn.h>

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
};

TAVI_TEST_MAIN(TestTaviDll)
#include "tst_tavidll.moc"
