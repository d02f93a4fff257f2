// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "proofcheck/batchrun.h"
#include "proofcheck/mainwindow.h"
#include "proofcheck/options.h"
#include "proofcheck/standarderror.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>

namespace {

/// Plug-ins are found relative to the working directory. Where that has none, those that came with the program are
/// taken.
void goToInstruments()
{
    const QString found = QString::fromStdString(OrloInstrument::instrumentDirectory());
    if (!QFileInfo::exists(found) && QFileInfo::exists(QCoreApplication::applicationDirPath() + "/../lib/readers"))
        QDir::setCurrent(QCoreApplication::applicationDirPath());
}

QString settingsPath(const Options &options)
{
    if (!options.settings.isEmpty())
        return options.settings;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(folder);
    return folder + QStringLiteral("/settings.db");
}

/// A batch needs no display unless the user has chosen a platform.
void chooseHeadlessPlatform()
{
    const bool has_display =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!has_display && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

/// A batch speaks in its own lines on standard error; what Qt remarks about the platform is not for its user.
void keepQtQuiet()
{
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtFatalMsg || type == QtCriticalMsg)
            sayLine(text);
    });
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("proofcheck"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PROOFCHECK_VERSION));
    // Looked at before there is an application: a wrong argument needs no display either.
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const bool wants_window = std::none_of(arguments.begin(), arguments.end(), [](const QString &argument) {
        return argument.startsWith("--batch") || argument.startsWith("--help") || argument.startsWith("--version");
    });
    if (!wants_window) {
        chooseHeadlessPlatform();
        keepQtQuiet();
    }

    const QApplication application(argc, argv);
    const Options options = parseOptions(QCoreApplication::arguments().mid(1));
    if (options.show_help) {
        std::fputs(helpText().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (options.show_version) {
        std::puts("proofcheck " PROOFCHECK_VERSION);
        return 0;
    }
    if (!options.error.isEmpty()) {
        sayLine(options.error);
        return BatchRun::Unusable;
    }
    goToInstruments();
    if (options.batch)
        return BatchRun(options).run();

    TaviRegistry registry(settingsPath(options).toStdString());
    MainWindow window(registry);
    window.restoreInstrument();
    window.restorePlace();
    window.show();
    return QApplication::exec();
}
