// Writes the desktop entry with its MimeType list: every image and video type
// that the MIME database gives for a suffix that the load accepts, so that a
// file manager's "Open with" offers Loxmere for those files and for no others.
//
//   mime_types_gen entry.desktop.in entry.desktop
//
// "@MIME_TYPES@" in the template becomes "image/avif;image/gif;...;video/x-mng;",
// sorted. The list is the build machine's: for a Debian package built on the
// release it installs on, the database that its file managers read.
#include "supported_extensions.h"

#include <QCoreApplication>
#include <QFile>
#include <QMimeDatabase>
#include <QSaveFile>

#include <cstdio>
#include <set>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: mime_types_gen entry.desktop.in entry.desktop\n");
        return 2;
    }

    std::set<QString> types;
    const QMimeDatabase database;
    for (const QString &suffix : supported_extensions) {
        const QList<QMimeType> found = database.mimeTypesForFileName(QStringLiteral("x.") + suffix);
        for (const QMimeType &type : found) {
            if (type.name().startsWith(QLatin1String("image/")) ||
                type.name().startsWith(QLatin1String("video/")))
                types.insert(type.name());
        }
    }
    QString list;
    for (const QString &type : types)
        list += type + QLatin1Char(';');

    QFile in(args.at(1));
    QSaveFile out(args.at(2));
    if (!in.open(QIODevice::ReadOnly) || !out.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "mime_types_gen: cannot read %s or write %s\n", qPrintable(args.at(1)),
                     qPrintable(args.at(2)));
        return 1;
    }
    out.write(
        QString::fromUtf8(in.readAll()).replace(QLatin1String("@MIME_TYPES@"), list).toUtf8());
    return out.commit() ? 0 : 1;
}
