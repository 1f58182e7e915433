// Instruments in a window, as it is on the screen: whatever happened to them, they look like new ones, and
// only what looks different is painted.

#include "desktop/desktop_test.h"
#include "desktop/instruments_page.h"
#include "widgets/group_frame_view.h"

#include <QPaintEvent>
#include <QTest>

#include <functional>

using namespace tyxo;

namespace {

using lasting_page = instruments_page<group_frame>;
using plain_page = instruments_page<QGroupBox>;

/// The area that is painted of a widget, from the last call on.
class paint_area : public QObject {
  public:
    explicit paint_area(QWidget& widget) { widget.installEventFilter(this); }
    QRegion taken() { return std::exchange(area_, {}); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) area_ += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }

  private:
    QRegion area_;
};

/// What a new window shows. Where device pixels lie across logical ones, a frame's picture stands at whole
/// device pixels, which a plain frame does not.
QImage new_picture(const instruments_state& state, double ratio) {
    return ratio == std::round(ratio) ? plain_page(state).picture() : lasting_page(state).picture();
}

} // namespace

class instruments_test : public QObject {
    Q_OBJECT

  private slots:
    void whatever_happened_all_looks_like_new() {
        instrument_changes random;
        instruments_state state;
        lasting_page lasting(state);
        for (int step = 0; step < 700; ++step) {
            const instruments_state before = state;
            for (int change = 0; change <= step % 3; ++change)
                random.apply(state);
            lasting.show_state(state, before);
            const QImage picture = lasting.picture();
            QVERIFY(!picture.isNull());
            const QRect wrong = difference(picture, new_picture(state, picture.devicePixelRatio()));
            if (!wrong.isEmpty()) qWarning() << "step" << step;
            QCOMPARE(wrong, QRect());
        }
    }

    void no_ground_is_out_of_date_data() {
        QTest::addColumn<std::function<void(instruments_state&)>>("change");
        using change = std::function<void(instruments_state&)>;
        QTest::addRow("disabled") << change([](auto& state) { state.frame_disabled = true; });
        QTest::addRow("another title") << change([](auto& state) { state.title = "not installed"; });
        QTest::addRow("moved") << change([](auto& state) { state.frame.moveTo(30, 20); });
        QTest::addRow("larger") << change([](auto& state) { state.frame.setSize({440, 190}); });
        QTest::addRow("other colours") << change([](auto& state) { state.ground = 0xFFC0D0E0; });
        QTest::addRow("other letters") << change([](auto& state) { state.letters = 15; });
        QTest::addRow("another style") << change([](auto& state) { state.plain_style = true; });
    }

    void no_ground_is_out_of_date() {
        QFETCH(const std::function<void(instruments_state&)>, change);
        instruments_state state;
        lasting_page window(state);
        const QImage at_first = window.picture();
        instruments_state before = state;
        change(state);
        state.dial.Position = 600; // together with the change, and behind it
        window.show_state(state, before);
        QVERIFY(!difference(window.picture(), at_first).isEmpty());
        QCOMPARE(difference(window.picture(), new_picture(state, at_first.devicePixelRatio())), QRect());
        before = state;
        state.dial.Position = state.speed.Value = state.bar.Position = state.number.Value = 80;
        window.show_state(state, before);
        QCOMPARE(difference(window.picture(), new_picture(state, at_first.devicePixelRatio())), QRect());
    }

    void only_the_needle_is_painted() {
        instruments_state state;
        lasting_page window(state);
        window.picture();
        paint_area area(window.instrument(0));
        const instruments_state before = state;
        state.dial.Position = 301;
        window.show_state(state, before);
        window.picture();
        const QRect painted = area.taken().boundingRect();
        QVERIFY(!painted.isEmpty());
        QVERIFY(painted.width() < 70 && painted.height() < 60);
    }

    void only_the_pointer_is_painted() {
        instruments_state state;
        state.bar.MaxPosition = 110;
        lasting_page window(state);
        window.picture();
        paint_area area(window.instrument(2));
        const instruments_state before = state;
        state.bar.Position = 43;
        window.show_state(state, before);
        window.picture();
        const QRect painted = area.taken().boundingRect();
        QVERIFY(!painted.isEmpty());
        QVERIFY(painted.width() < 20 && painted.height() < 20);
    }

    void what_looks_the_same_is_not_painted() {
        instruments_state state;
        state.dial.Position = state.bar.Position = state.bar.MaxPosition = 5000;
        lasting_page window(state);
        window.picture();
        paint_area area(window);
        paint_area frame_area(window.frame());
        const instruments_state before = state;
        state.dial.Position = state.bar.Position = state.bar.MaxPosition = 6000;
        state.speed.Value = 300.4;
        state.number.Value = 12.341;
        window.show_state(state, before);
        window.picture();
        QVERIFY(area.taken().isEmpty());
        QVERIFY(frame_area.taken().isEmpty());
    }

    void the_window_beneath_is_not_painted() {
        instruments_state state;
        lasting_page window(state);
        window.picture();
        paint_area area(window);
        paint_area frame_area(window.frame());
        const instruments_state before = state;
        state.dial.Position = state.bar.Position = 80;
        state.speed.Value = state.number.Value = 80;
        state.lamp.Active = true;
        window.show_state(state, before);
        window.picture();
        QVERIFY(area.taken().isEmpty());
        QVERIFY(!frame_area.taken().isEmpty());
    }
};

static const desktop_test<instruments_test> known;
#include "instruments_test.moc"
