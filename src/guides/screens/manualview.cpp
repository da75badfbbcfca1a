#include "guides/screens/manualview.h"

#include "guides/webarchive.h"
#include "platform/files.h"

#include <QShortcut>
#include <QTextBrowser>

namespace benthor::guides {

namespace {

class ManualView : public QTextBrowser {
public:
    explicit ManualView(QList<ArchivePart> parts)
        : parts_(std::move(parts)) {
        setObjectName(QStringLiteral("manualview"));
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowTitle(QStringLiteral("Benthor - Manual"));
        setOpenExternalLinks(true);
        document()->setDocumentMargin(24);
        resize(840, 760);
        connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
                &QWidget::close);
        const ArchivePart& page = parts_.first();
        document()->setBaseUrl(QUrl::fromEncoded(page.location));
        setHtml(QString::fromUtf8(page.bytes));
    }

protected:
    /// What the page shows comes from the archive and from nowhere else.
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

} // namespace

QWidget* makeManualView(const QString& path) {
    const std::optional<QByteArray> archive = platform::readFile(path);
    QList<ArchivePart> parts = unpackArchive(archive.value_or(QByteArray()));
    return parts.isEmpty() ? nullptr : new ManualView(std::move(parts));
}

} // namespace benthor::guides
