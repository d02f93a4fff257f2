/* SPDX-License-Identifier: MIT */
#ifndef TAVILIB_INSTRUMENTPLUGIN_H
#define TAVILIB_INSTRUMENTPLUGIN_H

/**
 * @file
 * The contract between the library and an instrument plug-in: entry points and callbacks.
 *
 * A plug-in is a shared object in a folder "readers". It exports the functions whose types stand here that its
 * capability bits promise, with C linkage and exactly these names, and includes nothing of the library but this
 * header. It links to none of the library's objects.
 *
 * **Always exported:** `SpectrophotometerGetInfo`. A spectrophotometer or densitometer (::SPECTRO_FLAG_LAB or
 * ::SPECTRO_FLAG_DENSITY) further exports `SpectrophotometerOpen`, `SpectrophotometerClose` and
 * `SpectrophotometerReadLinearisation` whatever its other flags are, and
 *
 * - ::SPECTRO_FLAG_SPOTDENSITY: `SpectrophotometerReadSpotDensities`
 * - ::SPECTRO_FLAG_SPOTLAB: `SpectrophotometerReadSpotLab`
 * - ::SPECTRO_FLAG_CHART: `SpectrophotometerReadComboColourChart`, `SpectrophotometerGetComboColourChart`
 * - ::SPECTRO_FLAG_LINCHARTGENERATOR: `SpectrophotometerGetLinChart`; without the flag
 *   `SpectrophotometerGetLinChartNames`
 * - ::SPECTRO_FLAG_PRINTER: `SpectrophotometerPrintNReadComboColourChart`
 *
 * A monitor calibrator (::SPECTRO_FLAG_MONITOR) exports all `MonitorCal_...` functions; `MonitorCal_ReadXYZ` and
 * ::SPECTRO_FLAG_XYZ go together.
 *
 * A flag whose entry point is missing refuses the plug-in.
 *
 * **Threads.** `GetInfo`, `Open`, `Close` and the `Get...` entry points are called on the application's main thread;
 * the `Read...` and `Print...` entry points on a worker thread, one at a time for each handle. A plug-in calls its
 * callbacks on the thread it was called on.
 *
 * **Stopping.** `abort_flag` points at a word that becomes non-zero, on another thread, when the read shall end; the
 * plug-in polls it (with an atomic load, or as a volatile int) and returns as soon as it sees it. The application
 * waits for that without a time limit.
 *
 * **Texts** sent through the message callback are printf formats in English. They are keys of a translation table,
 * so that a plug-in should use the texts of that table where one fits.
 */

#include "tavirecords.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(_WIN32)
#define INSTRUMENTPLUGIN_EXPORT __declspec(dllexport)
#else
/** Put before the definition of each entry point of a plug-in. */
#define INSTRUMENTPLUGIN_EXPORT __attribute__((visibility("default")))
#endif

/**
 * Takes a text, printf-style. @a kind 0 is a status text for the user; any other kind is a fault, which goes to the
 * log. @a source_unit and @a function name the place; with kind 0 @a function may be null. Returns 0.
 */
typedef int (*InstrumentMessageCallback)(void *context, int kind, const char *source_unit, const char *function,
                                         const char *format, ...);

/**
 * Takes one measured colour, CIE Lab, D50. @a L below zero (send -1.0, 0.0, 0.0) is the end marker of a series and
 * carries no colour. Returns 0.
 */
typedef int (*InstrumentLabCallback)(void *context, double L, double a, double b);

/** Takes one density reading, or a list of them linked by their headers. The receiver copies. Returns 0. */
typedef int (*InstrumentDensityCallback)(void *context, PATCHDENSITY *patch);

/* Types of the entry points. The names of the exported functions are these without "Function". */

/** A new record made with `calloc`, its strings on the heap; the caller frees it, after the plug-in is unloaded. */
typedef SPECTROPHOTOMETERINFO *(*SpectrophotometerGetInfoFunction)(void);

/** Opens the device. Returns its handle; null means failure. */
typedef void *(*SpectrophotometerOpenFunction)(InstrumentMessageCallback message, void *message_context);

/** Closes the device. */
typedef void (*SpectrophotometerCloseFunction)(void *handle, InstrumentMessageCallback message,
                                               void *message_context);

/**
 * Reads the separations of @a lut, @a steps patches each, starting at @a first_patch of @a first_separation; the
 * separations after that start at patch 0.
 */
typedef int (*SpectrophotometerReadLinearisationFunction)(void *handle, int *abort_flag, DENSITYSTANDARD standard,
                                                          unsigned long steps, DENSITYLUT *lut,
                                                          unsigned long first_separation, long first_patch,
                                                          InstrumentDensityCallback density, void *density_context,
                                                          InstrumentMessageCallback message, void *message_context);

/**
 * Reads spot densities until told to stop. @a sep_type points at the caller's separation, which may change on another
 * thread: read it with an atomic load for each reading.
 */
typedef int (*SpectrophotometerReadSpotDensitiesFunction)(void *handle, int *abort_flag, DENSITYSTANDARD standard,
                                                          SPECTROSEPTYPE *sep_type, InstrumentDensityCallback density,
                                                          void *density_context, InstrumentMessageCallback message,
                                                          void *message_context);

/** Reads spot colours until told to stop. */
typedef int (*SpectrophotometerReadSpotLabFunction)(void *handle, int *abort_flag, InstrumentLabCallback lab,
                                                    void *lab_context, InstrumentMessageCallback message,
                                                    void *message_context);

/** Reads @a chart, one Lab callback per patch, and closes with the end marker. */
typedef int (*SpectrophotometerReadComboColourChartFunction)(void *handle, int *abort_flag, TAVICOMBOCOLOUR *chart,
                                                             unsigned long line_length, unsigned long chart_parameter,
                                                             InstrumentLabCallback lab, void *lab_context,
                                                             InstrumentMessageCallback message,
                                                             void *message_context);

/** Prints @a chart through @a server and reads it back. The result reaches the driver's `done` signal. */
typedef int (*SpectrophotometerPrintNReadComboColourChartFunction)(
    void *handle, int *abort_flag, TaviCommServer *server, TAVIKEY_ELEMENT *print_setup, TAVIKEY_ELEMENT *media,
    TAVIKEY_ELEMENT *chart_key, TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
    unsigned long print_parameter, InstrumentLabCallback lab, void *lab_context, InstrumentMessageCallback message,
    void *message_context);

/** Answers how @a chart must be made for this instrument. */
typedef int (*SpectrophotometerGetComboColourChartFunction)(const TAVICOMBOCOLOUR *chart, unsigned long parameter);

/** Fills @a values with the tints of a linearisation chart. Returns how many were written. */
typedef int (*SpectrophotometerGetLinChartFunction)(const DENSITYLUT *lut, double *values, unsigned long count);

/** Writes the zero-terminated name of the plug-in's own chart into @a buffer, which has 8192 bytes. */
typedef void (*SpectrophotometerGetLinChartNamesFunction)(SERVER_COLOURSPACE space, char *buffer);

/* Entry points of monitor calibrators (SPECTRO_FLAG_MONITOR). All run on the caller's thread. A `message` buffer has
 * 8192 bytes; what is written there is a key of the translation table. */

typedef void *(*MonitorCal_OpenFunction)(SPECTRODISPLAYMEASUREMENT_TYPE type, InstrumentMessageCallback message,
                                         void *message_context);
typedef void (*MonitorCal_CloseFunction)(void *handle, InstrumentMessageCallback message, void *message_context);
/** Reads one colour, 0..100. A negative result means failure. */
typedef int (*MonitorCal_ReadXYZFunction)(void *handle, double *X, double *Y, double *Z,
                                          InstrumentMessageCallback message, void *message_context);
/** Non-zero if the device must be calibrated first; the request to the user is then in @a text. */
typedef int (*MonitorCal_NeedsCalibrationFunction)(void *handle, char *text, InstrumentMessageCallback message,
                                                   void *message_context);
typedef int (*MonitorCal_CalibrateFunction)(void *handle, char *text, InstrumentMessageCallback message,
                                            void *message_context);
typedef int (*MonitorCal_CalibrateWhitePointFunction)(void *handle, char *text, InstrumentMessageCallback message,
                                                      void *message_context);
typedef int (*MonitorCal_CalibrateBlackPointFunction)(void *handle, char *text, InstrumentMessageCallback message,
                                                      void *message_context);
/** Non-zero means that the type was refused. */
typedef int (*MonitorCal_SetDisplayTypeFunction)(void *handle, SPECTRODISPLAYTYPE type,
                                                 InstrumentMessageCallback message, void *message_context);

#ifdef __cplusplus
}
#endif

#endif
