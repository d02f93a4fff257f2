// SPDX-License-Identifier: MIT
#include "proofcheck/batchrun.h"

#include "instruments/spectrobuddy.h"
#include "proofcheck/measuredfile.h"
#include "proofcheck/standarderror.h"
#include "tavilib/tavilist.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QSaveFile>

#include <cstdio>
#include <unistd.h>

BatchRun::BatchRun(const Options &options) : options_(options), window_(registry_)
{
    connect(&window_, &MainWindow::patchesArrived, this, &BatchRun::noteArrival);
    connect(&window_, &MainWindow::seriesEnded, this, &BatchRun::noteSeriesEnd);
    silence_.setSingleShot(true);
    silence_.setInterval(options_.timeout_s * 1000);
    connect(&silence_, &QTimer::timeout, this, [this] {
        end(InstrumentFailed, options_.instrument
                                  + QStringLiteral(": nothing came for %1 s; %2 of %3 patches had come")
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
    if (const QString error = targetError(); !error.isEmpty()) {
        end(Unusable, error);
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

QString BatchRun::targetError() const
{
    for (const QString &path : {options_.out, options_.screenshot}) {
        const QFileInfo target(path);
        const QFileInfo folder(target.absolutePath());
        // A device or a pipe would be replaced by a file.
        if (!path.isEmpty() && ((target.exists() && !target.isFile()) || !folder.isDir() || !folder.isWritable()))
            return path + QStringLiteral(": cannot be written");
    }
    const auto same = [](const QString &a, const QString &b) {
        const QFileInfo first(a);
        const QFileInfo second(b);
        return !a.isEmpty() && !b.isEmpty()
               && (first.absoluteFilePath() == second.absoluteFilePath()
                   || (first.exists() && first.canonicalFilePath() == second.canonicalFilePath()));
    };
    if (same(options_.out, options_.measure) || same(options_.screenshot, options_.measure))
        return options_.measure + QStringLiteral(": is to be measured and to be written");
    if (same(options_.out, options_.screenshot))
        return options_.out + QStringLiteral(": is named for the list and for the picture");
    return {};
}

bool BatchRun::prepareFile(const QString &dll_filename)
{
    check_ = checkInputFor(dll_filename, options_.measure);
    if (!check_.error.isEmpty()) {
        end(Unusable, check_.error);
        return false;
    }
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
        end(InstrumentFailed, options_.instrument + QStringLiteral(": cannot be turned on"));
        return;
    }
    if (window_.buddy().isPrinter())
        end(InstrumentFailed,
            options_.instrument + QStringLiteral(": it prints what it measures, and there is no print server"));
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
    end(InstrumentFailed, options_.instrument
                              + QStringLiteral(": it has read %1 of the %2 patches of ")
                                    .arg(window_.model().rowCount())
                                    .arg(check_.measurements)
                              + options_.measure);
}

void BatchRun::complete()
{
    silence_.stop();
    // Both files or none: the picture is complete before the list is written, and takes its place behind it.
    QSaveFile picture(options_.screenshot);
    if (!options_.screenshot.isEmpty()) {
        // As the user would see it, the instrument turned off.
        window_.buddy().disable();
        QEventLoop settle;
        QTimer::singleShot(200, &settle, &QEventLoop::quit);
        settle.exec();
        if (!picture.open(QIODevice::WriteOnly) || !window_.grab().save(&picture, "PNG")) {
            end(Unusable, options_.screenshot + QStringLiteral(": ") + picture.errorString());
            return;
        }
    }
    QString error = writeMeasuredFile(options_.out, window_.model().patches());
    if (error.isEmpty() && picture.isOpen() && !picture.commit())
        error = options_.screenshot + QStringLiteral(": ") + picture.errorString();
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
    if (status == Measured)
        sayAll(notes() + faults);
    else if (status == Unusable || faults.isEmpty())
        sayLine(message);
    else
        sayLine(message + QStringLiteral(": ") + faults.join(QStringLiteral("; ")));
    window_.buddy().disable();
    loop_->quit();
}

QStringList BatchRun::notes() const
{
    QStringList lines = check_.warnings;
    if (check_.skipped > 0)
        lines.append(options_.measure + QStringLiteral(": ") + check_.skippedText());
    return lines;
}

void BatchRun::sayAll(const QStringList &lines) const
{
    constexpr int most = 10;
    for (const QString &line : lines.mid(0, most))
        sayLine(line);
    if (lines.size() > most)
        sayLine(QStringLiteral("%1 more remarks like these").arg(lines.size() - most));
}
