// SPDX-License-Identifier: MIT
#include "taviapp/tavicombocolour_cc.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavistring.h"

#include <cstdio>
#include <cstdlib>
#include <string>

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
    // Sized by the formatter: a broken instrument may send 1e308.
    const int length = std::snprintf(nullptr, 0, "%.2f, %.2f, %.2f", L, a, b);
    if (length < 0)
        return nullptr;
    std::string name(static_cast<size_t>(length) + 1, '\0');
    std::snprintf(name.data(), name.size(), "%.2f, %.2f, %.2f", L, a, b);

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
