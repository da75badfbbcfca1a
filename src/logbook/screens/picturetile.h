#pragma once

#include <QImage>
#include <QString>
#include <QWidget>

namespace benthor::look {
class ClickableLabel;
}

namespace benthor::logbook {

/// One picture of a dive, loaded in the background at the size of a screen at most, or the hint to choose
/// one.
class PictureTile : public QWidget {
    Q_OBJECT

public:
    /// Names its two controls "Image1(index)" and "Label5(index)".
    explicit PictureTile(int index, QWidget* parent = nullptr);

    /// Begins to load; an empty path shows the hint. What cannot be read leaves the hint in place.
    void setPath(const QString& path);
    bool hasPicture() const { return !picture_.isNull(); }
    bool isLoading() const { return loading_; }

signals:
    void clicked();
    void givenUp(); ///< the picture is to be taken away

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void take(int load, const QImage& picture);
    void showPicture();

    QString path_;
    QImage picture_;
    int load_ = 0; ///< number of the load in hand: an earlier one that ends late is passed over
    bool loading_ = false;
    look::ClickableLabel* Image1_;
    look::ClickableLabel* Label5_;
    look::ClickableLabel* away_ = nullptr;
};

} // namespace benthor::logbook
