#include "classe/SerieClasse.h"

#include "platform/RuntimeError.h"

namespace {

// Far more than the smallest choice needs (whole numbers, three symbols, 40
// copies of 30 rows: a few hundred tries in all).
constexpr int TentativiPerCopia = 100000;

} // namespace

SerieClasse::SerieClasse(int tipoNumeri, int unita, int righe, std::uint64_t avvio)
    : m_semi(avvio), m_usate(std::size_t(righe))
{
    m_scelta.tipoNumeri = tipoNumeri;
    m_scelta.unita = unita;
    m_scelta.righe = righe;
}

const RigheClasse::Copia &SerieClasse::Aggiungi()
{
    for (int tentativo = 0; tentativo < TentativiPerCopia; ++tentativo) {
        CodiceScheda::Scelta scelta = m_scelta;
        scelta.seme = std::uint32_t(m_semi.next() * CodiceScheda::Semi());
        RigheClasse::Copia copia = m_righe.Costruisci(scelta);
        if (!distinta(copia))
            continue;
        for (std::size_t i = 0; i < m_usate.size(); ++i)
            m_usate[i].insert(copia.alunni.at(qsizetype(i)));
        m_copie.push_back(std::move(copia));
        return m_copie.back();
    }
    throw RuntimeError(RuntimeError::InvalidProcedureCall,
                       QStringLiteral("Nessuna copia diversa dalle altre"));
}

bool SerieClasse::distinta(const RigheClasse::Copia &copia) const
{
    for (std::size_t i = 0; i < m_usate.size(); ++i)
        if (m_usate[i].contains(copia.alunni.at(qsizetype(i))))
            return false;
    return true;
}
