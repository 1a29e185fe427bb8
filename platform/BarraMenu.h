#pragma once

#include <QMenuBar>

// A screen's menu bar that measures its titles once per change. Qt's own
// measures every title again whenever the bar is shown, although a bar is
// resized before it first shows, and the resize has just measured them at
// the bar's width; between two shows, only a change of entries, font or style
// makes that measure old. Measuring a title lays its text out: on the start
// screen this was a third of what its menu bar cost to appear.
class BarraMenu : public QMenuBar
{
public:
    explicit BarraMenu(QWidget *parent = nullptr);

protected:
    bool event(QEvent *e) override;
    void resizeEvent(QResizeEvent *e) override;
    void actionEvent(QActionEvent *e) override;
    void changeEvent(QEvent *e) override;

private:
    // The titles' places hold for the entries, the letters and the width the
    // bar has now.
    bool m_misurata = false;
};
