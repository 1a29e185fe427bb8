#include "voce/Parole.h"

#include <QRegularExpression>
#include <QTest>
#include <functional>

namespace {

// Reads Italian number words back into a number, independently of the
// module: tokens matched greedily from a small vocabulary.
qint64 leggiIntero(QString parole, bool *ok)
{
    *ok = false;
    parole.replace(QChar(0x00E9), QLatin1Char('e'));
    if (parole == QStringLiteral("zero")) {
        *ok = true;
        return 0;
    }
    struct Voce
    {
        const char *testo;
        int valore;
    };
    // Longest first, so "diciassette" wins over "dieci" and "sette"; the
    // elided forms of the tens ("vent", "trent", ...) are listed too.
    static const Voce Vocabolario[] = {
        {"diciannove", 19}, {"diciassette", 17}, {"quattordici", 14}, {"cinquanta", 50},
        {"sessanta", 60},   {"settanta", 70},    {"quaranta", 40},    {"diciotto", 18},
        {"novanta", 90},    {"quattro", 4},      {"ottanta", 80},     {"quindici", 15},
        {"tredici", 13},    {"cinquant", 50},    {"sessant", 60},     {"settant", 70},
        {"quarant", 40},    {"novant", 90},      {"ottant", 80},      {"trenta", 30},
        {"dodici", 12},     {"undici", 11},      {"sedici", 16},      {"cinque", 5},
        {"trent", 30},      {"venti", 20},       {"dieci", 10},       {"sette", 7},
        {"cento", 100},     {"cent", 100},       {"vent", 20},        {"otto", 8},
        {"nove", 9},        {"sei", 6},          {"tre", 3},          {"due", 2},
        {"uno", 1},         {"un", 1},
    };
    // Every way of cutting the words is tried: "centottanta" is "cent" +
    // "ottanta", not "cento" + a rest that reads as nothing.
    std::function<bool(qsizetype, qint64, qint64, qint64 *)> leggi =
        [&](qsizetype i, qint64 totale, qint64 gruppo, qint64 *valore) {
            if (i == parole.size()) {
                *valore = totale + gruppo;
                return true;
            }
            const QString resto = parole.mid(i);
            if (resto.startsWith(QStringLiteral("mille")) && gruppo == 0 && totale == 0 &&
                leggi(i + 5, 1000, 0, valore))
                return true;
            if (resto.startsWith(QStringLiteral("mila")) && gruppo >= 2 && totale == 0 &&
                leggi(i + 4, gruppo * 1000, 0, valore))
                return true;
            for (const Voce &v : Vocabolario) {
                const QString t = QString::fromLatin1(v.testo);
                if (!resto.startsWith(t))
                    continue;
                const qint64 nuovo =
                    v.valore == 100 ? (gruppo == 0 ? 1 : gruppo) * 100 : gruppo + v.valore;
                if (leggi(i + t.size(), totale, nuovo, valore))
                    return true;
            }
            return false;
        };
    qint64 valore = 0;
    *ok = leggi(0, 0, 0, &valore);
    return *ok ? valore : 0;
}

} // namespace

class TestParole : public QObject
{
    Q_OBJECT

private slots:
    void interi_data()
    {
        QTest::addColumn<int>("n");
        QTest::addColumn<QString>("parole");
        QTest::newRow("zero") << 0 << "zero";
        QTest::newRow("uno") << 1 << "uno";
        QTest::newRow("tre senza accento") << 3 << "tre";
        QTest::newRow("diciassette") << 17 << "diciassette";
        QTest::newRow("ventuno elide") << 21 << "ventuno";
        QTest::newRow("ventitré accento") << 23 << "ventitré";
        QTest::newRow("trentotto elide") << 38 << "trentotto";
        QTest::newRow("ottantuno") << 81 << "ottantuno";
        QTest::newRow("novantotto") << 98 << "novantotto";
        QTest::newRow("cento") << 100 << "cento";
        QTest::newRow("centouno") << 101 << "centouno";
        QTest::newRow("centotré") << 103 << "centotré";
        QTest::newRow("centootto") << 108 << "centootto";
        QTest::newRow("centottanta elide") << 180 << "centottanta";
        QTest::newRow("trecentocinque") << 305 << "trecentocinque";
        QTest::newRow("quattrocentosettantatré") << 473 << "quattrocentosettantatré";
        QTest::newRow("mille") << 1000 << "mille";
        QTest::newRow("milleuno") << 1001 << "milleuno";
        QTest::newRow("milletré") << 1003 << "milletré";
        QTest::newRow("milleottocento") << 1800 << "milleottocento";
        QTest::newRow("duemila") << 2000 << "duemila";
        QTest::newRow("tremila senza accento") << 3000 << "tremila";
        QTest::newRow("tremilatré") << 3003 << "tremilatré";
        QTest::newRow("quattromilasettecento") << 4700 << "quattromilasettecento";
        QTest::newRow("novemilanovecentonovantanove") << 9999 << "novemilanovecentonovantanove";
        QTest::newRow("undicimila") << 11000 << "undicimila";
        QTest::newRow("ventunmila") << 21000 << "ventunmila";
        QTest::newRow("ventitremila") << 23000 << "ventitremila";
        QTest::newRow("centomila") << 100000 << "centomila";
    }
    void interi()
    {
        QFETCH(int, n);
        QFETCH(QString, parole);
        QCOMPARE(Parole::intero(n), parole);
    }

    void numeri_data()
    {
        QTest::addColumn<QString>("scritto");
        QTest::addColumn<QString>("parole");
        QTest::newRow("intero") << "473"
                                << "quattrocentosettantatré";
        QTest::newRow("punto delle migliaia") << "4.700"
                                              << "quattromilasettecento";
        QTest::newRow("virgola") << "4,73"
                                 << "quattro virgola settantatré";
        QTest::newRow("un decimale") << "4,7"
                                     << "quattro virgola sette";
        QTest::newRow("zero dopo la virgola") << "4,05"
                                              << "quattro virgola zero cinque";
        QTest::newRow("due zeri dopo la virgola") << "4,005"
                                                  << "quattro virgola zero zero cinque";
        QTest::newRow("zero dentro i decimali") << "4,705"
                                                << "quattro virgola settecentocinque";
        QTest::newRow("zero prima della virgola") << "0,473"
                                                  << "zero virgola quattrocentosettantatré";
        QTest::newRow("zero dentro l'intero") << "4,07"
                                              << "quattro virgola zero sette";
        QTest::newRow("intero con zeri") << "4007"
                                         << "quattromilasette";
        QTest::newRow("decimali ventuno") << "3,21"
                                          << "tre virgola ventuno";
        QTest::newRow("blank attorno") << "  47  "
                                       << "quarantasette";
        QTest::newRow("non un numero") << "4a"
                                       << "";
        QTest::newRow("vuoto") << ""
                               << "";
    }
    void numeri()
    {
        QFETCH(QString, scritto);
        QFETCH(QString, parole);
        QCOMPARE(Parole::numero(scritto), parole);
    }

    void quantita_data()
    {
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("simbolo");
        QTest::addColumn<bool>("misura");
        QTest::addColumn<QString>("parole");
        QTest::newRow("decine") << "473"
                                << " da  " << false << "quattrocentosettantatré decine";
        QTest::newRow("unità con virgola") << "4,73"
                                           << " u " << false << "quattro virgola settantatré unità";
        QTest::newRow("una decina") << "1"
                                    << "da" << false << "una decina";
        QTest::newRow("un'unità") << "1"
                                  << "u" << false << "un'unità";
        QTest::newRow("un migliaio") << "1"
                                     << "uk" << false << "un migliaio";
        QTest::newRow("un centinaio") << "1"
                                      << "h" << false << "un centinaio";
        QTest::newRow("centinaia") << "47"
                                   << "h" << false << "quarantasette centinaia";
        QTest::newRow("migliaia") << "4,7"
                                  << "uk" << false << "quattro virgola sette migliaia";
        QTest::newRow("un decimo") << "1"
                                   << "d" << false << "un decimo";
        QTest::newRow("centesimi") << "305"
                                   << "c" << false << "trecentocinque centesimi";
        QTest::newRow("millesimi: m fra le cifre decimali")
            << "4700"
            << "m" << false << "quattromilasettecento millesimi";
        QTest::newRow("un metro") << "1"
                                  << "m" << true << "un metro";
        QTest::newRow("metri") << "21"
                               << "   m " << true << "ventuno metri";
        QTest::newRow("centimetri") << "305"
                                    << "cm" << true << "trecentocinque centimetri";
        QTest::newRow("un decametro") << "1"
                                      << "dam" << true << "un decametro";
        QTest::newRow("ettometri") << "0,5"
                                   << "hm" << true << "zero virgola cinque ettometri";
        QTest::newRow("un chilometro") << "1"
                                       << "km" << true << "un chilometro";
        QTest::newRow("chilogrammi") << "23"
                                     << "kg" << true << "ventitré chilogrammi";
        QTest::newRow("un ettogrammo") << "1"
                                       << "hg" << true << "un ettogrammo";
        QTest::newRow("decagrammi") << "8"
                                    << "dag" << true << "otto decagrammi";
        QTest::newRow("milligrammi") << "38"
                                     << "mg" << true << "trentotto milligrammi";
        QTest::newRow("miriagrammi: Mg non è mg") << "2"
                                                  << "Mg" << true << "due miriagrammi";
        QTest::newRow("una tonnellata") << "1"
                                        << "t" << true << "una tonnellata";
        QTest::newRow("tonnellate") << "3"
                                    << "t" << true << "tre tonnellate";
        QTest::newRow("un quintale") << "1"
                                     << "q" << true << "un quintale";
        QTest::newRow("un litro") << "1"
                                  << "l" << true << "un litro";
        QTest::newRow("ettolitri") << "4,05"
                                   << "hl" << true << "quattro virgola zero cinque ettolitri";
        QTest::newRow("un decalitro") << "1"
                                      << "dal" << true << "un decalitro";
        QTest::newRow("centilitri") << "100"
                                    << "cl" << true << "cento centilitri";
        QTest::newRow("un millilitro") << "1"
                                       << "ml" << true << "un millilitro";
        QTest::newRow("simbolo sconosciuto") << "5"
                                             << "xy" << false << "cinque";
    }
    void quantita()
    {
        QFETCH(QString, numero);
        QFETCH(QString, simbolo);
        QFETCH(bool, misura);
        QFETCH(QString, parole);
        QCOMPARE(Parole::quantita(numero, simbolo, misura), parole);
    }

    void scomposizione_data()
    {
        QTest::addColumn<QString>("risposta");
        QTest::addColumn<bool>("misura");
        QTest::addColumn<QString>("parole");
        QTest::newRow("migliaia") << "4 uk  7  h  3 da  " << false
                                  << "quattro migliaia, sette centinaia, tre decine";
        QTest::newRow("con l'uno") << "1 uk  0  h  1 da  1  u  " << false
                                   << "un migliaio, zero centinaia, una decina, un'unità";
        QTest::newRow("decimali") << "4 u 7 d 3 c" << false
                                  << "quattro unità, sette decimi, tre centesimi";
        QTest::newRow("metri") << "3  m 0 dm 5 cm" << true
                               << "tre metri, zero decimetri, cinque centimetri";
    }
    void scomposizione()
    {
        QFETCH(QString, risposta);
        QFETCH(bool, misura);
        QFETCH(QString, parole);
        QCOMPARE(Parole::scomposizione(risposta, misura), parole);
    }

    void lettere_data()
    {
        QTest::addColumn<QString>("testo");
        QTest::addColumn<QString>("parole");
        QTest::newRow("A") << "A"
                           << "a";
        QTest::newRow("F") << "F"
                           << "effe";
        QTest::newRow("H") << "H"
                           << "acca";
        QTest::newRow("J") << "J"
                           << "i lunga";
        QTest::newRow("W") << "W"
                           << "doppia vu";
        QTest::newRow("Z") << "Z"
                           << "zeta";
        QTest::newRow("virgola") << ","
                                 << "virgola";
        QTest::newRow("punto") << "."
                               << "punto";
        QTest::newRow("cancella") << "CANCELLA"
                                  << "cancella";
    }
    void lettere()
    {
        QFETCH(QString, testo);
        QFETCH(QString, parole);
        QCOMPARE(Parole::lettera(testo), parole);
    }

    // Every number the drill can ask, 0 to 9999.
    void proprietaDaZeroANovemilanovecentonovantanove()
    {
        // Where Italian elides: a ten before "uno"/"otto", "cento" before
        // "ottanta"; the words must not keep both vowels there.
        static const QRegularExpression vocaliDoppie(
            QStringLiteral("(venti|trenta|quaranta|cinquanta|sessanta|settanta|ottanta|novanta)"
                           "(uno|otto)|centoottanta"));
        for (int n = 0; n <= 9999; ++n) {
            const QString parole = Parole::intero(n);
            QVERIFY2(!parole.isEmpty(), qPrintable(QString::number(n)));
            QVERIFY2(!vocaliDoppie.match(parole).hasMatch(), qPrintable(parole));
            // The accent only on a final "tre", and always there but for "tre".
            const int accenti = int(parole.count(QChar(0x00E9)));
            const bool finisceInTre = n % 10 == 3 && n % 100 != 13 && n != 3;
            QVERIFY2(accenti == (finisceInTre ? 1 : 0), qPrintable(parole));
            if (accenti)
                QVERIFY2(parole.endsWith(QStringLiteral("tré")), qPrintable(parole));
            QVERIFY2(!parole.contains(QLatin1Char(' ')), qPrintable(parole));
            bool ok = false;
            QCOMPARE(leggiIntero(parole, &ok), qint64(n));
            QVERIFY2(ok, qPrintable(parole));
            // The same number with a comma reads back both sides.
            const QString decimale = Parole::numero(QStringLiteral("%1,%2").arg(n).arg(n % 100));
            const QStringList lati = decimale.split(QStringLiteral(" virgola "));
            QCOMPARE(lati.size(), 2);
            QCOMPARE(leggiIntero(lati[0], &ok), qint64(n));
        }
    }

    void nientePerIlNonNumero()
    {
        QCOMPARE(Parole::intero(-1), QString());
        QCOMPARE(Parole::intero(1000000), QString());
        QCOMPARE(Parole::nomeUnita(QStringLiteral("??"), false, true), QString());
    }
};

QTEST_APPLESS_MAIN(TestParole)
#include "tst_parole.moc"
