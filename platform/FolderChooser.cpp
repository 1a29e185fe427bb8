#include "platform/FolderChooser.h"

#include <QApplication>
#include <QFileDialog>

QString QtFolderChooser::choose(const QString &title, const QString &start)
{
    return QFileDialog::getExistingDirectory(QApplication::activeWindow(), title, start);
}
