// No ExifTool lies beside this binary: the bridge must log it, not crash, and
// give every caller its empty result at once.
#include "process_warning_counter.h"

#include <vn/exif_response.h>
#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

class tst_exiftool_missing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void calls_fail_with_log_lines_data();
    void calls_fail_with_log_lines();

private:
    QTemporaryDir dir_;
};

void tst_exiftool_missing::initTestCase()
{
    process_warning_counter::install();
    QVERIFY(dir_.isValid());
    QVERIFY(!QFileInfo::exists(vn::exiftool_worker::program_path()));
}

void tst_exiftool_missing::cleanup()
{
    vn::exiftool::shutdown();
}

void tst_exiftool_missing::cleanupTestCase()
{
    QCOMPARE(process_warning_counter::count(), 0);
}

void tst_exiftool_missing::calls_fail_with_log_lines_data()
{
    QTest::addColumn<int>("call");
    QTest::addRow("read") << 0;
    QTest::addRow("read with groups") << 1;
    QTest::addRow("write") << 2;
}

void tst_exiftool_missing::calls_fail_with_log_lines()
{
    QFETCH(int, call);
    const QString file = dir_.filePath(QStringLiteral("photo.jpg"));
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.close();

    QTest::ignoreMessage(QtCriticalMsg,
                         QRegularExpression("^exiftool: Executable '.*/exiftool' does not exist"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Could not start exiftool"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("Worker started: Failed$"));
    // The task tries once more to start the process, then fails at once.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Could not start exiftool"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("ExifTool could not be started; 1 open command"));
    if (call == 2) {
        exif_tag_map tags;
        tags.insert(QStringLiteral("Comment"), QStringLiteral("x"));
        QVERIFY(!vn::exiftool::write_tags(file, tags));
    } else {
        QCOMPARE(vn::exiftool::read_tags(file, call == 1), exif_tag_map());
    }
}

QTEST_GUILESS_MAIN(tst_exiftool_missing)
#include "tst_exiftool_missing.moc"
