// SPDX-License-Identifier: MIT
#include "gallery/characterisation.h"
#include "gallery/page.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitemdelegate.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewfilterfloater.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

enum Column { name_column, swatch_column, lab_column, coverage_column, column_count };

constexpr int most_coverage = 400; // percent, of four inks

/// A patch, or a group of patches with the same number of inks.
class PatchItem : public TaviTreeItem
{
public:
    PatchItem(const QList<QVariant> &texts, const TAVICOMBOCOLOUR *patch) : TaviTreeItem(texts), patch_(patch)
    {
        setCheckable(name_column, true, !patch);
    }

    /// Null for a group.
    const TAVICOMBOCOLOUR *patch() const { return patch_; }
    /// Of all inks together, in percent.
    double coverage() const
    {
        double sum = 0;
        for (uint32_t ink = 0; patch_ && ink < patch_->device_count && ink < 4; ++ink)
            sum += static_cast<double>(patch_->device[ink]);
        return sum;
    }

private:
    const TAVICOMBOCOLOUR *patch_;
};

/// Paints the colour of a patch, and its coverage as a bar.
class PatchDelegate : public TaviTreeItemDelegate
{
public:
    using TaviTreeItemDelegate::TaviTreeItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        TaviTreeItemDelegate::paint(painter, option, index);
        const auto *item = dynamic_cast<const PatchItem *>(TaviTreeModel::itemFromIndex(index));
        if (!item || !item->patch())
            return;
        if (index.column() == swatch_column)
            drawSwatch(painter, option, item->patch());
        if (index.column() == coverage_column) {
            const int percent = qRound(100 * item->coverage() / most_coverage);
            drawProgressBar(painter, option, index, percent, QColor(0x6f, 0xa8, 0xdc),
                            QStringLiteral("%1 %").arg(qRound(item->coverage())));
        }
    }
};

int inksOf(const TAVICOMBOCOLOUR &patch)
{
    int inks = 0;
    for (uint32_t ink = 0; ink < patch.device_count && ink < 4; ++ink)
        inks += patch.device[ink] > 0.0F;
    return inks;
}

QString inkText(const TAVICOMBOCOLOUR &patch)
{
    static const char letters[] = "CMYK";
    QStringList parts;
    for (uint32_t ink = 0; ink < patch.device_count && ink < 4; ++ink) {
        if (patch.device[ink] > 0.0F)
            parts << QStringLiteral("%1 %2")
                         .arg(QLatin1Char(letters[ink]))
                         .arg(static_cast<double>(patch.device[ink]), 0, 'g', 3);
    }
    return parts.isEmpty() ? QStringLiteral("paper") : parts.join(QLatin1Char(' '));
}

/// A characterisation set by the number of inks.
class TaviTreeViewPage : public QWidget
{
public:
    explicit TaviTreeViewPage(bool for_picture)
        : patches_(readCharacterisation()), model_({QStringLiteral("Patch"), QStringLiteral("Colour"),
                                                    QStringLiteral("L* a* b*"), QStringLiteral("Coverage")})
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        if (patches_.count() == 0) {
            layout->addWidget(new QLabel(missingCharacterisationText(), this));
            return;
        }
        view_ = new TaviTreeView(this);
        view_->setAccessibleName(QStringLiteral("Patches"));
        view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view_->setRootIsDecorated(true);
        auto *delegate = new PatchDelegate(view_);
        delegate->setMargin(3);
        view_->setItemDelegate(delegate);

        auto *search = new QPushButton(QStringLiteral("Search..."), this);
        search->setToolTip(QStringLiteral("Shift+? in the list"));
        connect(search, &QPushButton::clicked, view_, &TaviTreeView::showFilterFloater);
        auto *filter = new QLineEdit(this);
        filter->setPlaceholderText(QStringLiteral("Filter, for example: k 40"));
        filter->setAccessibleName(QStringLiteral("Filter"));
        filter->setClearButtonEnabled(true);
        auto *tools = new QHBoxLayout;
        tools->addWidget(filter, 1);
        tools->addWidget(search);
        layout->addLayout(tools);
        layout->addWidget(view_->widget(), 1);

        load();
        view_->setModel(&model_);
        view_->addFilterLineEdit(filter);
        view_->header()->resizeSection(name_column, 210);
        view_->header()->resizeSection(swatch_column, 60);
        view_->header()->resizeSection(lab_column, 110);
        view_->updateStatusBar();
        if (for_picture)
            pose(filter);
    }

    QSize sizeHint() const override { return {520, 380}; }

private:
    void load()
    {
        static const char *const names[] = {"No ink", "One ink", "Two inks", "Three inks", "Four inks"};
        QList<TaviTreeItem *> groups;
        for (const char *name : names)
            groups.append(new PatchItem({QLatin1String(name), QString(), QString(), QString()}, nullptr));
        for (const TAVICOMBOCOLOUR *patch = patches_.head(); patch; patch = nextPatch(patch)) {
            const QString lab =
                QStringLiteral("%1 %2 %3").arg(patch->L, 0, 'f', 1).arg(patch->a, 0, 'f', 1).arg(patch->b, 0, 'f', 1);
            groups[inksOf(*patch)]->appendChild(new PatchItem({inkText(*patch), QString(), lab, QString()}, patch));
        }
        for (TaviTreeItem *group : qAsConst(groups))
            group->setData(lab_column, QStringLiteral("%1 patches").arg(group->childCount()), Qt::DisplayRole);
        model_.appendItems(groups);
    }

    /// Filtered, with some rows selected and some ticked.
    void pose(QLineEdit *filter)
    {
        for (int i = 0; i < 3; ++i)
            model_.itemAt(1)->child(i)->setCheckState(name_column, Qt::Checked);
        model_.itemAt(0)->setCheckState(name_column, Qt::Checked);
        filter->setText(QStringLiteral("k 40"));
        view_->setCurrentIndex(view_->allRows(name_column).value(4));
    }

    TAVICOMBOCOLOUR_CC patches_;
    TaviTreeModel model_;
    TaviTreeView *view_ = nullptr;
};

} // namespace

QWidget *makeTaviTreeViewPage(bool for_picture)
{
    return new TaviTreeViewPage(for_picture);
}
