#pragma once
// A bar diagram on the screen.

#include "displays/bar_diagram.h"
#include "widgets/spoken.h"
#include "widgets/state_view.h"

#include <QWidget>

#include <array>

class QLabel;

namespace tyxo {

class bar_plot_view;

/// One window for each of the two forms. Its controls stand at the places of the design, scaled with it.
class bar_diagram_view : public QWidget, public state_view, public spoken_control {
    Q_OBJECT

  public:
    bar_diagram_view(bar_form& form, const char* name, QWidget* parent);

    void show_state() override;

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Window; }

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QLabel* make_label(const QString& name, const Label& state);
    [[nodiscard]] bool places_changed();
    void place();
    void place_bar_labels(const QRect& axes, int pixels);
    void place_texts(int pixels);

    bar_form& form_;
    unsigned shows_ = 0;                         ///< the last show of the core that was obeyed
    std::array<double, cylinder_max> middles_{}; // these three as shown
    std::array<Label, cylinder_max> bar_labels_;
    std::array<Label, 3> texts_;
    bar_plot_view* plot_;
    std::array<QLabel*, cylinder_max> Lbl_bar{};
    QLabel* Lbl_zyl;
    QLabel* Lbl_mtyp1;
    QLabel* Lbl_mtyp2;
};

} // namespace tyxo
