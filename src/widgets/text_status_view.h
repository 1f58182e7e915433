#pragma once
// The status text of the main window.

#include "controls/text_box.h"
#include "widgets/spoken.h"

#include <QPlainTextEdit>

#include <cstdint>

namespace tyxo {

/// Follows a `text_box`: adds what is new at its end and cuts at its start what the box has dropped. The cost
/// of a new line does not depend on how much the box holds. A view that stands at the end stays there; a
/// reader who has scrolled up is left alone until a line comes together with the caret.
class text_status_view : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit text_status_view(QWidget* parent);
    void show_control(const text_box& box);

  signals:
    /// A double click, or Enter where the box has the focus: its large copy is wanted.
    void enlarged();

  protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void show_end();
    void drop_front(std::uint64_t characters);
    void append_end(std::string_view added);

    announcer* announcer_;       // says each line that comes
    std::uint64_t appended_ = 0; // of the box, as shown
    std::uint64_t dropped_ = 0;
    std::uint64_t caret_ = 0;
    bool break_pending_ = false; // the last line's break is not in the document yet
    bool feed_pending_ = false;  // the CR of a line end is in, its LF is not
};

} // namespace tyxo
