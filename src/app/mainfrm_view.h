#pragma once
// The main window.

#include "app/windows_view.h"
#include "basics/per_channel.h"
#include "basics/types.h"
#include "displays/layout.h"
#include "platform/desktop/handlers.h"
#include "widgets/state_view.h"

#include <QMainWindow>
#include <QTimer>

#include <array>
#include <functional>
#include <string>

class QAction;
class QGroupBox;
class QLabel;
class QMenu;
class QRadioButton;

namespace tyxo {

class click_label;
class panel_view;
class text_status_view;

/// Shows the state of the core when handlers have ended. It passes commands on and changes nothing by itself.
class mainfrm_view : public QMainWindow, public state_view {
    Q_OBJECT

  public:
    mainfrm_view();

    /// Shows what has changed; runs by itself behind every handler.
    void show_state() override;

    /// The desktop session is about to end; see `query_end_session`. False keeps the session.
    bool end_session(const std::function<bool()>& may_ask);

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void make_menu();
    QAction* add_entry(QMenu* menu, const char* name, const QString& caption);
    void make_client();
    void make_resolution(QWidget* client);
    void make_tab_order();
    void open_on_screen();
    /// What nobody may see late.
    struct urgent {
        std::uint64_t status_text; ///< characters ever appended
        bool alert;
        std::array<bool, std::size_t{3} * channel_count> lamps;
        bool operator==(const urgent&) const = default;
    };

    void show_soon(desktop::source from);
    [[nodiscard]] static urgent urgent_now();
    void show_client();
    [[nodiscard]] print_room measured_print() const;
    void place();

    per_channel<panel_view*> panels_{};
    text_status_view* Text_status = nullptr;
    QGroupBox* frame_resolution = nullptr;
    std::array<QRadioButton*, 4> opt_res{};
    std::array<QLabel*, 4> Lbl_opt_res{};
    click_label* Lbl_TY_logger = nullptr;
    QLabel* status_panel_ = nullptr;
    secondary_windows windows_;
    last_shown<std::string> caption_;
    last_shown<std::string> status_;
    last_shown<std::array<Label, 4>> resolutions_;
    QTimer pending_; // runs while a change waits to be shown
    last_shown<urgent> urgent_;
};

} // namespace tyxo
