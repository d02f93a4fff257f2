// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEPROXYMODEL_P_H
#define TREEVIEWS_TAVITREEPROXYMODEL_P_H

#include "foundation/taviwidgets_export.h"

/// @file
/// For tests of the proxy.

/// A further slot, normalised, without which TaviTreeProxyModel does not know its base class: from now on a proxy
/// that takes up a source maps rows one to one only if the base class has it. Null: those that are needed suffice.
TAVIWIDGETS_EXPORT void requireSlotOfBaseClass(const char *slot);

#endif
