#!/usr/bin/python3
"""What a screen reader reads of Quadrivo: the real program under Xvfb, with
the accessibility bus of a private D-Bus session (run this under
dbus-run-session), each screen reached as a user would and walked through
AT-SPI (pyatspi, as Orca reads it).

    lettura_atspi.py <Quadrivo> [<folder for the readouts>]

Fails when a screen is not a frame named by its caption, when a name is one
of the program's own control names, when something focusable or pressable
has no name, when a decoration is named or focusable, or when what a hidden
panel holds shows. Prints what each screen reads out."""

import os
import re
import subprocess
import sys
import tempfile
import time

import pyatspi

PROGRAMMA = sys.argv[1]
USCITA = sys.argv[2] if len(sys.argv) > 2 else None
# A busy machine (builds on both cores) gets more time, never less.
ATTESA = 30.0 * max(1.0, os.getloadavg()[0] / max(1, os.cpu_count() or 1))

# The program's own names for its controls: a word for the kind and the
# control's name ("Etichetta LblOperazione"), or a bare control name.
INTERNI = re.compile(
    r"^(Etichetta|Riquadro|Scelta|Pulsante|Casella di testo|Disegno|Immagine|Linea|Forma|Elenco) "
    r"|\b(Label|Lbl|lbl|Frame|fra|Fra|Picture|Image|Line|Command|Option|opt|txt|cmd|Combo)[A-Za-z]*\d*(_\d+|\(\d+\))?$")

errori = []


def errore(testo):
    errori.append(testo)
    print("ERRORE: " + testo, flush=True)


QUADRIVO = None


def aspetta(condizione, cosa):
    fine = time.time() + ATTESA
    while time.time() < fine:
        if QUADRIVO is not None and QUADRIVO.poll() is not None:
            raise RuntimeError("Quadrivo è terminato (stato %d) aspettando %s"
                               % (QUADRIVO.returncode, cosa))
        risultato = condizione()
        if risultato:
            return risultato
        time.sleep(0.1)
    raise RuntimeError("non arrivato in %.0f s: %s" % (ATTESA, cosa))


def stato(o, s):
    return o.getState().contains(s)


def figli(o):
    for i in range(o.childCount):
        c = o.getChildAtIndex(i)
        if c is not None:
            yield c


def applicazione():
    desktop = pyatspi.Registry.getDesktop(0)
    for a in figli(desktop):
        if a.name == "Quadrivo":
            return a
    return None


def finestra(titolo):
    app = applicazione()
    if app is None:
        return None
    for f in figli(app):
        if f.name == titolo and stato(f, pyatspi.STATE_SHOWING):
            return f
    return None


def tutti(o):
    yield o
    for c in figli(o):
        yield from tutti(c)


def trova(radice, nome, ruoli=("push button", "radio button", "menu item", "check box")):
    for o in tutti(radice):
        if o.name == nome and o.getRoleName() in ruoli and stato(o, pyatspi.STATE_SHOWING) \
                and stato(o, pyatspi.STATE_ENABLED):
            return o
    return None


def premi(radice, nome):
    o = aspetta(lambda: trova(radice, nome), "'%s' da premere" % nome)
    azioni = o.queryAction()
    for i in range(azioni.nActions):
        if azioni.getName(i).lower() in ("press", "click", "toggle"):
            azioni.doAction(i)
            return
    raise RuntimeError("'%s' non ha un'azione di pressione" % nome)


def clicca(radice, nome):
    """A real click, for what opens a modal screen (its own event loop would
    hold up the answer to an accessibility call)."""
    o = aspetta(lambda: trova(radice, nome), "'%s' da cliccare" % nome)
    e = o.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
    subprocess.run(["xdotool", "mousemove", str(e.x + e.width // 2), str(e.y + e.height // 2),
                    "click", "1"], check=True)


def relazioni(o):
    out = []
    for r in o.getRelationSet():
        nomi = [r.getTarget(i).name for i in range(r.getNTargets())]
        out.append("%s %s" % (r.getRelationType().value_nick, ", ".join(nomi)))
    return out


def controlla(schermata, f, titolo):
    """The rules, and the readout: what shows, as a screen reader has it."""
    if f.getRoleName() != "frame":
        errore("%s: la finestra è '%s', non un frame" % (schermata, f.getRoleName()))
    if f.name != titolo:
        errore("%s: la finestra si chiama '%s'" % (schermata, f.name))
    righe = ["%s: frame \"%s\"" % (schermata, f.name)]

    def visita(o, livello, nascosto):
        ruolo = o.getRoleName()
        nome = o.name or ""
        mostra = stato(o, pyatspi.STATE_SHOWING)
        dove = "%s: %s \"%s\"" % (schermata, ruolo, nome)
        if INTERNI.search(nome):
            errore(dove + ": nome interno")
        # Qt's own list inside a combo box is named by the combo box.
        dentro_elenco = o.parent is not None and o.parent.getRoleName() == "combo box"
        if stato(o, pyatspi.STATE_FOCUSABLE) and not nome.strip() and ruolo != "filler" \
                and not dentro_elenco:
            errore(dove + ": prende il fuoco senza nome")
        if ruolo == "filler" and livello > 1:
            if nome or stato(o, pyatspi.STATE_FOCUSABLE):
                errore(dove + ": una decorazione ha un nome o prende il fuoco")
        if ruolo in ("image", "separator") and not nome:
            errore(dove + ": immagine senza nome")
        if nascosto and mostra:
            errore(dove + ": si mostra dentro un pannello nascosto")
        if mostra and (nome or relazioni(o)) and ruolo != "filler":
            extra = []
            if not stato(o, pyatspi.STATE_ENABLED):
                extra.append("disabilitato")
            extra += relazioni(o)
            righe.append("%s%s \"%s\"%s" % ("  " * livello, ruolo, nome,
                                              " [" + "; ".join(extra) + "]" if extra else ""))
        for c in figli(o):
            visita(c, livello + 1, nascosto or (ruolo == "panel" and not mostra))

    for c in figli(f):
        visita(c, 1, False)
    testo = "\n".join(righe) + "\n"
    print(testo, flush=True)
    if USCITA:
        with open(os.path.join(USCITA, schermata + ".txt"), "w") as out:
            out.write(testo)
    return testo


def schermata(nome, titolo):
    f = aspetta(lambda: finestra(titolo), "la finestra '%s'" % titolo)
    time.sleep(0.3)  # let the first paint and the curtain's start settle
    return f, controlla(nome, f, titolo)


def avvia_xvfb():
    r, w = os.pipe()
    # -noreset: by default the server resets when its last client leaves (the
    # probe below, the accessibility bus launcher), and under load a program
    # connecting during that reset is refused.
    xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(w), "-screen", "0", "1280x1024x24",
                             "-nolisten", "tcp", "-noreset"], pass_fds=(w,),
                            stderr=subprocess.DEVNULL)
    os.close(w)
    numero = b""
    while not numero.endswith(b"\n"):
        pezzo = os.read(r, 16)
        if not pezzo:
            raise RuntimeError("Xvfb non è partito")
        numero += pezzo
    os.close(r)
    display = ":" + numero.decode().strip()
    # The server answers before the program is started on it.
    fine = time.time() + ATTESA
    while subprocess.run(["xdotool", "getmouselocation"], env=dict(os.environ, DISPLAY=display),
                         stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode != 0:
        if xvfb.poll() is not None or time.time() > fine:
            raise RuntimeError("Xvfb su %s non risponde" % display)
        time.sleep(0.1)
    return xvfb, display


def main():
    if "DBUS_SESSION_BUS_ADDRESS" not in os.environ:
        sys.exit("avviare sotto dbus-run-session")
    xvfb, display = avvia_xvfb()
    os.environ["DISPLAY"] = display
    bus = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"],
                           stderr=subprocess.DEVNULL)
    cartella = tempfile.mkdtemp(prefix="quadrivo-atspi-")
    # The register the walk writes to stays in its own folder, and the user's
    # own settings (voice, font) stay out of the walk.
    env = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
               XDG_RUNTIME_DIR=cartella, XDG_CONFIG_HOME=cartella,
               QUADRIVO_REGISTRO="sqlite " + os.path.join(cartella, "registro.sqlite"))
    os.chmod(cartella, 0o700)
    global QUADRIVO
    quadrivo = QUADRIVO = subprocess.Popen([PROGRAMMA], cwd=cartella, env=env)
    try:
        percorso(quadrivo)
    finally:
        if quadrivo.poll() is None:
            quadrivo.kill()
        quadrivo.wait()
        bus.terminate()
        xvfb.terminate()
        bus.wait()
        xvfb.wait()
    if errori:
        print("%d errori" % len(errori))
        sys.exit(1)
    print("ok")


def percorso(quadrivo):
    inizio, testo = schermata("FrmInizio", "SISTEMA DECIMALE: scomposizione")
    for atteso in ('panel "Scomponi i ..." [labelled-by Scomponi i ...]',
                   'radio button "numeri interi"'):
        if atteso not in testo:
            errore("FrmInizio: manca %s" % atteso)
    # The later choices wait: their panels do not show yet.
    if 'radio button "Vai"' in testo:
        errore("FrmInizio: 'Vai' si mostra prima delle scelte")

    # The menu "Voce": two choices, each read with its state: chosen, the
    # entry reads checked; chosen again, no more.
    def voce_del_menu(nome):
        clicca(inizio, "Voce")
        return aspetta(lambda: next((x for x in tutti(applicazione()) if x.name == nome
                                     and x.getRoleName() == "check box"
                                     and stato(x, pyatspi.STATE_SHOWING)), None),
                       "'%s' nel menu Voce" % nome)

    def chiudi_menu():
        time.sleep(0.3)
        if trova(applicazione(), "Leggi ad alta voce") is not None:
            subprocess.run(["xdotool", "key", "Escape"], check=True)
        aspetta(lambda: trova(applicazione(), "Leggi ad alta voce") is None,
                "la chiusura del menu Voce")

    def leggi_voce(nome, attesa):
        o = voce_del_menu(nome)
        if stato(o, pyatspi.STATE_CHECKED) != attesa:
            errore("FrmInizio: '%s' si legge %s" % (nome, "spento" if attesa else "attivo"))
        print("FrmInizio: %s \"%s\"%s" % (o.getRoleName(), nome, " [checked]" if attesa else ""),
              flush=True)
        return o

    for nome in ("Leggi ad alta voce", "Caratteri ad alta leggibilità"):
        leggi_voce(nome, False)
        premi(applicazione(), nome)
        chiudi_menu()
        leggi_voce(nome, True)
        premi(applicazione(), nome)
        chiudi_menu()
        leggi_voce(nome, False)
        chiudi_menu()

    clicca(inizio, "Opzioni")
    opzioni, _ = schermata("FrmOpzioni", aspetta(lambda: altra_finestra(inizio), "le opzioni").name)
    chiudi_modale(opzioni)

    clicca(inizio, "Autore")
    autore, _ = schermata("frmAutore", aspetta(lambda: altra_finestra(inizio), "l'autore").name)
    chiudi_modale(autore)

    premi(inizio, "Stampa le schede")
    schede = aspetta(lambda: altra_finestra(inizio), "le schede")
    schede, _ = schermata("FrmStampaSchede", schede.name)
    premi(schede, "Scegli stampante")
    stampante = aspetta(lambda: altra_finestra(inizio, schede), "la stampante")
    stampante, _ = schermata("frmSceltaStampante", stampante.name)
    premi(stampante, "CHIUDI")
    aspetta(lambda: altra_finestra(inizio, schede) is None, "la chiusura della stampante")

    premi(schede, "ESCI")
    aspetta(lambda: altra_finestra(inizio) is None, "la chiusura delle schede")

    verifica(inizio)

    premi(inizio, "numeri interi")
    premi(inizio, "u d c m")
    premi(inizio, "Vai")
    esercizio, testo = schermata("frmOperativo", "SCOMPOSIZIONE")
    for atteso in ('label "Tempo parziale" [labelled-by Tempo parziale]',
                   'label "Tempo parziale" [label-for Tempo parziale]',
                   'panel "VALUTAZIONE"', 'push button "Verifica" [disabilitato]'):
        if atteso not in testo:
            errore("frmOperativo: manca %s" % atteso)
    for nascosto in ("Ti aiuto ?", "Intervengo io", "Esercitazione terminata"):
        if nascosto in testo:
            errore("frmOperativo: '%s' si mostra sotto il tastierino" % nascosto)

    # A wrong answer: one digit and one symbol, then the check.
    premi(esercizio, "1")
    premi(esercizio, "m")
    premi(esercizio, "Verifica")
    aspetta(lambda: trova(esercizio, "Si"), "l'offerta di aiuto")
    _, testo = schermata("frmOperativo-aiuto", "SCOMPOSIZIONE")
    if 'panel "Ti aiuto ?"' not in testo or 'push button "Si"' not in testo:
        errore("frmOperativo-aiuto: l'aiuto non si mostra")
    if 'push button "Cancella"' in testo:
        errore("frmOperativo-aiuto: il tastierino coperto si mostra")
    premi(esercizio, "Si")

    clicca(esercizio, "Istruzioni")
    istruzioni = aspetta(lambda: altra_finestra(inizio, esercizio), "le istruzioni")
    istruzioni, _ = schermata("frmIstruzioni", istruzioni.name)
    chiudi_modale(istruzioni)

    premi(esercizio, "Visualizza operazioni")
    resoconto = aspetta(lambda: altra_finestra(inizio, esercizio), "il resoconto")
    resoconto, testo = schermata("FrmStampaEsercizio2", resoconto.name)
    if "ESERCIZI ESEGUITI" not in testo:
        errore("FrmStampaEsercizio2: il titolo spaziato non si legge come parole")
    nomi = [o.name for o in tutti(resoconto) if o.getRoleName() == "push button"]
    premi(resoconto, nomi[2])
    nome = aspetta(lambda: altra_finestra(inizio, esercizio, resoconto), "il nome")
    schermata("frmNome", nome.name)
    premi(resoconto, nomi[3])
    attestato = aspetta(lambda: altra_finestra(inizio, esercizio, resoconto, nome), "l'attestato")
    schermata("FrmAttestato", attestato.name)

    # The measures: the drill is left, the menu read and a measure chosen,
    # then the start screen and a drill in it.
    premi(esercizio, "Esci")
    aspetta(lambda: finestra("SCOMPOSIZIONE") is None, "la chiusura dell'esercitazione")
    misure(inizio)


MISURE = ["Numeri: uk h da u / h da u / u d c m", "Lunghezze: km hm dam m", "Lunghezze: hm dam m",
          "Lunghezze: m dm cm mm", "Masse: kg hg dag g", "Masse: hg dag g", "Masse: g dg cg mg",
          "Capacità: hl dal l", "Capacità: l dl cl ml"]


def voci_misure(inizio):
    """The entries under the "Misure" menu of the start screen."""
    menu = trova(inizio, "Misure", ruoli=("menu item", "menu"))
    if menu is None:
        return None, []
    return menu, [o for o in tutti(menu) if o is not menu
                  and o.getRoleName() in ("menu item", "check box")]


def misure(inizio):
    clicca(inizio, "Misure")
    menu, voci = aspetta(lambda: (lambda m: m if m[1] and stato(m[1][0], pyatspi.STATE_SHOWING)
                                  else None)(voci_misure(inizio)), "il menu Misure aperto")
    righe = ["Misure: %s \"%s\"" % (menu.getRoleName(), menu.name)]
    for o in voci:
        spunta = " [scelta]" if stato(o, pyatspi.STATE_CHECKED) else ""
        righe.append("  %s \"%s\"%s" % (o.getRoleName(), o.name, spunta))
        if INTERNI.search(o.name or "") or not o.name:
            errore("Misure: \"%s\": nome interno o mancante" % o.name)
    testo = "\n".join(righe) + "\n"
    print(testo, flush=True)
    if USCITA:
        with open(os.path.join(USCITA, "FrmInizio-menu-misure.txt"), "w") as out:
            out.write(testo)
    if [o.getRoleName() for o in voci] != ["check box"] * len(voci):
        errore("Misure: le voci non si leggono come caselle da spuntare")
    if [o.name for o in voci] != MISURE:
        errore("Misure: le voci sono %s" % [o.name for o in voci])
    if [stato(o, pyatspi.STATE_CHECKED) for o in voci] != [True] + [False] * 8:
        errore("Misure: all'inizio non è scelto solo Numeri")
    azioni = voci[1].queryAction()
    for i in range(azioni.nActions):
        if azioni.getName(i).lower() in ("press", "click", "toggle"):
            azioni.doAction(i)
            break
    else:
        raise RuntimeError("'%s' non ha un'azione di pressione" % MISURE[1])
    aspetta(lambda: finestra("SISTEMA METRICO: scomposizione"), "la schermata in una misura")
    _, voci = voci_misure(finestra("SISTEMA METRICO: scomposizione"))
    if [stato(o, pyatspi.STATE_CHECKED) for o in voci] != [False, True] + [False] * 7:
        errore("Misure: la misura scelta non risulta spuntata")

    inizio, testo = schermata("FrmInizio-misura", "SISTEMA METRICO: scomposizione")
    for atteso in ('label "SISTEMA METRICO"', 'label "SCOMPOSIZIONE DELLE MISURE"',
                   'radio button "km hm dam m"'):
        if atteso not in testo:
            errore("FrmInizio-misura: manca %s" % atteso)
    premi(inizio, "numeri interi")
    premi(inizio, "km hm dam m")
    premi(inizio, "Vai")
    _, testo = schermata("frmOperativo-misura", "SCOMPOSIZIONE")
    for unita in ("km", "hm", "dam", "m"):
        if 'push button "%s"' % unita not in testo:
            errore("frmOperativo-misura: manca il tasto %s" % unita)


def verifica(inizio):
    """A verifica: a mistyped code, the right one (000-000: integers, ten
    rows), a name, the drill on the code left after one exercise, and the
    teacher's table of it in the register."""
    # A menu with entries opens with a click; its entry is then pressed.
    clicca(inizio, "Verifica")
    premi(applicazione(), "Verifica con codice")
    codice, testo = schermata("frmVerifica", "VERIFICA CON CODICE")
    for atteso in ('label "SCRIVI IL CODICE DELLA VERIFICA ?" [labelled-by SCRIVI IL CODICE DELLA VERIFICA]',
                   'push button "Z"', 'push button "CANCELLA"', 'radio button "AVANTI"'):
        if atteso not in testo:
            errore("frmVerifica: manca %s" % atteso)
    if 'push button "W"' in testo and testo.count('push button "A"') > 1:
        errore("frmVerifica: l'alfabeto del nome si mostra con quello del codice")
    for tasto in "000001":
        premi(codice, tasto)
    premi(codice, "AVANTI")
    aspetta(lambda: any("controlla di averlo copiato bene" in (o.name or "")
                        for o in tutti(codice)), "il codice rifiutato")
    _, testo = schermata("frmVerifica-rifiutato", "VERIFICA CON CODICE")
    premi(codice, "CANCELLA")
    premi(codice, "0")
    premi(codice, "AVANTI")
    aspetta(lambda: any(o.name == "SCRIVI IL TUO NOME" for o in tutti(codice)), "il nome")
    for lettera in "ADA":
        premi(codice, lettera)
    _, testo = schermata("frmVerifica-nome", "VERIFICA CON CODICE")
    if 'label "SCRIVI IL TUO NOME ADA" [labelled-by SCRIVI IL TUO NOME]' not in testo:
        errore("frmVerifica-nome: il nome scritto non si legge")
    premi(codice, "AVANTI")
    esercizio, testo = schermata("frmOperativo-verifica", "SCOMPOSIZIONE")
    if 'label "Verifica 000-000"' not in testo:
        errore("frmOperativo-verifica: il codice non si legge")
    premi(esercizio, "1")
    premi(esercizio, "Verifica")
    premi(esercizio, "Si")
    premi(esercizio, "Esci")
    aspetta(lambda: altra_finestra(inizio) is None, "la chiusura degli esercizi")

    premi(inizio, "Registro")
    registro = aspetta(lambda: altra_finestra(inizio), "il registro")
    premi(registro, "Verifiche")
    tabella = aspetta(lambda: altra_finestra(inizio, registro), "le verifiche")
    tabella, testo = schermata("frmVerifiche", tabella.name)
    if "ADA" not in testo or "Esatte al 1° tentativo" not in testo:
        errore("frmVerifiche: la riga dell'alunna non si legge")
    premi(tabella, "CHIUDI")
    aspetta(lambda: altra_finestra(inizio, registro) is None, "la chiusura delle verifiche")
    premi(registro, "CHIUDI")
    aspetta(lambda: altra_finestra(inizio) is None, "la chiusura del registro")


def altra_finestra(*note):
    app = applicazione()
    if app is None:
        return None
    for f in figli(app):
        if f.getRoleName() == "frame" and stato(f, pyatspi.STATE_SHOWING) \
                and all(f.name != n.name for n in note):
            return f
    return None


def chiudi_modale(f):
    for nome in ("Esci", "ESCI", "OK", "Ok", "Chiudi", "CHIUDI", "Torna", "TORNA"):
        o = trova(f, nome)
        if o is not None:
            premi(f, nome)
            aspetta(lambda: not stato(f, pyatspi.STATE_SHOWING), "la chiusura di '%s'" % f.name)
            return
    nomi = [o.name for o in tutti(f) if o.getRoleName() in ("push button", "radio button")]
    raise RuntimeError("'%s': nessun pulsante per chiudere tra %s" % (f.name, nomi))


if __name__ == "__main__":
    main()
