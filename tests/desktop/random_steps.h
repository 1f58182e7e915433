#pragma once
// Random but repeatable changes, for the tests that compare what many of them leave with a fresh picture.

#include "desktop/control_pictures.h"

#include <QFont>
#include <QImage>
#include <QTest>

#include <array>
#include <cstddef>
#include <random>

namespace tyxo {

class random_steps {
  public:
    explicit random_steps(unsigned seed) : numbers_(seed) {}

    /// From 0 to below the bound, the same on every machine.
    int below(int bound) { return static_cast<int>(numbers_() % static_cast<unsigned>(bound)); }

    template <class Value, std::size_t Count> Value one_of(const Value (&values)[Count]) {
        return values[below(static_cast<int>(Count))];
    }

    /// Usual lengths, and now and then none that anybody expects.
    double wild() {
        const std::array strange{infinite, -infinite, not_a_number, 1e300, -1e300, 1e9, -1e9, 4e5, -0.0};
        const auto which = static_cast<std::size_t>(below(3 * static_cast<int>(strange.size())));
        return which < strange.size() ? strange[which] : below(3200) / 10.0 - 20;
    }

    QFont font() {
        QFont font(one_of({"DejaVu Sans", "DejaVu Serif", "DejaVu Sans Mono"}));
        font.setPointSize(8 + below(10));
        font.setItalic(below(4) == 0);
        return font;
    }

  private:
    std::mt19937 numbers_;
};

/// For the `_data` of a test that runs with each of so many seeds. Under the sanitizers, which look for wrong
/// memory and not for wrong pixels, a third of them do.
inline void add_seeds(unsigned count) {
#ifdef __has_feature
#if __has_feature(address_sanitizer)
    count = (count + 2) / 3;
#endif
#endif
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= count; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

/// Pixel for pixel; where they are not, it says where.
inline bool same_pixels(const QImage& one, const QImage& other) {
    const QImage left = one.convertToFormat(QImage::Format_RGB32);
    const QImage right = other.convertToFormat(QImage::Format_RGB32);
    if (left.size() != right.size()) {
        qInfo() << "sizes" << left.size() << right.size();
        return false;
    }
    QRect differ;
    for (int y = 0; y < left.height(); ++y)
        for (int x = 0; x < left.width(); ++x)
            if (left.pixel(x, y) != right.pixel(x, y)) differ |= QRect(x, y, 1, 1);
    if (!differ.isEmpty()) qInfo() << "they differ in" << differ;
    return differ.isEmpty();
}

} // namespace tyxo
