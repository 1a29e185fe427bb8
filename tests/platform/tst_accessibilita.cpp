#include "certificate/FrmAttestato.h"
#include "core/AppContext.h"
#include "drill/frmOperativo.h"
#include "platform/Fonts.h"
#include "platform/controls/Label.h"
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
        !button->actionInterface()->actionNames().contains(QAccessibleActionInterface::pressAction()))
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

    void everyControlOfEveryScreenHasAName()
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
        int controls = 0;
        for (Form *screen : t->screens().loaded()) {
            for (Control *c : screen->Controls()) {
                if (!c->widget())
                    continue; // timers and menu entries have no window
                ++controls;
                QAccessibleInterface *a = of(c->widget());
                QVERIFY2(a, qPrintable(screen->formName() + " " + c->objectName()));
                QVERIFY2(!c->widget()->accessibleName().trimmed().isEmpty(),
                         qPrintable(screen->formName() + " " + c->objectName()));
                // On Linux Qt names a combo box by its current item.
                if (c->kind() != ControlKind::ComboBox)
                    QCOMPARE(a->text(QAccessible::Name), c->widget()->accessibleName());
            }
        }
        QVERIFY(controls > 200);
        t->screens().unloadAll();
    }

    void picturesAndLinesAreDescribed_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("role");
        QTest::addColumn<QString>("name");
        QTest::newRow("face of the evaluation panel")
            << "Image1" << -1 << int(QAccessible::Graphic) << "Immagine Image1";
        QTest::newRow("cross over a wrong answer")
            << "Line1" << -1 << int(QAccessible::Separator) << "Linea Line1";
        QTest::newRow("keypad digit") << "Command1" << 7 << int(QAccessible::PushButton) << "7";
        QTest::newRow("blanks of a caption trimmed")
            << "Command1" << 15 << int(QAccessible::PushButton) << "Verifica";
        QTest::newRow("symbol key with no symbol yet")
            << "Command1" << 13 << int(QAccessible::PushButton) << "Pulsante Command1(13)";
        QTest::newRow("hint of a value label")
            << "LblTempoTotale" << -1 << int(QAccessible::StaticText)
            << "Secondi impiegati per ogni esercizio";
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

    void aLabelIsReadAsItsCaptionIs()
    {
        TestContext t;
        frmOperativo &f = t->form<frmOperativo>();
        Label &l = f.get<Label>("LblEsito1");
        l.setCaption(QStringLiteral("ESATTO"));
        QCOMPARE(of(l.widget())->text(QAccessible::Name), QStringLiteral("ESATTO"));
        l.setCaption(QString());
        QCOMPARE(of(l.widget())->text(QAccessible::Name), QStringLiteral("Etichetta LblEsito1"));
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
        // The order button now reads the family's symbols ("u   d   c   m").
        const Control &order = inizio.get<Control>("Option2", 0);
        const QString ordine = of(order.widget())->text(QAccessible::Name);
        QCOMPARE(ordine, order.Caption().trimmed());
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
        // The later frames wait for the earlier choices.
        QVERIFY(press(inizio, QStringLiteral("Vai")));
        QVERIFY(!t->screens().isLoaded<frmOperativo>());
        t->screens().unloadAll();
    }
};

QTEST_MAIN(TestAccessibilita)
#include "tst_accessibilita.moc"
