#include "platform/AlsaPlayer.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QtEndian>

#include <dlfcn.h>

namespace {

QByteArray campanella()
{
    QFile f(QStringLiteral(":/drill/campanella.wav"));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray le16(quint16 v)
{
    QByteArray b(2, 0);
    qToLittleEndian(v, b.data());
    return b;
}

QByteArray le32(quint32 v)
{
    QByteArray b(4, 0);
    qToLittleEndian(v, b.data());
    return b;
}

// A WAV image with the given format fields and `frames` silent frames.
QByteArray wav(quint16 formato, quint16 canali, quint32 frequenza, quint16 bit, int frames)
{
    const QByteArray dati(frames * canali * bit / 8, 0);
    QByteArray fmt = le16(formato) + le16(canali) + le32(frequenza) +
                     le32(frequenza * canali * bit / 8) + le16(canali * bit / 8) + le16(bit);
    QByteArray corpo = "WAVE" + QByteArray("fmt ") + le32(fmt.size()) + fmt + QByteArray("data") +
                       le32(dati.size()) + dati;
    return "RIFF" + le32(corpo.size()) + corpo;
}

} // namespace

class TestAlsaPlayer : public QObject
{
    Q_OBJECT

private slots:
    // First: no other test may have played a sound yet.
    void theSoundLibraryIsOpenedAtTheFirstSoundNotAtStart()
    {
        const auto caricata = [] {
            void *libreria = dlopen("libasound.so.2", RTLD_NOW | RTLD_NOLOAD);
            if (libreria)
                dlclose(libreria);
            return libreria != nullptr;
        };
        QVERIFY(!caricata());
        AlsaPlayer player(QStringLiteral("null"));
        QVERIFY(player.play(campanella()));
        QVERIFY(caricata());
    }

    void theChimeIsAShortPcmSound()
    {
        const auto clip = AlsaPlayer::parseWav(campanella());
        QVERIFY(clip.has_value());
        QCOMPARE(clip->channels, 1);
        QCOMPARE(clip->rate, 22050);
        QCOMPARE(clip->bitsPerSample, 16);
        QVERIFY(clip->seconds() > 0.15 && clip->seconds() < 0.3);
    }

    void onlyPlayablePcmImagesAreAccepted_data()
    {
        QTest::addColumn<QByteArray>("immagine");
        QTest::addColumn<bool>("valida");

        QTest::newRow("16-bit stereo") << wav(1, 2, 44100, 16, 100) << true;
        QTest::newRow("8-bit mono") << wav(1, 1, 8000, 8, 100) << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("not RIFF") << QByteArray("hello, this is not a sound at all") << false;
        QTest::newRow("compressed") << wav(2, 1, 22050, 16, 100) << false;
        QTest::newRow("24-bit") << wav(1, 1, 22050, 24, 100) << false;
        QTest::newRow("no samples") << wav(1, 1, 22050, 16, 0) << false;
        QTest::newRow("header only") << wav(1, 1, 22050, 16, 100).left(36) << false;
    }
    void onlyPlayablePcmImagesAreAccepted()
    {
        QFETCH(QByteArray, immagine);
        QFETCH(bool, valida);
        QCOMPARE(AlsaPlayer::parseWav(immagine).has_value(), valida);
    }

    void aTruncatedImagePlaysWhatItHas()
    {
        const QByteArray intera = wav(1, 1, 22050, 16, 100);
        const auto clip = AlsaPlayer::parseWav(intera.left(intera.size() - 50));
        QVERIFY(clip.has_value());
        QCOMPARE(clip->frames(), qint64(75));
    }

    void playsWithoutWaitingAndClosesTheDeviceAfterwards()
    {
        // ALSA's "null" device takes samples like a sound card, with no card.
        AlsaPlayer player(QStringLiteral("null"));
        QSignalSpy finito(&player, &AlsaPlayer::finished);
        QElapsedTimer orologio;
        orologio.start();
        QVERIFY(player.play(campanella()));
        QVERIFY(orologio.elapsed() < 150);
        QVERIFY(player.isPlaying());
        QVERIFY(finito.wait(3000));
        QVERIFY(!player.isPlaying());
    }

    void aMissingDeviceIsQuietlyNoSound()
    {
        AlsaPlayer player(QStringLiteral("quadrivo_nessun_dispositivo"));
        QElapsedTimer orologio;
        orologio.start();
        QVERIFY(!player.play(campanella()));
        QVERIFY(orologio.elapsed() < 500);
        QVERIFY(!player.isPlaying());
    }

    void anUnplayableImageIsNoSound()
    {
        AlsaPlayer player(QStringLiteral("null"));
        QVERIFY(!player.play(QByteArray("RIFF....WAVE")));
        QVERIFY(!player.isPlaying());
    }

    void playingAgainStopsThePreviousSound()
    {
        AlsaPlayer player(QStringLiteral("null"));
        QSignalSpy finito(&player, &AlsaPlayer::finished);
        QVERIFY(player.play(campanella()));
        QVERIFY(player.play(campanella()));
        QCOMPARE(finito.count(), 1);
        QVERIFY(finito.wait(3000));
    }
};

QTEST_GUILESS_MAIN(TestAlsaPlayer)
#include "tst_alsaplayer.moc"
