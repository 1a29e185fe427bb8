#pragma once

#include <QMenuBar>

// A screen's menu bar that does not measure its titles twice on showing.
// Qt's lays every title out again whenever the bar is shown, although a bar
// is resized before it first shows and that resize has just laid them out at
// the bar's width. After that first layout, a change of entries, letters or
// style marks Qt's layout as out of date, and the bar lays itself out again
// when next drawn or asked where a title is. Measuring a title lays its text
// out: on the start screen this was a third of what the bar cost to appear.
class BarraMenu : public QMenuBar
{
public:
    explicit BarraMenu(QWidget *parent = nullptr);

protected:
    bool event(QEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;

private:
    bool m_misurata = false; // laid out once at least, at the bar's width
};
