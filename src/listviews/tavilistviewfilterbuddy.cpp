// SPDX-License-Identifier: MIT
#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistview.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QPalette>

TaviListViewFilterBuddy::TaviListViewFilterBuddy(TaviListView *view, QObject *parent)
    : QObject(parent), list_view(view)
{}

TaviListViewFilterBuddy::~TaviListViewFilterBuddy() = default;

/// Enters a line edit, which is forgotten when it is deleted: another one may get its address.
void TaviListViewFilterBuddy::know(QLineEdit *edit, bool inverted)
{
    if (line_edits.find(edit) == line_edits.end())
        connect(edit, &QObject::destroyed, this, [this, edit] { line_edits.erase(edit); });
    line_edits[edit] = inverted;
}

void TaviListViewFilterBuddy::addFilterLineEdit(QLineEdit *edit)
{
    if (!edit || !list_view)
        return;
    edit->installEventFilter(this);
    know(edit, false);
    connect(edit, SIGNAL(textChanged(QString)), this, SLOT(filterTextChanged(QString)), Qt::UniqueConnection);
    const QKeySequence key(QStringLiteral("Ctrl+Shift+I"));
    edit->setToolTip(tr("Press %1 to invert filter result.").arg(key.toString(QKeySequence::NativeText)));
}

bool TaviListViewFilterBuddy::hasLineEdit(const QLineEdit *edit) const
{
    return line_edits.find(const_cast<QLineEdit *>(edit)) != line_edits.end();
}

bool TaviListViewFilterBuddy::inverted(QLineEdit *edit)
{
    if (!edit)
        return false;
    if (!hasLineEdit(edit))
        know(edit, false);
    return line_edits[edit];
}

void TaviListViewFilterBuddy::setInverted(QLineEdit *edit, bool inverted)
{
    if (!edit || !list_view)
        return;
    const QPointer<TaviListViewFilterBuddy> self(this);
    const QPointer<QLineEdit> still_there(edit);
    know(edit, inverted);
    list_view->setFilterInverted(inverted);
    if (self && still_there)
        setFilterLineEditLook(edit, inverted);
}

void TaviListViewFilterBuddy::setFilterLineEditLook(QLineEdit *edit, bool inverted)
{
    if (!edit)
        return;
    QPalette look;
    look.setBrush(QPalette::All, edit->foregroundRole(), QBrush(inverted ? Qt::white : Qt::black));
    look.setBrush(QPalette::All, edit->backgroundRole(), QBrush(inverted ? Qt::black : Qt::white));
    edit->setPalette(look);
}

bool TaviListViewFilterBuddy::eventFilter(QObject *object, QEvent *event)
{
    if (!object || !event || event->type() != QEvent::ShortcutOverride)
        return false;
    auto *const edit = qobject_cast<QLineEdit *>(object);
    const auto *const key = static_cast<const QKeyEvent *>(event);
    constexpr Qt::KeyboardModifiers wanted = Qt::ShiftModifier | Qt::ControlModifier;
    constexpr Qt::KeyboardModifiers counting = wanted | Qt::AltModifier | Qt::MetaModifier;
    if (edit && hasLineEdit(edit) && key->key() == Qt::Key_I && (key->modifiers() & counting) == wanted) {
        // What is gone with the slot of a signal can't see the key any more.
        const QPointer<QLineEdit> still_there(edit);
        setInverted(edit, !inverted(edit));
        return !still_there;
    }
    return false;
}

void TaviListViewFilterBuddy::filterTextChanged(QString text)
{
    auto *const edit = qobject_cast<QLineEdit *>(sender());
    if (!edit || !hasLineEdit(edit) || !list_view)
        return;
    const bool was_filtering = list_view->isFilteringItems();
    if (!was_filtering && !text.isEmpty())
        remembered_item = list_view->firstSelectedChild();
    const QPointer<TaviListViewFilterBuddy> self(this);
    list_view->filterItems(text, inverted(edit));
    if (self && list_view && was_filtering && text.isEmpty())
        restoreSelection();
}

/// Selects what was selected when filtering began, unless something is selected or the item has gone.
void TaviListViewFilterBuddy::restoreSelection()
{
    if (!isInView(list_view, remembered_item))
        remembered_item = nullptr;
    const Q3ListViewItemIterator selected(list_view, Q3ListViewItemIterator::Selected);
    if (!remembered_item || selected.current())
        return;
    const QPointer<TaviListView> view = list_view;
    Q3ListViewItem *const item = remembered_item;
    const Q3ListViewItemIterator place(item);
    view->setSelected(item, true);
    if (view && place.current() == item)
        view->ensureItemVisible(item);
}
