#include "app/Avvio.h"
#include "platform/FolderChooser.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {

// Every text a user reads on `dialog`: labels, buttons and their hints.
QStringList testi(QWidget *dialog)
{
    QStringList out;
    for (QLabel *l : dialog->findChildren<QLabel *>())
        if (l->isVisible())
            out << l->text();
    for (QAbstractButton *b : dialog->findChildren<QAbstractButton *>())
        if (b->isVisible())
            out << b->text() << b->toolTip();
    out.removeAll(QString());
    return out;
}

// Runs `leggi` on the modal dialog that `apri` opens, then closes it.
template <class Dialogo> QStringList testiDi(const std::function<void()> &apri)
{
    QStringList letti;
    bool visto = false;
    QTimer attesa;
    attesa.setInterval(20);
    QObject::connect(&attesa, &QTimer::timeout, [&] {
        auto *d = qobject_cast<Dialogo *>(QApplication::activeModalWidget());
        if (!d || !d->isVisible())
            return;
        attesa.stop();
        visto = true;
        letti = testi(d);
        letti.prepend(d->windowTitle());
        d->reject();
    });
    attesa.start();
    apri();
    return visto ? letti : QStringList{QStringLiteral("(nessun dialogo)")};
}

} // namespace

// The program's start-up loads Qt's Italian texts: the standard dialogs
// speak Italian even on a desktop set to English (main below).
class TestDialoghiItaliani : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(QLocale::system().language(), QLocale::English);
        Avvio::preparaApplicazione();
    }

    void theFolderDialogSpeaksItalian()
    {
        QTemporaryDir dir;
        const QStringList t = testiDi<QFileDialog>(
            [&] { QtFolderChooser().choose(QStringLiteral("Cartella dei file PDF"), dir.path()); });
        QVERIFY2(t.size() > 3, qPrintable(t.join(" | ")));
        QCOMPARE(t.first(), QStringLiteral("Cartella dei file PDF"));
        for (const char *italiano :
             {"Cerca in:", "Annulla", "Crea nuova cartella", "Cartella:", "S&cegli",
              "Vista a elenco", "Vista dettagliata", "Cartella superiore"})
            QVERIFY2(t.contains(QString::fromUtf8(italiano)),
                     qPrintable(QString::fromUtf8(italiano) + " not in " + t.join(" | ")));
        for (const char *english :
             {"Look in:", "Cancel", "&Cancel", "Create New Folder", "Directory:", "Choose",
              "&Choose", "Back", "Forward", "Parent Directory", "List View", "Detail View",
              "Files of type:"})
            QVERIFY2(!t.contains(QString::fromLatin1(english)),
                     qPrintable(QString::fromLatin1(english) + " in " + t.join(" | ")));
    }

    void aMessageBoxsButtonsSpeakItalian()
    {
        const QStringList t = testiDi<QMessageBox>([] {
            QMessageBox box(QMessageBox::Question, QStringLiteral("Quadrivo"),
                            QStringLiteral("Domanda"),
                            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            box.exec();
        });
        for (const char *italiano : {"&Sì", "&No", "Annulla"})
            QVERIFY2(t.contains(QString::fromUtf8(italiano)),
                     qPrintable(QString::fromUtf8(italiano) + " not in " + t.join(" | ")));
        QVERIFY(!t.contains(QStringLiteral("&Yes")));
        QVERIFY(!t.contains(QStringLiteral("Cancel")));
    }
};

int main(int argc, char *argv[])
{
    // A desktop set to English.
    qputenv("LANG", "en_US.UTF-8");
    qputenv("LANGUAGE", "en_US");
    qunsetenv("LC_ALL");
    qunsetenv("LC_MESSAGES");
    QApplication app(argc, argv);
    TestDialoghiItaliani test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_dialoghiitaliani.moc"
