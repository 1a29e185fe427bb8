#include "core/AppContext.h"
#include "platform/Form.h"
#include "platform/controls/ComboBox.h"
#include "platform/controls/Frame.h"
#include "platform/controls/Label.h"
#include "platform/controls/Line.h"
#include "platform/controls/Timer.h"
#include "services/Resize.h"
#include "support/TestDoubles.h"

#include <QTest>

namespace {

using K = ControlKind;

class Scalabile : public Form
{
public:
    explicit Scalabile(AppContext &ctx) : Form(ctx, QStringLiteral("Scalabile"))
    {
        // clang-format off
        design(6000, 3000, {
            {.kind = K::Label, .name = "Alto", .left = 600, .top = 300, .width = 1200, .height = 450, .caption = "a"},
            {.kind = K::Frame, .name = "Cornice", .left = 1500, .top = 900, .width = 3000, .height = 1500, .border = true},
            {.kind = K::Label, .name = "Dentro", .in = "Cornice", .left = 1500, .top = 300, .width = 750, .height = 300, .caption = "b"},
            {.kind = K::Timer, .name = "Orologio", .interval = 1000},
            {.kind = K::Menu, .name = "mnuVoce", .caption = "Voce"},
            {.kind = K::Line, .name = "Linea", .left = 100, .top = 2800, .width = 5900, .height = 2800},
            {.kind = K::ComboBox, .name = "Elenco", .left = 4800, .top = 300, .width = 1000, .height = 300},
        });
        // clang-format on
    }
    Resize::Posizioni Posizioni;
    bool saltaCombo = false;

protected:
    void Form_Load() override { Resize::RegistraPosizioni(*this, Posizioni); }
    void Form_Resize() override { Resize::Ridimensiona(*this, Posizioni, saltaCombo); }
};

struct Geometria
{
    double left, top, width, height;
};

Geometria di(const Control &c)
{
    return {c.Left(), c.Top(), c.Width(), c.Height()};
}

} // namespace

class TestResize : public QObject
{
    Q_OBJECT

private slots:
    void fractionsAreRecordedInCollectionOrder()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        QCOMPARE(f.Posizioni.size(), f.Controls().size());
        const PosizioneControllo &alto = f.Posizioni[0];
        QCOMPARE(alto.Larghezza, 0.2f);
        QCOMPARE(alto.Altezza, 0.15f);
        QCOMPARE(alto.Sinistra, 0.1f);
        QCOMPARE(alto.Sopra, 0.1f);
        // Timer, menu and line have no position: their fractions stay 0.
        for (int i : {3, 4, 5}) {
            QCOMPARE(f.Posizioni[i].Larghezza, 0.0f);
            QCOMPARE(f.Posizioni[i].Sopra, 0.0f);
        }
    }

    void doublingTheWidthDoublesLeftsAndWidthsOnly()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        const Geometria prima = di(f.get<Label>("Alto"));
        f.setInnerSize(12000, 3000);
        const Geometria dopo = di(f.get<Label>("Alto"));
        // Single-precision products: equal up to float rounding.
        QVERIFY(qAbs(dopo.left - prima.left * 2) < 0.01);
        QVERIFY(qAbs(dopo.width - prima.width * 2) < 0.01);
        QVERIFY(qAbs(dopo.top - prima.top) < 0.01);
        QVERIFY(qAbs(dopo.height - prima.height) < 0.01);
        QCOMPARE(f.get<Label>("Alto").widget()->geometry(), QRect(80, 20, 160, 30));
    }

    void designSizeRestoresTheDesign()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        QList<Geometria> design;
        for (Control *c : f.Controls())
            if (c->kind() == K::Label || c->kind() == K::Frame)
                design << di(*c);
        const QRect pixels = f.get<Label>("Dentro").widget()->geometry();
        f.setInnerSize(9345, 4711);
        f.setInnerSize(6000, 3000);
        int i = 0;
        for (Control *c : f.Controls()) {
            if (c->kind() != K::Label && c->kind() != K::Frame)
                continue;
            const Geometria g = di(*c);
            QVERIFY(qAbs(g.left - design[i].left) < 0.01);
            QVERIFY(qAbs(g.top - design[i].top) < 0.01);
            QVERIFY(qAbs(g.width - design[i].width) < 0.01);
            QVERIFY(qAbs(g.height - design[i].height) < 0.01);
            ++i;
        }
        QCOMPARE(f.get<Label>("Dentro").widget()->geometry(), pixels);
    }

    void aFramesChildAtHalfTheFrameStaysAtHalf()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        for (QSizeF size : {QSizeF(9000, 2000), QSizeF(4500, 6000), QSizeF(12345, 6789)}) {
            f.setInnerSize(size.width(), size.height());
            const double frameWidth = f.get<Frame>("Cornice").Width();
            QVERIFY(qAbs(f.get<Label>("Dentro").Left() - frameWidth / 2) < 0.01);
        }
    }

    void timersMenusAndLinesNeitherBreakNorMove()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        auto &linea = f.get<Line>("Linea");
        f.setInnerSize(12000, 6000);
        QVERIFY(t.errors->errors.isEmpty());
        QCOMPARE(linea.X2(), 5900.0);
        QCOMPARE(linea.Y1(), 2800.0);
        QVERIFY(f.get<Timer>("Orologio").Interval() == 1000);
        QCOMPARE(f.get<Label>("Alto").Left(), 1200.0);
    }

    void comboBoxesAreSkippedOnlyWhenAsked()
    {
        TestContext t;
        auto &f = t->form<Scalabile>();
        auto &elenco = f.get<ComboBox>("Elenco");
        const double left = elenco.Left();
        f.saltaCombo = true;
        f.setInnerSize(12000, 3000);
        QCOMPARE(elenco.Left(), left);
        f.saltaCombo = false;
        f.setInnerSize(13500, 3000);
        QVERIFY(qAbs(elenco.Left() - left * 13500 / 6000) < 0.01);
    }
};

QTEST_MAIN(TestResize)
#include "tst_resize.moc"
