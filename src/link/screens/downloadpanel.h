#pragma once

#include "link/linkstate.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace benthor::look {
class CommandButton;
class Fold;
class NumberLabel;
} // namespace benthor::look

namespace benthor::link {

/// Left side of the face "Dive Download", `Frame2`: what fetches dives, under which name they are saved, a
/// single dive, and what has come.
class DownloadPanel : public QWidget {
    Q_OBJECT

public:
    explicit DownloadPanel(QWidget* parent = nullptr);

    void sync(const LinkState& link);
    QLineEdit* series() const { return DiveSeriesName_; }
    QLineEdit* diveNumber() const { return startdivenum_; }
    look::CommandButton* getSelected() const { return cmddownload_; }
    look::CommandButton* getNew() const { return cmddownloadnew_; }
    look::CommandButton* getAll() const { return cmddownloadall_; }
    QPushButton* getDive() const { return Command1_; }
    QPushButton* getDives() const { return Command9_; }
    QPushButton* storeText() const { return Command3_; }
    QPushButton* saveToDatabase() const { return savetodatabase_; }

private:
    QWidget* buildSeries();
    QWidget* buildSingle();
    QWidget* buildReceived();
    void syncButtons(const LinkState& link);
    QString fileNames(const LinkState& link) const;

    look::CommandButton* cmddownload_;
    look::CommandButton* cmddownloadnew_;
    look::CommandButton* cmddownloadall_;
    QLineEdit* DiveSeriesName_;
    QLabel* fileName_;
    QLineEdit* startdivenum_;
    QPushButton* Command1_;
    QPushButton* Command9_;
    QPushButton* Command3_;
    QPushButton* savetodatabase_;
    QLabel* Label5_;
    QLabel* downloadingdive_;
    QLabel* Text1_;
    look::NumberLabel* DiveCount_;
    look::Fold* single_ = nullptr;
};

} // namespace benthor::link
