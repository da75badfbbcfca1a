#include "exports/csvlines.h"

namespace benthor::exports {

bool CsvLines::next() {
    fields_.clear();
    if (rest_.isEmpty()) {
        return false;
    }
    bool isQuoted = false;
    qsizetype begin = 0;
    qsizetype at = 0;
    for (; at < rest_.size() && (isQuoted || rest_[at] != '\n'); ++at) {
        if (rest_[at] == '"') {
            isQuoted = !isQuoted; // two of them within a field change nothing
        } else if (rest_[at] == ',' && !isQuoted) {
            fields_.push_back(rest_.sliced(begin, at - begin));
            begin = at + 1;
        }
    }
    QByteArrayView last = rest_.sliced(begin, at - begin);
    if (last.endsWith('\r')) {
        last.chop(1);
    }
    fields_.push_back(last);
    at = std::min(at + 1, rest_.size());
    line_ = rest_.first(at);
    rest_ = rest_.sliced(at);
    return true;
}

QByteArray CsvLines::bytes(int field) const {
    if (field < 0 || field >= fieldCount()) {
        return {};
    }
    const QByteArrayView text = fields_[static_cast<size_t>(field)];
    if (text.size() < 2 || !text.startsWith('"') || !text.endsWith('"')) {
        return text.toByteArray();
    }
    return text.sliced(1, text.size() - 2).toByteArray().replace("\"\"", "\"");
}

} // namespace benthor::exports
