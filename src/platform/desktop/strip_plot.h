#pragma once
// A strip chart drawn by the plot library, for the screen and for paper.

#include "platform/strip_chart.h"
#include "platform/strip_history.h"

namespace tyxo {} // namespace tyxo
