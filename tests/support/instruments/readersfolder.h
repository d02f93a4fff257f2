// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_INSTRUMENTS_READERSFOLDER_H
#define TESTS_SUPPORT_INSTRUMENTS_READERSFOLDER_H

#include "tests/support/instruments/scriptedplugin.h"

#include <QString>
#include <QTemporaryDir>

#include <vector>

/// A plug-in directory of a test's own: makes a temporary folder the working directory and puts plug-ins into its
/// "readers". The list of instruments is made anew for each, and forgotten at the end.
class ReadersFolder
{
public:
    /// With @a directory, the plug-in folder relative to the working directory; empty makes none.
    explicit ReadersFolder(const QString &directory = QStringLiteral("readers"));
    ~ReadersFolder();
    ReadersFolder(const ReadersFolder &) = delete;
    ReadersFolder &operator=(const ReadersFolder &) = delete;

    /// Copies a built test plug-in in ("scripted", "scripted_without_Open") under @a file_name and returns its state,
    /// which stays as long as the folder.
    ScriptedPlugin *add(const QString &plugin, const QString &file_name);
    /// Copies any shared object in and leaves it to others to load it.
    void addUnloaded(const QString &shared_object, const QString &file_name);
    /// Writes a file of other content.
    void addFile(const QString &file_name, const QByteArray &content);
    /// The absolute path of the plug-in folder.
    QString path() const { return path_; }
    /// Lets the next list of instruments be made anew.
    static void forgetInstruments();

private:
    QTemporaryDir folder_;
    QString former_directory_;
    QString path_;
    std::vector<void *> held_;
};

#endif
