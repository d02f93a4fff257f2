// SPDX-License-Identifier: MIT
#include "proofcheck/measuredfile.h"

#include <QSaveFile>

#include <charconv>

namespace {

void appendNumber(QByteArray &text, double value)
{
    char digits[64];
    const std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, value);
    text.append(digits, static_cast<int>(result.ptr - digits));
}

} // namespace

QByteArray measuredText(const std::vector<MeasuredPatch> &patches)
{
    QByteArray text = "name\tL\ta\tb\n";
    for (const MeasuredPatch &patch : patches) {
        QByteArray name = patch.name.toUtf8();
        for (char &c : name) {
            if (c == '\t' || c == '\n' || c == '\r')
                c = ' ';
        }
        text += name;
        for (const double value : {patch.L, patch.a, patch.b}) {
            text += '\t';
            appendNumber(text, value);
        }
        text += '\n';
    }
    return text;
}

QString writeMeasuredFile(const QString &path, const std::vector<MeasuredPatch> &patches)
{
    QSaveFile file(path);
    const QByteArray text = measuredText(patches);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return {};
    return QStringLiteral("%1: %2").arg(path, file.errorString());
}
