// The alarm's sound on a machine without a sound server: nobody waits for it, and what is the matter is said
// once in an alarm. What is read of a sound file.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "platform/desktop/sound_file.h"
#include "platform/sound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sndfile.h>
#include <string>
#include <unistd.h>
#include <vector>

using namespace tyxo;

namespace {

constexpr i32 flags = snd_filename | snd_nodefault | snd_async;
constexpr qint64 at_once = 20;             // ms
constexpr int pause_between_alarms = 2100; // ms

/// A name as the alert passes it on.
std::string padded(std::string name) {
    name.resize(260, ' ');
    return name;
}

void play(const std::string& name) {
    QElapsedTimer clock;
    clock.start();
    PlaySoundA(name, flags);
    QVERIFY(clock.elapsed() < at_once);
    QTest::qWait(20); // the player takes each one
}

void make_file(const char* name) {
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

/// A file of so many frames, all values a quarter.
void make_sound(const char* name, int format, int channels, sf_count_t frames) {
    SF_INFO form{.frames = 0,
                 .samplerate = 8000,
                 .channels = channels,
                 .format = format,
                 .sections = 0,
                 .seekable = 0};
    SNDFILE* const file = sf_open(name, SFM_WRITE, &form);
    QVERIFY(file != nullptr);
    const std::vector<float> values(static_cast<std::size_t>(frames * channels), 0.25F);
    QCOMPARE(sf_writef_float(file, values.data(), frames), frames);
    sf_close(file);
}

} // namespace

class sound_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QVERIFY(QDir::setCurrent(folder_.path()));
        qputenv("PULSE_SERVER", "unix:no-sound-server");
        // The debug output goes to a file; what the test itself says goes elsewhere.
        const int file = ::open("debug.log", O_WRONLY | O_CREAT | O_APPEND, 0600);
        QVERIFY(file >= 0 && ::dup2(file, STDERR_FILENO) == STDERR_FILENO);
    }

    void a_short_path_is_put_in_front_of_the_buffer() {
        make_file("there.wav");
        std::string buffer(20, ' ');
        GetShortPathNameA("there.wav", buffer);
        QCOMPARE(buffer, std::string("there.wav           "));
    }

    void without_a_file_the_buffer_stays() {
        QVERIFY(QDir().mkpath("folder.wav"));
        for (const char* const name : {"missing.wav", "folder.wav", ""}) {
            std::string buffer(20, ' ');
            GetShortPathNameA(name, buffer);
            QCOMPARE(buffer, std::string(20, ' '));
        }
    }

    void a_path_longer_than_the_buffer_is_left_out() {
        make_file("there.wav");
        std::string buffer(8, ' ');
        GetShortPathNameA("there.wav", buffer);
        QCOMPARE(buffer, std::string(8, ' '));
        buffer.resize(9, ' ');
        GetShortPathNameA("there.wav", buffer);
        QCOMPARE(buffer, std::string("there.wav"));
    }

    void what_is_the_matter_is_said_once_until_it_changes() {
        make_file("there.wav");
        for (int turn = 0; turn < 5; ++turn)
            play(padded(""));
        QTRY_COMPARE(debug(), QByteArray("PlaySoundA: no such file\n"));
        for (int turn = 0; turn < 5; ++turn)
            play(padded("there.wav"));
        QTRY_COMPARE(debug(), QByteArray("PlaySoundA: no such file\nPlaySoundA: no sound server\n"));
        play(padded(""));
        QTRY_VERIFY(debug().endsWith("no sound server\nPlaySoundA: no such file\n"));
    }

    void what_is_the_matter_is_said_again_in_the_next_alarm() {
        QTest::qWait(pause_between_alarms);
        const qsizetype before = debug().size();
        for (int turn = 0; turn < 3; ++turn)
            play(padded("there.wav"));
        QTRY_COMPARE(debug().mid(before), QByteArray("PlaySoundA: no sound server\n"));
        QTest::qWait(pause_between_alarms);
        for (int turn = 0; turn < 3; ++turn)
            play(padded("there.wav"));
        QTRY_COMPARE(debug().mid(before), QByteArray("PlaySoundA: no sound server\n").repeated(2));
    }

    void a_sound_file_is_read_in_any_usual_format() {
        for (const int format : {SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}) {
            make_sound("sound.wav", SF_FORMAT_WAV | format, 2, 800);
            const desktop::sound_samples sound = desktop::read_sound("sound.wav");
            QCOMPARE(sound.rate, 8000U);
            QCOMPARE(sound.channels, 2U);
            QCOMPARE(sound.values.size(), std::size_t{1600});
            for (const float value : sound.values)
                QVERIFY(std::abs(value - 0.25F) < 0.01F);
        }
    }

    void of_a_long_sound_the_beginning_is_read() {
        make_sound("sound.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 3, 1'000'000);
        QCOMPARE(desktop::read_sound("sound.wav").values.size(), std::size_t{999'999});
    }

    void what_is_no_sound_is_a_failure() {
        make_file("empty.wav");
        make_sound("silent.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 0);
        QFile torn("torn.wav");
        QVERIFY(torn.open(QIODevice::WriteOnly) && torn.write("RIFF") == 4);
        torn.close();
        for (const char* const name : {"empty.wav", "silent.wav", "torn.wav", "missing.wav"})
            QVERIFY_THROWS_EXCEPTION(failure, static_cast<void>(desktop::read_sound(name)));
    }

    void a_flood_of_sounds_holds_nobody_up() {
        QElapsedTimer clock;
        clock.start();
        for (int turn = 0; turn < 10'000; ++turn)
            PlaySoundA(padded("there.wav"), flags);
        QVERIFY(clock.elapsed() < 1000);
    }

    void the_beep_returns() {
        QElapsedTimer clock;
        clock.start();
        beep();
        QVERIFY(clock.elapsed() < at_once);
    }

  private:
    static QByteArray debug() {
        QFile file("debug.log");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder_;
};

static const desktop_test<sound_test> known;
#include "sound_test.moc"
