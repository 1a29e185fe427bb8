#include "classe/CodiceScheda.h"
#include "classe/UnitaClasse.h"
#include "core/FamiglieSimboli.h"
#include "core/StatoCondiviso.h"

#include <QRegularExpression>
#include <QTest>

namespace {

using Scelta = CodiceScheda::Scelta;

// Seeds at both ends of the range and a spread between them.
QList<std::uint32_t> semiDiProva()
{
    const std::uint32_t n = CodiceScheda::Semi();
    return {0, 1, 2, 30, 31, 961, n / 3, n / 2, n - 2, n - 1};
}

QList<Scelta> tutteLeScelte()
{
    QList<Scelta> scelte;
    for (int tipo = 1; tipo <= 3; ++tipo)
        for (int unita = 0; unita < UnitaClasse::Conteggio(); ++unita)
            for (int righe : {10, 20, 30})
                for (std::uint32_t seme : semiDiProva())
                    scelte << Scelta{tipo, unita, righe, seme};
    return scelte;
}

QString senzaTrattino(const QString &codice)
{
    return QString(codice).remove(QLatin1Char('-'));
}

QString conTrattino(const QString &sei)
{
    return sei.left(3) + QLatin1Char('-') + sei.mid(3);
}

} // namespace

// The code printed on each copy of a class set: it brings back the choice
// exactly, and a mistyped one is refused, never read as another sheet.
class TestCodiceScheda : public QObject
{
    Q_OBJECT

private slots:
    void theAlphabetHasThirtyOneDistinctCharacters()
    {
        QCOMPARE(CodiceScheda::Alfabeto.size(), 31);
        for (QChar c : CodiceScheda::Alfabeto)
            QCOMPARE(CodiceScheda::Alfabeto.count(c), 1);
        // A code has room for plenty of different copies of each choice.
        QVERIFY(CodiceScheda::Semi() > 100000);
    }

    void everyChoiceComesBackFromItsCode()
    {
        static const QRegularExpression forma(
            QStringLiteral("^[%1]{3}-[%1]{3}$").arg(CodiceScheda::Alfabeto));
        QSet<QString> visti;
        const QList<Scelta> scelte = tutteLeScelte();
        for (const Scelta &s : scelte) {
            const QString codice = CodiceScheda::Componi(s);
            QVERIFY2(forma.match(codice).hasMatch(), qPrintable(codice));
            QString errore;
            const auto letta = CodiceScheda::Leggi(codice, &errore);
            QVERIFY2(letta.has_value(), qPrintable(codice + QLatin1Char(' ') + errore));
            QVERIFY(*letta == s);
            visti.insert(codice);
        }
        QCOMPARE(visti.size(), scelte.size());
    }

    void theUnitsOfEveryFamilyAreListedAndFoundInTheState()
    {
        QSet<int> famiglie;
        for (int i = 0; i < UnitaClasse::Conteggio(); ++i) {
            StatoCondiviso s;
            UnitaClasse::Applica(s, i);
            QCOMPARE(UnitaClasse::IndiceDi(s), i);
            famiglie.insert(UnitaClasse::Famiglia(i));
        }
        QCOMPARE(famiglie.size(), 12);
        // Family 6 after family 5: the blank first symbol stays, and so it is
        // in the code.
        StatoCondiviso s;
        s.FamigliaSimboli = 5;
        FamiglieSimboli::applica(s, 5);
        s.FamigliaSimboli = 6;
        FamiglieSimboli::applica(s, 6);
        const int indice = UnitaClasse::IndiceDi(s);
        QVERIFY(indice >= 0);
        StatoCondiviso rifatto;
        UnitaClasse::Applica(rifatto, indice);
        QCOMPARE(rifatto.Simbolo1, QStringLiteral("     "));
        QCOMPARE(rifatto.NumeroCifre.value(), 4);
        // No family yet: nothing to put in a code.
        QCOMPARE(UnitaClasse::IndiceDi(StatoCondiviso()), -1);
    }

    void aWrongCharacterInAnyPlaceIsRefused()
    {
        for (const Scelta &s : tutteLeScelte()) {
            if (s.seme % 7 != 0 && s.seme != CodiceScheda::Semi() - 1)
                continue;
            const QString giusto = senzaTrattino(CodiceScheda::Componi(s));
            for (int pos = 0; pos < giusto.size(); ++pos)
                for (QChar c : CodiceScheda::Alfabeto) {
                    if (c == giusto.at(pos))
                        continue;
                    QString sbagliato = giusto;
                    sbagliato[pos] = c;
                    QString errore;
                    QVERIFY2(!CodiceScheda::Leggi(conTrattino(sbagliato), &errore).has_value(),
                             qPrintable(giusto + QStringLiteral(" -> ") + sbagliato));
                    QVERIFY(errore.contains(QStringLiteral("controlla di averlo copiato bene")));
                }
        }
    }

    void twoSwappedCharactersAreRefused()
    {
        for (const Scelta &s : tutteLeScelte()) {
            const QString giusto = senzaTrattino(CodiceScheda::Componi(s));
            for (int i = 0; i < giusto.size(); ++i)
                for (int j = i + 1; j < giusto.size(); ++j) {
                    if (giusto.at(i) == giusto.at(j))
                        continue;
                    QString scambiato = giusto;
                    std::swap(scambiato[i], scambiato[j]);
                    QVERIFY2(!CodiceScheda::Leggi(scambiato).has_value(),
                             qPrintable(giusto + QStringLiteral(" -> ") + scambiato));
                }
        }
    }

    void aCodeIsReadAsTypedOrPasted_data()
    {
        QTest::addColumn<QString>("scritto");
        const QString codice = CodiceScheda::Componi({2, 3, 20, 123456 % CodiceScheda::Semi()});
        QTest::newRow("as printed") << codice;
        QTest::newRow("small letters") << codice.toLower();
        QTest::newRow("no hyphen") << senzaTrattino(codice);
        QTest::newRow("blanks around and inside") << QStringLiteral("  ") + codice.left(2) +
                                                         QStringLiteral(" ") + codice.mid(2) +
                                                         QStringLiteral("\n");
        QString conO = codice;
        conO.replace(QLatin1Char('0'), QLatin1Char('O'));
        QString conI = codice;
        conI.replace(QLatin1Char('1'), QLatin1Char('I'));
        QTest::newRow("letter O for zero, I for one")
            << conO.replace(QLatin1Char('1'), QLatin1Char('l'));
        QTest::newRow("letter I for one") << conI;
    }
    void aCodeIsReadAsTypedOrPasted()
    {
        QFETCH(QString, scritto);
        const Scelta attesa{2, 3, 20, 123456 % CodiceScheda::Semi()};
        const auto letta = CodiceScheda::Leggi(scritto);
        QVERIFY(letta.has_value());
        QVERIFY(*letta == attesa);
    }

    void whatIsNotACodeGetsAClearReason_data()
    {
        QTest::addColumn<QString>("scritto");
        QTest::addColumn<QString>("motivo");
        QTest::newRow("nothing") << QStringLiteral("  - ")
                                 << QStringLiteral("Scrivi il codice stampato in fondo alla scheda "
                                                   "(per esempio K7Q-3PZ).");
        QTest::newRow("too short") << QStringLiteral("K7Q-3P")
                                   << QStringLiteral("Il codice ha 6 caratteri (per esempio "
                                                     "K7Q-3PZ), ne sono stati scritti 5.");
        QTest::newRow("too long") << QStringLiteral("K7Q-3PZZ")
                                  << QStringLiteral("Il codice ha 6 caratteri (per esempio "
                                                    "K7Q-3PZ), ne sono stati scritti 7.");
        QTest::newRow("a letter no code has") << QStringLiteral("K7Q-3PU")
                                              << QStringLiteral("Il carattere \"U\" non compare "
                                                                "nei codici delle schede: "
                                                                "controlla il codice.");
        QTest::newRow("punctuation") << QStringLiteral("K7Q.3PZ")
                                     << QStringLiteral("Il carattere \".\" non compare nei "
                                                       "codici delle schede: controlla il "
                                                       "codice.");
    }
    void whatIsNotACodeGetsAClearReason()
    {
        QFETCH(QString, scritto);
        QFETCH(QString, motivo);
        QString errore;
        QVERIFY(!CodiceScheda::Leggi(scritto, &errore).has_value());
        QCOMPARE(errore, motivo);
    }

    void aCheckedCodeBeyondTheChoicesIsRefused()
    {
        // The last five characters a code can have, with a right check
        // character: more than any choice needs.
        const QString alfabeto = CodiceScheda::Alfabeto;
        const QString dati = QString(5, alfabeto.back());
        int somma = 0;
        for (int i = 0; i < 5; ++i)
            somma += (i + 2) * int(alfabeto.size() - 1);
        const QChar controllo = alfabeto.at((31 - somma % 31) % 31);
        QString errore;
        QVERIFY(!CodiceScheda::Leggi(dati + controllo, &errore).has_value());
        QVERIFY(errore.contains(QStringLiteral("non è quello di una scheda")));
    }
};

QTEST_APPLESS_MAIN(TestCodiceScheda)
#include "tst_codicescheda.moc"
