#pragma once

#include <QList>
#include <QSize>
#include <QString>

class QWidget;

namespace benthor::tests {

class ScriptedDialogs;

/// Takes in the faces of the screens, one after the other, as they stand.
class Album {
public:
    virtual ~Album() = default;

    /// A window under the name of its face. `sizes`: in which it is worth looking at; an invalid one leaves
    /// it as it is.
    virtual void add(QWidget* window, const QString& name, const QList<QSize>& sizes) = 0;
    /// Where a file goes that the program itself makes on the way.
    virtual QString file(const QString& name) const = 0;

    /// The loaded screen of that name.
    void add(const char* screenName, const QString& name,
             const QList<QSize>& sizes = {{1024, 700}, {1920, 1080}});
};

/// Lets events run until all is painted.
void settle();

/// Every screen in every face, in metres and in feet, with dives and without. A house has been started, in a
/// demonstration folder which is the current one.
void takeAll(Album& album, ScriptedDialogs& dialogs);
/// The firmware screen alone.
void takeFirmware(Album& album);
/// The start while another program holds the store.
void takeLockedStore(Album& album);
/// An older store comes along, and one that could not.
void takeOlderStore(Album& album);

} // namespace benthor::tests
