// SPDX-License-Identifier: MIT
#include "gallery/characterisation.h"
#include "gallery/page.h"
#include "treeviews/tavigridview.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

#include <vector>

namespace {

/// The patches of a list as cells.
class SwatchModel : public TaviGridModel
{
public:
    SwatchModel(const TAVICOMBOCOLOUR *first, QObject *parent) : TaviGridModel(parent)
    {
        for (const TAVICOMBOCOLOUR *patch = first; patch; patch = nextPatch(patch))
            patches_.push_back(patch);
    }

    int itemCount() const override { return static_cast<int>(patches_.size()); }

    /// The patch of a cell; null for the empty ones in the last row.
    const TAVICOMBOCOLOUR *patch(const QModelIndex &index) const
    {
        const auto place = static_cast<size_t>(index.row() * columnCount() + index.column());
        return index.isValid() && place < patches_.size() ? patches_[place] : nullptr;
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const TAVICOMBOCOLOUR *colour = patch(index);
        if (!colour)
            return {};
        switch (role) {
        case Qt::DecorationRole:
            return QColor(colour->rgb);
        case Qt::ToolTipRole:
        case Qt::AccessibleTextRole:
            return patchText(*colour);
        default:
            return {};
        }
    }

    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        return patch(index) ? TaviGridModel::flags(index) : Qt::NoItemFlags;
    }

private:
    std::vector<const TAVICOMBOCOLOUR *> patches_;
};

/// A swatch, with a frame around those that are selected.
class SwatchDelegate : public TaviGridDelegate
{
public:
    using TaviGridDelegate::TaviGridDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const auto colour = index.data(Qt::DecorationRole).value<QColor>();
        if (!colour.isValid())
            return;
        painter->fillRect(option.rect.adjusted(1, 1, -1, -1), colour);
        if (!(option.state & QStyle::State_Selected))
            return;
        painter->save();
        painter->setPen(QPen(option.palette.color(QPalette::Text), 2));
        painter->drawRect(option.rect.adjusted(2, 2, -2, -2));
        painter->restore();
    }
};

class GridPage : public QWidget
{
public:
    explicit GridPage(bool for_picture) : patches_(readCharacterisation())
    {
        auto *layout = new QVBoxLayout(this);
        if (patches_.count() == 0) {
            layout->addWidget(new QLabel(missingCharacterisationText(), this));
            return;
        }
        auto *model = new SwatchModel(patches_.head(), this);
        auto *delegate = new SwatchDelegate(this);
        auto *view = new TaviGridView(this);
        view->setAccessibleName(QStringLiteral("Swatches"));
        view->setItemDelegate(delegate);
        view->setModel(model);
        view->setSelectionModel(new TaviGridSelectionModel(model, view));
        view->setMinimumHeight(300);

        auto *size = new QSlider(Qt::Horizontal, this);
        size->setRange(8, 60);
        size->setValue(delegate->cellWidth());
        size->setAccessibleName(QStringLiteral("Size of a swatch"));
        auto *lines = new QCheckBox(QStringLiteral("Lines"), this);
        auto *current = new QLabel(QStringLiteral("%1 swatches").arg(model->itemCount()), this);

        connect(size, &QSlider::valueChanged, this, [delegate, view](int value) {
            delegate->setCellSize(value, value);
            view->recalculateGrid();
            view->viewport()->update();
        });
        connect(lines, &QCheckBox::toggled, this, [view](bool on) {
            view->setShowGrid(on);
            view->recalculateGrid();
            view->viewport()->update();
        });
        connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
                [model, current](const QModelIndex &index) {
                    if (const TAVICOMBOCOLOUR *colour = model->patch(index))
                        current->setText(patchText(*colour));
                });

        auto *controls = new QHBoxLayout;
        controls->addWidget(size);
        controls->addWidget(lines);
        layout->addLayout(controls);
        layout->addWidget(view, 1);
        layout->addWidget(current);
        if (for_picture) {
            size->setValue(16);
            // Behind the layout, which sets the columns and so ends every selection.
            QTimer::singleShot(100, view, [view, model] { view->setCurrentIndex(model->index(4, 5)); });
        }
    }

private:
    const TAVICOMBOCOLOUR_CC patches_;
};

} // namespace

QWidget *makeTaviGridViewPage(bool for_picture)
{
    return new GridPage(for_picture);
}
