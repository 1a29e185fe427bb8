#include "platform/RuntimeError.h"
#include "platform/printing/CupsPrinter.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"
#include "support/PrintedPdf.h"
#include "support/PrivateCupsDaemon.h"
#include "support/TestDoubles.h"

#include <QFile>
#include <QTest>

// Printing through real CUPS queues, served by a scheduler of the test's own.
class TestCupsPrinting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Before anything asks libcups for printers.
        m_cups.exportEnvironment();
        QVERIFY2(m_cups.start(), qPrintable(m_cups.error()));
        m_aula = m_cups.addFileQueue(QStringLiteral("Aula"));
        QVERIFY2(!m_aula.isEmpty(), qPrintable(m_cups.error()));
        m_ufficio = m_cups.addFileQueue(QStringLiteral("Ufficio"));
        QVERIFY2(!m_ufficio.isEmpty(), qPrintable(m_cups.error()));
        QVERIFY2(m_cups.setDefault(QStringLiteral("Ufficio")), qPrintable(m_cups.error()));
    }

    void theQueuesAreListedBeforeThePdfPrinter()
    {
        TestContext t;
        auto printers = Printers::installed(*t.ctx);
        QCOMPARE(printers->deviceNames(),
                 QStringList({"Aula", "Ufficio", PdfFilePrinter::deviceName()}));
    }

    void theSystemDefaultIsTheCurrentPrinterAtStart()
    {
        TestContext t;
        auto printers = Printers::installed(*t.ctx);
        QCOMPARE(printers->current().DeviceName(), QStringLiteral("Ufficio"));
    }

    void printedLinesComeOutOfTheQueue()
    {
        TestContext t;
        auto printers = Printers::installed(*t.ctx);
        printers->setCurrent(printers->indexOf(QStringLiteral("Aula")));
        Printer &p = printers->current();
        QFile::remove(m_aula);

        const QStringList rows = {
            QStringLiteral("SCUOLA ELEMENTARE DI"),
            QStringLiteral("473 da = 4 uk 7 h 3 da"),
            QStringLiteral("0,25 u = 2 d 5 c"),
        };
        p.setFontName(QStringLiteral("Courier New"));
        p.setFontSize(12);
        for (int i = 0; i < rows.size(); ++i) {
            p.setCurrentX(1000);
            p.setCurrentY(1000 + i * 400);
            p.Print(rows[i]);
        }
        p.EndDoc();
        QVERIFY(!static_cast<CupsPrinter &>(p).lastJob().isEmpty());

        QVERIFY2(m_cups.waitForOutput(m_aula), qPrintable(m_cups.log()));
        const PrintedPdf printed(m_aula);
        QVERIFY2(printed.error().isEmpty(), qPrintable(printed.error()));
        QCOMPARE(printed.pages(), 1);
        QVERIFY(qAbs(printed.pageSize().width() - 595) < 1);
        QVERIFY(qAbs(printed.pageSize().height() - 842) < 1);
        QCOMPARE(printed.lines(), rows);
        // From the printable area the queue's driver declares: 18 points in.
        const QRectF first = printed.boxOf(QStringLiteral("SCUOLA"));
        QVERIFY2(qAbs(first.left() - (18 + 1000 / 20.0)) < 1,
                 qPrintable(QString::number(first.left())));
        QVERIFY2(qAbs(first.top() - (18 + 1000 / 20.0)) < 2,
                 qPrintable(QString::number(first.top())));
    }

    void aQueueThatRefusesJobsIsAPrinterError()
    {
        const QString name = QStringLiteral("Chiusa");
        QVERIFY2(!m_cups.addFileQueue(name).isEmpty(), qPrintable(m_cups.error()));
        CupsPrinter p(name, QStringLiteral("Quadrivo"));
        QVERIFY2(m_cups.reject(name), qPrintable(m_cups.error()));
        p.Print(QStringLiteral("rifiutato"));
        try {
            p.EndDoc();
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::PrinterError);
            QVERIFY2(e.detail().contains(name), qPrintable(e.detail()));
        }
    }

    void aQueueRemovedBeforePrintingIsAPrinterError()
    {
        const QString name = QStringLiteral("Rimossa");
        QVERIFY2(!m_cups.addFileQueue(name).isEmpty(), qPrintable(m_cups.error()));
        CupsPrinter p(name, QStringLiteral("Quadrivo"));
        QVERIFY2(m_cups.remove(name), qPrintable(m_cups.error()));
        try {
            p.Print(QStringLiteral("mai stampato"));
            QFAIL("no error");
        } catch (const RuntimeError &e) {
            QCOMPARE(e.code(), RuntimeError::PrinterError);
        }
    }

    void aQueueRemovedWhilePrintingIsAPrinterError()
    {
        const QString name = QStringLiteral("Sparita");
        QVERIFY2(!m_cups.addFileQueue(name).isEmpty(), qPrintable(m_cups.error()));
        CupsPrinter p(name, QStringLiteral("Quadrivo"));
        p.Print(QStringLiteral("a metà"));
        QVERIFY2(m_cups.remove(name), qPrintable(m_cups.error()));
        QVERIFY_THROWS_EXCEPTION(RuntimeError, p.EndDoc());
        // The printer is usable again, and fails again, afterwards.
        QVERIFY_THROWS_EXCEPTION(RuntimeError, p.Print(QStringLiteral("ancora")));
    }

    void cleanupTestCase()
    {
        const qint64 pid = m_cups.pid();
        m_cups.stop();
        QVERIFY(!m_cups.isRunning());
        QVERIFY(pid > 0);
    }

private:
    PrivateCupsDaemon m_cups;
    QString m_aula;
    QString m_ufficio;
};

QTEST_MAIN(TestCupsPrinting)
#include "tst_cupsprinting.moc"
