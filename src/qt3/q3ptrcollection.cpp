// SPDX-License-Identifier: MIT
#include "qt3/q3ptrcollection.h"

Q3PtrCollection::Q3PtrCollection(const Q3PtrCollection &) {}

Q3PtrCollection::~Q3PtrCollection() = default;

Q3PtrCollection::Item Q3PtrCollection::newItem(Item item)
{
    return item;
}
