// SPDX-License-Identifier: MIT
#include "treeviews/tavirenamedialog.h"

#include "treeviews/renamemethod_p.h"
#include "treeviews/renamesettings_p.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

const char TaviRenameDialog::KEY_RENAME_VALUE[] = "rename_value";
const char TaviRenameDialog::KEY_RENAME_REPLACE[] = "rename_replace";
const char TaviRenameDialog::KEY_RENAME_SETTINGS[] = "rename_settings";
const char TaviRenameDialog::KEY_RENAME_GEOMETRY[] = "rename_geometry";

namespace {

/// A title bar higher than this would lie behind a menu bar at the upper edge of the screen.
constexpr int least_y = 20;
/// How much of the window is in reach at least, at the right and lower edge of the screens.
constexpr int least_in_reach = 60;

QPoint placeInReach(const QPoint &place)
{
    const QRect screens = QGuiApplication::primaryScreen()->virtualGeometry();
    return {qMax(0, qMin(place.x(), screens.right() - least_in_reach)),
            qMax(least_y, qMin(place.y(), screens.bottom() - least_in_reach))};
}

} // namespace

TaviRenameDialog::TaviRenameDialog(QWidget *parent, const QString &column_title, TaviRegistry *store,
                                   const std::string &store_section, const QPoint &place)
    : QDialog(parent, Qt::WindowStaysOnTopHint), registry(store), section(store_section)
{
    setupUi(this);
    op_combo->setAccessibleName(op_combo->toolTip());
    op_edit->setAccessibleName(op_edit->toolTip());
    if (!column_title.isEmpty())
        setWindowTitle(QStringLiteral("%1 (%2)").arg(windowTitle(), column_title));
    if (keepsSettings())
        readSettings(place);
    results_label->clear();
    connect(op_combo, QOverload<int>::of(&QComboBox::activated), this, &TaviRenameDialog::methodChanged);
    connect(apply_all_button, &QPushButton::clicked, this, &TaviRenameDialog::applyToAll);
    connect(apply_selected_button, &QPushButton::clicked, this, &TaviRenameDialog::applyToSelected);
    connect(apply_current_button, &QPushButton::clicked, this, &TaviRenameDialog::applyToCurrent);
    connect(find_next_button, &QPushButton::clicked, this, &TaviRenameDialog::findNext);
    connect(find_prev_button, &QPushButton::clicked, this, &TaviRenameDialog::findPrev);
}

TaviRenameDialog::~TaviRenameDialog() = default;

bool TaviRenameDialog::keepsSettings() const
{
    return registry && !section.empty();
}

void TaviRenameDialog::readSettings(const QPoint &default_place)
{
    RenameSettings settings;
    settings.place = default_place;
    settings.read(*registry, section);
    op_edit->setText(settings.value);
    replace_edit->setText(settings.replacement);
    op_combo->setCurrentIndex(settings.method);
    adjustDialog(settings.method, false);
    ignore_case_tick->setChecked(settings.ignore_case);
    wrap_tick->setChecked(settings.wrap);
    layout()->activate();
    const QSize least = minimumSizeHint();
    const int most = qMax(least.width(), QGuiApplication::primaryScreen()->virtualGeometry().width());
    resize(qBound(least.width(), settings.width, most), least.height());
    move(placeInReach(settings.place));
}

void TaviRenameDialog::writeSettings()
{
    RenameSettings settings;
    settings.value = op_edit->text();
    settings.replacement = replace_edit->text();
    settings.method = op_combo->currentIndex();
    settings.ignore_case = ignore_case_tick->isChecked();
    settings.wrap = wrap_tick->isChecked();
    settings.place = pos();
    settings.width = width();
    settings.write(*registry, section);
}

void TaviRenameDialog::adjustDialog(int index, bool resize_window)
{
    if (find_mode && index == 0)
        return;
    find_mode = index <= 0;
    for (QWidget *const widget : {static_cast<QWidget *>(replace_label), static_cast<QWidget *>(replace_edit),
                                  static_cast<QWidget *>(results_label), static_cast<QWidget *>(ignore_case_tick),
                                  static_cast<QWidget *>(wrap_tick), static_cast<QWidget *>(navi_frame)})
        widget->setVisible(find_mode);
    if (resize_window && layout()) {
        layout()->activate();
        resize(width(), sizeHint().height());
    }
}

void TaviRenameDialog::methodChanged(int index)
{
    adjustDialog(index, true);
}

RenameRule TaviRenameDialog::rule() const
{
    RenameRule rule;
    rule.method = static_cast<RenameMethod>(op_combo->currentIndex());
    rule.op = op_edit->text();
    if (rule.method == RenameMethod::Replace)
        rule.with = replace_edit->text();
    rule.case_sensitivity = ignore_case_tick->isChecked() ? Qt::CaseInsensitive : Qt::CaseSensitive;
    return rule;
}

int TaviRenameDialog::applyToAll()
{
    return apply(apply_all_button);
}

int TaviRenameDialog::applyToSelected()
{
    return apply(apply_selected_button);
}

int TaviRenameDialog::applyToCurrent()
{
    return apply(apply_current_button);
}

int TaviRenameDialog::apply(QPushButton *button)
{
    const int method = op_combo->currentIndex();
    if (!button || method < 0 || method >= rename_method_count)
        return 0;
    Rows which = Rows::Current;
    if (button == apply_all_button)
        which = Rows::All;
    else if (button == apply_selected_button)
        which = Rows::Selected;
    const RenameRule now = rule();
    const QPointer<TaviRenameDialog> self(this);
    return renameRows(now, which, [self, replaces = now.method == RenameMethod::Replace](int changed) {
        if (!self || !replaces)
            return;
        if (changed == 0)
            self->results_label->setText(tr("Not Found"));
        else if (changed == 1)
            self->results_label->setText(tr("Found 1 item"));
        else
            self->results_label->setText(tr("Found %1 items").arg(changed));
    });
}

void TaviRenameDialog::findNext()
{
    findItem(true);
}

void TaviRenameDialog::findPrev()
{
    findItem(false);
}

void TaviRenameDialog::findItem(bool forward)
{
    if (!find_mode)
        return;
    const QPointer<TaviRenameDialog> self(this);
    const bool found = findRow(rule(), forward);
    if (self)
        results_label->setText(found ? tr("Found") : tr("Not Found"));
}

void TaviRenameDialog::reject()
{
    // The base class only hides, and nobody would hear of it.
    close();
}

void TaviRenameDialog::closeEvent(QCloseEvent *event)
{
    if (keepsSettings())
        writeSettings();
    event->accept();
    Q_EMIT closed();
}
