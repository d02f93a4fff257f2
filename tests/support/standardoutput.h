// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_STANDARDOUTPUT_H
#define TESTS_SUPPORT_STANDARDOUTPUT_H

#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

/// What is written to standard output while this lives.
class StandardOutput
{
public:
    StandardOutput()
    {
        if (!file_.open())
            qFatal("no temporary file");
        std::fflush(stdout);
        before_ = dup(1);
        dup2(file_.handle(), 1);
    }
    ~StandardOutput() { restore(); }
    StandardOutput(const StandardOutput &) = delete;
    StandardOutput &operator=(const StandardOutput &) = delete;
    QString text()
    {
        restore();
        file_.seek(0);
        return QString::fromUtf8(file_.readAll());
    }

private:
    void restore()
    {
        if (before_ < 0)
            return;
        std::fflush(stdout);
        dup2(before_, 1);
        close(before_);
        before_ = -1;
    }

    QTemporaryFile file_;
    int before_ = -1;
};

#endif
