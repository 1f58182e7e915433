#pragma once
// The Detailed Display on the screen.

#include "displays/frmdetailedpic.h"
#include "widgets/spoken.h"
#include "widgets/state_view.h"

#include <QWidget>

#include <vector>

class QCheckBox;
class QLabel;

namespace tyxo {

class canvas_view;

/// The surface with the labels on it, and below it the check boxes. It covers all other windows of the
/// program until the operator closes it; measuring goes on.
class frmdetailedpic_view : public QWidget, public state_view, public spoken_control {
    Q_OBJECT

  public:
    explicit frmdetailedpic_view(QWidget* parent);

    void show_state() override;

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Window; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// A label on the screen and what it shows.
    struct placed_label {
        QLabel* label;
        const canvas_label& control;
        bool centred = false; ///< on its place, which is its upper left corner otherwise
    };

    QLabel* make_label(const QString& name);
    void make_labels();
    void make_check_boxes();
    void fit_boxes();
    void surface_resized();
    void place_labels();
    [[nodiscard]] bool labels_changed();
    [[nodiscard]] QRect label_box(const placed_label& one, const QFont& font) const;
    [[nodiscard]] bool overlap(const QFont& font) const;
    [[nodiscard]] QFont label_font() const;

    canvas_view* surface_;
    std::vector<placed_label> cylinders_;
    std::vector<placed_label> ends_;
    std::vector<canvas_label> shown_labels_;
    std::vector<QCheckBox*> boxes_;
};

} // namespace tyxo
