#pragma once
// The clock labels of a time axis.

namespace tyxo {} // namespace tyxo
