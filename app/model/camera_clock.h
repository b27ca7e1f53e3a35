#pragma once

#include <QByteArray>
#include <QtGlobal>

// How one camera's clock is read: the zone its photos are in when they don't
// record one themselves, and the seconds added to every photo of the camera.
// The default reads photos in this computer's zone and adds nothing.
struct camera_clock
{
    // An IANA id ("Asia/Tokyo"), a fixed offset ("UTC+05:30"), or empty for
    // this computer's zone.
    QByteArray zone;
    qint64 correction_s = 0;

    bool is_default() const { return zone.isEmpty() && correction_s == 0; }
};

inline bool operator==(const camera_clock &a, const camera_clock &b)
{
    return a.zone == b.zone && a.correction_s == b.correction_s;
}

inline bool operator!=(const camera_clock &a, const camera_clock &b)
{
    return !(a == b);
}
