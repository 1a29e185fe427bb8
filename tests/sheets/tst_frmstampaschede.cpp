#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "services/GruppoScelte.h"
#include "services/frmSceltaStampante.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QFontInfo>
#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

using namespace ScreenTest;

namespace {

const QColor Blu(0, 0, 128);
const QColor Rosso(192, 0, 0);

struct Geometria
{
    double left, top, width, height;
};

} // namespace

// The worksheet screen as a teacher uses it: choices by keyboard and mouse,
// the two sheets on screen, a new sheet, leaving.
class TestFrmStampaSchede : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    FrmStampaSchede *f = nullptr;

    StatoCondiviso &s() { return (*t)->stato; }
    OptionButton &opt(const char *gruppo, int i = -1) { return f->get<OptionButton>(gruppo, i); }
    Label &riga(int i) { return f->get<Label>("LblOp", i); }
    QString caption(const char *nome, int i = -1) { return f->get<Control>(nome, i).Caption(); }
    bool visibile(const char *nome) { return f->get<Control>(nome).Visible(); }
    bool abilitato(const char *nome) { return f->get<Control>(nome).Enabled(); }

    // Numbers chosen with Enter on the focused button, units with the mouse:
    // a sheet is built and Frame1 is open.
    void preparaScheda()
    {
        opt("Option1", 0).SetFocus();
        key(Qt::Key_Return);
        click(opt("Option2", 0));
    }

    void righeDaMostrare(int indiceOpt1) { click(opt("Opt1", indiceOpt1)); }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        SchedeTest::statoDiPartenza(s());
        f = &(*t)->form<FrmStampaSchede>();
        QVERIFY(showActive(*f));
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void theScreenStartsAsDesigned()
    {
        QCOMPARE(f->Caption(), QStringLiteral("STAMPA SCHEDE: scomposizione"));
        QCOMPARE(caption("lblTitolo"), SchedeTest::Titolo);
        QCOMPARE(caption("Option1", 0), QStringLiteral("Numeri interi"));
        QCOMPARE(caption("Option1", 1), QStringLiteral("Numeri con virgola"));
        QCOMPARE(caption("Option1", 2), QStringLiteral("Tutti"));
        QCOMPARE(caption("Option2", 0), QStringLiteral("Sottomultipli"));
        QCOMPARE(caption("Option2", 1), QStringLiteral("Multipli"));
        QCOMPARE(caption("Option2", 2), QStringLiteral("Tutti"));
        QCOMPARE(caption("Opt1", 0), QStringLiteral("10  ooperazioni"));
        QCOMPARE(caption("Opt1", 1), QStringLiteral("20 operazioni"));
        QCOMPARE(caption("Opt1", 2), QStringLiteral("30 operazioni "));
        QCOMPARE(caption("Opt5"), QStringLiteral("5 operazioni per esercizio"));
        QCOMPARE(caption("Opt10"), QStringLiteral("10 operazioni per esercizio"));
        QCOMPARE(caption("Frame2"), QStringLiteral("Esercizi"));
        QCOMPARE(caption("Frame5"), QStringLiteral("Operazioni"));
        QCOMPARE(caption("Frame3"), QStringLiteral("ALUNNI"));
        QCOMPARE(caption("Frame4"), QStringLiteral("DOCENTI"));
        QCOMPARE(caption("CmdVisualizzaSchedaAlunni"), QStringLiteral("VISUALIZZA SCHEDA ALUNNI"));
        QCOMPARE(caption("CmdStampaSchedaAlunni"), QStringLiteral("STAMPA SCHEDA "));
        QCOMPARE(caption("CmdVisualizzaSchedaDocenti"),
                 QStringLiteral("VISUALIZZA SCHEDA DOCENTI"));
        QCOMPARE(caption("CmdStampaSchedaDocenti"), QStringLiteral("STAMPA SCHEDA"));
        QCOMPARE(caption("CmdRicomincia"), QStringLiteral("Cancella scheda"));
        QCOMPARE(caption("cmdEsci"), QStringLiteral("ESCI"));
        QCOMPARE(caption("mnuStampante"), QStringLiteral("Scegli stampante"));
        QCOMPARE(caption("Label1"), QString());
        QCOMPARE(caption("Label2"), QString());

        QCOMPARE(s().NumeroRighe.value(), 30);
        QVERIFY(opt("Opt1", 2).Value());
        QVERIFY(abilitato("Frame11"));
        QVERIFY(!abilitato("Frame22"));
        QVERIFY(!abilitato("Frame1"));
        QVERIFY(opt("Option2", 0).Enabled());
        QVERIFY(!opt("Option2", 1).Enabled());
        QVERIFY(!opt("Option2", 2).Enabled());
        QVERIFY(visibile("CmdStampaSchedaAlunni"));
        QVERIFY(visibile("CmdStampaSchedaDocenti"));
        QCOMPARE(focusedControl(*f), &opt("Option1", 0));
        QCOMPARE(opt("Option1", 0).BackColor(), GruppoScelte::ColoreFocus());
        QCOMPARE(opt("Option1", 1).BackColor(), GruppoScelte::ColoreRiposo());

        const auto LblOp = f->array<Label>("LblOp");
        QCOMPARE(LblOp.Count(), 60);
        QCOMPARE(LblOp.LBound(), 1);
        QCOMPARE(LblOp.UBound(), 60);
        for (int i = 1; i <= 60; ++i) {
            QCOMPARE(riga(i).Visible(), i <= 30);
            QCOMPARE(riga(i).Caption(), QString());
        }
    }

    void theRowsAreInAMonospaceFontAndFitTheirLabels()
    {
        const QFont font = riga(1).font();
        QVERIFY(QFontInfo(font).fixedPitch());
        // The longest teachers' row: a ten-wide number, a five-wide symbol and
        // a solution of four digits with five-wide symbols.
        const QString lunga = QStringLiteral("      4700  u   = .........................") +
                              QStringLiteral("(R.4 uk  7  h  0 da  0  u  )");
        QCOMPARE(lunga.size(), 71);
        QVERIFY2(QFontMetrics(font).horizontalAdvance(lunga) <= riga(1).widget()->width(),
                 qPrintable(QString::number(QFontMetrics(font).horizontalAdvance(lunga))));
        // Blocks of ten, as on paper.
        QVERIFY(riga(11).Top() - riga(10).Top() > riga(10).Top() - riga(9).Top());
    }

    void enterChoosesTheFocusedNumberKind_data()
    {
        QTest::addColumn<int>("spazi");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("descrizione");
        QTest::newRow("Numeri interi") << 0 << 1 << " Numeri interi";
        QTest::newRow("Numeri con virgola") << 1 << 2 << " Numeri con la virgola";
        QTest::newRow("Tutti") << 2 << 3 << "  Numeri interi e con la virgola";
    }
    void enterChoosesTheFocusedNumberKind()
    {
        QFETCH(int, spazi);
        QFETCH(int, tipo);
        QFETCH(QString, descrizione);
        for (int i = 0; i < spazi; ++i)
            key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option1", spazi));
        key(Qt::Key_Return);
        QCOMPARE(s().TipoNumeri.value(), tipo);
        QCOMPARE(s().DescrizioneNumeri, descrizione);
        QCOMPARE(caption("Label1"), descrizione);
        QVERIFY(abilitato("Frame22"));
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        QCOMPARE(opt("Option2", 0).BackColor(), GruppoScelte::ColoreFocus());
        QCOMPARE(opt("Option1", spazi).BackColor(), GruppoScelte::ColoreRiposo());
        // Only a mouse choice touches the rows and the step labels.
        QCOMPARE(s().NumeroRighe.value(), 30);
        QCOMPARE(f->get<Label>("Label3", 0).ForeColor(), Rosso);
        QCOMPARE(f->get<Label>("Label3", 1).ForeColor(), Blu);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void digitKeysFocusTheirButtonAndMoveOnWithoutChoosing_data()
    {
        QTest::addColumn<int>("tasto");
        QTest::addColumn<bool>("tastierino");
        QTest::addColumn<int>("passaDa"); // the number button that gets the focus on the way
        QTest::newRow("1") << int(Qt::Key_1) << false << 0;
        QTest::newRow("2") << int(Qt::Key_2) << false << 1;
        QTest::newRow("keypad 1") << int(Qt::Key_1) << true << 0;
        QTest::newRow("keypad 2") << int(Qt::Key_2) << true << 1;
        QTest::newRow("keypad 3") << int(Qt::Key_3) << true << -1;
    }
    void digitKeysFocusTheirButtonAndMoveOnWithoutChoosing()
    {
        QFETCH(int, tasto);
        QFETCH(bool, tastierino);
        QFETCH(int, passaDa);
        key(Qt::Key_Space); // start from the second button
        QList<QWidget *> fuochi;
        QObject ascolto;
        connect(qApp, &QApplication::focusChanged, &ascolto,
                [&](QWidget *, QWidget *ora) { fuochi << ora; });
        if (tastierino)
            keypad(Qt::Key(tasto));
        else
            key(Qt::Key(tasto));
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        if (passaDa == 1)
            QCOMPARE(fuochi, (QList<QWidget *>{opt("Option2", 0).widget()}));
        else if (passaDa == 0)
            QCOMPARE(fuochi,
                     (QList<QWidget *>{opt("Option1", 0).widget(), opt("Option2", 0).widget()}));
        else
            QCOMPARE(fuochi, (QList<QWidget *>{opt("Option2", 0).widget()}));
        QCOMPARE(s().TipoNumeri.value(), 0);
        QVERIFY(abilitato("Frame22"));
        QCOMPARE(caption("Label1"), QString());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void keypadThreeMovesOnAndLabel1KeepsItsText()
    {
        key(Qt::Key_Space);
        key(Qt::Key_Return);
        QCOMPARE(caption("Label1"), QStringLiteral(" Numeri con la virgola"));
        // Back on the number buttons. The release of Enter went to the units
        // button, so the first key here is swallowed, and its release frees
        // the keys again.
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(focusedControl(*f), &opt("Option1", 2));
        keypad(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt("Option1", 2));
        keypad(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        QCOMPARE(caption("Label1"), QStringLiteral(" Numeri con la virgola"));
        QCOMPARE(s().TipoNumeri.value(), 2);
    }

    void keyZeroIsATypeMismatch()
    {
        key(Qt::Key_0);
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::TypeMismatch});
        QVERIFY(!abilitato("Frame22"));
    }

    void otherKeysAreSwallowed_data()
    {
        QTest::addColumn<int>("tasto");
        QTest::newRow("3") << int(Qt::Key_3);
        QTest::newRow("A") << int(Qt::Key_A);
        QTest::newRow("down arrow") << int(Qt::Key_Down);
        QTest::newRow("escape") << int(Qt::Key_Escape);
    }
    void otherKeysAreSwallowed()
    {
        QFETCH(int, tasto);
        key(Qt::Key(tasto));
        QCOMPARE(focusedControl(*f), &opt("Option1", 0));
        QVERIFY(!abilitato("Frame22"));
        QCOMPARE(s().TipoNumeri.value(), 0);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void spaceWrapsAroundTheNumberButtonsWithTheirColours()
    {
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option1", 1));
        QCOMPARE(opt("Option1", 0).BackColor(), GruppoScelte::ColoreRiposo());
        QCOMPARE(opt("Option1", 1).BackColor(), GruppoScelte::ColoreFocus());
        key(Qt::Key_Space);
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option1", 0));
        QCOMPARE(opt("Option1", 0).BackColor(), GruppoScelte::ColoreFocus());
        QCOMPARE(opt("Option1", 2).BackColor(), GruppoScelte::ColoreRiposo());
        QCOMPARE(s().TipoNumeri.value(), 0);
    }

    void aHeldSpaceMovesOnce()
    {
        holdKey(Qt::Key_Space, 5);
        QCOMPARE(focusedControl(*f), &opt("Option1", 1));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option1", 2));
    }

    void keysOnTheUnitsButtonsChooseNothing()
    {
        key(Qt::Key_Return);
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);
        for (Qt::Key k : {Qt::Key_Return, Qt::Key_Space, Qt::Key_1, Qt::Key_Shift})
            key(k);
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        QCOMPARE(generati.count(), 0);
        QVERIFY(!abilitato("Frame1"));
        QCOMPARE(caption("Label2"), QString());
    }

    void aMouseChoiceOfTheNumberKindClearsTheRowsAndLeavesNumeroRigheAt31_data()
    {
        QTest::addColumn<int>("indice");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("descrizione");
        QTest::newRow("Numeri interi") << 0 << 1 << " Numeri interi";
        QTest::newRow("Numeri con virgola") << 1 << 2 << " Numeri con la virgola";
        QTest::newRow("Tutti") << 2 << 3 << "  Numeri interi e con la virgola";
    }
    void aMouseChoiceOfTheNumberKindClearsTheRowsAndLeavesNumeroRigheAt31()
    {
        QFETCH(int, indice);
        QFETCH(int, tipo);
        QFETCH(QString, descrizione);
        preparaScheda();
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        QVERIFY(!riga(30).Caption().isEmpty());

        click(opt("Option1", indice));
        QCOMPARE(s().TipoNumeri.value(), tipo);
        QCOMPARE(s().DescrizioneNumeri, descrizione);
        QCOMPARE(caption("Label1"), descrizione);
        for (int i = 1; i <= 30; ++i)
            QCOMPARE(riga(i).Caption(), QString());
        QCOMPARE(s().NumeroRighe.value(), 31);
        QCOMPARE(f->get<Label>("Label3", 0).ForeColor(), Blu);
        QCOMPARE(f->get<Label>("Label3", 1).ForeColor(), Rosso);
        QVERIFY(abilitato("Frame22"));
        QCOMPARE(focusedControl(*f), &opt("Option2", 0));
        QVERIFY(!opt("Option1", indice).Value()); // sprang back
        QVERIFY(t->errors->errors.isEmpty());
    }

    void choosingTheUnitsBuildsANewSheetWithoutShowingIt()
    {
        key(Qt::Key_Return);
        click(opt("Option2", 0));
        QCOMPARE(caption("Label2"), QStringLiteral(" simboli decrescenti"));
        QVERIFY(abilitato("Frame1"));
        QStringList prima;
        for (int i = 1; i <= 30; ++i)
            prima << s().RigheAlunni[i];

        // Chosen again (the first exercise of a run may bring up other
        // screens that draw their own, so the second choice is counted).
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);
        click(opt("Option2", 0));
        // One exercise on its own, then one per row.
        QCOMPARE(generati.count(), 30 + 1);
        QStringList dopo;
        for (int i = 1; i <= 30; ++i)
            dopo << s().RigheAlunni[i];
        QVERIFY(dopo != prima);
        for (int i = 1; i <= 30; ++i) {
            QVERIFY(!s().RigheAlunni[i].isEmpty());
            QVERIFY(!s().RigheDocenti[i].isEmpty());
            QCOMPARE(riga(i).Caption(), QString());
        }
        QVERIFY(s().RigheAlunni[31].isEmpty());
        QVERIFY(!opt("Option2", 0).Value());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void aSheetBuiltAfterAMouseChoiceHas31Rows()
    {
        preparaScheda(); // a first sheet of 30 rows
        QVERIFY(s().RigheAlunni[31].isEmpty());
        click(opt("Option1", 0));
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);
        click(opt("Option2", 0));
        QCOMPARE(generati.count(), 31 + 1);
        QVERIFY(!s().RigheAlunni[31].isEmpty());
        QVERIFY(s().RigheAlunni[32].isEmpty());
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        QCOMPARE(riga(31).Caption(), s().RigheAlunni[31]);
        QCOMPARE(s().Operazioni[31], s().RigheAlunni[31]);
        QVERIFY(!riga(31).Visible());
        // The next choice of rows sets the count again.
        righeDaMostrare(0);
        QCOMPARE(s().NumeroRighe.value(), 10);
    }

    void theRowButtonsSetNumeroRighe_data()
    {
        QTest::addColumn<int>("indice");
        QTest::addColumn<int>("righe");
        QTest::newRow("10  ooperazioni") << 0 << 10;
        QTest::newRow("20 operazioni") << 1 << 20;
        QTest::newRow("30 operazioni ") << 2 << 30;
    }
    void theRowButtonsSetNumeroRighe()
    {
        QFETCH(int, indice);
        QFETCH(int, righe);
        righeDaMostrare(indice == 0 ? 1 : 0);
        righeDaMostrare(indice);
        QCOMPARE(s().NumeroRighe.value(), righe);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(opt("Opt1", i).Value(), i == indice);
    }

    void theOperationsButtonsChangeNothing()
    {
        preparaScheda();
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        const StatoCondiviso prima = s();
        QStringList righePrima;
        for (int i = 1; i <= 60; ++i)
            righePrima << riga(i).Caption();
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);

        click(opt("Opt5"));
        QVERIFY(opt("Opt5").Value());
        click(opt("Opt10"));
        QVERIFY(opt("Opt10").Value());
        QVERIFY(!opt("Opt5").Value());

        QCOMPARE(generati.count(), 0);
        QCOMPARE(s().NumeroRighe.value(), prima.NumeroRighe.value());
        QCOMPARE(s().TipoNumeri.value(), prima.TipoNumeri.value());
        QCOMPARE(s().SchedaDaStampare.value(), prima.SchedaDaStampare.value());
        for (int i = 1; i <= 60; ++i) {
            QCOMPARE(riga(i).Caption(), righePrima[i - 1]);
            QCOMPARE(s().RigheAlunni[i], prima.RigheAlunni[i]);
            QCOMPARE(s().Operazioni[i], prima.Operazioni[i]);
        }
    }

    void viewingTheSheetShowsItsRowsAndItsPrintButton_data()
    {
        QTest::addColumn<int>("indiceOpt1");
        QTest::addColumn<int>("righe");
        QTest::addColumn<bool>("docenti");
        for (bool docenti : {false, true})
            for (auto [indice, righe] : {std::pair{0, 10}, {1, 20}, {2, 30}})
                QTest::addRow("%s, %d rows", docenti ? "teachers" : "pupils", righe)
                    << indice << righe << docenti;
    }
    void viewingTheSheetShowsItsRowsAndItsPrintButton()
    {
        QFETCH(int, indiceOpt1);
        QFETCH(int, righe);
        QFETCH(bool, docenti);
        righeDaMostrare(indiceOpt1 == 2 ? 0 : 2);
        righeDaMostrare(indiceOpt1);
        preparaScheda();
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);

        click(f->get<CommandButton>(docenti ? "CmdVisualizzaSchedaDocenti"
                                            : "CmdVisualizzaSchedaAlunni"));

        QCOMPARE(generati.count(), 0);
        const auto &sorgente = docenti ? s().RigheDocenti : s().RigheAlunni;
        for (int i = 1; i <= 30; ++i) {
            const QString atteso = i <= righe ? sorgente[i] : QString();
            QCOMPARE(riga(i).Caption(), atteso);
            if (i <= righe)
                QCOMPARE(s().Operazioni[i], atteso);
        }
        QCOMPARE(visibile("CmdStampaSchedaAlunni"), !docenti);
        QCOMPARE(visibile("CmdStampaSchedaDocenti"), docenti);
        QCOMPARE(s().SchedaDaStampare.value(), docenti ? 2 : 1);
        QVERIFY(abilitato("Frame1"));
    }

    void theTeachersSheetIsThePupilsSheetWithTheSolutions()
    {
        preparaScheda();
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        QStringList alunni;
        for (int i = 1; i <= 30; ++i)
            alunni << riga(i).Caption();
        click(f->get<CommandButton>("CmdVisualizzaSchedaDocenti"));
        for (int i = 1; i <= 30; ++i) {
            QVERIFY(riga(i).Caption().startsWith(alunni[i - 1]));
            QVERIFY(riga(i).Caption().mid(alunni[i - 1].size()).trimmed().startsWith("(R."));
        }
    }

    void fewerRowsShownAfterMoreLeaveTheRestEmpty()
    {
        preparaScheda();
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        const QString vecchia20 = s().Operazioni[20];
        righeDaMostrare(0);
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        for (int i = 11; i <= 30; ++i)
            QCOMPARE(riga(i).Caption(), QString());
        // Only the rows shown are copied; the others stay as they were.
        QCOMPARE(s().Operazioni[20], vecchia20);
    }

    void cancellaSchedaHidesThePrintButtonsClearsTheRowsAndBuildsANewSheet()
    {
        preparaScheda();
        click(f->get<CommandButton>("CmdVisualizzaSchedaDocenti"));
        QStringList prima;
        for (int i = 1; i <= 30; ++i)
            prima << s().RigheAlunni[i];
        QSignalSpy generati(t->ctx.get(), &AppContext::tipoEsercizioGenerato);

        click(f->get<CommandButton>("CmdRicomincia"));

        QVERIFY(!visibile("CmdStampaSchedaAlunni"));
        QVERIFY(!visibile("CmdStampaSchedaDocenti"));
        for (int i = 1; i <= 60; ++i)
            QCOMPARE(riga(i).Caption(), QString());
        QCOMPARE(generati.count(), 30);
        QCOMPARE(s().RigaScheda.value(), 31);
        QStringList dopo;
        for (int i = 1; i <= 30; ++i)
            dopo << s().RigheAlunni[i];
        QVERIFY(dopo != prima);

        // The new rows appear when a sheet is viewed.
        click(f->get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        QCOMPARE(riga(1).Caption(), dopo[0]);
        QVERIFY(visibile("CmdStampaSchedaAlunni"));
    }

    void theMenuOpensThePrinterScreenModeless()
    {
        f->get<Menu>("mnuStampante").action()->trigger();
        QVERIFY((*t)->screens().isLoaded<frmSceltaStampante>());
        auto &stampanti = (*t)->form<frmSceltaStampante>();
        QVERIFY(stampanti.isVisible());
        QCOMPARE(stampanti.windowModality(), Qt::NonModal);
        // The worksheet still answers.
        click(opt("Opt1", 0));
        QCOMPARE(s().NumeroRighe.value(), 10);
    }

    void esciUnloadsThisScreenAndThenThePrinterScreen()
    {
        f->get<Menu>("mnuStampante").action()->trigger();
        QVERIFY((*t)->screens().isLoaded<frmSceltaStampante>());
        click(f->get<CommandButton>("cmdEsci"));
        settle();
        QVERIFY(!(*t)->screens().isLoaded<FrmStampaSchede>());
        QVERIFY(!(*t)->screens().isLoaded<frmSceltaStampante>());
        QVERIFY((*t)->screens().loaded().isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void esciWithoutThePrinterScreenLoadsNothing()
    {
        click(f->get<CommandButton>("cmdEsci"));
        settle();
        QVERIFY((*t)->screens().loaded().isEmpty());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void reopenedAfterEsciItStartsAfresh()
    {
        preparaScheda();
        righeDaMostrare(0);
        click(f->get<CommandButton>("cmdEsci"));
        settle();
        f = &(*t)->form<FrmStampaSchede>();
        QVERIFY(showActive(*f));
        QVERIFY(!abilitato("Frame22"));
        QCOMPARE(caption("Label1"), QString());
        QCOMPARE(s().NumeroRighe.value(), 30);
    }

    void formattaNumeroIsThereForOtherScreens()
    {
        QCOMPARE(f->FormattaNumero(4700), QStringLiteral("4.700"));
        QCOMPARE(f->FormattaNumero(0.47), QStringLiteral("0,47"));
        QCOMPARE(f->FormattaNumero(1234567.891), QStringLiteral("1.234.567,891"));
        QVERIFY(t->boxes->boxes.isEmpty());
    }

    void formattaNumeroTooBigShowsTheOverflowBoxAndGivesNothing()
    {
        QCOMPARE(f->FormattaNumero(3e9), QString());
        QCOMPARE(t->boxes->boxes.size(), 1);
        const auto &box = t->boxes->boxes[0];
        QCOMPARE(box.text, QStringLiteral("Numero troppo grande!"));
        QCOMPARE(box.title, QStringLiteral("Errore di overflow"));
        QCOMPARE(box.icon, MessageBoxes::Critical);
        QCOMPARE(box.buttons, MessageBoxes::OkOnly);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void theLayoutFollowsTheWindow()
    {
        std::vector<std::pair<Control *, Geometria>> progetto;
        for (Control *c : f->Controls())
            if (c->kind() != ControlKind::Menu)
                progetto.push_back({c, {c->Left(), c->Top(), c->Width(), c->Height()}});
        const double larghezza = f->ScaleWidth();
        const double altezza = f->ScaleHeight();

        f->setInnerSize(2 * larghezza, altezza);
        QApplication::processEvents();
        QCOMPARE(f->ScaleWidth(), 2 * larghezza);
        for (const auto &[c, g] : progetto) {
            QVERIFY2(qAbs(c->Left() - 2 * g.left) < 0.5, qPrintable(c->objectName()));
            QVERIFY2(qAbs(c->Width() - 2 * g.width) < 0.5, qPrintable(c->objectName()));
            QVERIFY2(qAbs(c->Top() - g.top) < 0.5, qPrintable(c->objectName()));
            QVERIFY2(qAbs(c->Height() - g.height) < 0.5, qPrintable(c->objectName()));
        }

        f->setInnerSize(larghezza, altezza);
        QApplication::processEvents();
        for (const auto &[c, g] : progetto) {
            QVERIFY2(qAbs(c->Left() - g.left) < 0.01 && qAbs(c->Top() - g.top) < 0.01,
                     qPrintable(c->objectName()));
            QVERIFY2(qAbs(c->Width() - g.width) < 0.01 && qAbs(c->Height() - g.height) < 0.01,
                     qPrintable(c->objectName()));
        }
        QVERIFY(t->errors->errors.isEmpty());
    }
};

QTEST_MAIN(TestFrmStampaSchede)
#include "tst_frmstampaschede.moc"
