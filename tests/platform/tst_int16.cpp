#include "platform/Int16.h"

#include <QTest>

class TestInt16 : public QObject
{
    Q_OBJECT

private slots:
    void additionAtTheTopOfTheRangeOverflows()
    {
        Int16 n = 32767;
        try {
            n += 1;
            QFAIL("32767 + 1 did not raise an error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::Overflow);
            QCOMPARE(e.number(), 6);
        }
        QCOMPARE(n.value(), 32767);
    }

    void binaryOperatorsAreChecked_data()
    {
        QTest::addColumn<int>("a");
        QTest::addColumn<int>("b");
        QTest::addColumn<char>("op");
        QTest::addColumn<bool>("overflows");
        QTest::newRow("32767+1") << 32767 << 1 << '+' << true;
        QTest::newRow("32766+1") << 32766 << 1 << '+' << false;
        QTest::newRow("-32768-1") << -32768 << 1 << '-' << true;
        QTest::newRow("-32767-1") << -32767 << 1 << '-' << false;
        QTest::newRow("3277*10") << 3277 << 10 << '*' << true;
        QTest::newRow("3276*10") << 3276 << 10 << '*' << false;
        QTest::newRow("-3277*10") << -3277 << 10 << '*' << true;
    }
    void binaryOperatorsAreChecked()
    {
        QFETCH(int, a);
        QFETCH(int, b);
        QFETCH(char, op);
        QFETCH(bool, overflows);
        const Int16 x = a;
        const Int16 y = b;
        auto compute = [&] {
            switch (op) {
            case '+':
                return Int16(x + y);
            case '-':
                return Int16(x - y);
            default:
                return Int16(x * y);
            }
        };
        if (overflows) {
            QVERIFY_THROWS_EXCEPTION(RuntimeError, compute());
        } else {
            const long long expected = op == '+' ? a + b : op == '-' ? a - b : a * b;
            QCOMPARE(compute().value(), expected);
        }
    }

    void mixedIntArithmeticStaysChecked()
    {
        const Int16 x = 32000;
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)(x + 1000));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)(1000 + x));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)(x * 2));
        QCOMPARE((x + 767).value(), 32767);
    }

    void assigningAnOutOfRangeIntOverflows()
    {
        Int16 n;
        QCOMPARE(n.value(), 0);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, n = 40000);
        QVERIFY_THROWS_EXCEPTION(RuntimeError, n = -32769);
        n = -32768;
        QCOMPARE(n.value(), -32768);
    }

    void incrementAndComparisonActAsIntegers()
    {
        Int16 n = 19;
        ++n;
        QVERIFY(n == 20);
        QVERIFY(n < 30);
        QCOMPARE(int(n), 20);
    }
};

QTEST_GUILESS_MAIN(TestInt16)
#include "tst_int16.moc"
