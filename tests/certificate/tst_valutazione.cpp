#include "certificate/Valutazione.h"

#include <QTest>

class TestValutazione : public QObject
{
    Q_OBJECT

private slots:
    void gradeOfRightAnswersOverExercises_data()
    {
        QTest::addColumn<int>("esatte");
        QTest::addColumn<int>("esercizi");
        QTest::addColumn<int>("punteggio");
        QTest::addColumn<QString>("parola");
        QTest::addColumn<bool>("stampabile");
        QTest::newRow("17/20 floors 8.5") << 17 << 20 << 8 << "DISTINTO" << true;
        QTest::newRow("19/20") << 19 << 20 << 9 << "OTTIMO" << true;
        QTest::newRow("10/20") << 10 << 20 << 5 << "SUFFICIENTE (!)" << true;
        QTest::newRow("9/20") << 9 << 20 << 4 << "Non classificato" << false;
        QTest::newRow("15/30 half") << 15 << 30 << 5 << "SUFFICIENTE (!)" << true;
        QTest::newRow("29/30 floors 9.66") << 29 << 30 << 9 << "OTTIMO" << true;
        QTest::newRow("6/10") << 6 << 10 << 6 << "SUFFICIENTE" << true;
        QTest::newRow("59/100 floors 5.9") << 59 << 100 << 5 << "SUFFICIENTE (!)" << true;
        QTest::newRow("7/10") << 7 << 10 << 7 << "BUONO" << true;
        QTest::newRow("20/20 all right") << 20 << 20 << 10 << "OTTIMO" << true;
        QTest::newRow("0/20 none right") << 0 << 20 << 0 << "Non classificato" << false;
        QTest::newRow("0/0 nothing asked") << 0 << 0 << 0 << "Non classificato" << false;
        QTest::newRow("5/0 nothing asked since restart")
            << 5 << 0 << 0 << "Non classificato" << false;
        QTest::newRow("25/10 after a restart") << 25 << 10 << 25 << "Non classificato" << false;
        QTest::newRow("11/10 just above 10") << 11 << 10 << 11 << "Non classificato" << false;
        QTest::newRow("3276 right fits") << 3276 << 3276 << 10 << "OTTIMO" << true;
        QTest::newRow("3277 right overflows") << 3277 << 3277 << 0 << "Non classificato" << false;
        QTest::newRow("32767 right overflows") << 32767 << 20 << 0 << "Non classificato" << false;
    }
    void gradeOfRightAnswersOverExercises()
    {
        QFETCH(int, esatte);
        QFETCH(int, esercizi);
        QFETCH(int, punteggio);
        QFETCH(QString, parola);
        QFETCH(bool, stampabile);
        const Valutazione v = Valutazione::calcola(esatte, esercizi);
        QCOMPARE(v.punteggio, punteggio);
        QCOMPARE(v.parola, parola);
        QCOMPARE(v.stampabile(), stampabile);
    }

    void everyScoreHasItsWord_data()
    {
        QTest::addColumn<int>("punteggio");
        QTest::addColumn<QString>("parola");
        const char *parole[] = {
            "Non classificato", "Non classificato", "Non classificato", "Non classificato",
            "Non classificato", "SUFFICIENTE (!)",  "SUFFICIENTE",      "BUONO",
            "DISTINTO",         "OTTIMO",           "OTTIMO",           "Non classificato"};
        for (int p = 0; p <= 11; ++p)
            QTest::addRow("%d", p) << p << QString::fromLatin1(parole[p]);
        QTest::newRow("-1") << -1 << "Non classificato";
        QTest::newRow("-32768") << -32768 << "Non classificato";
    }
    void everyScoreHasItsWord()
    {
        QFETCH(int, punteggio);
        QFETCH(QString, parola);
        QCOMPARE(Valutazione::parolaPer(punteggio), parola);
    }
};

QTEST_GUILESS_MAIN(TestValutazione)
#include "tst_valutazione.moc"
