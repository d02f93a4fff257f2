// SPDX-License-Identifier: MIT
#include "listviews/tavilistview.h"

#include "qt3/q3header.h"
#include "treeviews/statusline_p.h"
#include "treeviews/taviconfigorder.h"
#include "treeviews/viewframe_p.h"

#include <QAction>
#include <QDialog>
#include <QEvent>

#include <cstdio>

TaviConfigOrderItem::TaviConfigOrderItem() = default;

TaviConfigOrderItem::~TaviConfigOrderItem() = default;

bool TaviConfigOrderItem::isItemVisible() const
{
    return visible;
}

void TaviConfigOrderItem::setItemVisible(bool on)
{
    visible = on;
}

QString TaviConfigOrderItem::itemText() const
{
    return QString();
}

QPixmap TaviConfigOrderItem::itemPixmap() const
{
    return QPixmap();
}

ColumnItem::ColumnItem() = default;

ColumnItem::~ColumnItem() = default;

QString ColumnItem::itemText() const
{
    return title;
}

QPixmap ColumnItem::itemPixmap() const
{
    return icon.pixmap(16, 16, QIcon::Normal, QIcon::Off);
}

FilterFloater *TaviListView::filter_floater = nullptr;

TaviListView::TaviListView(bool header_menu, QWidget *parent, const char *name, Qt::WindowFlags flags)
    : Q3ListView(parent, name, flags), filter_buddy(this), header_menu_enabled(header_menu)
{
    //: What a screen reader calls a list that the application gives no name of its own.
    setAccessibleName(tr("List"));
    last_key_time.start();
    setPalette(viewPalette());
    connect(header(), SIGNAL(indexChange(int, int, int)), this, SLOT(indexChange(int, int, int)));
    connect(header(), SIGNAL(sizeChange(int, int, int)), this, SLOT(sizeChange(int, int, int)));
    connect(header(), SIGNAL(clicked(int)), header(), SLOT(repaint()));
    connect(this, SIGNAL(selectionChanged()), this, SLOT(updateStatusBar()));
    connect(this, SIGNAL(currentChanged(Q3ListViewItem *)), this, SLOT(updateStatusBar()));
    connect(this, SIGNAL(filterApplied()), this, SLOT(updateStatusBar()));
}

TaviListView::~TaviListView()
{
    if (header_order)
        header_order->cancel(); // it shows the column items
    fixed_column_items.clear();
    qDeleteAll(column_items);
    column_items.clear();
    delete rename_dialog;
    if (filter_floater && filter_floater->list_view == this)
        delete filter_floater;
}

void TaviListView::clear()
{
    const QPointer<TaviListView> self(this);
    open_items.clear();
    Q3ListView::clear();
    if (self)
        updateStatusBar();
    if (self)
        Q_EMIT cleared();
}

bool TaviListView::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        followApplicationPalette(this);
    return Q3ListView::event(event);
}

void TaviListView::preDrawContents() {}

void TaviListView::headersRebuilt() {}

void TaviListView::drawContentsOffset(QPainter *p, int ox, int oy, int cx, int cy, int cw, int ch)
{
    preDrawContents();
    Q3ListView::drawContentsOffset(p, ox, oy, cx, cy, cw, ch);
}

void TaviListView::setWantStatusBar(bool want)
{
    want_status_bar = want;
}

bool TaviListView::wantStatusBar()
{
    return want_status_bar;
}

QStatusBar *TaviListView::getStatusBar() const
{
    return want_status_bar ? status_bar : nullptr;
}

QWidget *TaviListView::getListWidget()
{
    return listWidget(parentWidget(), QStringLiteral("tavilistview_container"));
}

QWidget *TaviListView::listWidget(QWidget *container_parent, const QString &container_name)
{
    if (!want_status_bar)
        return this;
    if (list_widget)
        return list_widget;
    list_widget = new QWidget(container_parent);
    list_widget->setObjectName(container_name);
    if (!status_bar)
        status_bar = new StatusLine(list_widget);
    //: What a screen reader calls the line below a list, which tells how many items there are.
    putAboveStatusBar(list_widget, this, status_bar, tr("Status"));
    return list_widget;
}

QString TaviListView::getStatusString()
{
    int visible = 0;
    int selected = 0;
    for (const Q3ListViewItem *item = firstChild(); item; item = item->itemBelow()) {
        if (!item->isVisible())
            continue;
        ++visible;
        selected += item->isSelected() ? 1 : 0;
    }
    if (selected > 0)
        return tr("%L1 of %L2 items", "Default list status").arg(selected).arg(visible);
    return tr("%L1 items", "Default list status").arg(visible);
}

void TaviListView::updateStatusBar(int ms)
{
    if (QStatusBar *bar = getStatusBar())
        bar->showMessage(getStatusString(), ms);
}

void TaviListView::updateStatusBar()
{
    updateStatusBar(0);
}

void TaviListView::debugColumnItems()
{
    std::printf("TaviListView::debugColumnItems()---columns:%d---items:%d\n", columns(), column_items.size());
    for (int index = 0; index < column_items.size(); ++index) {
        const ColumnItem *const item = column_items.at(index);
        std::printf("index:%d mid:%d %s >%s\n", index, item->id, item->isItemVisible() ? "visible" : "hidden",
                    item->title.toUtf8().constData());
    }
    std::fflush(stdout);
}
