#pragma once
// Tool tips of labels that have no room: decided when the tip is asked for, with the room of that moment.

class QLabel;

namespace tyxo {

/// From now on a tool tip tells the label's whole text while that is cut off. A tool tip of its own stays.
void tell_full_text(QLabel& label);

} // namespace tyxo
