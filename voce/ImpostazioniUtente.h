#pragma once

#include <QString>

// The user's own choices that outlive a run (reading aloud, the
// high-readability font): a small file in the user's configuration folder
// (~/.config/Quadrivo/), never the levels file beside the program.
class ImpostazioniUtente
{
public:
    // The file in the user's configuration folder.
    ImpostazioniUtente();
    explicit ImpostazioniUtente(const QString &file);

    QString file() const { return m_file; }

    bool voce() const;
    void setVoce(bool attiva);
    bool caratteriLeggibili() const;
    void setCaratteriLeggibili(bool attivi);

private:
    bool leggi(const QString &chiave) const;
    void scrivi(const QString &chiave, bool valore);

    QString m_file;
};
