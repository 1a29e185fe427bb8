#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/controls/PictureBox.h"
#include "platform/controls/Timer.h"
#include "platform/printing/Printers.h"
#include "services/GruppoScelte.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "start/FrmOpzioni.h"
#include "start/frmAutore.h"
#include "start/frmIstruzioni.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTemporaryDir>
#include <QTimer>

using namespace ScreenTest;

namespace {

OptionButton &opt(FrmInizio &f, const char *gruppo, int i)
{
    return f.get<OptionButton>(gruppo, i);
}

QString caption(FrmInizio &f, const char *name, int index = -1)
{
    return f.get<Control>(name, index).Caption();
}

const QString sp = QStringLiteral(" ");

} // namespace

class TestFrmInizio : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    FrmInizio *f = nullptr;

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        f = &(*t)->form<FrmInizio>();
        f->get<Timer>("timerTendine").setScripted(true);
        QVERIFY(showActive(*f));
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void startShowsTheFirstFamily()
    {
        QCOMPARE(f->Caption(), QStringLiteral("SISTEMA DECIMALE: scomposizione"));
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("1"));
        QCOMPARE(caption(*f, "Option2", 0), " u " + sp + " d " + sp + " c " + sp + " m ");
        QCOMPARE(caption(*f, "Option2", 1), " m " + sp + " c " + sp + " d " + sp + " u ");
        QCOMPARE(caption(*f, "Option2", 2), QStringLiteral("Tutti"));
        QCOMPARE(caption(*f, "Label4", 0), QStringLiteral("Ver.1 "));
        QCOMPARE(caption(*f, "Label4", 1), QStringLiteral(" Mouse "));
        QCOMPARE(caption(*f, "Label8"), QString(QChar(0x2794)));
        QCOMPARE(caption(*f, "Label6", 0), QStringLiteral("SISTEMA DECIMALE "));
        QCOMPARE(caption(*f, "Label6", 1), QStringLiteral("SCOMPOSIZIONE DEI NUMERI"));
        const StatoCondiviso &s = (*t)->stato;
        QCOMPARE(s.FamigliaSimboli.value(), 1);
        QCOMPARE(s.NumeroCifre.value(), 4);
        QCOMPARE(s.TitoloArgomento, QStringLiteral("SISTEMA DECIMALE"));
        QCOMPARE(s.SottotitoloArgomento, QStringLiteral("Scomposizione dei numeri"));
        QCOMPARE(s.RigaSimboli, QStringLiteral(" unità,    decimi, centesimi, millesimi"));
        QCOMPARE(s.NomeEseguibile, QStringLiteral("Quadrivo"));
        QVERIFY(f->get<Frame>("Frame1").Enabled());
        QVERIFY(!f->get<Frame>("Frame2").Enabled());
        QVERIFY(!f->get<Frame>("Frame3").Enabled());
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 0));
        QCOMPARE(opt(*f, "Option1", 0).BackColor(), GruppoScelte::ColoreFocus());
        QCOMPARE(opt(*f, "Option1", 1).BackColor(), GruppoScelte::ColoreRiposo());
    }

    void clickingTheCreditLineCyclesTheFamilies()
    {
        Label &credito = f->get<Label>("Label5");
        mouseDown(credito);
        mouseUp(credito);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("2"));
        QCOMPARE(caption(*f, "Option2", 0), "  h  " + sp + " da  " + sp + "  u  ");
        QCOMPARE(caption(*f, "Option2", 1), "  u  " + sp + " da  " + sp + "  h  ");
        QCOMPARE(caption(*f, "Label6", 2), QStringLiteral("centinaia, decine, unità"));
        QCOMPARE((*t)->stato.NumeroCifre.value(), 3);
        click(credito);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("3"));
        QCOMPARE(caption(*f, "Option2", 0), " uk  " + sp + "  h  " + sp + " da  " + sp + "  u  ");
        click(credito);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("1"));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 1);
        QCOMPARE(caption(*f, "Option2", 0), " u " + sp + " d " + sp + " c " + sp + " m ");
    }

    void onlyTheSymbolLineOfTheTitleCyclesTheFamilies()
    {
        click(f->get<Label>("Label6", 0));
        click(f->get<Label>("Label6", 1));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 1);
        click(f->get<Label>("Label6", 2));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 2);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("2"));
    }

    void mouseChoiceAfterFamilyThreeGoesBackToFamilyOneWithCaptionsUnchanged()
    {
        click(f->get<Label>("Label5"));
        click(f->get<Label>("Label5"));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 3);
        click(opt(*f, "Option1", 1));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 1);
        QCOMPARE(caption(*f, "Label3"), QStringLiteral("3"));
        QCOMPARE(caption(*f, "Option2", 0), " uk  " + sp + "  h  " + sp + " da  " + sp + "  u  ");
        QCOMPARE((*t)->stato.TipoNumeri.value(), 2);
        QCOMPARE(caption(*f, "Label1"), QStringLiteral(" Scomponi: numeri con la virgola"));
        QVERIFY(f->get<Frame>("Frame2").Enabled());
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        QVERIFY(!opt(*f, "Option1", 1).Value()); // sprang back
    }

    void keyboardChoiceKeepsTheFamily()
    {
        click(f->get<Label>("Label5"));
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 2);
        key(Qt::Key_Return);
        QCOMPARE((*t)->stato.FamigliaSimboli.value(), 2);
        QCOMPARE((*t)->stato.TipoNumeri.value(), 1);
        QCOMPARE(caption(*f, "Label1"), QStringLiteral(" Scomponi: numeri interi"));
    }

    void spaceWrapsOnTheNumberButtons()
    {
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 1));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 2));
        QCOMPARE(opt(*f, "Option1", 2).BackColor(), GruppoScelte::ColoreFocus());
        QCOMPARE(opt(*f, "Option1", 1).BackColor(), GruppoScelte::ColoreRiposo());
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 0));
        QCOMPARE((*t)->stato.TipoNumeri.value(), 0);
    }

    void spaceStaysOnTheOnlyEnabledOrderButton()
    {
        key(Qt::Key_Return);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        // The key went down on the order button, which commits whatever the key.
        QCOMPARE(caption(*f, "Label2"), QStringLiteral(" simboli decrescenti"));
        QVERIFY(f->get<Frame>("Frame3").Enabled());
        QVERIFY(!opt(*f, "Option2", 1).Enabled());
        QVERIFY(!opt(*f, "Option2", 2).Enabled());
    }

    void aHeldSpaceMovesOnce()
    {
        holdKey(Qt::Key_Space, 5);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 1));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 2));
    }

    void digitKeysFocusTheirButtonAndMoveOnWithoutChoosing()
    {
        key(Qt::Key_2);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        QCOMPARE((*t)->stato.TipoNumeri.value(), 0);
        QVERIFY(f->get<Frame>("Frame2").Enabled());
    }

    void keypadThreeMovesOnWithoutChoosing()
    {
        f->get<Label>("Label1").setCaption(QStringLiteral("prima"));
        keypad(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        QVERIFY(f->get<Frame>("Frame2").Enabled());
        QCOMPARE((*t)->stato.TipoNumeri.value(), 0);
        // The label shows DescrizioneNumeri, still empty: nothing was chosen.
        QCOMPARE(caption(*f, "Label1"), QString());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void shiftOnAnOrderButtonCommitsIt()
    {
        key(Qt::Key_Return);
        key(Qt::Key_Shift, Qt::ShiftModifier);
        QCOMPARE((*t)->stato.SimboliScelti.value(), 1);
        QCOMPARE(caption(*f, "Label2"), QStringLiteral(" simboli decrescenti"));
        QCOMPARE(focusedControl(*f), &opt(*f, "Option3", 0));
    }

    void keyZeroOnTheNumberButtonsIsATypeMismatch()
    {
        key(Qt::Key_0);
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::TypeMismatch});
    }

    void keyZeroOnTheActionButtonsIsATypeMismatch()
    {
        key(Qt::Key_Return);
        key(Qt::Key_Return);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option3", 0));
        key(Qt::Key_0);
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::TypeMismatch});
    }

    void theCurtainOpensFromTheMiddleAndStops()
    {
        auto t2 = std::make_unique<TestContext>();
        auto &g = (*t2)->form<FrmInizio>();
        auto &timer = g.get<Timer>("timerTendine");
        timer.setScripted(true);
        auto &p1 = g.get<PictureBox>("Picture1");
        auto &p2 = g.get<PictureBox>("Picture2");
        QVERIFY(timer.Enabled());
        QCOMPARE(p1.Width(), g.ScaleWidth() / 2);
        QCOMPARE(p2.Left() + p2.Width(), g.ScaleWidth());
        timer.tick();
        QCOMPARE(p1.Width(), g.ScaleWidth() / 2 - 75);
        int ticks = 1;
        while (timer.Enabled() && ticks < 1000) {
            timer.tick();
            ++ticks;
        }
        QVERIFY(!timer.Enabled());
        QVERIFY(p1.Width() <= 10);
        QVERIFY(p2.Width() <= 10);
        QCOMPARE(p2.Left() + p2.Width(), g.ScaleWidth());
        QCOMPARE(p1.Height(), g.ScaleHeight());
        QVERIFY(t2->errors->errors.isEmpty());
    }

    void anOpenedCurtainStaysOpenWhenTheWindowGrows()
    {
        auto &timer = f->get<Timer>("timerTendine");
        while (timer.Enabled())
            timer.tick();
        f->setInnerSize(21600, 14400);
        QVERIFY(f->get<PictureBox>("Picture1").Width() <= 10);
        QVERIFY(qAbs(f->get<OptionButton>("Option1", 0).Width() - 6000.0) < 0.01);
    }

    void riprisitinaGoesBackToTheFirstChoiceKeepingTheState()
    {
        key(Qt::Key_Return, Qt::NoModifier);
        key(Qt::Key_Return);
        QVERIFY(f->get<Frame>("Frame3").Enabled());
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option3", 1));
        key(Qt::Key_Return);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 0));
        QVERIFY(!f->get<Frame>("Frame2").Enabled());
        QVERIFY(!f->get<Frame>("Frame3").Enabled());
        QCOMPARE(caption(*f, "Label1"), QString());
        QCOMPARE(caption(*f, "Label2"), QString());
        QCOMPARE((*t)->stato.TipoNumeri.value(), 1);
        QCOMPARE((*t)->stato.DescrizioneSimboli, QStringLiteral(" simboli decrescenti"));
    }

    void startingNeverLooksUpThePrinters()
    {
        // A context as the program's own: the system's printers, looked up
        // when first needed. No printing system answers here.
        QTemporaryDir noCups;
        qputenv("CUPS_SERVER", QFile::encodeName(noCups.filePath(QStringLiteral("cups.sock"))));
        AppContext ctx;
        FrmInizio &inizio = ctx.form<FrmInizio>();
        QVERIFY(showActive(inizio));
        settle();
        QVERIFY(!ctx.printersLookedUp());
        QVERIFY(ctx.printers().count() >= 1); // the PDF printer at least
        QVERIFY(ctx.printersLookedUp());
        ctx.screens().unloadAll();
        qunsetenv("CUPS_SERVER");
    }

    void vaiOpensTheDrillOverTheStartScreen()
    {
        frmOperativo::collegaTipoEsercizio(**t);
        key(Qt::Key_Return);
        key(Qt::Key_Return);
        key(Qt::Key_Return); // "Vai"
        auto *drill = (*t)->screens().find<frmOperativo>();
        QVERIFY(drill);
        QVERIFY(drill->isVisible());
        QVERIFY(!drill->isModal());
        QVERIFY(f->isVisible());
        QCOMPARE(drill->Caption(), QStringLiteral("SCOMPOSIZIONE"));
    }

    void riprisitinaThenVaiUsesTheOldChoices()
    {
        frmOperativo::collegaTipoEsercizio(**t);
        click(opt(*f, "Option1", 1)); // numbers with a decimal comma
        click(opt(*f, "Option2", 0));
        mouseDown(opt(*f, "Option3", 1)); // "Riprisitina"
        mouseUp(opt(*f, "Option3", 1));
        QCOMPARE(caption(*f, "Label1"), QString());
        QCOMPARE(caption(*f, "Label2"), QString());
        // The mouse choice left the key flag set: the first key only clears it.
        keypad(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option1", 0));
        keypad(Qt::Key_3); // on without choosing a kind of number
        QCOMPARE(focusedControl(*f), &opt(*f, "Option2", 0));
        key(Qt::Key_Return); // the order again
        key(Qt::Key_Return); // "Vai"
        auto *drill = (*t)->screens().find<frmOperativo>();
        QVERIFY(drill);
        QCOMPARE(drill->get<Label>("Label1").Caption(),
                 QStringLiteral(" Scomponi: numeri con la virgola"));
        QCOMPARE((*t)->stato.TipoNumeri.value(), 2);
        QVERIFY((*t)->stato.TipoEsercizio >= 23 && (*t)->stato.TipoEsercizio <= 44);
        QVERIFY((*t)->stato.Numero.contains(QLatin1Char(',')));
    }

    void theMenusOpenTheirScreens()
    {
        f->get<Menu>("mnuStampa").action()->trigger();
        auto *schede = (*t)->screens().find<FrmStampaSchede>();
        QVERIFY(schede && schede->isVisible() && !schede->isModal());
        bool modale = false;
        QTimer::singleShot(0, f, [&] {
            auto *opzioni = (*t)->screens().find<FrmOpzioni>();
            modale = opzioni && opzioni->isVisible() && opzioni->isModal();
            if (opzioni)
                opzioni->Unload();
        });
        f->get<Menu>("mnuOpzioni").action()->trigger();
        QVERIFY(modale);
        const int caricati = int((*t)->screens().loaded().size());
        f->get<Menu>("mnuAvvertenza").action()->trigger();
        QCOMPARE(int((*t)->screens().loaded().size()), caricati);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void theKeyboardAloneLeavesTheProgram()
    {
        QSignalSpy empty(&(*t)->screens(), &ScreenRegistry::empty);
        key(Qt::Key_Return); // number kind
        key(Qt::Key_Return); // symbol order
        key(Qt::Key_Space);
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt(*f, "Option3", 2));
        key(Qt::Key_Return); // "Esci"
        QCOMPARE(empty.count(), 1);
        QVERIFY((*t)->screens().loaded().isEmpty());
    }

    void closingTheStartScreenUnloadsEveryScreen()
    {
        (*t)->form<frmIstruzioni>();
        (*t)->form<frmAutore>();
        QCOMPARE((*t)->screens().loaded().size(), 3);
        f->close();
        QVERIFY((*t)->screens().loaded().isEmpty());
    }

    void theInstructionsSayTheSameSentenceOnEveryLoad()
    {
        for (int volta = 0; volta < 2; ++volta) {
            auto &istruzioni = (*t)->form<frmIstruzioni>();
            QCOMPARE(istruzioni.get<Label>("Label5").Caption(),
                     QStringLiteral("Il programma prevede l'utilizzo del mouse"));
            istruzioni.get<Label>("Label5").setCaption(QStringLiteral("altro"));
            istruzioni.get<CommandButton>("Command1").raiseClick();
            QVERIFY(!(*t)->screens().isLoaded<frmIstruzioni>());
            settle();
        }
    }

    void closingTheAuthorScreenKeepsTheChoices()
    {
        key(Qt::Key_Return);
        key(Qt::Key_Return);
        bool shown = false;
        QTimer::singleShot(0, f, [&] {
            auto *autore = (*t)->screens().find<frmAutore>();
            shown = autore && autore->isVisible() && autore->isModal();
            if (autore) {
                QCOMPARE(autore->get<Label>("Label1").Caption(),
                         QStringLiteral("Sito dell'autore:"));
                QCOMPARE(autore->get<Label>("Label3").Caption(), QStringLiteral("Email:"));
                click(autore->get<CommandButton>("Command1"));
            }
        });
        f->get<Menu>("mnuAutore").action()->trigger();
        QVERIFY(shown);
        QVERIFY(!(*t)->screens().isLoaded<frmAutore>());
        QCOMPARE(caption(*f, "Label1"), QStringLiteral(" Scomponi: numeri interi"));
        QCOMPARE(caption(*f, "Label2"), QStringLiteral(" simboli decrescenti"));
        QVERIFY(f->get<Frame>("Frame3").Enabled());
    }
};

QTEST_MAIN(TestFrmInizio)
#include "tst_frminizio.moc"
