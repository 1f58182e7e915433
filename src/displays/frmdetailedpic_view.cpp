#include "displays/frmdetailedpic_view.h"

#include "platform/desktop/handlers.h"
#include "widgets/paint_view.h"
#include "widgets/plots/canvas_view.h"
#include "widgets/screen_room.h"
#include "widgets/show.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

// The size of the surface in units never changes, only the unit: labels that were placed for one size are
// right for every other. The room beside it is for curves and for the end of "720 deg.".
constexpr canvas_view::design surface_design{316, 185, 10, 4};

constexpr QSize usual_detailed_size(1240, 760);
constexpr QSize least_detailed_size(1000, 620); // where the screen has room for it

// The legend with the least room to the next one.
constexpr const char* widest_legend = "Angular acceleration rel. to average value";
constexpr double widest_legend_room = 61;

constexpr double surface_label_height = 4.2; // units; V engines have labels 5 units above each other
constexpr int smallest_label = 6;            // pixels

QIcon line_icon(colour value) {
    QPixmap picture(22, 8);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.fillRect(0, 1, 22, 6, QColor(0, 0, 0, 150));
    painter.fillRect(1, 2, 20, 4, qt_colour(value));
    return picture;
}

} // namespace

frmdetailedpic_view::frmdetailedpic_view(QWidget* parent) : QWidget(parent, Qt::Window) {
    setObjectName("frmdetailedpic");
    setWindowModality(Qt::WindowModal);
    QPalette grey = palette();
    grey.setColor(QPalette::Window, QColor(192, 192, 192));
    grey.setColor(QPalette::WindowText, Qt::black);
    setPalette(grey);
    setAutoFillBackground(true);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 6);
    column->setSpacing(4);
    surface_ = new canvas_view(frmdetailedpic::state.surface, surface_design, this);
    surface_->setObjectName("surface");
    surface_->setAccessibleName(tr("One engine cycle as circle and as straight diagram"));
    surface_->set_widest_text(widest_legend, widest_legend_room);
    connect(surface_, &canvas_view::resized, this, &frmdetailedpic_view::surface_resized);
    column->addWidget(surface_, 1);
    make_labels();
    make_check_boxes();
    setMinimumSize(least_detailed_size.boundedTo(screen_room(*this)));
    resize(usual_detailed_size.boundedTo(screen_room(*this)));
}

QLabel* frmdetailedpic_view::make_label(const QString& name) {
    auto* const label = new QLabel(surface_);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setAutoFillBackground(true); // a spoke or a curve does not strike a number out
    label->hide();
    return label;
}

void frmdetailedpic_view::make_labels() {
    const auto add = [this](std::vector<placed_label>& labels, const QString& name,
                            const canvas_label& control, bool centred = false) {
        labels.push_back({make_label(name), control, centred});
    };
    for (int place = 0; place < cylinder_max; ++place) {
        const auto index = static_cast<std::size_t>(place);
        add(cylinders_, element("Lblzyl", place), frmdetailedpic::state.Lblzyl[index],
            true); // around the circle
        add(cylinders_, element("Lblzyl2", place), frmdetailedpic::state.Lblzyl2[index]);
    }
    add(ends_, "Lbl0deg", frmdetailedpic::state.Lbl0deg);
    add(ends_, "Lblenddeg", frmdetailedpic::state.Lblenddeg);
}

void frmdetailedpic_view::make_check_boxes() {
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(12, 0, 12, 0);
    row->setSpacing(24);
    row->addStretch();
    const auto add = [&](const char* name, const QString& caption, colour line, i16& value) {
        auto* const box = new QCheckBox(caption, this);
        box->setObjectName(name);
        box->setAccessibleName(caption);
        box->setIcon(line_icon(line));
        box->setIconSize({22, 8});
        box->setToolTip(tr("Takes effect with the next curve"));
        connect(box, &QCheckBox::clicked, this, [&value](bool checked) {
            desktop::run_handler(desktop::source::view, [&value, checked] { value = checked ? 1 : 0; });
        });
        bind(box, value);
        boxes_.push_back(box);
        row->addWidget(box);
    };
    add("Chck_tsrel", tr("Thermosignal rel. to average"), rgb(255, 0, 0), frmdetailedpic::state.Chck_tsrel);
    add("Chck_tsabs", tr("Thermosignal in % Alarmlevel"), rgb(255, 255, 0), frmdetailedpic::state.Chck_tsabs);
    add("Chck_aa", tr("Angular acceleration"), rgb(0, 0, 255), frmdetailedpic::state.Chck_aa);
    row->addStretch();
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
}

void frmdetailedpic_view::resizeEvent(QResizeEvent* event) {
    fit_boxes();
    QWidget::resizeEvent(event);
}

void frmdetailedpic_view::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange) return;
    fit_boxes();
    place_labels();
}

void frmdetailedpic_view::fit_boxes() {
    QFont font = this->font();
    font.setPixelSize(std::clamp(width() / 95, 12, 24));
    for (QCheckBox* box : boxes_)
        box->setFont(font);
}

void frmdetailedpic_view::surface_resized() {
    desktop::run_handler(desktop::source::view,
                         [] { frmdetailedpic::resize(surface_design.width, surface_design.height); });
    place_labels();
}

bool frmdetailedpic_view::labels_changed() {
    std::vector<canvas_label> now;
    now.reserve(cylinders_.size() + ends_.size());
    for (const auto* const labels : {&cylinders_, &ends_})
        for (const placed_label& one : *labels)
            now.push_back(one.control);
    if (now == shown_labels_) return false;
    shown_labels_ = std::move(now);
    return true;
}

QRect frmdetailedpic_view::label_box(const placed_label& one, const QFont& font) const {
    const auto on_screen = [](double length) {
        constexpr double nowhere = 1e5; // a place that no screen reaches
        return std::isfinite(length) ? std::clamp(length, -nowhere, nowhere) : nowhere;
    };
    const canvas_label& control = one.control;
    const QPoint place = surface_->place(on_screen(control.Left), on_screen(control.Top)).toPoint();
    const QFontMetrics metrics(font);
    QRect box(place, QSize(metrics.horizontalAdvance(qt_text(control.Caption)) + 1, metrics.height() + 1));
    if (one.centred) box.moveCenter(place);
    return box;
}

bool frmdetailedpic_view::overlap(const QFont& font) const {
    std::vector<QRect> taken;
    for (const placed_label& one : cylinders_) {
        if (!one.control.Visible) continue;
        const QRect box = label_box(one, font);
        const auto meets = [&box](const QRect& other) { return other.intersects(box); };
        if (std::ranges::any_of(taken, meets)) return true;
        taken.push_back(box);
    }
    return false;
}

QFont frmdetailedpic_view::label_font() const {
    QFont font = print_font(*surface_, surface_label_height * surface_->unit());
    while (font.pixelSize() > smallest_label && overlap(font))
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

void frmdetailedpic_view::place_labels() {
    const auto put = [this](const placed_label& one, const QFont& font) {
        if (one.label->font() != font) one.label->setFont(font);
        const QString text = qt_text(one.control.Caption);
        if (one.label->text() != text) one.label->setText(text);
        one.label->setGeometry(label_box(one, font));
        one.label->setVisible(one.control.Visible);
    };
    const QFont font = label_font();
    for (const placed_label& one : cylinders_)
        put(one, font);
    for (const placed_label& one : ends_)
        put(one, surface_->text_font());
}

void frmdetailedpic_view::show_state() {
    const frmdetailedpic::window& window = frmdetailedpic::state;
    setWindowTitle(qt_text(window.form.Caption));
    if (isVisible() != window.form.Visible) setVisible(window.form.Visible);
    if (!window.form.Visible) return;
    show_bound();
    if (labels_changed()) place_labels();
    surface_->show_state();
}

void frmdetailedpic_view::closeEvent(QCloseEvent* /*event*/) {
    desktop::run_handler(desktop::source::view, frmdetailedpic::unload);
}

void frmdetailedpic_view::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace tyxo

#include "moc_frmdetailedpic_view.cpp"
