// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <QEvent>
#include <QKeyEvent>

#include <utility>

void Q3ListViewItem::startRename(int col)
{
    Q3ListView *view = listView();
    if (!view || !renameEnabled(col) || col >= view->columns())
        return;
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    const Q3ListViewItemGuard self(this);
    const QPointer<Q3ListView> alive(view);
    if (d->editor)
        d->finishRename(d->rename_action == Q3ListView::Accept);
    if (self && alive && listView() == view)
        d->openEditor(this, col);
}

void Q3ListViewItem::okRename(int col)
{
    Q3ListView *view = listView();
    if (!view)
        return;
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    if (d->renamed != this || !d->editor)
        return;
    const Q3ListViewItemGuard self(this);
    const QPointer<Q3ListView> alive(view);
    // The focus comes back to the view, which tells of the item that becomes current.
    const QString text = d->closeEditor();
    if (self && alive)
        setText(col, text);
    if (self && alive)
        Q_EMIT view->itemRenamed(this, col);
    if (self && alive)
        Q_EMIT view->itemRenamed(this, col, text);
}

void Q3ListViewItem::cancelRename(int)
{
    Q3ListView *view = listView();
    if (view && Q3ListViewPrivate::of(view)->renamed == this)
        Q3ListViewPrivate::of(view)->closeEditor();
}

bool Q3ListView::isRenaming() const
{
    return d->editor && d->renamed;
}

/// The column that a key renames: the preferred one, or the first that may be renamed, as they are shown. -1 if none.
int Q3ListViewPrivate::renameColumn(const Q3ListViewItem *item, int preferred) const
{
    if (item->renameEnabled(preferred) && q->columnWidth(preferred) > 0)
        return preferred;
    for (int index = 0; index < header->count(); ++index) {
        const int column = header->mapToSection(index);
        if (item->renameEnabled(column) && q->columnWidth(column) > 0)
            return column;
    }
    return -1;
}

void Q3ListViewPrivate::openEditor(Q3ListViewItem *item, int column)
{
    rename_timer.stop();
    q->ensureItemVisible(item);
    renamed = item;
    rename_column = column;
    editor = new QLineEdit(item->text(column), q->viewport());
    editor->setObjectName(QStringLiteral("list view editor"));
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->setAlignment(Qt::Alignment(q->columnAlignment(column)) | Qt::AlignVCenter);
    editor->selectAll();
    editor->installEventFilter(q);
    placeEditor();
    editor->show();
    editor->setFocus(Qt::OtherFocusReason);
}

void Q3ListViewPrivate::placeEditor()
{
    if (!editor || !renamed)
        return;
    QRect cell = cellRect(renamed, rename_column);
    if (const QPixmap *image = renamed->pixmap(rename_column)) {
        const int used = qRound(image->width() / image->devicePixelRatioF()) + item_margin;
        cell = QStyle::visualRect(q->layoutDirection(), cell, cell.adjusted(used, 0, 0, 0));
    }
    editor->setGeometry(cell);
}

/// Takes the editor away and returns what was in it.
QString Q3ListViewPrivate::closeEditor()
{
    renamed = nullptr;
    if (!editor)
        return QString();
    QLineEdit *closed = std::exchange(editor, nullptr);
    const QString text = closed->text();
    closed->removeEventFilter(q);
    const bool had_focus = closed->hasFocus();
    closed->hide();
    closed->deleteLater();
    if (had_focus)
        q->setFocus(Qt::OtherFocusReason);
    return text;
}

void Q3ListViewPrivate::finishRename(bool accept)
{
    if (!editor)
        return;
    if (!renamed)
        closeEditor();
    else if (accept)
        renamed->okRename(rename_column);
    else
        renamed->cancelRename(rename_column);
}

bool Q3ListView::eventFilter(QObject *o, QEvent *e)
{
    if (!d || o != d->editor)
        return Q3ScrollView::eventFilter(o, e);
    if (e->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent *>(e)->reason();
        if (reason != Qt::PopupFocusReason)
            d->finishRename(d->rename_action == Accept);
    } else if (e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(e)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            d->finishRename(key != Qt::Key_Escape);
            return true;
        }
    } else if (e->type() == QEvent::ShortcutOverride) {
        // In the editor they are letters and commands of its own.
        e->accept();
    }
    return Q3ScrollView::eventFilter(o, e);
}
