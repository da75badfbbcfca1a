#include "pages.h"

#include "platform/look/look.h"
#include "platform/look/widgets/activitysweep.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/look/widgets/status.h"
#include "platform/look/widgets/toldbutton.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace benthor::look {

namespace {

QWidget* entries() {
    auto* pane = new Pane(Qt::RightEdge);
    pane->setFixedWidth(scaled(236));
    auto* column = new QVBoxLayout(pane);
    column->setContentsMargins(spaceSmall, spaceBase, spaceSmall, spaceSmall);
    column->setSpacing(spaceTight);
    const std::pair<const char*, const char*> normal[] = {{"dives", "My Dives"},
                                                          {"download", "Download to PC"},
                                                          {"database", "Database Update"},
                                                          {"cylinder", "Setup + Gas"},
                                                          {"filefind", "Dive File Find"}};
    int place = 0;
    for (const auto& [iconName, text] : normal) {
        auto* row = new EntryRow(QLatin1String(iconName), QLatin1String(text));
        row->setChosen(place == 0);
        if (place == 2) {
            row->setToldCaptionColour(QColor(0, 0, 255));
            row->addSign(QStringLiteral("new"), QStringLiteral("importfile"))->show();
        }
        column->addWidget(row);
        ++place;
    }
    column->addStretch();
    column->addWidget(new Rule);
    const std::pair<const char*, const char*> quiet[] = {
        {"kd", "KD3 Dive List "}, {"pocketpc", "Pocket PC"}, {"importfile", "Ferrowe pdl Import"}};
    for (const auto& [iconName, text] : quiet) {
        column->addWidget(new EntryRow(QLatin1String(iconName), QLatin1String(text), EntryRow::Kind::Quiet));
    }
    column->addWidget(new Rule);
    column->addWidget(new EntryRow(QStringLiteral("exit"), QStringLiteral("Exit")));
    return pane;
}

QWidget* mainCard() {
    auto* card = new Card;
    card->body()->addStretch();
    card->body()->addWidget(makeHeading(QStringLiteral("My Dives")));
    auto* text = new QLabel(
        QStringLiteral("Contains list of all dives and summary information which you have downloaded from "
                       "your device."));
    text->setWordWrap(true);
    setInk(text, Ink::Quiet);
    card->body()->addWidget(text);
    card->body()->addStretch();
    card->body()->addWidget(new Rule);
    auto* totals = new TotalsLabel;
    totals->setText(QStringLiteral(
        "System has a total of : \r\n147 dives\r\nYour last dive was on : \r\n14/09/2019 10:42:17"));
    card->body()->addWidget(totals);
    card->body()->addWidget(new Rule);
    auto* open = new QPushButton(icon("dives"), QStringLiteral("Morvalien Dive Log"));
    open->setProperty("primary", true);
    open->setProperty("big", true);
    card->body()->addWidget(open, 0, Qt::AlignLeft);
    return card;
}

QWidget* linkCard() {
    auto* card = new Card;
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(makeCaption(QStringLiteral("Device link")));
    auto* lamp = new LampDot;
    lamp->setText(QStringLiteral("Connected"));
    lamp->setToldColour(Qt::green);
    column->addWidget(lamp);
    card->body()->addLayout(column);
    return card;
}

void fill(OverlayCard* overlay) {
    overlay->body()->addWidget(makeHeading(QStringLiteral("Database Update")));
    overlay->body()->addWidget(new Rule);
    overlay->body()->addWidget(new QLabel(QStringLiteral("System processing : MyLatestDives12.txt")));
    overlay->body()->addWidget(new ActivitySweep);
    overlay->body()->addWidget(new NoticeBand(QStringLiteral("DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM")));
    auto* foot = new QHBoxLayout;
    foot->addWidget(makeCaption(QStringLiteral("stops after the file in hand")), 1);
    foot->addWidget(new QPushButton(icon("stop"), QStringLiteral("stop import")));
    overlay->body()->addLayout(foot);
}

} // namespace

QWidget* screenPage(bool overlay) {
    auto* page = new QWidget;
    auto* row = new QHBoxLayout(page);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(entries());
    auto* right = new QWidget;
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(spaceWide, spaceWide, spaceWide, spaceWide);
    column->addWidget(mainCard(), 1);
    auto* foot = new QHBoxLayout;
    foot->addWidget(linkCard(), 1);
    auto* import = new Card;
    auto* button = new ToldButton(QStringLiteral("import dives"));
    button->setIcon(icon("importfile"));
    button->setToldBackground(Qt::red);
    button->setEnabled(false);
    import->body()->addWidget(button);
    foot->addWidget(import, 1);
    column->addLayout(foot);
    row->addWidget(right, 1);
    auto* wait = new OverlayCard(right);
    fill(wait);
    wait->setVisible(overlay);
    return page;
}

} // namespace benthor::look
