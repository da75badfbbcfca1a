#include "platform/filename.h"

#include <QFileInfo>

namespace benthor::platform {

bool isFileName(QStringView name) {
    return !name.isEmpty() && !name.contains(u'/') && !name.contains(QChar::Null) && name != u"." &&
           name != u"..";
}

bool isFile(const QString& path) {
    return QFileInfo(path).isFile();
}

} // namespace benthor::platform
