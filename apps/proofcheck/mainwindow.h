// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_MAINWINDOW_H
#define PROOFCHECK_MAINWINDOW_H

#include "instruments/spectro_fromfile.h"
#include "proofcheck/inputcheck.h"
#include "proofcheck/patchmodel.h"
#include "taviapp/taviregistry.h"

#include <QElapsedTimer>
#include <QMainWindow>

#include <memory>

class PatchListView;
class QGroupBox;
class QLabel;
class SpectroBuddy;

/// The window: an instrument, the patches it has delivered, and how many they are.
///
/// The batch form drives the same window. Everything runs on the main thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Keeps the choice of instrument and the window's place in @a registry, which outlives the window.
    explicit MainWindow(TaviRegistry &registry);
    ~MainWindow() override;

    SpectroBuddy &buddy() { return *buddy_; }
    PatchModel &model() { return model_; }
    QGroupBox *instrumentBox() const { return box_; }

    /// Chooses the instrument kept in the registry.
    void restoreInstrument();
    /// Goes where the window was when it was last closed, with the size that it had; centred the first time. To be
    /// called before it is shown.
    void restorePlace();
    /// Measures @a chart from now on; its patch names are given to the colours that come. An empty chart goes back to
    /// single colours.
    void setChart(TAVICOMBOCOLOUR_CC chart, const QString &file_name);
    /// The chart that is measured; empty for none.
    const TAVICOMBOCOLOUR_CC &chart() const { return chart_; }

    /// The file that a file reader gets, without asking the user, and what a check of it has found.
    void setFileToMeasure(const QString &path, const InputCheck &check)
    {
        file_to_measure_ = path;
        last_check_ = check;
    }

    /// Asks for a file name and saves the list there.
    void saveAs();
    /// Asks for a chart and measures it from now on.
    void openChart();

Q_SIGNALS:
    /// Patches have arrived; @a received is how many since the instrument was turned on.
    void patchesArrived(int received);
    /// The instrument has closed its series.
    void seriesEnded();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void buildMenus();
    void takeSpot(double L, double a, double b);
    void takeSeries(TAVICOMBOCOLOUR *list);
    void noteStatus(bool is_on);
    void noteArrival(int count);
    void updateCounts();
    QString chooseFile(const QString &title, const QString &filter);
    QString takeNextName(double L, double a, double b);

    TaviRegistry &registry_;
    PatchModel model_;
    PatchListView *list_ = nullptr;
    QGroupBox *box_ = nullptr;
    std::unique_ptr<SpectroBuddy> buddy_;
    SpectroFileChooser former_chooser_;
    TAVICOMBOCOLOUR_CC chart_;
    const TAVICOMBOCOLOUR *next_chart_patch_ = nullptr; ///< The one that the next colour is of; in #chart_.
    QString file_to_measure_;
    QString last_directory_;
    InputCheck last_check_;
    QLabel *count_label_ = nullptr;
    QLabel *rate_label_ = nullptr;
    QLabel *note_label_ = nullptr;
    QElapsedTimer since_on_;
    int received_ = 0; ///< Since the instrument was turned on.
};

#endif
