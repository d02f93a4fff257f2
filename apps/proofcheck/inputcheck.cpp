// SPDX-License-Identifier: MIT
#include "proofcheck/inputcheck.h"

#include "taviapp/iso12642.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavistring.h"

#include <QFile>

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

QString at(const QString &path, int line, const QString &reason)
{
    return QStringLiteral("%1:%2: %3").arg(path).arg(line).arg(reason);
}

/// Counts how often something happened and remembers where first.
struct Occurrence {
    int count = 0;
    int first_line = 0;

    void note(int line)
    {
        if (count++ == 0)
            first_line = line;
    }
};

bool isFiniteNumber(const char *token)
{
    char *end = nullptr;
    const double value = std::strtod(token, &end);
    return end != token && *end == '\0' && std::isfinite(value);
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

QString InputCheck::skippedText() const
{
    return skipped > 0 ? QStringLiteral("%1 of %2 lines skipped").arg(skipped).arg(lines) : QString();
}

InputCheck checkLabTextFile(const QString &path)
{
    InputCheck check;
    const std::unique_ptr<FILE, void (*)(FILE *)> file(Tavi_fopen(QFile::encodeName(path).constData(), "rb"),
                                                       Tavi_fclose);
    if (!file) {
        check.error = QStringLiteral("%1: %2").arg(path, reasonOf(errno));
        return check;
    }
    Occurrence words;
    Occurrence markers;
    // As the reader reads: the same pieces of a line, the same tokens.
    char line[1024];
    while (GetLineEOFOKLevel2(file.get(), line, sizeof line) == 0) {
        ++check.lines;
        char *save = nullptr;
        const char *tokens[3] = {};
        int found = 0;
        for (char *rest = line; found < 3; rest = nullptr) {
            const char *token = Tavi_strtok(rest, " \t\n\r", &save);
            if (!token)
                break;
            tokens[found++] = token;
        }
        if (found < 3) {
            ++check.skipped;
            continue;
        }
        for (const char *token : tokens) {
            if (!isFiniteNumber(token)) {
                words.note(check.lines);
                break;
            }
        }
        if (std::atof(tokens[0]) < 0.0)
            markers.note(check.lines);
        else
            ++check.measurements;
    }
    if (words.count > 0)
        check.warnings.append(at(path, words.first_line,
                                 QStringLiteral("a word stands where a number belongs and is read as its leading "
                                                "number or 0 (%1 such lines)")
                                     .arg(words.count)));
    if (markers.count > 0)
        check.warnings.append(
            at(path, markers.first_line,
               QStringLiteral("L is negative, which closes a series and is no colour (%1 such lines)")
                   .arg(markers.count)));
    if (check.measurements == 0)
        check.error = at(path, check.lines == 0 ? 1 : check.lines,
                         QStringLiteral("no measurement: no line has three numbers (%1 lines)").arg(check.lines));
    return check;
}

InputCheck checkCgatsFile(const QString &path)
{
    InputCheck check;
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(QFile::encodeName(path).toStdString(), 0, report));
    if (!patches.head()) {
        check.error = QString::fromStdString(report.refusalText());
        return check;
    }
    Occurrence markers;
    for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = NextInList(patch)) {
        ++check.lines;
        if ((patch->flags & COMBOCOLOUR_FLAG_LAB) == 0)
            ++check.skipped;
        else if (patch->L < 0.0)
            markers.note(check.lines);
        else
            ++check.measurements;
    }
    const int dropped = static_cast<int>(report.rows_dropped);
    check.lines += dropped;
    check.skipped += dropped;
    for (const CgatsNote &doubt : report.doubts)
        check.warnings.append(at(path, static_cast<int>(doubt.line), QString::fromStdString(doubt.text)));
    if (markers.count > 0)
        check.warnings.append(QStringLiteral("%1: L is negative in %2 rows, which closes a series and is no colour")
                                  .arg(path)
                                  .arg(markers.count));
    if (check.measurements == 0)
        check.error = QStringLiteral("%1: no measurement: none of its %2 rows has a Lab or XYZ value")
                          .arg(path)
                          .arg(check.lines);
    return check;
}

InputCheck checkInputFor(const QString &dll_filename, const QString &path)
{
    if (dll_filename == QLatin1String("tabdelimitedlab.orloinstrument"))
        return checkLabTextFile(path);
    if (dll_filename == QLatin1String("cgatslab.orloinstrument"))
        return checkCgatsFile(path);
    return {};
}

TAVICOMBOCOLOUR_CC readChart(const QString &path, InputCheck &check)
{
    CgatsReport report;
    TAVICOMBOCOLOUR_CC chart(ISO12642Importer::import(QFile::encodeName(path).toStdString(), 0, report));
    if (!chart.head())
        check.error = QString::fromStdString(report.refusalText());
    check.lines = static_cast<int>(chart.count());
    check.measurements = check.lines;
    return chart;
}
