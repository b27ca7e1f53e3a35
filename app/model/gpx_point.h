#pragma once

#include <QDateTime>
#include <QString>

// One track point: coordinates as the attribute text of the file, time as parsed.
struct gpx_point
{
    QString lat;
    QString lon;
    QDateTime time; // null when the point has no time
};
