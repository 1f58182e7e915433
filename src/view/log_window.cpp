#include "view/log_window.h"

#include "displays/bar_diagram_view.h"
#include "displays/frmdetailedpic_view.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"
#include "view/plant_settings.h"
#include "view/time_texts.h"
#include "widgets/screen_room.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo::view {

namespace {

constexpr int loading_tick = 30;      // ms
constexpr int follow_tick = 1000;     // ms
constexpr int movement_time = 140;    // ms
constexpr int scroll_parts = 100'000; // of the time bar
constexpr std::int64_t longest_span = 400LL * 86'400'000;

} // namespace

log_window::log_window(std::vector<std::string> names) {
    curves_shown_.fill(true);
    setObjectName("log_window");
    setWindowTitle(tr("Tyxo Log View"));
    setAcceptDrops(true);
    make_parts();
    make_actions();
    resize(QSize(1280, 960).boundedTo(screen_room(*this)));
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

void log_window::make_parts() {
    page_ = new QWidget;
    column_ = new QVBoxLayout(page_);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(0);
    nothing_ = new QLabel(tr("Open a log or a folder of logs, or drop it here."), page_);
    nothing_->setObjectName("nothing");
    nothing_->setAlignment(Qt::AlignCenter);
    column_->addWidget(nothing_);
    area_ = new QScrollArea;
    area_->setWidget(page_);
    area_->setWidgetResizable(true);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    time_bar_ = new QScrollBar(Qt::Horizontal);
    time_bar_->setObjectName("time_bar");
    time_bar_->setAccessibleName(tr("Time"));
    auto* const middle = new QWidget;
    auto* const column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    connect(area_->verticalScrollBar(), &QScrollBar::valueChanged, this, &log_window::refresh_later);
    column->addWidget(area_, 1);
    column->addWidget(time_bar_);
    setCentralWidget(middle);

    marks_ = new marks_view(this);
    auto* const dock = new QDockWidget(tr("Comments"), this);
    dock->setObjectName("comments");
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    dock->setWidget(marks_);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {150}, Qt::Vertical);

    status_ = new QLabel;
    status_->setObjectName("status");
    span_ = new QLabel;
    span_->setObjectName("span");
    progress_ = new QProgressBar;
    progress_->setObjectName("progress");
    progress_->setAccessibleName(tr("Opening"));
    progress_->setRange(0, 1000);
    progress_->setMaximumWidth(240);
    stop_ = new QPushButton(tr("Stop"));
    stop_->setObjectName("stop");
    statusBar()->addWidget(status_, 1);
    statusBar()->addPermanentWidget(progress_);
    statusBar()->addPermanentWidget(stop_);
    statusBar()->addPermanentWidget(span_);
    progress_->hide();
    stop_->hide();

    connect(stop_, &QPushButton::clicked, this, [this] {
        if (loader_) loader_->stop();
    });
    connect(marks_, &marks_view::jumped, this, [this](qint64 time, int lane) {
        select(static_cast<std::size_t>(lane));
        jump_to(time);
    });
    connect(time_bar_, &QScrollBar::valueChanged, this, [this](int value) {
        const double share = static_cast<double>(value) / scroll_parts;
        const std::int64_t from = whole_.from + std::llround(share * static_cast<double>(whole_.span()));
        show_range({from, from + range_.span()});
    });
    refresh_timer_.setSingleShot(true);
    connect(&refresh_timer_, &QTimer::timeout, this, &log_window::refresh);
    connect(&loading_timer_, &QTimer::timeout, this, &log_window::take_opened);
    connect(&follow_timer_, &QTimer::timeout, this, &log_window::follow);
    movement_.setDuration(movement_time);
    movement_.setStartValue(0.0);
    movement_.setEndValue(1.0);
    movement_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&movement_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        const double share = value.toDouble();
        const auto between = [share](std::int64_t from, std::int64_t to) {
            return from + std::llround(share * static_cast<double>(to - from));
        };
        show_range({between(moved_from_.from, moved_to_.from), between(moved_from_.to, moved_to_.to)});
    });
}

void log_window::open(const std::vector<std::string>& names) {
    for (const std::string& name : names)
        if (std::ranges::find(names_, name) == names_.end()) names_.push_back(name);
    if (loader_) return; // it is looked at again when this has ended
    std::vector<std::string> files = logs_named(names_);
    std::erase_if(
        files, [this](const std::string& file) { return std::ranges::find(opened_, file) != opened_.end(); });
    if (files.empty()) {
        if (logs_.empty() && !names.empty())
            tell(tr("There is no log in %1.").arg(QString::fromStdString(names.front())));
        return;
    }
    opened_.insert(opened_.end(), files.begin(), files.end());
    if (logs_.empty()) load_plant_settings(files.front());
    loader_ = std::make_unique<log_loader>(std::move(files));
    loading_timer_.start(loading_tick);
    progress_->setValue(0);
    progress_->setVisible(logs_.empty());
    stop_->setVisible(logs_.empty());
    show_status();
}

void log_window::take_opened() {
    const std::int64_t total = std::max<std::int64_t>(loader_->total(), 1);
    progress_->setValue(static_cast<int>(1000 * loader_->done() / total));
    if (!loader_->ended()) return;
    loading_timer_.stop();
    const std::unique_ptr<log_loader> ended = std::move(loader_);
    progress_->hide();
    stop_->hide();
    const bool first = logs_.empty();
    const bool at_the_end = range_.to >= whole_.to;
    log_list more = ended->take_logs();
    // One that has just been begun is looked at again.
    std::erase_if(more, [this](const auto& log) {
        if (!log->any()) std::erase(opened_, log->name());
        return !log->any();
    });
    logs_.insert(logs_.end(), more.begin(), more.end());
    if (!more.empty()) make_lanes();
    if (first)
        show_range(whole_);
    else if (at_the_end)
        show_range({whole_.to - range_.span(), whole_.to});
    if (first) set_cursor(whole_.from + whole_.span() / 2);
    if (!ended->failures().empty()) {
        QString words;
        for (const std::string& why : ended->failures())
            words += QString::fromStdString(why) + '\n';
        tell(tr("Some logs could not be read:\n\n%1").arg(front_of(words, 2000)));
    }
    if (ended->stopped()) tell(tr("Opening was stopped; %1 logs are open.").arg(logs_.size()));
    follow_timer_.start(follow_tick);
    refresh();
    if (first && !views_.empty()) views_.front()->take_focus();
    open({}); // what came meanwhile
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
        auto* const view = new lane_view(*lanes_[index], QString("lane_%1").arg(index), page_);
        connect(view, &lane_view::pointed, this, &log_window::set_cursor);
        connect(view, &lane_view::dragged, this, &log_window::shift_by);
        connect(view, &lane_view::zoomed, this, &log_window::zoom);
        connect(view, &lane_view::scrolled, this,
                [this](double pages) { shift_by(std::llround(pages * static_cast<double>(range_.span()))); });
        connect(view, &lane_view::appeared, this, &log_window::refresh_later);
        connect(view, &lane_view::chosen, this, [this, index] { select(index); });
        connect(view, &lane_view::scope_clicked, this,
                [this] { desktop::run_handler(desktop::source::view, open_detailed_display); });
        column_->addWidget(view, 1);
        views_.push_back(view);
    }
    selected_ = std::min(selected_, lanes_.empty() ? 0 : lanes_.size() - 1);
    marks_->show_lanes(lanes_);
    for (QAction* const action : need_lanes_)
        action->setEnabled(!lanes_.empty());
    ++changes_;
    setWindowTitle(lanes_.empty() ? tr("Tyxo Log View")
                                  : tr("%1 - Tyxo Log View")
                                        .arg(moment_text(whole_.from).left(10) +
                                             (whole_.span() > span_choices[3].span
                                                  ? tr(" to ") + moment_text(whole_.to - 1).left(10)
                                                  : QString())));
}

void log_window::set_order(lane_order order) {
    order_ = order;
    make_lanes();
    show_range(whole_);
    set_cursor(std::clamp(cursor_, whole_.from, whole_.to));
}

time_range log_window::limited(time_range range) const {
    const std::int64_t span = std::clamp(range.span(), shortest_span, std::max(longest_span, shortest_span));
    range.to = range.from + span;
    // Half a picture may be empty on either side.
    const std::int64_t room = span / 2;
    const std::int64_t least = whole_.from - room;
    const std::int64_t most = std::max(whole_.to + room - span, least);
    range.from = std::clamp(range.from, least, most);
    return {range.from, range.from + span};
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
    } else if (lanes_.empty()) {
        status_->setText(tr("Nothing is open"));
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
    const auto show = [this](auto& window, bool open, auto make) {
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

void log_window::follow() {
    if (!following_ || lanes_.empty()) return;
    if (++follow_ticks_ % 5 == 0) open({}); // new files of the folders
    if (loader_) return;
    const bool at_the_end = range_.to >= whole_.to;
    bool grown = false;
    for (const auto& one : lanes_) {
        const xlg::log_seconds before = one->line.last();
        bool more = false;
        if (const auto why = attempt([&] { more = one->line.read_on(); }))
            statusBar()->showMessage(QString::fromStdString(*why), 10'000);
        if (more) one->kept.forget_from(before);
        grown = grown || more;
    }
    if (!grown) return;
    marks_->show_lanes(lanes_);
    const std::int64_t before = whole_.to;
    whole_ = whole_range(lanes_);
    ++changes_;
    if (at_the_end && range_.span() < before - whole_.from)
        show_range({range_.from + whole_.to - before, range_.to + whole_.to - before});
    else if (at_the_end)
        show_range({range_.from, whole_.to});
    refresh_later();
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

void log_window::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void log_window::dropEvent(QDropEvent* event) {
    std::vector<std::string> names;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) names.push_back(url.toLocalFile().toStdString());
    if (!names.empty()) open(names);
}

} // namespace tyxo::view

#include "moc_log_window.cpp"
