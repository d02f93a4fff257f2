// SPDX-License-Identifier: MIT
#ifndef TESTS_TAVILIB_STANDARDERROR_H
#define TESTS_TAVILIB_STANDARDERROR_H

#include <QtGlobal>

#include <fcntl.h>
#include <string>
#include <thread>
#include <unistd.h>

/// Takes what is written to standard error, through a pipe, until text() is asked.
class StandardError
{
public:
    StandardError()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            qFatal("no pipe");
        former_ = dup(STDERR_FILENO);
        dup2(ends[1], STDERR_FILENO);
        ::close(ends[1]);
        reader_ = std::thread([this, from = ends[0]] {
            char bytes[4096];
            for (ssize_t got = 0; (got = ::read(from, bytes, sizeof bytes)) > 0;)
                text_.append(bytes, size_t(got));
            ::close(from);
        });
    }
    ~StandardError() { restore(); }
    StandardError(const StandardError &) = delete;
    StandardError &operator=(const StandardError &) = delete;

    const std::string &text()
    {
        restore();
        return text_;
    }

private:
    void restore()
    {
        if (former_ < 0)
            return;
        dup2(former_, STDERR_FILENO);
        ::close(former_);
        former_ = -1;
        reader_.join();
    }

    int former_ = -1;
    std::string text_;
    std::thread reader_;
};

#endif
