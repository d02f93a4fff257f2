// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "treeviews/renamesettings_p.h"

#include <climits>

namespace {

/// As "method case wrap x y width".
QString numbersOf(const RenameSettings &settings)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(settings.method)
        .arg(int(settings.ignore_case))
        .arg(int(settings.wrap))
        .arg(settings.place.x())
        .arg(settings.place.y())
        .arg(settings.width);
}

RenameSettings defaults()
{
    RenameSettings settings;
    settings.place = QPoint(70, 80);
    return settings;
}

} // namespace

/// What the rename dialogs keep.
class TestRenameSettings : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsStoredWhere()
    {
        TaviRegistry registry;
        std::string section = "inks";
        RenameSettings settings;
        settings.value = QStringLiteral("Größe Ω");
        settings.replacement = QStringLiteral("Maß");
        settings.method = 2;
        settings.ignore_case = false;
        settings.wrap = true;
        settings.place = QPoint(11, -22);
        settings.width = 333;
        settings.write(registry, section);
        QCOMPARE(registry.size("inks"), size_t(4));
        QCOMPARE(registry.getstring("inks", "rename_value"), std::string("Gr\xC3\xB6\xC3\x9F"
                                                                         "e \xCE\xA9"));
        QCOMPARE(registry.getstring("inks", "rename_replace"), std::string("Ma\xC3\x9F"));
        QCOMPARE(registry.getstring("inks", "rename_settings"), std::string("2 0 1"));
        QCOMPARE(registry.getstring("inks", "rename_geometry"), std::string("11 -22 333"));
        RenameSettings read;
        read.read(registry, section);
        QCOMPARE(read.value, settings.value);
        QCOMPARE(read.replacement, settings.replacement);
        QCOMPARE(numbersOf(read), QString("2 0 1 11 -22 333"));
    }

    void nothingStoredChangesNothing()
    {
        TaviRegistry registry;
        std::string section = "inks";
        RenameSettings settings = defaults();
        settings.value = "kept";
        settings.replacement = "kept, too";
        settings.read(registry, section);
        QCOMPARE(numbersOf(settings), QString("0 1 0 70 80 0"));
        QCOMPARE(settings.value, QString("kept"));
        QCOMPARE(settings.replacement, QString("kept, too"));
        registry.putstring("inks", "rename_value", "");
        registry.putstring("inks", "rename_replace", "");
        settings.read(registry, section);
        QCOMPARE(settings.value, QString("kept"));
        QCOMPARE(settings.replacement, QString("kept, too"));
    }

    void anySettings_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QByteArray>("geometry");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QByteArray &settings, const QByteArray &geometry,
                            const char *expected) {
            QTest::newRow(name) << settings << geometry << QString::fromLatin1(expected);
        };
        row("as written", "1 0 1", "5 6 700", "1 0 1 5 6 700");
        row("any white space", "  2\t1\n1 ", "5\n6  700", "2 1 1 5 6 700");
        row("any number but 0 is on", "0 -7 12", "", "0 1 1 70 80 0");
        row("fewer numbers", "2", "5 6", "2 1 0 5 6 0");
        row("words", "two 0 1", "5 six 700", "0 1 0 5 80 0");
        row("a word behind", "2 0 x", "5 6 7x", "2 0 0 5 6 0");
        row("more numbers", "1 0 1 9 9", "5 6 700 9", "1 0 1 5 6 700");
        row("a method that does not exist", "3 0 1", "", "0 0 1 70 80 0");
        row("a negative method", "-1 0 1", "", "0 0 1 70 80 0");
        row("a huge method", "99999999999 0 1", "", "0 1 0 70 80 0");
        row("huge geometry", "", "2147483647 -2147483648 99999999999", "0 1 0 2147483647 -2147483648 0");
    }
    void anySettings()
    {
        QFETCH(const QByteArray, settings);
        QFETCH(const QByteArray, geometry);
        QFETCH(const QString, expected);
        TaviRegistry registry;
        std::string section = "inks";
        registry.putstring("inks", "rename_settings", settings.constData());
        registry.putstring("inks", "rename_geometry", geometry.constData());
        RenameSettings read = defaults();
        read.read(registry, section);
        QCOMPARE(numbersOf(read), expected);
    }
};

TAVI_TEST_MAIN(TestRenameSettings)
#include "tst_renamesettings.moc"
