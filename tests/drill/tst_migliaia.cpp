#include "drill/Migliaia.h"
#include "support/TestDoubles.h"

#include <QTest>

class TestMigliaia : public QObject
{
    Q_OBJECT

private slots:
    void groupsTheIntegerPartAndKeepsTheDecimals_data()
    {
        QTest::addColumn<double>("x");
        QTest::addColumn<QString>("testo");

        QTest::newRow("999") << 999.0 << "999";
        QTest::newRow("1234,5") << 1234.5 << "1.234,5";
        QTest::newRow("4700,25") << 4700.25 << "4.700,25";
        QTest::newRow("1234567") << 1234567.0 << "1.234.567";
        QTest::newRow("largest 32-bit") << 2147483647.0 << "2.147.483.647";
        QTest::newRow("negative whole") << -1234.0 << "-1.234";
        QTest::newRow("below one keeps its zero") << 0.5 << "0,5";
        QTest::newRow("zero") << 0.0 << "0";
    }
    void groupsTheIntegerPartAndKeepsTheDecimals()
    {
        QFETCH(double, x);
        QFETCH(QString, testo);
        RecordingMessageBoxes boxes;
        QCOMPARE(FormattaConMigliaia(x, boxes), testo);
        QVERIFY(boxes.boxes.isEmpty());
    }

    void integerPartBeyondThirtyTwoBitsIsReported_data()
    {
        QTest::addColumn<double>("x");
        QTest::newRow("2^31") << 2147483648.0;
        QTest::newRow("1e20") << 1e20;
        QTest::newRow("below -2^31") << -2147483649.0;
    }
    void integerPartBeyondThirtyTwoBitsIsReported()
    {
        QFETCH(double, x);
        RecordingMessageBoxes boxes;
        QCOMPARE(FormattaConMigliaia(x, boxes), QString());
        QCOMPARE(boxes.boxes.size(), 1);
        QCOMPARE(boxes.boxes[0].text, QStringLiteral("Numero troppo grande!"));
        QCOMPARE(boxes.boxes[0].title, QStringLiteral("Errore di overflow"));
        QCOMPARE(boxes.boxes[0].icon, MessageBoxes::Critical);
        QCOMPARE(boxes.boxes[0].buttons, MessageBoxes::OkOnly);
    }
};

QTEST_GUILESS_MAIN(TestMigliaia)
#include "tst_migliaia.moc"
