// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/renamemethod_p.h"

Q_DECLARE_METATYPE(RenameMethod)

/// What a rename makes of a text.
class TestRenameMethod : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aTextIsRenamed_data()
    {
        QTest::addColumn<RenameMethod>("method");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("with");
        QTest::addColumn<bool>("ignore_case");
        QTest::addColumn<QString>("expected"); // null where the text is left alone
        const auto row = [](const char *name, RenameMethod method, const char *text, const char *op, const char *with,
                            bool ignore_case, const QString &expected) {
            QTest::newRow(name) << method << QString::fromUtf8(text) << QString::fromUtf8(op)
                                << QString::fromUtf8(with) << ignore_case << expected;
        };
        const auto replace = RenameMethod::Replace, prefix = RenameMethod::Prefix, append = RenameMethod::Append;
        row("replaced", replace, "cyan 40", "40", "50", false, "cyan 50");
        row("in every place", replace, "40 of 40", "40", "50", false, "50 of 50");
        row("by something that has it again", replace, "aa", "a", "aa", false, "aaaa");
        row("by nothing", replace, "cyan 40", " 40", "", false, "cyan");
        row("nothing is left", replace, "cyan", "cyan", "", false, "");
        row("not there", replace, "cyan", "40", "50", false, QString());
        row("by the same", replace, "cyan", "cyan", "cyan", false, "cyan");
        row("case counts", replace, "Cyan cyan", "cyan", "ink", false, "Cyan ink");
        row("case counts, not there", replace, "CYAN", "cyan", "ink", false, QString());
        row("case is ignored", replace, "Cyan CYAN", "cyan", "ink", true, "ink ink");
        row("no pattern", replace, "cyan", "c.*", "ink", true, QString());
        row("accents", replace, "Größe", "ÖSSE", "x", true, QString());
        row("other letters", replace, "ΨΩ", "ω", "a", true, QStringLiteral("Ψa"));
        row("looking for nothing", replace, "cyan", "", "x", true, QString());
        row("put before", prefix, "cyan", "new ", "unused", false, "new cyan");
        row("put before nothing", prefix, "", "new", "", false, "new");
        row("nothing put before", prefix, "cyan", "", "x", false, QString());
        row("put behind", append, "cyan", " old", "unused", false, "cyan old");
        row("nothing put behind", append, "cyan", "", "x", false, QString());
        row("put behind what has it", append, "cyan old", " old", "", true, "cyan old old");
    }
    void aTextIsRenamed()
    {
        QFETCH(const RenameMethod, method);
        QFETCH(const QString, text);
        QFETCH(const QString, op);
        QFETCH(const QString, with);
        QFETCH(const QString, expected);
        QFETCH(const bool, ignore_case);
        RenameRule rule;
        rule.method = method;
        rule.op = op;
        rule.with = with;
        rule.case_sensitivity = ignore_case ? Qt::CaseInsensitive : Qt::CaseSensitive;
        const std::optional<QString> renamed = rule.renamed(text);
        QCOMPARE(renamed.has_value(), !expected.isNull());
        if (renamed)
            QCOMPARE(*renamed, expected);
    }

    void aTextIsFound_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<bool>("ignore_case");
        QTest::addColumn<bool>("found");
        QTest::newRow("as it is") << "Cyan" << false << true;
        QTest::newRow("a part") << "yan 4" << false << true;
        QTest::newRow("other case") << "cyan" << false << false;
        QTest::newRow("other case ignored") << "cyan" << true << true;
        QTest::newRow("not there") << "black" << true << false;
        QTest::newRow("nothing is everywhere") << "" << false << true;
    }
    void aTextIsFound()
    {
        QFETCH(const QString, op);
        QFETCH(const bool, ignore_case);
        QFETCH(const bool, found);
        RenameRule rule;
        rule.op = op;
        rule.case_sensitivity = ignore_case ? Qt::CaseInsensitive : Qt::CaseSensitive;
        QCOMPARE(rule.isIn("Cyan 40"), found);
        rule.method = RenameMethod::Append;
        QCOMPARE(rule.isIn("Cyan 40"), found);
    }

    void theNumbersAreThoseOfTheSettings()
    {
        QCOMPARE(int(RenameMethod::Replace), 0);
        QCOMPARE(int(RenameMethod::Prefix), 1);
        QCOMPARE(int(RenameMethod::Append), 2);
        QCOMPARE(rename_method_count, 3);
        // One that does not exist does nothing.
        RenameRule rule;
        rule.op = "x";
        rule.method = RenameMethod(3);
        QVERIFY(!rule.renamed("x"));
    }
};

TAVI_TEST_MAIN(TestRenameMethod)
#include "tst_renamemethod.moc"
