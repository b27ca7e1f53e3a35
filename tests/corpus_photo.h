#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

// Tests write only to copies of the corpus photos. Copies `name` from the
// corpus into `dir` as `as`, replacing an earlier copy, and makes it
// writable (the corpus files may be read-only). Empty on failure.
inline QString copy_corpus_photo(const QTemporaryDir &dir, const QString &name, const QString &as)
{
    const QString target = dir.filePath(as);
    QFile::remove(target);
    if (!QFile::copy(QStringLiteral(VN_CORPUS_DIR "/photos/") + name, target))
        return QString();
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner);
    return target;
}
