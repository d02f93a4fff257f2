// SPDX-License-Identifier: MIT
#ifndef TESTS_LISTVIEWS_LISTRENAMEFIXTURE_H
#define TESTS_LISTVIEWS_LISTRENAMEFIXTURE_H

#include "listviews/tavilistviewrenamedlg.h"
#include "tests/listviews/listviewfixture.h"
#include "tests/treeviews/renamerows.h"

class RenameList;

/// An item that tells its list when it gets a text.
class RenameItem : public Q3ListViewItem
{
public:
    RenameItem(RenameList *owner, Q3ListView *list, Q3ListViewItem *after, const QString &text)
        : Q3ListViewItem(list, after, text, "remark of " + text), owner_(owner)
    {}
    RenameItem(RenameList *owner, Q3ListViewItem *parent, const QString &text)
        : Q3ListViewItem(parent, text, "remark of " + text), owner_(owner)
    {}

    void setText(int column, const QString &text) override;

private:
    RenameList *const owner_;
};

/// A flat list.
class RenameList : public RenameRows
{
public:
    explicit RenameList(const QStringList &texts = inks())
    {
        view.setSelectionMode(Q3ListView::Extended);
        view.addColumn("Ink", 150);
        view.addColumn("Remark", 150);
        Q3ListViewItem *last = nullptr;
        for (const QString &text : texts) {
            last = new RenameItem(this, &view, last, text);
            last->setRenameEnabled(0, true);
        }
    }

    QWidget &widget() override { return view; }
    std::unique_ptr<TaviRenameDialog> makeDialog(int column) override
    {
        return std::make_unique<TaviListViewRenameDLG>(&view, column, registry, section);
    }
    void renameItems(int column) override { view.renameItems(column, registry, section); }
    void dismissRenameDialog() override { view.dismissRenameDialog(); }
    void whenRenamed(std::function<void()> act) override
    {
        QObject::connect(&view, QOverload<int>::of(&TaviListView::itemsRenamed), &view, std::move(act));
    }
    void setHeading(const QString &heading) override { view.setColumnText(0, heading); }
    QStringList columnTexts(int column) const override
    {
        QStringList list;
        for (const Q3ListViewItem *item = view.firstChild(); item; item = item->nextSibling())
            list << item->text(column);
        return list;
    }
    void setCanBeRenamed(int row, int column, bool can) override { view.at(row)->setRenameEnabled(column, can); }
    void selectRows(const QVector<int> &rows) override
    {
        view.clearSelection();
        for (const int row : rows)
            view.setSelected(view.at(row), true);
    }
    QStringList selectedTexts() override
    {
        QStringList list;
        for (Q3ListViewItemIterator it(&view, Q3ListViewItemIterator::Selected); it.current(); ++it)
            list << it.current()->text(0);
        return list;
    }

    /// Called with an item that got its text.
    std::function<void(Q3ListViewItem *)> on_text;
    int texts_set = 0;
    ListProbe view;
};

inline void RenameItem::setText(int column, const QString &text)
{
    Q3ListViewItem::setText(column, text);
    ++owner_->texts_set;
    // It may delete this item, and replace itself.
    if (const auto act = owner_->on_text)
        act(this);
}

/// The dialog for a column of such a list, with what a user does.
class ListRenameDialog : public RenameUser
{
public:
    explicit ListRenameDialog(RenameList &list, int column_id = 0)
        : RenameUser(window), window(&list.view, column_id, list.registry, list.section)
    {}

    TaviListViewRenameDLG window;
};

inline QString found(ListRenameDialog &dialog, RenameList &list, bool forward)
{
    return found(dialog.window, list, forward);
}

#endif
