#include "core/AppContext.h"

#include "core/FonteEsercizi.h"
#include "core/SchedeClasse.h"
#include "core/Verifiche.h"

AppContext::AppContext(QObject *parent)
    : QObject(parent), m_registro(std::make_unique<RegistroSerie>()),
      m_voce(std::make_unique<Voce>())
{
}

AppContext::~AppContext() = default;

void AppContext::setFabbricaSchedeClasse(FabbricaSchedeClasse fabbrica)
{
    m_fabbricaSchedeClasse = std::move(fabbrica);
}

SchedeClasse *AppContext::schedeClasse()
{
    if (!m_schedeClasse && m_fabbricaSchedeClasse)
        m_schedeClasse = m_fabbricaSchedeClasse(*this);
    return m_schedeClasse.get();
}

void AppContext::setRegistro(std::unique_ptr<RegistroSerie> registro)
{
    m_registro = registro ? std::move(registro) : std::make_unique<RegistroSerie>();
}

void AppContext::setFabbricaVerifiche(FabbricaVerifiche fabbrica)
{
    m_fabbricaVerifiche = std::move(fabbrica);
}

Verifiche *AppContext::verifiche()
{
    if (!m_verifiche && m_fabbricaVerifiche)
        m_verifiche = m_fabbricaVerifiche(*this);
    return m_verifiche.get();
}

void AppContext::setFonteEsercizi(std::unique_ptr<FonteEsercizi> fonte)
{
    m_fonteEsercizi = std::move(fonte);
}

void AppContext::setVoce(std::unique_ptr<Voce> voce)
{
    m_voce = voce ? std::move(voce) : std::make_unique<Voce>();
}
