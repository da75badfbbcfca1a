#include "link/commandmenu.h"

#include "link/console.h"

namespace benthor::link {

QString optionCaption(int index) {
    static const std::array<const char*, optionCount> captions{
        "Logo Upload",  "Interval Get", "Interval Send", "Dive Summary",
        "Summary Last", "Setup",        "Book Upload",   "",
        "User ID",      "Other",        "Quit",          "Status"};
    return index >= 0 && index < optionCount ? QLatin1String(captions.at(static_cast<size_t>(index)))
                                             : QString();
}

QString listCaption(int index) {
    switch (index) {
    case kChoiceLogo:
        return QStringLiteral("Screen Saver");
    case kChoiceIntervalGet:
        return QStringLiteral("Get Record Interval secs");
    case kChoiceIntervalSend:
        return QStringLiteral("Send Record Interval secs");
    case kChoiceSetup:
        return QStringLiteral("Setup + Gas");
    case kChoiceBook:
        return QStringLiteral("Book Send");
    case kChoiceUserId:
        return QStringLiteral("Personal Details");
    case kChoiceQuit:
        return QStringLiteral("Restart Morvalien");
    case kChoiceReadings:
        return QStringLiteral("Get Readings");
    default:
        return optionCaption(index);
    }
}

const std::vector<CommandEntry>& commandEntries() {
    static const std::vector<CommandEntry> entries{
        {QStringLiteral("mnuLogo"), kChoiceLogo, QStringLiteral("Logo Send"),
         QStringLiteral("Select Logo file name and check it appears in File Name box. Make sure KD is in PC "
                        "Link and Connected appears in com port window. Then Click Logo Send.")},
        {QStringLiteral("mnuIntget"), kChoiceIntervalGet, QStringLiteral("Interval Get"),
         QStringLiteral(
             "Click Interval Get. Response Box then shows the current recording interval for dive profile "
             "data. The values of the HUD and of the PO2 alarms come with it, where their frame is open. "
             "(Make sure KD is in PC Link and IR connection chows 'Connected')")},
        {QStringLiteral("mnuIntSend"), kChoiceIntervalSend, QStringLiteral("Interval Send"),
         QStringLiteral(
             "Choose the required interval in the range 001 to 240 seconds. Click Interval Send to send to "
             "KD. Response Box then shows updated value. Make sure KD is in PC Link and Connected appears in "
             "com port window. To see what the recording interval is currently set to use Interval Get "
             "command.")},
        {QStringLiteral("mnuDiveSum"), kChoiceSummaries, QStringLiteral("Dive Summary"), {}},
        {QStringLiteral("mnuSumLast"), kChoiceSummaryLast, QStringLiteral("Summary Last"), {}},
        {QStringLiteral("mnuGasUp"), kChoiceSetup, QStringLiteral("Gas Upload"),
         QStringLiteral(
             "Modify Gas list as required. Make sure KD is in PC Link and Connected appears in com "
             "port window. Then Click Gas Upload.")},
        {QStringLiteral("mnuBookUp"), kChoiceBook, QStringLiteral("Book Send"),
         QStringLiteral(
             "Select Book file name and check it appears in File Name box. Maximum size of file is 20K "
             "bytes. Make sure KD is in PC Link and Connected appears in com port window. Then Click Book "
             "Send.")},
        {QStringLiteral("mnuPersSend"), kChoiceUserId, QStringLiteral("Info Send"),
         QStringLiteral("Type appropriate personal details into Text box. Maximum length is 32 characters. "
                        "Make sure KD is in PC Link and Connected appears in com port window. Then Click "
                        "Info Send.")},
        {QStringLiteral("mnuOther"), kChoiceOther, QStringLiteral("Other"), {}},
        {QStringLiteral("mnuQuitKD"), kChoiceQuit, QStringLiteral("Quit KD"),
         QStringLiteral("Quit KD brings the KD out of PC link mode and stores data to EE memory. The KD may "
                        "take upto 30 seconds to come out of PC Link.")},
    };
    return entries;
}

const CommandEntry* commandEntry(int option) {
    for (const CommandEntry& entry : commandEntries()) {
        if (entry.option == option) {
            return &entry;
        }
    }
    return nullptr;
}

void mnuCommand_click(LinkState& link, LinkHost& host, QStringView name) {
    for (const CommandEntry& entry : commandEntries()) {
        if (entry.name != name) {
            continue;
        }
        Console& console = link.console;
        console.checkedEntry = entry.name;
        console.option = entry.option;
        preparecommand(link);
        console.Command2.text = entry.caption;
        console.Command2.visible = true;
        if (!entry.hint.isEmpty()) {
            link.infotext = entry.hint;
            host.hintOnMain(entry.hint);
        }
        return;
    }
}

void mnuAdvancedOption_click(LinkState& link) {
    Console& console = link.console;
    console.advanced = !console.advanced;
    console.Text9Visible = console.advanced;
    console.TextResponse.visible = console.advanced;
    console.Command2.visible = console.advanced;
    console.Option1_9Visible = console.advanced;
    console.filecaption = console.advanced; // the box itself says whether a body goes out, and stays
}

} // namespace benthor::link
