#include "gas/setupchanges.h"
#include "gas/setuptext.h"
#include "tests/gas/vectors.h"

#include <QRandomGenerator>

#include <ctime>

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

QDateTime momentOf(const QJsonValue& text) {
    return QDateTime::fromString(text.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QDateTime someMoment() {
    return {QDate(2017, 9, 27), QTime(1, 21, 18)};
}

void setSettings(GasPlan& plan, const QJsonValue& values) {
    Settings& settings = plan.settings;
    plan.start = settings.divegas = values["start"].toInt();
    settings.backlight = values["backlight"].toInt();
    settings.laststop = values["laststop"].toInt();
    settings.cns = values["cns"].toInt();
    settings.safety = values["safety"].toInt();
    settings.hudhi = values["hudhi"].toInt() == 1;
    settings.silent = values["silent"].toInt() == 1;
    settings.biggraphics = values["biggraphics"].toInt() == 1;
    settings.closed = values["closed"].toInt() == 1;
    settings.sptext = values["setpoint"].toString();
    settings.ScreenSaveText = values["screensave"].toString();
    settings.HomeText = values["home"].toString();
}

/// A text to patch: all letters in their places, every value 0.
QString emptyText() {
    QString text;
    for (int i = 0; i < kGases; ++i) {
        text += QChar(u'A' + i) + QStringLiteral("000 000 0000 0 ");
    }
    for (const Tag& tag : kTags) {
        text += QChar(tag.letter) + QString(tag.width, QLatin1Char('0')) + QLatin1Char(' ');
    }
    return text + QStringLiteral("Z\x1b");
}

QByteArray bytesOf(const QJsonValue& text) {
    return text.isNull() ? QByteArray() : QByteArray(text.toString().toLatin1().append(""));
}

/// A plan within what the screen can hold.
GasPlan randomPlan(QRandomGenerator& random, bool feet) {
    GasPlan plan = planIn(feet ? QStringLiteral("Feet") : QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        const int oxygen = random.bounded(1, 101);
        row.O2 = QString::number(oxygen);
        row.He = QString::number(random.bounded(0, 101 - oxygen));
        row.MOD = QString::number(random.bounded(0, feet ? 980 : 300));
        row.active = random.bounded(2) == 1;
    }
    Settings& settings = plan.settings;
    plan.start = settings.divegas = random.bounded(10);
    plan.rows[static_cast<size_t>(plan.start)].active = true;
    settings.backlight = random.bounded(5);
    settings.laststop = random.bounded(3);
    settings.cns = random.bounded(7);
    settings.safety = random.bounded(6);
    settings.hudhi = random.bounded(2) == 1;
    settings.silent = random.bounded(2) == 1;
    settings.biggraphics = random.bounded(2) == 1;
    settings.closed = random.bounded(2) == 1;
    settings.sptext = QString::number(random.bounded(40, 161) / 100.0, 'f', 2);
    settings.ScreenSaveText = QString::number(random.bounded(301));
    settings.HomeText = QString::number(random.bounded(301));
    return plan;
}

QString written(GasPlan& plan) {
    Told told;
    plan.Text7 = emptyText();
    buildgasblock(plan, told.say);
    patchsettings(plan, someMoment());
    return plan.Text7;
}

} // namespace

class TestSetuptext : public QObject {
    Q_OBJECT

private slots:
    void textsAgreeWithTheVectors_data();
    void textsAgreeWithTheVectors();
    void ticksAgreeWithTheVectors();
    void readsAgreeWithTheVectors_data();
    void readsAgreeWithTheVectors();
    void receivedFilesAgreeWithTheVectors();
    void openedTextsAgreeWithTheVectors();
    void startsAgreeWithTheVectors();
    void sendGuardsAgreeWithTheVectors();
    void deviceTypesAgreeWithTheVectors();

    void eachPositionHoldsWhatItMust();
    void whatIsWrittenReadsBackTheSame();
    void aValueThatIsTooLongStaysAsItWas();
    void theFirstLetterIsHitWhateverItsCase();
    void aLetterThatIsNotThereIsPassedOver();
    void aShortTextGrowsToItsGasBlock();
    void withoutABlockTheGasesStay();
    void theStampIsTenDigits();
    void theStampCountsTheClockWhateverTheZone();
    void aSetpointThatIsNoNumberLeavesItsField();
    void twoBlanksEmptyTheTextButNotTheCount();
    void aSecondALetsMoreIn();
    void inFeetTheTwoReadersDiffer();
    void aValueOutOfItsListEndsTheReading();
    void theSecondClosedCircuitIsNotReadBack();
    void theLetterSSetsTheUnit();
    void theStocksLeadingBlanksDoNoHarm();
    void aSavedFileIsOneLine();
    void aTextIsReadFromAtMost20000Bytes();
    void changesAgainstTheDeviceAreNamed();
    void withoutAReportEverySettingIsUnread();
};

void TestSetuptext::textsAgreeWithTheVectors_data() {
    QTest::addColumn<QJsonValue>("one");
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "texts")) {
        QTest::addRow("%s", qPrintable(one["about"].toString())) << one;
    }
}

void TestSetuptext::textsAgreeWithTheVectors() {
    QFETCH(QJsonValue, one);
    GasPlan plan = planIn(one["units"]);
    const QJsonArray gases = one["gases"].toArray();
    for (int i = 0; i < kGases; ++i) {
        GasRow& row = plan.rows[static_cast<size_t>(i)];
        row.O2 = gases[i]["O2"].toString();
        row.He = gases[i]["He"].toString();
        row.MOD = gases[i]["MOD"].toString();
        row.active = gases[i]["active"].toInt() == 1;
    }
    setSettings(plan, one["settings"]);
    Told told;
    QVERIFY(buildgasblock(plan, told.say));
    // The second closed circuit's place ends in the 1 or 0 of its own.
    plan.Text7 = emptyText();
    patchsettings(plan, momentOf(one["now"]));
    QCOMPARE(plan.Text7, one["text"].toString());
    QCOMPARE(plan.Text7.size(), kSetupText);
    QCOMPARE(plan.Text7.indexOf(QLatin1Char('Y')) + 1, kPositionOfY);
}

void TestSetuptext::ticksAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "ticks")) {
        GasPlan plan = planIn(QStringLiteral("metre"));
        setSettings(plan, one["settings"]);
        plan.Text7 = one["before"].toString();
        plan.gasblock = one["gas_block"].toString();
        patchsettings(plan, momentOf(one["now"]));
        QCOMPARE(plan.Text7, one["after"].toString());
    }
}

void TestSetuptext::readsAgreeWithTheVectors_data() {
    QTest::addColumn<QJsonValue>("one");
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "reads")) {
        QTest::addRow("%s", qPrintable(one["about"].toString())) << one;
    }
}

void TestSetuptext::readsAgreeWithTheVectors() {
    QFETCH(QJsonValue, one);
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    const HeldText held = readsetup(bytesOf(one["bytes"]));
    QCOMPARE(held.text, one["held_text"].toString());
    QStringList messages = held.messages;
    const bool long_enough = held.text.size() >= kUsableText;
    QCOMPARE(long_enough, one["screen_changed"].toBool());
    if (long_enough && !taketext(plan, held.text, told.say)) {
        messages += one["mode"].toInt() == 1 ? QStringLiteral("Error in file gdatalastrec.mit")
                                             : QStringLiteral("Error in file. .mit file to gdatalast.mit");
    }
    if (!one["messages"].isNull()) {
        QCOMPARE(messages, textList(one["messages"]));
    }
    const QJsonValue screen = one["screen"];
    if (screen.isUndefined() || screen.isNull()) {
        return;
    }
    const QJsonArray rows = screen["rows"].toArray();
    for (int i = 0; i < rows.size(); ++i) {
        const GasRow& row = plan.rows[static_cast<size_t>(i)];
        QVERIFY2(agrees(rows[i]["O2"], row.O2), qPrintable(row.O2));
        QVERIFY2(agrees(rows[i]["He"], row.He), qPrintable(row.He));
        QVERIFY2(agrees(rows[i]["He_colour"], colourName(row.HeColour)),
                 qPrintable(colourName(row.HeColour)));
        QVERIFY2(agrees(rows[i]["MOD_as_read"], row.MOD), qPrintable(row.MOD));
        QCOMPARE(row.active, rows[i]["active"].toInt() == 1);
    }
    const QJsonValue settings = screen["settings"];
    if (settings.isUndefined() || settings.isNull()) {
        return;
    }
    QCOMPARE(plan.Label14, screen["stamp"].toDouble());
    QCOMPARE(plan.start, settings["start"].toInt());
    QCOMPARE(plan.settings.backlight, settings["backlight"].toInt());
    QCOMPARE(plan.settings.laststop, settings["laststop"].toInt());
    QCOMPARE(plan.settings.hudhi, settings["hudhi"].toInt() == 1);
    QCOMPARE(plan.settings.sptext, settings["setpoint"].toString());
    QCOMPARE(plan.settings.silent, settings["silent"].toInt() == 1);
    QCOMPARE(plan.settings.biggraphics, settings["biggraphics"].toInt() == 1);
    QCOMPARE(process().depthunit, settings["units"].toString());
    QCOMPARE(plan.settings.cns, settings["cns"].toInt());
    QCOMPARE(plan.settings.safety, settings["safety"].toInt());
    QCOMPARE(plan.settings.ScreenSaveText.toInt(), settings["screensave"].toInt());
    QCOMPARE(plan.settings.HomeText.toInt(), settings["home"].toInt());
    QCOMPARE(plan.settings.closed, settings["closed"].toInt() == 1);
}

void TestSetuptext::receivedFilesAgreeWithTheVectors() {
    const QJsonObject file = vectorFile("setup.json");
    for (const QJsonValue& one : cases(file, "received")) {
        QCOMPARE(receivedfile(one["received"].toString()), one["file"].toString().toLatin1());
    }
    QCOMPARE(stocktext(), file.value(QLatin1String("stock_text")).toString());
}

void TestSetuptext::openedTextsAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "opened")) {
        GasPlan plan = planIn(one["units"]);
        const GasPlan before = plan;
        process().uploadtext = one["text"].toString();
        Told told;
        gas_openupdate(plan, told.say);
        QCOMPARE(told.messages, QStringList());
        const QJsonArray rows = one["rows"].toArray();
        for (int i = 0; i < rows.size(); ++i) {
            const GasRow& row = plan.rows[static_cast<size_t>(i)];
            QCOMPARE(row.O2, rows[i]["O2"].toString());
            QCOMPARE(row.He, rows[i]["He"].toString());
            QCOMPARE(colourName(row.HeColour), rows[i]["He_colour"].toString());
            QCOMPARE(row.MOD, rows[i]["MOD"].toString());
            QCOMPARE(row.active, rows[i]["active"].toInt() == 1);
            QCOMPARE(row.cellsEnabled, rows[i]["cells_enabled"].toBool());
            QCOMPARE(row.EAND, rows[i]["EAND"].toString());
        }
        if (!one["taken"].toBool()) {
            QCOMPARE(plan.rows[1].O2, before.rows[1].O2);
            QCOMPARE(plan.rows[1].MOD, before.rows[1].MOD);
        }
        QCOMPARE(plan.settings, before.settings); // not touched
    }
}

void TestSetuptext::startsAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "start")) {
        QCOMPARE(starttext(bytesOf(one["last"]), bytesOf(one["stock"])), one["text"].toString());
    }
}

void TestSetuptext::sendGuardsAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("setup.json"), "send_guards")) {
        QCOMPARE(sendguards(one["text"].toString() + kEscape), textList(one["boxes"]));
    }
}

void TestSetuptext::deviceTypesAgreeWithTheVectors() {
    const QJsonObject file = vectorFile("setup.json");
    for (const QJsonValue& one : cases(file, "device_types")) {
        QCOMPARE(devicetype(one[0].toString().toLatin1(), one[1].toString()), one[2].toString());
    }
    const QJsonObject captions = file.value(QLatin1String("type_captions")).toObject();
    QCOMPARE(captions.size(), 8);
    for (auto caption = captions.begin(); caption != captions.end(); ++caption) {
        QCOMPARE(typecaption(caption.key()), caption.value().toString());
    }
}

/// Position by position, in both units.
void TestSetuptext::eachPositionHoldsWhatItMust() {
    QRandomGenerator random(11);
    for (int run = 0; run < 200; ++run) {
        const bool feet = run % 2 == 1;
        GasPlan plan = randomPlan(random, feet);
        const QString text = written(plan);
        QCOMPARE(text.size(), 226);
        const auto at = [&text](int position, int length = 1) { return text.mid(position - 1, length); };
        for (int i = 0; i < kGases; ++i) {
            const GasRow& row = plan.rows[static_cast<size_t>(i)];
            const int base = 16 * i;
            QCOMPARE(at(base + 1), QString(QChar(u'A' + i)));
            QCOMPARE(at(base + 2, 3).toInt(), 100 - row.O2.toInt() - row.He.toInt());
            QCOMPARE(at(base + 5), " ");
            QCOMPARE(at(base + 6, 3).toInt(), row.He.toInt());
            QCOMPARE(at(base + 9), " ");
            QCOMPARE(at(base + 10, 4).toInt(),
                     static_cast<int>(std::nearbyint(row.MOD.toInt() / (feet ? 32.098 : 10.0) * 100)));
            QCOMPARE(at(base + 14), " ");
            QCOMPARE(at(base + 15), row.active ? "1" : "0");
            QCOMPARE(at(base + 16), " ");
        }
        const Settings& settings = plan.settings;
        QCOMPARE(at(161, 12), "K0812337677 ");
        QCOMPARE(at(173, 3), QStringLiteral("L%1 ").arg(plan.start));
        QCOMPARE(at(176, 3), QStringLiteral("M%1 ").arg(settings.backlight));
        QCOMPARE(at(179, 3), QStringLiteral("N%1 ").arg(settings.laststop));
        QCOMPARE(at(182, 3), QStringLiteral("O%1 ").arg(settings.hudhi ? 1 : 0));
        QCOMPARE(at(185), "P");
        QCOMPARE(at(186, 3).toInt(), static_cast<int>(std::lround(settings.sptext.toDouble() * 100)));
        QCOMPARE(at(190, 3), QStringLiteral("Q%1 ").arg(settings.silent ? 1 : 0));
        QCOMPARE(at(193, 3), QStringLiteral("R%1 ").arg(settings.biggraphics ? 1 : 0));
        QCOMPARE(at(196, 3), feet ? "S3 " : "S1 ");
        QCOMPARE(at(199), "T");
        QCOMPARE(at(200, 3).toInt(), 80 + 10 * settings.cns);
        QCOMPARE(at(204), "U");
        QCOMPARE(at(205, 3).toInt(), 4 + 20 * settings.safety);
        QCOMPARE(at(209), "V");
        QCOMPARE(at(210, 3).toInt(), settings.ScreenSaveText.toInt());
        QCOMPARE(at(214), "W");
        QCOMPARE(at(215, 3).toInt(), settings.HomeText.toInt());
        QCOMPARE(at(219, 3), QStringLiteral("X%1 ").arg(settings.closed ? 1 : 0));
        QCOMPARE(at(222, 5), QStringLiteral("Y%1 Z\x1b").arg(settings.closed ? 1 : 0));
    }
}

void TestSetuptext::whatIsWrittenReadsBackTheSame() {
    QRandomGenerator random(5);
    for (int run = 0; run < 500; ++run) {
        const bool feet = run % 2 == 1;
        GasPlan plan = randomPlan(random, feet);
        const QString text = written(plan);
        const HeldText held = readsetup(savedfile(text));
        QCOMPARE(held.messages, QStringList());
        GasPlan other = planIn(feet ? QStringLiteral("metre") : QStringLiteral("Feet"));
        Told told;
        QVERIFY(taketext(other, held.text, told.say));
        QCOMPARE(told.messages, QStringList());
        QCOMPARE(process().depthunit, feet ? "Feet" : "metre");
        for (size_t i = 0; i < plan.rows.size(); ++i) {
            QCOMPARE(other.rows[i].O2, plan.rows[i].O2);
            QCOMPARE(other.rows[i].He, plan.rows[i].He);
            QCOMPARE(other.rows[i].active, plan.rows[i].active);
            const double bars = plan.rows[i].MOD.toDouble() / plan.depthperbar;
            QVERIFY(std::abs(other.rows[i].MOD.toDouble() - bars * 10) <=
                    0.0501); // tenths of a bar, of metres
        }
        QCOMPARE(other.start, plan.start);
        other.settings.divegas = other.start;
        QCOMPARE(other.settings, plan.settings);
        // Read by the other reader, in the unit of the text, the depths are the same again.
        GasPlan opened = planIn(feet ? QStringLiteral("Feet") : QStringLiteral("metre"));
        process().uploadtext = text;
        gas_openupdate(opened, told.say);
        for (size_t i = 0; i < plan.rows.size() && !feet; ++i) {
            QCOMPARE(opened.rows[i].MOD, plan.rows[i].MOD);
        }
    }
}

void TestSetuptext::aValueThatIsTooLongStaysAsItWas() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = emptyText();
    plan.settings.ScreenSaveText = QStringLiteral("1000");
    plan.settings.sptext = QStringLiteral("10.00");
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7.mid(208, 4), "V000");
    QCOMPARE(plan.Text7.mid(184, 4), "P000");
    QCOMPARE(plan.Text7.mid(213, 4), "W030");
}

void TestSetuptext::theFirstLetterIsHitWhateverItsCase() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = QStringLiteral("..m.") + emptyText();
    plan.settings.backlight = 3;
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7.left(5), "..M3A");
    QCOMPARE(plan.Text7.mid(4 + 175, 2), "M0"); // its own place is not reached
}

void TestSetuptext::aLetterThatIsNotThereIsPassedOver() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = QStringLiteral("nothing but W");
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7.size(), 13); // a field beyond the end does not make it longer
}

void TestSetuptext::aShortTextGrowsToItsGasBlock() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = QString();
    plan.gasblock = QString(160, QLatin1Char('g'));
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7, plan.gasblock);
}

void TestSetuptext::withoutABlockTheGasesStay() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = emptyText();
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7.left(160), emptyText().left(160));
    QCOMPARE(plan.Text7.mid(160, 11), "K0812337677"); // the settings are patched all the same
}

void TestSetuptext::theStampIsTenDigits() {
    const GasPlan plan = planIn(QStringLiteral("metre"));
    QCOMPARE(fieldvalue(plan, 0, QDateTime(QDate(1991, 12, 31), QTime(0, 0, 1))).value(), "0000000000");
    QCOMPARE(fieldvalue(plan, 0, QDateTime(QDate(1992, 1, 1), QTime(0, 0, 0))).value(), "0000086399");
}

/// In summer an hour was missing, and another one in zones that changed their time since.
void TestSetuptext::theStampCountsTheClockWhateverTheZone() {
    const QByteArray before = qgetenv("TZ");
    const GasPlan plan = planIn(QStringLiteral("metre"));
    for (const char* const zone : {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "EST5EDT,M3.2.0,M11.1.0"}) {
        qputenv("TZ", zone);
        tzset();
        QCOMPARE(fieldvalue(plan, 0, someMoment()).value(), "0812337677");
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    tzset();
}

void TestSetuptext::aSetpointThatIsNoNumberLeavesItsField() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    plan.Text7 = emptyText();
    plan.settings.sptext = QStringLiteral("1,3");
    patchsettings(plan, someMoment());
    QCOMPARE(plan.Text7.mid(184, 4), "P000");
}

void TestSetuptext::twoBlanksEmptyTheTextButNotTheCount() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    QByteArray bytes = written(plan).toLatin1();
    bytes.insert(40, ' ');
    bytes.insert(40, ' ');
    const HeldText held = readsetup(bytes);
    QVERIFY(held.text.size() < kSetupText);
    QVERIFY(held.messages.contains(QStringLiteral("Bad file. Choose new file.")));
}

void TestSetuptext::aSecondALetsMoreIn() {
    const HeldText held = readsetup("A" + QByteArray(99, 'x') + "A" + QByteArray(400, 'y'));
    QCOMPARE(held.text.size(), 100 + 1 + 221 + 1); // up to 221 behind the second A, and the ESC
}

void TestSetuptext::inFeetTheTwoReadersDiffer() {
    GasPlan plan = planIn(QStringLiteral("Feet"));
    const QString text = QString(stocktext()).trimmed().left(222) + QStringLiteral("1 Z\x1b");
    Told told;
    QVERIFY(taketext(plan, text, told.say));
    QCOMPARE(plan.rows[0].MOD, "40"); // tenths whatever the unit
    plan = planIn(QStringLiteral("Feet"));
    process().uploadtext = text;
    gas_openupdate(plan, told.say);
    QCOMPARE(plan.rows[0].MOD, "12"); // 400 / 32.098
}

void TestSetuptext::aValueOutOfItsListEndsTheReading() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("10");
    }
    QString text = written(plan);
    text[176] = QLatin1Char('9'); // the backlight has five values
    text[181] = QLatin1Char('1'); // what stands behind is not reached
    GasPlan other = planIn(QStringLiteral("metre"));
    Told told;
    QVERIFY(!taketext(other, text, told.say));
    QCOMPARE(other.settings.laststop, 0);
    QCOMPARE(other.rows[9].O2, plan.rows[9].O2); // the gases were read before
}

void TestSetuptext::theSecondClosedCircuitIsNotReadBack() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("10");
    }
    plan.settings.closed = true;
    QString text = written(plan);
    text[222] = QLatin1Char('0');
    GasPlan other = planIn(QStringLiteral("metre"));
    Told told;
    QVERIFY(taketext(other, text, told.say));
    QVERIFY(other.settings.closed);
}

void TestSetuptext::theLetterSSetsTheUnit() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("10");
    }
    QString text = written(plan);
    for (const auto& [digit, unit] :
         {std::pair{'1', "metre"}, std::pair{'3', "Feet"}, std::pair{'7', "Feet"}}) {
        text[196] = QLatin1Char(digit);
        process().depthunit.clear();
        Told told;
        QVERIFY(taketext(plan, text, told.say));
        QCOMPARE(process().depthunit, QString::fromLatin1(unit));
        QCOMPARE(plan.depthperbar, kMetresPerBar); // the tick does the rest
    }
}

void TestSetuptext::theStocksLeadingBlanksDoNoHarm() {
    const HeldText held = readsetup(receivedfile(QStringLiteral("A07")));
    QCOMPARE(held.messages, QStringList());
    QCOMPARE(held.text.size(), 227);
    QVERIFY(held.text.startsWith(QLatin1String("A079 000 0400 0 B")));
}

void TestSetuptext::aSavedFileIsOneLine() {
    QCOMPARE(savedfile(QStringLiteral("A079\x1b")), "A079\x1b\r\n");
}

void TestSetuptext::aTextIsReadFromAtMost20000Bytes() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("10");
    }
    const QByteArray text = written(plan).toLatin1();
    QCOMPARE(starttext(QByteArray(19000, 'x') + text, QByteArray()).size(), 226);
    QCOMPARE(starttext(QByteArray(19900, 'x') + text, QByteArray()).size(), 0);
}

void TestSetuptext::changesAgainstTheDeviceAreNamed() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("40");
    }
    const QString device = written(plan);
    QCOMPARE(setupchanges(device, device), QList<SetupChange>());
    plan.rows[7].O2 = QStringLiteral("16");
    plan.rows[7].active = true;
    plan.settings.sptext = QStringLiteral("1.20");
    plan.settings.backlight = 2;
    plan.settings.closed = true;
    process().depthunit = QStringLiteral("Feet");
    const QList<SetupChange> changes = setupchanges(device, written(plan));
    const QList<SetupChange> expected{
        {QStringLiteral("Gas 7"), QStringLiteral("18/35 40m off"), QStringLiteral("16/35 40m on")},
        {QStringLiteral("Backlight"), QStringLiteral("Off"), QStringLiteral("Timed")},
        {QStringLiteral("PPO2 Set Point"), QStringLiteral("1.40 bar"), QStringLiteral("1.20 bar")},
        {QStringLiteral("Units"), QStringLiteral("metres"), QStringLiteral("feet")},
        {QStringLiteral("Closed Circuit"), QStringLiteral("off"), QStringLiteral("on")}};
    QCOMPARE(changes, expected);
}

void TestSetuptext::withoutAReportEverySettingIsUnread() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    for (GasRow& row : plan.rows) {
        row.MOD = QStringLiteral("40");
    }
    const QList<SetupChange> changes = setupchanges(QString(), written(plan));
    QCOMPARE(changes.size(), 10 + 13);
    for (const SetupChange& change : changes) {
        QCOMPARE(change.before, "");
        QVERIFY(!change.after.isEmpty());
    }
}

QTEST_GUILESS_MAIN(TestSetuptext)
#include "test_setuptext.moc"
