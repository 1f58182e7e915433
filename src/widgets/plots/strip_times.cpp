#include "widgets/plots/strip_times.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo {

namespace {

// Logical pixels.
constexpr double major_length = 5;
constexpr double minor_length = 3;
constexpr double label_top = 8;

void paint_tick(QImage& ground, std::int64_t left, int length, int width, QRgb color) {
    for (int y = 0; y < std::min(length, ground.height()); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(ground.scanLine(y));
        for (std::int64_t x = std::max<std::int64_t>(left, 0); x < left + width && x < ground.width(); ++x)
            line[x] = color;
    }
}

} // namespace

void strip_times::set_look(const times_look& look) {
    if (look == look_) return;
    look_ = look;
    labels_.clear();
}

QImage& strip_times::picture_of(const QString& text, std::vector<label>& kept) {
    const auto known = std::ranges::find(labels_, text, &label::text);
    if (known != labels_.end() && !known->picture.isNull()) {
        kept.push_back(std::move(*known));
        return kept.back().picture;
    }
    const QFontMetrics metrics(look_.font);
    QImage picture(metrics.horizontalAdvance(text) + 2, metrics.height(),
                   QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(look_.font);
    painter.setPen(look_.print);
    painter.drawText(1, metrics.ascent(), text);
    painter.end();
    kept.push_back({text, std::move(picture)});
    return kept.back().picture;
}

void strip_times::paint(QImage& ground, const column_ticks& ticks, int left, std::int64_t first) {
    const auto pixels = [this](double length) { return static_cast<int>(std::lround(length * look_.ratio)); };
    const int width = std::max(pixels(1), 1);
    for (const std::int64_t tick : ticks.minor)
        paint_tick(ground, left + tick - first, pixels(minor_length), width, look_.minor);
    for (const std::int64_t tick : ticks.major)
        paint_tick(ground, left + tick - first, pixels(major_length), width, look_.major);

    std::vector<label> kept;
    QPainter painter(&ground);
    for (std::size_t index = 0; index < ticks.labels.size(); ++index) {
        if (ticks.labels[index].isEmpty()) continue;
        const QImage& picture = picture_of(ticks.labels[index], kept);
        const auto middle = static_cast<int>(left + ticks.major[index] - first);
        painter.drawImage(middle - picture.width() / 2, pixels(label_top), picture);
    }
    labels_ = std::move(kept);
}

} // namespace tyxo
