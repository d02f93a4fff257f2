// SPDX-License-Identifier: MIT
#include "proofcheck/inputcheck.h"

#include "taviapp/iso12642.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavistring.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <memory>
#include <string_view>

namespace {

QString at(const QString &path, int line, const QString &reason)
{
    return path + QLatin1Char(':') + QString::number(line) + QStringLiteral(": ") + reason;
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
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

/// The value of a token as the reader takes it, whatever the user's locale: its leading number, or 0. @a is_whole
/// tells whether the token is a finite number and nothing else.
double readNumber(std::string_view token, bool &is_whole)
{
    if (token.starts_with('+'))
        token.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    is_whole = error == std::errc() && end == token.data() + token.size() && std::isfinite(value);
    return value;
}

/// Why @a path cannot be read as a file; empty if it can. A device or a pipe would never end.
QString unreadableReason(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return reasonOf(EISDIR);
    return info.exists() && !info.isFile() ? QStringLiteral("is no regular file") : QString();
}

} // namespace

QString InputCheck::skippedText() const
{
    return skipped > 0 ? QStringLiteral("%1 of %2 lines skipped").arg(skipped).arg(lines) : QString();
}

InputCheck checkLabTextFile(const QString &path)
{
    InputCheck check;
    if (const QString reason = unreadableReason(path); !reason.isEmpty()) {
        check.error = path + QStringLiteral(": ") + reason;
        return check;
    }
    const std::unique_ptr<FILE, void (*)(FILE *)> file(Tavi_fopen(QFile::encodeName(path).constData(), "rb"),
                                                       Tavi_fclose);
    if (!file) {
        check.error = path + QStringLiteral(": ") + reasonOf(errno);
        return check;
    }
    Occurrence words;
    Occurrence markers;
    Occurrence pieces;
    Occurrence returns;
    // As the reader reads: the same pieces of a line, the same tokens.
    char line[1024];
    while (GetLineEOFOKLevel2(file.get(), line, sizeof line) == 0) {
        ++check.lines;
        if (std::strlen(line) == sizeof line - 1)
            pieces.note(check.lines);
        if (std::strchr(line, '\r'))
            returns.note(check.lines);
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
        double values[3] = {};
        bool all_whole = true;
        for (int i = 0; i < 3; ++i) {
            bool is_whole = false;
            values[i] = readNumber(tokens[i], is_whole);
            all_whole = all_whole && is_whole;
        }
        if (!all_whole)
            words.note(check.lines);
        if (values[0] < 0.0)
            markers.note(check.lines);
        else
            ++check.measurements;
    }
    const auto warn = [&](const Occurrence &seen, const QString &what) {
        if (seen.count > 0)
            check.warnings.append(
                at(path, seen.first_line, what + QStringLiteral(" (%1 such lines)").arg(seen.count)));
    };
    warn(words,
         QStringLiteral("something that is no plain number stands where a number belongs; a word is read as its "
                        "leading number or 0"));
    warn(markers, QStringLiteral("L is negative, which closes a series and is no colour"));
    warn(pieces, QStringLiteral("a line of more than 1023 bytes is read as several"));
    warn(returns, QStringLiteral("a carriage return inside a line does not end it"));
    if (check.measurements == 0)
        check.error = at(path, std::max(check.lines, 1),
                         (markers.count > 0 ? QStringLiteral("no measurement: every L is negative (%1 lines)")
                                            : QStringLiteral("no measurement: no line has three numbers (%1 lines)"))
                             .arg(check.lines));
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
        check.warnings.append(path
                              + QStringLiteral(": L is negative in %1 rows, which closes a series and is no colour")
                                    .arg(markers.count));
    if (check.measurements == 0)
        check.error =
            path
            + (markers.count > 0
                   ? QStringLiteral(": no measurement: L is negative in %1 of its %2 rows")
                         .arg(markers.count)
                         .arg(check.lines)
                   : QStringLiteral(": no measurement: none of its %1 rows has a Lab or XYZ value").arg(check.lines));
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
