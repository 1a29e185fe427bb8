#include "platform/Notifications.h"

#include "platform/MessageBoxes.h"

#include <QApplication>
#include <QMessageBox>

void QtNotifications::notify(const QString &text)
{
    auto *box = new QMessageBox(QMessageBox::Information, MessageBoxes::defaultTitle(), text,
                                QMessageBox::Ok, QApplication::activeWindow());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::NonModal);
    box->show();
}
