#pragma once
// The shortest history that still goes wrong.

#include "history.h"

#include <functional>

namespace months {

/// Leaves out acts, larger pieces first, as long as `fails` holds; `fails` is asked at most `most` times.
[[nodiscard]] history shrunk(history whole, const std::function<bool(const history&)>& fails, int most = 400);

} // namespace months
