#include "Scadenze.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <cmath>

namespace {

double mediaDiCarico()
{
    QFile f(QStringLiteral("/proc/loadavg"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    return f.readAll().split(' ').value(0).toDouble();
}

} // namespace

namespace Scadenze {

double fattore()
{
    double f = qEnvironmentVariable("QUADRIVO_TEST_TIMEOUT_FACTOR").toDouble();
    f = std::max(f, 1.0);
    const double nuclei = std::max(1, QThread::idealThreadCount());
    const double carico = mediaDiCarico();
    if (carico > nuclei)
        f *= carico / nuclei;
    return std::min(f, 10.0);
}

int ms(int baseMs)
{
    return int(std::lround(baseMs * fattore()));
}

bool finche(const std::function<bool()> &condizione, int baseMs, int passoMs)
{
    QDeadlineTimer scadenza(ms(baseMs));
    for (;;) {
        if (condizione())
            return true;
        if (scadenza.hasExpired())
            return false;
        if (QCoreApplication::instance())
            QTest::qWait(passoMs); // events go on while the test waits
        else
            QThread::msleep(passoMs);
    }
}

} // namespace Scadenze
