#include "logbook/screens/otherstoreband.h"

#include "platform/look/look.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace benthor::logbook {

OtherStoreBand::OtherStoreBand(QWidget* parent)
    : look::NoticeBand(QString(), parent)
    , back_(new QPushButton(look::icon("back"), QStringLiteral("Back to my logbook"))) {
    setObjectName(QStringLiteral("otherstore"));
    label()->setObjectName(QStringLiteral("lblotherstore"));
    label()->setTextFormat(Qt::PlainText);
    label()->setMinimumWidth(1); // a long path is no reason for a wide window
    back_->setObjectName(QStringLiteral("cmdownlogbook"));
    back_->setAutoDefault(false);
    connect(back_, &QPushButton::clicked, this, &OtherStoreBand::backWanted);
    auto* row = static_cast<QHBoxLayout*>(layout());
    row->setStretchFactor(label(), 1);
    row->setSpacing(look::spaceBase);
    row->addWidget(back_);
    hide();
}

void OtherStoreBand::showStore(const QString& path) {
    label()->setText(QStringLiteral("Another dive store is shown, not your logbook: ") + path);
    back_->show();
    setVisible(!path.isEmpty());
}

void OtherStoreBand::showRefused(const QString& path) {
    label()->setText(QStringLiteral("Your own logbook is shown. The store that was chosen can't be: ") +
                     path);
    back_->hide();
    show();
}

} // namespace benthor::logbook
