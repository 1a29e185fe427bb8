#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Accessibility.h"
#include "platform/Fonts.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Menu.h"
#include "report/FrmStampaEsercizio2.h"
#include "report/frmNome.h"
#include "services/frmSceltaStampante.h"
#include "sheets/FrmStampaSchede.h"
#include "start/FrmInizio.h"
#include "start/FrmOpzioni.h"
#include "start/frmAutore.h"
#include "start/frmIstruzioni.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QAccessible>
#include <QAction>
#include <QMenu>
#include <QTest>

using namespace ScreenTest;

namespace {

QAccessibleInterface *of(QWidget *w)
{
    return QAccessible::queryAccessibleInterface(w);
}

// The first shown element under `root` that an assistive tool calls `name`.
QAccessibleInterface *find(QAccessibleInterface *root, const QString &name)
{
    if (!root || root->state().invisible)
        return nullptr;
    if (root->text(QAccessible::Name) == name)
        return root;
    for (int i = 0; i < root->childCount(); ++i)
        if (QAccessibleInterface *hit = find(root->child(i), name))
            return hit;
    return nullptr;
}

// Presses what the tool finds under that name on the screen, as a screen
// reader user would.
bool press(Form &screen, const QString &name)
{
    QAccessibleInterface *button = find(of(&screen), name);
    if (!button || !button->actionInterface() ||
        !button->actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction()))
        return false;
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    return true;
}

template <class T> void load(TestContext &t)
{
    t->form<T>();
}

} // namespace

class TestAccessibilita : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }
    void cleanup() { settle(); }

    void everyControlIsReadAsItIsOnScreen()
    {
        TestContext t;
        load<FrmInizio>(t);
        load<FrmOpzioni>(t);
        load<frmAutore>(t);
        load<frmIstruzioni>(t);
        load<frmOperativo>(t);
        load<FrmStampaSchede>(t);
        load<FrmStampaEsercizio2>(t);
        load<frmNome>(t);
        load<FrmAttestato>(t);
        load<frmSceltaStampante>(t);
        int controls = 0, decorations = 0;
        for (Form *screen : t->screens().loaded()) {
            QAccessibleInterface *window = of(screen);
            QCOMPARE(window->role(), QAccessible::Window);
            QCOMPARE(window->text(QAccessible::Name), screen->windowTitle());
            for (Control *c : screen->Controls()) {
                if (!c->widget())
                    continue; // timers and menu entries have no window
                ++controls;
                const QString where = screen->formName() + " " + c->objectName();
                QAccessibleInterface *a = of(c->widget());
                QVERIFY2(a, qPrintable(where));
                const QString name = a->text(QAccessible::Name);
                // On Linux Qt names a combo box by its current item.
                if (c->kind() != ControlKind::ComboBox)
                    QCOMPARE(name, c->widget()->accessibleName());
                // Never the program's own names for its controls.
                if (!c->Caption().contains(c->name())) // "BEEP" is a caption too
                    QVERIFY2(!name.contains(c->name()), qPrintable(where + ": " + name));
                if (Accessibility::isDecorative(c->widget())) {
                    ++decorations;
                    QCOMPARE(a->role(), QAccessible::Client);
                    QVERIFY2(name.isEmpty(), qPrintable(where));
                    QVERIFY2(!a->state().focusable, qPrintable(where));
                    QCOMPARE(c->widget()->focusPolicy(), Qt::NoFocus);
                    continue;
                }
                // Whatever takes the focus or can be pressed says what it is.
                if (a->state().focusable ||
                    (a->actionInterface() && a->actionInterface()->actionNames().contains(
                                                 QAccessibleActionInterface::pressAction())))
                    QVERIFY2(!name.trimmed().isEmpty(), qPrintable(where));
                // A label without a name shows nothing.
                if (c->kind() == ControlKind::Label && name.isEmpty())
                    QVERIFY2(c->Caption().trimmed().isEmpty(), qPrintable(where));
            }
        }
        QVERIFY(controls > 200);
        QCOMPARE(decorations, 2 + 20 + 2); // curtain, faces, cross
        t->screens().unloadAll();
    }

    void picturesAndLinesAreDescribed_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::newRow("face of the evaluation panel: decoration")
            << "Image1" << -1 << int(QAccessible::Client) << "";
        QTest::newRow("cross over a wrong answer: decoration")
            << "Line1" << -1 << int(QAccessible::Client) << "";
        QTest::newRow("keypad digit") << "Command1" << 7 << int(QAccessible::PushButton) << "7";
        QTest::newRow("blanks of a caption trimmed")
            << "Command1" << 15 << int(QAccessible::PushButton) << "Verifica";
        QTest::newRow("symbol key with no symbol yet")
            << "Command1" << 13 << int(QAccessible::PushButton) << "tasto vuoto";
        QTest::newRow("value box by its caption, not its hint")
            << "LblTempoTotale" << -1 << int(QAccessible::StaticText) << "Tempo totale";
        QTest::newRow("value box by its caption (trailing blank)")
            << "lblRisEsatte" << -1 << int(QAccessible::StaticText) << "Risposte esatte";
        QTest::newRow("panel by its line of text")
            << "fraAiuto" << -1 << int(QAccessible::Grouping) << "Ti aiuto ?";
        QTest::newRow("frame by its caption")
            << "fraValutazione" << -1 << int(QAccessible::Grouping) << "VALUTAZIONE";
        QTest::newRow("frame with nothing to say")
            << "fraNumero" << -1 << int(QAccessible::Grouping) << "";
    }

    void picturesAndLinesAreDescribed()
    {
        QFETCH(QString, control);
        QFETCH(int, index);
        QFETCH(int, role);
        QFETCH(QString, name);
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        Control *c = f.findControl(control, index);
        QVERIFY(c);
        QCOMPARE(int(of(c->widget())->role()), role);
        QCOMPARE(of(c->widget())->text(QAccessible::Name), name);
        t->screens().unloadAll();
    }

    void aValueBoxIsLabelledByItsCaption()
    {
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        Label &valore = f.get<Label>("LblTempoParziale");
        Label &didascalia = f.get<Label>("Label10");
        QAccessibleInterface *v = of(valore.widget());
        QAccessibleInterface *d = of(didascalia.widget());
        const auto etichette = v->relations(QAccessible::Label);
        QCOMPARE(etichette.size(), 1);
        QCOMPARE(etichette.first().first, d);
        const auto etichettati = d->relations(QAccessible::Labelled);
        QCOMPARE(etichettati.size(), 1);
        QCOMPARE(etichettati.first().first, v);
        // The hint stays what it was, as the description.
        QCOMPARE(v->text(QAccessible::Description),
                 QStringLiteral("Secondi impiegati per ogni risposta"));
        valore.setCaption(QStringLiteral("12"));
        QCOMPARE(v->text(QAccessible::Name), QStringLiteral("Tempo parziale 12"));
        didascalia.setCaption(QStringLiteral("Tempo"));
        QCOMPARE(v->text(QAccessible::Name), QStringLiteral("Tempo 12"));
        t->screens().unloadAll();
    }

    void aTitledFrameIsLabelledByItsTitle()
    {
        TestContext t;
        FrmInizio &f = t->form<FrmInizio>();
        QAccessibleInterface *frame = of(f.get<Control>("Frame1").widget());
        QAccessibleInterface *titolo = of(f.get<Label>("Label4", 2).widget());
        QCOMPARE(frame->text(QAccessible::Name), QStringLiteral("Scomponi i ..."));
        QCOMPARE(frame->relations(QAccessible::Label).value(0).first, titolo);
        QCOMPARE(titolo->relations(QAccessible::Labelled).value(0).first, frame);
        t->screens().unloadAll();
    }

    void aLetterSpacedCaptionIsReadAsAWord()
    {
        TestContext t;
        FrmStampaEsercizio2 &f = t->form<FrmStampaEsercizio2>();
        QCOMPARE(of(f.get<Control>("Command8").widget())->text(QAccessible::Name),
                 QStringLiteral("ESCI"));
        QCOMPARE(of(f.get<Control>("Label5").widget())->text(QAccessible::Name),
                 QStringLiteral("ESERCIZI ESEGUITI"));
        QCOMPARE(of(f.get<Control>("txtNome").widget())->text(QAccessible::Name),
                 QStringLiteral("IMMETTI IL TUO NOME"));
        t->screens().unloadAll();
    }

    void theCurtainIsNeitherReadNorFocused()
    {
        TestContext t;
        FrmInizio &f = t->form<FrmInizio>();
        QVERIFY(showActive(f));
        for (const char *tenda : {"Picture1", "Picture2"}) {
            QWidget *w = f.get<Control>(tenda).widget();
            QCOMPARE(w->focusPolicy(), Qt::NoFocus);
            QCOMPARE(of(w)->role(), QAccessible::Client);
            QVERIFY(!of(w)->state().focusable);
            QVERIFY(of(w)->text(QAccessible::Name).isEmpty());
        }
        // Tab goes round the usable buttons only.
        for (int i = 0; i < 8; ++i) {
            key(Qt::Key_Tab);
            QVERIFY(focused());
            QVERIFY2(!QString(focused()->objectName()).startsWith(QLatin1String("Picture")),
                     qPrintable(focused()->objectName()));
        }
        t->screens().unloadAll();
    }

    // Only the panel in front, and enabled, shows; what the others hold does
    // not either.
    void onlyThePanelInFrontShows()
    {
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        QVERIFY(showActive(f));
        auto shows = [&](const char *name, int index = -1) {
            return !of(f.findControl(QLatin1String(name), index)->widget())->state().invisible;
        };
        QVERIFY(shows("FraTastierino"));
        QVERIFY(shows("Command1", 0));
        for (const char *panel : {"fraAiuto", "fraIntervento", "fraAvviso"})
            QVERIFY2(!shows(panel), panel);
        QVERIFY(!shows("LblAiuto"));
        QVERIFY(!shows("Command3", 1));
        QVERIFY(!shows("Label7"));
        QVERIFY(!shows("optOK"));
        QVERIFY(shows("fraValutazione"));

        // Help offered: the keypad is disabled and covered.
        Frame &aiuto = f.get<Frame>("fraAiuto");
        f.get<Frame>("FraTastierino").setEnabled(false);
        aiuto.setEnabled(true);
        aiuto.ZOrder(0);
        QVERIFY(shows("fraAiuto"));
        QVERIFY(shows("LblAiuto"));
        QVERIFY(shows("Command3", 2));
        QVERIFY(!shows("FraTastierino"));
        QVERIFY(!shows("Command1", 5));

        // Enabled but still covered.
        f.get<Frame>("fraAvviso").setEnabled(true);
        QVERIFY(!shows("fraAvviso"));
        t->screens().unloadAll();
    }

    void aLabelIsReadAsItsCaptionIs()
    {
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        Label &l = f.get<Label>("LblEsito1");
        l.setCaption(QStringLiteral("ESATTO"));
        QCOMPARE(of(l.widget())->text(QAccessible::Name), QStringLiteral("ESATTO"));
        l.setCaption(QString());
        QCOMPARE(of(l.widget())->text(QAccessible::Name), QString()); // nothing on screen
        t->screens().unloadAll();
    }

    // A pupil with a screen reader: chooses on the start screen, presses
    // "Vai", hears the question and types the answer on the keypad.
    void aWholeExerciseThroughTheAccessibilityTree()
    {
        TestContext t;
        frmOperativo::collegaTipoEsercizio(*t);
        FrmInizio &inizio = t->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        QVERIFY(press(inizio, QStringLiteral("numeri interi")));
        // The order button now reads the family's symbols ("u d c m").
        const Control &order = inizio.get<Control>("Option2", 0);
        const QString ordine = of(order.widget())->text(QAccessible::Name);
        QCOMPARE(ordine, order.Caption().simplified());
        QVERIFY(ordine != QStringLiteral("sottomultipli"));
        QVERIFY(press(inizio, ordine));
        QVERIFY(press(inizio, QStringLiteral("Vai")));

        auto *drill = t->screens().find<frmOperativo>();
        QVERIFY(drill);
        QVERIFY(QTest::qWaitForWindowExposed(drill));
        const StatoCondiviso &s = t->stato;
        QCOMPARE(s.NumeroEsercizio.value(), 1);

        QAccessibleInterface *domanda = of(drill->get<Label>("lblNumero").widget());
        QVERIFY(domanda->text(QAccessible::Name).contains(s.Numero.trimmed()));
        QVERIFY(domanda->text(QAccessible::Name).contains(s.SimboloRichiesto.trimmed()));

        // "4 uk  7  h  3 da  ": a key for every digit and every symbol.
        const QStringList tasti = s.Risposta.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        QVERIFY(tasti.size() >= 4);
        for (const QString &tasto : tasti)
            QVERIFY2(press(*drill, tasto), qPrintable(tasto));
        QCOMPARE(drill->get<Label>("LblRisultato").Caption().trimmed(), s.Risposta.trimmed());
        QVERIFY(press(*drill, QStringLiteral("Verifica")));
        QCOMPARE(s.RisposteEsatte.value(), 1);
        QCOMPARE(t.errors->errors.size(), 0);
        t->screens().unloadAll();
    }

    void aDisabledButtonCannotBePressed()
    {
        TestContext t;
        frmOperativo::collegaTipoEsercizio(*t);
        FrmInizio &inizio = t->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        // The later frames wait for the earlier choices: their panel does
        // not show, so a screen reader does not offer "Vai"...
        QVERIFY(!press(inizio, QStringLiteral("Vai")));
        QAccessibleInterface *vai = of(inizio.get<Control>("Option3", 0).widget());
        QVERIFY(vai->state().invisible);
        QVERIFY(vai->state().disabled);
        // ...and pressing it all the same does nothing.
        vai->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(!t->screens().isLoaded<frmOperativo>());
        t->screens().unloadAll();
    }

    // A menu entry with a check mark reads as a check box with its state,
    // on or off, and toggles as if chosen; a plain entry stays Qt's own.
    void aCheckableMenuEntryIsACheckBoxWithItsState()
    {
        TestContext t;
        FrmInizio &inizio = t->form<FrmInizio>();
        QVERIFY(showActive(inizio));
        Menu &numeri = inizio.get<Menu>("mnuMisura", 0);
        Menu &lunghezze = inizio.get<Menu>("mnuMisura", 1);
        QMenu *tendina = inizio.get<Menu>("mnuMisure").action()->menu();
        QAccessibleInterface *menu = QAccessible::queryAccessibleInterface(tendina);
        QVERIFY(menu);
        QAccessibleInterface *primo = menu->child(0);
        QAccessibleInterface *secondo = menu->child(1);
        QVERIFY(primo && secondo);
        QCOMPARE(primo->object(), numeri.action());
        QCOMPARE(primo->role(), QAccessible::CheckBox);
        QCOMPARE(primo->text(QAccessible::Name), numeri.Caption());
        QCOMPARE(primo->parent()->object(), tendina);
        QVERIFY(primo->state().checkable && primo->state().checked);
        QVERIFY(secondo->state().checkable && !secondo->state().checked);
        secondo->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QVERIFY(lunghezze.Checked());
        QVERIFY(secondo->state().checked && !primo->state().checked);
        QCOMPARE(t->stato.FamigliaSimboli.value(), 6);
        // "Verifica con codice" is a command, not a switch.
        QMenu *verifica = inizio.get<Menu>("mnuVerifica").action()->menu();
        QCOMPARE(QAccessible::queryAccessibleInterface(verifica)->child(0)->role(),
                 QAccessible::MenuItem);
        t->screens().unloadAll();
    }
};

QTEST_MAIN(TestAccessibilita)
#include "tst_accessibilita.moc"
