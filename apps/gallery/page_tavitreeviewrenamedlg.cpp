// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "taviapp/taviregistry.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewrenamedlg.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <string>

namespace {

/// Names of patches to rename.
class RenamePage : public QWidget
{
public:
    explicit RenamePage(bool for_picture) : model_({QStringLiteral("Patch"), QStringLiteral("Remark")})
    {
        for (const char *ink : {"cyan", "magenta", "yellow", "black"}) {
            for (const int tone : {25, 50, 75, 100})
                model_.appendItem(patch(QString::fromUtf8(ink), tone));
        }
        view_ = new TaviTreeView(this);
        view_->setObjectName(QStringLiteral("patches"));
        view_->setAccessibleName(QStringLiteral("Patches"));
        view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view_->setModel(&model_);
        view_->header()->resizeSection(0, 160);
        told_ = new QLabel(QStringLiteral("F2 renames a single one."), this);
        connect(view_, &TaviTreeView::itemsRenamed, told_,
                [this](int count) { told_->setText(QStringLiteral("%1 renamed").arg(count)); });

        auto *bar = new QHBoxLayout;
        for (int column = 0; column < model_.columnCount(); ++column) {
            auto *button = new QPushButton(
                QStringLiteral("Rename %1...").arg(model_.headerData(column, Qt::Horizontal).toString()), this);
            connect(button, &QPushButton::clicked, this,
                    [this, column] { view_->renameItems(column, registry_, section_); });
            bar->addWidget(button);
        }
        bar->addWidget(told_, 1);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addLayout(bar);
        layout->addWidget(view_->widget(), 1);
        if (for_picture)
            pose();
    }

    QSize sizeHint() const override { return {520, 340}; }

private:
    static TaviTreeItem *patch(const QString &ink, int tone)
    {
        const QString remark = tone == 100 ? QStringLiteral("solid") : QStringLiteral("tint");
        auto *item = new TaviTreeItem(QList<QVariant>{QStringLiteral("%1 %2").arg(ink).arg(tone), remark}, nullptr);
        for (const int column : {0, 1})
            item->setEditable(column, true);
        return item;
    }

    /// With the dialog over the view, which has found something.
    void pose()
    {
        TaviTreeViewRenameDLG dialog(view_, 0, registry_, section_);
        dialog.op_edit->setText(QStringLiteral("cyan 7"));
        dialog.replace_edit->setText(QStringLiteral("cyan 8"));
        dialog.find_next_button->click();
        dialog.resize(dialog.sizeHint());
        auto *picture = new QLabel(this);
        picture->setPixmap(dialog.grab());
        picture->setFrameShape(QFrame::Box);
        picture->adjustSize();
        picture->move(505 - picture->width(), 160);
    }

    TaviRegistry registry_;
    std::string section_ = "gallery";
    TaviTreeModel model_;
    TaviTreeView *view_ = nullptr;
    QLabel *told_ = nullptr;
};

} // namespace

QWidget *makeTaviTreeViewRenamePage(bool for_picture)
{
    return new RenamePage(for_picture);
}
