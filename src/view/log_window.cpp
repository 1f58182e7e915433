#include "view/log_window.h"

#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic_view.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"
#include "view/time_texts.h"
#include "widgets/screen_room.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo::view {

namespace {

constexpr std::int64_t longest_span = 400LL * 86'400'000;

} // namespace

log_window::log_window(const std::vector<std::string>& names) {
    curves_shown_.fill(true);
    setObjectName("log_window");
    setWindowTitle(tr("Tyxo Log View"));
    setAcceptDrops(true);
    make_parts();
    make_actions();
    resize(QSize(1600, 1000).boundedTo(screen_room(*this)));
    // Its check boxes and sizes take effect with the next curve, which is this one again.
    desktop::on_handled([this](desktop::source) {
        ++changes_;
        refresh_later();
    });
    show_status();
    if (!names.empty()) open(names);
}

log_window::~log_window() {
    desktop::on_handled({});
    marks_->clear();
}

void log_window::make_lanes() {
    marks_->clear();
    for (lane_view* const view : views_)
        delete view;
    views_.clear();
    lanes_ = lanes_of(logs_, order_);
    whole_ = whole_range(lanes_);
    nothing_->setVisible(lanes_.empty());
    for (std::size_t index = 0; index < lanes_.size(); ++index) {
        for (std::size_t curve = 0; curve < strip_curves; ++curve)
            lanes_[index]->chart.curves[curve].Visible = curves_shown_[curve];
        lane_view* const view = make_view(index);
        column_->addWidget(view, 1);
        views_.push_back(view);
    }
    selected_ = std::min(selected_, lanes_.empty() ? 0 : lanes_.size() - 1);
    marks_->show_lanes(lanes_);
    for (QAction* const action : need_lanes_)
        action->setEnabled(!lanes_.empty());
    ++changes_;
    show_title();
}

lane_view* log_window::make_view(std::size_t index) {
    auto* const view = new lane_view(*lanes_[index], QString("lane_%1").arg(index), page_);
    connect(view, &lane_view::pointed, this, &log_window::set_cursor);
    connect(view, &lane_view::dragged, this, &log_window::shift_by);
    connect(view, &lane_view::zoomed, this, &log_window::zoom);
    connect(view, &lane_view::scrolled, this,
            [this](double pages) { shift_by(std::llround(pages * static_cast<double>(range_.span()))); });
    connect(view, &lane_view::appeared, this, &log_window::refresh_later);
    connect(view, &lane_view::chosen, this, [this, index] { select(index); });
    connect(view, &lane_view::scope_clicked, this, desktop::on_view_command(open_detailed_display));
    return view;
}

/// The days in sight of all logs.
void log_window::show_title() {
    const QString first = moment_text(whole_.from).left(10);
    const QString last = moment_text(whole_.to - 1).left(10);
    QString title = tr("Tyxo Log View");
    if (!lanes_.empty()) title = (first == last ? first : tr("%1 to %2").arg(first, last)) + " - " + title;
    setWindowTitle(title);
}

void log_window::set_order(lane_order order) {
    order_ = order;
    make_lanes();
    show_range(whole_);
    set_cursor(std::clamp(cursor_, whole_.from, whole_.to));
}

time_range log_window::limited(const time_range& range) const {
    const std::int64_t span = std::clamp(range.span(), shortest_span, std::max(longest_span, shortest_span));
    // Half a picture may be empty on either side.
    const std::int64_t room = span / 2;
    const std::int64_t least = whole_.from - room;
    const std::int64_t most = std::max(whole_.to + room - span, least);
    const std::int64_t from = std::clamp(range.from, least, most);
    return {from, from + span};
}

void log_window::show_range(time_range range) {
    range = limited(range);
    if (range == range_) return;
    range_ = range;
    refresh_later();
}

void log_window::move_to(time_range range) {
    movement_.stop();
    moved_from_ = range_;
    moved_to_ = limited(range);
    movement_.start();
}

void log_window::zoom(double factor, std::int64_t at) {
    const time_range from = movement_.state() == QAbstractAnimation::Running ? moved_to_ : range_;
    const double span =
        std::clamp(static_cast<double>(from.span()) / factor, static_cast<double>(shortest_span),
                   1.5 * static_cast<double>(whole_.span()) + shortest_span);
    const double share =
        static_cast<double>(at - from.from) / static_cast<double>(std::max<std::int64_t>(from.span(), 1));
    const std::int64_t begin = at - std::llround(share * span);
    move_to({begin, begin + std::llround(span)});
}

void log_window::shift_by(std::int64_t ms) {
    movement_.stop();
    show_range({range_.from + ms, range_.to + ms});
}

void log_window::set_cursor(std::int64_t cursor) {
    if (cursor == cursor_) return;
    cursor_ = cursor;
    refresh_later();
}

/// By a share of the picture, at least a second; the picture follows.
void log_window::step_cursor(double share) {
    std::int64_t by = std::llround(share * static_cast<double>(range_.span()));
    if (std::abs(by) < 1000) by = share < 0 ? -1000 : 1000;
    const std::int64_t to = std::clamp(cursor_ + by, whole_.from, whole_.to);
    set_cursor(to);
    if (to < range_.from || to > range_.to) shift_by(by);
}

void log_window::jump_to(std::int64_t time) {
    set_cursor(time);
    const std::int64_t span = range_.span();
    const std::int64_t rim = span / 10;
    if (time >= range_.from + rim && time <= range_.to - rim) return;
    move_to({time - span / 2, time + span - span / 2});
}

void log_window::jump(const std::optional<shown_mark>& mark) {
    if (!mark) return;
    select(mark->lane);
    jump_to(mark->time);
}

void log_window::jump_to_cycle(bool forward) {
    if (lanes_.empty()) return;
    const lane& one = *lanes_[selected_];
    const xlg::log_seconds second = (cursor_ + one.shift) / 1000;
    std::optional<xlg::log_seconds> found;
    const auto failed =
        attempt([&] { found = forward ? one.line.next_curve(second) : one.line.previous_curve(second); });
    if (failed) statusBar()->showMessage(QString::fromStdString(*failed), 10'000);
    if (found) jump_to(*found * 1000 - one.shift);
}

void log_window::select(std::size_t lane) {
    if (lane >= lanes_.size() || lane == selected_) return;
    selected_ = lane;
    ++changes_;
    keep_selected_in_sight();
    refresh_later();
}

void log_window::keep_selected_in_sight() {
    area_->ensureWidgetVisible(views_[selected_], 0, 0);
}

void log_window::refresh_later() {
    if (!refresh_timer_.isActive()) refresh_timer_.start(0);
}

/// What differs, as far as it is in sight. The selected lane comes last, since the other windows show its
/// cycle.
void log_window::refresh() {
    refresh_timer_.stop();
    std::optional<std::string> failed;
    for (std::size_t index = 0; index < views_.size(); ++index) {
        views_[index]->set_selected(index == selected_ && views_.size() > 1);
        const bool out_of_sight = isVisible() && views_[index]->visibleRegion().isEmpty();
        if (index == selected_ || out_of_sight) continue;
        if (auto why = views_[index]->show(range_, cursor_, changes_, false)) failed = std::move(why);
    }
    if (!views_.empty())
        if (auto why = views_[selected_]->show(range_, cursor_, changes_, true)) failed = std::move(why);
    if (failed) statusBar()->showMessage(QString::fromStdString(*failed), 10'000);
    marks_->show_time(cursor_);
    show_scroll_bar();
    show_status();
    show_other_windows();
}

void log_window::show_scroll_bar() {
    const QSignalBlocker quiet(time_bar_);
    const double whole = static_cast<double>(std::max<std::int64_t>(whole_.span(), 1));
    const int page =
        static_cast<int>(std::min(1.0, static_cast<double>(range_.span()) / whole) * scroll_parts);
    time_bar_->setRange(0, scroll_parts - page);
    time_bar_->setPageStep(std::max(page, 1));
    time_bar_->setSingleStep(std::max(page / 10, 1));
    time_bar_->setValue(
        static_cast<int>(static_cast<double>(range_.from - whole_.from) / whole * scroll_parts));
    time_bar_->setEnabled(!lanes_.empty());
}

void log_window::show_status() {
    if (loader_ && logs_.empty()) {
        status_->setText(tr("Opening %1 MB ...").arg(loader_->total() / 1'000'000));
        nothing_->setText(tr("The logs are being opened."));
    } else if (lanes_.empty()) {
        status_->setText(tr("Nothing is open"));
        nothing_->setText(tr("Open a log or a folder of logs, or drop it here."));
    } else {
        std::int64_t left_out = 0;
        for (const auto& log : logs_)
            left_out += log->left_out();
        QString text =
            tr("%1 logs, %2 to %3").arg(logs_.size()).arg(moment_text(whole_.from), moment_text(whole_.to));
        if (left_out > 0) text += tr(", %1 damaged lines left out").arg(left_out);
        if (following_) text += tr(", following");
        status_->setText(text);
    }
    span_->setText(lanes_.empty() ? QString() : tr("In sight: %1").arg(length_text(range_.span())));
}

/// The windows of the program are shown as its main window would.
void log_window::show_other_windows() {
    const auto show = [](auto& window, bool open, auto make) {
        if (!window && open) {
            window = make();
            window->setWindowModality(Qt::NonModal); // the cursor moves on beside it
        }
        if (window) window->show_state();
    };
    show(detailed_, frmdetailedpic::state.form.Visible,
         [this] { return std::make_unique<frmdetailedpic_view>(this); });
    show(bars_[0], frmbarpic::state.form.Visible,
         [this] { return std::make_unique<bar_diagram_view>(frmbarpic::state, "frmbarpic", this); });
    show(bars_[1], Frmbarpic2::state.form.Visible,
         [this] { return std::make_unique<bar_diagram_view>(Frmbarpic2::state, "Frmbarpic2", this); });
}

void log_window::tell(const QString& what) {
    auto* const box = new QMessageBox(QMessageBox::Information, windowTitle(), what, QMessageBox::Ok, this);
    box->setObjectName("message_box");
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}

void log_window::closeEvent(QCloseEvent* event) {
    if (loader_) loader_->stop();
    detailed_.reset();
    for (auto& bars : bars_)
        bars.reset();
    event->accept();
}

} // namespace tyxo::view

#include "moc_log_window.cpp"
