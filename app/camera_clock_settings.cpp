#include "camera_clock_settings.h"

#include "model/photo_time.h"

#include <QSettings>
#include <QStringList>

namespace {

const QString key_array = QStringLiteral("camera_clocks");
const QString key_camera = QStringLiteral("camera");
const QString key_zone = QStringLiteral("zone");
const QString key_correction = QStringLiteral("correction_s");

QHash<QString, camera_clock> read_all(bool checked)
{
    QSettings settings;
    QHash<QString, camera_clock> clocks;
    const int count = settings.beginReadArray(key_array);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        const QString camera = settings.value(key_camera).toString();
        camera_clock clock;
        clock.zone = settings.value(key_zone).toString().toLatin1();
        bool readable = false;
        clock.correction_s = settings.value(key_correction).toLongLong(&readable);
        if (checked && !photo_time::is_known_zone(clock.zone)) {
            qWarning("%s: Ignoring the stored time zone '%s' of camera \"%s\": unknown here.",
                     Q_FUNC_INFO, clock.zone.constData(), qUtf8Printable(camera));
            clock.zone.clear();
        }
        if (checked && (!readable || qAbs(clock.correction_s) > photo_time::max_correction_s)) {
            qWarning("%s: Ignoring the stored correction '%s' of camera \"%s\".", Q_FUNC_INFO,
                     qUtf8Printable(settings.value(key_correction).toString()),
                     qUtf8Printable(camera));
            clock.correction_s = 0;
        }
        if (!clock.is_default())
            clocks.insert(camera, clock);
    }
    settings.endArray();
    return clocks;
}

} // namespace

QHash<QString, camera_clock> camera_clock_settings::load()
{
    return read_all(true);
}

void camera_clock_settings::save(const QString &camera, const camera_clock &clock)
{
    QHash<QString, camera_clock> clocks = read_all(false);
    if (clock.is_default())
        clocks.remove(camera);
    else
        clocks.insert(camera, clock);
    QSettings settings;
    settings.remove(key_array);
    settings.beginWriteArray(key_array, clocks.size());
    // In name order, so that the file reads the same after each save.
    QStringList cameras = clocks.keys();
    cameras.sort();
    for (int i = 0; i < cameras.size(); ++i) {
        const camera_clock &entry = clocks[cameras.at(i)];
        settings.setArrayIndex(i);
        settings.setValue(key_camera, cameras.at(i));
        settings.setValue(key_zone, QString::fromLatin1(entry.zone));
        settings.setValue(key_correction, entry.correction_s);
    }
    settings.endArray();
}
