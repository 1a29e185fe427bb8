#pragma once

#include "platform/CaratteriLeggibili.h"
#include "platform/Clock.h"
#include "platform/ErrorReport.h"
#include "platform/FolderChooser.h"
#include "platform/MessageBoxes.h"
#include "platform/Notifications.h"
#include "platform/RandomSource.h"
#include "platform/RuntimeError.h"
#include "platform/ScreenRegistry.h"

#include <QString>
#include <functional>
#include <memory>

class Printer;
class Printers;

// The platform services one run of the program uses: clock, random numbers,
// message boxes, notices, the printers, the general error report and the
// working directory. Each is
// replaceable, so a test runs against a pinned clock, scripted draws and
// recording boxes.
class Services
{
public:
    Services();
    virtual ~Services();
    Services(const Services &) = delete;
    Services &operator=(const Services &) = delete;

    Clock &clock() { return *m_clock; }
    RandomSource &random() { return *m_random; }
    MessageBoxes &messageBoxes() { return *m_messageBoxes; }
    ErrorReport &errorReport() { return *m_errorReport; }
    ScreenRegistry &screens() { return *m_screens; }

    void setClock(std::unique_ptr<Clock> clock) { m_clock = std::move(clock); }
    void setRandom(std::unique_ptr<RandomSource> random) { m_random = std::move(random); }
    void setMessageBoxes(std::unique_ptr<MessageBoxes> boxes) { m_messageBoxes = std::move(boxes); }
    void setErrorReport(std::unique_ptr<ErrorReport> report) { m_errorReport = std::move(report); }

    // Folders the user picks (where the PDF printer writes).
    FolderChooser &folderChooser() { return *m_folderChooser; }
    void setFolderChooser(std::unique_ptr<FolderChooser> chooser)
    {
        m_folderChooser = std::move(chooser);
    }

    // Notices that need no answer (where a printed file went).
    Notifications &notifications() { return *m_notifications; }
    void setNotifications(std::unique_ptr<Notifications> notifications)
    {
        m_notifications = std::move(notifications);
    }

    // The installed printers; the system's are looked up at first use, so a
    // test that installs its own never touches the printing system.
    Printers &printers();
    void setPrinters(std::unique_ptr<Printers> printers);
    // Whether the printers have been looked up yet (start-up never does).
    bool printersLookedUp() const { return m_printers != nullptr; }
    // The current printer, on which every printout goes.
    Printer &printer();

    // Where the program's own files (the levels file) are read and written.
    QString workingDirectory() const;
    void setWorkingDirectory(const QString &dir) { m_workingDirectory = dir; }

    // The executable's file name without path and extension ("Quadrivo").
    QString executableName() const { return m_executableName; }
    void setExecutableName(const QString &name) { m_executableName = name; }

    // The high-readability font of every screen and printout.
    const CaratteriLeggibili &caratteriLeggibili() const { return m_caratteriLeggibili; }
    CaratteriLeggibili &caratteriLeggibili() { return m_caratteriLeggibili; }
    // Turns it on or off and shows every loaded screen in the fonts it wants.
    void setCaratteriLeggibili(bool attivi);

    // Runs a handler at the boundary with Qt: a run-time error it raises goes
    // to the general error report and never crosses into Qt's frames.
    void runHandler(const std::function<void()> &handler);

private:
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<RandomSource> m_random;
    std::unique_ptr<MessageBoxes> m_messageBoxes;
    std::unique_ptr<ErrorReport> m_errorReport;
    std::unique_ptr<ScreenRegistry> m_screens;
    QString m_workingDirectory;
    QString m_executableName = QStringLiteral("Quadrivo");
    std::unique_ptr<Notifications> m_notifications;
    std::unique_ptr<FolderChooser> m_folderChooser;
    std::unique_ptr<Printers> m_printers;
    CaratteriLeggibili m_caratteriLeggibili;
};
