#pragma once

#include "model/gpx_point.h"

#include <QList>
#include <QString>

struct gpx_track
{
    QString name;
    QList<gpx_point> points; // file order
};
