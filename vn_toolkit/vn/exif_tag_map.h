#pragma once

#include <QMap>
#include <QString>

// Tag name (with a "Group:" prefix where asked for) to value text, as ExifTool
// prints them. Ordered by QString's operator<, so map order is the order in
// which tags are written.
using exif_tag_map = QMap<QString, QString>;
