#pragma once
// The clock below a strip chart on the screen: ticks and labels that move with the curves.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QString>

#include <cstdint>
#include <vector>

namespace tyxo {

/// Ticks and labels at columns of the picture, which are counted from time 0.
struct column_ticks {
    std::vector<std::int64_t> major;
    std::vector<QString> labels; ///< of the major ones; empty where there is none or no room for it
    std::vector<std::int64_t> minor;
};

/// Letters in pixels of the device.
struct times_look {
    QFont font;
    QColor print;
    QRgb major = 0;
    QRgb minor = 0;
    double ratio = 1; ///< pixels of the device to a logical one
    bool operator==(const times_look&) const = default;
};

/// Paints the ticks. Each label is laid out once and kept as a picture while it is in sight.
class strip_times {
  public:
    void set_look(const times_look& look);

    /// Onto the ground below the field, a picture whose pixels are those of the device. Column `first`
    /// stands at `left`.
    void paint(QImage& ground, const column_ticks& ticks, int left, std::int64_t first);

  private:
    struct label {
        QString text;
        QImage picture;
    };
    [[nodiscard]] QImage& picture_of(const QString& text, std::vector<label>& kept);

    times_look look_;
    std::vector<label> labels_;
};

} // namespace tyxo
