// Texts that have no room, and their tool tips, with real widgets and the events that ask for a tip.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "desktop/tool_tip.h"
#include "displays/panel.h"
#include "widgets/edit_box.h"
#include "widgets/full_text.h"
#include "widgets/read_only_box.h"
#include "widgets/show.h"

#include <QVBoxLayout>

using namespace tyxo;

class full_text_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        window_ = std::make_unique<QWidget>();
        window_->resize(100, 100);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() {
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        window_.reset();
    }

    void a_location_that_looks_like_html_is_told_as_it_is() {
        const std::string location = "<b>two</b> & <img src=x> engines";
        const QString told = "<p>&lt;b&gt;two&lt;/b&gt; &amp; &lt;img src=x&gt; engines</p>";
        auto* const edited = box<edit_box>(QString("edited"), [](std::string_view) {});
        edited->show_control(location);
        QCOMPARE(tip_of(edited), told);
        auto* const read = box<read_only_box>(QString("read"), QString("read"), 2);
        read->show_control(location);
        QCOMPARE(tip_of(read), told);
        QCOMPARE(tip_of(label(location)), told);
    }

    void what_the_operator_has_typed_is_told_too() {
        auto* const edited = box<edit_box>(QString("edited"), [](std::string_view) {});
        QTest::keyClicks(edited, "a text that is too long for its box");
        QCOMPARE(tip_of(edited), QString("<p>a text that is too long for its box</p>"));
        edited->selectAll();
        QTest::keyClicks(edited, "short");
        QCOMPARE(tip_of(edited), QString());
    }

    void the_room_of_the_moment_counts() {
        auto* const edited = box<edit_box>(QString("edited"), [](std::string_view) {});
        edited->show_control("a text that is too long for its box");
        QLabel* const written = label("a text that is too long for its label");
        for (QWidget* const widget : {static_cast<QWidget*>(edited), static_cast<QWidget*>(written)}) {
            widget->resize(600, 30);
            QCOMPARE(tip_of(widget), QString());
            widget->resize(40, 30);
            QVERIFY(!tip_of(widget).isEmpty());
            widget->resize(600, 30);
            QCOMPARE(tip_of(widget), QString());
        }
    }

    void a_label_keeps_a_tool_tip_of_its_own() {
        QLabel* const written = label("short");
        written->setToolTip("Click here");
        show_on(*written, {.Caption = "another text that is too long for its label"});
        QCOMPARE(written->toolTip(), QString("Click here"));
        QCOMPARE(tip_of(written), QString("Click here"));
    }

    void a_wrapped_label_has_no_tool_tip() {
        QLabel* const written = label("a text that is too long for its label");
        written->setWordWrap(true);
        QCOMPARE(tip_of(written), QString());
    }

    void the_main_windows_click_labels_say_what_a_click_does() {
        started_window started;
        started.start("[tyxo]\r\nmax_sensors= 2\r\n");
        QCOMPARE(tip_of(started.widget("Label4", 1)), QString("A click shows the other value"));
        QCOMPARE(tip_of(started.widget("Lbl_alminhibit", 1)),
                 QString("A click restarts the alarm inhibit time"));
        started.end();
    }

  private:
    template <class Box, class... Arguments> Box* box(Arguments&&... arguments) {
        auto* const made = new Box(window_.get(), std::forward<Arguments>(arguments)...);
        made->setGeometry(0, 0, 50, 30);
        made->show();
        return made;
    }
    QLabel* label(const std::string& text) {
        auto* const made = new QLabel(window_.get());
        made->setTextFormat(Qt::PlainText);
        made->setGeometry(0, 40, 50, 30);
        show_on(*made, {.Caption = text});
        made->show();
        return made;
    }

    std::unique_ptr<QWidget> window_;
};

static const desktop_test<full_text_test> known;
#include "full_text_test.moc"
