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

// In the order in which they join the list. The text readers all have the linearisation and spot density entries,
// announced by their flags or not: a group that holds one of them already may use them.
const InternalInstrument internal_instruments[] = {
    {spectro_fromfile_cmykorder_SpectrophotometerGetInfoDensityOnly,
     "tabdelimitedcmyk.orloinstrument",
     {.Open = spectro_fromfile_SpectrophotometerOpen,
      .Close = spectro_fromfile_SpectrophotometerClose,
      .GetLinChartNames = nullptr,
      .ReadLinearisation = spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation,
      .ReadSpotDensities = spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities,
      .ReadSpotLab = spectro_fromfile_SpectrophotometerReadSpotLab,
      .ReadComboColourChart = nullptr,
      .PrintNReadComboColourChart = nullptr,
      .GetLinChart = spectro_fromfile_SpectrophotometerGetLinChart,
      .GetComboColourChart = nullptr}},
    {spectro_fromfile_kcmyorder_SpectrophotometerGetInfoDensityOnly,
     "tabdelimitedkcmy.orloinstrument",
     {.Open = spectro_fromfile_SpectrophotometerOpen,
      .Close = spectro_fromfile_SpectrophotometerClose,
      .GetLinChartNames = nullptr,
      .ReadLinearisation = spectro_fromfile_kcmyorder_SpectrophotometerReadLinearisation,
      .ReadSpotDensities = spectro_fromfile_kcmyorder_SpectrophotometerReadSpotDensities,
      .ReadSpotLab = spectro_fromfile_SpectrophotometerReadSpotLab,
      .ReadComboColourChart = nullptr,
      .PrintNReadComboColourChart = nullptr,
      .GetLinChart = spectro_fromfile_SpectrophotometerGetLinChart,
      .GetComboColourChart = nullptr}},
    {spectro_fromfile_SpectrophotometerGetInfoLabOnly,
     "tabdelimitedlab.orloinstrument",
     {.Open = spectro_fromfile_SpectrophotometerOpen,
      .Close = spectro_fromfile_SpectrophotometerClose,
      .GetLinChartNames = nullptr,
      .ReadLinearisation = spectro_fromfile_cmykorder_SpectrophotometerReadLinearisation,
      .ReadSpotDensities = spectro_fromfile_cmykorder_SpectrophotometerReadSpotDensities,
      .ReadSpotLab = spectro_fromfile_SpectrophotometerReadSpotLab,
      .ReadComboColourChart = spectro_fromfile_SpectrophotometerReadComboColourChart,
      .PrintNReadComboColourChart = nullptr,
      .GetLinChart = nullptr,
      .GetComboColourChart = spectro_fromfile_SpectrophotometerGetComboColourChart}},
    {spectro_fromCGATS_SpectrophotometerGetInfo,
     "cgatslab.orloinstrument",
     {.Open = spectro_fromCGATS_SpectrophotometerOpen,
      .Close = spectro_fromCGATS_SpectrophotometerClose,
      .GetLinChartNames = nullptr,
      .ReadLinearisation = nullptr,
      .ReadSpotDensities = nullptr,
      .ReadSpotLab = spectro_fromCGATS_SpectrophotometerReadSpotLab,
      .ReadComboColourChart = spectro_fromCGATS_SpectrophotometerReadComboColourChart,
      .PrintNReadComboColourChart = nullptr,
      .GetLinChart = nullptr,
      .GetComboColourChart = spectro_fromCGATS_SpectrophotometerGetComboColourChart}},
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
