#include "link/markedtext.h"

#include <algorithm>

namespace benthor::link {

namespace {
std::uint64_t lastgeneration = 0;
}

void MarkedText::begin() {
    generation_ = ++lastgeneration;
    followed_ = 0;
    searches_.clear();
}

void MarkedText::append(QByteArrayView more) {
    if (generation_ == 0) {
        begin();
    }
    followed_ = 0;
    bytes_.append(more);
}

void MarkedText::assign(QByteArrayView text) {
    begin();
    bytes_ = text.toByteArray();
}

void MarkedText::follow(const MarkedText& source) {
    if (followed_ != 0 && followed_ == source.generation_) {
        bytes_.append(QByteArrayView(source.bytes_).sliced(bytes_.size()));
        return;
    }
    assign(source.bytes_);
    followed_ = source.generation_;
}

qsizetype MarkedText::find(QByteArrayView mark) const {
    auto search = std::find_if(searches_.begin(), searches_.end(),
                               [mark](const Search& known) { return known.mark == mark; });
    if (search == searches_.end()) {
        search = searches_.insert(searches_.end(), Search{mark.toByteArray()});
    }
    if (search->found < 0 && search->seen < bytes_.size()) {
        // A mark may have begun in what was there before.
        const qsizetype from = std::max<qsizetype>(0, search->seen - mark.size() + 1);
        search->found = QByteArrayView(bytes_).indexOf(mark, from);
        search->seen = bytes_.size();
    }
    return search->found;
}

} // namespace benthor::link
