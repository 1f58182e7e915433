#pragma once
// "xlg view": logs as charts of any span, with the cycle under the cursor.

#include "view/lane.h"
#include "view/lane_view.h"
#include "view/log_loader.h"
#include "view/marks_view.h"

#include <QMainWindow>
#include <QTimer>
#include <QVariantAnimation>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class QAction;
class QKeySequence;
class QLabel;
class QProgressBar;
class QPushButton;
class QScrollArea;
class QScrollBar;
class QToolBar;
class QVBoxLayout;

namespace tyxo {
class bar_diagram_view;
class frmdetailedpic_view;
} // namespace tyxo

namespace tyxo::view {

/// A choice of the window for its span.
struct span_choice {
    const char* caption;
    std::int64_t span; ///< ms
};
inline constexpr std::array<span_choice, 6> span_choices{{{"2 min", 120'000},
                                                          {"15 min", 900'000},
                                                          {"1 h", 3'600'000},
                                                          {"24 h", 86'400'000},
                                                          {"7 days", 604'800'000},
                                                          {"30 days", 2'592'000'000}}};

inline constexpr std::int64_t shortest_span = 2000; // ms

/// All times are those of the window, in ms.
class log_window : public QMainWindow {
    Q_OBJECT

    static constexpr int scroll_parts = 100'000; ///< of the time bar

  public:
    /// Opens these files and folders, if there are any.
    explicit log_window(const std::vector<std::string>& names);
    ~log_window() override;

    /// Nothing moves or waits to be drawn.
    [[nodiscard]] bool up_to_date() const {
        return !refresh_timer_.isActive() && movement_.state() != QAbstractAnimation::Running;
    }
    [[nodiscard]] bool opening() const { return loader_ != nullptr; }
    [[nodiscard]] const std::vector<std::unique_ptr<lane>>& lanes() const { return lanes_; }
    [[nodiscard]] const time_range& range() const { return range_; }
    [[nodiscard]] std::int64_t cursor() const { return cursor_; }
    [[nodiscard]] std::size_t selected() const { return selected_; }

    /// Opens more files and folders, beside those that are open.
    void open(const std::vector<std::string>& names);
    /// Shows this time at once, as far as there are logs.
    void show_range(time_range range);
    /// The same in a short movement.
    void move_to(time_range range);
    void set_cursor(std::int64_t cursor);
    void select(std::size_t lane);
    void set_order(lane_order order);
    /// Asks for the machine's free bytes, in the place of `free_memory`.
    void ask_memory_of(std::function<std::int64_t()> free) { free_memory_ = std::move(free); }
    /// Writes the charts as they are, by the file's ending; one that is there is replaced.
    void export_to(const std::string& file);
    /// Reads what was written since, and opens what has come into the folders.
    void follow();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    // log_window_actions.cpp
    void make_actions();
    void make_view_actions(QToolBar& bar);
    void make_move_actions(QToolBar& bar);
    void make_cycle_actions(QToolBar& bar);
    QAction* add_action(const QString& name, const QString& text, const QKeySequence& key,
                        std::function<void()> act);
    void ask_for_files(bool folder);
    void show_help();
    void show_curve(std::size_t curve, bool shown);
    void page(double share);
    [[nodiscard]] std::int64_t cursor_in_sight() const;

    // log_window_parts.cpp
    void make_parts();
    void make_page();
    void make_status_bar();
    void connect_parts();
    void make_movement();

    // log_window_pictures.cpp
    void print();
    void export_picture();

    // log_window_open.cpp
    [[nodiscard]] std::size_t count_of_marks() const;
    bool has_room_for(const std::vector<std::string>& files);
    void take_opened();
    void tell_failures(const log_loader& ended);

    void make_lanes();
    lane_view* make_view(std::size_t index);
    void show_title();
    void show_status();
    void show_scroll_bar();
    void refresh_later();
    void refresh();
    void zoom(double factor, std::int64_t at);
    void shift_by(std::int64_t ms);
    void step_cursor(double share);
    void jump_to(std::int64_t time);
    void jump(const std::optional<shown_mark>& mark);
    void jump_to_cycle(bool forward);
    void show_whole() { move_to(whole_); }
    void show_other_windows();
    void keep_selected_in_sight();
    void tell(const QString& what);
    [[nodiscard]] time_range limited(const time_range& range) const;

    std::vector<std::string> names_; ///< as they were given: a folder is looked through again
    log_list logs_;
    std::vector<std::string> opened_;
    std::function<std::int64_t()> free_memory_ = free_memory;
    bool ask_again_ = false; ///< more was asked for while some were being opened
    std::unique_ptr<log_loader> loader_;
    lane_order order_ = lane_order::engines;
    std::vector<std::unique_ptr<lane>> lanes_;
    std::vector<lane_view*> views_;
    std::array<bool, strip_curves> curves_shown_{};
    time_range whole_{0, 60'000};
    time_range range_{0, 60'000};
    std::int64_t cursor_ = 0;
    std::size_t selected_ = 0;
    bool following_ = true;
    unsigned changes_ = 0; ///< counts what changes beside range and cursor
    int follow_ticks_ = 0;

    QWidget* page_;
    QVBoxLayout* column_;
    QScrollArea* area_;
    QScrollBar* time_bar_;
    marks_view* marks_;
    QLabel* nothing_;
    QLabel* status_;
    QLabel* span_;
    QProgressBar* progress_;
    QPushButton* stop_;
    QTimer refresh_timer_;
    QTimer loading_timer_;
    QTimer follow_timer_;
    QVariantAnimation movement_;
    time_range moved_from_;
    time_range moved_to_;
    std::vector<QAction*> need_lanes_; ///< actions without a use while nothing is open
    std::unique_ptr<frmdetailedpic_view> detailed_;
    std::array<std::unique_ptr<bar_diagram_view>, 2> bars_;
};

} // namespace tyxo::view
