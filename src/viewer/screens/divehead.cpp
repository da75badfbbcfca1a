#include "viewer/screens/divehead.h"

#include "platform/look/look.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/textformat.h"
#include "viewer/screens/headbox.h"
#include "viewer/screens/widths.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace benthor::viewer {

using look::CommandButton;

namespace {

constexpr int kHeadHeight = 60;
constexpr int kNumber = 16;
constexpr int kNarrowNumber = 12;

} // namespace

DiveHead::DiveHead(QWidget* parent)
    : Pane(Qt::BottomEdge, parent)
    , across_(new QBoxLayout(QBoxLayout::LeftToRight, this))
    , row_(new QHBoxLayout)
    , buttons_(new QHBoxLayout) {
    setFixedHeight(look::scaledRow(kHeadHeight, 2));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    across_->setContentsMargins(look::spaceBase, 0, look::spaceBase, 1);
    across_->setSizeConstraint(QLayout::SetNoConstraint); // fit() answers for the room
    across_->addLayout(row_, 1);
    across_->addLayout(buttons_);

    auto* cmdclose = new CommandButton(QStringLiteral("Back to the dive list"), QStringLiteral("back"),
                                       CommandButton::Kind::Icon);
    cmdclose->setNames("cmdclose", "Picture4", "");
    cmdclose->setProperty("quiet", true);
    connect(cmdclose, &QPushButton::clicked, this, [this] { emit acted(DiveAct::Leave); });
    row_->addWidget(cmdclose);
    txtdiveid = addBox("txtdiveid", "Dive");
    txttimedown = addBox("txttimedown", "Start");
    txtduration = addBox("txtduration", "Duration");
    txtmaxdepth = addBox("txtmaxdepth", "Max depth");
    txtmaxdepth->unit()->setObjectName(QStringLiteral("lblmaxdepth"));
    txtinterval = addBox("txtinterval", "Interval", "secs");
    txtotu = addBox("txtotu", "OTU");
    txtatmos = addBox("txtatmos", "Surface", "mBar");
    txtdusageh = addBox("txtdusageh", "Usage", "secs");
    txtversion = addBox("txtversion", "Version");
    row_->addStretch();
    addButtons();
}

HeadBox* DiveHead::addBox(const char* name, const char* caption, const char* unit) {
    auto* box = new HeadBox(QLatin1String(name), QLatin1String(caption), QLatin1String(unit));
    row_->addWidget(box);
    boxes_ += box;
    return box;
}

void DiveHead::addButtons() {
    buttons_->setSpacing(look::spaceTight);
    const auto add = [this](const char* caption, const char* icon, const char* name, const char* picture,
                            DiveAct act) {
        auto* button =
            new CommandButton(QLatin1String(caption), QLatin1String(icon), CommandButton::Kind::Icon);
        button->setNames(name, picture, "");
        connect(button, &QPushButton::clicked, this, [this, act] { emit acted(act); });
        buttons_->addWidget(button);
    };
    add("Dive details", "info", "Command1", "Picture5", DiveAct::Details);
    add("Gas and system settings", "cylinder", "cmdgas", "", DiveAct::Gases);
    auto* Cmdtissue = new CommandButton(QStringLiteral("Tissues: no action"), QStringLiteral("bars"),
                                        CommandButton::Kind::Icon);
    Cmdtissue->setNames("Cmdtissue", "", "");
    Cmdtissue->setEnabled(false);
    buttons_->addWidget(Cmdtissue);
    add("Save the gases as CSV", "document", "cmdSave", "Picture2", DiveAct::SaveCsv);
    add("Prints the current form and dive details on the default printer", "print", "cmdsavegraph",
        "Picture3", DiveAct::PrintScreen);
    add("Save a picture of this screen beside the dive", "camera", "btnCapture", "", DiveAct::Capture);
    Command4 = new CommandButton(QStringLiteral("DAN"), QStringLiteral("save"), CommandButton::Kind::Small);
    Command4->setNames("Command4", "Picture11", "");
    Command4->setToolTip(QStringLiteral("Save for DAN (.zxu)"));
    connect(Command4, &QPushButton::clicked, this, [this] { emit acted(DiveAct::SaveDan); });
    buttons_->addWidget(Command4);
}

void DiveHead::showHeader(const profile::HeaderBoxes& header) {
    txtdiveid->setValue(header.txtdiveid);
    txtduration->setValue(header.txtduration);
    txtmaxdepth->setValue(header.txtmaxdepth);
    txtmaxdepth->setUnit(header.lblmaxdepth);
    txttimedown->setValue(header.txttimedown);
    txtinterval->setValue(header.txtinterval);
    txtversion->setValue(header.txtversion);
    txtotu->setValue(header.txtotu);
    txtatmos->setValue(header.txtatmos);
    txtdusageh->setValue(header.txtdusageh);
}

exports::DanHead DiveHead::danHead() const {
    return {txtdiveid->text(), txtinterval->text(), txttimedown->text()};
}

QList<PaperValue> DiveHead::values() const {
    QList<PaperValue> values;
    for (const HeadBox* box : boxes_) {
        values.append({box->caption(), (box->text() + u' ' + box->unit()->text()).trimmed()});
    }
    return values;
}

double DiveHead::interval() const {
    const QString text = txtinterval->text();
    return platform::leadingNumber(QStringView(text));
}

void DiveHead::fit(int windowWidth) {
    const bool narrow = isNarrow(windowWidth);
    windowWidth_ = windowWidth;
    row_->setSpacing(narrow ? look::spaceSmall : isRoomy(windowWidth) ? look::spaceRoom : look::spaceBase);
    Command4->setKind(narrow ? CommandButton::Kind::Icon : CommandButton::Kind::Small);
    for (HeadBox* box : std::as_const(boxes_)) {
        box->setNumberSize(narrow ? kNarrowNumber : kNumber);
    }
    placeButtons();
}

/// What stands in the boxes may change, and with it the room that they need.
bool DiveHead::event(QEvent* event) {
    const bool done = Pane::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        placeButtons();
    }
    return done;
}

void DiveHead::placeButtons() {
    const QMargins around = across_->contentsMargins();
    const int beside = around.left() + row_->minimumSize().width() + across_->spacing() +
                       buttons_->minimumSize().width() + around.right();
    const bool below = look::fontScale() > 1 && beside > windowWidth_;
    across_->setDirection(below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    // In a row of their own they begin where the boxes do: its end may be out of sight.
    const Qt::Alignment place = below ? Qt::AlignLeft : Qt::Alignment();
    if (place != buttons_->alignment()) {
        across_->setAlignment(buttons_, place); // asks for a layout, too
    }
    if (const int spacing = below ? 0 : row_->spacing(); spacing != across_->spacing()) {
        across_->setSpacing(spacing); // asks for a layout whatever was there before, which leads here again
    }
    const int height =
        look::scaledRow(kHeadHeight, 2) + (below ? Command4->sizeHint().height() + look::spaceSmall : 0);
    if (height != maximumHeight()) {
        setFixedHeight(height);
    }
}

} // namespace benthor::viewer
