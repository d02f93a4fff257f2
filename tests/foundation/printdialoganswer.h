// SPDX-License-Identifier: MIT
#ifndef TESTS_FOUNDATION_PRINTDIALOGANSWER_H
#define TESTS_FOUNDATION_PRINTDIALOGANSWER_H

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <functional>

/// Answers print dialogs as a user would: waits for one, chooses to print to a file, types its path and presses
/// Print, or cancels. Any other modal window, and one that does not close, is rejected and told by problem().
class PrintDialogAnswer : public QObject
{
    Q_OBJECT

public:
    /// An empty @a path cancels.
    explicit PrintDialogAnswer(const QString &path) : path_(path)
    {
        connect(&timer_, &QTimer::timeout, this, &PrintDialogAnswer::look);
        timer_.start(20);
    }

    /// Does this in place of an answer.
    std::function<void()> instead;

    int answered = 0;
    QString problem;
    QWidget *parent_of_dialog = nullptr;
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    int resolution = 0;

private:
    void look()
    {
        QWidget *const modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible())
            return;
        auto *const dialog = qobject_cast<QPrintDialog *>(modal);
        if (!dialog || answered > 0) {
            if (answered > 0 && !since_answer_.hasExpired(3000))
                return;
            problem = QStringLiteral("unexpected: %1 %2").arg(modal->metaObject()->className(), modal->windowTitle());
            static_cast<QDialog *>(modal)->reject();
            return;
        }
        ++answered;
        since_answer_.start();
        parent_of_dialog = dialog->parentWidget();
        orientation = dialog->printer()->pageLayout().orientation();
        resolution = dialog->printer()->resolution();
        if (instead) {
            instead();
            return;
        }
        auto *const printers = dialog->findChild<QComboBox *>(QStringLiteral("printers"));
        auto *const file = dialog->findChild<QLineEdit *>(QStringLiteral("filename"));
        auto *const buttons = dialog->findChild<QDialogButtonBox *>();
        if (!printers || !file || !buttons) {
            problem = QStringLiteral("this is no dialog of Qt's own");
            dialog->reject();
            return;
        }
        if (path_.isEmpty()) {
            QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
            return;
        }
        const int to_file = printers->findText(QStringLiteral("PDF"), Qt::MatchContains);
        if (to_file < 0)
            problem = QStringLiteral("no printing to a file");
        printers->setCurrentIndex(to_file);
        file->selectAll();
        QTest::keyClicks(file, path_);
        QTest::mouseClick(buttons->button(QDialogButtonBox::Ok), Qt::LeftButton);
    }

    QString path_;
    QTimer timer_;
    QElapsedTimer since_answer_;
};

#endif
