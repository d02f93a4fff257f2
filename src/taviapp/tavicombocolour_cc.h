// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVICOMBOCOLOUR_CC_H
#define TAVIAPP_TAVICOMBOCOLOUR_CC_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavipacketchain.h"
#include "tavilib/tavirecords.h"

/// An owning list of colour patches. Copies are deep; use each object on one thread.
class TAVIAPP_EXPORT TAVICOMBOCOLOUR_CC
{
public:
    TAVICOMBOCOLOUR_CC() = default;
    /// Takes a list over.
    explicit TAVICOMBOCOLOUR_CC(TAVICOMBOCOLOUR *list) : patches_(list) {}
    TAVICOMBOCOLOUR_CC(const TAVICOMBOCOLOUR_CC &other);
    TAVICOMBOCOLOUR_CC &operator=(const TAVICOMBOCOLOUR_CC &other);
    /// Leaves @a other empty.
    TAVICOMBOCOLOUR_CC(TAVICOMBOCOLOUR_CC &&other) noexcept = default;
    /// Leaves @a other empty.
    TAVICOMBOCOLOUR_CC &operator=(TAVICOMBOCOLOUR_CC &&other) noexcept;
    ~TAVICOMBOCOLOUR_CC();

    /// Appends one patch, which the list owns from now on. Null is ignored. O(1).
    void insertCombo(TAVICOMBOCOLOUR *patch) { patches_.append(patch); }

    /// The first patch, or null; the list keeps it.
    TAVICOMBOCOLOUR *head() const { return patches_.head(); }
    /// Hands the list to the caller and leaves this one empty.
    TAVICOMBOCOLOUR *take() { return patches_.takeAll(); }
    /// How many patches the list has. O(1).
    size_t count() const { return patches_.length(); }

    /// A patch as every Lab measurement is kept: named by its values with two decimals and a decimal point in every
    /// locale, with a valid Lab triple and 100 percent. Null if memory is out. The caller owns it.
    static TAVICOMBOCOLOUR *newMeasuredPatch(double L, double a, double b);

private:
    TaviPacketChain<TAVICOMBOCOLOUR> patches_;
};

#endif
