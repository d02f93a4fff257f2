// SPDX-License-Identifier: MIT
#ifndef TESTS_INSTRUMENTS_MESSAGETRANSLATOR_H
#define TESTS_INSTRUMENTS_MESSAGETRANSLATOR_H

#include <QCoreApplication>
#include <QHash>
#include <QTranslator>

/// A translator whose catalogue is written down in the test. Installed while it lives. Fill it before other threads
/// look things up.
class MessageTranslator : public QTranslator
{
public:
    MessageTranslator() { QCoreApplication::installTranslator(this); }
    ~MessageTranslator() override { QCoreApplication::removeTranslator(this); }

    /// Sets the translation of @a text in @a context.
    void set(const char *context, const char *text, const QString &translation)
    {
        texts_.insert({context, text}, translation);
    }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return texts_.value({context, text});
    }
    bool isEmpty() const override { return false; }

private:
    QHash<QPair<QByteArray, QByteArray>, QString> texts_;
};

#endif
