#pragma once

#include "tests/pictures/faces.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace benthor::tests {

/// An album that looks for faults and keeps no picture. A fault that many faces share is told once, with the
/// first of them.
class FaultAlbum : public Album {
public:
    using Album::add;

    void add(QWidget* window, const QString& name, const QList<QSize>& sizes) override;
    QString file(const QString& name) const override { return folder_.filePath(name); }

    int faces() const { return faces_; }
    /// Whether nothing of the kind was found; what was is told in warnings, a line each, as together they
    /// would be more than a message takes. `isMeant` says of a fault that it is none.
    bool isFaultless(const QString& kind, const std::function<bool(const QString&)>& isMeant = {}) const;

protected:
    /// Looks at the window as it stands, in one of its sizes.
    virtual void lookAt(QWidget* window, const QString& name, const QSize& size) = 0;
    /// Other sizes than those that it is worth a picture in.
    virtual QList<QSize> sizesFor(const QList<QSize>& sizes) const { return sizes; }
    void note(const QString& kind, const QString& face, const QStringList& faults);

private:
    QTemporaryDir folder_;
    int faces_ = 0;
    QMap<QString, QMap<QString, QString>> faults_; ///< by kind: fault, and the line that tells it
};

/// Makes a demonstration folder at `folder` the current one and shows the album a set of faces: "all",
/// "locked" or "older". To be called once in a process, as the house is the process's. Returns why it could
/// not be done; empty when it was. `files` and `makedemo`: where the folder comes from.
QString takeFaces(FaultAlbum& album, const QByteArray& faces, const QString& folder, const QString& files,
                  const QString& makedemo);

} // namespace benthor::tests
