// Reads and writes through the installed ExifTool, linked beside this binary.
// Only the real tool proves the marker, the output format and the writes.
#include "corpus_photo.h"
#include "process_warning_counter.h"

#include <vn/exif_response.h>
#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#ifdef Q_OS_LINUX
#include <csignal>
#include <cstdio>

#include <signal.h>
#endif

namespace {
const QString photos_dir = QStringLiteral(VN_CORPUS_DIR "/photos");

// A small JPEG with a gradient, so the encoder has something to store.
bool make_jpeg(const QString &path, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, (x * y) % 256));
    return image.save(path, "JPEG", 90);
}
} // namespace

class tst_exiftool : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    void reads_made_jpegs_data();
    void reads_made_jpegs();
    void reads_corpus_photos_data();
    void reads_corpus_photos();
    void group_read_keeps_duplicates();
    void writes_and_reads_back_data();
    void writes_and_reads_back();
    void reports_failed_write();
    void refuses_unsafe_input_data();
    void refuses_unsafe_input();
    void stops_when_the_program_dies();

private:
    QString copy_photo(const QString &name, const QString &as);

    QTemporaryDir dir_;
};

void tst_exiftool::initTestCase()
{
    process_warning_counter::install();
    QVERIFY(dir_.isValid());
    QVERIFY(QFileInfo(vn::exiftool_worker::program_path()).isExecutable());
}

void tst_exiftool::cleanup()
{
    vn::exiftool::shutdown();
}

void tst_exiftool::cleanupTestCase()
{
    QCOMPARE(process_warning_counter::count(), 0);
}

QString tst_exiftool::copy_photo(const QString &name, const QString &as)
{
    return copy_corpus_photo(dir_, name, as);
}

void tst_exiftool::reads_made_jpegs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addRow("plain") << QStringLiteral("plain.jpg") << 64 << 48;
    QTest::addRow("blanks") << QStringLiteral("with some blanks.jpg") << 33 << 17;
    QTest::addRow("umlauts") << QStringLiteral("Grüße aus Köln.jpg") << 20 << 30;
    QTest::addRow("quotes") << QStringLiteral("it's \"quoted\".jpg") << 10 << 11;
    QTest::addRow("shell characters") << QStringLiteral("$HOME;ls *.jpg") << 12 << 13;
    QTest::addRow("leading dash") << QStringLiteral("-delete_original!") << 14 << 15;
    QTest::addRow("option look-alike") << QStringLiteral("-all.jpg") << 16 << 9;
}

void tst_exiftool::reads_made_jpegs()
{
    QFETCH(QString, name);
    QFETCH(int, width);
    QFETCH(int, height);
    const QString path = dir_.filePath(name);
    QVERIFY(make_jpeg(path, width, height));

    const exif_tag_map plain = vn::exiftool::read_tags(path, false);
    QCOMPARE(plain.value(QStringLiteral("FileName")), name);
    QCOMPARE(plain.value(QStringLiteral("ImageWidth")), QString::number(width));
    QCOMPARE(plain.value(QStringLiteral("ImageHeight")), QString::number(height));
    QCOMPARE(plain.value(QStringLiteral("MIMEType")), QStringLiteral("image/jpeg"));

    const exif_tag_map grouped = vn::exiftool::read_tags(path, true);
    QCOMPARE(grouped.value(QStringLiteral("System:FileName")), name);
    QCOMPARE(grouped.value(QStringLiteral("File:ImageWidth")), QString::number(width));
    QVERIFY(!grouped.contains(QStringLiteral("FileName")));
}

void tst_exiftool::reads_corpus_photos_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("with_groups");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const QString grunwald = QStringLiteral("Grünwald Straße 1.jpg");
    QTest::addRow("umlaut name comes back") << grunwald << false << "FileName" << grunwald;
    QTest::addRow("umlaut name, groups") << grunwald << true << "System:FileName" << grunwald;
    QTest::addRow("make") << QStringLiteral("DSCN0010.jpg") << false << "Make"
                          << "NIKON";
    QTest::addRow("printed position") << QStringLiteral("DSCN0010.jpg") << false << "GPSPosition"
                                      << QStringLiteral("43 deg 28' 2.81\" N, 11 deg 53' 6.46\" E");
    QTest::addRow("group key of a GPS tag") << grunwald << true << "GPS:GPSLatitudeRef"
                                            << "North";
    QTest::addRow("blanks in name") << QStringLiteral("Apple iPhone 4.jpg") << false << "Model"
                                    << "iPhone 4";
    QTest::addRow("upper case suffix") << QStringLiteral("UPPER.JPG") << false << "FileName"
                                       << "UPPER.JPG";
}

void tst_exiftool::reads_corpus_photos()
{
    QFETCH(QString, name);
    QFETCH(bool, with_groups);
    QFETCH(QString, key);
    QFETCH(QString, value);
    // Reading doesn't write, so the corpus file itself is read.
    const exif_tag_map tags =
        vn::exiftool::read_tags(photos_dir + QLatin1Char('/') + name, with_groups);
    QCOMPARE(tags.value(key), value);
}

void tst_exiftool::group_read_keeps_duplicates()
{
    // The main image and the thumbnail both carry XResolution; without the
    // duplicates option ExifTool would print only one of them.
    const QString path = photos_dir + QStringLiteral("/DSCN0010.jpg");
    const exif_tag_map tags = vn::exiftool::read_tags(path, true);
    QCOMPARE(tags.value(QStringLiteral("IFD0:XResolution")), QStringLiteral("300"));
    QCOMPARE(tags.value(QStringLiteral("IFD1:XResolution")), QStringLiteral("72"));
}

void tst_exiftool::writes_and_reads_back_data()
{
    QTest::addColumn<QString>("photo");
    QTest::addColumn<exif_tag_map>("tags");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    exif_tag_map position;
    position.insert(QStringLiteral("GPSLatitude#"), QStringLiteral("12.5"));
    position.insert(QStringLiteral("GPSLatitudeRef"), QStringLiteral("S"));
    QTest::addRow("numeric latitude") << QStringLiteral("Canon_40D.jpg") << position
                                      << "GPSLatitude" << QStringLiteral("12 deg 30' 0.00\" S");
    exif_tag_map comment;
    comment.insert(QStringLiteral("XMP:Title"), QStringLiteral("Grünwald, 5 = fünf"));
    QTest::addRow("UTF-8 value into a group")
        << QStringLiteral("Grünwald Straße 1.jpg") << comment << "Title"
        << QStringLiteral("Grünwald, 5"); // cut at "="
    exif_tag_map clear;
    clear.insert(QStringLiteral("GPS:all"), QString());
    QTest::addRow("group deleted")
        << QStringLiteral("DSCN0010.jpg") << clear << "GPSLatitude" << QString();
}

void tst_exiftool::writes_and_reads_back()
{
    QFETCH(QString, photo);
    QFETCH(exif_tag_map, tags);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const QString copy = copy_photo(photo, QStringLiteral("written ") + photo);
    QVERIFY(!copy.isEmpty());
    QVERIFY(vn::exiftool::write_tags(copy, tags));
    QCOMPARE(vn::exiftool::read_tags(copy, false).value(key), value);
    // Written in place: no backup copy beside the file.
    QVERIFY(!QFileInfo::exists(copy + QStringLiteral("_original")));
}

void tst_exiftool::reports_failed_write()
{
    const QString path = dir_.filePath(QStringLiteral("not a photo.jpg"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("plain text, no JPEG at all\n");
    file.close();
    exif_tag_map tags;
    tags.insert(QStringLiteral("Comment"), QStringLiteral("x"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("Failed to execute command on '.*not a photo\\.jpg'.*"
                                            "files weren't updated due to errors",
                                            QRegularExpression::DotMatchesEverythingOption));
    QVERIFY(!vn::exiftool::write_tags(path, tags));
}

void tst_exiftool::refuses_unsafe_input_data()
{
    QTest::addColumn<QString>("file"); // relative to the temporary folder
    QTest::addColumn<bool>("absolute");
    QTest::addColumn<QString>("key"); // empty: a read
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("reason");
    const QString name = QStringLiteral("victim.jpg");
    // Each of these would reach ExifTool as a command that deletes all
    // metadata of the victim, if it weren't refused.
    QTest::addRow("line feed in a read path")
        << name + "\n-all=" << true << QString() << QString() << "line break";
    QTest::addRow("carriage return in a read path")
        << name + "\r\n-all=" << true << QString() << QString() << "line break";
    QTest::addRow("line feed in a value") << name << true << "Comment"
                                          << "x\n-all="
                                          << "line break";
    QTest::addRow("line feed in a key") << name << true << "Comment=x\n-all"
                                        << ""
                                        << "line break";
    QTest::addRow("carriage return in a value") << name << true << "Comment"
                                                << "x\r-all="
                                                << "line break";
    QTest::addRow("NUL in a value") << name << true << "Comment" << QString("x") + QChar(0) + "y"
                                    << "line break";
    QTest::addRow("relative path read")
        << "-delete_original!" << false << QString() << QString() << "isn't absolute";
    QTest::addRow("relative path write") << name << false << "Comment"
                                         << "x"
                                         << "isn't absolute";
    QTest::addRow("folder read") << "." << true << QString() << QString()
                                 << "isn't an existing file";
    QTest::addRow("folder write") << "." << true << "Comment"
                                  << "x"
                                  << "isn't an existing file";
    QTest::addRow("missing file") << "gone.jpg" << true << QString() << QString()
                                  << "isn't an existing file";
}

void tst_exiftool::refuses_unsafe_input()
{
    QFETCH(QString, file);
    QFETCH(bool, absolute);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, reason);
    const QString victim = copy_photo(QStringLiteral("DSCN0010.jpg"), QStringLiteral("victim.jpg"));
    QVERIFY(!victim.isEmpty());
    // A file whose name holds the line break exists too, so nothing but the
    // check on the name itself stops the read.
    if (file.contains(QLatin1Char('\n')) && absolute)
        QVERIFY(QFile::copy(victim, dir_.filePath(file)));

    const QString path = absolute ? dir_.filePath(file) : file;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Refusing .*" + reason));
    if (key.isEmpty()) {
        QCOMPARE(vn::exiftool::read_tags(path, false), exif_tag_map());
    } else {
        exif_tag_map tags;
        tags.insert(key, value);
        QVERIFY(!vn::exiftool::write_tags(path, tags));
    }
    // Nothing went out, so nothing started.
    QVERIFY(!vn::exiftool::is_started());
    QCOMPARE(vn::exiftool::read_tags(victim, false).value(QStringLiteral("GPSLatitude")),
             QStringLiteral("43 deg 28' 2.81\" N"));
    QVERIFY(!QFileInfo::exists(victim + QStringLiteral("_original")));
    if (file.contains(QLatin1Char('\n')))
        QFile::remove(dir_.filePath(file));
}

#ifdef Q_OS_LINUX
namespace {
// Process ids of this process's children, whichever thread started them.
QList<qint64> child_processes()
{
    QList<qint64> result;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task) + QStringLiteral("/children"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray &pid : file.readAll().split(' '))
            if (pid.trimmed().toLongLong() > 0)
                result << pid.trimmed().toLongLong();
    }
    return result;
}

// A zombie has ended and only waits for its parent to collect it.
bool is_running(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    const int name_end = stat.lastIndexOf(')');
    const char state = name_end >= 0 && name_end + 2 < stat.size() ? stat.at(name_end + 2) : '?';
    return state != 'Z' && state != 'X';
}

// Starts ExifTool, prints its process id and dies the way a crash would,
// without a chance to stop it.
int die_with_exiftool(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    vn::exiftool_worker_init();
    const QList<qint64> children = child_processes();
    if (children.size() != 1)
        return 1;
    std::printf("%lld\n", children.first());
    std::fflush(stdout);
    raise(SIGKILL);
    return 2;
}
} // namespace
#endif

void tst_exiftool::stops_when_the_program_dies()
{
#ifndef Q_OS_LINUX
    QSKIP("The system stops ExifTool with the program on Linux only.");
#else
    QProcess child;
    child.setProgram(QCoreApplication::applicationFilePath());
    child.setArguments({QStringLiteral("--die-with-exiftool")});
    child.start();
    QVERIFY(child.waitForFinished(20000));
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    const qint64 pid = child.readAllStandardOutput().trimmed().toLongLong();
    QVERIFY(pid > 0);
    // Left running, ExifTool would read its closed pipe every 10 ms for ever.
    struct reaper
    {
        qint64 pid;
        ~reaper()
        {
            if (is_running(pid))
                kill(pid_t(pid), SIGKILL);
        }
    } guard{pid};
    QTRY_VERIFY_WITH_TIMEOUT(!is_running(pid), 10000);
#endif
}

int main(int argc, char **argv)
{
#ifdef Q_OS_LINUX
    if (argc > 1 && qstrcmp(argv[1], "--die-with-exiftool") == 0)
        return die_with_exiftool(argc, argv);
#endif
    QCoreApplication app(argc, argv);
    tst_exiftool test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_exiftool.moc"
