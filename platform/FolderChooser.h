#pragma once

#include <QString>

// Asks the user for a folder. A service, so tests answer without a dialog.
class FolderChooser
{
public:
    virtual ~FolderChooser() = default;
    // The folder chosen, or the empty text when the user gave up.
    virtual QString choose(const QString &title, const QString &start) = 0;
};

// Qt's folder dialog over the active window.
class QtFolderChooser final : public FolderChooser
{
public:
    QString choose(const QString &title, const QString &start) override;
};
