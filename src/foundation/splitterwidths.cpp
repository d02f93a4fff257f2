// SPDX-License-Identifier: MIT
#include "foundation/splitterwidths_p.h"

#include <QStringList>

namespace {

/// What a pane gets that has no width of its own.
constexpr int fallback_width = 50;

} // namespace

QString splitterWidthsText(const QList<int> &widths)
{
    QString text = QLatin1String("");
    for (const int width : widths)
        text += QString::number(width) + QLatin1Char(' ');
    return text;
}

QList<int> splitterWidthsOfText(const QString &text, const QVector<bool> &hidden)
{
    const QStringList parts = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QList<int> widths;
    qint64 sum = 0;
    for (int i = 0; i < parts.size(); ++i) {
        int width = parts[i].toInt(nullptr, 10);
        // A pane that was hidden when the widths were taken had none, and must have one once it is shown.
        if (width == 0 && i < hidden.size() && hidden[i])
            width = fallback_width;
        sum += width;
        widths.append(width);
    }
    if (widths.size() >= hidden.size())
        return widths;
    const int same = sum > 0 ? static_cast<int>(sum / parts.size()) : fallback_width;
    widths.clear();
    while (widths.size() < hidden.size())
        widths.append(same);
    return widths;
}
