#include "app/Avvio.h"
#include "classe/CodiceScheda.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/controls/Menu.h"
#include "registro/ArchivioRegistro.h"
#include "registro/frmRegistro.h"
#include "registro/frmVerifiche.h"
#include "report/frmNome.h"
#include "start/FrmInizio.h"
#include "support/Scadenze.h"
#include "support/TestDoubles.h"
#include "support/XvfbSession.h"
#include "verifica/SerieDaCodice.h"
#include "verifica/frmVerifica.h"

#include <QApplication>
#include <QMenuBar>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

// The real program under X, used with the mouse alone as a pupil and then a
// teacher would: "Verifica con codice" from the start screen's menu, the
// code typed on the on-screen keys, a name, ten exercises answered right and
// wrong, then the register's view, whose class table shows that pupil's row
// for the code, each cell the colour of its outcome.
//
// This process runs on the same X server only to measure where the controls
// are (the program's own style and fonts) and to look at the display; its
// screens are laid out but never mapped.

namespace {

QPoint centroIn(const QWidget *w, const QWidget *finestra)
{
    return QRect(w->mapTo(finestra, QPoint(0, 0)), w->size()).center();
}

// Laid out at its design size without appearing on the display.
void preparaSenzaMostrare(Form &f)
{
    f.setAttribute(Qt::WA_DontShowOnScreen);
    f.show();
    QApplication::processEvents();
}

} // namespace

class TestVerificaX11 : public QObject
{
    Q_OBJECT

    XvfbSession *x = nullptr;
    QProcess quadrivo;
    QTemporaryDir lavoro;
    QString passo;
    QString registro;

    CodiceScheda::Scelta scelta;
    QString codice;
    const QString nome = QStringLiteral("ADA");

    // Where things are, in their windows' coordinates.
    QPoint voceVerifica, voceRegistro, voceVerifiche, avanti;
    QList<QPoint> tastiCodice, tastiNome;
    QList<QPoint> tastierino; // Command1(0..17)
    QPoint si;
    QList<QList<int>> tastiRisposte; // the keys of each exercise's answer
    QList<QPoint> celle;             // the class table's first row, exercises 1..10

    bool xdo(const QStringList &args)
    {
        bool ok = false;
        x->xdotool(args, &ok);
        return ok;
    }

    QPoint origineDi(const QString &id)
    {
        QMap<QString, QString> g;
        for (const QString &riga :
             x->xdotool({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), id})
                 .split(QLatin1Char('\n')))
            g.insert(riga.section(QLatin1Char('='), 0, 0), riga.section(QLatin1Char('='), 1));
        return {g.value(QStringLiteral("X")).toInt(), g.value(QStringLiteral("Y")).toInt()};
    }

    bool clic(const QPoint &origine, const QPoint &p)
    {
        return x->movePointer(origine + p) && xdo({QStringLiteral("click"), QStringLiteral("1")});
    }

    QRgb pixel(const QPoint &p) const
    {
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, p.x(), p.y(), 1, 1)
            .toImage()
            .pixel(0, 0);
    }

private slots:
    void initTestCase()
    {
        x = XvfbSession::current();
        QVERIFY(x);
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
        Avvio::preparaApplicazione();
        registro = lavoro.filePath(QStringLiteral("dati/registro.sqlite"));
        // The program started below writes its register there.
        qputenv("QUADRIVO_REGISTRO", ("sqlite " + registro).toLocal8Bit());

        scelta.tipoNumeri = 1;
        scelta.unita = 1;
        scelta.righe = 10;
        scelta.seme = 9;
        codice = CodiceScheda::Componi(scelta);

        TestContext t;
        FrmInizio &inizio = t->form<FrmInizio>();
        inizio.ensurePolished();
        QMenuBar *barra = inizio.menuBar();
        barra->ensurePolished();
        barra->setGeometry(0, 0, inizio.width(), barra->sizeHint().height());
        voceVerifica = barra->actionGeometry(inizio.get<Menu>("mnuVerifica").action()).center();
        voceRegistro = barra->actionGeometry(inizio.get<Menu>("mnuRegistro").action()).center();

        frmVerifica &v = t->form<frmVerifica>();
        preparaSenzaMostrare(v);
        for (int i = 0; i < frmVerifica::CancellaCodice; ++i)
            tastiCodice << centroIn(v.get<Control>("Command1", i).widget(), &v);
        for (int i = 0; i < frmVerifica::CancellaNome; ++i)
            tastiNome << centroIn(v.get<Control>("Command2", i).widget(), &v);
        avanti = centroIn(v.get<Control>("Option4").widget(), &v);
        v.Unload();

        // The drill on this code: its keys, and the keys of each answer.
        auto serie = std::make_unique<SerieDaCodice>(scelta, nome, t->stato);
        QList<QString> risposte;
        for (int n = 1; n <= serie->quanti(); ++n) {
            StatoCondiviso s;
            serie->esercizio(n, s);
            risposte << s.Risposta;
        }
        t->setFonteEsercizi(std::move(serie));
        frmOperativo &d = t->form<frmOperativo>();
        preparaSenzaMostrare(d);
        for (int i = 0; i <= 17; ++i)
            tastierino << centroIn(d.get<Control>("Command1", i).widget(), &d);
        si = centroIn(d.get<Control>("Command3", 1).widget(), &d);
        for (const QString &r : risposte)
            tastiRisposte << d.TastiPer(r);
        d.Unload();

        QTemporaryDir dir;
        const auto imp = ImpostazioniRegistro::sqlite(dir.filePath("r.sqlite"));
        frmRegistro &r = t->screens().get<frmRegistro>([&] { return new frmRegistro(*t, imp); });
        QMenuBar *barraRegistro = r.menuBar();
        barraRegistro->ensurePolished();
        barraRegistro->setGeometry(0, 0, r.width(), barraRegistro->sizeHint().height());
        voceVerifiche =
            barraRegistro->actionGeometry(r.get<Menu>("mnuVerifiche").action()).center();
        {
            ArchivioRegistro a(imp, "misura");
            SerieRegistrata s;
            s.codice = "m";
            s.inizio = s.fine = QDateTime::currentDateTime();
            s.nome = nome;
            s.verifica = codice;
            QVERIFY(a.scrivi(s) == ArchivioRegistro::Ok);
        }
        frmVerifiche &f = t->screens().get<frmVerifiche>([&] { return new frmVerifiche(*t, imp); });
        preparaSenzaMostrare(f);
        QTableView *tabella = f.tabellaClasse();
        for (int c = 1; c <= 10; ++c) {
            const QRect cella = tabella->visualRect(tabella->model()->index(0, c));
            // Near the cell's left edge, clear of its letter.
            celle << tabella->viewport()->mapTo(&f,
                                                cella.topLeft() + QPoint(3, cella.height() / 2));
        }
        t->screens().unloadAll();
    }

    void cleanupTestCase()
    {
        if (quadrivo.state() != QProcess::NotRunning) {
            quadrivo.kill();
            quadrivo.waitForFinished(5000);
        }
    }

    void cleanup()
    {
        if (QTest::currentTestFailed())
            qWarning().noquote() << x->diagnostica(
                QStringLiteral("%1, at: %2")
                    .arg(QString::fromLatin1(QTest::currentTestFunction()), passo),
                &quadrivo);
    }

    void unaVerificaConIlMouse_eLaSuaRigaNelRegistro()
    {
        passo = QStringLiteral("start");
        const QString inizio = x->avviaQuadrivo(quadrivo, lavoro.path());
        QVERIFY(!inizio.isEmpty());
        const QPoint oInizio = origineDi(inizio);

        passo = QStringLiteral("menu Verifica");
        const qsizetype finestre = x->windows().size();
        QVERIFY(clic(oInizio, voceVerifica));
        // The menu is a window of its own: its one entry is chosen by key.
        QVERIFY2(Scadenze::finche([&] { return x->windows().size() > finestre; }, 10000),
                 "the menu did not open");
        QVERIFY(xdo({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Return")}));
        const QString verifica = x->waitForWindow(QStringLiteral("^VERIFICA CON CODICE$"));
        QVERIFY2(!verifica.isEmpty(), "no code screen");
        const QPoint oVerifica = origineDi(verifica);

        passo = QStringLiteral("the code on the on-screen keys");
        for (QChar c : codice)
            if (c != QLatin1Char('-'))
                QVERIFY(clic(oVerifica, tastiCodice.at(int(CodiceScheda::Alfabeto.indexOf(c)))));
        QVERIFY(clic(oVerifica, avanti));
        passo = QStringLiteral("the name on the on-screen keys");
        for (QChar c : nome) {
            int i = 0;
            while (QLatin1String(frmNome::Lettere[i]) != c)
                ++i;
            QVERIFY(clic(oVerifica, tastiNome.at(i)));
        }
        QVERIFY(clic(oVerifica, avanti));

        passo = QStringLiteral("the drill on the code");
        const QString esercizi = x->waitForWindow(QStringLiteral("^SCOMPOSIZIONE$"));
        QVERIFY2(!esercizi.isEmpty(), "the drill did not open");
        QVERIFY(x->noWindow(QStringLiteral("^VERIFICA CON CODICE$")));
        const QPoint oEsercizi = origineDi(esercizi);
        for (int n = 1; n <= 10; ++n) {
            passo = QStringLiteral("exercise %1").arg(n);
            if (n % 2) {
                for (int tasto : tastiRisposte.at(n - 1))
                    QVERIFY(clic(oEsercizi, tastierino.at(tasto)));
                QVERIFY(clic(oEsercizi, tastierino.at(15)));
            } else {
                // A wrong answer, then "Si": the solution is shown.
                QVERIFY(clic(oEsercizi, tastierino.at(1)));
                QVERIFY(clic(oEsercizi, tastierino.at(15)));
                QTest::qWait(200);
                QVERIFY(clic(oEsercizi, si));
            }
            if (n < 10)
                QVERIFY(clic(oEsercizi, tastierino.at(16)));
        }

        passo = QStringLiteral("the series in the register");
        QList<SerieRegistrata> serie;
        const bool scritta = Scadenze::finche(
            [&] {
                ArchivioRegistro a(ImpostazioniRegistro::sqlite(registro), "leggi");
                serie = a.tutte();
                return serie.size() == 1 && serie.first().terminata;
            },
            20000, 200);
        QVERIFY2(scritta, "the register has no ended series");
        const SerieRegistrata s = serie.first();
        QCOMPARE(s.verifica, codice);
        QCOMPARE(s.nome, nome);
        QCOMPARE(s.esercizi.size(), 10);
        for (int n = 1; n <= 10; ++n)
            QCOMPARE(s.esercizi[n - 1].esito, n % 2 ? int(SerieRegistrata::PrimoTentativo)
                                                    : int(SerieRegistrata::SoluzioneChiesta));

        passo = QStringLiteral("the register's view");
        QVERIFY(xdo({QStringLiteral("windowraise"), inizio}));
        QTest::qWait(200);
        QVERIFY(clic(oInizio, voceRegistro));
        const QString vista = x->waitForWindow(QStringLiteral("^Registro$"));
        QVERIFY2(!vista.isEmpty(), "the register's view did not open");
        QVERIFY(clic(origineDi(vista), voceVerifiche));
        const QString tabella = x->waitForWindow(QStringLiteral("^Verifiche$"));
        QVERIFY2(!tabella.isEmpty(), "the verifiche did not open");
        const QPoint oTabella = origineDi(tabella);
        passo = QStringLiteral("the pupil's row, coloured by outcome");
        const bool colorata = Scadenze::finche(
            [&] {
                for (int n = 1; n <= 10; ++n) {
                    const QColor atteso = n % 2 ? QColor(150, 225, 150) : QColor(255, 205, 130);
                    if (pixel(oTabella + celle.at(n - 1)) != atteso.rgb())
                        return false;
                }
                return true;
            },
            10000, 200);
        QVERIFY2(colorata, qPrintable(x->screenshot(QStringLiteral("verifica-tabella"))));
        quadrivo.kill();
        quadrivo.waitForFinished(5000);
    }
};

QUADRIVO_XVFB_MAIN(TestVerificaX11)
#include "tst_verificax11.moc"
