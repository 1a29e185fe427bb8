#pragma once

#include <dlfcn.h>
#include <type_traits>

// A shared library the program does not link but opens when it first needs
// it (sound, speech, X extensions), so start-up does not pay for loading it.
// It stays loaded to the end of the process. Each function is looked up by
// name into a pointer of its own type.
class LibreriaDinamica
{
public:
    explicit LibreriaDinamica(const char *file) : m_libreria(dlopen(file, RTLD_NOW | RTLD_LOCAL))
    {
        m_tutte = m_libreria != nullptr;
    }

    bool caricata() const { return m_libreria != nullptr; }

    // Sets `funzione` to the library's `nome`, or to null when missing.
    template <class F> void trova(F *&funzione, const char *nome)
    {
        funzione = m_libreria ? reinterpret_cast<F *>(dlsym(m_libreria, nome)) : nullptr;
        m_tutte = m_tutte && funzione;
    }

    // The library is there and every function asked for was found.
    bool tutte() const { return m_tutte; }

private:
    void *m_libreria;
    bool m_tutte;
};
