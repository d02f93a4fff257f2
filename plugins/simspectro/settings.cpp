// SPDX-License-Identifier: MIT
#include "settings.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace simspectro {

namespace {

constexpr double max_noise = 100.0;
constexpr int max_delay_ms = 600000;

/// The variable as a number; @a value stays as it is where the variable is not set or empty.
template <typename Number>
bool readNumber(const char *name, Number low, Number high, Number &value, std::string &fault)
{
    const char *text = std::getenv(name);
    if (!text || !*text)
        return true;
    const std::string_view digits(text);
    Number read = {};
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), read);
    // The comparison is written so that a NaN fails it.
    if (error != std::errc() || end != digits.data() + digits.size() || !(read >= low && read <= high)) {
        fault = std::string(name) + " is '" + text + "', not a number from " + std::to_string(low) + " to "
                + std::to_string(high);
        return false;
    }
    value = read;
    return true;
}

} // namespace

std::optional<Settings> readSettings(std::string &fault)
{
    Settings settings;
    const char *file = std::getenv("SIMSPECTRO_FILE");
    if (!file || !*file) {
        fault = "SIMSPECTRO_FILE is not set; it names the file to measure";
        return std::nullopt;
    }
    settings.file = file;
    int delay_ms = 0;
    if (!readNumber("SIMSPECTRO_NOISE", 0.0, max_noise, settings.noise, fault)
        || !readNumber("SIMSPECTRO_SEED", uint64_t{0}, UINT64_MAX, settings.seed, fault)
        || !readNumber("SIMSPECTRO_DELAY_MS", 0, max_delay_ms, delay_ms, fault))
        return std::nullopt;
    settings.delay = std::chrono::milliseconds(delay_ms);
    return settings;
}

bool isPrinter()
{
    const char *printer = std::getenv("SIMSPECTRO_PRINTER");
    return printer && std::string_view(printer) == "1";
}

} // namespace simspectro
