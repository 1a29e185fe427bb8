#include "platform/printing/PrinterFonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>

namespace {

const QString courierNew = QStringLiteral("Courier New");

bool installed(const QString &family)
{
    return QFontDatabase::families().contains(family, Qt::CaseInsensitive);
}

} // namespace

QString PrinterFonts::resolvedFamily(const QString &family)
{
    return QFontInfo(QFont(family)).family();
}

bool PrinterFonts::courierAvailable()
{
    static const QStringList sameMetrics = {
        QStringLiteral("Liberation Mono"),
        QStringLiteral("Cousine"),
        QStringLiteral("Nimbus Mono PS"),
        QStringLiteral("FreeMono"),
    };
    for (const QString &name : {courierNew, QStringLiteral("Courier")}) {
        if (installed(name) || sameMetrics.contains(resolvedFamily(name), Qt::CaseInsensitive))
            return true;
    }
    return false;
}

QStringList PrinterFonts::families()
{
    QStringList list = QFontDatabase::families();
    if (!list.contains(courierNew, Qt::CaseInsensitive) && courierAvailable())
        list.append(courierNew);
    return list;
}
