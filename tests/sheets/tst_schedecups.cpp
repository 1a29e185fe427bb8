#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/OptionButton.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "services/frmSceltaStampante.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/PrintedPdf.h"
#include "support/PrivateCupsDaemon.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAction>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

// A worksheet printed through a real CUPS queue, chosen on the printer
// screen, served by a scheduler of the test's own.
class TestSchedeCups : public QObject
{
    Q_OBJECT

    PrivateCupsDaemon m_cups;
    QString m_aula;
    QString m_laboratorio;

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        // Before anything asks libcups for printers.
        m_cups.exportEnvironment();
        QVERIFY2(m_cups.start(), qPrintable(m_cups.error()));
        m_aula = m_cups.addFileQueue(QStringLiteral("Aula"));
        QVERIFY2(!m_aula.isEmpty(), qPrintable(m_cups.error()));
        m_laboratorio = m_cups.addFileQueue(QStringLiteral("Laboratorio"));
        QVERIFY2(!m_laboratorio.isEmpty(), qPrintable(m_cups.error()));
        QVERIFY2(m_cups.setDefault(QStringLiteral("Aula")), qPrintable(m_cups.error()));
    }

    void aPupilsSheetPrintedOnTheQueueChosenComesOutOfIt()
    {
        TestContext t;
        QTemporaryDir cartella;
        t->setWorkingDirectory(cartella.path());
        t->setPrinters(Printers::installed(*t));
        StatoCondiviso &s = t->stato;
        SchedeTest::statoDiPartenza(s);

        auto &schede = t->form<FrmStampaSchede>();
        QVERIFY(showActive(schede));
        schede.get<Menu>("mnuStampante").action()->trigger();

        // The printer screen lists the queues, then the PDF printer.
        auto &scelta = t->form<frmSceltaStampante>();
        QVERIFY(scelta.isVisible());
        QApplication::setActiveWindow(&scelta);
        QVERIFY(QTest::qWaitForWindowActive(&scelta, 2000));
        auto &combo = scelta.get<ComboBox>("Combo1");
        QStringList voci;
        for (int i = 0; i < combo.ListCount(); ++i)
            voci << combo.List(i);
        QCOMPARE(voci, QStringList({"Aula", "Laboratorio", PdfFilePrinter::deviceName()}));
        QCOMPARE(scelta.get<Label>("Label1").Caption(),
                 QStringLiteral("La stampante predefinita è \r\nAula"));
        QCOMPARE(t->printer().DeviceName(), QStringLiteral("Aula"));

        // The user moves the list to the laboratory's queue and closes.
        combo.widget()->setFocus();
        QTest::keyClick(combo.widget(), Qt::Key_Down);
        QCOMPARE(combo.Text(), QStringLiteral("Laboratorio"));
        QCOMPARE(t->printer().DeviceName(), QStringLiteral("Laboratorio"));
        QCOMPARE(scelta.get<Label>("Label2").Caption(),
                 QStringLiteral("La stampante scelta è \r\nLaboratorio"));
        click(scelta.get<CommandButton>("Command2"));
        QVERIFY(!scelta.isVisible());

        // Back on the worksheet: ten whole numbers, the pupils' sheet.
        QApplication::setActiveWindow(&schede);
        QVERIFY(QTest::qWaitForWindowActive(&schede, 2000));
        click(schede.get<OptionButton>("Opt1", 0));
        schede.get<OptionButton>("Option1", 0).SetFocus();
        key(Qt::Key_Return);
        click(schede.get<OptionButton>("Option2", 0));
        click(schede.get<CommandButton>("CmdVisualizzaSchedaAlunni"));
        QFile::remove(m_laboratorio);
        QFile::remove(m_aula);
        click(schede.get<CommandButton>("CmdStampaSchedaAlunni"));
        QVERIFY(t.boxes->boxes.isEmpty());
        QVERIFY(t.errors->errors.isEmpty());

        QVERIFY2(m_cups.waitForOutput(m_laboratorio), qPrintable(m_cups.log()));
        QVERIFY(!QFile::exists(m_aula));
        const PrintedPdf stampato(m_laboratorio);
        QVERIFY2(stampato.error().isEmpty(), qPrintable(stampato.error()));
        QCOMPARE(stampato.pages(), 1);
        QStringList attese = {QStringLiteral("Nome e cognome"), SchedeTest::Titolo};
        for (int i = 1; i <= 10; ++i)
            attese << s.RigheAlunni[i].simplified();
        attese << SchedeTest::Sottotitolo
               << QStringLiteral("Livello di difficoltà: ") + SchedeTest::Sottotitolo;
        QStringList lette;
        for (const QString &riga : stampato.lines())
            lette << riga.simplified();
        QCOMPARE(lette, attese);
    }

    void cleanupTestCase()
    {
        m_cups.stop();
        QVERIFY(!m_cups.isRunning());
    }
};

QTEST_MAIN(TestSchedeCups)
#include "tst_schedecups.moc"
