// SPDX-License-Identifier: MIT
#include "instruments/internalinstruments_p.h"

#include "instruments/spectro_fromfile.h"
#include "tavilib/tavilist.h"

#include <cstring>

namespace {

struct InternalInstrument {
    SpectrophotometerGetInfoFunction get_info;
    const char *file_name;
    OrloInstrumentEntryPoints entry;
};

/// What all text readers have. Linearisation and spot densities are theirs whether their flags announce them or not:
/// a group that holds one of them already may use them.
constexpr OrloInstrumentEntryPoints textReader(SpectrophotometerReadLinearisationFunction read_linearisation,
                                               SpectrophotometerReadSpotDensitiesFunction read_spot_densities)
{
    OrloInstrumentEntryPoints entry = {};
    entry.Open = spectro_fromfile_SpectrophotometerOpen;
    entry.Close = spectro_fromfile_SpectrophotometerClose;
    entry.ReadLinearisation = read_linearisation;
    entry.ReadSpotDensities = read_spot_densities;
    entry.ReadSpotLab = spectro_fromfile_SpectrophotometerReadSpotLab;
    return entry;
}

constexpr OrloInstrumentEntryPoints densityReader(SpectrophotometerReadLinearisationFunction read_linearisation,
                                                  SpectrophotometerReadSpotDensitiesFunction read_spot_densities)
{
    OrloInstrumentEntryPoints entry = textReader(read_linearisation, read_spot_densities);
    entry.GetLinChart = spectro_fromfile_SpectrophotometerGetLinChart;
    return entry;
}

constexpr OrloInstrumentEntryPoints labReader()
{
    OrloInstrumentEntryPoints entry = textReader(spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation,
                                                 spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities);
    entry.ReadComboColourChart = spectro_fromfile_SpectrophotometerReadComboColourChart;
    entry.GetComboColourChart = spectro_fromfile_SpectrophotometerGetComboColourChart;
    return entry;
}

constexpr OrloInstrumentEntryPoints cgatsReader()
{
    OrloInstrumentEntryPoints entry = {};
    entry.Open = spectro_fromCGATS_SpectrophotometerOpen;
    entry.Close = spectro_fromCGATS_SpectrophotometerClose;
    entry.ReadSpotLab = spectro_fromCGATS_SpectrophotometerReadSpotLab;
    entry.ReadComboColourChart = spectro_fromCGATS_SpectrophotometerReadComboColourChart;
    entry.GetComboColourChart = spectro_fromCGATS_SpectrophotometerGetComboColourChart;
    return entry;
}

// In the order in which they join the list.
constexpr InternalInstrument internal_instruments[] = {
    {spectro_fromfile_cmykorder_SpectrophotometerGetInfoDensityOnly, "tabdelimitedcmyk.orloinstrument",
     densityReader(spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation,
                   spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities)},
    {spectro_fromfile_kcmyorder_SpectrophotometerGetInfoDensityOnly, "tabdelimitedkcmy.orloinstrument",
     densityReader(spectro_fromfile_kcmyorder_SpectrophotometerReadLinearisation,
                   spectro_fromfile_kcmyorder_SpectrophotometerReadSpotDensities)},
    {spectro_fromfile_SpectrophotometerGetInfoLabOnly, "tabdelimitedlab.orloinstrument", labReader()},
    {spectro_fromCGATS_SpectrophotometerGetInfo, "cgatslab.orloinstrument", cgatsReader()},
};

} // namespace

void addInternalInstruments(SPECTROPHOTOMETERINFO **list)
{
    for (const InternalInstrument &instrument : internal_instruments) {
        if (SPECTROPHOTOMETERINFO *info = instrument.get_info())
            InsertOrderedList(list, info, info->name);
    }
}

bool setInternalEntryPoints(OrloInstrumentEntryPoints &entry, const char *file_name)
{
    for (const InternalInstrument &instrument : internal_instruments) {
        if (std::strcmp(instrument.file_name, file_name) == 0) {
            entry = instrument.entry;
            return true;
        }
    }
    return false;
}
