#pragma once

#include "platform/ControlDef.h"

#include <QColor>
#include <QEvent>
#include <QFont>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

class Form;
class QKeyEvent;

// A control of a screen: what the flows need of it (Caption, Enabled,
// Visible, colours, Value, geometry in twips, ZOrder, SetFocus) and its events.
// The screen sets the event functions to its `Control_Event` handlers; the
// platform raises them from Qt's events. A control without a window of its own
// (timer, menu, line) has no Left/Top/Width/Height: asking for them is the
// "property not supported" run-time error.
class Control
{
public:
    Control(Form &form, const ControlDef &def, Control *container);
    virtual ~Control();
    Control(const Control &) = delete;
    Control &operator=(const Control &) = delete;

    ControlKind kind() const { return m_kind; }
    const QString &name() const { return m_name; }
    int index() const { return m_index; }
    // "Command1_15" for array members, the bare name otherwise.
    QString objectName() const;
    Form &form() const { return m_form; }
    Control *container() const { return m_container; }
    QWidget *widget() const { return m_widget; }

    // Geometry in twips, relative to the container.
    // False where asking for it is the run-time error (see Left()), so a
    // caller that would suppress the error can pass the control over.
    virtual bool hasPosition() const { return m_widget != nullptr; }
    virtual double Left() const;
    virtual double Top() const;
    virtual double Width() const;
    virtual double Height() const;
    void setLeft(double v) { Move(v, Top(), Width(), Height()); }
    void setTop(double v) { Move(Left(), v, Width(), Height()); }
    void setWidth(double v) { Move(Left(), Top(), v, Height()); }
    void setHeight(double v) { Move(Left(), Top(), Width(), v); }
    virtual void Move(double left, double top, double width, double height);

    virtual QString Caption() const { return m_caption; }
    virtual void setCaption(const QString &caption);

    // The control's own Enabled (a control inside a disabled frame keeps its
    // own value, but can neither be used nor take the focus).
    bool Enabled() const { return m_enabled; }
    virtual void setEnabled(bool enabled);
    // Whether the user can reach it: it and every container are enabled.
    bool usable() const;

    bool Visible() const { return m_visible; }
    virtual void setVisible(bool visible);

    QColor BackColor() const { return m_back; }
    virtual void setBackColor(const QColor &color);
    QColor ForeColor() const { return m_fore; }
    virtual void setForeColor(const QColor &color);

    QFont font() const;
    void setFont(const FontDef &font);
    void setFontSize(double points);
    void setFontBold(bool bold);
    void setFontName(const QString &family);

    QString ToolTipText() const;
    void setToolTipText(const QString &tip);

    // What assistive tools call the control, always what is on screen: its
    // caption; a value box, its label's caption and its value; a frame, its
    // caption or its title label; a text box or combo box, its label, else
    // its hint; a key without a caption, "tasto vuoto". Decorations and blank
    // labels have no name.
    virtual QString accessibleName() const;
    // `etichetta`, a label of the same screen, titles this control on screen
    // (a caption beside a value box, a title over a frame).
    void setEtichetta(Control &etichetta);
    // A decoration: assistive tools pass over it and it takes no focus.
    void setDecorativo();

    // Gives the control the focus. A disabled control, or one in a disabled
    // frame, raises "invalid procedure call". On a screen not shown yet the
    // focus is taken when the screen is shown.
    void SetFocus();
    bool hasFocus() const;
    // 0 brings the control to the front of its container, 1 sends it back.
    void ZOrder(int position = 0);

    // Events, raised by the platform.
    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
    std::function<void()> Change;
    std::function<void(int &KeyCode, int Shift)> KeyDown;
    std::function<void(int &KeyAscii)> KeyPress;
    std::function<void(int &KeyCode, int Shift)> KeyUp;
    std::function<void(int Button, int Shift, double X, double Y)> MouseDown;
    std::function<void(int Button, int Shift, double X, double Y)> MouseUp;

    // Raises Click (as a mouse click or the program would).
    void raiseClick();
    void raiseChange();

    // Called by the screen when Qt delivers an event to the widget; returns
    // true when the event is used up.
    virtual bool handleEvent(QEvent *event);
    // The events handleEvent acts on (mouse buttons, keys, focus); any other
    // it leaves alone, so the screen need not hand it over.
    static bool handles(QEvent::Type type);

protected:
    void setWidget(QWidget *widget);
    void applyGeometry();
    void applyAccessibleName();
    virtual void applyColors();
    void unsupported() const;
    QWidget *parentWidget() const;
    // The default behaviour of the Qt widget after the program's key handlers.
    virtual bool passKeysToWidget() const { return false; }
    virtual bool passMouseToWidget() const { return false; }
    // What an option button does on a mouse click (it becomes chosen).
    virtual void mouseClicked();
    // The control's own use of a key after the key handlers; true: used up.
    virtual bool keyDefault(QKeyEvent *event, int ascii);

    Form &m_form;
    ControlKind m_kind;
    QString m_name;
    int m_index;
    Control *m_container;
    QPointer<QWidget> m_widget;
    double m_left, m_top, m_width, m_height;
    QString m_caption;
    bool m_enabled = true;
    bool m_visible = true;
    QColor m_back, m_fore;
    bool m_mousePressed = false;
    Dock m_dock = Dock::None;
    Control *m_etichetta = nullptr; // the label that titles this control
    QList<Control *> m_etichettati; // the controls this label titles

public:
    // Re-applies a docked control's edge after its container changed size.
    void redock();
    // Sets the widget's font again from the designed one, as the
    // high-readability switch now wants it.
    void applicaCaratteri();

protected:
    // The font the design (or the program) gave the control, before the
    // high-readability switch.
    QFont fontProgetto() const;
    void impostaFont(const QFont &progettato);

private:
    // In the high-readability font, a caption that would not fit its box
    // is drawn smaller, that control only.
    void adattaAlRiquadro();

    QFont m_fontProgetto;
    bool m_fontProprio = false;
    // A control that inherits its font was given a smaller one to fit.
    bool m_ridotto = false;
    // What the last fit was worked out for: the same again needs no work.
    QString m_adattoTesto;
    QSize m_adattoRiquadro;
    QFont m_adattoFont;
};
