#include "platform/Notifications.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>

class TestNotifications : public QObject
{
    Q_OBJECT

private slots:
    void aNoticeIsShownWithoutStoppingTheProgram()
    {
        QtNotifications notifications;
        // Returns at once: a modal box would wait here for the user.
        notifications.notify(QStringLiteral("Il documento è stato salvato nel file:\n/tmp/x.pdf"));

        QPointer<QMessageBox> box;
        for (QWidget *w : QApplication::topLevelWidgets())
            if (auto *b = qobject_cast<QMessageBox *>(w); b && b->isVisible())
                box = b;
        QVERIFY(box);
        QCOMPARE(box->text(), QStringLiteral("Il documento è stato salvato nel file:\n/tmp/x.pdf"));
        QVERIFY(!box->isModal());
        QCOMPARE(box->windowModality(), Qt::NonModal);
        QCOMPARE(box->icon(), QMessageBox::Information);

        // Closed by the user, it goes away.
        box->close();
        QTRY_VERIFY(box.isNull());
    }
};

QTEST_MAIN(TestNotifications)
#include "tst_notifications.moc"
