// SPDX-License-Identifier: MIT
#include "gallery/characterisation.h"

#include "taviapp/cgatsreport.h"
#include "taviapp/iso12642.h"

#include <QFileInfo>

namespace {

const QString data_file = QStringLiteral("/usr/share/color/icc/FOGRA39L.ti3");

} // namespace

TAVICOMBOCOLOUR_CC readCharacterisation()
{
    if (!QFileInfo::exists(data_file))
        return {};
    CgatsReport report;
    return TAVICOMBOCOLOUR_CC(ISO12642Importer::import(data_file.toStdString(), 0, report));
}

QString missingCharacterisationText()
{
    return QStringLiteral("No characterisation data: %1 is not installed.").arg(data_file);
}

const TAVICOMBOCOLOUR *nextPatch(const TAVICOMBOCOLOUR *patch)
{
    return static_cast<const TAVICOMBOCOLOUR *>(patch->header.next);
}

QString patchText(const TAVICOMBOCOLOUR &patch)
{
    QString inks;
    if (patch.device_model == COMBOCOLOUR_DEVICE_CMYK) {
        inks = QStringLiteral("C %1 M %2 Y %3 K %4, ")
                   .arg(double(patch.device[0]))
                   .arg(double(patch.device[1]))
                   .arg(double(patch.device[2]))
                   .arg(double(patch.device[3]));
    }
    return QStringLiteral("%1: %2Lab %3 %4 %5")
        .arg(QString::fromUtf8(patch.name), inks)
        .arg(patch.L, 0, 'f', 1)
        .arg(patch.a, 0, 'f', 1)
        .arg(patch.b, 0, 'f', 1);
}
