#include "dialogs/setup/frmsetup_rows_view.h"

#include "platform/desktop/handlers.h"
#include "widgets/edit_box.h"
#include "widgets/read_only_box.h"
#include "widgets/show.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleOption>
#include <QStylePainter>

namespace tyxo {

namespace {

constexpr int block_gap = 14;
constexpr int column_gap = 8;
constexpr int option_gap = 24;
constexpr int scroll_letters = 24; // the length of the scroll bar
constexpr int port_letters = 9;    // "COM256" and the arrow

enum column { heading, port, location, path, type_code, alarm_1, alarm_2, test_signal };

/// A column of text boxes. It has room for half of the letters at least; what is left over goes by the
/// letters.
struct text_column {
    column place;
    const char* array;
    const char* caption;
    int letters;
    per_channel<TextBox> frmSetup::window::*boxes;
    void (*change)(i16, std::string_view);
};

constexpr std::array<text_column, 5> text_columns{{
    {location, "Text_sensor_loc", "Sensor location", 16, &frmSetup::window::Text_sensor_loc,
     frmSetup::Text_sensor_loc_change},
    {path, "Text_logfile_path", "Logfile path", 32, &frmSetup::window::Text_logfile_path,
     frmSetup::Text_logfile_path_change},
    {type_code, "Text_type_code", "engine type code", 13, &frmSetup::window::Text_type_code,
     frmSetup::Text_type_code_change},
    {alarm_1, "Text_alm1", "Alarmrel 1", 11, &frmSetup::window::Text_alm1, frmSetup::Text_alm1_change},
    {alarm_2, "Text_alm2", "Alarmrel 2", 11, &frmSetup::window::Text_alm2, frmSetup::Text_alm2_change},
}};

int width_of(const QWidget& widget, int letters) {
    return letters * widget.fontMetrics().averageCharWidth();
}

QLabel* add_caption(QWidget& parent, const QString& text) {
    auto* const label = new QLabel(text, &parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// Scroll bars do not show by themselves where the keyboard is.
class focused_scroll_bar : public QScrollBar {
  public:
    using QScrollBar::QScrollBar;

  protected:
    void paintEvent(QPaintEvent* event) override {
        QScrollBar::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

} // namespace

/// The wheel turns what has the focus, and nothing that the pointer only passes over: there it goes to what
/// lies around.
class wheel_filter : public QObject {
  public:
    using QObject::QObject;

    void guard(QWidget& control) {
        control.setFocusPolicy(Qt::StrongFocus); // the wheel gives it no focus either
        control.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
        event->ignore(); // so that it goes to the parent
        return true;
    }
};

settings_page::settings_page(QWidget* parent)
    : QWidget(parent), wheel_(new wheel_filter(this)), frame_comport(new QGroupBox(this)),
      Opt_diffmode(this, "Opt_diffmode", frmSetup::Opt_diffmode_click),
      Opt_event(this, "Opt_event", frmSetup::Opt_event_click) {
    auto* const page = new QVBoxLayout(this);
    page->setSpacing(block_gap);
    Lbl_locked = add_caption(*this, tr("The settings are locked. Stop all channels first."));
    Lbl_locked->setObjectName("Lbl_locked");
    page->addWidget(Lbl_locked);
    frame_comport->setObjectName("frame_comport");
    bind(frame_comport, frmSetup::state.frame_comport);
    bind(&Opt_diffmode, frmSetup::state.Opt_diffmode);
    bind(&Opt_event, frmSetup::state.Opt_event);
    page->addWidget(frame_comport);
    auto* const blocks = new QVBoxLayout(frame_comport);
    blocks->setSpacing(block_gap);
    make_rows(*blocks);
    make_count(*blocks);
    make_diffmode(*blocks);
    make_events(*blocks);
    make_chart_boxes(*page);
    page->addStretch();
}

edit_box* settings_page::add_text(const QString& name, const QString& spoken, const TextBox& text,
                                  std::function<void(std::string_view)> change) {
    auto* const box = new edit_box(this, name, std::move(change));
    box->setAccessibleName(spoken);
    bind(box, text);
    return box;
}

QPushButton* settings_page::add_browse(const QString& name, const QString& spoken, const Command& control,
                                       std::function<void()> command) {
    auto* const button = new QPushButton(this);
    button->setObjectName(name);
    button->setAccessibleName(spoken);
    connect(button, &QPushButton::clicked, this, desktop::on_command(std::move(command)));
    bind(button, control);
    return button;
}

QCheckBox* settings_page::add_check(const QString& name, const CheckBox& control,
                                    std::function<void()> command) {
    auto* const check = new QCheckBox(this);
    check->setObjectName(name);
    connect(check, &QCheckBox::clicked, this, desktop::on_command(std::move(command)));
    bind(check, control);
    return check;
}

void settings_page::make_rows(QVBoxLayout& place) {
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(column_gap);
    place.addLayout(grid);
    grid->addWidget(add_caption(*frame_comport, "Comport"), 0, port);
    for (const text_column& text : text_columns) {
        grid->addWidget(add_caption(*frame_comport, text.caption), 0, text.place);
        grid->setColumnStretch(text.place, text.letters);
    }
    grid->addWidget(add_caption(*frame_comport, "Testsignal"), 0, test_signal);
    for (i16 row = 0; row < channel_count; ++row)
        make_row(row, *grid);
}

void settings_page::make_row(i16 row, QGridLayout& grid) {
    const QString sensor = QString("Sensor %1").arg(row + 1);
    const auto spoken = [&](const char* caption) { return sensor + ": " + caption; };
    const int line = row + 1;
    grid.addWidget(add_caption(*frame_comport, sensor), line, heading);

    auto* const list = new QComboBox(this);
    list->setObjectName(element("Select_com", row));
    list->setAccessibleName(spoken("Comport"));
    list->view()->setAccessibleName(spoken("Comports"));
    list->setMinimumWidth(width_of(*list, port_letters) +
                          list->style()->pixelMetric(QStyle::PM_IndicatorWidth));
    connect(list, &QComboBox::activated, this, [row](int entry) {
        desktop::run_handler(desktop::source::view, [row, entry] {
            frmSetup::Select_com_click(row, static_cast<std::size_t>(entry));
        });
    });
    wheel_->guard(*list);
    bind(list, frmSetup::state.Select_com[row]);
    grid.addWidget(list, line, port);

    for (const text_column& text : text_columns) {
        edit_box* const box =
            add_text(element(text.array, row), spoken(text.caption), (frmSetup::state.*text.boxes)[row],
                     [change = text.change, row](std::string_view typed) { change(row, typed); });
        box->setMinimumWidth(width_of(*box, text.letters / 2));
        if (text.place != path) {
            grid.addWidget(box, line, text.place);
            continue;
        }
        auto* const with_button = new QHBoxLayout;
        with_button->setSpacing(column_gap / 2);
        with_button->addWidget(box, 1);
        with_button->addWidget(add_browse(element("cmd_browse_path", row), spoken("Browse logfile path"),
                                          frmSetup::state.cmd_browse_path[row],
                                          [row] { frmSetup::cmd_browse_path_click(row); }));
        grid.addLayout(with_button, line, text.place);
    }

    QCheckBox* const check = add_check(element("Check_tst", row), frmSetup::state.Check_tst[row],
                                       [row] { frmSetup::Check_tst_click(row); });
    check->setAccessibleName(spoken("Testsignal"));
    grid.addWidget(check, line, test_signal, Qt::AlignCenter);
}

void settings_page::make_count(QVBoxLayout& place) {
    auto* const line = new QHBoxLayout;
    place.addLayout(line);
    const QString caption = "Number of connected sensors";
    QLabel* const label = add_caption(*frame_comport, caption);
    line->addWidget(label);
    auto* const Text_num_sensors = new read_only_box(this, "Text_num_sensors", caption + " in digits", 2);
    bind(Text_num_sensors, frmSetup::state.Text_num_sensors);
    Text_num_sensors->setFixedWidth(Text_num_sensors->minimumWidth());
    Text_num_sensors->setAlignment(Qt::AlignCenter);
    line->addWidget(Text_num_sensors);
    auto* const scroll_max_commport = new focused_scroll_bar(Qt::Horizontal, this);
    bind(scroll_max_commport, frmSetup::state.scroll_max_commport);
    scroll_max_commport->setObjectName("scroll_max_commport");
    scroll_max_commport->setAccessibleName(caption);
    wheel_->guard(*scroll_max_commport);
    scroll_max_commport->setPageStep(1);
    scroll_max_commport->setInvertedControls(false); // the right arrow key means more
    scroll_max_commport->setFixedHeight(Text_num_sensors->sizeHint().height());
    scroll_max_commport->setFixedWidth(width_of(*this, scroll_letters));
    label->setBuddy(scroll_max_commport);
    connect(scroll_max_commport, &QScrollBar::valueChanged, this, [](int value) {
        desktop::run_handler(desktop::source::view,
                             [value] { frmSetup::scroll_max_commport_change(static_cast<i16>(value)); });
    });
    line->addWidget(scroll_max_commport);
    line->addStretch();
}

void settings_page::make_diffmode(QVBoxLayout& place) {
    auto* const line = new QHBoxLayout;
    line->setSpacing(option_gap);
    place.addLayout(line);
    for (const char* const caption :
         {"Difference diagrams in engine geometric order ", "Difference diagrams in engine firing order"}) {
        QRadioButton* const option = Opt_diffmode.add(this);
        option->setText(caption);
        line->addWidget(option);
    }
    line->addStretch();
}

void settings_page::make_events(QVBoxLayout& place) {
    auto* const Frame_events = new QGroupBox(this);
    Frame_events->setObjectName("Frame_events");
    bind(Frame_events, frmSetup::state.Frame_events);
    place.addWidget(Frame_events);
    auto* const line = new QHBoxLayout(Frame_events);
    line->setSpacing(column_gap);
    for (const char* const caption : {"disabled", "enabled"}) {
        QRadioButton* const option = Opt_event.add(this);
        option->setText(caption);
        option->setAccessibleName(qt_text(frmSetup::state.Frame_events.Caption) + ": " + caption);
        line->addWidget(option);
        line->addSpacing(option_gap - column_gap);
    }
    const QString caption = "TY system  all events logfile path";
    QLabel* const label = add_caption(*Frame_events, caption);
    line->addWidget(label);
    edit_box* const box = add_text("Text_evtlogfile_path", caption, frmSetup::state.Text_evtlogfile_path,
                                   frmSetup::Text_evtlogfile_path_change);
    label->setBuddy(box);
    line->addWidget(box, 1);
    line->addWidget(add_browse("cmd_browse_evtpath", "Browse " + caption, frmSetup::state.cmd_browse_evtpath,
                               frmSetup::cmd_browse_evtpath_click));
}

void settings_page::make_chart_boxes(QVBoxLayout& place) {
    XY_Chart = new QGroupBox(this);
    XY_Chart->setObjectName("XY_Chart");
    place.addWidget(XY_Chart);
    auto* const line = new QHBoxLayout(XY_Chart);
    line->setSpacing(option_gap);
    const auto add = [&](const char* name, const char* caption, const CheckBox& control, void (*command)()) {
        QCheckBox* const check = add_check(name, control, command);
        check->setText(caption);
        line->addWidget(check);
    };
    add("th_a", "Thermosignal (%A_DC)", frmSetup::state.th_a, frmSetup::th_a_click);
    add("TvmV", "Thermovoltage in mV", frmSetup::state.TvmV, frmSetup::TvmV_click);
    add("th_eff", "Thermosignal eff. (%A_DC)", frmSetup::state.th_eff, frmSetup::th_eff_click);
    add("th_eff_AC", "Thermosignal eff. (%A_AC)", frmSetup::state.th_eff_AC, frmSetup::th_eff_AC_click);
    line->addStretch();
}

void settings_page::show_state() {
    XY_Chart->setTitle(qt_text(frmSetup::state.XY_Chart.Caption)); // its ampersand marks the mnemonic
    XY_Chart->setEnabled(frmSetup::state.XY_Chart.Enabled);
    show_on(*Lbl_locked, !frmSetup::state.frame_comport.Enabled);
    show_bound();
}

} // namespace tyxo

#include "moc_frmsetup_rows_view.cpp"
