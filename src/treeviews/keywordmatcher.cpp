// SPDX-License-Identifier: MIT
#include "treeviews/keywordmatcher_p.h"

namespace {

constexpr ushort plain_end = 0x80;

ushort plainLower(ushort unit)
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<ushort>(unit + ('a' - 'A')) : unit;
}

} // namespace

KeywordMatcher::KeywordMatcher(const QString &keyword, Qt::CaseSensitivity case_sensitivity)
    : needle(case_sensitivity == Qt::CaseInsensitive ? keyword.toLower() : keyword),
      any_case(case_sensitivity == Qt::CaseInsensitive)
{}

bool KeywordMatcher::isIn(const QString &text) const
{
    if (needle.isEmpty())
        return true;
    return any_case ? isInLowered(text) : text.indexOf(needle) >= 0;
}

bool KeywordMatcher::isInLowered(const QString &text) const
{
    const ushort *const units = text.utf16();
    const ushort *const wanted = needle.utf16();
    const int length = needle.size();
    const int size = text.size();
    const int last = size - length;
    const ushort first = wanted[0];
    int place = 0;
    for (; place <= last; ++place) {
        if (units[place] >= plain_end)
            break;
        if (plainLower(units[place]) != first)
            continue;
        int same = 1;
        while (same < length && units[place + same] < plain_end && plainLower(units[place + same]) == wanted[same])
            ++same;
        if (same == length)
            return true;
        if (units[place + same] >= plain_end)
            break;
    }
    // Beyond ASCII a lower case letter may be longer, or two units, so that no shorter way is safe. A text whose
    // plain part was read to the end may still have such letters after the last place that was tried.
    for (int unit = place; unit < size; ++unit) {
        if (units[unit] >= plain_end)
            return text.toLower().indexOf(needle) >= 0;
    }
    return false;
}
