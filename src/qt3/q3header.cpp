// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"

#include <QEvent>

#include <algorithm>
#include <utility>

Q3Header::Q3Header(QWidget *parent, const char *name) : Q3Header(0, parent, name) {}

Q3Header::Q3Header(int n, QWidget *parent, const char *name) : QWidget(parent)
{
    setObjectName(QLatin1String(name));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    for (int i = 0; i < n; ++i)
        addLabel(QString());
}

Q3Header::~Q3Header() = default;

int Q3Header::addLabel(const QString &s, int size)
{
    return insert(nullptr, s, size);
}

int Q3Header::addLabel(const QIcon &icon, const QString &s, int size)
{
    return insert(std::make_unique<QIcon>(icon), s, size);
}

int Q3Header::insert(std::unique_ptr<QIcon> icon, const QString &text, int size)
{
    const int section = count();
    Section added;
    added.label = text;
    added.icon = std::move(icon);
    added.clickable = click_default_;
    added.resizable = resize_default_;
    added.stretches = stretch_default_;
    sections_.push_back(std::move(added));
    order_.push_back(section);
    sections_.back().size = size < 0 ? fittingSize(section) : size;
    adjustHeaderSize();
    updateGeometry();
    update();
    return section;
}

void Q3Header::removeLabel(int section)
{
    if (!has(section))
        return;
    sections_.erase(sections_.begin() + section);
    order_.erase(order_.begin() + std::distance(order_.begin(), std::find(order_.begin(), order_.end(), section)));
    for (int &other : order_)
        other -= other > section ? 1 : 0;
    if (sort_section_ == section)
        sort_section_ = -1;
    else if (sort_section_ > section)
        --sort_section_;
    mouse_ = Mouse::Idle;
    gap_ = hovered_ = pressed_section_ = -1;
    adjustHeaderSize();
    updateGeometry();
    update();
}

void Q3Header::setLabel(int section, const QString &s, int size)
{
    if (!has(section))
        return;
    sections_[section].label = s;
    if (size >= 0)
        setCellSize(section, size);
    updateGeometry();
    update();
}

void Q3Header::setLabel(int section, const QIcon &icon, const QString &s, int size)
{
    if (!has(section))
        return;
    sections_[section].icon = std::make_unique<QIcon>(icon);
    setLabel(section, s, size);
}

QString Q3Header::label(int section) const
{
    return has(section) ? sections_[section].label : QString();
}

QIcon *Q3Header::iconSet(int section) const
{
    return has(section) ? sections_[section].icon.get() : nullptr;
}

bool Q3Header::isClickEnabled(int section) const
{
    if (has(section))
        return sections_[section].clickable;
    return std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.clickable; });
}

void Q3Header::setClickEnabled(bool enable, int section)
{
    if (has(section))
        sections_[section].clickable = enable;
    if (section != -1)
        return;
    click_default_ = enable;
    for (Section &one : sections_)
        one.clickable = enable;
}

bool Q3Header::isResizeEnabled(int section) const
{
    if (has(section))
        return sections_[section].resizable;
    return std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.resizable; });
}

void Q3Header::setResizeEnabled(bool enable, int section)
{
    if (has(section))
        sections_[section].resizable = enable;
    if (section >= 0)
        return;
    resize_default_ = enable;
    for (Section &one : sections_)
        one.resizable = enable;
}

bool Q3Header::isStretchEnabled(int section) const
{
    if (has(section))
        return sections_[section].stretches;
    return section == -1 && !sections_.empty()
           && std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.stretches; });
}

void Q3Header::setStretchEnabled(bool b, int section)
{
    if (has(section))
        sections_[section].stretches = b;
    if (section == -1) {
        stretch_default_ = b;
        for (Section &one : sections_)
            one.stretches = b;
    }
    adjustHeaderSize();
}

void Q3Header::setMovingEnabled(bool enable)
{
    moving_enabled_ = enable;
}

void Q3Header::setTracking(bool enable)
{
    tracking_ = enable;
}

void Q3Header::setOrientation(Qt::Orientation orientation)
{
    orientation_ = orientation;
    updateGeometry();
    update();
}

void Q3Header::setSortIndicator(int section, Qt::SortOrder order)
{
    sort_section_ = section;
    sort_order_ = order;
    updateGeometry();
    update();
}

void Q3Header::setSortIndicator(int section, bool ascending)
{
    setSortIndicator(section, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void Q3Header::setOffset(int pos)
{
    if (pos == offset_)
        return;
    const int by = offset_ - pos;
    offset_ = pos;
    if (orientation_ == Qt::Horizontal)
        scroll(by, 0);
    else
        scroll(0, by);
}

void Q3Header::changeEvent(QEvent *ev)
{
    QWidget::changeEvent(ev);
    if (ev->type() == QEvent::FontChange || ev->type() == QEvent::StyleChange
        || ev->type() == QEvent::LayoutDirectionChange) {
        updateGeometry();
        update();
    }
}

void Q3Header::resizeEvent(QResizeEvent *e)
{
    QWidget::resizeEvent(e);
    adjustHeaderSize();
}

void Q3Header::showEvent(QShowEvent *e)
{
    adjustHeaderSize();
    QWidget::showEvent(e);
}
