// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_OPTIONS_H
#define PROOFCHECK_OPTIONS_H

#include <QString>
#include <QStringList>

/// What the command line asks for.
struct Options {
    bool batch = false;
    QString instrument; ///< Display name, as the combo shows it.
    QString measure;    ///< The file to measure, or the chart to measure with a device; absolute.
    QString out;        ///< Where the measured list goes; absolute.
    QString screenshot; ///< Where a picture of the window goes; absolute, or empty for none.
    QString settings;   ///< The settings file; empty for the user's own.
    int timeout_s = 60; ///< How long the instrument may be silent.

    bool show_help = false;
    bool show_version = false;
    QString error; ///< One line; empty if the command line is good.
};

/// Reads the arguments (without the program's name). Paths become absolute by the current folder.
Options parseOptions(const QStringList &arguments);

/// The text of --help.
QString helpText();

#endif
