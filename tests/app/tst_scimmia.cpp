// Random use of the whole program ("monkey" test): from the start screen, a
// seeded walk clicks visible, enabled controls and menu entries of the active
// screen and presses the keys the screens react to, through Qt's own input
// path, switching screens as the flows allow. Nothing may crash or hang, and
// every run-time error that reaches the general error report must be one the
// program is known to raise on that input; after such an error, or when the
// program ends, the walk starts the program afresh and goes on.
//
// Replay a failure with its seed:
//   QUADRIVO_SCIMMIA_SEMI=17 QUADRIVO_SCIMMIA_EVENTI=1000 tests/tst_scimmia
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "platform/controls/Timer.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "platform/printing/RecordingPrinter.h"
#include "start/FrmInizio.h"
#include "support/TestDoubles.h"

#include <QMap>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <random>
#include <thread>

namespace {

using Rng = std::mt19937;

int draw(Rng &rng, int n)
{
    return std::uniform_int_distribution<int>(0, n - 1)(rng);
}

// One input the walk gave: what and where, for the log and the error rules.
struct Azione
{
    QString descrizione;
    QString schermo;  // the screen it went to
    QString controllo; // the control that had the focus or was clicked
    Qt::Key tasto = Qt::Key_unknown;
    Qt::KeyboardModifiers modificatori;
};

Azione azione(const QString &descrizione, const QString &schermo, const QString &controllo = {})
{
    Azione a;
    a.descrizione = descrizione;
    a.schermo = schermo;
    a.controllo = controllo;
    return a;
}

// The run-time errors the program raises on purpose, each on one input.
bool erroreAtteso(RuntimeError::Code code, const Azione &a)
{
    const bool zeroPrincipale = a.tasto == Qt::Key_0 && !(a.modificatori & Qt::KeypadModifier);
    switch (code) {
    case RuntimeError::TypeMismatch:
        // The main keyboard's 0 on a choice group reads "/" as a number.
        return zeroPrincipale && (a.schermo == QLatin1String("FrmInizio") ||
                                  a.schermo == QLatin1String("FrmStampaSchede"));
    case RuntimeError::InvalidProcedureCall:
        // Backspace on an empty name asks for one character less than none.
        return a.tasto == Qt::Key_Backspace && a.schermo == QLatin1String("frmNome");
    case RuntimeError::ControlArrayElementMissing:
        // A report of a series numbered past 20 has no 21st line.
        return a.schermo == QLatin1String("FrmStampaEsercizio2");
    default:
        return false;
    }
}

// Message boxes answered with one of their buttons, drawn from the walk.
class RisposteACaso final : public MessageBoxes
{
public:
    explicit RisposteACaso(Rng &rng) : m_rng(rng) {}
    Answer show(const QString &, Buttons buttons, Icon, const QString &) override
    {
        switch (buttons) {
        case OkOnly:
            return Ok;
        case OkCancel:
            return draw(m_rng, 2) ? Ok : Cancel;
        case AbortRetryIgnore:
            return Answer(Abort + draw(m_rng, 3));
        case YesNoCancel:
            return std::array{Yes, No, Cancel}[draw(m_rng, 3)];
        case YesNo:
            return draw(m_rng, 2) ? Yes : No;
        case RetryCancel:
            return draw(m_rng, 2) ? Retry : Cancel;
        }
        return Ok;
    }

private:
    Rng &m_rng;
};

class ErroriAllaScimmia final : public ErrorReport
{
public:
    explicit ErroriAllaScimmia(std::function<void(const RuntimeError &)> f) : m_f(std::move(f)) {}
    void report(const RuntimeError &error) override { m_f(error); }

private:
    std::function<void(const RuntimeError &)> m_f;
};

// One run of the program, from the start screen, in its own folder.
struct Vita
{
    QTemporaryDir cartella;
    std::unique_ptr<AppContext> ctx = std::make_unique<AppContext>();
    PinnedClock *orologio;

    Vita(Rng &rng, std::function<void(const RuntimeError &)> errori)
    {
        auto clock = std::make_unique<PinnedClock>(
            QDateTime(QDate(2026, 11, 16), QTime(8, 0).addSecs(draw(rng, 36000))));
        orologio = clock.get();
        ctx->setClock(std::move(clock));
        ctx->setRandom(std::make_unique<MixingRandom>(rng()));
        ctx->setMessageBoxes(std::make_unique<RisposteACaso>(rng));
        ctx->setErrorReport(std::make_unique<ErroriAllaScimmia>(std::move(errori)));
        ctx->setNotifications(std::make_unique<RecordingNotifications>());
        auto cartelle = std::make_unique<ScriptedFolderChooser>();
        cartelle->answer = cartella.path();
        ctx->setFolderChooser(std::move(cartelle));
        ctx->setWorkingDirectory(cartella.path());
        // A printer that only records, and the real PDF printer writing here.
        std::vector<std::unique_ptr<Printer>> stampanti;
        stampanti.push_back(std::make_unique<RecordingPrinter>());
        stampanti.push_back(std::make_unique<PdfFilePrinter>(*ctx));
        ctx->setPrinters(std::make_unique<Printers>(std::move(stampanti), draw(rng, 2)));
        frmOperativo::collegaTipoEsercizio(*ctx);
        ctx->runHandler([this] { ctx->form<FrmInizio>().Show(); });
    }
};

const Qt::Key lettere[] = {Qt::Key_A, Qt::Key_B, Qt::Key_C, Qt::Key_D, Qt::Key_E, Qt::Key_F,
                           Qt::Key_G, Qt::Key_H, Qt::Key_I, Qt::Key_J, Qt::Key_K, Qt::Key_L,
                           Qt::Key_M, Qt::Key_N, Qt::Key_O, Qt::Key_P, Qt::Key_Q, Qt::Key_R,
                           Qt::Key_S, Qt::Key_T, Qt::Key_U, Qt::Key_V, Qt::Key_W, Qt::Key_X,
                           Qt::Key_Y, Qt::Key_Z};
const Qt::Key altri[] = {Qt::Key_Return, Qt::Key_Enter,  Qt::Key_Space, Qt::Key_Backspace,
                         Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,    Qt::Key_Down,
                         Qt::Key_Shift,  Qt::Key_Escape, Qt::Key_Comma, Qt::Key_Period};

class Scimmia : public QObject
{
public:
    Scimmia(unsigned seme, int eventi) : m_seme(seme), m_quota(eventi), m_rng(seme) {}

    // Walks until the quota of events is given or a rule is broken; the
    // broken rule, or the empty text.
    QString cammina()
    {
        nuovaVita();
        QEventLoop esterno;
        m_esterno = &esterno;
        QTimer::singleShot(0, this, [this] { passo(); });
        esterno.exec();
        return m_guasto;
    }

    int eventi() const { return m_eventi; }
    int vite() const { return m_vite; }
    int errori() const { return m_errori; }
    // Read by the watchdog from its own thread.
    std::atomic<int> progressi{0};
    QString registro() const { return m_registro.join(QLatin1Char('\n')); }
    // Inputs given per screen, to see where the walk went.
    QString visite() const
    {
        QStringList v;
        for (auto it = m_visite.begin(); it != m_visite.end(); ++it)
            v.append(QStringLiteral("%1 %2").arg(it.key()).arg(it.value()));
        return v.join(QStringLiteral(", "));
    }

private:
    void nuovaVita()
    {
        ++m_vite;
        m_vita = std::make_unique<Vita>(m_rng, [this](const RuntimeError &e) { errore(e); });
        QObject::connect(&m_vita->ctx->screens(), &ScreenRegistry::empty, this,
                         [this] { m_ricomincia = true; });
    }

    void errore(const RuntimeError &e)
    {
        ++m_errori;
        annota(QStringLiteral("  -> errore %1 %2").arg(e.number()).arg(e.detail()));
        if (!erroreAtteso(e.code(), m_ultima) && m_guasto.isEmpty())
            m_guasto = QStringLiteral("errore inatteso %1 (%2) dopo: %3")
                           .arg(e.number())
                           .arg(e.description(), m_ultima.descrizione);
        // An error ends the program: start it again.
        m_ricomincia = true;
    }

    void annota(const QString &riga)
    {
        if (!m_ultima.schermo.isEmpty() && !riga.startsWith(QLatin1Char(' ')))
            ++m_visite[m_ultima.schermo];
        m_registro.append(riga);
        if (m_registro.size() > 40)
            m_registro.removeFirst();
    }

    void prossimo(int ms = 0)
    {
        QTimer::singleShot(ms, this, [this] { passo(); });
    }

    void passo()
    {
        // A timer that fires while an input is still being handled (Qt's
        // input path runs pending events) waits its turn, unless that input
        // opened a modal screen: then the walk goes on inside it.
        if (!m_modali.empty() && QApplication::activeModalWidget() == m_modali.back()) {
            prossimo(1);
            return;
        }
        ++progressi;
        if (m_ricomincia || !m_guasto.isEmpty() || m_eventi >= m_quota) {
            chiudiVita();
            return;
        }
        prossimo();
        m_modali.push_back(QApplication::activeModalWidget());
        agisci();
        m_modali.pop_back();
    }

    // Closes every screen; once no input is being handled any more, the
    // program's run ends and a new one starts (or the walk ends).
    void chiudiVita()
    {
        if (m_vita)
            m_vita->ctx->screens().unloadAll();
        if (!m_modali.empty()) {
            prossimo();
            return;
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_vita.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_ricomincia = false;
        if (!m_guasto.isEmpty() || m_eventi >= m_quota) {
            m_esterno->quit();
            return;
        }
        nuovaVita();
        prossimo();
    }

    // The window input goes to now: an open menu, a modal screen, the active
    // window, or else the screen shown last.
    QWidget *finestraAttiva() const
    {
        if (QWidget *w = QApplication::activePopupWidget())
            return w;
        if (QWidget *w = QApplication::activeModalWidget())
            return w;
        if (QWidget *w = QApplication::activeWindow(); w && w->isVisible())
            return w;
        const QList<Form *> caricati = m_vita->ctx->screens().loaded();
        for (auto it = caricati.rbegin(); it != caricati.rend(); ++it)
            if ((*it)->isVisible())
                return *it;
        return nullptr;
    }

    void agisci()
    {
        ++m_eventi;
        m_vita->orologio->advance(draw(m_rng, 4000) / 1000.0);
        rendiTimerGuidati();
        QWidget *finestra = finestraAttiva();
        if (!finestra) {
            // Nothing on screen and nothing loaded would have ended the run.
            m_ricomincia = true;
            return;
        }
        const int scelta = draw(m_rng, 100);
        if (auto *menu = qobject_cast<QMenu *>(finestra))
            return scelta < 80 ? clicMenu(menu) : tasto(finestra, Qt::Key_Escape, {});
        if (scelta < 3)
            return altraFinestra();
        if (scelta < 10)
            return scattaTimer();
        if (scelta < 55)
            return clic(finestra);
        return tastoACaso(finestra);
    }

    // The program's timers tick when the walk says, so a seed replays.
    void rendiTimerGuidati()
    {
        for (Form *f : m_vita->ctx->screens().loaded())
            for (Control *c : f->Controls())
                if (c->kind() == ControlKind::Timer)
                    static_cast<Timer *>(c)->setScripted(true);
    }

    void scattaTimer()
    {
        std::vector<Timer *> attivi;
        for (Form *f : m_vita->ctx->screens().loaded())
            for (Control *c : f->Controls())
                if (c->kind() == ControlKind::Timer && c->Enabled())
                    attivi.push_back(static_cast<Timer *>(c));
        if (attivi.empty())
            return;
        Timer *t = attivi[draw(m_rng, int(attivi.size()))];
        m_ultima = azione(QStringLiteral("timer %1.%2").arg(t->form().formName(), t->objectName()),
                          t->form().formName(), t->objectName());
        annota(m_ultima.descrizione);
        m_vita->ctx->runHandler([t] { t->tick(); });
    }

    // A user may click another visible screen when no modal one is open.
    void altraFinestra()
    {
        if (QApplication::activeModalWidget())
            return;
        QList<Form *> visibili;
        for (Form *f : m_vita->ctx->screens().loaded())
            if (f->isVisible())
                visibili.append(f);
        if (visibili.isEmpty())
            return;
        Form *f = visibili[draw(m_rng, int(visibili.size()))];
        m_ultima = azione(QStringLiteral("passa a %1").arg(f->formName()), f->formName());
        annota(m_ultima.descrizione);
        f->activateWindow();
        QApplication::setActiveWindow(f);
    }

    void clic(QWidget *finestra)
    {
        auto *form = qobject_cast<Form *>(finestra);
        if (!form)
            return tastoACaso(finestra);
        struct Bersaglio
        {
            QWidget *widget;
            QRect area; // in the widget's coordinates
            QString nome;
            int peso; // buttons and menus draw the eye more than labels
        };
        std::vector<Bersaglio> bersagli;
        for (Control *c : form->Controls()) {
            QWidget *w = c->widget();
            if (!w || !w->isVisible() || !c->usable() || c->kind() == ControlKind::Line)
                continue;
            const bool pulsante = c->kind() == ControlKind::OptionButton ||
                                  c->kind() == ControlKind::CommandButton;
            bersagli.push_back({w, w->rect(), c->objectName(), pulsante ? 4 : 1});
        }
        if (auto *barra = form->findChild<QMenuBar *>(); barra && barra->isVisible())
            for (QAction *a : barra->actions())
                if (a->isVisible() && a->isEnabled())
                    bersagli.push_back({barra, barra->actionGeometry(a), a->objectName(), 4});
        if (bersagli.empty())
            return tastoACaso(finestra);
        std::vector<int> pesi;
        for (const Bersaglio &b : bersagli)
            pesi.push_back(b.peso);
        const Bersaglio &b =
            bersagli[std::discrete_distribution<int>(pesi.begin(), pesi.end())(m_rng)];
        const QPoint centro = b.widget->mapTo(form, b.area.center());
        m_ultima = azione(QStringLiteral("clic su %1.%2").arg(form->formName(), b.nome),
                          form->formName(), b.nome);
        annota(m_ultima.descrizione);
        QTest::mouseClick(form->windowHandle(), Qt::LeftButton, Qt::NoModifier, centro);
    }

    void clicMenu(QMenu *menu)
    {
        QList<QAction *> voci;
        for (QAction *a : menu->actions())
            if (a->isVisible() && a->isEnabled() && !a->isSeparator())
                voci.append(a);
        if (voci.isEmpty())
            return tasto(menu, Qt::Key_Escape, {});
        QAction *a = voci[draw(m_rng, int(voci.size()))];
        m_ultima = azione(QStringLiteral("menu %1").arg(a->objectName()), schermoDi(menu),
                          a->objectName());
        annota(m_ultima.descrizione);
        QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          menu->actionGeometry(a).center());
    }

    QString schermoDi(QWidget *w) const
    {
        for (QObject *o = w; o; o = o->parent())
            if (auto *f = qobject_cast<Form *>(o))
                return f->formName();
        return {};
    }

    void tastoACaso(QWidget *finestra)
    {
        const int scelta = draw(m_rng, 100);
        Qt::KeyboardModifiers mod;
        Qt::Key k;
        if (scelta < 25) {
            k = Qt::Key(Qt::Key_0 + draw(m_rng, 10));
        } else if (scelta < 50) {
            k = Qt::Key(Qt::Key_0 + draw(m_rng, 10));
            mod = Qt::KeypadModifier;
        } else if (scelta < 80) {
            k = altri[draw(m_rng, int(std::size(altri)))];
            if (k == Qt::Key_Enter)
                mod = Qt::KeypadModifier;
        } else {
            k = lettere[draw(m_rng, int(std::size(lettere)))];
            if (draw(m_rng, 4) == 0)
                mod = Qt::ShiftModifier;
        }
        tasto(finestra, k, mod);
    }

    void tasto(QWidget *finestra, Qt::Key k, Qt::KeyboardModifiers mod)
    {
        QWidget *fuoco = QApplication::focusWidget();
        const QString controllo = fuoco ? fuoco->objectName() : QString();
        m_ultima = azione(QStringLiteral("tasto %1%2 su %3.%4")
                              .arg(mod & Qt::KeypadModifier ? QStringLiteral("tastierino ")
                                                            : QString(),
                                   QKeySequence(k).toString(), schermoDi(finestra), controllo),
                          schermoDi(finestra), controllo);
        m_ultima.tasto = k;
        m_ultima.modificatori = mod;
        annota(m_ultima.descrizione);
        QTest::keyClick(finestra->windowHandle(), k, mod);
    }

    unsigned m_seme;
    int m_quota;
    Rng m_rng;
    std::unique_ptr<Vita> m_vita;
    QEventLoop *m_esterno = nullptr;
    std::vector<QWidget *> m_modali; // per input being handled: the modal screen it began under
    bool m_ricomincia = false;
    int m_eventi = 0;
    int m_vite = 0;
    int m_errori = 0;
    Azione m_ultima;
    QString m_guasto;
    QStringList m_registro;
    QMap<QString, int> m_visite;
};

QList<unsigned> semi()
{
    const QByteArray scelti = qgetenv("QUADRIVO_SCIMMIA_SEMI");
    QList<unsigned> s;
    if (!scelti.isEmpty()) {
        for (const QByteArray &parte : scelti.split(','))
            s.append(parte.trimmed().toUInt());
        return s;
    }
    for (unsigned i = 1; i <= 20; ++i)
        s.append(i);
    return s;
}

int eventiPerSeme()
{
    bool ok = false;
    const int n = qEnvironmentVariableIntValue("QUADRIVO_SCIMMIA_EVENTI", &ok);
    return ok && n > 0 ? n : 1000;
}

// Ends the process, naming the seed, when a walk makes no progress.
class Guardiano
{
public:
    Guardiano(const Scimmia &s, unsigned seme) : m_fine(false)
    {
        m_thread = std::thread([&s, seme, this] {
            int ultimo = -1;
            auto fermo = std::chrono::steady_clock::now();
            while (!m_fine) {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                const int ora = s.progressi;
                const auto adesso = std::chrono::steady_clock::now();
                if (ora != ultimo) {
                    ultimo = ora;
                    fermo = adesso;
                } else if (adesso - fermo > std::chrono::seconds(60)) {
                    std::fprintf(stderr, "seme %u: nessun progresso da 60 s, il programma è "
                                         "bloccato\n", seme);
                    std::abort();
                }
            }
        });
    }
    ~Guardiano()
    {
        m_fine = true;
        m_thread.join();
    }

private:
    std::atomic<bool> m_fine;
    std::thread m_thread;
};

} // namespace

class TestScimmia : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void randomUseNeverBreaksTheProgram_data()
    {
        QTest::addColumn<unsigned>("seme");
        for (unsigned s : semi())
            QTest::newRow(qPrintable(QStringLiteral("seme %1").arg(s))) << s;
    }

    void randomUseNeverBreaksTheProgram()
    {
        QFETCH(unsigned, seme);
        const int quota = eventiPerSeme();
        // Printed first, so a crash names the seed to replay.
        std::fprintf(stderr, "scimmia: seme %u, %d eventi\n", seme, quota);
        Scimmia scimmia(seme, quota);
        QString guasto;
        {
            Guardiano guardiano(scimmia, seme);
            guasto = scimmia.cammina();
        }
        QVERIFY2(guasto.isEmpty(), qPrintable(QStringLiteral("seme %1: %2\nultimi passi:\n%3")
                                                  .arg(seme)
                                                  .arg(guasto, scimmia.registro())));
        QCOMPARE(scimmia.eventi(), quota);
        qInfo("seme %u: %d eventi, %d avvii, %d errori attesi; %s", seme, scimmia.eventi(),
              scimmia.vite(), scimmia.errori(), qPrintable(scimmia.visite()));
    }
};

QTEST_MAIN(TestScimmia)
#include "tst_scimmia.moc"
