// Runs one of the tests of the widgets and of the machine's devices, by its name.
//
//     build/release/desktop_tests NAME [ARGUMENT OF QT TEST]...

#include "desktop/desktop_test.h"

#include <QTextStream>

using namespace tyxo;

int main(int argc, char** argv) {
    const auto test = argc > 1 ? desktop_tests().find(argv[1]) : desktop_tests().end();
    if (test == desktop_tests().end()) {
        QTextStream out(stderr);
        out << "usage: desktop_tests NAME [ARGUMENT OF QT TEST]..., where NAME is one of\n";
        for (const auto& [name, run] : desktop_tests())
            out << "    " << name << '\n';
        return 2;
    }
    argv[1] = argv[0]; // Qt Test sees a program of its own
    return test->second(argc - 1, argv + 1);
}
