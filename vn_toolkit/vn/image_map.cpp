#include <vn/image_map.h>

#include <QMap>
#include <QMutex>
#include <QMutexLocker>

namespace vn {

namespace {
QMutex &map_mutex()
{
    static QMutex mutex;
    return mutex;
}

QMap<QString, QString> &paths()
{
    static QMap<QString, QString> map;
    return map;
}
} // namespace

void image_map::set(const QString &name, const QString &path)
{
    QMutexLocker lock(&map_mutex());
    paths().insert(name, path);
}

void image_map::remove(const QString &name)
{
    QMutexLocker lock(&map_mutex());
    paths().remove(name);
}

QString image_map::path(const QString &name, const QString &default_path)
{
    QMutexLocker lock(&map_mutex());
    return paths().value(name, default_path);
}

} // namespace vn
