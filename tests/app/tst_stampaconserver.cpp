#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/printing/CupsPrinter.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "report/FrmStampaEsercizio2.h"
#include "services/frmSceltaStampante.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/PrintedPdf.h"
#include "support/PrivateCupsDaemon.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace ScreenTest;

namespace {

const QString Problema = QStringLiteral("Problema di stampa nella stampante utilizzata.");

enum class Documento
{
    Scheda,
    Esercizi,
    Attestato
};
enum class Guasto
{
    Fermo,
    Bloccato
};

// Counts the repaints a window gets.
class ContaDisegni : public QObject
{
public:
    int disegni = 0;

protected:
    bool eventFilter(QObject *, QEvent *e) override
    {
        if (e->type() == QEvent::Paint)
            ++disegni;
        return false;
    }
};

QStringList voci(const ComboBox &combo)
{
    QStringList out;
    for (int i = 0; i < combo.ListCount(); ++i)
        out << combo.List(i);
    return out;
}

} // namespace

Q_DECLARE_METATYPE(Documento)
Q_DECLARE_METATYPE(Guasto)

// The three printouts through a real CUPS scheduler of the test's own, when
// the server is gone or hangs, when queues come and go while the program
// runs, and what the user is told when a page is accepted or refused.
class TestStampaConServer : public QObject
{
    Q_OBJECT

    PrivateCupsDaemon m_cups;
    QString m_aula;
    QString m_laboratorio;

    // A context printing on the system's printers, in a folder of its own.
    struct Contesto
    {
        QTemporaryDir cartella;
        TestContext t;
        Contesto()
        {
            t->setWorkingDirectory(cartella.path());
            SchedeTest::statoDiPartenza(t->stato);
            t->stato.NumeroEsercizio = 3;
            for (int k = 1; k <= 3; ++k)
                t->stato.Operazioni[k] = QStringLiteral("%1 da = %1 da (R.%1 da)").arg(k * 11);
            t->stato.EsatteComplessive = 3;
        }
    };

    // Chooses the laboratory's queue on the printer screen, as a user would.
    bool scegliLaboratorio(Contesto &c)
    {
        auto &scelta = c.t->form<frmSceltaStampante>();
        if (!showActive(scelta))
            return false;
        auto &combo = scelta.get<ComboBox>("Combo1");
        combo.widget()->setFocus();
        combo.setListIndex(combo.combo()->findText(QStringLiteral("Laboratorio")));
        click(scelta.get<CommandButton>("Command2"));
        return c.t->printer().DeviceName() == QStringLiteral("Laboratorio");
    }

    // The screen of the document, shown, and the control whose click prints it.
    Control &preparaDocumento(Contesto &c, Documento d)
    {
        if (d == Documento::Scheda) {
            auto &schede = c.t->form<FrmStampaSchede>();
            showActive(schede);
            click(schede.get<OptionButton>("Opt1", 0));
            schede.get<OptionButton>("Option1", 0).SetFocus();
            key(Qt::Key_Return);
            click(schede.get<OptionButton>("Option2", 0));
            click(schede.get<CommandButton>("CmdVisualizzaSchedaAlunni"));
            return schede.get<CommandButton>("CmdStampaSchedaAlunni");
        }
        if (d == Documento::Esercizi) {
            auto &esercizi = c.t->form<FrmStampaEsercizio2>();
            showActive(esercizi);
            return esercizi.get<Menu>("mnuStampaEsercizi");
        }
        auto &attestato = c.t->form<FrmAttestato>();
        showActive(attestato);
        return attestato.get<OptionButton>("Option5", 0);
    }

    static void stampa(Control &comando)
    {
        if (auto *menu = dynamic_cast<Menu *>(&comando))
            menu->action()->trigger();
        else
            click(comando);
    }

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        m_cups.exportEnvironment();
        QVERIFY2(m_cups.start(), qPrintable(m_cups.error()));
        m_aula = m_cups.addFileQueue(QStringLiteral("Aula"));
        QVERIFY2(!m_aula.isEmpty(), qPrintable(m_cups.error()));
        m_laboratorio = m_cups.addFileQueue(QStringLiteral("Laboratorio"));
        QVERIFY2(!m_laboratorio.isEmpty(), qPrintable(m_cups.error()));
        QVERIFY2(m_cups.setDefault(QStringLiteral("Aula")), qPrintable(m_cups.error()));
    }

    void init()
    {
        // Every test starts with the scheduler up and answering.
        m_cups.thaw();
        if (!m_cups.isRunning())
            QVERIFY2(m_cups.start(), qPrintable(m_cups.error()));
    }

    void cleanup() { settle(); }

    void aServerGoneOrHungFailsInTimeAndTheWindowAnswers_data()
    {
        QTest::addColumn<Documento>("documento");
        QTest::addColumn<Guasto>("guasto");
        QTest::addColumn<bool>("giaStampato");
        QTest::newRow("sheet, server stopped") << Documento::Scheda << Guasto::Fermo << false;
        QTest::newRow("report, server stopped") << Documento::Esercizi << Guasto::Fermo << false;
        QTest::newRow("certificate, server stopped")
            << Documento::Attestato << Guasto::Fermo << false;
        QTest::newRow("sheet, server hung") << Documento::Scheda << Guasto::Bloccato << false;
        QTest::newRow("sheet, server hung after a page went through")
            << Documento::Scheda << Guasto::Bloccato << true;
        QTest::newRow("report, server hung") << Documento::Esercizi << Guasto::Bloccato << false;
        QTest::newRow("certificate, server hung")
            << Documento::Attestato << Guasto::Bloccato << false;
    }
    void aServerGoneOrHungFailsInTimeAndTheWindowAnswers()
    {
        QFETCH(Documento, documento);
        QFETCH(Guasto, guasto);
        QFETCH(bool, giaStampato);
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        QVERIFY(scegliLaboratorio(c));
        Control &comando = preparaDocumento(c, documento);
        QWidget *finestra =
            comando.widget() ? comando.widget()->window() : c.t->screens().loaded().last();
        if (giaStampato) {
            // The queue's page layout is known; the server hangs on the job.
            stampa(comando);
            QVERIFY(c.t.boxes->boxes.isEmpty());
            QCOMPARE(c.t.notices->notices.size(), 1);
        }

        if (guasto == Guasto::Fermo)
            m_cups.stop();
        else
            m_cups.freeze();

        // One second after the click, while the print waits: the window is
        // repainted, a timer runs, and a second click on the same command is
        // no second job.
        ContaDisegni disegni;
        qApp->installEventFilter(&disegni);
        bool inAttesa = false;
        qint64 rispostaDopo = -1;
        int disegniAllaRisposta = 0;
        QElapsedTimer orologio;
        QTimer::singleShot(1000, finestra, [&] {
            if (!inAttesa)
                return;
            rispostaDopo = orologio.elapsed();
            finestra->update();
            QTimer::singleShot(50, finestra, [&] { disegniAllaRisposta = disegni.disegni; });
            stampa(comando);
        });
        inAttesa = true;
        orologio.start();
        stampa(comando);
        const qint64 durata = orologio.elapsed();
        inAttesa = false;
        qApp->removeEventFilter(&disegni);
        qInfo("%s: failed after %lld ms", QTest::currentDataTag(), durata);

        if (guasto == Guasto::Fermo) {
            QVERIFY2(durata < 2000, qPrintable(QString::number(durata)));
        } else {
            QVERIFY2(durata < 5000, qPrintable(QString::number(durata)));
            QVERIFY2(rispostaDopo >= 1000 && rispostaDopo < 1500,
                     qPrintable(QString::number(rispostaDopo)));
            QVERIFY2(disegniAllaRisposta > 0, "no repaint while the print waited");
        }
        if (documento == Documento::Scheda) {
            QCOMPARE(c.t.boxes->boxes.size(), 1);
            QCOMPARE(c.t.boxes->boxes[0].text, Problema);
            QVERIFY(c.t.errors->errors.isEmpty());
        } else {
            QCOMPARE(c.t.errors->errors, QList<RuntimeError::Code>{RuntimeError::PrinterError});
            QVERIFY(c.t.boxes->boxes.isEmpty());
        }
        QCOMPARE(c.t.notices->notices.size(), giaStampato ? 1 : 0);
        m_cups.thaw();
    }

    void closingTheWindowWhileThePrintWaitsEndsTheWaitAtOnce()
    {
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        QVERIFY(scegliLaboratorio(c));
        Control &comando = preparaDocumento(c, Documento::Scheda);
        auto &schede = c.t->form<FrmStampaSchede>();
        m_cups.freeze();
        QTimer::singleShot(500, &schede, [&schede] { schede.close(); });
        QElapsedTimer orologio;
        orologio.start();
        stampa(comando);
        const qint64 durata = orologio.elapsed();
        qInfo("closed after %lld ms", durata);
        QVERIFY2(durata < 1500, qPrintable(QString::number(durata)));
        QCOMPARE(c.t.boxes->boxes.size(), 1);
        QCOMPARE(c.t.boxes->boxes[0].text, Problema);
        // The close asked for is carried out once the print has given up.
        QTRY_VERIFY(!c.t->screens().isLoaded<FrmStampaSchede>());
        m_cups.thaw();
    }

    void aQueueAddedWhileTheProgramRunsIsListedAtTheNextOpening()
    {
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        QVERIFY(scegliLaboratorio(c));
        auto &scelta = c.t->form<frmSceltaStampante>();
        auto &combo = scelta.get<ComboBox>("Combo1");
        QCOMPARE(voci(combo), QStringList({"Aula", "Laboratorio", PdfFilePrinter::deviceName()}));
        const QString palestra = m_cups.addFileQueue(QStringLiteral("Palestra"));
        QVERIFY2(!palestra.isEmpty(), qPrintable(m_cups.error()));

        auto &schede = c.t->form<FrmStampaSchede>();
        QVERIFY(showActive(schede));
        schede.get<Menu>("mnuStampante").action()->trigger();
        QTRY_COMPARE(voci(combo), QStringList({"Aula", "Laboratorio", "Palestra",
                                               PdfFilePrinter::deviceName()}));
        // The choice made stays, and is still what the screen shows.
        QCOMPARE(combo.Text(), QStringLiteral("Laboratorio"));
        QCOMPARE(c.t->printer().DeviceName(), QStringLiteral("Laboratorio"));
        QCOMPARE(scelta.get<Label>("Label2").Caption(),
                 QStringLiteral("La stampante scelta è \r\nLaboratorio"));

        // And the new queue can be chosen and printed on.
        combo.setListIndex(2);
        QCOMPARE(c.t->printer().DeviceName(), QStringLiteral("Palestra"));
        click(scelta.get<CommandButton>("Command2"));
        stampa(preparaDocumento(c, Documento::Scheda));
        QVERIFY(c.t.boxes->boxes.isEmpty());
        QVERIFY2(m_cups.waitForOutput(palestra), qPrintable(m_cups.log()));
        QVERIFY(m_cups.remove(QStringLiteral("Palestra")));
    }

    void aServerStartedWhileTheProgramRunsIsListedAtTheNextOpening()
    {
        m_cups.stop();
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        auto &scelta = c.t->form<frmSceltaStampante>();
        QVERIFY(showActive(scelta));
        auto &combo = scelta.get<ComboBox>("Combo1");
        QCOMPARE(voci(combo), QStringList{PdfFilePrinter::deviceName()});
        click(scelta.get<CommandButton>("Command2"));

        QVERIFY2(m_cups.start(), qPrintable(m_cups.error()));
        scelta.Show();
        QTRY_COMPARE(voci(combo),
                     QStringList({"Aula", "Laboratorio", PdfFilePrinter::deviceName()}));
        QCOMPARE(c.t->printer().DeviceName(), PdfFilePrinter::deviceName());
    }

    void aChosenQueueThatWasRemovedFailsWithTheSheetsMessage()
    {
        const QString temporanea = m_cups.addFileQueue(QStringLiteral("Temporanea"));
        QVERIFY2(!temporanea.isEmpty(), qPrintable(m_cups.error()));
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        auto &scelta = c.t->form<frmSceltaStampante>();
        QVERIFY(showActive(scelta));
        auto &combo = scelta.get<ComboBox>("Combo1");
        combo.setListIndex(combo.combo()->findText(QStringLiteral("Temporanea")));
        QCOMPARE(c.t->printer().DeviceName(), QStringLiteral("Temporanea"));
        click(scelta.get<CommandButton>("Command2"));
        QVERIFY(m_cups.remove(QStringLiteral("Temporanea")));

        // The list no longer has it; the choice is still that queue.
        scelta.Show();
        QTRY_COMPARE(voci(combo),
                     QStringList({"Aula", "Laboratorio", PdfFilePrinter::deviceName()}));
        QCOMPARE(c.t->printer().DeviceName(), QStringLiteral("Temporanea"));
        click(scelta.get<CommandButton>("Command2"));

        QElapsedTimer orologio;
        orologio.start();
        stampa(preparaDocumento(c, Documento::Scheda));
        QVERIFY2(orologio.elapsed() < 2000, qPrintable(QString::number(orologio.elapsed())));
        QCOMPARE(c.t.boxes->boxes.size(), 1);
        QCOMPARE(c.t.boxes->boxes[0].text, Problema);

        // The certificate has no trap of its own: the general error report.
        stampa(preparaDocumento(c, Documento::Attestato));
        QCOMPARE(c.t.errors->errors, QList<RuntimeError::Code>{RuntimeError::PrinterError});
    }

    void anAcceptedPageIsConfirmedWithItsQueueAndJobNumber()
    {
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        QVERIFY(scegliLaboratorio(c));
        QFile::remove(m_laboratorio);
        stampa(preparaDocumento(c, Documento::Scheda));
        QVERIFY(c.t.boxes->boxes.isEmpty());
        QCOMPARE(c.t.notices->notices.size(), 1);
        const QString avviso = c.t.notices->notices[0];
        const QRegularExpressionMatch numero =
            QRegularExpression(QStringLiteral("^Il documento è stato inviato alla stampante "
                                              "Laboratorio:\nlavoro numero (\\d+)$"))
                .match(avviso);
        QVERIFY2(numero.hasMatch(), qPrintable(avviso));
        // The job the user is told of is the one the server has, and it
        // holds the sheet.
        QVERIFY(m_cups.jobs(QStringLiteral("Laboratorio"))
                    .contains(QStringLiteral("Laboratorio-") + numero.captured(1)));
        QVERIFY2(m_cups.waitForOutput(m_laboratorio), qPrintable(m_cups.log()));
        const PrintedPdf stampato(m_laboratorio);
        QVERIFY2(stampato.text().contains(QStringLiteral("Nome e cognome")),
                 qPrintable(stampato.text()));
    }

    void aRefusedPageGetsTheMessageAndNoConfirmation()
    {
        Contesto c;
        c.t->setPrinters(Printers::installed(*c.t));
        QVERIFY(scegliLaboratorio(c));
        QVERIFY2(m_cups.reject(QStringLiteral("Laboratorio")), qPrintable(m_cups.error()));
        stampa(preparaDocumento(c, Documento::Scheda));
        QVERIFY(m_cups.accept(QStringLiteral("Laboratorio")));
        QCOMPARE(c.t.boxes->boxes.size(), 1);
        QCOMPARE(c.t.boxes->boxes[0].text, Problema);
        QVERIFY(c.t.notices->notices.isEmpty());
    }

    void cleanupTestCase()
    {
        m_cups.stop();
        QVERIFY(!m_cups.isRunning());
    }
};

QTEST_MAIN(TestStampaConServer)
#include "tst_stampaconserver.moc"
