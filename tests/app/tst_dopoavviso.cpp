#include "app/Avvio.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/controls/Menu.h"
#include "registro/ImpostazioniRegistro.h"
#include "registro/frmRegistro.h"
#include "report/FrmStampaEsercizio2.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "support/PrintedPdf.h"
#include "support/CoriOccupati.h"
#include "support/Scadenze.h"
#include "support/TestDoubles.h"
#include "support/XvfbSession.h"

#include <QApplication>
#include <QDir>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>
#include <vector>

// The whole program started from outside, with the keyboard as a pupil uses
// it, where a printing notice comes up in the middle: on the certificate,
// "1" and Enter print, the notice that tells where the file went is closed
// (Enter, Space, Escape or the mouse), and the next keys act at once: "1"
// and Enter print again, "2" and Enter go back to the report, "3" and Enter
// end the session. Enter is let go only once the notice has the keyboard, as
// when a window manager gives it to the new window while the key is down:
// its release reaches the notice, not the certificate.
//
// There is no window manager: the test gives the notice the keyboard as one
// would, and nothing else; where the keyboard goes when the notice closes is
// the program's business. The pointer rests away from every window, so X
// gives the keys to no window by where the pointer is.
//
// This process runs on the same X server only to measure where the controls
// are (the program's own style and fonts); it shows no window of its own.

namespace {

const QString Inizio = QStringLiteral("^SISTEMA DECIMALE: scomposizione$");
const QString Esercizio = QStringLiteral("^SCOMPOSIZIONE$");
const QString Resoconto = QStringLiteral("^FINESTRA DI STAMPA $");
const QString Attestato = QStringLiteral("^Form1$");
const QString Avviso = QStringLiteral("^Quadrivo$");

QPoint centroIn(const QWidget *w, const QWidget *finestra)
{
    return w->mapTo(finestra, w->rect().center());
}

QPoint voce(Form &f, const char *menu)
{
    QMenuBar *barra = f.menuBar();
    barra->ensurePolished();
    barra->setGeometry(0, 0, f.width(), barra->sizeHint().height());
    return barra->actionGeometry(f.get<Menu>(menu).action()).center();
}

} // namespace

class TestDopoAvviso : public QObject
{
    Q_OBJECT

    XvfbSession *x = nullptr;
    QProcess quadrivo;
    std::unique_ptr<QTemporaryDir> lavoro;
    CoriOccupati carico;

    // Places in the drill and report windows (their own coordinates).
    QPoint voceVisualizza, voceStampaEsercizi, esciResoconto, attestatoResoconto;
    std::map<int, QPoint> tastierino;
    // The start screen's menu, the worksheet screen and the register.
    QPoint voceSchede, voceOpzioni, voceRegistro, sottomultipli, visualizzaAlunni, esportaRegistro;
    // Where the pointer rests: on no window.
    const QPoint riposo{1275, 1019};

    QString passo;

    bool xdo(const QStringList &args)
    {
        bool ok = false;
        x->xdotool(args, &ok);
        return ok;
    }

    bool tasto(const QString &nome) { return xdo({QStringLiteral("key"), nome}); }

    // A click at `p` in the window `id`, the pointer back at rest after it.
    bool clic(const QString &id, const QPoint &p)
    {
        return xdo({QStringLiteral("mousemove"), QStringLiteral("--window"), id,
                    QStringLiteral("--sync"), QString::number(p.x()), QString::number(p.y()),
                    QStringLiteral("click"), QStringLiteral("1")}) &&
               x->movePointer(riposo);
    }

    QStringList pdf() const
    {
        return QDir(lavoro->path()).entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name);
    }

    QString unaFinestra(const QString &titolo, int baseMs = 20000)
    {
        return x->waitForWindow(titolo, baseMs);
    }

    bool chiusa(const QString &titolo, int baseMs = 10000)
    {
        return Scadenze::finche([&] { return x->noWindow(titolo); }, baseMs);
    }

    bool haLaTastiera(const QString &id)
    {
        return Scadenze::finche(
            [&] { return x->xdotool({QStringLiteral("getwindowfocus")}) == id; }, 10000, 20);
    }

    // The program started, "numeri interi", "u d c m" and "Vai" chosen with
    // Enter; the drill window's id.
    QString finoAllEsercizio()
    {
        passo = QStringLiteral("start");
        lavoro = std::make_unique<QTemporaryDir>();
        if (x->avviaQuadrivo(quadrivo, lavoro->path()).isEmpty() || !x->movePointer(riposo))
            return {};
        passo = QStringLiteral("Enter three times on the start screen");
        for (int i = 0; i < 3; ++i)
            if (!tasto(QStringLiteral("Return")))
                return {};
        return unaFinestra(Esercizio);
    }

    // The question on the drill, as the report prints it ("5630 m").
    QString domanda(const QString &esercizio)
    {
        passo = QStringLiteral("the report, to read the question");
        if (!clic(esercizio, voceVisualizza))
            return {};
        const QString resoconto = unaFinestra(Resoconto);
        if (resoconto.isEmpty() || !clic(resoconto, voceStampaEsercizi))
            return {};
        const QString avviso = unaFinestra(Avviso);
        if (avviso.isEmpty() || pdf().isEmpty())
            return {};
        const PrintedPdf stampato(QDir(lavoro->path()).filePath(pdf().last()));
        QString trovata;
        for (const QString &riga : stampato.lines())
            if (riga.endsWith(QLatin1Char('=')))
                trovata = riga.chopped(1).simplified();
        if (!x->focus(avviso) || !tasto(QStringLiteral("Escape")) || !chiusa(Avviso) ||
            !clic(resoconto, esciResoconto) || !chiusa(Resoconto))
            return {};
        return trovata;
    }

    // Types the decomposition of a whole number on the drill's keypad: the
    // units digit carries the question's symbol, each digit to its left the
    // symbol before. The family is u d c m.
    bool rispondi(const QString &esercizio, const QString &domanda)
    {
        passo = QStringLiteral("answering ") + domanda;
        const QStringList parti = domanda.split(QLatin1Char(' '));
        const QStringList simboli{QStringLiteral("u"), QStringLiteral("d"), QStringLiteral("c"),
                                  QStringLiteral("m")};
        if (parti.size() != 2 || !simboli.contains(parti[1]))
            return false;
        const QString numero = parti[0];
        const int ultimo = int(simboli.indexOf(parti[1]));
        for (int k = 0; k < numero.size(); ++k) {
            const int simbolo = ultimo - int(numero.size() - 1 - k);
            if (!numero[k].isDigit() || simbolo < 0 ||
                !clic(esercizio, tastierino[numero[k].digitValue()]) ||
                !clic(esercizio, tastierino[10 + simbolo]))
                return false;
        }
        return clic(esercizio, tastierino[15]);
    }

    // From the drill to the certificate through the report; its id, once it
    // has the keyboard.
    QString apriAttestato(const QString &esercizio)
    {
        passo = QStringLiteral("opening the certificate");
        if (!clic(esercizio, voceVisualizza))
            return {};
        const QString resoconto = unaFinestra(Resoconto);
        if (resoconto.isEmpty() || !clic(resoconto, attestatoResoconto))
            return {};
        const QString attestato = unaFinestra(Attestato);
        return !attestato.isEmpty() && haLaTastiera(attestato) ? attestato : QString();
    }

    // Enter held until the window it opens (a notice unless told) is up and
    // has the keyboard, then let go; that window's id.
    QString stampaTenendoInvio(const QString &finestra = Avviso)
    {
        passo = QStringLiteral("Enter held until ") + finestra;
        if (!xdo({QStringLiteral("keydown"), QStringLiteral("Return")}))
            return {};
        const QString avviso = unaFinestra(finestra);
        const bool fuoco = !avviso.isEmpty() && x->focus(avviso);
        xdo({QStringLiteral("keyup"), QStringLiteral("Return")});
        return fuoco ? avviso : QString();
    }

    // Closes the notice as the row says and waits until it is gone.
    bool chiudiAvviso(const QString &avviso, const QString &chiusura, QPoint ok = {})
    {
        passo = QStringLiteral("closing the notice with ") + chiusura;
        if (chiusura == QLatin1String("mouse")) {
            if (ok.isNull())
                ok = bottoneOk(avviso);
            if (ok.isNull() || !clic(avviso, ok))
                return false;
        } else if (!x->focus(avviso) || !tasto(chiusura)) {
            return false;
        }
        return chiusa(Avviso);
    }

    // The notice's OK button, measured on a box of the same text and style.
    QPoint bottoneOk(const QString &avviso)
    {
        return bottoneOk(avviso,
                         QStringLiteral("Il documento è stato salvato nel file:\n%1")
                             .arg(QDir(lavoro->path()).filePath(pdf().value(pdf().size() - 1))),
                         QMessageBox::Information);
    }

    QPoint bottoneOk(const QString &avviso, const QString &testo, QMessageBox::Icon icona)
    {
        QMap<QString, QString> g;
        for (const QString &riga :
             x->xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), avviso})
                 .split(QLatin1Char('\n')))
            g.insert(riga.section(QLatin1Char('='), 0, 0), riga.section(QLatin1Char('='), 1));
        const QSize dimensione(g.value(QStringLiteral("WIDTH")).toInt(),
                               g.value(QStringLiteral("HEIGHT")).toInt());
        QMessageBox misura(icona, QStringLiteral("Quadrivo"), testo, QMessageBox::Ok);
        misura.setAttribute(Qt::WA_DontShowOnScreen);
        misura.show();
        const QPoint centro = centroIn(misura.button(QMessageBox::Ok), &misura);
        const QSize suo = misura.size();
        misura.hide();
        if (suo != dimensione) {
            qWarning() << "notice" << dimensione << "measured" << suo;
            return {};
        }
        return centro;
    }

    // What a key and Enter did on the certificate: "print" (a new notice),
    // "back" (the certificate gone, the report there), "end" (the program
    // ended), or "nothing".
    QString dopoTastoEInvio(const QString &cifra)
    {
        passo = cifra + QStringLiteral(" then Enter");
        const int prima = int(pdf().size());
        if (!tasto(cifra) || !tasto(QStringLiteral("Return")))
            return QStringLiteral("no xdotool");
        QString esito = QStringLiteral("nothing");
        Scadenze::finche(
            [&] {
                if (quadrivo.state() == QProcess::NotRunning)
                    esito = QStringLiteral("end");
                else if (pdf().size() > prima && !x->noWindow(Avviso))
                    esito = QStringLiteral("print");
                else if (x->noWindow(Attestato) && !x->noWindow(Resoconto))
                    esito = QStringLiteral("back");
                return esito != QLatin1String("nothing");
            },
            5000);
        return esito;
    }

    // The start screen with the keyboard.
    QString avvia()
    {
        passo = QStringLiteral("start");
        lavoro = std::make_unique<QTemporaryDir>();
        const QString id = x->avviaQuadrivo(quadrivo, lavoro->path());
        return !id.isEmpty() && x->movePointer(riposo) ? id : QString();
    }

    // The report printed from its menu (it has no key for it); the notice
    // closed with Enter, then Enter acts on the button that had the focus:
    // "ESCI" closes the report.
    void resoconto()
    {
        const QString esercizio = finoAllEsercizio();
        QVERIFY2(!esercizio.isEmpty(), "the drill did not open");
        passo = QStringLiteral("report, printed from its menu");
        QVERIFY(clic(esercizio, voceVisualizza));
        const QString resoconto = unaFinestra(Resoconto);
        QVERIFY(!resoconto.isEmpty() && haLaTastiera(resoconto));
        QVERIFY(clic(resoconto, voceStampaEsercizi));
        const QString avviso = unaFinestra(Avviso);
        QVERIFY2(!avviso.isEmpty(), "the report's print brought no notice");
        QVERIFY(chiudiAvviso(avviso, QStringLiteral("Return")));
        passo = QStringLiteral("Enter on ESCI");
        QVERIFY(tasto(QStringLiteral("Return")));
        QVERIFY2(chiusa(Resoconto), "after the notice, Enter did not act on \"ESCI\"");
    }

    // The worksheet screen: the pupils' sheet shown with the mouse (its units
    // have no keys), then Tab to "STAMPA SCHEDA" and Enter held. Either a
    // notice (closed with Space; Enter prints again, closed with Escape) or,
    // with the folder gone, the modal "Problema di stampa..." (closed with
    // Enter; Enter shows it again, closed with the mouse), or, with no
    // Courier font, the modal "Devi installare..." (closed with Escape;
    // Enter shows it again, closed with Space).
    void scheda(const QString &caso)
    {
        const bool problema = caso == QLatin1String("printing problem");
        const bool courier = caso == QLatin1String("Courier message");
        QTemporaryDir caratteri;
        if (courier) {
            // Fonts with no Courier, nor a font with its metrics, for the program.
            QFile conf(caratteri.filePath(QStringLiteral("fonts.conf")));
            QVERIFY(conf.open(QIODevice::WriteOnly));
            conf.write(QStringLiteral("<?xml version=\"1.0\"?>\n<fontconfig>\n"
                                      "<dir>/usr/share/fonts/truetype/dejavu</dir>\n"
                                      "<cachedir>%1</cachedir>\n</fontconfig>\n")
                           .arg(caratteri.filePath(QStringLiteral("cache")))
                           .toUtf8());
            conf.close();
            qputenv("FONTCONFIG_FILE", QFile::encodeName(conf.fileName()));
        }
        const bool avviato = !avvia().isEmpty();
        qunsetenv("FONTCONFIG_FILE");
        QVERIFY2(avviato, "the program did not start");
        passo = QStringLiteral("worksheet screen");
        const QString inizio = unaFinestra(Inizio);
        QVERIFY(clic(inizio, voceSchede));
        const QString schede = unaFinestra(QStringLiteral("^STAMPA SCHEDE: scomposizione$"));
        QVERIFY(!schede.isEmpty() && haLaTastiera(schede));
        QVERIFY(tasto(QStringLiteral("Return")));
        QVERIFY(clic(schede, sottomultipli));
        QVERIFY(clic(schede, visualizzaAlunni));
        QVERIFY(tasto(QStringLiteral("Tab")));
        if (problema)
            QVERIFY(QDir(lavoro->path()).removeRecursively());
        const QString testo = QStringLiteral("Problema di stampa nella stampante utilizzata.");
        QString avviso = stampaTenendoInvio();
        QVERIFY2(!avviso.isEmpty(), "Enter on \"STAMPA SCHEDA\" brought no window");
        if (courier) {
            QVERIFY(chiudiAvviso(avviso, QStringLiteral("Escape")));
            passo = QStringLiteral("Enter again");
            QVERIFY(tasto(QStringLiteral("Return")));
            avviso = unaFinestra(Avviso, 5000);
            QVERIFY2(!avviso.isEmpty(), "after the message, Enter did not try to print again");
            QVERIFY(chiudiAvviso(avviso, QStringLiteral("space")));
            QVERIFY(pdf().isEmpty());
        } else if (problema) {
            QVERIFY(chiudiAvviso(avviso, QStringLiteral("Return")));
            passo = QStringLiteral("Enter again");
            QVERIFY(tasto(QStringLiteral("Return")));
            avviso = unaFinestra(Avviso, 5000);
            QVERIFY2(!avviso.isEmpty(), "after the message, Enter did not print again");
            QVERIFY(chiudiAvviso(avviso, QStringLiteral("mouse"),
                                 bottoneOk(avviso, testo, QMessageBox::NoIcon)));
        } else {
            QVERIFY(chiudiAvviso(avviso, QStringLiteral("space")));
            passo = QStringLiteral("Enter again");
            QVERIFY(tasto(QStringLiteral("Return")));
            QVERIFY2(
                Scadenze::finche([&] { return pdf().size() == 2 && !x->noWindow(Avviso); }, 5000),
                "after the notice, Enter did not print again");
            QVERIFY(chiudiAvviso(unaFinestra(Avviso), QStringLiteral("Escape")));
        }
    }

    // The class sets: the symbols chosen with Enter on the start screen, the
    // worksheet screen, Alt+C and Enter for "Copie per la classe", one copy,
    // Enter held; the notice closed with the mouse, Enter prints again, the
    // notice closed with Enter, Escape closes the dialog.
    void classe()
    {
        QVERIFY2(!avvia().isEmpty(), "the program did not start");
        passo = QStringLiteral("symbols on the start screen");
        QVERIFY(tasto(QStringLiteral("Return")) && tasto(QStringLiteral("Return")));
        const QString inizio = unaFinestra(Inizio);
        QVERIFY(clic(inizio, voceSchede));
        const QString schede = unaFinestra(QStringLiteral("^STAMPA SCHEDE: scomposizione$"));
        QVERIFY(!schede.isEmpty() && haLaTastiera(schede));
        passo = QStringLiteral("Alt+C, Enter");
        QVERIFY(tasto(QStringLiteral("alt+c")) && tasto(QStringLiteral("Return")));
        const QString dialogo = unaFinestra(QStringLiteral("^Copie per la classe$"));
        QVERIFY(!dialogo.isEmpty() && haLaTastiera(dialogo));
        passo = QStringLiteral("one copy");
        QVERIFY(tasto(QStringLiteral("alt+c")) && tasto(QStringLiteral("ctrl+a")) &&
                tasto(QStringLiteral("1")));
        QString avviso = stampaTenendoInvio();
        QVERIFY2(!avviso.isEmpty(), "Enter in the copies box brought no notice");
        QVERIFY(chiudiAvviso(avviso, QStringLiteral("mouse")));
        passo = QStringLiteral("Enter again");
        QVERIFY(tasto(QStringLiteral("Return")));
        QVERIFY2(Scadenze::finche([&] { return pdf().size() == 2 && !x->noWindow(Avviso); }, 10000),
                 "after the notice, Enter did not print again");
        QVERIFY(chiudiAvviso(unaFinestra(Avviso), QStringLiteral("Return")));
        passo = QStringLiteral("Escape");
        QVERIFY(tasto(QStringLiteral("Escape")));
        QVERIFY2(chiusa(QStringLiteral("^Copie per la classe$")),
                 "after the notice, Escape did not close the dialog");
    }

    // The register: "ESPORTA CSV" with Enter held opens the folder dialog,
    // Enter there saves and a notice says where (closed with Escape); Tab and
    // Enter print (the notice closed with Space); Tab, Tab, Enter on "CHIUDI".
    void registro()
    {
        QVERIFY2(!avvia().isEmpty(), "the program did not start");
        passo = QStringLiteral("register");
        const QString inizio = unaFinestra(Inizio);
        QVERIFY(clic(inizio, voceRegistro));
        const QString registro = unaFinestra(QStringLiteral("^Registro$"));
        QVERIFY(!registro.isEmpty() && haLaTastiera(registro));
        // The focus to "ESPORTA CSV": a click opens its folder dialog, Escape
        // leaves it.
        QVERIFY(clic(registro, esportaRegistro));
        const QString cartella = QStringLiteral("^Cartella in cui salvare il registro");
        QVERIFY(x->focus(unaFinestra(cartella)) && tasto(QStringLiteral("Escape")) &&
                chiusa(cartella) && haLaTastiera(registro));
        const QString dialogo = stampaTenendoInvio(cartella);
        QVERIFY2(!dialogo.isEmpty(), "Enter on \"ESPORTA CSV\" brought no folder dialog");
        passo = QStringLiteral("Enter in the folder dialog");
        QVERIFY(tasto(QStringLiteral("Return")));
        QString avviso = unaFinestra(Avviso);
        QVERIFY2(!avviso.isEmpty(), "the export brought no notice");
        QVERIFY(chiudiAvviso(avviso, QStringLiteral("Escape")));
        passo = QStringLiteral("Tab and Enter on STAMPA");
        QVERIFY(tasto(QStringLiteral("Tab")) && tasto(QStringLiteral("Return")));
        avviso = unaFinestra(Avviso, 5000);
        QVERIFY2(!avviso.isEmpty() && pdf().size() == 1,
                 "after the notice, Tab and Enter did not print the register");
        QVERIFY(chiudiAvviso(avviso, QStringLiteral("space")));
        passo = QStringLiteral("Tab, Tab and Enter on CHIUDI");
        QVERIFY(tasto(QStringLiteral("Tab")) && tasto(QStringLiteral("Tab")) &&
                tasto(QStringLiteral("Return")));
        QVERIFY2(chiusa(QStringLiteral("^Registro$")),
                 "after the notice, the keys did not reach \"CHIUDI\"");
    }

    // The options screen: "2" and Enter save the settings (no notice comes
    // up), "3" and Enter close the screen at once.
    void opzioni()
    {
        QVERIFY2(!avvia().isEmpty(), "the program did not start");
        passo = QStringLiteral("options");
        const QString inizio = unaFinestra(Inizio);
        QVERIFY(clic(inizio, voceOpzioni));
        const QString opzioni = unaFinestra(QStringLiteral("^ PANNELLO OPZIONI$"));
        QVERIFY(!opzioni.isEmpty() && haLaTastiera(opzioni));
        const QString livelli = QDir(lavoro->path()).filePath(QStringLiteral("Quadrivo.dat"));
        QFile::remove(livelli);
        passo = QStringLiteral("2 and Enter");
        QVERIFY(tasto(QStringLiteral("2")) && tasto(QStringLiteral("Return")));
        QVERIFY2(Scadenze::finche([&] { return QFile::exists(livelli); }, 5000),
                 "\"2\" and Enter did not save the settings");
        passo = QStringLiteral("3 and Enter");
        QVERIFY(tasto(QStringLiteral("3")) && tasto(QStringLiteral("Return")));
        QVERIFY2(chiusa(QStringLiteral("^ PANNELLO OPZIONI$")),
                 "after the save, \"3\" and Enter did not close the options");
    }

private slots:
    void initTestCase()
    {
        x = XvfbSession::current();
        QVERIFY(x);
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        Avvio::preparaApplicazione();
        // The program prints to its own PDF printer, whatever queues this
        // machine has, and keeps its register and settings in the test's
        // folders.
        static QTemporaryDir casa;
        QVERIFY(casa.isValid());
        qputenv("CUPS_SERVER", QFile::encodeName(casa.filePath(QStringLiteral("nessun-server"))));
        qputenv("XDG_DATA_HOME", QFile::encodeName(casa.filePath(QStringLiteral("dati"))));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(casa.filePath(QStringLiteral("config"))));
        // Where the register's folder dialog starts.
        qputenv("HOME", QFile::encodeName(casa.path()));

        TestContext t;
        frmOperativo &e = t->form<frmOperativo>();
        e.ensurePolished();
        voceVisualizza = voce(e, "mnuVisualizza");
        for (int i = 0; i <= 17; ++i)
            tastierino[i] = centroIn(e.get<Control>("Command1", i).widget(), &e);
        FrmStampaEsercizio2 &r = t->form<FrmStampaEsercizio2>();
        r.ensurePolished();
        voceStampaEsercizi = voce(r, "mnuStampaEsercizi");
        esciResoconto = centroIn(r.get<Control>("Command1", 0).widget(), &r);
        attestatoResoconto = centroIn(r.get<Control>("Command1", 3).widget(), &r);
        FrmInizio &i = t->form<FrmInizio>();
        i.ensurePolished();
        voceSchede = voce(i, "mnuStampa");
        voceOpzioni = voce(i, "mnuOpzioni");
        voceRegistro = voce(i, "mnuRegistro");
        FrmStampaSchede &s = t->form<FrmStampaSchede>();
        s.ensurePolished();
        sottomultipli = centroIn(s.get<Control>("Option2", 0).widget(), &s);
        visualizzaAlunni = centroIn(s.get<Control>("CmdVisualizzaSchedaAlunni").widget(), &s);
        frmRegistro g(*t, ImpostazioniRegistro::sqlite(casa.filePath(QStringLiteral("misura.db"))));
        g.ensurePolished();
        esportaRegistro = centroIn(g.get<Control>("cmdEsporta").widget(), &g);
    }

    void cleanup()
    {
        if (QTest::currentTestFailed()) {
            qWarning().noquote() << x->diagnostica(
                QStringLiteral("%1 %2, at: %3")
                    .arg(QString::fromLatin1(QTest::currentTestFunction()),
                         QString::fromLatin1(QTest::currentDataTag()), passo),
                &quadrivo);
            xdo({QStringLiteral("keyup"), QStringLiteral("Return")});
        }
        if (quadrivo.state() != QProcess::NotRunning) {
            quadrivo.kill();
            quadrivo.waitForFinished(5000);
        }
    }

    void cleanupTestCase() { QVERIFY(carico.imposta(false)); }

    void theKeysGoOnOnTheCertificateAfterThePrintingNotice_data()
    {
        QTest::addColumn<QString>("chiusura");
        QTest::addColumn<bool>("occupato");
        for (bool occupato : {false, true})
            for (const char *chiusura : {"Return", "space", "Escape", "mouse"})
                QTest::addRow("notice closed with %s, %s", chiusura, occupato ? "busy" : "idle")
                    << QString::fromLatin1(chiusura) << occupato;
    }

    void theKeysGoOnOnTheCertificateAfterThePrintingNotice()
    {
        QFETCH(QString, chiusura);
        QFETCH(bool, occupato);
        QVERIFY(carico.imposta(occupato));

        // One right answer: the certificate can be printed.
        const QString esercizio = finoAllEsercizio();
        QVERIFY2(!esercizio.isEmpty(), "the drill did not open");
        const QString chiesta = domanda(esercizio);
        QVERIFY2(!chiesta.isEmpty(), "the question could not be read from the printed report");
        QVERIFY(rispondi(esercizio, chiesta));
        QString attestato = apriAttestato(esercizio);
        QVERIFY2(!attestato.isEmpty(), "the certificate did not open or has no keyboard");

        // The focus starts on the picture: Tab, then "1".
        passo = QStringLiteral("Tab and 1");
        QVERIFY(tasto(QStringLiteral("Tab")) && tasto(QStringLiteral("1")));
        QString avviso = stampaTenendoInvio();
        QVERIFY2(!avviso.isEmpty(), "\"1\" and Enter held brought no notice");
        QVERIFY2(chiudiAvviso(avviso, chiusura), "the notice did not close");

        QString esito = dopoTastoEInvio(QStringLiteral("1"));
        QVERIFY2(esito == QLatin1String("print"),
                 qPrintable(QStringLiteral("after the notice closed with %1, \"1\" and Enter did "
                                           "%2 instead of printing again")
                                .arg(chiusura, esito)));
        avviso = unaFinestra(Avviso);
        QVERIFY(chiudiAvviso(avviso, chiusura));

        esito = dopoTastoEInvio(QStringLiteral("2"));
        QVERIFY2(esito == QLatin1String("back"),
                 qPrintable(QStringLiteral("after the notice closed with %1, \"2\" and Enter did "
                                           "%2 instead of going back to the report")
                                .arg(chiusura, esito)));

        // Again from the report, to end the session this time.
        passo = QStringLiteral("the certificate again");
        const QString resoconto = unaFinestra(Resoconto);
        QVERIFY(clic(resoconto, attestatoResoconto));
        attestato = unaFinestra(Attestato);
        QVERIFY(!attestato.isEmpty() && haLaTastiera(attestato));
        QVERIFY(tasto(QStringLiteral("Tab")) && tasto(QStringLiteral("1")));
        avviso = stampaTenendoInvio();
        QVERIFY(!avviso.isEmpty());
        QVERIFY(chiudiAvviso(avviso, chiusura));
        esito = dopoTastoEInvio(QStringLiteral("3"));
        QVERIFY2(esito == QLatin1String("end"),
                 qPrintable(QStringLiteral("after the notice closed with %1, \"3\" and Enter did "
                                           "%2 instead of ending the session")
                                .arg(chiusura, esito)));
        QVERIFY(XvfbSession::aspettaLaFine(quadrivo));
        QCOMPARE(quadrivo.exitStatus(), QProcess::NormalExit);
        QCOMPARE(quadrivo.exitCode(), 0);
        QCOMPARE(pdf().size(), 4);
    }

    // ---- The other screens: one keyboard path each ----

    void theKeysGoOnOnTheOtherScreensAfterTheirNotices_data()
    {
        QTest::addColumn<QString>("percorso");
        for (const char *p : {"report", "worksheet", "worksheet printing problem",
                              "worksheet Courier message", "class set", "register", "options"})
            QTest::newRow(p) << QString::fromLatin1(p);
    }

    void theKeysGoOnOnTheOtherScreensAfterTheirNotices()
    {
        QFETCH(QString, percorso);
        QVERIFY(carico.imposta(false));
        if (percorso == QLatin1String("report"))
            resoconto();
        else if (percorso.startsWith(QLatin1String("worksheet")))
            scheda(percorso.section(QLatin1Char(' '), 1));
        else if (percorso == QLatin1String("class set"))
            classe();
        else if (percorso == QLatin1String("register"))
            registro();
        else
            opzioni();
    }
};

QUADRIVO_XVFB_MAIN(TestDopoAvviso)
#include "tst_dopoavviso.moc"
