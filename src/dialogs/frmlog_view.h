#pragma once
// The window "Software info" on the screen.

#include "widgets/dialog.h"

class QGridLayout;

namespace tyxo {

class frmlog_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmlog_view(QWidget* parent);

  private:
    void add_pair(const QString& title, const char* name, const Label& state, QGridLayout& pairs);
};

} // namespace tyxo
