// SPDX-License-Identifier: MIT
#include "taviapp/tavidir.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

class TestTaviDir : public TaviTest
{
    Q_OBJECT

    static QStringList namesOf(const TaviDir &directory)
    {
        QStringList names;
        for (const TaviDirEntry &entry : directory.entrylist())
            names.append(QString::fromStdString(entry.name));
        return names;
    }

private Q_SLOTS:
    void entriesAreSortedWithTheirModes()
    {
        QTemporaryDir temporary;
        QVERIFY(QDir(temporary.path()).mkdir("b"));
        for (const char *name : {"c.qm", "a.qm", "._a.qm"}) {
            QFile file(temporary.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const TaviDir by_string(temporary.path().toStdString(), false);
        const TaviDir by_pointer(temporary.path().toUtf8().constData(), false);
        for (const TaviDir *directory : {&by_string, &by_pointer}) {
            QCOMPARE(namesOf(*directory), (QStringList{"a.qm", "b", "c.qm"}));
            const TaviDir::EntryList &entries = directory->entrylist();
            QCOMPARE(entries[0].mode & 0xf000U, 0x8000U);
            QCOMPARE(entries[1].mode & 0xf000U, 0x4000U);
            QCOMPARE(&directory->entrylist(), &entries);
        }
    }

    void theListIsThatOfConstruction()
    {
        QTemporaryDir temporary;
        const TaviDir before(temporary.path().toStdString(), false);
        QVERIFY(QDir(temporary.path()).mkdir("later"));
        QVERIFY(before.entrylist().empty());
        QCOMPARE(namesOf(TaviDir(temporary.path().toStdString(), false)), QStringList{"later"});
    }

    void whatCannotBeListedHasNoEntries()
    {
        QTemporaryDir temporary;
        QFile file(temporary.filePath("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(TaviDir(temporary.filePath("missing").toStdString(), false).entrylist().empty());
        QVERIFY(TaviDir(temporary.filePath("file").toStdString(), false).entrylist().empty());
        QVERIFY(TaviDir("", false).entrylist().empty());
        QVERIFY(TaviDir(static_cast<const char *>(nullptr), false).entrylist().empty());
    }
};

TAVI_TEST_MAIN(TestTaviDir)
#include "tst_tavidir.moc"
