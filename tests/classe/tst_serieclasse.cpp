#include "classe/SerieClasse.h"
#include "classe/UnitaClasse.h"
#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "sheets/RigheScheda.h"
#include "sheets/SchedeTest.h"
#include "support/TestDoubles.h"

#include <QSignalSpy>
#include <QTest>

#include <map>

namespace {

// The units index of families 1, 2 and 3, the ones the start screen reaches.
int unitaDi(int famiglia)
{
    StatoCondiviso s;
    SchedeTest::statoDiPartenza(s, famiglia);
    return UnitaClasse::IndiceDi(s);
}

// What the generator's rule gives for each type: the chance of drawing it.
std::map<int, double> attese(int tipoNumeri, bool treSimboli)
{
    std::map<int, double> p;
    auto uniforme = [&p](int da, int a, double peso) {
        for (int t = da; t <= a; ++t)
            p[t] += peso / (a - da + 1);
    };
    const double meta = tipoNumeri == 3 ? 0.5 : 1.0;
    if (tipoNumeri == 1 || tipoNumeri == 3)
        treSimboli ? uniforme(1, 6, meta) : uniforme(7, 16, meta);
    if (tipoNumeri == 2)
        treSimboli ? uniforme(17, 22, 1) : uniforme(23, 44, 1);
    if (tipoNumeri == 3)
        treSimboli ? uniforme(16, 21, meta) : uniforme(23, 44, meta);
    return p;
}

// Pearson's statistic of the counts against the chances.
double chiQuadro(const std::map<int, int> &conte, const std::map<int, double> &p, int n)
{
    double x = 0;
    for (const auto &[tipo, prob] : p) {
        const double e = prob * n;
        const auto it = conte.find(tipo);
        const double o = it == conte.end() ? 0 : it->second;
        x += (o - e) * (o - e) / e;
    }
    return x;
}

// Upper 0.1 % point of chi-square for k - 1 degrees of freedom (Wilson and
// Hilferty), so a right generator fails once in a thousand seeds at most;
// the seeds are fixed, so it never flickers.
double soglia(int categorie)
{
    const double k = categorie - 1;
    const double z = 3.09;
    const double a = 2.0 / (9 * k);
    return k * std::pow(1 - a + z * std::sqrt(a), 3);
}

} // namespace

// The rows of class sets: from the program's generator with its own seed,
// the same for the same code, different place by place within a set, and
// nothing of the drill touched.
class TestSerieClasse : public QObject
{
    Q_OBJECT

private slots:
    void theSameCodeGivesTheSameRows()
    {
        RigheClasse uno, due;
        const CodiceScheda::Scelta s{3, unitaDi(3), 30, 4242};
        const auto a = uno.Costruisci(s);
        uno.Costruisci({1, unitaDi(2), 10, 7});
        const auto b = uno.Costruisci(s);
        const auto c = due.Costruisci(*CodiceScheda::Leggi(a.codice));
        QCOMPARE(a.alunni, b.alunni);
        QCOMPARE(a.docenti, c.docenti);
        QCOMPARE(a.alunni.size(), 30);
        QVERIFY(a.alunni != uno.Costruisci({3, unitaDi(3), 30, 4243}).alunni);
    }

    void aKnownCodeKeepsItsRows()
    {
        // A code printed once must bring back the same sheet in every later
        // version of the program.
        RigheClasse righe;
        const auto copia = righe.Costruisci({3, unitaDi(3), 10, 1000});
        QCOMPARE(copia.codice, QStringLiteral("08E-8XP"));
        const QStringList note = {
            QStringLiteral(
                "     69,03  h   = .........................(R.6 uk  9  h  0 da  3  u  )"),
            QStringLiteral("      0,12 uk   = .........................(R.0 uk  1  h  2 da  )"),
            QStringLiteral("       930 da   = .........................(R.9 uk  3  h  0 da  )"),
            QStringLiteral(
                "     596,4 da   = .........................(R.5 uk  9  h  6 da  4  u  )"),
            QStringLiteral(
                "     5,748 uk   = .........................(R.5 uk  7  h  4 da  8  u  )"),
            QStringLiteral(
                "     8,005 uk   = .........................(R.8 uk  0  h  0 da  5  u  )"),
            QStringLiteral(
                "      3109  u   = .........................(R.3 uk  1  h  0 da  9  u  )"),
            QStringLiteral(
                "      6746  u   = .........................(R.6 uk  7  h  4 da  6  u  )"),
            QStringLiteral(
                "     23,03  h   = .........................(R.2 uk  3  h  0 da  3  u  )"),
            QStringLiteral("      2,28 uk   = .........................(R.2 uk  2  h  8 da  )"),
        };
        QCOMPARE(copia.docenti, note);
    }

    void everyRowIsAGeneratorExerciseOfTheChosenKind_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("unita");
        for (int tipo = 1; tipo <= 3; ++tipo)
            for (int u = 0; u < UnitaClasse::Conteggio(); ++u)
                QTest::addRow("kind %d, units %d", tipo, u) << tipo << u;
    }
    void everyRowIsAGeneratorExerciseOfTheChosenKind()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, unita);
        StatoCondiviso s;
        UnitaClasse::Applica(s, unita);
        const auto possibili = attese(tipoNumeri, s.NumeroCifre == 3);
        RigheClasse righe;
        for (std::uint32_t seme = 0; seme < 20; ++seme) {
            const auto copia = righe.Costruisci({tipoNumeri, unita, 30, seme * 977});
            for (int i = 0; i < 30; ++i) {
                QVERIFY2(possibili.count(copia.tipi[i]),
                         qPrintable(QString::number(copia.tipi[i])));
                QVERIFY(copia.docenti[i].startsWith(copia.alunni[i]));
                QVERIFY(copia.alunni[i].endsWith(RigheScheda::SpazioRisposta()));
            }
        }
    }

    void theTypesFollowTheGeneratorsDistribution_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("famiglia");
        for (int tipo = 1; tipo <= 3; ++tipo)
            for (int famiglia : {2, 3})
                QTest::addRow("kind %d, family %d", tipo, famiglia) << tipo << famiglia;
    }
    void theTypesFollowTheGeneratorsDistribution()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, famiglia);
        const auto p = attese(tipoNumeri, famiglia == 2);
        RigheClasse righe;
        std::map<int, int> conte;
        int n = 0;
        for (std::uint32_t seme = 0; seme < 300; ++seme)
            for (int tipo :
                 righe.Costruisci({tipoNumeri, unitaDi(famiglia), 30, seme * 311}).tipi) {
                ++conte[tipo];
                ++n;
            }
        const double x = chiQuadro(conte, p, n);
        QVERIFY2(x < soglia(int(p.size())),
                 qPrintable(
                     QStringLiteral("chi-square %1, limit %2").arg(x).arg(soglia(int(p.size())))));

        // The same measure on the drill's own generator, for comparison.
        TestContext t;
        SchedeTest::statoDiPartenza(t->stato, famiglia);
        t->stato.TipoNumeri = tipoNumeri;
        std::map<int, int> conteGeneratore;
        for (int i = 0; i < n; ++i) {
            Algoritmi(*t).GeneraEsercizio();
            ++conteGeneratore[t->stato.TipoEsercizio.value()];
        }
        QVERIFY(chiQuadro(conteGeneratore, p, n) < soglia(int(p.size())));
    }

    void copiesOfOneSetNeverShareARowInTheSamePlace_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<int>("righe");
        for (int tipo = 1; tipo <= 3; ++tipo)
            for (int famiglia : {1, 2, 3})
                QTest::addRow("kind %d, family %d", tipo, famiglia) << tipo << famiglia << 30;
        QTest::addRow("ten rows") << 1 << 2 << 10;
    }
    void copiesOfOneSetNeverShareARowInTheSamePlace()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, famiglia);
        QFETCH(int, righe);
        SerieClasse serie(tipoNumeri, unitaDi(famiglia), righe, 20261121);
        for (int k = 0; k < SerieClasse::MassimoCopie; ++k)
            serie.Aggiungi();
        const auto &copie = serie.Copie();
        QCOMPARE(int(copie.size()), 40);
        QSet<QString> codici;
        for (const auto &c : copie) {
            codici.insert(c.codice);
            QCOMPARE(c.alunni.size(), righe);
            QCOMPARE(c.scelta.tipoNumeri, tipoNumeri);
        }
        QCOMPARE(codici.size(), 40);
        for (int i = 0; i < righe; ++i) {
            QSet<QString> posto;
            for (const auto &c : copie)
                posto.insert(c.alunni[i]);
            QVERIFY2(posto.size() == 40, qPrintable(QStringLiteral("row %1").arg(i + 1)));
        }
        // Each copy is what its code gives back.
        RigheClasse rifatte;
        for (const auto &c : copie)
            QCOMPARE(rifatte.Costruisci(*CodiceScheda::Leggi(c.codice)).docenti, c.docenti);
    }

    void aSetLeavesTheDrillAndItsGeneratorAsTheyWere()
    {
        TestContext t;
        SchedeTest::statoDiPartenza(t->stato, 3);
        t->stato.TipoNumeri = 1;
        Algoritmi(*t).GeneraEsercizio();
        const StatoCondiviso prima = t->stato;
        const int estrazioni = t.random->draws;
        const int risemine = t.random->reseeds;
        QSignalSpy tipi(t.ctx.get(), &AppContext::tipoEsercizioGenerato);

        SerieClasse serie(2, unitaDi(3), 30, 1);
        for (int k = 0; k < 40; ++k)
            serie.Aggiungi();

        QCOMPARE(tipi.count(), 0);
        QCOMPARE(t.random->draws, estrazioni);
        QCOMPARE(t.random->reseeds, risemine);
        QCOMPARE(t->stato.Numero, prima.Numero);
        QCOMPARE(t->stato.Risposta, prima.Risposta);
        QCOMPARE(t->stato.TipoEsercizio.value(), prima.TipoEsercizio.value());
        QCOMPARE(t->stato.TipoNumeri.value(), 1);
        // The drill's next exercise is the one it would have been anyway.
        TestContext gemello;
        SchedeTest::statoDiPartenza(gemello->stato, 3);
        gemello->stato.TipoNumeri = 1;
        Algoritmi(*gemello).GeneraEsercizio();
        Algoritmi(*gemello).GeneraEsercizio();
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(t->stato.Risposta, gemello->stato.Risposta);
    }
};

QTEST_GUILESS_MAIN(TestSerieClasse)
#include "tst_serieclasse.moc"
