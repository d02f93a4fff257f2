// SPDX-License-Identifier: MIT
#include "foundation/tavidatetime.h"
#include "tests/support/tavitest.h"

#include <QProcess>

#include <climits>
#include <cstdio>
#include <ctime>
#include <type_traits>

namespace {

constexpr long noon_of_winter = 1'800'014'400; // 2027-01-15 12:00 UTC
constexpr long noon_of_summer = 1'815'652'800; // 2027-07-15 12:00 UTC
constexpr long reference_date = 978'307'200;   // 2001-01-01 00:00 UTC
constexpr long beyond_32_bits = 4'102'488'000; // 2100-01-01 12:00 UTC
constexpr long five_million_years = 157'788'000'000'000;

/// Qt::LocalDate, which Qt hides from code that is built without what it deprecates.
constexpr auto locale_format = static_cast<Qt::DateFormat>(2);

void setTimeZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

/// ICU parts hours and halves of the day by a narrow space in some versions, and by a plain one in others.
QString plainSpaces(QString text)
{
    return text.replace(QChar(0x202f), QLatin1Char(' ')).replace(QChar(0xa0), QLatin1Char(' '));
}

/// The text as another process writes it, with these variables and no other ones that choose a locale or zone.
QString textElsewhere(long time, const QStringList &variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *const variable : {"LC_ALL", "LC_TIME", "LC_MESSAGES", "LANG", "LANGUAGE", "TZ"})
        environment.remove(QString::fromLatin1(variable));
    for (const QString &variable : variables)
        environment.insert(variable.section('=', 0, 0), variable.section('=', 1));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {"--text", QString::number(time)});
    if (!process.waitForFinished(30000) || process.exitCode() != 0)
        return QStringLiteral("failed: ") + process.readAllStandardError();
    return plainSpaces(QString::fromUtf8(process.readAllStandardOutput()));
}

} // namespace

/// The test's own process writes as Britain does; others are started for other locales, because each keeps the one
/// that it begins with.
class TestTaviDateTime : public TaviTest
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
        static_assert(std::is_base_of_v<QDateTime, TaviDateTime>);
        static_assert(sizeof(TaviDateTime) == sizeof(QDateTime));
        QVERIFY(TaviDateTime().isNull());
        setTimeZone("Europe/Helsinki");
        const QDate date(2027, 7, 15);
        const TaviDateTime midnight(date);
        QCOMPARE(midnight.date(), date);
        QCOMPARE(midnight.time(), QTime(0, 0));
        QCOMPARE(midnight.timeSpec(), Qt::LocalTime);
        const TaviDateTime afternoon(date, QTime(15, 0));
        QCOMPARE(afternoon.timeSpec(), Qt::LocalTime);
        QCOMPARE(long(afternoon.toSecsSinceEpoch()), noon_of_summer);
        QVERIFY(!TaviDateTime(QDate()).isValid());
        QVERIFY(!TaviDateTime(QDate(), QTime(15, 0)).isValid());
        QCOMPARE(TaviDateTime(date, QTime()).time(), QTime(0, 0));
    }

    void localDateIsTheLocalesShortDateAndTime()
    {
        const QString text = "15/01/2027, 12:00";
        QCOMPARE(TaviDateTime::localeDateString(noon_of_winter), text);
        QCOMPARE(TaviDateTime::toString(noon_of_winter, locale_format), text);
        const TaviDateTime value(QDate(2027, 1, 15), QTime(12, 0));
        QCOMPARE(value.localeDateString(), text);
        QCOMPARE(value.toString(locale_format), text);
    }

    void otherFormatsAreTheBases_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("text") << int(Qt::TextDate);
        QTest::newRow("ISO") << int(Qt::ISODate);
        QTest::newRow("ISO with milliseconds") << int(Qt::ISODateWithMs);
        QTest::newRow("RFC 2822") << int(Qt::RFC2822Date);
    }

    void otherFormatsAreTheBases()
    {
        QFETCH(int, format);
        setTimeZone("America/Los_Angeles");
        const auto as = static_cast<Qt::DateFormat>(format);
        const TaviDateTime value(QDate(2027, 7, 15), QTime(5, 0));
        const QDateTime &base = value;
        QVERIFY(!base.toString(as).isEmpty());
        QCOMPARE(value.toString(as), base.toString(as));
        QCOMPARE(TaviDateTime::toString(noon_of_summer, as), base.toString(as));
        QVERIFY(value.toString(as) != value.localeDateString());
    }

    void theBasesOtherTextsAreInReach()
    {
        const TaviDateTime value(QDate(2027, 7, 15), QTime(5, 0));
        QCOMPARE(value.toString(), QStringLiteral("Thu Jul 15 05:00:00 2027"));
        QCOMPARE(value.toString(QStringLiteral("yyyy-MM")), QStringLiteral("2027-07"));
    }

    void textsAreInLocalTime_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<qlonglong>("time");
        QTest::addColumn<QString>("text");
        QTest::newRow("Helsinki, winter")
            << QByteArray("Europe/Helsinki") << qlonglong(noon_of_winter) << "15/01/2027, 14:00";
        QTest::newRow("Helsinki, summer")
            << QByteArray("Europe/Helsinki") << qlonglong(noon_of_summer) << "15/07/2027, 15:00";
        QTest::newRow("Los Angeles, winter")
            << QByteArray("America/Los_Angeles") << qlonglong(noon_of_winter) << "15/01/2027, 04:00";
        QTest::newRow("Los Angeles, summer")
            << QByteArray("America/Los_Angeles") << qlonglong(noon_of_summer) << "15/07/2027, 05:00";
        // 2027-03-28 01:00 UTC: from 03:00 to 04:00
        QTest::newRow("before the missing hour")
            << QByteArray("Europe/Helsinki") << 1'806'195'599LL << "28/03/2027, 02:59";
        QTest::newRow("after the missing hour")
            << QByteArray("Europe/Helsinki") << 1'806'195'600LL << "28/03/2027, 04:00";
        // 2027-10-31 01:00 UTC: from 04:00 back to 03:00
        QTest::newRow("the hour that comes twice")
            << QByteArray("Europe/Helsinki") << 1'824'944'340LL << "31/10/2027, 03:59";
        QTest::newRow("the second time") << QByteArray("Europe/Helsinki") << 1'824'944'400LL << "31/10/2027, 03:00";
        QTest::newRow("1970") << QByteArray("UTC") << 0LL << "01/01/1970, 00:00";
        QTest::newRow("the evening before") << QByteArray("America/Los_Angeles") << 0LL << "31/12/1969, 16:00";
        QTest::newRow("2001") << QByteArray("UTC") << qlonglong(reference_date) << "01/01/2001, 00:00";
        QTest::newRow("before 1970") << QByteArray("UTC") << -1LL << "31/12/1969, 23:59";
        QTest::newRow("long before") << QByteArray("UTC") << -2'208'988'800LL << "01/01/1900, 00:00";
        QTest::newRow("the last of 32 bits") << QByteArray("UTC") << 2'147'483'647LL << "19/01/2038, 03:14";
        QTest::newRow("one later") << QByteArray("UTC") << 2'147'483'648LL << "19/01/2038, 03:14";
        QTest::newRow("2100") << QByteArray("Europe/Helsinki") << qlonglong(beyond_32_bits) << "01/01/2100, 14:00";
        QTest::newRow("2100, summer") << QByteArray("Europe/Helsinki") << 4'118'126'400LL << "01/07/2100, 15:00";
        QTest::newRow("beyond 32 bits unsigned") << QByteArray("UTC") << 4'294'967'296LL << "07/02/2106, 06:28";
    }

    void textsAreInLocalTime()
    {
        QFETCH(QByteArray, zone);
        QFETCH(qlonglong, time);
        QFETCH(QString, text);
        setTimeZone(zone.constData());
        const QDateTime clock = QDateTime::fromSecsSinceEpoch(time);
        QCOMPARE(clock.toString("dd/MM/yyyy, HH:mm"), text);
        QCOMPARE(TaviDateTime::localeDateString(long(time)), text);
        QCOMPARE(TaviDateTime(clock.date(), clock.time()).date(), clock.date());
    }

    void aValueOfAnotherSpecIsShownInLocalTime()
    {
        setTimeZone("Europe/Helsinki");
        TaviDateTime value;
        value.setTimeSpec(Qt::UTC);
        value.setSecsSinceEpoch(noon_of_winter);
        QCOMPARE(value.localeDateString(), QStringLiteral("15/01/2027, 14:00"));
        QCOMPARE(value.toString(locale_format), QStringLiteral("15/01/2027, 14:00"));
    }

    void partsOfASecondAreLeftOut()
    {
        const TaviDateTime value(QDate(2027, 1, 15), QTime(12, 0, 59, 999));
        QCOMPARE(value.localeDateString(), QStringLiteral("15/01/2027, 12:00"));
    }

    void whatIsNoTimeHasNoText()
    {
        QVERIFY(TaviDateTime().localeDateString().isNull());
        QVERIFY(TaviDateTime().toString(locale_format).isNull());
        for (const long time : {LONG_MAX, LONG_MIN, LONG_MAX / 1000 + 1, LONG_MIN / 1000, 200'000'000'000'000L}) {
            QVERIFY(TaviDateTime::localeDateString(time).isNull());
            QVERIFY(TaviDateTime::toString(time, locale_format).isNull());
            QVERIFY(TaviDateTime::toString(time, Qt::TextDate).isNull());
        }
        // Five million years are fine.
        for (const long time : {five_million_years, -five_million_years}) {
            QVERIFY(!TaviDateTime::localeDateString(time).isEmpty());
            QVERIFY(!TaviDateTime::toString(time, Qt::TextDate).isEmpty());
        }
    }

    void nowIsLocal()
    {
        setTimeZone("America/Los_Angeles");
        const QDateTime before = QDateTime::currentDateTime();
        const TaviDateTime now = TaviDateTime::currentDateTime();
        const QDateTime after = QDateTime::currentDateTime();
        QVERIFY(before <= now && now <= after);
        QCOMPARE(now.timeSpec(), Qt::LocalTime);
    }

    void nowIsToldToTheMillisecond()
    {
        // 20 readings all at a full second would be a wonder.
        bool parts = false;
        for (int i = 0; i < 20 && !parts; ++i) {
            parts = TaviDateTime::currentDateTime().time().msec() != 0;
            if (!parts)
                QTest::qSleep(3);
        }
        QVERIFY(parts);
    }

    void nowHasTheSpecThatIsAskedFor_data()
    {
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("spec");
        QTest::newRow("local") << int(Qt::LocalTime) << int(Qt::LocalTime);
        QTest::newRow("UTC") << int(Qt::UTC) << int(Qt::UTC);
        QTest::newRow("offset") << int(Qt::OffsetFromUTC) << int(Qt::UTC);
        QTest::newRow("zone") << int(Qt::TimeZone) << int(Qt::LocalTime);
    }

    void nowHasTheSpecThatIsAskedFor()
    {
        QFETCH(int, asked);
        QFETCH(int, spec);
        setTimeZone("America/Los_Angeles");
        const qint64 before = QDateTime::currentSecsSinceEpoch();
        const TaviDateTime now = TaviDateTime::currentDateTime(static_cast<Qt::TimeSpec>(asked));
        const qint64 after = QDateTime::currentSecsSinceEpoch();
        QVERIFY(before <= now.toSecsSinceEpoch() && now.toSecsSinceEpoch() <= after);
        QCOMPARE(int(now.timeSpec()), spec);
        QCOMPARE(now.time().msec(), 0);
        const QDateTime expected =
            QDateTime::fromSecsSinceEpoch(now.toSecsSinceEpoch(), static_cast<Qt::TimeSpec>(spec));
        QCOMPARE(now.time(), expected.time());
        QCOMPARE(now.date(), expected.date());
    }

    void everyLocaleHasItsText_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::newRow("United States") << "en_US.UTF-8"
                                       << "1/15/27, 12:00 PM";
        QTest::newRow("Germany") << "de_DE.UTF-8"
                                 << "15.01.27, 12:00";
        QTest::newRow("Japan") << "ja_JP.UTF-8"
                               << "2027/01/15 12:00";
        QTest::newRow("Sweden") << "sv_SE.UTF-8"
                                << "2027-01-15 12:00";
        QTest::newRow("Thailand, with its calendar") << "th_TH.UTF-8"
                                                     << "15/1/70 12:00";
        QTest::newRow("Egypt, with its digits")
            << "ar_EG.UTF-8" << QString::fromUtf8("١٥‏/١‏/٢٠٢٧، ١٢:٠٠ م");
        QTest::newRow("euro variant") << "de_DE@euro"
                                      << "15.01.27, 12:00";
    }

    void everyLocaleHasItsText()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QCOMPARE(textElsewhere(noon_of_winter, {"LC_ALL=" + locale, "TZ=UTC"}), text);
    }

    void theLocaleOfTimesDecides()
    {
        const QString british = "15/01/2027, 12:00";
        const QString german = "15.01.27, 12:00";
        const auto text = [](const QStringList &variables) {
            return textElsewhere(noon_of_winter, QStringList(variables) << "TZ=UTC");
        };
        QCOMPARE(text({"LANG=de_DE.UTF-8"}), german);
        QCOMPARE(text({"LANG=de_DE.UTF-8", "LC_TIME=en_GB.UTF-8"}), british);
        QCOMPARE(text({"LANG=de_DE.UTF-8", "LC_MESSAGES=en_GB.UTF-8", "LC_NUMERIC=en_GB.UTF-8"}), german);
        QCOMPARE(text({"LANG=de_DE.UTF-8", "LC_TIME=de_DE.UTF-8", "LC_ALL=en_GB.UTF-8"}), british);
        QCOMPARE(text({"LANG=de_DE.UTF-8", "LC_TIME=", "LC_ALL="}), german);
    }

    void withoutALocaleThereStillIsAText_data()
    {
        QTest::addColumn<QStringList>("variables");
        QTest::newRow("none") << QStringList();
        QTest::newRow("C") << QStringList("LC_ALL=C");
        QTest::newRow("POSIX") << QStringList("LC_ALL=POSIX");
        QTest::newRow("C.UTF-8") << QStringList("LC_ALL=C.UTF-8");
        QTest::newRow("unknown") << QStringList("LC_ALL=xx_YY.UTF-8");
        QTest::newRow("nonsense") << QStringList("LC_ALL=@@@...///");
        QTest::newRow("long") << QStringList("LC_ALL=" + QString(5000, 'x'));
    }

    void withoutALocaleThereStillIsAText()
    {
        QFETCH(QStringList, variables);
        const QString text = textElsewhere(noon_of_winter, QStringList(variables) << "TZ=UTC");
        QVERIFY2(text.contains("12:00") && text.contains("15"), qPrintable(text));
        QVERIFY2(!text.contains("failed"), qPrintable(text));
    }

    void theFirstLocaleIsKept()
    {
        const QString british = "15/01/2027, 12:00";
        QCOMPARE(TaviDateTime::localeDateString(noon_of_winter), british);
        const QByteArray environment = qgetenv("LC_ALL");
        qputenv("LC_ALL", "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German));
        const QString text = TaviDateTime::localeDateString(noon_of_winter);
        QLocale::setDefault(QLocale::c());
        qputenv("LC_ALL", environment);
        QCOMPARE(text, british);
    }

    void theZoneIsNotKept()
    {
        setTimeZone("UTC");
        QCOMPARE(TaviDateTime::localeDateString(noon_of_winter), QStringLiteral("15/01/2027, 12:00"));
        setTimeZone("Europe/Helsinki");
        QCOMPARE(TaviDateTime::localeDateString(noon_of_winter), QStringLiteral("15/01/2027, 14:00"));
    }
};

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--text") == 0) {
        std::fputs(TaviDateTime::localeDateString(QByteArray(argv[2]).toLong()).toUtf8().constData(), stdout);
        return 0;
    }
    return taviTestMain<TestTaviDateTime>(argc, argv, false);
}
#include "tst_tavidatetime.moc"
