#include "voce/ImpostazioniUtente.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

ImpostazioniUtente::ImpostazioniUtente()
    : m_file(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
             QStringLiteral("/Quadrivo/Quadrivo.conf"))
{
}

ImpostazioniUtente::ImpostazioniUtente(const QString &file) : m_file(file)
{
}

bool ImpostazioniUtente::voce() const
{
    return leggi(QStringLiteral("lettura/voce"));
}

void ImpostazioniUtente::setVoce(bool attiva)
{
    scrivi(QStringLiteral("lettura/voce"), attiva);
}

bool ImpostazioniUtente::caratteriLeggibili() const
{
    return leggi(QStringLiteral("lettura/caratteriLeggibili"));
}

void ImpostazioniUtente::setCaratteriLeggibili(bool attivi)
{
    scrivi(QStringLiteral("lettura/caratteriLeggibili"), attivi);
}

bool ImpostazioniUtente::leggi(const QString &chiave) const
{
    // No file yet (the usual case): nothing is read, both are off.
    if (!QFileInfo::exists(m_file))
        return false;
    return QSettings(m_file, QSettings::IniFormat).value(chiave, false).toBool();
}

void ImpostazioniUtente::scrivi(const QString &chiave, bool valore)
{
    QDir().mkpath(QFileInfo(m_file).absolutePath());
    QSettings impostazioni(m_file, QSettings::IniFormat);
    impostazioni.setValue(chiave, valore);
    impostazioni.sync();
}
