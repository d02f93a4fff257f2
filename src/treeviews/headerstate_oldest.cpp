// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "treeviews/headerstate_p.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace {

/// The whole numbers that a text of @a count or more words begins with; empty if these words are not all such
/// numbers.
QVector<int> wholeNumbers(const std::string &text, int count)
{
    const QStringList words = QString::fromStdString(text).simplified().split(QLatin1Char(' '));
    QVector<int> numbers;
    for (const QString &word : words.mid(0, count)) {
        bool is_number = false;
        numbers.append(word.toInt(&is_number));
        if (!is_number)
            return {};
    }
    return numbers.size() == count ? numbers : QVector<int>();
}

/// Whether the rest of a key behind "column_" is a decimal number below @a columns.
bool isColumnOfHeader(const std::string &rest, int columns)
{
    bool is_number = false;
    const int number = QByteArray::fromStdString(rest).toInt(&is_number, 10);
    return is_number && number < columns;
}

} // namespace

QByteArray takeOldestHeaderSettings(TaviRegistry &registry, std::string &section, int columns)
{
    static const std::string column_prefix = "column_";
    std::string sorting_key = "sorting";
    std::vector<std::string> used;
    HeaderState state;

    for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem()) {
        const std::string key = registry.key(at);
        if (key.size() <= column_prefix.size() || key.compare(0, column_prefix.size(), column_prefix) != 0)
            continue;
        used.push_back(key);
        if (!isColumnOfHeader(key.substr(column_prefix.size()), columns))
            continue;
        // What counts is the order of the keys; their numbers have never been looked at further.
        const QVector<int> told = wholeNumbers(registry.value(at), 3);
        if (!told.isEmpty() && told.at(0) >= 0 && told.at(0) < columns)
            state.sections.append({qMax(told.at(2), -1), told.at(0), told.at(1) == 0});
    }

    const std::string sorting = registry.getstring(section, sorting_key);
    if (!sorting.empty()) {
        const QVector<int> told = wholeNumbers(sorting, 2);
        if (!told.isEmpty() && told.at(0) < columns) {
            state.sort_section = told.at(0);
            state.sort_order = told.at(1);
        }
        used.push_back(sorting_key);
    }

    for (std::string &key : used)
        registry.clearkey(section, key);

    if (state.sections.size() != columns)
        return {};
    // The stored sort column is a position.
    for (int logical = 0; logical < columns; ++logical) {
        if (state.sections.at(logical).visual_index == state.sort_section) {
            state.sort_section = logical;
            break;
        }
    }
    return state.toBytes();
}
