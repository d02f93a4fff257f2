// SPDX-License-Identifier: MIT
#include "tests/support/filedialoganswer.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

constexpr std::chrono::milliseconds look_every{20};

} // namespace

FileDialogAnswer::FileDialogAnswer(const QString &path, std::chrono::milliseconds patience)
    : path_(path), patience_(patience)
{
    connect(&timer_, &QTimer::timeout, this, &FileDialogAnswer::look);
    timer_.start(look_every);
}

void FileDialogAnswer::look()
{
    if (answered_) {
        if (!dialog_ || !dialog_->isVisible()) {
            timer_.stop();
        } else if (since_answer_.hasExpired(patience_.count())) {
            timer_.stop();
            problem_ = QStringLiteral("the dialog did not close");
            dialog_->reject();
        }
        return;
    }
    auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    if (!since_visible_.isValid())
        since_visible_.start();
    // Without a window manager no window becomes active.
    if (dialog->isActiveWindow() || since_visible_.hasExpired(patience_.count()))
        answer(dialog);
}

void FileDialogAnswer::answer(QFileDialog *dialog)
{
    answered_ = true;
    since_answer_.start();
    dialog_ = dialog;
    title_ = dialog->windowTitle();
    name_filters_ = dialog->nameFilters();
    directory_ = dialog->directory().path();
    parent_ = dialog->parentWidget();

    auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    auto *buttons = dialog->findChild<QDialogButtonBox *>();
    if (!edit || !buttons) {
        problem_ = QStringLiteral("this is no dialog of Qt's own");
        dialog->reject();
        return;
    }
    if (path_.isEmpty()) {
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
        return;
    }
    // The popup of completions would take the click.
    edit->setCompleter(nullptr);
    edit->selectAll();
    QTest::keyClicks(edit, path_);
    QTest::mouseClick(buttons->button(dialog->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                                      : QDialogButtonBox::Open),
                      Qt::LeftButton);
}
