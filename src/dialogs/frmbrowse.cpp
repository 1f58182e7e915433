#include "dialogs/frmbrowse.h"

namespace tyxo {

void browse(std::function<void()> /*done*/) {}
void frmbrowse_Ok_click(std::string_view /*path*/) {}
void frmbrowse_unload() {}

} // namespace tyxo
