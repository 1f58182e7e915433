#include "dialogs/frmalert_view.h"

#include "dialogs/frmalert.h"
#include "dialogs/frmalert_keyboard_view.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/parent_window.h"
#include "widgets/dialog.h"
#include "widgets/picture_view.h"
#include "widgets/screen_room.h"
#include "widgets/show.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QWindow>

namespace tyxo {

namespace {

constexpr int alert_picture_side = 150;
constexpr double corner = 8;
constexpr int from_top = 40; // pixels from the screen's upper edge: most dialogs stay in sight below
constexpr int button_width = 220;
constexpr QRgb dark_plate = 0xFF101010;
constexpr QRgb light_plate = 0xFFFFFFFF;

/// The longest line: 25 of the widest letters, and an alarm.
const char* const longest_line = "WWWWWWWWWWWWWWWWWWWWWWWWW  Mainalarm DC";

/// A widget keeps its place while it is hidden, so that the window does not change its size with an alarm.
void keep_place(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace

/// A label on a plate of its own. The core paints red letters on a red window; nobody could read them. Red
/// letters therefore stand on a black plate and black ones on a white plate: 4.9 to 1 and 21 to 1.
class alert_plate : public QLabel {
  public:
    alert_plate(QWidget* parent, const QString& name) : QLabel(parent) {
        setObjectName(name);
        setTextFormat(Qt::PlainText); // an ampersand in a location is a letter
        setMargin(dialog_gap / 2);
        keep_place(*this);
    }

    void show_control(const Label& control) {
        show_on(static_cast<QLabel&>(*this), control);
        QPalette colours = palette();
        colours.setColor(QPalette::WindowText, qt_colour(control.ForeColor));
        colours.setColor(QPalette::Window,
                         QColor(control.ForeColor == alert_colour::red ? dark_plate : light_plate));
        if (colours != palette()) setPalette(colours);
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        {
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(palette().window());
            painter.drawRoundedRect(rect(), corner, corner);
        }
        QLabel::paintEvent(event);
    }
};

namespace {

/// A click goes on while the keyboard goes back to where the operator types.
class confirm_button : public QPushButton {
  public:
    using QPushButton::QPushButton;

  protected:
    void focusOutEvent(QFocusEvent* event) override {
        const bool clicking = isDown() && QGuiApplication::mouseButtons() != Qt::NoButton;
        QPushButton::focusOutEvent(event);
        if (clicking) setDown(true);
    }
};

} // namespace

// No minimise button: an alert that beeps and is not seen helps nobody.
frmalert_view::frmalert_view()
    : QDialog(nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                           Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      announcer_(new announcer(this)) {
    setObjectName("FrmAlert");
    setWindowTitle(qt_text(FrmAlert::state.form.Caption)); // has its name from the start
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(2 * dialog_gap, 2 * dialog_gap, 2 * dialog_gap, 2 * dialog_gap);
    rows->setSpacing(dialog_gap);
    make_headline(*rows);
    make_lines(*rows);
    CmdAck = new confirm_button(this);
    CmdAck->setObjectName("CmdAck");
    CmdAck->setAccessibleName(tr("Confirm the main alarm"));
    bind(CmdAck, FrmAlert::state.CmdAck);
    CmdAck->setMinimumWidth(button_width);
    CmdAck->setDefault(true);
    connect(CmdAck, &QPushButton::clicked, this, desktop::on_view_command(FrmAlert::CmdAck_click));
    rows->addWidget(CmdAck, 0, Qt::AlignHCenter);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    show_ground();
    show_bound();
    ensurePolished();
    fit_screen();
    winId(); // made now, so that the first alarm finds its window ready
    keyboard_ = new alert_keyboard(*windowHandle(), this);
}

/// Letters of one size for all lines: as large as the screen has room for the longest.
void frmalert_view::fit_screen() {
    const QSize room = screen_room(*this) - QSize(0, from_top);
    for (const double share : {1.0, 0.9, 0.8, 0.7, 0.6, 0.5, 0.4}) {
        set_letters(share);
        layout()->activate();
        if (layout()->sizeHint().boundedTo(room) == layout()->sizeHint()) break;
    }
}

void frmalert_view::set_letters(double share) {
    Lbl_attention->setFont(headline_font(font(), 4 * share));
    Lbl_relay->setFont(headline_font(font(), 2 * share));
    CmdAck->setFont(headline_font(font(), 1.5 * share));
    const QFont letters = headline_font(font(), 1.3 * share);
    const int widest = QFontMetrics(letters).horizontalAdvance(longest_line) + 2 * dialog_gap;
    for (std::size_t index = 0; index < lbl_inst.size(); ++index) {
        lbl_inst[index]->setFont(letters);
        lbl_inst1[index]->setFont(letters);
        lbl_inst1[index]->setMinimumWidth(widest);
    }
}

void frmalert_view::make_headline(QBoxLayout& rows) {
    auto* const row = new QHBoxLayout;
    auto* const words = new QVBoxLayout;
    row->setSpacing(dialog_gap);
    words->setSpacing(dialog_gap);
    rows.addLayout(row);
    const auto picture = [&](const char* name, const char* drawing, const QString& meaning,
                             const bool& visible) {
        auto* const image = new picture_view(this, name, drawing, alert_picture_side);
        image->setAccessibleName(meaning);
        image->setFixedSize(alert_picture_side, alert_picture_side);
        keep_place(*image);
        bind(image, visible);
        return image;
    };
    auto* const Image1 = picture("Image1", "alarm_bell", tr("Alarm bell"), FrmAlert::state.Image1_visible);
    auto* const Image2 =
        picture("Image2", "alarm_engine", tr("Engine in danger"), FrmAlert::state.Image2_visible);
    Lbl_attention = new alert_plate(this, "Lbl_attention");
    Lbl_relay = new alert_plate(this, "Lbl_relay");
    bind(Lbl_attention, FrmAlert::state.Lbl_attention);
    bind(Lbl_relay, FrmAlert::state.Lbl_relay);
    for (alert_plate* label : {Lbl_attention, Lbl_relay}) {
        label->setAlignment(Qt::AlignCenter);
        words->addWidget(label);
    }
    row->addWidget(Image1);
    row->addLayout(words, 1);
    row->addWidget(Image2);
}

void frmalert_view::make_lines(QBoxLayout& rows) {
    auto* const grid = new QGridLayout;
    grid->setSpacing(dialog_gap / 2);
    grid->setColumnStretch(1, 1);
    rows.addLayout(grid);
    for (int index = 0; index < channel_count; ++index) {
        lbl_inst[index] = new alert_plate(this, element("lbl_inst", index));
        lbl_inst1[index] = new alert_plate(this, element("lbl_inst1", index));
        bind(lbl_inst[index], FrmAlert::state.lbl_inst[index]);
        bind(lbl_inst1[index], FrmAlert::state.lbl_inst1[index]);
        grid->addWidget(lbl_inst[index], index, 0);
        grid->addWidget(lbl_inst1[index], index, 1);
    }
}

void frmalert_view::show_ground() {
    QPalette colours = palette();
    colours.setColor(QPalette::Window, qt_colour(FrmAlert::state.BackColor));
    if (colours != palette()) setPalette(colours);
}

/// Heard wherever the keyboard is: it may stay with somebody who types.
void frmalert_view::say_new_lines() {
    QStringList lines;
    for (std::size_t index = 0; index < said_.size(); ++index) {
        QString line;
        if (FrmAlert::state.lbl_inst1[index].Visible)
            line = lbl_inst[index]->text() + ' ' + lbl_inst1[index]->text();
        if (line == said_[index]) continue;
        said_[index] = line;
        if (!line.isEmpty()) lines.push_back(line);
    }
    if (!lines.isEmpty()) announcer_->say(Lbl_relay->text() + ' ' + lines.join(". "));
}

void frmalert_view::show_state() {
    keyboard_->leave_locked_window();
    if (!FrmAlert::state.form.Visible) {
        said_ = {};
        if (isVisible()) hide();
        return;
    }
    const QString caption = qt_text(FrmAlert::state.form.Caption);
    if (windowTitle() != caption) setWindowTitle(caption);
    show_ground();
    show_bound();
    if (!isVisible()) {
        appear();
    } else if (FrmAlert::state.BackColor == alert_colour::red) {
        keep_in_front();
    }
    if (keyboard_->is_due()) take_keyboard();
    say_new_lines();
}

void frmalert_view::appear() {
    keyboard_->want();
    // What Qt::WA_ShowWithoutActivating says to a window that is made anew; this one is made once.
    windowHandle()->setProperty("_q_showWithoutActivating", keyboard_->operator_types());
    CmdAck->setFocus();
    const QWidget* const main_window = dialog_parent();
    const QRect area = (main_window != nullptr ? main_window : this)->screen()->availableGeometry();
    adjustSize();
    move(area.left() + (area.width() - width()) / 2, area.top() + from_top);
    raise(); // before it is shown: some window managers give the keyboard to whatever asks to be in front
    keyboard_->uncovered();
    show();
}

/// Where no window manager keeps it on top, a dialog that opened later covers it.
void frmalert_view::keep_in_front() {
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    if (keyboard_->covered() && QApplication::activePopupWidget() == nullptr) {
        keyboard_->uncovered();
        raise();
    }
}

void frmalert_view::take_keyboard() {
    keyboard_->taken();
    raise();
    activateWindow();
    CmdAck->setFocus();
}

void frmalert_view::reject() {
    desktop::run_handler(desktop::source::view, FrmAlert::unload);
}

void frmalert_view::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
    desktop::run_handler(desktop::source::view, FrmAlert::activate);
    keyboard_->arrived();
}

} // namespace tyxo

#include "moc_frmalert_view.cpp"
