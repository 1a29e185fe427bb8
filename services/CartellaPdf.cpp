#include "services/CartellaPdf.h"

#include "platform/Services.h"
#include "platform/printing/PdfFilePrinter.h"
#include "platform/printing/Printers.h"

namespace CartellaPdf {

bool Scegli(Services &services)
{
    Printers &stampanti = services.printers();
    PdfFilePrinter *pdf = nullptr;
    for (int i = 0; i < stampanti.count() && !pdf; ++i)
        pdf = dynamic_cast<PdfFilePrinter *>(&stampanti.at(i));
    if (!pdf) {
        services.notifications().notify(QStringLiteral("Non c'è una stampante su file PDF."));
        return false;
    }
    const QString attuale =
        pdf->outputDirectory().isEmpty() ? services.workingDirectory() : pdf->outputDirectory();
    const QString scelta =
        services.folderChooser().choose(QStringLiteral("Cartella dei file PDF"), attuale);
    if (scelta.isEmpty())
        return false;
    pdf->setOutputDirectory(scelta);
    services.notifications().notify(QStringLiteral("I file PDF saranno salvati nella cartella:\n") +
                                    scelta);
    return true;
}

} // namespace CartellaPdf
