#pragma once

#include "link/markedtext.h"

#include <QPlainTextEdit>

namespace benthor::link {

/// Raw text of the device, monospaced. What has been shown is not shown again: taking a text that has grown
/// costs what has come since.
class RawText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit RawText(QWidget* parent = nullptr);

    /// Shows the text, when the box can be seen; a hidden one takes nothing in.
    void follow(const MarkedText& text);

private:
    void add(QByteArrayView bytes);

    std::uint64_t generation_ = 0;
    qsizetype shown_ = 0;
    int column_ = 0;
};

} // namespace benthor::link
