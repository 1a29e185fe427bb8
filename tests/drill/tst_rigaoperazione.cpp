#include "drill/RigaOperazione.h"

#include <QTest>

namespace {

QString b(int n)
{
    return QString(n, QLatin1Char(' '));
}

} // namespace

class TestRigaOperazione : public QObject
{
    Q_OBJECT

private slots:
    void questionIsRightAlignedInTwelveCharacters_data()
    {
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("simbolo");
        QTest::addColumn<QString>("inizio");

        QTest::newRow("4700 u") << "4700"
                                << "  u  "
                                << "     4700  u = ";
        QTest::newRow("470 da") << "470"
                                << " da  "
                                << "      470 da = ";
        QTest::newRow("decimal") << "0,047"
                                 << " u "
                                 << "     0,047 u = ";
        QTest::newRow("blank symbol") << "4,07"
                                      << "     "
                                      << "        4,07 = ";
        QTest::newRow("measure without trailing blank") << "4,7"
                                                        << " ml"
                                                        << "      4,7 ml = ";
        QTest::newRow("exactly twelve") << "12345678"
                                        << " abc"
                                        << "12345678 abc = ";
        QTest::newRow("thirteen: no blanks") << "123456789"
                                             << " abc"
                                             << "123456789 abc = ";
        QTest::newRow("much longer") << "4700"
                                     << "   unita semplici  "
                                     << "4700   unita semplici = ";
    }
    void questionIsRightAlignedInTwelveCharacters()
    {
        QFETCH(QString, numero);
        QFETCH(QString, simbolo);
        QFETCH(QString, inizio);
        const QString domanda = RigaOperazione::domanda(numero, simbolo);
        QVERIFY(!domanda.endsWith(' '));
        QCOMPARE(RigaOperazione::inizio(RigaOperazione::spazi(domanda), domanda), inizio);
    }

    void rightAnswerPieceIsTrimmed_data()
    {
        QTest::addColumn<QString>("risposta");
        QTest::addColumn<QString>("secondi");
        QTest::addColumn<QString>("pezzo");

        QTest::newRow("symbols' trailing blanks") << "4 uk  7  h  0 da  0  u  "
                                                  << "3"
                                                  << "R.4 uk  7  h  0 da  0  u (Sec.3)";
        QTest::newRow("leading blanks") << "       4  h  7 da  "
                                        << "12"
                                        << "R.4  h  7 da (Sec.12)";
        QTest::newRow("negative seconds") << "4 u 7 d "
                                          << "-86398"
                                          << "R.4 u 7 d (Sec.-86398)";
        QTest::newRow("seconds text trimmed") << "4 u "
                                              << " 7 "
                                              << "R.4 u (Sec.7)";
    }
    void rightAnswerPieceIsTrimmed()
    {
        QFETCH(QString, risposta);
        QFETCH(QString, secondi);
        QFETCH(QString, pezzo);
        QCOMPARE(RigaOperazione::pezzoEsatto(risposta, secondi), pezzo);
    }

    void wrongPieceIsTwentySixWideUpToTwentyTwoCharacters_data()
    {
        QTest::addColumn<QString>("risposta");
        QTest::addColumn<QString>("pezzo");

        QTest::newRow("one digit") << "7"
                                   << "R.7* " + b(21);
        QTest::newRow("two places") << "5 uk  1  h  "
                                    << "R.5 uk  1  h* " + b(12);
        QTest::newRow("twenty-two") << "8 uk  2  h  3 da  0  u  "
                                    << "R.8 uk  2  h  3 da  0  u* ";
        QTest::newRow("longer than twenty-two") << "8 uk  2  h  3 da  0  u 9"
                                                << "R.8 uk  2  h  3 da  0  u 9* ";
        // Leading blanks stay in the piece but not in the count: wider.
        QTest::newRow("leading blanks") << "     4  h  "
                                        << "R.     4  h* " + b(18);
    }
    void wrongPieceIsTwentySixWideUpToTwentyTwoCharacters()
    {
        QFETCH(QString, risposta);
        QFETCH(QString, pezzo);
        const QString spazi = RigaOperazione::spaziRisposta(risposta);
        QCOMPARE(RigaOperazione::pezzoErrato(risposta, QStringLiteral("* "), spazi), pezzo);
        if (risposta.trimmed().size() <= 22 && !risposta.startsWith(' '))
            QCOMPARE(pezzo.size(), 26);
    }

    void shownAnswerIsMarkedWithADegreeSign()
    {
        QCOMPARE(RigaOperazione::pezzoSoluzione(QStringLiteral("9 uk  9  h  0 da  "),
                                                QStringLiteral("45")),
                 QStringLiteral("R.9 uk  9  h  0 da° (Sec.45)"));
        QCOMPARE(
            RigaOperazione::pezzoSoluzione(QStringLiteral("4     7  h  "), QStringLiteral("0")),
            QStringLiteral("R.4     7  h° (Sec.0)"));
    }
};

QTEST_GUILESS_MAIN(TestRigaOperazione)
#include "tst_rigaoperazione.moc"
