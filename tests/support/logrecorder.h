// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_LOGRECORDER_H
#define TESTS_SUPPORT_LOGRECORDER_H

#include <QString>
#include <QStringList>
#include <QVector>

#include <mutex>
#include <vector>

/// Records every line of the library's log and every warning of Qt while it lives, and compares them with what was
/// declared to be expected. One object at a time; lines may come from any thread.
class LogRecorder
{
public:
    LogRecorder();
    ~LogRecorder();
    LogRecorder(const LogRecorder &) = delete;
    LogRecorder &operator=(const LogRecorder &) = delete;

    /// Declares that a line holding @a part will come, @a count times.
    void expect(const QString &part, int count = 1);
    /// Declares that lines holding @a part may come, any number of times.
    void allow(const QString &part);

    /// Lines "unit: function: text" (of Qt: "qt: category: text") in the order they came.
    QStringList lines() const;
    /// Of each of lines() its kind, TAVILOG_ERROR or TAVILOG_PLUGIN; what Qt says is an error.
    QVector<int> kinds() const;
    /// How many recorded lines hold @a part.
    int count(const QString &part) const;

    /// What is wrong: lines that nobody expected, and expected lines that did not come. Empty if all is well.
    /// Forgets everything recorded and expected.
    QStringList takeProblems();

private:
    struct Expected {
        QString part;
        int left;
    };
    friend void recordTaviLine(void *, const struct TaviLogLine &);
    void record(int kind, const QString &line);

    mutable std::mutex mutex_;
    QStringList lines_;
    QVector<int> kinds_; // which, like the lines, needs no operator new: tests make that fail
    std::vector<Expected> expected_;
    QStringList allowed_;
};

#endif
