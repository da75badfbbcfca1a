#pragma once

#include "platform/screen/screen.h"

class QLabel;
class QVBoxLayout;

namespace benthor::platform {

/// A screen with nothing on it but a card and its title.
class EmptyScreen : public Screen {
    Q_OBJECT

public:
    EmptyScreen(const QString& name, const QString& title);

protected:
    void setTitle(const QString& title);
    /// Where a screen adds what it has to say below its title.
    QVBoxLayout* content() { return content_; }
    QSize firstSize() const override { return {640, 420}; }

private:
    QVBoxLayout* content_ = nullptr;
    QLabel* title_ = nullptr;
};

} // namespace benthor::platform
