#include "link/screens/rawtext.h"

#include "platform/look/look.h"

#include <QScrollBar>

namespace benthor::link {

namespace {

/// The toolkit lays out a line as a whole, so a beacon that runs for an hour is broken somewhere.
constexpr int kLongestLine = 4096;

} // namespace

RawText::RawText(QWidget* parent)
    : QPlainTextEdit(parent) {
    setFont(look::fixed(11));
    setUndoRedoEnabled(false);
    setWordWrapMode(QTextOption::WrapAnywhere);
    setTabChangesFocus(true);
}

void RawText::follow(const MarkedText& text) {
    if (isHidden() || (text.generation() == generation_ && text.size() == shown_)) {
        return;
    }
    if (text.generation() != generation_ || text.size() < shown_) {
        clear();
        generation_ = text.generation();
        shown_ = 0;
        column_ = 0;
    }
    const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    add(QByteArrayView(text.bytes()).sliced(shown_));
    shown_ = text.size();
    if (atEnd) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
}

/// Lines end in LF here; the CR before it is left out, since the two may arrive apart.
void RawText::add(QByteArrayView bytes) {
    QString more;
    more.reserve(bytes.size());
    for (const char byte : bytes) {
        if (byte == '\r') {
            continue;
        }
        if (byte == '\n') {
            column_ = 0;
        } else if (++column_ > kLongestLine) {
            more += u'\n';
            column_ = 1;
        }
        more += QLatin1Char(byte);
    }
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(more);
}

} // namespace benthor::link
