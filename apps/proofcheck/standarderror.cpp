// SPDX-License-Identifier: MIT
#include "proofcheck/standarderror.h"

#include <cstdio>

void sayLine(const QString &text)
{
    QString line = text;
    for (QChar &c : line) {
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char(' ');
    }
    std::fprintf(stderr, "proofcheck: %s\n", line.toLocal8Bit().constData());
}
