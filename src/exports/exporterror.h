#pragma once

#include <QString>

#include <stdexcept>

namespace benthor::exports {

/// An export that did not come to its end: what it was to be written to took not all of it. What was written
/// until then is no export.
class ExportError : public std::runtime_error {
public:
    /// `text`: one sentence for a person to read.
    explicit ExportError(const QString& text)
        : std::runtime_error(text.toStdString())
        , text_(text) {}

    QString text() const { return text_; }

private:
    QString text_;
};

} // namespace benthor::exports
