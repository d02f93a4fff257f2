// SPDX-License-Identifier: MIT
#include "gallery/renamepage.h"

#include "treeviews/tavirenamedialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

RenamePage::RenamePage()
{
    auto *bar = new QHBoxLayout;
    for (int column = 0; column < headings().size(); ++column) {
        auto *button = new QPushButton(QStringLiteral("Rename %1...").arg(headings().at(column)), this);
        connect(button, &QPushButton::clicked, this, [this, column] { renameItems(column); });
        bar->addWidget(button);
    }
    told_ = new QLabel(QStringLiteral("F2 renames a single one."), this);
    bar->addWidget(told_, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(bar);
}

QStringList RenamePage::headings()
{
    return {QStringLiteral("Patch"), QStringLiteral("Remark")};
}

QVector<RenamePage::Patch> RenamePage::patches()
{
    QVector<Patch> patches;
    for (const char *ink : {"cyan", "magenta", "yellow", "black"}) {
        for (const int tone : {25, 50, 75, 100}) {
            patches.append({QStringLiteral("%1 %2").arg(QLatin1String(ink)).arg(tone),
                            tone == 100 ? QStringLiteral("solid") : QStringLiteral("tint")});
        }
    }
    return patches;
}

void RenamePage::showView(QWidget *view)
{
    static_cast<QBoxLayout *>(layout())->addWidget(view, 1);
}

void RenamePage::tell(int count)
{
    told_->setText(QStringLiteral("%1 renamed").arg(count));
}

void RenamePage::pose(TaviRenameDialog *dialog)
{
    dialog->op_edit->setText(QStringLiteral("cyan 7"));
    dialog->replace_edit->setText(QStringLiteral("cyan 8"));
    dialog->find_next_button->click();
    dialog->resize(dialog->sizeHint());
    auto *picture = new QLabel(this);
    picture->setPixmap(dialog->grab());
    picture->setFrameShape(QFrame::Box);
    picture->adjustSize();
    picture->move(505 - picture->width(), 160);
}
