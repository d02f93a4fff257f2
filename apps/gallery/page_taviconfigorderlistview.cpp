// SPDX-License-Identifier: MIT
#include "gallery/page.h"
#include "listviews/taviconfigorderlistview.h"

#include <QColor>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

#include <array>
#include <memory>
#include <vector>

namespace {

/// An ink of the press, with a swatch of it.
class Ink : public TaviConfigOrderItem
{
public:
    Ink(const char *name, QRgb colour, bool shows) : name_(QString::fromLatin1(name)), swatch_(14, 10)
    {
        swatch_.fill(Qt::gray);
        QPainter(&swatch_).fillRect(swatch_.rect().adjusted(1, 1, -1, -1), QColor(colour));
        setItemVisible(shows);
        setItemInShowList(shows);
    }
    QString itemText() const override { return name_; }
    QPixmap itemPixmap() const override { return swatch_; }

private:
    const QString name_;
    QPixmap swatch_;
};

/// The inks that there are and those that are printed, in the order of the units.
class OrderListsPage : public QWidget
{
public:
    explicit OrderListsPage(bool for_picture)
    {
        struct Row {
            const char *name;
            QRgb colour;
            bool shows;
        };
        static constexpr std::array<Row, 8> rows{{{"Black", 0xff1d1d1b, true},
                                                  {"Cyan", 0xff009ee0, true},
                                                  {"Magenta", 0xffe2007a, true},
                                                  {"Yellow", 0xffffed00, true},
                                                  {"Orange", 0xffef7c00, false},
                                                  {"Green", 0xff009a4e, false},
                                                  {"Violet", 0xff50328c, false},
                                                  {"White", 0xffffffff, false}}};
        auto *layout = new QGridLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        all_ = new TaviConfigOrderListView(true, this);
        showing_ = new TaviConfigOrderListView(false, this);
        all_->setBuddy(showing_);
        showing_->setBuddy(all_);
        layout->addWidget(all_, 0, 0);
        layout->addWidget(showing_, 0, 1);
        auto *hint =
            new QLabel(QStringLiteral("Drag inks from list to list, and up and down in the right one."), this);
        layout->addWidget(hint, 1, 0, 1, 2);
        Q3ListViewItem *last = nullptr;
        Q3ListViewItem *last_showing = nullptr;
        for (const Row &row : rows) {
            inks_.push_back(std::make_unique<Ink>(row.name, row.colour, row.shows));
            last = new TaviConfigOrderListItem(all_, last, inks_.back().get());
            last->setEnabled(!row.shows);
            if (row.shows)
                last_showing = new TaviConfigOrderListItem(showing_, last_showing, inks_.back().get());
        }
        all_->setSelected(last->itemAbove(), true);
        all_->setCurrentItem(last->itemAbove());
        if (for_picture)
            showing_->viewport()->installEventFilter(this);
    }
    // The rows go before what they show.
    ~OrderListsPage() override
    {
        delete all_;
        delete showing_;
    }
    OrderListsPage(const OrderListsPage &) = delete;
    OrderListsPage &operator=(const OrderListsPage &) = delete;

    QSize sizeHint() const override { return {420, 250}; }

    /// As if the selected ink were dragged between the second and the third, for the picture.
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Resize) {
            auto *mark = showing_->viewport()->findChild<DNDIndicator *>();
            const QRect row = showing_->itemRect(showing_->firstChild()->itemBelow());
            mark->setGeometry(0, row.bottom() - 4, showing_->visibleWidth(), DNDIndicator::line_height);
            mark->show();
        }
        return QWidget::eventFilter(object, event);
    }

private:
    std::vector<std::unique_ptr<Ink>> inks_;
    TaviConfigOrderListView *all_;
    TaviConfigOrderListView *showing_;
};

} // namespace

QWidget *makeTaviConfigOrderListViewPage(bool for_picture)
{
    return new OrderListsPage(for_picture);
}
