// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_ORLOINSTRUMENTRECORD_P_H
#define INSTRUMENTS_ORLOINSTRUMENTRECORD_P_H

#include "tavilib/instrumentplugin.h"

/// A plug-in's entry points. One that its flags do not announce may be null.
struct OrloInstrumentEntryPoints {
    SpectrophotometerOpenFunction Open;
    SpectrophotometerCloseFunction Close;
    SpectrophotometerGetLinChartNamesFunction GetLinChartNames;
    SpectrophotometerReadLinearisationFunction ReadLinearisation;
    SpectrophotometerReadSpotDensitiesFunction ReadSpotDensities;
    SpectrophotometerReadSpotLabFunction ReadSpotLab;
    SpectrophotometerReadComboColourChartFunction ReadComboColourChart;
    SpectrophotometerPrintNReadComboColourChartFunction PrintNReadComboColourChart;
    SpectrophotometerGetLinChartFunction GetLinChart;
    SpectrophotometerGetComboColourChartFunction GetComboColourChart;
};

/// A loaded plug-in: one zeroed heap block, owned by its driver.
struct OrloInstrumentRecord {
    uint32_t flags;              ///< As in #info, kept apart from it.
    char path[512];              ///< The shared object; empty for an internal instrument.
    void *library;               ///< From TaviDllOpen(); null for an internal instrument.
    void *handle;                ///< The open device; null while it is only loaded.
    SPECTROPHOTOMETERINFO *info; ///< A duplicate, owned.
    OrloInstrumentEntryPoints entry;
};

#endif
