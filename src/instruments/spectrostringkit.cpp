// SPDX-License-Identifier: MIT
#include "instruments/spectrostringkit.h"

#include <QCoreApplication>

QString SpectroStringKit::getSpectroQString(const char *text)
{
    return QCoreApplication::translate("SpectroStringKit", text);
}
