// SPDX-License-Identifier: MIT
//
// The dialog's frame, which is the same whatever kind of lists stand in it.
#include "treeviews/taviconfigorder.h"

#include "foundation/taviwidgetutil.h"
#include "taviapp/taviregistry.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <climits>

QRect TaviConfigOrder::geometry_rect(50, 50, 500, 500);
QString TaviConfigOrder::pixname_moveup;
QString TaviConfigOrder::pixname_moveup_off;
QString TaviConfigOrder::pixname_movedown;
QString TaviConfigOrder::pixname_movedown_off;
QString TaviConfigOrder::pixname_makehidden;
QString TaviConfigOrder::pixname_makehidden_off;
QString TaviConfigOrder::pixname_makeshowing;
QString TaviConfigOrder::pixname_makeshowing_off;

namespace {

const char geometry_section[] = "taviconfig_order_dlg";
const char *const geometry_keys[] = {"DialogX", "DialogY", "DialogWidth", "DialogHeight"};

} // namespace

TaviConfigOrder::TaviConfigOrder(QWidget *parent, const char *name) : TaviConfigOrder(QString(), parent, name) {}

TaviConfigOrder::TaviConfigOrder(const QString &window_title, QWidget *parent, const char *name)
    : title(window_title), parent_widget(parent)
{
    setObjectName(QString::fromLatin1(name));
}

TaviConfigOrder::~TaviConfigOrder()
{
    // Before the models, which are children of this object.
    delete dialog;
}

void TaviConfigOrder::openDialog(TaviRegistry *registry, const char *section)
{
    dialog = new TaviConfigOrderDLG(parent_widget);
    if (registry && section)
        TaviWidgetUtil::restoreSizeFromRegistry(dialog, registry, section, true, true);
    else
        TaviWidgetUtil::restoreSize(dialog, geometry_rect, true, true);
    dialog->setWindowTitle(title);
    dialog->setButtonIcon(dialog->move_up_button, pixname_moveup, pixname_moveup_off);
    dialog->setButtonIcon(dialog->move_down_button, pixname_movedown, pixname_movedown_off);
    dialog->setButtonIcon(dialog->make_hidden_button, pixname_makehidden, pixname_makehidden_off);
    dialog->setButtonIcon(dialog->make_showing_button, pixname_makeshowing, pixname_makeshowing_off);
    dialog->help_button->hide();
    for (QFrame *const frame : {dialog->hidden_frame, dialog->showing_frame})
        (new QHBoxLayout(frame))->setContentsMargins(0, 0, 0, 0);
}

/// Brings buttons, tab order and focus in order around the two lists, each given by the widgets that take the focus,
/// the list itself last.
void TaviConfigOrder::arrangeDialog(bool fixed, const QVector<QWidget *> &left, const QVector<QWidget *> &right)
{
    for (QToolButton *const button :
         {dialog->make_hidden_button, dialog->make_showing_button, dialog->move_up_button, dialog->move_down_button})
        button->setEnabled(false);
    dialog->make_hidden_button->setVisible(!fixed);
    dialog->make_showing_button->setVisible(!fixed);
    dialog->hidden_frame->setVisible(!fixed);
    QVector<QWidget *> tab_order = left;
    tab_order << dialog->make_showing_button << dialog->make_hidden_button << right << dialog->move_up_button
              << dialog->move_down_button;
    for (int index = 1; index < tab_order.size(); ++index)
        QWidget::setTabOrder(tab_order.at(index - 1), tab_order.at(index));
    (fixed ? right : left).last()->setFocus();
}

void TaviConfigOrder::closeDialog(TaviRegistry *registry, const char *section)
{
    if (!dialog)
        return;
    if (registry && section)
        TaviWidgetUtil::saveSizeToRegistry(dialog, registry, section);
    else
        TaviWidgetUtil::saveSizeToRect(dialog, geometry_rect);
    delete dialog;
}

void TaviConfigOrder::loadDialogGeometry(TaviRegistry &registry)
{
    int values[4];
    for (int index = 0; index < 4; ++index) {
        if (!registry.exists(geometry_section, geometry_keys[index]))
            return;
        const long value = registry.getlong(geometry_section, geometry_keys[index]);
        if (value < 1)
            return;
        values[index] = int(std::min<long>(value, INT_MAX));
    }
    geometry_rect = QRect(values[0], values[1], values[2], values[3]);
}

void TaviConfigOrder::saveDialogGeometry(TaviRegistry &registry)
{
    const int values[4] = {geometry_rect.x(), geometry_rect.y(), geometry_rect.width(), geometry_rect.height()};
    for (int index = 0; index < 4; ++index)
        registry.putlong(geometry_section, geometry_keys[index], values[index]);
}

void TaviConfigOrder::updateLabelText(QLabel *label, int selected, int total)
{
    if (!label)
        return;
    const QString text =
        selected < 1
            ? tr("None selected")
            : tr("%1 of %2 selected", "1: selection count, 2: total items in the list").arg(selected).arg(total);
    label->setText(QStringLiteral("<small>%1</small>").arg(text));
}
