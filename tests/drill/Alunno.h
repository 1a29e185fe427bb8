#pragma once

#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "drill/frmOperativo.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QList>
#include <QTest>

// A pupil at the drill screen, acting only through real mouse and key events,
// and the scripted world around it: the clock and the generator's draws.
class Alunno
{
public:
    explicit Alunno(TestContext &t) : m_t(t) {}

    StatoCondiviso &stato() { return m_t->stato; }
    frmOperativo &schermo() { return m_t->form<frmOperativo>(); }
    bool caricato() const { return m_t->screens().isLoaded<frmOperativo>(); }

    // The thousands family, one fixed exercise type (TipoNumeri 0 keeps it)
    // and the clock at 10:00.
    void preparaSerie(int tipo, int famiglia = 3)
    {
        FamiglieSimboli::applica(stato(), famiglia);
        stato().TipoNumeri = 0;
        stato().TipoEsercizio = tipo;
        stato().DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi");
        stato().DescrizioneSimboli = QStringLiteral(" simboli decrescenti");
        m_t.clock->setSecondsSinceMidnight(36000);
        frmOperativo::collegaTipoEsercizio(*m_t);
    }

    // The digits the generator draws next: w, x, y, z (1..9).
    void prossimeCifre(int w, int x = 1, int y = 1, int z = 1)
    {
        m_t.random->script({(w - 0.5) / 9, (x - 0.5) / 9, (y - 0.5) / 9, (z - 0.5) / 9});
    }
    void prossimoEsercizio(int tipo, int w, int x = 1, int y = 1, int z = 1)
    {
        stato().TipoEsercizio = tipo;
        prossimeCifre(w, x, y, z);
    }

    // Opens the drill as "Vai" does and waits until it is the active window.
    bool apri()
    {
        frmOperativo &f = schermo();
        return ScreenTest::showActive(f);
    }

    CommandButton &tasto(int i) { return schermo().get<CommandButton>("Command1", i); }
    Label &etichetta(const char *nome) { return schermo().get<Label>(nome); }
    QString testo(const char *nome) { return etichetta(nome).Caption(); }
    Frame &pannello(const char *nome) { return schermo().get<Frame>(nome); }

    void premi(int i) { ScreenTest::click(tasto(i)); }
    void cancella() { premi(14); }
    void verifica() { premi(15); }
    void avanti() { premi(16); }
    void esci() { premi(17); }
    void si() { ScreenTest::click(schermo().get<CommandButton>("Command3", 1)); }
    void no() { ScreenTest::click(schermo().get<CommandButton>("Command3", 2)); }
    void ok() { ScreenTest::click(schermo().get<OptionButton>("optOK")); }

    // The keys that type `risposta`.
    QList<int> tastiPer(const QString &risposta) { return schermo().TastiPer(risposta); }
    void scrivi(const QString &risposta)
    {
        for (int t : tastiPer(risposta))
            premi(t);
    }
    // Types the expected answer of the exercise on screen.
    void scriviGiusta() { scrivi(stato().Risposta); }

    // The overlay frame the pupil can use now: enabled and in front.
    bool inPrimoPiano(const char *nome)
    {
        Frame &f = pannello(nome);
        if (!f.Enabled())
            return false;
        const QWidgetList fratelli = f.widget()->parentWidget()->findChildren<QWidget *>(
            QString(), Qt::FindDirectChildrenOnly);
        // The last of the overlay frames among the siblings is the one on top.
        QWidget *sopra = nullptr;
        for (QWidget *w : fratelli)
            if (w->objectName() == "FraTastierino" || w->objectName() == "fraAiuto" ||
                w->objectName() == "fraIntervento" || w->objectName() == "fraAvviso")
                sopra = w;
        return sopra == f.widget();
    }
    int framesEnabled()
    {
        int n = 0;
        for (const char *nome : {"FraTastierino", "fraAiuto", "fraIntervento", "fraAvviso"})
            n += pannello(nome).Enabled() ? 1 : 0;
        return n;
    }

    void passano(double secondi) { m_t.clock->advance(secondi); }

private:
    TestContext &m_t;
};
