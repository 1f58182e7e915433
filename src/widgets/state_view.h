#pragma once
// What all views have in common: widgets that are bound to the core's state, and `show_state()`.

#include "widgets/show.h"

#include <concepts>
#include <functional>
#include <optional>
#include <vector>

namespace tyxo {

/// A value as it was shown last.
template <class Value> class last_shown {
  public:
    /// Whether it is another value than in the call before, the first one included.
    [[nodiscard]] bool differs(const Value& now) {
        if (value_ == now) return false;
        value_ = now;
        return true;
    }

  private:
    std::optional<Value> value_;
};

/// What nobody but the state changes on the screen: as long as it is the same there is nothing to look at. A
/// check box or a list is compared itself, since the operator changes it too; painted controls compare what
/// they have.
template <class State>
concept only_shown = std::same_as<State, Label> || std::same_as<State, Frame> || std::same_as<State, Command>;

/// A window or a part of one. It observes nothing: when a handler has ended, it compares what its widgets
/// show with the core and touches what differs.
class state_view {
  public:
    virtual ~state_view() = default;
    state_view(const state_view&) = delete;
    state_view& operator=(const state_view&) = delete;

    /// Shows the core's state as it is now. Runs behind every handler, and mostly finds nothing to do.
    virtual void show_state() { show_bound(); }

  protected:
    state_view() = default;

    /// From now on the widget shows this state, by `show_on`. Both live as long as the view.
    template <class Widget, class State> void bind(Widget* widget, const State& state) {
        if constexpr (only_shown<State>) {
            shows_.push_back([widget, &state, last = last_shown<State>()]() mutable {
                if (last.differs(state)) show_on(*widget, state);
            });
        } else {
            shows_.push_back([widget, &state] { show_on(*widget, state); });
        }
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
