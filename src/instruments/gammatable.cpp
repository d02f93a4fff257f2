// SPDX-License-Identifier: MIT
#include "instruments/gammatable_p.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double full = 65535.0;

/// The place, among @a many, of number @a at of a @a few that stand at even distances from the first to the last.
///
/// Both directions of a mapping use the same places, in whole numbers: that is what makes it come back without drift.
std::size_t placeAmongMany(std::size_t at, std::size_t few, std::size_t many)
{
    return (2 * at * (many - 1) + (few - 1)) / (2 * (few - 1));
}

std::vector<double> resampled(const std::vector<double> &from, std::size_t size)
{
    std::vector<double> to(size);
    if (size <= from.size()) {
        for (std::size_t at = 0; at < size; ++at)
            to[at] = from[placeAmongMany(at, size, from.size())];
        return to;
    }
    to[0] = from[0];
    for (std::size_t at = 1; at < from.size(); ++at) {
        const std::size_t begin = placeAmongMany(at - 1, from.size(), size);
        const std::size_t end = placeAmongMany(at, from.size(), size);
        for (std::size_t place = begin + 1; place < end; ++place)
            to[place] = from[at - 1] + (from[at] - from[at - 1]) * double(place - begin) / double(end - begin);
        to[end] = from[at];
    }
    return to;
}

std::uint16_t cardEntry(double value)
{
    if (!(value > 0.0)) // also what is no number
        return 0;
    return static_cast<std::uint16_t>(std::lround(std::min(value, 1.0) * full));
}

} // namespace

void samplesOfCardTable(const CardTable &card, GammaSamples &samples)
{
    for (std::size_t channel = 0; channel < samples.channels.size(); ++channel) {
        const auto &entries = card.channels[channel];
        const auto values = resampled({entries.begin(), entries.end()}, samples.count);
        std::transform(values.begin(), values.end(), samples.channels[channel].begin(),
                       [](double value) { return static_cast<float>(value / full); });
    }
    samples.returned = samples.count;
}

CardTable cardTableOfSamples(const GammaSamples &samples, std::size_t size)
{
    CardTable card;
    for (std::size_t channel = 0; channel < samples.channels.size(); ++channel) {
        const auto *first = samples.channels[channel].data();
        const auto values = resampled({first, first + samples.returned}, size);
        std::transform(values.begin(), values.end(), std::back_inserter(card.channels[channel]), cardEntry);
    }
    return card;
}

CardTable linearCardTable(std::size_t size)
{
    std::vector<std::uint16_t> line(size);
    for (std::size_t at = 0; at < size; ++at)
        line[at] = cardEntry(double(at) / double(size - 1));
    return {{line, line, line}};
}
