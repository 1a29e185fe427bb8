#pragma once

// What the start screen asks of the verifiche (one code, the same exercises
// for a whole class): the pupil's way in. The program installs them in the
// context; nothing of them runs before the menu is used.
class Verifiche
{
public:
    virtual ~Verifiche() = default;
    // The pupil types a code and a name, then takes the code's exercises.
    virtual void VerificaConCodice() = 0;
};
