#include "pages.h"

#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/toldbutton.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolTip>

namespace benthor::look {

namespace {

QPushButton* button(const char* text, const char* iconName, const char* flag = nullptr) {
    auto* made = new QPushButton(QLatin1String(text));
    if (iconName) {
        made->setIcon(icon(iconName));
    }
    if (flag) {
        made->setProperty(flag, true);
    }
    return made;
}

QWidget* disabled(QWidget* widget) {
    widget->setEnabled(false);
    return widget;
}

QLayout* buttonsRow() {
    auto* row = new QHBoxLayout;
    row->addWidget(button("Open", "open-folder", "primary"));
    row->addWidget(button("Publish", "mail"));
    row->addWidget(button("Menu Screen", "home", "quiet"));
    row->addWidget(button("Delete", "trash", "danger"));
    row->addWidget(disabled(button("Save", "save")));
    row->addWidget(disabled(button("Erase", "erase", "danger")));
    auto* play = button("", "play");
    play->setCheckable(true);
    play->setChecked(true);
    row->addWidget(play);
    row->addWidget(button("", "stop"));
    row->addWidget(button("Interval Send", "send", "primary"));
    row->addWidget(disabled(button("Update", "send", "primary")));
    row->addStretch();
    return row;
}

QLayout* checksColumn() {
    auto* grid = new QGridLayout;
    int row = 0;
    for (const bool enabled : {true, false}) {
        for (const bool on : {true, false}) {
            auto* check = new QCheckBox(QStringLiteral("Closed Circuit"));
            auto* radio = new QRadioButton(QStringLiteral("metres"));
            radio->setAutoExclusive(false);
            check->setChecked(on);
            radio->setChecked(on);
            check->setEnabled(enabled);
            radio->setEnabled(enabled);
            grid->addWidget(check, row, 0);
            grid->addWidget(radio, row++, 1);
        }
    }
    auto* between = new QCheckBox(QStringLiteral("some of them"));
    between->setTristate();
    between->setCheckState(Qt::PartiallyChecked);
    grid->addWidget(between, row, 0);
    grid->addWidget(new QCheckBox, row, 1);
    return grid;
}

QLayout* fieldsColumn() {
    auto* column = new QVBoxLayout;
    column->addWidget(new QLineEdit(QStringLiteral("MyLatestDives")));
    auto* told = new QLineEdit(QStringLiteral("told ground"));
    QPalette colours = told->palette();
    colours.setColor(QPalette::Base, QColor(192, 255, 192));
    colours.setColor(QPalette::Text, Qt::black);
    told->setPalette(colours);
    column->addWidget(told);
    auto* empty = new QLineEdit;
    empty->setPlaceholderText(QStringLiteral("Find a dive"));
    column->addWidget(empty);
    auto* readOnly = new QLineEdit(QStringLiteral("read only"));
    readOnly->setReadOnly(true);
    column->addWidget(readOnly);
    column->addWidget(disabled(new QLineEdit(QStringLiteral("disabled"))));
    auto* combo = new QComboBox;
    combo->addItems({QStringLiteral("100%"), QStringLiteral("80%")});
    column->addWidget(combo);
    auto* spin = new QSpinBox;
    spin->setValue(30);
    column->addWidget(spin);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setValue(40);
    column->addWidget(slider);
    auto* bar = new QProgressBar;
    bar->setValue(62);
    column->addWidget(bar);
    return column;
}

QWidget* table() {
    auto* made = new QTableWidget(12, 4);
    made->setHorizontalHeaderLabels({QStringLiteral("DiveID"), QStringLiteral("Duration"),
                                     QStringLiteral("startdate"), QStringLiteral("site")});
    made->verticalHeader()->hide();
    made->verticalHeader()->setDefaultSectionSize(28);
    made->horizontalHeader()->setStretchLastSection(true);
    made->setSortingEnabled(true);
    made->sortItems(0);
    for (int row = 0; row < made->rowCount(); ++row) {
        made->setItem(row, 0,
                      new QTableWidgetItem(QStringLiteral("D%1").arg(row + 1, 7, 10, QLatin1Char('0'))));
        made->setItem(row, 1, new QTableWidgetItem(QStringLiteral("%1mins").arg(40 + row * 3)));
        made->setItem(row, 2, new QTableWidgetItem(QStringLiteral("27/07/2017 09:50:02")));
        made->setItem(row, 3, new QTableWidgetItem(QStringLiteral("Quarry shelf")));
        made->item(row, 1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    for (int column = 0; column < 4; ++column) {
        made->item(3, column)->setBackground(Qt::red);
        made->item(3, column)->setForeground(Qt::black);
    }
    made->setCurrentCell(1, 1);
    return made;
}

QWidget* tabs() {
    auto* made = new QTabWidget;
    made->addTab(new QPlainTextEdit(QStringLiteral("A079 000 0510 1 B001 000 0030 0")),
                 QStringLiteral("Gas 7"));
    made->addTab(new QWidget, QStringLiteral("Live readings"));
    auto* box = new QGroupBox(QStringLiteral("Display"));
    auto* inside = new QVBoxLayout(box);
    inside->addWidget(new QCheckBox(QStringLiteral("Silent mode")));
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(made);
    splitter->addWidget(box);
    return splitter;
}

} // namespace

QWidget* controlsPage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->addLayout(buttonsRow());
    auto* row = new QHBoxLayout;
    auto* left = new Card;
    left->body()->addLayout(checksColumn());
    left->body()->addLayout(fieldsColumn());
    row->addWidget(left);
    row->addWidget(table(), 2);
    row->addWidget(tabs(), 1);
    column->addLayout(row, 1);
    return page;
}

QWidget* menusPage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar;
    for (const char* title : {"&Import", "&File", "metres", "&Connect"}) {
        bar->addMenu(QLatin1String(title));
    }
    column->addWidget(bar);
    QMenu menu;
    menu.addAction(icon("open-folder"), QStringLiteral("&Open"))
        ->setShortcut(QKeySequence(QStringLiteral("Ctrl+O")));
    auto* check = menu.addAction(QStringLiteral("&Metres"));
    check->setCheckable(true);
    check->setChecked(true);
    menu.addAction(QStringLiteral("&Feet"))->setEnabled(false);
    menu.addSeparator();
    menu.addMenu(QStringLiteral("&Default"));
    menu.setActiveAction(check);
    menu.adjustSize();
    auto* shot = new QLabel;
    shot->setPixmap(menu.grab());
    auto* row = new QHBoxLayout;
    row->setContentsMargins(16, 16, 16, 16);
    row->addWidget(shot, 0, Qt::AlignTop);
    QMessageBox box(
        QMessageBox::Warning, QStringLiteral("Comfirmation"),
        QStringLiteral("Main Database not found, Would you like to duplicate from the backup database?"),
        QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(QMessageBox::No);
    box.show();
    QApplication::processEvents();
    auto* boxShot = new QLabel;
    boxShot->setPixmap(box.grab());
    row->addWidget(boxShot, 0, Qt::AlignTop);
    row->addStretch();
    column->addLayout(row, 1);
    return page;
}

QWidget* focusPage() {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    QWidget stage;
    auto* column = new QHBoxLayout(&stage);
    auto* combo = new QComboBox;
    combo->addItem(QStringLiteral("100%"));
    auto* toldOne = new ToldButton(QStringLiteral("import dives"));
    toldOne->setToldBackground(Qt::yellow);
    auto* lonely = new QCheckBox;
    auto* on = new QCheckBox(QStringLiteral("HUD HI"));
    on->setChecked(true);
    const QList<QWidget*> some{button("Open", "open-folder", "primary"),
                               button("stop import", "stop"),
                               button("Delete", "trash", "danger"),
                               button("Menu Screen", "home", "quiet"),
                               button("", "play"),
                               toldOne,
                               new QLineEdit(QStringLiteral("MyLatestDives")),
                               combo,
                               new QSpinBox,
                               on,
                               lonely,
                               new QRadioButton(QStringLiteral("metres")),
                               new QSlider(Qt::Horizontal)};
    for (QWidget* widget : some) {
        column->addWidget(widget);
    }
    stage.show();
    stage.activateWindow();
    QApplication::processEvents();
    int place = 0;
    for (QWidget* widget : some) {
        widget->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
        auto* shot = new QLabel;
        shot->setPixmap(widget->grab());
        grid->addWidget(shot, place / 4, place % 4, Qt::AlignCenter);
        ++place;
    }
    return page;
}

} // namespace benthor::look
