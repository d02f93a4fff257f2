// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEROWS_H
#define TESTS_TREEVIEWS_RENAMEROWS_H

#include "taviapp/taviregistry.h"
#include "treeviews/tavirenamedialog.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <functional>
#include <memory>
#include <utility>

/// A view of whatever kind with rows to rename, in two columns, "Ink" and "Remark", the first of which can be
/// renamed.
class RenameRows
{
public:
    /// What the rows are called if nothing else is wanted.
    static QStringList inks() { return {"cyan 40", "magenta 40", "yellow 70", "black 40"}; }

    virtual ~RenameRows() = default;
    /// The view.
    virtual QWidget &widget() = 0;
    /// A dialog for a column of it, as an application makes it.
    virtual std::unique_ptr<TaviRenameDialog> makeDialog(int column) = 0;
    /// Lets the view open its dialog.
    virtual void renameItems(int column) = 0;
    virtual void dismissRenameDialog() = 0;
    /// Calls @a act when the view tells that rows were renamed.
    virtual void whenRenamed(std::function<void()> act) = 0;
    virtual void setHeading(const QString &heading) = 0;
    /// The texts of the rows in a column, in the order in which they were made.
    virtual QStringList columnTexts(int column) const = 0;
    virtual void setCanBeRenamed(int row, int column, bool can) = 0;
    virtual void selectRows(const QVector<int> &rows) = 0;
    /// The texts in the first column of what is selected.
    virtual QStringList selectedTexts() = 0;

    QString texts(int column = 0) const { return columnTexts(column).join('|'); }

    TaviRegistry registry;
    std::string section = "inks";
};

/// What a user does with a rename dialog.
class RenameUser
{
public:
    explicit RenameUser(TaviRenameDialog &dialog) : dialog_(dialog) {}

    void choose(int method, const QString &op, const QString &with = {})
    {
        dialog_.op_combo->setCurrentIndex(method);
        Q_EMIT dialog_.op_combo->activated(method);
        dialog_.op_edit->setText(op);
        dialog_.replace_edit->setText(with);
    }
    /// Runs a slot that answers with a number.
    int apply(const char *slot)
    {
        int changed = -1;
        if (!QMetaObject::invokeMethod(&dialog_, slot, Q_RETURN_ARG(int, changed)))
            QTest::qFail("there is no such slot", __FILE__, __LINE__);
        return changed;
    }
    QString result() const { return dialog_.results_label->text(); }

private:
    TaviRenameDialog &dialog_;
};

/// Presses "Find Next" or "Find Previous" and tells "<selected rows>: <what the label says>".
inline QString found(TaviRenameDialog &dialog, RenameRows &rows, bool forward)
{
    (forward ? dialog.find_next_button : dialog.find_prev_button)->click();
    return rows.selectedTexts().join('|') + ": " + dialog.results_label->text();
}

/// The rename dialogs that are there, of whatever view.
inline QList<TaviRenameDialog *> renameDialogs()
{
    QList<TaviRenameDialog *> dialogs;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *dialog = qobject_cast<TaviRenameDialog *>(window))
            dialogs << dialog;
    }
    return dialogs;
}

/// Waits in the background for a dialog that is modal and visible, and does with it what the test says.
class ModalRenameUser : public QObject
{
public:
    explicit ModalRenameUser(std::function<void(TaviRenameDialog *)> use) : use_(std::move(use)) { startTimer(10); }

    bool seen = false;

protected:
    void timerEvent(QTimerEvent *event) override
    {
        auto *dialog = qobject_cast<TaviRenameDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        killTimer(event->timerId());
        seen = true;
        use_(dialog);
    }

private:
    const std::function<void(TaviRenameDialog *)> use_;
};

/// Shows a window, and tells whether it was seen.
inline bool isVisibleWindow(QWidget *window)
{
    window->show();
    return QTest::qWaitForWindowExposed(window);
}

/// "ink 0", "ink 1" ...
inline QStringList numberedInks(int count)
{
    QStringList texts;
    for (int number = 0; number < count; ++number)
        texts << QStringLiteral("ink %1").arg(number);
    return texts;
}

#endif
