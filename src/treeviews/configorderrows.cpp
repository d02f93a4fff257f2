// SPDX-License-Identifier: MIT
#include "treeviews/configorderrows_p.h"

QVector<int> rowsMovedUp(const QVector<int> &rows)
{
    QVector<int> places;
    int top = 0; // the first place that no row holds which could not move
    for (const int row : rows) {
        if (row == top) {
            ++top;
            places.append(row);
        } else {
            places.append(row - 1);
        }
    }
    return places;
}

QVector<int> rowsMovedDown(const QVector<int> &rows, int count)
{
    QVector<int> mirrored;
    for (int index = rows.size() - 1; index >= 0; --index)
        mirrored.append(count - 1 - rows.at(index));
    const QVector<int> moved = rowsMovedUp(mirrored);
    QVector<int> places;
    for (int index = moved.size() - 1; index >= 0; --index)
        places.append(count - 1 - moved.at(index));
    return places;
}

int rowAfterTaking(const QVector<int> &rows, int row)
{
    int target = row;
    for (const int taken : rows)
        target -= taken < target ? 1 : 0;
    return target;
}
