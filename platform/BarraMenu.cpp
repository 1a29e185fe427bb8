#include "platform/BarraMenu.h"

#include <QActionEvent>

BarraMenu::BarraMenu(QWidget *parent) : QMenuBar(parent)
{
}

bool BarraMenu::event(QEvent *e)
{
    // On show, QMenuBar only lays its titles out again: skip that when they
    // are laid out already. Everything a plain widget does on show still runs.
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

void BarraMenu::actionEvent(QActionEvent *e)
{
    m_misurata = false;
    QMenuBar::actionEvent(e);
}

void BarraMenu::changeEvent(QEvent *e)
{
    switch (e->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LanguageChange:
    case QEvent::LayoutDirectionChange:
    case QEvent::ApplicationFontChange:
    case QEvent::PaletteChange:
        m_misurata = false;
        break;
    default:
        break;
    }
    QMenuBar::changeEvent(e);
}
