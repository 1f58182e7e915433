// What the log window is made of.

#include "view/log_window.h"

#include <QDockWidget>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QVBoxLayout>

#include <cmath>

namespace tyxo::view {

namespace {

constexpr int movement_time = 140; // ms
constexpr int follow_tick = 1000;  // ms

} // namespace

void log_window::make_parts() {
    make_page();
    marks_ = new marks_view(this);
    auto* const dock = new QDockWidget(tr("Comments"), this);
    dock->setObjectName("comments");
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    dock->setWidget(marks_);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {130}, Qt::Vertical);
    make_status_bar();
    connect_parts();
    make_movement();
}

/// The lanes below each other, and the bar that moves through their time.
void log_window::make_page() {
    page_ = new QWidget;
    column_ = new QVBoxLayout(page_);
    column_->setContentsMargins(0, 0, 0, 0);
    column_->setSpacing(0);
    nothing_ = new QLabel(page_);
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
}

void log_window::make_status_bar() {
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
}

void log_window::connect_parts() {
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
    follow_timer_.start(follow_tick);
}

void log_window::make_movement() {
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

} // namespace tyxo::view
