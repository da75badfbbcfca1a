#include "platform/serial/portnames.h"
#include "platform/programfolder.h"

#include <QCollator>
#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

namespace benthor::platform {

namespace {

bool isUsbAdapter(const QString& name) {
    return name.startsWith(QLatin1String("ttyUSB")) || name.startsWith(QLatin1String("ttyACM"));
}

QString linkOf(int number) {
    return ProgramFolder::current().path(u"ports", QStringLiteral("com%1").arg(number));
}

/// Letters and number of a name: "ttyUSB10" is "ttyUSB" and 10.
std::pair<QString, qlonglong> parts(const QString& name) {
    qsizetype digits = name.size();
    while (digits > 0 && name.at(digits - 1).isDigit()) {
        --digits;
    }
    return {name.left(digits), name.mid(digits).toLongLong()};
}

} // namespace

QStringList inPortOrder(QStringList names) {
    std::sort(names.begin(), names.end(), [](const QString& left, const QString& right) {
        const bool leftUsb = isUsbAdapter(left);
        const bool rightUsb = isUsbAdapter(right);
        return leftUsb != rightUsb ? leftUsb : parts(left) < parts(right);
    });
    return names;
}

bool isLinkedPort(int number) {
    const QFileInfo link(linkOf(number));
    return link.isSymLink() || link.exists();
}

QString portPath(int number) {
    if (number < 1) {
        return {};
    }
    if (isLinkedPort(number)) {
        return linkOf(number);
    }
    QStringList names;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        names << port.portName();
    }
    const QString name = inPortOrder(names).value(number - 1);
    return name.isEmpty() ? QString() : QSerialPortInfo(name).systemLocation();
}

} // namespace benthor::platform
