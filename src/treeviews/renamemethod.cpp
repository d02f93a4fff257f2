// SPDX-License-Identifier: MIT
#include "treeviews/renamemethod_p.h"

bool RenameRule::isIn(const QString &text) const
{
    return text.contains(op, case_sensitivity);
}

std::optional<QString> RenameRule::renamed(const QString &text) const
{
    if (op.isEmpty())
        return std::nullopt;
    switch (method) {
    case RenameMethod::Replace:
        if (!isIn(text))
            return std::nullopt;
        return QString(text).replace(op, with, case_sensitivity);
    case RenameMethod::Prefix:
        return op + text;
    case RenameMethod::Append:
        return text + op;
    }
    return std::nullopt;
}
