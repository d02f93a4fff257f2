// SPDX-License-Identifier: MIT
#include "proofcheck/batchrun.h"

#include "instruments/spectrobuddy.h"
#include "proofcheck/measuredfile.h"
#include "tavilib/tavilist.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>

#include <cstdio>
#include <unistd.h>

BatchRun::BatchRun(const Options &options) : options_(options), window_(registry_)
{
    connect(&window_, &MainWindow::patchesArrived, this, &BatchRun::noteArrival);
    connect(&window_, &MainWindow::seriesEnded, this, &BatchRun::noteSeriesEnd);
    silence_.setSingleShot(true);
    silence_.setInterval(options_.timeout_s * 1000);
    connect(&silence_, &QTimer::timeout, this, [this] {
        end(InstrumentFailed, QStringLiteral("%1: nothing came for %2 s; %3 of %4 patches had come")
                                  .arg(options_.instrument)
                                  .arg(options_.timeout_s)
                                  .arg(window_.model().rowCount())
                                  .arg(check_.measurements));
    });
    // A text of the instrument is a sign of life, too.
    if (const auto *messages = window_.instrumentBox()->findChild<QLineEdit *>())
        connect(messages, &QLineEdit::textChanged, this, [this] {
            if (silence_.isActive())
                silence_.start();
        });
}

BatchRun::~BatchRun() = default;

int BatchRun::run()
{
    QEventLoop loop;
    loop_ = &loop;
    QTimer::singleShot(0, this, [this] {
        if (prepare())
            start();
    });
    loop.exec();
    return status_;
}

const SPECTROPHOTOMETERINFO *BatchRun::findInstrument() const
{
    for (const SPECTROPHOTOMETERINFO *info = OrloInstrument::getInstrumentList(); info; info = NextInList(info)) {
        if (QString::fromUtf8(info->name) == options_.instrument)
            return info;
    }
    return nullptr;
}

bool BatchRun::prepare()
{
    const SPECTROPHOTOMETERINFO *info = findInstrument();
    if (!info) {
        QStringList names;
        for (info = OrloInstrument::getInstrumentList(); info; info = NextInList(info))
            names.append(QLatin1Char('"') + QString::fromUtf8(info->name) + QLatin1Char('"'));
        end(Unusable, QStringLiteral("--instrument: there is no \"%1\"; there are %2")
                          .arg(options_.instrument, names.join(QStringLiteral(", "))));
        return false;
    }
    const QFileInfo out(options_.out);
    if (out.isDir() || !QFileInfo(out.absolutePath()).isWritable()) {
        end(Unusable, QStringLiteral("%1: cannot be written").arg(options_.out));
        return false;
    }
    if ((info->flags & (SPECTRO_FLAG_SPOTLAB | SPECTRO_FLAG_CHART)) == 0) {
        end(Unusable, QStringLiteral("--instrument: \"%1\" measures no colours").arg(options_.instrument));
        return false;
    }
    is_file_source_ = (info->flags & SPECTRO_FLAG_FILESOURCE) != 0;
    if (!(is_file_source_ ? prepareFile(QString::fromUtf8(info->dll_filename)) : prepareChart(info->flags)))
        return false;

    registry_.putstring("proofcheck", "instrument", options_.instrument.toUtf8().constData());
    window_.restoreInstrument();
    return true;
}

bool BatchRun::prepareFile(const QString &dll_filename)
{
    check_ = checkInputFor(dll_filename, options_.measure);
    if (!check_.error.isEmpty()) {
        end(Unusable, check_.error);
        return false;
    }
    for (const QString &warning : std::as_const(check_.warnings))
        say(warning);
    if (check_.skipped > 0)
        say(options_.measure + QStringLiteral(": ") + check_.skippedText());
    window_.setFileToMeasure(options_.measure, check_);
    return true;
}

bool BatchRun::prepareChart(uint32_t flags)
{
    TAVICOMBOCOLOUR_CC chart = readChart(options_.measure, check_);
    if (!check_.error.isEmpty()) {
        end(Unusable, check_.error);
        return false;
    }
    // An instrument without charts reads as many single colours as the chart has patches.
    if ((flags & SPECTRO_FLAG_CHART) != 0)
        window_.setChart(std::move(chart), QFileInfo(options_.measure).fileName());
    return true;
}

void BatchRun::start()
{
    if (!options_.screenshot.isEmpty())
        window_.show();
    silence_.start();
    if (window_.buddy().enable() != 0) {
        end(InstrumentFailed, QStringLiteral("%1: cannot be turned on").arg(options_.instrument));
        return;
    }
    if (window_.buddy().isPrinter())
        end(InstrumentFailed,
            QStringLiteral("%1: it prints what it measures, and there is no print server").arg(options_.instrument));
}

void BatchRun::noteArrival(int received)
{
    if (ended_)
        return;
    silence_.start();
    if (::isatty(STDERR_FILENO))
        std::fprintf(stderr, "\r%d of %d patches", received, check_.measurements);
    if (received >= check_.measurements)
        complete();
}

void BatchRun::noteSeriesEnd()
{
    // A file may hold end markers of its own; an instrument ends its chart with one.
    if (ended_ || is_file_source_)
        return;
    end(InstrumentFailed, QStringLiteral("%1: it has read %2 of the %3 patches of %4")
                              .arg(options_.instrument)
                              .arg(window_.model().rowCount())
                              .arg(check_.measurements)
                              .arg(options_.measure));
}

void BatchRun::complete()
{
    silence_.stop();
    if (!options_.screenshot.isEmpty()) {
        // As the user would see it, the instrument turned off.
        window_.buddy().disable();
        QEventLoop settle;
        QTimer::singleShot(200, &settle, &QEventLoop::quit);
        settle.exec();
        if (!window_.grab().save(options_.screenshot)) {
            end(Unusable, QStringLiteral("%1: cannot be written").arg(options_.screenshot));
            return;
        }
    }
    const QString error = writeMeasuredFile(options_.out, window_.model().patches());
    end(error.isEmpty() ? Measured : Unusable, error);
}

void BatchRun::end(Status status, const QString &message)
{
    if (ended_)
        return;
    ended_ = true;
    status_ = status;
    silence_.stop();
    if (::isatty(STDERR_FILENO) && window_.model().rowCount() > 0)
        std::fputc('\n', stderr);
    const QStringList faults = log_.takeTexts();
    if (!message.isEmpty())
        say(faults.isEmpty() || status == Unusable
                ? message
                : message + QStringLiteral(": ") + faults.join(QStringLiteral("; ")));
    else
        for (const QString &fault : faults)
            say(fault);
    window_.buddy().disable();
    loop_->quit();
}

void BatchRun::say(const QString &line) const
{
    std::fprintf(stderr, "proofcheck: %s\n", line.toLocal8Bit().constData());
}
