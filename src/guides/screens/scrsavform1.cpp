#include "guides/screens/scrsavform1.h"

#include "guides/capture.h"
#include "platform/filename.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>

namespace benthor::guides {

ScrSavForm1::ScrSavForm1()
    : EmptyScreen(QStringLiteral("ScrSavForm1"), QStringLiteral("Screen Shot Capture")) {
    auto* words = new QLabel(QStringLiteral("Saves a picture of the dive screen, %1 by %2, in the folder jpg "
                                            "under the name of the dive's file.")
                                 .arg(kCaptureWidth)
                                 .arg(kCaptureHeight));
    words->setWordWrap(true);
    content()->addWidget(words);
    sizeLabel_ = look::makeCaption(QString());
    sizeLabel_->setObjectName(QStringLiteral("lblsize"));
    content()->addWidget(sizeLabel_);
    auto* row = new QHBoxLayout;
    auto* cmd200 = new QPushButton(QStringLiteral("Set 200x150"));
    cmd200->setObjectName(QStringLiteral("cmd200"));
    connect(cmd200, &QPushButton::clicked, this, [this] { setSize(QStringLiteral("200x150")); });
    auto* cmdCapture = new QPushButton(look::icon("camera"), QStringLiteral("Capture"));
    cmdCapture->setObjectName(QStringLiteral("cmdCapture"));
    cmdCapture->setProperty("primary", true);
    connect(cmdCapture, &QPushButton::clicked, this, &ScrSavForm1::cmdCapture_click);
    row->addWidget(cmd200);
    row->addStretch();
    row->addWidget(cmdCapture);
    content()->addLayout(row);
    setSize(QStringLiteral("150x113"));
}

void ScrSavForm1::setSize(const QString& size) {
    size_ = size;
    sizeLabel_->setText(QStringLiteral("Size kept: ") + size);
}

void ScrSavForm1::setDiveScreen(Screen* screen, const QString& divefilename) {
    diveScreen_ = screen;
    divefilename_ = divefilename;
}

void ScrSavForm1::cmdCapture_click() {
    const Routine routine(*this);
    hide();
    if (diveScreen_ != nullptr && diveScreen_->isVisible()) {
        diveScreen_->bringToFront();
    }
    const bool hadDive = diveScreen_ != nullptr && diveScreen_->isLoaded();
    if (!yieldEvents()) {
        return;
    }
    if (hadDive && (diveScreen_ == nullptr || !diveScreen_->isLoaded())) {
        return; // closed meanwhile: its dive may be gone
    }
    QImage picture;
    if (diveScreen_ != nullptr && diveScreen_->isLoaded()) {
        picture = diveScreen_->picture().toImage();
    }
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    const QString name = captureName(divefilename_);
    if (!platform::isFileName(name)) {
        // A store from elsewhere may name anything; the picture goes into the folder jpg or nowhere.
        platform::dialogs().message(
            this, QStringLiteral("The picture was not saved: %1 is no name of a file.").arg(divefilename_),
            platform::BoxKind::Warning);
        return;
    }
    const QString path = folder.path(u"jpg", name);
    const QString words = saveCapture(picture, folder.path(u"screen.bmp"), path);
    savedAs_ = words.isEmpty() && !picture.isNull() ? path : QString();
    if (!words.isEmpty()) {
        platform::dialogs().message(this, QStringLiteral("[FreeImage] Error: ") + words,
                                    platform::BoxKind::Warning);
    }
}

} // namespace benthor::guides
