"""A Modbus TCP server by pymodbus: pymodbus_server.py PORT.

Lines on standard input: "get ADDRESS COUNT" is answered with "registers ...", "set ADDRESS VALUE..." with
"done".
"""

import logging
import socket
import sys
import threading
import time
import types

# Serial lines are not used here; the packages for them are only recommended, and imported all the same.
for name in ("serial", "serial_asyncio"):
    sys.modules.setdefault(name, types.ModuleType(name)).create_serial_connection = None

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server import StartTcpServer

HOLDING = 3  # function code by which the context finds its block of registers


def wait_until_it_listens(port):
    while True:
        try:
            socket.create_connection(("127.0.0.1", port)).close()
            return
        except ConnectionRefusedError:
            time.sleep(0.02)


def main(port):
    logging.disable()  # it calls the end of every connection an error
    unit = ModbusSlaveContext(hr=ModbusSequentialDataBlock(0, [0] * 65536), zero_mode=True)
    context = ModbusServerContext(slaves={1: unit}, single=False)
    server = threading.Thread(target=StartTcpServer, daemon=True,
                              kwargs={"context": context, "address": ("127.0.0.1", port)})
    server.start()
    wait_until_it_listens(port)
    print(f"listening on port {port}", flush=True)
    for line in sys.stdin:
        verb, address, *rest = line.split()
        if verb == "get":
            print("registers", *unit.getValues(HOLDING, int(address), int(rest[0])), flush=True)
        else:
            unit.setValues(HOLDING, int(address), [int(word) for word in rest])
            print("done", flush=True)


if __name__ == "__main__":
    main(int(sys.argv[1]))
