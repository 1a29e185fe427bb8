// The order in which the program names its libraries (app/CMakeLists.txt):
// it loads what any Qt Widgets program loads, its symbol lookups pass fewer
// libraries, and every symbol binds where it binds in such a program.
// Both programs run once with the loader's own report (LD_DEBUG).
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {

// One binding: the library asking, the symbol and its version.
struct Richiesta
{
    QString da;
    QString simbolo;
    QString versione;
    friend bool operator==(const Richiesta &, const Richiesta &) = default;
};
size_t qHash(const Richiesta &r, size_t seme = 0)
{
    return qHashMulti(seme, r.da, r.simbolo, r.versione);
}

struct Caricamento
{
    // The global scope: the program, then its libraries in lookup order (paths).
    QStringList ambito;
    // Where each symbol was found (a path).
    QHash<Richiesta, QString> legami;
};

QString nomeDi(const QString &percorso)
{
    return QFileInfo(percorso).fileName();
}

// Runs `programma` to its first window and back with the loader reporting
// its scopes and bindings.
Caricamento carica(const QString &programma, const QStringList &argomenti)
{
    Caricamento c;
    QTemporaryDir cartella;
    if (!cartella.isValid())
        return c;
    QProcess p;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QStringLiteral("LD_DEBUG"), QStringLiteral("scopes,bindings"));
    ambiente.insert(QStringLiteral("LD_DEBUG_OUTPUT"), cartella.filePath(QStringLiteral("ld")));
    p.setProcessEnvironment(ambiente);
    p.setWorkingDirectory(cartella.path());
    p.start(programma, argomenti);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        qWarning() << programma << "did not end well:" << p.readAllStandardError();
        return c;
    }
    // The report goes to ld.<pid>.
    const QStringList file = QDir(cartella.path()).entryList({QStringLiteral("ld.*")});
    if (file.size() != 1)
        return c;
    QFile f(cartella.filePath(file.first()));
    if (!f.open(QIODevice::ReadOnly))
        return c;
    const QString testo = QString::fromLocal8Bit(f.readAll());
    const QString percorso = QFileInfo(programma).canonicalFilePath();
    static const QRegularExpression ambito(QStringLiteral("scope 0: (.*)$"),
                                           QRegularExpression::MultilineOption);
    if (const auto m = ambito.match(testo); m.hasMatch()) {
        c.ambito = m.captured(1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (QString &voce : c.ambito)
            voce = QFileInfo(voce).canonicalFilePath();
        c.ambito.first() = percorso;
    }
    static const QRegularExpression legame(
        QStringLiteral("binding file (\\S+) \\[\\d+\\] to (\\S+) \\[\\d+\\]: \\w+ symbol "
                       "`([^']+)'(?: \\[([^\\]]+)\\])?"));
    for (auto i = legame.globalMatch(testo); i.hasNext();) {
        const auto m = i.next();
        const QString da = QFileInfo(m.captured(1)).canonicalFilePath();
        const QString a = QFileInfo(m.captured(2)).canonicalFilePath();
        c.legami.insert({da.isEmpty() ? percorso : da, m.captured(3), m.captured(4)},
                        a.isEmpty() ? percorso : a);
    }
    return c;
}

// The symbols a library exports, as "name@version" and as "name".
QSet<QString> definitiDa(const QString &libreria)
{
    QSet<QString> d;
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), libreria});
    if (!nm.waitForFinished(60000))
        return d;
    const QList<QByteArray> righe = nm.readAllStandardOutput().split('\n');
    for (const QByteArray &riga : righe) {
        const QList<QByteArray> campi = riga.simplified().split(' ');
        if (campi.size() < 3)
            continue;
        QString nome = QString::fromLatin1(campi[2]);
        d.insert(nome.section(QLatin1Char('@'), 0, 0));
        d.insert(nome.replace(QStringLiteral("@@"), QStringLiteral("@")));
    }
    return d;
}

double passaggiMedi(const Caricamento &c)
{
    qint64 somma = 0, conteggio = 0;
    for (const QString &a : c.legami) {
        const qsizetype posto = c.ambito.indexOf(a);
        if (posto < 0)
            continue; // a module's own library, found in its local scope
        somma += posto;
        ++conteggio;
    }
    return conteggio ? double(somma) / double(conteggio) : 0;
}

} // namespace

class TestOrdineLibrerie : public QObject
{
    Q_OBJECT

    Caricamento quadrivo;
    Caricamento minimo;

private slots:
    void initTestCase()
    {
        quadrivo = carica(QStringLiteral(QUADRIVO_PROGRAMMA), {QStringLiteral("--prova-avvio")});
        minimo = carica(QStringLiteral(QUADRIVO_MINIMO), {});
        QVERIFY(quadrivo.ambito.size() > 10);
        QVERIFY(minimo.ambito.size() > 10);
        QVERIFY(quadrivo.legami.size() > 1000);
        QVERIFY(minimo.legami.size() > 1000);
    }

    void theProgramLoadsWhatAQtWidgetsProgramLoads()
    {
        const QSet<QString> suoi(quadrivo.ambito.cbegin() + 1, quadrivo.ambito.cend());
        const QSet<QString> diQt(minimo.ambito.cbegin() + 1, minimo.ambito.cend());
        QStringList inPiu, inMeno;
        for (const QString &l : suoi - diQt)
            inPiu << nomeDi(l);
        for (const QString &l : diQt - suoi)
            inMeno << nomeDi(l);
        QVERIFY2(inPiu.isEmpty(), qPrintable(QStringLiteral("loaded at start beyond Qt: ") +
                                             inPiu.join(QLatin1Char(' '))));
        QVERIFY2(inMeno.isEmpty(),
                 qPrintable(QStringLiteral("not loaded: ") + inMeno.join(QLatin1Char(' '))));
    }

    void theLibrariesMostAskedComeFirst()
    {
        QStringList testa;
        for (qsizetype i = 1; i < std::min<qsizetype>(5, quadrivo.ambito.size()); ++i)
            testa << nomeDi(quadrivo.ambito.at(i)).section(QLatin1Char('.'), 0, 0);
        QCOMPARE(testa, (QStringList{"libQt6Core", "libQt6Gui", "libstdc++", "libc"}));
        const double suoi = passaggiMedi(quadrivo);
        const double diQt = passaggiMedi(minimo);
        qInfo("libraries passed per symbol looked up: %.2f (a Qt Widgets program: %.2f)", suoi,
              diQt);
        QVERIFY2(suoi < 0.7 * diQt, qPrintable(QString::number(suoi)));
    }

    void everySymbolBindsWhereItBindsInAQtWidgetsProgram()
    {
        // Where a C symbol is defined in more than one library, the order
        // decides which one serves: it must be the one a Qt Widgets program,
        // with the libraries in their own order, finds first. A C++ entity
        // exported by several libraries (a template's instance, an inline
        // function's static) is one entity with identical copies: any copy
        // may serve, as long as one serves the whole process.
        QHash<QString, QSet<QString>> definiti;
        for (const QString &l : std::as_const(minimo.ambito)) {
            if (l == minimo.ambito.first())
                continue;
            definiti.insert(l, definitiDa(l));
            // Every library exports something: an empty list is nm failing.
            QVERIFY2(!definiti.value(l).isEmpty(), qPrintable(l));
        }
        QStringList altrove, divisi;
        QHash<QString, QString> dove;
        int doppiC = 0;
        for (auto i = quadrivo.legami.cbegin(); i != quadrivo.legami.cend(); ++i) {
            if (!definiti.contains(i.value()))
                continue; // the program itself, or a module's local scope
            const Richiesta &r = i.key();
            const QString chiave =
                r.versione.isEmpty() ? r.simbolo : r.simbolo + QLatin1Char('@') + r.versione;
            if (const auto gia = dove.constFind(chiave); gia == dove.cend())
                dove.insert(chiave, i.value());
            else if (*gia != i.value())
                divisi
                    << QStringLiteral("%1: %2 and %3").arg(chiave, nomeDi(*gia), nomeDi(i.value()));
            if (r.simbolo.startsWith(QLatin1String("_Z")))
                continue;
            QStringList definitori;
            for (const QString &l : std::as_const(minimo.ambito))
                if (definiti.value(l).contains(chiave))
                    definitori << l;
            if (definitori.size() < 2)
                continue;
            ++doppiC;
            if (i.value() != definitori.first())
                altrove << QStringLiteral("%1 from %2: %3, not %4")
                               .arg(chiave, nomeDi(r.da), nomeDi(i.value()),
                                    nomeDi(definitori.first()));
        }
        qInfo("C symbols defined in more than one library: %d", doppiC);
        QVERIFY2(altrove.isEmpty(), qPrintable(altrove.join(QLatin1Char('\n'))));
        QVERIFY2(divisi.isEmpty(), qPrintable(divisi.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestOrdineLibrerie)
#include "tst_ordinelibrerie.moc"
