#pragma once

#include "core/RegistroSerie.h"
#include "core/StatoCondiviso.h"
#include "core/Voce.h"
#include "platform/Services.h"

#include <QObject>
#include <functional>
#include <memory>

class FonteEsercizi;
class SchedeClasse;
class Verifiche;

// One run of the program: the shared state block and the platform services.
// Every screen receives it at construction; a test builds a fresh one.
class AppContext : public QObject, public Services
{
    Q_OBJECT

public:
    explicit AppContext(QObject *parent = nullptr);
    ~AppContext() override;

    StatoCondiviso stato;

    // The screen T, loaded (and its load handler run) if it was not.
    template <class T> T &form()
    {
        return screens().get<T>([this] { return new T(*this); });
    }

    // The class sets of worksheets, made by the installed maker the first
    // time they are asked for; nullptr when none is installed.
    using FabbricaSchedeClasse = std::function<std::unique_ptr<SchedeClasse>(AppContext &)>;
    void setFabbricaSchedeClasse(FabbricaSchedeClasse fabbrica);
    SchedeClasse *schedeClasse();
    // The pupils' register the screens report series to; records nothing
    // until one is wired (app/Avvio, or a test).
    RegistroSerie &registro() { return *m_registro; }
    void setRegistro(std::unique_ptr<RegistroSerie> registro);
    // The verifiche, made by the installed maker at first use; nullptr when
    // none is installed.
    using FabbricaVerifiche = std::function<std::unique_ptr<Verifiche>(AppContext &)>;
    void setFabbricaVerifiche(FabbricaVerifiche fabbrica);
    Verifiche *verifiche();
    // The exercises the next series of the drill takes, when they are given
    // rather than drawn; nullptr for the normal series.
    FonteEsercizi *fonteEsercizi() const { return m_fonteEsercizi.get(); }
    void setFonteEsercizi(std::unique_ptr<FonteEsercizi> fonte);
    // The voice that reads the exercise aloud; silent until one is wired
    // (app/Avvio, or a test).
    Voce &voce() { return *m_voce; }
    void setVoce(std::unique_ptr<Voce> voce);

signals:
    // The generator drew an exercise type; the drill screen shows it.
    void tipoEsercizioGenerato(int tipo);

private:
    FabbricaSchedeClasse m_fabbricaSchedeClasse;
    std::unique_ptr<SchedeClasse> m_schedeClasse;
    std::unique_ptr<RegistroSerie> m_registro;
    FabbricaVerifiche m_fabbricaVerifiche;
    std::unique_ptr<Verifiche> m_verifiche;
    std::unique_ptr<FonteEsercizi> m_fonteEsercizi;
    std::unique_ptr<Voce> m_voce;
};
