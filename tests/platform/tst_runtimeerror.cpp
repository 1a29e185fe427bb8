#include "platform/Int16.h"
#include "platform/Suppressed.h"
#include "support/TestDoubles.h"

#include <QTest>

class TestRuntimeError : public QObject
{
    Q_OBJECT

private slots:
    void errorsCarryNumberAndItalianDescription_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("description");
        QTest::newRow("overflow") << int(RuntimeError::Overflow) << "Overflow";
        QTest::newRow("subscript")
            << int(RuntimeError::SubscriptOutOfRange) << "Indice non incluso nell'intervallo";
        QTest::newRow("type mismatch")
            << int(RuntimeError::TypeMismatch) << "Tipo non corrispondente";
        QTest::newRow("invalid call") << int(RuntimeError::InvalidProcedureCall)
                                      << "Chiamata di routine o argomento non validi";
        QTest::newRow("file not found")
            << int(RuntimeError::FileNotFound) << "Impossibile trovare il file";
        QTest::newRow("permission")
            << int(RuntimeError::PermissionDenied) << "Autorizzazione negata";
        QTest::newRow("printer") << int(RuntimeError::PrinterError) << "Errore della stampante";
    }
    void errorsCarryNumberAndItalianDescription()
    {
        QFETCH(int, code);
        QFETCH(QString, description);
        const RuntimeError e(static_cast<RuntimeError::Code>(code));
        QCOMPARE(e.number(), code);
        QCOMPARE(e.description(), description);
        QVERIFY(e.message().contains(QString::number(code)));
        QVERIFY(e.message().contains(description));
    }

    void suppressedStatementsSkipOnlyTheFailingOne()
    {
        QStringList ran;
        const int failed = runSuppressed({
            [&] { ran << "a"; },
            [&] {
                Int16 n = 32767;
                n += 1;
                ran << "never";
            },
            [&] { ran << "c"; },
            [&] { throw RuntimeError(RuntimeError::DivisionByZero); },
            [&] { ran << "e"; },
        });
        QCOMPARE(failed, 2);
        QCOMPARE(ran, QStringList({"a", "c", "e"}));
    }

    void handlerErrorsGoToTheGeneralReport()
    {
        TestContext t;
        bool after = false;
        t->runHandler([&] {
            Int16 n = 32767;
            n += 1;
            after = true;
        });
        QVERIFY(!after);
        QCOMPARE(t.errors->errors, QList<RuntimeError::Code>{RuntimeError::Overflow});
        t->runHandler([] {});
        QCOMPARE(t.errors->errors.size(), 1);
    }

    void messageBoxesAreAServiceWithTheDefaultTitle()
    {
        TestContext t;
        t->messageBoxes().show(QStringLiteral("Numero troppo grande!"), MessageBoxes::OkOnly,
                               MessageBoxes::Critical, QStringLiteral("Errore di overflow"));
        QCOMPARE(t.boxes->boxes.size(), 1);
        QCOMPARE(t.boxes->boxes[0].title, QStringLiteral("Errore di overflow"));
        QCOMPARE(MessageBoxes::defaultTitle(), QStringLiteral("Quadrivo"));
    }
};

QTEST_GUILESS_MAIN(TestRuntimeError)
#include "tst_runtimeerror.moc"
