#pragma once

#include "link/linkstate.h"
#include "platform/look/widgets/card.h"

#include <QHash>
#include <QImage>

class QButtonGroup;

namespace benthor::look {
class EntryRow;
}

namespace benthor::link {

/// Left side of the face "Setup Utilities": the commands of the device, picture and caption as one row each;
/// the rarer ones as plain choices; Restart apart.
class CommandList : public look::Card {
    Q_OBJECT

public:
    explicit CommandList(QWidget* parent = nullptr);

    void sync(const Console& console);
    /// The screen saver's picture, in the place of its icon; null leaves that.
    void setSaverPicture(const QImage& picture);

protected:
    void changeEvent(QEvent* event) override;

signals:
    void captionClicked(int index); ///< `Label19`
    void pictureClicked(int index); ///< `Picture14`, or `Image1` for 0
    void optionClicked(int index);  ///< `Option1`

private:
    look::EntryRow* addRow(QWidget* column, int index);
    QWidget* buildOptions();
    QWidget* buildRestart();

    QHash<int, look::EntryRow*> rows_;
    QButtonGroup* options_;
    QImage saver_;
};

} // namespace benthor::link
