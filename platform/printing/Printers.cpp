#include "platform/printing/Printers.h"

#include "platform/RuntimeError.h"
#include "platform/Services.h"
#include "platform/printing/CupsPrinter.h"
#include "platform/printing/PdfFilePrinter.h"

#include <QPrinterInfo>

Printers::Printers(std::vector<std::unique_ptr<Printer>> printers, int currentIndex)
    : m_printers(std::move(printers))
{
    if (!m_printers.empty())
        setCurrent(currentIndex);
}

Printers::~Printers() = default;

std::unique_ptr<Printers> Printers::installed(Services &services)
{
    std::vector<std::unique_ptr<Printer>> printers;
    for (const QString &queue : QPrinterInfo::availablePrinterNames())
        printers.push_back(std::make_unique<CupsPrinter>(queue, services.executableName()));
    printers.push_back(std::make_unique<PdfFilePrinter>(services));

    auto collection = std::make_unique<Printers>(std::move(printers));
    const QString systemDefault = QPrinterInfo::defaultPrinterName();
    const int index = systemDefault.isEmpty() ? -1 : collection->indexOf(systemDefault);
    collection->setCurrent(index >= 0 ? index : collection->count() - 1);
    return collection;
}

Printer &Printers::at(int index) const
{
    if (index < 0 || index >= count())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return *m_printers[std::size_t(index)];
}

QStringList Printers::deviceNames() const
{
    QStringList names;
    for (const auto &printer : m_printers)
        names << printer->DeviceName();
    return names;
}

int Printers::indexOf(const QString &deviceName) const
{
    for (int i = 0; i < count(); ++i)
        if (m_printers[std::size_t(i)]->DeviceName() == deviceName)
            return i;
    return -1;
}

Printer &Printers::current() const
{
    if (m_current < 0)
        throw RuntimeError(RuntimeError::PrinterError,
                           QStringLiteral("Nessuna stampante installata"));
    return *m_printers[std::size_t(m_current)];
}

void Printers::setCurrent(int index)
{
    at(index); // range check
    m_current = index;
}

void Printers::setCurrent(const Printer &printer)
{
    for (int i = 0; i < count(); ++i) {
        if (m_printers[std::size_t(i)].get() == &printer) {
            m_current = i;
            return;
        }
    }
    throw RuntimeError(
        RuntimeError::InvalidProcedureCall,
        QStringLiteral("La stampante %1 non è tra quelle installate").arg(printer.DeviceName()));
}
