// Writes what CHANGELOG.md tells in the forms that a package has it in: Debian's changelog, or the releases
// of AppStream's metadata. Usage: benthor-makechanges debian|appstream <CHANGELOG.md> <version> <ISO date> >
// result A section "## <version>, <yyyy-mm-dd>" is a release of that day; one without a day is not released
// yet and has the date that was given. The newest one must be <version>: a package must not tell of another.

#include "platform/files.h"

#include <QDateTime>
#include <QLocale>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>
#include <QTimeZone>

#include <cstdio>
#include <vector>

namespace {

constexpr int kDebianWidth = 78;

struct Part {
    QString heading;
    QStringList items;
};

struct Release {
    QString version;
    QDateTime date;
    bool released = false;
    std::vector<Part> parts;
};

/// Markdown's marks are taken away where they only set words apart.
QString plain(QString text) {
    static const QRegularExpression marks(QStringLiteral("(\\*\\*?|`)([^*`]+)\\1"));
    return text.replace(marks, QStringLiteral("\\2")).simplified();
}

QDateTime dateOf(const QString& day, const QDateTime& otherwise) {
    const QDate date = QDate::fromString(day, Qt::ISODate);
    return date.isValid() ? QDateTime(date, QTime(12, 0), QTimeZone::utc()) : otherwise;
}

std::vector<Release> readReleases(const QStringList& lines, const QDateTime& otherwise) {
    static const QRegularExpression release(QStringLiteral("^## ([0-9][0-9A-Za-z.~+]*), (.+)$"));
    std::vector<Release> releases;
    for (const QString& line : lines) {
        if (const auto found = release.match(line); found.hasMatch()) {
            const QDate day = QDate::fromString(found.captured(2), Qt::ISODate);
            releases.push_back({found.captured(1), dateOf(found.captured(2), otherwise), day.isValid(), {}});
        } else if (releases.empty()) {
            continue;
        } else if (line.startsWith(QLatin1String("### "))) {
            releases.back().parts.push_back({line.mid(4), {}});
        } else if (line.startsWith(QLatin1String("- "))) {
            if (releases.back().parts.empty()) {
                releases.back().parts.emplace_back();
            }
            releases.back().parts.back().items += line.mid(2);
        } else if (line.startsWith(QLatin1String("  ")) && !releases.back().parts.empty() &&
                   !releases.back().parts.back().items.isEmpty()) {
            releases.back().parts.back().items.back() += QLatin1Char(' ') + line;
        }
    }
    return releases;
}

/// Lines of at most kDebianWidth characters: "  * words", and "    words" for those that follow.
QString debianItem(const QString& text) {
    QString all;
    QString line = QStringLiteral("  *");
    for (const QString& word : plain(text).split(QLatin1Char(' '))) {
        if (line.size() + 1 + word.size() > kDebianWidth) {
            all += line + QLatin1Char('\n');
            line = QStringLiteral("   ");
        }
        line += QLatin1Char(' ') + word;
    }
    return all + line + QLatin1Char('\n');
}

QString debian(const std::vector<Release>& releases) {
    QString all;
    for (const Release& release : releases) {
        all += QStringLiteral("benthor (%1) unstable; urgency=medium\n").arg(release.version);
        for (const Part& part : release.parts) {
            all += QLatin1Char('\n');
            if (!part.heading.isEmpty()) {
                all += QStringLiteral("  [ %1 ]\n").arg(plain(part.heading));
            }
            for (const QString& item : part.items) {
                all += debianItem(item);
            }
        }
        const QString date = QLocale::c().toString(release.date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss"));
        all +=
            QStringLiteral("\n -- Benthor maintainers <maintainers@benthor.example>  %1 +0000\n\n").arg(date);
    }
    all.chop(1);
    return all;
}

/// Software centres show little: what is new, without what was mended.
QString appstream(const std::vector<Release>& releases) {
    QString all = QStringLiteral("  <releases>\n");
    for (const Release& release : releases) {
        all +=
            QStringLiteral(
                "    <release version=\"%1\" date=\"%2\" type=\"%3\">\n      <description>\n        <ul>\n")
                .arg(release.version, release.date.toString(QStringLiteral("yyyy-MM-dd")),
                     release.released ? QStringLiteral("stable") : QStringLiteral("development"));
        if (!release.parts.empty()) {
            for (const QString& item : release.parts.front().items) {
                all += QStringLiteral("          <li>%1</li>\n").arg(plain(item).toHtmlEscaped());
            }
        }
        all += QStringLiteral("        </ul>\n      </description>\n    </release>\n");
    }
    return all + QStringLiteral("  </releases>\n");
}

} // namespace

int main(int argc, char** argv) {
    QTextStream err(stderr);
    const QByteArray form = argc == 5 ? argv[1] : "";
    if (form != "debian" && form != "appstream") {
        err << "usage: benthor-makechanges debian|appstream <CHANGELOG.md> <version> <ISO date>" << Qt::endl;
        return 2;
    }
    const auto bytes = benthor::platform::readFile(QString::fromLocal8Bit(argv[2]));
    const QString version = QString::fromLocal8Bit(argv[3]);
    const QDateTime date = QDateTime::fromString(QString::fromLocal8Bit(argv[4]), Qt::ISODate).toUTC();
    if (!bytes || !date.isValid()) {
        err << "cannot read " << argv[2] << ", or no date: " << argv[4] << Qt::endl;
        return 1;
    }
    const std::vector<Release> releases =
        readReleases(QString::fromUtf8(*bytes).split(QLatin1Char('\n')), date);
    if (releases.empty() || releases.front().version != version || releases.front().parts.empty()) {
        err << argv[2] << " does not begin with what is new in " << version << Qt::endl;
        return 1;
    }
    QTextStream out(stdout);
    out << (form == "debian" ? debian(releases) : appstream(releases));
    return 0;
}
