#include "registro/frmVerifiche.h"

#include "classe/CodiceScheda.h"
#include "classe/UnitaClasse.h"
#include "core/AppContext.h"
#include "platform/Texts.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "registro/CsvVerifica.h"
#include "registro/StampaVerifica.h"
#include "registro/VistaInCornice.h"
#include "registro/frmRegistro.h"

#include <QDir>
#include <QHeaderView>
#include <QSaveFile>
#include <QStandardItemModel>
#include <QTableView>
#include <cmath>

namespace {

using K = ControlKind;
const QColor Fondo(236, 242, 250);
const QColor Blu(0, 0, 128);
const FontDef Titolo{"Arial", 14, true};
const FontDef Piccolo{"Arial", 8, false};
const FontDef Testo{"Arial", 10, false};
const FontDef Comando{"Arial", 9, true};

QColor colore(int esito)
{
    switch (esito) {
    case SerieRegistrata::PrimoTentativo:
        return {150, 225, 150};
    case SerieRegistrata::SecondoTentativo:
        return {215, 240, 150};
    case SerieRegistrata::SoluzioneChiesta:
        return {255, 205, 130};
    case SerieRegistrata::SoluzioneData:
        return {250, 160, 160};
    default:
        return {225, 225, 225};
    }
}

QTableView *tabellaIn(Frame &cornice, const QString &nome)
{
    auto *vista = vistaInCornice(cornice, new QTableView);
    vista->setObjectName(nome);
    vista->setAccessibleName(cornice.Caption());
    vista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vista->setSelectionMode(QAbstractItemView::SingleSelection);
    vista->verticalHeader()->hide();
    vista->setFont(QFont(QStringLiteral("Arial"), 9));
    return vista;
}

} // namespace

frmVerifiche::frmVerifiche(AppContext &ctx, const ImpostazioniRegistro &impostazioni)
    : Form(ctx, QStringLiteral("frmVerifiche")), m_ctx(ctx), m_impostazioni(impostazioni),
      m_archivio(impostazioni, QStringLiteral("registro-verifiche"))
{
    setCaption(QStringLiteral("Verifiche"));
    setBackColor(Fondo);
    setDesignFont(Testo);
    // clang-format off
    design(12000, 8400, {
        {.kind = K::Label, .name = "lblTitolo", .left = 120, .top = 60, .width = 6000, .height = 360, .caption = "VERIFICHE CON CODICE", .fore = Blu, .font = Titolo},
        {.kind = K::Frame, .name = "fraCodici", .left = 120, .top = 480, .width = 11760, .height = 2100, .caption = "Verifiche svolte, dalla più recente", .fore = Blu, .font = Comando, .border = true},
        {.kind = K::Label, .name = "lblVerifica", .left = 120, .top = 2660, .width = 11760, .height = 300, .fore = Blu, .font = Comando, .wordWrap = false},
        {.kind = K::Frame, .name = "fraClasse", .left = 120, .top = 2980, .width = 11760, .height = 4240, .caption = "Risultati della classe", .fore = Blu, .font = Comando, .border = true},
        {.kind = K::Label, .name = "lblLegenda", .left = 120, .top = 7260, .width = 11760, .height = 420, .font = Piccolo},
        {.kind = K::Label, .name = "lblStato", .left = 120, .top = 7800, .width = 7200, .height = 420, .font = Piccolo},
        {.kind = K::CommandButton, .name = "cmdEsporta", .left = 7440, .top = 7740, .width = 1500, .height = 480, .caption = "ESPORTA CSV", .font = Comando},
        {.kind = K::CommandButton, .name = "cmdStampa", .left = 9060, .top = 7740, .width = 1320, .height = 480, .caption = "STAMPA", .font = Comando},
        {.kind = K::CommandButton, .name = "cmdChiudi", .left = 10680, .top = 7740, .width = 1200, .height = 480, .caption = "CHIUDI", .font = Comando},
    });
    // clang-format on
    lblVerifica = &get<Label>("lblVerifica");
    lblStato = &get<Label>("lblStato");
    get<Label>("lblLegenda")
        .setCaption(TabellaVerifica::Legenda() + QStringLiteral(";  * = il più difficile"));

    m_codici = new QStandardItemModel(0, 5, this);
    m_codici->setHorizontalHeaderLabels({QStringLiteral("Codice"), QStringLiteral("Data"),
                                         QStringLiteral("Esercizi"), QStringLiteral("Alunni"),
                                         QStringLiteral("Numeri e simboli")});
    m_tabellaCodici = tabellaIn(get<Frame>("fraCodici"), QStringLiteral("tabellaCodici"));
    m_tabellaCodici->setModel(m_codici);
    m_tabellaCodici->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tabellaCodici->horizontalHeader()->setStretchLastSection(true);
    m_tabellaCodici->verticalHeader()->setDefaultSectionSize(20);
    for (auto [colonna, larghezza] : {std::pair{0, 80}, {1, 90}, {2, 64}, {3, 64}})
        m_tabellaCodici->horizontalHeader()->resizeSection(colonna, larghezza);

    m_classe = new QStandardItemModel(this);
    m_tabellaClasse = tabellaIn(get<Frame>("fraClasse"), QStringLiteral("tabellaClasse"));
    m_tabellaClasse->setModel(m_classe);
    m_tabellaClasse->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_tabellaClasse->verticalHeader()->setDefaultSectionSize(22);
    m_tabellaClasse->horizontalHeader()->setMinimumSectionSize(22);

    connect(m_tabellaCodici->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &attuale) { MostraVerifica(attuale.row()); });

    get<CommandButton>("cmdEsporta").Click = [this] { cmdEsporta_Click(); };
    get<CommandButton>("cmdStampa").Click = [this] { cmdStampa_Click(); };
    get<CommandButton>("cmdChiudi").Click = [this] { cmdChiudi_Click(); };
}

frmVerifiche::~frmVerifiche() = default;

void frmVerifiche::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    Aggiorna();
}

void frmVerifiche::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
}

void frmVerifiche::stato(const QString &testo)
{
    lblStato->setCaption(testo);
}

bool frmVerifiche::Aggiorna()
{
    ArchivioRegistro::Esito esito = ArchivioRegistro::Ok;
    m_voci = m_archivio.verifiche(&esito);
    m_codici->removeRows(0, m_codici->rowCount());
    if (esito != ArchivioRegistro::Ok) {
        m_voci.clear();
        MostraVerifica(-1);
        stato(frmRegistro::testoEsito(esito, m_archivio.ultimoErrore()));
        return false;
    }
    for (const ArchivioRegistro::VoceVerifica &v : std::as_const(m_voci)) {
        const auto scelta = CodiceScheda::Leggi(v.codice);
        QList<QStandardItem *> riga{
            new QStandardItem(v.codice),
            new QStandardItem(v.primaVolta.toString(QStringLiteral("dd/MM/yyyy"))),
            new QStandardItem(scelta ? QString::number(scelta->righe) : QString()),
            new QStandardItem(QString::number(v.alunni)),
            new QStandardItem(TabellaVerifica::Descrizione(v.codice))};
        for (int i = 2; i <= 3; ++i)
            riga[i]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        riga[3]->setToolTip(QStringLiteral("%1 alunni, %2 serie").arg(v.alunni).arg(v.serie));
        m_codici->appendRow(riga);
    }
    if (m_voci.isEmpty()) {
        MostraVerifica(-1);
        stato(QStringLiteral("Nessuna verifica nel registro: gli alunni la fanno dal menu "
                             "\"Verifica\" della schermata iniziale."));
        return true;
    }
    // The most recent is shown at once.
    m_tabellaCodici->setCurrentIndex(m_codici->index(0, 0));
    return true;
}

bool frmVerifiche::MostraVerifica(int riga)
{
    if (riga < 0 || riga >= m_voci.size()) {
        m_tabella = TabellaVerifica();
        lblVerifica->setCaption(QString());
        riempiTabella();
        return false;
    }
    const QString codice = m_voci.at(riga).codice;
    ArchivioRegistro::Esito esito = ArchivioRegistro::Ok;
    const QList<SerieRegistrata> serie = m_archivio.serieDiVerifica(codice, &esito);
    if (esito != ArchivioRegistro::Ok) {
        stato(frmRegistro::testoEsito(esito, m_archivio.ultimoErrore()));
        return false;
    }
    m_tabella = TabellaVerifica::Costruisci(codice, serie);
    lblVerifica->setCaption(
        QStringLiteral("Verifica %1: %2").arg(codice, TabellaVerifica::Descrizione(codice)));
    riempiTabella();
    const int alunni = m_voci.at(riga).alunni;
    stato(QStringLiteral("%1: %2, %3 serie")
              .arg(codice, alunni == 1 ? QStringLiteral("1 alunno")
                                       : QStringLiteral("%1 alunni").arg(alunni))
              .arg(m_tabella.righe.size()));
    return true;
}

void frmVerifiche::riempiTabella()
{
    const TabellaVerifica &t = m_tabella;
    m_classe->clear();
    if (t.codice.isEmpty())
        return;
    QStringList intestazione{QStringLiteral("Alunno")};
    for (int i = 1; i <= t.esercizi; ++i)
        intestazione << (i - 1 == t.piuDifficile ? QStringLiteral("%1*").arg(i)
                                                 : QString::number(i));
    intestazione << QStringLiteral("Esatte") << QStringLiteral("Tempo");
    m_classe->setColumnCount(int(intestazione.size()));
    m_classe->setHorizontalHeaderLabels(intestazione);
    if (t.piuDifficile >= 0)
        m_classe->horizontalHeaderItem(t.piuDifficile + 1)
            ->setToolTip(QStringLiteral("L'esercizio più difficile per la classe"));
    QFont grassetto = m_tabellaClasse->font();
    grassetto.setBold(true);
    for (const TabellaVerifica::Riga &r : t.righe) {
        QList<QStandardItem *> riga{new QStandardItem(TabellaVerifica::NomeRiga(r))};
        riga[0]->setToolTip(QStringLiteral("%1, %2%3")
                                .arg(r.inizio.toString(QStringLiteral("dd/MM/yyyy HH:mm")),
                                     r.postazione.isEmpty() ? QStringLiteral("-") : r.postazione,
                                     r.terminata ? QString() : QStringLiteral(", interrotta")));
        for (int i = 0; i < t.esercizi; ++i) {
            const TabellaVerifica::Cella &c = r.celle.at(i);
            auto *cella = new QStandardItem(QString(TabellaVerifica::Lettera(c.esito)));
            cella->setTextAlignment(Qt::AlignCenter);
            cella->setBackground(colore(c.esito));
            cella->setForeground(QColor(0, 0, 0));
            cella->setToolTip(c.esito == TabellaVerifica::NonRaggiunto
                                  ? QStringLiteral("Esercizio %1: non raggiunto").arg(i + 1)
                                  : QStringLiteral("Esercizio %1: %2, %3 secondi")
                                        .arg(i + 1)
                                        .arg(TabellaVerifica::Spiegazione(c.esito),
                                             Texts::fromDouble(c.secondi)));
            riga << cella;
        }
        riga << new QStandardItem(QStringLiteral("%1/%2").arg(r.esatte).arg(t.esercizi))
             << new QStandardItem(
                    QStringLiteral("%1 s").arg(Texts::fromDouble(std::round(r.secondi))));
        riga[t.esercizi + 1]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        riga[t.esercizi + 2]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_classe->appendRow(riga);
    }
    QList<QStandardItem *> totali{new QStandardItem(QStringLiteral("Esatte al 1° tentativo"))};
    totali[0]->setFont(grassetto);
    for (int i = 0; i < t.esercizi; ++i) {
        auto *cella = new QStandardItem(QString::number(t.esattePrimoTentativo.value(i)));
        cella->setTextAlignment(Qt::AlignCenter);
        cella->setFont(grassetto);
        if (i == t.piuDifficile) {
            cella->setBackground(QColor(200, 0, 0));
            cella->setForeground(QColor(255, 255, 255));
            cella->setToolTip(QStringLiteral("L'esercizio più difficile per la classe"));
        }
        totali << cella;
    }
    for (int i = 0; i < 2; ++i) {
        totali << new QStandardItem;
        totali.last()->setData(QStringLiteral("nessun totale"), Qt::AccessibleTextRole);
    }
    m_classe->appendRow(totali);

    m_tabellaClasse->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_tabellaClasse->horizontalHeader()->resizeSection(0, 170);
    for (int i = 1; i <= t.esercizi; ++i)
        m_tabellaClasse->horizontalHeader()->resizeSection(i, t.esercizi > 10 ? 26 : 34);
    m_tabellaClasse->horizontalHeader()->resizeSection(t.esercizi + 1, 58);
    m_tabellaClasse->horizontalHeader()->setStretchLastSection(true);
}

void frmVerifiche::cmdEsporta_Click()
{
    if (m_tabella.codice.isEmpty()) {
        stato(QStringLiteral("Scegliere prima una verifica."));
        return;
    }
    const QString cartella = m_ctx.folderChooser().choose(
        QStringLiteral("Cartella in cui salvare la verifica (CSV)"), QDir::homePath());
    if (cartella.isEmpty())
        return;
    const QString percorso = QDir(cartella).filePath(
        QStringLiteral("verifica-%1.csv").arg(QString(m_tabella.codice).remove(QLatin1Char('-'))));
    // Whole or not at all, as the register's own export.
    QSaveFile file(percorso);
    if (!file.open(QIODevice::WriteOnly) || file.write(CsvVerifica::testo(m_tabella)) < 0 ||
        !file.commit()) {
        m_ctx.messageBoxes().show(QStringLiteral("Impossibile salvare la verifica in %1: %2")
                                      .arg(percorso, file.errorString()),
                                  MessageBoxes::OkOnly, MessageBoxes::Exclamation,
                                  QStringLiteral("Verifiche"));
        return;
    }
    m_ctx.notifications().notify(
        QStringLiteral("Verifica %1 salvata in %2.").arg(m_tabella.codice, percorso));
}

void frmVerifiche::cmdStampa_Click()
{
    if (m_tabella.codice.isEmpty()) {
        stato(QStringLiteral("Scegliere prima una verifica."));
        return;
    }
    try {
        StampaVerifica::stampa(m_ctx.printer(), m_tabella);
    } catch (const RuntimeError &) {
        m_ctx.messageBoxes().show(QStringLiteral("Problema di stampa nella stampante utilizzata."),
                                  MessageBoxes::OkOnly);
    }
}

void frmVerifiche::cmdChiudi_Click()
{
    Unload();
}
