#pragma once

#include "firmware/screens/reprog_link.h"
#include "firmware/session.h"
#include "link/screens/seriallines.h"
#include "link/supervision.h"
#include "platform/look/look.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/shell/housestage.h"

#include <QAbstractButton>
#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>

namespace benthor::tests {

using firmware::ReprogState;
using simulator::FirmwareType;
using simulator::Kd;
using simulator::KdPort;
using simulator::Loader;

inline constexpr int kFirmwarePort = 3;
inline constexpr int kWhole = 51; ///< units of an image that goes out whole: 7040 bytes

inline const QString kNotReprogrammed =
    QStringLiteral("Problem probably due to leaving KD too long before clicking Download OK!\r\n"
                   "Not reprogrammed! Click refresh, and try again.");

/// What the steps of the send put on the line for an image, as they are told.
inline QByteArray sendOf(const QByteArray& image) {
    QByteArray bytes;
    qsizetype at = 0;
    qint64 counted = 0;
    while (at < image.size()) {
        if (counted > 0) {
            const QByteArray record = image.mid(at, 128);
            at += record.size();
            bytes += record + QByteArray(128 - record.size(), '\0');
        } else {
            bytes += image.startsWith('*') ? "&*" : image.left(1);
            at = 1;
        }
        counted += 128;
        if (counted > image.size()) {
            break;
        }
    }
    return bytes;
}

/// The program, with images in its folder and a device in its loader on the port that is remembered.
struct FirmwareProgram {
    explicit FirmwareProgram(int bytesPerSecond = KdPort::unpaced, FirmwareType type = FirmwareType::Rb,
                             int units = kWhole)
        : program("Close", TestFolder::Store::Fresh, link::serialLines())
        , image(simulator::firmwareImage(type, units, 1))
        , device(program.folder.root(), kFirmwarePort, loader(type), bytesPerSecond) {
        QDir::setCurrent(program.folder.root());
        const QByteArray value = image.right(2).toHex().toUpper();
        const char* const name = type == FirmwareType::Rb ? "bpcsp2shchk.sog" : "hdckd3chk.sog";
        program.folder.put(QStringLiteral("Reprog/") + QLatin1String(name), image);
        program.folder.put("Reprog/chklst.txt",
                           simulator::checkListLine(QLatin1String(name), value.toUShort(nullptr, 16)));
        device.paceReceived(bytesPerSecond);
        fast_ = bytesPerSecond != KdPort::lineSpeed;
        device.start();
        program.passSplash();
        expire("main", "Timer1");
    }

    static Kd loader(FirmwareType type) {
        Kd kd(simulator::deviceDives());
        kd.loader.emplace(type);
        kd.loader->programMilliseconds = 200;
        return kd;
    }
    void fault(const std::function<void(simulator::LoaderFaults&)>& set) {
        device.with([&set](Kd& kd) { set(kd.loader->faults); });
    }

    void openScreen() {
        link::writecomport(QString::number(kFirmwarePort));
        control<QAction>("main", "mnuReprogIR")->trigger();
        QVERIFY(shown("ReProg_Link"));
        if (fast_) {
            press("Check1"); // a device that takes any speed takes the faster one
        }
    }
    const ReprogState& state() const {
        return qobject_cast<firmware::ReProg_Link*>(loaded("ReProg_Link"))->state();
    }
    void tick(int times = 1) const {
        for (int i = 0; i < times; ++i) {
            expire("ReProg_Link", "Timer1");
        }
    }
    bool tickUntil(const std::function<bool()>& done) const {
        tick();
        return done();
    }
    QString lamp(size_t index) const { return state().Label4.at(index).text; }
    void press(const char* name) const { control<QAbstractButton>("ReProg_Link", name)->click(); }
    bool holds(const char* word) const { return state().Text4.holds(word); }
    void waitFor(const char* word) const {
        QTRY_VERIFY_WITH_TIMEOUT(tickUntil([&] { return holds(word); }), 20000);
    }
    /// Presses Refresh every second until that holds; the device may need a rest before it listens.
    bool refreshUntil(const std::function<bool()>& done) const {
        for (QDeadlineTimer end(20000); !end.hasExpired();) {
            press("SendCh(3)");
            for (int turn = 0; turn < 50; ++turn) {
                QTest::qWait(20);
                if (tickUntil(done)) {
                    return true;
                }
            }
        }
        return false;
    }
    /// To the page of the mode, from wherever the device stands.
    void enterMode() const {
        press("SendCh(6)");
        waitFor("REPROG MODE");
        press("SendCh(3)");
        // All of the page: what comes of it behind the first records would end the send.
        QTRY_VERIFY_WITH_TIMEOUT(tickUntil([this] {
                                     const QByteArray& text = state().Text4.bytes();
                                     return text.contains("REPROG MODE") && text.endsWith("Restart\r\n");
                                 }),
                                 20000);
    }
    void waitForLamp(size_t index, const QString& words) const {
        QTRY_VERIFY2_WITH_TIMEOUT(tickUntil([&] { return lamp(index) == words; }), state().Text4.bytes(),
                                  20000);
    }
    QByteArray imageInDevice() {
        QByteArray received;
        device.with([&received](Kd& kd) { received = kd.image(); });
        return received;
    }
    /// The programming of a device under test takes no minute, and neither does its wait.
    void passTheWait() const { tick(65); }

    Program program;
    QByteArray image;
    KdPort device;

private:
    bool fast_ = false;
};

} // namespace benthor::tests
