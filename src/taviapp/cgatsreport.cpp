// SPDX-License-Identifier: MIT
#include "taviapp/cgatsreport.h"

std::string CgatsReport::refusalText() const
{
    if (!refused)
        return std::string();
    std::string text = path.empty() ? std::string("text") : path;
    if (refusal_line > 0)
        text += ':' + std::to_string(refusal_line);
    return text + ": " + refusal_reason;
}

void CgatsReport::refuse(size_t line, std::string reason)
{
    if (refused)
        return;
    refused = true;
    refusal_line = line;
    refusal_reason = std::move(reason);
}

void CgatsReport::note(std::vector<CgatsNote> &notes, size_t line, std::string &&text)
{
    if (notes.size() < maximum_notes)
        notes.push_back({line, std::move(text)});
    else
        ++notes_left_out;
}
