#include "core/AppContext.h"
#include "platform/Fonts.h"
#include "report/frmNome.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QTest>

using namespace ScreenTest;

class TestFrmNome : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    frmNome *f = nullptr;

    CommandButton &tasto(const char *lettera)
    {
        for (int i = 0; i < frmNome::Cancella; ++i)
            if (QString::fromLatin1(frmNome::Lettere[i]) == QString::fromLatin1(lettera))
                return f->get<CommandButton>("Command1", i);
        return f->get<CommandButton>("Command1", frmNome::Cancella);
    }
    QString nome() { return f->get<Label>("lblNome").Caption(); }
    OptionButton &avanti() { return f->get<OptionButton>("Option4"); }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        f = &(*t)->form<frmNome>();
        QVERIFY(showActive(*f));
        avanti().SetFocus();
    }

    void cleanup()
    {
        t.reset();
        settle();
    }

    void theAlphabetIsInItsIndexOrder()
    {
        const QString atteso = QStringLiteral("ABCDEFGHILMNOPQRSTUVZJKXYW,.");
        QString trovato;
        for (int i = 0; i < frmNome::Cancella; ++i)
            trovato += f->get<CommandButton>("Command1", i).Caption();
        QCOMPARE(trovato, atteso);
        QCOMPARE(f->get<CommandButton>("Command1", frmNome::Cancella).Caption(),
                 QStringLiteral("CANCELLA"));
        QCOMPARE(nome(), QStringLiteral("?"));
        QCOMPARE(avanti().Caption(), QStringLiteral("AVANTI"));
    }

    void avantiHasTheFocusAtOpenAndTypingWorksAtOnce()
    {
        TestContext altro;
        auto &nuovo = altro->form<frmNome>();
        QVERIFY(showActive(nuovo));
        QCOMPARE(focusedControl(nuovo), &nuovo.get<OptionButton>("Option4"));
        key(Qt::Key_B);
        QCOMPARE(nuovo.get<Label>("lblNome").Caption(), QStringLiteral("B"));
    }

    void clickingMARIOWritesTheName()
    {
        for (const char *l : {"M", "A", "R", "I", "O"})
            click(tasto(l));
        QCOMPARE(nome(), QStringLiteral("MARIO"));
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("MARIO"));
        // After each click the keyboard goes back to the big button.
        QCOMPARE(focusedControl(*f), &avanti());
    }

    void typedLettersAreUpperCaseWhateverTheShift()
    {
        key(Qt::Key_L);
        key(Qt::Key_U, Qt::ShiftModifier);
        key(Qt::Key_C);
        key(Qt::Key_A);
        QCOMPARE(nome(), QStringLiteral("LUCA"));
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("LUCA"));
    }

    void aHeldKeyTypesOnce()
    {
        holdKey(Qt::Key_B, 6);
        QCOMPARE(nome(), QStringLiteral("B"));
        key(Qt::Key_B);
        QCOMPARE(nome(), QStringLiteral("BB"));
    }

    void otherKeysAreIgnored()
    {
        key(Qt::Key_A);
        key(Qt::Key_3);
        key(Qt::Key_0);
        key(Qt::Key_Space);
        key(Qt::Key_1);
        key(Qt::Key_2);
        keypad(Qt::Key_5);
        QCOMPARE(nome(), QStringLiteral("A"));
        QVERIFY(t->errors->errors.isEmpty());
    }

    void backspaceToQuestionMarkKeepsTheLastName()
    {
        key(Qt::Key_E);
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("E"));
        key(Qt::Key_Backspace);
        QCOMPARE(nome(), QStringLiteral("?"));
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("E"));
        key(Qt::Key_Backspace);
        QCOMPARE(nome(), QStringLiteral("?"));
        QVERIFY(t->errors->errors.isEmpty());
    }

    void enterWithTheQuestionMarkCopiesIt()
    {
        key(Qt::Key_Return);
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("?"));
        key(Qt::Key_N);
        key(Qt::Key_Return);
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("N"));
    }

    void cancellaEmptiesTheNameAndBackspaceThenFails()
    {
        key(Qt::Key_O);
        click(tasto("CANCELLA"));
        QCOMPARE(nome(), QString());
        QCOMPARE((*t)->stato.NomeAlunno, QString());
        avanti().SetFocus();
        key(Qt::Key_Backspace);
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::InvalidProcedureCall});
    }

    void commaAndFullStopAreWrittenToo()
    {
        click(tasto("A"));
        click(tasto(","));
        click(tasto("."));
        QCOMPARE(nome(), QStringLiteral("A,."));
    }

    void avantiClosesTheScreenOnMouseDown()
    {
        key(Qt::Key_Z);
        mouseDown(avanti());
        QVERIFY(!(*t)->screens().isLoaded<frmNome>());
        QCOMPARE((*t)->stato.NomeAlunno, QStringLiteral("Z"));
    }

    void avantiSpringsBackAndTakesTheFocusColour()
    {
        QCOMPARE(avanti().BackColor(), QColor(255, 192, 128));
        key(Qt::Key_A);
        QVERIFY(!avanti().Value());
    }

    void theScreenScales()
    {
        const double sinistra = tasto("B").Left();
        f->setInnerSize(f->ScaleWidth() * 2, f->ScaleHeight() * 2);
        QVERIFY(qAbs(tasto("B").Left() - 2 * sinistra) < 0.01);
    }
};

QTEST_MAIN(TestFrmNome)
#include "tst_frmnome.moc"
