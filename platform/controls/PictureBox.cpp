#include "platform/controls/PictureBox.h"

#include "platform/Accessibility.h"
#include "platform/Form.h"
#include "platform/Services.h"

#include <QFontMetricsF>
#include <QPainter>

class PictureWidget : public QWidget
{
public:
    PictureWidget(PictureBox *box, bool border, QWidget *parent)
        : QWidget(parent), m_box(box), m_border(border)
    {
        setFocusPolicy(Qt::StrongFocus);
        // Every paint fills the whole box first: Qt need not fill it too.
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.fillRect(rect(), palette().color(QPalette::Window));
        if (!m_box->m_image.isNull())
            p.drawImage(QPoint(0, 0), m_box->m_image);
        if (m_border) {
            p.setPen(palette().color(QPalette::Dark));
            p.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }

private:
    PictureBox *m_box;
    bool m_border;
};

PictureBox::PictureBox(Form &form, const ControlDef &def, Control *container)
    : Control(form, def, container)
{
    auto *w = new PictureWidget(this, def.border, parentWidget());
    setWidget(w);
    m_font = w->font();
    if (def.fore.isValid())
        m_ink = def.fore;
    if (!def.picture.isEmpty())
        setPicture(QImage(def.picture));
}

double PictureBox::ScaleWidth() const
{
    return widget() ? widget()->width() : 0;
}

double PictureBox::ScaleHeight() const
{
    return widget() ? widget()->height() : 0;
}

void PictureBox::ensureImage()
{
    const QSize size = widget() ? widget()->size() : QSize();
    if (m_image.size() == size && !m_image.isNull())
        return;
    // The drawing keeps its size when the box is resized: a smaller box cuts
    // it, a larger one shows it whole with blank around it.
    QImage grown(size.expandedTo(m_image.size()).expandedTo(QSize(1, 1)),
                 QImage::Format_ARGB32_Premultiplied);
    grown.fill(Qt::transparent);
    if (!m_image.isNull()) {
        QPainter p(&grown);
        p.drawImage(0, 0, m_image);
    }
    m_image = grown;
}

void PictureBox::Cls()
{
    m_image = QImage();
    m_base = QImage();
    m_printed.clear();
    CurrentX = 0;
    CurrentY = 0;
    if (widget())
        widget()->update();
    applyAccessibleText();
}

void PictureBox::Print(const QString &text)
{
    ensureImage();
    const QFont carattere = m_form.services().caratteriLeggibili().adatta(m_font);
    // Rows keep the designed font's places; the high-readability letters
    // sit on the designed baseline.
    const QFontMetricsF fm(m_font, widget());
    m_printed.append({text, CurrentX, CurrentY, carattere, m_ink});
    if (!text.trimmed().isEmpty())
        applyAccessibleText();
    if (!text.isEmpty()) {
        QPainter p(&m_image);
        p.setRenderHint(QPainter::TextAntialiasing);
        p.setFont(carattere);
        p.setPen(m_ink);
        p.drawText(QPointF(CurrentX, CurrentY + fm.ascent()), text);
    }
    CurrentX = 0;
    CurrentY += fm.height();
    if (widget())
        widget()->update();
}

double PictureBox::TextWidth(const QString &text) const
{
    return QFontMetricsF(m_form.services().caratteriLeggibili().adatta(m_font), widget())
        .horizontalAdvance(text);
}

double PictureBox::TextHeight(const QString &) const
{
    return QFontMetricsF(m_font, widget()).height();
}

QImage PictureBox::Image() const
{
    const QSize size = widget() ? widget()->size() : QSize();
    QImage out(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    out.fill(widget() ? widget()->palette().color(QPalette::Window) : QColor(Qt::white));
    if (!m_image.isNull()) {
        QPainter p(&out);
        p.drawImage(0, 0, m_image);
    }
    return out;
}

void PictureBox::setPicture(const QImage &picture)
{
    m_image = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_base = m_image;
    m_printed.clear();
    if (widget())
        widget()->update();
}

QString PictureBox::accessibleName() const
{
    const QString own = Control::accessibleName();
    if (!own.isEmpty() || (widget() && Accessibility::isDecorative(widget())))
        return own;
    for (const PrintedLine &l : m_printed)
        if (!l.text.trimmed().isEmpty())
            return l.text.simplified();
    return {};
}

void PictureBox::applyAccessibleText()
{
    if (!widget())
        return;
    applyAccessibleName();
    QStringList righe;
    for (const PrintedLine &l : m_printed)
        if (!l.text.trimmed().isEmpty())
            righe << l.text.simplified();
    widget()->setAccessibleDescription(righe.join(QLatin1Char('\n')));
}

void PictureBox::drawPicture(QPainter &painter, double scale) const
{
    const QSize size = widget() ? widget()->size() : QSize();
    const QRectF area(QPointF(0, 0), QSizeF(size.expandedTo(QSize(1, 1))) * scale);
    painter.save();
    painter.setClipRect(area);
    painter.fillRect(area,
                     widget() ? widget()->palette().color(QPalette::Window) : QColor(Qt::white));
    if (!m_base.isNull())
        painter.drawImage(QRectF(QPointF(0, 0), QSizeF(m_base.size()) * scale), m_base);
    // A font of P points on the box is P * screenDpi / 72 pixels; on the
    // painter's device those pixels are `scale` units each.
    const double screenDpi = widget() ? widget()->logicalDpiY() : 96;
    const double deviceDpi = painter.device()->logicalDpiY();
    for (const PrintedLine &line : m_printed) {
        if (line.text.isEmpty())
            continue;
        const double ascent = QFontMetricsF(line.font, widget()).ascent();
        QFont f = line.font;
        const double pixels =
            f.pointSizeF() > 0 ? f.pointSizeF() * screenDpi / 72 : double(f.pixelSize());
        f.setPointSizeF(pixels * 72 * scale / deviceDpi);
        painter.setFont(f);
        painter.setPen(line.color);
        painter.drawText(QPointF(line.x, line.y + ascent) * scale, line.text);
    }
    painter.restore();
}
