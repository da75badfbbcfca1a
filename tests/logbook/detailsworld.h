#pragma once

#include "logbook/screens/picturetile.h"
#include "logbook/screens/rbdetails.h"
#include "platform/screen/screenslot.h"
#include "tests/logbook/listworld.h"

#include <QListWidget>

namespace benthor::tests {

/// A store with a dive, and the details over it. The dive may be changed before the first use of the screen.
class DetailsWorld : public ListWorld {
public:
    DetailsWorld()
        : slot([] { return new logbook::rbdetails; }) {
        addDive(diveNumber(1));
        process().currentdiveid = diveNumber(1);
    }
    ~DetailsWorld() { slot.unload(); }

    logbook::rbdetails& screen() { return slot.get(); }
    template <class T> T& on(const char* name) {
        T* found = screen().findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("rbdetails has no %s", name);
        }
        return *found;
    }
    void click(const char* name) { QTest::mouseClick(&on<QWidget>(name), Qt::LeftButton); }
    QString label(const char* name) { return on<QLabel>(name).text(); }
    static QString field(const char16_t* name) {
        return process().database.openRecordset("SELECT * FROM main").value(name).text();
    }
    QStringList buddies() {
        QStringList names;
        for (int i = 0; i < on<QListWidget>("List1").count(); ++i) {
            names += on<QListWidget>("List1").item(i)->text();
        }
        return names;
    }
    QString picture(const QString& name, const QSize& size, const QColor& colour = Qt::red) const {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        const QString path = folder.path(name);
        if (!image.save(path)) {
            qFatal("no picture %s", qPrintable(path));
        }
        return path;
    }
    logbook::PictureTile& tile(int index) {
        return *qobject_cast<logbook::PictureTile*>(
            on<QWidget>(qPrintable(QStringLiteral("Image1(%1)").arg(index))).parentWidget());
    }

    platform::ScreenSlot<logbook::rbdetails> slot;
};

} // namespace benthor::tests
