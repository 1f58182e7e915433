#pragma once
// The controls of the windows as plain state: what each one shows, nothing about how it is painted. A view
// compares a control with what it showed last and paints what differs.

#include "basics/types.h"

#include <array>
#include <string>
#include <vector>

namespace tyxo {

/// A colour: red in the low byte, then green, then blue.
using colour = i32;

[[nodiscard]] constexpr colour rgb(i32 red, i32 green, i32 blue) {
    return red + 256 * (green + 256 * blue);
}

struct Label {
    std::string Caption;
    colour ForeColor = 0;
    bool Visible = true;
    bool operator==(const Label&) const = default;
};

/// A group frame with its caption.
struct Frame {
    std::string Caption;
    bool Visible = true;
    bool Enabled = true;
    bool operator==(const Frame&) const = default;
};

/// A window beside the main window. The desktop shows it while `Visible` holds.
struct Form {
    std::string Caption;
    bool Loaded = false; ///< its state is set up; a loaded form may be hidden
    bool Visible = false;
    bool operator==(const Form&) const = default;

    void show() { Loaded = Visible = true; }
    void unload() { Loaded = Visible = false; }
};

/// A push button or a menu entry.
struct Command {
    std::string Caption;
    bool Visible = true;
    bool Enabled = true;
    bool operator==(const Command&) const = default;
};

/// A text box. What is typed and what is shown are texts in Windows-1252.
struct TextBox {
    std::string Text;
    bool Enabled = true;
    bool operator==(const TextBox&) const = default;
};

/// A check box: 1 is checked, 0 is not.
struct CheckBox {
    i16 Value = 0;
    bool Enabled = true;
    bool operator==(const CheckBox&) const = default;
};

/// A list of which one entry can be chosen, by its index; -1 for none.
struct ComboBox {
    std::vector<std::string> List;
    i32 ListIndex = -1;
    bool Enabled = true;
    bool operator==(const ComboBox&) const = default;
};

/// A scroll bar.
struct ScrollBar {
    i16 Min = 0;
    i16 Max = 0;
    i16 Value = 0;
    bool Enabled = true;
    bool operator==(const ScrollBar&) const = default;
};

/// A round lamp.
struct iLedRoundX {
    bool Active = false;
    colour ActiveColor = rgb(0, 255, 0);
    colour InactiveColor = rgb(0, 64, 0);
    bool operator==(const iLedRoundX&) const = default;
};

/// A needle on an arc of three coloured sections, which end at `SectionEnd`(0), `SectionEnd`(1) and
/// `PositionMax`. All positions are in the unit of the value that is shown.
struct iAngularGaugeX {
    double Position = 0;
    double PositionMin = 0;
    double PositionMax = 1000;
    std::array<double, 2> SectionEnd{};
    std::array<colour, 3> SectionColor{};
    i32 SectionCount = 1;
    i32 ArcStartDegrees = 230; ///< counter-clockwise from the right, where the scale begins
    i32 ArcRangeDegrees = 280; ///< clockwise from there to its end
    i32 TickMajorCount = 11;
    i32 TickMinorCount = 1;
    std::string Label1Text;
    std::string Label2Text;
    bool operator==(const iAngularGaugeX&) const = default;
};

/// An upright bar with coloured sections, a pointer, and a second pointer at the highest position so far. All
/// positions are in the unit of the value that is shown.
struct iLinearGaugeX {
    double Position = 0;
    double PositionMin = 0;
    double PositionMax = 100;
    std::array<double, 2> SectionEnd{};
    std::array<colour, 2> SectionColor{};
    i32 SectionCount = 1;
    i32 TickMajorCount = 6;
    i32 PointerSize = 8;
    colour PointerColor = 0;
    bool ShowMaxPointer = false;
    colour MaxPointerColor = 0;
    double MaxPosition = 0; ///< kept by `set_position`
    bool operator==(const iLinearGaugeX&) const = default;

    void set_position(double value) {
        Position = value;
        if (value > MaxPosition) MaxPosition = value;
    }
};

/// A number with a fixed count of decimals and its unit.
struct iAnalogDisplayX {
    double Value = 0;
    i32 Precision = 0;
    std::string UnitsText;
    colour ForeColor = 0;
    bool operator==(const iAnalogDisplayX&) const = default;
};

/// Seven-segment digits. `DigitCount` is the least number of digits shown; a longer number takes more.
struct iSevenSegmentAnalogX {
    double Value = 0;
    i32 Precision = 0;
    i32 DigitCount = 1;
    bool ShowSign = false;
    colour SegmentColor = 0;
    colour SegmentOffColor = 0;
    bool operator==(const iSevenSegmentAnalogX&) const = default;
};

} // namespace tyxo
