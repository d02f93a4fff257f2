// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEPROXYMODEL_P_H
#define TREEVIEWS_TAVITREEPROXYMODEL_P_H

#include "treeviews/tavitreeproxymodel.h"

/// @file
/// What the parts of the proxy share, and what its tests need.

/// Tells who has called others whether the proxy is still there. Each change of the source asks this, where a guarded
/// pointer would cost as much as all the rest. Made and destroyed in the order of calls.
class TaviTreeProxyModel::Presence
{
public:
    explicit Presence(TaviTreeProxyModel *proxy_model) : proxy(proxy_model), outer(proxy_model->presences)
    {
        proxy->presences = this;
    }
    ~Presence()
    {
        if (proxy)
            proxy->presences = outer;
    }
    Presence(const Presence &) = delete;
    Presence &operator=(const Presence &) = delete;

    bool isOver() const { return !proxy; }

    /// For the destructor of the proxy.
    static void end(TaviTreeProxyModel *proxy_model)
    {
        for (Presence *presence = proxy_model->presences; presence; presence = presence->outer)
            presence->proxy = nullptr;
    }

private:
    TaviTreeProxyModel *proxy;
    Presence *outer;
};

/// A further slot, normalised, without which TaviTreeProxyModel does not know its base class: from now on a proxy
/// that takes up a source maps rows one to one only if the base class has it. Null: those that are needed suffice.
TAVIWIDGETS_EXPORT void requireSlotOfBaseClass(const char *slot);

#endif
