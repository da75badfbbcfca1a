#include "link/screens/linkhead.h"

#include "link/screens/breakingrow.h"
#include "link/screens/lamprow.h"
#include "link/screens/showing.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>

namespace benthor::link {

namespace {

constexpr int kHeadingWidth = 180;

constexpr int kPortWidth = 52;
constexpr int kRoomForPortCaption = 1080;
constexpr int kBarWidth = 96;
constexpr int kHintBlock = 10;
constexpr int kProgressEnd = 300;

const QString kDiveHeading = QStringLiteral("Dive Download");
const QString kSetupHeading = QStringLiteral("Setup Utilities");

QString iconOf(const QString& caption) {
    if (caption == QLatin1String("Connected") || caption == QLatin1String("Data Updated")) {
        return QStringLiteral("check");
    }
    if (caption == QLatin1String("Choose Com Port:")) {
        return QStringLiteral("plug");
    }
    if (caption == QLatin1String("Searching..")) {
        return QStringLiteral("search");
    }
    if (caption == QLatin1String("Not Connected")) {
        return QStringLiteral("warning");
    }
    if (caption == QLatin1String("Saving..")) {
        return QStringLiteral("save");
    }
    return QStringLiteral("interval");
}

/// The way out looks like the button that it is.
class EdgedBox : public QWidget {
public:
    explicit EdgedBox(QWidget* inside) {
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(look::spaceTight, 2, look::spaceTight, 2);
        layout->addWidget(inside);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        look::drawPanel(&painter, rect(), look::tokens().surface, look::tokens().edge);
    }
};

/// The hint with its colour as a block before it.
class HintLabel : public QLabel {
public:
    HintLabel() {
        setWordWrap(true);
        setTextFormat(Qt::PlainText);
        setContentsMargins(kHintBlock + look::spaceSmall, 0, 0, 0);
        setProperty("toldBackground", platform::toQColor(kLightBlue));
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    }

    /// The foot is as high as the smaller font needs it.
    bool hasHeightForWidth() const override { return false; }

    /// A long hint is written smaller, so that all of it can be read.
    void fit() {
        const int room = std::max(1, width() - kHintBlock - look::spaceSmall);
        const auto needed = [this, room](const QFont& font) {
            return QFontMetrics(font).boundingRect(0, 0, room, 10000, Qt::TextWordWrap, text()).height();
        };
        setMinimumHeight(needed(look::caption()));
        const QFont wanted = needed(look::body()) <= height() ? look::body() : look::caption();
        if (font() != wanted) {
            setFont(wanted);
        }
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        fit();
    }
    void paintEvent(QPaintEvent* event) override {
        if (!text().isEmpty()) {
            QPainter painter(this);
            painter.fillRect(0, 0, kHintBlock, height(), platform::toQColor(kLightBlue));
        }
        QLabel::paintEvent(event);
    }
};

} // namespace

LinkHead::LinkHead(QWidget* parent)
    : look::Pane(Qt::BottomEdge, parent)
    , lblheading_(named(new QLabel, "lblheading"))
    , Label13_(named(new look::ClickableLabel(QStringLiteral("Get selected dives")), "Label13"))
    , AFLabel3_(named(new look::StatusChip, "AFLabel3"))
    , lamps_(new LampRow)
    , Label8_(named(look::makeCaption(QString()), "Label8"))
    , portCaption_(look::makeCaption(QStringLiteral("Port")))
    , ComNum_(named(new QLineEdit, "ComNum"))
    , Command6_(named(new QPushButton(look::icon("plug"), QStringLiteral("Set Port")), "Command6"))
    , Label11_(named(new look::ClickableLabel(QStringLiteral("Menu Screen")), "Label11")) {
    lblheading_->setFont(look::big(20));
    Label13_->setInk(look::Ink::Accent);
    AFLabel3_->setFont(look::heading());
    // As wide as the longest caption wants it, so that nothing beside it moves.
    AFLabel3_->setIconName(QStringLiteral("interval"));
    AFLabel3_->setText(QStringLiteral("Choose Com Port:"));
    AFLabel3_->setMinimumWidth(AFLabel3_->sizeHint().width());
    AFLabel3_->setAccessibleName(QStringLiteral("Link status"));
    ComNum_->setFixedWidth(look::scaled(kPortWidth));
    ComNum_->setFont(look::strong(look::numbers(13)));
    ComNum_->setAccessibleName(QStringLiteral("Port"));
    ComNum_->setToolTip(QStringLiteral("Number of the serial port; a number typed here opens it at once"));
    portCaption_->setBuddy(ComNum_);
    Command6_->setToolTip(QStringLiteral("Type the number of the port into the box"));
    Command6_->setAutoDefault(false);
    connect(Command6_, &QPushButton::clicked, this, [this] {
        ComNum_->setFocus();
        ComNum_->selectAll();
    });
    Label11_->setIconName(QStringLiteral("home"));

    auto* around = new QVBoxLayout(this);
    around->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceWide, look::spaceSmall);
    auto* row = new BreakingRow(look::spaceBase); // with a usual font it fits a display of 1024
    row->add(buildStatus(), 1);
    row->add(buildPort(), 0);
    around->addWidget(row);
}

QWidget* LinkHead::buildStatus() {
    auto* status = new QWidget;
    auto* across = new QHBoxLayout(status);
    across->setContentsMargins({});
    across->setSpacing(look::spaceBase);
    auto* face = new QVBoxLayout;
    face->setSpacing(0);
    face->addWidget(lblheading_);
    face->addWidget(Label13_, 0, Qt::AlignLeft);
    lblheading_->setContentsMargins(look::spaceTight, 0, 0, 0);
    int heading = kHeadingWidth;
    for (const QString& words : {kDiveHeading, kSetupHeading}) { // nothing moves when the face changes
        heading = std::max(heading, look::spaceTight + lblheading_->fontMetrics().horizontalAdvance(words));
    }
    lblheading_->setMinimumWidth(heading);
    across->addLayout(face);
    across->addWidget(AFLabel3_);
    auto* activity = new QVBoxLayout;
    activity->setSpacing(2);
    activity->addStretch(1);
    activity->addWidget(lamps_, 0, Qt::AlignLeft);
    activity->addWidget(Label8_);
    activity->addStretch(1);
    across->addLayout(activity);
    across->addStretch(1);
    return status;
}

QWidget* LinkHead::buildPort() {
    auto* port = new QWidget;
    auto* across = new QHBoxLayout(port);
    across->setContentsMargins({});
    across->setSpacing(look::spaceBase);
    across->addStretch(1);
    across->addWidget(portCaption_);
    across->addWidget(ComNum_);
    across->addWidget(Command6_);
    auto* rule = new look::Rule(Qt::Vertical);
    rule->setFixedHeight(look::scaled(30));
    across->addWidget(rule);
    across->addWidget(new EdgedBox(Label11_));
    return port;
}

void LinkHead::layFace(bool dive) {
    showText(lblheading_, dive ? kDiveHeading : kSetupHeading);
    showText(Label13_, dive ? kSetupHeading : kDiveHeading);
}

void LinkHead::sync(const LinkState& link) {
    if (AFLabel3_->text() != link.AFLabel3.text) {
        AFLabel3_->setText(link.AFLabel3.text);
        AFLabel3_->setIconName(iconOf(link.AFLabel3.text));
        look::announce(this, AFLabel3_->accessibleName() + QStringLiteral(": ") + link.AFLabel3.text);
    }
    const QColor colour = platform::toQColor(link.AFLabel3.colour);
    if (AFLabel3_->toldBackground() != colour) {
        AFLabel3_->setToldBackground(colour);
    }
    lamps_->setColours(link.AFShape1);
    showText(Label8_, link.Label8);
    showVisible(Label8_, !link.Label8.isEmpty());
    showText(ComNum_, link.ComNum);
    const QColor ground = platform::toQColor(link.ComNumColour);
    if (ComNum_->palette().color(QPalette::Base) != ground) {
        QPalette palette = ComNum_->palette();
        palette.setColor(QPalette::Base, ground);
        palette.setColor(QPalette::Text, look::readableOn(ground));
        ComNum_->setPalette(palette);
    }
}

void LinkHead::setDownloading(bool downloading) {
    showEnabled(Label13_, !downloading);
    showEnabled(Command6_, !downloading);
    if (ComNum_->isReadOnly() != downloading) {
        ComNum_->setReadOnly(downloading);
    }
}

void LinkHead::resizeEvent(QResizeEvent* event) {
    look::Pane::resizeEvent(event);
    portCaption_->setVisible(width() >= look::scaled(kRoomForPortCaption));
}

LinkFoot::LinkFoot(QWidget* parent)
    : look::Pane(Qt::TopEdge, parent)
    , count_(new QWidget)
    , lblBytes_(named(new QLabel, "lblBytes"))
    , ProgressBar1_(named(new QProgressBar, "ProgressBar1(0)"))
    , infotext_(named(new HintLabel, "infotext"))
    , txtstatus2_(named(look::makeCaption(QString()), "txtstatus2"))
    , Label20_(named(new QLabel, "Label20")) {
    lblBytes_->setFont(look::strong(look::numbers(13)));
    lblBytes_->setMinimumWidth(
        QFontMetrics(lblBytes_->font()).horizontalAdvance(QStringLiteral("0000000  Bytes received")));
    ProgressBar1_->setRange(0, kProgressEnd);
    ProgressBar1_->setValue(0);
    ProgressBar1_->setTextVisible(false);
    ProgressBar1_->setFixedSize(look::scaled(kBarWidth), look::scaled(8));
    ProgressBar1_->setAccessibleName(QStringLiteral("Bytes received, in thousands"));
    Label20_->setFont(look::numbers(13));
    look::setInk(Label20_, look::Ink::Quiet);
    txtstatus2_->hide();

    auto* across = new QHBoxLayout(this);
    across->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    across->setSpacing(look::spaceWide);
    auto* count = new QHBoxLayout(count_);
    count->setContentsMargins({});
    count->setSpacing(look::spaceWide);
    count->addWidget(lblBytes_);
    count->addWidget(ProgressBar1_);
    auto* rule = new look::Rule(Qt::Vertical);
    count->addWidget(rule);
    across->addWidget(count_);
    across->addWidget(infotext_, 1);
    across->addWidget(txtstatus2_);
    across->addWidget(Label20_);
    setMinimumHeight(
        std::max(2 * fontMetrics().lineSpacing(), 3 * QFontMetrics(look::caption()).lineSpacing()) +
        2 * look::spaceSmall + 2);
}

void LinkFoot::layFace(bool dive) {
    showVisible(count_, dive);
}

void LinkFoot::sync(const LinkState& link) {
    const QString bytes = link.download.lblBytes;
    showText(lblBytes_, bytes);
    if (ProgressBar1_->value() != link.download.ProgressBar1) {
        ProgressBar1_->setValue(link.download.ProgressBar1);
    }
    if (infotext_->text() != link.infotext) {
        infotext_->setText(link.infotext);
        infotext_->setToolTip(link.infotext);
        static_cast<HintLabel*>(infotext_)->fit();
    }
    showVisible(txtstatus2_, link.txtstatus2Visible);
    showText(Label20_, link.Label20);
}

} // namespace benthor::link
