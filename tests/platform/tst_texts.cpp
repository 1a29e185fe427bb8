#include "platform/Texts.h"

#include <QLocale>
#include <QTest>

class TestTexts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The conversions must not follow the system locale.
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void doubleUsesItalianConventions_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("0,47") << 47 / 100.0 << "0,47";
        QTest::newRow("4,07") << 407 / 100.0 << "4,07";
        QTest::newRow("40,7") << 407 / 10.0 << "40,7";
        QTest::newRow("0,007") << 7 / 1000.0 << "0,007";
        QTest::newRow("0,047") << 47 / 1000.0 << "0,047";
        QTest::newRow("0,407") << 407 / 1000.0 << "0,407";
        QTest::newRow("9,999") << 9999 / 1000.0 << "9,999";
        QTest::newRow("999,9") << 9999 / 10.0 << "999,9";
        QTest::newRow("whole") << 4700.0 << "4700";
        QTest::newRow("no trailing zeros") << 4.5000 << "4,5";
        QTest::newRow("zero") << 0.0 << "0";
        QTest::newRow("negative") << -0.25 << "-0,25";
        QTest::newRow("15 significant digits") << 1.0 / 3.0 << "0,333333333333333";
        QTest::newRow("small") << 0.00001 << "0,00001";
        QTest::newRow("large whole") << 123456789012345.0 << "123456789012345";
        QTest::newRow("beyond 15 digits") << 1e20 << "1E+20";
    }
    void doubleUsesItalianConventions()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(Texts::fromDouble(value), text);
    }

    void groupingPattern_data()
    {
        QTest::addColumn<qlonglong>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("4700") << 4700LL << "4.700";
        QTest::newRow("1234567") << 1234567LL << "1.234.567";
        QTest::newRow("999") << 999LL << "999";
        QTest::newRow("1000") << 1000LL << "1.000";
        QTest::newRow("negative") << -1234567LL << "-1.234.567";
        QTest::newRow("negative small") << -47LL << "-47";
        QTest::newRow("zero shows no digit") << 0LL << "";
        QTest::newRow("32-bit max") << 2147483647LL << "2.147.483.647";
    }
    void groupingPattern()
    {
        QFETCH(qlonglong, value);
        QFETCH(QString, text);
        QCOMPARE(Texts::grouped(value), text);
    }

    void printFormattingOfIntegers_data()
    {
        QTest::addColumn<qlonglong>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("4") << 4LL << " 4";
        QTest::newRow("0") << 0LL << " 0";
        QTest::newRow("12") << 12LL << " 12";
        QTest::newRow("-4") << -4LL << "-4";
        QTest::newRow("-32768") << -32768LL << "-32768";
    }
    void printFormattingOfIntegers()
    {
        QFETCH(qlonglong, value);
        QFETCH(QString, text);
        QCOMPARE(Texts::printed(value), text);
    }

    void plainIntegerHasNoBlanks()
    {
        QCOMPARE(Texts::fromInt(17), QStringLiteral("17"));
        QCOMPARE(Texts::fromInt(-3), QStringLiteral("-3"));
    }

    void trimRemovesBlanksOnly_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("trimmed");
        QTest::addColumn<QString>("rtrimmed");
        QTest::newRow("both ends") << "  4 uk  "
                                   << "4 uk"
                                   << "  4 uk";
        QTest::newRow("inner kept") << " 4  h "
                                    << "4  h"
                                    << " 4  h";
        QTest::newRow("tabs kept") << "\t4 \t"
                                   << "\t4 \t"
                                   << "\t4 \t";
        QTest::newRow("only blanks") << "     "
                                     << ""
                                     << "";
        QTest::newRow("empty") << ""
                               << ""
                               << "";
    }
    void trimRemovesBlanksOnly()
    {
        QFETCH(QString, text);
        QFETCH(QString, trimmed);
        QFETCH(QString, rtrimmed);
        QCOMPARE(Texts::trim(text), trimmed);
        QCOMPARE(Texts::rtrim(text), rtrimmed);
    }

    void blanksOfNonPositiveCountAreEmpty()
    {
        QCOMPARE(Texts::blanks(3), QStringLiteral("   "));
        QCOMPARE(Texts::blanks(0), QString());
        QCOMPARE(Texts::blanks(-2), QString());
    }
};

QTEST_GUILESS_MAIN(TestTexts)
#include "tst_texts.moc"
