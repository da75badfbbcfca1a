#include "tests/walk/madedives.h"

#include <QDateTime>

#include <algorithm>

namespace benthor::tests {

namespace {

QByteArray line(const char* keyword, const QByteArray& value) {
    return QByteArray(keyword) + value + "\r\n";
}

/// The importer looks for a comma within six bytes behind the keyword, the directory begins at the eighth.
QByteArray field(const char* keyword, const QByteArray& value) {
    return line(keyword, "     , " + value);
}

/// A way down, along and up again; the whole number of each sample tells one dive from another.
QByteArray profile(simulator::Random& random, int samples, int gases) {
    QByteArray text = "Profile\r\nTime,Depth,Mix\r\n";
    int depth = 0;
    for (int i = 0; i < samples; ++i) {
        depth =
            std::clamp(depth + random.whole(i * 2 < samples ? -10 : -40, i * 2 < samples ? 40 : 10), 0, 900);
        text += "," + QByteArray::number(depth) + "," + QByteArray::number(random.whole(0, gases - 1)) +
                ",70,M0,T" + QByteArray::number(random.whole(4, 30)) + ",A500\r\n";
    }
    return text + "End\r\n";
}

QString moment(int code) {
    return QDateTime(QDate(1991, 12, 31), QTime(0, 0), Qt::UTC)
        .addSecs(code)
        .toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

MadeDive madeDive(simulator::Random& random, int number, int start, MadeKind kind) {
    MadeDive dive;
    const int seconds = random.whole(600, 5400);
    const QByteArray depth = QByteArray::number(random.whole(100, 899) / 10.0, 'f', 1);
    dive.started = moment(start);
    dive.finished = moment(start + seconds);
    dive.duration = QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60);
    dive.depth = QString::fromLatin1(depth + "00");
    dive.startcode = QString::number(start);
    dive.serial = QStringLiteral("KD%1").arg(10000 + number);
    const QByteArray names = "ver=V2.31\r\n" + line("Recint=", kind == MadeKind::Unreadable ? "12.5" : "10");
    dive.text = (kind == MadeKind::Nameless ? QByteArray() : names) + line("SN=", dive.serial.toLatin1()) +
                field("Start", QByteArray::number(start)) +
                field("Finish", QByteArray::number(start + seconds)) + field("Status", "0") +
                "Descend,3\r\nDAtmos,1013\r\nDStack,360\r\nDUsage,5400\r\n" + field("MaxD", depth) +
                field("OTU", QByteArray::number(random.whole(1, 99))) + "HPCylinder, 200 bar\r\n";
    const int gases = random.whole(1, 4);
    for (int gas = 0; gas < gases && kind != MadeKind::NoGas; ++gas) {
        dive.gases += QStringLiteral("%1,%2,%3,%4,1")
                          .arg(gas, 4, 10, QLatin1Char('0'))
                          .arg(random.whole(30, 79))
                          .arg(gas == 0 ? 0 : random.whole(0, 20))
                          .arg(random.whole(100, 999));
        dive.text += "Gas" + dive.gases.last().toLatin1() + "\r\n";
    }
    for (int tissue = 0; tissue < 2; ++tissue) {
        dive.tissues += QStringLiteral("%1,%2,%3")
                            .arg(tissue, 4, 10, QLatin1Char('0'))
                            .arg(random.whole(70, 200))
                            .arg(tissue);
        dive.text += "Tissue" + dive.tissues.last().toLatin1() + "\r\n";
    }
    dive.text += profile(random, random.whole(3, 60), gases);
    dive.opens = kind != MadeKind::Unreadable;
    return dive;
}

} // namespace

MadeDive makeDive(simulator::Random& random, int number, MadeKind kind) {
    const int start = 810000000 + number * 86400 + random.whole(0, 40000);
    return madeDive(random, number, start, kind);
}

MadeDive makeTwin(simulator::Random& random, int number, const MadeDive& of) {
    return madeDive(random, number, of.startcode.toInt(), MadeKind::Good);
}

} // namespace benthor::tests
