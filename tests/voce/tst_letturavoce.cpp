#include "../drill/Alunno.h"
#include "FrasiRegistrate.h"
#include "platform/Fonts.h"
#include "platform/controls/Menu.h"
#include "report/frmNome.h"
#include "start/FrmInizio.h"
#include "voce/AvvioVoce.h"
#include "voce/ImpostazioniUtente.h"
#include "voce/LetturaVoce.h"
#include "voce/SintesiEspeak.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace ScreenTest;

class TestLetturaVoce : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    std::unique_ptr<Alunno> a;
    FrasiRegistrate *frasi = nullptr;

    // The voice on, speaking into the recording double.
    void voceAccesa(bool accesa = true)
    {
        auto motore = std::make_unique<FrasiRegistrate>();
        frasi = motore.get();
        auto voce = std::make_unique<LetturaVoce>(**t, std::move(motore));
        voce->setAttiva(accesa);
        (*t)->setVoce(std::move(voce));
    }
    // A series of type 8 (4700 u), thousands family.
    bool apriSerie()
    {
        a->preparaSerie(8);
        a->prossimeCifre(4, 7);
        return a->apri();
    }

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
        frasi = nullptr;
        settle();
    }

    void unEsercizioIntero()
    {
        voceAccesa();
        QVERIFY(apriSerie());
        QCOMPARE(frasi->frasi, QStringList{QStringLiteral("quattromilasettecento unità")});
        frasi->frasi.clear();

        // A wrong answer, typed key by key, then checked.
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->cancella();
        a->scrivi(QStringLiteral("4 uk  7  h  "));
        a->verifica();
        QCOMPARE(frasi->frasi,
                 (QStringList{"quattro", "migliaia", "sette", "centinaia", "Cancella la risposta",
                              "quattro", "migliaia", "sette", "centinaia",
                              "Verifica la risposta. Errato. Ti aiuto?"}));
        frasi->frasi.clear();

        // "No", wrong again, "No": the program steps in, then shows the answer.
        a->no();
        a->scrivi(QStringLiteral("4 uk  "));
        a->verifica();
        a->no();
        QCOMPARE(frasi->frasi,
                 (QStringList{"quattro", "migliaia", "Verifica la risposta. Errato. Ti aiuto?",
                              "Intervengo io"}));
        frasi->frasi.clear();
        a->ok();
        QCOMPARE(frasi->frasi,
                 QStringList{QStringLiteral("La soluzione è: quattro migliaia, sette centinaia, "
                                            "zero decine, zero unità")});
        frasi->frasi.clear();

        // The next exercise, answered right.
        a->prossimoEsercizio(8, 3, 1);
        a->avanti();
        QCOMPARE(frasi->frasi, QStringList{QStringLiteral("Avanti. tremilacento unità")});
        frasi->frasi.clear();
        a->scriviGiusta();
        a->verifica();
        QCOMPARE(frasi->frasi.last(), QStringLiteral("Verifica la risposta. Esatto"));
        QCOMPARE(frasi->frasi.size(), 9);
    }

    void laSoluzioneDopoIlSi()
    {
        voceAccesa();
        QVERIFY(apriSerie());
        a->scrivi(QStringLiteral("1 uk  "));
        a->verifica();
        frasi->frasi.clear();
        a->si();
        QCOMPARE(frasi->frasi,
                 QStringList{QStringLiteral("La soluzione è: quattro migliaia, sette centinaia, "
                                            "zero decine, zero unità")});
    }

    void f2ELaVoceDelMenuRileggonoLaDomanda()
    {
        voceAccesa();
        QVERIFY(apriSerie());
        Menu &ascolta = a->schermo().get<Menu>("mnuAscolta");
        QVERIFY(ascolta.action()->isVisible());
        frasi->frasi.clear();
        key(Qt::Key_F2);
        QCOMPARE(frasi->frasi, QStringList{QStringLiteral("quattromilasettecento unità")});
        // After a refusal the symbol asked is cleared: the question on screen
        // is read all the same.
        a->scrivi(QStringLiteral("1 uk  "));
        a->verifica();
        a->no();
        frasi->frasi.clear();
        ascolta.action()->trigger();
        QCOMPARE(frasi->frasi, QStringList{QStringLiteral("quattromilasettecento unità")});
    }

    void aVoceSpentaNienteEIlMenuNonCE()
    {
        voceAccesa(false);
        QVERIFY(apriSerie());
        QVERIFY(!a->schermo().get<Menu>("mnuAscolta").action()->isVisible());
        a->scrivi(QStringLiteral("4 uk  "));
        key(Qt::Key_F2);
        a->verifica();
        QVERIFY(frasi->frasi.isEmpty());
    }

    void senzaVoceIlMenuDelloSchermoNonCambia()
    {
        QVERIFY(apriSerie());
        QVERIFY(!a->schermo().get<Menu>("mnuAscolta").action()->isVisible());
        key(Qt::Key_F2);
        QCOMPARE(a->testo("lblNumero"), QStringLiteral("4700  u"));
    }

    void ilNomeLettoLetteraPerLettera()
    {
        voceAccesa();
        frmNome &nome = (*t)->form<frmNome>();
        QVERIFY(showActive(nome));
        click(nome.get<CommandButton>("Command1", 5)); // F
        key(Qt::Key_H);
        click(nome.get<CommandButton>("Command1", 26)); // ,
        click(nome.get<CommandButton>("Command1", frmNome::Cancella));
        QCOMPARE(frasi->frasi, (QStringList{"effe", "acca", "virgola", "cancella"}));
    }

    void senzaVoceDisponibileUnSoloAvviso()
    {
        voceAccesa();
        QVERIFY(apriSerie());
        frasi->fallisci(QStringLiteral("manca la voce italiana"));
        a->premi(4);
        frasi->fallisci(QStringLiteral("manca la voce italiana"));
        QCOMPARE(t->notices->notices, QStringList{LetturaVoce::NonDisponibile});
        // Silent from then on; the drill goes on.
        frasi->frasi.clear();
        a->premi(10);
        QVERIFY(frasi->frasi.isEmpty());
        QCOMPARE(a->testo("LblRisultato"), QStringLiteral("4 uk  "));
        QVERIFY(t->errors->errors.isEmpty());
    }

    // The real engine, made to fail: a library that is not there, then an
    // audio device that is not there.
    void ilSintetizzatoreCheFallisceLoDiceUnaVolta_data()
    {
        QTest::addColumn<QString>("libreria");
        QTest::addColumn<QString>("dispositivo");
        QTest::newRow("nessuna libreria") << "libquadrivo-nessuna-voce.so.1"
                                          << "null";
        QTest::newRow("nessun dispositivo") << "libespeak-ng.so.1"
                                            << "quadrivo_nessun_dispositivo";
    }
    void ilSintetizzatoreCheFallisceLoDiceUnaVolta()
    {
        QFETCH(QString, libreria);
        QFETCH(QString, dispositivo);
        auto motore = std::make_unique<SintesiEspeak>(libreria, dispositivo);
        SintesiEspeak *sintesi = motore.get();
        auto voce = std::make_unique<LetturaVoce>(**t, std::move(motore));
        voce->setAttiva(true);
        LetturaVoce *lettura = voce.get();
        (*t)->setVoce(std::move(voce));
        QSignalSpy suoni(sintesi, &SintesiEspeak::suonoIniziato);
        lettura->lettera(QStringLiteral("A"));
        QTRY_COMPARE_WITH_TIMEOUT(t->notices->notices.size(), 1, 20000);
        QCOMPARE(t->notices->notices.first(), LetturaVoce::NonDisponibile);
        lettura->lettera(QStringLiteral("B"));
        lettura->lettera(QStringLiteral("C"));
        QTRY_VERIFY_WITH_TIMEOUT(!sintesi->occupata(), 20000);
        QTest::qWait(100);
        QCOMPARE(t->notices->notices.size(), 1);
        QCOMPARE(suoni.size(), 0);
    }

    // A sentence overtaken by the next one is never heard: the key pressed
    // cuts it, and the new one starts at once.
    void unaFraseInterrotta()
    {
        SintesiEspeak sintesi(QStringLiteral("libespeak-ng.so.1"), QStringLiteral("null"));
        QStringList avvisi;
        sintesi.nonDisponibile = [&](const QString &m) { avvisi << m; };
        QSignalSpy suoni(&sintesi, &SintesiEspeak::suonoIniziato);
        const QString lunga = QStringLiteral(
            "La soluzione è: quattro migliaia, sette centinaia, zero decine, zero unità");
        // Overtaken while it is being made: never played.
        sintesi.pronuncia(lunga);
        sintesi.pronuncia(QStringLiteral("quattro"));
        QTRY_VERIFY_WITH_TIMEOUT(suoni.size() == 1 || !avvisi.isEmpty(), 20000);
        QVERIFY2(avvisi.isEmpty(), qPrintable(avvisi.join(';')));
        QCOMPARE(suoni.at(0).at(0).toString(), QStringLiteral("quattro"));
        QVERIFY2(avvisi.isEmpty(), qPrintable(avvisi.join(';')));
        QTRY_VERIFY_WITH_TIMEOUT(!sintesi.occupata(), 20000);

        // Saying a sentence never holds up the screen: the sound is made on
        // another thread (here a long text, a good part of a second to make).
        const QString moltoLunga = QStringList(8, lunga).join(QStringLiteral(". "));
        suoni.clear();
        QElapsedTimer orologio;
        orologio.start();
        sintesi.pronuncia(moltoLunga);
        const qint64 attesa = orologio.elapsed();
        QVERIFY(sintesi.occupata());
        QVERIFY2(attesa < 50, qPrintable(QString::number(attesa)));
        // And a key that comes meanwhile cuts it: only the key is heard.
        sintesi.pronuncia(QStringLiteral("migliaia"));
        QTRY_COMPARE_WITH_TIMEOUT(suoni.size(), 1, 20000);
        QCOMPARE(suoni.at(0).at(0).toString(), QStringLiteral("migliaia"));
        QTest::qWait(200);
        QCOMPARE(suoni.size(), 1);
    }

    // The start screen's menu "Voce": two choices with a check mark, kept
    // in the user's settings file.
    void ilMenuVoceDelloSchermoIniziale()
    {
        QTemporaryDir cartella;
        const QString file = cartella.filePath(QStringLiteral("Quadrivo/Quadrivo.conf"));
        AvvioVoce::installa(**t, ImpostazioniUtente(file));
        FrmInizio &inizio = (*t)->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        Menu &voce = inizio.get<Menu>("mnuVoce");
        Menu &lettura = inizio.get<Menu>("mnuLettura");
        Menu &leggibili = inizio.get<Menu>("mnuLeggibili");
        QCOMPARE(voce.action()->text(), QStringLiteral("&Voce"));
        QCOMPARE(lettura.action()->text(), QStringLiteral("Leggi ad alta voce"));
        QCOMPARE(leggibili.action()->text(), QStringLiteral("Caratteri ad alta leggibilità"));
        QVERIFY(lettura.action()->isCheckable());
        QVERIFY(leggibili.action()->isCheckable());
        QVERIFY(voce.action()->menu()->actions().contains(lettura.action()));
        QVERIFY(voce.action()->menu()->actions().contains(leggibili.action()));
        QVERIFY(!lettura.Checked());
        QVERIFY(!leggibili.Checked());
        // Assistive tools hear both as choices with their state.
        auto statoLetto = [&](const QString &nome) {
            QAccessibleInterface *menu =
                QAccessible::queryAccessibleInterface(voce.action()->menu());
            for (int i = 0; menu && i < menu->childCount(); ++i)
                if (menu->child(i)->text(QAccessible::Name) == nome)
                    return menu->child(i)->state();
            return QAccessible::State();
        };
        QVERIFY(statoLetto(QStringLiteral("Leggi ad alta voce")).checkable);
        QVERIFY(!statoLetto(QStringLiteral("Leggi ad alta voce")).checked);
        QVERIFY(statoLetto(QStringLiteral("Caratteri ad alta leggibilità")).checkable);
        // Nothing written until the user chooses.
        QVERIFY(!QFile::exists(file));

        lettura.action()->trigger();
        QVERIFY(lettura.Checked());
        QVERIFY(statoLetto(QStringLiteral("Leggi ad alta voce")).checked);
        QVERIFY((*t)->voce().attiva());
        leggibili.action()->trigger();
        QVERIFY(leggibili.Checked());
        QVERIFY((*t)->caratteriLeggibili().attivi());
        QCOMPARE(QFontInfo(inizio.get<Control>("Option1", 0).widget()->font()).family(),
                 QStringLiteral("OpenDyslexic"));
        {
            QSettings letto(file, QSettings::IniFormat);
            QCOMPARE(letto.value("lettura/voce").toBool(), true);
            QCOMPARE(letto.value("lettura/caratteriLeggibili").toBool(), true);
        }

        // The next run starts as this one was left.
        TestContext altro;
        AvvioVoce::installa(*altro, ImpostazioniUtente(file));
        QVERIFY(altro->voce().attiva());
        QVERIFY(altro->caratteriLeggibili().attivi());
        FrmInizio &inizio2 = altro->form<FrmInizio>();
        QVERIFY(inizio2.get<Menu>("mnuLettura").Checked());
        QVERIFY(inizio2.get<Menu>("mnuLeggibili").Checked());
        inizio2.Unload();

        lettura.action()->trigger();
        leggibili.action()->trigger();
        QVERIFY(!lettura.Checked());
        QVERIFY(!(*t)->voce().attiva());
        QVERIFY(!(*t)->caratteriLeggibili().attivi());
        QSettings letto(file, QSettings::IniFormat);
        QCOMPARE(letto.value("lettura/voce").toBool(), false);
        QCOMPARE(letto.value("lettura/caratteriLeggibili").toBool(), false);
    }

    // Alt and the underlined letter open the menu "Voce"; arrows and Enter
    // turn a switch on, and the mark shows it.
    void iDueInterruttoriDallaTastiera()
    {
        QTemporaryDir cartella;
        AvvioVoce::installa(**t, ImpostazioniUtente(cartella.filePath(QStringLiteral("q.conf"))));
        FrmInizio &inizio = (*t)->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        QMenu *tendina = inizio.get<Menu>("mnuVoce").action()->menu();
        for (const char *nome : {"mnuLettura", "mnuLeggibili"}) {
            QTest::keyClick(&inizio, Qt::Key_V, Qt::AltModifier);
            QTRY_COMPARE(QApplication::activePopupWidget(), tendina);
            QTRY_VERIFY(tendina->activeAction());
            Menu &voce = inizio.get<Menu>(nome);
            while (tendina->activeAction() != voce.action()) {
                const QAction *prima = tendina->activeAction();
                QTest::keyClick(tendina, Qt::Key_Down);
                QVERIFY(tendina->activeAction() != prima);
            }
            QTest::keyClick(tendina, Qt::Key_Return);
            QTRY_VERIFY(!QApplication::activePopupWidget());
            QVERIFY2(voce.Checked(), nome);
        }
        QVERIFY((*t)->voce().attiva());
        QVERIFY((*t)->caratteriLeggibili().attivi());
    }
};

QTEST_MAIN(TestLetturaVoce)
#include "tst_letturavoce.moc"
