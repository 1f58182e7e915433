#pragma once
// All windows beside the main window.

#include <memory>
#include <vector>

class QWidget;

namespace tyxo {

class state_view;

/// Makes the windows as children of the main window, the alert alone for itself, and keeps them true to the
/// core.
class secondary_windows {
  public:
    explicit secondary_windows(QWidget* parent);
    ~secondary_windows();
    secondary_windows(const secondary_windows&) = delete;
    secondary_windows& operator=(const secondary_windows&) = delete;

    void show_state();

  private:
    template <class Window, class... Arguments> Window* add(Arguments&&... arguments);

    std::vector<std::unique_ptr<state_view>> windows_;
};

} // namespace tyxo
