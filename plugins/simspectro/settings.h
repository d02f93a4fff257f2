// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_SETTINGS_H
#define SIMSPECTRO_SETTINGS_H

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace simspectro {

/// What the environment says the device is like; README.md documents the variables.
struct Settings {
    std::string file;                   ///< SIMSPECTRO_FILE
    double noise = 0.0;                 ///< SIMSPECTRO_NOISE
    uint64_t seed = 1;                  ///< SIMSPECTRO_SEED
    std::chrono::milliseconds delay{0}; ///< SIMSPECTRO_DELAY_MS
};

/// Reads the environment. Nothing if a variable is missing or has a value it cannot have; @a fault then says which.
std::optional<Settings> readSettings(std::string &fault);

/// Whether the device is a printer too (SIMSPECTRO_PRINTER).
bool isPrinter();

} // namespace simspectro

#endif
