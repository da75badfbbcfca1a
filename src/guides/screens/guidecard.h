#pragma once

#include <QString>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QVBoxLayout;

namespace benthor::guides {

/// What the guide, the tips and the about box stand on: one card with a picture at the left, words at the
/// right, and a row of buttons at its foot.
class GuideCard : public QWidget {
    Q_OBJECT

public:
    explicit GuideCard(QWidget* parent = nullptr);

    /// Takes the place of the picture.
    void setPicture(QLabel* picture);
    QVBoxLayout* words() const { return words_; }
    QHBoxLayout* foot() const { return foot_; }

    /// A picture of the program folder in the theme in force; the program's own sign where there is none.
    static void showPicture(QLabel* label, const QString& file);

private:
    QVBoxLayout* left_;
    QVBoxLayout* words_;
    QHBoxLayout* foot_;
};

} // namespace benthor::guides
