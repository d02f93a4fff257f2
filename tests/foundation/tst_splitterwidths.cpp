// SPDX-License-Identifier: MIT
#include "foundation/splitterwidths_p.h"
#include "tests/support/tavitest.h"

#include <climits>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

/// The text of a splitter's widths, without a splitter.
class TestSplitterWidths : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void eachWidthHasABlankBehindIt()
    {
        QCOMPARE(splitterWidthsText({120, 300}), QStringLiteral("120 300 "));
        QCOMPARE(splitterWidthsText({0}), QStringLiteral("0 "));
        QCOMPARE(splitterWidthsText({-5, INT_MAX}), QStringLiteral("-5 2147483647 "));
    }

    void noWidthsAreEmptyAndNotNull()
    {
        QVERIFY(splitterWidthsText({}).isEmpty());
        QVERIFY(!splitterWidthsText({}).isNull());
    }

    void aTextIsReadForItsPanes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVector<bool>>("hidden");
        QTest::addColumn<QList<int>>("widths");
        const QVector<bool> two = {false, false};
        const QVector<bool> three = {false, false, false};
        QTest::newRow("as written") << "120 300 " << two << QList<int>{120, 300};
        QTest::newRow("without the last blank") << "120 300" << two << QList<int>{120, 300};
        QTest::newRow("blanks more than needed") << "  120   300  " << two << QList<int>{120, 300};
        QTest::newRow("surplus widths") << "1 2 3 4 " << two << QList<int>{1, 2, 3, 4};
        QTest::newRow("no panes") << "1 2 " << QVector<bool>() << QList<int>{1, 2};
        QTest::newRow("no number is 0") << "wide 300 " << two << QList<int>{0, 300};
        QTest::newRow("no decimal number is 0") << "0x20 1e2 " << two << QList<int>{0, 0};
        QTest::newRow("too large a number is 0") << "2147483648 7 " << two << QList<int>{0, 7};
        QTest::newRow("base 10 in spite of a leading 0") << "010 7 " << two << QList<int>{10, 7};
        QTest::newRow("negative") << "-10 7 " << two << QList<int>{-10, 7};
        QTest::newRow("0 of a shown pane") << "0 300 " << two << QList<int>{0, 300};
        QTest::newRow("0 of a hidden pane") << "0 300 " << QVector<bool>{true, false} << QList<int>{50, 300};
        QTest::newRow("no number for a hidden pane") << "x 300 " << QVector<bool>{true, false} << QList<int>{50, 300};
        QTest::newRow("a width of a hidden pane") << "70 300 " << QVector<bool>{true, true} << QList<int>{70, 300};
        QTest::newRow("0 behind the panes") << "0 300 0 " << QVector<bool>{true, true} << QList<int>{50, 300, 0};
        QTest::newRow("one number for three panes") << "300" << three << QList<int>{300, 300, 300};
        QTest::newRow("two numbers for three panes") << "100 201" << three << QList<int>{150, 150, 150};
        QTest::newRow("two zeros for three panes") << "0 0" << three << QList<int>{50, 50, 50};
        QTest::newRow("a hidden pane's 50 counts in the mean")
            << "0 0" << QVector<bool>{true, false, false} << QList<int>{25, 25, 25};
        QTest::newRow("a mean below 1 is 0") << "1 0" << three << QList<int>{0, 0, 0};
        QTest::newRow("a negative sum") << "-300 100" << three << QList<int>{50, 50, 50};
        QTest::newRow("only blanks") << "   " << two << QList<int>{50, 50};
        QTest::newRow("a sum beyond int")
            << "2147483647 2147483647" << three << QList<int>{INT_MAX, INT_MAX, INT_MAX};
    }

    void aTextIsReadForItsPanes()
    {
        QFETCH(QString, text);
        QFETCH(QVector<bool>, hidden);
        QTEST(splitterWidthsOfText(text, hidden), "widths");
    }

    void widthsComeBackButHiddenZeros()
    {
        std::mt19937 generator(6);
        for (int round = 0; round < 5000; ++round) {
            QList<int> widths;
            QList<int> wanted;
            QVector<bool> hidden;
            for (auto panes = generator() % 8; panes > 0; --panes) {
                const bool is_hidden = generator() % 3 == 0;
                const int width = is_hidden || generator() % 5 == 0 ? 0 : static_cast<int>(generator() % 2000);
                hidden.append(is_hidden);
                widths.append(width);
                wanted.append(is_hidden ? 50 : width);
            }
            QCOMPARE(splitterWidthsOfText(splitterWidthsText(widths), hidden), wanted);
        }
    }

    /// Any text, read a second time character by character.
    void anyTextByCharacter()
    {
        std::mt19937 generator(7);
        const std::string alphabet = "0123456789   00-x";
        for (int round = 0; round < 20000; ++round) {
            std::string text;
            for (auto length = generator() % 24; length > 0; --length)
                text += alphabet[generator() % alphabet.size()];
            QVector<bool> hidden;
            for (auto panes = generator() % 6; panes > 0; --panes)
                hidden.append(generator() % 2 == 0);

            std::vector<long long> read;
            for (size_t at = 0; at < text.size();) {
                const size_t end = std::min(text.find(' ', at), text.size());
                if (end > at)
                    read.push_back(value(text.substr(at, end - at)));
                at = end + 1;
            }
            long long sum = 0;
            for (size_t i = 0; i < read.size(); ++i) {
                if (read[i] == 0 && i < static_cast<size_t>(hidden.size()) && hidden[static_cast<int>(i)])
                    read[i] = 50;
                sum += read[i];
            }
            if (read.size() < static_cast<size_t>(hidden.size())) {
                const long long same = sum > 0 && !read.empty() ? sum / static_cast<long long>(read.size()) : 50;
                read.assign(static_cast<size_t>(hidden.size()), same);
            }
            QList<int> wanted;
            for (const long long width : read)
                wanted.append(static_cast<int>(width));
            QVERIFY2(splitterWidthsOfText(QString::fromStdString(text), hidden) == wanted, text.c_str());
        }
    }

private:
    /// What a part stands for: an optional minus and digits within int, else 0.
    static long long value(const std::string &part)
    {
        const size_t digits = part[0] == '-' ? 1 : 0;
        if (digits == part.size() || part.find_first_not_of("0123456789", digits) != std::string::npos)
            return 0;
        const long double number = std::strtold(part.c_str(), nullptr);
        return number < INT_MIN || number > INT_MAX ? 0 : static_cast<long long>(number);
    }
};

TAVI_TEST_MAIN(TestSplitterWidths)
#include "tst_splitterwidths.moc"
