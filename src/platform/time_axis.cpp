#include "platform/time_axis.h"
