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
#include "support/TestDoubles.h"
#include "support/XvfbSession.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QProcess>
#include <QTest>
#include <memory>

// The real screens in this process, on a real X server (Xvfb), driven by real
// X events from xdotool while the test looks at focus, state and the
// recording printer: held keys with both cores busy, mouse on disabled
// controls, the first click after a modal screen.

namespace {

QString display;

// Watches what reaches the windows: when the last key or mouse event came.
class Osservatore : public QObject
{
public:
    int tasti = 0;
    int rilasciMouse = 0;
    bool ultimoRilascio = true;
    QElapsedTimer ultimoTasto;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (!watched->isWindowType())
            return false;
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            ++tasti;
            ultimoRilascio = event->type() == QEvent::KeyRelease;
            ultimoTasto.restart();
        } else if (event->type() == QEvent::MouseButtonRelease) {
            ++rilasciMouse;
        }
        return false;
    }
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
    std::vector<std::unique_ptr<QProcess>> carichi;

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

    // Holds the key down for a second, then waits until its last event has
    // come and nothing has followed for a while.
    bool tieni(const QString &tasto)
    {
        QProcess p;
        p.setProcessEnvironment(sulloSchermo());
        p.start(QStringLiteral("sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("xdotool keydown %1 && sleep 1 && xdotool keyup %1").arg(tasto)});
        if (!QTest::qWaitFor([&] { return p.state() == QProcess::NotRunning; }, 30000))
            return false;
        return QTest::qWaitFor(
            [&] { return osservatore.ultimoRilascio && osservatore.ultimoTasto.elapsed() > 300; },
            10000);
    }

    // Mouse on the centre of the control: "click", "down-up" or "double".
    bool mouse(const Control &c, const QString &come)
    {
        const QPoint p = c.widget()->mapToGlobal(c.widget()->rect().center());
        if (!xdotool({QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(p.x()),
                      QString::number(p.y())}))
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

    // How many holds each screen gets: 20, fewer where QUADRIVO_TENUTE says so
    // (the sanitized pass, which proves the same code paths more slowly).
    static int tenute()
    {
        const int n = qEnvironmentVariableIntValue("QUADRIVO_TENUTE");
        return n > 0 ? n : 20;
    }

    // Holds Space tenute() times on a group navigated by it: one step each time.
    void spazioTenutoUnPasso(Form &f, const ControlArray<OptionButton> &gruppo)
    {
        for (int volta = 0; volta < tenute(); ++volta) {
            const int da = indiceFocus(gruppo);
            QVERIFY(da >= 0);
            int atteso = da;
            do
                atteso = (atteso + 1) % gruppo.Count();
            while (!gruppo(atteso).usable());
            QVERIFY(tieni(QStringLiteral("space")));
            QVERIFY2(indiceFocus(gruppo) == atteso,
                     qPrintable(QStringLiteral("hold %1 on %2: from %3 to %4, not %5")
                                    .arg(volta + 1)
                                    .arg(f.formName())
                                    .arg(da)
                                    .arg(indiceFocus(gruppo))
                                    .arg(atteso)));
        }
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
        for (auto &p : carichi) {
            p->kill();
            p->waitForFinished(5000);
        }
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
        for (int i = 0; i < 2; ++i) {
            auto p = std::make_unique<QProcess>();
            p->start(QStringLiteral("sh"),
                     {QStringLiteral("-c"), QStringLiteral("while :; do :; done")});
            QVERIFY(p->waitForStarted(5000));
            carichi.push_back(std::move(p));
        }
    }

    void startScreenHeldSpaceMovesOnce()
    {
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
        TestContext t;
        auto &f = t->form<FrmOpzioni>();
        QVERIFY(conIlFuoco(f));
        auto gruppo = f.array<OptionButton>("Option5");
        gruppo(0).SetFocus();
        QVERIFY(QTest::qWaitFor([&] { return gruppo(0).hasFocus(); }, 5000));
        for (int volta = 0; volta < tenute(); ++volta) {
            const int da = indiceFocus(gruppo);
            QVERIFY(tieni(QStringLiteral("Right")));
            QCOMPARE(indiceFocus(gruppo), (da + 1) % 3);
        }
        QVERIFY(t.errors->errors.isEmpty());
    }

    void nameScreenHeldLetterTypesOne()
    {
        TestContext t;
        auto &f = t->form<frmNome>();
        QVERIFY(conIlFuoco(f));
        // AVANTI has the keys from the start: no click first.
        QVERIFY(QTest::qWaitFor([&] { return f.get<OptionButton>("Option4").hasFocus(); }, 5000));
        const auto &nome = f.get<Label>("lblNome");
        for (int volta = 1; volta <= tenute(); ++volta) {
            QVERIFY(tieni(QStringLiteral("b")));
            QCOMPARE(nome.Caption(), QString(volta, QLatin1Char('B')));
        }
        QVERIFY(t.errors->errors.isEmpty());
    }

    void quietMachine()
    {
        for (auto &p : carichi) {
            p->kill();
            p->waitForFinished(5000);
        }
        carichi.clear();
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
