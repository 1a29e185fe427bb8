#include "registro/frmRegistro.h"

#include "core/AppContext.h"
#include "platform/Texts.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/CommandButton.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "platform/controls/TextBox.h"
#include "platform/printing/Printer.h"
#include "registro/CsvRegistro.h"
#include "registro/GraficoSerie.h"
#include "registro/ModelloSerie.h"
#include "registro/RiepilogoAlunni.h"
#include "registro/StampaRegistro.h"
#include "registro/UnitaSerie.h"
#include "registro/VistaInCornice.h"
#include "registro/frmVerifiche.h"
#include "services/frmSceltaStampante.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
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
const int RuoloNome = Qt::UserRole + 2;

QDate leggiData(const QString &testo, bool *valida)
{
    *valida = true;
    if (testo.trimmed().isEmpty())
        return {};
    for (const char *formato : {"d/M/yyyy", "d/M/yy", "d-M-yyyy", "yyyy-MM-dd"}) {
        QDate d = QDate::fromString(testo.trimmed(), QLatin1String(formato));
        if (d.isValid()) {
            if (d.year() < 100)
                d = d.addYears(2000);
            return d;
        }
    }
    *valida = false;
    return {};
}

} // namespace

frmRegistro::frmRegistro(AppContext &ctx, const ImpostazioniRegistro &impostazioni)
    : Form(ctx, QStringLiteral("frmRegistro")), m_ctx(ctx), m_impostazioni(impostazioni),
      m_archivio(impostazioni, QStringLiteral("registro-vista"))
{
    setCaption(QStringLiteral("Registro"));
    setBackColor(Fondo);
    setDesignFont(Testo);
    // clang-format off
    design(12000, 8400, {
        {.kind = K::Label, .name = "lblTitolo", .left = 120, .top = 60, .width = 5400, .height = 360, .caption = "REGISTRO DEGLI ALUNNI", .fore = Blu, .font = Titolo},
        {.kind = K::Label, .name = "lblFile", .left = 5640, .top = 100, .width = 6240, .height = 300, .fore = Blu, .font = Piccolo, .align = Align::Right, .wordWrap = false},
        {.kind = K::Label, .name = "lblNome", .left = 120, .top = 540, .width = 720, .height = 300, .caption = "Nome"},
        {.kind = K::TextBox, .name = "txtNome", .left = 840, .top = 480, .width = 2400, .height = 360},
        {.kind = K::Label, .name = "lblDal", .left = 3420, .top = 540, .width = 420, .height = 300, .caption = "Dal"},
        {.kind = K::TextBox, .name = "txtDal", .left = 3840, .top = 480, .width = 1500, .height = 360, .tip = "gg/mm/aaaa"},
        {.kind = K::Label, .name = "lblAl", .left = 5460, .top = 540, .width = 360, .height = 300, .caption = "Al"},
        {.kind = K::TextBox, .name = "txtAl", .left = 5820, .top = 480, .width = 1500, .height = 360, .tip = "gg/mm/aaaa"},
        {.kind = K::CommandButton, .name = "cmdCerca", .left = 7440, .top = 450, .width = 1320, .height = 420, .caption = "CERCA", .font = Comando},
        {.kind = K::Label, .name = "lblUnita", .left = 8940, .top = 540, .width = 600, .height = 300, .caption = "Unità"},
        {.kind = K::ComboBox, .name = "cboUnita", .left = 9540, .top = 480, .width = 1620, .height = 360},
        {.kind = K::Frame, .name = "fraSerie", .left = 120, .top = 960, .width = 7200, .height = 4800, .caption = "Serie, dalla più recente", .fore = Blu, .font = Comando, .border = true},
        {.kind = K::Frame, .name = "fraAlunni", .left = 7440, .top = 960, .width = 4440, .height = 4800, .caption = "Alunni", .fore = Blu, .font = Comando, .border = true},
        {.kind = K::Frame, .name = "fraRighe", .left = 120, .top = 5880, .width = 11760, .height = 1740, .caption = "Esercizi della serie scelta", .fore = Blu, .font = Comando, .border = true},
        {.kind = K::Label, .name = "lblStato", .left = 120, .top = 7800, .width = 5400, .height = 420, .font = Piccolo},
        {.kind = K::CommandButton, .name = "cmdEsporta", .left = 5640, .top = 7740, .width = 1500, .height = 480, .caption = "ESPORTA CSV", .font = Comando},
        {.kind = K::CommandButton, .name = "cmdStampa", .left = 7260, .top = 7740, .width = 1320, .height = 480, .caption = "STAMPA", .font = Comando},
        {.kind = K::CommandButton, .name = "cmdElimina", .left = 8700, .top = 7740, .width = 1860, .height = 480, .caption = "ELIMINA ALUNNO", .font = Comando},
        {.kind = K::CommandButton, .name = "cmdChiudi", .left = 10680, .top = 7740, .width = 1200, .height = 480, .caption = "CHIUDI", .font = Comando},
        {.kind = K::Menu, .name = "mnuStampante", .caption = "Stampante"},
        {.kind = K::Menu, .name = "mnuVerifiche", .caption = "Verifiche"},
    });
    // clang-format on
    txtNome = &get<TextBox>("txtNome");
    txtDal = &get<TextBox>("txtDal");
    txtAl = &get<TextBox>("txtAl");
    lblFile = &get<Label>("lblFile");
    lblStato = &get<Label>("lblStato");
    cboUnita = &get<ComboBox>("cboUnita");
    for (const QString &scelta : UnitaSerie::Scelte())
        cboUnita->AddItem(scelta);
    cboUnita->setListIndex(0);
    get<Label>("lblUnita").label()->setBuddy(cboUnita->widget());
    cboUnita->setEtichetta(get<Label>("lblUnita"));

    m_modello = new ModelloSerie(this);
    m_tabellaSerie = vistaInCornice(get<Frame>("fraSerie"), new QTableView);
    m_tabellaSerie->setObjectName(QStringLiteral("tabellaSerie"));
    m_tabellaSerie->setModel(m_modello);
    m_tabellaSerie->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tabellaSerie->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tabellaSerie->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tabellaSerie->verticalHeader()->hide();
    m_tabellaSerie->verticalHeader()->setDefaultSectionSize(20);
    m_tabellaSerie->horizontalHeader()->setStretchLastSection(true);
    m_tabellaSerie->setAccessibleName(QStringLiteral("Serie"));
    // Widths fixed once: measuring ten thousand rows would slow the opening.
    const QFont normale(QStringLiteral("Arial"), 9);
    m_tabellaSerie->setFont(normale);
    // Date, pupil, symbols, units, exercises, right, wrong, time, grade.
    const int larghezze[] = {118, 110, 72, 72, 58, 52, 52, 62, 90};
    for (int colonna = 0; colonna < int(std::size(larghezze)); ++colonna)
        m_tabellaSerie->horizontalHeader()->resizeSection(colonna, larghezze[colonna]);

    m_alunni = new QStandardItemModel(0, 4, this);
    m_alunni->setHorizontalHeaderLabels({QStringLiteral("Alunno"), QStringLiteral("Serie"),
                                         QStringLiteral("Esatte %"), QStringLiteral("Sec./es.")});
    m_alunni->setHorizontalHeaderItem(4, new QStandardItem(QStringLiteral("Ultime serie")));
    m_tabellaAlunni = vistaInCornice(get<Frame>("fraAlunni"), new QTableView);
    m_tabellaAlunni->setObjectName(QStringLiteral("tabellaAlunni"));
    m_tabellaAlunni->setModel(m_alunni);
    m_tabellaAlunni->setItemDelegateForColumn(4, new GraficoSerie(m_tabellaAlunni));
    m_tabellaAlunni->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tabellaAlunni->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tabellaAlunni->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tabellaAlunni->verticalHeader()->hide();
    m_tabellaAlunni->verticalHeader()->setDefaultSectionSize(24);
    m_tabellaAlunni->horizontalHeader()->setStretchLastSection(true);
    m_tabellaAlunni->setAccessibleName(QStringLiteral("Alunni"));
    m_tabellaAlunni->setFont(normale);

    m_righe = vistaInCornice(get<Frame>("fraRighe"), new QPlainTextEdit);
    m_righe->setObjectName(QStringLiteral("righe"));
    m_righe->setReadOnly(true);
    m_righe->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_righe->setFont(QFont(QStringLiteral("Courier New"), 9));
    m_righe->setAccessibleName(QStringLiteral("Esercizi della serie scelta"));

    connect(m_tabellaSerie->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &attuale) { MostraRighe(attuale.row()); });
    connect(m_tabellaSerie, &QTableView::activated, this,
            [this](const QModelIndex &i) { MostraRighe(i.row()); });

    get<CommandButton>("cmdCerca").Click = [this] { cmdCerca_Click(); };
    // A kind of units chosen shows its series at once.
    cboUnita->Click = [this] { cmdCerca_Click(); };
    get<CommandButton>("cmdEsporta").Click = [this] { cmdEsporta_Click(); };
    get<CommandButton>("cmdStampa").Click = [this] { cmdStampa_Click(); };
    get<CommandButton>("cmdElimina").Click = [this] { cmdElimina_Click(); };
    get<CommandButton>("cmdChiudi").Click = [this] { cmdChiudi_Click(); };
    get<Menu>("mnuStampante").Click = [this] { mnuStampante_Click(); };
    get<Menu>("mnuVerifiche").Click = [this] { mnuVerifiche_Click(); };
    txtNome->KeyPress = [this](int &k) {
        if (k == 13)
            cmdCerca_Click();
    };
}

frmRegistro::~frmRegistro() = default;

void frmRegistro::Form_Load()
{
    Resize::RegistraPosizioni(*this, Posizioni);
    lblFile->setCaption(QStringLiteral("Registro: %1").arg(m_impostazioni.descrizione()));
    Aggiorna();
}

void frmRegistro::Form_Resize()
{
    Resize::Ridimensiona(*this, Posizioni, false);
}

void frmRegistro::stato(const QString &testo)
{
    lblStato->setCaption(testo);
}

QString frmRegistro::testoEsito(ArchivioRegistro::Esito esito, const QString &dettaglio)
{
    switch (esito) {
    case ArchivioRegistro::NonRaggiungibile:
        return QStringLiteral("Registro non raggiungibile: %1").arg(dettaglio);
    case ArchivioRegistro::Bloccato:
        return QStringLiteral("Registro in uso da un altro programma: riprovare fra poco.");
    case ArchivioRegistro::SolaLettura:
        return QStringLiteral("Il registro è di sola lettura.");
    case ArchivioRegistro::VersioneFutura:
        return QStringLiteral("Registro di una versione più recente di Quadrivo: %1")
            .arg(dettaglio);
    default:
        return QStringLiteral("Errore del registro: %1").arg(dettaglio);
    }
}

bool frmRegistro::Aggiorna()
{
    bool dalValida = false, alValida = false;
    ArchivioRegistro::Filtro filtro;
    filtro.nome = txtNome->Caption();
    filtro.dal = leggiData(txtDal->Caption(), &dalValida);
    filtro.al = leggiData(txtAl->Caption(), &alValida);
    if (!dalValida || !alValida) {
        stato(QStringLiteral("Data non valida: scrivere gg/mm/aaaa (per esempio 16/11/2026)."));
        return false;
    }
    ArchivioRegistro::Esito esito = ArchivioRegistro::Ok;
    QList<SerieRegistrata> serie = m_archivio.elenco(filtro, &esito);
    serie.removeIf([scelta = cboUnita->ListIndex()](const SerieRegistrata &s) {
        return !UnitaSerie::Passa(s, scelta);
    });
    if (!m_archivio.messoDaParte().isEmpty())
        m_ctx.notifications().notify(
            QStringLiteral("Registro: il file %1 era danneggiato. È stato messo da parte in %2 "
                           "e ne è stato iniziato uno nuovo.")
                .arg(m_impostazioni.descrizione(), m_archivio.messoDaParte()));
    if (esito != ArchivioRegistro::Ok) {
        m_modello->imposta({});
        riempiAlunni();
        m_righe->clear();
        stato(testoEsito(esito, m_archivio.ultimoErrore()));
        return false;
    }
    m_modello->imposta(std::move(serie));
    riempiAlunni();
    m_righe->clear();
    const int n = m_modello->rowCount();
    stato(n == 1 ? QStringLiteral("1 serie") : QStringLiteral("%1 serie").arg(n));
    return true;
}

void frmRegistro::riempiAlunni()
{
    m_alunni->removeRows(0, m_alunni->rowCount());
    for (const RiepilogoAlunni::Alunno &a : RiepilogoAlunni::calcola(m_modello->serie())) {
        QList<QStandardItem *> riga{
            new QStandardItem(ModelloSerie::nomeMostrato(a.nome)),
            new QStandardItem(QString::number(a.serie)),
            new QStandardItem(Texts::fromDouble(std::round(a.percentuale()))),
            new QStandardItem(Texts::fromDouble(std::round(a.tempoMedio() * 10) / 10)),
            new QStandardItem};
        riga[0]->setData(a.nome, RuoloNome);
        for (int i = 1; i <= 3; ++i)
            riga[i]->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        QVariantList ultime;
        for (int p : a.ultime)
            ultime << p;
        riga[4]->setData(ultime, GraficoSerie::Ruolo);
        riga[4]->setToolTip(QStringLiteral("Esatte %, ultime serie: ") + [&] {
            QStringList t;
            for (int p : a.ultime)
                t << QString::number(p);
            return t.join(QStringLiteral(", "));
        }());
        m_alunni->appendRow(riga);
    }
    m_tabellaAlunni->resizeColumnsToContents();
}

void frmRegistro::MostraRighe(int riga)
{
    m_righe->clear();
    if (riga < 0 || riga >= m_modello->rowCount())
        return;
    const SerieRegistrata &s = m_modello->serie()[riga];
    ArchivioRegistro::Esito esito = ArchivioRegistro::Ok;
    const QList<SerieRegistrata::Esercizio> esercizi = m_archivio.righe(s.codice, &esito);
    if (esito != ArchivioRegistro::Ok) {
        stato(testoEsito(esito, m_archivio.ultimoErrore()));
        return;
    }
    QStringList testo;
    for (const SerieRegistrata::Esercizio &e : esercizi)
        testo << e.riga;
    m_righe->setPlainText(testo.join(QLatin1Char('\n')));
}

QString frmRegistro::AlunnoScelto() const
{
    const QModelIndex a = m_tabellaAlunni->currentIndex();
    if (a.isValid())
        return m_alunni->item(a.row(), 0)->data(RuoloNome).toString();
    const QModelIndex s = m_tabellaSerie->currentIndex();
    if (s.isValid())
        return m_modello->serie()[s.row()].nome;
    return {};
}

void frmRegistro::cmdCerca_Click()
{
    Aggiorna();
}

void frmRegistro::cmdEsporta_Click()
{
    const QString cartella = m_ctx.folderChooser().choose(
        QStringLiteral("Cartella in cui salvare il registro (CSV)"), QDir::homePath());
    if (cartella.isEmpty())
        return;
    const QString percorso = QDir(cartella).filePath(
        QStringLiteral("registro-%1.csv")
            .arg(m_ctx.clock().now().toString(QStringLiteral("yyyyMMdd-HHmmss"))));
    // Whole or not at all: a half-written table is worse than none.
    QSaveFile file(percorso);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(CsvRegistro::testo(m_modello->serie())) < 0 || !file.commit()) {
        m_ctx.messageBoxes().show(QStringLiteral("Impossibile salvare il registro in %1: %2")
                                      .arg(percorso, file.errorString()),
                                  MessageBoxes::OkOnly, MessageBoxes::Exclamation,
                                  QStringLiteral("Registro"));
        return;
    }
    m_ctx.notifications().notify(QStringLiteral("Registro salvato in %1 (%2 serie).")
                                     .arg(percorso)
                                     .arg(m_modello->rowCount()));
}

void frmRegistro::cmdStampa_Click()
{
    StampaRegistro::stampa(m_ctx.printer(), QStringLiteral("REGISTRO DEGLI ALUNNI"),
                           m_modello->serie(), RiepilogoAlunni::calcola(m_modello->serie()));
}

void frmRegistro::cmdElimina_Click()
{
    const QString nome = AlunnoScelto();
    if (!m_tabellaAlunni->currentIndex().isValid() && !m_tabellaSerie->currentIndex().isValid()) {
        stato(QStringLiteral("Scegliere prima un alunno (o una sua serie)."));
        return;
    }
    const QString domanda =
        QStringLiteral("Eliminare dal registro tutte le serie di %1? L'operazione non si può "
                       "annullare.")
            .arg(ModelloSerie::nomeMostrato(nome));
    if (m_ctx.messageBoxes().show(domanda, MessageBoxes::YesNo, MessageBoxes::Question,
                                  QStringLiteral("Registro")) != MessageBoxes::Yes)
        return;
    int quante = 0;
    const ArchivioRegistro::Esito esito = m_archivio.eliminaAlunno(nome, &quante);
    if (esito != ArchivioRegistro::Ok) {
        stato(testoEsito(esito, m_archivio.ultimoErrore()));
        return;
    }
    Aggiorna();
    stato(QStringLiteral("Eliminate %1 serie di %2.")
              .arg(quante)
              .arg(ModelloSerie::nomeMostrato(nome)));
}

void frmRegistro::cmdChiudi_Click()
{
    Unload();
}

void frmRegistro::mnuStampante_Click()
{
    m_ctx.form<frmSceltaStampante>().Show();
}

void frmRegistro::mnuVerifiche_Click()
{
    m_ctx.screens()
        .get<frmVerifiche>([this] { return new frmVerifiche(m_ctx, m_impostazioni); })
        .Show();
}
