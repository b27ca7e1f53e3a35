#include <QtTest>

#include <QMimeDatabase>
#include <QProcess>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <signal.h>

// The install and the Debian package, made from this build tree by the real
// cmake, cpack, dpkg-deb and lintian, and the unpacked program run offscreen
// on corpus photos through the real ExifTool. About 10 s on a built tree.
class tst_package : public QObject
{
    Q_OBJECT

private slots:
    void install();
    void package();
    void unpacked_program();

private:
    // Runs a program to its end and keeps its output in out_ and err_; its
    // exit code, or -1 if it didn't end by itself.
    int run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.start(program, arguments);
        const bool ended = process.waitForFinished(300000);
        out_ = process.readAllStandardOutput();
        err_ = process.readAllStandardError();
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QTemporaryDir dir_;
    QString deb_;
    QByteArray out_;
    QByteArray err_;
};

void tst_package::install()
{
    const QString share = dir_.filePath("prefix/share");
    QCOMPARE(run(VN_CMAKE, {"--install", VN_BUILD_DIR, "--prefix", dir_.filePath("prefix")}), 0);
    // The program looks for ExifTool beside itself only.
    QCOMPARE(QFileInfo(dir_.filePath("prefix/bin/exiftool")).canonicalFilePath(),
             QFileInfo(QCoreApplication::applicationDirPath() + "/exiftool").canonicalFilePath());

    const QString entry = share + "/applications/" LOXMERE_APP_ID ".desktop";
    QVERIFY2(run("desktop-file-validate", {entry}) == 0 && out_.isEmpty(), out_);
    const QString meta = share + "/metainfo/" LOXMERE_APP_ID ".metainfo.xml";
    QVERIFY2(run("appstreamcli", {"validate", "--no-net", meta}) == 0, out_);

    // A file manager offers the program for every corpus photo, by the type it
    // finds in the file's name and content.
    QFile file(entry);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList types =
        QString(file.readAll()).section("\nMimeType=", 1).section('\n', 0, 0).split(';');
    for (const QFileInfo &photo : QDir(VN_CORPUS_DIR "/photos").entryInfoList(QDir::Files)) {
        const QString type = QMimeDatabase().mimeTypeForFile(photo).name();
        QVERIFY2(types.contains(type), qPrintable(photo.fileName() + ": " + type));
    }
}

void tst_package::package()
{
    const QString folder = dir_.filePath("deb");
    QVERIFY2(run(VN_CPACK, {"--config", VN_BUILD_DIR "/CPackConfig.cmake", "-B", folder}) == 0,
             out_ + err_);
    QCOMPARE(run("dpkg", {"--print-architecture"}), 0);
    deb_ = folder + "/loxmere_" LOXMERE_VERSION "_" + out_.trimmed() + ".deb";

    // The programs it runs, and a library that dpkg-shlibdeps found.
    QCOMPARE(run("dpkg-deb", {"-f", deb_, "Depends"}), 0);
    for (const char *name : {"libimage-exiftool-perl, ", "gpsbabel, ", "libqt5widgets5 "})
        QVERIFY2(out_.contains(name), out_);
    QVERIFY2(run("lintian", {deb_}) == 0 && !out_.contains("E: "), out_ + err_);
}

void tst_package::unpacked_program()
{
    const QString root = dir_.filePath("root");
    QCOMPARE(run("dpkg-deb", {"-x", deb_, root}), 0);
    const QString program = root + "/usr/bin/loxmere";
    QCOMPARE(run(program, {"--version"}), 0);
    QVERIFY2(out_.split('\n').contains("Loxmere " LOXMERE_VERSION), out_);
    QCOMPARE(run(program, {"--bogus"}), 2);
    QVERIFY2(err_.startsWith("Unknown option 'bogus'.") && err_.contains("\nUsage: "), err_);

    // Where Debian puts ExifTool: beside the program, in /usr/bin.
    QVERIFY(QFile::link(QCoreApplication::applicationDirPath() + "/exiftool",
                        root + "/usr/bin/exiftool"));
    const QString work = dir_.filePath("work");
    QVERIFY(QDir().mkpath(work + "/no photos"));
    QVERIFY(QFile::copy(VN_CORPUS_DIR "/photos/DSCN0010.jpg", work + "/DSCN0010.jpg"));
    QVERIFY(QFile::copy(VN_CORPUS_DIR "/photos/DSCN0010.jpg", work + "/line\nfeed.jpg"));

    // setsid makes the program and its ExifTool a process group of their own,
    // which ends them both; quitting cleanly would need the window.
    QProcess loxmere;
    loxmere.setWorkingDirectory(work);
    loxmere.start("setsid", {program, "DSCN0010.jpg", "line\nfeed.jpg", "gone.jpg", "no photos"});
    QVERIFY(loxmere.waitForStarted());
    const auto end = qScopeGuard([&] {
        ::kill(-pid_t(loxmere.processId()), SIGTERM);
        loxmere.waitForFinished(10000);
    });
    QByteArray log;
    QTRY_VERIFY_WITH_TIMEOUT((log += loxmere.readAllStandardOutput()).contains("the table holds"),
                             60000);
    // The missing file and the empty folder are left out; the line feed never
    // reaches ExifTool, whose read of the photo gives the position.
    QVERIFY2(log.contains("Took 2 of 2 file(s); the table holds 2, 1 of them with a position."),
             log);
    QVERIFY2(log.contains("Not reading \"" + work.toUtf8() + "/line\nfeed.jpg\""), log);
}

QTEST_GUILESS_MAIN(tst_package)
#include "tst_package.moc"
