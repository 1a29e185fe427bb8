#include "platform/printing/CupsPrinter.h"

#include "platform/Notifications.h"
#include "platform/RuntimeError.h"
#include "platform/printing/BoundedProcess.h"

#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QUrl>

namespace {

constexpr int Resolution = 1200;
// IPP gives margins in hundredths of a millimetre.
constexpr double PointsPerHundredthMm = 72 / 2540.0;

RuntimeError printerError(const QString &detail)
{
    return RuntimeError(RuntimeError::PrinterError, detail);
}

// The scheduler's address as ipptool wants it in a URI: a local socket's
// path is written with its slashes escaped.
QString serverAuthority(const QString &server)
{
    if (server.startsWith(QLatin1Char('/')))
        return QString::fromLatin1(QUrl::toPercentEncoding(server));
    return server;
}

} // namespace

CupsPrinter::CupsPrinter(const QString &queue, const QString &documentName,
                         Notifications *notifications)
    : m_queue(queue), m_documentName(documentName), m_notifications(notifications)
{
}

CupsPrinter::~CupsPrinter()
{
    // A document left open when the program ends is still sent, by an lp of
    // its own that outlives the program (and removes the file when done):
    // ending the program never waits for the server.
    if (closePainter()) {
        m_writer.reset();
        m_file->setAutoRemove(false);
        const QString file = m_file->fileName();
        m_file.reset();
        QStringList arguments = {QStringLiteral("-c"),
                                 QStringLiteral("timeout 120 lp \"$@\"; rm -f -- \"$0\""), file};
        arguments << lpArguments() << file;
        if (!QProcess::startDetached(QStringLiteral("sh"), arguments))
            QFile::remove(file);
    }
    discardDocument();
}

QStringList CupsPrinter::lpArguments() const
{
    return {QStringLiteral("-d"), m_queue,
            QStringLiteral("-t"), m_documentName,
            QStringLiteral("-o"), QStringLiteral("media=A4"),
            QStringLiteral("--")};
}

QMarginsF CupsPrinter::printableMargins()
{
    if (m_margins)
        return *m_margins;
    const BoundedProcess::Result server =
        BoundedProcess::run(QStringLiteral("lpstat"), {QStringLiteral("-H")}, ServerTimeoutMs);
    if (!server.succeeded())
        throw printerError(server.failure(QStringLiteral("lpstat")));
    const QString uri = QStringLiteral("ipp://%1/printers/%2")
                            .arg(serverAuthority(server.output.trimmed()), m_queue);
    const BoundedProcess::Result attributes = BoundedProcess::run(
        QStringLiteral("ipptool"),
        {QStringLiteral("-T"), QString::number((ServerTimeoutMs + 999) / 1000),
         QStringLiteral("-tv"), uri, QStringLiteral("get-printer-attributes.test")},
        ServerTimeoutMs);
    if (!attributes.succeeded())
        throw printerError(QStringLiteral("La stampante %1 non risponde: %2")
                               .arg(m_queue, attributes.failure(QStringLiteral("ipptool")) +
                                                 attributes.output.right(300)));
    // media-col-default (collection) = {media-size={...} media-bottom-margin=635 ...}
    const QRegularExpression line(QStringLiteral("media-col-default \\(collection\\) = (.*)"));
    const QString media = line.match(attributes.output).captured(1);
    auto margin = [&media](const char *side) {
        const QRegularExpression m(
            QStringLiteral("media-%1-margin=(\\d+)").arg(QLatin1String(side)));
        return m.match(media).captured(1).toDouble() * PointsPerHundredthMm;
    };
    m_margins = QMarginsF(margin("left"), margin("top"), margin("right"), margin("bottom"));
    return *m_margins;
}

QPagedPaintDevice &CupsPrinter::openDevice()
{
    const QMarginsF margins = printableMargins();
    m_file = std::make_unique<QTemporaryFile>(
        QDir::temp().filePath(QStringLiteral("%1-XXXXXX.pdf").arg(m_documentName)));
    if (!m_file->open()) {
        const QString reason = m_file->errorString();
        discardDocument();
        throw printerError(QStringLiteral("Impossibile creare il file di stampa: %1").arg(reason));
    }
    m_writer = std::make_unique<QPdfWriter>(m_file.get());
    m_writer->setResolution(Resolution);
    m_writer->setTitle(m_documentName);
    m_writer->setCreator(m_documentName);
    m_writer->setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, margins, QPageLayout::Point));
    return *m_writer;
}

void CupsPrinter::deliverDocument()
{
    m_writer.reset();
    try {
        if (!m_file->flush())
            throw printerError(QStringLiteral("Impossibile scrivere il file di stampa: %1")
                                   .arg(m_file->errorString()));
        submit();
    } catch (const RuntimeError &) {
        discardDocument();
        // The queue may have changed or gone: the next document asks again.
        m_margins.reset();
        throw;
    }
    discardDocument();
    if (m_notifications) {
        const QString number = m_lastJob.mid(m_lastJob.lastIndexOf(QLatin1Char('-')) + 1);
        m_notifications->notify(
            QStringLiteral("Il documento è stato inviato alla stampante %1:\nlavoro numero %2")
                .arg(m_queue, number));
    }
}

void CupsPrinter::discardDocument()
{
    m_writer.reset();
    m_file.reset();
}

void CupsPrinter::submit()
{
    const BoundedProcess::Result lp = BoundedProcess::run(
        QStringLiteral("lp"), lpArguments() << m_file->fileName(), ServerTimeoutMs);
    if (!lp.succeeded())
        throw printerError(QStringLiteral("La stampante %1 non ha accettato il documento: %2")
                               .arg(m_queue, lp.failure(QStringLiteral("lp"))));
    // "request id is Ufficio-12 (1 file(s))"
    static const QRegularExpression requestId(QStringLiteral("request id is (\\S+-\\d+)"));
    const QRegularExpressionMatch match = requestId.match(lp.output);
    m_lastJob = match.hasMatch() ? match.captured(1) : QString();
}
