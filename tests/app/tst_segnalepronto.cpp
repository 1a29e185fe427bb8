// The start-up signal between a program and the runner that times it.
#include "app/SegnalePronto.h"
#include "bench/Processo.h"

#include <QTest>
#include <fcntl.h>
#include <unistd.h>

class TestSegnalePronto : public QObject
{
    Q_OBJECT

private slots:
    void theProgramWritesOneByteOnceAndClosesThePipe()
    {
        int tubo[2];
        // Not blocking: a pipe left open fails the test instead of hanging it.
        QCOMPARE(pipe2(tubo, O_CLOEXEC | O_NONBLOCK), 0);
        qputenv(VariabileSegnalePronto, QByteArray::number(tubo[1]));
        segnalaPronto();
        segnalaPronto();
        qunsetenv(VariabileSegnalePronto);
        char letti[2];
        QCOMPARE(read(tubo[0], letti, sizeof letti), ssize_t(1));
        // Closed by the program: the runner sees the end of the pipe.
        QCOMPARE(read(tubo[0], letti, sizeof letti), ssize_t(0));
        QCOMPARE(fcntl(tubo[1], F_GETFD), -1);
        close(tubo[0]);
    }

    void theRunnerTimesTheSignalBeforeTheEnd()
    {
        Processo::preparaAllarme();
        // A program that says it is ready, then takes a while to end.
        const Processo::Esito e = Processo::esegui(
            "sh", {"sh", "-c", "eval \"printf x >&$QUADRIVO_SEGNALE_PRONTO\"; sleep 0.3"}, {}, {},
            true);
        QVERIFY(e.riuscito);
        QVERIFY(e.prontoMillisecondi >= 0);
        QVERIFY(e.millisecondi - e.prontoMillisecondi >= 250);
    }

    void aRunThatEndsWithoutTheSignalHasFailed()
    {
        Processo::preparaAllarme();
        const Processo::Esito e = Processo::esegui("true", {"true"}, {}, {}, true);
        QVERIFY(!e.riuscito);
        QCOMPARE(e.prontoMillisecondi, -1.0);
    }
};

QTEST_GUILESS_MAIN(TestSegnalePronto)
#include "tst_segnalepronto.moc"
