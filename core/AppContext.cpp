#include "core/AppContext.h"

#include "core/SchedeClasse.h"

AppContext::AppContext(QObject *parent) : QObject(parent)
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
