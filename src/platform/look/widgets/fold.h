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
    QVBoxLayout* body() const { return m_body; }
    QWidget* header() const;

    bool isOpen() const { return m_open; }
    void setOpen(bool open);
    QString title() const;

signals:
    void toggled(bool open);

private:
    class Header;

    Header* m_header;
    QWidget* m_content;
    QVBoxLayout* m_body;
    bool m_open = false;
};

} // namespace benthor::look
