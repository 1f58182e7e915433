#include "platform/desktop/strip_plot.h"
