#include "support/Scadenze.h"
#include "support/XvfbSession.h"

#include <QDir>
#include <QProcess>
#include <QTest>

// The real program in a real X server: it starts on the start screen and a
// pupil can leave it with the keyboard alone.
class TestAvvio : public QObject
{
    Q_OBJECT

    XvfbSession x;
    QProcess quadrivo;

private slots:
    void initTestCase() { QVERIFY2(x.start(), qPrintable(x.error())); }

    void cleanupTestCase() { x.stop(); }

    // A failed step leaves what explains it: the program's output, the
    // windows, a picture of the display.
    void cleanup()
    {
        if (QTest::currentTestFailed())
            qWarning().noquote() << x.diagnostica(QString::fromLatin1(QTest::currentTestFunction()),
                                                  &quadrivo);
        if (quadrivo.state() != QProcess::NotRunning) {
            quadrivo.kill();
            quadrivo.waitForFinished(5000);
        }
    }

    void startsOnTheStartScreenAndLeavesWithTheKeyboardAlone()
    {
        QTemporaryDir lavoro;
        QVERIFY(!x.avviaQuadrivo(quadrivo, lavoro.path()).isEmpty());
        // Each key once the screen it acts on is there: the choice opens the
        // order frame, the order enables "Esci".
        for (const char *tasto : {"Return", "Return", "space", "space", "Return"})
            x.xdotool({QStringLiteral("key"), QString::fromLatin1(tasto)});
        QVERIFY(XvfbSession::aspettaLaFine(quadrivo));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 0);
    }

    void anUntrappedErrorIsShownAndEndsTheProgram()
    {
        QTemporaryDir lavoro;
        QVERIFY(!x.avviaQuadrivo(quadrivo, lavoro.path()).isEmpty());
        // Key 0 on the number buttons reads "/" as a number: a type mismatch.
        x.xdotool({QStringLiteral("key"), QStringLiteral("0")});
        const QString avviso = x.waitForWindow(QStringLiteral("^Quadrivo$"));
        QVERIFY2(!avviso.isEmpty(), "no error message box");
        QCOMPARE(quadrivo.state(), QProcess::Running); // it waits for the pupil to read it
        QVERIFY(x.focus(avviso));
        x.xdotool({QStringLiteral("key"), QStringLiteral("Return")});
        QVERIFY(XvfbSession::aspettaLaFine(quadrivo));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 1);
        const QString errore = QString::fromLocal8Bit(quadrivo.readAllStandardError());
        QVERIFY2(errore.contains(QStringLiteral("13")), qPrintable(errore));
    }

    void withoutADisplayItSaysSoInOneLine()
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        quadrivo.setProcessEnvironment(env);
        quadrivo.setWorkingDirectory(QDir::tempPath());
        quadrivo.start(XvfbSession::quadrivo(), {});
        QVERIFY2(quadrivo.waitForFinished(Scadenze::ms(10000)), qPrintable(quadrivo.errorString()));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 1);
        const QString errore = QString::fromLocal8Bit(quadrivo.readAllStandardError()).trimmed();
        QCOMPARE(errore.count(QLatin1Char('\n')), 0);
        QVERIFY(errore.contains(QStringLiteral("DISPLAY")));
    }
};

QTEST_GUILESS_MAIN(TestAvvio)
#include "tst_avvio.moc"
