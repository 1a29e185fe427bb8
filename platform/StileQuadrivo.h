#pragma once

#include <QProxyStyle>

// The program's widget style: Fusion, drawn exactly as Fusion draws, except
// that the overflow arrow of a menu bar is read from its image files only
// when the arrow is first shown or measured. Every menu bar makes one, and
// reading it would load every image plugin while the start screen is built;
// the arrow shows only on a window too narrow for its menu.
class StileQuadrivo : public QProxyStyle
{
    Q_OBJECT

public:
    // Over `base` (taken over) instead of Fusion, for tests.
    explicit StileQuadrivo(QStyle *base = nullptr);

    QIcon standardIcon(StandardPixmap icona, const QStyleOption *opzione = nullptr,
                       const QWidget *widget = nullptr) const override;
};
