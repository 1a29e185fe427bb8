#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/OptionButton.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "sheets/FrmStampaSchede.h"
#include "sheets/SchedeTest.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace ScreenTest;

namespace {

// The printed worksheets kept as they came out before the screen had any
// menu of its own beyond the printer ones. Set QUADRIVO_RISCRIVI_PDF=1 to
// write them again (only when the sheet is meant to change). Their folder
// comes from ctest's environment, so no path of the clone is compiled in.
QString campione(const QString &nome)
{
    return qEnvironmentVariable("QUADRIVO_DATI_SCHEDE") + QLatin1Char('/') + nome;
}

// The moment of writing is the only thing in the file that changes from run
// to run.
QByteArray senzaData(QByteArray pdf)
{
    static const QRegularExpression data(QStringLiteral("/CreationDate \\(D:[^)]*\\)"));
    return QString::fromLatin1(pdf).replace(data, QStringLiteral("/CreationDate (D:0)")).toLatin1();
}

} // namespace

// The worksheets on the PDF printer, byte for byte: with nothing but the
// screen's own buttons used, the files are exactly the ones kept.
class TestSchedaPdfInvariata : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QFileInfo(campione(QString())).isDir(),
                 "QUADRIVO_DATI_SCHEDE must name the folder of the kept worksheets (ctest sets it)");
        Fonts::installSubstitutions();
    }

    void thePrintedSheetIsByteForByteTheOneKept_data()
    {
        QTest::addColumn<bool>("docenti");
        QTest::addColumn<QString>("file");
        QTest::newRow("pupils") << false << QStringLiteral("scheda_alunni_30.pdf");
        QTest::newRow("teachers") << true << QStringLiteral("scheda_docenti_30.pdf");
    }
    void thePrintedSheetIsByteForByteTheOneKept()
    {
        QFETCH(bool, docenti);
        QFETCH(QString, file);
        QTemporaryDir cartella;
        QVERIFY(cartella.isValid());
        TestContext t;
        SchedeTest::statoDiPartenza(t->stato, 3);
        auto pdf = std::make_unique<PdfFilePrinter>(*t);
        PdfFilePrinter *stampante = pdf.get();
        stampante->setOutputDirectory(cartella.path());
        std::vector<std::unique_ptr<Printer>> elenco;
        elenco.push_back(std::move(pdf));
        t->setPrinters(std::make_unique<Printers>(std::move(elenco)));

        auto &f = t->form<FrmStampaSchede>();
        QVERIFY(showActive(f));
        // The pinned clock and the seeded draws make the same rows every run.
        click(f.get<OptionButton>("Opt1", 2));
        f.get<OptionButton>("Option1", 2).SetFocus();
        key(Qt::Key_Return);
        click(f.get<OptionButton>("Option2", 0));
        click(f.get<CommandButton>(docenti ? "CmdVisualizzaSchedaDocenti"
                                           : "CmdVisualizzaSchedaAlunni"));
        click(f.get<CommandButton>(docenti ? "CmdStampaSchedaDocenti" : "CmdStampaSchedaAlunni"));
        QVERIFY(t.errors->errors.isEmpty());
        QVERIFY(t.boxes->boxes.isEmpty());

        QFile stampato(stampante->lastFile());
        QVERIFY(stampato.open(QIODevice::ReadOnly));
        const QByteArray ora = senzaData(stampato.readAll());
        QFile tenuto(campione(file));
        if (qEnvironmentVariableIntValue("QUADRIVO_RISCRIVI_PDF") == 1) {
            QVERIFY(tenuto.open(QIODevice::WriteOnly | QIODevice::Truncate));
            tenuto.write(ora);
            tenuto.close();
        }
        QVERIFY2(tenuto.open(QIODevice::ReadOnly), qPrintable(tenuto.fileName()));
        const QByteArray prima = tenuto.readAll();
        QVERIFY(ora.startsWith("%PDF-"));
        QCOMPARE(ora.size(), prima.size());
        QVERIFY(ora == prima);
        f.Unload();
        settle();
    }
};

QTEST_MAIN(TestSchedaPdfInvariata)
#include "tst_schedapdfinvariata.moc"
