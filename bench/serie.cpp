// A whole series of twenty exercises on the drill screen, answered on its
// keypad with real mouse clicks as a pupil would, the screen repainted after
// every click; timed from the first exercise shown to the end of the series.
//
//   bench_serie [--ripetizioni N] [--senza-obiettivi]
//
// Every fifth exercise from the third starts with a wrong answer and a
// refused help, then the right one; every fifth from the fourth is wrong and
// the pupil accepts the help. Each repetition is a fresh context and screen.
#include "Misure.h"

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

    // The keys that type `risposta`: each digit, and the symbol key whose
    // caption stands next (the longest, when two would fit).
    QList<int> tastiPer(const QString &risposta)
    {
        QList<int> tasti;
        qsizetype i = 0;
        while (i < risposta.size()) {
            if (risposta[i].isDigit()) {
                tasti << risposta[i].digitValue();
                ++i;
                continue;
            }
            int trovato = -1;
            for (int k = 10; k <= 13; ++k) {
                const QString c = tasto(k).Caption();
                if (!c.isEmpty() && risposta.mid(i).startsWith(c) &&
                    (trovato < 0 || c.size() > tasto(trovato).Caption().size()))
                    trovato = k;
            }
            if (trovato < 0)
                return {};
            tasti << trovato;
            i += tasto(trovato).Caption().size();
        }
        return tasti;
    }

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
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Misure::Opzioni o = Misure::leggiOpzioni(argc, argv, 15);
    QApplication app(argc, argv);
    Avvio::preparaApplicazione();

    std::vector<double> tempi;
    for (int i = 0; i < o.ripetizioni; ++i) {
        const double ms = unaSerie();
        if (ms < 0)
            return Misure::Errore;
        tempi.push_back(ms);
        ScreenTest::settle();
    }
    std::fprintf(stderr, "series: min/median/max %.1f/%.1f/%.1f ms, first %.1f ms\n",
                 Misure::minimo(tempi), Misure::mediana(tempi), Misure::massimo(tempi),
                 tempi.front());

    const double mediana = Misure::mediana(tempi);
    const bool raggiunto = Misure::riga(
        "20-exercise series through keypad clicks (median of " + std::to_string(o.ripetizioni) +
            ")",
        Misure::formato("%.0f ms", mediana), "< 200 ms", mediana < 200);
    return Misure::esito(o, raggiunto);
}
