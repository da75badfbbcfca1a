#pragma once

#include "platform/look/tokens.h"

#include <QImage>
#include <QPixmap>

namespace benthor::look {

/// A panel picture as `theme` wants it: unchanged in the light one; in the dark one with its lightness turned
/// round and its hues kept, so that a drawing on light ground does not glare at night.
QImage themedPicture(const QImage& picture, Theme theme);

/// `picture` for the theme in force, fitted into `size` pixels of the layout with its proportions kept and
/// its corners rounded, at `dpr` device pixels each. Null for a picture that is null.
QPixmap picturePixmap(const QImage& picture, const QSize& size, qreal dpr);

} // namespace benthor::look
