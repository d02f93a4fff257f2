// SPDX-License-Identifier: MIT
#include "gallery/galleryinstrument.h"

#include "instruments/spectro_fromfile.h"

const char *galleryInstrumentName()
{
    return "Lab text file (Lab sample order)";
}

void answerFileDialogs(bool on)
{
    if (on)
        setSpectroFileChooser([](const QString &, const QString &) { return QStringLiteral("/dev/null"); });
    else
        setSpectroFileChooser({});
}
