#include "platform/Control.h"

#include "platform/Accessibility.h"
#include "platform/Form.h"
#include "platform/HeldKeys.h"
#include "platform/KeyCodes.h"
#include "platform/RuntimeError.h"
#include "platform/Services.h"
#include "platform/Twips.h"

#include <QFocusEvent>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <vector>

namespace {

int mouseButtonCode(Qt::MouseButton b)
{
    switch (b) {
    case Qt::LeftButton:
        return 1;
    case Qt::RightButton:
        return 2;
    case Qt::MiddleButton:
        return 4;
    default:
        return 0;
    }
}

int mouseShift(const QMouseEvent *e)
{
    const Qt::KeyboardModifiers m = e->modifiers();
    return (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) |
           (m & Qt::AltModifier ? 4 : 0);
}

} // namespace

Control::Control(Form &form, const ControlDef &def, Control *container)
    : m_form(form), m_kind(def.kind), m_name(QString::fromLatin1(def.name)), m_index(def.index),
      m_container(container), m_left(def.left), m_top(def.top), m_width(def.width),
      m_height(def.height), m_caption(def.caption), m_enabled(def.enabled), m_visible(def.visible),
      m_back(def.back), m_fore(def.fore), m_dock(def.dock)
{
}

Control::~Control() = default;

QString Control::objectName() const
{
    return m_index >= 0 ? m_name + QLatin1Char('_') + QString::number(m_index) : m_name;
}

QWidget *Control::parentWidget() const
{
    return m_container && m_container->widget() ? m_container->widget() : m_form.client();
}

void Control::setWidget(QWidget *widget)
{
    m_widget = widget;
    if (!widget)
        return;
    widget->setObjectName(objectName());
    widget->installEventFilter(&m_form);
    Accessibility::describe(widget, m_kind);
    applyAccessibleName();
    widget->setEnabled(m_enabled);
    applyColors();
    applyGeometry();
    widget->setVisible(m_visible);
}

void Control::unsupported() const
{
    throw RuntimeError(RuntimeError::PropertyNotSupported, objectName());
}

double Control::Left() const
{
    if (!m_widget)
        unsupported();
    return m_left;
}

double Control::Top() const
{
    if (!m_widget)
        unsupported();
    return m_top;
}

double Control::Width() const
{
    if (!m_widget)
        unsupported();
    return m_width;
}

double Control::Height() const
{
    if (!m_widget)
        unsupported();
    return m_height;
}

void Control::Move(double left, double top, double width, double height)
{
    if (!m_widget)
        unsupported();
    if (width < 0 || height < 0)
        throw RuntimeError(RuntimeError::InvalidProcedureCall, objectName());
    m_left = left;
    m_top = top;
    m_width = width;
    m_height = height;
    applyGeometry();
}

void Control::redock()
{
    if (m_dock != Dock::None)
        applyGeometry();
}

void Control::applyGeometry()
{
    if (!m_widget)
        return;
    if (m_dock != Dock::None) {
        const QWidget *parent = m_widget->parentWidget();
        const double parentWidth = Twips::fromPixels(parent ? parent->width() : 0);
        m_top = 0;
        m_height = Twips::fromPixels(parent ? parent->height() : 0);
        m_left = m_dock == Dock::Left ? 0 : parentWidth - m_width;
    }
    const int x = Twips::toPixels(m_left);
    const int y = Twips::toPixels(m_top);
    // Right and bottom edges are rounded on their own, so neighbours that
    // touch in twips still touch in pixels.
    const int w = Twips::toPixels(m_left + m_width) - x;
    const int h = Twips::toPixels(m_top + m_height) - y;
    m_widget->setGeometry(x, y, std::max(0, w), std::max(0, h));
    adattaAlRiquadro();
}

void Control::setCaption(const QString &caption)
{
    const bool changed = caption != m_caption;
    m_caption = caption;
    if (changed)
        adattaAlRiquadro();
    if (m_widget) {
        m_widget->update();
        applyAccessibleName();
    }
    for (Control *c : m_etichettati)
        c->applyAccessibleName();
    if (changed && m_kind == ControlKind::Label)
        raiseChange();
}

void Control::setEnabled(bool enabled)
{
    m_enabled = enabled;
    if (!enabled)
        m_mousePressed = false;
    if (m_widget)
        m_widget->setEnabled(enabled);
}

bool Control::usable() const
{
    for (const Control *c = this; c; c = c->m_container)
        if (!c->m_enabled)
            return false;
    return m_form.isEnabled();
}

void Control::setVisible(bool visible)
{
    m_visible = visible;
    if (m_widget)
        m_widget->setVisible(visible);
}

void Control::setBackColor(const QColor &color)
{
    m_back = color;
    applyColors();
}

void Control::setForeColor(const QColor &color)
{
    m_fore = color;
    applyColors();
}

namespace {

// `pal` with the background and text colours given (those that are valid).
QPalette conColori(QPalette pal, const QColor &back, const QColor &fore)
{
    if (back.isValid()) {
        pal.setColor(QPalette::Window, back);
        pal.setColor(QPalette::Button, back);
        pal.setColor(QPalette::Base, back);
    }
    if (fore.isValid()) {
        pal.setColor(QPalette::WindowText, fore);
        pal.setColor(QPalette::ButtonText, fore);
        pal.setColor(QPalette::Text, fore);
    }
    return pal;
}

// The palette of a new widget with these colours. A widget with no palette
// of its own takes every role not set here from its parent, whatever the
// palette it is given holds there: so new widgets of the same colours share
// one palette, made once, rather than each copying and changing its own.
QPalette paletteCondivisa(const QPalette &base, const QColor &back, const QColor &fore)
{
    struct Voce
    {
        QColor back, fore;
        QPalette palette;
    };
    static std::vector<Voce> fatte;
    for (const Voce &v : fatte)
        if (v.back == back && v.fore == fore)
            return v.palette;
    const QPalette pal = conColori(base, back, fore);
    // The screens use a handful of colour pairs; a program setting colours
    // without end keeps no more than these.
    if (fatte.size() < 64)
        fatte.push_back({back, fore, pal});
    return pal;
}

} // namespace

void Control::applyColors()
{
    if (!m_widget)
        return;
    const QPalette &attuale = m_widget->palette();
    m_widget->setPalette(attuale.resolveMask() == 0 ? paletteCondivisa(attuale, m_back, m_fore)
                                                    : conColori(attuale, m_back, m_fore));
    m_widget->update();
}

QFont Control::font() const
{
    return m_widget ? m_widget->font() : QFont();
}

void Control::setFont(const FontDef &def)
{
    if (!m_widget)
        return;
    QFont f = fontProgetto();
    if (!def.family.isEmpty())
        f.setFamily(def.family);
    if (def.size > 0)
        f.setPointSizeF(def.size);
    f.setBold(def.bold);
    f.setItalic(def.italic);
    impostaFont(f);
    m_widget->update();
}

void Control::setFontSize(double points)
{
    if (!m_widget)
        return;
    QFont f = fontProgetto();
    f.setPointSizeF(points);
    impostaFont(f);
}

void Control::setFontBold(bool bold)
{
    if (!m_widget)
        return;
    QFont f = fontProgetto();
    f.setBold(bold);
    impostaFont(f);
}

void Control::setFontName(const QString &family)
{
    if (!m_widget)
        return;
    QFont f = fontProgetto();
    f.setFamily(family);
    impostaFont(f);
}

QFont Control::fontProgetto() const
{
    if (m_fontProprio)
        return m_fontProgetto;
    // What the widget inherits, as designed: the container's or the
    // screen's, never their high-readability form.
    if (m_container)
        return m_container->fontProgetto();
    return m_form.fontProgetto();
}

void Control::impostaFont(const QFont &progettato)
{
    m_fontProgetto = progettato;
    m_fontProprio = true;
    if (m_widget)
        m_widget->setFont(m_form.services().caratteriLeggibili().adatta(progettato));
    m_adattoTesto.clear();
    adattaAlRiquadro();
}

void Control::applicaCaratteri()
{
    if (m_fontProprio && m_widget)
        m_widget->setFont(m_form.services().caratteriLeggibili().adatta(m_fontProgetto));
    m_adattoTesto.clear();
    adattaAlRiquadro();
}

void Control::adattaAlRiquadro()
{
    const CaratteriLeggibili &caratteri = m_form.services().caratteriLeggibili();
    if (!m_widget)
        return;
    // A control that inherits its font goes back to inheriting it.
    auto eredita = [this] {
        if (m_ridotto && !m_fontProprio)
            m_widget->setFont(QFont());
        m_ridotto = false;
    };
    if (!caratteri.attivi() || m_caption.isEmpty()) {
        eredita();
        m_adattoTesto.clear();
        return;
    }
    QRectF riquadro;
    int modo = Qt::TextWordWrap;
    if (m_kind == ControlKind::CommandButton || m_kind == ControlKind::OptionButton) {
        // Where the button draws its caption.
        riquadro = QRectF(m_widget->rect()).adjusted(7.5, 4.5, -7.5, -4.5);
    } else if (m_kind == ControlKind::Label) {
        auto *l = qobject_cast<QLabel *>(m_widget.data());
        riquadro = QRectF(m_widget->contentsRect()).adjusted(l ? l->indent() + 2 : 2, 0, -2, 0);
        if (l && !l->wordWrap())
            modo = 0;
    } else {
        return;
    }
    if (riquadro.width() < 4 || riquadro.height() < 4)
        return;
    const QFont progettato = fontProgetto();
    if (m_caption == m_adattoTesto && m_widget->size() == m_adattoRiquadro &&
        progettato == m_adattoFont)
        return;
    m_adattoTesto = m_caption;
    m_adattoRiquadro = m_widget->size();
    m_adattoFont = progettato;
    const QFont pieno = caratteri.adatta(progettato);
    // OpenDyslexic's line keeps more blank above and below than the
    // designed font's, its ink does not: a caption fits when it is no wider
    // than the box, takes no more lines than the designed one does, and its
    // ink (lines apart as the font wants) is no taller than the box.
    auto righe = [&](const QFont &carattere, double *larghezza, double *inchiostro) {
        const QFontMetricsF fm(carattere, m_widget);
        const QRectF testo = fm.boundingRect(QRectF(0, 0, riquadro.width(), 1e6), modo, m_caption);
        const int n = std::max(1, qRound(testo.height() / fm.lineSpacing()));
        if (larghezza)
            *larghezza = testo.width();
        if (inchiostro)
            *inchiostro = (n - 1) * fm.lineSpacing() + fm.tightBoundingRect(m_caption).height();
        return n;
    };
    const int righeProgettate = righe(progettato, nullptr, nullptr);
    QFont f = pieno;
    for (int passo = 0; passo < 12 && f.pointSizeF() > 0; ++passo) {
        double larghezza = 0, inchiostro = 0;
        if (righe(f, &larghezza, &inchiostro) <= righeProgettate &&
            larghezza <= riquadro.width() + 0.5 && inchiostro <= riquadro.height() + 1)
            break;
        f.setPointSizeF(f.pointSizeF() * 0.92);
    }
    if (!m_fontProprio && f == pieno) {
        eredita();
        return;
    }
    if (f != m_widget->font())
        m_widget->setFont(f);
    m_ridotto = !m_fontProprio;
}

QString Control::ToolTipText() const
{
    return m_widget ? m_widget->toolTip() : QString();
}

void Control::setToolTipText(const QString &tip)
{
    if (m_widget) {
        m_widget->setToolTip(tip);
        applyAccessibleName();
    }
}

namespace {

// What a pattern's \S is not: the ASCII blanks.
bool spazio(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

// "E S C I": single characters with one blank between each.
bool spaziata(QStringView parola)
{
    if (parola.size() < 3 || parola.size() % 2 == 0)
        return false;
    for (qsizetype i = 0; i < parola.size(); ++i)
        if (i % 2 ? parola[i] != u' ' : spazio(parola[i]))
            return false;
    return true;
}

// A caption as a voice reads it: letter-spaced words joined ("E S C I":
// "ESCI"), runs of blanks made one. Asked for every control as a screen is
// built, so it is plain string work, no pattern matching.
QString leggibile(const QString &caption)
{
    QString letto;
    auto aggiungi = [&letto](QStringView pezzo) {
        QString parola = pezzo.trimmed().toString();
        if (spaziata(parola))
            parola.remove(QLatin1Char(' '));
        parola = parola.simplified();
        if (parola.isEmpty())
            return;
        if (!letto.isEmpty())
            letto += QLatin1Char(' ');
        letto += parola;
    };
    // Words are parted by two blanks or more; one blank is inside a word.
    const QStringView testo(caption);
    qsizetype inizio = 0;
    for (qsizetype i = 0; i + 1 < testo.size();) {
        if (testo[i] == u' ' && testo[i + 1] == u' ') {
            aggiungi(testo.mid(inizio, i - inizio));
            while (i < testo.size() && testo[i] == u' ')
                ++i;
            inizio = i;
        } else {
            ++i;
        }
    }
    if (inizio < testo.size())
        aggiungi(testo.mid(inizio));
    return letto;
}

} // namespace

QString Control::accessibleName() const
{
    if (m_widget && Accessibility::isDecorative(m_widget))
        return {};
    const bool captionIsContent = m_kind == ControlKind::TextBox || m_kind == ControlKind::ComboBox;
    const QString caption = captionIsContent ? QString() : leggibile(m_caption);
    const QString titolo = m_etichetta ? leggibile(m_etichetta->m_caption) : QString();
    switch (m_kind) {
    case ControlKind::Label:
        // A value box: "Tempo parziale 12", or only the caption while empty.
        if (!titolo.isEmpty())
            return caption.isEmpty() ? titolo : titolo + QLatin1Char(' ') + caption;
        return caption;
    case ControlKind::Frame:
        return caption.isEmpty() ? titolo : caption;
    case ControlKind::CommandButton:
    case ControlKind::OptionButton:
        if (!caption.isEmpty())
            return caption;
        return titolo.isEmpty() ? QStringLiteral("tasto vuoto") : titolo;
    case ControlKind::TextBox:
    case ControlKind::ComboBox:
        return titolo.isEmpty() ? ToolTipText() : titolo;
    default:
        return caption.isEmpty() ? ToolTipText() : caption;
    }
}

void Control::setEtichetta(Control &etichetta)
{
    m_etichetta = &etichetta;
    if (!etichetta.m_etichettati.contains(this))
        etichetta.m_etichettati.append(this);
    if (m_widget && etichetta.m_widget)
        Accessibility::labelledBy(m_widget, etichetta.m_widget);
    applyAccessibleName();
}

void Control::setDecorativo()
{
    if (m_widget)
        Accessibility::setDecorative(m_widget);
    applyAccessibleName();
}

void Control::applyAccessibleName()
{
    if (m_widget)
        m_widget->setAccessibleName(accessibleName());
}

void Control::SetFocus()
{
    if (!m_widget || m_widget->focusPolicy() == Qt::NoFocus || !usable())
        throw RuntimeError(RuntimeError::InvalidProcedureCall, objectName());
    for (const Control *c = this; c; c = c->m_container)
        if (!c->m_visible)
            throw RuntimeError(RuntimeError::InvalidProcedureCall, objectName());
    m_form.focusControl(this);
}

bool Control::hasFocus() const
{
    return m_widget && m_widget->hasFocus();
}

void Control::ZOrder(int position)
{
    if (!m_widget)
        return;
    if (position == 0)
        m_widget->raise();
    else
        m_widget->lower();
}

void Control::raiseClick()
{
    if (Click)
        Click();
}

void Control::raiseChange()
{
    if (Change)
        Change();
}

bool Control::handles(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        return true;
    default:
        return false;
    }
}

bool Control::handleEvent(QEvent *event)
{
    const QPointer<QWidget> alive = m_widget;
    auto gone = [&] { return !alive || m_form.isUnloaded(); };

    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        // Qt shows a disabled widget's mouse events to its filter all the
        // same: a control that cannot be used hears none of them, and they go
        // no further (not to its container either).
        if (!usable() || !m_widget || !m_widget->isEnabled()) {
            m_mousePressed = false;
            return true;
        }
        break;
    default:
        break;
    }

    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
        auto *me = static_cast<QMouseEvent *>(event);
        m_mousePressed = true;
        if (MouseDown)
            MouseDown(mouseButtonCode(me->button()), mouseShift(me),
                      Twips::fromPixels(me->position().x()), Twips::fromPixels(me->position().y()));
        if (!gone() && event->type() == QEvent::MouseButtonDblClick && DblClick)
            DblClick();
        return gone() || !passMouseToWidget();
    }
    case QEvent::MouseButtonRelease: {
        auto *me = static_cast<QMouseEvent *>(event);
        const bool clicked = m_mousePressed && me->button() == Qt::LeftButton && m_widget &&
                             m_widget->rect().contains(me->position().toPoint());
        m_mousePressed = false;
        if (clicked && m_kind == ControlKind::OptionButton)
            mouseClicked();
        if (!gone() && MouseUp)
            MouseUp(mouseButtonCode(me->button()), mouseShift(me),
                    Twips::fromPixels(me->position().x()), Twips::fromPixels(me->position().y()));
        if (!gone() && clicked && !passMouseToWidget() && m_kind != ControlKind::OptionButton)
            raiseClick();
        return gone() || !passMouseToWidget();
    }
    case QEvent::KeyPress: {
        auto *ke = static_cast<QKeyEvent *>(event);
        if (ke->key() == Qt::Key_Tab || ke->key() == Qt::Key_Backtab)
            return false; // moving between controls is the screen's business
        // A window the handlers open may take the key's release.
        const HeldKeys::Handling handling(ke);
        int code = KeyCodes::fromEvent(ke);
        if (KeyDown)
            KeyDown(code, KeyCodes::shiftState(ke));
        if (gone())
            return true;
        int ascii = KeyCodes::asciiFromEvent(ke);
        if (ascii != 0 && KeyPress)
            KeyPress(ascii);
        if (gone())
            return true;
        return keyDefault(ke, ascii);
    }
    case QEvent::KeyRelease: {
        auto *ke = static_cast<QKeyEvent *>(event);
        if (ke->key() == Qt::Key_Tab || ke->key() == Qt::Key_Backtab)
            return false;
        if (ke->isAutoRepeat())
            return true; // a held key is one press: only its last release counts
        int code = KeyCodes::fromEvent(ke);
        if (KeyUp)
            KeyUp(code, KeyCodes::shiftState(ke));
        return gone() || !passKeysToWidget();
    }
    case QEvent::FocusIn: {
        auto *fe = static_cast<QFocusEvent *>(event);
        if (m_form.activeControl() == this &&
            (fe->reason() == Qt::ActiveWindowFocusReason || fe->reason() == Qt::PopupFocusReason))
            return false; // the window came back: the control never lost the focus
        m_form.setActiveControl(this);
        if (GotFocus)
            GotFocus();
        return false;
    }
    case QEvent::FocusOut: {
        auto *fe = static_cast<QFocusEvent *>(event);
        if (fe->reason() == Qt::ActiveWindowFocusReason || fe->reason() == Qt::PopupFocusReason)
            return false;
        if (m_form.activeControl() == this)
            m_form.setActiveControl(nullptr);
        if (LostFocus)
            LostFocus();
        return false;
    }
    default:
        return false;
    }
}

void Control::mouseClicked()
{
}

bool Control::keyDefault(QKeyEvent *, int)
{
    return !passKeysToWidget();
}
