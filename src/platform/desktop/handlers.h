#pragma once
// How the desktop runs the system's handlers: one at a time to its end, failures caught, the windows told.

#include <functional>

namespace tyxo::desktop {

/// Where an event comes from.
enum class source {
    device,    ///< a timer or a socket
    port,      ///< a serial port: many times a second, and most often with nothing to see
    operator_, ///< a menu, a button, a click, the start
    view       ///< the same, for what only changes what is seen, and for the confirmation of an alarm
};

/// Runs a handler. A failure that it does not catch itself goes to the debug output. A command of the
/// operator that arrives while a tick waits in the event loop runs when that tick has ended, in order: a
/// dialog opened inside the tick would hold up all later ones. A command that itself waits for the operator
/// holds up nothing, neither ticks nor further commands.
///
/// A view command runs at once, also inside a tick that waits and before commands that are kept. So it asks
/// nothing, and leaves alone what the gateway and the other commands write: no order between them matters. A
/// box with OK alone is no question, since inside a tick it does not wait.
void run_handler(source from, std::function<void()> handler);

/// Something to connect to a signal: it runs the handler as a command of the operator.
[[nodiscard]] std::function<void()> on_command(std::function<void()> handler);

/// The same for a view command.
[[nodiscard]] std::function<void()> on_view_command(std::function<void()> handler);

/// True while the handler of a serial port or a timer runs, or a view command inside one; commands of the
/// operator are kept until it ends.
[[nodiscard]] bool inside_device_handler();

/// Lets the event loop run inside a handler.
void yield();

/// The same until something has happened, at most for a time. The first wait of a handler also lets the
/// windows show what it has changed so far.
void wait(int milliseconds);

/// Called when a handler has ended, with where it came from, and when one begins to wait: the state may have
/// changed. A widget's own event may wait beneath a command, as a button for its click.
void on_handled(std::function<void(source)> hook);

/// Held events: see `hold_events`.
[[nodiscard]] bool events_held();

/// Delivers what serial ports received while events were held.
void deliver_waiting_bytes();

} // namespace tyxo::desktop
