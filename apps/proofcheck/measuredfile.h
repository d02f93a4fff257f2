// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_MEASUREDFILE_H
#define PROOFCHECK_MEASUREDFILE_H

#include "proofcheck/patchmodel.h"

#include <QByteArray>

/// The measured list as text: a header line "name L a b", then a line for each patch in order of arrival, separated
/// by tabs. Values are in the shortest form that reads back to the same double; a tab or line break in a name becomes
/// a blank.
QByteArray measuredText(const std::vector<MeasuredPatch> &patches);

/// Writes the list to @a path, whole or not at all: what stood there before stays until the new file is complete. An
/// empty result means success; otherwise it is the reason, one line.
QString writeMeasuredFile(const QString &path, const std::vector<MeasuredPatch> &patches);

#endif
