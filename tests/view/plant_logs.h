#pragma once
// A folder with logs of some engines, and the window that shows them.

#include "view/log_window.h"

#include <QTemporaryDir>
#include <QTest>

#include <fstream>
#include <iterator>
#include <string>

namespace tyxo::view {

inline constexpr std::int64_t second = 1000; // ms
inline constexpr std::int64_t minute = 60 * second;
inline constexpr std::int64_t hour = 60 * minute;
/// 2026-07-02 00:00 in log time.
inline constexpr std::int64_t midnight = 1'782'950'400 * second;

class plant_logs {
  public:
    [[nodiscard]] std::string folder() const { return folder_.path().toStdString(); }
    [[nodiscard]] std::string path(const std::string& name) const { return folder() + "/" + name; }

    /// A log with the header of six cylinders.
    std::string write(const std::string& name, const std::string& lines) const {
        std::ofstream(path(name), std::ios::binary) << header() << lines;
        return path(name);
    }
    void append(const std::string& name, const std::string& lines) const {
        std::ofstream(path(name), std::ios::binary | std::ios::app) << lines;
    }

    [[nodiscard]] static std::string clock(std::int64_t second_of_day) {
        return QTime::fromMSecsSinceStartOfDay(static_cast<int>(second_of_day * second))
            .toString("HH:mm:ss")
            .toStdString();
    }
    [[nodiscard]] static std::string record(std::int64_t at, int tsig, int rpm = 1480) {
        return "<REC1> " + clock(at) + " " + std::to_string(tsig) + " " + std::to_string(rpm) +
               " 1234 48 7 </REC1>\r\n";
    }
    [[nodiscard]] static std::string comment(std::int64_t at, const std::string& text) {
        return "<!-- " + clock(at) + " " + text + " -->\r\n";
    }
    /// A curve around this value.
    [[nodiscard]] static std::string curve(const std::string& tag, std::int64_t at, int value) {
        std::string line = "<" + tag + "> " + clock(at) + " ";
        for (int sample = 0; sample < 256; ++sample)
            line += std::to_string(value + sample % 16) + " ";
        return line + " </" + tag + ">\r\n";
    }
    /// A record a second.
    [[nodiscard]] static std::string steady(std::int64_t from, std::int64_t to, int tsig) {
        std::string lines;
        for (std::int64_t at = from; at < to; ++at)
            lines += record(at, tsig);
        return lines;
    }

  private:
    [[nodiscard]] static std::string header() {
        std::ifstream file(GOLDEN_LOG, std::ios::binary);
        std::string log{std::istreambuf_iterator<char>(file), {}};
        const std::string no_step = "<ALARMLEVEL> 320 <"; // no Evaluator has it
        log.replace(log.find(no_step), no_step.size(), "<ALARMLEVEL> 3 <");
        return log.substr(0, log.find("<LOG>\r\n") + 7);
    }

    QTemporaryDir folder_;
};

/// Until nothing moves or waits to be drawn, however slow the machine is.
inline void settle(const log_window& window) {
    for (int still = 0; still < 3; ++still) {
        QTest::qWait(10);
        if (!window.up_to_date()) still = 0;
    }
}

/// Until all is open and drawn.
inline void wait_for(const log_window& window) {
    QTRY_VERIFY_WITH_TIMEOUT(!window.opening(), 10'000);
    settle(window);
}

template <class Widget = QWidget> Widget& part(log_window& window, const char* name) {
    auto* const found = window.findChild<Widget*>(name);
    if (found == nullptr) qFatal("there is no %s", name);
    return *found;
}

inline QString values(log_window& window, int lane) {
    return part<QLabel>(window, qPrintable(QString("lane_%1_values").arg(lane))).text();
}

} // namespace tyxo::view
