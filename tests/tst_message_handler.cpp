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
    void initTestCase() { vn::install_message_handler(); }

    void cleanupTestCase() { qInstallMessageHandler(nullptr); }

    // Debug, Info and Warning go to std::cout, Critical to std::cerr, each
    // behind its prefix, as UTF-8.
    void prefix_and_stream()
    {
        stream_capture capture;
        qDebug("%s", "Straße ✓");
        qInfo("i");
        qWarning("w");
        qCritical("c");
        QCOMPARE(capture.text(), QString("Debug: Straße ✓\nInfo: i\nWarning: w\n"));
        QCOMPARE(capture.err_text(), QString("Critical: c\n"));
    }

    void libpng_line_dropped_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("dropped");
        const QString line = "libpng warning: iCCP: known incorrect sRGB profile";
        QTest::addRow("that line") << line << true;
        QTest::addRow("with more text") << line + " x" << false;
        QTest::addRow("other libpng line")
            << "libpng warning: iCCP: cHRM chunk does not match" << false;
    }

    void libpng_line_dropped()
    {
        QFETCH(QString, message);
        QFETCH(bool, dropped);

        stream_capture capture;
        vn::message_handler(QtWarningMsg, QMessageLogContext(), message);
        vn::message_handler(QtCriticalMsg, QMessageLogContext(), message);
        QCOMPARE(capture.out().empty() && capture.err().empty(), dropped);
    }

    void lines_of_two_threads_stay_whole()
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

        const QStringList got =
            QString::fromStdString(capture.out()).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(got.size(), 2 * lines);
        const QRegularExpression whole(
            "^Warning: thread [ab] line \\d+ of a text long enough to be cut$");
        for (const QString &line : got)
            QVERIFY2(whole.match(line).hasMatch(), qPrintable(line));
    }

    void fatal_from_worker_thread_writes_line_without_box()
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
};

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
