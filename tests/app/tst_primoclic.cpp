#include "app/Avvio.h"
#include "core/AppContext.h"
#include "platform/controls/Menu.h"
#include "start/FrmInizio.h"
#include "start/frmAutore.h"
#include "support/CoriOccupati.h"
#include "support/Scadenze.h"
#include "support/TestDoubles.h"
#include "support/XvfbSession.h"

#include <QApplication>
#include <QImage>
#include <QMenuBar>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <memory>
#include <utility>
#include <vector>

// The whole program started from outside, as a pupil uses it: the author
// screen opened from the menu bar with the mouse and closed, then the very
// first press on the credit line (mouse down) or on the symbols line (click)
// changes the symbol family. Everything is seen from outside: the family
// number the start screen shows, read off the X display.
//
// This process runs on the same X server only to measure where the controls
// are (the same style and fonts as the program) and to look at the display;
// it shows no window of its own.

namespace {

const QRgb Fondo = qRgb(255, 224, 192);

QRect rettangoloIn(const QWidget *w, const QWidget *finestra)
{
    return QRect(w->mapTo(finestra, QPoint(0, 0)), w->size());
}

} // namespace

class TestPrimoClic : public QObject
{
    Q_OBJECT

    XvfbSession *x = nullptr;
    QProcess quadrivo;
    std::unique_ptr<QTemporaryDir> lavoro;
    CoriOccupati carico;

    // Places in the start window (its own coordinates) and in the author's.
    QPoint voceAutore, credito, rigaSimboli, chiudi;
    QRect numeroFamiglia;
    QSize dimensioneInizio;
    QPoint origine;

    // The family number as drawn, per family, once seen; the family shown now.
    std::map<int, QImage> cifre;
    int famiglia = 1;

    QString passo;

    QImage schermo(const QRect &r) const
    {
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, origine.x() + r.x(), origine.y() + r.y(), r.width(), r.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    QRgb pixel(const QPoint &p) const { return schermo(QRect(p, QSize(1, 1))).pixel(0, 0); }

    bool xdo(const QStringList &args)
    {
        bool ok = false;
        x->xdotool(args, &ok);
        return ok;
    }

    bool clic(const QPoint &p)
    {
        return sposta(p) && xdo({QStringLiteral("click"), QStringLiteral("1")});
    }

    bool sposta(const QPoint &p)
    {
        return x->movePointer(origine + p);
    }

    // Starts the program and waits until its curtain has opened; the family
    // number it shows is family 1's.
    bool avvia()
    {
        passo = QStringLiteral("start");
        lavoro = std::make_unique<QTemporaryDir>();
        const QString id = x->avviaQuadrivo(quadrivo, lavoro->path());
        if (id.isEmpty())
            return false;
        QMap<QString, QString> g;
        for (const QString &riga :
             x->xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), id})
                 .split(QLatin1Char('\n')))
            g.insert(riga.section(QLatin1Char('='), 0, 0), riga.section(QLatin1Char('='), 1));
        origine =
            QPoint(g.value(QStringLiteral("X")).toInt(), g.value(QStringLiteral("Y")).toInt());
        const QSize dimensione(g.value(QStringLiteral("WIDTH")).toInt(),
                               g.value(QStringLiteral("HEIGHT")).toInt());
        if (dimensione != dimensioneInizio) {
            qWarning() << "start window" << dimensione << "measured" << dimensioneInizio;
            return false;
        }
        // The two curtain halves leave the window's edges last.
        passo = QStringLiteral("curtain");
        const int y = numeroFamiglia.top() - 20;
        const bool aperta = Scadenze::finche(
            [&] {
                return pixel({2, y}) == Fondo && pixel({dimensioneInizio.width() - 3, y}) == Fondo;
            },
            20000);
        if (!aperta)
            return false;
        famiglia = 1;
        cifre.clear();
        cifre[1] = schermo(numeroFamiglia);
        return true;
    }

private slots:
    void initTestCase()
    {
        x = XvfbSession::current();
        QVERIFY(x);
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        // The program's own style and fonts, so the measures below are its.
        Avvio::preparaApplicazione();

        TestContext t;
        FrmInizio &f = t->form<FrmInizio>();
        f.ensurePolished();
        QMenuBar *barra = f.menuBar();
        barra->ensurePolished();
        barra->setGeometry(0, 0, f.width(), barra->sizeHint().height());
        voceAutore = barra->actionGeometry(f.get<Menu>("mnuAutore").action()).center();
        credito = rettangoloIn(f.get<Control>("Label5").widget(), &f).center();
        rigaSimboli = rettangoloIn(f.get<Control>("Label6", 2).widget(), &f).center();
        numeroFamiglia = rettangoloIn(f.get<Control>("Label3").widget(), &f);
        dimensioneInizio = f.size();

        frmAutore &a = t->form<frmAutore>();
        chiudi = rettangoloIn(a.get<Control>("Command1").widget(), &a).center();
    }

    void cleanup()
    {
        if (QTest::currentTestFailed()) {
            qWarning().noquote() << x->diagnostica(
                QStringLiteral("%1 %2, at: %3")
                    .arg(QString::fromLatin1(QTest::currentTestFunction()),
                         QString::fromLatin1(QTest::currentDataTag()), passo),
                &quadrivo);
            // The next row starts from a fresh program and a released button.
            xdo({QStringLiteral("mouseup"), QStringLiteral("1")});
            if (quadrivo.state() != QProcess::NotRunning) {
                quadrivo.kill();
                quadrivo.waitForFinished(5000);
            }
        }
    }

    void cleanupTestCase()
    {
        QVERIFY(carico.imposta(false));
        if (quadrivo.state() != QProcess::NotRunning) {
            quadrivo.kill();
            quadrivo.waitForFinished(5000);
        }
    }

    void theFirstPressAfterTheAuthorScreenChangesTheFamily_data()
    {
        QTest::addColumn<QString>("chiusura");
        // The pointer already rests on the target while the keyboard closes
        // the author screen: the press comes with no motion before it.
        QTest::addColumn<bool>("fermo");
        QTest::addColumn<QString>("bersaglio");
        QTest::addColumn<bool>("occupato");
        const std::pair<const char *, bool> chiusure[] = {
            {"mouse", false}, {"Return", false}, {"space", false}, {"Return", true}};
        for (bool occupato : {false, true})
            for (const auto &[chiusura, fermo] : chiusure)
                for (const char *bersaglio : {"Label5", "Label6_2"})
                    QTest::addRow("%s, closed with %s%s, %s", bersaglio, chiusura,
                                  fermo ? " under a resting pointer" : "",
                                  occupato ? "busy" : "idle")
                        << QString::fromLatin1(chiusura) << fermo << QString::fromLatin1(bersaglio)
                        << occupato;
    }

    void theFirstPressAfterTheAuthorScreenChangesTheFamily()
    {
        QFETCH(QString, chiusura);
        QFETCH(bool, fermo);
        QFETCH(QString, bersaglio);
        const QPoint dove = bersaglio == QLatin1String("Label5") ? credito : rigaSimboli;
        QFETCH(bool, occupato);
        QVERIFY(carico.imposta(occupato));
        if (quadrivo.state() == QProcess::NotRunning)
            QVERIFY(avvia());

        passo = QStringLiteral("menu Autore");
        QVERIFY(clic(voceAutore));
        const QString autore = x->waitForWindow(QStringLiteral("^Autore$"));
        QVERIFY2(!autore.isEmpty(), "the menu entry opened no author screen");

        passo = QStringLiteral("closing the author screen with ") + chiusura;
        if (chiusura == QLatin1String("mouse")) {
            QVERIFY(
                xdo({QStringLiteral("mousemove"), QStringLiteral("--window"), autore,
                     QStringLiteral("--sync"), QString::number(chiudi.x()),
                     QString::number(chiudi.y()), QStringLiteral("click"), QStringLiteral("1")}));
        } else {
            // The keyboard goes where the program put it; no window manager
            // moves it. The program gives it to the author screen a moment
            // after the window appears (later under load): a key sent before
            // that reaches the start screen, blocked behind the modal one.
            if (fermo)
                QVERIFY(sposta(dove));
            QVERIFY2(Scadenze::finche(
                         [&] { return x->xdotool({QStringLiteral("getwindowfocus")}) == autore; },
                         10000, 20),
                     "the author screen never took the keyboard");
            QVERIFY(xdo({QStringLiteral("key"), chiusura}));
        }
        QVERIFY2(Scadenze::finche([&] { return x->noWindow(QStringLiteral("^Autore$")); }, 10000),
                 "the author screen is still open");
        // The start screen is drawn again as it was: same family.
        QVERIFY2(
            Scadenze::finche([&] { return schermo(numeroFamiglia) == cifre[famiglia]; }, 10000),
            "the family number changed or was not drawn again");

        const int dopo = famiglia % 3 + 1;
        const auto cambiata = [&] {
            const QImage ora = schermo(numeroFamiglia);
            const auto nota = cifre.find(dopo);
            return nota != cifre.end() ? ora == nota->second : ora != cifre[famiglia];
        };
        passo = QStringLiteral("first press on ") + bersaglio;
        bool ok = false;
        if (bersaglio == QLatin1String("Label5")) {
            // The credit line acts as the button goes down.
            if (!fermo)
                QVERIFY(sposta(dove));
            QVERIFY(xdo({QStringLiteral("mousedown"), QStringLiteral("1")}));
            ok = Scadenze::finche(cambiata, 5000);
            QVERIFY(xdo({QStringLiteral("mouseup"), QStringLiteral("1")}));
        } else {
            if (!fermo)
                QVERIFY(sposta(dove));
            QVERIFY(xdo({QStringLiteral("click"), QStringLiteral("1")}));
            ok = Scadenze::finche(cambiata, 5000);
        }
        QVERIFY2(ok, qPrintable(QStringLiteral("the first press on %1 after closing the author "
                                               "screen with %2 left family %3")
                                    .arg(bersaglio, chiusura)
                                    .arg(famiglia)));
        famiglia = dopo;
        cifre.try_emplace(famiglia, schermo(numeroFamiglia));
        QCOMPARE(quadrivo.state(), QProcess::Running);
    }
};

QUADRIVO_XVFB_MAIN(TestPrimoClic)
#include "tst_primoclic.moc"
