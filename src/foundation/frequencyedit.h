// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_FREQUENCYEDIT_H
#define FOUNDATION_FREQUENCYEDIT_H

#include "foundation/taviwidgets_export.h"
#include "foundation/ui_frequencyedit_ui.h"

#include <QString>
#include <QWidget>

/// A small group box in which the user says how often something is to happen, or when it expires: never, after a
/// number of days, or on a day of the week after a number of weeks.
///
/// @image html frequencyedit.png
///
/// Two numbers make a setting, the frequency and its number:
///
/// | Frequency | Meaning | The number means |
/// |---|---|---|
/// | 0 | never | nothing |
/// | 1 | days | days |
/// | 2 to 8 | Mondays to Sundays: the frequency less one is QDate::dayOfWeek() | weeks |
///
/// @code
/// auto *edit = new FrequencyEdit(page, "profile_expiry");
/// edit->setFrequency(4);
/// edit->setFrequencyNumber(2); // after two weeks, on Wednesday
/// ...
/// if (FrequencyEdit::nowIsTheTime(profile.created, edit->getFrequency(), edit->getFrequencyNumber()))
///     remindToCalibrate();
/// @endcode
///
/// It begins as "Never". Setters emit no signal; the controls are public and have theirs.
///
/// **Dates** are local, and so are days of the week, daylight saving included; what TaviDateTime says of Qt's time
/// zones holds here too.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT FrequencyEdit : public QWidget, public Ui::FrequencyEdit_UI
{
    Q_OBJECT

public:
    /// @param parent the owner, or null
    /// @param name object name, UTF-8; null for the form's
    explicit FrequencyEdit(QWidget *parent = nullptr, const char *name = nullptr);
    ~FrequencyEdit() override;

    /// Sets the title of the group box.
    void setTitle(const QString &title);

    /// What was chosen; 0 at "Never", whatever day the hidden list holds.
    unsigned long getFrequency() const;
    /// Chooses @a frequency and shows the controls that go with it. 0 leaves the day in the list alone. A number
    /// above 8 is no frequency: "After" then shows with no day, and getFrequency() gives 0 until the user chooses
    /// one.
    void setFrequency(unsigned long frequency);

    /// How many days or weeks: 1 to 365.
    unsigned long getFrequencyNumber() const;
    /// Sets how many days or weeks. What is out of range goes to its nearest end.
    void setFrequencyNumber(unsigned long number);

    /// Whether what was done at @a last is due today.
    ///
    /// @param last seconds since 1970 UTC
    /// @param frequency how often; 0 is never due
    /// @param number how many days or weeks; 0 asks for none to have passed
    ///
    /// By days: from the date of @a last on at least @a number days have passed. By weeks: at least 7 days for each
    /// of
    /// @a number have passed, and today is that day of the week **or a later one** of the same week, which begins on
    /// Monday. So who asks on Thursday is told of what was due on Wednesday. Before @a last nothing is due, and with
    /// a frequency above 8 nothing ever.
    static bool nowIsTheTime(long last, unsigned long frequency, unsigned long number);

    /// When what was done at @a start expires.
    ///
    /// @param start seconds since 1970 UTC
    /// @param frequency how often
    /// @param number how many days or weeks
    /// @return seconds since 1970 UTC; 0 for the frequency 0, which never expires
    ///
    /// By days: @a number times 86400 seconds after @a start. By weeks: @a number less one weeks (none for 0) after
    /// @a start, and from there on to the wanted day of the week, unless it is that already. Days count 86400
    /// seconds, so that the clock may show another hour after a change of daylight saving. A frequency above 8 goes
    /// on counting days past Sunday: 9 is the day after. A time too late for a long is the latest that it holds.
    static long expiryTime(long start, unsigned long frequency, unsigned long number);

protected Q_SLOTS:
    /// Shows number and day unless "Never" is chosen; otherwise hides them.
    void onoffActivated();
};

#endif
