#include "core/AppContext.h"

AppContext::AppContext(QObject *parent)
    : QObject(parent), m_registro(std::make_unique<RegistroSerie>())
{
}

void AppContext::setRegistro(std::unique_ptr<RegistroSerie> registro)
{
    m_registro = registro ? std::move(registro) : std::make_unique<RegistroSerie>();
}
