#include "gateway/modbus.h"

namespace tyxo {

bool transaction_open() {
    return false;
}

void FC16MB_write(i32 /*address*/, i16 /*count*/) {}

void FC3MB_read(i32 /*address*/, i16 /*count*/) {}

void WaitForWinsock() {}

void Winsock_A_DataArrival(i32 /*bytesTotal*/) {}

void Timer1_tick() {}

} // namespace tyxo
