#include "guides/screens/manualview.h"

#include "guides/webarchive.h"
#include "platform/files.h"
#include "platform/look/look.h"

#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace benthor::guides {

namespace {

constexpr int kContentsWidth = 240;
constexpr int kDeepestHeading = 3;

/// The page, which shows what comes from the archive and from nowhere else.
class ManualPage : public QTextBrowser {
public:
    explicit ManualPage(QList<ArchivePart> parts)
        : parts_(std::move(parts)) {
        setObjectName(QStringLiteral("manualpage"));
        setAccessibleName(QStringLiteral("Manual"));
        setOpenLinks(false);
        document()->setDocumentMargin(24);
        const ArchivePart& page = parts_.first();
        document()->setBaseUrl(QUrl::fromEncoded(page.location));
        setHtml(QString::fromUtf8(page.bytes));
    }

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        Q_UNUSED(type)
        const QByteArray wanted = document()->baseUrl().resolved(name).toEncoded();
        for (const ArchivePart& part : parts_) {
            if (part.location == wanted) {
                return part.bytes;
            }
        }
        return {};
    }

private:
    QList<ArchivePart> parts_;
};

/// The page with its contents at the left, a search, and a way back to where the reader came from.
class ManualView : public QWidget {
public:
    explicit ManualView(QList<ArchivePart> parts)
        : page_(new ManualPage(std::move(parts)))
        , contents_(new QListWidget)
        , search_(new QLineEdit)
        , back_(new QPushButton(look::icon("back"), QStringLiteral("Back")))
        , note_(look::makeCaption(QString())) {
        setObjectName(QStringLiteral("manualview"));
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("Benthor - Manual"));
        resize(1080, 760);
        contents_->setObjectName(QStringLiteral("manualcontents"));
        contents_->setAccessibleName(QStringLiteral("Contents"));
        contents_->setFixedWidth(look::scaled(kContentsWidth));
        search_->setObjectName(QStringLiteral("manualsearch"));
        search_->setPlaceholderText(QStringLiteral("Search the manual"));
        search_->setClearButtonEnabled(true);
        back_->setObjectName(QStringLiteral("manualback"));
        back_->setToolTip(QStringLiteral("To where you came from"));
        note_->setObjectName(QStringLiteral("manualnote"));
        layOut();
        listHeadings();
        connect(contents_, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) { open(item); });
        connect(contents_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { open(item); });
        connect(search_, &QLineEdit::returnPressed, this, [this] { find(); });
        connect(back_, &QPushButton::clicked, this, [this] { goBack(); });
        connect(page_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { follow(link); });
        const auto key = [this](const QKeySequence& keys, void (ManualView::*act)()) {
            connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, act] { (this->*act)(); });
        };
        key(QKeySequence(Qt::Key_Escape), &ManualView::leave);
        key(QKeySequence(Qt::ALT | Qt::Key_Left), &ManualView::goBack);
        key(QKeySequence::Find, &ManualView::toSearch);
        key(QKeySequence::FindNext, &ManualView::find);
        showWayBack();
    }

private:
    void layOut() {
        auto* down = new QVBoxLayout(this);
        auto* bar = new QHBoxLayout;
        bar->addWidget(back_);
        bar->addWidget(search_, 1);
        bar->addWidget(note_);
        down->addLayout(bar);
        auto* across = new QHBoxLayout;
        across->addWidget(contents_);
        across->addWidget(page_, 1);
        down->addLayout(across, 1);
        page_->setFocus();
    }

    void listHeadings() {
        const QTextDocument* document = page_->document();
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            const int level = block.blockFormat().headingLevel();
            if (level < 1 || level > kDeepestHeading || block.text().trimmed().isEmpty()) {
                continue;
            }
            auto* item = new QListWidgetItem(QString(3 * (level - 1), u' ') + block.text().trimmed());
            item->setData(Qt::UserRole, block.position());
            contents_->addItem(item);
        }
    }

    void noteWay() {
        way_.append(page_->verticalScrollBar()->value());
        showWayBack();
    }
    void showWayBack() { back_->setEnabled(!way_.isEmpty()); }

    /// The heading stands at the top then.
    void open(const QListWidgetItem* item) {
        noteWay();
        QTextCursor cursor(page_->document());
        cursor.setPosition(item->data(Qt::UserRole).toInt());
        page_->setTextCursor(cursor);
        QScrollBar* bar = page_->verticalScrollBar();
        bar->setValue(bar->value() + page_->cursorRect(cursor).top());
    }

    /// From the last hit on, and from the top again behind the end.
    void find() {
        const QString words = search_->text().trimmed();
        note_->clear();
        if (words.isEmpty()) {
            return;
        }
        const int before = page_->verticalScrollBar()->value();
        if (!page_->find(words)) {
            page_->moveCursor(QTextCursor::Start);
            if (!page_->find(words)) {
                page_->verticalScrollBar()->setValue(before);
                note_->setText(QStringLiteral("Not found"));
                return;
            }
        }
        way_.append(before);
        showWayBack();
    }

    void follow(const QUrl& link) {
        if (link.hasFragment() && (link.isRelative() || link.path() == page_->document()->baseUrl().path())) {
            noteWay();
            page_->scrollToAnchor(link.fragment());
        } else {
            QDesktopServices::openUrl(link);
        }
    }

    void goBack() {
        if (!way_.isEmpty()) {
            page_->verticalScrollBar()->setValue(way_.takeLast());
        }
        showWayBack();
    }

    void toSearch() {
        search_->setFocus();
        search_->selectAll();
    }

    void leave() { close(); }

    ManualPage* page_;
    QListWidget* contents_;
    QLineEdit* search_;
    QPushButton* back_;
    QLabel* note_;
    QList<int> way_; ///< places that were left, the last one at the end
};

} // namespace

QWidget* makeManualView(const QString& path) {
    const std::optional<QByteArray> archive = platform::readFile(path);
    QList<ArchivePart> parts = unpackArchive(archive.value_or(QByteArray()));
    return parts.isEmpty() ? nullptr : new ManualView(std::move(parts));
}

} // namespace benthor::guides
