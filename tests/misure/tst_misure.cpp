#include "classe/CodiceScheda.h"
#include "classe/RigheClasse.h"
#include "classe/UnitaClasse.h"
#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "misure/Misure.h"
#include "support/TestDoubles.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTest>

namespace {

// The answer a number in one unit decomposes into: every digit followed by
// the symbol of its place, the units digit by the unit asked, the places to
// its left by the symbols before it, those to its right by the ones after.
QString scomposizione(const QString &numero, const QString &richiesto, const QStringList &simboli)
{
    const int k = int(simboli.indexOf(richiesto));
    if (k < 0)
        return QStringLiteral("<simbolo %1 non della famiglia>").arg(richiesto);
    const qsizetype virgola = numero.indexOf(QLatin1Char(','));
    const QString cifre = QString(numero).remove(QLatin1Char(','));
    const int unita = int(virgola < 0 ? cifre.size() - 1 : virgola - 1);
    QString risposta;
    for (int i = 0; i < cifre.size(); ++i) {
        const int posto = k + (i - unita);
        if (posto < 0 || posto > 3)
            return QStringLiteral("<cifra %1 di %2 fuori dalla famiglia>").arg(i).arg(numero);
        risposta += cifre.at(i) + simboli.at(posto);
    }
    return risposta;
}

} // namespace

// The eight measures and the way back to numbers: what each entry sets, and
// the exercises the generator makes with it.
class TestMisure : public QObject
{
    Q_OBJECT

private slots:
    void everyEntrySetsItsFamilyAndSymbols_data()
    {
        QTest::addColumn<int>("voce");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<QStringList>("simboli");
        QTest::addColumn<int>("cifre");
        QTest::addColumn<QString>("titolo");
        QTest::addColumn<QString>("sottotitolo");
        QTest::addColumn<QString>("riga");
        QTest::addColumn<QString>("unita");
        const QString dec = QStringLiteral("SISTEMA DECIMALE");
        const QString met = QStringLiteral("SISTEMA METRICO");
        const QString num = QStringLiteral("Scomposizione dei numeri");
        const QString mis = QStringLiteral("Scomposizione delle misure");
        QTest::newRow("numeri") << 0 << "Numeri: uk h da u / h da u / u d c m" << 1
                                << QStringList{" u ", " d ", " c ", " m "} << 4 << dec << num
                                << " unità,    decimi, centesimi, millesimi"
                                << "numeri";
        QTest::newRow("km hm dam m")
            << 1 << "Lunghezze: km hm dam m" << 6 << QStringList{" km ", "  hm ", " dam ", "   m "}
            << 4 << met << mis << " chilometri,    ettometri, decametri, metri"
            << "lunghezze";
        QTest::newRow("hm dam m") << 2 << "Lunghezze: hm dam m" << 5
                                  << QStringList{"     ", "  hm ", " dam ", "   m "} << 3 << met
                                  << mis << " ettometri, decametri, metri"
                                  << "lunghezze";
        QTest::newRow("m dm cm mm")
            << 3 << "Lunghezze: m dm cm mm" << 4 << QStringList{"  m ", " dm ", " cm ", " mm "} << 4
            << met << mis << " metri,    decimetri, centimetri, millimetri"
            << "lunghezze";
        QTest::newRow("kg hg dag g")
            << 4 << "Masse: kg hg dag g" << 9 << QStringList{"  kg ", "  hg ", " dag ", "   g "}
            << 4 << met << mis << " chilogrammi    ettogrammi, decagrammi, grammi"
            << "masse";
        QTest::newRow("hg dag g") << 5 << "Masse: hg dag g" << 8
                                  << QStringList{"     ", "  hg ", " dag ", "   g "} << 3 << met
                                  << mis << " ettogrammi, decagrammi, grammi"
                                  << "masse";
        QTest::newRow("g dg cg mg")
            << 6 << "Masse: g dg cg mg" << 7 << QStringList{"  g ", " dg ", " cg ", " mg "} << 4
            << met << mis << " grammi,    decigrammi, centigrammi, milligrammi"
            << "masse";
        QTest::newRow("hl dal l") << 7 << "Capacità: hl dal l" << 12
                                  << QStringList{"     ", "  hl ", " dal ", "   l "} << 3 << met
                                  << mis << " ettolitri, decalitri, litri"
                                  << "capacità";
        QTest::newRow("l dl cl ml")
            << 8 << "Capacità: l dl cl ml" << 11 << QStringList{"  l ", " dl ", " cl ", " ml"} << 4
            << met << mis << " litri,    decilitri, centilitri, millilitri"
            << "capacità";
    }
    void everyEntrySetsItsFamilyAndSymbols()
    {
        QFETCH(int, voce);
        QFETCH(QString, caption);
        QFETCH(int, famiglia);
        QFETCH(QStringList, simboli);
        QFETCH(int, cifre);
        QFETCH(QString, titolo);
        QFETCH(QString, sottotitolo);
        QFETCH(QString, riga);
        QFETCH(QString, unita);
        QCOMPARE(int(Misure::Voci().size()), 9);
        QCOMPARE(Misure::Voci()[std::size_t(voce)].caption, caption);
        // Whatever the family before: the first symbol is the measure's own.
        for (int prima : {1, 2, 3, 10}) {
            StatoCondiviso s;
            s.FamigliaSimboli = prima;
            FamiglieSimboli::applica(s, prima);
            Misure::Applica(s, voce);
            QCOMPARE(s.FamigliaSimboli.value(), famiglia);
            QCOMPARE((QStringList{s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4}), simboli);
            QCOMPARE(s.NumeroCifre.value(), cifre);
            QCOMPARE(s.NumeroSimboli.value(), cifre);
            QCOMPARE(s.PrimoSimbolo.value(), cifre == 4 ? 1 : 2);
            QCOMPARE(s.TitoloArgomento, titolo);
            QCOMPARE(s.SottotitoloArgomento, sottotitolo);
            QCOMPARE(s.RigaSimboli, riga);
            QCOMPARE(Misure::VoceInVigore(s), voce);
            QCOMPARE(Misure::MisuraInVigore(s), voce > 0);
            QCOMPARE(Misure::NomeUnita(s.FamigliaSimboli), unita);
        }
        QCOMPARE(Misure::TitoloScheda(famiglia), voce == 0
                                                     ? QStringLiteral("SCHEDA DI SCOMPOSIZIONE")
                                                     : "SCHEDA DI SCOMPOSIZIONE - " + caption);
    }

    void theFamiliesOfNumbersAllStandForTheFirstEntry()
    {
        for (int f = 1; f <= 3; ++f) {
            StatoCondiviso s;
            s.FamigliaSimboli = f;
            QCOMPARE(Misure::VoceInVigore(s), 0);
            QCOMPARE(Misure::NomeUnita(f), QStringLiteral("numeri"));
        }
        // Tonnes, quintals and myriagrams are not offered.
        StatoCondiviso s;
        s.FamigliaSimboli = 10;
        QCOMPARE(Misure::VoceInVigore(s), -1);
        QCOMPARE(Misure::NomeUnita(10), QStringLiteral("masse"));
        QCOMPARE(Misure::VoceInVigore(StatoCondiviso()), -1);
    }

    void generatedExercisesFollowTheRuleOfTheMeasure_data()
    {
        QTest::addColumn<int>("voce");
        QTest::addColumn<int>("tipoNumeri");
        for (int v = 1; v < 9; ++v)
            for (int k = 1; k <= 3; ++k)
                QTest::addRow("%s, kind %d", qPrintable(Misure::Voci()[std::size_t(v)].caption), k)
                    << v << k;
    }
    void generatedExercisesFollowTheRuleOfTheMeasure()
    {
        QFETCH(int, voce);
        QFETCH(int, tipoNumeri);
        TestContext t;
        StatoCondiviso &s = t->stato;
        Misure::Applica(s, voce);
        s.TipoNumeri = tipoNumeri;
        const QStringList simboli{s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4};
        // Numbers as teachers write them: a comma, no grouping, whatever the
        // system's language.
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        static const QRegularExpression forma(QStringLiteral("^(0|[1-9][0-9]*)(,[0-9]*[1-9])?$"));
        Algoritmi generatore(*t);
        QSet<int> tipi;
        for (int n = 0; n < 200; ++n) {
            t.clock->advance(0.37);
            generatore.GeneraEsercizio();
            tipi.insert(s.TipoEsercizio.value());
            const QString dove = QStringLiteral("%1 %2 (tipo %3)")
                                     .arg(s.Numero, s.SimboloRichiesto)
                                     .arg(s.TipoEsercizio.value());
            QVERIFY2(forma.match(s.Numero).hasMatch(), qPrintable(dove));
            QCOMPARE(s.Risposta, scomposizione(s.Numero, s.SimboloRichiesto, simboli));
            if (tipoNumeri == 1)
                QVERIFY2(!s.Numero.contains(QLatin1Char(',')), qPrintable(dove));
            // A three-symbol measure asks only its three named units.
            if (s.NumeroCifre == 3)
                QVERIFY2(s.SimboloRichiesto != simboli[0], qPrintable(dove));
        }
        QLocale::setDefault(QLocale::c());
        // The draws reach many exercise types, not one.
        QVERIFY(tipi.size() >= (s.NumeroCifre == 3 ? 5 : 9));
    }

    void aDecimalMeasureReadsAsTeachersWriteIt()
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        TestContext t;
        StatoCondiviso &s = t->stato;
        Misure::Applica(s, 3); // m dm cm mm
        s.TipoNumeri = 0;
        s.TipoEsercizio = 26; // w,x in the first unit
        t.random->script({(4 - 0.5) / 9, (7 - 0.5) / 9, 0.5 / 9, 0.5 / 9});
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(s.Numero + s.SimboloRichiesto.trimmed(), QStringLiteral("4,7m"));
        QCOMPARE(s.Risposta, QStringLiteral("4  m 7 dm "));
        Misure::Applica(s, 4); // kg hg dag g
        s.TipoEsercizio = 38;  // 0,xy
        t.random->script({0.5 / 9, (3 - 0.5) / 9, (5 - 0.5) / 9, 0.5 / 9});
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(s.Numero + QLatin1Char(' ') + s.SimboloRichiesto.trimmed(),
                 QStringLiteral("0,35 kg"));
        QLocale::setDefault(QLocale::c());
    }

    void everyMeasureComesBackFromTheCodeOfItsSheet_data()
    {
        QTest::addColumn<int>("voce");
        for (int v = 0; v < 9; ++v)
            QTest::addRow("%s", qPrintable(Misure::Voci()[std::size_t(v)].caption)) << v;
    }
    void everyMeasureComesBackFromTheCodeOfItsSheet()
    {
        QFETCH(int, voce);
        StatoCondiviso s;
        Misure::Applica(s, voce);
        const int unita = UnitaClasse::IndiceDi(s);
        QVERIFY(unita >= 0);
        for (int tipo = 1; tipo <= 3; ++tipo) {
            const CodiceScheda::Scelta scelta{tipo, unita, 20, 4321u + std::uint32_t(voce)};
            const QString codice = CodiceScheda::Componi(scelta);
            const auto letta = CodiceScheda::Leggi(codice);
            QVERIFY(letta.has_value());
            QCOMPARE(*letta, scelta);
            StatoCondiviso rifatto;
            UnitaClasse::Applica(rifatto, letta->unita);
            QCOMPARE(rifatto.FamigliaSimboli.value(), s.FamigliaSimboli.value());
            QCOMPARE((QStringList{rifatto.Simbolo1, rifatto.Simbolo2, rifatto.Simbolo3,
                                  rifatto.Simbolo4}),
                     (QStringList{s.Simbolo1, s.Simbolo2, s.Simbolo3, s.Simbolo4}));
            QCOMPARE(rifatto.NumeroCifre.value(), s.NumeroCifre.value());
            // The copy rebuilt from the code is in the measure's units.
            RigheClasse righe;
            const auto copia = righe.Costruisci(*letta);
            QCOMPARE(copia.codice, codice);
            QCOMPARE(copia.docenti.size(), 20);
            for (const QString &r : copia.docenti)
                QVERIFY2(r.contains(s.Simbolo2) || r.contains(s.Simbolo3), qPrintable(r));
        }
    }
};

QTEST_GUILESS_MAIN(TestMisure)
#include "tst_misure.moc"
