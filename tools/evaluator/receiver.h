// The receiving end of an Evaluator's line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::evaluator_sim {

/// Puts frames together from bytes in any portions.
class Receiver {
  public:
    /// The frames that became complete with these bytes, from ":" to the last check digit, without CR LF.
    /// Bytes outside a frame are dropped; a ":" begins anew.
    std::vector<std::string> take(std::string_view bytes);

    /// A frame longer than this is given up.
    static constexpr size_t longest_frame = 1024;

  private:
    std::string frame_;
    bool open_ = false;
    bool cr_seen_ = false;
};

} // namespace tyxo::evaluator_sim
