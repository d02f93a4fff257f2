// SPDX-License-Identifier: MIT
#include "tavilib/tavistring.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"

#include <cstdlib>
#include <cstring>
#include <random>

namespace {

QStringList tokens(QByteArray text, const char *delimiters)
{
    QStringList found;
    char *save = nullptr;
    for (char *token = Tavi_strtok(text.data(), delimiters, &save); token;
         token = Tavi_strtok(nullptr, delimiters, &save))
        found.append(QString::fromLatin1(token));
    return found;
}

} // namespace

class TestTaviString : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aCopyIsAnotherBlock()
    {
        char text[] = "gr\xc3\xbc\xc3\x9f"
                      "e";
        char *copy = AllocateAndCopyString(text);
        QVERIFY(copy != text);
        text[0] = 'x';
        QCOMPARE(copy, "gr\xc3\xbc\xc3\x9f"
                       "e");
        std::free(copy);

        const char *constant = "constant";
        copy = AllocateAndCopyStringConst(constant);
        QVERIFY(copy != constant);
        QCOMPARE(copy, "constant");
        std::free(copy);
    }

    void anEmptyTextIsCopied()
    {
        char *copy = AllocateAndCopyStringConst("");
        QCOMPARE(copy, "");
        std::free(copy);
    }

    void nullHasNoCopy()
    {
        QVERIFY(!AllocateAndCopyString(nullptr));
        QVERIFY(!AllocateAndCopyStringConst(nullptr));
    }

    void withoutMemoryThereIsNoCopy()
    {
        char text[] = "text";
        {
            AllocFailure failure(1);
            QVERIFY(!AllocateAndCopyString(text));
            QVERIFY(failure.happened());
        }
        AllocFailure failure(1);
        QVERIFY(!AllocateAndCopyStringConst(text));
        QVERIFY(failure.happened());
    }

    void tokensAreWhatStandsBetweenDelimiters_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("empty") << QByteArray() << QStringList();
        QTest::newRow("delimiters only") << QByteArray(" \t\r\n ") << QStringList();
        QTest::newRow("one") << QByteArray("one") << QStringList{"one"};
        QTest::newRow("several") << QByteArray("50.1 2.5\t-3") << QStringList{"50.1", "2.5", "-3"};
        QTest::newRow("at both ends") << QByteArray("\t a  b \r\n") << QStringList{"a", "b"};
        QTest::newRow("other blanks are text") << QByteArray("a\vb\fc") << QStringList{"a\vb\fc"};
        QTest::newRow("zero ends the text") << QByteArray("a b\0c d", 7) << QStringList{"a", "b"};
    }
    void tokensAreWhatStandsBetweenDelimiters()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, expected);
        QCOMPARE(tokens(text, " \t\n\r"), expected);
    }

    void withoutDelimitersTheTextIsOneToken() { QCOMPARE(tokens("a b", ""), QStringList{"a b"}); }

    void afterTheLastTokenThereIsNoMore()
    {
        char text[] = "a";
        char *save = nullptr;
        QCOMPARE(Tavi_strtok(text, " ", &save), "a");
        for (int i = 0; i < 3; ++i)
            QVERIFY(!Tavi_strtok(nullptr, " ", &save));
    }

    void delimitersMayChangeBetweenCalls()
    {
        char text[] = "key=a b c";
        char *save = nullptr;
        QCOMPARE(Tavi_strtok(text, "=", &save), "key");
        QCOMPARE(Tavi_strtok(nullptr, " ", &save), "a");
        QCOMPARE(Tavi_strtok(nullptr, "", &save), "b c");
    }

    void twoTextsAreSplitInTurns()
    {
        char first[] = "a b";
        char second[] = "1 2";
        char *save_first = nullptr;
        char *save_second = nullptr;
        QCOMPARE(Tavi_strtok(first, " ", &save_first), "a");
        QCOMPARE(Tavi_strtok(second, " ", &save_second), "1");
        QCOMPARE(Tavi_strtok(nullptr, " ", &save_first), "b");
        QCOMPARE(Tavi_strtok(nullptr, " ", &save_second), "2");
    }

    void nullArgumentsGiveNull()
    {
        char text[] = "text";
        char *save = nullptr;
        QVERIFY(!Tavi_strtok(nullptr, " ", &save));
        QVERIFY(!Tavi_strtok(text, nullptr, &save));
        QVERIFY(!Tavi_strtok(text, " ", nullptr));
        QCOMPARE(text, "text");
    }

    void itSplitsAsTheStandardFunctionDoes()
    {
        std::mt19937 random(11);
        for (int round = 0; round < 2000; ++round) {
            QByteArray text;
            for (auto i = random() % 20; i > 0; --i)
                text.append("ab ,;"[random() % 5]);
            const char *const delimiters = round % 2 == 0 ? " ,;" : ",";
            QByteArray own = text;
            QByteArray standard = text;
            char *save = nullptr;
            char *standard_save = nullptr;
            char *token = Tavi_strtok(own.data(), delimiters, &save);
            char *expected = strtok_r(standard.data(), delimiters, &standard_save);
            while (token && expected) {
                QCOMPARE(token - own.data(), expected - standard.data());
                QCOMPARE(token, expected);
                token = Tavi_strtok(nullptr, delimiters, &save);
                expected = strtok_r(nullptr, delimiters, &standard_save);
            }
            QVERIFY2(!token && !expected, text.constData());
            QCOMPARE(own, standard);
        }
    }
};

TAVI_TEST_MAIN(TestTaviString)
#include "tst_tavistring.moc"
