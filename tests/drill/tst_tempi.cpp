#include "drill/Tempi.h"

#include <QTest>

class TestTempi : public QObject
{
    Q_OBJECT

private slots:
    void wholeSecondsDropTheFraction_data()
    {
        QTest::addColumn<double>("inizio");
        QTest::addColumn<double>("fine");
        QTest::addColumn<double>("secondi");

        QTest::newRow("2.9 s") << 36000.0 << 36002.9 << 2.0;
        QTest::newRow("under a second") << 36000.5 << 36001.4 << 0.0;
        QTest::newRow("150 s") << 100.25 << 250.25 << 150.0;
        QTest::newRow("across midnight") << 86399.5 << 2.0 << -86398.0;
    }
    void wholeSecondsDropTheFraction()
    {
        QFETCH(double, inizio);
        QFETCH(double, fine);
        QFETCH(double, secondi);
        QCOMPARE(Tempi::secondiInteri(inizio, fine), secondi);
    }

    void partialTimeIsCappedByTextualComparison_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("mostrato");

        QTest::newRow("0") << "0"
                           << "0";
        QTest::newRow("9") << "9"
                           << "9";
        QTest::newRow("99") << "99"
                            << "99";
        QTest::newRow("100 sorts below 99") << "100"
                                            << "100";
        QTest::newRow("150") << "150"
                             << "150";
        QTest::newRow("250") << "250"
                             << "250";
        QTest::newRow("990 sorts above 99") << "990"
                                            << "99";
        QTest::newRow("995") << "995"
                             << "99";
        QTest::newRow("negative") << "-86398"
                                  << "-86398";
    }
    void partialTimeIsCappedByTextualComparison()
    {
        QFETCH(QString, testo);
        QFETCH(QString, mostrato);
        QCOMPARE(Tempi::didascaliaParziale(testo), mostrato);
    }

    void totalIsCappedNumericallyAt999_data()
    {
        QTest::addColumn<double>("totale");
        QTest::addColumn<QString>("mostrato");

        QTest::newRow("998") << 998.0 << "998";
        QTest::newRow("999") << 999.0 << "999";
        QTest::newRow("1004") << 1004.0 << "999";
        QTest::newRow("negative") << -5.0 << "-5";
    }
    void totalIsCappedNumericallyAt999()
    {
        QFETCH(double, totale);
        QFETCH(QString, mostrato);
        QCOMPARE(Tempi::didascaliaTotale(QString::number(totale), totale), mostrato);
    }
};

QTEST_GUILESS_MAIN(TestTempi)
#include "tst_tempi.moc"
