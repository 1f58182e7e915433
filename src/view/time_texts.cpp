#include "view/time_texts.h"

#include "platform/clock.h"

namespace tyxo::view {

QString clock_text(std::int64_t ms) {
    return QString::fromStdString(time_text(local_at(ms)));
}

QString moment_text(std::int64_t ms) {
    const local_time moment = local_at(ms);
    const auto two = [](i32 number) { return QString("%1").arg(number, 2, 10, QChar('0')); };
    return QString("%1-%2-%3 ").arg(moment.year).arg(two(moment.month), two(moment.day)) + clock_text(ms);
}

QString length_text(std::int64_t ms) {
    constexpr std::int64_t second = 1000;
    constexpr std::int64_t minute = 60 * second;
    constexpr std::int64_t hour = 60 * minute;
    constexpr std::int64_t day = 24 * hour;
    const auto both = [ms](std::int64_t large, const char* name, std::int64_t small, const char* part) {
        QString text = QString("%1 %2").arg(ms / large).arg(name);
        if (const std::int64_t rest = ms % large / small; rest != 0)
            text += QString(" %1 %2").arg(rest).arg(part);
        return text;
    };
    if (ms >= 2 * day) return both(day, "days", hour, "h");
    if (ms >= hour) return both(hour, "h", minute, "min");
    if (ms >= minute) return both(minute, "min", second, "s");
    return QString("%1 s").arg(static_cast<double>(ms) / second, 0, 'g', 3);
}

} // namespace tyxo::view
