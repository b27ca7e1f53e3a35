#pragma once

#include "model/camera_clock.h"

#include <QHash>
#include <QString>

// The camera clocks kept in the default QSettings, as the array
// "camera_clocks" of entries "camera", "zone" and "correction_s", one per
// camera whose clock isn't the default. Main thread only.
class camera_clock_settings
{
public:
    camera_clock_settings() = delete;

    // Every stored clock, by camera name. An unknown zone or a correction
    // beyond ten years is dropped from its entry with a warning; the rest of
    // the entry stays.
    static QHash<QString, camera_clock> load();
    // Stores one camera's clock at once; the default clock removes its entry.
    static void save(const QString &camera, const camera_clock &clock);
};
