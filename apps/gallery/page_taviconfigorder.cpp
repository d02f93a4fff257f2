// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "treeviews/taviconfigorder.h"

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <array>

namespace {

const std::array<const char *, 9> columns{"Patch",  "Lab",   "dE2000",  "Cyan",   "Magenta",
                                          "Yellow", "Black", "Density", "Remarks"};

/// What shows of a list of columns, and the button that asks for another order.
class ConfigOrderPage : public QWidget
{
public:
    explicit ConfigOrderPage(bool for_picture) : for_picture_(for_picture)
    {
        auto *layout = new QVBoxLayout(this);
        told_ = new QLabel(this);
        told_->setWordWrap(true);
        layout->addWidget(told_);
        tell();
        if (for_picture) {
            picture_ = new QLabel(this);
            layout->addWidget(picture_);
            told_->hide();
            order();
            return;
        }
        auto *button = new QPushButton(QStringLiteral("Configure columns..."), this);
        layout->addWidget(button, 0, Qt::AlignLeft);
        layout->addStretch();
        connect(button, &QPushButton::clicked, this, &ConfigOrderPage::order);
    }

private:
    static ConfigOrderItem *entryOf(int column, bool visible)
    {
        auto *entry = new ConfigOrderItem;
        entry->setData(0, QString::fromUtf8(columns.at(static_cast<std::size_t>(column))), Qt::DisplayRole);
        entry->setItemID(column);
        entry->setItemVisible(visible);
        return entry;
    }

    void tell()
    {
        QStringList names;
        for (const int column : qAsConst(shown_))
            names << QString::fromUtf8(columns.at(static_cast<std::size_t>(column)));
        told_->setText(QStringLiteral("Columns: %1").arg(names.join(QStringLiteral(", "))));
    }

    void order()
    {
        QList<ConfigOrderItem *> all;
        QList<ConfigOrderItem *> shown;
        for (int column = 0; column < int(columns.size()); ++column)
            all.append(entryOf(column, shown_.contains(column)));
        for (const int column : qAsConst(shown_))
            shown.append(entryOf(column, true));
        TaviConfigOrder dialog(QStringLiteral("Configure Columns"), this, "gallery_columns");
        if (for_picture_)
            QTimer::singleShot(300, this, &ConfigOrderPage::pose);
        if (dialog.reorder(all, shown, false, nullptr, nullptr) == QDialog::Accepted) {
            shown_.clear();
            for (const ConfigOrderItem *entry : qAsConst(shown))
                shown_.append(entry->itemID());
            tell();
        }
        qDeleteAll(shown);
    }

    /// The dialog as it looks with something selected, for the picture.
    void pose()
    {
        auto *dialog = findChild<TaviConfigOrderDLG *>();
        dialog->resize(480, 340);
        const auto select = [](QFrame *frame, int row) {
            auto *tree = frame->findChild<ConfigOrderTree *>();
            tree->selectItem(tree->sourceModel()->itemAt(row));
        };
        select(dialog->hidden_frame, 4);
        select(dialog->showing_frame, 1);
        picture_->setPixmap(dialog->grab());
        dialog->reject();
    }

    const bool for_picture_;
    QLabel *told_ = nullptr;
    QLabel *picture_ = nullptr;
    QList<int> shown_{0, 2, 1, 7};
};

} // namespace

QWidget *makeTaviConfigOrderPage(bool for_picture)
{
    return new ConfigOrderPage(for_picture);
}
