#include "app/RigaDiComando.h"

#include <QRegularExpression>
#include <QTest>

using Azione = RigaDiComando::Azione;
Q_DECLARE_METATYPE(RigaDiComando::Azione)

class TestRigaDiComando : public QObject
{
    Q_OBJECT

private slots:
    void eachCommandLineAsksForOneThing_data()
    {
        QTest::addColumn<QStringList>("argomenti");
        QTest::addColumn<Azione>("azione");
        QTest::addColumn<bool>("provaAvvio");
        QTest::addColumn<QString>("messaggio");
        QTest::newRow("nothing: the start screen") << QStringList{} << Azione::Avvia << false << "";
        QTest::newRow("start-up check")
            << QStringList{"--prova-avvio"} << Azione::Avvia << true << "";
        QTest::newRow("--help") << QStringList{"--help"} << Azione::Aiuto << false << "";
        QTest::newRow("-h") << QStringList{"-h"} << Azione::Aiuto << false << "";
        QTest::newRow("--version") << QStringList{"--version"} << Azione::Versione << false << "";
        QTest::newRow("-v") << QStringList{"-v"} << Azione::Versione << false << "";
        QTest::newRow("help wins over the rest")
            << QStringList{"--sconosciuta", "--version", "--help"} << Azione::Aiuto << false << "";
        QTest::newRow("version wins over an unknown option")
            << QStringList{"--sconosciuta", "--version"} << Azione::Versione << false << "";
        QTest::newRow("unknown option")
            << QStringList{"--prova-avvio", "--colori"} << Azione::Errore << false
            << "Quadrivo: opzione non riconosciuta: '--colori'\n"
               "Usare 'Quadrivo --help' per l'elenco delle opzioni.\n";
        QTest::newRow("a file name is not taken")
            << QStringList{"Quadrivo.dat"} << Azione::Errore << false
            << "Quadrivo: argomento inatteso: 'Quadrivo.dat'\n"
               "Usare 'Quadrivo --help' per l'elenco delle opzioni.\n";
    }

    void eachCommandLineAsksForOneThing()
    {
        QFETCH(QStringList, argomenti);
        QFETCH(Azione, azione);
        QFETCH(bool, provaAvvio);
        QFETCH(QString, messaggio);
        const RigaDiComando::Esito e = RigaDiComando::leggi(argomenti);
        QCOMPARE(e.azione, azione);
        QCOMPARE(e.provaAvvio, provaAvvio);
        QCOMPARE(e.messaggio, messaggio);
    }

    void theVersionIsTheProgramsNameAndNumber()
    {
        // The number itself is compared with the build's by the packaging test.
        const QRegularExpression forma(QStringLiteral("^Quadrivo [0-9]+\\.[0-9]+\\.[0-9]+\n$"));
        QVERIFY2(forma.match(RigaDiComando::versione()).hasMatch(),
                 qPrintable(RigaDiComando::versione()));
    }

    void theHelpListsEveryOption()
    {
        const QString aiuto = RigaDiComando::aiuto();
        QVERIFY(aiuto.startsWith(QStringLiteral("Uso: Quadrivo [OPZIONE]\n")));
        for (const char *opzione : {"-h, --help", "-v, --version", "--prova-avvio", "man Quadrivo"})
            QVERIFY2(aiuto.contains(QLatin1String(opzione)), opzione);
        // Lines fit a plain 80-column terminal.
        for (const QString &riga : aiuto.split(QLatin1Char('\n')))
            QVERIFY2(riga.size() <= 79, qPrintable(riga));
    }
};

QTEST_GUILESS_MAIN(TestRigaDiComando)
#include "tst_rigadicomando.moc"
