// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_DENSITYLUT_CC_H
#define TAVIAPP_DENSITYLUT_CC_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

#include <string>
#include <vector>

/// An owning linearisation target. Assignment and copies copy the record; use each object on one thread.
class TAVIAPP_EXPORT DENSITYLUT_CC
{
public:
    /// No table: lut() is null.
    DENSITYLUT_CC() = default;
    /// A copy of @a lut; null is no table.
    explicit DENSITYLUT_CC(const DENSITYLUT *lut);
    DENSITYLUT_CC(const DENSITYLUT_CC &other);
    DENSITYLUT_CC &operator=(const DENSITYLUT_CC &other);
    ~DENSITYLUT_CC() = default;

    /// Appends a separation of kind @a band_type (TAVIBANDTYPE_...). @a name is its ink name in UTF-8; what is past
    /// 63 bytes is cut off at a character.
    void appendSeparation(uint32_t band_type, const std::string &name = {});

    /// The record, or null without a table. It belongs to this object and changes with it.
    DENSITYLUT *lut() { return set_ ? &record_ : nullptr; }
    const DENSITYLUT *lut() const { return set_ ? &record_ : nullptr; }
    /// Whether there is a table.
    bool isSet() const { return set_; }

private:
    void refresh();

    bool set_ = false;
    std::vector<DENSITYLUTBAND> bands_;
    DENSITYLUT record_ = {};
};

#endif
