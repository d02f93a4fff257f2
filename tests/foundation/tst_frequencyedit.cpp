// SPDX-License-Identifier: MIT
#include "foundation/frequencyedit.h"
#include "foundation/frequencyrule_p.h"
#include "tests/support/tavitest.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTranslator>

#include <climits>
#include <ctime>

namespace {

constexpr long day = 86400;
constexpr long week = 7 * day;
/// 2027-03-01 12:00 UTC, a Monday.
constexpr long a_monday = 1'803'902'400;

const char *const day_names[] = {"Days",      "Mondays", "Tuesdays",  "Wednesdays",
                                 "Thursdays", "Fridays", "Saturdays", "Sundays"};

void setTimeZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

QDate mondayPlus(int days)
{
    return QDate(2027, 3, 1).addDays(days);
}

/// Puts the context in place of each text.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QString::fromLatin1(context) + '/' + QString::fromLatin1(text);
    }
};

/// Reaches the protected slot.
class EditProbe : public FrequencyEdit
{
public:
    void apply() { onoffActivated(); }
};

bool showsControls(const FrequencyEdit &edit)
{
    return !edit.frequency_spin->isHidden() && !edit.day_combo->isHidden();
}

bool hidesControls(const FrequencyEdit &edit)
{
    return edit.frequency_spin->isHidden() && edit.day_combo->isHidden();
}

} // namespace

/// The form, and when things are due.
class TestFrequencyEdit : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        setTimeZone("UTC");
    }

    void construction()
    {
        QWidget parent;
        const FrequencyEdit edit(&parent, "profile_expiry");
        QCOMPARE(edit.parentWidget(), &parent);
        QCOMPARE(edit.objectName(), QStringLiteral("profile_expiry"));
        QCOMPARE(edit.groupbox->title(), QStringLiteral("Frequency"));
        QCOMPARE(edit.groupbox->whatsThis(), QStringLiteral("Determines when monitor ICC profiles expire."));
        QCOMPARE(edit.onoff_combo->count(), 2);
        QCOMPARE(edit.onoff_combo->itemText(0), QStringLiteral("Never"));
        QCOMPARE(edit.onoff_combo->itemText(1), QStringLiteral("After"));
        QCOMPARE(edit.frequency_spin->minimum(), 1);
        QCOMPARE(edit.frequency_spin->maximum(), 365);
        QCOMPARE(edit.day_combo->count(), 8);
        for (int i = 0; i < 8; ++i)
            QCOMPARE(edit.day_combo->itemText(i), QString::fromLatin1(day_names[i]));
        QCOMPARE(edit.onoff_combo->currentIndex(), 0);
        QVERIFY(hidesControls(edit));
        QCOMPARE(edit.getFrequency(), 0UL);
        QCOMPARE(edit.getFrequencyNumber(), 1UL);
    }

    void withoutANameItHasTheForms()
    {
        const FrequencyEdit edit;
        QCOMPARE(edit.objectName(), QStringLiteral("FrequencyEdit_UI"));
        QVERIFY(!edit.parentWidget());
    }

    void theObjectsHaveTheirNames()
    {
        const FrequencyEdit edit;
        QCOMPARE(edit.findChild<QGroupBox *>("groupbox"), edit.groupbox);
        QCOMPARE(edit.findChild<QComboBox *>("onoff_combo"), edit.onoff_combo);
        QCOMPARE(edit.findChild<QSpinBox *>("frequency_spin"), edit.frequency_spin);
        QCOMPARE(edit.findChild<QComboBox *>("day_combo"), edit.day_combo);
    }

    void theControlsStandInARow()
    {
        FrequencyEdit edit;
        edit.setFrequency(3);
        edit.resize(600, edit.sizeHint().height());
        edit.show();
        QVERIFY(QTest::qWaitForWindowExposed(&edit));
        const auto *row = qobject_cast<QHBoxLayout *>(edit.groupbox->layout());
        QVERIFY(row);
        QCOMPARE(row->spacing(), 6);
        QCOMPARE(row->contentsMargins(), QMargins(8, 8, 8, 8));
        QCOMPARE(row->count(), 4);
        QCOMPARE(row->itemAt(0)->widget(), edit.onoff_combo);
        QCOMPARE(row->itemAt(1)->widget(), edit.frequency_spin);
        QCOMPARE(row->itemAt(2)->widget(), edit.day_combo);
        QVERIFY(row->itemAt(3)->spacerItem());
        QCOMPARE(edit.groupbox->geometry(), edit.rect());
        // The spacer takes what is left.
        QCOMPARE(edit.day_combo->width(), edit.day_combo->sizeHint().width());
        QVERIFY(edit.day_combo->geometry().right() < 500);
    }

    void theTextsAreTranslated()
    {
        ContextTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const FrequencyEdit edit;
        QCoreApplication::removeTranslator(&translator);
        const auto translated = [](const char *text) {
            return QStringLiteral("FrequencyEdit_UI/") + QString::fromLatin1(text);
        };
        QCOMPARE(edit.groupbox->title(), translated("Frequency"));
        QCOMPARE(edit.groupbox->whatsThis(), translated("Determines when monitor ICC profiles expire."));
        QCOMPARE(edit.onoff_combo->itemText(0), translated("Never"));
        QCOMPARE(edit.onoff_combo->itemText(1), translated("After"));
        for (int i = 0; i < 8; ++i)
            QCOMPARE(edit.day_combo->itemText(i), translated(day_names[i]));
    }

    void theTitleCanBeSet()
    {
        FrequencyEdit edit;
        edit.setTitle(QStringLiteral("Expiry"));
        QCOMPARE(edit.groupbox->title(), QStringLiteral("Expiry"));
    }

    void everyFrequencyIsShownAndRead()
    {
        FrequencyEdit edit;
        for (unsigned long frequency = 1; frequency <= 8; ++frequency) {
            edit.setFrequency(0);
            edit.setFrequency(frequency);
            QCOMPARE(edit.onoff_combo->currentText(), QStringLiteral("After"));
            QCOMPARE(edit.day_combo->currentText(), QString::fromLatin1(day_names[frequency - 1]));
            QVERIFY(showsControls(edit));
            QCOMPARE(edit.getFrequency(), frequency);
        }
    }

    void neverHidesNumberAndDay()
    {
        FrequencyEdit edit;
        edit.setFrequency(5);
        edit.setFrequency(0);
        QVERIFY(hidesControls(edit));
        QCOMPARE(edit.onoff_combo->currentText(), QStringLiteral("Never"));
        for (int i = 0; i < 8; ++i) {
            edit.day_combo->setCurrentIndex(i);
            QCOMPARE(edit.getFrequency(), 0UL);
        }
    }

    void neverLeavesTheDayAlone()
    {
        FrequencyEdit edit;
        edit.setFrequency(5);
        edit.setFrequency(0);
        QCOMPARE(edit.day_combo->currentIndex(), 4);
    }

    void whatIsNoFrequencyShowsNoDay_data()
    {
        QTest::addColumn<qulonglong>("frequency");
        QTest::newRow("9") << 9ULL;
        QTest::newRow("more than an int holds") << (1ULL << 32) + 3;
        QTest::newRow("the largest") << qulonglong(ULONG_MAX);
    }

    void whatIsNoFrequencyShowsNoDay()
    {
        QFETCH(qulonglong, frequency);
        FrequencyEdit edit;
        edit.setFrequency(5);
        edit.setFrequency(static_cast<unsigned long>(frequency));
        QCOMPARE(edit.onoff_combo->currentText(), QStringLiteral("After"));
        QCOMPARE(edit.day_combo->currentIndex(), -1);
        QVERIFY(showsControls(edit));
        QCOMPARE(edit.getFrequency(), 0UL);
    }

    void theNumberStaysInItsRange_data()
    {
        QTest::addColumn<qulonglong>("set");
        QTest::addColumn<qulonglong>("got");
        QTest::newRow("none") << 0ULL << 1ULL;
        QTest::newRow("least") << 1ULL << 1ULL;
        QTest::newRow("some") << 42ULL << 42ULL;
        QTest::newRow("most") << 365ULL << 365ULL;
        QTest::newRow("too many") << 366ULL << 365ULL;
        QTest::newRow("more than an int holds") << (1ULL << 32) + 3 << 365ULL;
        QTest::newRow("negative as an int") << 0x80000001ULL << 365ULL;
        QTest::newRow("the largest") << qulonglong(ULONG_MAX) << 365ULL;
    }

    void theNumberStaysInItsRange()
    {
        QFETCH(qulonglong, set);
        QFETCH(qulonglong, got);
        FrequencyEdit edit;
        edit.setFrequencyNumber(static_cast<unsigned long>(set));
        QCOMPARE(edit.getFrequencyNumber(), static_cast<unsigned long>(got));
        QCOMPARE(edit.frequency_spin->value(), static_cast<int>(got));
    }

    void theUserChoosesByKeys()
    {
        FrequencyEdit edit;
        edit.show();
        QVERIFY(QTest::qWaitForWindowExposed(&edit));
        QTest::keyClick(edit.onoff_combo, Qt::Key_Down);
        QVERIFY(edit.frequency_spin->isVisible() && edit.day_combo->isVisible());
        QCOMPARE(edit.getFrequency(), 1UL);
        QTest::keyClick(edit.frequency_spin, Qt::Key_Up);
        QCOMPARE(edit.getFrequencyNumber(), 2UL);
        QTest::keyClick(edit.day_combo, Qt::Key_Down);
        QCOMPARE(edit.getFrequency(), 2UL);
        QTest::keyClick(edit.onoff_combo, Qt::Key_Up);
        QVERIFY(!edit.frequency_spin->isVisible() && !edit.day_combo->isVisible());
        QCOMPARE(edit.getFrequency(), 0UL);
    }

    void theListAloneShowsNothing()
    {
        // Only what the user activates does, and who calls the slot.
        EditProbe edit;
        edit.onoff_combo->setCurrentIndex(1);
        QVERIFY(hidesControls(edit));
        edit.apply();
        QVERIFY(showsControls(edit));
        edit.onoff_combo->setCurrentIndex(0);
        QVERIFY(showsControls(edit));
        edit.apply();
        QVERIFY(hidesControls(edit));
    }

    void neverIsNeverDue()
    {
        for (const long last : {0L, -1L, LONG_MIN, LONG_MAX, a_monday})
            for (const unsigned long number : {0UL, 1UL, ULONG_MAX}) {
                QVERIFY(!FrequencyEdit::nowIsTheTime(last, 0, number));
                QCOMPARE(FrequencyEdit::expiryTime(last, 0, number), 0L);
            }
        QVERIFY(!isDueOn(mondayPlus(100), mondayPlus(0), 0, 0));
    }

    void dueByDays_data()
    {
        QTest::addColumn<int>("passed");
        QTest::addColumn<qulonglong>("number");
        QTest::addColumn<bool>("due");
        QTest::newRow("at once") << 0 << 0ULL << true;
        QTest::newRow("the same day") << 0 << 1ULL << false;
        QTest::newRow("the next day") << 1 << 1ULL << true;
        QTest::newRow("a day short") << 29 << 30ULL << false;
        QTest::newRow("on the day") << 30 << 30ULL << true;
        QTest::newRow("long after") << 300 << 30ULL << true;
        QTest::newRow("tomorrow") << -1 << 0ULL << false;
        QTest::newRow("in a month") << -30 << 1ULL << false;
        QTest::newRow("more than any calendar has") << 30 << qulonglong(ULONG_MAX) << false;
    }

    void dueByDays()
    {
        QFETCH(int, passed);
        QFETCH(qulonglong, number);
        QFETCH(bool, due);
        const auto days = static_cast<unsigned long>(number);
        QCOMPARE(isDueOn(mondayPlus(passed), mondayPlus(0), 1, days), due);
        const QDate today = QDate::currentDate();
        const long last = long(QDateTime(today.addDays(-passed), QTime(12, 0)).toSecsSinceEpoch());
        QCOMPARE(FrequencyEdit::nowIsTheTime(last, 1, days), due);
    }

    void dueByWeeks_data()
    {
        QTest::addColumn<int>("passed");
        QTest::addColumn<qulonglong>("frequency");
        QTest::addColumn<qulonglong>("number");
        QTest::addColumn<bool>("due");
        // Counted from a Monday.
        QTest::newRow("Wednesday asked on Tuesday") << 22 << 4ULL << 2ULL << false;
        QTest::newRow("Wednesday asked on Wednesday") << 23 << 4ULL << 2ULL << true;
        QTest::newRow("Wednesday asked on Thursday") << 24 << 4ULL << 2ULL << true;
        QTest::newRow("Wednesday asked on Sunday") << 27 << 4ULL << 2ULL << true;
        QTest::newRow("Wednesday asked the next Monday") << 28 << 4ULL << 2ULL << false;
        QTest::newRow("a day short") << 13 << 2ULL << 2ULL << false;
        QTest::newRow("two weeks to the day") << 14 << 2ULL << 2ULL << true;
        QTest::newRow("Sunday asked on Saturday") << 26 << 8ULL << 1ULL << false;
        QTest::newRow("Sunday asked on Sunday") << 27 << 8ULL << 1ULL << true;
        QTest::newRow("Monday asked any day") << 10 << 2ULL << 1ULL << true;
        QTest::newRow("no weeks at all") << 2 << 4ULL << 0ULL << true;
        QTest::newRow("no weeks, too early") << 1 << 4ULL << 0ULL << false;
        QTest::newRow("in the future") << -5 << 4ULL << 0ULL << false;
        QTest::newRow("a week ago in the future") << -5 << 4ULL << 1ULL << false;
        QTest::newRow("a frequency that no day has") << 27 << 9ULL << 0ULL << false;
        QTest::newRow("the largest frequency") << 27 << qulonglong(ULONG_MAX) << 0ULL << false;
        QTest::newRow("a number that would wrap") << 27 << 2ULL << qulonglong(ULONG_MAX / 7 + 1) << false;
        QTest::newRow("the largest number") << 27 << 2ULL << qulonglong(ULONG_MAX) << false;
    }

    void dueByWeeks()
    {
        QFETCH(int, passed);
        QFETCH(qulonglong, frequency);
        QFETCH(qulonglong, number);
        QFETCH(bool, due);
        QCOMPARE(isDueOn(mondayPlus(passed), mondayPlus(0), static_cast<unsigned long>(frequency),
                         static_cast<unsigned long>(number)),
                 due);
    }

    void todayDecides()
    {
        const QDate today = QDate::currentDate();
        const long last = long(QDateTime(today.addDays(-14), QTime(12, 0)).toSecsSinceEpoch());
        for (unsigned long frequency = 2; frequency <= 8; ++frequency) {
            QCOMPARE(FrequencyEdit::nowIsTheTime(last, frequency, 2),
                     static_cast<unsigned long>(today.dayOfWeek()) >= frequency - 1);
            QVERIFY(!FrequencyEdit::nowIsTheTime(last, frequency, 3));
        }
    }

    void timesOutOfAllCalendarsAreFarAway()
    {
        QVERIFY(FrequencyEdit::nowIsTheTime(LONG_MIN, 1, 1'000'000));
        QVERIFY(!FrequencyEdit::nowIsTheTime(LONG_MAX, 1, 0));
        QVERIFY(FrequencyEdit::nowIsTheTime(LONG_MIN, 2, 1'000'000));
        QVERIFY(!FrequencyEdit::nowIsTheTime(LONG_MAX, 2, 0));
    }

    void datesAreLocal_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<qlonglong>("time");
        QTest::addColumn<QDate>("date");
        const QByteArray helsinki("Europe/Helsinki");
        const QByteArray los_angeles("America/Los_Angeles");
        QTest::newRow("UTC") << QByteArray("UTC") << qlonglong(a_monday) << QDate(2027, 3, 1);
        QTest::newRow("Helsinki, still") << helsinki << qlonglong(a_monday + 10 * 3600 - 1) << QDate(2027, 3, 1);
        QTest::newRow("Helsinki, tomorrow") << helsinki << qlonglong(a_monday + 10 * 3600) << QDate(2027, 3, 2);
        QTest::newRow("Los Angeles, still")
            << los_angeles << qlonglong(a_monday - 4 * 3600 - 1) << QDate(2027, 2, 28);
        QTest::newRow("Los Angeles") << los_angeles << qlonglong(a_monday - 4 * 3600) << QDate(2027, 3, 1);
        // 2027-07-14 21:00 UTC
        QTest::newRow("Helsinki, summer") << helsinki << 1'815'598'800LL << QDate(2027, 7, 15);
        QTest::newRow("Helsinki, summer, still") << helsinki << 1'815'598'799LL << QDate(2027, 7, 14);
        QTest::newRow("before 1970") << los_angeles << 0LL << QDate(1969, 12, 31);
        QTest::newRow("2038") << QByteArray("UTC") << 2'147'483'648LL << QDate(2038, 1, 19);
        QTest::newRow("2106") << QByteArray("UTC") << 4'294'967'296LL << QDate(2106, 2, 7);
    }

    void datesAreLocal()
    {
        QFETCH(QByteArray, zone);
        QFETCH(qlonglong, time);
        QFETCH(QDate, date);
        setTimeZone(zone.constData());
        QCOMPARE(localDateOf(long(time)), date);
    }

    void yesterdayIsLocalToo()
    {
        // One minute to midnight and one past it: a day in dates, two minutes by the clock.
        for (const char *const zone : {"Europe/Helsinki", "America/Los_Angeles", "Pacific/Kiritimati"}) {
            setTimeZone(zone);
            const QDate today = QDate::currentDate();
            const long evening = long(QDateTime(today.addDays(-1), QTime(23, 59)).toSecsSinceEpoch());
            const long morning = long(QDateTime(today, QTime(0, 1)).toSecsSinceEpoch());
            if (QDate::currentDate() != today)
                continue; // midnight came in between
            QVERIFY(FrequencyEdit::nowIsTheTime(evening, 1, 1));
            QVERIFY(!FrequencyEdit::nowIsTheTime(morning, 1, 1));
        }
    }

    void expiresByDays()
    {
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 1, 0), a_monday);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 1, 1), a_monday + day);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 1, 365), a_monday + 365 * day);
        QCOMPARE(FrequencyEdit::expiryTime(-10 * day, 1, 3), -7 * day);
    }

    void expiresOnTheWantedDay()
    {
        // From each day of the week to each: on, never back, and not as far as a week.
        for (int start = 0; start < 7; ++start) {
            for (int wanted = 0; wanted < 7; ++wanted) {
                const int on = (wanted - start + 7) % 7;
                const auto frequency = static_cast<unsigned long>(wanted) + 2;
                for (const unsigned long number : {1UL, 2UL, 52UL}) {
                    const long expected = a_monday + start * day + long(number - 1) * week + on * day;
                    QCOMPARE(FrequencyEdit::expiryTime(a_monday + start * day, frequency, number), expected);
                    QCOMPARE(QDateTime::fromSecsSinceEpoch(expected).date().dayOfWeek(), wanted + 1);
                }
            }
        }
    }

    void noWeeksAreOneWeek()
    {
        for (unsigned long frequency = 2; frequency <= 8; ++frequency)
            QCOMPARE(FrequencyEdit::expiryTime(a_monday, frequency, 0),
                     FrequencyEdit::expiryTime(a_monday, frequency, 1));
    }

    void aStartOnTheWantedDayIsTheExpiry()
    {
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 2, 1), a_monday);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday + 6 * day, 8, 1), a_monday + 6 * day);
    }

    void theDayOfTheWeekIsLocal()
    {
        // Monday 23:00 UTC is Tuesday in Helsinki and Monday in Los Angeles.
        const long evening = a_monday + 11 * 3600;
        setTimeZone("Europe/Helsinki");
        QCOMPARE(FrequencyEdit::expiryTime(evening, 3, 1), evening);
        QCOMPARE(FrequencyEdit::expiryTime(evening, 2, 1), evening + 6 * day);
        setTimeZone("America/Los_Angeles");
        QCOMPARE(FrequencyEdit::expiryTime(evening, 2, 1), evening);
        QCOMPARE(FrequencyEdit::expiryTime(evening, 3, 1), evening + day);
    }

    void theDayIsThatAfterTheWeeks()
    {
        // Sunday 2027-03-14, 02:00: clocks in Los Angeles go forward. Saturday the 13th, 23:30, and a week: Sunday.
        setTimeZone("America/Los_Angeles");
        const long saturday = long(QDateTime(QDate(2027, 3, 13), QTime(23, 30)).toSecsSinceEpoch());
        QCOMPARE(FrequencyEdit::expiryTime(saturday, 7, 1), saturday);
        QCOMPARE(FrequencyEdit::expiryTime(saturday, 8, 2), saturday + week);
        QCOMPARE(FrequencyEdit::expiryTime(saturday, 7, 2), saturday + week + 6 * day);
        QCOMPARE(QDateTime::fromSecsSinceEpoch(saturday + week).time(), QTime(0, 30));
    }

    void daysCountTheirSecondsAcrossDaylightSaving()
    {
        setTimeZone("Europe/Helsinki");
        const long friday = long(QDateTime(QDate(2027, 3, 26), QTime(12, 0)).toSecsSinceEpoch());
        const long expiry = FrequencyEdit::expiryTime(friday, 1, 3);
        QCOMPARE(expiry, friday + 3 * day);
        QCOMPARE(QDateTime::fromSecsSinceEpoch(expiry).time(), QTime(13, 0));
    }

    void expiryBefore1970AndAfter2038()
    {
        // 1970-01-01 was a Thursday.
        QCOMPARE(FrequencyEdit::expiryTime(0, 5, 1), 0L);
        QCOMPARE(FrequencyEdit::expiryTime(-1, 5, 1), -1 + day);
        QCOMPARE(FrequencyEdit::expiryTime(-1, 4, 1), -1L);
        QCOMPARE(FrequencyEdit::expiryTime(0, 4, 1), 6 * day);
        const long late = 4'294'967'296; // 2106-02-07, a Sunday
        QCOMPARE(FrequencyEdit::expiryTime(late, 8, 1), late);
        QCOMPARE(FrequencyEdit::expiryTime(late, 2, 3), late + 2 * week + day);
        QCOMPARE(FrequencyEdit::expiryTime(2'147'483'647, 1, 1), 2'147'483'647 + day);
    }

    void frequenciesBeyondSundayCountOn()
    {
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 9, 1), a_monday + 7 * day);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 19, 2), a_monday + week + 17 * day);
    }

    void anExpiryNeverWraps()
    {
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 1, ULONG_MAX), LONG_MAX);
        QCOMPARE(FrequencyEdit::expiryTime(LONG_MAX, 1, 1), LONG_MAX);
        QCOMPARE(FrequencyEdit::expiryTime(LONG_MAX - day, 1, 1), LONG_MAX);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, 2, ULONG_MAX), LONG_MAX);
        QCOMPARE(FrequencyEdit::expiryTime(a_monday, ULONG_MAX, 1), LONG_MAX);
        QCOMPARE(FrequencyEdit::expiryTime(LONG_MIN, 1, 1), LONG_MIN + day);
        QVERIFY(FrequencyEdit::expiryTime(LONG_MIN, 2, 1) < LONG_MIN + week);
    }
};

TAVI_GUI_TEST_MAIN(TestFrequencyEdit)
#include "tst_frequencyedit.moc"
