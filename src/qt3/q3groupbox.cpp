// SPDX-License-Identifier: MIT
#include "qt3/q3groupbox.h"

#include <QChildEvent>
#include <QGridLayout>

Q3GroupBox::Q3GroupBox(QWidget *parent, const char *name) : QGroupBox(parent)
{
    setObjectName(QLatin1String(name));
}

Q3GroupBox::Q3GroupBox(const QString &title, QWidget *parent, const char *name) : QGroupBox(title, parent)
{
    setObjectName(QLatin1String(name));
}

Q3GroupBox::Q3GroupBox(int strips, Qt::Orientation orientation, QWidget *parent, const char *name)
    : Q3GroupBox(strips, orientation, QString(), parent, name)
{}

Q3GroupBox::Q3GroupBox(int strips, Qt::Orientation orientation, const QString &title, QWidget *parent,
                       const char *name)
    : Q3GroupBox(title, parent, name)
{
    Q3GroupBox::setColumnLayout(strips, orientation);
}

Q3GroupBox::~Q3GroupBox() = default;

void Q3GroupBox::setColumnLayout(int strips, Qt::Orientation direction)
{
    delete grid_;
    grid_ = nullptr;
    strips_ = strips > 0 ? strips : 0;
    orientation_ = direction;
    used_ = 0;
    if (strips_ == 0)
        return;
    delete layout();
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(margin_, margin_, margin_, margin_);
    grid_->setSpacing(spacing_);
    for (QObject *child : children()) {
        if (child->isWidgetType())
            place(static_cast<QWidget *>(child));
    }
}

void Q3GroupBox::setColumns(int strips)
{
    setColumnLayout(strips, orientation_);
}

void Q3GroupBox::setOrientation(Qt::Orientation orientation)
{
    setColumnLayout(strips_, orientation);
}

void Q3GroupBox::setInsideMargin(int m)
{
    margin_ = m;
    if (grid_)
        grid_->setContentsMargins(m, m, m, m);
}

void Q3GroupBox::setInsideSpacing(int s)
{
    spacing_ = s;
    if (grid_)
        grid_->setSpacing(s);
}

void Q3GroupBox::nextCell(int &row, int &column)
{
    row = orientation_ == Qt::Horizontal ? used_ / strips_ : used_ % strips_;
    column = orientation_ == Qt::Horizontal ? used_ % strips_ : used_ / strips_;
    ++used_;
}

void Q3GroupBox::place(QWidget *child)
{
    if (!grid_ || child->isWindow() || grid_->indexOf(child) >= 0)
        return;
    int row = 0;
    int column = 0;
    nextCell(row, column);
    grid_->addWidget(child, row, column);
}

void Q3GroupBox::addSpace(int size)
{
    if (!grid_)
        return;
    int row = 0;
    int column = 0;
    nextCell(row, column);
    const bool across = orientation_ == Qt::Horizontal;
    grid_->addItem(new QSpacerItem(across ? size : 0, across ? 0 : size), row, column);
}

void Q3GroupBox::childEvent(QChildEvent *c)
{
    QGroupBox::childEvent(c);
    if (c->added() && c->child()->isWidgetType())
        place(static_cast<QWidget *>(c->child()));
}
