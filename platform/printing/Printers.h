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

    // Asks the system again which queues there are (for a collection made by
    // installed(); others stay as they are). A queue still listed keeps its
    // printer; the current printer stays current even when the system no
    // longer lists it, and printing on it then fails like any printer gone.
    // True when the list changed.
    bool refresh();

    int count() const { return int(m_printers.size()); }
    // Throws "subscript out of range" outside 0 .. count() - 1.
    Printer &at(int index) const;
    QStringList deviceNames() const;
    // The first printer with that device name, or -1.
    int indexOf(const QString &deviceName) const;

    // Throws a printer error when there is no printer at all.
    Printer &current() const;
    // -1 when the current printer is no longer listed.
    int currentIndex() const;
    void setCurrent(int index);
    // The printer must be one of this collection.
    void setCurrent(const Printer &printer);

private:
    struct SystemList
    {
        QStringList queues;
        QString systemDefault;
    };
    static SystemList readSystemList();
    void rebuild(const QStringList &queues);

    std::vector<std::unique_ptr<Printer>> m_printers;
    // Printers the system stopped listing: someone may still hold them.
    std::vector<std::unique_ptr<Printer>> m_retired;
    Printer *m_current = nullptr;
    Services *m_services = nullptr;
};
