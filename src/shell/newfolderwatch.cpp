#include "shell/newfolderwatch.h"

namespace benthor::shell {

bool mayImport(QStringView linkCaption, bool linkOnScreen) {
    return linkCaption.contains(u"Search", Qt::CaseInsensitive) || !linkOnScreen;
}

bool startsImport(int waiting, int watched) {
    return waiting >= 1 && waiting > watched;
}

} // namespace benthor::shell
