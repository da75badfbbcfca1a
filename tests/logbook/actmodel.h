#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QMap>
#include <QStringList>

#include <optional>
#include <vector>

namespace benthor::tests {

/// What a diver may edit: a field's text, or nothing where it is Null.
using ModelFields = QMap<QString, std::optional<QString>>;

struct ModelDetails {
    ModelFields fields;
    QStringList buddies;
    bool operator==(const ModelDetails&) const = default;
};

struct ModelDive {
    int serial = 0; ///< tells dives apart, whatever their numbers
    QString name;
    ModelDetails details;
    QByteArray birth; ///< all its other fields, its gases and tissues, as the import left them
};

/// The plain model of a logbook whose acts are taken back: maps and lists, and no store. It is told of each
/// deed in the words that a user has for it.
class ActModel {
public:
    enum class Turned { Nothing, Done, DoesNotFit };

    QMap<QString, ModelDive> dives; ///< by number
    QMap<QString, int> waiting;     ///< serials of the files in `new`, by name
    QDateTime now{QDate(2026, 3, 1), QTime(12, 0)};
    int lastImported = 0;

    void import();
    void remove(const QStringList& numbers);
    void save(const QString& number, const QString& site, const QString& note, const QStringList& buddies);
    /// What the menu says.
    QString words(bool undo) const;
    Turned turn(bool undo);
    /// The store as it stands is kept, and put back later; what was done and the trash stay as they are.
    void backUp();
    void restore();
    /// Of the trash, by its place there.
    void putBack(int place);
    void forget(int place);
    void tidy();

    /// "D0000001 first0.txt" for each deleted dive, the one deleted last first.
    QStringList trashNames() const;
    /// How the process's store differs from what the model holds; empty where it does not.
    QString difference();

    /// How often what a walk is about has happened.
    static QMap<QString, int>& met();

private:
    struct Item {
        int order = 0;
        ModelDive dive;
        QString number;
        QDateTime gone;
        QString file;
        int fileSerial = 0;
        bool here = false;
    };
    struct Entry {
        QString list;
        QString value;
        bool here = true;
    };
    struct Act {
        bool isDelete = true;
        bool done = true;
        std::vector<Item> items;
        QString label;
        int serial = 0;
        ModelDetails before, after;
        std::vector<Entry> entries;
    };

    int indexOf(bool undo) const;
    QString nextNumber() const;
    QString numberOf(int serial) const;
    Act& newAct();
    void dropAct(int index);
    void bring(Item& item);
    bool turnDelete(Act& act, bool undo);
    bool turnDetails(Act& act, bool undo);
    void turnEntries(Act& act, bool undo);
    void bringFile(Item& item);
    bool isNamed(const Entry& entry) const;
    std::vector<const Item*> trashed() const;
    Item takeFromTrash(int place);
    QString differenceOfDives();
    QString differenceOfLists() const;

    std::vector<Act> acts_;
    std::vector<Item> loose_; ///< deleted dives whose acts are no longer kept
    QMap<QString, QStringList> leftBuddies_;
    QMap<QString, QStringList> lists_{{QStringLiteral("site"), {}}, {QStringLiteral("buddy"), {}}};
    int items_ = 0;
    struct Store {
        QMap<QString, ModelDive> dives;
        QMap<QString, QStringList> leftBuddies, lists;
    };
    Store backup_;
};

} // namespace benthor::tests
