#include "core/AppContext.h"

AppContext::AppContext(QObject *parent) : QObject(parent)
{
}
