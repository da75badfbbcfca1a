#include "link/screens/waitcard.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/activitysweep.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/status.h"

#include <QVBoxLayout>

#include <algorithm>

namespace benthor::link {

namespace {

constexpr int kWidth = 560;

} // namespace

WaitCard::WaitCard(QWidget* area)
    : look::OverlayCard(area, kWidth)
    , words_(look::makeHeading(QString()))
    , place_(new QLabel)
    , bytes_(new look::NumberLabel(28))
    , sweep_(new look::ActivitySweep)
    , silence_(look::makeCaption(QString())) {
    setObjectName(QStringLiteral("Frame5"));
    auto* head = new QHBoxLayout;
    head->setSpacing(look::spaceBase);
    auto* icon = new look::ClickableLabel;
    icon->setIconName(QStringLiteral("download"), 24);
    icon->setInk(look::Ink::Accent);
    icon->setFocusPolicy(Qt::NoFocus);
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    head->addWidget(icon);
    words_->setObjectName(QStringLiteral("TXTWait(0)"));
    // Two lines are seen; the text ends in a line end.
    words_->setAlignment(Qt::AlignTop);
    words_->setText(QStringLiteral(" \n "));
    words_->setFixedHeight(std::max(words_->sizeHint().height(), 2 * words_->fontMetrics().lineSpacing()));
    words_->clear();
    auto* said = new QVBoxLayout;
    said->setSpacing(look::spaceTight);
    said->addWidget(words_);
    place_->setObjectName(QStringLiteral("diveplace"));
    place_->setFont(look::strong(look::numbers(13)));
    said->addWidget(place_); // its line stays where nothing stands in it: the card does not jump
    head->addLayout(said, 1);
    auto* count = new QVBoxLayout;
    count->setSpacing(0);
    bytes_->setAlignment(Qt::AlignRight);
    count->addWidget(bytes_);
    QLabel* unit = look::makeCaption(QStringLiteral("Bytes received"));
    unit->setAlignment(Qt::AlignRight);
    count->addWidget(unit);
    head->addLayout(count);

    auto* band = new look::NoticeBand(QStringLiteral("DO NOT CLOSE OR USE KEYBOARD  WHILE DOWNLOADING"));
    warning_ = band->label();
    warning_->setObjectName(QStringLiteral("TXTWait(1)"));
    warning_->setEnabled(false);
    silence_->setObjectName(QStringLiteral("linesilence"));
    silence_->setWordWrap(true);

    body()->setSpacing(look::spaceBase);
    body()->addLayout(head);
    body()->addWidget(sweep_);
    body()->addWidget(band);
    body()->addWidget(silence_);
    // Said by the words above it; the card itself has nothing that takes the keyboard.
    card()->setAccessibleName(warning_->text());
}

void WaitCard::setShown(bool shown) {
    if (shown == !isHidden()) {
        return;
    }
    warning_->setEnabled(shown);
    if (shown) {
        received_ = 0;
        sinceLastByte_.start();
        sweep_->restart();
        bytes_->setText(QStringLiteral("0"));
        tellSilence();
    } else {
        look::announce(this, QStringLiteral("The transfer has ended; %1 bytes received").arg(received_));
    }
    setVisible(shown);
    if (shown) {
        look::announce(this, words_->text().simplified());
    }
}

void WaitCard::setWords(const QString& text) {
    const QString shown = QString(text).remove(u'\r');
    if (words_->text() != shown) {
        words_->setText(shown);
    }
}

void WaitCard::setPlace(const QString& place) {
    if (place_->text() != place) {
        place_->setText(place);
        look::announce(this, place);
    }
}

void WaitCard::step(qsizetype bytes, const QString& cut) {
    if (bytes != received_) {
        received_ = bytes;
        sinceLastByte_.start();
        bytes_->setText(QString::number(bytes));
    }
    sweep_->advance();
    tellSilence(cut);
}

void WaitCard::tellSilence(const QString& cut) {
    const qint64 seconds = sinceLastByte_.elapsed() / 1000;
    QString when = QStringLiteral("The device is sending.");
    if (!cut.isEmpty()) {
        when = cut;
    } else if (seconds >= 2) {
        when = received_ == 0 ? QStringLiteral("Nothing has come for %1 s.").arg(seconds)
                              : QStringLiteral("The last byte came %1 s ago.").arg(seconds);
    } else if (received_ == 0) {
        when = QStringLiteral("Waiting for the first byte.");
    }
    silence_->setText(when +
                      QStringLiteral(" Menu Screen leaves; a dive that is not complete is not stored."));
}

} // namespace benthor::link
