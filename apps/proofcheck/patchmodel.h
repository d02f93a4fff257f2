// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_PATCHMODEL_H
#define PROOFCHECK_PATCHMODEL_H

#include "tavilib/tavirecords.h"

#include <QAbstractTableModel>
#include <QString>

#include <vector>

/// One received patch.
struct MeasuredPatch {
    QString name;
    double L = 0; ///< CIE Lab, D50.
    double a = 0;
    double b = 0;
};

/// The received patches, in order of arrival. Made for 100,000 rows: appending costs what is appended, and a colour
/// is converted for display when its row is painted.
class PatchModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Swatch, L, A, B, Name, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    const std::vector<MeasuredPatch> &patches() const { return patches_; }
    /// Appends one patch.
    void append(const MeasuredPatch &patch);
    /// Appends a list, which stays the caller's. Patches without a valid Lab triple are left out.
    void append(const TAVICOMBOCOLOUR *list);
    /// Replaces the patch in a row; an unknown row is ignored.
    void replace(int row, const MeasuredPatch &patch);
    void clear();

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<MeasuredPatch> patches_;
};

#endif
