#include "platform/BarraMenu.h"

#include <QEvent>

BarraMenu::BarraMenu(QWidget *parent) : QMenuBar(parent)
{
}

bool BarraMenu::event(QEvent *e)
{
    // On show, QMenuBar only lays its titles out again: skip that once they
    // are laid out. Everything a plain widget does on show still runs.
    if (e->type() == QEvent::Show && m_misurata) {
        const bool fatto = QWidget::event(e);
        update();
        return fatto;
    }
    const bool fatto = QMenuBar::event(e);
    if (e->type() == QEvent::Show)
        m_misurata = true;
    return fatto;
}

void BarraMenu::resizeEvent(QResizeEvent *e)
{
    QMenuBar::resizeEvent(e);
    m_misurata = true;
}
