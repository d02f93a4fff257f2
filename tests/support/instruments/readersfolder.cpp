// SPDX-License-Identifier: MIT
#include "tests/support/instruments/readersfolder.h"

#include "instruments/orloinstrument.h"
#include "tavilib/tavidll.h"

#include <QDir>
#include <QFile>

ReadersFolder::ReadersFolder(const QString &directory) : former_directory_(QDir::currentPath())
{
    // One folder down, so that "../readers" is a place of this test's own.
    QDir(folder_.path()).mkpath("working");
    QDir::setCurrent(folder_.path() + "/working");
    path_ = QDir::cleanPath(QDir::current().absoluteFilePath(directory));
    if (!directory.isEmpty())
        QDir().mkpath(path_);
    forgetInstruments();
}

ReadersFolder::~ReadersFolder()
{
    for (void *library : held_)
        TaviDllClose(library);
    QDir::setCurrent(former_directory_);
    forgetInstruments(); // with a folder that can be listed whatever the test made of its own
}

ScriptedPlugin *ReadersFolder::add(const QString &plugin, const QString &file_name)
{
    addUnloaded(QStringLiteral(TEST_PLUGIN_FOLDER "/") + plugin + ".so", file_name);
    void *library = TaviDllOpen((path_ + "/" + file_name).toUtf8().constData());
    if (!library)
        qFatal("cannot load the test plug-in: %s", TaviDllError());
    held_.push_back(library);
    const auto state = reinterpret_cast<ScriptedPlugin *(*)()>(TaviDllGetProcAddress(library, "scripted_plugin"));
    return state();
}

void ReadersFolder::addUnloaded(const QString &shared_object, const QString &file_name)
{
    if (!QFile::copy(shared_object, path_ + "/" + file_name))
        qFatal("cannot copy the plug-in %s", qPrintable(shared_object));
}

void ReadersFolder::addFile(const QString &file_name, const QByteArray &content)
{
    QFile file(path_ + "/" + file_name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file_name));
}

void ReadersFolder::forgetInstruments()
{
    SPECTROPHOTOMETERINFO *list = OrloInstrument::getInstrumentList();
    OrloInstrument::freeInstrumentList(&list);
}
