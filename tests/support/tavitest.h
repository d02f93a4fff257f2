// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_TAVITEST_H
#define TESTS_SUPPORT_TAVITEST_H

#include "tests/support/logrecorder.h"

#include <QApplication>
#include <QtTest>

#include <memory>

/// Base of every test class: an unexpected line in the log, or an expected one that stays away, fails the test
/// function in which it happens. A class with an init() or cleanup() of its own calls these.
class TaviTest : public QObject
{
    Q_OBJECT

public:
    /// Declares a log line that holds @a part.
    void expectLog(const QString &part, int count = 1) { recorder().expect(part, count); }
    /// Lines holding @a part may come or not.
    void allowLog(const QString &part) { recorder().allow(part); }
    LogRecorder &recorder() const { return *recorder_; }

    /// The path of a file in tests/data.
    static QString dataFile(const QString &name);

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<LogRecorder> recorder_;
};

/// The program of a test. Without a display's need (GUI false) it runs on no platform plug-in at all.
template <typename Test>
int taviTestMain(int argc, char **argv, bool gui)
{
    std::unique_ptr<QCoreApplication> application;
    if (gui)
        application = std::make_unique<QApplication>(argc, argv);
    else
        application = std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication::setApplicationName(QString::fromLatin1(Test::staticMetaObject.className()));
    Test test;
    return QTest::qExec(&test, argc, argv);
}

#define TAVI_TEST_MAIN(Test)                                                                                         \
    int main(int argc, char **argv)                                                                                  \
    {                                                                                                                \
        return taviTestMain<Test>(argc, argv, false);                                                                \
    }
#define TAVI_GUI_TEST_MAIN(Test)                                                                                     \
    int main(int argc, char **argv)                                                                                  \
    {                                                                                                                \
        return taviTestMain<Test>(argc, argv, true);                                                                 \
    }

#endif
