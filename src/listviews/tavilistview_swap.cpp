// SPDX-License-Identifier: MIT
//
// In place of a list that a form generator made.
#include "listviews/tavilistview.h"
#include "qt3/q3widgetstack.h"

#include <QStackedWidget>

/// Makes the view like another one, and deletes that. False if there is none, or if this view went with it.
bool TaviListView::takeOver(Q3ListView *old, bool copy_columns)
{
    if (!old || old == this)
        return false;
    if (copy_columns) {
        while (columns() > 0)
            removeColumn(0);
        for (int column = 0; column < old->columns(); ++column)
            addColumn(old->columnText(column), -1);
    }
    setWhatsThis(old->whatsThis());
    setResizeMode(old->resizeMode());
    setShowToolTips(old->showToolTips());
    setSelectionMode(old->selectionMode());
    setAllColumnsShowFocus(old->allColumnsShowFocus());
    setDefaultRenameAction(old->defaultRenameAction());
    const QPointer<TaviListView> self(this);
    delete old;
    return self;
}

void TaviListView::hotSwap(Q3ListView *old, QStackedWidget *stack, bool copy_columns)
{
    const QPointer<QStackedWidget> still_there(stack);
    if (!stack || !takeOver(old, copy_columns) || !still_there)
        return;
    QWidget *const list = listWidget(stack, QStringLiteral("tavilistview_listwidget"));
    stack->setCurrentIndex(stack->addWidget(list));
}

void TaviListView::hotSwap(Q3ListView *old, Q3WidgetStack *stack, bool copy_columns)
{
    const QPointer<Q3WidgetStack> still_there(stack);
    if (!stack || !takeOver(old, copy_columns) || !still_there)
        return;
    QWidget *const list = listWidget(stack, QStringLiteral("tavilistview_listwidget"));
    stack->addWidget(list);
    stack->raiseWidget(list);
}
