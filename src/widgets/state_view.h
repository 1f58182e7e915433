#pragma once
// What all views have in common: widgets that are bound to the core's state, and `show_state()`.

#include "widgets/show.h"

#include <functional>
#include <vector>

namespace tyxo {

/// A window or a part of one. It observes nothing: when a handler has ended, it compares what its widgets
/// show with the core and touches what differs.
class state_view {
  public:
    virtual ~state_view() = default;
    state_view(const state_view&) = delete;
    state_view& operator=(const state_view&) = delete;

    /// Shows the core's state as it is now. Runs up to 50 times a second.
    virtual void show_state() { show_bound(); }

  protected:
    state_view() = default;

    /// From now on the widget shows this state, by `show_on`. Both live as long as the view.
    template <class Widget, class State> void bind(Widget* widget, const State& state) {
        shows_.push_back([widget, &state] { show_on(*widget, state); });
    }
    template <class Widget, class State> void bind(Widget* widget, const State&& state) = delete;

    /// All bound widgets, in the order of their binding.
    void show_bound() const {
        for (const auto& show : shows_)
            show();
    }

  private:
    std::vector<std::function<void()>> shows_;
};

} // namespace tyxo
