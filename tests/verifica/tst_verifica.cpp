#include "classe/CodiceScheda.h"
#include "classe/FrmRifaiCodice.h"
#include "classe/UnitaClasse.h"
#include "core/AppContext.h"
#include "core/FonteEsercizi.h"
#include "drill/Alunno.h"
#include "platform/controls/Menu.h"
#include "platform/controls/TextBox.h"
#include "report/frmNome.h"
#include "sheets/RigheScheda.h"
#include "start/FrmInizio.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"
#include "verifica/MenuVerifica.h"
#include "verifica/SerieDaCodice.h"
#include "verifica/frmVerifica.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <random>

using namespace ScreenTest;

namespace {

// What one exercise of a series showed: the sheet's row made from the
// question, and the key's row made from the expected answer.
struct Visto
{
    QString alunni, docenti;
    bool operator==(const Visto &) const = default;
};

CodiceScheda::Scelta scelta(int tipoNumeri, int unita, int righe, std::uint32_t seme)
{
    CodiceScheda::Scelta s;
    s.tipoNumeri = tipoNumeri;
    s.unita = unita;
    s.righe = righe;
    s.seme = seme;
    return s;
}

} // namespace

// A verifica as pupils take it: a code typed on the on-screen keys, a name,
// then the drill on the rows of that code's sheet.
class TestVerifica : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;

    frmVerifica &verifica()
    {
        auto *f = (*t)->screens().find<frmVerifica>();
        Q_ASSERT(f);
        return *f;
    }

    // "Verifica con codice" from the start screen's menu.
    frmVerifica &apriVerifica()
    {
        auto &inizio = (*t)->form<FrmInizio>();
        if (!inizio.isVisible())
            showActive(inizio);
        inizio.get<Menu>("mnuVerificaCodice").action()->trigger();
        auto *f = (*t)->screens().find<frmVerifica>();
        if (!f)
            qFatal("la verifica non si è aperta");
        showActive(*f);
        return *f;
    }

    // Types on the on-screen keys, with the mouse.
    void clicca(const QString &testo)
    {
        frmVerifica &f = verifica();
        for (QChar c : testo) {
            if (c == QLatin1Char('-'))
                continue;
            if (!f.ChiedeNome()) {
                const int i = int(CodiceScheda::Alfabeto.indexOf(c));
                QVERIFY2(i >= 0, qPrintable(QString(c)));
                click(f.get<CommandButton>("Command1", i));
            } else {
                int i = 0;
                while (i < frmVerifica::CancellaNome && QLatin1String(frmNome::Lettere[i]) != c)
                    ++i;
                QVERIFY2(i < frmVerifica::CancellaNome, qPrintable(QString(c)));
                click(f.get<CommandButton>("Command2", i));
            }
        }
    }
    void avanti() { mouseDown(verifica().get<OptionButton>("Option4")); }
    QString avviso() { return verifica().get<Label>("lblAvviso").Caption(); }

    // Code and name typed with the mouse: the drill opens on the code.
    bool entra(const QString &codice, const QString &nome)
    {
        apriVerifica();
        clicca(codice);
        avanti();
        if (!verifica().ChiedeNome())
            return false;
        clicca(nome);
        avanti();
        settle();
        return (*t)->screens().isLoaded<frmOperativo>();
    }

    // Answers every exercise of the open series right, noting what it asked.
    QList<Visto> rispondiATutto(Alunno &a)
    {
        QList<Visto> visti;
        for (;;) {
            const StatoCondiviso &s = a.stato();
            const QString riga = RigheScheda::RigaAlunni(s.Numero, s.SimboloRichiesto);
            visti << Visto{riga, RigheScheda::RigaDocenti(riga, s.Risposta)};
            a.scriviGiusta();
            a.verifica();
            // Some units' answers put two digits side by side, which the
            // keypad cannot type: the pupil asks for the solution.
            if (a.inPrimoPiano("fraAiuto"))
                a.si();
            if (a.inPrimoPiano("fraAvviso"))
                break;
            if (visti.size() > 30)
                break;
            a.avanti();
        }
        return visti;
    }

    // The rows "Rifai da codice" shows for the code, pupils' then teachers'.
    QList<Visto> righeRifai(const QString &codice)
    {
        auto &f = (*t)->form<FrmRifaiCodice>();
        f.get<TextBox>("txtCodice").setCaption(codice);
        click(f.get<CommandButton>("cmdMostra"));
        QStringList alunni, docenti;
        for (int i = 1; i <= 30; ++i)
            alunni << f.get<Label>("LblRiga", i).Caption();
        click(f.get<CommandButton>("cmdDocenti"));
        for (int i = 1; i <= 30; ++i)
            docenti << f.get<Label>("LblRiga", i).Caption();
        f.Unload();
        QList<Visto> righe;
        for (int i = 0; i < 30 && !alunni.at(i).isEmpty(); ++i)
            righe << Visto{alunni.at(i), docenti.at(i)};
        return righe;
    }

private slots:
    void init()
    {
        t = std::make_unique<TestContext>();
        MenuVerifica::Installa(**t);
        (*t).clock->setSecondsSinceMidnight(36000);
    }
    void cleanup()
    {
        if (t)
            (*t)->screens().unloadAll();
        settle();
        QVERIFY(t->errors->errors.isEmpty());
        t.reset();
    }

    // Alt and the underlined letter open the menu "Verifica"; Enter on its
    // entry opens the code screen.
    void ilMenuDallaTastiera()
    {
        auto &inizio = (*t)->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        QMenu *tendina = inizio.get<Menu>("mnuVerifica").action()->menu();
        QTest::keyClick(&inizio, Qt::Key_I, Qt::AltModifier);
        QTRY_COMPARE(QApplication::activePopupWidget(), tendina);
        QTRY_COMPARE(tendina->activeAction(), inizio.get<Menu>("mnuVerificaCodice").action());
        QTest::keyClick(tendina, Qt::Key_Return);
        QTRY_VERIFY((*t)->screens().find<frmVerifica>());
    }

    void esercizi_sonoLeRigheDiRifaiDaCodice_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("unita");
        QTest::addColumn<int>("righe");
        for (int tipo = 1; tipo <= 3; ++tipo)
            for (int unita = 0; unita < UnitaClasse::Conteggio(); ++unita)
                for (int righe : {10, 20})
                    QTest::addRow("numeri %d, unità %d (%s), %d righe", tipo, unita,
                                  qPrintable(UnitaClasse::Descrizione(unita)), righe)
                        << tipo << unita << righe;
    }
    void esercizi_sonoLeRigheDiRifaiDaCodice()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, unita);
        QFETCH(int, righe);
        const QString codice = CodiceScheda::Componi(
            scelta(tipoNumeri, unita, righe, 1000u + std::uint32_t(unita * 7 + tipoNumeri)));
        const QList<Visto> carta = righeRifai(codice);
        QCOMPARE(carta.size(), righe);

        QVERIFY(entra(codice, QStringLiteral("ADA")));
        Alunno a(*t);
        QCOMPARE(a.testo("lblCodice"), QStringLiteral("Verifica ") + codice);
        const QList<Visto> schermo = rispondiATutto(a);
        QCOMPARE(schermo.size(), righe);
        for (int i = 0; i < righe; ++i) {
            QCOMPARE(schermo.at(i).alunni, carta.at(i).alunni);
            QCOMPARE(schermo.at(i).docenti, carta.at(i).docenti);
        }
        // The series ends after the code's last row, with the end frame.
        QCOMPARE(int(a.stato().NumeroEsercizio), righe);
        QVERIFY(a.inPrimoPiano("fraAvviso"));
        QCOMPARE(a.framesEnabled(), 1);
    }

    void duePupilli_stessoCodice_stessiEserciziNelloStessoOrdine()
    {
        const QString codice = CodiceScheda::Componi(scelta(3, 2, 20, 4242));
        QList<Visto> primo, secondo;
        {
            QVERIFY(entra(codice, QStringLiteral("ADA")));
            Alunno a(*t);
            primo = rispondiATutto(a);
            // At the end frame the keypad is off: the window's close box.
            a.schermo().close();
            settle();
        }
        // Another pupil, later, with other draws pending for the drill.
        (*t).clock->advance(3600.7);
        (*t).random->script({0.9, 0.1, 0.5, 0.3});
        {
            QVERIFY(entra(codice, QStringLiteral("BRUNO")));
            Alunno a(*t);
            QCOMPARE(a.stato().NomeAlunno, QStringLiteral("BRUNO"));
            secondo = rispondiATutto(a);
        }
        QCOMPARE(primo.size(), 20);
        QVERIFY(primo == secondo);
        QCOMPARE((*t).random->draws, 0);
    }

    void codiceSbagliato_rifiutatoConIlMotivo_data()
    {
        QTest::addColumn<int>("posizione");
        for (int i = 0; i < CodiceScheda::Lunghezza; ++i)
            QTest::addRow("carattere %d", i + 1) << i;
    }
    void codiceSbagliato_rifiutatoConIlMotivo()
    {
        QFETCH(int, posizione);
        QString codice = CodiceScheda::Componi(scelta(1, 0, 10, 777));
        codice.remove(QLatin1Char('-'));
        // Every other character in that place: none is another series.
        for (QChar c : CodiceScheda::Alfabeto) {
            if (c == codice.at(posizione))
                continue;
            QString sbagliato = codice;
            sbagliato[posizione] = c;
            QString errore;
            QVERIFY2(!SerieDaCodice::Leggi(sbagliato, &errore), qPrintable(sbagliato));
            QVERIFY(errore.contains(QStringLiteral("controlla")));
        }
        // And on screen, typed with the mouse.
        QString sbagliato = codice;
        sbagliato[posizione] =
            codice.at(posizione) == QLatin1Char('5') ? QLatin1Char('6') : QLatin1Char('5');
        apriVerifica();
        clicca(sbagliato);
        avanti();
        QCOMPARE(avviso(),
                 QStringLiteral("Il codice non è quello di una scheda: controlla di averlo "
                                "copiato bene."));
        QVERIFY(!verifica().ChiedeNome());
        QVERIFY(!(*t)->screens().isLoaded<frmOperativo>());
        QVERIFY(!(*t)->fonteEsercizi());
        // Corrected with CANCELLA, it is taken.
        for (int i = posizione; i < CodiceScheda::Lunghezza; ++i)
            click(verifica().get<CommandButton>("Command1", frmVerifica::CancellaCodice));
        QCOMPARE(verifica().get<Label>("lblTesto").Caption(),
                 posizione == 0 ? QStringLiteral("?")
                                : (codice.left(posizione).size() > 3
                                       ? codice.left(3) + "-" + codice.mid(3, posizione - 3)
                                       : codice.left(posizione)));
        clicca(codice.mid(posizione));
        QVERIFY(avviso().isEmpty());
        avanti();
        QVERIFY(verifica().ChiedeNome());
    }

    void codiceCorto_eCarattereCheNonCE_rifiutati()
    {
        apriVerifica();
        clicca(QStringLiteral("K7Q"));
        avanti();
        QCOMPARE(avviso(), QStringLiteral("Il codice ha 6 caratteri (per esempio K7Q-3PZ), ne "
                                          "sono stati scritti 3."));
        // U is no code's letter: the keyboard types it, the check refuses it.
        key(Qt::Key_U);
        key(Qt::Key_A);
        key(Qt::Key_B);
        avanti();
        QVERIFY(avviso().contains(QStringLiteral("\"U\"")));
        QVERIFY(!verifica().ChiedeNome());
    }

    void codiceDi30Righe_rifiutatoSulloSchermo()
    {
        const QString codice = CodiceScheda::Componi(scelta(1, 0, 30, 12));
        QVERIFY(CodiceScheda::Leggi(codice));
        apriVerifica();
        clicca(codice);
        avanti();
        QCOMPARE(avviso(), QStringLiteral("Questo codice è di una scheda di 30 esercizi: si fa "
                                          "solo su carta. Sullo schermo si fanno le schede di "
                                          "10 o 20 esercizi."));
        QVERIFY(!verifica().ChiedeNome());
        QVERIFY(!(*t)->screens().isLoaded<frmOperativo>());
    }

    void tastiera_codiceENome()
    {
        const QString codice = CodiceScheda::Componi(scelta(2, 1, 10, 31337));
        apriVerifica();
        // Typed in lower case, with keypad digits where there are digits.
        for (QChar c : codice) {
            if (c == QLatin1Char('-'))
                continue;
            if (c.isDigit())
                keypad(Qt::Key(Qt::Key_0 + c.digitValue()));
            else
                key(Qt::Key(c.unicode()));
        }
        QCOMPARE(verifica().get<Label>("lblTesto").Caption(), codice);
        key(Qt::Key_Return);
        QVERIFY(verifica().ChiedeNome());
        QCOMPARE(verifica().get<Label>("lblTesto").Caption(), QStringLiteral("?"));
        key(Qt::Key_Return);
        QCOMPARE(avviso(), QStringLiteral("Scrivi il tuo nome, poi premi AVANTI."));
        for (Qt::Key k : {Qt::Key_L, Qt::Key_U, Qt::Key_C, Qt::Key_X, Qt::Key_Backspace, Qt::Key_A})
            key(k);
        QCOMPARE(verifica().get<Label>("lblTesto").Caption(), QStringLiteral("LUCA"));
        key(Qt::Key_Return);
        settle();
        QVERIFY(!(*t)->screens().isLoaded<frmVerifica>());
        QVERIFY((*t)->screens().isLoaded<frmOperativo>());
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("LUCA"));
        QCOMPARE((*t)->fonteEsercizi()->codice(), codice);
        // The Enter that opened the drill types nothing there.
        Alunno a(*t);
        QCOMPARE(a.testo("LblRisultato"), QStringLiteral("?"));
        QCOMPARE(int(a.stato().NumeroEsercizio), 1);
    }

    void esci_nonApreNulla()
    {
        apriVerifica();
        clicca(QStringLiteral("K7Q"));
        key(Qt::Key_Escape);
        settle();
        QVERIFY(!(*t)->screens().isLoaded<frmVerifica>());
        QVERIFY(!(*t)->screens().isLoaded<frmOperativo>());
        QVERIFY(!(*t)->fonteEsercizi());
    }

    // What "Vai" draws next is the same with or without a verifica before.
    void laSerieNormale_nonCambia()
    {
        auto eserciziNormali = [](TestContext &c) {
            Alunno a(c);
            StatoCondiviso &s = a.stato();
            FamiglieSimboli::applica(s, 3);
            s.FamigliaSimboli = 3;
            s.TipoNumeri = 3;
            s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi e con la virgola");
            s.NumeroEsercizio = 4;
            QStringList domande;
            a.apri();
            for (int i = 0; i < 3; ++i) {
                domande << QString::number(s.NumeroEsercizio) + a.testo("lblNumero") + "=" +
                               s.Risposta;
                a.scriviGiusta();
                a.verifica();
                a.avanti();
            }
            return domande;
        };
        TestContext senza;
        senza.clock->setSecondsSinceMidnight(36000);
        const QStringList attese = eserciziNormali(senza);
        senza->screens().unloadAll();

        showActive((*t)->form<FrmInizio>());
        const StatoCondiviso prima = [&] {
            StatoCondiviso &s = (*t)->stato;
            FamiglieSimboli::applica(s, 3);
            s.FamigliaSimboli = 3;
            s.TipoNumeri = 3;
            s.DescrizioneNumeri = QStringLiteral(" Scomponi: numeri interi e con la virgola");
            s.NumeroEsercizio = 4;
            return s;
        }();
        QVERIFY(entra(CodiceScheda::Componi(scelta(1, 1, 10, 9)), QStringLiteral("ADA")));
        {
            Alunno a(*t);
            rispondiATutto(a);
            a.schermo().close();
            settle();
        }
        QVERIFY(!(*t)->fonteEsercizi());
        const StatoCondiviso &dopo = (*t)->stato;
        QCOMPARE(int(dopo.FamigliaSimboli), int(prima.FamigliaSimboli));
        QCOMPARE(int(dopo.TipoNumeri), int(prima.TipoNumeri));
        QCOMPARE(dopo.Simbolo1, prima.Simbolo1);
        QCOMPARE(dopo.Simbolo4, prima.Simbolo4);
        QCOMPARE(dopo.DescrizioneNumeri, prima.DescrizioneNumeri);
        QCOMPARE(int(dopo.NumeroEsercizio), 4);
        QCOMPARE(dopo.NomeAlunno, QStringLiteral("ADA"));
        QCOMPARE(int(dopo.EsatteComplessive), 10);
        QCOMPARE(eserciziNormali(*t), attese);
    }

    // A pupil's second try at the same code starts again from its first row.
    void ricomincia_rifaLaStessaVerifica()
    {
        const QString codice = CodiceScheda::Componi(scelta(1, 3, 10, 55));
        QVERIFY(entra(codice, QStringLiteral("ADA")));
        Alunno a(*t);
        const QList<Visto> prima = rispondiATutto(a);
        mouseDown(a.schermo().get<OptionButton>("optAvviso", 1));
        QCOMPARE(int(a.stato().NumeroEsercizio), 1);
        QCOMPARE(rispondiATutto(a), prima);
    }

    // Random presses on the code screen, by mouse and keyboard: no run-time
    // error, and a drill opens only on the code that was typed, never on
    // another series.
    void pressioniACaso_maiUnAltraSerie_data()
    {
        QTest::addColumn<int>("seme");
        for (int seme = 1; seme <= 6; ++seme)
            QTest::addRow("seme %d", seme) << seme;
    }
    void pressioniACaso_maiUnAltraSerie()
    {
        QFETCH(int, seme);
        std::mt19937 rng{std::uint32_t(seme)};
        auto caso = [&](int n) { return int(rng() % std::uint32_t(n)); };
        // Now and then a real code, so both steps are reached.
        const QString vero = CodiceScheda::Componi(scelta(1 + caso(3), caso(4), 10, 123));
        apriVerifica();
        QString scritto; // the code's characters as the screen has them
        int aperti = 0;
        for (int passo = 0; passo < 300; ++passo) {
            auto *f = (*t)->screens().find<frmVerifica>();
            if (!f) {
                if (auto *d = (*t)->screens().find<frmOperativo>()) {
                    QCOMPARE((*t)->fonteEsercizi()->codice(),
                             CodiceScheda::Componi(*CodiceScheda::Leggi(scritto)));
                    d->close();
                    settle();
                    ++aperti;
                }
                apriVerifica();
                scritto.clear();
                continue;
            }
            const bool nome = f->ChiedeNome();
            switch (caso(nome ? 4 : 7)) {
            case 0:
                click(f->get<CommandButton>(
                    nome ? "Command2" : "Command1",
                    caso(nome ? frmVerifica::CancellaNome + 1 : frmVerifica::CancellaCodice + 1)));
                break;
            case 1:
                key(Qt::Key(Qt::Key_A + caso(26)));
                break;
            case 2:
                avanti();
                break;
            case 3:
                key(caso(2) ? Qt::Key_Backspace : Qt::Key_Return);
                break;
            default:
                // Towards the real code: a wrong character taken away, the
                // next right one added, AVANTI once it is whole.
                if (!nome) {
                    const QString pulito = QString(vero).remove('-');
                    const QString ora =
                        QString(f->get<Label>("lblTesto").Caption()).remove('-').remove('?');
                    if (!pulito.startsWith(ora))
                        click(f->get<CommandButton>("Command1", frmVerifica::CancellaCodice));
                    else if (ora.size() < pulito.size())
                        click(f->get<CommandButton>("Command1", int(CodiceScheda::Alfabeto.indexOf(
                                                                    pulito.at(ora.size())))));
                    else
                        avanti();
                }
            }
            settle();
            if (auto *g = (*t)->screens().find<frmVerifica>(); g && !g->ChiedeNome())
                scritto = g->get<Label>("lblTesto").Caption();
            QVERIFY(t->errors->errors.isEmpty());
        }
        QVERIFY(aperti > 0);
    }

    // The menu brings back a series already open instead of starting another.
    void menu_conUnaSerieAperta_nonNeApreUnAltra()
    {
        Alunno a(*t);
        FamiglieSimboli::applica(a.stato(), 3);
        a.apri();
        auto &inizio = (*t)->form<FrmInizio>();
        inizio.get<Menu>("mnuVerificaCodice").action()->trigger();
        QVERIFY(!(*t)->screens().isLoaded<frmVerifica>());
        QVERIFY(!(*t)->fonteEsercizi());
    }
};

QTEST_MAIN(TestVerifica)
#include "tst_verifica.moc"
