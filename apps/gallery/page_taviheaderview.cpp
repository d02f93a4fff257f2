// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "taviapp/taviregistry.h"
#include "treeviews/taviheaderview.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitemdelegate.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeview.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <string>

namespace {

enum Column { ink_column, colour_column, coverage_column, difference_column, remark_column, column_count };

/// An ink of a proof and how far it is off.
struct Ink {
    const char *name;
    uint32_t rgb;
    int coverage;
    double difference;
    const char *remark;
};

constexpr double tolerance = 3.0;

const std::array<Ink, 6> inks{{
    {"Paper", 0xf4f3ef, 0, 0.4, "as supplied"},
    {"Cyan", 0x009fe3, 82, 1.8, "second proof, printed after the heads were cleaned"},
    {"Magenta", 0xe5007d, 64, 3.9, "beyond the tolerance: new calibration is due"},
    {"Yellow", 0xffec00, 100, 1.1, ""},
    {"Black", 0x1d1d1b, 35, 2.6, "dried for one hour only"},
    {"Orange", 0xf08a00, 12, 5.2, "spot colour, outside of the gamut"},
}};

/// An ink as a row. What is beyond the tolerance is written in red, also while it is selected.
class InkItem : public TaviTreeItem
{
public:
    explicit InkItem(const Ink &ink)
        : TaviTreeItem(QList<QVariant>{QString::fromUtf8(ink.name), QString(), QString(),
                                       QString::number(ink.difference, 'f', 1), QString::fromUtf8(ink.remark)}),
          ink_(ink)
    {
        swatch_.rgb = ink.rgb;
        setCheckable(ink_column, true, false);
        setCheckState(ink_column, Qt::Checked);
        if (ink.difference <= tolerance)
            return;
        for (const int column : {ink_column, difference_column})
            setData(column, QColor(0xd0, 0x30, 0x30), Qt::ForegroundRole);
    }

    const Ink &ink() const { return ink_; }
    const TAVICOMBOCOLOUR *swatch() const { return &swatch_; }

private:
    const Ink &ink_;
    TAVICOMBOCOLOUR swatch_ = {};
};

/// The kinds of cells: a text in the item's own colour, a swatch, a bar, and a text that is shortened in the middle.
class InkDelegate : public TaviTreeItemDelegate
{
public:
    using TaviTreeItemDelegate::TaviTreeItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        TaviTreeItemDelegate::paint(painter, option, index); // the ground, with the selection
        const auto *item = dynamic_cast<const InkItem *>(TaviTreeModel::itemFromIndex(index));
        if (item && index.column() == colour_column)
            drawSwatch(painter, option, item->swatch());
        if (item && index.column() == coverage_column)
            drawProgressBar(painter, option, index, item->ink().coverage, QColor(0x6f, 0xa8, 0xdc),
                            QStringLiteral("%1 %").arg(item->ink().coverage));
    }

protected:
    void drawDisplay(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                     const QString &text) const override
    {
        QStyleOptionViewItem own = option;
        own.textElideMode = Qt::ElideMiddle;
        TaviTreeItemDelegate::drawDisplay(painter, own, rect, text);
    }
};

/// A list of inks whose columns the user shows, hides, orders, and brings back.
class TaviHeaderViewPage : public QWidget
{
public:
    explicit TaviHeaderViewPage(bool for_picture)
        : model_({QStringLiteral("Ink"), QStringLiteral("Colour"), QStringLiteral("Coverage"), QStringLiteral("dE"),
                  QStringLiteral("Remark")})
    {
        view_ = new TaviTreeView(this);
        view_->setObjectName(QStringLiteral("inks"));
        view_->setAccessibleName(QStringLiteral("Inks"));
        view_->setRootIsDecorated(false);
        auto *delegate = new InkDelegate(view_);
        delegate->setMargin(4);
        view_->setItemDelegate(delegate);
        for (const Ink &ink : inks)
            model_.appendItem(new InkItem(ink));
        view_->setModel(&model_);
        view_->setSortingEnabled(true);
        static constexpr int widths[] = {110, 60, 110, 60};
        for (int column = 0; column < remark_column; ++column)
            view_->header()->resizeSection(column, widths[column]);
        view_->sortByColumn(ink_column, Qt::AscendingOrder);

        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addLayout(makeButtons());
        layout->addWidget(view_->widget(), 1);
        if (for_picture)
            pose();
    }

    QSize sizeHint() const override { return {520, 370}; }

private:
    QHBoxLayout *makeButtons()
    {
        auto *buttons = new QHBoxLayout;
        const auto add = [this, buttons](const char *text, auto act) {
            auto *button = new QPushButton(QString::fromUtf8(text), this);
            connect(button, &QPushButton::clicked, this, act);
            buttons->addWidget(button);
        };
        add("Configure columns...", [this] { QMetaObject::invokeMethod(view_->header(), "configureHeaders"); });
        add("Remember columns", [this] { view_->saveHeaderState(registry_, section_); });
        add("Bring them back", [this] { view_->restoreHeaderState(registry_, section_); });
        buttons->addStretch();
        return buttons;
    }

    /// With a row selected that is beyond the tolerance, a column moved, and the menu open.
    void pose()
    {
        view_->header()->moveSection(difference_column, 1);
        view_->selectItem(model_.itemAt(2));
        auto *menu_picture = new QLabel(this);
        menu_picture->move(300, 200);
        QTimer::singleShot(50, this, [menu_picture] {
            QWidget *menu = QApplication::activePopupWidget();
            if (!menu)
                return;
            menu_picture->setPixmap(menu->grab());
            menu_picture->adjustSize();
            menu_picture->raise();
            menu->close();
        });
        QMetaObject::invokeMethod(view_->header(), "headerMenu", Q_ARG(QPoint, QPoint()));
    }

    TaviRegistry registry_;
    std::string section_ = "gallery";
    TaviTreeModel model_;
    TaviTreeView *view_ = nullptr;
};

} // namespace

QWidget *makeTaviHeaderViewPage(bool for_picture)
{
    return new TaviHeaderViewPage(for_picture);
}
