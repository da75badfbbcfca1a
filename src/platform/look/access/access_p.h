#pragma once

#include <QStringList>

#include <functional>

class QWidget;

namespace benthor::look {

// Under these names widgets keep what they were told. Properties, because a widget can be met by a reader
// while it is still being made.
constexpr const char* kReaderHidden = "readerHidden";
constexpr const char* kReaderCover = "readerCover";
constexpr const char* kReaderRole = "readerRole";
constexpr const char* kReaderActs = "readerActs";
constexpr const char* kReading = "reading";
constexpr const char* kReaderUnit = "readerUnit";
constexpr const char* kReaderOpen = "readerOpen";         ///< of a header that opens and shuts something
constexpr const char* kReaderNote = "readerNote";         ///< of a note: its words
constexpr const char* kReaderLastNote = "readerLastNote"; ///< of a window

QStringList actsOf(const QWidget* widget);
std::function<void()> actFor(const QWidget* widget, const QString& action);

} // namespace benthor::look
