#include "core/AppContext.h"
#include "platform/RuntimeError.h"
#include "sheets/RigheScheda.h"
#include "sheets/SchedeTest.h"
#include "support/TestDoubles.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

namespace {

const QString Puntini = QStringLiteral(" = .........................");

QString blanks(int n)
{
    return QString(n, QLatin1Char(' '));
}

} // namespace

// The worksheet rows and the number format, without any screen.
class TestRigheScheda : public QObject
{
    Q_OBJECT

private slots:
    void pupilsRowAlignsNumberInTenAndSymbolInFive_data()
    {
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("simbolo");
        QTest::addColumn<QString>("riga");
        QTest::newRow("three digits, five-wide symbol")
            << "473"
            << " da  " << blanks(7) + "473" + " da  " + Puntini;
        QTest::newRow("decimal, three-wide symbol")
            << "0,047"
            << " u " << blanks(5) + "0,047" + blanks(2) + " u " + Puntini;
        QTest::newRow("one digit") << "9"
                                   << "  u  " << blanks(9) + "9" + "  u  " + Puntini;
        QTest::newRow("nine characters") << "123456789"
                                         << " c "
                                         << " 123456789" + blanks(2) + " c " + Puntini;
        QTest::newRow("ten characters: no blank") << "1234567890"
                                                  << " c "
                                                  << "1234567890" + blanks(2) + " c " + Puntini;
        QTest::newRow("eleven characters: no blank, nothing cut")
            << "12345678901"
            << " c "
            << "12345678901" + blanks(2) + " c " + Puntini;
        QTest::newRow("four-wide symbol")
            << "123,4"
            << " cl " << blanks(5) + "123,4" + blanks(1) + " cl " + Puntini;
        QTest::newRow("six-wide symbol: no blank") << "47"
                                                   << " dam  " << blanks(8) + "47 dam  " + Puntini;
        QTest::newRow("empty symbol") << "47"
                                      << "" << blanks(8) + "47" + blanks(5) + Puntini;
        QTest::newRow("nothing at all") << ""
                                        << "" << blanks(15) + Puntini;
    }
    void pupilsRowAlignsNumberInTenAndSymbolInFive()
    {
        QFETCH(QString, numero);
        QFETCH(QString, simbolo);
        QFETCH(QString, riga);
        QCOMPARE(RigheScheda::RigaAlunni(numero, simbolo), riga);
    }

    void teachersRowPadsTheSolutionToSeventeen_data()
    {
        QTest::addColumn<QString>("risposta");
        QTest::addColumn<QString>("coda");
        QTest::newRow("16 characters: one blank") << "4 u 7 d 0 c 5 m "
                                                  << " (R.4 u 7 d 0 c 5 m )";
        QTest::newRow("12 characters: five blanks")
            << "0 u 4 d 7 c " << blanks(5) + "(R.0 u 4 d 7 c )";
        QTest::newRow("17 characters: no blank") << "12345678901234567"
                                                 << "(R.12345678901234567)";
        QTest::newRow("18 characters: no blank") << "4  h  7 da  0  u  "
                                                 << "(R.4  h  7 da  0  u  )";
        QTest::newRow("24 characters: no blank") << "4 uk  7  h  0 da  0  u  "
                                                 << "(R.4 uk  7  h  0 da  0  u  )";
        QTest::newRow("empty solution") << "" << blanks(17) + "(R.)";
    }
    void teachersRowPadsTheSolutionToSeventeen()
    {
        QFETCH(QString, risposta);
        QFETCH(QString, coda);
        const QString alunni =
            RigheScheda::RigaAlunni(QStringLiteral("4705"), QStringLiteral(" u "));
        QCOMPARE(RigheScheda::RigaDocenti(alunni, risposta), alunni + coda);
    }

    void rowsAreBuiltFromTheGeneratorsExercise_data()
    {
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QList<int>>("cifre");
        QTest::addColumn<QString>("alunni");
        QTest::addColumn<QString>("risposta");
        QTest::newRow("thousands, 4700 u")
            << 3 << 8 << QList<int>{4, 7, 1, 1} << blanks(6) + "4700  u  " + Puntini
            << "4 uk  7  h  0 da  0  u  ";
        QTest::newRow("thousands, 1234 u")
            << 3 << 15 << QList<int>{1, 2, 3, 4} << blanks(6) + "1234  u  " + Puntini
            << "1 uk  2  h  3 da  4  u  ";
        QTest::newRow("units, 0,47 u")
            << 1 << 38 << QList<int>{9, 4, 7, 9} << blanks(6) + "0,47" + blanks(2) + " u " + Puntini
            << "0 u 4 d 7 c ";
        QTest::newRow("units, 5,003 u")
            << 1 << 27 << QList<int>{5, 8, 8, 3}
            << blanks(5) + "5,003" + blanks(2) + " u " + Puntini << "5 u 0 d 0 c 3 m ";
        QTest::newRow("hundreds, 47 h with the blank first symbol")
            << 2 << 1 << QList<int>{4, 7, 1, 1} << blanks(8) + "47  h  " + Puntini
            << "4     7  h  ";
        QTest::newRow("capacities, 123,4 cl")
            << 11 << 44 << QList<int>{1, 2, 3, 4}
            << blanks(5) + "123,4" + blanks(1) + " cl " + Puntini << "1  l 2 dl 3 cl 4 ml";
        QTest::newRow("lengths, 987 m") << 5 << 4 << QList<int>{9, 8, 7, 1}
                                        << blanks(7) + "987   m " + Puntini << "9  hm 8 dam 7   m ";
    }
    void rowsAreBuiltFromTheGeneratorsExercise()
    {
        QFETCH(int, famiglia);
        QFETCH(int, tipo);
        QFETCH(QList<int>, cifre);
        QFETCH(QString, alunni);
        QFETCH(QString, risposta);

        TestContext t;
        StatoCondiviso &s = t->stato;
        SchedeTest::statoDiPartenza(s, famiglia);
        // No kind of numbers chosen: the generator keeps the type and draws
        // only the digits.
        s.TipoNumeri = 0;
        s.TipoEsercizio = tipo;
        s.NumeroRighe = 1;
        // A first build: the first exercise of a run may bring up other
        // screens that draw exercises of their own.
        RigheScheda(*t).CostruisciRighe();
        SchedeTest::scriviCifre(*t.random, cifre[0], cifre[1], cifre[2], cifre[3]);

        RigheScheda(*t).CostruisciRighe();

        QCOMPARE(s.Risposta, risposta);
        QCOMPARE(s.RigheAlunni[1], alunni);
        QCOMPARE(s.RigheDocenti[1], RigheScheda::RigaDocenti(alunni, risposta));
        QCOMPARE(s.RigheAlunni[1], RigheScheda::RigaAlunni(s.Numero, s.SimboloRichiesto));
        QCOMPARE(s.SpaziNumero, blanks(std::max(0, 10 - int(s.Numero.size()))));
        QCOMPARE(s.SpaziSimbolo, blanks(std::max(0, 5 - int(s.SimboloRichiesto.size()))));
        QCOMPARE(s.SpaziSoluzione, blanks(std::max(0, 17 - int(risposta.size()))));
        QCOMPARE(t.random->scriptLeft(), std::size_t(0));
    }

    void everyRowUpToNumeroRigheIsBuilt_data()
    {
        QTest::addColumn<int>("righe");
        QTest::newRow("10") << 10;
        QTest::newRow("20") << 20;
        QTest::newRow("30") << 30;
        QTest::newRow("31") << 31;
    }
    void everyRowUpToNumeroRigheIsBuilt()
    {
        QFETCH(int, righe);
        TestContext t;
        StatoCondiviso &s = t->stato;
        SchedeTest::statoDiPartenza(s);
        s.TipoNumeri = 3;
        s.NumeroRighe = 1;
        RigheScheda(*t).CostruisciRighe(); // see above: the first exercise of a run
        s.NumeroRighe = righe;
        for (int r = 1; r <= 40; ++r) {
            s.RigheAlunni[r] = QStringLiteral("prima");
            s.RigheDocenti[r] = QStringLiteral("prima");
        }
        QSignalSpy generati(t.ctx.get(), &AppContext::tipoEsercizioGenerato);

        RigheScheda(*t).CostruisciRighe();

        QCOMPARE(generati.count(), righe);
        QCOMPARE(s.RigaScheda.value(), righe + 1);
        for (int r = 1; r <= righe; ++r) {
            QVERIFY2(s.RigheAlunni[r].endsWith(Puntini), qPrintable(s.RigheAlunni[r]));
            QVERIFY(s.RigheDocenti[r].startsWith(s.RigheAlunni[r] + ' '));
            QVERIFY(s.RigheDocenti[r].endsWith(')'));
        }
        QCOMPARE(s.RigheAlunni[righe + 1], QStringLiteral("prima"));
        QCOMPARE(s.RigheDocenti[righe + 1], QStringLiteral("prima"));
        // The pupils' rows differ: the clock stands still, yet every draw is new.
        QSet<QString> diverse;
        for (int r = 1; r <= righe; ++r)
            diverse.insert(s.RigheAlunni[r]);
        QVERIFY(diverse.size() > righe / 2);
    }

    void buildingReseedsFromTheClockFirst()
    {
        TestContext t;
        StatoCondiviso &s = t->stato;
        SchedeTest::statoDiPartenza(s);
        s.TipoNumeri = 1;
        s.NumeroRighe = 10;
        RigheScheda(*t).CostruisciRighe(); // the first exercise of a run, as above
        t.random->reseeds = 0;
        t.random->seeds.clear();
        t.clock->setSecondsSinceMidnight(45296.5);
        RigheScheda(*t).CostruisciRighe();
        // Once for the sheet, then twice in every generator call.
        QCOMPARE(t.random->reseeds, 1 + 2 * 10);
        QCOMPARE(t.random->seeds.first(), 45296.5f);
    }

    void formattaNumeroGroupsThousandsAndKeepsDecimals_data()
    {
        QTest::addColumn<double>("n");
        QTest::addColumn<QString>("testo");
        QTest::newRow("4700") << 4700.0 << "4.700";
        QTest::newRow("999") << 999.0 << "999";
        QTest::newRow("1000") << 1000.0 << "1.000";
        QTest::newRow("1234567,891") << 1234567.891 << "1.234.567,891";
        QTest::newRow("4700,5") << 4700.5 << "4.700,5";
        QTest::newRow("4,07") << 4.07 << "4,07";
        QTest::newRow("40,7") << 40.7 << "40,7";
        QTest::newRow("0,47") << 0.47 << "0,47";
        QTest::newRow("0,047") << 0.047 << "0,047";
        QTest::newRow("0") << 0.0 << "0";
        QTest::newRow("-4700,5") << -4700.5 << "-4.700,5";
        QTest::newRow("largest 32-bit") << 2147483647.0 << "2.147.483.647";
        QTest::newRow("smallest 32-bit") << -2147483648.0 << "-2.147.483.648";
        QTest::newRow("fraction above the largest") << 2147483647.5 << "2.147.483.647,5";
    }
    void formattaNumeroGroupsThousandsAndKeepsDecimals()
    {
        QFETCH(double, n);
        QFETCH(QString, testo);
        QCOMPARE(RigheScheda::FormattaNumero(n), testo);
    }

    void formattaNumeroBeyond32BitsIsAnOverflow_data()
    {
        QTest::addColumn<double>("n");
        QTest::newRow("2^31") << 2147483648.0;
        QTest::newRow("-2^31 - 1") << -2147483649.0;
        QTest::newRow("1e20") << 1e20;
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
        QTest::newRow("not a number") << std::nan("");
    }
    void formattaNumeroBeyond32BitsIsAnOverflow()
    {
        QFETCH(double, n);
        try {
            RigheScheda::FormattaNumero(n);
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::Overflow);
        }
    }

    void printedRowsStandInThreeUnevenBlocks_data()
    {
        QTest::addColumn<int>("riga");
        QTest::addColumn<double>("y");
        QTest::newRow("1") << 1 << 2000.0;
        QTest::newRow("2") << 2 << 2400.0;
        QTest::newRow("10") << 10 << 5600.0;
        QTest::newRow("11: 800 below row 10") << 11 << 6400.0;
        QTest::newRow("20") << 20 << 10000.0;
        QTest::newRow("21: 900 below row 20") << 21 << 10900.0;
        QTest::newRow("30") << 30 << 14500.0;
    }
    void printedRowsStandInThreeUnevenBlocks()
    {
        QFETCH(int, riga);
        QFETCH(double, y);
        const auto posizione = RigheScheda::PosizioneStampa(riga);
        QVERIFY(posizione.has_value());
        QCOMPARE(*posizione, y);
    }

    void rowsOutsideTheBlocksHaveNoPlace()
    {
        QVERIFY(!RigheScheda::PosizioneStampa(0).has_value());
        QVERIFY(!RigheScheda::PosizioneStampa(31).has_value());
        QVERIFY(!RigheScheda::PosizioneStampa(60).has_value());
    }
};

QTEST_GUILESS_MAIN(TestRigheScheda)
#include "tst_righescheda.moc"
