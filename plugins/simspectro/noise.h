// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_NOISE_H
#define SIMSPECTRO_NOISE_H

#include <cmath>
#include <cstdint>
#include <numbers>

namespace simspectro {

/// Normally distributed numbers, the same ones for the same seed on every platform, which the standard library's
/// distributions do not promise: SplitMix64 through the Box-Muller transform.
class Noise
{
public:
    Noise(uint64_t seed, double deviation) : state_(seed), deviation_(deviation) {}

    double next()
    {
        if (deviation_ <= 0.0)
            return 0.0;
        const double radius = std::sqrt(-2.0 * std::log(1.0 - uniform()));
        return deviation_ * radius * std::cos(2.0 * std::numbers::pi * uniform());
    }

private:
    /// From 0 up to, and without, 1.
    double uniform()
    {
        state_ += 0x9e3779b97f4a7c15U;
        uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        z ^= z >> 31;
        return static_cast<double>(z >> 11) * 0x1.0p-53;
    }

    uint64_t state_;
    double deviation_;
};

} // namespace simspectro

#endif
