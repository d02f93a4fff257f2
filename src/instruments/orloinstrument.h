// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_ORLOINSTRUMENT_H
#define INSTRUMENTS_ORLOINSTRUMENT_H

#include "foundation/taviwidgets_export.h"
#include "tavilib/instrumentplugin.h"

#include <QObject>

#include <memory>
#include <string>

class OrloInstrumentQueue;
struct OrloInstrumentEvent;
struct OrloInstrumentRecord;

/// Drives one spectrophotometer or densitometer plug-in.
///
/// The driver loads a plug-in from the list of installed instruments, opens its device, and runs each read on a
/// worker thread of its own, so that a read of many minutes never blocks the user interface. Colours, densities and
/// messages come back through a queue and reach the caller's callbacks on the main thread, from the event loop.
/// Beside the plug-ins stand four instruments inside the library that play measurement files back
/// (`instruments/spectro_fromfile.h`).
///
/// @code
/// int takeLab(void *context, double L, double a, double b)
/// {
///     if (L >= 0.0) // below zero: the series is over
///         static_cast<QVector<double> *>(context)->append(L);
///     return 0;
/// }
///
/// OrloInstrument instrument;
/// QVector<double> lightness;
/// if (instrument.open("Lab text file (Lab sample order)", true) == 0)
///     instrument.readSpotLab(takeLab, &lightness); // values come while the event loop runs
/// @endcode
///
/// **States.** Empty; Loaded (the plug-in is in memory and tells its capabilities, #enabled() is false); Open (the
/// device is open); Reading (a worker runs). load() and open() go to Loaded and Open from any state, a read from Open
/// to Reading, which ends by itself when the plug-in returns; close() and every failed load() or open() go to Empty.
///
/// **Stopping a read** (abort(), close(), a new read, the destructor) sets a flag that the plug-in polls, and waits
/// for the worker in steps of one second, without a time limit: a plug-in that ignores the flag blocks the caller for
/// good. There is no thread cancellation, because a plug-in holds a device. What the stopped read has left queued is
/// dropped: once the call has returned, none of its values arrives any more, not even if a plug-in's own thread goes
/// on sending some, of which the log tells once.
///
/// **Threads.** All operations and all callbacks: the thread of the object, which is the application's main thread.
/// The plug-in's read runs on the worker, one at a time. done() is emitted on the worker, so that a receiver on the
/// main thread gets it as a queued call; it may come ahead of values that are still queued (hasUndelivered()). A slot
/// that is connected directly must not call the driver: stopping the read would wait for its own thread.
///
/// **Re-entry.** A callback may call any operation, spin an event loop, and destroy the driver; so may anything that
/// runs while a plug-in's Open shows a dialog. An open() during which the driver was closed, given another plug-in or
/// destroyed ends with -1. An open() or load() from inside the driver's own closing is refused with -1.
///
/// **Events.** The driver answers its own custom event (type 1000) and no other: event() gives false for the rest
/// without asking QObject, so that timers, queued calls to the driver and deleteLater() have no effect on it. Hold it
/// by value or delete it.
class TAVIWIDGETS_EXPORT OrloInstrument : public QObject
{
    Q_OBJECT

public:
    /// Takes a status text in UTF-8. Returns 0.
    using MessageCallback = int (*)(void *context, char const *text);

    explicit OrloInstrument(QObject *parent = nullptr);
    /// Does what close() does.
    ~OrloInstrument() override;

    /// The installed instruments, sorted by display name; made on first use and kept for the life of the process.
    /// The list stays the class's. It is empty only if the plug-in directory exists and cannot be listed; a later
    /// call tries again.
    static SPECTROPHOTOMETERINFO *getInstrumentList();
    /// Frees the list at @a *list and sets it to null; nothing for a null argument or an empty list. Given the
    /// class's own list, the next getInstrumentList() looks for plug-ins anew.
    static void freeInstrumentList(SPECTROPHOTOMETERINFO **list);
    /// The directory in which plug-ins are looked for, relative to the working directory: the first of "readers",
    /// "../readers", "lib/readers", "../lib/readers" that exists, else "readers".
    static std::string instrumentDirectory();
    /// Fills the list of getInstrumentList() unless it is filled.
    static void buildInstrumentList();

    /// Loads the plug-in and opens its device. 0, or -1 with the driver Empty. A null record gives -1 and leaves the
    /// driver as it is. @a info stays the caller's.
    int open(SPECTROPHOTOMETERINFO const *info);
    /// open() for an instrument of the list: by display name (@a by_name; the first whose name begins with the part
    /// of @a text before " Rev ") or by exact file name.
    int open(char const *text, bool by_name);
    /// Loads the plug-in without opening the device, so that its capabilities can be asked. 0 or -1, as open().
    int load(SPECTROPHOTOMETERINFO const *info);
    int load(char const *text, bool by_name);
    /// Stops a read, closes the device and unloads the plug-in.
    void close();
    /// Stops a read and drops what it has left queued; nothing if no device is open.
    void abort();
    /// Whether a device is open.
    bool enabled() const;

    /// Who gets status texts; null for nobody, who then finds them in the log. Outlives reads.
    void setMessageCallback(MessageCallback callback, void *context);
    /// The standard of later density reads; DENSITYSTANDARD_DEFAULT at first.
    void setDensityStandard(DENSITYSTANDARD standard);

    /// Reads spot colours. Like every read: 0 if the worker has started, -1 otherwise: no device is open, the
    /// callback is null, the plug-in has no such read (then a running read and its values are left alone), or no
    /// thread could be had. A read that runs is stopped first.
    int readSpotLab(InstrumentLabCallback callback, void *context);
    /// Reads @a chart, which is copied; it must have a patch. Both numbers go to the plug-in as they are.
    int readComboChart(TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
                       InstrumentLabCallback callback, void *context);
    /// Has @a chart printed through @a server and read back. done() tells the plug-in's result.
    int printNReadComboChart(TaviCommServer *server, const TAVIKEY_ELEMENT &print_setup, const TAVIKEY_ELEMENT &media,
                             const TAVIKEY_ELEMENT &chart_key, TAVICOMBOCOLOUR *chart, unsigned long line_length,
                             unsigned long chart_parameter, unsigned long print_parameter,
                             InstrumentLabCallback callback, void *context);
    /// Reads spot densities. @a sep_type (not null) stays the caller's, outlives the read and may change meanwhile:
    /// the next reading sees it.
    int readSpotDensity(SPECTROSEPTYPE *sep_type, InstrumentDensityCallback callback, void *context);
    /// Reads @a steps (not 0) patches of each separation of @a lut, which stays the caller's and outlives the read.
    int readLinearisation(unsigned long steps, DENSITYLUT *lut, unsigned long first_separation, long first_patch,
                          InstrumentDensityCallback callback, void *context);

    // What the loaded plug-in can do; all false in the state Empty.

    /// Whether it has readSpotLab().
    bool hasLab() const;
    /// Whether it has readSpotDensity().
    bool hasDensity() const;
    /// Whether it has readLinearisation().
    bool hasLinearisation() const;
    /// Whether it has getLinearisationChart().
    bool hasLinChartGenerator() const;
    /// Whether it reads strips (SPECTRO_FLAG_STRIPREADER).
    bool isStripReader() const;
    /// Whether it prints what it measures (SPECTRO_FLAG_PRINTER).
    bool isPrinter() const;

    /// The name of the plug-in's own linearisation chart for a colour space; empty if it has none.
    std::string getChartName(SERVER_COLOURSPACE space) const;
    /// Has the plug-in fill @a values with @a count tints of a linearisation chart. The plug-in's result, or 0 if
    /// there is no plug-in with a generator or an argument is null or zero.
    int getLinearisationChart(DENSITYLUT const *lut, double *values, unsigned long count) const;
    /// How the plug-in wants @a chart to be made; 0 if there is no plug-in that answers or the chart is null.
    int getComboColourChart(TAVICOMBOCOLOUR const *chart, unsigned long parameter) const;
    /// The file name of the loaded plug-in, without directory; empty in the state Empty.
    std::string dllFilename() const;

    /// Whether values or texts that the plug-in has sent have still to reach their callback.
    bool hasUndelivered() const;

    /// Emits done().
    void emitDone(int result);

    /// Hands out what is queued for an event of type 1000 and returns true; false for every other event.
    bool event(QEvent *event) override;

Q_SIGNALS:
    /// A print and read run has ended with @a result. Emitted on the worker thread.
    void done(int result);

private Q_SLOTS:
    void processEventQueue();

private:
    int init(SPECTROPHOTOMETERINFO const *info, bool open_device);
    int openDevice();
    bool loadPlugin();
    bool findEntryPoints();
    void tearDown();
    bool prepareRead(bool possible);
    int startThread(const char *operation, void *(*read)(void *));
    void finishThread();
    void endRead();
    static void queueEvent(const void *context, OrloInstrumentEvent *event);
    static int queueMessage(const void *context, int kind, const char *source_unit, const char *function, char *text);
    template <typename Read>
    static void *runRead(void *driver, Read read);
    void dispatchOrloInstrumentMessageEvent(const OrloInstrumentEvent &event);

    static void *readSpotLabThread(void *driver);
    static void *readComboChartThread(void *driver);
    static void *printNReadComboChartThread(void *driver);
    static void *readSpotDensityThread(void *driver);
    static void *readLinearisationThread(void *driver);

    // What plug-ins call, with a context that is looked up before it stands for a driver.
    static int processLabFromInstrument(void *context, double L, double a, double b);
    static int processDensityFromInstrument(void *context, PATCHDENSITY *patches);
    static int MessageOutputCallback(void *context, int kind, const char *source_unit, const char *function,
                                     const char *format, ...);
    static int MessageOutputCallbackNoQueue(void *context, int kind, const char *source_unit, const char *function,
                                            const char *format, ...);

    OrloInstrumentRecord *record = nullptr; ///< Owned.
    unsigned long teardowns = 0;            ///< Counts them, so that open() notices one that happened inside it.
    bool is_tearing_down = false;           ///< While a plug-in's Close may talk.
    int busy = 0;                           ///< 1 while a worker runs. Shared by polling, through std::atomic_ref.
    int abort_flag = 0;                     ///< What every read gets by address; likewise.
    InstrumentLabCallback lab_callback = nullptr;
    InstrumentDensityCallback density_callback = nullptr;
    MessageCallback message_callback = nullptr;
    void *callback_context = nullptr;
    void *message_context = nullptr;
    DENSITYSTANDARD density_standard = DENSITYSTANDARD_DEFAULT; ///< For the reads to come.
    // Everything from here on is written while no worker runs.
    void *read_context = nullptr;     ///< What the plug-in gets as context; null if no read was started.
    TAVICOMBOCOLOUR *chart = nullptr; ///< Owned.
    unsigned long chart_parameter = 0;
    unsigned long line_length = 16;
    SPECTROSEPTYPE *sep_type = nullptr;
    unsigned long steps = 21;
    DENSITYLUT *lut = nullptr;
    unsigned long first_separation = 0;
    DENSITYSTANDARD read_standard = DENSITYSTANDARD_DEFAULT; ///< #density_standard as it was when the read began.
    long first_patch = 0;
    const std::unique_ptr<OrloInstrumentQueue> event_queue;
    TaviCommServer *comm_server = nullptr;
    TAVIKEY_ELEMENT print_setup = {0, 0};
    TAVIKEY_ELEMENT media = {0, 0};
    TAVIKEY_ELEMENT chart_key = {0, 0};
    unsigned long print_parameter = 0;
};

#endif
