// A whole series of twenty exercises on the drill screen, answered on its
// keypad with real mouse clicks as a pupil would, the screen repainted after
// every click; timed from the first exercise shown to the end of the series.
//
//   bench_serie [--ripetizioni N] [--senza-obiettivi]
//
// Every fifth exercise from the third starts with a wrong answer and a
// refused help, then the right one; every fifth from the fourth is wrong and
// the pupil accepts the help. Each repetition is a fresh context and screen.
#include "InProcesso.h"

#include "app/Avvio.h"
#include "core/FamiglieSimboli.h"
#include "drill/frmOperativo.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QApplication>
#include <QElapsedTimer>

namespace {

constexpr int Esercizi = 20;

class Alunno
{
public:
    explicit Alunno(frmOperativo &schermo) : m_schermo(schermo) {}

    CommandButton &tasto(int i) { return m_schermo.get<CommandButton>("Command1", i); }

    // A click, and the repaint it causes.
    void clic(const Control &c)
    {
        ScreenTest::click(c);
        QApplication::processEvents();
    }
    void premi(int i) { clic(tasto(i)); }
    void verifica() { premi(15); }
    void avanti() { premi(16); }
    void si() { clic(m_schermo.get<CommandButton>("Command3", 1)); }
    void no() { clic(m_schermo.get<CommandButton>("Command3", 2)); }

    QList<int> tastiPer(const QString &risposta) { return m_schermo.TastiPer(risposta); }

    bool scrivi(QList<int> tasti)
    {
        if (tasti.isEmpty())
            return false;
        for (int t : tasti)
            premi(t);
        return true;
    }

private:
    frmOperativo &m_schermo;
};

// A series played through; the milliseconds it took, or -1 (and why, on
// stderr) when the screen did not behave as a drill series does.
double unaSerie()
{
    TestContext t;
    StatoCondiviso &s = t->stato;
    // Mixed integers and decimals of the thousands family, as chosen on the
    // start screen.
    FamiglieSimboli::applica(s, 3);
    s.TipoNumeri = 3;
    s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi e con la virgola");
    s.DescrizioneSimboli = QStringLiteral(" simboli decrescenti");
    t.clock->setSecondsSinceMidnight(36000);
    frmOperativo::collegaTipoEsercizio(*t);
    frmOperativo &schermo = t->form<frmOperativo>();
    if (!ScreenTest::showActive(schermo)) {
        std::fprintf(stderr, "the drill screen did not become active\n");
        return -1;
    }
    QApplication::processEvents();
    Alunno a(schermo);
    auto esito = [&] { return schermo.get<Label>("LblEsito1").Caption(); };

    QElapsedTimer cronometro;
    cronometro.start();
    for (int n = 1; n <= Esercizi; ++n) {
        if (n > 1)
            a.avanti();
        t.clock->advance(5);
        const QList<int> giusta = a.tastiPer(s.Risposta);
        if (n % 5 == 3 || n % 5 == 4) {
            QList<int> sbagliata = giusta;
            if (!sbagliata.isEmpty())
                sbagliata[0] = (sbagliata[0] + 1) % 10;
            if (!a.scrivi(sbagliata))
                break;
            a.verifica();
            if (esito() != QStringLiteral("Errato"))
                break;
            if (n % 5 == 4) {
                a.si();
                continue;
            }
            a.no();
        }
        if (!a.scrivi(giusta))
            break;
        a.verifica();
        if (esito() != QStringLiteral("Esatto"))
            break;
    }
    const double ms = double(cronometro.nsecsElapsed()) / 1e6;

    const int sbagliate = 2 * (Esercizi / 5);
    const bool fineSerie = schermo.get<Frame>("fraAvviso").Enabled() &&
                           !schermo.get<Frame>("FraTastierino").Enabled();
    if (s.NumeroEsercizio != Esercizi || s.RisposteEsatte != Esercizi - Esercizi / 5 ||
        s.RisposteErrate != sbagliate || !fineSerie || !t.errors->errors.isEmpty() ||
        s.Operazioni[Esercizi].isEmpty()) {
        std::fprintf(stderr,
                     "the series went wrong: exercise %d, right %d, wrong %d, end panel %d, "
                     "errors %d\n",
                     int(s.NumeroEsercizio.value()), int(s.RisposteEsatte.value()),
                     int(s.RisposteErrate.value()), int(fineSerie), int(t.errors->errors.size()));
        return -1;
    }
    return ms;
}

} // namespace

int main(int argc, char *argv[])
{
    return Banco::inProcesso(argc, argv, "series", "20-exercise series through keypad clicks", 200, unaSerie);
}
