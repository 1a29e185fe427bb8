#include "core/Algoritmi.h"
#include "core/AppContext.h"
#include "core/FamiglieSimboli.h"
#include "platform/Fonts.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/OptionButton.h"
#include "start/FrmOpzioni.h"
#include "support/FileTest.h"
#include "support/ScreenTest.h"
#include "support/TestDoubles.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace FileTest;
using namespace ScreenTest;

namespace {

// What a fresh screen stores: the design's choices, pure black text.
const QByteArray DesignLines = QByteArrayLiteral("16763135\r\n\r\n0\r\n"
                                                 "False\r\nFalse\r\nFalse\r\n"
                                                 "16763135\r\n16724735\r\n"
                                                 " 4\r\n 4\r\n 9\r\n");

const QColor FucsiaChiaro(255, 200, 255);
const QColor FucsiaScuro(255, 50, 255);

QString value(int r, int g, int b)
{
    return QString::number(r + 256 * g + 65536 * b);
}

} // namespace

class TestFrmOpzioni : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestContext> t;
    std::unique_ptr<QTemporaryDir> dir;
    FrmOpzioni *f = nullptr;

    StatoCondiviso &s() { return (*t)->stato; }
    QString file() const { return dir->filePath(QStringLiteral("Quadrivo.dat")); }
    OptionButton &opt(const char *group, int index = -1)
    {
        return f->get<OptionButton>(group, index);
    }
    QString caption(const char *name, int index = -1)
    {
        return f->get<Control>(name, index).Caption();
    }
    bool loaded() { return (*t)->screens().isLoaded<FrmOpzioni>(); }

    // Clicks a button of a group so that it becomes the chosen one, even
    // when it already was (a chosen button raises no Click of its own).
    void choose(const char *group, int index)
    {
        if (opt(group, index).Value())
            click(opt(group, index == 0 ? 1 : 0));
        click(opt(group, index));
        QVERIFY(opt(group, index).Value());
    }

    // Another window takes the focus, then the panel is active again.
    bool reactivate()
    {
        QWidget other;
        other.resize(100, 100);
        other.show();
        QApplication::setActiveWindow(&other);
        if (!QTest::qWaitForWindowActive(&other, 2000))
            return false;
        return showActive(*f);
    }

private slots:
    void initTestCase() { Fonts::installSubstitutions(); }

    void init()
    {
        t = std::make_unique<TestContext>();
        dir = std::make_unique<QTemporaryDir>();
        QVERIFY(dir->isValid());
        (*t)->setWorkingDirectory(dir->path());
        // As the start screen leaves it.
        s().NomeEseguibile = QStringLiteral("Quadrivo");
        f = &(*t)->form<FrmOpzioni>();
        QVERIFY(showActive(*f));
    }

    void cleanup()
    {
        t.reset();
        settle();
        QFile::setPermissions(dir->path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        dir.reset();
    }

    // ---- Design ----

    void theFramesAndGroupsCarryTheirCaptions()
    {
        QCOMPARE(f->Caption(), QStringLiteral(" PANNELLO OPZIONI"));
        const QList<std::pair<const char *, const char *>> frames{
            {"Frame2", "COLORE SFONDO PAGINA"},
            {"Frame5", "COLORE CARATTERI"},
            {"Frame6", "COLORE SCANSIONE"},
            {"Frame3", "TIPO CARATTERI"},
            {"Frame8", "RINFORZO SONORO"},
            {"BEEP", "BEEP"},
            {"Frame4", "SINTESI VOCALE"},
            {"Frame9", "QUADRO DELLE SCELTE"},
            {"Frame1", "ANTEPRIMA DELLE TUE SCELTE"}};
        for (const auto &[name, text] : frames)
            QCOMPARE(caption(name), QString::fromUtf8(text));
        QVERIFY(f->findControl(QStringLiteral("Frame7")));
        QVERIFY(f->findControl(QStringLiteral("Frame10")));

        const QStringList colours{"Bianco",  "Grigio", "Giallo",   "Arancio", "Fucsia", "Pervinca",
                                  "Azzurro", "Verde",  "Nocciola", "Nero",    "Rosso"};
        for (int i = 0; i < 11; ++i) {
            QCOMPARE(caption("Option1", i), colours[i]);
            QCOMPARE(caption("Option27", i), colours[i]);
            QCOMPARE(caption("Option17", i), QStringLiteral("Da ") + colours[i].toLower() +
                                                 QStringLiteral(" chiaro a scuro"));
            QCOMPARE(opt("Option1", i).container(), f->findControl(QStringLiteral("Frame2")));
            QCOMPARE(opt("Option27", i).container(), f->findControl(QStringLiteral("Frame5")));
            QCOMPARE(opt("Option17", i).container(), f->findControl(QStringLiteral("Frame6")));
        }
        QVERIFY(!f->findControl(QStringLiteral("Option1"), 11));
        QCOMPARE(caption("Option9", 0), QStringLiteral("MAIUSCOLO"));
        QCOMPARE(caption("Option9", 1), QStringLiteral("Minuscolo"));
        QCOMPARE(caption("Option28", 0), QStringLiteral("Attivato"));
        QCOMPARE(caption("Option28", 1), QStringLiteral("Disattivato"));
        QCOMPARE(caption("Option3", 0), QStringLiteral("Attivato"));
        QCOMPARE(caption("Option3", 1), QStringLiteral("Disattivato"));
        QCOMPARE(opt("Option3", 0).container(), f->findControl(QStringLiteral("BEEP")));
        QCOMPARE(caption("Option11", 0), QStringLiteral("Attivata"));
        QCOMPARE(caption("Option11", 1), QStringLiteral("Disattivata"));

        QStringList families;
        for (int i = 0; i < 9; ++i) {
            families << caption("Option6", i);
            QVERIFY2(caption("Option6", i).contains(QStringLiteral(" : ")),
                     qPrintable(families.last()));
        }
        QVERIFY(!f->findControl(QStringLiteral("Option6"), 9));
        QVERIFY(families.contains(
            QStringLiteral("u    d    c    m :       unità  decimi centesimi millesimi")));
        QVERIFY(families.contains(
            QStringLiteral("t   q  Mg Kg :         tonnellata quintale miriagrammo chilogrammo")));
        QCOMPARE(families.removeDuplicates(), 0);

        QCOMPARE(caption("Option4"), QStringLiteral("123"));
        QCOMPARE(caption("Option2"), QStringLiteral("AAAA"));
        QCOMPARE(caption("Label5"), QStringLiteral("ADC"));
        QCOMPARE(caption("Label4"), QStringLiteral("123"));
        for (const char *name : {"Option4", "Option2", "Label5", "Label4"})
            QCOMPARE(f->get<Control>(name).container(), f->findControl(QStringLiteral("Frame1")));
        QCOMPARE(caption("Option5", 0), QStringLiteral("Impostazioni predefinite"));
        QCOMPARE(caption("Option5", 1), QStringLiteral("Memorizza nuove impostazioni"));
        QCOMPARE(caption("Option5", 2), QStringLiteral("Esci"));
        QCOMPARE(opt("Option5", 0).container(), f->findControl(QStringLiteral("Frame7")));
    }

    void theDesignChoicesSetEveryColourWhileLoading()
    {
        // A screen loaded but never shown: only the load has run.
        TestContext other;
        other->form<FrmOpzioni>();
        const StatoCondiviso &o = other->stato;
        QCOMPARE(o.ColoreSfondo, value(255, 200, 255));
        QCOMPARE(o.IndiceSfondo.value(), 4);
        QCOMPARE(o.ColoreCaratteri, value(0, 0, 0));
        QCOMPARE(o.IndiceCaratteri.value(), 9);
        QCOMPARE(o.ColoreScansioneChiaro, value(255, 200, 255));
        QCOMPARE(o.ColoreScansioneScuro, value(255, 50, 255));
        QCOMPARE(o.IndiceScansione.value(), 4);
        QCOMPARE(o.SegnaleAcustico.value(), 0);
        QVERIFY(other.errors->errors.isEmpty());
    }

    void onlyTheDesignChoicesAreChosenAtStart()
    {
        const QList<std::pair<const char *, int>> chosen{
            {"Option1", 4},  {"Option27", 9}, {"Option17", 4}, {"Option9", 0},
            {"Option28", 0}, {"Option3", 0},  {"Option11", 0}};
        for (const auto &[group, index] : chosen) {
            for (const auto &[i, button] : f->array<OptionButton>(group))
                QCOMPARE(button->Value(), i == index);
        }
        for (const auto &[i, button] : f->array<OptionButton>("Option6"))
            QVERIFY(!button->Value());
        for (const auto &[i, button] : f->array<OptionButton>("Option5"))
            QVERIFY(!button->Value());
    }

    // ---- Activation ----

    void aFreshStartShowsAFucsiaPageWithBlackText()
    {
        QCOMPARE(f->get<Frame>("Frame1").BackColor(), FucsiaChiaro);
        QCOMPARE(f->get<Label>("Label5").ForeColor(), QColor(0, 0, 0));
        QCOMPARE(opt("Option4").ForeColor(), QColor(0, 0, 0));
        QCOMPARE(opt("Option2").ForeColor(), QColor(0, 0, 0));
        QCOMPARE(opt("Option4").BackColor(), FucsiaScuro);
        QCOMPARE(opt("Option2").BackColor(), FucsiaChiaro);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        QCOMPARE(opt("Option5", 1).BackColor(), FucsiaScuro);
        QCOMPARE(opt("Option5", 0).BackColor(), FucsiaChiaro);
        QCOMPARE(opt("Option5", 2).BackColor(), FucsiaChiaro);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void everyActivationAppliesTheStoredColours()
    {
        s().ColoreSfondo = value(1, 2, 3);
        s().ColoreCaratteri = value(4, 5, 6);
        s().ColoreScansioneChiaro = value(7, 8, 9);
        s().ColoreScansioneScuro = value(10, 11, 12);
        key(Qt::Key_1); // the focus leaves "Memorizza", to come back to it
        QVERIFY(reactivate());
        QCOMPARE(f->get<Frame>("Frame1").BackColor(), QColor(1, 2, 3));
        QCOMPARE(f->get<Label>("Label5").ForeColor(), QColor(4, 5, 6));
        QCOMPARE(opt("Option2").ForeColor(), QColor(4, 5, 6));
        QCOMPARE(opt("Option4").BackColor(), QColor(10, 11, 12));
        QCOMPARE(opt("Option2").BackColor(), QColor(7, 8, 9));
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        QCOMPARE(opt("Option5", 1).BackColor(), QColor(10, 11, 12));
        QCOMPARE(opt("Option5", 0).BackColor(), QColor(7, 8, 9));
        QCOMPARE(opt("Option5", 2).BackColor(), QColor(7, 8, 9));
    }

    void anEmptyOrNonNumericColourIsATypeMismatch_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty scanning") << "chiaro"
                                        << "";
        QTest::newRow("blank background") << "sfondo"
                                          << "   ";
        QTest::newRow("word text colour") << "caratteri"
                                          << "Nero";
        QTest::newRow("digits and letters") << "scuro"
                                            << "12ab";
    }
    void anEmptyOrNonNumericColourIsATypeMismatch()
    {
        QFETCH(QString, field);
        QFETCH(QString, text);
        QString *target = field == "chiaro"   ? &s().ColoreScansioneChiaro
                          : field == "sfondo" ? &s().ColoreSfondo
                          : field == "scuro"  ? &s().ColoreScansioneScuro
                                              : &s().ColoreCaratteri;
        *target = text;
        QVERIFY(reactivate());
        // The first one ends the program; in a test the others are recorded too.
        QVERIFY(!t->errors->errors.isEmpty());
        for (RuntimeError::Code code : t->errors->errors)
            QCOMPARE(code, RuntimeError::TypeMismatch);
    }

    // ---- Colour buttons ----

    void everyColourButtonStoresItsColour_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QColor>("sfondo");
        QTest::addColumn<QColor>("caratteri");
        QTest::addColumn<QColor>("chiaro");
        QTest::addColumn<QColor>("scuro");
        auto row = [](int i, QColor a, QColor b, QColor c, QColor d) {
            QTest::addRow("%d", i) << i << a << b << c << d;
        };
        row(0, {255, 255, 255}, {200, 200, 200}, {255, 255, 255}, {235, 235, 235});
        row(1, {220, 220, 220}, {150, 150, 150}, {190, 190, 190}, {150, 150, 150});
        row(2, {255, 255, 190}, {250, 255, 80}, {255, 255, 120}, {250, 255, 80});
        row(3, {250, 220, 160}, {255, 190, 110}, {250, 210, 140}, {255, 190, 110});
        row(4, {255, 200, 255}, {255, 130, 255}, {255, 200, 255}, {255, 50, 255});
        row(5, {250, 210, 255}, {200, 150, 255}, {230, 180, 255}, {200, 150, 255});
        row(6, {180, 255, 255}, {100, 255, 255}, {100, 255, 255}, {0, 210, 255});
        row(7, {100, 255, 190}, {100, 220, 150}, {100, 220, 150}, {100, 200, 150});
        row(8, {255, 225, 120}, {255, 200, 90}, {255, 215, 10}, {255, 200, 90});
        row(9, {0, 0, 0}, {0, 0, 0}, {70, 70, 70}, {0, 0, 0});
        row(10, {255, 119, 136}, {255, 0, 0}, {255, 65, 83}, {255, 0, 0});
    }
    void everyColourButtonStoresItsColour()
    {
        QFETCH(int, index);
        QFETCH(QColor, sfondo);
        QFETCH(QColor, caratteri);
        QFETCH(QColor, chiaro);
        QFETCH(QColor, scuro);
        auto text = [](const QColor &c) { return value(c.red(), c.green(), c.blue()); };

        choose("Option1", index);
        QCOMPARE(s().ColoreSfondo, text(sfondo));
        QCOMPARE(s().IndiceSfondo.value(), index);
        QCOMPARE(f->get<Frame>("Frame1").BackColor(), sfondo);

        choose("Option27", index);
        QCOMPARE(s().ColoreCaratteri, text(caratteri));
        QCOMPARE(s().IndiceCaratteri.value(), index);
        QCOMPARE(f->get<Label>("Label5").ForeColor(), caratteri);
        QCOMPARE(opt("Option4").ForeColor(), caratteri);
        QCOMPARE(opt("Option2").ForeColor(), caratteri);

        choose("Option17", index);
        QCOMPARE(s().ColoreScansioneChiaro, text(chiaro));
        QCOMPARE(s().ColoreScansioneScuro, text(scuro));
        QCOMPARE(s().IndiceScansione.value(), index);
        QCOMPARE(opt("Option4").BackColor(), scuro);
        QCOMPARE(opt("Option2").BackColor(), chiaro);

        // A text colour repaints the commands in the scanning colours.
        choose("Option27", index);
        for (const auto &[i, button] : f->array<OptionButton>("Option5"))
            QCOMPARE(button->BackColor(), chiaro);
        QVERIFY(t->errors->errors.isEmpty());
    }

    void rossoIsAPinkishRedPage()
    {
        click(opt("Option1", 10));
        QCOMPARE(s().ColoreSfondo, QStringLiteral("8943615"));
        QCOMPARE(f->get<Frame>("Frame1").BackColor(), QColor(255, 119, 136));
        QVERIFY(f->get<Frame>("Frame1").BackColor() != QColor(255, 0, 0));
    }

    void choosingAButtonReleasesTheOthersOfItsGroupOnly()
    {
        click(opt("Option1", 2));
        QVERIFY(opt("Option1", 2).Value());
        QVERIFY(!opt("Option1", 4).Value());
        QVERIFY(opt("Option27", 9).Value());
        QVERIFY(opt("Option17", 4).Value());
        click(opt("Option28", 1));
        QVERIFY(opt("Option28", 1).Value());
        QVERIFY(!opt("Option28", 0).Value());
        QVERIFY(opt("Option11", 0).Value());
        QVERIFY(opt("Option3", 0).Value());
    }

    // ---- Switches ----

    void beepSetsTheSoundSignal()
    {
        click(opt("Option3", 1));
        QCOMPARE(s().SegnaleAcustico.value(), 1);
        click(opt("Option3", 0));
        QCOMPARE(s().SegnaleAcustico.value(), 0);
    }

    void theCaseSwitchChangesOnlyThePreview()
    {
        const StatoCondiviso before = s();
        click(opt("Option9", 1));
        QCOMPARE(caption("Option2"), QStringLiteral("aaaa"));
        QCOMPARE(caption("Option4"), QStringLiteral("123"));
        QCOMPARE(caption("Label5"), QStringLiteral("ADC"));
        click(opt("Option9", 0));
        QCOMPARE(caption("Option2"), QStringLiteral("AAAA"));
        QCOMPARE(s().ColoreCaratteri, before.ColoreCaratteri);
        QCOMPARE(s().IndiceCaratteri.value(), before.IndiceCaratteri.value());
        QCOMPARE(s().SegnaleAcustico.value(), before.SegnaleAcustico.value());
        QCOMPARE(s().OpzioneTesto, before.OpzioneTesto);
        QVERIFY(!s().OpzioneA && !s().OpzioneB && !s().OpzioneC);
        QVERIFY(!QFile::exists(file()));
    }

    void theVoiceAndRewardSwitchesLeaveNoTrace()
    {
        s().SegnaleAcustico = 0;
        click(opt("Option28", 1));
        click(opt("Option11", 1));
        click(opt("Option28", 0));
        QCOMPARE(s().SegnaleAcustico.value(), 0);
        QVERIFY(!s().OpzioneA && !s().OpzioneB && !s().OpzioneC);
        QVERIFY(s().OpzioneTesto.isEmpty());
        click(opt("Option5", 1));
        QCOMPARE(readAll(file()), DesignLines);
    }

    void aSymbolFamilyButtonEmptiesTheSymbolsOfTheNextDrill_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < 9; ++i)
            QTest::addRow("%d", i) << i;
    }
    void aSymbolFamilyButtonEmptiesTheSymbolsOfTheNextDrill()
    {
        QFETCH(int, index);
        s().FamigliaSimboli = 3;
        FamiglieSimboli::applica(s(), 3);
        choose("Option6", index);
        QCOMPARE(s().Simbolo1, QString());
        QCOMPARE(s().Simbolo2, QString());
        QCOMPARE(s().Simbolo3, QString());
        QCOMPARE(s().Simbolo4, QString());
        QCOMPARE(s().FamigliaSimboli.value(), 3);
        QCOMPARE(s().NumeroCifre.value(), 4);

        // The next drill's exercises come without place symbols.
        s().TipoNumeri = 3;
        Algoritmi generatore(**t);
        for (int i = 0; i < 20; ++i) {
            generatore.GeneraEsercizio();
            QCOMPARE(s().SimboloRichiesto, QString());
            QVERIFY2(!s().Risposta.contains(QRegularExpression(QStringLiteral("[a-zA-Z]"))),
                     qPrintable(s().Risposta));
        }
    }

    // ---- Commands by mouse ----

    void memorizzaWritesTheChoicesOnScreen()
    {
        mouseDown(opt("Option5", 1));
        QCOMPARE(readAll(file()), DesignLines);
        mouseUp(opt("Option5", 1));
        QVERIFY(!opt("Option5", 1).Value());
        QVERIFY(loaded());
    }

    void defaultsAreStoredWithoutChoosingTheButtonsAgain()
    {
        click(opt("Option1", 2));
        click(opt("Option27", 3));
        click(opt("Option17", 6));
        click(opt("Option3", 1));
        QCOMPARE(s().SegnaleAcustico.value(), 1);

        click(opt("Option5", 0));
        QCOMPARE(readAll(file()), DefaultLines);
        QCOMPARE(s().ColoreSfondo, QStringLiteral("16763135"));
        QCOMPARE(s().ColoreCaratteri, QStringLiteral("328965"));
        QCOMPARE(s().ColoreScansioneChiaro, QStringLiteral("16763135"));
        QCOMPARE(s().ColoreScansioneScuro, QStringLiteral("16724735"));
        QCOMPARE(s().IndiceSfondo.value(), 4);
        QCOMPARE(s().IndiceCaratteri.value(), 9);
        QCOMPARE(s().IndiceScansione.value(), 4);
        QCOMPARE(s().SegnaleAcustico.value(), 0);
        // The buttons still show the teacher's choice.
        QVERIFY(opt("Option1", 2).Value());
        QVERIFY(!opt("Option1", 4).Value());
        QVERIFY(opt("Option27", 3).Value());
        QVERIFY(!opt("Option27", 9).Value());
        QVERIFY(opt("Option17", 6).Value());
        QVERIFY(opt("Option3", 1).Value());
        QVERIFY(!opt("Option3", 0).Value());
    }

    void theDefaultTextIsNearBlackWhileNeroIsBlack()
    {
        click(opt("Option5", 0));
        QCOMPARE(s().ColoreCaratteri, value(5, 5, 5));
        QVERIFY(reactivate());
        QCOMPARE(f->get<Label>("Label5").ForeColor(), QColor(5, 5, 5));
        QCOMPARE(opt("Option2").ForeColor(), QColor(5, 5, 5));

        choose("Option27", 9);
        QCOMPARE(s().ColoreCaratteri, value(0, 0, 0));
        QCOMPARE(f->get<Label>("Label5").ForeColor(), QColor(0, 0, 0));
    }

    void defaultsThenMemorizzaGiveTheElevenDefaultLines()
    {
        click(opt("Option5", 0));
        writeAll(file(), QByteArray(3000, '#'));
        click(opt("Option5", 1));
        QCOMPARE(readAll(file()), DefaultLines);
    }

    void aSecondSaveOverwritesTheFirstCompletely()
    {
        click(opt("Option5", 0));
        QCOMPARE(readAll(file()), DefaultLines);
        click(opt("Option1", 10));
        click(opt("Option27", 0));
        click(opt("Option17", 7));
        click(opt("Option5", 1));
        const QByteArray expected =
            value(255, 119, 136).toLatin1() + "\r\n\r\n" + value(200, 200, 200).toLatin1() +
            "\r\n" + "False\r\nFalse\r\nFalse\r\n" + value(100, 220, 150).toLatin1() + "\r\n" +
            value(100, 200, 150).toLatin1() + "\r\n" + " 10\r\n 7\r\n 0\r\n";
        QCOMPARE(readAll(file()), expected);
    }

    void esciClosesThePanel()
    {
        mouseDown(opt("Option5", 2));
        settle();
        QVERIFY(!loaded());
        QVERIFY(!QFile::exists(file()));
    }

    void theModalShowReturnsWhenThePanelCloses()
    {
        f->Hide();
        settle();
        bool clicked = false;
        QTimer::singleShot(0, this, [&] {
            clicked = true;
            mouseDown(opt("Option5", 2));
        });
        f->ShowModal();
        QVERIFY(clicked);
        settle();
        QVERIFY(!loaded());
    }

    // ---- Commands by keyboard ----

    void digitKeysFocusTheCommands()
    {
        key(Qt::Key_1);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        QCOMPARE(opt("Option5", 0).BackColor(), FucsiaScuro);
        QCOMPARE(opt("Option5", 1).BackColor(), FucsiaChiaro);
        key(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_2);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        keypad(Qt::Key_3);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        keypad(Qt::Key_1);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        keypad(Qt::Key_2);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        QCOMPARE(opt("Option5", 1).BackColor(), FucsiaScuro);
        QCOMPARE(opt("Option5", 0).BackColor(), FucsiaChiaro);
        QCOMPARE(opt("Option5", 2).BackColor(), FucsiaChiaro);
        QVERIFY(!QFile::exists(file()));
        QVERIFY(loaded());
    }

    void otherKeysDoNothing()
    {
        key(Qt::Key_0);
        key(Qt::Key_4);
        keypad(Qt::Key_0);
        keypad(Qt::Key_4);
        key(Qt::Key_X);
        key(Qt::Key_A);
        key(Qt::Key_Escape);
        key(Qt::Key_Shift);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        QVERIFY(!QFile::exists(file()));
        QVERIFY(loaded());
        QVERIFY(t->errors->errors.isEmpty());
    }

    void theSpaceBarMovesOnAndWraps()
    {
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        key(Qt::Key_Space);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
    }

    void aHeldSpaceBarMovesAtEveryRepeat()
    {
        holdKey(Qt::Key_Space, 1);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        holdKey(Qt::Key_Space, 3);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
    }

    void arrowsMoveToThePreviousOrNextCommandAndWrap()
    {
        key(Qt::Key_Down);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_Down);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        key(Qt::Key_Up);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_Left);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        key(Qt::Key_Right);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_Right);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        key(Qt::Key_Left);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        QCOMPARE(opt("Option5", 2).BackColor(), FucsiaScuro);
        QCOMPARE(opt("Option5", 0).BackColor(), FucsiaChiaro);
    }

    void aHeldKeyActsOnceUntilReleased()
    {
        holdKey(Qt::Key_Down, 3);
        QCOMPARE(focusedControl(*f), &opt("Option5", 2));
        key(Qt::Key_Down);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
    }

    void enterCommitsTheFocusedCommand()
    {
        key(Qt::Key_Return);
        QCOMPARE(readAll(file()), DesignLines);
        key(Qt::Key_1);
        QFile::remove(file());
        key(Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(readAll(file()), DefaultLines);
        QCOMPARE(s().ColoreCaratteri, QStringLiteral("328965"));
        QVERIFY(loaded());
        key(Qt::Key_3);
        key(Qt::Key_Return);
        settle();
        QVERIFY(!loaded());
    }

    void letterMStoresTheSettings()
    {
        key(Qt::Key_1);
        key(Qt::Key_M);
        QCOMPARE(focusedControl(*f), &opt("Option5", 1));
        QCOMPARE(readAll(file()), DesignLines);
        QVERIFY(loaded());
    }

    void letterIStoresTheDefaults()
    {
        key(Qt::Key_I, Qt::ShiftModifier);
        QCOMPARE(focusedControl(*f), &opt("Option5", 0));
        QCOMPARE(readAll(file()), DefaultLines);
        QCOMPARE(s().IndiceCaratteri.value(), 9);
        QVERIFY(loaded());
    }

    void letterEClosesThePanel()
    {
        key(Qt::Key_E);
        settle();
        QVERIFY(!loaded());
        QVERIFY(!QFile::exists(file()));
        QVERIFY(t->errors->errors.isEmpty());
    }

    // ---- Files that cannot be written ----

    void aReadOnlyDirectoryWithoutTheFileReachesTheErrorReport()
    {
        ReadOnlyDir readOnly(dir->path());
        if (!readOnly.holds())
            QSKIP("this file system lets the directory be written whatever its mode");

        mouseDown(opt("Option5", 1));
        mouseUp(opt("Option5", 1));
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::PathFileAccessError});
        key(Qt::Key_I);
        QCOMPARE(t->errors->errors, (QList<RuntimeError::Code>{RuntimeError::PathFileAccessError,
                                                               RuntimeError::PathFileAccessError}));
        QCOMPARE(QDir(dir->path()).entryList(QDir::Files | QDir::Hidden), QStringList{});
    }

    void aReadOnlyDirectoryWithAWritableFileStoresInPlace()
    {
        writeAll(file(), QByteArrayLiteral("old\r\n"));
        ReadOnlyDir readOnly(dir->path());
        if (!readOnly.holds())
            QSKIP("this file system lets the directory be written whatever its mode");

        mouseDown(opt("Option5", 1));
        mouseUp(opt("Option5", 1));
        QVERIFY(t->errors->errors.isEmpty());
        QCOMPARE(readAll(file()).count("\r\n"), 11);
        QCOMPARE(QDir(dir->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{QStringLiteral("Quadrivo.dat")});
    }

    void aMissingWorkingDirectoryReachesTheErrorReport()
    {
        (*t)->setWorkingDirectory(dir->filePath(QStringLiteral("gone/away")));
        key(Qt::Key_Return);
        QCOMPARE(t->errors->errors, QList<RuntimeError::Code>{RuntimeError::PathNotFound});
        QVERIFY(loaded());
    }

    // ---- Layout ----

    void thePanelScalesWithItsWindow()
    {
        const double width = f->ScaleWidth();
        const double height = f->ScaleHeight();
        OptionButton &comando = opt("Option5", 1);
        OptionButton &colore = opt("Option1", 3);
        const QRectF before(comando.Left(), comando.Top(), comando.Width(), comando.Height());
        const QRectF inFrame(colore.Left(), colore.Top(), colore.Width(), colore.Height());
        f->setInnerSize(width * 2, height);
        settle();
        QVERIFY(qAbs(comando.Left() - 2 * before.left()) < 1);
        QVERIFY(qAbs(comando.Width() - 2 * before.width()) < 1);
        QVERIFY(qAbs(comando.Top() - before.top()) < 1);
        QVERIFY(qAbs(comando.Height() - before.height()) < 1);
        QVERIFY(qAbs(colore.Left() - 2 * inFrame.left()) < 1);
        f->setInnerSize(width, height);
        settle();
        QVERIFY(qAbs(comando.Left() - before.left()) < 1);
        QVERIFY(qAbs(colore.Width() - inFrame.width()) < 1);
        QVERIFY(t->errors->errors.isEmpty());
    }
};

QTEST_MAIN(TestFrmOpzioni)
#include "tst_frmopzioni.moc"
