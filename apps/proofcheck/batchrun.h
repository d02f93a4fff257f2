// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_BATCHRUN_H
#define PROOFCHECK_BATCHRUN_H

#include "proofcheck/logcollector.h"
#include "proofcheck/mainwindow.h"
#include "proofcheck/options.h"
#include "taviapp/taviregistry.h"

#include <QObject>
#include <QTimer>

/// One measurement without a user: turns the chosen instrument of a MainWindow on, waits for what it delivers, and
/// writes the list. Ends the program's event loop with the exit status.
class BatchRun : public QObject
{
    Q_OBJECT

public:
    /// Exit statuses.
    enum Status { Measured = 0, Unusable = 2, InstrumentFailed = 3 };

    explicit BatchRun(const Options &options);
    ~BatchRun() override;

    /// Runs the measurement in an event loop of its own. Returns the exit status.
    int run();

private:
    const SPECTROPHOTOMETERINFO *findInstrument() const;
    bool prepare();
    bool prepareFile(const QString &dll_filename);
    bool prepareChart(uint32_t flags);
    void start();
    void noteArrival(int received);
    void noteSeriesEnd();
    void complete();
    void end(Status status, const QString &message = {});
    /// Why one of the files that are to be written cannot be; empty if all can.
    QString targetError() const;
    /// What was found out about the measured file.
    QStringList notes() const;
    void sayAll(const QStringList &lines) const;

    const Options options_;
    LogCollector log_;
    TaviRegistry registry_; ///< In memory: a batch leaves the user's settings alone.
    MainWindow window_;
    InputCheck check_;
    QTimer silence_;
    bool is_file_source_ = false;
    bool ended_ = false;
    int status_ = InstrumentFailed;
    class QEventLoop *loop_ = nullptr;
};

#endif
