#include "link/cylinder_values.h"
