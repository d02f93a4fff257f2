// SPDX-License-Identifier: MIT
#ifndef TESTS_PLUGINS_MISBEHAVINGFIXTURE_H
#define TESTS_PLUGINS_MISBEHAVINGFIXTURE_H

#include "tests/support/instruments/spectrobuddyfixture.h"

/// A control group with a good instrument ("Scripted") and colours that came before; a second one ("Bad") is for the
/// test to spoil. At the end nothing of what came before may be missing, and the good one must measure as ever.
class MisbehavingFixture : public SpectroBuddyFixture
{
public:
    MisbehavingFixture()
    {
        plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.sendLab(10, 1, 1);
            read.sendLab(20, 2, 2);
            return 0;
        };
        measured_before_ = goodInstrumentMeasures();
        // Two more are gathered, and wait for the end of their series.
        buddy->bufferAllLab(30, 3, 3);
        buddy->bufferAllLab(40, 4, 4);
        spots_before_ = spots->count();
    }

    /// Puts in the second instrument: a built variant of the scripted plug-in.
    ScriptedPlugin *addBad(const QString &variant = QStringLiteral("scripted"))
    {
        bad = readers.add(variant, "bad.so");
        bad->name = "Bad";
        bad->flags = plugin->flags;
        return bad;
    }
    void chooseBad()
    {
        findInstrumentsAnew();
        choose("Bad");
        status->clear();
    }

    /// The spots that came since the fixture was made.
    std::vector<double> lightnessOfNewSpots() const
    {
        std::vector<double> found;
        for (int i = spots_before_; i < spots->count(); ++i)
            found.push_back(spots->at(i).first().toDouble());
        return found;
    }

    /// Chooses the good instrument, turns it on, takes two colours and turns it off.
    bool goodInstrumentMeasures()
    {
        const SpectroBuddy::INSTRUMENT_MODE mode = buddy->getMode();
        buddy->setMode(SpectroBuddy::SPOT_MODE);
        choose("Scripted");
        const int before = spots->count();
        press();
        const bool came = QTest::qWaitFor([&] { return spots->count() == before + 2; });
        const bool was_on = group->title() == "Scripted";
        press();
        const bool right =
            came && spots->at(before).first().toDouble() == 10.0 && spots->at(before + 1).first().toDouble() == 20.0;
        buddy->setMode(mode);
        return right && was_on;
    }

    /// Whether the gathered colours of before still come, and no others, and the good instrument still measures.
    bool allIsAsBefore()
    {
        if (!measured_before_)
            return false;
        buddy->fireAllLab();
        return series.size() == 1 && names(series[0]) == QStringList{"30.00, 3.00, 3.00", "40.00, 4.00, 4.00"}
               && goodInstrumentMeasures();
    }

    /// Whether the group looks as one whose instrument is off: it can be chosen and turned on, nothing is said.
    bool looksOff() const
    {
        const bool charts = buddy->getMode() == SpectroBuddy::CHART_MODE;
        return group->title() == "Spectrophotometer (offline)"
               && activateButton()->text() == (charts ? "Measure" : "Activate") && activateButton()->isEnabled()
               && shows(combo()) && !shows(messageLine()) && !shows(addBox());
    }
    /// Whether it looks as one whose instrument is on.
    bool looksOn() const
    {
        const bool charts = buddy->getMode() == SpectroBuddy::CHART_MODE;
        return group->title() == combo()->currentText() && activateButton()->text() == (charts ? "Done" : "Turn Off")
               && activateButton()->isEnabled() && !shows(combo()) && shows(messageLine()) && shows(addBox());
    }

    ScriptedPlugin *bad = nullptr;

private:
    bool measured_before_ = false;
    int spots_before_ = 0;
};

#endif
