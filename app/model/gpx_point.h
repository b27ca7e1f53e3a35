#pragma once

#include <QDateTime>
#include <QString>

// One track point: coordinates and elevation as the text of the file, without
// blanks around it, time as parsed.
struct gpx_point
{
    QString lat;
    QString lon;
    QDateTime time; // null when the point has no time
    // Metres; empty when the point has none or it is no number. Initialised,
    // so that brace lists of the first three fields stay complete.
    QString ele{};
};
