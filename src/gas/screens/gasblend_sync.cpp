// What the screen shows of its plan.

#include "gas/screens/changespanel.h"
#include "gas/screens/gasblend.h"
#include "gas/screens/gasgraph.h"
#include "gas/screens/readingspanel.h"
#include "gas/screens/settingsform.h"
#include "gas/setuplook.h"
#include "gas/setuptext.h"
#include "platform/clock.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

namespace benthor::gas {

namespace {

constexpr int kChangesTab = 2;

/// The first line; how many follow it stands behind, and all of them in the tool tip.
void showLines(look::NoticeBand& band, const QString& lead, const QStringList& lines) {
    band.setVisible(!lines.isEmpty());
    if (lines.isEmpty()) {
        return;
    }
    const QString more =
        lines.size() == 1 ? QString() : QStringLiteral(" (and %1 more)").arg(lines.size() - 1);
    band.label()->setText(lead + lines.first() + more);
    band.setToolTip(lines.join(QLatin1Char('\n')));
}

void showText(QPlainTextEdit& box, const QString& text) {
    if (box.toPlainText() != text) {
        box.setPlainText(text);
    }
}

} // namespace

void GasBlend::sync() {
    const QList<WrongCell> wrong = wrongcells(plan_);
    table_->show(plan_, wrong);
    graph_->show(plan_);
    form_->show(plan_, wrong);
    readings_->showUnits(plan_.headfeet);
    tabs_->setTabText(0, plan_.rows[static_cast<size_t>(plan_.currentgasrow)].name);
    syncLook();
    syncReplaced();
    syncRefresh();
    Label7_->setText(shown_.Label7);
    Label7_->setToldBackground(platform::toQColor(shown_.Label7Colour));
    Label7_->setIconName(shown_.Label7 == QLatin1String("Connected") ? QStringLiteral("check") : QString());
    Label20_->setText(shown_.Label20);
    Label22_->setText(shown_.Label22);
    Label14_->setText(QString::number(plan_.Label14, 'f', 0));
    mnuMeters_->setChecked(!plan_.feet());
    mnuFeet_->setChecked(plan_.feet());
    syncDebug();
}

/// What would go out, and what speaks against it.
void GasBlend::syncLook() {
    const QDateTime now = platform::now();
    const QString reason = whynothing(plan_, now);
    const bool connected = process().deviceconnected == 1;
    const QStringList warnings =
        connected && reason.isEmpty() ? setupwarnings(plan_, device()) : QStringList();
    changes_->show(device().reported, reason.isEmpty() ? textof(plan_, now) : QString(),
                   static_cast<int>(warnings.size()));
    const bool sign = !reason.isEmpty() || !warnings.isEmpty();
    tabs_->setTabText(kChangesTab,
                      (changes_->changes() == 0 ? QStringLiteral("Changes")
                                                : QStringLiteral("Changes (%1)").arg(changes_->changes())) +
                          (sign ? QStringLiteral(" !") : QString()));
    tabs_->setTabToolTip(kChangesTab, sign ? QStringLiteral("Look at the line beside Update") : QString());
    QStringList lines = !reason.isEmpty() ? reason.split(QStringLiteral("\r\n")).mid(1) : warnings;
    if (reason.isEmpty() && connected && unreadable_) {
        lines +=
            QStringLiteral("The settings of this device cannot be read: an update replaces all of them.");
    }
    showLines(*look_, !reason.isEmpty() ? QStringLiteral("Not sent: ") : QString(), lines);
}

void GasBlend::syncReplaced() {
    replaced_->setVisible(plan_.replaced.has_value());
    bringBack_->setEnabled(plan_.replaced.has_value());
    if (plan_.replaced) {
        replaced_->label()->setText(
            QStringLiteral("What you typed was replaced by %1. Edit, Bring back what was typed.")
                .arg(plan_.replaced->by));
    }
}

void GasBlend::syncRefresh() {
    const bool rests = refreshrests_;
    for (QWidget* part : {static_cast<QWidget*>(refresh_), static_cast<QWidget*>(Picture1_),
                          static_cast<QWidget*>(Label15_)}) {
        part->setEnabled(!rests);
    }
}

void GasBlend::syncDebug() {
    showText(*Text6_, plan_.Text6);
    showText(*Text7_, plan_.Text7);
    showText(*Text8_0_, plan_.Text8_0);
    showText(*Text8_1_, plan_.Text8_1);
    const QDateTime now = platform::now();
    for (size_t tag = 0; tag < kTags.size(); ++tag) {
        Text15_[tag]->setText(QChar(kTags[tag].letter) + fieldvalue(plan_, tag, now).value_or(QString()));
    }
}

} // namespace benthor::gas
