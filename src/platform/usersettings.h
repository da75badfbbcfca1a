#pragma once

#include <QRect>
#include <QString>

namespace benthor::platform {

/// Settings of the user rather than of the program folder: small values by section and name, kept in the
/// desktop's place for them. A value that cannot be written is lost without harm.
class UserSettings {
public:
    int number(const QString& section, const QString& name, int whenAbsent) const;
    void setNumber(const QString& section, const QString& name, int value);

    QString text(const QString& section, const QString& name) const;
    void setText(const QString& section, const QString& name, const QString& value);

    /// A null rectangle when there is none.
    QRect rectangle(const QString& section, const QString& name) const;
    void setRectangle(const QString& section, const QString& name, const QRect& value);
};

UserSettings& userSettings();

/// The section of what the user chose.
QString optionsSection();
/// Its entry for the tips: 1 or 0, 1 where absent.
QString showTipsAtStartup();

} // namespace benthor::platform
