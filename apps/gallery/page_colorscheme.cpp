// SPDX-License-Identifier: MIT
#include "foundation/colorscheme.h"
#include "gallery/page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// What a window may hold, so that one sees how text and controls stand on a tint.
class Sample : public QGroupBox
{
public:
    Sample(const QString &title, QWidget *parent) : QGroupBox(title, parent)
    {
        auto *layout = new QVBoxLayout(this);
        auto *label = new QLabel(QStringLiteral("Ink coverage &limit"), this);
        auto *edit = new QLineEdit(QStringLiteral("320 %"), this);
        label->setBuddy(edit);
        layout->addWidget(label);
        layout->addWidget(edit);
        layout->addWidget(new QCheckBox(QStringLiteral("Keep black"), this));
        layout->addStretch();
        setAutoFillBackground(true);
    }
};

/// A row of schemes to choose from, with their half icons and luminances, and what each way of filling makes of a
/// panel.
class ColorSchemePage : public QWidget
{
public:
    ColorSchemePage()
    {
        schemes_.add(new ColorScheme(QStringLiteral("Flexo"), "flexo", 0, 160, 255, QColor::Rgb));
        schemes_.add(new ColorScheme(QStringLiteral("Gravure"), "gravure", 28.0, 80.0, 90.0));
        schemes_.add(new ColorScheme(QStringLiteral("Offset"), "offset", QColor(90, 170, 60)));
        schemes_.add(new ColorScheme(QStringLiteral("Archive"), "archive", QColor(128, 128, 128)));

        auto *layout = new QGridLayout(this);
        for (int i = 0; i < static_cast<int>(schemes_.count()); ++i) {
            const ColorScheme *scheme = schemes_.find(i);
            auto *button = new QPushButton(scheme->iconSet(true), scheme->displayName(), this);
            connect(button, &QPushButton::clicked, this, [this, scheme] { choose(*scheme); });
            layout->addWidget(button, 0, i);
            auto *luminance = new QLabel(QStringLiteral("Luminance %1").arg(scheme->themeYValue()), this);
            luminance->setAlignment(Qt::AlignCenter);
            layout->addWidget(luminance, 1, i);
        }
        const char *const titles[] = {"Full colour", "Half colour", "Raster"};
        auto *row = new QHBoxLayout;
        for (int i = 0; i < 3; ++i) {
            samples_[i] = new Sample(QString::fromUtf8(titles[i]), this);
            row->addWidget(samples_[i]);
        }
        layout->addLayout(row, 2, 0, 1, static_cast<int>(schemes_.count()));
        layout->setRowStretch(2, 1);
        choose(*schemes_.find(0));
    }

private:
    void choose(const ColorScheme &scheme)
    {
        constexpr ColorScheme::IconSetType types[] = {ColorScheme::FULL_COLOUR, ColorScheme::HALF_COLOUR,
                                                      ColorScheme::RASTER};
        for (int i = 0; i < 3; ++i) {
            samples_[i]->setPalette({}); // a tint replaces what the one before it has set
            scheme.apply(samples_[i], types[i]);
        }
    }

    ColorSchemeHolder schemes_;
    Sample *samples_[3] = {};
};

} // namespace

QWidget *makeColorSchemePage(bool)
{
    return new ColorSchemePage;
}
