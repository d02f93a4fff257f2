// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_SESSION_H
#define SIMSPECTRO_SESSION_H

#include "measurements.h"
#include "noise.h"
#include "settings.h"

#include <tavilib/instrumentplugin.h>

#include <string>

namespace simspectro {

/// Sends texts to the application.
class Messages
{
public:
    Messages(const char *function, InstrumentMessageCallback callback, void *context)
        : function_(function), callback_(callback), context_(context)
    {}

    /// A text for the user. @a format is one of the application's table of texts wherever one fits.
    template <typename... Arguments>
    void status(const char *format, Arguments... arguments) const
    {
        if (callback_)
            callback_(context_, 0, "simspectro", function_, format, arguments...);
    }

    /// A text for the log.
    template <typename... Arguments>
    void fault(const char *format, Arguments... arguments) const
    {
        if (callback_)
            callback_(context_, 1, "simspectro", function_, format, arguments...);
    }

private:
    const char *function_;
    InstrumentMessageCallback callback_;
    void *context_;
};

/// The opened device.
struct Device {
    Settings settings;
    Measurements measurements;
    Noise noise;
};

/// One read: takes its time over each patch, and knows when to stop.
class Session
{
public:
    Session(Device &device, int *abort_flag, const Messages &messages)
        : device_(device), abort_flag_(abort_flag), messages_(messages)
    {}

    /// What reading a patch takes. False, at once and with a word to the user, if the read was told to stop.
    bool takePatchTime();
    /// Waits until the read is told to stop.
    void waitForAbort();

    /// A reading with the device's noise in it: of the colour, and of densities where they come from the colour.
    Lab measuredLab(const Reading &reading);
    Densities measuredDensities(const Reading &reading);

    const Messages &messages() const { return messages_; }

private:
    bool aborted() const;
    bool cancelled() const;

    Device &device_;
    int *abort_flag_;
    const Messages &messages_;
};

/// The density that an ink of kind @a separation is read by.
double selectDensity(const Densities &densities, SPECTROSEPTYPE separation);
/// The separation that an ink of kind @a band_type makes.
SPECTROSEPTYPE separationOfBand(uint32_t band_type);

} // namespace simspectro

#endif
