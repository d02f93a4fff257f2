// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_SCHEMEMENU_H
#define PROOFCHECK_SCHEMEMENU_H

#include "foundation/colorscheme.h"
#include "taviapp/taviregistry.h"

#include <QMenu>

/// The menu "Scheme": tints a window, so that several open at once can be told apart, and keeps the choice.
class SchemeMenu : public QMenu
{
    Q_OBJECT

public:
    /// The menu of @a window, which owns it; @a registry outlives it. Applies the scheme that was kept; the default
    /// one if none was, or one that there is no more.
    SchemeMenu(TaviRegistry &registry, QWidget &window);

private:
    void addEntries();
    void choose(const ColorScheme &scheme);

    TaviRegistry &registry_;
    QWidget &window_;
    ColorSchemeHolder schemes_;
};

#endif
