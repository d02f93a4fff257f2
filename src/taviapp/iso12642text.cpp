// SPDX-License-Identifier: MIT
#include "taviapp/iso12642text_p.h"

#include "taviapp/cgatsowncolumns_p.h"
#include "taviapp/cgatsreader.h"
#include "taviapp/cgatstext_p.h"
#include "taviapp/comboflags_p.h"
#include "tavilib/calcheck.h"
#include "tavilib/tavilist.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

template <typename Number>
void append(std::string &text, Number number)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

/// A value that a reader takes for a double before it becomes a float again. Rounded twice, the shortest form of
/// 7.038531e-26 gives the float beside it.
void appendFloat(std::string &text, float value)
{
    const size_t start = text.size();
    append(text, value);
    double read = 0.0;
    std::from_chars(text.data() + start, text.data() + text.size(), read);
    if (static_cast<float>(read) == value)
        return;
    text.resize(start);
    append(text, static_cast<double>(value));
}

/// A text in quotes that fits a cell and comes back as one.
void appendQuoted(std::string &text, const char *name, size_t most)
{
    const std::string utf8 = cgatsToUtf8(name ? name : "");
    const size_t end = text.size() + 1 + most;
    text += '"';
    for (size_t at = 0; at < utf8.size();) {
        size_t next = at + 1;
        while (next < utf8.size() && (static_cast<unsigned char>(utf8[next]) & 0xc0U) == 0x80U)
            ++next;
        const auto first = static_cast<unsigned char>(utf8[at]);
        const bool quote = first == '"';
        if (text.size() + (next - at) + (quote ? 1 : 0) > end)
            break;
        if (first < 0x20 || first == 0x7f)
            text += ' ';
        else
            text.append(utf8, at, next - at);
        if (quote)
            text += '"';
        at = next;
    }
    text += '"';
}

float deviceValue(const TAVICOMBOCOLOUR &patch, size_t i)
{
    return i < 4 ? patch.device[i] : patch.device_extra[i - 4];
}

bool hasDevice(const TAVICOMBOCOLOUR &patch)
{
    return cgatsModelHas(patch.device_model, patch.device_count);
}

/// Writes one list.
class TextWriter
{
public:
    TextWriter(const TAVICOMBOCOLOUR *patches, const SPECTROPHOTOMETERINFO *instrument)
        : patches_(patches), instrument_(instrument)
    {}

    /// Looks the list through. A reason if it cannot be written.
    std::string look();
    std::string write();

private:
    std::string lookAt(const TAVICOMBOCOLOUR &patch);
    std::vector<std::string> deviceFields() const;
    void appendHeader(std::string &text, const std::vector<std::string> &fields) const;
    void appendDevice(std::string &text, const TAVICOMBOCOLOUR &patch) const;
    void appendOwn(std::string &text, const TAVICOMBOCOLOUR &patch) const;

    const TAVICOMBOCOLOUR *patches_;
    const SPECTROPHOTOMETERINFO *instrument_;
    size_t count_ = 0;
    bool device_ = false;      ///< A patch has device values.
    bool same_device_ = true;  ///< All have the same kind of them.
    uint32_t most_values_ = 0; ///< As many device values has the patch that has most.
    bool marks_ = false;       ///< A patch is marked otherwise than its device values say.
    bool tolerances_ = false;  ///< A patch brings a tolerance.
};

std::string TextWriter::lookAt(const TAVICOMBOCOLOUR &patch)
{
    if (!(patch.flags & COMBOCOLOUR_FLAG_LAB))
        return "has no Lab value";
    if (!std::isfinite(patch.L) || !std::isfinite(patch.a) || !std::isfinite(patch.b))
        return "has a Lab value that is no finite number";
    if (hasDevice(patch)) {
        for (uint32_t i = 0; i < patch.device_count; ++i) {
            if (!std::isfinite(deviceValue(patch, i)))
                return "has a device value that is no finite number";
        }
        device_ = true;
        most_values_ = std::max(most_values_, patch.device_count);
    }
    same_device_ =
        same_device_ && hasDevice(patch) == hasDevice(*patches_)
        && (!hasDevice(patch)
            || (patch.device_model == patches_->device_model && patch.device_count == patches_->device_count));
    tolerances_ = tolerances_ || calcheckHasOwnTolerances(&patch);
    marks_ = marks_ || (patch.flags & cgats_marks) != (hasDevice(patch) ? taviReferenceFlags(patch) : 0);
    return {};
}

std::string TextWriter::look()
{
    for (const TAVICOMBOCOLOUR *patch = patches_; patch; patch = NextInList(patch)) {
        ++count_;
        const std::string reason = lookAt(*patch);
        if (!reason.empty())
            return "patch " + std::to_string(count_) + ", " + cgatsQuoted(patch->name ? patch->name : "") + ", "
                   + reason;
    }
    return count_ > 0 ? std::string() : std::string("there are no patches");
}

std::vector<std::string> TextWriter::deviceFields() const
{
    if (!device_)
        return {};
    if (!same_device_) {
        std::vector<std::string> fields = {CgatsOwnColumns::model_name};
        for (uint32_t i = 1; i <= most_values_; ++i)
            fields.push_back(CgatsOwnColumns::device_prefix + std::to_string(i));
        return fields;
    }
    switch (patches_->device_model) {
    case COMBOCOLOUR_DEVICE_GRAY:
        return {"GRAY"};
    case COMBOCOLOUR_DEVICE_RGB:
        return {"RGB_R", "RGB_G", "RGB_B"};
    case COMBOCOLOUR_DEVICE_CMY:
        return {"CMY_C", "CMY_M", "CMY_Y"};
    case COMBOCOLOUR_DEVICE_CMYK:
        return {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"};
    default:
        break;
    }
    std::vector<std::string> fields;
    for (uint32_t i = 1; i <= patches_->device_count; ++i)
        fields.push_back(std::to_string(patches_->device_count) + "CLR_" + std::to_string(i));
    return fields;
}

void TextWriter::appendHeader(std::string &text, const std::vector<std::string> &fields) const
{
    text += "CGATS.17\nORIGINATOR \"libtaviwidgets\"\n";
    if (instrument_ && instrument_->name && *instrument_->name) {
        text += "INSTRUMENTATION ";
        appendQuoted(text, instrument_->name, 1000);
        text += '\n';
    }
    text += "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\nWEIGHTING_FUNCTION \"OBSERVER, 2 degree\"\n";
    for (const std::string &field : fields) {
        if (field.starts_with("TAVI_"))
            text += "KEYWORD \"" + field + "\"\n";
    }
    text += "NUMBER_OF_FIELDS " + std::to_string(fields.size()) + "\nBEGIN_DATA_FORMAT\n";
    for (size_t i = 0; i < fields.size(); ++i)
        text += (i > 0 ? " " : "") + fields[i];
    text += "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(count_) + "\nBEGIN_DATA\n";
}

void TextWriter::appendDevice(std::string &text, const TAVICOMBOCOLOUR &patch) const
{
    const uint32_t values = hasDevice(patch) ? patch.device_count : 0;
    if (!same_device_) {
        text += ' ';
        text += values > 0 ? cgatsModelText(patch.device_model) : CgatsOwnColumns::none;
    }
    for (uint32_t i = 0; i < most_values_; ++i) {
        text += ' ';
        if (i < values)
            appendFloat(text, deviceValue(patch, i));
        else
            text += CgatsOwnColumns::none;
    }
}

void TextWriter::appendOwn(std::string &text, const TAVICOMBOCOLOUR &patch) const
{
    if (marks_)
        text += ' ' + cgatsMarksText(patch.flags);
    if (!tolerances_)
        return;
    for (const double tolerance :
         {DECODE_DELTA_E_TOLERANCE(&patch), DECODE_DELTA_H_TOLERANCE(&patch), DECODE_DELTA_C_TOLERANCE(&patch)}) {
        text += ' ';
        if (std::isfinite(tolerance) && calcheckHasOwnTolerances(&patch))
            append(text, tolerance);
        else
            text += CgatsOwnColumns::none;
    }
}

std::string TextWriter::write()
{
    std::vector<std::string> fields = {"SAMPLE_ID", "SAMPLE_NAME"};
    for (const std::string &field : deviceFields())
        fields.push_back(field);
    for (const char *field : {"LAB_L", "LAB_A", "LAB_B"})
        fields.emplace_back(field);
    if (marks_)
        fields.emplace_back(CgatsOwnColumns::marks_name);
    if (tolerances_)
        fields.insert(fields.end(), std::begin(CgatsOwnColumns::tolerance_names),
                      std::end(CgatsOwnColumns::tolerance_names));
    std::string text;
    appendHeader(text, fields);
    size_t number = 0;
    for (const TAVICOMBOCOLOUR *patch = patches_; patch; patch = NextInList(patch)) {
        append(text, ++number);
        text += ' ';
        appendQuoted(text, patch->name, CgatsLimits().cell_length);
        appendDevice(text, *patch);
        for (const double value : {patch->L, patch->a, patch->b}) {
            text += ' ';
            append(text, value);
        }
        appendOwn(text, *patch);
        text += '\n';
    }
    return text + "END_DATA\n";
}

} // namespace

std::string iso12642Text(const TAVICOMBOCOLOUR *patches, const SPECTROPHOTOMETERINFO *instrument, std::string &error)
{
    TextWriter writer(patches, instrument);
    error = writer.look();
    return error.empty() ? writer.write() : std::string();
}
