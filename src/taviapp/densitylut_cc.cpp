// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"

#include <cstring>

DENSITYLUT_CC::DENSITYLUT_CC(const DENSITYLUT *lut)
{
    if (!lut)
        return;
    set_ = true;
    if (lut->bands)
        bands_.assign(lut->bands, lut->bands + lut->separation_count);
    refresh();
}

DENSITYLUT_CC::DENSITYLUT_CC(const DENSITYLUT_CC &other) : DENSITYLUT_CC(other.lut()) {}

DENSITYLUT_CC &DENSITYLUT_CC::operator=(const DENSITYLUT_CC &other)
{
    set_ = other.set_;
    bands_ = other.bands_;
    refresh();
    return *this;
}

void DENSITYLUT_CC::appendSeparation(uint32_t band_type, const std::string &name)
{
    DENSITYLUTBAND band = {};
    band.band_type = band_type;
    size_t length = name.size();
    if (length >= sizeof band.name) {
        length = sizeof band.name - 1;
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xc0U) == 0x80U)
            --length;
    }
    std::memcpy(band.name, name.data(), length);
    bands_.push_back(band);
    set_ = true;
    refresh();
}

void DENSITYLUT_CC::refresh()
{
    record_.separation_count = static_cast<uint32_t>(bands_.size());
    record_.bands = bands_.empty() ? nullptr : bands_.data();
}
