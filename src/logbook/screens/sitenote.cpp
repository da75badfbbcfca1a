#include "logbook/screens/sitenote.h"

#include <QKeyEvent>
#include <QTextBlock>

namespace benthor::logbook {

namespace {

/// The last line is never folded: there is always one to write in.
bool isPictureLine(const QTextBlock& block) {
    return block.next().isValid() && block.text().startsWith(QLatin1String("Imageplz"));
}

} // namespace

SiteNote::SiteNote(QWidget* parent)
    : QPlainTextEdit(parent) {
    connect(document(), &QTextDocument::contentsChanged, this, &SiteNote::fold);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &SiteNote::leaveFolded);
}

void SiteNote::fold() {
    if (folding_) {
        return;
    }
    folding_ = true;
    bool changed = false;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const bool visible = !isPictureLine(block);
        if (block.isVisible() != visible) {
            block.setVisible(visible);
            block.setLineCount(visible ? std::max(1, block.layout()->lineCount()) : 0);
            changed = true;
        }
    }
    if (changed) {
        document()->markContentsDirty(0, document()->characterCount());
        viewport()->update();
    }
    folding_ = false;
    leaveFolded();
}

void SiteNote::leaveFolded() {
    QTextCursor cursor = textCursor();
    QTextBlock block = cursor.block();
    if (block.isVisible() || cursor.hasSelection()) {
        return;
    }
    while (block.isValid() && !block.isVisible()) {
        block = block.next();
    }
    if (block.isValid()) {
        cursor.setPosition(block.position());
        setTextCursor(cursor);
    }
}

void SiteNote::keyPressEvent(QKeyEvent* event) {
    const QTextCursor cursor = textCursor();
    if (!cursor.hasSelection()) {
        const bool joinsAbove = event->key() == Qt::Key_Backspace && cursor.atBlockStart() &&
                                cursor.block().previous().isValid() && !cursor.block().previous().isVisible();
        const bool joinsBelow = event->key() == Qt::Key_Delete && cursor.atBlockEnd() &&
                                cursor.block().next().isValid() && !cursor.block().next().isVisible();
        // To the left of a folded line lies the end of what stands above it.
        if (event->key() == Qt::Key_Left && cursor.atBlockStart()) {
            QTextBlock block = cursor.block().previous();
            while (block.isValid() && !block.isVisible()) {
                block = block.previous();
            }
            if (block.isValid() && event->modifiers() == Qt::NoModifier) {
                QTextCursor there = cursor;
                there.setPosition(block.position() + block.length() - 1);
                setTextCursor(there);
            }
            if (!block.isValid() || event->modifiers() == Qt::NoModifier) {
                event->accept();
                return;
            }
        }
        if (joinsAbove || joinsBelow) {
            event->accept();
            return;
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

} // namespace benthor::logbook
