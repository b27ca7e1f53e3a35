// The selective read, the tag filter and the creator stamp, against the
// installed ExifTool linked beside this binary and the photos of the corpus.
#include "corpus_photo.h"
#include "process_warning_counter.h"

#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>
#include <vn/unwritable_tags.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>

namespace {
const QString photos_dir = QStringLiteral(VN_CORPUS_DIR "/photos");

QByteArray file_hash(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
}
} // namespace

class tst_exiftool_filter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void unwritable_list_is_sorted_by_bytes();
    void filter_matches_exact_keys_data();
    void filter_matches_exact_keys();
    void filtered_corpus_tags_are_writable_data();
    void filtered_corpus_tags_are_writable();
    void unwritable_tag_draws_the_warning();
    void read_selected_tags_data();
    void read_selected_tags();
    void refuses_unsafe_tag_names_data();
    void refuses_unsafe_tag_names();
    void stamp_names_the_application_data();
    void stamp_names_the_application();

private:
    QString copy_photo(const QString &name, const QString &as);

    QTemporaryDir dir_;
};

void tst_exiftool_filter::initTestCase()
{
    process_warning_counter::install();
    QVERIFY(dir_.isValid());
    QVERIFY(QFileInfo(vn::exiftool_worker::program_path()).isExecutable());
    QCoreApplication::setApplicationName(QStringLiteral("Loxmere"));
    QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
}

void tst_exiftool_filter::cleanupTestCase()
{
    vn::exiftool::shutdown();
    QCOMPARE(process_warning_counter::count(), 0);
}

QString tst_exiftool_filter::copy_photo(const QString &name, const QString &as)
{
    return copy_corpus_photo(dir_, name, as);
}

// The filter looks names up by binary search, which needs the generated list
// in strict byte order; an unsorted or duplicated entry would hide names.
void tst_exiftool_filter::unwritable_list_is_sorted_by_bytes()
{
    QVERIFY(vn::unwritable_tags_count > 1000);
    for (int i = 0; i < vn::unwritable_tags_count; ++i) {
        const vn::tag_name &tag = vn::unwritable_tags[i];
        QCOMPARE(int(std::strlen(tag.text)), tag.length);
        if (i == 0)
            continue;
        const QByteArray previous(vn::unwritable_tags[i - 1].text);
        QVERIFY2(previous < QByteArray(tag.text), tag.text);
    }
}

void tst_exiftool_filter::filter_matches_exact_keys_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<bool>("keep_file_tags");
    QTest::addColumn<bool>("kept");

    QTest::addRow("Make") << "Make" << false << true;
    QTest::addRow("FileSize") << "FileSize" << false << false;
    QTest::addRow("MIMEType") << "MIMEType" << true << false;
    // the first and the last name of the list: an off-by-one search misses them
    QTest::addRow("first of the list") << "A100DataOffset" << false << false;
    QTest::addRow("last of the list")
        << QString::fromLatin1(vn::unwritable_tags[vn::unwritable_tags_count - 1].text) << false
        << false;
    QTest::addRow("prefix of a listed name") << "FileSiz" << false << true;
    QTest::addRow("listed name plus a letter") << "FileSizeX" << false << true;
    QTest::addRow("other case") << "filesize" << false << true;
    QTest::addRow("group prefix") << "File:FileSize" << false << true;
    QTest::addRow("look tag") << "LookName" << true << false;
    QTest::addRow("last look tag") << "OverrideLookVignette" << true << false;
    QTest::addRow("look tag with group") << "XMP-crs:LookName" << true << true;
    QTest::addRow("FileName dropped") << "FileName" << false << false;
    QTest::addRow("FileName kept") << "FileName" << true << true;
    QTest::addRow("Directory kept") << "Directory" << true << true;
    QTest::addRow("Compression always") << "Compression" << true << false;
    QTest::addRow("BitsPerSample always") << "BitsPerSample" << true << false;
    QTest::addRow("PhotoshopThumbnail always") << "PhotoshopThumbnail" << true << false;
    QTest::addRow("ThumbnailOffset always") << "ThumbnailOffset" << false << false;
    QTest::addRow("non-ASCII key") << QStringLiteral("Größe") << false << true;
}

void tst_exiftool_filter::filter_matches_exact_keys()
{
    QFETCH(QString, key);
    QFETCH(bool, keep_file_tags);
    QFETCH(bool, kept);

    exif_tag_map tags;
    tags.insert(QStringLiteral("Copyright"), QStringLiteral("(c) 2008"));
    tags.insert(key, QStringLiteral("value of ") + key);
    const exif_tag_map filtered = vn::exiftool::filter_tags(tags, keep_file_tags);
    QCOMPARE(filtered.contains(key), kept);
    if (kept)
        QCOMPARE(filtered.value(key), QStringLiteral("value of ") + key);
    QCOMPARE(filtered.value(QStringLiteral("Copyright")), QStringLiteral("(c) 2008"));
    QCOMPARE(filtered.size(), kept ? tags.size() : tags.size() - 1);
}

void tst_exiftool_filter::filtered_corpus_tags_are_writable_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("expect_kept");

    const QStringList camera{"Make", "Model", "DateTimeOriginal"};
    QTest::addRow("Nikon with GPS") << "DSCN0010.jpg" << camera + QStringList{"GPSLatitude"};
    QTest::addRow("FLIR") << "FLIR iPhone device.jpg" << QStringList{"Make", "DateTimeOriginal"};
    QTest::addRow("two IPTC records") << "Issue 122.jpg" << camera;
    QTest::addRow("HEIC") << "IMG_5195.HEIC" << camera + QStringList{"GPSLatitude"};
    QTest::addRow("NEF") << "Issue 247-1.nef" << camera;
    QTest::addRow("TIFF") << "Crémieux11.tiff" << QStringList{"Artist", "Software"};
    QTest::addRow("PNG") << "sampleWithExifData.png" << QStringList{"Copyright", "Software"};
    QTest::addRow("MOV") << "with-gps.mov" << QStringList{"Make", "Model"};
}

// What the filter keeps must be writable: written with the bridge's argument
// lines to another photo, ExifTool calls none of it "not writable". ExifTool
// runs here through an argument file so that its standard error can be read
// in full; the bridge itself only logs it as debug lines.
void tst_exiftool_filter::filtered_corpus_tags_are_writable()
{
    QFETCH(QString, source);
    QFETCH(QStringList, expect_kept);

    const exif_tag_map tags =
        vn::exiftool::read_tags(photos_dir + QLatin1Char('/') + source, false);
    QVERIFY(tags.contains(QStringLiteral("FileSize")));
    QVERIFY(tags.contains(QStringLiteral("MIMEType")));
    QVERIFY(tags.contains(QStringLiteral("ExifToolVersion")));

    const exif_tag_map kept = vn::exiftool::filter_tags(tags, false);
    for (const QString &tag : expect_kept)
        QVERIFY2(kept.contains(tag), qUtf8Printable(tag));
    for (const char *tag : {"FileSize", "MIMEType", "ExifToolVersion", "FileName", "Directory"})
        QVERIFY2(!kept.contains(QLatin1String(tag)), tag);
    // What stays keeps its value.
    QVERIFY(kept.size() < tags.size());
    for (auto it = kept.cbegin(); it != kept.cend(); ++it)
        QCOMPARE(tags.value(it.key()), it.value());

    const QString target = copy_photo(QStringLiteral("Canon_40D.jpg"), QStringLiteral("t.jpg"));
    QVERIFY(!target.isEmpty());
    QByteArray arguments = target.toUtf8() + "\n-overwrite_original_in_place\n-m\n";
    for (auto it = kept.cbegin(); it != kept.cend(); ++it)
        arguments += QStringLiteral("-%1=%2\n").arg(it.key(), it.value()).toUtf8();
    QFile argument_file(dir_.filePath(QStringLiteral("arguments.txt")));
    QVERIFY(argument_file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    argument_file.write(arguments);
    argument_file.close();

    QProcess process;
    process.start(vn::exiftool_worker::program_path(),
                  {QStringLiteral("-charset"), QStringLiteral("filename=utf8"),
                   QStringLiteral("-@"), argument_file.fileName()});
    QVERIFY(process.waitForFinished(vn::exiftool::time_limit_ms));
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    const QString output = QString::fromUtf8(process.readAllStandardOutput());
    QVERIFY2(!errors.contains(QLatin1String("not writable")), qUtf8Printable(errors));
    QVERIFY2(output.contains(QLatin1String("1 image files updated")), qUtf8Printable(output));
}

// The check above looks for this complaint; here is proof that ExifTool gives
// it for a tag that the filter removes.
void tst_exiftool_filter::unwritable_tag_draws_the_warning()
{
    const QString target = copy_photo(QStringLiteral("Canon_40D.jpg"), QStringLiteral("u.jpg"));
    QVERIFY(!target.isEmpty());
    QProcess process;
    process.start(vn::exiftool_worker::program_path(),
                  {QStringLiteral("-overwrite_original_in_place"), QStringLiteral("-m"),
                   QStringLiteral("-FileSize=5"), QStringLiteral("-Make=Canon"), target});
    QVERIFY(process.waitForFinished(vn::exiftool::time_limit_ms));
    QVERIFY(QString::fromUtf8(process.readAllStandardError())
                .contains(QLatin1String("FileSize is not writable")));
}

void tst_exiftool_filter::read_selected_tags_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<QStringList>("tags");
    QTest::addColumn<QStringList>("expected");

    QTest::addRow("make and model") << "DSCN0010.jpg" << QStringList{"Make", "Model"}
                                    << QStringList{"Make=NIKON", "Model=COOLPIX P6000"};
    // ExifTool names the value by the tag as asked, "#" included
    QTest::addRow("number form") << "Kodak_CX7530.jpg" << QStringList{"GPSLatitude#"}
                                 << QStringList{"GPSLatitude#=-0.3713"};
    QTest::addRow("group prefix") << "Nikon D1X.jpg" << QStringList{"IPTC:TimeCreated"}
                                  << QStringList{"TimeCreated=18:04:34-05:00"};
    QTest::addRow("wildcard") << "Apple iPhone 4.jpg" << QStringList{"GPSLat*"}
                              << QStringList{"GPSLatitude=41 deg 51' 10.80\" N",
                                             "GPSLatitudeRef=North"};
    QTest::addRow("dash inside the name")
        << "DSCN0010.jpg" << QStringList{"AF-AssistIlluminator", "Make"}
        << QStringList{"Make=NIKON"};
    QTest::addRow("absent tag") << "Canon_40D.jpg" << QStringList{"GPSLatitude"} << QStringList{};
    QTest::addRow("umlaut file name") << "Grünwald Straße 1.jpg" << QStringList{"FileName"}
                                      << QStringList{"FileName=Grünwald Straße 1.jpg"};
}

void tst_exiftool_filter::read_selected_tags()
{
    QFETCH(QString, photo);
    QFETCH(QStringList, tags);
    QFETCH(QStringList, expected);

    const exif_tag_map read = vn::exiftool::read_tags(photos_dir + QLatin1Char('/') + photo, tags);
    QStringList lines;
    for (auto it = read.cbegin(); it != read.cend(); ++it)
        lines << it.key() + QLatin1Char('=') + it.value();
    QCOMPARE(lines, expected);
}

void tst_exiftool_filter::refuses_unsafe_tag_names_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("reason");

    const QString option = QStringLiteral("takes for an option");
    const QString plain = QStringLiteral("isn't a plain tag name");
    const QString line = QStringLiteral("line break or NUL");
    QTest::addRow("execute") << "execute" << option;
    QTest::addRow("numbered execute") << "execute12" << option;
    QTest::addRow("execute in capitals") << "EXECUTE" << option;
    QTest::addRow("stay_open") << "Stay_Open" << option;
    QTest::addRow("output file") << "o" << option;
    QTest::addRow("text out") << "w" << option;
    QTest::addRow("source file") << "srcFile" << option;
    QTest::addRow("tags from file") << "tagsFromFile" << option;
    QTest::addRow("delete original") << "delete_original" << option;
    QTest::addRow("group option") << "G1" << option;
    QTest::addRow("option with hash") << "n#" << option;
    QTest::addRow("option before a colon") << "progress:Title" << option;
    QTest::addRow("config") << "config" << option;
    QTest::addRow("leading dash") << "-Make" << plain;
    QTest::addRow("exclude form") << "-all" << plain;
    QTest::addRow("argument file") << "@" << plain;
    QTest::addRow("assignment") << "Make=Evil" << plain;
    QTest::addRow("copy from tag") << "Make<Model" << plain;
    QTest::addRow("blank") << "Make Model" << plain;
    QTest::addRow("empty") << "" << plain;
    QTest::addRow("dash after the group") << "EXIF:-Make" << plain;
    QTest::addRow("wildcard in the group") << "XM*:Title" << plain;
    QTest::addRow("non-ASCII") << QStringLiteral("Größe") << plain;
    QTest::addRow("line feed") << "Make\n-execute" << line;
    QTest::addRow("carriage return") << "Make\r" << line;
    QTest::addRow("NUL") << QStringLiteral("Make") + QChar(0) << line;
}

// A refused name stops the whole read before anything is sent: ExifTool isn't
// even started for it. "Make" alone reads "NIKON" from this photo.
void tst_exiftool_filter::refuses_unsafe_tag_names()
{
    QFETCH(QString, tag);
    QFETCH(QString, reason);

    vn::exiftool::shutdown();
    const QString photo = photos_dir + QStringLiteral("/DSCN0010.jpg");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Refusing tag name .*") +
                                                          QRegularExpression::escape(reason)));
    QCOMPARE(vn::exiftool::read_tags(photo, QStringList{"Make", tag}), exif_tag_map());
    QVERIFY(!vn::exiftool::is_started());
}

void tst_exiftool_filter::stamp_names_the_application_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<bool>("written");

    QTest::addRow("JPEG") << "DSCN0010.jpg" << true;
    QTest::addRow("umlaut name") << "Grünwald Straße 1.jpg" << true;
    QTest::addRow("TIFF") << "Crémieux11.tiff" << true;
    QTest::addRow("PNG") << "sampleWithExifData.png" << true;
    QTest::addRow("HEIC") << "IMG_5195.HEIC" << true;
    QTest::addRow("MOV") << "with-gps.mov" << true;
    // ExifTool refuses to write this raw file ("Not a valid NEF"); the file
    // must stay as it was.
    QTest::addRow("NEF that ExifTool won't write") << "Issue 247-1.nef" << false;
}

void tst_exiftool_filter::stamp_names_the_application()
{
    QFETCH(QString, photo);
    QFETCH(bool, written);

    const QString copy = copy_photo(photo, QStringLiteral("stamped ") + photo);
    QVERIFY(!copy.isEmpty());
    const QByteArray before = file_hash(copy);
    const QStringList names{"Software", "CreatorTool"};
    const exif_tag_map old_tags = vn::exiftool::read_tags(copy, names);

    if (!written)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Failed to execute command on"));
    QCOMPARE(vn::exiftool::write_tags(copy), written);

    const exif_tag_map tags = vn::exiftool::read_tags(copy, names);
    if (written) {
        QCOMPARE(tags.value(QStringLiteral("Software")), QStringLiteral("Loxmere - Orvane"));
        QCOMPARE(tags.value(QStringLiteral("CreatorTool")), QStringLiteral("Loxmere - Orvane"));
        QVERIFY(file_hash(copy) != before);
    } else {
        QCOMPARE(tags, old_tags);
        QCOMPARE(file_hash(copy), before);
    }
}

QTEST_GUILESS_MAIN(tst_exiftool_filter)
#include "tst_exiftool_filter.moc"
