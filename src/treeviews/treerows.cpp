// SPDX-License-Identifier: MIT
#include "treeviews/treerows_p.h"

#include <QVarLengthArray>

#include <algorithm>
#include <vector>

namespace {

struct Place {
    QVarLengthArray<int, 4> path; // rows from the top level down
    QModelIndex index;
};

bool operator<(const Place &a, const Place &b)
{
    return std::lexicographical_compare(a.path.begin(), a.path.end(), b.path.begin(), b.path.end());
}

bool sortedAlready(const QModelIndexList &rows)
{
    const auto out_of_order = [](const QModelIndex &a, const QModelIndex &b) {
        return a.parent() != b.parent() || a.row() >= b.row();
    };
    return std::adjacent_find(rows.begin(), rows.end(), out_of_order) == rows.end();
}

} // namespace

void sortInTreeOrder(QModelIndexList &rows)
{
    rows.erase(std::remove_if(rows.begin(), rows.end(), [](const QModelIndex &row) { return !row.isValid(); }),
               rows.end());
    if (sortedAlready(rows))
        return;
    std::vector<Place> places;
    places.reserve(static_cast<size_t>(rows.size()));
    for (const QModelIndex &row : qAsConst(rows)) {
        Place place;
        place.index = row;
        for (QModelIndex level = row; level.isValid(); level = level.parent())
            place.path.append(level.row());
        std::reverse(place.path.begin(), place.path.end());
        places.push_back(std::move(place));
    }
    std::sort(places.begin(), places.end());
    rows.clear();
    for (const Place &place : places) {
        if (rows.isEmpty() || rows.last() != place.index)
            rows.append(place.index);
    }
}

QItemSelection selectionOfRows(const QModelIndexList &rows)
{
    QItemSelection selection;
    for (int i = 0; i < rows.size();) {
        const QModelIndex parent = rows[i].parent();
        int end = i + 1;
        while (end < rows.size() && rows[end].row() == rows[end - 1].row() + 1 && rows[end].parent() == parent)
            ++end;
        selection.select(rows[i], rows[end - 1]);
        i = end;
    }
    return selection;
}
