#include "platform/CaratteriInAnticipo.h"

#include <csignal>
#include <dlfcn.h>
#include <pthread.h>
#include <sched.h>

namespace CaratteriInAnticipo {

namespace {

struct Lettura
{
    pthread_t thread{};
    bool daAttendere = false;
    Lavoro lavoro = nullptr;
    cpu_set_t coreConsentiti{};
};

Lettura lettura;

int (*fcInit)() = nullptr;

void caricaConfigurazione()
{
    fcInit();
}

void *esegui(void *)
{
    // Begun away from the caller; from here on, wherever the scheduler likes.
    pthread_setaffinity_np(pthread_self(), sizeof lettura.coreConsentiti, &lettura.coreConsentiti);
    // What `top -H` and a debugger call it.
    pthread_setname_np(pthread_self(), "caratteri");
    lettura.lavoro();
    return nullptr;
}

} // namespace

bool avvia(Lavoro lavoro)
{
    if (lettura.daAttendere)
        return false;
    cpu_set_t consentiti;
    if (sched_getaffinity(0, sizeof consentiti, &consentiti) != 0 || CPU_COUNT(&consentiti) < 2)
        return false;
    if (!lavoro) {
        // Fontconfig is there when Qt's GUI library is: no link of our own.
        fcInit = reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "FcInit"));
        if (!fcInit)
            return false;
        lavoro = caricaConfigurazione;
    }
    lettura.lavoro = lavoro;
    lettura.coreConsentiti = consentiti;

    cpu_set_t altri = consentiti;
    if (const int qui = sched_getcpu(); qui >= 0 && CPU_ISSET(qui, &altri))
        CPU_CLR(qui, &altri);
    pthread_attr_t attributi;
    if (pthread_attr_init(&attributi) != 0)
        return false;
    pthread_attr_setaffinity_np(&attributi, sizeof altri, &altri);
    // Signals stay with the program's own threads.
    sigset_t tutti, prima;
    sigfillset(&tutti);
    pthread_sigmask(SIG_SETMASK, &tutti, &prima);
    lettura.daAttendere = pthread_create(&lettura.thread, &attributi, esegui, nullptr) == 0;
    pthread_sigmask(SIG_SETMASK, &prima, nullptr);
    pthread_attr_destroy(&attributi);
    return lettura.daAttendere;
}

void attendi()
{
    if (!lettura.daAttendere)
        return;
    pthread_join(lettura.thread, nullptr);
    lettura.daAttendere = false;
}

} // namespace CaratteriInAnticipo
