#include "gas/setuplook.h"

#include "gas/gascalc.h"
#include "gas/setupfields.h"
#include "gas/setuptext.h"
#include "link/setuplink.h"

namespace benthor::gas {

namespace {

QString nothingLeft() {
    return QStringLiteral("Nothing was sent or saved.");
}

QString holds(const QString& text) {
    return text.isEmpty() ? QStringLiteral("is empty") : QStringLiteral("holds \"%1\"").arg(text);
}

QString must(const QString& text, const char* kind) {
    return QStringLiteral("%1; %2").arg(holds(text), QLatin1String(kind));
}

/// Whether a helium cell would stand in the text if oxygen left it room.
bool heliumAlone(const QString& text) {
    GasRow row;
    row.O2 = QStringLiteral("0");
    row.He = text;
    return gasfields(row, kMetresPerBar).helium.has_value();
}

void lookAtMix(const GasRow& row, int i, QList<WrongCell>& wrong) {
    const bool oxygen = unsignednumber(row.O2, 0).value_or(101) <= 100;
    const bool helium = heliumAlone(row.He);
    if (!oxygen) {
        wrong += {Cell::O2, i, row.name + QStringLiteral(", O2"),
                  must(row.O2, "it must be a whole per cent from 0 to 100")};
    }
    if (!helium) {
        wrong += {Cell::He, i, row.name + QStringLiteral(", He"),
                  must(row.He, "it must be a whole per cent from 0 to 100, in three characters at most")};
    }
    if (oxygen && helium && !gasfields(row, kMetresPerBar).nitrogen) {
        const QString why = QStringLiteral("O2 and He are more than 100 per cent together");
        wrong += {Cell::O2, i, row.name + QStringLiteral(", O2"), why};
        wrong += {Cell::He, i, row.name + QStringLiteral(", He"), why};
    }
}

void lookAtRow(const GasPlan& plan, int i, QList<WrongCell>& wrong) {
    const GasRow& row = plan.rows[static_cast<size_t>(i)];
    lookAtMix(row, i, wrong);
    if (!gasfields(row, plan.depthperbar).depth) {
        wrong +=
            {Cell::MOD, i, row.name + QStringLiteral(", MOD"),
             must(row.MOD, plan.feet()
                               ? "it must be a depth from 0 to 3209 feet, a tenth at most behind the point"
                               : "it must be a depth from 0 to 999.9 metres, a tenth at most behind the "
                                 "point")};
    }
    if (!cellnumber(row.PPO2)) {
        wrong += {Cell::PPO2, i, row.name + QStringLiteral(", PPO2"),
                  must(row.PPO2, "it must be a number of bar")};
    }
}

void lookAtSettings(const GasPlan& plan, QList<WrongCell>& wrong) {
    const Settings& settings = plan.settings;
    const bool number = plan.Text5.isEmpty() || cellnumber(plan.Text5);
    if (!number || plan.headfeet != plan.feet()) {
        wrong += {Cell::Maximum, -1, QStringLiteral("Max PPO2"),
                  must(plan.Text5, number ? "the change of unit waits for a number from 0 to 2.0 bar"
                                          : "it must be a number of bar")};
    }
    struct Box {
        Cell cell;
        char16_t letter;
        const QString& text;
        const char* kind;
    };
    const std::array<Box, 3> boxes{
        {{Cell::SetPoint, u'P', settings.sptext, "it must be a number of bar with two places at most"},
         {Cell::ScreenSaver, u'V', settings.ScreenSaveText, "it must be whole seconds, three digits at most"},
         {Cell::Home, u'W', settings.HomeText, "it must be whole seconds, three digits at most"}}};
    for (const Box& box : boxes) {
        for (size_t tag = 0; tag < kTags.size(); ++tag) {
            if (kTags[tag].letter == box.letter && !fieldvalue(plan, tag, {})) {
                wrong += {box.cell, -1, QLatin1String(kTags[tag].setting), must(box.text, box.kind)};
            }
        }
    }
}

QString wordsOf(const QList<WrongCell>& wrong) {
    QString words = nothingLeft();
    for (const WrongCell& one : wrong) {
        words += QStringLiteral("\r\n%1: %2.").arg(one.name, one.why);
    }
    return words;
}

QString placesRefusal(const QString& text) {
    const QString place = misplaced(text);
    if (place.isEmpty()) {
        return {};
    }
    const bool helium = text.contains(u'.') && text.size() == kSetupText;
    return nothingLeft() +
           (helium ? QStringLiteral("\r\n%1: the setup text holds a point, which no device reads.")
                   : QStringLiteral("\r\nThe setup text is not as it must be, at: %1. It was read so "
                                    "from gdatalast.mit or gdata.mit in the program folder. Close this "
                                    "screen, move the damaged file away and open the screen again."))
               .arg(place);
}

/// Without what ends a file or a sending behind the text's own ESC.
QString bare(const QString& text) {
    QString body = text;
    while (body.endsWith(u'\r') || body.endsWith(u'\n') || body.endsWith(QChar(kEscape))) {
        body.chop(1);
    }
    return body + QChar(kEscape);
}

} // namespace

QList<WrongCell> wrongcells(const GasPlan& plan) {
    QList<WrongCell> wrong;
    for (int i = 0; i < kGases; ++i) {
        lookAtRow(plan, i, wrong);
    }
    lookAtSettings(plan, wrong);
    return wrong;
}

QString refusalof(const GasPlan& plan, const QString& text, const QDateTime& now) {
    const QList<WrongCell> wrong = wrongcells(plan);
    if (!wrong.isEmpty()) {
        return wordsOf(wrong);
    }
    QString places = placesRefusal(text);
    if (!places.isEmpty()) {
        return places;
    }
    const QString difference = differing(text, textof(plan, now));
    return difference.isEmpty()
               ? QString()
               : nothingLeft() +
                     QStringLiteral("\r\nThe text to send is not what the gas screen shows, at: %1. "
                                    "Update KD/Tolby sends what it shows.")
                         .arg(difference);
}

QString saverefusal(const GasPlan& plan) {
    const QList<WrongCell> wrong = wrongcells(plan);
    return wrong.isEmpty() ? placesRefusal(plan.Text7) : wordsOf(wrong);
}

QString whynothing(const GasPlan& plan, const QDateTime& now) {
    const QList<WrongCell> wrong = wrongcells(plan);
    if (!wrong.isEmpty()) {
        return wordsOf(wrong);
    }
    GasPlan next = plan; // as the next tick makes it
    next.gasblock = textof(plan, now).first(kGasBlock);
    next.settings.divegas = plan.start;
    patchsettings(next, now);
    return placesRefusal(next.Text7);
}

QString textrefusal(const QString& text) {
    const QString place = misplaced(bare(text));
    return place.isEmpty()
               ? QString()
               : nothingLeft() + QStringLiteral("\r\nThe text to send is no whole setup, at: %1. Choose "
                                                "another file, or send with Update KD/Tolby.")
                                     .arg(place);
}

QString bodyrefusal(const GasPlan& plan, const link::SetupBody& body, bool visible, const QDateTime& now) {
    if (body.fromFile) {
        return textrefusal(body.text);
    }
    if (visible) {
        return refusalof(plan, bare(body.text), now);
    }
    const QList<WrongCell> wrong = wrongcells(plan);
    return wrong.isEmpty() ? textrefusal(body.text) : wordsOf(wrong);
}

} // namespace benthor::gas
