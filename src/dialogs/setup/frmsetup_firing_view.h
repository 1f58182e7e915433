#pragma once
// A table of the setup dialog with one value for each firing position: the firing order, the firing angles.

#include "link/channel_rec.h"
#include "widgets/state_view.h"

#include <QGroupBox>

#include <array>
#include <string>
#include <vector>

namespace tyxo {

class read_only_box;

/// For the keyboard the table is one stop; the arrow keys go from box to box.
class firing_table : public QGroupBox, public state_view {
    Q_OBJECT

  public:
    /// The names of a table's control arrays, and where the channel's elements begin in them.
    struct names {
        const char* box;
        const char* label;
        int first;
    };

    firing_table(QWidget* parent, const QString& name, const QString& title, const names& controls,
                 const std::array<std::string, cylinder_max>& texts);

  protected:
    bool eventFilter(QObject* box, QEvent* event) override;

  private:
    std::vector<read_only_box*> boxes_;
};

} // namespace tyxo
