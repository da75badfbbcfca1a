#include "logbook/screens/listfoot.h"

#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/wholelabel.h"

#include <QHBoxLayout>

namespace benthor::logbook {

ListFoot::ListFoot(QWidget* parent)
    : QWidget(parent)
    , quietLine_(new look::WholeLabel)
    , sheetPicture_(new look::ClickableLabel)
    , sheetLabel_(new look::ClickableLabel(QStringLiteral("Save as spreadsheet"))) {
    quietLine_->setObjectName(QStringLiteral("quietline"));
    quietLine_->setFont(look::caption());
    look::setInk(quietLine_, look::Ink::Quiet);
    sheetPicture_->setObjectName(QStringLiteral("Picture3(1)"));
    sheetPicture_->setIconName(QStringLiteral("sheet"), 18);
    sheetPicture_->setFocusPolicy(Qt::NoFocus); // the words beside it do the same by key
    sheetLabel_->setObjectName(QStringLiteral("Label10"));
    auto* across = new QHBoxLayout(this);
    across->setContentsMargins(look::spaceTight, 0, look::spaceTight, 0);
    across->setSpacing(look::spaceTight);
    across->addWidget(quietLine_, 1);
    for (look::ClickableLabel* sheet : {sheetPicture_, sheetLabel_}) {
        sheet->setInk(look::Ink::Quiet);
        sheet->setAccessibleName(QStringLiteral("Save as spreadsheet"));
        sheet->setToolTip(QStringLiteral("Saves the list with its first eight columns"));
        connect(sheet, &look::ClickableLabel::clicked, this, &ListFoot::sheetWanted);
        across->addWidget(sheet, 0, Qt::AlignTop);
    }
}

} // namespace benthor::logbook
