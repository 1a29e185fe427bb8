#include <QDir>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

// The real program in a real X server: it starts on the start screen and a
// pupil can leave it with the keyboard alone.
class TestAvvio : public QObject
{
    Q_OBJECT

    QProcess xvfb;
    QString display;

    QString programma() const
    {
        return QDir(QCoreApplication::applicationDirPath())
            .filePath(QStringLiteral("../app/Quadrivo"));
    }

    // Runs xdotool against our X server; its standard output.
    QString xdotool(const QStringList &args)
    {
        QProcess p;
        p.setProcessEnvironment(sulloSchermo());
        p.start(QStringLiteral("xdotool"), args);
        p.waitForFinished(10000);
        return QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed();
    }

    // The environment of a program on our X server.
    QProcessEnvironment sulloSchermo() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.insert(QStringLiteral("DISPLAY"), display);
        return env;
    }

    // Starts the program in `cartella` and gives its start window the
    // keyboard (there is no window manager to do it); the window's id, or
    // the empty text after a failed check.
    QString avviaConIlFuoco(QProcess &quadrivo, const QString &cartella)
    {
        quadrivo.setProcessEnvironment(sulloSchermo());
        quadrivo.setWorkingDirectory(cartella);
        quadrivo.start(programma(), {});
        if (!quadrivo.waitForStarted(5000)) {
            QTest::qFail("the program did not start", __FILE__, __LINE__);
            return {};
        }
        const QString id = cerca(QStringLiteral("^SISTEMA DECIMALE: scomposizione$"));
        if (id.isEmpty()) {
            QTest::qFail("no window titled SISTEMA DECIMALE: scomposizione", __FILE__, __LINE__);
            return {};
        }
        // Without a window manager the focus can be slow to land on a loaded
        // machine: keys sent before it would go nowhere.
        for (int i = 0; i < 50; ++i) {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), id});
            if (xdotool({QStringLiteral("getwindowfocus")}) == id)
                break;
            QTest::qWait(100);
        }
        QTest::qWait(300);
        return id;
    }

    // Waits (up to 30 s) for the program to end by itself.
    static void aspettaLaFine(QProcess &quadrivo)
    {
        if (quadrivo.state() != QProcess::NotRunning)
            quadrivo.waitForFinished(30000);
    }

    // The first visible window whose title matches, waiting up to 30 s.
    QString cerca(const QString &titolo)
    {
        for (int i = 0; i < 300; ++i) {
            const QString trovate =
                xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                         QStringLiteral("--name"), titolo});
            if (!trovate.isEmpty())
                return trovate.split(QLatin1Char('\n')).first();
            QTest::qWait(100);
        }
        return {};
    }

private slots:
    void initTestCase()
    {
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty(), "Xvfb missing");
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty(),
                 "xdotool missing");
        // A display number of our own, away from any the machine uses.
        display = QStringLiteral(":%1").arg(90 + QCoreApplication::applicationPid() % 800);
        xvfb.start(QStringLiteral("Xvfb"), {display, QStringLiteral("-screen"), QStringLiteral("0"),
                                            QStringLiteral("1280x1024x24"),
                                            QStringLiteral("-nolisten"), QStringLiteral("tcp")});
        QVERIFY(xvfb.waitForStarted(5000));
        // The server is up once a client can talk to it.
        bool up = false;
        for (int i = 0; i < 50 && !up; ++i) {
            QTest::qWait(100);
            QProcess probe;
            probe.setProcessEnvironment(sulloSchermo());
            probe.start(QStringLiteral("xdotool"), {QStringLiteral("getmouselocation")});
            probe.waitForFinished(2000);
            up = probe.exitCode() == 0;
        }
        QVERIFY2(up, "Xvfb did not come up");
    }

    void cleanupTestCase()
    {
        xvfb.terminate();
        xvfb.waitForFinished(5000);
    }

    void startsOnTheStartScreenAndLeavesWithTheKeyboardAlone()
    {
        QTemporaryDir lavoro;
        QProcess quadrivo;
        QVERIFY(!avviaConIlFuoco(quadrivo, lavoro.path()).isEmpty());
        for (const char *tasto : {"Return", "Return", "space", "space", "Return"}) {
            xdotool({QStringLiteral("key"), QString::fromLatin1(tasto)});
            QTest::qWait(250);
        }
        aspettaLaFine(quadrivo);
        QVERIFY2(quadrivo.state() == QProcess::NotRunning,
                 qPrintable(QString::fromLocal8Bit(quadrivo.readAllStandardError())));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 0);
    }

    void anUntrappedErrorIsShownAndEndsTheProgram()
    {
        QTemporaryDir lavoro;
        QProcess quadrivo;
        QVERIFY(!avviaConIlFuoco(quadrivo, lavoro.path()).isEmpty());
        // Key 0 on the number buttons reads "/" as a number: a type mismatch.
        xdotool({QStringLiteral("key"), QStringLiteral("0")});
        const QString avviso = cerca(QStringLiteral("^Quadrivo$"));
        QVERIFY2(!avviso.isEmpty(), "no error message box");
        QCOMPARE(quadrivo.state(), QProcess::Running); // it waits for the pupil to read it
        xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"), avviso});
        QTest::qWait(200);
        xdotool({QStringLiteral("key"), QStringLiteral("Return")});
        aspettaLaFine(quadrivo);
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 1);
        const QString errore = QString::fromLocal8Bit(quadrivo.readAllStandardError());
        QVERIFY2(errore.contains(QStringLiteral("13")), qPrintable(errore));
    }

    void withoutADisplayItSaysSoInOneLine()
    {
        QProcess quadrivo;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        env.remove(QStringLiteral("DISPLAY"));
        env.remove(QStringLiteral("WAYLAND_DISPLAY"));
        quadrivo.setProcessEnvironment(env);
        quadrivo.start(programma(), {});
        QVERIFY(quadrivo.waitForFinished(10000));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 1);
        const QString errore = QString::fromLocal8Bit(quadrivo.readAllStandardError()).trimmed();
        QCOMPARE(errore.count(QLatin1Char('\n')), 0);
        QVERIFY(errore.contains(QStringLiteral("DISPLAY")));
    }
};

QTEST_GUILESS_MAIN(TestAvvio)
#include "tst_avvio.moc"
