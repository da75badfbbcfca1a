#include "platform/look/look.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionButton>
#include <QStyleOptionSlider>
#include <QTableWidget>
#include <QtTest>

using namespace benthor::look;

namespace {

QColor pixelOf(QWidget& widget, const QPoint& at) {
    return widget.grab().toImage().pixelColor(at);
}

} // namespace

class TestLookStyle : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void controlsHaveTheirHeights();
    void aToldGroundOfAFieldSurvivesAThemeSwitch();
    void toldCellColoursSurviveAThemeSwitch();
    void aPrimaryButtonIsFilledWithAccent();
    void aDangerousButtonIsEdgedRed();
    void aCheckedButtonIsFilledWithAccent();
    void focusShowsInsideTheControl_data();
    void focusShowsInsideTheControl();
    void aCheckBoxIsFilledWhenCheckedAndPaleWhenDisabled();
    void aScrollBarIsSlimAndItsSliderReachesBothEnds();
    void noStyleSheetSlowsItemViews();
    void everyStandardIconCanBeAskedFor();
    void aFileDialogOpens();
    void theSignOfAnOpenMessageFollowsTheTheme();
    void theLastHeadHasNoLineBesideTheFrame();
};

void TestLookStyle::initTestCase() {
    apply(*qApp);
    setTheme(Theme::Light);
}

void TestLookStyle::controlsHaveTheirHeights() {
    const QPushButton button(QStringLiteral("Publish"));
    QCOMPARE(button.sizeHint().height(), scaled(32));
    QPushButton large(QStringLiteral("Morvalien Dive Log"));
    large.setProperty("big", true);
    QCOMPARE(large.sizeHint().height(), scaled(40));
    const QPushButton square(icon("play"), QString());
    QCOMPARE(square.sizeHint(), QSize(scaled(32), scaled(32)));
    const QLineEdit field;
    QCOMPARE(field.sizeHint().height(), scaled(32));
    const QComboBox box;
    QCOMPARE(box.sizeHint().height(), scaled(32));
}

void TestLookStyle::aToldGroundOfAFieldSurvivesAThemeSwitch() {
    QLineEdit field;
    field.resize(120, 32);
    QPalette colours = field.palette();
    colours.setColor(QPalette::Base, QColor(192, 255, 192));
    field.setPalette(colours);
    for (const Theme one : {Theme::Dark, Theme::Light}) {
        setTheme(one);
        QCOMPARE(field.palette().color(QPalette::Base), QColor(192, 255, 192));
        QCOMPARE(pixelOf(field, {60, 5}), QColor(192, 255, 192));
    }
}

void TestLookStyle::toldCellColoursSurviveAThemeSwitch() {
    QTableWidget table(2, 1);
    table.setItem(0, 0, new QTableWidgetItem);
    table.setItem(1, 0, new QTableWidgetItem);
    table.item(0, 0)->setBackground(QColor(255, 0, 0));
    table.resize(200, 200);
    table.show();
    for (const Theme one : {Theme::Dark, Theme::Light}) {
        setTheme(one);
        const QImage image = table.viewport()->grab().toImage();
        QCOMPARE(image.pixelColor(20, table.rowViewportPosition(0) + 5), QColor(255, 0, 0));
        QCOMPARE(image.pixelColor(20, table.rowViewportPosition(1) + 5), tokens(one).surface);
    }
}

void TestLookStyle::aPrimaryButtonIsFilledWithAccent() {
    QPushButton button(QStringLiteral("Open"));
    button.setProperty("primary", true);
    button.resize(button.sizeHint());
    QCOMPARE(pixelOf(button, {6, 16}), tokens().accent);
}

void TestLookStyle::aDangerousButtonIsEdgedRed() {
    QPushButton button(QStringLiteral("Delete"));
    button.setProperty("danger", true);
    button.resize(button.sizeHint());
    QCOMPARE(pixelOf(button, {0, 16}), tokens().bad);
    QCOMPARE(pixelOf(button, {5, 16}), tokens().surface);
}

void TestLookStyle::aCheckedButtonIsFilledWithAccent() {
    QPushButton button(icon("play"), QString());
    button.setCheckable(true);
    button.resize(button.sizeHint());
    QCOMPARE(pixelOf(button, {5, 16}), tokens().surface);
    button.setChecked(true);
    QCOMPARE(pixelOf(button, {5, 16}), tokens().accent);
}

void TestLookStyle::focusShowsInsideTheControl_data() {
    QTest::addColumn<QWidget*>("control");
    auto* primary = new QPushButton(QStringLiteral("Open"));
    primary->setProperty("primary", true);
    auto* quiet = new QPushButton(QStringLiteral("Menu Screen"));
    quiet->setProperty("quiet", true);
    QTest::newRow("button") << static_cast<QWidget*>(new QPushButton(QStringLiteral("Publish")));
    QTest::newRow("primary button") << static_cast<QWidget*>(primary);
    QTest::newRow("quiet button") << static_cast<QWidget*>(quiet);
    QTest::newRow("field") << static_cast<QWidget*>(new QLineEdit);
    QTest::newRow("choice") << static_cast<QWidget*>(new QComboBox);
    QTest::newRow("check box") << static_cast<QWidget*>(new QCheckBox(QStringLiteral("Depth")));
    QTest::newRow("check box without words") << static_cast<QWidget*>(new QCheckBox);
}

void TestLookStyle::focusShowsInsideTheControl() {
    QFETCH(QWidget*, control);
    QWidget window;
    control->setParent(&window);
    auto* other = new QPushButton(QStringLiteral("other"), &window);
    control->resize(control->sizeHint());
    window.show();
    window.activateWindow();
    other->setFocus();
    QTRY_VERIFY(other->hasFocus());
    const QImage without = control->grab().toImage();
    control->setFocus(Qt::TabFocusReason);
    QTRY_VERIFY(control->hasFocus());
    const QImage with = control->grab().toImage();
    int accent = 0;
    int changed = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            accent += with.pixelColor(x, y) == tokens().accent ? 1 : 0;
            changed += with.pixelColor(x, y) != without.pixelColor(x, y) ? 1 : 0;
        }
    }
    QVERIFY2(accent >= 2 * 20, qPrintable(QString::number(accent)));
    QVERIFY2(changed >= 2 * 20, qPrintable(QString::number(changed)));
}

void TestLookStyle::aCheckBoxIsFilledWhenCheckedAndPaleWhenDisabled() {
    QCheckBox box(QStringLiteral("Depth"));
    box.resize(box.sizeHint());
    const QPoint inside(3, box.height() / 2 + 5); // beside the sign
    QCOMPARE(pixelOf(box, inside), tokens().surface);
    box.setChecked(true);
    QCOMPARE(pixelOf(box, inside), tokens().accent);
    box.setEnabled(false);
    QCOMPARE(pixelOf(box, inside), tokens().sunken);
}

void TestLookStyle::aScrollBarIsSlimAndItsSliderReachesBothEnds() {
    QScrollBar bar(Qt::Vertical);
    bar.setRange(0, 9999);
    bar.setPageStep(20);
    QCOMPARE(bar.sizeHint().width(), scaled(12));
    bar.resize(12, 300);
    const auto slider = [&bar] {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = Qt::Vertical;
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.pageStep = bar.pageStep();
        option.sliderPosition = bar.value();
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, &bar);
    };
    QCOMPARE(slider().top(), 0);
    QCOMPARE(slider().height(), scaled(28));
    bar.setValue(9999);
    QCOMPARE(slider().bottom(), 299);
}

void TestLookStyle::noStyleSheetSlowsItemViews() {
    const QTableWidget table(1, 1);
    QVERIFY(qApp->styleSheet().isEmpty());
    QVERIFY(table.styleSheet().isEmpty());
    QVERIFY(!table.style()->inherits("QStyleSheetStyle"));
}

void TestLookStyle::everyStandardIconCanBeAskedFor() {
    for (int which = 0; which <= static_cast<int>(QStyle::SP_TabCloseButton); ++which) {
        const auto icon = static_cast<QStyle::StandardPixmap>(which);
        QApplication::style()->standardPixmap(icon);
        QApplication::style()->standardIcon(icon);
    }
    QVERIFY(!QApplication::style()->standardPixmap(QStyle::SP_FileIcon).isNull());
}

void TestLookStyle::aFileDialogOpens() {
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.show();
    QCoreApplication::processEvents();
    QVERIFY(dialog.isVisible());
}

void TestLookStyle::theSignOfAnOpenMessageFollowsTheTheme() {
    const auto inkOf = [](const QPixmap& sign) {
        const QImage picture = sign.toImage();
        QColor ink;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y).alpha() == 255) {
                    ink = picture.pixelColor(x, y);
                }
            }
        }
        return ink;
    };
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Send"), QStringLiteral("Send it all the same?"));
    box.show();
    for (const Theme one : {Theme::Dark, Theme::Light}) {
        setTheme(one);
        QCOMPARE(inkOf(box.iconPixmap()), tokens(one).notice);
    }
}

void TestLookStyle::theLastHeadHasNoLineBesideTheFrame() {
    QTableWidget table(1, 2);
    table.verticalHeader()->hide();
    table.horizontalHeader()->setStretchLastSection(true);
    table.resize(300, 100);
    table.show();
    QHeaderView* heads = table.horizontalHeader();
    const auto lineAt = [heads](int x) {
        return heads->viewport()->grab().toImage().pixelColor(x, heads->height() / 2) == tokens().line;
    };
    const int first = heads->sectionSize(0) - 1;
    QVERIFY(lineAt(first));
    QVERIFY(!lineAt(heads->viewport()->width() - 1));
    heads->setStretchLastSection(false);
    heads->resizeSection(1, 50);
    QVERIFY(lineAt(first + 50)); // it parts the last column from what is empty
}

QTEST_MAIN(TestLookStyle)
#include "test_look_style.moc"
