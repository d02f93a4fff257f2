// SPDX-License-Identifier: MIT
#include "tavilib/calcheckcriteria.h"

#include "tavilib/calcheckfigures_p.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <charconv>
#include <cmath>
#include <memory>

namespace {

struct FreeCriteria {
    void operator()(CALCHECKCRITERIA *criteria) const { TaviPacketFreeItem(criteria, TAVIPACKET_CALCHECKCRITERIA); }
};

constexpr size_t longest_line = 1000;

std::string_view trimmed(std::string_view text)
{
    constexpr const char *blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// A piece of the file fit to stand in a one-line message.
std::string quoted(std::string_view text)
{
    std::string shown("'");
    for (const char c : text.substr(0, 40))
        shown += static_cast<unsigned char>(c) < 0x20 || c == 0x7f ? ' ' : c;
    shown += text.size() > 40 ? "...'" : "'";
    return shown;
}

bool isName(std::string_view text)
{
    constexpr const char *allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
    return !text.empty() && text.front() != '.' && text.find_first_not_of(allowed) == std::string_view::npos;
}

/// Reads one file line by line. Each function that returns a text returns a reason to refuse the file, or nothing.
class CriteriaReader
{
public:
    std::string readLine(std::string_view line);
    std::string complete();
    CALCHECKCRITERIA *take() { return criteria_.release(); }
    bool start()
    {
        criteria_.reset(TaviAllocRecord<CALCHECKCRITERIA>());
        return criteria_ != nullptr;
    }

private:
    std::string setText(char *&field, std::string_view key, std::string_view value);
    std::string setFormula(std::string_view value);
    std::string setLimit(std::string_view key, std::string_view value);
    CALCHECKLIMITS *limitsOf(std::string_view delta);

    std::unique_ptr<CALCHECKCRITERIA, FreeCriteria> criteria_;
    bool has_formula_ = false;
    bool has_source_ = false;
};

std::string CriteriaReader::readLine(std::string_view line)
{
    if (line.size() > longest_line)
        return "the line is longer than " + std::to_string(longest_line) + " bytes";
    if (line.find('\0') != std::string_view::npos)
        return "there is a zero byte; this is no text file";
    line = trimmed(line);
    if (line.empty() || line.front() == '#')
        return {};
    const size_t sign = line.find('=');
    if (sign == std::string_view::npos)
        return quoted(line) + " is no 'key = value'";
    const std::string_view key = trimmed(line.substr(0, sign));
    const std::string_view value = trimmed(line.substr(sign + 1));
    if (value.empty())
        return quoted(key) + " has no value";
    if (key == "name") {
        if (!isName(value))
            return "the name " + quoted(value) + " has other characters than letters, digits, '.', '_' and '-'";
        return setText(criteria_->name, key, value);
    }
    if (key == "standard")
        return setText(criteria_->standard, key, value);
    if (key == "edition")
        return setText(criteria_->edition, key, value);
    if (key == "source") {
        if (has_source_)
            return quoted(key) + " stands there twice";
        has_source_ = true;
        return {};
    }
    if (key == "formula")
        return setFormula(value);
    return setLimit(key, value);
}

std::string CriteriaReader::setText(char *&field, std::string_view key, std::string_view value)
{
    if (field)
        return quoted(key) + " stands there twice";
    field = AllocateAndCopyStringConst(std::string(value).c_str());
    return field ? std::string() : std::string("out of memory");
}

std::string CriteriaReader::setFormula(std::string_view value)
{
    if (has_formula_)
        return "'formula' stands there twice";
    has_formula_ = true;
    if (value == "CIE76")
        criteria_->delta_e_type = DELTAE_CIE76;
    else if (value == "CIE94")
        criteria_->delta_e_type = DELTAE_CIE94;
    else if (value == "CIE2000")
        criteria_->delta_e_type = DELTAE_CIE2000;
    else
        return "the formula " + quoted(value) + " is none of CIE76, CIE94 and CIE2000";
    return {};
}

CALCHECKLIMITS *CriteriaReader::limitsOf(std::string_view delta)
{
    if (delta == "delta_e")
        return &criteria_->delta_e;
    if (delta == "delta_h")
        return &criteria_->delta_h;
    return delta == "delta_c" ? &criteria_->delta_c : nullptr;
}

std::string CriteriaReader::setLimit(std::string_view key, std::string_view value)
{
    const size_t point = key.find('.');
    CALCHECKLIMITS *limits = limitsOf(key.substr(0, point));
    if (!limits || point == std::string_view::npos)
        return "the key " + quoted(key) + " is not known";
    for (const CalcheckFigure &figure : calcheck_figures) {
        if (key.substr(point + 1) != figure.name)
            continue;
        if (limits->limited & figure.bit)
            return quoted(key) + " stands there twice";
        double number = -1.0;
        const auto result = std::from_chars(value.data(), value.data() + value.size(), number);
        if (result.ec != std::errc() || result.ptr != value.data() + value.size())
            return "the limit " + quoted(value) + " is no number with a decimal point";
        if (!(number >= 0.0 && number <= 65.534))
            return "the limit " + quoted(value) + " is outside of 0 to 65.534";
        if (std::abs(number * 1000 - std::round(number * 1000)) > 1e-6)
            return "the limit " + quoted(value) + " has more than three decimals";
        limits->limited |= figure.bit;
        limits->*figure.limit = number;
        return {};
    }
    return "the key " + quoted(key) + " is not known";
}

std::string CriteriaReader::complete()
{
    if (!criteria_->name)
        return "there is no 'name'";
    if (!has_formula_)
        return "there is no 'formula'";
    if (!(criteria_->delta_e.limited | criteria_->delta_h.limited | criteria_->delta_c.limited))
        return "there are no limits";
    return {};
}

} // namespace

CALCHECKCRITERIA *calcheckParseCriteria(std::string_view text, const std::string &path, std::string &error)
{
    error.clear();
    CriteriaReader reader;
    if (!reader.start()) {
        error = path + ": out of memory";
        return nullptr;
    }
    if (text.starts_with("\xef\xbb\xbf"))
        text.remove_prefix(3);
    for (size_t number = 1; !text.empty(); ++number) {
        const size_t end = text.find('\n');
        const std::string reason = reader.readLine(text.substr(0, end));
        if (!reason.empty()) {
            error = path + ':' + std::to_string(number) + ": " + reason;
            return nullptr;
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    const std::string reason = reader.complete();
    if (!reason.empty()) {
        error = path + ": " + reason;
        return nullptr;
    }
    return reader.take();
}
