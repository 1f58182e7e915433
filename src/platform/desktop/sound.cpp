// Sound on Qt.

#include "platform/sound.h"

#include <QApplication>

namespace tyxo {

void PlaySoundA(std::string_view /*name*/, i32 /*flags*/) {}

void GetShortPathNameA(std::string_view /*name*/, std::string& /*buffer*/) {}

void beep() {
    QApplication::beep();
}

} // namespace tyxo
