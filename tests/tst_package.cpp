#include "supported_extensions.h"

#include <QtTest>

#include <QImage>
#include <QMimeDatabase>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <signal.h>

// The install and the Debian package, made from this build tree by the real
// cmake, cpack, dpkg-deb and lintian, and the unpacked program run offscreen
// on corpus photos through the real ExifTool. About 20 s, most of it cpack
// and lintian.
class tst_package : public QObject
{
    Q_OBJECT

private slots:
    void install();
    void package();
    void unpacked_program();

private:
    struct result
    {
        int code = -1;
        QByteArray out;
        QByteArray err;
    };
    static result run(const QString &program, const QStringList &arguments,
                      const QString &folder = QString());

    QTemporaryDir dir_;
    QString deb_;
};

tst_package::result tst_package::run(const QString &program, const QStringList &arguments,
                                     const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    result r;
    if (process.waitForFinished(300000) && process.exitStatus() == QProcess::NormalExit)
        r.code = process.exitCode();
    r.out = process.readAllStandardOutput();
    r.err = process.readAllStandardError();
    return r;
}

void tst_package::install()
{
    const QString prefix = dir_.filePath("prefix");
    QCOMPARE(run(VN_CMAKE, {"--install", VN_BUILD_DIR, "--prefix", prefix}).code, 0);
    // The program looks for ExifTool beside itself only.
    QCOMPARE(QFileInfo(prefix + "/bin/exiftool").canonicalFilePath(),
             QFileInfo(QCoreApplication::applicationDirPath() + "/exiftool").canonicalFilePath());
    for (const int n : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString icon = prefix + QString("/share/icons/hicolor/%1x%1/apps/loxmere.png").arg(n);
        QCOMPARE(QImage(icon).size(), QSize(n, n));
    }

    const QString entry = prefix + "/share/applications/" LOXMERE_APP_ID ".desktop";
    const result desktop = run("desktop-file-validate", {entry});
    QVERIFY2(desktop.code == 0 && desktop.out.isEmpty(), desktop.out);
    const result meta =
        run("appstreamcli", {"validate", "--no-net", "--no-color",
                             prefix + "/share/metainfo/" LOXMERE_APP_ID ".metainfo.xml"});
    QVERIFY2(meta.code == 0, meta.out);

    // "Open with" offers the program for each image and video type whose files
    // it loads, and for no other.
    QFile file(entry);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    const QRegularExpressionMatch line =
        QRegularExpression("^MimeType=(.*)$", QRegularExpression::MultilineOption).match(text);
    QStringList listed = line.captured(1).split(';', Qt::SkipEmptyParts);
    QStringList expected;
    for (const QString &suffix : supported_extensions) {
        for (const QMimeType &type : QMimeDatabase().mimeTypesForFileName("x." + suffix)) {
            if (type.name().startsWith("image/") || type.name().startsWith("video/"))
                expected << type.name();
        }
    }
    expected.removeDuplicates();
    expected.sort();
    listed.sort();
    QCOMPARE(listed, expected);
}

void tst_package::package()
{
    const QString out = dir_.filePath("deb");
    const result cpack = run(VN_CPACK, {"-G", "DEB", "-B", out}, VN_BUILD_DIR);
    QVERIFY2(cpack.code == 0, cpack.out + cpack.err);
    const QString arch = run("dpkg", {"--print-architecture"}).out.trimmed();
    deb_ = out + "/loxmere_" LOXMERE_VERSION "_" + arch + ".deb";
    QVERIFY2(QFileInfo::exists(deb_), cpack.out);

    // The programs it runs, and the libraries that dpkg-shlibdeps found.
    const QByteArray depends = run("dpkg-deb", {"-f", deb_, "Depends"}).out;
    for (const char *name : {"libimage-exiftool-perl, ", "gpsbabel, ", "libqt5widgets5 "})
        QVERIFY2(depends.contains(name), depends);
    const result lint = run("lintian", {deb_});
    QVERIFY2(lint.code == 0 && !lint.out.contains("E: "), lint.out + lint.err);
}

void tst_package::unpacked_program()
{
    QVERIFY(!deb_.isEmpty());
    const QString root = dir_.filePath("root");
    QCOMPARE(run("dpkg-deb", {"-x", deb_, root}).code, 0);
    const QString program = root + "/usr/bin/loxmere";

    const result version = run(program, {"--version"});
    QCOMPARE(version.code, 0);
    QVERIFY2(version.out.split('\n').contains("Loxmere " LOXMERE_VERSION), version.out);
    const result unknown = run(program, {"--bogus"});
    QCOMPARE(unknown.code, 2);
    QVERIFY2(unknown.err.startsWith("Unknown option 'bogus'.") && unknown.err.contains("Usage:"),
             unknown.err);

    // Where Debian puts ExifTool: beside the program, in /usr/bin.
    QVERIFY(QFile::link(QCoreApplication::applicationDirPath() + "/exiftool",
                        root + "/usr/bin/exiftool"));
    const QString work = dir_.filePath("work");
    QVERIFY(QDir().mkpath(work + "/no photos"));
    const QString photo = VN_CORPUS_DIR "/photos/DSCN0010.jpg";
    QVERIFY(QFile::copy(photo, work + "/DSCN0010.jpg"));
    QVERIFY(QFile::copy(photo, work + "/line\nfeed.jpg"));

    // setsid puts the program and its ExifTool in a process group of their
    // own, which ends them both; quitting cleanly would need a window.
    QProcess loxmere;
    loxmere.setWorkingDirectory(work);
    loxmere.start("setsid", {program, "DSCN0010.jpg", "line\nfeed.jpg", "gone.jpg", "no photos"});
    QVERIFY(loxmere.waitForStarted());
    const auto end = qScopeGuard([&] {
        ::kill(-pid_t(loxmere.processId()), SIGTERM);
        loxmere.waitForFinished(10000);
    });
    QByteArray out;
    QTRY_VERIFY_WITH_TIMEOUT((out += loxmere.readAllStandardOutput()).contains("the table holds"),
                             60000);
    // Missing file and empty folder left out; the line feed never reaches
    // ExifTool, whose read of the photo gives the position.
    QVERIFY2(out.contains("Took 2 of 2 file(s); the table holds 2, 1 of them with a position."),
             out);
    QVERIFY2(out.contains("Not reading \"" + work.toUtf8() + "/line\nfeed.jpg\""), out);
}

QTEST_GUILESS_MAIN(tst_package)
#include "tst_package.moc"
