#include "supported_extensions.h"

#include <QFileInfo>

const std::set<QString> supported_extensions = {
    "360",  "3g2",  "3gp",  "3gp2", "3gpp", "aax",  "ai",  "ait", "apng", "arq",  "arw",  "avif",
    "ciff", "cr2",  "cr3",  "crm",  "crw",  "cs1",  "dcp", "dng", "dr4",  "dvb",  "eps",  "eps2",
    "eps3", "epsf", "erf",  "exif", "exv",  "f4a",  "f4b", "f4p", "f4v",  "fff",  "flif", "gif",
    "gpr",  "hdp",  "heic", "heif", "hif",  "icc",  "icm", "iiq", "ind",  "indd", "indt", "insp",
    "j2k",  "jng",  "jp2",  "jpe",  "jpeg", "jpf",  "jpg", "jpm", "jps",  "jpx",  "jxl",  "jxr",
    "lrv",  "m4a",  "m4b",  "m4p",  "m4v",  "mef",  "mie", "mng", "mos",  "mov",  "mp4",  "mpo",
    "mqv",  "mrw",  "nef",  "nrw",  "orf",  "ori",  "pbm", "pdf", "pef",  "pgm",  "png",  "ppm",
    "ps",   "ps2",  "ps3",  "psb",  "psd",  "psdt", "qt",  "raf", "raw",  "rw2",  "rwl",  "sr2",
    "srw",  "thm",  "tif",  "tiff", "vrd",  "wdp",  "x3f", "xmp",
};

bool has_supported_extension(const QString &path)
{
    return supported_extensions.count(QFileInfo(path).suffix().toLower()) != 0;
}

QString supported_files_filter(const QString &label)
{
    QString patterns;
    for (const QString &suffix : supported_extensions)
        patterns += QStringLiteral("*.%1 ").arg(suffix);
    patterns.chop(1);
    return label + QLatin1Char('(') + patterns + QLatin1Char(')');
}
