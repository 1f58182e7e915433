// The alarm's sound on a machine without a sound device: nobody waits for it, and what is the matter is said
// once.

#include "platform/sound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <string>
#include <unistd.h>

using namespace tyxo;

namespace {

constexpr i32 flags = snd_filename | snd_nodefault | snd_async;
constexpr qint64 at_once = 20; // ms

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

QTEST_MAIN(sound_test)
#include "sound_test.moc"
