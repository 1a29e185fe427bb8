#include "platform/Clock.h"
#include "platform/RandomSource.h"

#include <QSet>
#include <QTest>

class TestRandom : public QObject
{
    Q_OBJECT

private slots:
    void drawsLieInTheUnitInterval()
    {
        MixingRandom rnd;
        double low = 1;
        double high = 0;
        for (int i = 0; i < 100000; ++i) {
            const double r = rnd.next();
            QVERIFY(r >= 0.0);
            QVERIFY(r < 1.0);
            low = std::min(low, r);
            high = std::max(high, r);
        }
        QVERIFY(low < 0.001);
        QVERIFY(high > 0.999);
    }

    void drawsAreRoughlyUniform()
    {
        MixingRandom rnd;
        int buckets[10] = {};
        const int n = 100000;
        for (int i = 0; i < n; ++i)
            ++buckets[int(rnd.next() * 10)];
        for (int b : buckets)
            QVERIFY2(b > n / 10 * 0.95 && b < n / 10 * 1.05, qPrintable(QString::number(b)));
    }

    void reseedingAtTheSameReadingStillGivesDifferentDraws()
    {
        MixingRandom rnd;
        QSet<double> seen;
        for (int i = 0; i < 50; ++i) {
            rnd.reseed(36000.0f);
            seen.insert(rnd.next());
        }
        QCOMPARE(seen.size(), 50);
    }

    void sameStateAndSeedRepeatTheDraws()
    {
        MixingRandom a(7);
        MixingRandom b(7);
        a.reseed(123.5f);
        b.reseed(123.5f);
        for (int i = 0; i < 10; ++i)
            QCOMPARE(a.next(), b.next());
    }

    void differentReadingsGiveDifferentDraws()
    {
        MixingRandom a(7);
        MixingRandom b(7);
        a.reseed(100.0f);
        b.reseed(101.0f);
        QVERIFY(a.next() != b.next());
    }

    void clockGivesSecondsSinceMidnightAndItalianTexts()
    {
        class Fixed : public Clock
        {
        public:
            QDateTime now() const override
            {
                return QDateTime(QDate(2026, 11, 16), QTime(3, 5, 12, 900));
            }
        } clock;
        QCOMPARE(clock.secondsSinceMidnight(), 3 * 3600 + 5 * 60 + 12.9);
        QCOMPARE(clock.dateText(), QStringLiteral("16/11/2026"));
        QCOMPARE(clock.timeText(), QStringLiteral("03:05:12"));
    }
};

QTEST_GUILESS_MAIN(TestRandom)
#include "tst_random.moc"
