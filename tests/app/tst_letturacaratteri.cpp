// The real program reads fontconfig's configuration once at start-up: on a
// thread of its own when it may use two cores, so that Qt's start overlaps
// it, and on its one thread otherwise (platform/CaratteriInAnticipo). The
// program runs to its first window under valgrind, which reports every
// system call with the number of the thread that made it (1: the main one).
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <sched.h>

namespace {

struct Apertura
{
    int thread;
    QString file;
};

// The files the program opened before it ended, and which thread opened
// each; empty when the run failed. `nucleo`: the one core it may use, or -1
// for every core.
QList<Apertura> aperture(const QString &configurazione, int nucleo)
{
    QTemporaryDir cartella;
    if (!cartella.isValid())
        return {};
    QStringList argomenti{QStringLiteral("--tool=none"), QStringLiteral("--trace-syscalls=yes"),
                          QStringLiteral(QUADRIVO_PROGRAMMA), QStringLiteral("--prova-avvio")};
    QString programma = QStringLiteral("valgrind");
    if (nucleo >= 0) {
        argomenti.prepend(programma);
        argomenti.prepend(QString::number(nucleo));
        argomenti.prepend(QStringLiteral("-c"));
        programma = QStringLiteral("taskset");
    }
    QProcess p;
    QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
    ambiente.insert(QStringLiteral("FONTCONFIG_FILE"), configurazione);
    if (!ambiente.contains(QStringLiteral("QT_QPA_PLATFORM")))
        ambiente.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    p.setProcessEnvironment(ambiente);
    p.setWorkingDirectory(cartella.path());
    p.start(programma, argomenti);
    if (!p.waitForFinished(120000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        qWarning() << programma << "did not end well:" << p.readAllStandardError().right(2000);
        return {};
    }
    QList<Apertura> a;
    static const QRegularExpression openat(
        QStringLiteral(R"(^SYSCALL\[\d+,(\d+)\]\(\d+\) sys_openat \( \d+, 0x[0-9a-f]+\(([^)]*)\))"),
        QRegularExpression::MultilineOption);
    const QString traccia = QString::fromLocal8Bit(p.readAllStandardError());
    for (auto i = openat.globalMatch(traccia); i.hasNext();) {
        const auto m = i.next();
        a.append({m.captured(1).toInt(), m.captured(2)});
    }
    return a;
}

} // namespace

class TestLetturaCaratteri : public QObject
{
    Q_OBJECT

    QTemporaryDir cartella;
    QString configurazione;

private slots:
    void initTestCase()
    {
        QVERIFY(cartella.isValid());
        // The system's configuration, through a file of the test's own name.
        configurazione = cartella.filePath(QStringLiteral("caratteri-del-test.conf"));
        QFile f(configurazione);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(
            "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n"
            "<fontconfig><include>/etc/fonts/fonts.conf</include></fontconfig>\n");
    }

    void theConfigurationIsReadOnce_data()
    {
        QTest::addColumn<int>("nucleo");
        QTest::addColumn<bool>("altroThread");
        cpu_set_t consentiti;
        CPU_ZERO(&consentiti);
        QCOMPARE(sched_getaffinity(0, sizeof consentiti, &consentiti), 0);
        int primo = -1;
        for (int c = 0; c < CPU_SETSIZE && primo < 0; ++c)
            if (CPU_ISSET(c, &consentiti))
                primo = c;
        if (CPU_COUNT(&consentiti) > 1)
            QTest::newRow("every core") << -1 << true;
        QTest::newRow("one core") << primo << false;
    }

    void theConfigurationIsReadOnce()
    {
        QFETCH(int, nucleo);
        QFETCH(bool, altroThread);
        const QList<Apertura> a = aperture(configurazione, nucleo);
        QVERIFY2(!a.isEmpty(), "the program's system calls could not be read");
        QList<int> daChi;
        QSet<int> fontconfig;
        for (const Apertura &x : a) {
            if (x.file == configurazione)
                daChi << x.thread;
            if (x.file.startsWith(QStringLiteral("/etc/fonts/")) ||
                x.file.startsWith(QStringLiteral("/usr/share/fontconfig/")))
                fontconfig << x.thread;
        }
        QCOMPARE(daChi.size(), 1);
        QCOMPARE(daChi.first() != 1, altroThread);
        // The files it includes are read by that same thread.
        QCOMPARE(fontconfig, QSet<int>{daChi.first()});
    }
};

QTEST_GUILESS_MAIN(TestLetturaCaratteri)
#include "tst_letturacaratteri.moc"
