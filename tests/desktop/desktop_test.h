#pragma once
// How a Qt Test class gets its place in the program desktop_tests, which runs one test in a process.

#include <QApplication>
#include <QTest>

#include <cstring>
#include <map>

namespace tyxo {

struct name_order {
    bool operator()(const char* left, const char* right) const { return std::strcmp(left, right) < 0; }
};

/// Runs a test with the arguments of Qt Test.
using test_run = int (*)(int argc, char** argv);

/// All tests by their names.
inline std::map<const char*, test_run, name_order>& desktop_tests() {
    static std::map<const char*, test_run, name_order> tests;
    return tests;
}

/// Makes a test known by the name of its class; without windows if its application is a QCoreApplication.
template <class Test, class Application = QApplication> struct desktop_test {
    desktop_test() { desktop_tests()[Test::staticMetaObject.className()] = run; }

  private:
    static int run(int argc, char** argv) {
        const Application application(argc, argv);
        Application::setAttribute(Qt::AA_Use96Dpi);
        Test test;
        return QTest::qExec(&test, argc, argv);
    }
};

} // namespace tyxo
