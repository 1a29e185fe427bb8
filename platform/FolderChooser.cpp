#include "platform/FolderChooser.h"

#include <QApplication>
#include <QFileDialog>

QString QtFolderChooser::choose(const QString &title, const QString &start)
{
    // Qt's own dialog, not the desktop's: it speaks the program's Italian
    // whatever language the desktop is set to.
    return QFileDialog::getExistingDirectory(QApplication::activeWindow(), title, start,
                                             QFileDialog::ShowDirsOnly |
                                                 QFileDialog::DontUseNativeDialog);
}
