// SPDX-License-Identifier: MIT
#include "gallery/gallerywindow.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("gallery"));
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows every widget of the library on a page of its own.");
    const QCommandLineOption screenshots("screenshots", "Save a picture of each page and end.", "folder");
    parser.addOption(screenshots);
    parser.addHelpOption();
    parser.process(application);

    if (parser.isSet(screenshots)) {
        const QString error = saveGalleryPictures(parser.value(screenshots));
        if (!error.isEmpty())
            std::fprintf(stderr, "gallery: %s\n", error.toLocal8Bit().constData());
        return error.isEmpty() ? 0 : 1;
    }
    GalleryWindow window;
    window.show();
    return QApplication::exec();
}
