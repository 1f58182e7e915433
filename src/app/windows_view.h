#pragma once
// All windows beside the main window.

#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace tyxo {

class state_view;
struct Form;

/// Makes each window when it is opened for the first time, as a child of the main window, and keeps it true
/// to the core. The alert, a window for itself, is there from the start: it waits for nothing.
class secondary_windows {
  public:
    explicit secondary_windows(QWidget* parent);
    ~secondary_windows();
    secondary_windows(const secondary_windows&) = delete;
    secondary_windows& operator=(const secondary_windows&) = delete;

    void show_state();

  private:
    struct row {
        const Form& form; ///< says whether the window is open
        std::function<std::unique_ptr<state_view>()> make;
        std::unique_ptr<state_view> window; ///< once it was open
        bool shown;                         ///< is not up to date while it is not
    };

    template <class Window, class... Arguments> void add(const Form& form, Arguments... arguments);

    std::vector<row> windows_;
    std::unique_ptr<state_view> alert_;
};

} // namespace tyxo
