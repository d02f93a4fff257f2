// SPDX-License-Identifier: MIT
#ifndef BENCH_TREETEXTS_H
#define BENCH_TREETEXTS_H

/// The table that the lists and trees of the benchmarks show.

#include <QString>
#include <QStringList>

namespace treestacks {

constexpr int columns = 4;

/// The texts of a row: a name, one of seven inks, of which one is found by the letter q, a number, a note.
inline QString text(int row, int column)
{
    static const QString inks[] = {QStringLiteral("Cyan"),  QStringLiteral("Magenta"), QStringLiteral("Yellow"),
                                   QStringLiteral("Black"), QStringLiteral("Aqua"),    QStringLiteral("Orange"),
                                   QStringLiteral("Green")};
    switch (column) {
    case 0:
        return QStringLiteral("Patch %1").arg(row * 7919 % 100003);
    case 1:
        return inks[row % 7] + QString::number(row % 101);
    case 2:
        return QString::number(row * 31 % 10007);
    default:
        return QStringLiteral("note %1").arg(row);
    }
}

/// The header of all.
inline QStringList header()
{
    return {QStringLiteral("Name"), QStringLiteral("Ink"), QStringLiteral("Number"), QStringLiteral("Note")};
}

} // namespace treestacks

#endif
