#include "tests/screens/screenlist.h"

#include "firmware/screens/blinkform.h"
#include "firmware/screens/reprog_link.h"
#include "firmware/screens/runprog.h"
#include "gas/screens/gasblend.h"
#include "guides/screens/frmabout.h"
#include "guides/screens/frmgets.h"
#include "guides/screens/frmsplash.h"
#include "guides/screens/frmtip.h"
#include "guides/screens/scrsavform1.h"
#include "link/screens/pc_link_1.h"
#include "logbook/screens/rbdetails.h"
#include "logbook/screens/rbmain.h"
#include "logbook/screens/mergelogbook.h"
#include "logbook/screens/trash.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/progresswindow.h"
#include "platform/screen/ticktimer.h"
#include "shell/screens/main_screen.h"
#include "tests/firmware/fakefirmwareneighbours.h"
#include "tests/gas/fakelink.h"
#include "tests/shell/fakeneighbours.h"
#include "viewer/screens/rbinterface.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QRadioButton>
#include <QTreeWidget>
#include <map>

namespace benthor::tests {

namespace {

struct Row {
    QString kind, caption, toolTip;
};

QString kindOf(const QObject* object) {
    if (const auto* timer = qobject_cast<const platform::TickTimer*>(object)) {
        return QStringLiteral("timer, %1 ms, %2")
            .arg(timer->interval())
            .arg(timer->isEnabled() ? "on" : "off");
    }
    const QList<std::pair<const QMetaObject*, const char*>> kinds{
        {&QMenu::staticMetaObject, "menu"},
        {&QAction::staticMetaObject, "menu entry"},
        {&platform::FlexGrid::staticMetaObject, "grid"},
        {&platform::Chart::staticMetaObject, "chart"},
        {&QRadioButton::staticMetaObject, "option"},
        {&QCheckBox::staticMetaObject, "check box"},
        {&QAbstractButton::staticMetaObject, "button"},
        {&QLineEdit::staticMetaObject, "text box"},
        {&QPlainTextEdit::staticMetaObject, "text box of lines"},
        {&QComboBox::staticMetaObject, "drop-down"},
        {&QListWidget::staticMetaObject, "list"},
        {&QTreeWidget::staticMetaObject, "list"},
        {&QProgressBar::staticMetaObject, "progress bar"},
        {&look::ClickableLabel::staticMetaObject, "label that acts"},
        {&QLabel::staticMetaObject, "label"},
        {&QWidget::staticMetaObject, "frame"}};
    for (const auto& [meta, kind] : kinds) {
        if (object->metaObject()->inherits(meta)) {
            return QLatin1String(kind);
        }
    }
    return {};
}

/// In one line of a table.
QString inCell(QString text) {
    text.replace(QLatin1Char('\n'), QLatin1String(" / "));
    return text.replace(QLatin1Char('|'), QLatin1String("\\|"));
}

QString captionOf(const QObject* object) {
    for (const char* property : {"title", "text"}) {
        const QVariant value = object->property(property);
        if (value.isValid()) {
            return inCell(value.toString());
        }
    }
    return {};
}

/// A tool tip that only repeats an action's caption is the toolkit's.
QString toolTipOf(const QObject* object) {
    if (const auto* action = qobject_cast<const QAction*>(object)) {
        const QString tip = action->toolTip();
        return tip == QString(action->text()).remove(u'&') ? QString() : inCell(tip);
    }
    const auto* widget = qobject_cast<const QWidget*>(object);
    return widget == nullptr ? QString() : inCell(widget->toolTip());
}

QString section(const QWidget& screen) {
    std::map<QString, Row> rows;
    for (const QObject* object : screen.findChildren<QObject*>()) {
        const QString name = object->objectName();
        const QString kind = kindOf(object);
        // The toolkit names parts of its own widgets.
        if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || kind.isEmpty() ||
            rows.contains(name)) {
            continue;
        }
        rows[name] = {kind, captionOf(object), toolTipOf(object)};
    }
    QString text =
        QStringLiteral("\n## %1\n\n%2\n")
            .arg(screen.objectName(), screen.windowTitle().isEmpty()
                                          ? QStringLiteral("No title of its own.")
                                          : QStringLiteral("Title \"%1\".").arg(screen.windowTitle()));
    if (rows.empty()) {
        return text;
    }
    text += QStringLiteral("\n| control | kind | caption | tool tip |\n|---|---|---|---|\n");
    for (const auto& [name, row] : rows) {
        text += QStringLiteral("| `%1` | %2 | %3 | %4 |\n").arg(name, row.kind, row.caption, row.toolTip);
    }
    return text;
}

} // namespace

QString screenList() {
    QString text = QStringLiteral("# Screens and their controls\n\n"
                                  "Every control by its name, as the screens are made; what a screen writes "
                                  "into them later is told where the "
                                  "screen is.\nThis page is written by `scripts/list-screens` and compared "
                                  "with the screens by a test.\n");
    FakeNeighbours neighbours;
    text += section(guides::frmSplash(true));
    text += section(guides::frmGetS(true));
    const platform::ProgressWindow progress({}, {}, {}, {});
    text += section(progress.window());
    text += section(shell::MainScreen(neighbours));
    text += section(logbook::rbmain());
    text += section(logbook::mergelogbook());
    text += section(logbook::trash());
    text += section(viewer::rbinterface());
    text += section(logbook::rbdetails());
    text += section(link::PC_Link_1());
    FakeLink link;
    text += section(gas::GasBlend(link));
    FakeFirmwareNeighbours firmware;
    text += section(firmware::ReProg_Link(firmware, {}));
    text += section(firmware::RunProg());
    text += section(firmware::BlinkForm());
    guides::Tips tips;
    text += section(guides::frmTip(guides::frmTip::Opened::ByUser, tips));
    text += section(guides::frmAbout());
    text += section(guides::ScrSavForm1());
    return text;
}

} // namespace benthor::tests
