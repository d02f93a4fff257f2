// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_SPECTROBUDDY_H
#define INSTRUMENTS_SPECTROBUDDY_H

#include "foundation/taviwidgets_export.h"
#include "instruments/orloinstrument.h"
#include "tavilib/tavipacketchain.h"
#include "tavilib/tavirecords.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <string>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;
class TaviRegistry;

/// The instrument box of a panel: drives a spectrophotometer and delivers its colours as signals.
///
/// @image html spectrobuddy.png
///
/// The application hands over an empty QGroupBox, and the buddy fills it with an instrument combo, a message line, an
/// add-mode tick box and two buttons. It is a QObject beside a box of widgets, not a widget.
///
/// @code
/// auto *box = new QGroupBox(panel);
/// auto *buddy = new SpectroBuddy(box, true);
/// buddy->loadRegistry(registry, "measure", "instrument");
/// connect(buddy, &SpectroBuddy::allLab, panel, [](TAVICOMBOCOLOUR *measured) {
///     TAVICOMBOCOLOUR_CC patches(measured); // the receiver owns the list
///     showPatches(patches.head());
/// });
/// @endcode
///
/// **What arrives as what.** In spot mode each colour is a spotLab(). In chart mode colours are gathered to lines
/// (lineLab()) if setBufferLineMeasurements() asks for it. An instrument that is a file source delivers everything in
/// one allLab(), in both modes, unless lines are gathered. An end marker closes such a series; where nothing is
/// gathered it reaches the listener as a spotLab() with L below zero. What a stopped series has brought stays
/// gathered until it is delivered by turning off, fireAllLab() or fireLineLab(), or leads the next series.
///
/// **Ownership.** The buddy owns its driver and its copy of the chart. The group box stays the application's: it may
/// be destroyed first, and the buddy then goes on as one without a user interface; the other way round the controls
/// stay in the box and do nothing. A list that comes with lineLab()
/// or allLab() belongs to the receiver (type code 17); connect one receiver. With no receiver the buddy frees it.
///
/// **Threads.** The main thread alone, in every operation and every signal.
///
/// **Re-entry.** A slot may call any operation, spin an event loop, and destroy the buddy or its group box.
class TAVIWIDGETS_EXPORT SpectroBuddy : public QObject
{
    Q_OBJECT

public:
    /// What is measured. The value 1 is a mode of other control groups and has no instruments here.
    enum INSTRUMENT_MODE { SPOT_MODE = 0, CHART_MODE = 2 };
    Q_ENUM(INSTRUMENT_MODE)

    /// Fills @a group; null makes a buddy without a user interface, which holds a driver and delivers what it is fed.
    /// @a show_messages: the instrument's texts and the measured values appear in the message line.
    explicit SpectroBuddy(QGroupBox *group, bool show_messages);
    /// Stops a read and closes the instrument.
    ~SpectroBuddy() override;

    /// Chooses and loads the instrument whose name is kept under @a key; an open instrument is closed. A name that is
    /// not installed leaves the first of the list chosen.
    void loadRegistry(TaviRegistry &registry, const std::string &section, const std::string &key);
    /// Keeps the chosen instrument's name, as UTF-8; nothing while the combo is empty.
    void saveRegistry(TaviRegistry &registry, const std::string &section, const std::string &key) const;

    /// Switches between spot and chart measurement; the instrument is closed if the mode is another than before.
    /// From a mode that is neither, every change leads to SPOT_MODE.
    void setMode(INSTRUMENT_MODE mode);
    /// What is measured now.
    INSTRUMENT_MODE getMode() const { return mode; }

    /// Allows or forbids the user to measure. Forbidding turns the instrument off and keeps the button disabled;
    /// enable() still turns it on.
    void setMeasurementsEnabled(bool enabled);

    /// Turns the instrument on, as the button does. 0 if it is on afterwards, else -1.
    int enable();
    /// Turns the instrument off. 0 if it is off afterwards, else -1.
    int disable();

    /// Whether measurements are to be added as new items: the box is there, shown and ticked. It is shown only while
    /// the instrument is on.
    bool isAddMode() const;
    /// Whether the add box is offered at all; true at first.
    void showAddMode(bool show);

    /// The chart to read, of which a copy is kept, with three numbers for the plug-in: patches per line, a chart and
    /// a print parameter. While the instrument is on in chart mode, its reading starts at once, else with the next
    /// enable(). In any other mode an open instrument is closed.
    void setComboChart(TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
                       unsigned long print_parameter);
    /// The same with the key under which a printing instrument finds the chart.
    void setComboChart(const TAVIKEY_ELEMENT &key, TAVICOMBOCOLOUR *chart, unsigned long line_length,
                       unsigned long chart_parameter, unsigned long print_parameter);

    /// OrloInstrument::getComboColourChart() of the driver.
    int getComboColourChart(TAVICOMBOCOLOUR const *chart, unsigned long parameter) const;
    /// OrloInstrument::dllFilename() of the driver.
    std::string dllFilename() const;

    /// Whether chart mode gathers colours to lines; false at first.
    void setBufferLineMeasurements(bool gather) { buffer_line = gather; }
    /// Whether chart mode gathers colours to lines.
    bool isBufferLineMeasurements() const { return buffer_line; }
    /// Whether colours are gathered until the end marker. Follows the chosen instrument (true for a file source)
    /// whenever the list of instruments is filled: by a choice, by turning off, by another mode.
    void setBufferAllMeasurements(bool gather) { buffer_all = gather; }
    /// Whether colours are gathered until the end marker.
    bool isBufferAllMeasurements() const { return buffer_all; }
    /// Whether turning on in chart mode waits for setComboChart() before it reads; false at first.
    void setChartInitDelayed(bool delayed) { chart_init_delayed = delayed; }
    /// Whether turning on in chart mode waits for a chart.
    bool isChartInitDelayed() const { return chart_init_delayed; }

    /// Whether the group is in chart mode. Speaks of the group's mode, not of the plug-in's capabilities.
    bool isStripReader() const { return mode == CHART_MODE; }
    /// Whether the chosen instrument prints what it measures. Loads it if it is not loaded.
    bool isPrinter();
    /// Whether the application has given a print server and a print setup.
    bool isPrinterCommDataValid() const;

    // The steps by which colours are delivered, public so that a caller can feed values in by hand.

    /// Shows one colour and emits spotLab().
    void fireSpotLab(double L, double a, double b);
    /// Emits lineLab() with the first `line_length` gathered colours, if there are so many.
    void fireLineLab();
    /// Emits allLab() with all gathered colours, if there are any.
    void fireAllLab();
    /// Gathers one colour, and emits lineLab() when the line is full. An end marker counts as a colour. O(1).
    void bufferLineLab(double L, double a, double b);
    /// Gathers one colour; the end marker (L below zero) emits allLab() instead. O(1).
    void bufferAllLab(double L, double a, double b);

public Q_SLOTS:
    /// A print and read run has ended: the instrument is turned off and stays loaded.
    void park();

Q_SIGNALS:
    /// One colour, CIE Lab, D50. L below zero is the end marker of a series.
    void spotLab(double L, double a, double b);
    /// A line of a chart is complete. The receiver owns the list.
    void lineLab(TAVICOMBOCOLOUR *combos);
    /// A series has ended. The receiver owns the list.
    void allLab(TAVICOMBOCOLOUR *combos);
    /// The instrument was turned on or off.
    void instrumentStatusChanged(bool is_on);
    /// The print button was pressed.
    void printChart();
    /// The instrument prints: a slot, connected directly, fills in server and keys and sets @a ok.
    void requestPrinterCommData(TaviCommServer **commserver, TAVIKEY_ELEMENT &psetup, TAVIKEY_ELEMENT &media,
                                bool &ok);

private Q_SLOTS:
    void toggleInstrument();
    void printChartPressed();
    void loadInstrument(QString str);

private:
    friend class SpectroBuddyStatusWatch;

    void buildInterface();
    void reloadCombo(const QString &wanted);
    void rebuildCombo();
    void updateInstrumentStatus();
    void redoLayout();
    void updateActivateButton();
    bool hasInstruments() const;
    QString currentName() const;
    void loadCurrentOrClose();
    int startRead();
    void watchPrint();
    void endPrint();
    int startChart();
    int startPrinting();
    bool requestPrinting();
    void showMessage(const QString &text);

    static int processLabFromInstrument(void *buddy, double L, double a, double b);
    static int processInstrumentMessage(void *buddy, char const *text);

    OrloInstrument instrument;
    std::unique_ptr<QObject> print_watch; ///< Hears of the end of one print and read run; gone with the run, so that
                                          ///< a late word of an old one ends no new one.
    const bool show_messages;
    QPointer<QGroupBox> group;
    QPointer<QComboBox> combo;
    QPointer<QLineEdit> message_line;
    QPointer<QCheckBox> add_box;
    QPointer<QPushButton> activate_button;
    QPointer<QPushButton> print_button;
    QPointer<QGridLayout> layout;
    TAVICOMBOCOLOUR *chart = nullptr; ///< Owned copy.
    unsigned long chart_parameter = 0;
    unsigned long line_length = 16;
    INSTRUMENT_MODE mode = SPOT_MODE;
    bool show_add_mode = true;
    bool measurements_enabled = true;
    TaviPacketChain<TAVICOMBOCOLOUR> buffer; ///< Colours waiting for a signal, owned; knows its tail, because a
                                             ///< measured list may have 100,000 of them.
    bool buffer_line = false;
    bool buffer_all = false;
    TaviCommServer *comm_server = nullptr; ///< The application's.
    TAVIKEY_ELEMENT print_setup = {0, 0};
    TAVIKEY_ELEMENT media = {0, 0};
    TAVIKEY_ELEMENT chart_key = {0, 0};
    bool chart_init_delayed = false;
    unsigned long print_parameter = 0;
};

#endif
