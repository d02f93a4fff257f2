// SPDX-License-Identifier: MIT
#include "tests/support/logrecorder.h"

#include "tavilib/tavilog.h"

#include <cstdlib>

namespace {

LogRecorder *current = nullptr;
QtMessageHandler former_handler = nullptr;

void recordQtMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        LogError("qt", context.category, text.toUtf8().constData());
        return;
    }
    if (former_handler)
        former_handler(type, context, text);
}

} // namespace

void recordTaviLine(void *context, const TaviLogLine &line)
{
    static_cast<LogRecorder *>(context)->record(line.kind, QString::fromUtf8(line.unit) + QLatin1String(": ")
                                                               + QString::fromUtf8(line.function)
                                                               + QLatin1String(": ") + QString::fromUtf8(line.text));
}

LogRecorder::LogRecorder()
{
    Q_ASSERT(!current);
    current = this;
    TaviLogSetSink(recordTaviLine, this);
    former_handler = qInstallMessageHandler(recordQtMessage);
}

LogRecorder::~LogRecorder()
{
    qInstallMessageHandler(former_handler);
    TaviLogSetSink(nullptr, nullptr);
    current = nullptr;
}

void LogRecorder::expect(const QString &part, int count)
{
    const std::scoped_lock lock(mutex_);
    expected_.push_back({part, count});
}

void LogRecorder::allow(const QString &part)
{
    const std::scoped_lock lock(mutex_);
    allowed_.append(part);
}

QStringList LogRecorder::lines() const
{
    const std::scoped_lock lock(mutex_);
    return lines_;
}

QVector<int> LogRecorder::kinds() const
{
    const std::scoped_lock lock(mutex_);
    return kinds_;
}

int LogRecorder::count(const QString &part) const
{
    const std::scoped_lock lock(mutex_);
    int found = 0;
    for (const QString &line : lines_)
        found += line.contains(part);
    return found;
}

void LogRecorder::record(int kind, const QString &line)
{
    const std::scoped_lock lock(mutex_);
    lines_.append(line);
    kinds_.append(kind);
}

QStringList LogRecorder::takeProblems()
{
    const std::scoped_lock lock(mutex_);
    QStringList problems;
    for (const QString &line : std::as_const(lines_)) {
        bool known = false;
        for (Expected &expected : expected_) {
            if (expected.left > 0 && line.contains(expected.part)) {
                --expected.left;
                known = true;
                break;
            }
        }
        for (const QString &part : std::as_const(allowed_))
            known = known || line.contains(part);
        if (!known)
            problems.append(QStringLiteral("unexpected log line \"%1\"").arg(line));
    }
    for (const Expected &expected : expected_) {
        if (expected.left > 0)
            problems.append(QStringLiteral("%1 expected log line(s) with \"%2\" did not come")
                                .arg(expected.left)
                                .arg(expected.part));
    }
    lines_.clear();
    kinds_.clear();
    expected_.clear();
    allowed_.clear();
    return problems;
}
