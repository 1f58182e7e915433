#pragma once
// The X server's own screen saver and power saving, on a connection of its own: whatever becomes of it, the
// windows' connection is not touched.

struct xcb_connection_t;

namespace tyxo::desktop {

class x_screen {
  public:
    /// May wait for the server as long as that takes to answer.
    x_screen();
    ~x_screen();
    x_screen(const x_screen&) = delete;
    x_screen& operator=(const x_screen&) = delete;

    /// Neither screen saver nor power saving begin while they are suspended; the server takes that back when
    /// the connection ends.
    void suspend_saver(bool on);

    void wake();

  private:
    void send();

    xcb_connection_t* server_;
    bool has_saver_ = false;
    bool has_power_saving_ = false;
};

} // namespace tyxo::desktop
