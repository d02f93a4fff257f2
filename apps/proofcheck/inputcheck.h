// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_INPUTCHECK_H
#define PROOFCHECK_INPUTCHECK_H

#include "taviapp/tavicombocolour_cc.h"

#include <QString>
#include <QStringList>

/// What a file holds for an instrument that reads it.
struct InputCheck {
    QString error;        ///< Why the file is unusable, "file:line: reason"; empty if it is usable.
    int lines = 0;        ///< Lines (rows) in the file.
    int skipped = 0;      ///< Lines that yield no measurement.
    int measurements = 0; ///< Measurements that will arrive as colours.
    QStringList warnings; ///< What will arrive otherwise than it was meant, one line each.

    /// "17 of 1634 lines skipped"; empty if none is.
    QString skippedText() const;
};

/// Looks a text file through as the Lab reader will read it: at least three white-space separated numbers a line. A
/// word where a number belongs is read as 0 there, and a negative L closes a series; both are warned of.
InputCheck checkLabTextFile(const QString &path);

/// Looks a CGATS file through.
InputCheck checkCgatsFile(const QString &path);

/// The check that fits the file reader whose file name is @a dll_filename; usable without a look for any other.
InputCheck checkInputFor(const QString &dll_filename, const QString &path);

/// Reads the chart that a device shall measure. Empty with InputCheck::error set if the file holds none.
TAVICOMBOCOLOUR_CC readChart(const QString &path, InputCheck &check);

#endif
