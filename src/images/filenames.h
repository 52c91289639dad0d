#pragma once

#include <QString>

namespace Vantry::Images {

// The highest number a free file name gets ("_999").
inline constexpr int maxFileNameNumber = 999;

// fileName numbered with counter, three digits before the last dot ("photo.jpg", 2 gives
// "photo_002.jpg"; "photo" gives "photo_002"). Counters above 999 keep their last three
// digits, as the image folder always has.
QString incrementFileName(const QString &fileName, int counter);

} // namespace Vantry::Images
