// SPDX-License-Identifier: MIT
#ifndef TESTS_TAVIAPP_PATCHTEXT_H
#define TESTS_TAVIAPP_PATCHTEXT_H

#include "taviapp/cgatsreport.h"
#include "taviapp/tavicombocolour_cc.h"

#include <QStringList>

#include <charconv>

/// Patches and reports as texts that a test can compare at once. Numbers are written so that they read back to the
/// same value: two texts are equal only if all values are, to the last bit.

template <typename Number>
QString numberText(Number value)
{
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return QString::fromLatin1(text, static_cast<int>(end - text));
}

/// "name | L a b | model values | what it stands for", the last two where there are any; "none" in place of no Lab.
inline QString patchText(const TAVICOMBOCOLOUR &patch)
{
    QString text = QString::fromUtf8(patch.name) + QLatin1String(" |");
    if (patch.flags & COMBOCOLOUR_FLAG_LAB) {
        for (const double value : {patch.L, patch.a, patch.b})
            text += QLatin1Char(' ') + numberText(value);
    } else {
        text += QLatin1String(" none");
    }
    static const char *const models[] = {"", "gray", "", "rgb", "cmyk", "nclr", "cmy"};
    if (patch.device_model != COMBOCOLOUR_DEVICE_NONE)
        text += QLatin1String(" | ") + QLatin1String(models[patch.device_model]);
    for (uint32_t i = 0; i < patch.device_count; ++i)
        text += QLatin1Char(' ') + numberText(i < 4 ? patch.device[i] : patch.device_extra[i - 4]);
    static constexpr struct {
        uint32_t flag;
        const char *name;
    } meanings[] = {{COMBOCOLOUR_FLAG_CYAN, "cyan"},     {COMBOCOLOUR_FLAG_MAGENTA, "magenta"},
                    {COMBOCOLOUR_FLAG_YELLOW, "yellow"}, {COMBOCOLOUR_FLAG_BLACK, "black"},
                    {COMBOCOLOUR_FLAG_PAPER, "paper"},   {COMBOCOLOUR_FLAG_GREY, "grey"}};
    for (const auto &meaning : meanings) {
        if (patch.flags & meaning.flag)
            text += QLatin1String(" | ") + QLatin1String(meaning.name);
    }
    return text;
}

inline QStringList patchTexts(const TAVICOMBOCOLOUR_CC &patches)
{
    QStringList texts;
    for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = NextInList(patch))
        texts.append(patchText(*patch));
    return texts;
}

/// "line: text" of each.
inline QStringList noteTexts(const std::vector<CgatsNote> &notes)
{
    QStringList texts;
    for (const CgatsNote &note : notes)
        texts.append(QString::number(note.line) + QLatin1String(": ") + QString::fromStdString(note.text));
    return texts;
}

#endif
