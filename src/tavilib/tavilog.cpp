// SPDX-License-Identifier: MIT
#include "tavilib/tavilog.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <new>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace {

std::mutex sink_mutex;
/// Held for a line on standard error, because a long one takes several writes.
std::mutex line_mutex;
TaviLogSink current_sink = nullptr;
void *current_context = nullptr;
/// A sink that logs must not take its own lock again.
thread_local bool inside_sink = false;

const char *orEmpty(const char *text)
{
    return text ? text : "";
}

/// Keeps a closed pipe at standard error from ending the program while it lives.
class NoPipeSignal
{
public:
    NoPipeSignal()
    {
        sigset_t pending;
        sigemptyset(&pending);
        sigpending(&pending);
        was_pending_ = sigismember(&pending, SIGPIPE) == 1;
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &pipe_, &former_);
    }
    ~NoPipeSignal()
    {
        const timespec at_once = {};
        if (raised_ && !was_pending_)
            sigtimedwait(&pipe_, nullptr, &at_once);
        pthread_sigmask(SIG_SETMASK, &former_, nullptr);
    }
    NoPipeSignal(const NoPipeSignal &) = delete;
    NoPipeSignal &operator=(const NoPipeSignal &) = delete;
    void setRaised() { raised_ = true; }

private:
    sigset_t pipe_;
    sigset_t former_;
    bool was_pending_ = false;
    bool raised_ = false;
};

/// One line on its way to standard error. It needs no memory but its own, so that it is written even when there is
/// none, and a line that fits is one write, so that those of several programs stay whole too.
class StandardErrorLine
{
public:
    StandardErrorLine() : lock_(line_mutex) {}
    ~StandardErrorLine()
    {
        add('\n');
        flush();
    }
    StandardErrorLine(const StandardErrorLine &) = delete;
    StandardErrorLine &operator=(const StandardErrorLine &) = delete;

    void addEscaped(const char *text)
    {
        constexpr const char digits[] = "0123456789abcdef";
        for (; *text; ++text) {
            const auto byte = static_cast<unsigned char>(*text);
            if (byte == '\n') {
                addPlain("\\n");
            } else if (byte == '\r') {
                addPlain("\\r");
            } else if ((byte < 0x20 && byte != '\t') || byte == 0x7f) {
                addPlain("\\x");
                add(digits[byte >> 4]);
                add(digits[byte & 0xf]);
            } else {
                add(*text);
            }
        }
    }
    void addPlain(const char *text)
    {
        for (; *text; ++text)
            add(*text);
    }

private:
    void add(char c)
    {
        if (used_ == sizeof bytes_)
            flush();
        bytes_[used_++] = c;
    }
    void flush()
    {
        const char *rest = bytes_;
        while (used_ > 0 && !broken_) {
            const ssize_t written = ::write(STDERR_FILENO, rest, used_);
            if (written >= 0) {
                rest += written;
                used_ -= static_cast<size_t>(written);
            } else if (errno == EAGAIN) {
                pollfd wait = {STDERR_FILENO, POLLOUT, 0};
                ::poll(&wait, 1, -1);
            } else if (errno != EINTR) {
                // Nobody listens: a log line is not worth a failure.
                broken_ = true;
                if (errno == EPIPE)
                    signal_.setRaised();
            }
        }
        used_ = 0;
    }

    std::scoped_lock<std::mutex> lock_;
    NoPipeSignal signal_;
    bool broken_ = false;
    size_t used_ = 0;
    char bytes_[PIPE_BUF];
};

void writeToStandardError(const TaviLogLine &entry)
{
    StandardErrorLine line;
    for (const char *part : {entry.unit, entry.function}) {
        if (*part) {
            line.addEscaped(part);
            line.addPlain(": ");
        }
    }
    line.addEscaped(entry.text);
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
    format = orEmpty(format);
    char buffer[1024];
    std::string longer;
    const char *text = buffer;
    va_list arguments;
    va_start(arguments, format);
    if (form == TAVILOG_FORM_ALLOCATION) {
        std::snprintf(buffer, sizeof buffer, "Cannot allocate %d bytes", va_arg(arguments, int));
    } else {
        va_list again;
        va_copy(again, arguments);
        const int length = std::vsnprintf(buffer, sizeof buffer, format, arguments);
        if (length < 0) {
            text = format; // it cannot be formatted
        } else if (static_cast<size_t>(length) >= sizeof buffer) {
            try {
                longer.resize(static_cast<size_t>(length));
                std::vsnprintf(longer.data(), longer.size() + 1, format, again);
                text = longer.c_str();
            } catch (const std::bad_alloc &) {
                // The beginning has to do.
            }
        }
        va_end(again);
    }
    va_end(arguments);
    deliver({kind, orEmpty(unit), orEmpty(function), text});
}

void TaviLogAllocationFailure(const char *unit, const char *function, size_t bytes)
{
    const int number = bytes > INT_MAX ? INT_MAX : static_cast<int>(bytes);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-zero-length" // the documented form
    TaviLogMessage(unit, function, TAVILOG_ERROR, TAVILOG_FORM_ALLOCATION, 1, "", number);
#pragma GCC diagnostic pop
}

void LogError(const char *unit, const char *function, const char *text)
{
    deliver({TAVILOG_ERROR, orEmpty(unit), orEmpty(function), orEmpty(text)});
}
