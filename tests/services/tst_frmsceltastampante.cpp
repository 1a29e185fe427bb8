#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Label.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "platform/printing/RecordingPrinter.h"
#include "services/frmSceltaStampante.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

namespace {

const QString CrLf = QStringLiteral("\r\n");

// Recording printers with the names given; the current one is `corrente`.
std::vector<RecordingPrinter *> installaStampanti(AppContext &ctx, const QStringList &nomi,
                                                  int corrente)
{
    std::vector<std::unique_ptr<Printer>> elenco;
    std::vector<RecordingPrinter *> stampanti;
    for (const QString &nome : nomi) {
        auto p = std::make_unique<RecordingPrinter>(nome);
        stampanti.push_back(p.get());
        elenco.push_back(std::move(p));
    }
    ctx.setPrinters(std::make_unique<Printers>(std::move(elenco), corrente));
    return stampanti;
}

QStringList voci(ComboBox &combo)
{
    QStringList v;
    for (int i = 0; i < combo.ListCount(); ++i)
        v << combo.List(i);
    return v;
}

} // namespace

// The printer screen over recording printers: the list, the choice by
// keyboard and mouse, closing and reopening, and a system with no queue.
class TestFrmSceltaStampante : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    std::vector<RecordingPrinter *> stampanti;

    frmSceltaStampante &apri()
    {
        auto &f = (*t)->form<frmSceltaStampante>();
        f.Show();
        QApplication::setActiveWindow(&f);
        (void)QTest::qWaitForWindowActive(&f, 2000);
        return f;
    }

    // The user moves the list one entry down with the keyboard.
    void scendi(frmSceltaStampante &f)
    {
        auto &combo = f.get<ComboBox>("Combo1");
        combo.widget()->setFocus();
        QTest::keyClick(combo.widget(), Qt::Key_Down);
    }

    // The user opens the list and picks the entry at `indice`.
    void scegli(frmSceltaStampante &f, int indice)
    {
        QComboBox *combo = f.get<ComboBox>("Combo1").combo();
        combo->showPopup();
        QAbstractItemView *vista = combo->view();
        QTRY_VERIFY(vista->isVisible());
        vista->setCurrentIndex(vista->model()->index(indice, 0));
        QTest::keyClick(vista, Qt::Key_Return);
        QTRY_VERIFY(!vista->isVisible());
    }

private slots:
    void initTestCase()
    {
        Fonts::installSubstitutions();
        // No scheduler answers here: the system has no queues at all.
        static QTemporaryDir nessunServer;
        qputenv("CUPS_SERVER", nessunServer.filePath(QStringLiteral("cups.sock")).toLocal8Bit());
    }

    void init()
    {
        t = std::make_unique<TestContext>();
        stampanti = installaStampanti(**t, {"Aula", "Ufficio", "Laboratorio"}, 1);
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void theScreenIsLaidOutAsDesigned()
    {
        auto &f = apri();
        QCOMPARE(f.Caption(), QStringLiteral("Form1"));
        QCOMPARE(f.ScaleWidth(), 6060.0);
        QCOMPARE(f.ScaleHeight(), 5460.0);
        QCOMPARE(f.BackColor(), QColor(255, 255, 192));
        struct Posto
        {
            const char *nome;
            double left, top, width;
            double height; // 0: the list's own height
        };
        for (const Posto &p :
             {Posto{"Label1", 432, 168, 1716, 1524}, Posto{"Label2", 3276, 120, 1704, 1452},
              Posto{"Combo1", 612, 2400, 4632, 0}, Posto{"Command2", 1128, 4188, 3168, 648}}) {
            const Control &c = f.get<Control>(p.nome);
            QCOMPARE(c.Left(), p.left);
            QCOMPARE(c.Top(), p.top);
            QCOMPARE(c.Width(), p.width);
            if (p.height > 0)
                QCOMPARE(c.Height(), p.height);
        }
        QCOMPARE(f.Controls().size(), std::size_t(4));
        const auto &chiudi = f.get<CommandButton>("Command2");
        QCOMPARE(chiudi.Caption(), QStringLiteral("C H I U D I"));
        QCOMPARE(chiudi.BackColor(), QColor(255, 224, 192));
        QCOMPARE(chiudi.font().family(), QStringLiteral("MS Sans Serif"));
        QCOMPARE(chiudi.font().pointSizeF(), 13.5);
        QVERIFY(chiudi.font().bold());
        for (const char *nome : {"Label1", "Label2", "Combo1"}) {
            const QFont font = f.get<Control>(nome).font();
            QCOMPARE(font.family(), QStringLiteral("MS Sans Serif"));
            QCOMPARE(font.pointSizeF(), 9.75);
            QVERIFY(font.bold());
        }
        // The substitute is a real sans serif font, not a fallback box.
        QVERIFY(!QFontInfo(chiudi.font()).family().isEmpty());
    }

    void theListHoldsThePrintersInTheirOrderWithTheFirstSelected()
    {
        auto &f = apri();
        auto &combo = f.get<ComboBox>("Combo1");
        QCOMPARE(voci(combo), QStringList({"Aula", "Ufficio", "Laboratorio"}));
        QCOMPARE(combo.ListIndex(), 0);
        QCOMPARE(combo.Text(), QStringLiteral("Aula"));
    }

    void openingDoesNotChangeThePrinter()
    {
        auto &f = apri();
        QCOMPARE(f.get<ComboBox>("Combo1").Text(), QStringLiteral("Aula"));
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));
        QCOMPARE(f.get<Label>("Label2").Caption(), QString());
    }

    void label1ShowsTheCurrentPrinterOnItsOwnLine()
    {
        auto &f = apri();
        QCOMPARE(f.get<Label>("Label1").Caption(),
                 "La stampante predefinita è " + CrLf + "Ufficio");
    }

    void choosingAnotherEntryMakesItTheCurrentPrinter()
    {
        auto &f = apri();
        scendi(f);
        QCOMPARE(f.get<ComboBox>("Combo1").Text(), QStringLiteral("Ufficio"));
        scendi(f);
        QCOMPARE(f.get<ComboBox>("Combo1").Text(), QStringLiteral("Laboratorio"));
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Laboratorio"));
        QCOMPARE(&(*t)->printer(), stampanti[2]);
        QCOMPARE(f.get<Label>("Label2").Caption(), "La stampante scelta è " + CrLf + "Laboratorio");
        // The label of the default printer says what it said at load.
        QCOMPARE(f.get<Label>("Label1").Caption(),
                 "La stampante predefinita è " + CrLf + "Ufficio");
        QVERIFY(t->errors->errors.isEmpty());
    }

    void pickingTheEntryAlreadyShownSelectsIt()
    {
        auto &f = apri();
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));
        scegli(f, 0);
        QCOMPARE(f.get<ComboBox>("Combo1").Text(), QStringLiteral("Aula"));
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Aula"));
        QCOMPARE(f.get<Label>("Label2").Caption(), "La stampante scelta è " + CrLf + "Aula");
    }

    void theListOpensWithTheMouse()
    {
        auto &f = apri();
        QComboBox *combo = f.get<ComboBox>("Combo1").combo();
        QTest::mouseClick(combo, Qt::LeftButton);
        QTRY_VERIFY(combo->view()->isVisible());
        // Opening it chooses nothing.
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));
        combo->hidePopup();
        QTRY_VERIFY(!combo->view()->isVisible());
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));
    }

    void ofTwoPrintersWithTheSameNameTheFirstWins()
    {
        stampanti = installaStampanti(**t, {"Aula", "Doppia", "Ufficio", "Doppia"}, 2);
        auto &f = apri();
        scegli(f, 3);
        QCOMPARE(f.get<ComboBox>("Combo1").ListIndex(), 3);
        QCOMPARE(&(*t)->printer(), stampanti[1]);
        QCOMPARE((*t)->printers().currentIndex(), 1);
        QCOMPARE(f.get<Label>("Label2").Caption(), "La stampante scelta è " + CrLf + "Doppia");
    }

    void closingHidesTheScreenAndKeepsTheChoice()
    {
        stampanti = installaStampanti(**t, {"Aula", "Ufficio", "Laboratorio"}, 0);
        auto &f = apri();
        scendi(f);
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));
        click(f.get<CommandButton>("Command2"));
        QVERIFY(!f.isVisible());
        QVERIFY((*t)->screens().isLoaded<frmSceltaStampante>());
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Ufficio"));

        // Opened again, it is the same screen with its list and choice.
        auto &ancora = apri();
        QCOMPARE(&ancora, &f);
        QVERIFY(ancora.isVisible());
        QCOMPARE(voci(ancora.get<ComboBox>("Combo1")),
                 QStringList({"Aula", "Ufficio", "Laboratorio"}));
        QCOMPARE(ancora.get<ComboBox>("Combo1").Text(), QStringLiteral("Ufficio"));
        QCOMPARE(ancora.get<Label>("Label2").Caption(),
                 "La stampante scelta è " + CrLf + "Ufficio");
        // Its first click was spent at load: the next one chooses at once.
        scendi(ancora);
        QCOMPARE((*t)->printer().DeviceName(), QStringLiteral("Laboratorio"));
    }

    void theScreenDoesNotScale()
    {
        auto &f = apri();
        f.setInnerSize(12120, 10920);
        QApplication::processEvents();
        QCOMPARE(f.get<Control>("Label1").Left(), 432.0);
        QCOMPARE(f.get<Control>("Combo1").Width(), 4632.0);
        QCOMPARE(f.get<Control>("Command2").Top(), 4188.0);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void withNoQueueThePdfPrinterIsListedAndCurrent()
    {
        QTemporaryDir cartella;
        (*t)->setWorkingDirectory(cartella.path());
        (*t)->setPrinters(Printers::installed(**t));
        auto &f = apri();
        QCOMPARE(voci(f.get<ComboBox>("Combo1")), QStringList{PdfFilePrinter::deviceName()});
        QCOMPARE(f.get<Label>("Label1").Caption(),
                 "La stampante predefinita è " + CrLf + PdfFilePrinter::deviceName());
        QVERIFY(t->errors->errors.isEmpty());
    }
};

QTEST_MAIN(TestFrmSceltaStampante)
#include "tst_frmsceltastampante.moc"
