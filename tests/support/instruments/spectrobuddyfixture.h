// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_INSTRUMENTS_SPECTROBUDDYFIXTURE_H
#define TESTS_SUPPORT_INSTRUMENTS_SPECTROBUDDYFIXTURE_H

#include "instruments/spectrobuddy.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/shortsleeps.h"
#include "tests/support/tavitest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

#include <memory>
#include <thread>
#include <vector>

/// A control group over a plug-in folder with one scripted plug-in ("Scripted"), and its signals recorded.
class SpectroBuddyFixture
{
public:
    explicit SpectroBuddyFixture(bool show_messages = true, bool with_group = true)
    {
        plugin = readers.add("scripted", "one.so");
        // No printer, unless a test wants one.
        plugin->flags = 0x0633 | SPECTRO_FLAG_STRIPREADER;
        if (with_group)
            group = std::make_unique<QGroupBox>();
        buddy = std::make_unique<SpectroBuddy>(group.get(), show_messages);
        QObject::connect(buddy.get(), &SpectroBuddy::lineLab, context.get(),
                         [this](TAVICOMBOCOLOUR *list) { lines.emplace_back(list); });
        QObject::connect(buddy.get(), &SpectroBuddy::allLab, context.get(),
                         [this](TAVICOMBOCOLOUR *list) { series.emplace_back(list); });
        spots = std::make_unique<QSignalSpy>(buddy.get(), &SpectroBuddy::spotLab);
        status = std::make_unique<QSignalSpy>(buddy.get(), &SpectroBuddy::instrumentStatusChanged);
    }

    template <typename Widget>
    Widget *widget(const char *name) const
    {
        return group->findChild<Widget *>(QString::fromLatin1(name));
    }
    QComboBox *combo() const { return widget<QComboBox>("instrument_combo"); }
    QLineEdit *messageLine() const { return widget<QLineEdit>("message_line"); }
    QCheckBox *addBox() const { return widget<QCheckBox>("add_box"); }
    QPushButton *activateButton() const { return widget<QPushButton>("activate_button"); }
    QPushButton *printButton() const { return widget<QPushButton>("print_button"); }

    bool shows(const QWidget *shown) const { return shown->isVisibleTo(group.get()); }
    /// "row,column" of a widget in the group's grid; empty if it isn't in it.
    QString cell(QWidget *placed) const
    {
        auto *grid = qobject_cast<QGridLayout *>(group->layout());
        const int index = grid->indexOf(placed);
        if (index < 0)
            return {};
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(index, &row, &column, &rows, &columns);
        return QStringLiteral("%1,%2").arg(row).arg(column);
    }

    /// Lets the group list what is in the plug-in folder now.
    void findInstrumentsAnew() const
    {
        ReadersFolder::forgetInstruments();
        const SpectroBuddy::INSTRUMENT_MODE mode = buddy->getMode();
        // Only another mode than before fills the combo.
        buddy->setMode(mode == SpectroBuddy::SPOT_MODE ? SpectroBuddy::CHART_MODE : SpectroBuddy::SPOT_MODE);
        buddy->setMode(mode);
    }
    QStringList listedInstruments() const
    {
        QStringList names;
        for (int i = 0; i < combo()->count(); ++i)
            names.append(combo()->itemText(i));
        return names;
    }
    /// Makes @a name the chosen instrument, as a user does.
    void choose(const QString &name)
    {
        combo()->setCurrentText(name);
        Q_EMIT combo()->textActivated(name);
    }
    void press() { activateButton()->click(); }

    /// Names of a list of patches.
    static QStringList names(const TAVICOMBOCOLOUR_CC &list)
    {
        QStringList found;
        for (const TAVICOMBOCOLOUR *patch = list.head(); patch; patch = NextInList(patch))
            found.append(QString::fromUtf8(patch->name));
        return found;
    }

    /// A read of the plug-in that waits to be told to stop.
    static int waitForAbort(const ScriptedPlugin::Read &read)
    {
        while (!read.aborted())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return 0;
    }

    const ShortSleeps short_sleeps; // each stop of a read that has not ended would cost a second
    ReadersFolder readers;
    ScriptedPlugin *plugin = nullptr;
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::unique_ptr<QGroupBox> group;
    std::unique_ptr<SpectroBuddy> buddy;
    std::vector<TAVICOMBOCOLOUR_CC> lines;
    std::vector<TAVICOMBOCOLOUR_CC> series;
    std::unique_ptr<QSignalSpy> spots;
    std::unique_ptr<QSignalSpy> status;
};

#endif
