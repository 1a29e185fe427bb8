#include "platform/AlsaPlayer.h"
#include "voce/MotoreEspeak.h"

#include <QTest>
#include <QtEndian>
#include <cmath>

namespace {

struct Suono
{
    double secondi = 0;
    double rms = 0;          // of the whole sentence, full scale 1
    double parteUdibile = 0; // share of 20 ms windows above a whisper
};

Suono misura(const QByteArray &wav)
{
    Suono s;
    const std::optional<AlsaPlayer::Clip> clip = AlsaPlayer::parseWav(wav);
    if (!clip || clip->bitsPerSample != 16 || clip->channels != 1)
        return s;
    s.secondi = clip->seconds();
    const auto *campioni = reinterpret_cast<const qint16 *>(clip->samples.constData());
    const qint64 n = clip->frames();
    const qint64 finestra = clip->rate / 50;
    double somma = 0;
    qint64 udibili = 0, finestre = 0;
    for (qint64 i = 0; i + finestra <= n; i += finestra) {
        double energia = 0;
        for (qint64 k = i; k < i + finestra; ++k) {
            const double v = qFromLittleEndian(campioni[k]) / 32768.0;
            energia += v * v;
        }
        somma += energia;
        ++finestre;
        if (std::sqrt(energia / double(finestra)) > 0.01)
            ++udibili;
    }
    s.rms = n ? std::sqrt(somma / double(n)) : 0;
    s.parteUdibile = finestre ? double(udibili) / double(finestre) : 0;
    return s;
}

} // namespace

// The voice really made by espeak-ng's library, into memory: no audio device.
class TestSintesiEspeak : public QObject
{
    Q_OBJECT

private slots:
    void unaDomandaDiventaSuono()
    {
        MotoreEspeak &motore = MotoreEspeak::di();
        QCOMPARE(motore.carica(), QString());
        const QByteArray wav = motore.sintetizza(QStringLiteral("quattrocentosettantatré decine"));
        const Suono s = misura(wav);
        // Eleven syllables at a child's pace: between one and four seconds.
        QVERIFY2(s.secondi > 1.0 && s.secondi < 4.0, qPrintable(QString::number(s.secondi)));
        QVERIFY2(s.rms > 0.02, qPrintable(QString::number(s.rms)));
        QVERIFY2(s.parteUdibile > 0.5, qPrintable(QString::number(s.parteUdibile)));
    }

    void unaFrasePiuLungaDuraDiPiu()
    {
        MotoreEspeak &motore = MotoreEspeak::di();
        const Suono breve = misura(motore.sintetizza(QStringLiteral("quattro")));
        const Suono lunga = misura(motore.sintetizza(
            QStringLiteral("La soluzione è: quattro migliaia, sette centinaia, tre decine")));
        QVERIFY2(breve.secondi > 0.2 && breve.secondi < 1.5,
                 qPrintable(QString::number(breve.secondi)));
        QVERIFY2(lunga.secondi > 3 * breve.secondi, qPrintable(QString::number(lunga.secondi)));
    }

    void unaFraseInterrottaNonDaSuono()
    {
        int chiamate = 0;
        const QByteArray wav = MotoreEspeak::di().sintetizza(
            QStringLiteral("quattro migliaia, sette centinaia, tre decine"),
            [&] { return ++chiamate > 1; });
        QVERIFY(wav.isEmpty());
        // The engine is still good for the next sentence.
        QVERIFY(misura(MotoreEspeak::di().sintetizza(QStringLiteral("Esatto"))).secondi > 0.2);
    }

    void senzaLibreriaLoDiceInItaliano()
    {
        MotoreEspeak &motore = MotoreEspeak::di(QStringLiteral("libquadrivo-nessuna-voce.so.1"));
        QCOMPARE(motore.carica(),
                 QStringLiteral("manca la libreria della sintesi vocale (espeak-ng)"));
        QVERIFY(motore.sintetizza(QStringLiteral("quattro")).isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestSintesiEspeak)
#include "tst_sintesiespeak.moc"
