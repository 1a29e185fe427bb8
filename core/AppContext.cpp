#include "core/AppContext.h"

#include "core/SchedeClasse.h"

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

void AppContext::setVoce(std::unique_ptr<Voce> voce)
{
    m_voce = voce ? std::move(voce) : std::make_unique<Voce>();
}
