// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_FILEDIALOGANSWER_H
#define TESTS_SUPPORT_FILEDIALOGANSWER_H

#include <QElapsedTimer>
#include <QFileDialog>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <chrono>

/// Answers the next file dialog of the application as a user would: waits until it is up, types a path and presses
/// the button that accepts, or cancels. Make one before the call that shows the dialog and keep it until that
/// returns.
///
/// The dialog must be Qt's own: QApplication::setAttribute(Qt::AA_DontUseNativeDialogs). A dialog that does not close
/// on the answer within @a patience is rejected, so that a test fails rather than hangs; problem() then says so.
class FileDialogAnswer : public QObject
{
    Q_OBJECT

public:
    /// Types @a path, which must be absolute, and accepts. An empty path cancels.
    explicit FileDialogAnswer(const QString &path, std::chrono::milliseconds patience = std::chrono::seconds(5));

    /// Whether a dialog was answered.
    bool answered() const { return answered_; }
    /// What went wrong; empty if nothing did.
    QString problem() const { return problem_; }

    /// What the dialog showed.
    QString title() const { return title_; }
    QStringList nameFilters() const { return name_filters_; }
    QString directory() const { return directory_; }
    QWidget *parentOfDialog() const { return parent_; }

private:
    void look();
    void answer(QFileDialog *dialog);

    QString path_;
    QTimer timer_;
    std::chrono::milliseconds patience_;
    QElapsedTimer since_visible_;
    QElapsedTimer since_answer_;
    bool answered_ = false;
    QString problem_;
    QString title_;
    QStringList name_filters_;
    QString directory_;
    QWidget *parent_ = nullptr;
    QPointer<QFileDialog> dialog_;
};

#endif
