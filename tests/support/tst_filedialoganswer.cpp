// SPDX-License-Identifier: MIT
#include "tests/support/filedialoganswer.h"
#include "tests/support/tavitest.h"

#include <QTemporaryDir>

class TestFileDialogAnswer : public TaviTest
{
    Q_OBJECT

private:
    QTemporaryDir directory_;

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        for (const char *name : {"one.txt", "two words.txt"}) {
            QFile file(directory_.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void typesThePathAndAccepts_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << "one.txt";
        QTest::newRow("blank") << "two words.txt";
    }
    void typesThePathAndAccepts()
    {
        QFETCH(QString, name);
        const QString path = directory_.filePath(name);
        const FileDialogAnswer answer(path);
        QVERIFY(!answer.answered());
        QCOMPARE(QFileDialog::getOpenFileName(nullptr, "Which?", "/usr", "All(*);;Text (*.txt)"), path);
        QVERIFY(answer.answered());
        QCOMPARE(answer.problem(), QString());
        QCOMPARE(answer.title(), QString("Which?"));
        QCOMPARE(answer.nameFilters(), QStringList({"All(*)", "Text (*.txt)"}));
        QCOMPARE(answer.directory(), QString("/usr"));
        QVERIFY(!answer.parentOfDialog());
    }

    void anEmptyPathCancels()
    {
        const FileDialogAnswer answer{QString()};
        QVERIFY(QFileDialog::getOpenFileName(nullptr, "Which?").isNull());
        QVERIFY(answer.answered());
        QCOMPARE(answer.problem(), QString());
    }

    void tellsTheParent()
    {
        QWidget parent;
        const FileDialogAnswer answer{QString()};
        QFileDialog::getOpenFileName(&parent);
        QCOMPARE(answer.parentOfDialog(), &parent);
    }

    /// Such a dialog puts a message box on top of itself, which nobody answers.
    void aDialogThatStaysIsRejected()
    {
        QFileDialog dialog;
        dialog.setFileMode(QFileDialog::ExistingFile);
        FileDialogAnswer answer(directory_.filePath("missing.txt"), std::chrono::milliseconds(300));
        QTimer closer;
        connect(&closer, &QTimer::timeout, &dialog, [&dialog] {
            if (QWidget *box = QApplication::activeModalWidget(); box && box != &dialog)
                box->close();
        });
        closer.start(50);
        QCOMPARE(dialog.exec(), int(QDialog::Rejected));
        QCOMPARE(answer.problem(), QString("the dialog did not close"));
    }
};

TAVI_GUI_TEST_MAIN(TestFileDialogAnswer)
#include "tst_filedialoganswer.moc"
