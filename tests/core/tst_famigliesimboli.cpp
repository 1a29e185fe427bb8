#include "core/FamiglieSimboli.h"
#include "core/StatoCondiviso.h"

#include <QTest>

class TestFamiglieSimboli : public QObject
{
    Q_OBJECT

private slots:
    void everyFamilySetsItsSymbolsAndCounts_data()
    {
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<QStringList>("simboli");
        QTest::addColumn<int>("conteggio");
        QTest::addColumn<int>("primo");
        const QString keep = QStringLiteral("<kept>");
        QTest::newRow("1") << 1 << QStringList{" u ", " d ", " c ", " m "} << 4 << 1;
        QTest::newRow("2") << 2 << QStringList{"     ", "  h  ", " da  ", "  u  "} << 3 << 2;
        QTest::newRow("3") << 3 << QStringList{" uk  ", "  h  ", " da  ", "  u  "} << 4 << 1;
        QTest::newRow("4") << 4 << QStringList{"  m ", " dm ", " cm ", " mm "} << 4 << 1;
        QTest::newRow("5") << 5 << QStringList{"     ", "  hm ", " dam ", "   m "} << 3 << 2;
        QTest::newRow("6") << 6 << QStringList{keep, "  hm ", " dam ", "   m "} << 4 << 1;
        QTest::newRow("7") << 7 << QStringList{"  g ", " dg ", " cg ", " mg "} << 4 << 1;
        QTest::newRow("8") << 8 << QStringList{keep, "  hg ", " dag ", "   g "} << 3 << 2;
        QTest::newRow("9") << 9 << QStringList{"  kg ", "  hg ", " dag ", "   g "} << 4 << 1;
        QTest::newRow("10") << 10 << QStringList{"  t ", "  q ", " Mg ", " kg "} << 4 << 1;
        QTest::newRow("11") << 11 << QStringList{"  l ", " dl ", " cl ", " ml"} << 4 << 1;
        QTest::newRow("12") << 12 << QStringList{"     ", "  hl ", " dal ", "   l "} << 3 << 2;
    }
    void everyFamilySetsItsSymbolsAndCounts()
    {
        QFETCH(int, famiglia);
        QFETCH(QStringList, simboli);
        QFETCH(int, conteggio);
        QFETCH(int, primo);

        StatoCondiviso s;
        s.Simbolo1 = QStringLiteral("<kept>");
        QVERIFY(FamiglieSimboli::applica(s, famiglia));
        QCOMPARE(s.Simbolo1, simboli[0]);
        QCOMPARE(s.Simbolo2, simboli[1]);
        QCOMPARE(s.Simbolo3, simboli[2]);
        QCOMPARE(s.Simbolo4, simboli[3]);
        QCOMPARE(s.NumeroCifre.value(), conteggio);
        QCOMPARE(s.NumeroSimboli.value(), conteggio);
        QCOMPARE(s.PrimoSimbolo.value(), primo);
    }

    void family6AfterFamily5LeavesABlankFirstSymbolWithFourDigits()
    {
        StatoCondiviso s;
        FamiglieSimboli::applica(s, 5);
        FamiglieSimboli::applica(s, 6);
        QCOMPARE(s.Simbolo1, QStringLiteral("     "));
        QCOMPARE(s.NumeroCifre.value(), 4);
    }

    void familiesOutsideTheTableChangeNothing()
    {
        StatoCondiviso s;
        FamiglieSimboli::applica(s, 3);
        QVERIFY(!FamiglieSimboli::applica(s, 0));
        QVERIFY(!FamiglieSimboli::applica(s, 13));
        QCOMPARE(s.Simbolo1, QStringLiteral(" uk  "));
        QCOMPARE(FamiglieSimboli::trova(13), nullptr);
    }

    void familyElevenHasNoTrailingBlankOnMillilitres()
    {
        QCOMPARE(FamiglieSimboli::trova(11)->simboli[3], QStringLiteral(" ml"));
    }

    void decimalAndMetricFamiliesAreTold()
    {
        for (int f = 1; f <= 12; ++f)
            QCOMPARE(FamiglieSimboli::trova(f)->metrica, f >= 4);
    }

    void everyFieldOfTheBlockStartsEmpty()
    {
        const StatoCondiviso s;
        QCOMPARE(s.NumeroEsercizio.value(), 0);
        QCOMPARE(s.EsatteComplessive.value(), 0);
        QCOMPARE(s.TempoTotale, 0.0);
        QVERIFY(s.Numero.isEmpty());
        QVERIFY(s.Operazioni[60].isEmpty());
        QVERIFY(!s.OpzioneA);
    }
};

QTEST_GUILESS_MAIN(TestFamiglieSimboli)
#include "tst_famigliesimboli.moc"
