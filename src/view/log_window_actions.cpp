// What the operator can ask of the log window: menus, tool bar, keys.

#include "displays/chart.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"
#include "view/log_window.h"

#include <QAction>
#include <QDockWidget>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>

#include <cmath>

namespace tyxo::view {

namespace {

constexpr double zoom_of_key = 2;
constexpr double page_of_key = 0.8;
constexpr double small_step = 1.0 / 400; // of the picture
constexpr double large_step = 1.0 / 40;

} // namespace

QAction* log_window::add_action(const QString& name, const QString& text, const QKeySequence& key,
                                std::function<void()> act) {
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::ApplicationShortcut); // also while the Detailed Display has the keyboard
    if (!key.isEmpty())
        action->setToolTip(QString(text).remove('&').remove("...") + " (" +
                           key.toString(QKeySequence::NativeText) + ")");
    connect(action, &QAction::triggered, this, std::move(act));
    addAction(action);
    return action;
}

void log_window::make_actions() {
    auto* const bar = addToolBar(tr("Tools"));
    bar->setObjectName("tools");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);

    QMenu* const file = menuBar()->addMenu(tr("&File"));
    QAction* const open_file =
        add_action("open", tr("&Open ..."), QKeySequence::Open, [this] { ask_for_files(false); });
    file->addAction(open_file);
    file->addAction(add_action("open_folder", tr("Open &folder ..."), QKeySequence("Ctrl+Shift+O"),
                               [this] { ask_for_files(true); }));
    file->addSeparator();
    QAction* const exported =
        add_action("export", tr("&Export picture ..."), QKeySequence("Ctrl+E"), [this] { export_picture(); });
    QAction* const printed = add_action("print", tr("&Print ..."), QKeySequence::Print, [this] { print(); });
    file->addActions({exported, printed});
    file->addSeparator();
    file->addAction(add_action("close", tr("&Close"), QKeySequence("Ctrl+Q"), [this] { close(); }));
    need_lanes_ = {exported, printed};
    bar->addAction(open_file);
    bar->addSeparator();
    make_view_actions(*bar);
    make_move_actions(*bar);
    make_cycle_actions(*bar);
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(
        add_action("keys", tr("&Keys and mouse"), QKeySequence::HelpContents, [this] { show_help(); }));
    for (QAction* const action : need_lanes_)
        action->setEnabled(false);
}

void log_window::make_view_actions(QToolBar& bar) {
    QMenu* const menu = menuBar()->addMenu(tr("&View"));
    QAction* const whole =
        add_action("whole", tr("&Whole time"), QKeySequence("Ctrl+0"), [this] { show_whole(); });
    QAction* const nearer = add_action("nearer", tr("Zoom &in"), QKeySequence("+"),
                                       [this] { zoom(zoom_of_key, cursor_in_sight()); });
    QAction* const farther = add_action("farther", tr("Zoom &out"), QKeySequence("-"),
                                        [this] { zoom(1 / zoom_of_key, cursor_in_sight()); });
    nearer->setShortcuts({QKeySequence("+"), QKeySequence("Ctrl++"), QKeySequence("=")});
    menu->addActions({whole, nearer, farther});
    whole->setIconText(tr("All"));
    nearer->setIconText(QChar(0x2009) + QString("+") + QChar(0x2009));
    farther->setIconText(QChar(0x2009) + QString(QChar(0x2212)) + QChar(0x2009));
    bar.addActions({whole, nearer, farther});
    bar.addSeparator();
    need_lanes_.insert(need_lanes_.end(), {whole, nearer, farther});
    menu->addSeparator();
    for (std::size_t index = 0; index < span_choices.size(); ++index) {
        const span_choice& choice = span_choices[index];
        QAction* const action = add_action(QString("span_%1").arg(index), tr(choice.caption),
                                           QKeySequence(QString::number(index + 1)), [this, &choice] {
                                               const std::int64_t at = cursor_in_sight();
                                               move_to({at - choice.span / 2, at + choice.span / 2});
                                           });
        menu->addAction(action);
        bar.addAction(action);
        need_lanes_.push_back(action);
    }
    bar.addSeparator();
    menu->addSeparator();
    const std::vector<chart_curve> curves = chart_curves();
    for (std::size_t curve = 0; curve < curves.size(); ++curve) {
        QAction* const action =
            add_action(QString("curve_%1").arg(curve), tr("Curve %1").arg(qt_text(curves[curve].Title)),
                       QKeySequence(QString("Ctrl+%1").arg(curve + 1)), [] {});
        action->setCheckable(true);
        action->setChecked(true);
        connect(action, &QAction::toggled, this, [this, curve](bool shown) { show_curve(curve, shown); });
        menu->addAction(action);
    }
    menu->addSeparator();
    QAction* const days = add_action("days", tr("&Days beside each other"), QKeySequence("Ctrl+D"), [] {});
    days->setCheckable(true);
    connect(days, &QAction::toggled, this,
            [this](bool on) { set_order(on ? lane_order::days : lane_order::engines); });
    QAction* const follows =
        add_action("follow", tr("&Follow what is being written"), QKeySequence("F5"), [] {});
    follows->setCheckable(true);
    follows->setChecked(following_);
    connect(follows, &QAction::toggled, this, [this](bool on) {
        following_ = on;
        show_status();
    });
    menu->addActions({days, follows, findChild<QDockWidget*>("comments")->toggleViewAction()});
}

void log_window::make_move_actions(QToolBar& bar) {
    QMenu* const menu = menuBar()->addMenu(tr("&Go"));
    const auto add = [&](const char* name, const QString& text, const QKeySequence& key, auto act) {
        QAction* const action = add_action(name, text, key, act);
        menu->addAction(action);
        need_lanes_.push_back(action);
        return action;
    };
    QAction* const previous = add("previous_mark", tr("&Previous comment"), QKeySequence("P"),
                                  [this] { jump(marks_->previous(cursor_)); });
    QAction* const next =
        add("next_mark", tr("&Next comment"), QKeySequence("N"), [this] { jump(marks_->next(cursor_)); });
    menu->addSeparator();
    QAction* const cycle_before = add("previous_cycle", tr("Cycle &before"), QKeySequence("Ctrl+Left"),
                                      [this] { jump_to_cycle(false); });
    QAction* const cycle_behind =
        add("next_cycle", tr("Cycle be&hind"), QKeySequence("Ctrl+Right"), [this] { jump_to_cycle(true); });
    menu->addSeparator();
    add("page_before", tr("Page back"), QKeySequence(Qt::Key_PageUp), [this] { page(-page_of_key); });
    add("page_behind", tr("Page on"), QKeySequence(Qt::Key_PageDown), [this] { page(page_of_key); });
    add("begin", tr("Be&gin"), QKeySequence(Qt::Key_Home), [this] { jump_to(whole_.from); });
    add("end", tr("&End"), QKeySequence(Qt::Key_End), [this] { jump_to(whole_.to - 1000); });
    previous->setIconText(QString(QChar(0x25C0)) + tr(" Comment"));
    next->setIconText(tr("Comment ") + QChar(0x25B6));
    cycle_before->setIconText(QString(QChar(0x25C0)) + tr(" Cycle"));
    cycle_behind->setIconText(tr("Cycle ") + QChar(0x25B6));
    bar.addActions({previous, next, cycle_before, cycle_behind});
    bar.addSeparator();
}

void log_window::make_cycle_actions(QToolBar& bar) {
    QMenu* const menu = menuBar()->addMenu(tr("&Cycle"));
    const auto add = [&](const char* name, const QString& text, const QKeySequence& key, void (*open)()) {
        QAction* const action =
            add_action(name, text, key, [open] { desktop::run_handler(desktop::source::view, open); });
        menu->addAction(action);
        need_lanes_.push_back(action);
        return action;
    };
    QAction* const detailed =
        add("detailed", tr("&Detailed Display"), QKeySequence("D"), open_detailed_display);
    QAction* const speed = add("speed_bars", tr("&Speed difference"), QKeySequence("S"), open_speed_bars);
    QAction* const thermo =
        add("thermo_bars", tr("&Thermosignal difference"), QKeySequence("T"), open_thermo_bars);
    speed->setIconText(tr("Speed"));
    thermo->setIconText(tr("Thermosignal"));
    bar.addActions({detailed, speed, thermo});
}

void log_window::show_curve(std::size_t curve, bool shown) {
    curves_shown_[curve] = shown;
    for (const auto& one : lanes_)
        one->chart.curves[curve].Visible = shown;
    ++changes_;
    refresh_later();
}

std::int64_t log_window::cursor_in_sight() const {
    if (cursor_ >= range_.from && cursor_ <= range_.to) return cursor_;
    return range_.from + range_.span() / 2;
}

void log_window::page(double share) {
    const std::int64_t by = std::llround(share * static_cast<double>(range_.span()));
    set_cursor(std::clamp(cursor_ + by, whole_.from, whole_.to));
    move_to({range_.from + by, range_.to + by});
}

void log_window::keyPressEvent(QKeyEvent* event) {
    const double step = (event->modifiers() & Qt::ShiftModifier) != 0 ? large_step : small_step;
    const std::size_t last = lanes_.empty() ? 0 : lanes_.size() - 1;
    switch (event->key()) {
    case Qt::Key_Left:
        return step_cursor(-step);
    case Qt::Key_Right:
        return step_cursor(step);
    case Qt::Key_Up:
        if (selected_ > 0) select(selected_ - 1);
        break;
    case Qt::Key_Down:
        if (selected_ < last) select(selected_ + 1);
        break;
    default:
        return QMainWindow::keyPressEvent(event);
    }
    if (!views_.empty()) views_[selected_]->take_focus();
}

void log_window::ask_for_files(bool folder) {
    const QString filter = tr("Logs (*.xlg);;All files (*)");
    const QStringList chosen =
        folder ? QStringList(QFileDialog::getExistingDirectory(this, tr("Open folder of logs")))
               : QFileDialog::getOpenFileNames(this, tr("Open logs"), {}, filter);
    std::vector<std::string> names;
    for (const QString& name : chosen)
        if (!name.isEmpty()) names.push_back(name.toStdString());
    if (!names.empty()) open(names);
}

void log_window::show_help() {
    tell(tr("Mouse over a chart: move to read values, wheel to zoom, drag or Shift and wheel to move, "
            "double click to zoom in.\n\n"
            "Left, Right: cursor; with Shift farther, with Ctrl to the next cycle.\n"
            "Up, Down: engine.\n"
            "Page up, Page down, Home, End: move.\n"
            "+, -: zoom at the cursor; 1 to 6: span; Ctrl+0: whole time.\n"
            "N, P: next and previous comment.\n"
            "D, S, T: Detailed Display, speed and thermosignal bars of the cycle."));
}

} // namespace tyxo::view
