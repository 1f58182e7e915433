#include "basics/failure.h"

namespace tyxo::failures {

void overflow() {
    throw failure("Overflow");
}
void division_by_zero() {
    throw failure("Division by zero");
}
void subscript() {
    throw failure("Subscript out of range");
}
void type_mismatch() {
    throw failure("Type mismatch");
}

} // namespace tyxo::failures
