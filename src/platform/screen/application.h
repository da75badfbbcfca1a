#pragma once

#include <QApplication>

namespace benthor::platform {

/// The application: what an event procedure throws and nobody caught is told to the user in a box, and the
/// program goes on.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& argc, char** argv);

    bool notify(QObject* receiver, QEvent* event) override;

private:
    int telling_ = 0;
};

} // namespace benthor::platform
