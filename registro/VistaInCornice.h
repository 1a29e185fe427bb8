#pragma once

#include "platform/controls/Frame.h"

#include <QVBoxLayout>

// A Qt view (table, text) filling a frame of a design table, below the
// frame's title when it has one: the register's screens show their lists so.
template <class V> V *vistaInCornice(Frame &cornice, V *vista)
{
    auto *layout = new QVBoxLayout(cornice.widget());
    layout->setContentsMargins(6, cornice.Caption().isEmpty() ? 6 : 20, 6, 6);
    layout->addWidget(vista);
    return vista;
}
