#include "firmware/processlist.h"

#include <algorithm>

namespace benthor::firmware {

using platform::RunningProcess;

std::vector<RunningProcess> inListOrder(std::vector<RunningProcess> processes) {
    std::sort(processes.begin(), processes.end(), [](const RunningProcess& one, const RunningProcess& other) {
        const int order = one.name.compare(other.name, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : one.id < other.id;
    });
    return processes;
}

QString processNames(const std::vector<RunningProcess>& processes) {
    QString names;
    for (const RunningProcess& process : processes) {
        names += process.name + QLatin1Char('\n');
    }
    return names;
}

bool fitsFilter(const RunningProcess& process, QStringView filter) {
    const QStringView wanted = filter.trimmed();
    return process.name.contains(wanted, Qt::CaseInsensitive) ||
           QString::number(process.id).startsWith(wanted);
}

QString programCount(qsizetype all, qsizetype shown) {
    const QString programs = QStringLiteral("%1 %2").arg(all).arg(all == 1 ? QStringLiteral("program")
                                                                           : QStringLiteral("programs"));
    return shown == all ? programs : QStringLiteral("%1 of %2").arg(shown).arg(programs);
}

} // namespace benthor::firmware
