#include "link/commandfields.h"

#include "link/console.h"

#include <algorithm>
#include <array>

namespace benthor::link {

namespace {

constexpr const char* kSeconds = " secs";
constexpr const char* kNameTrailer = "B*@ CCCCCCCCCCCCCCCCCCCCCCCCCCCCCC\r\n"; // thirty letters C

constexpr std::array<CommandFields, 11> choices{{
    {kChoiceLogo, "L", "l", "", "", 1, "", "", 0, true},
    {kChoiceIntervalGet, "R", "", "", "", 1, "", "r", 3, false},
    {kChoiceIntervalSend, "S", "s", "", "005", 3, "F\r\n", "+^+", 5, false},
    {kChoiceSummaries, "M", "", "", "", 1, "", "", 0, false},
    {kChoiceSummaryLast, "C", "", "", "", 1, "", "", 0, false},
    {kChoiceSetup, "G", "g", "", "", 1, "", "", 0, false},
    {kChoiceBook, "B", "b", std::nullopt, "", 1, "", "", 0, true},
    {kChoiceUserId, "A", "a", "^", "", 32, kNameTrailer, "", 0, false},
    {kChoiceOther, "", "", "", "", 100, "", "", 0, true},
    {kChoiceQuit, "Q", "", "", "", 1, "", "", 0, false},
    {kChoiceReadings, "J", "", "", "", 1, "", "R", 3, false},
}};

void hidereply(Console& console) {
    console.TextResponse = {{}, false};
    console.AFLabel4Visible = false;
    console.Text9Visible = false;
    console.Text12.visible = false;
    console.Label6Visible = false;
    console.Label7Visible = false;
    console.Label3Visible = false;
    console.AFLabel1Visible = false;
    console.mnuEditEnabled = false;
}

void showfields(Console& console, const CommandFields& choice) {
    const bool name = choice.option == kChoiceUserId;
    const bool other = choice.option == kChoiceOther;
    const bool answered = *choice.replytag != '\0';
    console.Text9Visible = name || other;
    console.Label3Visible = name || other;
    console.mnuEditEnabled = name || other;
    console.AFLabel1Visible = other;
    console.Text12.visible = other || choice.option == kChoiceBook;
    console.TextResponse.visible = other || answered;
    console.AFLabel4Visible = answered;
    console.Text5.visible = choice.file;
    console.filecaption = console.filecaption || choice.file;
    console.Option1_9Visible = console.advanced || other;
}

} // namespace

const CommandFields* commandfields(int option) {
    const auto* choice = std::find_if(choices.begin(), choices.end(), [option](const CommandFields& known) {
        return known.option == option;
    });
    return choice == choices.end() ? nullptr : choice;
}

void preparecommand(LinkState& link) {
    Console& console = link.console;
    hidereply(console);
    const CommandFields* choice = commandfields(console.option);
    if (choice == nullptr) {
        return;
    }
    console.Text3 = QLatin1String(choice->command);
    console.Text6 = QLatin1String(choice->expected);
    if (choice->prefix) {
        console.Text11 = QLatin1String(*choice->prefix);
    }
    console.intervaltyped = false;
    console.Text9MaxLength = choice->dataLimit;
    console.Text9 = choice->option == kChoiceUserId  ? console.username
                    : choice->option == kChoiceOther ? console.freetext
                                                     : QLatin1String(choice->data);
    console.Text9.truncate(choice->dataLimit);
    console.Text10 = QLatin1String(choice->trailer);
    console.replytag = choice->replytag;
    console.replywidth = choice->replywidth;
    console.replysuffix = QLatin1String(choice->replywidth > 0 ? kSeconds : "");
    showfields(console, *choice);
}

void Text9_change(LinkState& link, const QString& text) {
    Console& console = link.console;
    console.Text9 = text.left(console.Text9MaxLength);
    if (console.option == kChoiceUserId) {
        console.username = console.Text9;
    } else if (console.option == kChoiceOther) {
        console.freetext = console.Text9;
    }
}

void Text16_change(LinkState& link, const QString& text) {
    link.console.Text16[0] = text;
    link.console.intervaltyped = true;
}

void dooptioncheck(LinkState& link) {
    link.console.option = kChoiceSetup;
    preparecommand(link);
    link.console.Text5 = {QStringLiteral("G"), true};
}

} // namespace benthor::link
