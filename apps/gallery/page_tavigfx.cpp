// SPDX-License-Identifier: MIT
#include "foundation/tavigfx.h"
#include "gallery/page.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int handle_size = 8;

QPushButton *addButton(QHBoxLayout *layout, const QString &text)
{
    auto *const button = new QPushButton(text);
    layout->addWidget(button);
    return button;
}

/// Inks in tints from full to paper, each with its percentage in a colour that can be read on it.
class Tints : public QWidget
{
public:
    explicit Tints(QWidget *parent) : QWidget(parent) { setMinimumSize(480, 84); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int steps = 6;
        const QColor inks[] = {QColor(0, 130, 190), QColor(200, 0, 110), QColor(40, 40, 40)};
        QPainter painter(this);
        int y = 0;
        for (const QColor &ink : inks) {
            for (int i = 0; i < steps; ++i) {
                const int percent = 100 - i * 20;
                QColor tint = ink;
                TaviGfx::applyTint(tint, percent);
                const QRect cell(i * width() / steps, y, width() / steps, 28);
                painter.fillRect(cell, tint);
                painter.setPen(TaviGfx::getSensibleForegroundColour(tint));
                painter.drawText(cell, Qt::AlignCenter, QStringLiteral("%1 %").arg(percent));
            }
            y += 28;
        }
    }
};

/// A bubble whose tail follows a target that the mouse drags, and a frame with size handles around the target.
class Bubble : public QWidget
{
public:
    explicit Bubble(QWidget *parent) : QWidget(parent)
    {
        setMinimumSize(480, 170);
        setMouseTracking(true);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRect bubble(20, 20, 190, 64);
        painter.setBrush(QColor(255, 250, 205));
        painter.setPen(QColor(120, 110, 60));
        painter.drawPolygon(TaviGfx::getSpeechBubble(bubble, target_.adjusted(-8, -8, 8, 8)));
        painter.setPen(Qt::black);
        painter.drawText(bubble, Qt::AlignCenter, QStringLiteral("Drag the patch,\npoint at its handles"));
        painter.fillRect(target_, QColor(0, 130, 190));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(target_);
        const int xs[] = {target_.left(), target_.center().x(), target_.right()};
        const int ys[] = {target_.top(), target_.center().y(), target_.bottom()};
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column) {
                if (row == 1 && column == 1)
                    continue;
                const QPoint place(xs[column], ys[row]);
                const bool is_under = TaviGfx::onHandle(target_, place, handle_size) == under_;
                painter.fillRect(QRect(place - QPoint(4, 4), QSize(9, 9)), is_under ? Qt::red : Qt::darkGray);
            }
        }
    }
    void mousePressEvent(QMouseEvent *event) override { grip_ = event->pos() - target_.topLeft(); }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (event->buttons() & Qt::LeftButton)
            target_.moveTopLeft(event->pos() - grip_);
        under_ = TaviGfx::onHandle(target_, event->pos(), handle_size);
        update();
    }

private:
    QRect target_{330, 90, 90, 60};
    QPoint grip_;
    TaviGfx::SIZE_HANDLE under_ = TaviGfx::TOP_RIGHT_HANDLE;
};

/// One name, shortened at its start, middle and end to the width there is.
class Shortened : public QWidget
{
public:
    explicit Shortened(QWidget *parent) : QWidget(parent) { setMinimumSize(480, 64); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QString name = QStringLiteral("Characterisation of coated paper, 115 g, third run of the week.ti3");
        QPainter painter(this);
        const int room = width() / 2;
        for (int mode = 0; mode < 3; ++mode) {
            const QRect line(0, mode * 20, room, 20);
            painter.fillRect(line, palette().base());
            painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                             TaviGfx::truncateString(name, fontMetrics(), room, mode));
            const char *const places[] = {"at the start", "in the middle", "at the end"};
            painter.drawText(QRect(room + 12, mode * 20, room, 20), Qt::AlignLeft | Qt::AlignVCenter,
                             QString::fromLatin1(places[mode]));
        }
    }
};

/// All of it, with buttons for the font and the printer.
class TaviGfxPage : public QWidget
{
public:
    TaviGfxPage()
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(new Tints(this));
        layout->addWidget(new Bubble(this), 1);
        layout->addWidget(new Shortened(this));
        auto *row = new QHBoxLayout;
        auto *size = new QLabel(this);
        const auto tell = [this, size] {
            size->setText(QStringLiteral("Font: %1 points more than normal").arg(TaviGfx::fontDeltaPoints(this)));
        };
        tell();
        row->addWidget(size, 1);
        connect(addButton(row, QStringLiteral("Smaller")), &QPushButton::clicked, this, [this, tell] {
            TaviGfx::adjustFontSize(this, -1);
            tell();
        });
        connect(addButton(row, QStringLiteral("Larger")), &QPushButton::clicked, this, [this, tell] {
            TaviGfx::adjustFontSize(this, 1);
            tell();
        });
        connect(addButton(row, QStringLiteral("Print...")), &QPushButton::clicked, this,
                [this] { TaviGfx::printWidget(this, false); });
        layout->addLayout(row);
    }
};

} // namespace

QWidget *makeTaviGfxPage(bool)
{
    return new TaviGfxPage;
}
