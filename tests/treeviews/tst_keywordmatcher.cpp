// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/keywordmatcher_p.h"

#include <QRandomGenerator>

class TestKeywordMatcher : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void matches_data();
    void matches();
    void agreesWithLoweredTextsOfAnyKind();
};

void TestKeywordMatcher::matches_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("any_case");
    QTest::addColumn<bool>("hit");
    const auto row = [](const char *name, const char *keyword, const char *text, bool any_case, bool hit) {
        QTest::newRow(name) << QString::fromUtf8(keyword) << QString::fromUtf8(text) << any_case << hit;
    };
    row("empty keyword", "", "text", true, true);
    row("empty keyword in empty text", "", "", true, true);
    row("empty text", "a", "", true, false);
    row("lower case finds upper case", "yan", "CYAN 50", true, true);
    row("upper case finds lower case", "YAN", "cyan 50", true, true);
    row("with regard to case", "yan", "CYAN 50", false, false);
    row("with regard to case, same", "YAN", "CYAN 50", false, true);
    row("at the end", "50", "cyan 50", true, true);
    row("first and last letter", "az", "AZ", true, true);
    row("beside the letters", "@[`{", "@[`{", true, true);
    row("beside the letters, another", "`{", "@[", true, false);
    row("whole text", "cyan", "Cyan", true, true);
    row("too long", "cyans", "Cyan", true, false);
    row("begins twice", "aab", "aaab", true, true);
    row("a dot is a dot", "a.c", "abc", true, false);
    row("a dot finds a dot", "a.c", "A.C", true, true);
    row("brackets and stars", "[a]*", "x[A]*y", true, true);
    row("umlaut", "grün", "GRÜN", true, true);
    row("umlaut behind a plain hit", "gr", "GRÜN", true, true);
    row("plain hit behind an umlaut", "n", "ÜBUNG", true, true);
    row("kelvin sign", "k", "\xe2\x84\xaa", true, true);
    row("dotted capital I", "i\xcc\x87", "\xc4\xb0", true, true);
    row("dotted capital I gets longer", "\xcc\x87", "\xc4\xb0", true, true);
    row("sharp s is no ss", "ss", "ß", true, false);
    row("final sigma is another letter", "ς", "Σ", true, false);
    row("letter of two units", "\xf0\x90\x90\xa8", "\xf0\x90\x90\x80", true, true);
}

void TestKeywordMatcher::matches()
{
    QFETCH(QString, keyword);
    QFETCH(QString, text);
    QFETCH(bool, any_case);
    QFETCH(bool, hit);
    QCOMPARE(KeywordMatcher(keyword, any_case ? Qt::CaseInsensitive : Qt::CaseSensitive).isIn(text), hit);
}

void TestKeywordMatcher::agreesWithLoweredTextsOfAnyKind()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    const QString letters = QStringLiteral("aAbB.i\u0130\u0307Iß\u03a3\u03c3\u03c2\u212a\u00e4\u00c4");
    const auto word = [&](int longest) {
        QString made;
        for (int i = random.bounded(longest + 1); i > 0; --i)
            made += letters.at(random.bounded(letters.size()));
        return made;
    };
    for (int step = 0; step < 20000; ++step) {
        const QString keyword = word(3);
        const QString text = word(8);
        QVERIFY2(KeywordMatcher(keyword, Qt::CaseInsensitive).isIn(text)
                     == (text.toLower().indexOf(keyword.toLower()) >= 0),
                 qPrintable(QStringLiteral("seed %1: '%2' in '%3'").arg(seed).arg(keyword, text)));
    }
}

TAVI_TEST_MAIN(TestKeywordMatcher)
#include "tst_keywordmatcher.moc"
