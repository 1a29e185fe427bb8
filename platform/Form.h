#pragma once

#include "platform/Control.h"
#include "platform/ControlArray.h"
#include "platform/ControlDef.h"

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

class QMenuBar;
class OptionButton;
class Services;

// A screen: a top-level window whose controls come from a design table in
// twips. Its behaviour lives in the subclass's `Control_Event` handlers and in
// the Form_Load / Form_Activate / Form_Resize / Form_Unload overrides. The
// screen registry loads, shows and unloads it.
class Form : public QWidget
{
    Q_OBJECT

public:
    Form(Services &services, const QString &name);
    ~Form() override;

    Services &services() const { return m_services; }
    const QString &formName() const { return m_name; }

    // The inner area the controls live in (below the menu bar).
    QWidget *client() const { return m_client; }
    // The menu bar, made when the first menu entry is.
    QMenuBar *menuBar();

    // The screen's controls in collection order (the design table's order).
    const std::vector<Control *> &Controls() const { return m_order; }
    Control *findControl(const QString &name, int index = -1) const;

    template <class T> T &get(const char *name, int index = -1) const
    {
        auto *c = dynamic_cast<T *>(findControl(QString::fromLatin1(name), index));
        Q_ASSERT_X(c, "Form::get", name);
        return *c;
    }

    template <class T> ControlArray<T> array(const char *name) const
    {
        ControlArray<T> a{QString::fromLatin1(name)};
        for (Control *c : m_order)
            if (c->name() == a.name() && c->index() >= 0)
                a.add(c->index(), dynamic_cast<T *>(c));
        return a;
    }

    // Inner area in twips.
    double ScaleWidth() const;
    double ScaleHeight() const;
    // Sizes the window so that its inner area is w x h twips.
    void setInnerSize(double width, double height);

    QString Caption() const { return windowTitle(); }
    void setCaption(const QString &caption) { setWindowTitle(caption); }
    QColor BackColor() const { return m_back; }
    void setBackColor(const QColor &color);

    // Lifecycle, as the registry and the flows use it.
    void load();
    void Show();
    // Shows the screen and waits, in a local event loop, until it is hidden or
    // unloaded.
    void ShowModal();
    void Hide();
    void Unload();
    bool isUnloaded() const { return m_unloaded; }
    // Shown, but not yet on screen: its timers wait for the first frame, so
    // that frame is the screen as it opens (the start screen's closed
    // curtain), however long the window takes to appear.
    bool awaitingFirstFrame() const { return m_awaitingFrame; }

    // The control that has (or last had, in this window) the focus.
    Control *activeControl() const { return m_active; }
    void setActiveControl(Control *c) { m_active = c; }
    void focusControl(Control *c);

    // The screen and its controls in the fonts the high-readability switch
    // now wants.
    void applicaCaratteri();
    // The screen's font as designed, whatever the switch.
    QFont fontProgetto() const { return m_fontProprio ? m_fontProgetto : font(); }

signals:
    // Hidden or unloaded: a modal show returns.
    void closedOrHidden();

protected:
    // Builds the controls of a design table, in its order, at inner size
    // width x height twips.
    void design(double width, double height, std::initializer_list<ControlDef> table);
    // The same for a table built in code (long control arrays).
    void design(double width, double height, const std::vector<ControlDef> &table);
    void setDesignFont(const FontDef &font);
    // The order the Tab key walks, when it is not the table's.
    void setTabOrder(std::initializer_list<Control *> order);

    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_Resize() {}
    virtual void Form_Unload(int &Cancel) { (void)Cancel; }

    bool eventFilter(QObject *watched, QEvent *event) override;
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    Control *create(const ControlDef &def);
    Control *controlOf(QObject *widget) const;
    void runHandler(const std::function<void()> &handler);
    void clientResized();
    void updateTimers();
    void stopAwaitingFrame();

    Services &m_services;
    QString m_name;
    QWidget *m_client = nullptr;
    QMenuBar *m_menuBar = nullptr;
    std::vector<std::unique_ptr<Control>> m_controls;
    std::vector<Control *> m_order;
    // Which control a widget is, for every event the screen's filter sees.
    QHash<const QObject *, Control *> m_perWidget;
    QColor m_back;
    QFont m_fontProgetto;
    bool m_fontProprio = false;
    Control *m_active = nullptr;
    QPointer<QWidget> m_pendingFocus;
    std::vector<OptionButton *> m_designChosen;
    bool m_loaded = false;
    bool m_awaitingFrame = false;
    bool m_framed = false; // on screen at least once
    bool m_unloading = false;
    bool m_unloaded = false;
};
