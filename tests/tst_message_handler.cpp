#include "stream_capture.h"
#include <vn/message_handler.h>

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <iostream>
#include <sstream>
#include <thread>

class tst_message_handler : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void prefix_and_stream_data();
    void prefix_and_stream();
    void libpng_line_dropped_data();
    void libpng_line_dropped();
    void lines_of_two_threads_stay_whole();
    void fatal_from_worker_thread_writes_line_without_box();
};

void tst_message_handler::initTestCase()
{
    vn::install_message_handler();
}

void tst_message_handler::cleanupTestCase()
{
    qInstallMessageHandler(nullptr);
}

void tst_message_handler::prefix_and_stream_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("expected_out");
    QTest::addColumn<QString>("expected_err");
    QTest::addRow("debug to cout") << int(QtDebugMsg) << "d1"
                                   << "Debug: d1\n"
                                   << "";
    QTest::addRow("info to cout") << int(QtInfoMsg) << "i1"
                                  << "Info: i1\n"
                                  << "";
    QTest::addRow("warning to cout") << int(QtWarningMsg) << "w1"
                                     << "Warning: w1\n"
                                     << "";
    QTest::addRow("critical to cerr") << int(QtCriticalMsg) << "c1"
                                      << ""
                                      << "Critical: c1\n";
    QTest::addRow("utf-8 text kept") << int(QtWarningMsg) << QString::fromUtf8("Straße ✓")
                                     << QString::fromUtf8("Warning: Straße ✓\n") << "";
}

void tst_message_handler::prefix_and_stream()
{
    QFETCH(int, type);
    QFETCH(QString, message);
    QFETCH(QString, expected_out);
    QFETCH(QString, expected_err);

    stream_capture capture;
    const QByteArray utf8 = message.toUtf8();
    switch (QtMsgType(type)) {
    case QtDebugMsg:
        qDebug("%s", utf8.constData());
        break;
    case QtInfoMsg:
        qInfo("%s", utf8.constData());
        break;
    case QtWarningMsg:
        qWarning("%s", utf8.constData());
        break;
    case QtCriticalMsg:
        qCritical("%s", utf8.constData());
        break;
    default:
        QFAIL("unexpected row");
    }
    QCOMPARE(QString::fromStdString(capture.out()), expected_out);
    QCOMPARE(QString::fromStdString(capture.err()), expected_err);
}

void tst_message_handler::libpng_line_dropped_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("dropped");
    const QString line = "libpng warning: iCCP: known incorrect sRGB profile";
    QTest::addRow("as warning") << int(QtWarningMsg) << line << true;
    QTest::addRow("as critical") << int(QtCriticalMsg) << line << true;
    QTest::addRow("with more text") << int(QtWarningMsg) << line + " x" << false;
    QTest::addRow("other libpng line")
        << int(QtWarningMsg) << "libpng warning: iCCP: cHRM chunk does not match" << false;
}

void tst_message_handler::libpng_line_dropped()
{
    QFETCH(int, type);
    QFETCH(QString, message);
    QFETCH(bool, dropped);

    stream_capture capture;
    vn::message_handler(QtMsgType(type), QMessageLogContext(), message);
    const std::string all = capture.out() + capture.err();
    QCOMPARE(all.empty(), dropped);
}

void tst_message_handler::lines_of_two_threads_stay_whole()
{
    const int lines = 500;
    stream_capture capture;
    auto writer = [lines](char name) {
        for (int i = 0; i < lines; ++i)
            qWarning("thread %c line %d of a text long enough to be cut", name, i);
    };
    std::thread a(writer, 'a');
    std::thread b(writer, 'b');
    a.join();
    b.join();

    const QStringList got = QString::fromStdString(capture.out()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(got.size(), 2 * lines);
    const QRegularExpression whole(
        "^Warning: thread [ab] line \\d+ of a text long enough to be cut$");
    for (const QString &line : got)
        QVERIFY2(whole.match(line).hasMatch(), qPrintable(line));
}

void tst_message_handler::fatal_from_worker_thread_writes_line_without_box()
{
    // The child runs this binary in its fatal mode (see main). A box on a
    // worker thread would hang it or crash before the line, so the child must
    // end by itself, abnormally, with the fatal line on its error stream.
    QProcess child;
    child.setProgram(QCoreApplication::applicationFilePath());
    child.setArguments({"--fatal-from-thread"});
    child.start();
    QVERIFY(child.waitForStarted(5000));
    QVERIFY2(child.waitForFinished(20000), "the fatal message blocked the process");
    QCOMPARE(child.exitStatus(), QProcess::CrashExit);
    const QByteArray err = child.readAllStandardError();
    QVERIFY2(err.contains("Fatal: worker gave up\n"), err.constData());
    QVERIFY(child.readAllStandardOutput().isEmpty());
}

// Calls qFatal on a second thread of a GUI application with our handler.
static int fatal_from_thread(int argc, char **argv)
{
    QApplication app(argc, argv);
    vn::install_message_handler();
    std::thread worker([] { qFatal("worker gave up"); });
    worker.join();
    return 0;
}

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--fatal-from-thread") == 0)
        return fatal_from_thread(argc, argv);
    QApplication app(argc, argv);
    tst_message_handler test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_message_handler.moc"
