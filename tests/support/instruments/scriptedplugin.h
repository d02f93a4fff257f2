// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_INSTRUMENTS_SCRIPTEDPLUGIN_H
#define TESTS_SUPPORT_INSTRUMENTS_SCRIPTEDPLUGIN_H

#include "tavilib/instrumentplugin.h"

#include <atomic>
#include <functional>
#include <string>

#ifndef SCRIPTED_FLAGS
#define SCRIPTED_FLAGS 0x1733
#endif

/// The state of a scripted plug-in: what it answers and what was asked of it. A test gets at it through the symbol
/// "scripted_plugin" of the loaded file and puts functions in; what is left empty does nothing and succeeds.
struct ScriptedPlugin {
    std::string name = "Scripted";
    std::string rev = "1.00";
    uint32_t flags = SCRIPTED_FLAGS;
    bool null_info = false;
    bool null_name = false;

    struct Read {
        int *abort_flag;
        void *context;
        InstrumentLabCallback lab;
        InstrumentDensityCallback density;
        InstrumentMessageCallback message;
        void *message_context;

        bool aborted() const { return std::atomic_ref<int>(*abort_flag).load() != 0; }
        void sendLab(double L, double a, double b) const { lab(context, L, a, b); }
        template <typename... Arguments>
        void say(int kind, const char *function, const char *format, Arguments... arguments) const
        {
            message(message_context, kind, "scripted", function, format, arguments...);
        }
    };

    std::function<void *(InstrumentMessageCallback, void *)> on_open;
    std::function<void(InstrumentMessageCallback, void *)> on_close;
    std::function<int(const Read &)> on_spot_lab;
    std::function<int(const Read &, DENSITYSTANDARD, SPECTROSEPTYPE *)> on_spot_densities;
    std::function<int(const Read &, DENSITYSTANDARD, unsigned long, DENSITYLUT *, unsigned long, long)>
        on_linearisation;
    std::function<int(const Read &, TAVICOMBOCOLOUR *, unsigned long, unsigned long)> on_chart;
    struct Print {
        TaviCommServer *server;
        TAVIKEY_ELEMENT print_setup;
        TAVIKEY_ELEMENT media;
        TAVIKEY_ELEMENT chart_key;
        TAVICOMBOCOLOUR *chart;
        unsigned long line_length;
        unsigned long chart_parameter;
        unsigned long print_parameter;
    };
    std::function<int(const Read &, const Print &)> on_print;
    std::function<int(const TAVICOMBOCOLOUR *, unsigned long)> on_get_chart;
    std::function<int(const DENSITYLUT *, double *, unsigned long)> on_get_lin_chart;
    std::function<void(SERVER_COLOURSPACE, char *)> on_get_lin_chart_names;

    std::atomic<int> opens{0};
    std::atomic<int> closes{0};
    std::atomic<int> reads{0};
};

#endif
