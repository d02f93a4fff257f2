// SPDX-License-Identifier: MIT
#include "proofcheck/logcollector.h"

#include "tavilib/tavilog.h"

#include <utility>

LogCollector::LogCollector()
{
    TaviLogSetSink(collect, this);
}

LogCollector::~LogCollector()
{
    TaviLogSetSink(nullptr, nullptr);
}

QStringList LogCollector::takeTexts()
{
    const QMutexLocker lock(&mutex_);
    return std::exchange(texts_, {});
}

void LogCollector::collect(void *context, const TaviLogLine &line)
{
    auto *self = static_cast<LogCollector *>(context);
    const QMutexLocker lock(&self->mutex_);
    self->texts_.append(QString::fromUtf8(line.text).simplified());
}
