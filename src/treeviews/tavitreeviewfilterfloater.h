// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEVIEWFILTERFLOATER_H
#define TREEVIEWS_TAVITREEVIEWFILTERFLOATER_H

#include "foundation/taviwidgets_export.h"

#include <QPointer>
#include <QWidget>

class QLineEdit;
class TaviTreeView;

/// The small search window over a TaviTreeView: what is typed in it filters the view until it is closed.
///
/// TaviTreeView::showFilterFloater() makes it; there is one in a process. Escape closes it.
///
/// **Ownership.** It belongs to its view while that lives. A view that is destroyed lets go of it, and it stays,
/// closed, until the next one is shown.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviTreeViewFilterFloater : public QWidget
{
    Q_OBJECT

public:
    /// A hidden search window for @a view, which must not be null.
    explicit TaviTreeViewFilterFloater(TaviTreeView *view);
    ~TaviTreeViewFilterFloater() override;

    /// Where the keyword is typed.
    QLineEdit *lineEdit() const { return line_edit; }

Q_SIGNALS:
    /// It is about to be closed; the keyword is empty by now.
    void closing();

protected:
    /// Empties the line edit and emits closing().
    void closeEvent(QCloseEvent *event) override;
    /// Closes on Escape without modifiers.
    void keyPressEvent(QKeyEvent *event) override;

private:
    friend class TaviTreeView;

    QPointer<TaviTreeView> view; // null once the view has let go
    QLineEdit *line_edit;
};

#endif
