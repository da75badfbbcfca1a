#pragma once

#include <QPlainTextEdit>

namespace benthor::logbook {

/// The box of the site note. Lines that hold the paths of pictures are part of its text and are folded from
/// sight; keys neither lead into them nor join them with what the diver writes.
class SiteNote : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit SiteNote(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fold();
    void leaveFolded();

    bool folding_ = false;
};

} // namespace benthor::logbook
