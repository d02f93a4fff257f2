// SPDX-License-Identifier: MIT
#include "tavilib/tavilist.h"

namespace tavi::detail {

namespace {
TAVIPACKETHEADER *following(const TAVIPACKETHEADER *item)
{
    return static_cast<TAVIPACKETHEADER *>(item->next);
}
} // namespace

void addListList(TAVIPACKETHEADER **head, TAVIPACKETHEADER *list)
{
    if (!*head) {
        *head = list;
        return;
    }
    TAVIPACKETHEADER *tail = *head;
    while (TAVIPACKETHEADER *next = following(tail))
        tail = next;
    tail->next = list;
}

void removeItem(TAVIPACKETHEADER **head, TAVIPACKETHEADER *item)
{
    if (*head == item) {
        *head = following(item);
        item->next = nullptr;
        return;
    }
    for (TAVIPACKETHEADER *previous = *head; previous; previous = following(previous)) {
        if (previous->next == item) {
            previous->next = item->next;
            item->next = nullptr;
            return;
        }
    }
}

int listLength(const TAVIPACKETHEADER *head)
{
    int length = 0;
    for (; head; head = following(head))
        ++length;
    return length;
}

} // namespace tavi::detail
