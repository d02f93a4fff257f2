// SPDX-License-Identifier: MIT
// A plug-in that does what the test tells it. Compiled with -DWITHOUT_<entry> for each entry point that a variant
// shall lack, and with SCRIPTED_FLAGS for other flags on its identity card.
#include "tests/support/instruments/scriptedplugin.h"

#include <cstdlib>
#include <cstring>

namespace {

ScriptedPlugin *the_plugin = nullptr;

// Made and deleted with the file. A static object would be, too, but for each of these the address sanitizer keeps a
// few bytes until the program ends, which looks like a leak where a plug-in is loaded many times.
[[gnu::constructor]] void make()
{
    the_plugin = new ScriptedPlugin;
}

[[gnu::destructor]] void unmake()
{
    delete the_plugin;
}

} // namespace

extern "C" {

INSTRUMENTPLUGIN_EXPORT ScriptedPlugin *scripted_plugin()
{
    return the_plugin;
}

#ifndef WITHOUT_GetInfo
INSTRUMENTPLUGIN_EXPORT SPECTROPHOTOMETERINFO *SpectrophotometerGetInfo()
{
    const ScriptedPlugin &plugin = *scripted_plugin();
    if (plugin.null_info)
        return nullptr;
    auto *info = static_cast<SPECTROPHOTOMETERINFO *>(calloc(1, sizeof(SPECTROPHOTOMETERINFO)));
    info->name = plugin.null_name ? nullptr : strdup(plugin.name.c_str());
    info->rev = strdup(plugin.rev.c_str());
    info->flags = plugin.flags;
    return info;
}
#endif

#ifndef WITHOUT_Open
INSTRUMENTPLUGIN_EXPORT void *SpectrophotometerOpen(InstrumentMessageCallback message, void *context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->opens;
    return plugin->on_open ? plugin->on_open(message, context) : plugin;
}
#endif

#ifndef WITHOUT_Close
INSTRUMENTPLUGIN_EXPORT void SpectrophotometerClose(void *, InstrumentMessageCallback message, void *context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->closes;
    if (plugin->on_close)
        plugin->on_close(message, context);
}
#endif

#ifndef WITHOUT_ReadLinearisation
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerReadLinearisation(void *, int *abort_flag, DENSITYSTANDARD standard,
                                                               unsigned long steps, DENSITYLUT *lut,
                                                               unsigned long first_separation, long first_patch,
                                                               InstrumentDensityCallback density, void *context,
                                                               InstrumentMessageCallback message,
                                                               void *message_context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->reads;
    const ScriptedPlugin::Read read = {abort_flag, context, nullptr, density, message, message_context};
    return plugin->on_linearisation
               ? plugin->on_linearisation(read, standard, steps, lut, first_separation, first_patch)
               : 0;
}
#endif

#ifndef WITHOUT_ReadSpotDensities
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerReadSpotDensities(void *, int *abort_flag, DENSITYSTANDARD standard,
                                                               SPECTROSEPTYPE *sep_type,
                                                               InstrumentDensityCallback density, void *context,
                                                               InstrumentMessageCallback message,
                                                               void *message_context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->reads;
    const ScriptedPlugin::Read read = {abort_flag, context, nullptr, density, message, message_context};
    return plugin->on_spot_densities ? plugin->on_spot_densities(read, standard, sep_type) : 0;
}
#endif

#ifndef WITHOUT_ReadSpotLab
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerReadSpotLab(void *, int *abort_flag, InstrumentLabCallback lab,
                                                         void *context, InstrumentMessageCallback message,
                                                         void *message_context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->reads;
    const ScriptedPlugin::Read read = {abort_flag, context, lab, nullptr, message, message_context};
    return plugin->on_spot_lab ? plugin->on_spot_lab(read) : 0;
}
#endif

#ifndef WITHOUT_ReadComboColourChart
INSTRUMENTPLUGIN_EXPORT int
SpectrophotometerReadComboColourChart(void *, int *abort_flag, TAVICOMBOCOLOUR *chart, unsigned long line_length,
                                      unsigned long chart_parameter, InstrumentLabCallback lab, void *context,
                                      InstrumentMessageCallback message, void *message_context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->reads;
    const ScriptedPlugin::Read read = {abort_flag, context, lab, nullptr, message, message_context};
    return plugin->on_chart ? plugin->on_chart(read, chart, line_length, chart_parameter) : 0;
}
#endif

#ifndef WITHOUT_GetComboColourChart
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart,
                                                                 unsigned long parameter)
{
    ScriptedPlugin *plugin = scripted_plugin();
    return plugin->on_get_chart ? plugin->on_get_chart(chart, parameter) : 0;
}
#endif

#ifndef WITHOUT_GetLinChart
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerGetLinChart(const DENSITYLUT *lut, double *values, unsigned long count)
{
    ScriptedPlugin *plugin = scripted_plugin();
    return plugin->on_get_lin_chart ? plugin->on_get_lin_chart(lut, values, count) : 0;
}
#endif

#ifndef WITHOUT_GetLinChartNames
INSTRUMENTPLUGIN_EXPORT void SpectrophotometerGetLinChartNames(SERVER_COLOURSPACE space, char *buffer)
{
    ScriptedPlugin *plugin = scripted_plugin();
    if (plugin->on_get_lin_chart_names)
        plugin->on_get_lin_chart_names(space, buffer);
}
#endif

#ifndef WITHOUT_PrintNReadComboColourChart
INSTRUMENTPLUGIN_EXPORT int SpectrophotometerPrintNReadComboColourChart(
    void *, int *abort_flag, TaviCommServer *server, TAVIKEY_ELEMENT *print_setup, TAVIKEY_ELEMENT *media,
    TAVIKEY_ELEMENT *chart_key, TAVICOMBOCOLOUR *chart, unsigned long line_length, unsigned long chart_parameter,
    unsigned long print_parameter, InstrumentLabCallback lab, void *context, InstrumentMessageCallback message,
    void *message_context)
{
    ScriptedPlugin *plugin = scripted_plugin();
    ++plugin->reads;
    const ScriptedPlugin::Read read = {abort_flag, context, lab, nullptr, message, message_context};
    const ScriptedPlugin::Print print = {server, *print_setup, *media,          *chart_key,
                                         chart,  line_length,  chart_parameter, print_parameter};
    return plugin->on_print ? plugin->on_print(read, print) : 0;
}
#endif

} // extern "C"
