#pragma once

#include "platform/FixedArray.h"
#include "platform/Int16.h"

#include <QString>
#include <cstdint>

// The block of fields through which every screen exchanges settings,
// exercises and results. One instance lives in the application context for
// the whole run; screens read and write the fields directly. Everything starts
// at zero or the empty text.
struct StatoCondiviso
{
    using Righe = FixedArray<QString, 60>;

    // Settings chosen on the start screen.
    Int16 TipoNumeri; // 1 integers, 2 decimals, 3 both
    QString DescrizioneNumeri;
    QString DescrizioneSimboli;
    Int16 SimboliScelti;
    Int16 FamigliaSimboli; // 1..12
    QString Simbolo1, Simbolo2, Simbolo3, Simbolo4;
    Int16 NumeroCifre; // 3 or 4: the generator's input
    Int16 NumeroSimboli;
    Int16 PrimoSimbolo;

    // The current exercise, written by the generator.
    Int16 TipoEsercizio; // 1..44
    Int16 TipoEstratto;  // 1 integer, 2 decimal (mixed draws)
    std::uint8_t Cifra1 = 0, Cifra2 = 0, Cifra3 = 0, Cifra4 = 0;
    QString Numero;
    QString SimboloRichiesto;
    QString Risposta;

    // The drill's series.
    Int16 TastiPremuti;
    Int16 Tentativi;
    Int16 NumeroEsercizio;
    Int16 EsatteComplessive; // never reset while the program runs
    QString Segno;
    Int16 RisposteEsatte;
    Int16 RisposteErrate;
    double TempoParziale = 0;
    double TempoTotale = 0;
    double InizioEsercizio = 0;
    double FineEsercizio = 0;
    QString TempoParzialeTesto;
    QString TempoTotaleTesto;
    QByteArray DatiSuono;
    QString Spazi;
    QString SpaziRisposta;
    QString RispostaAlunno;
    Righe Operazioni;
    Int16 LivelloSerie; // set to 9 when the drill loads; nothing reads it

    // Worksheets.
    Int16 NumeroRighe;
    Int16 SchedaDaStampare; // 1 pupils', 2 teachers'
    Int16 RigaScheda;
    QString SpaziNumero;
    QString SpaziSimbolo;
    QString SpaziSoluzione;
    Righe RigheAlunni;
    Righe RigheDocenti;

    // Texts set by the start screen.
    QString TitoloArgomento;
    QString SottotitoloArgomento;
    QString RigaSimboli;

    // Options, names and certificate.
    QString NomeEseguibile;
    QString ColoreSfondo;
    QString ColoreCaratteri;
    QString ColoreScansioneChiaro;
    QString ColoreScansioneScuro;
    Int16 IndiceSfondo;
    Int16 IndiceScansione;
    Int16 IndiceCaratteri;
    QString OpzioneTesto;
    bool OpzioneA = false;
    bool OpzioneB = false;
    bool OpzioneC = false;
    Int16 SegnaleAcustico; // 0 on, 1 off
    QString NomeAlunno;
    QString Valutazione;
    QString NomeAttestato; // nothing assigns it: the certificate's name line stays empty

    // Loop counter shared by several routines; no value survives between uses.
    Int16 Contatore;
    QString SimboloExtra1, SimboloExtra2;
};
