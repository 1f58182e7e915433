#pragma once
// Whom a box of the window system belongs to.

class QWidget;

namespace tyxo {

/// The window that a message box or a dialog of the window system belongs to: the dialog in front, else the
/// main window, none before it is shown. It is locked meanwhile, and all windows that belong to it; the alert
/// is not.
[[nodiscard]] QWidget* dialog_parent();

} // namespace tyxo
