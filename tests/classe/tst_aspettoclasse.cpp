#include "classe/FrmCopieClasse.h"
#include "classe/FrmRifaiCodice.h"
#include "classe/RigheClasse.h"
#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "sheets/SchedeTest.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QDir>
#include <QTest>

using namespace ScreenTest;

// The two windows of class sets drawn at their design size and at twice it:
// every control inside the window, and PNGs for a person to look at when
// QUADRIVO_IMMAGINI names a folder.
class TestAspettoClasse : public QObject
{
    Q_OBJECT

    static void salva(QWidget &w, const QString &nome)
    {
        const QString cartella = qEnvironmentVariable("QUADRIVO_IMMAGINI");
        if (!cartella.isEmpty())
            w.grab().save(QDir(cartella).filePath(nome));
    }

    static void dentro(const Form &f)
    {
        for (const Control *c : f.Controls())
            if (c->widget() && c->Visible()) {
                const QRect r = c->widget()->geometry();
                const QWidget *genitore = c->widget()->parentWidget();
                QVERIFY2(genitore->rect().contains(r), qPrintable(c->objectName()));
            }
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void theWindowsKeepTheirControlsInsideAtAnySize()
    {
        TestContext t;
        SchedeTest::statoDiPartenza(t->stato, 3);
        auto &copie = t->form<FrmCopieClasse>();
        QVERIFY(showActive(copie));
        dentro(copie);
        salva(copie, QStringLiteral("copie_classe.png"));
        copie.setInnerSize(2 * copie.ScaleWidth(), 2 * copie.ScaleHeight());
        QApplication::processEvents();
        dentro(copie);
        salva(copie, QStringLiteral("copie_classe_x2.png"));

        auto &rifai = t->form<FrmRifaiCodice>();
        QVERIFY(showActive(rifai));
        QTest::keyClicks(focused(), RigheClasse().Costruisci({3, 2, 30, 5}).codice);
        key(Qt::Key_Return);
        rifai.get<Control>("cmdDocenti").SetFocus();
        key(Qt::Key_Space);
        dentro(rifai);
        salva(rifai, QStringLiteral("rifai_codice.png"));
        rifai.setInnerSize(2 * rifai.ScaleWidth(), 2 * rifai.ScaleHeight());
        QApplication::processEvents();
        dentro(rifai);
        salva(rifai, QStringLiteral("rifai_codice_x2.png"));
        QVERIFY(t.errors->errors.isEmpty());
    }
};

QTEST_MAIN(TestAspettoClasse)
#include "tst_aspettoclasse.moc"
