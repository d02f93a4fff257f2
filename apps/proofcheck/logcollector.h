// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_LOGCOLLECTOR_H
#define PROOFCHECK_LOGCOLLECTOR_H

#include <QMutex>
#include <QStringList>

struct TaviLogLine;

/// Keeps the texts of the library's log while it lives, in place of standard error. One object at a time; lines come
/// from any thread.
class LogCollector
{
public:
    LogCollector();
    ~LogCollector();
    LogCollector(const LogCollector &) = delete;
    LogCollector &operator=(const LogCollector &) = delete;

    /// What was logged since the last call, one line each.
    QStringList takeTexts();

private:
    static void collect(void *context, const TaviLogLine &line);

    QMutex mutex_;
    QStringList texts_;
};

#endif
