// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_KEYWORDMATCHER_P_H
#define TREEVIEWS_KEYWORDMATCHER_P_H

#include <QString>

/// @file
/// Whether a text holds a keyword.

/// Searches texts for one keyword, literally.
///
/// Without regard to case it finds what `text.toLower().indexOf(keyword.toLower())` finds, but makes no lower case
/// copy of a text as long as its characters are plain.
class KeywordMatcher
{
public:
    /// A matcher of this keyword. An empty one is in every text.
    KeywordMatcher(const QString &keyword, Qt::CaseSensitivity case_sensitivity);

    /// Whether @a text holds the keyword.
    bool isIn(const QString &text) const;

private:
    bool isInLowered(const QString &text) const;

    QString needle; // in lower case if any case will do
    bool any_case;
};

#endif
