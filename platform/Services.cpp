#include "platform/Services.h"

#include "platform/Form.h"
#include "platform/printing/Printer.h"
#include "platform/printing/Printers.h"

#include <QDir>

Services::Services()
    : m_clock(std::make_unique<SystemClock>()), m_random(std::make_unique<MixingRandom>()),
      m_messageBoxes(std::make_unique<QtMessageBoxes>()),
      m_errorReport(std::make_unique<FatalErrorReport>(*this)),
      m_screens(std::make_unique<ScreenRegistry>()),
      m_notifications(std::make_unique<QtNotifications>()),
      m_folderChooser(std::make_unique<QtFolderChooser>())
{
}

Services::~Services()
{
    // Screens go first: they may still hold on to the other services.
    m_screens.reset();
}

Printers &Services::printers()
{
    if (!m_printers)
        m_printers = Printers::installed(*this);
    return *m_printers;
}

void Services::setPrinters(std::unique_ptr<Printers> printers)
{
    m_printers = std::move(printers);
}

Printer &Services::printer()
{
    Printer &p = printers().current();
    p.setCaratteri(&m_caratteriLeggibili);
    return p;
}

void Services::setCaratteriLeggibili(bool attivi)
{
    m_caratteriLeggibili.setAttivi(attivi);
    for (Form *schermo : screens().loaded())
        schermo->applicaCaratteri();
}

QString Services::workingDirectory() const
{
    return m_workingDirectory.isEmpty() ? QDir::currentPath() : m_workingDirectory;
}

void Services::runHandler(const std::function<void()> &handler)
{
    try {
        handler();
    } catch (const RuntimeError &error) {
        m_errorReport->report(error);
    }
}
