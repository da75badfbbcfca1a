#include "link/directory.h"
#include "platform/textformat.h"
#include "store/divetime.h"

#include <array>
#include <cmath>

namespace benthor::link {

namespace {

enum class Keep { All, Digits, DigitsAboveZero };
enum class Goes { Column, Start, Finish, Stack };

struct Label {
    QByteArrayView text;
    int skip;    ///< from the last letter of the label to the first character read
    int longest; ///< characters read, the carriage return counted
    Keep keep;
    Goes goes;
    int column;
};

constexpr int kStartCode = 1;
constexpr int kEndDate = 3;
constexpr int kCylinder = 10;
constexpr int kNoSuchColumn = 12;

// In the order in which they are tested. The cylinder column shows the last of cylinder, stack and usage that
// the block holds: the stack writes it on purpose, the usage's own column does not exist.
const std::array<Label, 11> labels{{
    {"Recint=", 0, 5, Keep::DigitsAboveZero, Goes::Column, 5},
    {"Start", 8, 13, Keep::Digits, Goes::Start, kStartCode},
    {"Finish", 8, 13, Keep::Digits, Goes::Finish, kEndDate},
    {"MaxD", 8, 7, Keep::All, Goes::Column, 6},
    {"Status", 8, 7, Keep::Digits, Goes::Column, 7},
    {"OTU", 8, 7, Keep::Digits, Goes::Column, 8},
    {"Descend prob", 8, 7, Keep::Digits, Goes::Column, 9},
    {"HPCylinder", 8, 11, Keep::All, Goes::Column, kCylinder},
    {"DStack", 8, 5, Keep::All, Goes::Stack, kCylinder},
    {"DUsage", 8, 5, Keep::All, Goes::Column, kNoSuchColumn},
    {"DAtmos", 8, 7, Keep::All, Goes::Column, 11},
}};

bool keeps(Keep keep, char character) {
    switch (keep) {
    case Keep::Digits:
        return character >= '0' && character <= '9';
    case Keep::DigitsAboveZero:
        return character >= '1' && character <= '9';
    case Keep::All:
        break;
    }
    return true;
}

QString withoutBlanksAtTheEnd(const QByteArray& value) {
    qsizetype length = value.size();
    while (length > 0 && value.at(length - 1) == ' ') {
        --length;
    }
    return QString::fromLatin1(value.first(length));
}

/// Minutes and seconds without padding: twelve minutes five seconds are 12:5.
QString minutesAndSeconds(const QString& start, const QString& finish) {
    const double seconds = platform::leadingNumber(finish) - platform::leadingNumber(start);
    const double minutes = std::floor(seconds / 60);
    return QString::number(minutes, 'f', 0) + QLatin1Char(':') +
           QString::number(seconds - 60 * minutes, 'f', 0);
}

class Walk {
public:
    explicit Walk(LinkState& link)
        : text_(link.Text4.bytes())
        , grid_(link.Mgrid) {}

    void run() {
        for (qsizetype at = 0; at < text_.size(); ++at) {
            const QByteArrayView sofar = text_.sliced(begun_, at + 1 - begun_);
            if (sofar.endsWith("ver")) {
                openRow();
                begun_ = at + 1;
                continue;
            }
            for (const Label& label : labels) {
                if (sofar.endsWith(label.text)) {
                    at = readValue(label, at + label.skip);
                    begun_ = std::min(at + 1, text_.size());
                    break;
                }
            }
        }
    }

private:
    void openRow() {
        grid_.rows.emplace_back();
        grid_.row = grid_.rowCount() - 1;
        grid_.col = 0;
        grid_.rows.back().cells[0] = QStringLiteral("Dive%1").arg(grid_.row);
    }

    /// Reads from position `at` and returns the position behind the last character read.
    qsizetype readValue(const Label& label, qsizetype at) {
        QByteArray own;
        QByteArray& value = label.goes == Goes::Stack ? grid_.DStack : own;
        for (int read = 0; read < label.longest && at < text_.size(); ++read) {
            const char character = text_.at(at);
            ++at;
            if (keeps(label.keep, character)) {
                value += character;
            }
            if (character == '\r') {
                write(label, withoutBlanksAtTheEnd(value));
                break;
            }
        }
        return at;
    }

    /// Values ahead of the first row go nowhere.
    void write(const Label& label, const QString& value) {
        if (grid_.rowCount() < 2) {
            return;
        }
        auto& cells = grid_.rows.back().cells;
        switch (label.goes) {
        case Goes::Start:
            cells[kStartCode] = value;
            cells[kStartCode + 1] = store::startcodetodate(value);
            break;
        case Goes::Finish:
            cells[kEndDate] = store::finishcodetodate(value);
            if (!cells[kStartCode].isEmpty()) {
                cells[kEndDate + 1] = minutesAndSeconds(cells[kStartCode], value);
            }
            break;
        case Goes::Column:
        case Goes::Stack:
            cells[static_cast<std::size_t>(label.column == kNoSuchColumn ? kCylinder : label.column)] = value;
            break;
        }
    }

    QByteArrayView text_;
    Directory& grid_;
    qsizetype begun_ = 0; ///< where the text begins in which a label is looked for
};

} // namespace

void parsedirectory(LinkState& link) {
    Walk(link).run();
}

} // namespace benthor::link
