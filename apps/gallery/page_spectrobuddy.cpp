// SPDX-License-Identifier: MIT
#include "gallery/galleryinstrument.h"
#include "gallery/page.h"
#include "instruments/spectrobuddy.h"
#include "taviapp/tavicombocolour_cc.h"
#include "taviapp/taviregistry.h"

#include <QGroupBox>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

/// Two boxes, for spots and for charts, and what they last delivered.
class SpectroBuddyPage : public QWidget
{
public:
    explicit SpectroBuddyPage(bool for_picture)
    {
        auto *layout = new QVBoxLayout(this);
        auto *spot_box = new QGroupBox(this);
        auto *chart_box = new QGroupBox(this);
        auto *heard = new QLabel(QStringLiteral("Nothing measured yet."), this);
        heard->setWordWrap(true);
        layout->addWidget(new QLabel(QStringLiteral("Single colours"), this));
        layout->addWidget(spot_box);
        layout->addWidget(new QLabel(QStringLiteral("A chart"), this));
        layout->addWidget(chart_box);
        layout->addWidget(heard);
        layout->addStretch();

        spot_ = std::make_unique<SpectroBuddy>(spot_box, true);
        chart_ = std::make_unique<SpectroBuddy>(chart_box, true);
        chart_->setMode(SpectroBuddy::CHART_MODE);
        for (SpectroBuddy *buddy : {spot_.get(), chart_.get()}) {
            connect(buddy, &SpectroBuddy::spotLab, heard, [heard](double L, double a, double b) {
                heard->setText(L < 0.0 ? QStringLiteral("The series has ended.")
                                       : QStringLiteral("spotLab(%1, %2, %3)").arg(L).arg(a).arg(b));
            });
            connect(buddy, &SpectroBuddy::allLab, heard, [heard](TAVICOMBOCOLOUR *list) {
                const TAVICOMBOCOLOUR_CC patches(list);
                heard->setText(QStringLiteral("allLab: %1 patches").arg(patches.count()));
            });
        }
        if (for_picture)
            pose();
    }

private:
    /// The upper group on, with a value in its message line.
    void pose()
    {
        TaviRegistry registry;
        registry.putstring("gallery", "instrument", galleryInstrumentName());
        spot_->loadRegistry(registry, "gallery", "instrument");
        answerFileDialogs(true);
        spot_->enable();
        answerFileDialogs(false);
        // Behind what the reader still has to say.
        QTimer::singleShot(100, this, [this] { spot_->fireSpotLab(54.32, -36.91, -48.05); });
    }

    std::unique_ptr<SpectroBuddy> spot_;
    std::unique_ptr<SpectroBuddy> chart_;
};

} // namespace

QWidget *makeSpectroBuddyPage(bool for_picture)
{
    return new SpectroBuddyPage(for_picture);
}
