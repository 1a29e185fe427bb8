#include "core/Algoritmi.h"
#include "core/FamiglieSimboli.h"
#include "support/TestDoubles.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

namespace {

// The type table as the teachers' guide writes it: number pattern, question
// symbol and answer, digits w x y z.
struct Riga
{
    int tipo;
    const char *numero;
    const char *simbolo;
    const char *risposta;
};

const Riga Tabella[] = {
    {1, "wx", "S2", "w S1 x S2"},
    {2, "wx", "S3", "w S2 x S3"},
    {3, "xy", "S3", "x S2 y S3"},
    {4, "wxy", "S4", "w S2 x S3 y S4"},
    {5, "xy0", "S4", "x S2 y S3 0 S4"},
    {6, "x0z", "S4", "x S2 0 S3 z S4"},
    {7, "wx0", "S3", "w S1 x S2 0 S3"},
    {8, "wx00", "S4", "w S1 x S2 0 S3 0 S4"},
    {9, "w0y", "S3", "w S1 0 S2 y S3"},
    {10, "w0y0", "S4", "w S1 0 S2 y S3 0 S4"},
    {11, "w00z", "S4", "w S1 0 S2 0 S3 z S4"},
    {12, "wxy", "S3", "w S1 x S2 y S3"},
    {13, "wxy0", "S4", "w S1 x S2 y S3 0 S4"},
    {14, "w0yz", "S4", "w S1 0 S2 y S3 z S4"},
    {15, "wxyz", "S4", "w S1 x S2 y S3 z S4"},
    {16, "wx0z", "S4", "w S1 x S2 0 S3 z S4"},
    {17, "x,0z", "S2", "x S2 0 S3 z S4"},
    {18, "x0,z", "S3", "x S2 0 S3 z S4"},
    {19, "x,y", "S2", "x S2 y S3"},
    {20, "x,yz", "S2", "x S2 y S3 z S4"},
    {21, "xy,z", "S3", "x S2 y S3 z S4"},
    {22, "0,yz", "S2", "0 S2 y S3 z S4"},
    {23, "y,z", "S3", "y S3 z S4"},
    {24, "w,0y", "S1", "w S1 0 S2 y S3"},
    {25, "w0,y", "S2", "w S1 0 S2 y S3"},
    {26, "w,x", "S1", "w S1 x S2"},
    {27, "w,00z", "S1", "w S1 0 S2 0 S3 z S4"},
    {28, "w0,0z", "S2", "w S1 0 S2 0 S3 z S4"},
    {29, "w00,z", "S3", "w S1 0 S2 0 S3 z S4"},
    {30, "w,xy", "S1", "w S1 x S2 y S3"},
    {31, "wx,y", "S2", "w S1 x S2 y S3"},
    {32, "w,x0z", "S1", "w S1 x S2 0 S3 z S4"},
    {33, "wx,0z", "S2", "w S1 x S2 0 S3 z S4"},
    {34, "wx0,z", "S3", "w S1 x S2 0 S3 z S4"},
    {35, "w,0yz", "S1", "w S1 0 S2 y S3 z S4"},
    {36, "w0,yz", "S2", "w S1 0 S2 y S3 z S4"},
    {37, "w0y,z", "S3", "w S1 0 S2 y S3 z S4"},
    {38, "0,xy", "S1", "0 S1 x S2 y S3"},
    {39, "0,x0z", "S1", "0 S1 x S2 0 S3 z S4"},
    {40, "0,xyz", "S1", "0 S1 x S2 y S3 z S4"},
    {41, "0,0yz", "S1", "0 S1 0 S2 y S3 z S4"},
    {42, "w,xyz", "S1", "w S1 x S2 y S3 z S4"},
    {43, "wx,yz", "S2", "w S1 x S2 y S3 z S4"},
    {44, "wxy,z", "S3", "w S1 x S2 y S3 z S4"},
};

// A draw r with Int(r * k) = value exactly.
double drawFor(int value, int k)
{
    return (value + 0.5) / k;
}

QString digitsIn(const char *pattern, const QString &w, const QString &x, const QString &y,
                 const QString &z)
{
    QString out = QString::fromLatin1(pattern);
    out.replace('w', w).replace('x', x).replace('y', y).replace('z', z);
    return out;
}

} // namespace

class TestAlgoritmi : public QObject
{
    Q_OBJECT

private:
    // Pins the type (TipoNumeri 0 keeps it) and the four digits, then generates.
    void generaConCifre(TestContext &t, int tipo, int w, int x, int y, int z)
    {
        t->stato.TipoNumeri = 0;
        t->stato.TipoEsercizio = tipo;
        t.random->script(
            {drawFor(w - 1, 9), drawFor(x - 1, 9), drawFor(y - 1, 9), drawFor(z - 1, 9)});
        Algoritmi(*t).GeneraEsercizio();
    }

private slots:
    void everyTypeBuildsItsExercise_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QStringList>("simboli");
        QTest::addColumn<QString>("numero");
        QTest::addColumn<QString>("simbolo");
        QTest::addColumn<QString>("risposta");

        const QList<QStringList> famiglie = {
            {" uk  ", "  h  ", " da  ", "  u  "},
            {" u ", " d ", " c ", " m "},
        };
        for (const QStringList &simboli : famiglie) {
            for (const Riga &r : Tabella) {
                QString risposta;
                for (const QString &token : QString::fromLatin1(r.risposta).split(' ')) {
                    if (token.startsWith('S'))
                        risposta += simboli[token.mid(1).toInt() - 1];
                    else
                        risposta += digitsIn(token.toLatin1().constData(), "4", "7", "2", "5");
                }
                const QString simbolo = simboli[QString::fromLatin1(r.simbolo).mid(1).toInt() - 1];
                QTest::addRow("type %d, %s", r.tipo, qPrintable(simboli.join('|')))
                    << r.tipo << simboli << digitsIn(r.numero, "4", "7", "2", "5") << simbolo
                    << risposta;
            }
        }
    }
    void everyTypeBuildsItsExercise()
    {
        QFETCH(int, tipo);
        QFETCH(QStringList, simboli);
        QFETCH(QString, numero);
        QFETCH(QString, simbolo);
        QFETCH(QString, risposta);

        TestContext t;
        t->stato.Simbolo1 = simboli[0];
        t->stato.Simbolo2 = simboli[1];
        t->stato.Simbolo3 = simboli[2];
        t->stato.Simbolo4 = simboli[3];
        generaConCifre(t, tipo, 4, 7, 2, 5);

        QCOMPARE(t->stato.TipoEsercizio.value(), tipo);
        QCOMPARE(t->stato.Numero, numero);
        QCOMPARE(t->stato.SimboloRichiesto, simbolo);
        QCOMPARE(t->stato.Risposta, risposta);
    }

    void type8WithDigits4And7()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        generaConCifre(t, 8, 4, 7, 1, 1);
        QCOMPARE(t->stato.Numero, QStringLiteral("4700"));
        QCOMPARE(t->stato.SimboloRichiesto, QStringLiteral("  u  "));
        QCOMPARE(t->stato.Risposta,
                 QString("4" + QString(" uk  ") + "7" + "  h  " + "0" + " da  " + "0" + "  u  "));
    }

    void type1OnAThreeSymbolFamilyKeepsTheBlankSymbol()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 2);
        generaConCifre(t, 1, 4, 7, 1, 1);
        QCOMPARE(t->stato.Numero, QStringLiteral("47"));
        QCOMPARE(t->stato.Risposta, QString("4" + QString("     ") + "7" + "  h  "));
    }

    void decimalsBelowOneHaveALeadingZero_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::addColumn<QString>("numero");
        QTest::newRow("type 38") << 38 << "0,47";
        QTest::newRow("type 41") << 41 << "0,047";
        QTest::newRow("type 39") << 39 << "0,407";
    }
    void decimalsBelowOneHaveALeadingZero()
    {
        QFETCH(int, tipo);
        QFETCH(QString, numero);
        TestContext t;
        FamiglieSimboli::applica(t->stato, 1);
        // 38: 0,xy; 41: 0,0yz; 39: 0,x0z: digits chosen so each reads as written.
        if (tipo == 38)
            generaConCifre(t, tipo, 1, 4, 7, 1);
        else if (tipo == 41)
            generaConCifre(t, tipo, 1, 1, 4, 7);
        else
            generaConCifre(t, tipo, 1, 4, 1, 7);
        QCOMPARE(t->stato.Numero, numero);
    }

    void typeDrawCoversExactlyItsRange_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("famiglia");
        QTest::addColumn<QList<int>>("attesi");
        auto range = [](int from, int to) {
            QList<int> r;
            for (int i = from; i <= to; ++i)
                r << i;
            return r;
        };
        QTest::newRow("integers, 3 symbols") << 1 << 2 << range(1, 6);
        QTest::newRow("integers, 4 symbols") << 1 << 3 << range(7, 16);
        QTest::newRow("decimals, 3 symbols") << 2 << 2 << range(17, 22);
        QTest::newRow("decimals, 4 symbols") << 2 << 1 << range(23, 44);
        QTest::newRow("both, 3 symbols") << 3 << 2 << range(1, 6) + range(16, 21);
        QTest::newRow("both, 4 symbols") << 3 << 3 << range(7, 16) + range(23, 44);
    }
    void typeDrawCoversExactlyItsRange()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, famiglia);
        QFETCH(QList<int>, attesi);

        TestContext t;
        FamiglieSimboli::applica(t->stato, famiglia);
        t->stato.TipoNumeri = tipoNumeri;
        QMap<int, int> visti;
        for (int i = 0; i < 10000; ++i) {
            t.clock->advance(0.05);
            Algoritmi(*t).GeneraEsercizio();
            ++visti[t->stato.TipoEsercizio];
            QVERIFY(t->stato.Cifra1 >= 1 && t->stato.Cifra1 <= 9);
            QVERIFY(t->stato.Cifra2 >= 1 && t->stato.Cifra2 <= 9);
            QVERIFY(t->stato.Cifra3 >= 1 && t->stato.Cifra3 <= 9);
            QVERIFY(t->stato.Cifra4 >= 1 && t->stato.Cifra4 <= 9);
            QVERIFY(!t->stato.Numero.isEmpty());
        }
        QCOMPARE(visti.keys(), attesi);
        if (tipoNumeri == 3 && famiglia == 2)
            QVERIFY(!visti.contains(22));
    }

    void scriptedDrawsPickTheTypeAtTheEdgesOfEachRange_data()
    {
        QTest::addColumn<int>("tipoNumeri");
        QTest::addColumn<int>("cifre");
        QTest::addColumn<QList<double>>("draws");
        QTest::addColumn<int>("tipo");
        QTest::addColumn<int>("estratto");
        QTest::newRow("1/3 low") << 1 << 3 << QList<double>{0.0} << 1 << 0;
        QTest::newRow("1/3 high") << 1 << 3 << QList<double>{0.9999} << 6 << 0;
        QTest::newRow("1/4 low") << 1 << 4 << QList<double>{0.0} << 7 << 0;
        QTest::newRow("1/4 high") << 1 << 4 << QList<double>{0.9999} << 16 << 0;
        QTest::newRow("2/3 low") << 2 << 3 << QList<double>{0.0} << 17 << 0;
        QTest::newRow("2/3 high") << 2 << 3 << QList<double>{0.9999} << 22 << 0;
        QTest::newRow("2/4 low") << 2 << 4 << QList<double>{0.0} << 23 << 0;
        QTest::newRow("2/4 high") << 2 << 4 << QList<double>{0.9999} << 44 << 0;
        QTest::newRow("3/3 integer") << 3 << 3 << QList<double>{0.2, 0.9999} << 6 << 1;
        QTest::newRow("3/3 decimal low is 16") << 3 << 3 << QList<double>{0.7, 0.0} << 16 << 2;
        QTest::newRow("3/3 decimal high is 21") << 3 << 3 << QList<double>{0.7, 0.9999} << 21 << 2;
        QTest::newRow("3/4 integer") << 3 << 4 << QList<double>{0.4999, 0.0} << 7 << 1;
        QTest::newRow("3/4 decimal") << 3 << 4 << QList<double>{0.5, 0.9999} << 44 << 2;
    }
    void scriptedDrawsPickTheTypeAtTheEdgesOfEachRange()
    {
        QFETCH(int, tipoNumeri);
        QFETCH(int, cifre);
        QFETCH(QList<double>, draws);
        QFETCH(int, tipo);
        QFETCH(int, estratto);

        TestContext t;
        FamiglieSimboli::applica(t->stato, cifre == 3 ? 2 : 3);
        t->stato.TipoNumeri = tipoNumeri;
        for (double d : draws)
            t.random->script({d});
        t.random->script({0.0, 0.0, 0.0, 0.0});
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(t->stato.TipoEsercizio.value(), tipo);
        QCOMPARE(t->stato.TipoEstratto.value(), estratto);
        QCOMPARE(t.random->scriptLeft(), std::size_t(0));
    }

    void noChoiceKeepsThePreviousType()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        t->stato.TipoNumeri = 1;
        t.random->script({drawFor(8, 10)}); // type 15
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(t->stato.TipoEsercizio.value(), 15);
        t->stato.TipoNumeri = 0;
        for (int i = 0; i < 20; ++i) {
            Algoritmi(*t).GeneraEsercizio();
            QCOMPARE(t->stato.TipoEsercizio.value(), 15);
            QCOMPARE(t->stato.Numero.size(), 4);
        }
    }

    void aNeverDrawnTypeLeavesTheExerciseEmpty()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        t->stato.Numero = QStringLiteral("old");
        t->stato.Risposta = QStringLiteral("old");
        t->stato.SimboloRichiesto = QStringLiteral("old");
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(t->stato.TipoEsercizio.value(), 0);
        QVERIFY(t->stato.Numero.isEmpty());
        QVERIFY(t->stato.SimboloRichiesto.isEmpty());
        QVERIFY(t->stato.Risposta.isEmpty());
        QVERIFY(t->stato.Cifra1 >= 1);
    }

    void digitsAreDrawnInOrderAfterTwoReseeds()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        t->stato.TipoNumeri = 1;
        t.clock->setSecondsSinceMidnight(4321.5);
        t.random->script(
            {drawFor(8, 10), drawFor(0, 9), drawFor(1, 9), drawFor(2, 9), drawFor(8, 9)});
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(t.random->reseeds, 2);
        QCOMPARE(t.random->seeds, (QList<float>{4321.5f, 4321.5f}));
        QCOMPARE(int(t->stato.Cifra1), 1);
        QCOMPARE(int(t->stato.Cifra2), 2);
        QCOMPARE(int(t->stato.Cifra3), 3);
        QCOMPARE(int(t->stato.Cifra4), 9);
        QCOMPARE(t->stato.Numero, QStringLiteral("1239")); // type 15: wxyz
    }

    void typeIsAnnouncedAfterTheDigitsAndBeforeTheExercise()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        t->stato.TipoNumeri = 1;
        t->stato.Numero = QStringLiteral("old");
        int annunciato = -1;
        QString numeroAlloraVisto = QStringLiteral("unset");
        int cifraAlloraVista = -1;
        QObject::connect(t.ctx.get(), &AppContext::tipoEsercizioGenerato, t.ctx.get(),
                         [&](int tipo) {
                             annunciato = tipo;
                             numeroAlloraVisto = t->stato.Numero;
                             cifraAlloraVista = t->stato.Cifra4;
                         });
        t.random->script({drawFor(1, 10), 0.0, 0.0, 0.0, drawFor(4, 9)});
        Algoritmi(*t).GeneraEsercizio();
        QCOMPARE(annunciato, 8);
        QCOMPARE(numeroAlloraVisto, QString());
        QCOMPARE(cifraAlloraVista, 5);
        QCOMPARE(t->stato.Numero, QStringLiteral("1100"));
    }

    void frozenClockStillGivesVariedExercises()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 3);
        t->stato.TipoNumeri = 3;
        QSet<QString> esercizi;
        for (int i = 0; i < 30; ++i) {
            Algoritmi(*t).GeneraEsercizio();
            esercizi.insert(t->stato.Numero + '|' + t->stato.SimboloRichiesto);
        }
        QVERIFY2(esercizi.size() >= 25, qPrintable(QString::number(esercizi.size())));
    }

    void frozenClockWithTheProgramsOwnGeneratorStillVaries()
    {
        AppContext ctx;
        auto clock = std::make_unique<PinnedClock>();
        ctx.setClock(std::move(clock));
        FamiglieSimboli::applica(ctx.stato, 3);
        ctx.stato.TipoNumeri = 3;
        QSet<QString> esercizi;
        for (int i = 0; i < 30; ++i) {
            Algoritmi(ctx).GeneraEsercizio();
            esercizi.insert(ctx.stato.Numero + '|' + ctx.stato.SimboloRichiesto);
        }
        QVERIFY2(esercizi.size() >= 25, qPrintable(QString::number(esercizi.size())));
    }

    void decimalAnswersEndWithTheLastSymbolExceptShorterTypes()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 1);
        const QSet<int> corti = {19, 24, 25, 26, 30, 31, 38};
        for (int tipo = 17; tipo <= 44; ++tipo) {
            generaConCifre(t, tipo, 4, 7, 2, 5);
            QCOMPARE(t->stato.Risposta.endsWith(t->stato.Simbolo4), !corti.contains(tipo));
        }
    }

    void type23HasOnlyTwoDigits()
    {
        TestContext t;
        FamiglieSimboli::applica(t->stato, 1);
        generaConCifre(t, 23, 4, 7, 2, 5);
        QCOMPARE(t->stato.Risposta, QStringLiteral("2 c 5 m "));
    }
};

QTEST_GUILESS_MAIN(TestAlgoritmi)
#include "tst_algoritmi.moc"
