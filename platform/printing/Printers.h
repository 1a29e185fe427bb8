#pragma once

#include "platform/printing/Printer.h"

#include <memory>
#include <vector>

class Services;

// The installed printers, in the order the system lists them, and the
// current one, on which every printout goes. The system's collection is its
// CUPS queues followed by the built-in PDF printer; at start the current
// printer is the system default, or the PDF printer when there is none.
class Printers
{
public:
    explicit Printers(std::vector<std::unique_ptr<Printer>> printers, int currentIndex = 0);
    ~Printers();
    Printers(const Printers &) = delete;
    Printers &operator=(const Printers &) = delete;

    // The CUPS queues of this machine, then the PDF printer.
    static std::unique_ptr<Printers> installed(Services &services);

    int count() const { return int(m_printers.size()); }
    // Throws "subscript out of range" outside 0 .. count() - 1.
    Printer &at(int index) const;
    QStringList deviceNames() const;
    // The first printer with that device name, or -1.
    int indexOf(const QString &deviceName) const;

    // Throws a printer error when there is no printer at all.
    Printer &current() const;
    int currentIndex() const { return m_current; }
    void setCurrent(int index);
    // The printer must be one of this collection.
    void setCurrent(const Printer &printer);

private:
    std::vector<std::unique_ptr<Printer>> m_printers;
    int m_current = -1;
};
