// SPDX-License-Identifier: MIT
#include "gallery/characterisation.h"
#include "gallery/page.h"
#include "listviews/tavilistview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace {

/// Ids of the columns.
enum Column { patch_column, cyan_column, magenta_column, yellow_column, black_column, l_column, a_column, b_column };

constexpr int column_count = b_column + 1;

/// A patch. The user may move and hide columns, so that a section is not always the same column.
class PatchRow : public Q3ListViewItem
{
public:
    PatchRow(TaviListView *list, Q3ListViewItem *after, int number, const TAVICOMBOCOLOUR *patch)
        : Q3ListViewItem(list, after), list_(list)
    {
        values_[patch_column] = number;
        for (uint32_t ink = 0; ink < patch->device_count && ink < 4; ++ink)
            values_[cyan_column + ink] = static_cast<double>(patch->device[ink]);
        values_[l_column] = patch->L;
        values_[a_column] = patch->a;
        values_[b_column] = patch->b;
    }

    QString text(int section) const override
    {
        const int column = list_->columnItemID(section);
        if (column < 0)
            return QString();
        return QString::number(values_[static_cast<size_t>(column)], 'f', column < l_column ? 0 : 1);
    }

    int compare(Q3ListViewItem *other, int section, bool) const override
    {
        const int column = list_->columnItemID(section);
        if (column < 0)
            return 0;
        const double mine = values_[static_cast<size_t>(column)];
        const double its = static_cast<PatchRow *>(other)->values_[static_cast<size_t>(column)];
        return mine < its ? -1 : mine > its ? 1 : 0;
    }

private:
    const TaviListView *const list_;
    std::array<double, column_count> values_{};
};

/// A characterisation set as a list of numbers.
class TaviListViewPage : public QWidget
{
public:
    explicit TaviListViewPage(bool for_picture)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        const TAVICOMBOCOLOUR_CC patches = readCharacterisation();
        if (patches.count() == 0) {
            layout->addWidget(new QLabel(missingCharacterisationText(), this));
            return;
        }
        auto *list = new TaviListView(true, this);
        list->setAccessibleName(QStringLiteral("Patches"));
        list->setWantStatusBar(true);
        list->setSelectionMode(Q3ListView::Extended);
        list->setAllColumnsShowFocus(true);
        list->setShowSortIndicator(true);
        static const char *const titles[] = {"Patch", "C", "M", "Y", "K", "L*", "a*", "b*"};
        for (int column = 0; column < column_count; ++column) {
            list->addColumn(QLatin1String(titles[column]), column == patch_column ? 80 : 56);
            list->setColumnAlignment(column, Qt::AlignRight);
        }
        list->setSorting(patch_column);

        auto *filter = new QLineEdit(this);
        filter->setPlaceholderText(QStringLiteral("Filter, for example: 40"));
        filter->setAccessibleName(QStringLiteral("Filter"));
        filter->setClearButtonEnabled(true);
        list->filterBuddy()->addFilterLineEdit(filter);
        auto *search = new QPushButton(QStringLiteral("Search..."), this);
        search->setToolTip(QStringLiteral("Shift+? in the list"));
        connect(search, &QPushButton::clicked, list, &TaviListView::showFilterFloater);
        auto *tools = new QHBoxLayout;
        tools->addWidget(filter, 1);
        tools->addWidget(search);
        layout->addLayout(tools);
        layout->addWidget(list->getListWidget(), 1);

        Q3ListViewItem *last = nullptr;
        int number = 0;
        for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = nextPatch(patch))
            last = new PatchRow(list, last, ++number, patch);
        list->updateStatusBar();
        if (for_picture) {
            filter->setText(QStringLiteral("40"));
            list->setCurrentItem(list->firstChild()->itemBelow());
            list->setSelected(list->firstChild()->itemBelow(), true);
        }
    }

    QSize sizeHint() const override { return {520, 380}; }
};

} // namespace

QWidget *makeTaviListViewPage(bool for_picture)
{
    return new TaviListViewPage(for_picture);
}
