// SPDX-License-Identifier: MIT
#include "treeviews/renamesettings_p.h"

#include "taviapp/taviregistry.h"
#include "treeviews/renamemethod_p.h"
#include "treeviews/tavirenamedialog.h"

#include <QStringList>
#include <QVector>

namespace {

QString text(TaviRegistry &registry, std::string &section, const char *key)
{
    return QString::fromStdString(registry.getstring(section.c_str(), key));
}

/// The whole numbers that a text begins with.
QVector<int> leadingNumbers(const QString &text)
{
    QVector<int> numbers;
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        bool is_number = false;
        const int number = word.toInt(&is_number);
        if (!is_number)
            break;
        numbers.append(number);
    }
    return numbers;
}

QByteArray numbersText(int first, int second, int third)
{
    return QStringLiteral("%1 %2 %3").arg(first).arg(second).arg(third).toLatin1();
}

} // namespace

void RenameSettings::read(TaviRegistry &registry, std::string &section)
{
    const QString stored_value = text(registry, section, TaviRenameDialog::KEY_RENAME_VALUE);
    if (!stored_value.isEmpty())
        value = stored_value;
    const QString stored_replacement = text(registry, section, TaviRenameDialog::KEY_RENAME_REPLACE);
    if (!stored_replacement.isEmpty())
        replacement = stored_replacement;

    const QVector<int> choices = leadingNumbers(text(registry, section, TaviRenameDialog::KEY_RENAME_SETTINGS));
    const int stored_method = choices.value(0, method);
    if (stored_method >= 0 && stored_method < rename_method_count)
        method = stored_method;
    ignore_case = choices.value(1, ignore_case) != 0;
    wrap = choices.value(2, wrap) != 0;

    const QVector<int> geometry = leadingNumbers(text(registry, section, TaviRenameDialog::KEY_RENAME_GEOMETRY));
    place = QPoint(geometry.value(0, place.x()), geometry.value(1, place.y()));
    width = geometry.value(2, width);
}

void RenameSettings::write(TaviRegistry &registry, std::string &section) const
{
    const auto put = [&registry, &section](const char *key, const QByteArray &bytes) {
        registry.putstring(section.c_str(), key, bytes.constData());
    };
    put(TaviRenameDialog::KEY_RENAME_VALUE, value.toUtf8());
    put(TaviRenameDialog::KEY_RENAME_REPLACE, replacement.toUtf8());
    put(TaviRenameDialog::KEY_RENAME_SETTINGS, numbersText(method, ignore_case ? 1 : 0, wrap ? 1 : 0));
    put(TaviRenameDialog::KEY_RENAME_GEOMETRY, numbersText(place.x(), place.y(), width));
}
