#include "platform/Fonts.h"

#include <QFont>
#include <QStringList>

namespace Fonts {

void installSubstitutions()
{
    QFont::insertSubstitutions(
        QStringLiteral("MS Sans Serif"),
        QStringList{QStringLiteral("Liberation Sans"), QStringLiteral("DejaVu Sans")});
    QFont::insertSubstitutions(QStringLiteral("Wingdings"),
                               QStringList{QStringLiteral("DejaVu Sans")});
}

} // namespace Fonts
