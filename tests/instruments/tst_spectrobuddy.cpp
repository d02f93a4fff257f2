// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/instruments/spectrobuddyfixture.h"

#include <QAbstractItemView>

namespace {
const QString cgats_name = "CGATS / ISO 12642 file";
const QString lab_name = "Lab text file (Lab sample order)";
} // namespace

/// The group's controls: what shows when, and where.
class TestSpectroBuddy : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const SpectroBuddyFixture f;
        QVERIFY(!f.buddy->parent());
        QCOMPARE(f.buddy->getMode(), SpectroBuddy::SPOT_MODE);
        QVERIFY(!f.buddy->isBufferLineMeasurements());
        QVERIFY(!f.buddy->isChartInitDelayed());
        QVERIFY(!f.buddy->isStripReader());
        QVERIFY(!f.buddy->isPrinter());
        QVERIFY(!f.buddy->isPrinterCommDataValid());
        QVERIFY(!f.buddy->isAddMode());
        QCOMPARE(f.buddy->dllFilename(), std::string("cgatslab.orloinstrument")); // loaded as shown

        QCOMPARE(f.group->title(), QString("Spectrophotometer (offline)"));
        QCOMPARE(f.activateButton()->text(), QString("Activate"));
        QVERIFY(!f.activateButton()->isCheckable());
        QVERIFY(f.activateButton()->isEnabled());
        QCOMPARE(f.printButton()->text(), QString("Print chart"));
        QVERIFY(!f.printButton()->isCheckable());
        QCOMPARE(f.addBox()->text(), QString("Add"));
        QVERIFY(f.addBox()->isChecked());
        QCOMPARE(f.addBox()->toolTip(), QString("Tick to add, untick to modify"));
        QVERIFY(f.messageLine()->isReadOnly());
        auto *grid = qobject_cast<QGridLayout *>(f.group->layout());
        QVERIFY(grid);
        QCOMPARE(grid->columnStretch(0), 1);
        QCOMPARE(grid->columnStretch(1), 0);

        QCOMPARE(f.combo()->whatsThis(), QString("Selects the instrument type."));
        QCOMPARE(f.messageLine()->whatsThis(), QString("Displays messages from the instrument"));
        QCOMPARE(f.addBox()->whatsThis(), QString("If selected, measurements are added as new items otherwise the "
                                                  "measurement alters the selected item."));
        QCOMPARE(f.activateButton()->whatsThis(), QString("Turns the instrument on or off."));
    }

    void offTheComboShowsAndTheRestIsHidden()
    {
        const SpectroBuddyFixture f;
        QVERIFY(f.shows(f.combo()));
        QVERIFY(!f.shows(f.messageLine()));
        QVERIFY(!f.shows(f.addBox()));
        QVERIFY(f.shows(f.activateButton()));
        QVERIFY(!f.shows(f.printButton()));
        QCOMPARE(f.cell(f.combo()), QString("0,0"));
        QCOMPARE(f.cell(f.activateButton()), QString("0,1"));
        QCOMPARE(f.cell(f.messageLine()), QString());
        QCOMPARE(f.cell(f.addBox()), QString());
    }

    void onTheMessageLineTakesTheCombosPlace()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        QCOMPARE(f.plugin->opens.load(), 1);
        QCOMPARE(f.group->title(), QString("Scripted"));
        QCOMPARE(f.activateButton()->text(), QString("Turn Off"));
        QVERIFY(!f.shows(f.combo()));
        QVERIFY(f.shows(f.messageLine()));
        QVERIFY(f.shows(f.addBox()));
        QCOMPARE(f.cell(f.messageLine()), QString("0,0"));
        QCOMPARE(f.cell(f.addBox()), QString("1,0"));
        QCOMPARE(f.cell(f.combo()), QString());
        f.press();
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.group->title(), QString("Spectrophotometer (offline)"));
        QVERIFY(f.shows(f.combo()));
        QCOMPARE(f.cell(f.combo()), QString("0,0"));
        QCOMPARE(f.cell(f.messageLine()), QString());
    }

    void withoutMessagesTheLineStaysHidden()
    {
        SpectroBuddyFixture f(false);
        f.choose("Scripted");
        f.press();
        QVERIFY(!f.shows(f.messageLine()));
        QVERIFY(!f.shows(f.combo()));
        f.buddy->fireSpotLab(1, 2, 3);
        QCOMPARE(f.messageLine()->text(), QString());
    }

    void withoutMessagesTheInstrumentsTextsGoToTheLog()
    {
        SpectroBuddyFixture f(false);
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "Reset done");
            return 0;
        };
        expectLog("scripted: : Reset done");
        f.press();
        QTRY_COMPARE(recorder().lines().size(), 1);
    }

    void aShownWindowShowsTheSame()
    {
        SpectroBuddyFixture f;
        f.group->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.group.get()));
        QVERIFY(f.combo()->isVisible());
        f.choose("Scripted");
        f.press();
        QVERIFY(!f.combo()->isVisible());
        QVERIFY(f.messageLine()->isVisible());
        QVERIFY(f.addBox()->isVisible());
        // Combo and message line stood in the same place.
        QTRY_VERIFY(f.messageLine()->geometry().top() < f.addBox()->geometry().top());
        QVERIFY(f.messageLine()->geometry().right() < f.activateButton()->geometry().left());
    }

    void spotModeListsSpotReadersAndChartModeChartReaders()
    {
        ReadersFolder readers;
        const auto add = [&](const char *name, uint32_t flags) {
            ScriptedPlugin *plugin = readers.add("scripted", QString(name) + ".so");
            plugin->name = name;
            plugin->flags = flags;
        };
        add("Spot", 0x0421);
        add("Chart", 0x0601);
        add("Density", 0x0412);
        const auto names = [](const QGroupBox &box) {
            QStringList list;
            const auto *combo = box.findChild<QComboBox *>("instrument_combo");
            for (int i = 0; i < combo->count(); ++i)
                list.append(combo->itemText(i));
            return list;
        };
        QGroupBox box;
        SpectroBuddy buddy(&box, true);
        QCOMPARE(names(box), (QStringList{cgats_name, lab_name, "Spot"}));
        buddy.setMode(SpectroBuddy::CHART_MODE);
        QCOMPARE(names(box), (QStringList{cgats_name, "Chart", lab_name}));
        buddy.setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        QCOMPARE(names(box), QStringList());
    }

    void anEmptyComboDisablesTheActivateButton()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        QCOMPARE(f.combo()->count(), 0);
        QVERIFY(!f.activateButton()->isEnabled());
        f.press();
        QCOMPARE(f.buddy->enable(), -1);
        QCOMPARE(f.plugin->opens.load(), 0);
        f.buddy->setMode(SpectroBuddy::SPOT_MODE);
        QVERIFY(f.activateButton()->isEnabled());
    }

    void modeOneIsStoredOnceAndLeadsBackToSpot()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        QCOMPARE(int(f.buddy->getMode()), 1);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        QCOMPARE(f.buddy->getMode(), SpectroBuddy::SPOT_MODE);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        QCOMPARE(f.buddy->getMode(), SpectroBuddy::CHART_MODE);
        QVERIFY(f.buddy->isStripReader()); // of the group's mode
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        QCOMPARE(f.buddy->getMode(), SpectroBuddy::SPOT_MODE);
    }

    void anotherModeClosesTheInstrumentAndKeepsTheChoice()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.status->clear();
        f.buddy->setMode(SpectroBuddy::SPOT_MODE);
        QCOMPARE(f.plugin->closes.load(), 0);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.status->first().first().toBool(), false);
    }

    void chartModeHasItsOwnTextsAndThePrintButton()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        QCOMPARE(f.activateButton()->text(), QString("Measure"));
        QVERIFY(f.shows(f.printButton()));
        QVERIFY(f.printButton()->isEnabled());
        QCOMPARE(f.cell(f.printButton()), QString("1,1"));
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setComboChart(chart.head(), 1, 0, 0);
        f.press();
        QCOMPARE(f.activateButton()->text(), QString("Done"));
        QVERIFY(f.shows(f.printButton()));
    }

    void aPrinterHasNoPrintButton()
    {
        SpectroBuddyFixture f;
        f.plugin->flags = 0x1633;
        ReadersFolder::forgetInstruments();
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        QVERIFY(f.buddy->isPrinter());
        QVERIFY(!f.shows(f.printButton()));
        QCOMPARE(f.cell(f.printButton()), QString());
    }

    void theAddBoxFollowsShowAddMode()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        QVERIFY(!f.buddy->isAddMode()); // the box is hidden while the instrument is off
        f.press();
        QVERIFY(f.buddy->isAddMode());
        f.addBox()->setChecked(false);
        QVERIFY(!f.buddy->isAddMode());
        f.addBox()->setChecked(true);
        f.buddy->showAddMode(false);
        QVERIFY(!f.buddy->isAddMode());
        QVERIFY(!f.shows(f.addBox()));
        f.press();
        f.press();
        QVERIFY(!f.shows(f.addBox())); // stored
        f.press();
        f.buddy->showAddMode(true);
        QVERIFY(!f.shows(f.addBox())); // not while the instrument is off
        QVERIFY(!f.buddy->isAddMode());
        f.buddy->showAddMode(false);
        f.press();
        f.buddy->showAddMode(true);
        QVERIFY(f.buddy->isAddMode());
        QCOMPARE(f.cell(f.addBox()), QString("1,0"));
    }

    void theRebuiltComboKeepsWhatItIs()
    {
        SpectroBuddyFixture f;
        const QPointer<QComboBox> old = f.combo();
        f.choose("Scripted");
        QVERIFY(f.combo() != old);
        QCOMPARE(f.combo()->whatsThis(), QString("Selects the instrument type."));
        QCOMPARE(f.combo()->objectName(), QString("instrument_combo"));
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        f.choose(lab_name); // its connection is there too
        QCOMPARE(f.buddy->dllFilename(), std::string("tabdelimitedlab.orloinstrument"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(old.isNull());
        QCOMPARE(f.group->findChildren<QComboBox *>().size(), 1);
    }

    void choosingWithTheKeyboardKeepsTheFocus()
    {
        SpectroBuddyFixture f;
        f.group->show();
        QVERIFY(QTest::qWaitForWindowActive(f.group.get()));
        f.combo()->setFocus();
        QTRY_VERIFY(f.combo()->hasFocus());
        const QString before = f.combo()->currentText();
        QTest::keyClick(f.combo(), Qt::Key_Down); // the combo is rebuilt inside its own signal
        QVERIFY(f.combo()->currentText() != before);
        QTRY_VERIFY(f.combo()->hasFocus());
        QTest::keyClick(f.combo(), Qt::Key_Down);
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
    }

    void choosingWithTheMouseLoadsTheInstrument()
    {
        SpectroBuddyFixture f;
        f.group->show();
        QVERIFY(QTest::qWaitForWindowActive(f.group.get()));
        QComboBox *combo = f.combo();
        combo->showPopup();
        QWidget *popup = combo->view()->window();
        QVERIFY(QTest::qWaitForWindowExposed(popup));
        const QRect last = combo->view()->visualRect(combo->model()->index(combo->count() - 1, 0));
        QTest::mouseMove(combo->view()->viewport(), last.center());
        QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, {}, last.center());
        QTRY_COMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
    }

    void bufferingFollowsTheChosenInstrument()
    {
        SpectroBuddyFixture f;
        QCOMPARE(f.combo()->currentText(), cgats_name);
        QVERIFY(f.buddy->isBufferAllMeasurements()); // a file source
        f.choose("Scripted");
        QVERIFY(!f.buddy->isBufferAllMeasurements());
        f.choose(lab_name);
        QVERIFY(f.buddy->isBufferAllMeasurements());
    }

    void enableAndDisableTellWhatTheyReached()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        QCOMPARE(f.buddy->disable(), 0);
        QCOMPARE(f.buddy->enable(), 0);
        QCOMPARE(f.buddy->enable(), 0);
        QCOMPARE(f.plugin->opens.load(), 1);
        QCOMPARE(f.buddy->disable(), 0);
        f.plugin->on_open = [](InstrumentMessageCallback, void *) -> void * {
            return nullptr;
        };
        expectLog("Spectrophotometer failed to initialise");
        QCOMPARE(f.buddy->enable(), -1);
        QCOMPARE(f.status->count(), 2);
    }

    void theStatusSignalComesOncePerChange()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        QCOMPARE(f.status->count(), 0);
        f.press();
        QCOMPARE(f.status->takeFirst().first().toBool(), true);
        f.press();
        QCOMPARE(f.status->takeFirst().first().toBool(), false);
        QCOMPARE(f.status->count(), 0);
    }

    void aFailedOpenFallsBackToTheLoadedState()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_open = [](InstrumentMessageCallback, void *) -> void * {
            return nullptr;
        };
        expectLog("Spectrophotometer failed to initialise");
        f.press();
        QCOMPARE(f.status->count(), 0);
        QCOMPARE(f.activateButton()->text(), QString("Activate"));
        QCOMPARE(f.group->title(), QString("Spectrophotometer (offline)"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
    }

    void textsOfTheInstrumentShow()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "Measure %c%lu", 'A', 1UL);
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.messageLine()->text(), QString("Measure A1"));
        f.press();
        QCOMPARE(f.messageLine()->text(), QString()); // cleared
    }

    void aLongTextShowsItsBeginning()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        const QByteArray text = "Begin" + QByteArray(500, 'x');
        f.plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "%s", text.constData());
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.messageLine()->text(), QString::fromLatin1(text));
        QCOMPARE(f.messageLine()->cursorPosition(), 0);
    }

    void forbiddenMeasurementsTurnTheInstrumentOff()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.status->clear();
        f.buddy->setMeasurementsEnabled(false);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.status->first().first().toBool(), false);
        QCOMPARE(f.plugin->closes.load(), 1);
        QVERIFY(!f.activateButton()->isEnabled());
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        f.choose(lab_name); // fills the combo
        QVERIFY(!f.activateButton()->isEnabled());
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        QVERIFY(!f.activateButton()->isEnabled());
        f.buddy->setMeasurementsEnabled(true);
        QVERIFY(f.activateButton()->isEnabled());
        QCOMPARE(f.status->count(), 1);
    }

    void allowingMeasurementsNeedsAnInstrument()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        f.buddy->setMeasurementsEnabled(false);
        f.buddy->setMeasurementsEnabled(true);
        QVERIFY(!f.activateButton()->isEnabled());
    }

    void theChoiceIsKeptInARegistry()
    {
        TaviRegistry registry;
        {
            SpectroBuddyFixture f;
            f.choose("Scripted");
            f.buddy->saveRegistry(registry, "panel", "instrument");
        }
        QCOMPARE(registry.getstring("panel", "instrument"), std::string("Scripted"));
        SpectroBuddyFixture f;
        QCOMPARE(f.combo()->currentText(), cgats_name);
        f.buddy->loadRegistry(registry, "panel", "instrument");
        QCOMPARE(f.combo()->currentText(), QString("Scripted"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QVERIFY(!f.buddy->isBufferAllMeasurements());
    }

    void aNameBeyondAsciiIsKept()
    {
        TaviRegistry registry;
        SpectroBuddyFixture f;
        f.plugin->name = "Messgerät 測";
        ReadersFolder::forgetInstruments();
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose(QString::fromUtf8("Messgerät 測"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        f.buddy->saveRegistry(registry, "panel", "instrument");
        QCOMPARE(registry.getstring("panel", "instrument"), std::string("Messgerät 測"));
        f.choose(lab_name);
        f.buddy->loadRegistry(registry, "panel", "instrument");
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QCOMPARE(f.combo()->currentText(), QString::fromUtf8("Messgerät 測"));
    }

    void loadRegistryClosesAnOpenInstrument()
    {
        TaviRegistry registry;
        registry.putstring("panel", "instrument", lab_name.toUtf8().constData());
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.status->clear();
        f.buddy->loadRegistry(registry, "panel", "instrument");
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.combo()->currentText(), lab_name);
        QVERIFY(f.shows(f.combo()));
    }

    void anUnknownOrMissingNameLeavesTheFirstChosen_data()
    {
        QTest::addColumn<QByteArray>("kept");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("not installed") << QByteArray("Crystal ball");
    }

    void anUnknownOrMissingNameLeavesTheFirstChosen()
    {
        QFETCH(QByteArray, kept);
        TaviRegistry registry;
        if (!kept.isEmpty())
            registry.putstring("panel", "instrument", kept.constData());
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.buddy->loadRegistry(registry, "panel", "instrument");
        QCOMPARE(f.combo()->currentText(), cgats_name);
        QCOMPARE(f.buddy->dllFilename(), std::string("cgatslab.orloinstrument"));
        QVERIFY(f.buddy->isBufferAllMeasurements());
    }

    void anEmptyComboIsNotSaved()
    {
        TaviRegistry registry;
        SpectroBuddyFixture f;
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(1));
        f.buddy->saveRegistry(registry, "panel", "instrument");
        QVERIFY(!registry.exists("panel", "instrument"));
    }

    void parkTurnsOffAndStaysLoaded()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.status->clear();
        f.buddy->park();
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QCOMPARE(f.activateButton()->text(), QString("Activate"));
        f.buddy->park();
        QCOMPARE(f.status->count(), 1);
    }

    void withoutAGroupTheBuddyHoldsADriver()
    {
        TaviRegistry registry;
        registry.putstring("panel", "instrument", "Scripted");
        SpectroBuddyFixture f(true, false);
        f.buddy->loadRegistry(registry, "panel", "instrument");
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QCOMPARE(f.buddy->enable(), -1); // nothing is chosen without a combo
        QCOMPARE(f.buddy->disable(), 0);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->showAddMode(true);
        QVERIFY(!f.buddy->isAddMode());
        f.buddy->setMeasurementsEnabled(false);
        f.buddy->park();
        f.buddy->saveRegistry(registry, "panel", "other");
        QVERIFY(!registry.exists("panel", "other"));
        f.buddy->fireSpotLab(1, 2, 3);
        QCOMPARE(f.spots->count(), 1);
        QVERIFY(!f.buddy->isPrinter());
    }

    void theGroupMayBeDestroyedFirst()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.group.reset();
        f.buddy->fireSpotLab(1, 2, 3);
        QCOMPARE(f.spots->count(), 1);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->showAddMode(true);
        f.buddy->setMeasurementsEnabled(true);
        QVERIFY(!f.buddy->isAddMode());
        QCOMPARE(f.buddy->disable(), 0);
    }

    void aSlotMayDestroyTheBuddyOrTheGroup_data()
    {
        QTest::addColumn<bool>("group");
        QTest::newRow("buddy") << false;
        QTest::newRow("group") << true;
    }

    void aSlotMayDestroyTheBuddyOrTheGroup()
    {
        QFETCH(bool, group);
        SpectroBuddyFixture f;
        f.choose("Scripted");
        connect(f.buddy.get(), &SpectroBuddy::instrumentStatusChanged, this, [&] {
            if (group)
                f.group.reset();
            else
                f.buddy.reset();
        });
        SpectroBuddy *raw = f.buddy.get();
        QCOMPARE(raw->enable(), group ? 0 : -1);
        QCOMPARE(f.plugin->closes.load(), group ? 0 : 1);
    }

    void aTextOfCloseMayDestroyTheBuddy_data()
    {
        QTest::addColumn<int>("operation");
        for (int i = 0; i < 5; ++i)
            QTest::newRow(QByteArray::number(i).constData()) << i;
    }

    void aTextOfCloseMayDestroyTheBuddy()
    {
        QFETCH(int, operation);
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.plugin->on_close = [&](InstrumentMessageCallback, void *) {
            f.buddy.reset();
        };
        SpectroBuddy *raw = f.buddy.get();
        TaviRegistry registry;
        switch (operation) {
        case 0:
            raw->disable();
            break;
        case 1:
            raw->setMode(SpectroBuddy::CHART_MODE);
            break;
        case 2:
            raw->setMeasurementsEnabled(false);
            break;
        case 3:
            raw->loadRegistry(registry, "panel", "instrument");
            break;
        default:
            raw->park();
        }
        QVERIFY(!f.buddy);
        QCOMPARE(f.plugin->closes.load(), 1);
    }

    void anEnableWhileADialogIsUpStandsForBoth()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        int opens = 0;
        f.plugin->on_open = [&](InstrumentMessageCallback, void *) -> void * {
            if (++opens == 1)
                f.buddy->enable(); // as a second click may do
            return f.plugin;
        };
        QCOMPARE(f.buddy->enable(), 0);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.status->first().first().toBool(), true);
        QCOMPARE(f.activateButton()->text(), QString("Turn Off"));
        QCOMPARE(f.plugin->closes.load(), 1); // of the open that came too late
    }

    void aDialogInOpenMayOutliveTheBuddy()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_open = [&](InstrumentMessageCallback, void *) -> void * {
            f.buddy.reset(); // what an event loop inside Open may bring about
            return f.plugin;
        };
        SpectroBuddy *raw = f.buddy.get();
        QCOMPARE(raw->enable(), -1);
        QCOMPARE(f.plugin->closes.load(), 1);
    }
};

TAVI_GUI_TEST_MAIN(TestSpectroBuddy)
#include "tst_spectrobuddy.moc"
