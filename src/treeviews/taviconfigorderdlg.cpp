// SPDX-License-Identifier: MIT
#include "treeviews/taviconfigorder.h"

#include <QEvent>
#include <QIcon>
#include <QKeySequence>
#include <QPixmap>
#include <QPushButton>

namespace {

/// Whoever sees the arrow alone learns from these what the button does, and by which key.
void describe(QToolButton *button, const QString &what, int key)
{
    const QKeySequence shortcut(int(Qt::ALT) + key);
    button->setShortcut(shortcut);
    button->setAccessibleName(what);
    button->setToolTip(
        //: Tool tip of a button. %1: what it does. %2: the key that does the same
        TaviConfigOrderDLG::tr("%1 (%2)").arg(what, shortcut.toString(QKeySequence::NativeText)));
}

} // namespace

TaviConfigOrderDLG::TaviConfigOrderDLG(QWidget *parent) : QDialog(parent)
{
    setupUi(this);
    help_button = bbox->button(QDialogButtonBox::Help);
    move_up_button->setArrowType(Qt::UpArrow);
    move_down_button->setArrowType(Qt::DownArrow);
    describe(move_up_button, tr("Move up"), Qt::Key_Up);
    describe(move_down_button, tr("Move down"), Qt::Key_Down);
    adjustToDirection();
}

TaviConfigOrderDLG::~TaviConfigOrderDLG() = default;

void TaviConfigOrderDLG::setButtonIcon(QToolButton *button, const QString &normal, const QString &disabled)
{
    QIcon icon;
    // As files, so that the ones for screens of high resolution beside them are found. An icon does not tell whether
    // a file was any use, a pixmap does.
    if (!QPixmap(normal).isNull())
        icon.addFile(normal, QSize(), QIcon::Normal, QIcon::On);
    if (!QPixmap(disabled).isNull())
        icon.addFile(disabled, QSize(), QIcon::Disabled, QIcon::Off);
    if (icon.isNull())
        return;
    const QKeySequence shortcut = button->shortcut();
    button->setArrowType(Qt::NoArrow);
    button->setIcon(icon);
    button->setText(QString());
    button->setShortcut(shortcut); // a text takes it away
}

void TaviConfigOrderDLG::accept()
{
    QDialog::accept();
}

void TaviConfigOrderDLG::reject()
{
    QDialog::reject();
}

void TaviConfigOrderDLG::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        adjustToDirection();
}

void TaviConfigOrderDLG::adjustToDirection()
{
    const bool mirrored = isRightToLeft();
    const auto point = [](QToolButton *button, Qt::ArrowType arrow) {
        if (button->icon().isNull())
            button->setArrowType(arrow);
    };
    point(make_showing_button, mirrored ? Qt::LeftArrow : Qt::RightArrow);
    point(make_hidden_button, mirrored ? Qt::RightArrow : Qt::LeftArrow);
    describe(make_showing_button, tr("Show"), mirrored ? Qt::Key_Left : Qt::Key_Right);
    describe(make_hidden_button, tr("Hide"), mirrored ? Qt::Key_Right : Qt::Key_Left);
}
