// SPDX-License-Identifier: MIT
// What the group box shows.
#include "instruments/spectrobuddy.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <initializer_list>
#include <vector>

void SpectroBuddy::buildInterface()
{
    layout = new QGridLayout(group);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 0);

    combo = new QComboBox(group);
    combo->setObjectName(QStringLiteral("instrument_combo"));
    combo->setWhatsThis(tr("Selects the instrument type."));
    combo->setAccessibleName(tr("Instrument"));
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(20);
    layout->addWidget(combo, 0, 0);
    connect(combo, &QComboBox::textActivated, this, &SpectroBuddy::loadInstrument);

    message_line = new QLineEdit(group);
    message_line->setObjectName(QStringLiteral("message_line"));
    message_line->setReadOnly(true);
    message_line->setWhatsThis(tr("Displays messages from the instrument"));
    message_line->setAccessibleName(tr("Messages"));
    message_line->hide();

    //: Measurements are added to the list
    add_box = new QCheckBox(tr("Add", "Measurements are added to the list"), group);
    add_box->setObjectName(QStringLiteral("add_box"));
    add_box->setChecked(true);
    add_box->setToolTip(tr("Tick to add, untick to modify"));
    add_box->setWhatsThis(tr("If selected, measurements are added as new items otherwise the measurement alters the "
                             "selected item."));
    add_box->hide();

    activate_button = new QPushButton(tr("Activate"), group);
    activate_button->setObjectName(QStringLiteral("activate_button"));
    activate_button->setCheckable(false);
    activate_button->setEnabled(false);
    activate_button->setWhatsThis(tr("Turns the instrument on or off."));
    layout->addWidget(activate_button, 0, 1);
    connect(activate_button, &QPushButton::clicked, this, &SpectroBuddy::toggleInstrument);

    print_button = new QPushButton(tr("Print chart"), group);
    print_button->setObjectName(QStringLiteral("print_button"));
    print_button->setCheckable(false);
    layout->addWidget(print_button, 1, 1);
    connect(print_button, &QPushButton::clicked, this, &SpectroBuddy::printChartPressed);

    reloadCombo({});
    updateInstrumentStatus();
}

bool SpectroBuddy::hasInstruments() const
{
    return combo && combo->count() > 0;
}

QString SpectroBuddy::currentName() const
{
    return combo ? combo->currentText() : QString();
}

void SpectroBuddy::reloadCombo(const QString &wanted)
{
    if (!group || !combo)
        return;
    const uint32_t flag = mode == SPOT_MODE ? SPECTRO_FLAG_SPOTLAB : mode == CHART_MODE ? SPECTRO_FLAG_CHART : 0;
    combo->clear();
    std::vector<bool> is_file_source;
    int wanted_row = -1;
    for (const SPECTROPHOTOMETERINFO *info = OrloInstrument::getInstrumentList(); info; info = NextInList(info)) {
        if ((info->flags & flag) == 0)
            continue;
        const QString name = QString::fromUtf8(info->name);
        if (name == wanted)
            wanted_row = combo->count();
        combo->addItem(name);
        is_file_source.push_back((info->flags & SPECTRO_FLAG_FILESOURCE) != 0);
    }
    if (wanted_row >= 0)
        combo->setCurrentIndex(wanted_row);
    // Follows what is chosen now, also where the wanted instrument isn't there and the first stands in for it.
    if (combo->currentIndex() >= 0)
        buffer_all = is_file_source[static_cast<size_t>(combo->currentIndex())];
    updateActivateButton();
}

void SpectroBuddy::updateActivateButton()
{
    if (activate_button)
        activate_button->setEnabled(measurements_enabled && hasInstruments());
}

void SpectroBuddy::updateInstrumentStatus()
{
    if (!group || !combo || !message_line || !add_box || !activate_button || !print_button || !layout)
        return;
    const bool is_on = instrument.enabled();
    if (is_on) {
        activate_button->setText(mode == CHART_MODE ? tr("Done") : tr("Turn Off"));
        if (hasInstruments())
            group->setTitle(currentName());
    } else {
        activate_button->setText(mode == CHART_MODE ? tr("Measure") : tr("Activate"));
        group->setTitle(tr("Spectrophotometer") + QLatin1String(" (") + tr("offline") + QLatin1Char(')'));
        // The driver shall know what the chosen plug-in can do; one that fails to load is one that can do nothing.
        if (hasInstruments())
            instrument.load(currentName().toUtf8().constData(), true);
    }
    combo->setVisible(!is_on);
    message_line->setVisible(is_on && show_messages);
    add_box->setVisible(is_on && show_add_mode);

    const bool offers_print = mode == CHART_MODE && !instrument.isPrinter();
    if (offers_print)
        updateActivateButton();
    print_button->setVisible(offers_print);
    print_button->setEnabled(true);
    redoLayout();
}

void SpectroBuddy::showAddMode(bool show)
{
    show_add_mode = show;
    if (!add_box || !layout)
        return;
    // An instrument that is off adds nothing: its box waits.
    const bool visible = show && instrument.enabled();
    add_box->setVisible(visible);
    if (visible && layout->indexOf(add_box) < 0)
        layout->addWidget(add_box, 1, 0);
}

void SpectroBuddy::redoLayout()
{
    // Combo and message line share a cell and are never shown together. "Shown" means not hidden by this group: its
    // window may not be up yet.
    struct Place {
        QWidget *widget;
        int row;
        int column;
    };
    for (QWidget *widget :
         std::initializer_list<QWidget *>{combo, message_line, add_box, activate_button, print_button})
        layout->removeWidget(widget);
    if (combo->isVisibleTo(group))
        rebuildCombo();
    const Place places[] = {
        {message_line, 0, 0}, {combo, 0, 0}, {add_box, 1, 0}, {activate_button, 0, 1}, {print_button, 1, 1}};
    for (const Place &place : places) {
        if (place.widget->isVisibleTo(group))
            layout->addWidget(place.widget, place.row, place.column);
    }
}

void SpectroBuddy::rebuildCombo()
{
    QComboBox *old = combo;
    const QString kept = old->currentText();
    const bool had_focus = old->hasFocus();

    combo = new QComboBox(group);
    combo->setObjectName(old->objectName());
    combo->setWhatsThis(old->whatsThis());
    combo->setToolTip(old->toolTip());
    combo->setStatusTip(old->statusTip());
    combo->setAccessibleName(old->accessibleName());
    combo->setAccessibleDescription(old->accessibleDescription());
    combo->setMaxVisibleItems(old->maxVisibleItems());
    combo->setEnabled(old->isEnabledTo(group));
    combo->setSizeAdjustPolicy(old->sizeAdjustPolicy());
    combo->setMinimumContentsLength(old->minimumContentsLength());
    QWidget::setTabOrder(old, combo);
    reloadCombo(kept);
    connect(combo, &QComboBox::textActivated, this, &SpectroBuddy::loadInstrument);

    // This may be running inside the old combo's own signal, so that it goes only when the event loop is reached.
    old->disconnect(this);
    old->setObjectName(QString());
    old->hide();
    old->deleteLater();
    combo->show();
    if (had_focus)
        combo->setFocus();
}
