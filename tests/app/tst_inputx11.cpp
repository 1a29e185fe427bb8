#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/HeldKeys.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/Timer.h"
#include "report/frmNome.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "start/FrmOpzioni.h"
#include "start/frmAutore.h"
#include "support/CoriOccupati.h"
#include "support/Scadenze.h"
#include "support/TestDoubles.h"
#include "support/XvfbSession.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QProcess>
#include <QTest>
#include <functional>
#include <map>
#include <memory>

// The real screens in this process, on a real X server (Xvfb), driven by real
// X events from xdotool while the test looks at focus, state and the
// recording printer: held keys with both cores busy, mouse on disabled
// controls, the first click after a modal screen.

namespace {

QString display;

// Watches what reaches the windows: when the last key or mouse event came,
// and the first press of every hold (a press after a release).
class Osservatore : public QObject
{
public:
    int rilasciMouse = 0;
    bool ultimoRilascio = true;
    QElapsedTimer ultimoTasto;
    std::function<void()> primaPressione;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!watched->isWindowType())
            return false;
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            if (event->type() == QEvent::KeyPress && ultimoRilascio && primaPressione)
                primaPressione();
            ultimoRilascio = event->type() == QEvent::KeyRelease;
            ultimoTasto.restart();
        } else if (event->type() == QEvent::MouseButtonRelease) {
            ++rilasciMouse;
        }
        return false;
    }
};

// The held-key screens: each runs in a process of its own, on an X server of
// its own, all at the same time, so the holds of one do not wait for another's.
const QStringList tenuteSeparate = {
    QStringLiteral("startScreenHeldSpaceMovesOnce"),
    QStringLiteral("worksheetScreenHeldSpaceMovesOnce"),
    QStringLiteral("certificateScreenHeldSpaceMovesOnce"),
    QStringLiteral("optionsScreenHeldArrowMovesOnce"),
    QStringLiteral("nameScreenHeldLetterTypesOne"),
};
QProcessEnvironment sulloSchermo()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), display);
    return env;
}

bool xdotool(const QStringList &args)
{
    QProcess p;
    p.setProcessEnvironment(sulloSchermo());
    p.start(QStringLiteral("xdotool"), args);
    // Our own events keep flowing while xdotool works.
    return QTest::qWaitFor([&] { return p.state() == QProcess::NotRunning; }, 20000) &&
           p.exitCode() == 0;
}

} // namespace

class TestInputX11 : public QObject
{
    Q_OBJECT

    Osservatore osservatore;
    CoriOccupati carico;
    std::map<QString, std::unique_ptr<QProcess>> figli;

    // Gives the screen the X keyboard focus (there is no window manager).
    bool conIlFuoco(Form &f)
    {
        f.Show();
        if (!QTest::qWaitForWindowExposed(&f, 10000))
            return false;
        for (int i = 0; i < 50; ++i) {
            xdotool({QStringLiteral("windowfocus"), QStringLiteral("--sync"),
                     QString::number(f.winId())});
            if (QTest::qWaitFor([&] { return QApplication::activeWindow() == &f; }, 500))
                return true;
        }
        return false;
    }

    // Holds `tasto` tenute() times, a second each with a pause between, in
    // one xdotool run. Returns what `stato` read just before the first press
    // of every hold, and once more after the last: the screen after 0, 1, ...
    // tenute() holds. Empty when the holds did not finish.
    QList<int> tieniOgniVolta(const QString &tasto, const std::function<int()> &stato)
    {
        QStringList comandi;
        for (int volta = 0; volta < tenute(); ++volta)
            comandi << QStringLiteral("keydown") << tasto << QStringLiteral("sleep")
                    << QStringLiteral("1") << QStringLiteral("keyup") << tasto
                    << QStringLiteral("sleep") << QStringLiteral("0.3");
        QList<int> visti;
        osservatore.primaPressione = [&] { visti << stato(); };
        QProcess p;
        p.setProcessEnvironment(sulloSchermo());
        p.start(QStringLiteral("xdotool"), comandi);
        const bool finite =
            Scadenze::finche([&] { return p.state() == QProcess::NotRunning; },
                             tenute() * 1300 + 30000) &&
            p.exitCode() == 0 &&
            Scadenze::finche(
                [&] {
                    return osservatore.ultimoRilascio && osservatore.ultimoTasto.elapsed() > 300;
                },
                10000);
        osservatore.primaPressione = nullptr;
        if (!finite)
            return {};
        visti << stato();
        return visti;
    }

    // One step a hold: after hold i the screen is at attesi[i].
    static void unPassoATenuta(const QList<int> &visti, const QList<int> &attesi,
                               const QString &schermo)
    {
        auto elenco = [](const QList<int> &l) {
            QStringList s;
            for (int v : l)
                s << QString::number(v);
            return s.join(QLatin1Char(' '));
        };
        QVERIFY2(!visti.isEmpty(), qPrintable(schermo + QStringLiteral(": the holds did not end")));
        QVERIFY2(visti.size() == attesi.size(),
                 qPrintable(QStringLiteral("%1: %2 holds, %3 first presses (a repeat reached the "
                                           "screen as a release and a press): %4")
                                .arg(schermo)
                                .arg(attesi.size() - 1)
                                .arg(visti.size() - 1)
                                .arg(elenco(visti))));
        for (int volta = 1; volta < attesi.size(); ++volta)
            QVERIFY2(visti[volta] == attesi[volta],
                     qPrintable(QStringLiteral("%1, hold %2: at %3, not %4 (after each hold: %5, "
                                               "expected %6)")
                                    .arg(schermo)
                                    .arg(volta)
                                    .arg(visti[volta])
                                    .arg(attesi[volta])
                                    .arg(elenco(visti))
                                    .arg(elenco(attesi))));
    }

    // Mouse on the centre of the control: "click", "down-up" or "double".
    bool mouse(const Control &c, const QString &come)
    {
        const QPoint p = c.widget()->mapToGlobal(c.widget()->rect().center());
        if (!XvfbSession::current()->movePointer(p))
            return false;
        const int prima = osservatore.rilasciMouse;
        int rilasci = 1;
        bool ok = false;
        if (come == QLatin1String("double")) {
            rilasci = 2;
            ok = xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                          QStringLiteral("--delay"), QStringLiteral("80"), QStringLiteral("1")});
        } else if (come == QLatin1String("down-up")) {
            ok = xdotool({QStringLiteral("mousedown"), QStringLiteral("1")}) &&
                 xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
        } else {
            ok = xdotool({QStringLiteral("click"), QStringLiteral("1")});
        }
        return ok &&
               QTest::qWaitFor([&] { return osservatore.rilasciMouse >= prima + rilasci; }, 10000);
    }

    static int indiceFocus(const ControlArray<OptionButton> &gruppo)
    {
        for (auto &[i, b] : gruppo)
            if (b->hasFocus())
                return i;
        return -1;
    }

    // How many holds each screen gets: 20, or QUADRIVO_TENUTE for a quicker
    // look while working on it.
    static int tenute()
    {
        const int n = qEnvironmentVariableIntValue("QUADRIVO_TENUTE");
        return n > 0 ? n : 20;
    }

    // Holds Space tenute() times on a group navigated by it: one step each time.
    void spazioTenutoUnPasso(Form &f, const ControlArray<OptionButton> &gruppo)
    {
        QList<int> attesi{indiceFocus(gruppo)};
        QVERIFY(attesi.first() >= 0);
        while (attesi.size() <= tenute()) {
            int i = attesi.last();
            do
                i = (i + 1) % gruppo.Count();
            while (!gruppo(i).usable());
            attesi << i;
        }
        unPassoATenuta(tieniOgniVolta(QStringLiteral("space"), [&] { return indiceFocus(gruppo); }),
                       attesi, f.formName());
    }

    // In the main test process a held-key screen runs in a process of its
    // own (started by busyMachine); its verdict and output are that process's.
    // False when this process is to run the screen itself.
    bool nelSuoProcesso()
    {
        auto it = figli.find(QString::fromLatin1(QTest::currentTestFunction()));
        if (it == figli.end())
            return false;
        QProcess &p = *it->second;
        const bool finito =
            Scadenze::finche([&] { return p.state() == QProcess::NotRunning; }, 240000);
        if (!finito) {
            p.kill();
            p.waitForFinished(5000);
        }
        const QString uscita = QString::fromLocal8Bit(p.readAll());
        if (!finito || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
            QTest::qFail(qPrintable(QStringLiteral("its own process (exit %1):\n%2")
                                        .arg(finito ? QString::number(p.exitCode())
                                                    : QStringLiteral("none, killed"))
                                        .arg(uscita)),
                         __FILE__, __LINE__);
        return true;
    }

    // Nothing may happen on any of the three kinds of mouse use.
    void tuttiIModi(const Control &c, const std::function<void()> &nienteAccaduto)
    {
        for (const char *come : {"click", "down-up", "double"}) {
            QVERIFY2(mouse(c, QString::fromLatin1(come)), come);
            QTest::qWait(0);
            nienteAccaduto();
            if (QTest::currentTestFailed())
                return;
        }
    }

    static bool finito(FrmInizio &f) { return !f.get<Timer>("timerTendine").Enabled(); }

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        display = XvfbSession::current()->display();
        qApp->installEventFilter(&osservatore);
        osservatore.ultimoTasto.start();
    }

    // A failed step leaves the windows and a picture of the display.
    void cleanup()
    {
        if (QTest::currentTestFailed())
            qWarning().noquote() << XvfbSession::current()->diagnostica(
                QString::fromLatin1(QTest::currentTestFunction()));
    }

    void cleanupTestCase()
    {
        for (auto &[nome, p] : figli) {
            p->kill();
            p->waitForFinished(5000);
        }
        carico.imposta(false);
    }

    void theServerDropsTheReleasesOfAutoRepeat()
    {
        TestContext t;
        t->form<frmNome>(); // the first screen turns it on
        QVERIFY(HeldKeys::serverDropsRepeatReleases());
    }

    // ---- Held keys, with both cores busy ----

    void busyMachine()
    {
        // Two busy loops for the held-key tests that follow: under load the
        // press that pairs with a repeat's release is late.
        QVERIFY(carico.imposta(true));
        // Every held-key screen at once, each in this program run again for
        // that one test function, on an X server of its own.
        for (const QString &nome : tenuteSeparate) {
            auto p = std::make_unique<QProcess>();
            p->setProcessChannelMode(QProcess::MergedChannels);
            p->start(QCoreApplication::applicationFilePath(), {nome});
            QVERIFY2(p->waitForStarted(10000), qPrintable(p->errorString()));
            figli[nome] = std::move(p);
        }
    }

    void startScreenHeldSpaceMovesOnce()
    {
        if (nelSuoProcesso())
            return;
        TestContext t;
        auto &f = t->form<FrmInizio>();
        QVERIFY(conIlFuoco(f));
        QVERIFY(QTest::qWaitFor([&] { return finito(f); }, 20000));
        auto gruppo = f.array<OptionButton>("Option1");
        gruppo(0).SetFocus();
        QVERIFY(QTest::qWaitFor([&] { return gruppo(0).hasFocus(); }, 5000));
        spazioTenutoUnPasso(f, gruppo);
        QVERIFY(t.errors->errors.isEmpty());
    }

    void worksheetScreenHeldSpaceMovesOnce()
    {
        if (nelSuoProcesso())
            return;
        TestContext t;
        auto &f = t->form<FrmStampaSchede>();
        QVERIFY(conIlFuoco(f));
        auto gruppo = f.array<OptionButton>("Option1");
        gruppo(0).SetFocus();
        QVERIFY(QTest::qWaitFor([&] { return gruppo(0).hasFocus(); }, 5000));
        spazioTenutoUnPasso(f, gruppo);
        QVERIFY(t.errors->errors.isEmpty());
    }

    void certificateScreenHeldSpaceMovesOnce()
    {
        if (nelSuoProcesso())
            return;
        TestContext t;
        auto &f = t->form<FrmAttestato>();
        QVERIFY(conIlFuoco(f));
        auto gruppo = f.array<OptionButton>("Option5");
        gruppo(1).SetFocus();
        QVERIFY(QTest::qWaitFor([&] { return gruppo(1).hasFocus(); }, 5000));
        spazioTenutoUnPasso(f, gruppo);
        QVERIFY(t.errors->errors.isEmpty());
    }

    void optionsScreenHeldArrowMovesOnce()
    {
        if (nelSuoProcesso())
            return;
        TestContext t;
        auto &f = t->form<FrmOpzioni>();
        QVERIFY(conIlFuoco(f));
        auto gruppo = f.array<OptionButton>("Option5");
        gruppo(0).SetFocus();
        QVERIFY(QTest::qWaitFor([&] { return gruppo(0).hasFocus(); }, 5000));
        QList<int> attesi;
        for (int volta = 0; volta <= tenute(); ++volta)
            attesi << volta % 3;
        unPassoATenuta(tieniOgniVolta(QStringLiteral("Right"), [&] { return indiceFocus(gruppo); }),
                       attesi, f.formName());
        QVERIFY(t.errors->errors.isEmpty());
    }

    void nameScreenHeldLetterTypesOne()
    {
        if (nelSuoProcesso())
            return;
        TestContext t;
        auto &f = t->form<frmNome>();
        QVERIFY(conIlFuoco(f));
        // AVANTI has the keys from the start: no click first.
        QVERIFY(QTest::qWaitFor([&] { return f.get<OptionButton>("Option4").hasFocus(); }, 5000));
        const auto &nome = f.get<Label>("lblNome");
        // How many B's the name has; -1 for anything else.
        auto lettere = [&] {
            const QString n = nome.Caption();
            return n == QString(n.size(), QLatin1Char('B')) ? int(n.size()) : -1;
        };
        QList<int> attesi;
        for (int volta = 0; volta <= tenute(); ++volta)
            attesi << volta;
        unPassoATenuta(tieniOgniVolta(QStringLiteral("b"), lettere), attesi, f.formName());
        QVERIFY(t.errors->errors.isEmpty());
    }

    void quietMachine()
    {
        QVERIFY(carico.imposta(false));
    }

    // ---- The mouse on disabled controls ----

    void startScreenDisabledButtonsDoNothing()
    {
        TestContext t;
        auto &f = t->form<FrmInizio>();
        QVERIFY(conIlFuoco(f));
        QVERIFY(QTest::qWaitFor([&] { return finito(f); }, 20000));
        auto nienteAccaduto = [&] {
            QVERIFY(t->screens().isLoaded<FrmInizio>());
            QVERIFY(!t->screens().isLoaded<frmOperativo>());
            QCOMPARE(f.get<Label>("Label2").Caption(), QString());
            QVERIFY(t.errors->errors.isEmpty());
        };
        // Before any choice: Esci, Vai (Frame3 disabled), Option2(0) (Frame2
        // disabled).
        tuttiIModi(f.get<OptionButton>("Option3", 2), nienteAccaduto);
        tuttiIModi(f.get<OptionButton>("Option3", 0), nienteAccaduto);
        tuttiIModi(f.get<OptionButton>("Option2", 0), nienteAccaduto);
        // Once the number kind is chosen, Frame2 is enabled: its buttons 1
        // and 2 stay disabled by themselves.
        QVERIFY(mouse(f.get<OptionButton>("Option1", 0), QStringLiteral("click")));
        QVERIFY(f.get<Frame>("Frame2").Enabled());
        tuttiIModi(f.get<OptionButton>("Option2", 1), nienteAccaduto);
        tuttiIModi(f.get<OptionButton>("Option2", 2), nienteAccaduto);
        // Button 0 works as ever.
        QVERIFY(mouse(f.get<OptionButton>("Option2", 0), QStringLiteral("click")));
        QVERIFY(!f.get<Label>("Label2").Caption().isEmpty());
    }

    void worksheetDisabledChoicesDoNothing()
    {
        TestContext t;
        auto &f = t->form<FrmStampaSchede>();
        QVERIFY(conIlFuoco(f));
        auto &frame1 = f.get<Frame>("Frame1");
        const bool frame1Prima = frame1.Enabled();
        const QString label2Prima = f.get<Label>("Label2").Caption();
        const int rigaPrima = t->stato.RigaScheda;
        auto nienteAccaduto = [&] {
            QCOMPARE(frame1.Enabled(), frame1Prima);
            QCOMPARE(f.get<Label>("Label2").Caption(), label2Prima);
            QCOMPARE(int(t->stato.RigaScheda), rigaPrima);
            QVERIFY(t.errors->errors.isEmpty());
        };
        tuttiIModi(f.get<OptionButton>("Option2", 1), nienteAccaduto);
        tuttiIModi(f.get<OptionButton>("Option2", 2), nienteAccaduto);
    }

    void unprintableCertificateButtonDoesNotPrint()
    {
        TestContext t;
        auto &f = t->form<FrmAttestato>();
        QVERIFY(conIlFuoco(f));
        auto &stampa = f.get<OptionButton>("Option5", 0);
        QCOMPARE(stampa.Caption(), QStringLiteral("ATTESTATO NON STAMPABILE"));
        QVERIFY(!stampa.Enabled());
        tuttiIModi(stampa, [&] {
            QCOMPARE(t.printer->calls, QStringList{});
            QVERIFY(t->screens().isLoaded<FrmAttestato>());
            QVERIFY(t.errors->errors.isEmpty());
        });
    }

    // ---- After the author screen ----

    void theFirstClicksAfterTheAuthorScreenWork()
    {
        TestContext t;
        auto &f = t->form<FrmInizio>();
        QVERIFY(conIlFuoco(f));
        QVERIFY(QTest::qWaitFor([&] { return finito(f); }, 20000));
        for (const char *dove : {"Label5", "Label6_2"}) {
            // The menu entry opens the author screen, modal, and its button
            // closes it: both clicks in one xdotool script, since this test
            // waits inside the modal screen's loop meanwhile.
            QAction *autore = f.get<Menu>("mnuAutore").action();
            QMenuBar *barra = f.menuBar();
            const QPoint voce = barra->mapToGlobal(barra->actionGeometry(autore).center());
            QPoint chiudi;
            {
                TestContext misura;
                auto &a = misura->form<frmAutore>();
                const QWidget *w = a.get<Control>("Command1").widget();
                chiudi = w->mapTo(&a, w->rect().center());
            }
            QProcess script;
            script.setProcessEnvironment(sulloSchermo());
            script.start(
                QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("xdotool mousemove --sync %1 %2 click 1 && "
                                "id=$(xdotool search --sync --onlyvisible --name '^Autore$' "
                                "| head -1) && xdotool mousemove --window $id --sync %3 %4 "
                                "click 1")
                     .arg(voce.x())
                     .arg(voce.y())
                     .arg(chiudi.x())
                     .arg(chiudi.y())});
            QVERIFY(QTest::qWaitFor([&] { return script.state() == QProcess::NotRunning; }, 30000));
            QCOMPARE(script.exitCode(), 0);
            QVERIFY(QTest::qWaitFor([&] { return !t->screens().isLoaded<frmAutore>(); }, 10000));

            const int famiglia = t->stato.FamigliaSimboli;
            const Control &c = QLatin1String(dove) == QLatin1String("Label5")
                                   ? f.get<Control>("Label5")
                                   : f.get<Control>("Label6", 2);
            QVERIFY(mouse(c, QStringLiteral("click")));
            QVERIFY2(QTest::qWaitFor(
                         [&] { return int(t->stato.FamigliaSimboli) == famiglia % 3 + 1; }, 3000),
                     dove);
        }
        QVERIFY(t.errors->errors.isEmpty());
    }
};

// The application lives on the test's own X server, started first.
QUADRIVO_XVFB_MAIN(TestInputX11)
#include "tst_inputx11.moc"
