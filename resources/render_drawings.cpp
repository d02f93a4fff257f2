// SPDX-License-Identifier: MIT
// render_drawings FOLDER: writes each drawing to its file there.
#include "resources/drawings.h"

#include <cstdio>

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: render_drawings FOLDER\n", stderr);
        return 2;
    }
    for (const Drawing &drawing : allDrawings()) {
        const QString path = QString::fromLocal8Bit(argv[1]) + QLatin1Char('/') + QLatin1String(drawing.file);
        if (!renderDrawing(drawing).save(path)) {
            std::fprintf(stderr, "render_drawings: %s: cannot be written\n", qPrintable(path));
            return 1;
        }
    }
    return 0;
}
