#include "platform/printing/CupsPrinter.h"

#include "platform/RuntimeError.h"

#include <QDir>
#include <QPrinterInfo>
#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int SubmitTimeoutMs = 60000;

RuntimeError printerError(const QString &detail)
{
    return RuntimeError(RuntimeError::PrinterError, detail);
}

} // namespace

CupsPrinter::CupsPrinter(const QString &queue, const QString &documentName)
    : m_queue(queue), m_documentName(documentName)
{
}

CupsPrinter::~CupsPrinter()
{
    // A document left open when the program ends is still printed, as far as
    // that goes: there is nobody left to tell of a failure.
    if (closePainter()) {
        try {
            submit();
        } catch (const RuntimeError &) {
        }
    }
    discardDocument();
}

QPagedPaintDevice &CupsPrinter::openDevice()
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(m_queue);
    if (info.isNull())
        throw printerError(QStringLiteral("La stampante %1 non è installata").arg(m_queue));

    m_file = std::make_unique<QTemporaryFile>(
        QDir::temp().filePath(QStringLiteral("%1-XXXXXX.job").arg(m_documentName)));
    if (!m_file->open()) {
        const QString reason = m_file->errorString();
        discardDocument();
        throw printerError(QStringLiteral("Impossibile creare il file di stampa: %1").arg(reason));
    }
    m_file->close();

    m_printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    m_printer->setDocName(m_documentName);
    m_printer->setPageSize(QPageSize(QPageSize::A4));
    m_printer->setPageOrientation(QPageLayout::Portrait);
    m_printer->setFullPage(false);
    // Not ending in .pdf, so the queue's own engine and layout stay in use.
    m_printer->setOutputFileName(m_file->fileName());
    if (!m_printer->isValid()) {
        discardDocument();
        throw printerError(QStringLiteral("La stampante %1 non è disponibile").arg(m_queue));
    }
    return *m_printer;
}

void CupsPrinter::deliverDocument()
{
    try {
        submit();
    } catch (const RuntimeError &) {
        discardDocument();
        throw;
    }
    discardDocument();
}

void CupsPrinter::discardDocument()
{
    m_printer.reset();
    m_file.reset();
}

void CupsPrinter::submit()
{
    QProcess lp;
    lp.start(QStringLiteral("lp"),
             {QStringLiteral("-d"), m_queue, QStringLiteral("-t"), m_documentName,
              QStringLiteral("-o"), QStringLiteral("media=A4"), QStringLiteral("--"),
              m_file->fileName()});
    if (!lp.waitForStarted())
        throw printerError(QStringLiteral("Impossibile avviare lp: %1").arg(lp.errorString()));
    if (!lp.waitForFinished(SubmitTimeoutMs)) {
        lp.kill();
        lp.waitForFinished();
        throw printerError(
            QStringLiteral("La stampante %1 non ha accettato il documento in tempo").arg(m_queue));
    }
    const QString output = QString::fromLocal8Bit(lp.readAllStandardOutput());
    const QString errors = QString::fromLocal8Bit(lp.readAllStandardError()).trimmed();
    if (lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0)
        throw printerError(
            QStringLiteral("La stampante %1 ha rifiutato il documento: %2").arg(m_queue, errors));
    // "request id is Ufficio-12 (1 file(s))"
    static const QRegularExpression requestId(QStringLiteral("\\b(\\S+-\\d+)\\b"));
    const QRegularExpressionMatch match = requestId.match(output);
    m_lastJob = match.hasMatch() ? match.captured(1) : QString();
}
