#include "widgets/text_status_view.h"

#include "platform/desktop/text.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QTextBlock>

namespace tyxo {

text_status_view::text_status_view(QWidget* parent)
    : QPlainTextEdit(parent), announcer_(new announcer(this)) {
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    document()->setDocumentMargin(1); // four lines fit into the box of the design size
    setAccessibleName(tr("Status text"));
}

void text_status_view::show_control(const text_box& box) {
    if (box.appended() == appended_ && box.dropped() == dropped_ && box.caret() == caret_) return;
    const bool at_end = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    if (box.dropped() >= appended_) {
        clear();
        break_pending_ = false;
        feed_pending_ = box.text().starts_with('\n');
        appended_ = dropped_ = box.dropped();
    }
    const std::uint64_t added = box.appended() - appended_;
    append_end(box.text().substr(box.size() - added));
    appended_ = box.appended();
    drop_front(box.dropped() - dropped_);
    dropped_ = box.dropped();
    // The caret comes with every status frame; without a new line it takes nobody away from what he reads.
    if (added > 0 && box.caret() != caret_) {
        show_end();
    } else if (at_end) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    caret_ = box.caret();
}

void text_status_view::show_end() {
    moveCursor(QTextCursor::End);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    horizontalScrollBar()->setValue(0);
}

void text_status_view::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit enlarged();
}

void text_status_view::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit enlarged();
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void text_status_view::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    show_end();
}

void text_status_view::append_end(std::string_view added) {
    if (added.empty()) return;
    QString text = qt_text(added);
    text.remove('\r');
    // The last line break waits for the next line: no row of the box is spent on an empty line.
    if (break_pending_) text.prepend('\n');
    break_pending_ = text.endsWith('\n');
    if (break_pending_) text.chop(1);
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    announcer_->say(text.trimmed());
}

void text_status_view::drop_front(std::uint64_t characters) {
    if (characters == 0) return;
    // The box counts CR LF as two characters where the document has one line break.
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::Start);
    std::uint64_t left = characters + (feed_pending_ ? 1 : 0);
    feed_pending_ = false;
    while (left > 0) {
        const auto line = static_cast<std::uint64_t>(cursor.block().length()) - 1;
        if (left <= line) {
            cursor.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, static_cast<int>(left));
            break;
        }
        if (left == line + 1) { // between CR and LF: the line is empty, its break still there
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            feed_pending_ = true;
            break;
        }
        left -= line + 2;
        if (!cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor)) break;
    }
    cursor.removeSelectedText();
}

} // namespace tyxo

#include "moc_text_status_view.cpp"
