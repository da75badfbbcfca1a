#include "platform/screen/screen.h"

#include "platform/look/widgets/contentsarea.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/windowplace.h"
#include "platform/storewait.h"
#include "platform/usersettings.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QWindow>

namespace benthor::platform {

namespace {

int routinesOfAll = 0;

/// Wayland tells no program where its windows stand, and lets it put them nowhere.
bool placesAreTold() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// Swallows what the user does but closing a window.
class InputFilter : public QObject {
public:
    InputFilter() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        Q_UNUSED(watched)
        switch (event->type()) {
        case QEvent::Shortcut:
        case QEvent::InputMethod:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
            return true;
        default:
            return event->isInputEvent();
        }
    }
};

} // namespace

Screen::Routine::Routine(Screen& screen)
    : screen_(screen) {
    ++screen_.routines_;
    ++routinesOfAll;
}

Screen::Routine::~Routine() {
    --routinesOfAll;
    --screen_.routines_;
    if (screen_.routines_ == 0 && screen_.isUnloaded()) {
        screen_.deleteLater();
    }
}

Screen::Screen(const QString& name) {
    setObjectName(name);
}

bool Screen::anyAtWork() {
    return routinesOfAll > 0;
}

void Screen::setContents(QWidget* contents) {
    contents_ = contents;
    area_ = new look::ContentsArea(contents);
    setCentralWidget(area_);
}

QPixmap Screen::picture() {
    constexpr int kPasses = 4; // what one layout changes may ask for another
    for (int pass = 0; pass < kPasses; ++pass) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    }
    if (area_ == nullptr || area_->maximumViewportSize() == contents_->size()) {
        return grab();
    }
    QWidget* const menu = menuWidget() != nullptr && menuWidget()->isVisible() ? menuWidget() : nullptr;
    const int top = menu == nullptr ? 0 : menu->height();
    const QSize size(contents_->width(), top + contents_->height());
    QPixmap whole(size * devicePixelRatioF());
    whole.setDevicePixelRatio(devicePixelRatioF());
    whole.fill(palette().color(QPalette::Window));
    if (menu != nullptr) {
        menu->render(&whole);
    }
    contents_->render(&whole, QPoint(0, top));
    return whole;
}

void Screen::load() {
    if (state_ == State::New) {
        state_ = State::Loaded;
        const Routine routine(*this);
        loading();
    }
}

void Screen::showWhileLoading() {
    if (toBeShown_ && state_ == State::Loaded) {
        restorePlace();
        show();
    }
}

void Screen::showScreen() {
    toBeShown_ = true;
    load();
    toBeShown_ = false;
    if (isUnloaded()) {
        return;
    }
    restorePlace();
    show();
}

void Screen::bringToFront() {
    if (isUnloaded()) {
        return;
    }
    if (isMinimized()) {
        showNormal();
    }
    raise();
    activateWindow();
}

void Screen::unload() {
    if (state_ != State::Loaded) {
        return;
    }
    state_ = State::Unloaded;
    unloading();
    for (TickTimer* timer : findChildren<TickTimer*>()) {
        timer->setEnabled(false);
    }
    rememberPlace();
    hide();
    emit unloaded();
    if (routines_ == 0) {
        deleteLater();
    }
}

void Screen::keep() {
    if (state_ == State::Loaded) {
        const Routine routine(*this);
        keeping();
        rememberPlace();
    }
}

void Screen::perform(const std::function<void()>& work) {
    if (isUnloaded()) {
        return;
    }
    const Routine routine(*this);
    work();
    if (!isUnloaded()) {
        sync();
    }
}

bool Screen::syncPainting() {
    constexpr int kPause = 15; // milliseconds
    if (isUnloaded()) {
        return false;
    }
    if (painted_.isValid() && painted_.elapsed() < kPause) {
        return true;
    }
    sync();
    const bool goOn = yieldPainting();
    painted_.start();
    return goOn;
}

bool Screen::yieldEvents() {
    if (isUnloaded()) {
        return false;
    }
    const Routine routine(*this);
    QCoreApplication::processEvents();
    return !isUnloaded();
}

bool Screen::yieldPainting() {
    if (isUnloaded()) {
        return false;
    }
    const Routine routine(*this);
    const TickHold hold;
    const InputFilter filter;
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    if (allWaitsEnd()) {
        unload();
    }
    return !isUnloaded();
}

void Screen::closeEvent(QCloseEvent* event) {
    event->ignore();
    unload();
}

void Screen::restorePlace() {
    if (placed_) {
        return;
    }
    placed_ = true;
    const QList<QScreen*> displays = QGuiApplication::screens();
    QList<QRect> areas;
    for (const QScreen* display : displays) {
        areas += display->availableGeometry();
    }
    const QSize first = openingSize();
    const QRect remembered = ownPlace() ? QRect(*ownPlace(), first)
                                        : userSettings().rectangle(QStringLiteral("Windows"), objectName());
    const QRect place = windowPlace(remembered, first, areas);
    openedAt_ = place.topLeft();
    setGeometry(place);
    for (const int wait : {50, 250, 1000}) { // milliseconds until a window manager has made the frame
        QTimer::singleShot(wait, this, &Screen::keepFrameInside);
    }
}

/// The first size, and more where a large font needs it: then nothing scrolls that has room on the display.
QSize Screen::openingSize() const {
    if (area_ == nullptr) {
        return firstSize();
    }
    const int menu = menuWidget() != nullptr ? menuWidget()->sizeHint().height() : 0;
    QSize least = area_->sizeIn(firstSize() - QSize(0, menu));
    least.rheight() += menu;
    return firstSize().expandedTo(least);
}

/// The place is that of the window without its frame, which the window manager adds some time after the
/// window is seen: on a low display the title bar would be above it. Where no place can be set nothing
/// happens.
void Screen::keepFrameInside() {
    if (framed_ || !isVisible() || windowHandle() == nullptr || isMaximized() || isFullScreen() ||
        isMinimized()) {
        return;
    }
    const QMargins frame = windowHandle()->frameMargins();
    framed_ = !frame.isNull(); // from now on it stands where the user has it
    const QRect display = screen()->availableGeometry();
    if (display.contains(geometry()) && !display.contains(geometry().marginsAdded(frame))) {
        setGeometry(windowPlace(geometry(), openingSize(), {display.marginsRemoved(frame)}));
    }
}

void Screen::rememberPlace() const {
    if (placed_ && !isMinimized() && !ownPlace()) {
        QRect place = isMaximized() ? normalGeometry() : geometry();
        if (!placesAreTold()) {
            place.moveTopLeft(openedAt_); // a session that does tell them finds it as it was
        }
        userSettings().setRectangle(QStringLiteral("Windows"), objectName(), place);
    }
}

} // namespace benthor::platform
