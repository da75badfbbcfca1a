#include "platform/look/widgets/faultframe.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>

namespace benthor::look {

namespace {

constexpr int signSize = 24;
constexpr int mostLines = 5;

/// As high as the words are, up to some lines; then it scrolls.
class WordsArea : public QScrollArea {
public:
    explicit WordsArea(QLabel* words)
        : words_(words) {
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        viewport()->setAutoFillBackground(false);
        setWidget(words);
        words->setAutoFillBackground(false);
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return most(words_->heightForWidth(width)); }
    QSize sizeHint() const override {
        return {words_->sizeHint().width(), most(words_->sizeHint().height())};
    }
    QSize minimumSizeHint() const override { return {0, fontMetrics().lineSpacing()}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == words_ && event->type() == QEvent::LayoutRequest) {
            updateGeometry();
        }
        return QScrollArea::eventFilter(watched, event);
    }
    /// A stop of the Tab key where there is something to scroll.
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        setFocusPolicy(words_->heightForWidth(viewport()->width()) > height() ? Qt::StrongFocus
                                                                              : Qt::NoFocus);
    }

private:
    int most(int height) const {
        return std::min(std::max(height, fontMetrics().lineSpacing()),
                        mostLines * fontMetrics().lineSpacing());
    }

    QLabel* words_;
};

} // namespace

FaultFrame::FaultFrame(QLabel* text, const QString& closeName, QWidget* parent)
    : QFrame(parent)
    , title_(new QLabel(this))
    , text_(text)
    , close_(new QPushButton(icon("close"), tr("Close"), this)) {
    close_->setObjectName(closeName);
    title_->setFont(strong(body()));
    title_->setTextFormat(Qt::PlainText);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(spaceWide + scaled(signSize) + spaceBase, spaceSmall, spaceSmall, spaceSmall);
    layout->setHorizontalSpacing(spaceWide);
    layout->setVerticalSpacing(2);
    layout->addWidget(title_, 0, 0);
    text_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout->addWidget(new WordsArea(text_), 1, 0);
    layout->addWidget(close_, 0, 1, 2, 1, Qt::AlignVCenter);
    layout->setColumnStretch(0, 1);
}

void FaultFrame::setStale(bool stale) {
    stale_ = stale;
    title_->setEnabled(!stale);
    text_->setEnabled(!stale);
    update();
}

void FaultFrame::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QColor edge = stale_ ? tokens().line : tokens().bad;
    drawPanel(&painter, rect(), tokens().surface, edge);
    const int side = scaled(signSize);
    drawIcon(&painter, QStringLiteral("warning"), QRect(spaceWide, 0, side, height()), side,
             stale_ ? tokens().textquiet : edge);
}

} // namespace benthor::look
