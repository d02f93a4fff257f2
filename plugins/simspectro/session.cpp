// SPDX-License-Identifier: MIT
#include "session.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace simspectro {

namespace {

// Half of the 10 ms within which a read promises to see that it shall stop: a sleep may take longer than asked.
constexpr std::chrono::milliseconds slice{5};

} // namespace

bool Session::aborted() const
{
    return std::atomic_ref<int>(*abort_flag_).load(std::memory_order_acquire) != 0;
}

bool Session::cancelled() const
{
    messages_.status("Reading cancelled by user");
    return false;
}

bool Session::takePatchTime()
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + device_.settings.delay;
    for (;;) {
        if (aborted())
            return cancelled();
        const auto left = end - Clock::now();
        if (left <= Clock::duration::zero())
            return true;
        std::this_thread::sleep_for(std::min<Clock::duration>(left, slice));
    }
}

void Session::waitForAbort()
{
    while (!aborted())
        std::this_thread::sleep_for(slice);
    cancelled();
}

Lab Session::measuredLab(const Reading &reading)
{
    Lab lab = reading.lab;
    lab.L += device_.noise.next();
    lab.a += device_.noise.next();
    lab.b += device_.noise.next();
    // Below zero it would be the end marker.
    lab.L = std::max(0.0, lab.L);
    return lab;
}

Densities Session::measuredDensities(const Reading &reading)
{
    return reading.densities ? *reading.densities : densitiesFromXyz(xyzFromLab(measuredLab(reading)));
}

double selectDensity(const Densities &densities, SPECTROSEPTYPE separation)
{
    switch (separation) {
    case SPECTROSEP_CYAN:
    case SPECTROSEP_LIGHT_CYAN:
    case SPECTROSEP_GREEN:
        return densities.c;
    case SPECTROSEP_MAGENTA:
    case SPECTROSEP_LIGHT_MAGENTA:
    case SPECTROSEP_ORANGE:
        return densities.m;
    case SPECTROSEP_YELLOW:
        return densities.y;
    default:
        return densities.k;
    }
}

SPECTROSEPTYPE separationOfBand(uint32_t band_type)
{
    switch (band_type) {
    case TAVIBANDTYPE_CYAN:
        return SPECTROSEP_CYAN;
    case TAVIBANDTYPE_MAGENTA:
        return SPECTROSEP_MAGENTA;
    case TAVIBANDTYPE_YELLOW:
        return SPECTROSEP_YELLOW;
    default:
        return SPECTROSEP_BLACK;
    }
}

} // namespace simspectro
