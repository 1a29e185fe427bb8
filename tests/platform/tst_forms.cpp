#include "core/AppContext.h"
#include "platform/CaratteriInAnticipo.h"
#include "platform/Form.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Line.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Timer.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <atomic>

using namespace ScreenTest;

namespace {

using K = ControlKind;

// A small screen with one control of each kind the tests need; it logs every
// event it receives.
class Prova : public Form
{
public:
    explicit Prova(AppContext &ctx) : Form(ctx, QStringLiteral("Prova"))
    {
        // clang-format off
        design(6000, 4500, {
            {.kind = K::Frame, .name = "Frame1", .left = 300, .top = 300, .width = 3000, .height = 2400, .border = true},
            {.kind = K::OptionButton, .name = "Opt", .index = 0, .in = "Frame1", .left = 150, .top = 150, .width = 2700, .height = 600, .caption = "zero"},
            {.kind = K::OptionButton, .name = "Opt", .index = 1, .in = "Frame1", .left = 150, .top = 900, .width = 2700, .height = 600, .caption = "uno"},
            {.kind = K::OptionButton, .name = "Opt", .index = 2, .in = "Frame1", .left = 150, .top = 1650, .width = 2700, .height = 600, .caption = "due", .value = true},
            {.kind = K::CommandButton, .name = "Cmd", .left = 3600, .top = 300, .width = 2000, .height = 600, .caption = "Comando"},
            {.kind = K::Label, .name = "Lbl", .left = 3600, .top = 1200, .width = 2000, .height = 400, .caption = "?"},
            {.kind = K::PictureBox, .name = "Pic", .left = 3600, .top = 1800, .width = 2000, .height = 1000},
            {.kind = K::Label, .name = "LblPic", .in = "Pic", .left = 150, .top = 150, .width = 1500, .height = 600, .caption = "dentro"},
            {.kind = K::Line, .name = "Linea", .left = 300, .top = 3000, .width = 5000, .height = 3000},
            {.kind = K::Timer, .name = "Tmr", .interval = 1000},
            {.kind = K::Menu, .name = "mnu", .caption = "Menu"},
            {.kind = K::Menu, .name = "mnuSpunta", .in = "mnu", .caption = "Spunta", .checkable = true},
        });
        // clang-format on
        Opt = array<OptionButton>("Opt");
        Opt.onGotFocus([this](int i) { log << QStringLiteral("GotFocus %1").arg(i); });
        Opt.onLostFocus([this](int i) { log << QStringLiteral("LostFocus %1").arg(i); });
        Opt.onClick([this](int i) { log << QStringLiteral("Click %1").arg(i); });
        Opt.onKeyDown([this](int i, int &k, int s) {
            log << QStringLiteral("KeyDown %1 %2 %3").arg(i).arg(k).arg(s);
            if (onKeyDown)
                onKeyDown(i, k);
        });
        Opt.onKeyPress(
            [this](int i, int &k) { log << QStringLiteral("KeyPress %1 %2").arg(i).arg(k); });
        Opt.onKeyUp(
            [this](int i, int &k, int) { log << QStringLiteral("KeyUp %1 %2").arg(i).arg(k); });
        Opt.onMouseDown([this](int i, int b, int, double, double) {
            log << QStringLiteral("MouseDown %1 %2").arg(i).arg(b);
        });
        Opt.onMouseUp([this](int i, int, int, double, double) {
            log << QStringLiteral("MouseUp %1").arg(i);
        });
        auto &cmd = get<CommandButton>("Cmd");
        cmd.Click = [this] { log << QStringLiteral("Cmd Click"); };
        cmd.MouseDown = [this](int, int, double, double) {
            log << QStringLiteral("Cmd MouseDown");
        };
        cmd.MouseUp = [this](int, int, double, double) { log << QStringLiteral("Cmd MouseUp"); };
        get<Label>("Lbl").Change = [this] { log << QStringLiteral("Lbl Change"); };
        for (auto &[i, c] : Opt)
            c->DblClick = [this, i = i] { log << QStringLiteral("DblClick %1").arg(i); };
        cmd.DblClick = [this] { log << QStringLiteral("Cmd DblClick"); };
        // The others log every mouse event under their own name.
        for (const char *name : {"Frame1", "Lbl", "Pic", "LblPic"}) {
            Control *c = findControl(QString::fromLatin1(name));
            const QString n = QString::fromLatin1(name);
            c->MouseDown = [this, n](int, int, double, double) { log << n + " MouseDown"; };
            c->MouseUp = [this, n](int, int, double, double) { log << n + " MouseUp"; };
            c->Click = [this, n] { log << n + " Click"; };
            c->DblClick = [this, n] { log << n + " DblClick"; };
        }
    }

    ControlArray<OptionButton> Opt;
    QStringList log;
    std::function<void(int, int &)> onKeyDown;
    int loads = 0;
    bool loadedWhileLoading = false;
    int cancel = 0;
    QStringList logAtLoad;

protected:
    void Form_Load() override
    {
        ++loads;
        loadedWhileLoading = services().screens().isLoaded<Prova>();
        logAtLoad = log;
    }
    void Form_Unload(int &Cancel) override
    {
        log << QStringLiteral("Unload");
        Cancel = cancel;
    }
};

// Controls of several colours, some sharing a pair of colours, in containers
// of their own colours.
class Colori : public Form
{
public:
    explicit Colori(AppContext &ctx) : Form(ctx, QStringLiteral("Colori"))
    {
        setBackColor(QColor(255, 224, 192));
        // clang-format off
        design(6000, 4500, {
            {.kind = K::Frame, .name = "Cornice", .left = 300, .top = 300, .width = 3000, .height = 2400, .back = QColor(255, 224, 192), .border = true},
            {.kind = K::Label, .name = "A", .in = "Cornice", .left = 150, .top = 150, .width = 2700, .height = 400, .caption = "a", .back = QColor(255, 224, 192), .fore = QColor(0, 0, 128)},
            {.kind = K::Label, .name = "B", .in = "Cornice", .left = 150, .top = 700, .width = 2700, .height = 400, .caption = "b", .back = QColor(255, 224, 192), .fore = QColor(0, 0, 128)},
            {.kind = K::OptionButton, .name = "Opt", .in = "Cornice", .left = 150, .top = 1300, .width = 2700, .height = 600, .caption = "o", .back = QColor(255, 224, 192), .fore = QColor(0, 0, 128)},
            {.kind = K::Label, .name = "C", .left = 3600, .top = 300, .width = 2000, .height = 400, .caption = "c", .back = QColor(255, 224, 192), .fore = QColor(0, 0, 128)},
            {.kind = K::Label, .name = "D", .left = 3600, .top = 800, .width = 2000, .height = 400, .caption = "d", .fore = QColor(192, 0, 0)},
            {.kind = K::Label, .name = "E", .left = 3600, .top = 1300, .width = 2000, .height = 400, .caption = "e"},
            {.kind = K::PictureBox, .name = "P", .left = 3600, .top = 1800, .width = 2000, .height = 1500, .back = QColor(10, 20, 30)},
            {.kind = K::Label, .name = "F", .in = "P", .left = 150, .top = 150, .width = 1500, .height = 400, .caption = "f", .back = QColor(10, 20, 30), .fore = QColor(200, 200, 200)},
            {.kind = K::Label, .name = "G", .in = "P", .left = 150, .top = 700, .width = 1500, .height = 400, .caption = "g", .back = QColor(255, 224, 192), .fore = QColor(0, 0, 128)},
        });
        // clang-format on
    }
};

// The palette a widget has when given these colours by copying its own
// palette and changing the colour roles: what a control's colours mean.
void colora(QWidget &w, const QColor &back, const QColor &fore)
{
    QPalette p = w.palette();
    if (back.isValid()) {
        p.setColor(QPalette::Window, back);
        p.setColor(QPalette::Button, back);
        p.setColor(QPalette::Base, back);
    }
    if (fore.isValid()) {
        p.setColor(QPalette::WindowText, fore);
        p.setColor(QPalette::ButtonText, fore);
        p.setColor(QPalette::Text, fore);
    }
    w.setPalette(p);
}

} // namespace

class TestForms : public QObject
{
    Q_OBJECT

private slots:
    void aScreenWaitsForTheFontReadingBeforeItsFirstMeasurement()
    {
        static std::atomic<bool> letta;
        letta = false;
        const bool avviata = CaratteriInAnticipo::avvia([] {
            QThread::msleep(200);
            letta = true;
        });
        if (!avviata)
            QSKIP("this machine gives the process one core");
        TestContext t;
        t->form<Prova>();
        QVERIFY(letta);
    }

    void choiceButtonReportsKeysAndDoesNothingByItself()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(0).SetFocus();
        f.log.clear();
        key(Qt::Key_Space);
        key(Qt::Key_Return);
        key(Qt::Key_Right);
        key(Qt::Key_Down);
        QCOMPARE(focusedControl(f), &f.Opt(0));
        QVERIFY(!f.Opt(0).Value());
        QCOMPARE(f.log,
                 (QStringList{"KeyDown 0 32 0", "KeyPress 0 32", "KeyUp 0 32", "KeyDown 0 13 0",
                              "KeyPress 0 13", "KeyUp 0 13", "KeyDown 0 39 0", "KeyUp 0 39",
                              "KeyDown 0 40 0", "KeyUp 0 40"}));
    }

    void mouseClickGivesDownClickUpAndNoGroupExclusivity()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(1).SetFocus();
        f.log.clear();
        click(f.Opt(0));
        QCOMPARE(f.log, (QStringList{"LostFocus 1", "GotFocus 0", "MouseDown 0 1", "Click 0",
                                     "MouseUp 0"}));
        QVERIFY(f.Opt(0).Value());
        QVERIFY(f.Opt(2).Value()); // chosen at design, still chosen
        f.log.clear();
        click(f.Opt(0)); // already chosen: no second Click
        QCOMPARE(f.log, (QStringList{"MouseDown 0 1", "MouseUp 0"}));
    }

    void designChosenButtonsClickBeforeTheLoadHandler()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QCOMPARE(f.logAtLoad, QStringList{"Click 2"});
        QVERIFY(f.Opt(2).Value());
    }

    void keyDownThenKeyPressGoToTheControlFocusedAtKeyDown()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(0).SetFocus();
        f.onKeyDown = [&](int i, int &k) {
            if (i == 0) {
                k = 0; // does not cancel KeyPress
                f.Opt(1).SetFocus();
            }
        };
        f.log.clear();
        key(Qt::Key_Space);
        QCOMPARE(f.log, (QStringList{"KeyDown 0 32 0", "LostFocus 0", "GotFocus 1", "KeyPress 0 32",
                                     "KeyUp 1 32"}));
    }

    void keyCodesTellKeypadAndMainKeyboardApart_data()
    {
        QTest::addColumn<int>("qtKey");
        QTest::addColumn<bool>("keypad");
        QTest::addColumn<int>("shift");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("ascii");
        QTest::newRow("1") << int(Qt::Key_1) << false << 0 << 49 << 49;
        QTest::newRow("0") << int(Qt::Key_0) << false << 0 << 48 << 48;
        QTest::newRow("keypad 1") << int(Qt::Key_1) << true << 0 << 97 << 49;
        QTest::newRow("keypad 3") << int(Qt::Key_3) << true << 0 << 99 << 51;
        QTest::newRow("keypad 0") << int(Qt::Key_0) << true << 0 << 96 << 48;
        QTest::newRow("enter") << int(Qt::Key_Return) << false << 0 << 13 << 13;
        QTest::newRow("keypad enter") << int(Qt::Key_Enter) << true << 0 << 13 << 13;
        QTest::newRow("a") << int(Qt::Key_A) << false << 0 << 65 << 97;
        QTest::newRow("A") << int(Qt::Key_A) << false << 1 << 65 << 65;
        QTest::newRow("backspace") << int(Qt::Key_Backspace) << false << 0 << 8 << 8;
        QTest::newRow("left") << int(Qt::Key_Left) << false << 0 << 37 << 0;
        QTest::newRow("up") << int(Qt::Key_Up) << false << 0 << 38 << 0;
        QTest::newRow("shift") << int(Qt::Key_Shift) << false << 1 << 16 << 0;
    }
    void keyCodesTellKeypadAndMainKeyboardApart()
    {
        QFETCH(int, qtKey);
        QFETCH(bool, keypad);
        QFETCH(int, shift);
        QFETCH(int, code);
        QFETCH(int, ascii);
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(0).SetFocus();
        f.log.clear();
        Qt::KeyboardModifiers m = keypad ? Qt::KeypadModifier : Qt::NoModifier;
        if (shift)
            m |= Qt::ShiftModifier;
        keyDown(Qt::Key(qtKey), m);
        QVERIFY(!f.log.isEmpty());
        QCOMPARE(f.log[0], QStringLiteral("KeyDown 0 %1 %2").arg(code).arg(shift));
        if (ascii)
            QCOMPARE(f.log.value(1), QStringLiteral("KeyPress 0 %1").arg(ascii));
        else
            QCOMPARE(f.log.size(), 1);
    }

    void heldKeyGivesRepeatedKeyDownAndOneKeyUp()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(0).SetFocus();
        f.log.clear();
        holdKey(Qt::Key_B, 3);
        QCOMPARE(f.log.count(QStringLiteral("KeyDown 0 66 0")), 4);
        QCOMPARE(f.log.count(QStringLiteral("KeyUp 0 66")), 1);
        QCOMPARE(f.log.last(), QStringLiteral("KeyUp 0 66"));
    }

    void focusOnADisabledControlIsAnInvalidProcedureCall()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(1).setEnabled(false);
        try {
            f.Opt(1).SetFocus();
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::InvalidProcedureCall);
        }
        f.Opt(1).setEnabled(true);
        f.get<Frame>("Frame1").setEnabled(false);
        QVERIFY(f.Opt(1).Enabled()); // its own value is kept
        QVERIFY_THROWS_EXCEPTION(RuntimeError, f.Opt(1).SetFocus());
        f.get<Frame>("Frame1").setEnabled(true);
        f.Opt(1).SetFocus();
        QCOMPARE(focusedControl(f), &f.Opt(1));
    }

    void disabledControlsHearNoMouseEvent_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("disabled"); // what is disabled: itself, a container, the form
        QTest::addColumn<QStringList>("enabledClick");
        QTest::newRow("choice button itself")
            << "Opt_1"
            << "Opt_1" << QStringList{"MouseDown 1 1", "Click 1", "MouseUp 1"};
        QTest::newRow("choice button in a disabled frame")
            << "Opt_0"
            << "Frame1" << QStringList{"MouseDown 0 1", "Click 0", "MouseUp 0"};
        QTest::newRow("choice button on a disabled form")
            << "Opt_0"
            << "form" << QStringList{"MouseDown 0 1", "Click 0", "MouseUp 0"};
        QTest::newRow("command button itself")
            << "Cmd"
            << "Cmd" << QStringList{"Cmd MouseDown", "Cmd MouseUp", "Cmd Click"};
        QTest::newRow("label itself")
            << "Lbl"
            << "Lbl" << QStringList{"Lbl MouseDown", "Lbl MouseUp", "Lbl Click"};
        QTest::newRow("label in a disabled picture box")
            << "LblPic"
            << "Pic" << QStringList{"LblPic MouseDown", "LblPic MouseUp", "LblPic Click"};
        QTest::newRow("picture box itself")
            << "Pic"
            << "Pic" << QStringList{"Pic MouseDown", "Pic MouseUp", "Pic Click"};
    }

    // Qt shows a disabled widget's mouse events to the screen's filter: none
    // of them may reach a handler, of the control or of its containers.
    void disabledControlsHearNoMouseEvent()
    {
        QFETCH(QString, control);
        QFETCH(QString, disabled);
        QFETCH(QStringList, enabledClick);
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        QWidget *w = f.findChild<QWidget *>(control);
        QVERIFY(w);
        auto setDisabled = [&](bool off) {
            if (disabled == QLatin1String("form"))
                f.setEnabled(!off);
            else
                f.findControl(disabled.section(QLatin1Char('_'), 0, 0),
                              disabled.contains(QLatin1Char('_'))
                                  ? disabled.section(QLatin1Char('_'), 1).toInt()
                                  : -1)
                    ->setEnabled(!off);
        };
        setDisabled(true);
        const bool chosenBefore = f.Opt(0).Value() || f.Opt(1).Value();
        f.log.clear();
        const QPoint centre = w->rect().center();
        QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseDClick(w, Qt::LeftButton, Qt::NoModifier, centre);
        QTest::mouseClick(w, Qt::RightButton, Qt::NoModifier, centre);
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, centre);
        QCOMPARE(f.log, QStringList{});
        QCOMPARE(f.Opt(0).Value() || f.Opt(1).Value(), chosenBefore);

        // A press while disabled and a release once enabled again is no click.
        QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, centre);
        setDisabled(false);
        f.log.clear();
        QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, centre);
        QVERIFY2(!f.log.join(QLatin1Char(' ')).contains(QStringLiteral("Click")),
                 qPrintable(f.log.join(QStringLiteral(", "))));

        // Enabled again, everything is back.
        f.log.clear();
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, centre);
        QStringList heard = f.log;
        heard.removeIf([](const QString &e) { return e.contains(QStringLiteral("Focus")); });
        QCOMPARE(heard, enabledClick);
    }

    void focusAskedBeforeShowingIsTakenWhenShown()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        f.Opt(2).SetFocus();
        QVERIFY(!f.Opt(2).hasFocus());
        QVERIFY(showActive(f));
        QCOMPARE(focusedControl(f), &f.Opt(2));
    }

    void screenIsMarkedLoadedBeforeItsLoadHandlerAndLoadsOnce()
    {
        TestContext t;
        QVERIFY(!t->screens().isLoaded<Prova>());
        auto &f = t->form<Prova>();
        QVERIFY(f.loadedWhileLoading);
        QCOMPARE(&t->form<Prova>(), &f);
        QCOMPARE(f.loads, 1);
        QCOMPARE(t->screens().loaded(), QList<Form *>{&f});
    }

    void unloadRunsTheHandlerAndTheNextReferenceLoadsAfresh()
    {
        TestContext t;
        QPointer<Prova> first = &t->form<Prova>();
        first->Show();
        first->cancel = 1;
        first->Unload();
        QVERIFY(first->isVisible()); // cancelled
        first->cancel = 0;
        first->Unload();
        QVERIFY(first->log.endsWith(QStringLiteral("Unload")));
        QVERIFY(!t->screens().isLoaded<Prova>());
        settle();
        QVERIFY(first.isNull());
        auto &second = t->form<Prova>();
        QCOMPARE(second.loads, 1);
    }

    void closeBoxUnloads()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        QSignalSpy empty(&t->screens(), &ScreenRegistry::empty);
        f.close();
        QVERIFY(!t->screens().isLoaded<Prova>());
        QCOMPARE(empty.count(), 1);
    }

    void modalShowWaitsUntilHidden()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        bool wasVisible = false;
        QTimer::singleShot(0, &f, [&] {
            wasVisible = f.isVisible();
            f.Hide();
        });
        f.ShowModal();
        QVERIFY(wasVisible);
        QVERIFY(!f.isVisible());
    }

    void aHandlerErrorGoesToTheErrorReportNotToQt()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        f.Opt(0).SetFocus();
        f.onKeyDown = [](int, int &) { throw RuntimeError(RuntimeError::TypeMismatch); };
        key(Qt::Key_0);
        QCOMPARE(t.errors->errors, QList<RuntimeError::Code>{RuntimeError::TypeMismatch});
    }

    void commandButtonClicksOnMouseEnterAndSpace()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(showActive(f));
        auto &cmd = f.get<CommandButton>("Cmd");
        f.log.clear();
        click(cmd);
        QCOMPARE(f.log, (QStringList{"LostFocus 0", "Cmd MouseDown", "Cmd MouseUp", "Cmd Click"}));
        f.log.clear();
        cmd.SetFocus();
        key(Qt::Key_Return);
        key(Qt::Key_Space);
        QCOMPARE(f.log, (QStringList{"Cmd Click", "Cmd Click"}));
    }

    void controlsWithoutPositionRaiseNotSupported()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        for (const char *name : {"Linea", "Tmr", "mnu"}) {
            Control *c = f.findControl(QString::fromLatin1(name));
            QVERIFY(c);
            QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)c->Left());
            QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)c->Width());
            // Those that would suppress the error can ask first.
            QVERIFY(!c->hasPosition());
        }
        for (const char *name : {"Frame1", "Cmd", "Lbl", "Pic", "LblPic"})
            QVERIFY(f.findControl(QString::fromLatin1(name))->hasPosition());
    }

    void aTimerOfAScreenNeverShownRuns()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QVERIFY(f.get<Timer>("Tmr").running());
    }

    void aShownScreensTimersStartWithItsFirstFrame()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        auto &tmr = f.get<Timer>("Tmr");
        int ticks = 0;
        bool primaDelQuadro = false;
        tmr.TimerEvent = [&] {
            ++ticks;
            primaDelQuadro = primaDelQuadro || !f.windowHandle()->isExposed();
        };
        tmr.setInterval(1);
        f.Show();
        // However long the window then takes to appear, nothing has ticked.
        QVERIFY(!tmr.running());
        QThread::msleep(20);
        QVERIFY(QTest::qWaitForWindowExposed(&f));
        QTRY_VERIFY(tmr.running());
        QTRY_VERIFY(ticks > 0);
        QVERIFY(!primaDelQuadro);
        // Shown again later, it does not wait again.
        f.Hide();
        QVERIFY(tmr.running());
        f.Show();
        QVERIFY(tmr.running());
    }

    void aScreenHiddenBeforeItsFirstFrameRunsItsTimers()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        auto &tmr = f.get<Timer>("Tmr");
        f.Show();
        QVERIFY(!tmr.running());
        f.Hide();
        QVERIFY(tmr.running());
        tmr.setEnabled(false);
        QVERIFY(!tmr.running());
    }

    void aCheckableMenuEntryChangesItsMarkOnlyWhenTheProgramSaysSo()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        auto &spunta = f.get<Menu>("mnuSpunta");
        int clicks = 0;
        spunta.Click = [&] { ++clicks; };
        QVERIFY(spunta.action()->isCheckable());
        QVERIFY(!spunta.Checked());
        spunta.action()->trigger();
        QCOMPARE(clicks, 1);
        QVERIFY(!spunta.Checked());
        QVERIFY(!spunta.action()->isChecked());
        spunta.Click = [&] {
            ++clicks;
            spunta.setChecked(!spunta.Checked());
        };
        spunta.action()->trigger();
        QCOMPARE(clicks, 2);
        QVERIFY(spunta.Checked());
        QVERIFY(spunta.action()->isChecked());
        // The sub-entry lives in its parent entry's menu.
        QVERIFY(f.get<Menu>("mnu").action()->menu()->actions().contains(spunta.action()));
    }

    void objectNamesCarryTheIndex()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QCOMPARE(f.Opt(1).widget()->objectName(), QStringLiteral("Opt_1"));
        QCOMPARE(f.get<CommandButton>("Cmd").widget()->objectName(), QStringLiteral("Cmd"));
        QVERIFY(f.findChild<QWidget *>(QStringLiteral("Opt_2")));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, (void)f.Opt(3));
    }

    void labelChangeFiresOnNewCaptionOnly()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        f.log.clear();
        f.get<Label>("Lbl").setCaption(QStringLiteral("?"));
        f.get<Label>("Lbl").setCaption(QStringLiteral("4"));
        QCOMPARE(f.log, QStringList{"Lbl Change"});
    }

    void controlsHaveTheirColoursOverWhatTheirContainerGives_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QColor>("back");
        QTest::addColumn<QColor>("fore");
        QTest::newRow("frame") << "Cornice" << QColor(255, 224, 192) << QColor();
        QTest::newRow("label in the frame") << "A" << QColor(255, 224, 192) << QColor(0, 0, 128);
        QTest::newRow("same colours, same frame")
            << "B" << QColor(255, 224, 192) << QColor(0, 0, 128);
        QTest::newRow("same colours, on the screen")
            << "C" << QColor(255, 224, 192) << QColor(0, 0, 128);
        QTest::newRow("text colour only") << "D" << QColor() << QColor(192, 0, 0);
        QTest::newRow("no colours") << "E" << QColor() << QColor();
        QTest::newRow("picture box") << "P" << QColor(10, 20, 30) << QColor();
        QTest::newRow("label in the picture box")
            << "F" << QColor(10, 20, 30) << QColor(200, 200, 200);
        QTest::newRow("other colours in the picture box")
            << "G" << QColor(255, 224, 192) << QColor(0, 0, 128);
    }

    void controlsHaveTheirColoursOverWhatTheirContainerGives()
    {
        QFETCH(QString, name);
        QFETCH(QColor, back);
        QFETCH(QColor, fore);
        TestContext t;
        auto &f = t->form<Colori>();
        QWidget *w = f.findControl(name)->widget();
        // A plain widget beside the control, given the same colours.
        QWidget atteso(w->parentWidget());
        colora(atteso, back, fore);
        QCOMPARE(w->palette(), atteso.palette());
        QCOMPARE(w->palette().resolveMask(), atteso.palette().resolveMask());
        QCOMPARE(w->testAttribute(Qt::WA_SetPalette), atteso.testAttribute(Qt::WA_SetPalette));

        // And when the program changes them while the screen is on.
        f.Show();
        f.findControl(name)->setBackColor(QColor(1, 2, 3));
        colora(atteso, QColor(1, 2, 3), fore);
        QCOMPARE(w->palette(), atteso.palette());
        QCOMPARE(w->palette().resolveMask(), atteso.palette().resolveMask());
    }

    void geometryIsInTwips()
    {
        TestContext t;
        auto &f = t->form<Prova>();
        QCOMPARE(f.ScaleWidth(), 6000.0);
        QCOMPARE(f.ScaleHeight(), 4500.0);
        auto &cmd = f.get<CommandButton>("Cmd");
        QCOMPARE(cmd.widget()->geometry(), QRect(240, 20, 133, 40));
        cmd.Move(1500, 150, 750, 300);
        QCOMPARE(cmd.widget()->geometry(), QRect(100, 10, 50, 20));
        QCOMPARE(cmd.Left(), 1500.0);
    }
};

QTEST_MAIN(TestForms)
#include "tst_forms.moc"
