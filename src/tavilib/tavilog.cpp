// SPDX-License-Identifier: MIT
#include "tavilib/tavilog.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <new>
#include <string>
#include <unistd.h>

namespace {

std::mutex sink_mutex;
TaviLogSink current_sink = nullptr;
void *current_context = nullptr;
/// A sink that logs must not take its own lock again.
thread_local bool inside_sink = false;

const char *orEmpty(const char *text)
{
    return text ? text : "";
}

void appendEscaped(std::string &line, const char *text)
{
    for (const char *c = text; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        if (byte == '\n') {
            line += "\\n";
        } else if (byte == '\r') {
            line += "\\r";
        } else if (byte == '\t') {
            line += '\t';
        } else if (byte < 0x20 || byte == 0x7f) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02x", byte);
            line += escape;
        } else {
            line += *c;
        }
    }
}

void writeToStandardError(const TaviLogLine &entry)
{
    std::string line;
    for (const char *part : {entry.unit, entry.function}) {
        if (*part) {
            appendEscaped(line, part);
            line += ": ";
        }
    }
    appendEscaped(line, entry.text);
    line += '\n';
    const char *rest = line.data();
    size_t left = line.size();
    while (left > 0) {
        const ssize_t written = ::write(STDERR_FILENO, rest, left);
        if (written < 0) {
            if (errno == EINTR)
                continue;
            return; // nobody listens: a log line is not worth a failure
        }
        rest += written;
        left -= static_cast<size_t>(written);
    }
}

void deliver(const TaviLogLine &line)
{
    if (!inside_sink) {
        const std::scoped_lock lock(sink_mutex);
        if (current_sink) {
            inside_sink = true;
            current_sink(current_context, line);
            inside_sink = false;
            return;
        }
    }
    writeToStandardError(line);
}

/// The formatted text; the format itself where it cannot be formatted.
std::string formatted(const char *format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0)
        return format;
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

} // namespace

void TaviLogSetSink(TaviLogSink sink, void *context)
{
    const std::scoped_lock lock(sink_mutex);
    current_sink = sink;
    current_context = context;
}

void TaviLogMessage(const char *unit, const char *function, int kind, int form, int /*target*/, const char *format,
                    ...)
{
    va_list arguments;
    va_start(arguments, format);
    try {
        std::string text;
        if (form == TAVILOG_FORM_ALLOCATION)
            text = "Cannot allocate " + std::to_string(va_arg(arguments, int)) + " bytes";
        else
            text = formatted(orEmpty(format), arguments);
        deliver({kind, orEmpty(unit), orEmpty(function), text.c_str()});
    } catch (const std::bad_alloc &) {
        deliver({kind, orEmpty(unit), orEmpty(function), orEmpty(format)});
    }
    va_end(arguments);
}

void LogError(const char *unit, const char *function, const char *text)
{
    deliver({TAVILOG_ERROR, orEmpty(unit), orEmpty(function), orEmpty(text)});
}
