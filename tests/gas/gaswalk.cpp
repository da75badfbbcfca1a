#include "tests/gas/gaswalk.h"

#include "gas/screens/gasblend.h"
#include "gas/setuptext.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QRandomGenerator>
#include <QSlider>
#include <QtTest>

#include <cmath>

namespace benthor::tests {

namespace {

constexpr int kGases = 10;

QByteArray stockFile() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D050 000 0180 0 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 0330 0 H047 035 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000000 L0 M2 N0 O0 P130 Q0 "
           "R0 S1 "
           "T100 U004 V120 W030 X1 Y1 Z\x1b\r\n";
}

QByteArray deviceText(int variant) {
    QByteArray text = stockFile().first(222);
    if (variant & 1) {
        text.replace("S1", "S3").replace("P130", "P105");
    }
    if (variant & 2) {
        text.replace("H047 035", "H050 040").replace("L0", "L3");
    }
    if (variant & 4) {
        text.replace("C020 000", "C100 000"); // a gas without oxygen
    }
    return text;
}

/// What a walk stands on.
struct Ground {
    Ground() {
        process().depthunit = QStringLiteral("metre");
        folder.put("gdata.mit", stockFile());
        for (int i = 0; i < 8; ++i) {
            folder.put(QStringLiteral("%1.mit").arg(i), deviceText(i) + "1 Z\x1b\r\n");
        }
        open();
    }
    ~Ground() { delete screen.data(); }
    void open() {
        screen = new gas::GasBlend(link);
        screen->showScreen();
        tick();
    }
    void tick() { control<platform::TickTimer>("Timer5")->expire(); }

    template <class T> T* control(const QString& name) const {
        T* found = screen->findChild<T*>(name);
        if (found == nullptr) {
            qFatal("no control %s", qPrintable(name));
        }
        return found;
    }
    template <class T> T* control(const char* name, int index) const {
        return control<T>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
    }
    QString box(const char* name, int index) const { return control<QLineEdit>(name, index)->text(); }
    void type(QLineEdit* into, const QString& text, bool anew) const {
        if (!into->isEnabled()) {
            return;
        }
        into->setFocus();
        anew ? into->selectAll() : into->end(false);
        if (anew && text.isEmpty()) {
            QTest::keyClick(into, Qt::Key_Delete);
        }
        for (const QChar one : text) {
            if (one.unicode() < 128) {
                QTest::keyClick(into, one.toLatin1());
            } else {
                QTest::sendKeyEvent(QTest::Click, into, Qt::Key_unknown, QString(one), Qt::NoModifier);
            }
        }
        if (into->objectName().startsWith(QLatin1String("Text4"))) {
            QTest::keyClick(into, Qt::Key_Return);
        }
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    FakeLink link;
    QPointer<gas::GasBlend> screen;
};

const QStringList& boxNames() {
    static const QStringList names{QStringLiteral("Text5"), QStringLiteral("sptext"),
                                   QStringLiteral("ScreenSaveText"), QStringLiteral("HomeText")};
    return names;
}

// --- what the screen shows, read from its controls alone

std::optional<QString> digits(double value, int width) {
    if (!std::isfinite(value) || value < 0 || value >= std::pow(10, width)) {
        return std::nullopt;
    }
    return QStringLiteral("%1").arg(std::lrint(value), width, 10, QLatin1Char('0'));
}

std::optional<double> numberIn(const QString& text) {
    bool good = false;
    const double value = text.trimmed().toDouble(&good);
    return good ? std::optional(value) : std::nullopt;
}

std::optional<QString> gasShown(const Ground& ground, int row) {
    const auto oxygen = numberIn(ground.box("Text1", row));
    const auto helium = numberIn(ground.box("Text2", row));
    const auto mod = numberIn(ground.box("Text3", row));
    if (!oxygen || !helium || !mod) {
        return std::nullopt;
    }
    const bool feet = ground.control<QLabel>(QStringLiteral("Label4(0)"))->text() == QLatin1String("MODft");
    const auto nitrogen = digits(100 - *oxygen - *helium, 3);
    const auto mix = digits(*helium, 3);
    const auto depth = digits(std::nearbyint(*mod / (feet ? 32.098 : 10.0) * 100), 4);
    // A whole per cent is a whole one: 32.5 is none.
    if (!nitrogen || !mix || !depth || *oxygen != std::floor(*oxygen) || *helium != std::floor(*helium)) {
        return std::nullopt;
    }
    return QStringLiteral("%1%2 %3 %4 %5 ")
        .arg(QChar(u'A' + row))
        .arg(*nitrogen, *mix, *depth,
             ground.control<QCheckBox>("Check1", row)->isChecked() ? QStringLiteral("1")
                                                                   : QStringLiteral("0"));
}

QString flag(const Ground& ground, int index) {
    return ground.control<QCheckBox>("Check2", index)->isChecked() ? QStringLiteral("1")
                                                                   : QStringLiteral("0");
}

std::optional<QString> settingsShown(const Ground& ground) {
    const auto list = [&ground](int index) {
        return ground.control<QComboBox>("List1", index)->currentIndex();
    };
    const auto seconds = [&ground](const char* name) {
        const auto value = numberIn(ground.control<QLineEdit>(QLatin1String(name))->text());
        return value && *value == std::floor(*value) ? digits(*value, 3) : std::nullopt;
    };
    const auto setpoint = numberIn(ground.control<QLineEdit>(QStringLiteral("sptext"))->text());
    const auto hundredths = setpoint && std::abs(*setpoint * 100 - std::nearbyint(*setpoint * 100)) < 1e-6
                                ? digits(std::nearbyint(*setpoint * 100), 3)
                                : std::nullopt;
    const auto saver = seconds("ScreenSaveText");
    const auto home = seconds("HomeText");
    if (!hundredths || !saver || !home) {
        return std::nullopt;
    }
    int start = 0;
    while (start < kGases && !ground.control<QRadioButton>("Option1", start)->isChecked()) {
        ++start;
    }
    const bool feetList = !ground.control<QComboBox>("List1", 3)->isHidden();
    // Its label follows with the next tick.
    const bool metre = process().depthunit == QLatin1String("metre");
    const QString closed = flag(ground, 3);
    return QStringLiteral("L%1 M%2 N%3 O%4 P%5 Q%6 R%7 S%8 ")
               .arg(start)
               .arg(list(0))
               .arg(list(feetList ? 3 : 2))
               .arg(flag(ground, 1), *hundredths, flag(ground, 2), flag(ground, 0), metre ? "1" : "3") +
           QStringLiteral("T%1 U%2 V%3 W%4 X%5 Y%5 Z\x1b")
               .arg(*digits(80 + 10 * list(4), 3), *digits(4 + 20 * list(5), 3), *saver, *home, closed);
}

/// Whether the stamp counts the seconds of the clock since the last evening of 1991, as one of this walk
/// does.
bool isStamp(const QString& digits) {
    constexpr int kLongest = 600; // seconds of a walk
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime clock(now.date(), now.time(), Qt::UTC);
    bool good = false;
    const qint64 stamp = digits.toLongLong(&good);
    const qint64 age = QDateTime(QDate(1991, 12, 31), QTime(0, 0, 1), Qt::UTC).secsTo(clock) - stamp;
    return good && digits.size() == 10 && age >= 0 && age <= kLongest;
}

/// Where a text differs from the screen; empty: nowhere.
QString difference(const Ground& ground, const QString& text) {
    if (text.size() != 226) {
        return QStringLiteral("it has %1 characters").arg(text.size());
    }
    for (int row = 0; row < kGases; ++row) {
        const auto shown = gasShown(ground, row);
        if (shown != text.mid(16 * row, 16)) {
            return QStringLiteral("\"%1\" left where the screen shows \"%2\"")
                .arg(text.mid(16 * row, 16), shown.value_or(QStringLiteral("no gas")));
        }
    }
    const auto shown = settingsShown(ground);
    return text.at(160) == u'K' && isStamp(text.mid(161, 10)) && text.at(171) == u' ' &&
                   shown == text.mid(172)
               ? QString()
               : QStringLiteral("\"%1\" left where the screen shows \"%2\"")
                     .arg(text.mid(160), shown.value_or(QStringLiteral("no settings")));
}

/// The places that nothing may move.
QString outOfPlace(const QString& text) {
    static const QString places = [] {
        QString made;
        for (int row = 0; row < kGases; ++row) {
            made += QChar(u'A' + row) + QStringLiteral("### ### #### # ");
        }
        return made + QStringLiteral("K########## L# M# N# O# P### Q# R# S# T### U### V### W### X# Y# Z\x1b");
    }();
    if (text.size() != places.size()) {
        return QStringLiteral("the text has %1 characters: %2").arg(text.size()).arg(text);
    }
    for (qsizetype i = 0; i < places.size(); ++i) {
        const bool free = places.at(i) == u'#';
        if (free ? !text.at(i).isDigit() && text.at(i) != u'.' : text.at(i) != places.at(i)) {
            return QStringLiteral("place %1 is not as it must be: %2").arg(i + 1).arg(text);
        }
    }
    return {};
}

// --- the deeds

using Result = std::optional<QString>;

Result looked(const Ground& ground, const QString& left, qsizetype boxesBefore, bool went) {
    ++(went ? walkCount().left : walkCount().keptBack);
    if (went) {
        const QString wrong = difference(ground, left);
        return wrong.isEmpty() ? Result() : Result(wrong);
    }
    return ground.dialogs.asked().size() > boxesBefore
               ? Result()
               : Result(QStringLiteral("nothing left, and nothing was said"));
}

Result update(Ground& ground, const char* button, int answer) {
    const qsizetype boxes = ground.dialogs.asked().size();
    const qsizetype sent = ground.link.sent.size();
    ground.dialogs.answer(answer != 0);
    ground.control<QPushButton>(QLatin1String(button))->click();
    const bool went = ground.link.sent.size() > sent;
    if (went && (process().importing || process().deviceconnected != 1)) {
        return QStringLiteral("sent in an import or without a device");
    }
    return looked(ground, went ? ground.link.sent.last().chopped(1) : QString(), boxes, went);
}

/// A save writes the text of the last tick, and a starting gas that one tick makes active stands in the text
/// of the next.
Result save(Ground& ground) {
    ground.tick();
    ground.tick();
    const qsizetype boxes = ground.dialogs.asked().size();
    const QString path = ground.folder.path(QStringLiteral("saved.mit"));
    QFile::remove(path);
    ground.dialogs.answerFile(path);
    ground.control<QAction>(QStringLiteral("mnuSave"))->trigger();
    const bool went = QFile::exists(path);
    const QString saved = QString::fromLatin1(ground.folder.get(QStringLiteral("saved.mit")));
    if (!went) {
        ground.dialogs.dropFiles();
    }
    return looked(ground, saved.chopped(went ? 2 : 0), boxes, went);
}

Result sendFile(Ground& ground, int answer) {
    if (ground.link.textToSend.isEmpty()) {
        return {};
    }
    const qsizetype boxes = ground.dialogs.asked().size();
    ground.dialogs.answer(answer != 0);
    const bool went = ground.screen->setupMayGo({ground.link.textToSend, false});
    return looked(ground, ground.link.textToSend.chopped(1), boxes, went);
}

/// A closed screen leaves a text in its places; where it could keep what was shown, that.
Result reopen(Ground& ground) {
    const qsizetype boxes = ground.dialogs.asked().size();
    const auto settings = settingsShown(ground);
    QStringList gases;
    for (int row = 0; row < kGases; ++row) {
        gases += gasShown(ground, row).value_or(QString());
    }
    ground.screen->close();
    const QString kept = QString::fromLatin1(ground.folder.get(QStringLiteral("gdatalast.mit"))).chopped(2);
    const bool said = ground.dialogs.asked().size() > boxes;
    ground.open();
    const QString wrong = outOfPlace(kept);
    if (!wrong.isEmpty()) {
        return wrong;
    }
    for (int row = 0; row < kGases && !said; ++row) {
        if (gases.at(row) != kept.mid(16 * row, 16)) {
            return QStringLiteral("\"%1\" was kept where \"%2\" was shown")
                .arg(kept.mid(16 * row, 16), gases.at(row));
        }
    }
    return said || settings == kept.mid(172) ? Result()
                                             : Result(QStringLiteral("\"%1\" was kept where \"%2\" was shown")
                                                          .arg(kept.mid(172), settings.value_or(QString())));
}

void choose(Ground& ground, int list, int index) {
    auto* box = ground.control<QComboBox>("List1", list);
    if (!box->isHidden()) {
        box->setCurrentIndex(index % box->count());
        emit box->activated(box->currentIndex());
    }
}

void click(QAbstractButton* button) {
    if (button->isEnabled()) {
        button->click();
    }
}

Result act(Ground& ground, const Step& step) {
    static constexpr std::array<const char*, 4> kCells{"Text1", "Text2", "Text3", "Text4"};
    switch (step.deed) {
    case Deed::TypeCell:
    case Deed::Append:
        ground.type(ground.control<QLineEdit>(kCells.at(static_cast<size_t>(step.what)), step.number),
                    step.text, step.deed == Deed::TypeCell);
        break;
    case Deed::TypeBox:
        ground.type(ground.control<QLineEdit>(boxNames().at(step.what)), step.text, true);
        break;
    case Deed::Active:
        click(ground.control<QCheckBox>("Check1", step.number));
        break;
    case Deed::Start:
        click(ground.control<QRadioButton>("Option1", step.number));
        break;
    case Deed::Stepper:
        click(ground.control<QPushButton>(step.what % 2 == 0 ? "Command3" : "Command4", step.number % 5));
        break;
    case Deed::Slider: {
        auto* slider = ground.control<QSlider>("Slider1", step.what % 2);
        if (slider->isEnabled()) {
            slider->setValue(step.number * 11);
        }
        break;
    }
    case Deed::List:
        choose(ground, step.what, step.number);
        break;
    case Deed::Check:
        click(ground.control<QCheckBox>("Check2", step.what % 4));
        break;
    case Deed::Unit:
        ground.control<QAction>(step.what % 2 == 0 ? QStringLiteral("mnuMeters") : QStringLiteral("mnuFeet"))
            ->trigger();
        break;
    case Deed::UnitElsewhere:
        process().depthunit = step.what % 2 == 0 ? QStringLiteral("metre") : QStringLiteral("Feet");
        break;
    case Deed::Tick:
        ground.tick();
        break;
    case Deed::Arrival:
        ground.screen->receiveSetup("PPP" + deviceText(step.number % 8) + "PPP");
        break;
    case Deed::OpenFile:
        ground.dialogs.answerFile(ground.folder.path(QStringLiteral("%1.mit").arg(step.number % 8)));
        ground.control<QAction>(QStringLiteral("mnuOpen"))->trigger();
        break;
    case Deed::BringBack:
        ground.control<QAction>(QStringLiteral("bringBackTyped"))->trigger();
        break;
    case Deed::Import:
        process().importing = step.what % 3 == 0;
        break;
    case Deed::Connect:
        process().deviceconnected = step.what % 3 == 0 ? 0 : 1;
        ground.link.hides = step.number % 4 == 0;
        break;
    case Deed::Update:
        return update(ground, "Command1", step.what);
    case Deed::Save:
        return save(ground);
    case Deed::SendFile:
        return sendFile(ground, step.what);
    case Deed::Reopen:
        return reopen(ground);
    case Deed::Spare:
        ground.control<QPushButton>(QStringLiteral("Command2"))->click();
        break;
    }
    return {};
}

QString randomText(QRandomGenerator& random) {
    static const QStringList pool{
        QStringLiteral(""),       QStringLiteral("-"),     QStringLiteral("0"),
        QStringLiteral("00"),     QStringLiteral("0005"),  QStringLiteral("12m"),
        QStringLiteral("1,30"),   QStringLiteral("1,3"),   QStringLiteral("1.25"),
        QStringLiteral("w"),      QStringLiteral("Y"),     QStringLiteral("K"),
        QStringLiteral("l"),      QStringLiteral("-5"),    QStringLiteral("+7"),
        QStringLiteral("1000"),   QStringLiteral("999.9"), QStringLiteral("9999"),
        QStringLiteral("35.5"),   QStringLiteral("5.5"),   QStringLiteral("5,5"),
        QStringLiteral(".5"),     QStringLiteral("5."),    QStringLiteral("."),
        QStringLiteral(" 7"),     QStringLiteral("7 "),    QStringLiteral("1e3"),
        QStringLiteral("101"),    QStringLiteral("100"),   QStringLiteral("120"),
        QStringLiteral("2.01"),   QStringLiteral("1.305"), QStringLiteral("18.25"),
        QStringLiteral("nan"),    QStringLiteral("0x10"),  QStringLiteral("--1"),
        QStringLiteral("\u0663"), QStringLiteral("300"),   QStringLiteral("A079 000 0400 1 ")};
    if (random.bounded(3) == 0) {
        return pool.at(random.bounded(static_cast<int>(pool.size())));
    }
    return random.bounded(4) == 0 ? QString::number(random.bounded(200) / 100.0, 'f', 2)
                                  : QString::number(random.bounded(130));
}

Deed randomDeed(QRandomGenerator& random) {
    struct Share {
        Deed deed;
        int parts;
    };
    static constexpr std::array<Share, 21> kShares{
        {{Deed::TypeCell, 34}, {Deed::TypeBox, 14}, {Deed::Append, 8},        {Deed::Active, 8},
         {Deed::Start, 4},     {Deed::Stepper, 6},  {Deed::Slider, 4},        {Deed::List, 5},
         {Deed::Check, 3},     {Deed::Unit, 3},     {Deed::UnitElsewhere, 2}, {Deed::Tick, 6},
         {Deed::Arrival, 3},   {Deed::OpenFile, 2}, {Deed::BringBack, 2},     {Deed::Import, 2},
         {Deed::Connect, 4},   {Deed::Update, 14},  {Deed::Save, 4},          {Deed::SendFile, 4},
         {Deed::Reopen, 2}}};
    int all = 0;
    for (const Share& share : kShares) {
        all += share.parts;
    }
    int at = random.bounded(all);
    for (const Share& share : kShares) {
        at -= share.parts;
        if (at < 0) {
            return share.deed;
        }
    }
    return Deed::Tick;
}

} // namespace

WalkCount& walkCount() {
    static WalkCount count;
    return count;
}

QList<Step> randomSteps(quint32 seed, int count) {
    QRandomGenerator random(seed);
    QList<Step> steps;
    for (int i = 0; i < count; ++i) {
        Step step;
        step.deed = randomDeed(random);
        step.what = random.bounded(step.deed == Deed::List ? 6 : 4);
        step.number = random.bounded(kGases);
        step.text = randomText(random);
        steps += step;
    }
    return steps;
}

QString wordsOf(const Step& step) {
    static constexpr std::array<const char*, 22> kNames{
        "TypeCell", "TypeBox", "Append",        "Active",   "Start",   "Stepper",  "Slider",    "List",
        "Check",    "Unit",    "UnitElsewhere", "Tick",     "Arrival", "OpenFile", "BringBack", "Import",
        "Connect",  "Update",  "Save",          "SendFile", "Reopen",  "Spare"};
    return QStringLiteral("%1 %2 %3 \"%4\"")
        .arg(QLatin1String(kNames.at(static_cast<size_t>(step.deed))))
        .arg(step.what)
        .arg(step.number)
        .arg(step.text);
}

std::optional<WalkFault> walk(const QList<Step>& steps) {
    Ground ground;
    for (int i = 0; i < steps.size(); ++i) {
        ground.dialogs.clear();
        ground.dialogs.dropAnswers();
        const Result wrong = act(ground, steps.at(i));
        if (wrong) {
            return WalkFault{i, *wrong};
        }
        const QString place = outOfPlace(ground.screen->plan().Text7);
        if (!place.isEmpty()) {
            return WalkFault{i, place};
        }
    }
    return std::nullopt;
}

QList<Step> shrunk(QList<Step> steps) {
    for (qsizetype piece = steps.size() / 2; piece > 0; piece /= 2) {
        for (qsizetype at = 0; at + piece <= steps.size();) {
            QList<Step> fewer = steps;
            fewer.remove(at, piece);
            if (walk(fewer)) {
                steps = fewer;
            } else {
                at += piece;
            }
        }
    }
    return steps;
}

} // namespace benthor::tests
