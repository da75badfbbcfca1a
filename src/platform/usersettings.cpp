#include "platform/usersettings.h"

#include <QSettings>

namespace benthor::platform {

namespace {

QSettings store() {
    return {QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Benthor"), QStringLiteral("Benthor")};
}

QString key(const QString& section, const QString& name) {
    return section + u'/' + name;
}

/// What stands there already is not written again: each writing waits for the disk, and every window that
/// closes keeps its place.
template <class Value> void keep(const QString& key, const Value& value) {
    QSettings settings = store();
    if (!settings.contains(key) || settings.value(key).value<Value>() != value) {
        settings.setValue(key, value);
    }
}

} // namespace

int UserSettings::number(const QString& section, const QString& name, int whenAbsent) const {
    return store().value(key(section, name), whenAbsent).toInt();
}

void UserSettings::setNumber(const QString& section, const QString& name, int value) {
    keep(key(section, name), value);
}

QString UserSettings::text(const QString& section, const QString& name) const {
    return store().value(key(section, name)).toString();
}

void UserSettings::setText(const QString& section, const QString& name, const QString& value) {
    keep(key(section, name), value);
}

QRect UserSettings::rectangle(const QString& section, const QString& name) const {
    return store().value(key(section, name)).toRect();
}

void UserSettings::setRectangle(const QString& section, const QString& name, const QRect& value) {
    keep(key(section, name), value);
}

UserSettings& userSettings() {
    static UserSettings settings;
    return settings;
}

QString optionsSection() {
    return QStringLiteral("Options");
}

QString showTipsAtStartup() {
    return QStringLiteral("Show Tips at Startup");
}

} // namespace benthor::platform
