#include "Alunno.h"

#include "platform/Fonts.h"

using namespace ScreenTest;

namespace {

QString b(int n)
{
    return QString(n, QLatin1Char(' '));
}

// How an exercise closes after its typed attempts.
enum Chiusura
{
    Esatta,     // the last attempt is right
    AiutoSi,    // the last attempt is wrong and the pupil accepts help
    Intervento, // two wrong attempts refused help: the program steps in
};

struct Esercizio
{
    int tipo;
    int w, x, y, z;
    QStringList tentativi; // what the pupil types, attempt by attempt
    Chiusura chiusura;
    double secondi; // from the question to the closing key
    QString riga;   // the record line, character for character
};

// Twenty exercises of the thousands family (" uk  ", "  h  ", " da  ", "  u  ").
QList<Esercizio> serie()
{
    // clang-format off
    return {
        {8, 4, 7, 1, 1, {"4 uk  7  h  0 da  0  u  "}, Esatta, 3.2,
         "     4700  u = R.4 uk  7  h  0 da  0  u (Sec.3)"},
        {12, 5, 1, 3, 1, {"5 uk  1  h  ", "5 uk  1  h  3 da  "}, Esatta, 12.7,
         "      513 da = R.5 uk  1  h* " + b(12) + "R.5 uk  1  h  3 da (Sec.12)"},
        {7, 9, 9, 1, 1, {"9  h  9 da  0  u  "}, AiutoSi, 45,
         "      990 da = R.9  h  9 da  0  u* " + b(6) + "R.9 uk  9  h  0 da° (Sec.45)"},
        {15, 1, 2, 3, 4, {"1 uk  2  h  3 da  4  u  "}, Esatta, 100.4,
         "     1234  u = R.1 uk  2  h  3 da  4  u (Sec.100)"},
        {11, 6, 1, 1, 8, {"6 uk  0  h  0 da  8  u  "}, Esatta, 7.99,
         "     6008  u = R.6 uk  0  h  0 da  8  u (Sec.7)"},
        {9, 2, 1, 7, 1, {"2  h  7 da  ", "7"}, Intervento, 30,
         "      207 da = R.2  h  7 da* " + b(12) + "R.7* " + b(21) + "R.2 uk  0  h  7 da° (Sec.30)"},
        {13, 3, 8, 1, 1, {"3 uk  8  h  1 da  0  u  "}, Esatta, 0.5,
         "     3810  u = R.3 uk  8  h  1 da  0  u (Sec.0)"},
        {10, 5, 1, 6, 1, {"5 uk  6  h  ", "5 uk  0  h  6 da  0  u  "}, Esatta, 20,
         "     5060  u = R.5 uk  6  h* " + b(12) + "R.5 uk  0  h  6 da  0  u (Sec.20)"},
        {14, 7, 1, 1, 9, {"7 uk  0  h  1 da  9  u  "}, Esatta, 5,
         "     7019  u = R.7 uk  0  h  1 da  9  u (Sec.5)"},
        {16, 8, 2, 1, 3, {"8 uk  2  h  3 da  0  u  "}, AiutoSi, 61,
         "     8203  u = R.8 uk  2  h  3 da  0  u* R.8 uk  2  h  0 da  3  u° (Sec.61)"},
        {7, 1, 5, 1, 1, {"1 uk  5  h  0 da  "}, Esatta, 4,
         "      150 da = R.1 uk  5  h  0 da (Sec.4)"},
        {12, 9, 8, 7, 1, {"9 uk  8  h  7 da  "}, Esatta, 9.9,
         "      987 da = R.9 uk  8  h  7 da (Sec.9)"},
        {15, 9, 9, 9, 9, {"9 uk  9  h  9 da  9  u  "}, Esatta, 11,
         "     9999  u = R.9 uk  9  h  9 da  9  u (Sec.11)"},
        {8, 2, 2, 1, 1, {"2 uk  2  h  ", "2 uk  2  h  0  u  "}, AiutoSi, 15,
         "     2200  u = R.2 uk  2  h* " + b(12) + "R.2 uk  2  h  0  u* " + b(6)
             + "R.2 uk  2  h  0 da  0  u° (Sec.15)"},
        {11, 1, 1, 1, 1, {"1 uk  0  h  0 da  1  u  "}, Esatta, 2,
         "     1001  u = R.1 uk  0  h  0 da  1  u (Sec.2)"},
        {16, 4, 4, 1, 4, {"4", "4 uk  4  h  0 da  4  u  "}, Esatta, 33,
         "     4404  u = R.4* " + b(21) + "R.4 uk  4  h  0 da  4  u (Sec.33)"},
        {13, 6, 5, 4, 1, {"6 uk  5  h  4 da  0  u  "}, Esatta, 1,
         "     6540  u = R.6 uk  5  h  4 da  0  u (Sec.1)"},
        {10, 3, 1, 3, 1, {"3 uk  3  h  ", "3  h  3 da  "}, Intervento, 50,
         "     3030  u = R.3 uk  3  h* " + b(12) + "R.3  h  3 da* " + b(12)
             + "R.3 uk  0  h  3 da  0  u° (Sec.50)"},
        {9, 8, 1, 1, 1, {"8 uk  0  h  1 da  "}, Esatta, 6,
         "      801 da = R.8 uk  0  h  1 da (Sec.6)"},
        {14, 5, 1, 5, 5, {"5 uk  0  h  5 da  5  u  "}, Esatta, 8,
         "     5055  u = R.5 uk  0  h  5 da  5  u (Sec.8)"},
    };
    // clang-format on
}

} // namespace

class TestSerieCompleta : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void aWholeSeriesLeavesOneRecordLinePerExercise()
    {
        TestContext t;
        Alunno a(t);
        StatoCondiviso &s = t->stato;
        const QList<Esercizio> esercizi = serie();

        a.preparaSerie(esercizi[0].tipo);
        a.prossimeCifre(esercizi[0].w, esercizi[0].x, esercizi[0].y, esercizi[0].z);
        QVERIFY(a.apri());

        for (int n = 1; n <= esercizi.size(); ++n) {
            const Esercizio &e = esercizi[n - 1];
            if (n > 1) {
                a.prossimoEsercizio(e.tipo, e.w, e.x, e.y, e.z);
                a.avanti();
            }
            QCOMPARE(s.NumeroEsercizio.value(), n);
            QCOMPARE(a.testo("lblCodice"), QString::number(e.tipo));
            for (int k = 0; k < e.tentativi.size(); ++k) {
                const bool ultimo = k == e.tentativi.size() - 1;
                QVERIFY(a.inPrimoPiano("FraTastierino"));
                a.scrivi(e.tentativi[k]);
                QCOMPARE(a.testo("LblRisultato"), e.tentativi[k]);
                if (ultimo && e.chiusura == Esatta)
                    a.passano(e.secondi);
                a.verifica();
                if (ultimo && e.chiusura == Esatta) {
                    QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Esatto"));
                    break;
                }
                QCOMPARE(a.testo("LblEsito1"), QStringLiteral("Errato"));
                QVERIFY(a.inPrimoPiano("fraAiuto"));
                if (ultimo && e.chiusura == AiutoSi) {
                    a.passano(e.secondi);
                    a.si();
                } else {
                    a.no();
                }
            }
            if (e.chiusura == Intervento) {
                QVERIFY(a.inPrimoPiano("fraIntervento"));
                a.passano(e.secondi);
                a.ok();
            }
            if (e.chiusura != Esatta)
                QCOMPARE(a.testo("lblCorrezione"), s.Risposta);
            QCOMPARE(s.Operazioni[n], e.riga);
            QCOMPARE(a.testo("LblOperazione"), QString::number(n));
        }

        // Every line, once more, as the report will read them.
        for (int n = 1; n <= esercizi.size(); ++n)
            QCOMPARE(s.Operazioni[n], esercizi[n - 1].riga);
        QCOMPARE(s.Operazioni[0], QString());
        QCOMPARE(s.Operazioni[21], QString());

        QVERIFY(a.inPrimoPiano("fraAvviso"));
        QCOMPARE(a.framesEnabled(), 1);
        QCOMPARE(s.RisposteEsatte.value(), 15);
        QCOMPARE(s.EsatteComplessive.value(), 15);
        QCOMPARE(s.RisposteErrate.value(), 11);
        QCOMPARE(s.TempoTotale, 422.0);
        QCOMPARE(a.testo("lblRisEsatte"), QStringLiteral("15"));
        QCOMPARE(a.testo("lblRisErrate"), QStringLiteral("11"));
        QCOMPARE(a.testo("LblTempoParziale"), QStringLiteral("8"));
        QCOMPARE(a.testo("LblTempoTotale"), QStringLiteral("422"));
        QVERIFY(t.errors->errors.isEmpty());
    }
};

QTEST_MAIN(TestSerieCompleta)
#include "tst_seriecompleta.moc"
