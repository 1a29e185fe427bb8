#pragma once

#include <QList>

class QIcon;
class QString;

// The program's own icon, from the PNG files its package installs under
// icons/hicolor/<n>x<n>/apps/ in the data folders, the user's own first, as
// the icon theme searches them. Asking the icon theme for it instead makes
// Qt read the whole index of the desktop's theme and of hicolor while the
// program starts (on X11 about 29 M instructions, a third of start-up), for
// an icon only hicolor has.
namespace IconaApplicazione {

// Each of the sizes `lati` (in pixels) from the first data folder that has
// it; empty when none is installed.
QIcon installata(const QString &id, const QList<int> &lati);

} // namespace IconaApplicazione
