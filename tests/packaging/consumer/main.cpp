// SPDX-License-Identifier: MIT
#include "taviapp/tavifileinfo.h"
#include "tavilib/tavicms.h"

#include <QTextStream>

int main()
{
    const std::string folder = TaviFileInfo::dirnameFromPath("/ink/cyan.ti3");
    const unsigned white = TAVICMSLabToDisplay(100, 0, 0) & 0xffffffU;
    QTextStream(stdout) << QString::fromStdString(folder) << ' ' << QString::number(white, 16) << '\n';
}
