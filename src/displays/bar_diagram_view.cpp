#include "displays/bar_diagram_view.h"

#include "platform/desktop/handlers.h"
#include "widgets/plots/bar_plot_view.h"
#include "widgets/screen_room.h"
#include "widgets/show.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tyxo {

namespace {

namespace design = bar_design;

// Pixels of the design, beside those that the core knows.
constexpr double axis_top = 64;
constexpr double axis_bottom = 416;
constexpr double label_top = 424;
constexpr double label_height = 20;
constexpr double text_height = 12;
constexpr QSize least_size(800, 500); // where the screen has room for it
constexpr double least_scale = 0.8;
constexpr double greatest_bar_text_scale = 2.5;
constexpr int least_pixels = 6;

/// The greatest size of at most `pixels` in which the text is no wider than the room.
int fitting(QFont font, const QString& text, int pixels, double room) {
    for (; pixels > least_pixels; --pixels) {
        font.setPixelSize(pixels);
        if (QFontMetrics(font).horizontalAdvance(text) <= room) break;
    }
    return pixels;
}

/// The window's own font in another size.
void set_text_size(QLabel& label, int pixels) {
    QFont font = label.parentWidget()->font();
    font.setPixelSize(pixels);
    label.setFont(font);
}

/// A place of the design; what is none stands at its left edge, out of the way.
double on_page(double place) {
    return std::isfinite(place) ? std::clamp(place, 0.0, design::width) : 0;
}

} // namespace

bar_diagram_view::bar_diagram_view(bar_form& form, const char* name, QWidget* parent)
    : QWidget(parent, Qt::Window), form_(form), plot_(new bar_plot_view(this)) {
    setObjectName(name);
    plot_->setObjectName(&form == &frmbarpic::state ? "iPlotX_angle" : "iPlotX_thermo");
    bind(plot_, form.plot);
    for (std::size_t index = 0; index < Lbl_bar.size(); ++index) {
        Lbl_bar[index] = make_label(element("Lbl_bar", static_cast<int>(index)), form.Lbl_bar[index]);
        Lbl_bar[index]->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    }
    Lbl_zyl = make_label("Lbl_zyl", form.Lbl_zyl);
    Lbl_zyl->setAlignment(Qt::AlignRight | Qt::AlignTop);
    Lbl_mtyp1 = make_label("Lbl_mtyp1", form.Lbl_mtyp1);
    Lbl_mtyp2 = make_label("Lbl_mtyp2", form.Lbl_mtyp2);
    const QSize usual(static_cast<int>(design::width), static_cast<int>(design::height));
    setMinimumSize(least_size.boundedTo(screen_room(*this)));
    resize(usual.expandedTo(least_size).boundedTo(screen_room(*this)));
}

QLabel* bar_diagram_view::make_label(const QString& name, const Label& state) {
    auto* const label = new QLabel(this);
    bind(label, state);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// Labels stand where their texts have room.
bool bar_diagram_view::places_changed() {
    const std::array<Label, 3> texts{form_.Lbl_zyl, form_.Lbl_mtyp1, form_.Lbl_mtyp2};
    if (middles_ == form_.Lbl_bar_middle && bar_labels_ == form_.Lbl_bar && texts_ == texts) return false;
    middles_ = form_.Lbl_bar_middle;
    bar_labels_ = form_.Lbl_bar;
    texts_ = texts;
    return true;
}

void bar_diagram_view::show_state() {
    if (!form_.form.Visible && !isVisible()) return; // opened, it shows all at once
    const QString caption = qt_text(form_.form.Caption);
    if (windowTitle() != caption) {
        setWindowTitle(caption);
        setAccessibleName(caption);
    }
    show_bound();
    if (places_changed()) place();

    const bool to_front = isVisible() && shows_ != form_.shows;
    shows_ = form_.shows;
    if (isVisible() != form_.form.Visible) setVisible(form_.form.Visible);
    if (isVisible() && to_front) {
        raise();
        activateWindow();
    }
}

void bar_diagram_view::place() {
    const double across = width() / design::width;
    const double down = height() / design::height;
    const double scale = std::clamp(std::min(across, down), least_scale, greatest_bar_text_scale);
    const int pixels = static_cast<int>(text_height * scale);
    const int left = qRound(design::axis_left * across);
    const int right = qRound((design::axis_left + design::axis_width) * across);
    const int top = qRound(axis_top * down);
    const QRect axes(left, top, right - left, qRound(axis_bottom * down) - top);
    plot_->setGeometry(rect());
    plot_->set_places(axes, pixels);
    place_bar_labels(axes, pixels);
    place_texts(pixels);
}

void bar_diagram_view::place_bar_labels(const QRect& axes, int pixels) {
    const double scale = axes.width() / design::axis_width;
    const int top = qRound(label_top * height() / design::height);
    const int tall = qRound(label_height * height() / design::height);
    // The first bar is as far from the axis as the bars are from each other.
    const double apart =
        std::clamp((on_page(middles_[0]) - design::axis_left) * scale, 1.0, 1.0 * axes.width());
    int size = pixels;
    for (const QLabel* const label : Lbl_bar) {
        if (label->isVisibleTo(this)) size = fitting(font(), label->text(), size, apart - 3);
    }
    for (std::size_t index = 0; index < Lbl_bar.size(); ++index) {
        const double middle = axes.left() + (on_page(middles_[index]) - design::axis_left) * scale;
        set_text_size(*Lbl_bar[index], size);
        Lbl_bar[index]->setGeometry(qRound(middle - apart / 2), top, qRound(apart), tall);
    }
    set_text_size(*Lbl_zyl, pixels);
    Lbl_zyl->setGeometry(0, top, axes.left() - 8, tall);
}

void bar_diagram_view::place_texts(int pixels) {
    const double across = width() / design::width;
    const int top = qRound(design::texts_top * height() / design::height);
    const int tall = qRound(label_height * height() / design::height);
    const int first = qRound(design::mtyp1_left * across);
    const int second = qRound(design::mtyp2_left * across);
    const int size = fitting(font(), Lbl_mtyp1->text(), pixels, second - first - 6);
    set_text_size(*Lbl_mtyp1, size);
    set_text_size(*Lbl_mtyp2, size);
    Lbl_mtyp1->setGeometry(first, top, second - first, tall);
    Lbl_mtyp2->setGeometry(second, top, width() - second, tall);
}

bool bar_diagram_view::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        desktop::run_handler(desktop::source::view, [this] { bar_form_activate(form_); });
    return QWidget::event(event);
}

void bar_diagram_view::closeEvent(QCloseEvent* event) {
    event->ignore(); // the core says when the window goes
    desktop::run_handler(desktop::source::view, [this] { bar_form_unload(form_); });
    show_state();
}

void bar_diagram_view::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void bar_diagram_view::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    place();
}

void bar_diagram_view::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) place();
}

} // namespace tyxo

#include "moc_bar_diagram_view.cpp"
