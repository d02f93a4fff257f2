// SPDX-License-Identifier: MIT
#include "proofcheck/options.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace {

QString absolute(const QString &path)
{
    return path.isEmpty() ? path : QFileInfo(path).absoluteFilePath();
}

QCommandLineParser &addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription("Measures with an instrument or plays a measurement file back.\n\n"
                                     "Without --batch the window opens. With it one measurement runs and the program "
                                     "ends with status 0 (measured),\n"
                                     "2 (unusable arguments or input) or 3 (the instrument failed).");
    parser.addOptions({
        {"batch", "Measure once, without a user."},
        {"instrument", "The instrument, as the window's list names it.", "name"},
        {"measure", "The file to play back; for a device, the chart to measure.", "file"},
        {"out", "Where the measured list goes: name, L, a and b, separated by tabs.", "file"},
        {"screenshot", "Where a picture of the window goes (batch only).", "png"},
        {"settings", "The settings file, in place of the user's own.", "file"},
        {"timeout", "How long the instrument may be silent (batch only; default 60).", "seconds"},
    });
    parser.addHelpOption();
    parser.addVersionOption();
    return parser;
}

} // namespace

Options parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    Options options;
    if (!parser.parse(QStringList{"proofcheck"} + arguments)) {
        options.error = parser.errorText();
        return options;
    }
    options.show_help = parser.isSet("help");
    options.show_version = parser.isSet("version");
    options.batch = parser.isSet("batch");
    options.instrument = parser.value("instrument");
    options.measure = absolute(parser.value("measure"));
    options.out = absolute(parser.value("out"));
    options.screenshot = absolute(parser.value("screenshot"));
    options.settings = absolute(parser.value("settings"));
    if (options.show_help || options.show_version)
        return options;

    if (!parser.positionalArguments().isEmpty()) {
        options.error = QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().first());
        return options;
    }
    if (parser.isSet("timeout")) {
        bool is_number = false;
        options.timeout_s = parser.value("timeout").toInt(&is_number);
        if (!is_number || options.timeout_s < 1 || options.timeout_s > 86400)
            options.error = QStringLiteral("--timeout is '%1'; it takes whole seconds from 1 to 86400")
                                .arg(parser.value("timeout"));
    }
    const char *const batch_options[] = {"instrument", "measure", "out"};
    for (const char *name : batch_options) {
        if (options.error.isEmpty() && options.batch && parser.value(name).isEmpty())
            options.error = QStringLiteral("--batch needs --%1").arg(name);
    }
    for (const char *name : {"instrument", "measure", "out", "screenshot", "timeout"}) {
        if (options.error.isEmpty() && !options.batch && parser.isSet(name))
            options.error = QStringLiteral("--%1 goes with --batch").arg(name);
    }
    return options;
}

QString helpText()
{
    QCommandLineParser parser;
    return addOptions(parser).helpText();
}
