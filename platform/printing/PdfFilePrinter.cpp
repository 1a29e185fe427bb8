#include "platform/printing/PdfFilePrinter.h"

#include "platform/RuntimeError.h"
#include "platform/Services.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Edges no office printer reaches either; keeps the layout the same as on paper.
constexpr double MarginPoints = 18;
constexpr int Resolution = 1200;
constexpr int MaxFilesPerDay = 99999;

} // namespace

PdfFilePrinter::PdfFilePrinter(Services &services) : m_services(services)
{
}

PdfFilePrinter::~PdfFilePrinter()
{
    // A document left open when the program ends is kept as it stands.
    if (closePainter()) {
        m_writer.reset();
        m_file->close();
    }
}

QString PdfFilePrinter::deviceName()
{
    return QStringLiteral("Stampa su file PDF");
}

double PdfFilePrinter::ScaleWidth() const
{
    return (QPageSize(QPageSize::A4).size(QPageSize::Point).width() - 2 * MarginPoints) * 20;
}

QPagedPaintDevice &PdfFilePrinter::openDevice()
{
    createNewFile();
    m_writer = std::make_unique<QPdfWriter>(m_file.get());
    m_writer->setResolution(Resolution);
    m_writer->setPageLayout(QPageLayout(
        QPageSize(QPageSize::A4), QPageLayout::Portrait,
        QMarginsF(MarginPoints, MarginPoints, MarginPoints, MarginPoints), QPageLayout::Point));
    m_writer->setCreator(m_services.executableName());
    m_writer->setTitle(m_services.executableName());
    return *m_writer;
}

void PdfFilePrinter::createNewFile()
{
    const QDir directory(m_directory.isEmpty() ? m_services.workingDirectory() : m_directory);
    const QString stem = QStringLiteral("%1-%2-").arg(
        m_services.executableName(), m_services.clock().now().date().toString(u"yyyy-MM-dd"));
    for (int n = 1; n <= MaxFilesPerDay; ++n) {
        auto file = std::make_unique<QFile>(
            directory.filePath(stem + QStringLiteral("%1.pdf").arg(n, 3, 10, QLatin1Char('0'))));
        if (file->exists())
            continue;
        // NewOnly: a file that appeared in the meantime is not overwritten.
        if (file->open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
            m_file = std::move(file);
            return;
        }
        if (file->exists())
            continue;
        throw RuntimeError(
            RuntimeError::PrinterError,
            QStringLiteral("Impossibile creare il file %1: %2")
                .arg(QDir::toNativeSeparators(file->fileName()), file->errorString()));
    }
    throw RuntimeError(RuntimeError::PrinterError,
                       QStringLiteral("Troppi documenti in %1")
                           .arg(QDir::toNativeSeparators(directory.absolutePath())));
}

void PdfFilePrinter::deliverDocument()
{
    m_writer.reset();
    const bool written = m_file->flush() && m_file->error() == QFileDevice::NoError;
    const QString reason = m_file->errorString();
    const QString path = QFileInfo(m_file->fileName()).absoluteFilePath();
    if (!written) {
        discardDocument();
        throw RuntimeError(RuntimeError::PrinterError,
                           QStringLiteral("Impossibile scrivere il file %1: %2")
                               .arg(QDir::toNativeSeparators(path), reason));
    }
    m_file.reset();
    m_lastFile = path;
    m_services.notifications().notify(QStringLiteral("Il documento è stato salvato nel file:\n%1")
                                          .arg(QDir::toNativeSeparators(path)));
}

void PdfFilePrinter::discardDocument()
{
    m_writer.reset();
    if (m_file) {
        // Only ever a file this printer created for the document.
        m_file->remove();
        m_file.reset();
    }
}
