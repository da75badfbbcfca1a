#include "logbook/screens/mergelogbook.h"

#include "logbook/screens/mergemodel.h"
#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/stretchedcolumn.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/progresswindow.h"
#include "platform/storewait.h"
#include "session/process.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTreeView>

namespace benthor::logbook {

using look::named;
using platform::BoxKind;
using platform::dialogs;
using platform::ProgramFolder;
using platform::ProgressWindow;
using platform::StoreError;

namespace {

constexpr int kLeastName = 150; ///< of a name, or of what two logbooks say
constexpr int kRowHeight = 28; ///< as in the dive list
constexpr int kRoom = 8;       ///< above and below the lines of a cell, together
constexpr int kBoxMargin = 2;

/// What becomes of a difference is chosen in the line itself.
class ChoiceDelegate : public QStyledItemDelegate {
public:
    ChoiceDelegate(const MergeModel& model, QObject* parent)
        : QStyledItemDelegate(parent)
        , model_(model) {}

    /// A closed box, so that it is seen to be one.
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        if (model_.offered(index).isEmpty()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionComboBox box;
        box.initFrom(option.widget);
        box.rect = option.rect.adjusted(0, kBoxMargin, 0, -kBoxMargin);
        box.state = QStyle::State_Enabled;
        box.currentText = index.data().toString();
        QStyle* const style = option.widget->style();
        style->drawComplexControl(QStyle::CC_ComboBox, &box, painter, option.widget);
        style->drawControl(QStyle::CE_ComboBoxLabel, &box, painter, option.widget);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const int lines = model_.offered(index).isEmpty() ? 1 : 2;
        const int height = std::max(look::scaled(kRowHeight), lines * option.fontMetrics.height() + kRoom);
        return {QStyledItemDelegate::sizeHint(option, index).width(), height};
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        auto* box = named(new QComboBox(parent), "Cbochoice");
        box->addItems(model_.offered(index));
        box->setAccessibleName(QStringLiteral("What is kept"));
        QObject::connect(box, &QComboBox::activated, this, [this, box] {
            emit const_cast<ChoiceDelegate*>(this)->commitData(box);
            emit const_cast<ChoiceDelegate*>(this)->closeEditor(box);
        });
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        qobject_cast<QComboBox*>(editor)->setCurrentText(index.data().toString());
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        model->setData(index, qobject_cast<QComboBox*>(editor)->currentText(), Qt::EditRole);
    }

private:
    const MergeModel& model_;
};

std::uint64_t unsignedOf(int number) {
    return static_cast<std::uint64_t>(number);
}

} // namespace

mergelogbook::mergelogbook()
    : Screen(QStringLiteral("mergelogbook"))
    , model_(new MergeModel(this)) {
    setWindowTitle(QStringLiteral("Bring dives from another logbook"));
    buildLayout();
    connect(model_, &MergeModel::choiceChanged, this, &mergelogbook::showChoice);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
            &mergelogbook::unload);
}

mergelogbook::~mergelogbook() = default;

void mergelogbook::buildLayout() {
    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    auto* card = new look::Card;
    around->addWidget(card);
    treemerge_ = named(new QTreeView, "treemerge");
    treemerge_->setAccessibleName(QStringLiteral("Dives of the other logbook"));
    treemerge_->setModel(model_);
    treemerge_->setItemDelegateForColumn(MergeModel::kChoice, new ChoiceDelegate(*model_, this));
    treemerge_->setEditTriggers(QAbstractItemView::AllEditTriggers);
    treemerge_->setAllColumnsShowFocus(true);
    new look::StretchedColumn(treemerge_, MergeModel::Name, kLeastName);
    lblmerge_ = named(new QLabel, "lblmerge");
    lblmerge_->setWordWrap(true);
    lblmerge_->setTextFormat(Qt::PlainText);
    look::setInk(lblmerge_, look::Ink::Quiet);
    card->body()->addWidget(buildHead());
    card->body()->addWidget(lblmerge_);
    card->body()->addWidget(treemerge_, 1);
    card->body()->addWidget(new look::Rule);
    card->body()->addWidget(buildFoot());
    setContents(ground);
    setMinimumSize(640, 400);
}

QWidget* mergelogbook::buildHead() {
    auto* head = new QWidget;
    auto* across = new QHBoxLayout(head);
    across->setContentsMargins({});
    lblotherlogbook_ = named(look::makeHeading(QString()), "lblotherlogbook");
    lblotherlogbook_->setTextFormat(Qt::PlainText);
    lblotherlogbook_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    across->addWidget(lblotherlogbook_, 1);
    const auto add = [&](const char* name, const char* caption, const char* tip,
                         void (mergelogbook::*act)()) {
        auto* button = named(new QPushButton(QLatin1String(caption)), name);
        button->setToolTip(QLatin1String(tip));
        connect(button, &QPushButton::clicked, this, act);
        across->addWidget(button);
    };
    add("cmdotherfolder", "Program &folder...", "A program folder with its dives and their files",
        &mergelogbook::cmdotherfolder_click);
    add("cmdotherstore", "S&tore...", "A store by itself: a backup, say, or one of an older program",
        &mergelogbook::cmdotherstore_click);
    return head;
}

QWidget* mergelogbook::buildFoot() {
    cmdmerge_ = named(new QPushButton, "cmdmerge");
    cmdmerge_->setProperty("primary", true);
    connect(cmdmerge_, &QPushButton::clicked, this, &mergelogbook::cmdmerge_click);
    auto* close = named(new QPushButton(QStringLiteral("&Close")), "cmdclosemerge");
    connect(close, &QPushButton::clicked, this, &mergelogbook::cmdclosemerge_click);
    auto* foot = new QWidget;
    auto* across = new QHBoxLayout(foot);
    across->setContentsMargins({});
    across->addWidget(cmdmerge_);
    across->addStretch(1);
    across->addWidget(close);
    return foot;
}

void mergelogbook::loading() {
    other_.reset();
    noDives(
        QStringLiteral("Choose the program folder of the other logbook, which brings the dives with their "
                       "profiles, or a store by itself. Nothing in it is changed."));
}

void mergelogbook::noDives(const QString& note) {
    model_->setDives({});
    lblotherlogbook_->setText(QStringLiteral("Another logbook"));
    lblotherlogbook_->setToolTip({});
    lblmerge_->setText(note);
}

void mergelogbook::takeUnit() {
    treemerge_->viewport()->update();
}

void mergelogbook::cmdotherfolder_click() {
    const Routine routine(*this);
    const QString path =
        dialogs().openFolder(this, QStringLiteral("Program folder of the other logbook"), QDir::homePath());
    if (!path.isEmpty() && !isUnloaded()) {
        showLogbook(path);
    }
}

void mergelogbook::cmdotherstore_click() {
    const Routine routine(*this);
    const QString path =
        dialogs().openFile(this, QStringLiteral("Store of the other logbook"), QDir::homePath(),
                           QStringLiteral("Dive stores (*.mdb)|*.mdb|All Files (*.*)|*.*"));
    if (!path.isEmpty() && !isUnloaded()) {
        showLogbook(path);
    }
}

/// An older store is read by a program of its own, which may take a while.
std::unique_ptr<OtherLogbook> mergelogbook::openOther(const QString& path) {
    ProgressWindow waiting(QStringLiteral("Another logbook"),
                           QStringLiteral("An older store is read: ") + path, QStringLiteral("rows"),
                           QStringLiteral("The copy is proved"));
    return std::make_unique<OtherLogbook>(
        path, ProgramFolder::current().path(u"rb.mdb"),
        [&](std::uint64_t rows, std::uint64_t of) { return waiting.goOn(rows, of) && !isUnloaded(); });
}

/// As it lies there by now. StoreError where it is gone.
void mergelogbook::reopenOther() {
    if (!other_->isCopyOfWhatLiesThere()) {
        other_ = openOther(other_->path());
    }
}

void mergelogbook::showLogbook(const QString& path) {
    const Routine routine(*this);
    other_.reset();
    noDives({});
    try {
        other_ = openOther(path);
        if (std::optional<std::vector<MergeDive>> plan = readPlan()) {
            lblotherlogbook_->setText(QFileInfo(path).fileName());
            lblotherlogbook_->setToolTip(path);
            takePlan(std::move(*plan));
            return;
        }
        noDives(QStringLiteral("The reading was stopped."));
    } catch (const store::JetStopped&) {
        noDives(QStringLiteral("The reading was stopped."));
    } catch (const StoreError& error) {
        noDives(QStringLiteral("That logbook cannot be read.\n") + error.text());
    }
    other_.reset();
}

/// Nothing where the user did not want to wait. StoreError.
std::optional<std::vector<MergeDive>> mergelogbook::readPlan() {
    ProgressWindow waiting(QStringLiteral("Another logbook"),
                           QStringLiteral("The two logbooks are compared."), QStringLiteral("dives"), {});
    try {
        return planmerge(process().database, ProgramFolder::current(), *other_, [&](int done, int of) {
            return waiting.goOn(unsignedOf(done), unsignedOf(of)) && !isUnloaded();
        });
    } catch (const MergeStopped&) {
        return std::nullopt;
    }
}

void mergelogbook::takePlan(std::vector<MergeDive> dives) {
    const bool none = dives.empty();
    model_->setDives(std::move(dives));
    lblmerge_->setText(
        none ? QStringLiteral("There are no dives in that logbook.")
             : QStringLiteral("Ticked dives come with their gases, tissues, buddies and files. Of a "
                              "dive that is here with other details, choose line by line what is "
                              "kept, and tick it."));
    for (int group = 0; group < model_->rowCount(); ++group) {
        const QModelIndex index = model_->index(group, 0);
        treemerge_->setExpanded(index,
                                MergeModel::kGroups.at(static_cast<size_t>(group)) != MergeGroup::Here);
        treemerge_->setFirstColumnSpanned(group, {}, true);
    }
    for (int column = 0; column < MergeModel::Columns; ++column) {
        if (column != MergeModel::Name) {
            treemerge_->resizeColumnToContents(column);
        }
    }
    treemerge_->setFocus();
}

void mergelogbook::showChoice() {
    const int comes = model_->comes();
    const int changes = model_->changes();
    QStringList words;
    if (comes > 0 || changes == 0) {
        words += comes == 1 ? QStringLiteral("&Bring 1 dive") : QStringLiteral("&Bring %1 dives").arg(comes);
    }
    if (changes > 0) {
        words += (comes > 0 ? QStringLiteral("change %1") : QStringLiteral("&Change %1")).arg(changes);
    }
    cmdmerge_->setText(words.join(QStringLiteral(", ")));
    cmdmerge_->setEnabled(comes + changes > 0);
}

bool mergelogbook::mayMerge() {
    QString refusal;
    if (process().importing) {
        refusal = QStringLiteral("Dives are being imported. Try again when that is done.");
    } else if (const QString reason = process().database.readOnlyReason(); !reason.isEmpty()) {
        refusal = reason;
    } else if (const QString stays = typedKeeper_ ? typedKeeper_() : QString(); !stays.isEmpty()) {
        refusal = QStringLiteral("Nothing was changed.\n\n") + stays;
    }
    if (!refusal.isEmpty()) {
        dialogs().message(this, refusal, BoxKind::Warning);
    }
    return refusal.isEmpty() && !isUnloaded();
}

/// What is done is what is shown: a logbook that has changed since it was read is shown first.
void mergelogbook::cmdmerge_click() {
    const Routine routine(*this);
    if (other_ == nullptr || platform::isWaiting() || !mayMerge()) {
        return;
    }
    try {
        reopenOther();
        std::optional<std::vector<MergeDive>> fresh = isUnloaded() ? std::nullopt : readPlan();
        if (!fresh || isUnloaded()) {
            return;
        }
        if (*fresh != model_->dives()) {
            takePlan(std::move(*fresh));
            dialogs().message(
                this, QStringLiteral("The logbooks have changed since they were compared. Look again at "
                                     "what is to come; nothing was merged yet."));
            return;
        }
        doMerge();
    } catch (const store::JetStopped&) {
        lblmerge_->setText(QStringLiteral("Stopped. Nothing was merged."));
    } catch (const StoreError& error) {
        dialogs().message(this, QStringLiteral("Nothing was merged.\n\n") + error.text(), BoxKind::Warning);
    }
}

void mergelogbook::doMerge() {
    MergeResult result;
    try {
        ProgressWindow waiting(QStringLiteral("Another logbook"), QStringLiteral("The dives come over."),
                               QStringLiteral("steps"), QStringLiteral("The logbook is stored"));
        result = mergedives(process().database, ProgramFolder::current(), *other_, model_->dives(),
                            model_->choices(),
                            [&](int done, int of) { return waiting.goOn(unsignedOf(done), unsignedOf(of)); });
    } catch (const MergeStopped&) {
        lblmerge_->setText(QStringLiteral("Stopped. Nothing was merged."));
        return;
    }
    emit merged(result);
}

void mergelogbook::cmdclosemerge_click() {
    unload();
}

} // namespace benthor::logbook
