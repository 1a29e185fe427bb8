#pragma once

class AppContext;

// The exercise generator. GeneraEsercizio reads the settings of the shared
// state (TipoNumeri, NumeroCifre, Simbolo1..4) and leaves one exercise there:
// Numero, SimboloRichiesto and the expected Risposta.
class Algoritmi
{
public:
    explicit Algoritmi(AppContext &ctx) : m_ctx(ctx) {}

    void GeneraEsercizio();

    // Exercise types 1..44.
    static constexpr int PrimoTipo = 1;
    static constexpr int UltimoTipo = 44;

private:
    void estraiTipo();
    void costruisciEsercizio();
    int intero(double r, int k, int base) const;

    AppContext &m_ctx;
};
