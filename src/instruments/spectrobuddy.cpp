// SPDX-License-Identifier: MIT
#include "instruments/spectrobuddy.h"

#include "instruments/spectrobuddystatuswatch_p.h"
#include "taviapp/tavikey_cc.h"
#include "taviapp/taviregistry.h"
#include "tavilib/tavipacket.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QTimer>

SpectroBuddy::SpectroBuddy(QGroupBox *box, bool with_messages) : show_messages(with_messages), group(box)
{
    if (show_messages)
        instrument.setMessageCallback(processInstrumentMessage, this);
    if (group)
        buildInterface();
}

SpectroBuddy::~SpectroBuddy()
{
    TaviPacketFreeList(&chart, TAVIPACKET_COMBOCOLOUR);
    instrument.close();
    buffer.freeAll(TAVIPACKET_COMBOCOLOUR);
}

void SpectroBuddy::loadRegistry(TaviRegistry &registry, const std::string &section, const std::string &key)
{
    std::string kept_section = section;
    std::string kept_key = key;
    const std::string name = registry.getstring(kept_section, kept_key);
    SpectroBuddyStatusWatch watch(this);
    instrument.close();
    if (!watch.isAlive())
        return;
    reloadCombo(QString::fromStdString(name));
    if (!name.empty())
        instrument.load(name.c_str(), true);
    if (watch.report())
        updateInstrumentStatus();
}

void SpectroBuddy::saveRegistry(TaviRegistry &registry, const std::string &section, const std::string &key) const
{
    if (!hasInstruments())
        return;
    std::string kept_section = section;
    std::string kept_key = key;
    registry.putstring(kept_section, kept_key, currentName().toStdString());
}

void SpectroBuddy::setMode(INSTRUMENT_MODE new_mode)
{
    // The test is on the mode that is left, not on the one that is entered: a mode of another kind of group is taken
    // over once, and every way out of it leads to spot mode.
    const INSTRUMENT_MODE old_mode = mode;
    mode = old_mode == SPOT_MODE || old_mode == CHART_MODE ? new_mode : SPOT_MODE;
    if (new_mode == old_mode)
        return;
    SpectroBuddyStatusWatch watch(this);
    instrument.close();
    if (!watch.isAlive())
        return;
    reloadCombo(currentName());
    if (watch.report())
        updateInstrumentStatus();
}

void SpectroBuddy::setMeasurementsEnabled(bool enabled)
{
    measurements_enabled = enabled;
    if (!enabled) {
        SpectroBuddyStatusWatch watch(this);
        instrument.close();
        if (watch.isAlive() && hasInstruments())
            loadCurrentOrClose();
        if (!watch.report())
            return;
        updateInstrumentStatus();
    }
    updateActivateButton();
}

int SpectroBuddy::enable()
{
    const SpectroBuddyStatusWatch watch(this);
    if (!watch.wasOn())
        toggleInstrument();
    return watch.isAlive() && instrument.enabled() ? 0 : -1;
}

int SpectroBuddy::disable()
{
    const SpectroBuddyStatusWatch watch(this);
    if (watch.wasOn())
        toggleInstrument();
    return watch.isAlive() && instrument.enabled() ? -1 : 0;
}

bool SpectroBuddy::isAddMode() const
{
    return add_box && add_box->isChecked() && group && add_box->isVisibleTo(group);
}

void SpectroBuddy::setComboChart(TAVICOMBOCOLOUR *patches, unsigned long patches_per_line, unsigned long parameter,
                                 unsigned long parameter_of_print)
{
    setComboChart(TAVIKEY_CC::getNullKey(), patches, patches_per_line, parameter, parameter_of_print);
}

void SpectroBuddy::setComboChart(const TAVIKEY_ELEMENT &key, TAVICOMBOCOLOUR *patches, unsigned long patches_per_line,
                                 unsigned long parameter, unsigned long parameter_of_print)
{
    SpectroBuddyStatusWatch watch(this);
    chart_key = key;
    TAVICOMBOCOLOUR *copy = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, patches);
    TaviPacketFreeList(&chart, TAVIPACKET_COMBOCOLOUR);
    chart = copy;
    line_length = patches_per_line;
    chart_parameter = parameter;
    print_parameter = parameter_of_print;

    if (watch.wasOn() && mode == CHART_MODE) {
        int result = -1;
        if (!isPrinter()) {
            result = startChart();
        } else {
            // Here the data themselves decide, not the application's word for them.
            requestPrinting();
            if (!watch.isAlive())
                return;
            if (isPrinterCommDataValid())
                result = startPrinting();
        }
        if (result != 0 && watch.isAlive())
            loadCurrentOrClose();
    }
    if (watch.isAlive() && mode != CHART_MODE)
        instrument.close();
    if (watch.report())
        updateInstrumentStatus();
}

int SpectroBuddy::getComboColourChart(TAVICOMBOCOLOUR const *patches, unsigned long parameter) const
{
    return instrument.getComboColourChart(patches, parameter);
}

std::string SpectroBuddy::dllFilename() const
{
    return instrument.dllFilename();
}

bool SpectroBuddy::isPrinter()
{
    if (!instrument.enabled() && hasInstruments())
        instrument.load(currentName().toUtf8().constData(), true);
    return instrument.isPrinter();
}

bool SpectroBuddy::isPrinterCommDataValid() const
{
    return comm_server && TAVIKEY_CC::isValid(print_setup);
}

void SpectroBuddy::toggleInstrument()
{
    SpectroBuddyStatusWatch watch(this);
    showMessage({});
    instrument.close();
    if (!watch.isAlive())
        return;
    print_watch.reset();
    if (watch.wasOn()) {
        // Done, or Turn Off: what a series without an end marker has brought is delivered now.
        if (buffer_all)
            fireAllLab();
    } else if (const QString name = currentName(); !name.isEmpty()) {
        int result = instrument.open(name.toUtf8().constData(), true);
        if (!watch.isAlive() || (result != 0 && instrument.enabled()))
            return; // a dialog was up, and what ran meanwhile has destroyed the group or turned it on
        if (result == 0)
            result = startRead();
        if (result != 0 && watch.isAlive())
            loadCurrentOrClose();
    }
    if (watch.isAlive() && watch.report())
        updateInstrumentStatus();
}

int SpectroBuddy::startRead()
{
    switch (mode) {
    case SPOT_MODE:
        return instrument.readSpotLab(processLabFromInstrument, this);
    case CHART_MODE:
        if (chart_init_delayed)
            return 0; // the chart comes later, and starts the read
        if (!isPrinter())
            return startChart();
        // Refused by the application, nothing starts, and the instrument stays on.
        return requestPrinting() ? startPrinting() : 0;
    }
    return -1;
}

int SpectroBuddy::startChart()
{
    const int result = instrument.readComboChart(chart, line_length, chart_parameter, processLabFromInstrument, this);
    print_watch.reset(); // of a print run that this read has ended
    return result;
}

bool SpectroBuddy::requestPrinting()
{
    comm_server = nullptr;
    TAVIKEY_CC::nullifyKey(print_setup);
    TAVIKEY_CC::nullifyKey(media);
    bool ok = false;
    const QPointer<SpectroBuddy> self(this);
    Q_EMIT requestPrinterCommData(&comm_server, print_setup, media, ok);
    return self && ok;
}

int SpectroBuddy::startPrinting()
{
    watchPrint();
    return instrument.printNReadComboChart(comm_server, print_setup, media, chart_key, chart, line_length,
                                           chart_parameter, print_parameter, processLabFromInstrument, this);
}

void SpectroBuddy::watchPrint()
{
    // An old run is ended first, so that its last word goes to the old watch.
    instrument.abort();
    print_watch = std::make_unique<QObject>();
    // The driver emits on its worker thread, so this is a queued call.
    connect(&instrument, &OrloInstrument::done, print_watch.get(), [this] { endPrint(); });
}

void SpectroBuddy::endPrint()
{
    // The word may come ahead of the last values; ending the run would drop them.
    if (instrument.hasUndelivered())
        QTimer::singleShot(10, print_watch.get(), [this] { endPrint(); });
    else
        park();
}

void SpectroBuddy::loadCurrentOrClose()
{
    if (const QString name = currentName(); name.isEmpty()) {
        instrument.close();
    } else {
        const QPointer<SpectroBuddy> self(this);
        instrument.load(name.toUtf8().constData(), true);
        if (self)
            updateInstrumentStatus();
    }
}

void SpectroBuddy::park()
{
    if (!hasInstruments())
        return;
    SpectroBuddyStatusWatch watch(this);
    loadCurrentOrClose();
    if (watch.report())
        updateInstrumentStatus();
}

void SpectroBuddy::printChartPressed()
{
    const QPointer<SpectroBuddy> self(this);
    if (!instrument.enabled())
        loadCurrentOrClose();
    if (self)
        Q_EMIT printChart();
}

void SpectroBuddy::loadInstrument(QString str)
{
    SpectroBuddyStatusWatch watch(this);
    if (str.isEmpty()) {
        instrument.close();
        watch.report();
        return;
    }
    instrument.load(str.toUtf8().constData(), true);
    if (watch.report())
        updateInstrumentStatus();
}
