// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEWACCESS_P_H
#define QT3_Q3LISTVIEWACCESS_P_H

#include "qt3/q3listview_p.h"

#include <QAccessible>
#include <QAccessibleWidget>

/// What assistive programs are told of list views.
///
/// A view is a tree whose children are the header and the top-level items; an item's children are its items, shown or
/// not. There is one interface for each item that was asked for, and it goes with the item; one that was taken from
/// its view is invalid until it is in one again.
///
/// Items must be sought by their number among their siblings. The last answer is remembered, so that a walk costs a
/// step for each row.
class Q3ListViewAccess
{
public:
    /// Makes it known how views are to be described, once for all.
    static void install();
    /// The interface of an item, null for null.
    static QAccessibleInterface *of(Q3ListViewItem *item);
    /// The item of an interface; null if that is none of an item.
    static Q3ListViewItem *itemOf(const QAccessibleInterface *interface);
    /// Takes away the interface of an item that is deleted.
    static void forget(const Q3ListViewItem *item);
    /// Tells that an item has the keyboard's focus, if its view has.
    static void tellFocus(Q3ListView *view, Q3ListViewItem *item);
    /// Tells that a selection has changed.
    static void tellSelection(Q3ListView *view);
    /// Tells that an item was opened or closed.
    static void tellOpening(Q3ListViewItem *item);
    /// Where events go: to QAccessible, which drops them unless the platform has seen an assistive program. Tests put
    /// themselves in its place.
    TAVIQT3_EXPORT static void (*deliver)(QAccessibleEvent *event);
    /// The child with a number of an item or of the view's root; null outside.
    static Q3ListViewItem *childAt(Q3ListViewItem *parent, int number);
    /// The number of an item among its siblings.
    static int numberOf(const Q3ListViewItem *item);
};

/// A view as assistive programs see it.
class Q3ListViewAccessible : public QAccessibleWidget
{
public:
    explicit Q3ListViewAccessible(Q3ListView *view) : QAccessibleWidget(view, QAccessible::Tree) {}
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *focusChild() const override;
    QAccessible::State state() const override;

private:
    Q3ListView *view() const { return static_cast<Q3ListView *>(widget()); }
    Q3ListViewItem *root() const { return Q3ListViewPrivate::of(view())->root.get(); }
};

/// An item as assistive programs see it.
class Q3ListViewItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    explicit Q3ListViewItemAccessible(Q3ListViewItem *item) : item_(item) {}
    Q3ListViewItem *item() const { return item_; }

    bool isValid() const override { return item_->listView() != nullptr; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QAccessibleInterface *childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::TreeItem; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &) const override { return QStringList(); }

private:
    bool isUsable() const;
    bool isShown() const;
    void press();

    Q3ListViewItem *const item_;
};

#endif
