// SPDX-License-Identifier: MIT
#include "proofcheck/mainwindow.h"

#include "foundation/taviwidgetutil.h"
#include "instruments/spectrobuddy.h"
#include "proofcheck/measuredfile.h"
#include "proofcheck/patchlistview.h"
#include "proofcheck/schememenu.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr const char *settings_section = "proofcheck";
constexpr const char *instrument_key = "instrument";

QString patchCount(int count)
{
    return count == 1 ? MainWindow::tr("1 patch") : MainWindow::tr("%1 patches").arg(count);
}

bool isFileReader(const QString &dll_filename)
{
    return dll_filename.endsWith(QLatin1String(".orloinstrument"));
}

} // namespace

MainWindow::MainWindow(TaviRegistry &registry) : registry_(registry)
{
    setObjectName(QStringLiteral("proofcheck"));
    setWindowTitle(tr("proofcheck"));
    resize(720, 640);

    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    box_ = new QGroupBox(central);
    box_->setObjectName(QStringLiteral("instrument_box"));
    buddy_ = std::make_unique<SpectroBuddy>(box_, true);
    list_ = new PatchListView(&model_, central);
    layout->addWidget(box_);
    layout->addWidget(list_, 1);
    setCentralWidget(central);

    note_label_ = new QLabel(this);
    note_label_->setObjectName(QStringLiteral("note_label"));
    count_label_ = new QLabel(this);
    count_label_->setObjectName(QStringLiteral("count_label"));
    rate_label_ = new QLabel(this);
    rate_label_->setObjectName(QStringLiteral("rate_label"));
    statusBar()->addWidget(note_label_, 1);
    statusBar()->addPermanentWidget(rate_label_);
    statusBar()->addPermanentWidget(count_label_);

    buildMenus();
    connect(buddy_.get(), &SpectroBuddy::spotLab, this, &MainWindow::takeSpot);
    connect(buddy_.get(), &SpectroBuddy::allLab, this, &MainWindow::takeSeries);
    connect(buddy_.get(), &SpectroBuddy::instrumentStatusChanged, this, &MainWindow::noteStatus);
    const auto refuse_print = [this] {
        note_label_->setText(tr("There is no print server here."));
    };
    connect(buddy_.get(), &SpectroBuddy::requestPrinterCommData, this, refuse_print);
    connect(buddy_.get(), &SpectroBuddy::printChart, this, refuse_print);
    former_chooser_ = setSpectroFileChooser(
        [this](const QString &title, const QString &filter) { return chooseFile(title, filter); });
    updateCounts();
}

MainWindow::~MainWindow()
{
    setSpectroFileChooser(former_chooser_);
}

void MainWindow::buildMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    const auto add = [this, file](const QString &text, const char *name, const QKeySequence &keys, auto slot) {
        QAction *action = file->addAction(text);
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    add(tr("&Open Chart…"), "open_chart", QKeySequence::Open, &MainWindow::openChart);
    add(tr("&Measure Single Colours"), "close_chart", {}, [this] { setChart({}, {}); });
    file->addSeparator();
    QAction *save =
        add(tr("Save &As…"), "save_as", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), &MainWindow::saveAs);
    QAction *clear = add(tr("&Clear List"), "clear_list", {}, [this] {
        model_.clear();
        received_ = 0;
        note_label_->clear();
        updateCounts();
    });
    file->addSeparator();
    add(tr("&Quit"), "quit", QKeySequence::Quit, &MainWindow::close);
    menuBar()->addMenu(new SchemeMenu(registry_, *this));

    const auto enable = [this, save, clear] {
        save->setEnabled(model_.rowCount() > 0);
        clear->setEnabled(model_.rowCount() > 0);
    };
    connect(&model_, &PatchModel::rowsInserted, this, enable);
    connect(&model_, &PatchModel::modelReset, this, enable);
    enable();
}

void MainWindow::restoreInstrument()
{
    buddy_->loadRegistry(registry_, settings_section, instrument_key);
}

void MainWindow::restorePlace()
{
    TaviWidgetUtil::restoreSizeFromRegistry(this, &registry_, settings_section, true, false);
}

QString MainWindow::chooseFile(const QString &title, const QString &filter)
{
    if (!file_to_measure_.isEmpty())
        return file_to_measure_;
    const QString path = QFileDialog::getOpenFileName(this, title, last_directory_, filter);
    if (path.isEmpty())
        return {};
    last_directory_ = QFileInfo(path).absolutePath();
    // The readers pass over what they cannot read without a word, so that somebody else has to say it.
    last_check_ = checkInputFor(QString::fromStdString(buddy_->dllFilename()), path);
    if (last_check_.error.isEmpty())
        return path;
    QMessageBox::warning(this, tr("The file cannot be measured"), last_check_.error);
    return {};
}

void MainWindow::setChart(TAVICOMBOCOLOUR_CC chart, const QString &file_name)
{
    chart_ = std::move(chart);
    next_chart_patch_ = chart_.head();
    const bool has_chart = chart_.head() != nullptr;
    setWindowTitle(has_chart ? tr("%1 – proofcheck").arg(file_name) : tr("proofcheck"));
    note_label_->setText(has_chart ? tr("Chart %1: %2").arg(file_name, patchCount(static_cast<int>(chart_.count())))
                                   : QString());
    buddy_->setMode(has_chart ? SpectroBuddy::CHART_MODE : SpectroBuddy::SPOT_MODE);
    if (has_chart)
        buddy_->setComboChart(chart_.head(), 16, 0, 0);
}

void MainWindow::openChart()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Choose a chart"), QString(),
                                                      tr("Charts (*.ti1 *.ti2 *.ti3 *.txt *.cie);;All files (*)"));
    if (path.isEmpty())
        return;
    InputCheck check;
    TAVICOMBOCOLOUR_CC chart = readChart(path, check);
    if (check.error.isEmpty())
        setChart(std::move(chart), QFileInfo(path).fileName());
    else
        QMessageBox::warning(this, tr("The chart cannot be read"), check.error);
}

QString MainWindow::takeNextName(double L, double a, double b)
{
    const TAVICOMBOCOLOUR *patch = next_chart_patch_;
    if (patch)
        next_chart_patch_ = NextInList(patch);
    if (patch && patch->name)
        return QString::fromUtf8(patch->name);
    return QStringLiteral("%1, %2, %3").arg(L, 0, 'f', 2).arg(a, 0, 'f', 2).arg(b, 0, 'f', 2);
}

void MainWindow::takeSpot(double L, double a, double b)
{
    if (L < 0.0) {
        Q_EMIT seriesEnded();
        return;
    }
    const MeasuredPatch patch = {takeNextName(L, a, b), L, a, b};
    const QModelIndex current = list_->currentIndex();
    if (buddy_->isAddMode() || !current.isValid())
        model_.append(patch);
    else
        model_.replace(current.row(), patch);
    noteArrival(1);
}

void MainWindow::takeSeries(TAVICOMBOCOLOUR *list)
{
    const TAVICOMBOCOLOUR_CC patches(list); // a receiver owns what it is given
    model_.append(patches.head());
    noteArrival(static_cast<int>(patches.count()));
    QStringList notes = last_check_.warnings;
    if (last_check_.skipped > 0)
        notes.prepend(last_check_.skippedText());
    note_label_->setText(notes.value(0));
    note_label_->setToolTip(QStringList(notes.mid(0, 20)).join(QLatin1Char('\n')));
    last_check_ = {};
    Q_EMIT seriesEnded();
    // A file has nothing more to say. Not from inside its own delivery, which may have a rest to deliver.
    QTimer::singleShot(0, this, [this] {
        if (isFileReader(QString::fromStdString(buddy_->dllFilename())))
            buddy_->disable();
    });
}

void MainWindow::noteStatus(bool is_on)
{
    if (is_on) {
        received_ = 0;
        next_chart_patch_ = chart_.head();
        since_on_.start();
        note_label_->clear();
        note_label_->setToolTip({});
        rate_label_->clear();
    } else {
        buddy_->saveRegistry(registry_, settings_section, instrument_key);
    }
}

void MainWindow::noteArrival(int count)
{
    received_ += count;
    updateCounts();
    Q_EMIT patchesArrived(received_);
}

void MainWindow::updateCounts()
{
    count_label_->setText(patchCount(model_.rowCount()));
    if (received_ > 0 && since_on_.isValid()) {
        const double seconds = std::max(1e-6, static_cast<double>(since_on_.nsecsElapsed()) * 1e-9);
        const double rate = received_ / seconds;
        rate_label_->setText(tr("%1 patches/s").arg(rate, 0, 'f', rate < 10.0 ? 1 : 0));
    }
}

void MainWindow::saveAs()
{
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save the measured list"), QStringLiteral("measured.tsv"),
                                     tr("Tab-separated values (*.tsv);;All files (*)"));
    if (path.isEmpty())
        return;
    const QFileInfo target(path);
    const QString error = target.exists() && !target.isFile() ? tr("%1 is no regular file").arg(path)
                                                              : writeMeasuredFile(path, model_.patches());
    if (error.isEmpty())
        note_label_->setText(tr("Saved %1").arg(path));
    else
        QMessageBox::warning(this, tr("The list was not saved"), error);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    buddy_->disable();
    buddy_->saveRegistry(registry_, settings_section, instrument_key);
    TaviWidgetUtil::saveSizeToRegistry(this, &registry_, settings_section);
    QMainWindow::closeEvent(event);
}
