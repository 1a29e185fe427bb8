#include "platform/FixedArray.h"

#include <QString>
#include <QTest>

class TestFixedArray : public QObject
{
    Q_OBJECT

private slots:
    void indexBeyondTheUpperBoundIsSubscriptOutOfRange()
    {
        FixedArray<QString, 60> righe;
        righe[60] = QStringLiteral("ultima");
        QCOMPARE(righe[60], QStringLiteral("ultima"));
        try {
            righe[61] = QStringLiteral("x");
            QFAIL("index 61 did not raise an error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::SubscriptOutOfRange);
            QCOMPARE(e.number(), 9);
        }
    }

    void negativeIndexIsSubscriptOutOfRange()
    {
        const FixedArray<int, 60> a{};
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)a[-1]);
    }

    void elementsStartEmptyAndBoundsAreZeroToUpper()
    {
        FixedArray<QString, 60> righe;
        QCOMPARE(righe.size(), 61);
        QCOMPARE(righe.LowerBound, 0);
        QCOMPARE(righe.UpperBound, 60);
        for (int i = 0; i <= 60; ++i)
            QVERIFY(righe[i].isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestFixedArray)
#include "tst_fixedarray.moc"
