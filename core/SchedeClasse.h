#pragma once

// What the worksheet screen asks of the class sets of worksheets (classe/):
// the two windows its menu opens. The program installs them in the context;
// nothing of them runs before the menu is used.
class SchedeClasse
{
public:
    virtual ~SchedeClasse() = default;
    // Distinct copies for a class, each with its key and its code.
    virtual void CopiePerLaClasse() = 0;
    // One copy again, from the code printed on it.
    virtual void RifaiDaCodice() = 0;
};
