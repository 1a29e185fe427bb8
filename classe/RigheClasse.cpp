#include "classe/RigheClasse.h"

#include "classe/UnitaClasse.h"
#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "sheets/RigheScheda.h"

namespace {

// A clock that always reads the same instant: the generator's re-seeds then
// depend on the seed alone.
class OrologioFermo final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2000, 1, 1), QTime(0, 0)); }
};

// Seeds next to each other give unrelated draws.
std::uint64_t statoDaSeme(std::uint32_t seme)
{
    return 0x636c61737365ULL ^ (std::uint64_t(seme) * 0x9e3779b97f4a7c15ULL);
}

} // namespace

RigheClasse::RigheClasse() : m_privato(std::make_unique<AppContext>())
{
    m_privato->setClock(std::make_unique<OrologioFermo>());
}

RigheClasse::~RigheClasse() = default;

RigheClasse::Copia RigheClasse::Costruisci(const CodiceScheda::Scelta &scelta)
{
    Q_ASSERT(CodiceScheda::Valida(scelta));
    StatoCondiviso &s = m_privato->stato;
    s = StatoCondiviso();
    s.TipoNumeri = scelta.tipoNumeri;
    UnitaClasse::Applica(s, scelta.unita);
    m_privato->setRandom(std::make_unique<MixingRandom>(statoDaSeme(scelta.seme)));

    Copia copia;
    copia.scelta = scelta;
    copia.codice = CodiceScheda::Componi(scelta);
    Algoritmi generatore(*m_privato);
    for (int riga = 1; riga <= scelta.righe; ++riga) {
        generatore.GeneraEsercizio();
        const QString alunni = RigheScheda::RigaAlunni(s.Numero, s.SimboloRichiesto);
        copia.alunni << alunni;
        copia.docenti << RigheScheda::RigaDocenti(alunni, s.Risposta);
        copia.tipi << s.TipoEsercizio.value();
        copia.esercizi << Esercizio{s.Numero, s.SimboloRichiesto, s.Risposta,
                                    s.TipoEsercizio.value(), s.TipoEstratto.value()};
    }
    return copia;
}
