// SPDX-License-Identifier: MIT
#include "instruments/instrumentmessage_p.h"

#include "instruments/spectrostringkit.h"
#include "tavilib/tavialloc_p.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

constexpr size_t first_size = 128;

/// Walks through the arguments that a printf format takes.
class FormatArguments
{
public:
    explicit FormatArguments(std::string_view format) : rest_(format) {}

    /// What the next argument must be: "*" for a width or a precision, else length modifier and conversion letter,
    /// such as "lu". Something that is no placeholder of the C language comes as the whole text from its percent sign
    /// on, so that it equals itself only. Empty when there is no more.
    std::string_view next()
    {
        while (!inside_) {
            const size_t percent = rest_.find('%');
            if (percent == std::string_view::npos)
                return {};
            placeholder_ = rest_.substr(percent);
            rest_.remove_prefix(percent + 1);
            if (rest_.starts_with('%')) {
                rest_.remove_prefix(1);
                continue;
            }
            skip("-+ #0'I");
            inside_ = true;
        }
        // Between the flags and the conversion: width, then precision, each digits or a star.
        for (;;) {
            skip("0123456789.");
            if (!rest_.starts_with('*'))
                break;
            rest_.remove_prefix(1);
            return "*";
        }
        inside_ = false;
        const std::string_view from_modifier = rest_;
        skip("hlqjzZtL");
        if (rest_.empty() || !std::strchr("diouxXeEfFgGaAcsCSpnm", rest_.front())) {
            rest_ = {};
            return placeholder_;
        }
        rest_.remove_prefix(1);
        return from_modifier.substr(0, from_modifier.size() - rest_.size());
    }

private:
    void skip(std::string_view characters)
    {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(characters), rest_.size()));
    }

    std::string_view rest_;
    std::string_view placeholder_;
    bool inside_ = false;
};

/// A buffer that is given back unless it is taken.
class MallocedText
{
public:
    MallocedText() = default;
    MallocedText(const MallocedText &) = delete;
    MallocedText &operator=(const MallocedText &) = delete;
    ~MallocedText() { std::free(text_); }

    bool grow(size_t size)
    {
        auto *grown = static_cast<char *>(TaviRealloc(text_, size));
        if (!grown)
            return false;
        text_ = grown;
        return true;
    }
    char *data() const { return text_; }
    char *take() { return std::exchange(text_, nullptr); }

private:
    char *text_ = nullptr;
};

} // namespace

bool formatsTakeSameArguments(const char *a, const char *b)
{
    FormatArguments arguments_of_a(a ? a : "");
    FormatArguments arguments_of_b(b ? b : "");
    for (;;) {
        const std::string_view argument = arguments_of_a.next();
        if (argument != arguments_of_b.next())
            return false;
        if (argument.empty())
            return true;
    }
}

char *formatInstrumentMessage(const char *format, va_list arguments)
{
    if (!format)
        format = "";
    const QByteArray translated = SpectroStringKit::getSpectroQString(format).toUtf8();
    const char *used = formatsTakeSameArguments(format, translated.constData()) ? translated.constData() : format;

    MallocedText text;
    for (size_t size = first_size; text.grow(size); size *= 2) {
        va_list again;
        va_copy(again, arguments);
        const int length = std::vsnprintf(text.data(), size, used, again);
        va_end(again);
        if (length >= 0 && static_cast<size_t>(length) < size)
            return text.take();
        if (length < 0) {
            const size_t needed = std::strlen(used) + 1;
            if (needed > size && !text.grow(needed))
                break;
            std::memcpy(text.data(), used, needed);
            return text.take();
        }
    }
    return nullptr;
}
