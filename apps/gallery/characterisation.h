// SPDX-License-Identifier: MIT
#ifndef GALLERY_CHARACTERISATION_H
#define GALLERY_CHARACTERISATION_H

#include "taviapp/tavicombocolour_cc.h"

#include <QString>

/// The published characterisation data of offset printing on coated paper, as package icc-profiles-free installs
/// them: 1617 patches. Empty where they aren't installed.
TAVICOMBOCOLOUR_CC readCharacterisation();

/// What a page shows in place of them.
QString missingCharacterisationText();

/// The patch after this one; null at the end.
const TAVICOMBOCOLOUR *nextPatch(const TAVICOMBOCOLOUR *patch);

/// "1: C 100 M 0 Y 0 K 0, Lab 55.1 -36.8 -50.3".
QString patchText(const TAVICOMBOCOLOUR &patch);

#endif
