#include "Alunno.h"

#include "core/Algoritmi.h"
#include "platform/Fonts.h"
#include "platform/controls/Image.h"
#include "platform/controls/Line.h"
#include "platform/controls/Menu.h"
#include "platform/controls/Timer.h"
#include "services/GruppoScelte.h"
#include "start/FrmInizio.h"
#include "start/frmIstruzioni.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLabel>
#include <QSignalSpy>
#include <QTimer>

using namespace ScreenTest;

namespace {

QString b(int n)
{
    return QString(n, QLatin1Char(' '));
}

// Type 8 with digits 4 and 7: 4700 in units.
const QString Domanda8 = QStringLiteral("     4700  u = ");
const QString Risposta8 = QStringLiteral("4 uk  7  h  0 da  0  u  ");

} // namespace

class TestFrmOperativo : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    std::unique_ptr<Alunno> a;

    StatoCondiviso &s() { return (*t)->stato; }
    frmOperativo &f() { return a->schermo(); }

    // A series of type 8 opened on 4700 u.
    bool apriSerie()
    {
        a->preparaSerie(8);
        a->prossimeCifre(4, 7);
        return a->apri();
    }

    // Answers the exercise on screen right, after `secondi`, then "Avanti"
    // with the next exercise's digits.
    void giustaEAvanti(double secondi = 1)
    {
        a->scriviGiusta();
        a->passano(secondi);
        a->verifica();
        a->prossimeCifre(4, 7);
        a->avanti();
    }

    bool usabile(int tasto) { return a->tasto(tasto).usable(); }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        a = std::make_unique<Alunno>(*t);
    }

    void cleanup()
    {
        a.reset();
        t.reset();
        settle();
    }

    // ---- Load ----

    void loadingSetsColoursCaptionsAndCounters()
    {
        s().RisposteErrate = 4;
        s().RisposteEsatte = 5;
        s().TempoTotale = 77;
        s().Tentativi = 1;
        QVERIFY(apriSerie());
        QCOMPARE(f().Caption(), QStringLiteral("SCOMPOSIZIONE"));
        QCOMPARE(a->etichetta("Label1").BackColor(), QColor(255, 240, 150));
        QCOMPARE(a->etichetta("Label1").ForeColor(), QColor(250, 170, 110));
        QCOMPARE(a->etichetta("Label2").BackColor(), QColor(250, 200, 110));
        QCOMPARE(a->etichetta("Label2").ForeColor(), QColor(128, 0, 0));
        QCOMPARE(a->testo("Label1"), QStringLiteral(" Scomponi: numeri interi"));
        QCOMPARE(a->testo("Label2"), QStringLiteral(" simboli decrescenti"));
        QCOMPARE(s().RisposteErrate.value(), 0);
        QCOMPARE(s().RisposteEsatte.value(), 0);
        QCOMPARE(s().TempoTotale, 0.0);
        QCOMPARE(s().Tentativi.value(), 0);
        QCOMPARE(s().LivelloSerie.value(), 9);
        QCOMPARE(a->tasto(10).Caption(), QStringLiteral(" uk  "));
        QCOMPARE(a->tasto(11).Caption(), QStringLiteral("  h  "));
        QCOMPARE(a->tasto(12).Caption(), QStringLiteral(" da  "));
        QCOMPARE(a->tasto(13).Caption(), QStringLiteral("  u  "));
        QCOMPARE(a->tasto(15).Caption(), QStringLiteral("Verifica "));
        QCOMPARE(f().get<Control>("Label3").Caption(), QStringLiteral("Risp. errate"));
        QCOMPARE(f().get<Control>("Label8").Caption(), QStringLiteral("Risposte esatte "));
        QCOMPARE(a->etichetta("lblRisErrate").ToolTipText(),
                 QStringLiteral("Secondi impiegati per ogni risposta"));
        QCOMPARE(a->etichetta("LblTempoParziale").ToolTipText(),
                 QStringLiteral("Secondi impiegati per ogni risposta"));
        QCOMPARE(a->etichetta("LblTempoTotale").ToolTipText(),
                 QStringLiteral("Secondi impiegati per ogni esercizio"));
        QCOMPARE(f().get<Menu>("mnuAttestato").action()->text(),
                 QStringLiteral("Visualizza  attestato"));
        QVERIFY(!a->etichetta("lblRiferimento").Visible());
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QCOMPARE(a->framesEnabled(), 1);
        for (int i = 1; i <= 20; ++i) {
            const QString nome = QStringLiteral("Image%1").arg(i);
            QVERIFY2(f().get<Image>(nome.toLatin1().constData()).hasPicture(), qPrintable(nome));
        }
    }

    void firstQuestionIsShownAndTimed()
    {
        QVERIFY(apriSerie());
        QCOMPARE(s().NumeroEsercizio.value(), 1);
        QCOMPARE(a->testo("lblNumero"), QStringLiteral("4700  u"));
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("?"));
        QCOMPARE(s().Operazioni[1], Domanda8);
        QCOMPARE(s().Spazi, b(5));
        QCOMPARE(s().Risposta, Risposta8);
        QCOMPARE(s().InizioEsercizio, 36000.0);
        QCOMPARE(focusedControl(f()), &a->tasto(0));
        QVERIFY(!f().get<Line>("Line1").Visible());
        QVERIFY(!f().get<Line>("Line2").Visible());
    }

    void aFailingStatementWhileLoadingIsSkipped()
    {
        // Numbering at the end of the record: the first question's line
        // cannot be written, and loading goes on regardless.
        s().NumeroEsercizio = 60;
        a->preparaSerie(8);
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        QCOMPARE(s().NumeroEsercizio.value(), 61);
        QVERIFY(t->errors->errors.isEmpty());
        QCOMPARE(a->tasto(13).Caption(), QStringLiteral("  u  "));
    }

    void countersOverflowAsSixteenBitNumbers()
    {
        s().EsatteComplessive = 32767;
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::Overflow});
        QCOMPARE(s().EsatteComplessive.value(), 32767);
    }

    // ---- Series flow ----

    void firstExerciseIsNumberOneAndTwentyClosedExercisesEndTheSeries()
    {
        QVERIFY(apriSerie());
        QCOMPARE(s().NumeroEsercizio.value(), 1);
        for (int n = 1; n <= 19; ++n) {
            QCOMPARE(s().NumeroEsercizio.value(), n);
            giustaEAvanti();
            QVERIFY(a->inPrimoPiano("FraTastierino"));
        }
        QCOMPARE(s().NumeroEsercizio.value(), 20);
        a->scriviGiusta();
        a->verifica();
        QVERIFY(a->inPrimoPiano("fraAvviso"));
        QCOMPARE(a->framesEnabled(), 1);
        QVERIFY(!a->pannello("FraTastierino").Enabled());
        for (int i = 0; i <= 17; ++i)
            QVERIFY(!usabile(i));
        QCOMPARE(a->testo("LblOperazione"), QStringLiteral("20"));
    }

    void esciAfterSevenAndOpeningAgainContinuesFromEight()
    {
        QVERIFY(apriSerie());
        for (int n = 1; n <= 6; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(s().NumeroEsercizio.value(), 7);
        a->esci();
        settle();
        QVERIFY(!a->caricato());
        QVERIFY((*t)->screens().isLoaded<FrmInizio>());
        QVERIFY((*t)->form<FrmInizio>().isVisible());

        // The start screen went back to its first family: the pupil picks the
        // thousands again, then "Vai".
        FamiglieSimboli::applica(s(), 3);
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        QCOMPARE(s().NumeroEsercizio.value(), 8);
        QCOMPARE(s().Operazioni[8], Domanda8);
        QCOMPARE(s().RisposteEsatte.value(), 0);
        QCOMPARE(a->testo("LblOperazione"), QString());
    }

    void aReopenedSeriesCrossingTwentyStillStopsAtTwenty()
    {
        QVERIFY(apriSerie());
        for (int n = 1; n <= 6; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        a->esci();
        settle();
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        for (int n = 8; n <= 19; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(s().NumeroEsercizio.value(), 20);
        QVERIFY(a->inPrimoPiano("fraAvviso"));
    }

    void aSeriesNumberedBeyondTwentyEndsOnlyAtAvantiAtThirty()
    {
        QVERIFY(apriSerie());
        for (int n = 1; n <= 19; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        QVERIFY(a->inPrimoPiano("fraAvviso"));
        // The window's close box: the series is left at its end frame.
        f().close();
        settle();
        QVERIFY(!a->caricato());

        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        QCOMPARE(s().NumeroEsercizio.value(), 21);
        for (int n = 21; n <= 29; ++n) {
            giustaEAvanti();
            QVERIFY(a->inPrimoPiano("FraTastierino"));
        }
        QCOMPARE(s().NumeroEsercizio.value(), 30);
        a->scriviGiusta();
        a->verifica();
        // Closed, not ended: the check at exactly 20 never matched.
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QVERIFY(usabile(16));
        const QString riga30 = s().Operazioni[30];
        a->avanti();
        QVERIFY(a->inPrimoPiano("fraAvviso"));
        QCOMPARE(a->framesEnabled(), 1);
        QCOMPARE(s().NumeroEsercizio.value(), 30);
        QCOMPARE(s().Operazioni[30], riga30);
        QCOMPARE(s().Operazioni[31], QString());
    }

    void ricominciaNumbersFromOneAndKeepsTheCounters()
    {
        QVERIFY(apriSerie());
        // One wrong check (help accepted), then right answers to the end.
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->verifica();
        a->si();
        a->prossimeCifre(4, 7);
        a->avanti();
        for (int n = 2; n <= 19; ++n)
            giustaEAvanti(2);
        a->scriviGiusta();
        a->passano(2);
        a->verifica();
        QVERIFY(a->inPrimoPiano("fraAvviso"));
        QCOMPARE(s().RisposteEsatte.value(), 19);
        QCOMPARE(s().RisposteErrate.value(), 1);
        const QString riga2 = s().Operazioni[2];

        s().TipoEsercizio = 15;
        a->prossimeCifre(1, 2, 3, 4);
        auto &ricomincia = f().get<OptionButton>("optAvviso", 1);
        mouseDown(ricomincia);
        mouseUp(ricomincia);
        QCOMPARE(s().NumeroEsercizio.value(), 1);
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QCOMPARE(a->framesEnabled(), 1);
        for (const char *nome : {"LblOperazione", "lblRisEsatte", "lblRisErrate",
                                 "LblTempoParziale", "LblTempoTotale"})
            QCOMPARE(a->testo(nome), QString());
        QCOMPARE(s().TempoTotale, 0.0);
        QCOMPARE(s().RisposteEsatte.value(), 19);
        QCOMPARE(s().RisposteErrate.value(), 1);
        QCOMPARE(s().Operazioni[1], QStringLiteral("     1234  u = "));
        QCOMPARE(s().Operazioni[2], riga2);
        QVERIFY(!f().get<OptionButton>("optAvviso", 1).Value());

        a->scriviGiusta();
        a->passano(4);
        a->verifica();
        QCOMPARE(a->testo("LblOperazione"), QStringLiteral("1"));
        QCOMPARE(a->testo("lblRisEsatte"), QStringLiteral("20"));
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("4"));
    }

    void stampaLeavesTheEndFrameAsItIs()
    {
        QVERIFY(apriSerie());
        for (int n = 1; n <= 19; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        auto &stampa = f().get<OptionButton>("optAvviso", 0);
        mouseDown(stampa);
        mouseUp(stampa);
        QVERIFY(a->inPrimoPiano("fraAvviso"));
        QCOMPARE(s().NumeroEsercizio.value(), 20);
        QVERIFY(!stampa.Value());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void endFrameButtonsShowTheirFocusAndNeverStayChosen()
    {
        QVERIFY(apriSerie());
        for (int n = 1; n <= 19; ++n)
            giustaEAvanti();
        a->scriviGiusta();
        a->verifica();
        auto &stampa = f().get<OptionButton>("optAvviso", 0);
        auto &ricomincia = f().get<OptionButton>("optAvviso", 1);
        stampa.setValue(true);
        stampa.SetFocus();
        QTRY_COMPARE(focusedControl(f()), &stampa);
        QCOMPARE(stampa.BackColor(), GruppoScelte::ColoreFocus());
        QVERIFY(!stampa.Value());
        ricomincia.setValue(true);
        key(Qt::Key_Tab);
        QCOMPARE(focusedControl(f()), &ricomincia);
        QCOMPARE(stampa.BackColor(), GruppoScelte::ColoreRiposo());
        QCOMPARE(ricomincia.BackColor(), GruppoScelte::ColoreFocus());
        QVERIFY(!ricomincia.Value());
        stampa.setValue(true);
        stampa.SetFocus();
        QVERIFY(!stampa.Value());
        // A click on "Stampa" chooses it on release; the release undoes it.
        click(stampa);
        QVERIFY(!stampa.Value());
    }

    // ---- Question record ----

    void aQuestionOfTwelveCharactersOrLessIsRightAligned()
    {
        QVERIFY(apriSerie());
        QCOMPARE(s().Operazioni[1], Domanda8);
    }

    void aQuestionLongerThanTwelveCharactersGetsNoLeadingBlanks()
    {
        a->preparaSerie(8);
        s().Simbolo4 = QStringLiteral("   unita semplici  ");
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        QCOMPARE(a->testo("lblNumero"), QStringLiteral("4700   unita semplici"));
        QCOMPARE(s().Spazi, QString());
        QCOMPARE(s().Operazioni[1], QStringLiteral("4700   unita semplici = "));
    }

    // ---- Keypad ----

    void keysAlternateDigitsAndSymbols()
    {
        QVERIFY(apriSerie());
        a->premi(4);
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("4"));
        for (int i = 0; i <= 9; ++i)
            QVERIFY(!a->tasto(i).Enabled());
        for (int i = 10; i <= 13; ++i)
            QVERIFY(a->tasto(i).Enabled());
        a->premi(10);
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("4 uk  "));
        QCOMPARE(s().RispostaAlunno, QStringLiteral("4 uk  "));
        for (int i = 0; i <= 9; ++i)
            QVERIFY(a->tasto(i).Enabled());
        for (int i = 10; i <= 13; ++i)
            QVERIFY(!a->tasto(i).Enabled());
        QVERIFY(a->tasto(14).Enabled());
        QVERIFY(a->tasto(15).Enabled());
        QVERIFY(!a->tasto(16).Enabled());
        QVERIFY(!a->tasto(17).Enabled());
        QCOMPARE(s().TastiPremuti.value(), 2);
    }

    void theNinthPressIsIgnored()
    {
        QVERIFY(apriSerie());
        // "3", a symbol, "4", a symbol, four times over.
        for (int volta = 0; volta < 4; ++volta) {
            a->premi(3);
            a->premi(10 + 2 * (volta % 2));
            a->premi(4);
            a->premi(11 + 2 * (volta % 2));
        }
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("3 uk  4  h  3 da  4  u  "));
        QCOMPARE(s().RispostaAlunno, QStringLiteral("3 uk  4  h  3 da  4  u  "));
        // Eight accepted, then only the (enabled) digit keys still count.
        QCOMPARE(s().TastiPremuti.value(), 12);
    }

    void cancellaResetsTheCountSoEightMoreAreAccepted()
    {
        QVERIFY(apriSerie());
        a->scrivi(QStringLiteral("3 uk  4  h  3 da  4  u  "));
        a->premi(5);
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("3 uk  4  h  3 da  4  u  "));
        a->cancella();
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("?"));
        QCOMPARE(s().RispostaAlunno, QString());
        QCOMPARE(s().TastiPremuti.value(), 0);
        QVERIFY(!a->tasto(15).Enabled());
        QCOMPARE(focusedControl(f()), &a->tasto(0));
        a->scrivi(Risposta8);
        QCOMPARE(a->testo("LblRisultato"), Risposta8);
        QCOMPARE(s().TastiPremuti.value(), 8);
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Esatto"));
    }

    void verificaIsEnabledWheneverTheAnswerIsNotAQuestionMark()
    {
        QVERIFY(apriSerie());
        QVERIFY(!a->tasto(15).Enabled());
        a->premi(4);
        QVERIFY(a->tasto(15).Enabled());
        a->premi(10);
        QVERIFY(a->tasto(15).Enabled());
        a->cancella();
        QVERIFY(!a->tasto(15).Enabled());
        a->premi(9);
        QVERIFY(a->tasto(15).Enabled());
        // Clicking a disabled key does nothing at all.
        a->cancella();
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QString());
        QCOMPARE(s().Operazioni[1], Domanda8);
    }

    void tastiNoLeavesButtonTenAsTheLastKeyLeftIt()
    {
        QVERIFY(apriSerie());
        // Enabled by design when the screen loads.
        QVERIFY(a->tasto(10).Enabled());
        for (int i = 11; i <= 13; ++i)
            QVERIFY(!a->tasto(i).Enabled());
        a->premi(4);
        a->cancella();
        QVERIFY(a->tasto(10).Enabled());
        QVERIFY(!a->tasto(11).Enabled());

        a->scriviGiusta();
        a->verifica();
        QVERIFY(!a->tasto(10).Enabled());
        a->prossimeCifre(4, 7);
        a->avanti();
        QVERIFY(!a->tasto(10).Enabled());
        a->premi(4);
        a->premi(12);
        a->cancella();
        QVERIFY(!a->tasto(10).Enabled());
        for (int i = 0; i <= 9; ++i)
            QVERIFY(a->tasto(i).Enabled());
    }

    void blanksAtTheEndsDoNotMatter()
    {
        // The hundreds family's first symbol is five blanks: its key types
        // blanks before the answer.
        a->preparaSerie(4, 2);
        a->prossimeCifre(4, 7, 2);
        QVERIFY(a->apri());
        QCOMPARE(s().Risposta, QStringLiteral("4  h  7 da  2  u  "));
        a->premi(10);
        a->scrivi(QStringLiteral("4  h  7 da  2  u  "));
        QCOMPARE(s().RispostaAlunno, QStringLiteral("     4  h  7 da  2  u  "));
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Esatto"));
        QCOMPARE(s().Operazioni[1], QStringLiteral("      472  u = R.4  h  7 da  2  u (Sec.0)"));
    }

    void anExpectedAnswerWithBlanksAroundMatchesTheTypedOne()
    {
        QVERIFY(apriSerie());
        s().Risposta = QStringLiteral("   4 uk  7  h  0 da  0  u");
        a->scrivi(Risposta8);
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Esatto"));
    }

    void aBlankInsideThatTheExpectedAnswerLacksIsWrong()
    {
        QVERIFY(apriSerie());
        s().Risposta = QStringLiteral("4 uk 7  h  0 da  0  u  ");
        a->scrivi(Risposta8);
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Errato"));
        QVERIFY(a->inPrimoPiano("fraAiuto"));
    }

    // ---- Checking ----

    void aRightAnswerClosesTheExercise()
    {
        s().EsatteComplessive = 5;
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->passano(3.2);
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Esatto"));
        QCOMPARE(s().RisposteEsatte.value(), 1);
        QCOMPARE(s().EsatteComplessive.value(), 6);
        QCOMPARE(s().Segno, QStringLiteral("  "));
        QCOMPARE(s().Operazioni[1], Domanda8 + "R.4 uk  7  h  0 da  0  u (Sec.3)");
        QCOMPARE(a->testo("LblOperazione"), QStringLiteral("1"));
        QCOMPARE(a->testo("lblRisEsatte"), QStringLiteral("1"));
        QCOMPARE(a->testo("lblRisErrate"), QString());
        QCOMPARE(a->testo("LblTempoParziale"), QStringLiteral("3"));
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("3"));
        for (int i = 0; i <= 15; ++i)
            QVERIFY(!a->tasto(i).Enabled());
        QVERIFY(usabile(16));
        QVERIFY(usabile(17));
        QCOMPARE(focusedControl(f()), &a->tasto(16));

        a->prossimeCifre(9, 9);
        a->avanti();
        QCOMPARE(s().NumeroEsercizio.value(), 2);
        QCOMPARE(a->testo("lblNumero"), QStringLiteral("9900  u"));
        QCOMPARE(a->testo("LblEsito1"), QString());
        QCOMPARE(a->testo("LblTempoParziale"), QString());
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("3"));
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("?"));
        QCOMPARE(focusedControl(f()), &a->tasto(0));
    }

    void esatteComplessiveIsNeverReset()
    {
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->verifica();
        a->esci();
        settle();
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(s().RisposteEsatte.value(), 1);
        QCOMPARE(s().EsatteComplessive.value(), 2);
    }

    void aWrongAnswerIsCrossedOutAndHelpIsOffered()
    {
        QVERIFY(apriSerie());
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->passano(5);
        a->verifica();
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Errato"));
        QCOMPARE(s().Segno, QStringLiteral("* "));
        QCOMPARE(s().SpaziRisposta, b(12));
        QCOMPARE(s().Operazioni[1], Domanda8 + "R.4 uk  7  h* " + b(12));
        QCOMPARE(s().RisposteErrate.value(), 1);
        QCOMPARE(a->testo("lblRisErrate"), QString());
        QVERIFY(a->inPrimoPiano("fraAiuto"));
        QCOMPARE(a->framesEnabled(), 1);
        // No clock is read on a wrong check.
        QCOMPARE(a->testo("LblTempoParziale"), QString());

        auto &l1 = f().get<Line>("Line1");
        auto &l2 = f().get<Line>("Line2");
        auto &r = a->etichetta("LblRisultato");
        QVERIFY(l1.Visible() && l2.Visible());
        QCOMPARE(l1.X1(), r.Left());
        QCOMPARE(l1.Y1(), r.Top());
        QCOMPARE(l1.X2(), r.Left() + r.Width());
        QCOMPARE(l1.Y2(), r.Top() + r.Height());
        QCOMPARE(l2.X1(), r.Left());
        QCOMPARE(l2.Y1(), r.Top() + r.Height());
        QCOMPARE(l2.X2(), r.Left() + r.Width());
        QCOMPARE(l2.Y2(), r.Top());
    }

    void wrongThenSiShowsTheCorrection()
    {
        QVERIFY(apriSerie());
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->verifica();
        a->passano(6.5);
        a->si();
        QCOMPARE(a->testo("lblCorrezione"), Risposta8);
        QCOMPARE(a->testo("LblEsito1"), QString());
        QCOMPARE(s().Operazioni[1],
                 Domanda8 + "R.4 uk  7  h* " + b(12) + "R.4 uk  7  h  0 da  0  u° (Sec.6)");
        QVERIFY(s().Operazioni[1].endsWith(QStringLiteral("° (Sec.6)")));
        QCOMPARE(a->testo("LblOperazione"), QStringLiteral("1"));
        QCOMPARE(a->testo("lblRisErrate"), QStringLiteral("1"));
        QCOMPARE(a->testo("lblRisEsatte"), QString());
        QCOMPARE(a->testo("LblTempoParziale"), QStringLiteral("6"));
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QCOMPARE(a->framesEnabled(), 1);
        QVERIFY(usabile(16));
        QVERIFY(!usabile(0));
        QCOMPARE(focusedControl(f()), &a->tasto(16));
        // The crossed-out answer stays until the next exercise.
        QVERIFY(f().get<Line>("Line1").Visible());
        a->prossimeCifre(4, 7);
        a->avanti();
        QVERIFY(!f().get<Line>("Line1").Visible());
        QCOMPARE(a->testo("lblCorrezione"), QString());
    }

    void noAllowsOneMoreTryThatKeepsTheWrongPiece()
    {
        QVERIFY(apriSerie());
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->verifica();
        a->no();
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QCOMPARE(a->framesEnabled(), 1);
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("?"));
        QCOMPARE(a->testo("LblEsito1"), QString());
        QCOMPARE(s().SimboloRichiesto, QString());
        QCOMPARE(s().Tentativi.value(), 1);
        QCOMPARE(s().TastiPremuti.value(), 0);
        QVERIFY(!f().get<Line>("Line1").Visible());
        QVERIFY(!f().get<Line>("Line2").Visible());
        QCOMPARE(focusedControl(f()), &a->tasto(0));

        a->scriviGiusta();
        a->passano(12.7);
        a->verifica();
        QCOMPARE(s().Operazioni[1],
                 Domanda8 + "R.4 uk  7  h* " + b(12) + "R.4 uk  7  h  0 da  0  u (Sec.12)");
        QCOMPARE(s().RisposteErrate.value(), 1);
        QCOMPARE(s().RisposteEsatte.value(), 1);
        // The wrong count is shown only when the program closes an exercise.
        QCOMPARE(a->testo("lblRisErrate"), QString());
    }

    void wrongNoWrongNoBringsTheIntervention()
    {
        QVERIFY(apriSerie());
        const int errate = s().RisposteErrate;
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->verifica();
        a->no();
        a->scrivi(QStringLiteral("7"));
        a->verifica();
        a->no();
        QVERIFY(a->inPrimoPiano("fraIntervento"));
        QCOMPARE(a->framesEnabled(), 1);
        QVERIFY(!f().get<OptionButton>("optOK").Value());
        QCOMPARE(s().RisposteErrate.value(), errate + 2);
        QCOMPARE(s().Operazioni[1], Domanda8 + "R.4 uk  7  h* " + b(12) + "R.7* " + b(21));

        a->passano(30);
        a->ok();
        QCOMPARE(s().Operazioni[1], Domanda8 + "R.4 uk  7  h* " + b(12) + "R.7* " + b(21) +
                                        "R.4 uk  7  h  0 da  0  u° (Sec.30)");
        QCOMPARE(a->testo("lblCorrezione"), Risposta8);
        QCOMPARE(a->testo("lblRisErrate"), QStringLiteral("2"));
        QVERIFY(a->inPrimoPiano("FraTastierino"));
        QVERIFY(usabile(16));
        QVERIFY(!usabile(15));
    }

    void theInterventionButtonIsClearedEachTime()
    {
        QVERIFY(apriSerie());
        for (int volta = 0; volta < 2; ++volta) {
            a->scrivi(QStringLiteral("7"));
            a->verifica();
            a->no();
            a->scrivi(QStringLiteral("7"));
            a->verifica();
            a->no();
            QVERIFY(a->inPrimoPiano("fraIntervento"));
            QVERIFY(!f().get<OptionButton>("optOK").Value());
            a->ok();
            QVERIFY(a->inPrimoPiano("FraTastierino"));
            a->prossimeCifre(4, 7);
            a->avanti();
        }
        QCOMPARE(s().NumeroEsercizio.value(), 3);
    }

    // ---- Timing ----

    void twoPointNineSecondsAreRecordedAsTwo()
    {
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->passano(2.9);
        a->verifica();
        QCOMPARE(s().TempoParzialeTesto, QStringLiteral("2"));
        QVERIFY(s().Operazioni[1].endsWith(QStringLiteral(" (Sec.2)")));
    }

    void partialTimeIsCappedAsText()
    {
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->passano(150);
        a->verifica();
        QCOMPARE(a->testo("LblTempoParziale"), QStringLiteral("150"));
        a->prossimeCifre(4, 7);
        a->avanti();
        a->scriviGiusta();
        a->passano(995);
        a->verifica();
        QCOMPARE(a->testo("LblTempoParziale"), QStringLiteral("99"));
        QCOMPARE(s().TempoParzialeTesto, QStringLiteral("995"));
        QVERIFY(s().Operazioni[2].endsWith(QStringLiteral(" (Sec.995)")));
    }

    void totalIsShownUpTo998AndThen999()
    {
        QVERIFY(apriSerie());
        a->scriviGiusta();
        a->passano(998);
        a->verifica();
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("998"));
        a->prossimeCifre(4, 7);
        a->avanti();
        a->scriviGiusta();
        a->passano(1);
        a->verifica();
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("999"));
        a->prossimeCifre(4, 7);
        a->avanti();
        a->scriviGiusta();
        a->passano(5);
        a->verifica();
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("999"));
        QCOMPARE(s().TempoTotaleTesto, QStringLiteral("1004"));
    }

    void crossingMidnightGivesANegativeTime()
    {
        a->preparaSerie(8);
        t->clock->setSecondsSinceMidnight(86399.5);
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        a->scriviGiusta();
        t->clock->set(QDateTime(QDate(2026, 11, 17), QTime(0, 0, 2)));
        a->verifica();
        QCOMPARE(s().TempoParziale, -86398.0);
        QCOMPARE(a->testo("LblTempoParziale"), QStringLiteral("-86398"));
        QCOMPARE(a->testo("LblTempoTotale"), QStringLiteral("-86398"));
        QVERIFY(s().Operazioni[1].endsWith(QStringLiteral(" (Sec.-86398)")));
    }

    void theTimeRunsOnThroughHelpAndRetries()
    {
        QVERIFY(apriSerie());
        a->passano(10);
        a->scrivi(QStringLiteral("7"));
        a->verifica();
        a->passano(10);
        a->no();
        a->passano(10);
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(s().TempoParzialeTesto, QStringLiteral("30"));
    }

    // ---- Leaving, menus ----

    void esciUnloadsTheDrillAndShowsTheStartScreen()
    {
        QVERIFY(apriSerie());
        QVERIFY(!usabile(17));
        a->scriviGiusta();
        a->verifica();
        QVERIFY(usabile(17));
        a->esci();
        settle();
        QVERIFY(!a->caricato());
        QVERIFY((*t)->form<FrmInizio>().isVisible());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void closingTheStartScreenClosesTheDrillForGood()
    {
        auto &inizio = (*t)->form<FrmInizio>();
        inizio.get<Timer>("timerTendine").setScripted(true);
        QVERIFY(showActive(inizio));
        QVERIFY(apriSerie());
        QSignalSpy vuoto(&(*t)->screens(), &ScreenRegistry::empty);
        inizio.close();
        settle();
        QVERIFY((*t)->screens().loaded().isEmpty());
        QCOMPARE(vuoto.count(), 1);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void istruzioniOpensTheInstructionsModally()
    {
        QVERIFY(apriSerie());
        bool modale = false;
        QTimer::singleShot(0, [&] {
            auto *istruzioni = (*t)->screens().find<frmIstruzioni>();
            modale = istruzioni && istruzioni->isVisible() &&
                     istruzioni->windowModality() == Qt::ApplicationModal;
            if (istruzioni)
                istruzioni->Unload();
        });
        f().get<Menu>("mnuIstruzioni").action()->trigger();
        QVERIFY(modale);
        QVERIFY(a->caricato());
        QCOMPARE(s().NumeroEsercizio.value(), 1);
    }

    // ---- The generator's exercise type ----

    void theGeneratorLoadsTheDrillHiddenToShowTheType()
    {
        FamiglieSimboli::applica(s(), 3);
        s().TipoNumeri = 1;
        frmOperativo::collegaTipoEsercizio(**t);
        // The caller's exercise draws type 7; loading the drill draws its own
        // first exercise, type 15, which then stands for both.
        t->random->script({0.05, 0.5, 0.5, 0.5, 0.5, 0.85, 0.1, 0.2, 0.3, 0.4});
        QVERIFY(!a->caricato());
        Algoritmi(**t).GeneraEsercizio();
        QVERIFY(a->caricato());
        QVERIFY(!f().isVisible());
        QCOMPARE(s().TipoEsercizio.value(), 15);
        QCOMPARE(a->testo("lblCodice"), QStringLiteral("15"));
        QCOMPARE(s().Numero, QStringLiteral("1234"));
        QCOMPARE(a->testo("lblNumero"), QStringLiteral("1234  u"));
        QCOMPARE(s().NumeroEsercizio.value(), 1);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void theTypeFollowsEveryExercise()
    {
        a->preparaSerie(8);
        a->prossimeCifre(4, 7);
        QVERIFY(a->apri());
        QCOMPARE(a->testo("lblCodice"), QStringLiteral("8"));
        a->scriviGiusta();
        a->verifica();
        a->prossimoEsercizio(13, 3, 8, 1);
        a->avanti();
        QCOMPARE(a->testo("lblCodice"), QStringLiteral("13"));
        // Another screen's exercise shows too.
        s().TipoEsercizio = 42;
        Algoritmi(**t).GeneraEsercizio();
        QCOMPARE(a->testo("lblCodice"), QStringLiteral("42"));
    }

    // ---- Scaling ----

    void atTwiceTheDesignSizeTheKeypadIsTwiceAsWideOnTheAnchor()
    {
        QVERIFY(apriSerie());
        const double larghezza = f().ScaleWidth();
        const double altezza = f().ScaleHeight();
        QCOMPARE(larghezza, 10800.0);
        QCOMPARE(altezza, 7800.0);
        QList<double> larghezze;
        for (int i = 0; i <= 17; ++i)
            larghezze << a->tasto(i).Width();
        a->scrivi(QStringLiteral("7"));
        a->verifica();

        f().setInnerSize(2 * larghezza, 2 * altezza);
        QTRY_COMPARE(f().ScaleWidth(), 2 * larghezza);
        QCOMPARE(f().ScaleHeight(), 2 * altezza);
        for (int i = 0; i <= 17; ++i)
            QVERIFY2(qAbs(a->tasto(i).Width() - 2 * larghezze[i]) < 1,
                     qPrintable(QString::number(i)));
        auto &anchor = a->etichetta("lblRiferimento");
        QVERIFY(qAbs(anchor.Left() - 2 * 4560.0) < 1);
        for (const char *nome : {"FraTastierino", "fraAiuto", "fraIntervento", "fraAvviso"}) {
            QCOMPARE(a->pannello(nome).Left(), anchor.Left());
            QCOMPARE(a->pannello(nome).Top(), anchor.Top());
            QVERIFY(qAbs(a->pannello(nome).Width() - 12000) < 1);
        }
        // The cross follows the answer it covers.
        auto &r = a->etichetta("LblRisultato");
        QCOMPARE(f().get<Line>("Line1").X2(), r.Left() + r.Width());
        QVERIFY(qAbs(r.Width() - 2 * 5760) < 1);

        f().setInnerSize(larghezza, altezza);
        QTRY_COMPARE(f().ScaleWidth(), larghezza);
        for (int i = 0; i <= 17; ++i)
            QVERIFY(qAbs(a->tasto(i).Width() - larghezze[i]) < 0.5);
        QVERIFY(qAbs(a->pannello("fraAiuto").Left() - 4560.0) < 0.5);
        QVERIFY(t->errors->errors.isEmpty());
    }

    // ---- Sound and number text ----

    void suonaRisorsaPlaysTheChimeWithoutWaiting()
    {
        QVERIFY(apriSerie());
        QElapsedTimer orologio;
        orologio.start();
        f().SuonaRisorsa();
        QVERIFY(orologio.elapsed() < 500);
        QVERIFY(s().DatiSuono.startsWith("RIFF"));
        QVERIFY(s().DatiSuono.size() > 8000);
        QVERIFY(t->errors->errors.isEmpty());
        QVERIFY(t->boxes->boxes.isEmpty());
    }

    void formattaConMigliaiaTellsWhenTheNumberIsTooBig()
    {
        QVERIFY(apriSerie());
        QCOMPARE(f().FormattaConMigliaia(4700.25), QStringLiteral("4.700,25"));
        QVERIFY(t->boxes->boxes.isEmpty());
        QCOMPARE(f().FormattaConMigliaia(3e9), QString());
        QCOMPARE(t->boxes->boxes.size(), 1);
        QCOMPARE(t->boxes->boxes[0].text, QStringLiteral("Numero troppo grande!"));
        QCOMPARE(t->boxes->boxes[0].title, QStringLiteral("Errore di overflow"));
        QCOMPARE(t->boxes->boxes[0].icon, MessageBoxes::Critical);
    }

    // ---- Keyboard ----

    void aWholeExerciseWorksFromTheKeyboard()
    {
        QVERIFY(apriSerie());
        // Tab (or Shift+Tab) to a key, then Enter or Space presses it.
        auto vaiA = [&](int i) {
            for (int passi = 0; passi < 40 && focusedControl(f()) != &a->tasto(i); ++passi)
                key(i >= 10 ? Qt::Key_Tab : Qt::Key_Backtab);
            return focusedControl(f()) == &a->tasto(i);
        };
        const QList<int> tasti = a->tastiPer(Risposta8);
        for (int n = 0; n < tasti.size(); ++n) {
            QVERIFY(vaiA(tasti[n]));
            key(n % 2 ? Qt::Key_Space : Qt::Key_Return);
        }
        QCOMPARE(a->testo("LblRisultato"), Risposta8);
        QVERIFY(vaiA(15));
        key(Qt::Key_Return);
        QCOMPARE(a->testo("LblEsito1"), QStringLiteral("Esatto"));
        QCOMPARE(focusedControl(f()), &a->tasto(16));
        a->prossimeCifre(4, 7);
        key(Qt::Key_Space);
        QCOMPARE(s().NumeroEsercizio.value(), 2);
        QCOMPARE(focusedControl(f()), &a->tasto(0));
    }
};

QTEST_MAIN(TestFrmOperativo)
#include "tst_frmoperativo.moc"
