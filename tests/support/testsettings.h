#pragma once

#include <QSettings>
#include <QTemporaryDir>

namespace benthor::tests {

/// Keeps the user's own settings out of a test: they are read from and written to a folder that goes with it.
class TestSettings {
public:
    TestSettings() { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path()); }

    QString folder() const { return folder_.path(); }

private:
    QTemporaryDir folder_;
};

} // namespace benthor::tests
