// Fontconfig's configuration read on another core while the program starts:
// the thread, where it starts, and the wait for it.
#include "platform/CaratteriInAnticipo.h"

#include <QElapsedTimer>
#include <QTest>
#include <atomic>
#include <chrono>
#include <pthread.h>
#include <sched.h>
#include <thread>

namespace {

// What the work saw of itself.
struct Visto
{
    std::atomic<bool> iniziato{false};
    std::atomic<bool> via{true}; // the test lets it go on
    std::atomic<bool> finito{false};
    std::thread::id thread;
    cpu_set_t core{};
};
Visto visto;

void lavoroLento()
{
    visto.thread = std::this_thread::get_id();
    pthread_getaffinity_np(pthread_self(), sizeof visto.core, &visto.core);
    visto.iniziato = true;
    while (!visto.via)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    visto.finito = true;
}

void azzera()
{
    visto.iniziato = false;
    visto.via = true;
    visto.finito = false;
    visto.thread = {};
    CPU_ZERO(&visto.core);
}

cpu_set_t coreConsentiti()
{
    cpu_set_t c;
    CPU_ZERO(&c);
    sched_getaffinity(0, sizeof c, &c);
    return c;
}

} // namespace

class TestCaratteriInAnticipo : public QObject
{
    Q_OBJECT

    cpu_set_t tutti{};

private slots:
    void initTestCase() { tutti = coreConsentiti(); }

    void init()
    {
        azzera();
        if (CPU_COUNT(&tutti) < 2)
            QSKIP("this machine gives the process one core");
    }

    void cleanup()
    {
        // A failed test may have left the work held.
        visto.via = true;
        CaratteriInAnticipo::attendi();
        sched_setaffinity(0, sizeof tutti, &tutti);
    }

    void waitingWithNothingStartedReturnsAtOnce()
    {
        QElapsedTimer t;
        t.start();
        CaratteriInAnticipo::attendi();
        CaratteriInAnticipo::attendi();
        QVERIFY(t.elapsed() < 2000);
    }

    void theWorkRunsOnAThreadOfItsOwnAndIsWaitedFor()
    {
        visto.via = false;
        QVERIFY(CaratteriInAnticipo::avvia(lavoroLento));
        // The caller goes on while the work runs.
        QTRY_VERIFY_WITH_TIMEOUT(visto.iniziato, 5000);
        QVERIFY(!visto.finito);
        QVERIFY(visto.thread != std::this_thread::get_id());
        // It goes on for a tenth of a second more: the wait covers it.
        visto.via = true;
        CaratteriInAnticipo::attendi();
        QVERIFY(visto.finito);
    }

    void onceRunningTheWorkMayUseEveryCore()
    {
        QVERIFY(CaratteriInAnticipo::avvia(lavoroLento));
        CaratteriInAnticipo::attendi();
        QVERIFY(visto.finito);
        QVERIFY(CPU_EQUAL(&visto.core, &tutti));
    }

    void noSecondStartBeforeTheFirstIsWaitedFor()
    {
        QVERIFY(CaratteriInAnticipo::avvia(lavoroLento));
        QVERIFY(!CaratteriInAnticipo::avvia(lavoroLento));
        CaratteriInAnticipo::attendi();
        QVERIFY(visto.finito);
        azzera();
        QVERIFY(CaratteriInAnticipo::avvia(lavoroLento));
        CaratteriInAnticipo::attendi();
        QVERIFY(visto.finito);
    }

    void withOneCoreNothingStarts()
    {
        cpu_set_t uno;
        CPU_ZERO(&uno);
        for (int c = 0; c < CPU_SETSIZE; ++c)
            if (CPU_ISSET(c, &tutti)) {
                CPU_SET(c, &uno);
                break;
            }
        QCOMPARE(sched_setaffinity(0, sizeof uno, &uno), 0);
        QVERIFY(!CaratteriInAnticipo::avvia(lavoroLento));
        CaratteriInAnticipo::attendi();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        QVERIFY(!visto.iniziato);
    }

    void fontconfigIsReadWhenNothingElseIsAsked()
    {
        // This test links Qt's GUI library, and with it fontconfig.
        QVERIFY(CaratteriInAnticipo::avvia());
        CaratteriInAnticipo::attendi();
        // The reading has been waited for: a new one may start.
        QVERIFY(CaratteriInAnticipo::avvia(lavoroLento));
        CaratteriInAnticipo::attendi();
        QVERIFY(visto.finito);
    }
};

QTEST_GUILESS_MAIN(TestCaratteriInAnticipo)
#include "tst_caratterinanticipo.moc"
