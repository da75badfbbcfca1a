#pragma once

#include <QString>
#include <memory>

class QVBoxLayout;
class QWidget;

namespace benthor::platform {

/// A small window over everything while work goes on that leaves no time for events: of all windows it alone
/// takes input, and no tick comes.
class WaitWindow {
public:
    /// `name`: its objectName. `spacing`: between its rows.
    WaitWindow(const QString& name, int spacing);
    ~WaitWindow();
    WaitWindow(const WaitWindow&) = delete;
    WaitWindow& operator=(const WaitWindow&) = delete;

    QWidget& widget() const { return *widget_; }
    QVBoxLayout& rows() const { return *rows_; }

    bool isVisible() const;
    /// In front, as large as its rows want. `active`: keys go to it from now on.
    void show(bool active);
    /// Painting of every window, input of this one.
    void serve();

private:
    std::unique_ptr<QWidget> widget_;
    QVBoxLayout* rows_ = nullptr;
};

} // namespace benthor::platform
