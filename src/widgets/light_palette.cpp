#include "widgets/light_palette.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QToolTip>

namespace tyxo {

namespace {

struct role_row {
    QPalette::ColorRole role;
    QRgb usual;
    QRgb disabled;
};

/// Every role: one that were missing would be the desktop's.
constexpr role_row role_rows[] = {
    {QPalette::Window, 0xFFEFEFEF, 0xFFEFEFEF},      {QPalette::WindowText, 0xFF000000, 0xFFBEBEBE},
    {QPalette::Base, 0xFFFFFFFF, 0xFFEFEFEF},        {QPalette::AlternateBase, 0xFFF7F7F7, 0xFFF7F7F7},
    {QPalette::Text, 0xFF000000, 0xFFBEBEBE},        {QPalette::PlaceholderText, 0x80000000, 0x80000000},
    {QPalette::Button, 0xFFEFEFEF, 0xFFEFEFEF},      {QPalette::ButtonText, 0xFF000000, 0xFFBEBEBE},
    {QPalette::BrightText, 0xFFFFFFFF, 0xFFFFFFFF},  {QPalette::Light, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Midlight, 0xFFCACACA, 0xFFCACACA},    {QPalette::Mid, 0xFFB8B8B8, 0xFFB8B8B8},
    {QPalette::Dark, 0xFF9F9F9F, 0xFFBEBEBE},        {QPalette::Shadow, 0xFF767676, 0xFFB1B1B1},
    {QPalette::Highlight, 0xFF308CC6, 0xFF919191},   {QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    {QPalette::Link, 0xFF0000FF, 0xFF0000FF},        {QPalette::LinkVisited, 0xFF800080, 0xFF800080},
    {QPalette::ToolTipBase, 0xFFFFFFDC, 0xFFFFFFDC}, {QPalette::ToolTipText, 0xFF000000, 0xFF000000},
};
static_assert(std::size(role_rows) == QPalette::NColorRoles - 1, "all but NoRole");

/// A desktop may have palettes of their own for these.
constexpr const char* desktop_classes[] = {
    "QAbstractButton", "QAbstractItemView", "QCheckBox", "QComboBox",  "QComboMenuItem",
    "QGroupBox",       "QHeaderView",       "QLabel",    "QLineEdit",  "QMenu",
    "QMenuBar",        "QMessageBoxLabel",  "QTabBar",   "QTextEdit",  "QTextControl",
    "QPushButton",     "QRadioButton",      "QTipLabel", "QToolButton"};

QPalette light_palette() {
    QPalette palette;
    for (const role_row& row : role_rows) {
        palette.setColor(QPalette::Active, row.role, QColor::fromRgba(row.usual));
        palette.setColor(QPalette::Inactive, row.role, QColor::fromRgba(row.usual));
        palette.setColor(QPalette::Disabled, row.role, QColor::fromRgba(row.disabled));
    }
    return palette;
}

void apply() {
    const QPalette palette = light_palette();
    QApplication::setPalette(palette);
    for (const char* widgets : desktop_classes) {
        if (QApplication::palette(widgets) != palette) QApplication::setPalette(palette, widgets);
    }
    QToolTip::setPalette(palette);
}

/// Applies the palette again when the desktop has brought its own.
class palette_keeper : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool changed =
            event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ThemeChange;
        if (changed && watched == QApplication::instance() && !applying_) {
            applying_ = true;
            apply();
            applying_ = false;
        }
        return false;
    }

  private:
    bool applying_ = false;
};

} // namespace

void use_light_palette() {
    apply();
    QApplication::instance()->installEventFilter(new palette_keeper(QApplication::instance()));
}

} // namespace tyxo
