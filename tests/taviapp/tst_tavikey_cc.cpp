// SPDX-License-Identifier: MIT
#include "taviapp/tavikey_cc.h"
#include "tests/support/tavitest.h"

#include <climits>

class TestTaviKey : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theNullKeyIsTwoZeroWords()
    {
        const TAVIKEY_ELEMENT key = TAVIKEY_CC::getNullKey();
        QCOMPARE(key.word0, 0U);
        QCOMPARE(key.word1, 0U);
        QVERIFY(!TAVIKEY_CC::isValid(key));
    }

    void anyOtherKeyIsValid()
    {
        for (const TAVIKEY_ELEMENT key :
             {TAVIKEY_ELEMENT{1, 0}, TAVIKEY_ELEMENT{0, 1}, TAVIKEY_ELEMENT{UINT_MAX, UINT_MAX}})
            QVERIFY(TAVIKEY_CC::isValid(key));
    }

    void aNullifiedKeyIsTheNullKey()
    {
        TAVIKEY_ELEMENT key = {7, 8};
        TAVIKEY_CC::nullifyKey(key);
        QCOMPARE(key.word0, 0U);
        QCOMPARE(key.word1, 0U);
    }
};

TAVI_TEST_MAIN(TestTaviKey)
#include "tst_tavikey_cc.moc"
