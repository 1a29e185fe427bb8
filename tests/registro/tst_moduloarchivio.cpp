#include "registro/ArchivioRegistro.h"
#include "registro/AttesaRegistro.h"
#include "registro/ModuloArchivio.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

SerieRegistrata unaSerie(const QString &codice)
{
    SerieRegistrata s;
    s.codice = codice;
    s.inizio = QDateTime(QDate(2026, 11, 24), QTime(9, 0));
    s.fine = s.inizio.addSecs(60);
    s.nome = QStringLiteral("Lia");
    s.esercizi.append({1, QStringLiteral("473 da = 4 uk 7 h 3 da"), 4.5});
    return s;
}

// The register the program finds with this environment, and the series it
// is told to write at its start: one left waiting by an earlier run.
struct RegistroDelProgramma
{
    QTemporaryDir casa;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ImpostazioniRegistro impostazioni;

    RegistroDelProgramma()
    {
        const QString file = casa.filePath(QStringLiteral("registro.sqlite"));
        impostazioni = ImpostazioniRegistro::daRiga(QStringLiteral("sqlite ") + file,
                                                    casa.filePath(QStringLiteral("dati/Quadrivo")));
        ambiente.insert(QStringLiteral("XDG_DATA_HOME"), casa.filePath(QStringLiteral("dati")));
        ambiente.insert(QStringLiteral("XDG_CONFIG_HOME"), casa.filePath(QStringLiteral("config")));
        ambiente.insert(QStringLiteral("QUADRIVO_REGISTRO"), QStringLiteral("sqlite ") + file);
        ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    }

    // Starts `programma` until its start screen is idle; its exit status.
    int avvia(const QString &programma)
    {
        QProcess p;
        p.setProcessEnvironment(ambiente);
        p.setWorkingDirectory(casa.path());
        p.setProcessChannelMode(QProcess::ForwardedChannels);
        p.start(programma, {QStringLiteral("--prova-avvio")});
        if (!p.waitForFinished(60000))
            return -1;
        return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    }
};

} // namespace

// The register's storage as the program gets it: from the module beside it
// or in the installed place, and a clear reason when neither is usable.
class TestModuloArchivio : public QObject
{
    Q_OBJECT

private slots:
    void theModuleIsLookedForWhereItIsInstalledThenBesideTheProgram()
    {
        const QStringList p =
            ModuloArchivio::percorsi(QStringLiteral("/opt/prova/" QUADRIVO_BINDIR));
        QCOMPARE(p.size(), 2);
        QCOMPARE(p[0],
                 QStringLiteral("/opt/prova/" QUADRIVO_MODULI_DIR "/libquadrivo_archivio.so"));
        QCOMPARE(p[1], QStringLiteral("/opt/prova/" QUADRIVO_BINDIR "/libquadrivo_archivio.so"));
    }

    void theBuiltModuleKeepsAndReadsASeries()
    {
        // The build puts the module beside the program, the second place.
        const QStringList p = ModuloArchivio::percorsi(QStringLiteral(QUADRIVO_CARTELLA_PROGRAMMA));
        QVERIFY(QFile::exists(p[1]));
        const ModuloArchivio::Caricato modulo = ModuloArchivio::carica(p);
        QVERIFY2(modulo.crea, qPrintable(modulo.errore));
        QVERIFY(modulo.errore.isEmpty());
        // Not the copy linked into this test: the module's own.
        QVERIFY(modulo.crea != &quadrivo_archivio_crea);

        QTemporaryDir dir;
        const auto impostazioni = ImpostazioniRegistro::sqlite(dir.filePath("registro.sqlite"));
        std::unique_ptr<MotoreArchivio> archivio(
            modulo.crea(VersioneInterfacciaArchivio, impostazioni, QStringLiteral("modulo")));
        QVERIFY(archivio);
        QCOMPARE(archivio->apri(), MotoreArchivio::Ok);
        QCOMPARE(archivio->scrivi(unaSerie(QStringLiteral("m-1"))), MotoreArchivio::Ok);
        MotoreArchivio::Esito esito = MotoreArchivio::Errore;
        const QList<SerieRegistrata> tutte = archivio->tutte(&esito);
        QCOMPARE(esito, MotoreArchivio::Ok);
        QCOMPARE(tutte.size(), 1);
        QCOMPARE(tutte[0].nome, QStringLiteral("Lia"));
        QCOMPARE(tutte[0].esercizi.size(), 1);
        QCOMPARE(tutte[0].esercizi[0].riga, QStringLiteral("473 da = 4 uk 7 h 3 da"));
    }

    void aModuleOfAnotherInterfaceMakesNothing()
    {
        const ModuloArchivio::Caricato modulo = ModuloArchivio::carica(
            ModuloArchivio::percorsi(QStringLiteral(QUADRIVO_CARTELLA_PROGRAMMA)));
        QVERIFY(modulo.crea);
        QTemporaryDir dir;
        const auto impostazioni = ImpostazioniRegistro::sqlite(dir.filePath("r.sqlite"));
        QCOMPARE(
            modulo.crea(VersioneInterfacciaArchivio + 1, impostazioni, QStringLiteral("altra")),
            nullptr);
    }

    void withoutTheModuleTheReasonSaysWhatIsMissing_data()
    {
        QTest::addColumn<QString>("file"); // in a scratch folder; empty: none
        QTest::addColumn<QString>("contenuto");
        QTest::addColumn<QString>("motivo");
        QTest::newRow("missing") << ""
                                 << ""
                                 << "manca il file";
        QTest::newRow("not a library") << "libquadrivo_archivio.so"
                                       << "testo"
                                       << "libquadrivo_archivio.so";
        QTest::newRow("another library") << ""
                                         << "libm"
                                         << "non è il modulo del registro";
    }

    void withoutTheModuleTheReasonSaysWhatIsMissing()
    {
        QFETCH(QString, file);
        QFETCH(QString, contenuto);
        QFETCH(QString, motivo);
        QTemporaryDir dir;
        QStringList percorsi{dir.filePath("libquadrivo_archivio.so")};
        if (!file.isEmpty()) {
            QFile f(dir.filePath(file));
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(contenuto.toUtf8());
        } else if (contenuto == QLatin1String("libm")) {
            percorsi = {QStringLiteral("/lib/x86_64-linux-gnu/libm.so.6")};
            QVERIFY(QFile::exists(percorsi[0]));
        }
        const ModuloArchivio::Caricato modulo = ModuloArchivio::carica(percorsi);
        QVERIFY(!modulo.crea);
        QVERIFY2(modulo.errore.contains(motivo), qPrintable(modulo.errore));
        QVERIFY2(modulo.errore.startsWith(QStringLiteral("il modulo del registro non si apre")),
                 qPrintable(modulo.errore));
        QVERIFY(modulo.errore.endsWith(QStringLiteral("reinstallare Quadrivo")));
    }

    // The program itself, which does not link the SQL code, writes through
    // its module: a series left waiting is in the register after a start.
    void theProgramWritesThroughItsModule()
    {
        RegistroDelProgramma r;
        QCOMPARE(r.impostazioni.attesa,
                 r.casa.filePath(QStringLiteral("dati/Quadrivo/registro-in-attesa")));
        QVERIFY(AttesaRegistro(r.impostazioni.attesa).metti(unaSerie(QStringLiteral("p-1"))));
        QCOMPARE(r.avvia(QStringLiteral(QUADRIVO_CARTELLA_PROGRAMMA "/Quadrivo")), 0);
        QVERIFY(AttesaRegistro(r.impostazioni.attesa).vuota());
        ArchivioRegistro archivio(r.impostazioni, QStringLiteral("dopo"));
        ArchivioRegistro::Esito esito = ArchivioRegistro::Errore;
        const QList<SerieRegistrata> tutte = archivio.tutte(&esito);
        QCOMPARE(esito, ArchivioRegistro::Ok);
        QCOMPARE(tutte.size(), 1);
        QCOMPARE(tutte[0].codice, QStringLiteral("p-1"));
    }

    // A program without its module loses nothing: the series keeps waiting.
    void withoutItsModuleTheProgramKeepsTheSeriesWaiting()
    {
        RegistroDelProgramma r;
        QVERIFY(AttesaRegistro(r.impostazioni.attesa).metti(unaSerie(QStringLiteral("p-2"))));
        const QString copia = r.casa.filePath(QStringLiteral("Quadrivo"));
        QVERIFY(QFile::copy(QStringLiteral(QUADRIVO_CARTELLA_PROGRAMMA "/Quadrivo"), copia));
        QCOMPARE(r.avvia(copia), 0);
        const QList<SerieRegistrata> attesa = AttesaRegistro(r.impostazioni.attesa).tutte();
        QCOMPARE(attesa.size(), 1);
        QCOMPARE(attesa[0].codice, QStringLiteral("p-2"));
        QVERIFY(!QFile::exists(r.impostazioni.percorso) ||
                QFileInfo(r.impostazioni.percorso).size() == 0);
    }

    void thisProgramUsesTheCodeItLinks()
    {
        const ModuloArchivio::Caricato &modulo = ModuloArchivio::diQuestoProgramma();
        QVERIFY(modulo.crea == &quadrivo_archivio_crea);
        QTemporaryDir dir;
        ArchivioRegistro archivio(ImpostazioniRegistro::sqlite(dir.filePath("r.sqlite")),
                                  QStringLiteral("linkato"));
        QCOMPARE(archivio.apri(), ArchivioRegistro::Ok);
        QVERIFY(archivio.aperto());
        QVERIFY(archivio.database());
    }
};

QTEST_GUILESS_MAIN(TestModuloArchivio)
#include "tst_moduloarchivio.moc"
