// SPDX-License-Identifier: MIT
#include "taviapp/tavicombocolour_cc.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavistring.h"

#include <charconv>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string>

namespace {

/// With a decimal point in every locale; "nan", "inf" and "-inf" for what is no number.
std::string withTwoDecimals(double value)
{
    // A broken instrument may send 1e308: sign, digits, point, two decimals.
    char text[1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + 2];
    const auto result = std::to_chars(std::begin(text), std::end(text), value, std::chars_format::fixed, 2);
    return {text, result.ptr};
}

} // namespace

TAVICOMBOCOLOUR_CC::TAVICOMBOCOLOUR_CC(const TAVICOMBOCOLOUR_CC &other)
    : patches_(DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, other.head()))
{}

TAVICOMBOCOLOUR_CC &TAVICOMBOCOLOUR_CC::operator=(const TAVICOMBOCOLOUR_CC &other)
{
    if (this != &other) {
        TAVICOMBOCOLOUR *copy = DuplicatePacketList(TAVIPACKET_COMBOCOLOUR, other.head());
        patches_.freeAll(TAVIPACKET_COMBOCOLOUR);
        patches_.appendList(copy);
    }
    return *this;
}

TAVICOMBOCOLOUR_CC &TAVICOMBOCOLOUR_CC::operator=(TAVICOMBOCOLOUR_CC &&other) noexcept
{
    if (this != &other) {
        patches_.freeAll(TAVIPACKET_COMBOCOLOUR);
        patches_.moveFrom(other.patches_);
    }
    return *this;
}

TAVICOMBOCOLOUR_CC::~TAVICOMBOCOLOUR_CC()
{
    patches_.freeAll(TAVIPACKET_COMBOCOLOUR);
}

TAVICOMBOCOLOUR *TAVICOMBOCOLOUR_CC::newMeasuredPatch(double L, double a, double b)
{
    const std::string name = withTwoDecimals(L) + ", " + withTwoDecimals(a) + ", " + withTwoDecimals(b);

    auto *patch = TaviAllocRecord<TAVICOMBOCOLOUR>();
    if (!patch)
        return nullptr;
    patch->name = AllocateAndCopyStringConst(name.c_str());
    if (!patch->name) {
        std::free(patch);
        return nullptr;
    }
    patch->L = L;
    patch->a = a;
    patch->b = b;
    patch->flags |= COMBOCOLOUR_FLAG_LAB;
    patch->percent = 100;
    return patch;
}
