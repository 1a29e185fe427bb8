#include "platform/printing/Printers.h"

#include "platform/RuntimeError.h"
#include "platform/Services.h"
#include "platform/printing/BoundedProcess.h"
#include "platform/printing/CupsPrinter.h"
#include "platform/printing/PdfFilePrinter.h"

namespace {

// The list is wanted now: a server that does not answer in this time is
// taken as having no queues.
constexpr int ListTimeoutMs = 3000;

} // namespace

Printers::Printers(std::vector<std::unique_ptr<Printer>> printers, int currentIndex)
    : m_printers(std::move(printers))
{
    if (!m_printers.empty())
        setCurrent(currentIndex);
}

Printers::~Printers() = default;

Printers::SystemList Printers::readSystemList()
{
    // "system default destination: Aula" (or "no system default
    // destination"), then one queue per line, in the order of the server.
    // lpstat rather than libcups: it is asked with a deadline, so a hung
    // server cannot freeze the program, and it asks afresh every time.
    SystemList list;
    const BoundedProcess::Result lpstat = BoundedProcess::run(
        QStringLiteral("lpstat"), {QStringLiteral("-d"), QStringLiteral("-e")}, ListTimeoutMs);
    if (lpstat.outcome != BoundedProcess::Outcome::Finished)
        return list;
    const QString defaultPrefix = QStringLiteral("system default destination: ");
    for (const QString &line : lpstat.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(defaultPrefix))
            list.systemDefault = line.mid(defaultPrefix.size()).trimmed();
        else if (!line.contains(QLatin1Char(' ')))
            list.queues << line.trimmed();
    }
    return list;
}

std::unique_ptr<Printers> Printers::installed(Services &services)
{
    const SystemList system = readSystemList();
    auto collection = std::make_unique<Printers>(std::vector<std::unique_ptr<Printer>>{});
    collection->m_services = &services;
    collection->rebuild(system.queues);
    const int index =
        system.systemDefault.isEmpty() ? -1 : collection->indexOf(system.systemDefault);
    collection->setCurrent(index >= 0 ? index : collection->count() - 1);
    return collection;
}

bool Printers::refresh()
{
    if (!m_services)
        return false;
    const QStringList before = deviceNames();
    rebuild(readSystemList().queues);
    return deviceNames() != before;
}

void Printers::rebuild(const QStringList &queues)
{
    std::vector<std::unique_ptr<Printer>> old = std::move(m_printers);
    m_printers.clear();
    auto take = [&old](const QString &name) -> std::unique_ptr<Printer> {
        for (auto &p : old)
            if (p && p->DeviceName() == name)
                return std::move(p);
        return nullptr;
    };
    for (const QString &queue : queues) {
        auto printer = take(queue);
        if (!printer)
            printer = std::make_unique<CupsPrinter>(queue, m_services->executableName(),
                                                    &m_services->notifications());
        m_printers.push_back(std::move(printer));
    }
    auto pdf = take(PdfFilePrinter::deviceName());
    m_printers.push_back(pdf ? std::move(pdf) : std::make_unique<PdfFilePrinter>(*m_services));
    for (auto &p : old)
        if (p)
            m_retired.push_back(std::move(p));
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
    if (!m_current)
        throw RuntimeError(RuntimeError::PrinterError,
                           QStringLiteral("Nessuna stampante installata"));
    return *m_current;
}

int Printers::currentIndex() const
{
    for (int i = 0; i < count(); ++i)
        if (m_printers[std::size_t(i)].get() == m_current)
            return i;
    return -1;
}

void Printers::setCurrent(int index)
{
    m_current = &at(index);
}

void Printers::setCurrent(const Printer &printer)
{
    for (const auto &p : m_printers) {
        if (p.get() == &printer) {
            m_current = p.get();
            return;
        }
    }
    throw RuntimeError(
        RuntimeError::InvalidProcedureCall,
        QStringLiteral("La stampante %1 non è tra quelle installate").arg(printer.DeviceName()));
}
