#pragma once
// A drawing surface as plain state: the lines and texts on it, in the order in which they were drawn.

#include "controls/controls.h"

#include <string>
#include <string_view>
#include <vector>

namespace tyxo {

struct stroke {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    colour ForeColor = 0;
    bool operator==(const stroke&) const = default;
};

/// A text with its upper left corner at (x, y).
struct canvas_text {
    double x = 0;
    double y = 0;
    std::string text;
    colour ForeColor = 0;
    bool operator==(const canvas_text&) const = default;
};

/// Lengths are the surface's own units; x to the right, y downwards.
struct canvas {
    double ScaleWidth = 0;
    double ScaleHeight = 0;
    colour ForeColor = 0; ///< of what is drawn next
    double CurrentX = 0;  ///< where the next text goes
    double CurrentY = 0;
    std::vector<stroke> strokes;
    std::vector<canvas_text> texts;
    unsigned passes = 0; ///< counts up with every change, so that a view sees it at a glance

    void clear() {
        strokes.clear();
        texts.clear();
        ++passes;
    }
    void line(double x1, double y1, double x2, double y2) {
        strokes.push_back({x1, y1, x2, y2, ForeColor});
        ++passes;
    }
    void print(std::string_view text) {
        texts.push_back({CurrentX, CurrentY, std::string(text), ForeColor});
        ++passes;
    }
};

} // namespace tyxo
