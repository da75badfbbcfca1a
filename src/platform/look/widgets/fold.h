#pragma once

#include <QWidget>

class QVBoxLayout;

namespace benthor::look {

/// A header that opens and shuts what is under it; shut at first. Mouse, Return and Space work it.
class Fold : public QWidget {
    Q_OBJECT

public:
    explicit Fold(const QString& title, QWidget* parent = nullptr);

    /// The column that is folded away.
    QVBoxLayout* body() const { return body_; }
    QWidget* header() const;

    bool isOpen() const { return open_; }
    void setOpen(bool open);
    QString title() const;

signals:
    void toggled(bool open);

private:
    class Header;

    Header* header_;
    QWidget* content_;
    QVBoxLayout* body_;
    bool open_ = false;
};

} // namespace benthor::look
