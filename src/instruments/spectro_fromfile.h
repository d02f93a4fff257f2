// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_SPECTRO_FROMFILE_H
#define INSTRUMENTS_SPECTRO_FROMFILE_H

#include "foundation/taviwidgets_export.h"
#include "tavilib/instrumentplugin.h"

#include <QString>

#include <functional>

/// @file
/// Measurement files as instruments: the entry points of the four pseudo-plug-ins that live inside the library.
///
/// They stand in the instrument list beside real plug-ins and are driven through the same table of entry points
/// (`tavilib/instrumentplugin.h`), so that a user without an instrument can feed in measurements. Opening one asks
/// for a file; a read plays that file back through the callbacks, as a device would.
///
/// **Text files** hold one measurement a line. Any run of spaces and tabs separates the columns; what is past the
/// needed columns is ignored; a line with too few of them, and so a blank one, is skipped without a word. Numbers
/// have a decimal point whatever the application's locale, and are read as `atof` reads them: something that is no
/// number is its leading number, or else 0, so that a headline with enough words counts as a measurement of zeros.
/// Lines end with
/// "\n" or "\r\n"; one longer than 1023 bytes counts as several.
///
/// | File | Needed columns, in order |
/// |---|---|
/// | CMYK sample order | cyan, magenta, yellow, black density |
/// | KCMY sample order | black, cyan, magenta, yellow density |
/// | Lab sample order | L, a, b (CIE Lab, D50) |
///
/// **CGATS files** are read by ISO12642Importer.
///
/// **Threads.** The `Open`, `Close`, `GetInfo` and `Get...Chart` functions run on the main thread, where a dialog may
/// be shown. The `Read...` functions run on any thread, one at a time for each handle; they touch nothing but the
/// file and the callbacks, which they call on their own thread. Every read begins at the top of the file. Callbacks
/// and abort flags must not be null.
///
/// **Texts.** All have the unit "spectro_fromfile". What is not said here to be a fault is of kind 0.

/// Asks the user for a measurement file: gets the title of the dialog and its filter, a list of patterns as
/// QFileDialog takes it, and returns the path, empty if the user wants none.
using SpectroFileChooser = std::function<QString(const QString &title, const QString &filter)>;

/// Puts @a chooser in the place of the dialog by which the `Open` functions below ask for their file, and returns the
/// one that was in place. An application without windows, or a test, answers with a path of its own. An empty
/// function brings back the dialog, QFileDialog::getOpenFileName() with no parent and no start directory. Main thread
/// only.
TAVIWIDGETS_EXPORT SpectroFileChooser setSpectroFileChooser(SpectroFileChooser chooser);

// C linkage, as the types of the entry points have it.
extern "C" {

/// @name Identity cards
/// A new record, which the caller frees with the packet free of type 27. Null if memory is out, which is logged where
/// the record itself could not be had.
/// @{

/// "CMYK text file (CMYK sample order)": densities, linearisation, file source.
TAVIWIDGETS_EXPORT SPECTROPHOTOMETERINFO *spectro_fromfile_cmykorder_SpectrophotometerGetInfoDensityOnly();
/// "CMYK text file (KCMY sample order)": densities, linearisation, file source.
TAVIWIDGETS_EXPORT SPECTROPHOTOMETERINFO *spectro_fromfile_kcmyorder_SpectrophotometerGetInfoDensityOnly();
/// "Lab text file (Lab sample order)": spot colours, charts, file source.
TAVIWIDGETS_EXPORT SPECTROPHOTOMETERINFO *spectro_fromfile_SpectrophotometerGetInfoLabOnly();
/// "CGATS / ISO 12642 file": spot colours, charts, file source.
TAVIWIDGETS_EXPORT SPECTROPHOTOMETERINFO *spectro_fromCGATS_SpectrophotometerGetInfo();

/// @}
/// @name Opening and closing
/// @{

/// Asks for a text file and opens it. The handle is the open file. Null if the user cancels, and, after the fault
/// "Cannot open file %s" with the path, if the file cannot be opened.
TAVIWIDGETS_EXPORT void *spectro_fromfile_SpectrophotometerOpen(InstrumentMessageCallback message,
                                                                void *message_context);
/// Closes the file; a null handle is ignored.
TAVIWIDGETS_EXPORT void spectro_fromfile_SpectrophotometerClose(void *handle, InstrumentMessageCallback message,
                                                                void *message_context);
/// Asks for a CGATS file. The handle is a copy of its path in UTF-8; the file is not touched yet. Null if the user
/// cancels or memory is out.
TAVIWIDGETS_EXPORT void *spectro_fromCGATS_SpectrophotometerOpen(InstrumentMessageCallback message,
                                                                 void *message_context);
/// Frees the path; a null handle is ignored.
TAVIWIDGETS_EXPORT void spectro_fromCGATS_SpectrophotometerClose(void *handle, InstrumentMessageCallback message,
                                                                 void *message_context);

/// @}
/// @name Spot densities
/// One density callback for each measurement of the file, between "File importer ready" and "File importer: processed
/// %d measurements". @a sep_type is looked at anew for each line and decides which channel is the reading's
/// `density`:
///
/// | SPECTROSEPTYPE | 1 | 2 | 3 | 4 | 5 | 6 | 7 | any other |
/// |---|---|---|---|---|---|---|---|---|
/// | Channel | C | M | Y | K | C | K | M | K |
///
/// An abort ends the read before the next measurement with "Reading cancelled by user". @a standard is not looked at.
/// Returns 0. O(size of the file).
/// @{

/// Columns cyan, magenta, yellow, black.
TAVIWIDGETS_EXPORT int spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities(
    void *handle, int *abort_flag, DENSITYSTANDARD standard, SPECTROSEPTYPE *sep_type,
    InstrumentDensityCallback density, void *density_context, InstrumentMessageCallback message,
    void *message_context);
/// Columns black, cyan, magenta, yellow.
TAVIWIDGETS_EXPORT int spectro_fromfile_kcmyorder_SpectrophotometerReadSpotDensities(
    void *handle, int *abort_flag, DENSITYSTANDARD standard, SPECTROSEPTYPE *sep_type,
    InstrumentDensityCallback density, void *density_context, InstrumentMessageCallback message,
    void *message_context);

/// @}
/// @name Linearisation
/// Fills the table @a lut: its separations from @a first_separation on, in each the patches up to, and without,
/// @a steps; the first separation begins at @a first_patch (a negative one is 0), all others at patch 0. Each patch
/// takes one measurement of the file and is announced by "Measure %c%lu": the letter counts separations from A, the
/// number patches from 1. The separation's kind of ink decides which channel is the reading's `density`:
///
/// | SPECTROSEPTYPE | 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | any other |
/// |---|---|---|---|---|---|---|---|---|---|
/// | Channel | K | C | M | Y | M | C | C | M | none: 0.0 |
///
/// The read is over when the table is full, whatever is left of the file. A file that ends before is no error: "File
/// importer: processed %d measurements" tells how far it went. Returns the number of measurements in both cases; 0
/// after an abort ("Reading cancelled by user"); -1 for a null table and for one without the bands it counts. @a
/// standard is not looked at. O(size of the file).
/// @{

/// Columns cyan, magenta, yellow, black.
TAVIWIDGETS_EXPORT int spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation(
    void *handle, int *abort_flag, DENSITYSTANDARD standard, unsigned long steps, DENSITYLUT *lut,
    unsigned long first_separation, long first_patch, InstrumentDensityCallback density, void *density_context,
    InstrumentMessageCallback message, void *message_context);
/// Columns black, cyan, magenta, yellow.
TAVIWIDGETS_EXPORT int spectro_fromfile_kcmyorder_SpectrophotometerReadLinearisation(
    void *handle, int *abort_flag, DENSITYSTANDARD standard, unsigned long steps, DENSITYLUT *lut,
    unsigned long first_separation, long first_patch, InstrumentDensityCallback density, void *density_context,
    InstrumentMessageCallback message, void *message_context);

/// @}
/// @name Colours of a text file
/// One Lab callback for each measurement of the file, then the end marker (-1, 0, 0), between "File importer ready"
/// and "File importer: processed %d measurements". A chart is not looked at: all of the file is delivered, however
/// long the chart is. An abort ends the read before the next measurement with "Reading cancelled by user" and without
/// an end marker. Returns 0. O(size of the file).
/// @{

/// For spot reading.
TAVIWIDGETS_EXPORT int spectro_fromfile_SpectrophotometerReadSpotLab(void *handle, int *abort_flag,
                                                                     InstrumentLabCallback lab, void *lab_context,
                                                                     InstrumentMessageCallback message,
                                                                     void *message_context);
/// For chart reading; @a chart, @a line_length and @a chart_parameter are not looked at.
TAVIWIDGETS_EXPORT int spectro_fromfile_SpectrophotometerReadComboColourChart(
    void *handle, int *abort_flag, TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
    InstrumentLabCallback lab, void *lab_context, InstrumentMessageCallback message, void *message_context);

/// @}
/// @name Colours of a CGATS file
/// One Lab callback for each patch of the file that has a Lab triple, in the order of the file, then the end marker,
/// which comes alone if the file cannot be imported. There are no texts, and the abort flag is not looked at. Returns
/// 0. O(size of the file).
/// @{

/// Delivers all of the file.
TAVIWIDGETS_EXPORT int spectro_fromCGATS_SpectrophotometerReadSpotLab(void *handle, int *abort_flag,
                                                                      InstrumentLabCallback lab, void *lab_context,
                                                                      InstrumentMessageCallback message,
                                                                      void *message_context);
/// Delivers at most as many colours as @a chart has patches.
TAVIWIDGETS_EXPORT int spectro_fromCGATS_SpectrophotometerReadComboColourChart(
    void *handle, int *abort_flag, TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
    InstrumentLabCallback lab, void *lab_context, InstrumentMessageCallback message, void *message_context);

/// @}
/// @name Charts
/// As for a hand-held instrument.
/// @{

/// GenerateHandheldLinearisationChart().
TAVIWIDGETS_EXPORT int spectro_fromfile_SpectrophotometerGetLinChart(const DENSITYLUT *lut, double *values,
                                                                     unsigned long count);
/// GenerateHandheldComboColourChart().
TAVIWIDGETS_EXPORT int spectro_fromfile_SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart,
                                                                             unsigned long parameter);
/// GenerateHandheldComboColourChart().
TAVIWIDGETS_EXPORT int spectro_fromCGATS_SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart,
                                                                              unsigned long parameter);

/// @}

} // extern "C"

#endif
