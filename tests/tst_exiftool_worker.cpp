// Protocol tests against tests/fakes/exiftool, which lies beside this binary
// under the name the worker looks for. Its behaviour is picked through
// FAKE_EXIFTOOL_MODE before the first task starts the process.
#include "process_warning_counter.h"

#include <vn/exif_response.h>
#include <vn/exiftool.h>
#include <vn/exiftool_worker.h>

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace {
constexpr int reply_limit_ms = 5000;

void use_mode(const char *mode)
{
    qputenv("FAKE_EXIFTOOL_MODE", mode);
}

QRegularExpression line_pattern(const QString &text)
{
    return QRegularExpression(QRegularExpression::escape(text));
}
} // namespace

class tst_exiftool_worker : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void ids_count_up_in_order();
    void started_on_first_use_and_stopped_at_quit();
    void replies_reach_their_commands_data();
    void replies_reach_their_commands();
    void marker_split_across_reads_data();
    void marker_split_across_reads();
    void other_ids_marker_stays_in_reply();
    void silent_process_times_out_and_blocks_queue();
    void wait_zero();
    void dying_process_fails_at_once_and_is_restarted();
    void shutdown_after_death_has_nothing_to_stop();
    void stubborn_process_is_killed_in_last_pass_data();
    void stubborn_process_is_killed_in_last_pass();
    void released_response_is_freed_after_late_reply();
    void cancelled_response_stores_reply_without_completing();
    void reads_free_their_responses_data();
    void reads_free_their_responses();
    void timers_run_during_wait();
    void garbage_reply_is_parsed_as_far_as_it_goes();
    void read_command_bytes_data();
    void read_command_bytes();
    void write_command_bytes_data();
    void write_command_bytes();
    void write_failure_text_data();
    void write_failure_text();
    void parse_tags_data();
    void parse_tags();
    void error_text_data();
    void error_text();
    void hung_process_is_stopped_and_replaced();

private:
    QString make_file(const QString &name);
    QByteArray read_log() const;

    QTemporaryDir dir_;
    QString log_path_;
};

void tst_exiftool_worker::initTestCase()
{
    process_warning_counter::install();
    QVERIFY(dir_.isValid());
    QVERIFY(QFileInfo::exists(vn::exiftool_worker::program_path()));
}

void tst_exiftool_worker::init()
{
    qunsetenv("FAKE_EXIFTOOL_MODE");
    qunsetenv("FAKE_EXIFTOOL_SPLIT");
    log_path_ = dir_.filePath(
        QStringLiteral("commands-%1.log").arg(QString::fromLatin1(QTest::currentTestFunction())));
    QFile::remove(log_path_);
    QFile::remove(log_path_ + QStringLiteral(".open"));
    qputenv("FAKE_EXIFTOOL_LOG", QFile::encodeName(log_path_));
}

void tst_exiftool_worker::cleanup()
{
    vn::exiftool::shutdown();
    QVERIFY(!vn::exiftool::is_started());
}

void tst_exiftool_worker::cleanupTestCase()
{
    QCOMPARE(process_warning_counter::count(), 0);
}

QString tst_exiftool_worker::make_file(const QString &name)
{
    const QString path = dir_.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return QString();
    file.write("not really a photo");
    return path;
}

QByteArray tst_exiftool_worker::read_log() const
{
    QFile file(log_path_);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return file.readAll();
}

void tst_exiftool_worker::ids_count_up_in_order()
{
    vn::exiftool_worker_init();
    vn::exif_response *first = vn::exiftool::start_task("a\n");
    vn::exif_response *second = vn::exiftool::start_task("b\n");
    vn::exif_response *third = vn::exiftool::start_task("c\n");
    QCOMPARE(second->id(), first->id() + 1);
    QCOMPARE(third->id(), first->id() + 2);
    QVERIFY(third->wait(reply_limit_ms));
    QVERIFY(first->is_ready());
    QVERIFY(second->is_ready());
    // One command at a time, in order: the fake logs what it read.
    const QByteArray expected =
        QStringLiteral("a\n\n-execute%1\nb\n\n-execute%2\nc\n\n-execute%3\n")
            .arg(first->id())
            .arg(second->id())
            .arg(third->id())
            .toUtf8();
    QCOMPARE(read_log(), expected);

    // Ids go on counting across a new start.
    vn::exiftool::shutdown();
    vn::exiftool_worker_init();
    vn::exif_response *after_restart = vn::exiftool::start_task("d\n");
    QCOMPARE(after_restart->id(), third->id() + 1);
    QVERIFY(after_restart->wait(reply_limit_ms));
    QCOMPARE(after_restart->data(), QByteArray("d\n"));
}

void tst_exiftool_worker::started_on_first_use_and_stopped_at_quit()
{
    QVERIFY(!vn::exiftool::is_started());
    vn::exiftool_worker_init();
    QVERIFY(vn::exiftool::is_started());
    vn::exif_response *first = vn::exiftool::start_task("a\n");
    // A second init changes nothing: same thread, no second start.
    vn::exiftool_worker_init();
    vn::exif_response *second = vn::exiftool::start_task("b\n");
    QVERIFY(first->parent());
    QCOMPARE(first->parent(), second->parent());
    QCOMPARE(first->parent()->objectName(), QStringLiteral("Exiftol IO Worker"));
    QVERIFY(second->wait(reply_limit_ms));
    QCOMPARE(read_log(), QStringLiteral("a\n\n-execute%1\nb\n\n-execute%2\n")
                             .arg(first->id())
                             .arg(second->id())
                             .toUtf8());

    QPointer<QObject> thread(first->parent());
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("Worker shutdown: Ok$"));
    QVERIFY(QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit",
                                      Qt::DirectConnection));
    QVERIFY(!vn::exiftool::is_started());
    QTRY_VERIFY(thread.isNull());
}

void tst_exiftool_worker::replies_reach_their_commands_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("reply");
    QTest::addRow("empty reply") << QByteArray() << QByteArray("");
    QTest::addRow("one line") << QByteArray("-Make=X\n") << QByteArray("-Make=X\n");
    QTest::addRow("umlauts as UTF-8")
        << QByteArray("-Title=Grünwald Straße\n") << QByteArray("-Title=Grünwald Straße\n");
    QByteArray many;
    for (int i = 0; i < 600; ++i)
        many += "-Tag" + QByteArray::number(i) + "=value number " + QByteArray::number(i) + "\n";
    QTest::addRow("many chunks (%d bytes)", many.size()) << many << many;
    QTest::addRow("NUL ends the command")
        << QByteArray("-A=1\n\0-B=2\n", 12) << QByteArray("-A=1\n");
}

void tst_exiftool_worker::replies_reach_their_commands()
{
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, reply);
    // The reply waits until the spy listens: an instant one could come
    // before the spy exists.
    use_mode("gated");
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task(command);
    QSignalSpy ready(response, &vn::exif_response::ready);
    QVERIFY(QFile(log_path_ + QStringLiteral(".open")).open(QIODevice::WriteOnly));
    QVERIFY(response->wait(reply_limit_ms));
    QCOMPARE(response->data(), reply);
    QTRY_COMPARE(ready.count(), 1);
}

void tst_exiftool_worker::marker_split_across_reads_data()
{
    QTest::addColumn<int>("cut");
    // "abc\n" and a marker of up to "{ready99999}\n": every byte position.
    for (int cut = 0; cut <= 17; ++cut)
        QTest::addRow("cut after %d bytes", cut) << cut;
}

void tst_exiftool_worker::marker_split_across_reads()
{
    QFETCH(int, cut);
    use_mode("split");
    qputenv("FAKE_EXIFTOOL_SPLIT", QByteArray::number(cut));
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task("abc\n");
    QVERIFY(response->wait(reply_limit_ms));
    QCOMPARE(response->data(), QByteArray("abc\n"));
    // The stream is still in step: the next reply is whole and alone.
    vn::exif_response *next = vn::exiftool::start_task("next\n");
    QVERIFY(next->wait(reply_limit_ms));
    QCOMPARE(next->data(), QByteArray("next\n"));
}

void tst_exiftool_worker::other_ids_marker_stays_in_reply()
{
    vn::exiftool_worker_init();
    vn::exif_response *first = vn::exiftool::start_task("x\n");
    QVERIFY(first->wait(reply_limit_ms));
    const qint32 next_id = first->id() + 1;
    const QByteArray foreign =
        vn::exiftool_worker::marker_for(next_id + 1) + vn::exiftool_worker::marker_for(next_id - 1);
    vn::exif_response *second = vn::exiftool::start_task("before\n" + foreign + "after\n");
    QCOMPARE(second->id(), next_id);
    vn::exif_response *third = vn::exiftool::start_task("third\n");
    QVERIFY(second->wait(reply_limit_ms));
    QCOMPARE(second->data(), "before\n" + foreign + "after\n");
    QVERIFY(third->wait(reply_limit_ms));
    QCOMPARE(third->data(), QByteArray("third\n"));
}

void tst_exiftool_worker::silent_process_times_out_and_blocks_queue()
{
    use_mode("hang");
    vn::exiftool_worker_init();
    vn::exif_response *first = vn::exiftool::start_task("first\n");
    vn::exif_response *second = vn::exiftool::start_task("second\n");
    QSignalSpy first_error(first, &vn::exif_response::error);
    QSignalSpy first_finished(first, &vn::exif_response::finished);
    QVERIFY(!first->wait(200));
    QCOMPARE(first_error.count(), 1);
    QCOMPARE(first_error.at(0).at(0).value<vn::exif_error>(), 0);
    QCOMPARE(first_finished.count(), 1);
    QVERIFY(!second->wait(200));
    QVERIFY(!first->is_failed()); // still running: a hang is only waited for
    // The second command never went out: it waits behind the first.
    QCOMPARE(read_log(), QStringLiteral("first\n\n-execute%1\n").arg(first->id()).toUtf8());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 2 open command"));
    vn::exiftool::shutdown();
}

void tst_exiftool_worker::wait_zero()
{
    use_mode("hang");
    vn::exiftool_worker_init();
    vn::exif_response *open = vn::exiftool::start_task("x\n");
    QSignalSpy error(open, &vn::exif_response::error);
    QSignalSpy finished(open, &vn::exif_response::finished);
    QVERIFY(!open->wait(0));
    QCOMPARE(error.count(), 1);
    QCOMPARE(finished.count(), 1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    vn::exiftool::shutdown();

    use_mode("echo");
    vn::exiftool_worker_init();
    vn::exif_response *done = vn::exiftool::start_task("y\n");
    QTRY_VERIFY_WITH_TIMEOUT(done->is_ready(), reply_limit_ms);
    QVERIFY(done->wait(0));
    QCOMPARE(done->data(), QByteArray("y\n"));
}

void tst_exiftool_worker::dying_process_fails_at_once_and_is_restarted()
{
    use_mode("die");
    // The process may end, and the worker warn, before start_task returns.
    // The second task is either queued behind the first when the process
    // ends, or goes to a new process that ends the same way.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; [12] open command"));
    vn::exiftool_worker_init();
    vn::exif_response *running = vn::exiftool::start_task("first\n");
    vn::exif_response *queued = vn::exiftool::start_task("second\n");
    // Failed by the worker, not by the limit: the wait would otherwise take
    // the full minute and the response would not be marked failed.
    QVERIFY(!running->wait(vn::exiftool::time_limit_ms));
    QVERIFY(running->is_failed());
    QVERIFY(!queued->wait(vn::exiftool::time_limit_ms));
    QVERIFY(queued->is_failed());

    // The next task starts a new process, which reads the environment anew.
    use_mode("echo");
    vn::exif_response *next = vn::exiftool::start_task("third\n");
    QVERIFY(next->wait(reply_limit_ms));
    QCOMPARE(next->data(), QByteArray("third\n"));
}

void tst_exiftool_worker::shutdown_after_death_has_nothing_to_stop()
{
    use_mode("die");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task("x\n");
    QVERIFY(!response->wait(reply_limit_ms));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Did 0 iterations, state: 0$"));
    QTest::ignoreMessage(QtInfoMsg, QRegularExpression("Worker shutdown: Ok$"));
    vn::exiftool::shutdown();
}

void tst_exiftool_worker::stubborn_process_is_killed_in_last_pass_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<bool>("command_out");
    QTest::addColumn<int>("passes");
    QTest::addRow("idle: 25 passes of 200 ms") << QByteArray("stubborn") << false << 25;
    QTest::addRow("busy: 5 passes of 1000 ms") << QByteArray("stubborn_hang") << true << 5;
}

void tst_exiftool_worker::stubborn_process_is_killed_in_last_pass()
{
    QFETCH(QByteArray, mode);
    QFETCH(bool, command_out);
    QFETCH(int, passes);
    use_mode(mode.constData());
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task("x\n");
    if (command_out) {
        QVERIFY(!response->wait(100));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    } else {
        QVERIFY(response->wait(reply_limit_ms));
    }
    for (int pass = 0; pass < passes - 1; ++pass)
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression("Sending termination signal to process\\.$"));
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("Sending kill signal to process\\.$"));
    QTest::ignoreMessage(QtDebugMsg,
                         line_pattern(QStringLiteral("Did %1 iterations, state: 0").arg(passes)));
    vn::exiftool::shutdown();
}

void tst_exiftool_worker::released_response_is_freed_after_late_reply()
{
    use_mode("split");
    qputenv("FAKE_EXIFTOOL_SPLIT", "2"); // the rest comes after a pause
    vn::exiftool_worker_init();
    vn::exif_response *late = vn::exiftool::start_task("late\n");
    QPointer<vn::exif_response> late_alive(late);
    QVERIFY(!late->wait(0));
    late->release();
    // Alive until the worker has delivered the late reply, then freed.
    QTRY_VERIFY_WITH_TIMEOUT(late_alive.isNull(), reply_limit_ms);

    vn::exif_response *read = vn::exiftool::start_task("read\n");
    QPointer<vn::exif_response> read_alive(read);
    QVERIFY(read->wait(reply_limit_ms));
    QCOMPARE(read->data(), QByteArray("read\n"));
    read->release();
    QTRY_VERIFY(read_alive.isNull());

    // Not released: kept until shutdown, with its reply.
    vn::exif_response *kept = vn::exiftool::start_task("kept\n");
    QPointer<vn::exif_response> kept_alive(kept);
    QVERIFY(kept->wait(reply_limit_ms));
    QCoreApplication::processEvents();
    QVERIFY(!kept_alive.isNull());
    vn::exiftool::shutdown();
    QTRY_VERIFY(kept_alive.isNull());
}

void tst_exiftool_worker::cancelled_response_stores_reply_without_completing()
{
    use_mode("split");
    qputenv("FAKE_EXIFTOOL_SPLIT", "1"); // the rest comes after a pause
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task("gone\n");
    QSignalSpy ready(response, &vn::exif_response::ready);
    QSignalSpy error(response, &vn::exif_response::error);
    response->cancel();
    QVERIFY(!response->wait(reply_limit_ms));
    QTRY_COMPARE_WITH_TIMEOUT(response->data(), QByteArray("gone\n"), reply_limit_ms);
    QVERIFY(!response->is_ready());
    QCOMPARE(ready.count(), 0);
    QCOMPARE(error.count(), 0);
    // The stream goes on with the next command.
    vn::exif_response *next = vn::exiftool::start_task("next\n");
    QVERIFY(next->wait(reply_limit_ms));
    QCOMPARE(next->data(), QByteArray("next\n"));
}

void tst_exiftool_worker::reads_free_their_responses_data()
{
    QTest::addColumn<QByteArray>("mode");
    QTest::addColumn<bool>("write");
    QTest::addRow("read, answered") << QByteArray("echo") << false;
    QTest::addRow("write, answered") << QByteArray("echo") << true;
    QTest::addRow("read, process dies") << QByteArray("die") << false;
}

void tst_exiftool_worker::reads_free_their_responses()
{
    QFETCH(QByteArray, mode);
    QFETCH(bool, write);
    use_mode(mode.constData());
    vn::exiftool_worker_init();
    if (mode == "die")
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    // Responses are children of the worker's thread object until freed.
    vn::exif_response *kept = vn::exiftool::start_task("kept\n");
    if (mode == "die") {
        QVERIFY(!kept->wait(reply_limit_ms));
        QVERIFY(kept->is_failed());
    } else {
        QVERIFY(kept->wait(reply_limit_ms));
    }
    QObject *owner = kept->parent();
    QVERIFY(owner);
    const int before = owner->findChildren<vn::exif_response *>().size();
    const QString file = make_file(QStringLiteral("many.jpg"));
    for (int i = 0; i < 20; ++i) {
        if (mode == "die")
            QTest::ignoreMessage(QtWarningMsg,
                                 QRegularExpression("ExifTool ended; 1 open command"));
        if (write)
            vn::exiftool::write_tags(file, exif_tag_map());
        else
            vn::exiftool::read_tags(file, i % 2 == 1);
    }
    QTRY_COMPARE(owner->findChildren<vn::exif_response *>().size(), before);
}

void tst_exiftool_worker::timers_run_during_wait()
{
    use_mode("hang");
    vn::exiftool_worker_init();
    vn::exif_response *response = vn::exiftool::start_task("x\n");
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&ticks] { ++ticks; });
    timer.start(10);
    QVERIFY(!response->wait(300));
    QVERIFY2(ticks >= 3, qPrintable(QString::number(ticks)));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    vn::exiftool::shutdown();
}

void tst_exiftool_worker::garbage_reply_is_parsed_as_far_as_it_goes()
{
    use_mode("garbage");
    const QString file = make_file(QStringLiteral("garbage.jpg"));
    const exif_tag_map tags = vn::exiftool::read_tags(file, false);
    // The NUL ends the text: "-Lost=3" behind it is never seen.
    exif_tag_map expected;
    expected.insert(QStringLiteral("Good"), QStringLiteral("1"));
    expected.insert(QStringLiteral("Cut"), QStringLiteral("2"));
    expected.insert(QString::fromUtf8("\xef\xbf\xbd-Bad"), QString::fromUtf8("\xef\xbf\xbdx"));
    QCOMPARE(tags, expected);
}

void tst_exiftool_worker::read_command_bytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("with_groups");
    QTest::addColumn<QString>("prefix");
    QTest::addRow("plain") << QStringLiteral("p.jpg") << false << QString();
    QTest::addRow("groups and duplicates")
        << QStringLiteral("g.jpg") << true << QStringLiteral("-G1\n-a\n");
    QTest::addRow("umlauts") << QStringLiteral("Grünwald Straße 1.jpg") << false << QString();
    QTest::addRow("leading dash") << QStringLiteral("-delete_original!") << false << QString();
}

void tst_exiftool_worker::read_command_bytes()
{
    QFETCH(QString, name);
    QFETCH(bool, with_groups);
    QFETCH(QString, prefix);
    const QString file = make_file(name);
    const exif_tag_map tags = vn::exiftool::read_tags(file, with_groups);
    QVERIFY(tags.isEmpty()); // the fake echoes the command: no line holds "="
    const QByteArray log = read_log();
    const QByteArray expected = (prefix + file + QStringLiteral("\n\n-execute")).toUtf8();
    QVERIFY2(log.startsWith(expected), log.constData());
    QVERIFY(QRegularExpression("^-execute\\d+\\n$")
                .match(QString::fromUtf8(log.mid(expected.size() - 8)))
                .hasMatch());
}

void tst_exiftool_worker::write_command_bytes_data()
{
    QTest::addColumn<exif_tag_map>("tags");
    QTest::addColumn<QString>("lines");
    exif_tag_map gps;
    gps.insert(QStringLiteral("XMP:GPSAltitude"), QStringLiteral("12"));
    gps.insert(QStringLiteral("GPSLatitudeRef"), QStringLiteral("N"));
    gps.insert(QStringLiteral("GPSLatitude#"), QStringLiteral("1.5"));
    gps.insert(QStringLiteral("GPSAltitude"), QStringLiteral("3"));
    QTest::addRow("map order, not insertion order")
        << gps
        << QStringLiteral("-GPSAltitude=3\n-GPSLatitude#=1.5\n-GPSLatitudeRef=N\n"
                          "-XMP:GPSAltitude=12\n");
    exif_tag_map clear;
    clear.insert(QStringLiteral("GPS:all"), QString());
    clear.insert(QStringLiteral("Comment"), QString());
    QTest::addRow("empty values delete") << clear << QStringLiteral("-Comment=\n-GPS:all=\n");
    QTest::addRow("no tags") << exif_tag_map() << QString();
    exif_tag_map odd;
    odd.insert(QStringLiteral("Title"), QStringLiteral("50% of %1 = \"quoted\"; $HOME"));
    QTest::addRow("no quoting or escaping")
        << odd << QStringLiteral("-Title=50% of %1 = \"quoted\"; $HOME\n");
}

void tst_exiftool_worker::write_command_bytes()
{
    QFETCH(exif_tag_map, tags);
    QFETCH(QString, lines);
    const QString file = make_file(QStringLiteral("Wörtz a.jpg"));
    QVERIFY(vn::exiftool::write_tags(file, tags));
    const QByteArray log = read_log();
    const QByteArray expected =
        (QStringLiteral("\n%1\n-overwrite_original_in_place\n-m\n").arg(file) + lines +
         QStringLiteral("\n-execute"))
            .toUtf8();
    QVERIFY2(log.startsWith(expected), log.constData());
    QVERIFY(QRegularExpression("^\\d+\\n$")
                .match(QString::fromUtf8(log.mid(expected.size())))
                .hasMatch());
}

void tst_exiftool_worker::write_failure_text_data()
{
    QTest::addColumn<QString>("reply_line");
    QTest::addColumn<bool>("ok");
    QTest::addRow("summary line") << QStringLiteral("    1 files weren't updated due to errors")
                                  << false;
    QTest::addRow("inside a line")
        << QStringLiteral("x files weren't updated due to errors, yes") << false;
    QTest::addRow("other capitals")
        << QStringLiteral("1 Files Weren't Updated Due To Errors") << true;
    QTest::addRow("updated") << QStringLiteral("    1 image files updated") << true;
}

void tst_exiftool_worker::write_failure_text()
{
    QFETCH(QString, reply_line);
    QFETCH(bool, ok);
    const QString file = make_file(QStringLiteral("w.jpg"));
    // The fake answers with the command's own lines, so the value becomes
    // one line of the reply, among others.
    exif_tag_map tags;
    tags.insert(QStringLiteral("Comment"), reply_line);
    if (!ok)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Failed to execute command on '" +
                                                              QRegularExpression::escape(file)));
    QCOMPARE(vn::exiftool::write_tags(file, tags), ok);
}

void tst_exiftool_worker::parse_tags_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("keys_and_values");
    QTest::addRow("empty") << QByteArray() << QStringList();
    QTest::addRow("empty value kept") << QByteArray("-Comment=\r\n") << QStringList{"Comment", ""};
    QTest::addRow("value cut at second '='")
        << QByteArray("-Comment=a=b\n") << QStringList{"Comment", "a"};
    QTest::addRow("later line wins")
        << QByteArray("-Make=A\n-Make=B\n") << QStringList{"Make", "B"};
    QTest::addRow("group key") << QByteArray("-GPS:GPSLatitude=1\r\n")
                               << QStringList{"GPS:GPSLatitude", "1"};
    QTest::addRow("first character goes without a dash")
        << QByteArray("Title=x\n") << QStringList{"itle", "x"};
    QTest::addRow("blanks around '=' dropped")
        << QByteArray("-Make  =  Nikon \r\n") << QStringList{"Make", "Nikon"};
    QTest::addRow("continuation lines skipped")
        << QByteArray("-Comment=line one\nline two\n-Make=C\n")
        << QStringList{"Comment", "line one", "Make", "C"};
    QTest::addRow("NUL ends the text")
        << QByteArray("-A=1\n-B=2\0-C=3\n", 15) << QStringList{"A", "1", "B", "2"};
    QTest::addRow("UTF-8 text") << QByteArray("-City=M\xc3\xbcnchen\n")
                                << QStringList{"City", QString::fromUtf8("München")};
    QTest::addRow("first character goes when it isn't ASCII")
        << QByteArray("\xc3\xa4Title=x\n") << QStringList{"Title", "x"};
    QTest::addRow("byte order mark inside the reply stays text")
        << QByteArray("-A=1\n-B=\xef\xbb\xbfx\n\xef\xbb\xbf-C=2\n")
        << QStringList{"A", "1", "B", QString(QChar(0xFEFF)) + "x", "-C", "2"};
    QTest::addRow("invalid UTF-8 before '=' and line end")
        << QByteArray("-A\xe2\x82=\xc3\n") << QStringList{"A\ufffd\ufffd", "\ufffd"};
}

void tst_exiftool_worker::parse_tags()
{
    QFETCH(QByteArray, reply);
    QFETCH(QStringList, keys_and_values);
    exif_tag_map expected;
    for (int i = 0; i + 1 < keys_and_values.size(); i += 2)
        expected.insert(keys_and_values.at(i), keys_and_values.at(i + 1));
    QCOMPARE(vn::exiftool::parse_tags(reply), expected);
}

void tst_exiftool_worker::error_text_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("logged");
    QTest::addRow("closing line feed dropped")
        << QByteArray("Warning: Can't read MakerNotes data. Ignored. - /p/a.jpg\n")
        << QByteArray("Warning: Can't read MakerNotes data. Ignored. - /p/a.jpg");
    QTest::addRow("closing CR LF dropped") << QByteArray("Error: x\r\n") << QByteArray("Error: x");
    QTest::addRow("several closing line ends dropped")
        << QByteArray("Error: x\n\r\n\n") << QByteArray("Error: x");
    QTest::addRow("inner line break kept")
        << QByteArray("Warning: a\nWarning: b\n") << QByteArray("Warning: a\nWarning: b");
    QTest::addRow("leading line end kept") << QByteArray("\nError: y") << QByteArray("\nError: y");
    QTest::addRow("closing blank kept") << QByteArray("Error: z \n") << QByteArray("Error: z ");
    QTest::addRow("only line ends") << QByteArray("\r\n") << QByteArray();
    QTest::addRow("empty") << QByteArray() << QByteArray();
}

void tst_exiftool_worker::error_text()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, logged);
    QCOMPARE(vn::exiftool_worker::error_text(text), logged);
}

void tst_exiftool_worker::hung_process_is_stopped_and_replaced()
{
    use_mode("hang_once");
    vn::exiftool::set_wait_limit_ms(300);
    const QString first = make_file(QStringLiteral("first.jpg"));
    const QString second = make_file(QStringLiteral("second.jpg"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("ExifTool ended; 1 open command"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("didn't answer in time; stopped by "
                                                          "interrupt\\.$"));
    QString why;
    const bool hung_write = vn::exiftool::write_tags(first, exif_tag_map(), &why);
    vn::exiftool::set_wait_limit_ms(vn::exiftool::time_limit_ms);
    QVERIFY(!hung_write);
    QCOMPARE(why, QStringLiteral("ExifTool didn't answer within 0.3 s and was stopped"));
    // A new process takes the next command at once.
    QVERIFY(vn::exiftool::write_tags(second, exif_tag_map(), &why));
    QCOMPARE(read_log().count("-overwrite_original_in_place"), 2);
}

QTEST_GUILESS_MAIN(tst_exiftool_worker)
#include "tst_exiftool_worker.moc"
