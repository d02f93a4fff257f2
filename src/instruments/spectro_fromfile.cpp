// SPDX-License-Identifier: MIT
#include "instruments/spectro_fromfile.h"

#include "tavilib/calc.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <QFileDialog>
#include <QObject>

#include <cstdlib>
#include <utility>

namespace {

constexpr const char *unit = "spectro_fromfile";

constexpr uint32_t density_flags =
    SPECTRO_FLAG_DENSITY | SPECTRO_FLAG_SPOTDENSITY | SPECTRO_FLAG_LINCHARTGENERATOR | SPECTRO_FLAG_FILESOURCE;
constexpr uint32_t lab_flags = SPECTRO_FLAG_LAB | SPECTRO_FLAG_SPOTLAB | SPECTRO_FLAG_CHART | SPECTRO_FLAG_FILESOURCE;

void logFailedAllocation(size_t size)
{
    // Form 2 takes an empty format and one argument, which the compiler cannot know.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-zero-length"
#pragma GCC diagnostic ignored "-Wformat-extra-args"
    TaviLogMessage(unit, "SpectrophotometerGetInfo", TAVILOG_ERROR, TAVILOG_FORM_ALLOCATION, 1, "",
                   static_cast<int>(size));
#pragma GCC diagnostic pop
}

SPECTROPHOTOMETERINFO *newInfo(const char *name, const char *rev, const char *file_name, uint32_t flags)
{
    auto *info = TaviAllocRecord<SPECTROPHOTOMETERINFO>();
    if (!info) {
        logFailedAllocation(sizeof(SPECTROPHOTOMETERINFO));
        return nullptr;
    }
    if (!(info->name = AllocateAndCopyStringConst(name)) || !(info->rev = AllocateAndCopyStringConst(rev))
        || !(info->dll_filename = AllocateAndCopyStringConst(file_name))) {
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
        return nullptr;
    }
    info->flags = flags;
    return info;
}

QString chooseByDialog(const QString &title, const QString &filter)
{
    return QFileDialog::getOpenFileName(nullptr, title, QString(), filter);
}

SpectroFileChooser &chooserInPlace()
{
    static SpectroFileChooser chooser = chooseByDialog;
    return chooser;
}

/// The chosen path in UTF-8; empty if the user wants none.
QByteArray chooseFile()
{
    // A copy: what it runs may put another in its place.
    const SpectroFileChooser chooser = chooserInPlace();
    return chooser(QObject::tr("Choose a file containing measurements"), QStringLiteral("All(*);;Text files (*.txt)"))
        .toUtf8();
}

} // namespace

SpectroFileChooser setSpectroFileChooser(SpectroFileChooser chooser)
{
    return std::exchange(chooserInPlace(), chooser ? std::move(chooser) : SpectroFileChooser(chooseByDialog));
}

SPECTROPHOTOMETERINFO *spectro_fromfile_cmykorder_SpectrophotometerGetInfoDensityOnly()
{
    return newInfo("CMYK text file (CMYK sample order)", "1.03", "tabdelimitedcmyk.orloinstrument", density_flags);
}

SPECTROPHOTOMETERINFO *spectro_fromfile_kcmyorder_SpectrophotometerGetInfoDensityOnly()
{
    return newInfo("CMYK text file (KCMY sample order)", "1.01", "tabdelimitedkcmy.orloinstrument", density_flags);
}

SPECTROPHOTOMETERINFO *spectro_fromfile_SpectrophotometerGetInfoLabOnly()
{
    return newInfo("Lab text file (Lab sample order)", "1.03", "tabdelimitedlab.orloinstrument", lab_flags);
}

SPECTROPHOTOMETERINFO *spectro_fromCGATS_SpectrophotometerGetInfo()
{
    return newInfo("CGATS / ISO 12642 file", "1.01", "cgatslab.orloinstrument", lab_flags);
}

void *spectro_fromfile_SpectrophotometerOpen(InstrumentMessageCallback message, void *message_context)
{
    const QByteArray path = chooseFile();
    if (path.isEmpty())
        return nullptr;
    FILE *file = Tavi_fopen(path.constData(), "rb");
    if (!file)
        message(message_context, 1, unit, "SpectrophotometerOpen", "Cannot open file %s", path.constData());
    return file;
}

void spectro_fromfile_SpectrophotometerClose(void *handle, InstrumentMessageCallback, void *)
{
    Tavi_fclose(static_cast<FILE *>(handle));
}

void *spectro_fromCGATS_SpectrophotometerOpen(InstrumentMessageCallback, void *)
{
    const QByteArray path = chooseFile();
    return path.isEmpty() ? nullptr : AllocateAndCopyStringConst(path.constData());
}

void spectro_fromCGATS_SpectrophotometerClose(void *handle, InstrumentMessageCallback, void *)
{
    std::free(handle);
}

int spectro_fromfile_SpectrophotometerGetLinChart(const DENSITYLUT *lut, double *values, unsigned long count)
{
    return GenerateHandheldLinearisationChart(lut, values, count);
}

int spectro_fromfile_SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart, unsigned long parameter)
{
    return GenerateHandheldComboColourChart(chart, parameter);
}

int spectro_fromCGATS_SpectrophotometerGetComboColourChart(const TAVICOMBOCOLOUR *chart, unsigned long parameter)
{
    return GenerateHandheldComboColourChart(chart, parameter);
}
