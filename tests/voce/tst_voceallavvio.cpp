#include "../drill/Alunno.h"
#include "platform/Fonts.h"
#include "start/FrmInizio.h"
#include "voce/AvvioVoce.h"
#include "voce/ImpostazioniUtente.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

using namespace ScreenTest;

namespace {

bool espeakCaricato()
{
    QFile mappe(QStringLiteral("/proc/self/maps"));
    if (!mappe.open(QIODevice::ReadOnly))
        return false;
    return mappe.readAll().contains("libespeak-ng");
}

bool filoDellaVoce()
{
    const QFileInfoList fili =
        QDir(QStringLiteral("/proc/self/task")).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QFileInfo &filo : fili) {
        QFile nome(filo.filePath() + QStringLiteral("/comm"));
        if (nome.open(QIODevice::ReadOnly) && nome.readAll().startsWith("SintesiEspeak"))
            return true;
    }
    return false;
}

} // namespace

// Start-up pays nothing for the voice: the speech library is not linked to
// the program, and is loaded only when a sentence is said with the voice on.
class TestVoceAllAvvio : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void ilProgrammaNonELegatoAllaLibreria()
    {
        const QString eseguibile = qEnvironmentVariable("QUADRIVO_ESEGUIBILE");
        QVERIFY(QFile::exists(eseguibile));
        QProcess ldd;
        ldd.start(QStringLiteral("ldd"), {eseguibile});
        QVERIFY(ldd.waitForFinished(30000));
        const QByteArray librerie = ldd.readAllStandardOutput();
        QVERIFY(librerie.contains("libQt6Widgets"));
        QVERIFY(!librerie.contains("espeak"));
    }

    void laLibreriaArrivaSoloConLaPrimaFrase()
    {
        QTemporaryDir cartella;
        const QString file = cartella.filePath(QStringLiteral("Quadrivo.conf"));
        ImpostazioniUtente(file).setVoce(true);
        TestContext t;
        AvvioVoce::installa(*t, ImpostazioniUtente(file));
        QVERIFY(t->voce().attiva());
        FrmInizio &inizio = t->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        settle();
        QVERIFY(!espeakCaricato());
        // No thread of the voice either.
        QVERIFY(!filoDellaVoce());

        // The drill says its first question: now the library is there.
        Alunno a(t);
        a.preparaSerie(8);
        a.prossimeCifre(4, 7);
        QVERIFY(a.apri());
        QTRY_VERIFY_WITH_TIMEOUT(espeakCaricato(), 20000);
        QVERIFY(filoDellaVoce());
        a.esci();
        settle();
    }
};

QTEST_MAIN(TestVoceAllAvvio)
#include "tst_voceallavvio.moc"
